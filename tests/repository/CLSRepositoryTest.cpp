#include <gtest/gtest.h>

#include "platform/Error.h"
#include "repository/CLSRepository.h"
#include "repository/MovedAssociation.h"
#include "support/Model.h"

namespace brisel::repository {
namespace {

using platform::each;
using platform::Link;
using platform::Node;
using platform::Ref;
using platform::Value;
using test::Model;

TEST(CLSRepository, composesIdentifiers) {
  const CLSRepository repository;
  EXPECT_EQ(repository.MakeId("a", ""), "a::");
  EXPECT_EQ(repository.MakeChildId("c", "a", "b"), "c::a::b");
  EXPECT_EQ(repository.MakeLinkId("A", "B", "Has"), "A.Has.B");
}

TEST(CLSRepository, makesMembersWithTheirLinksAndDefaults) {
  Model m;
  m.addClass("Order");
  Ref<Link> ownership;
  const auto type = m.dataType("String");
  const auto attribute = m.model->AddAttribute("Order", "id", "lost", true, "private", false, true,
                                               "7", false, type->identifier(), ownership);
  EXPECT_EQ(attribute->GetProperty("Description"), Value()) << "descriptions are not stored";
  EXPECT_EQ(attribute->GetProperty("final"), Value(true));
  EXPECT_EQ(attribute->GetProperty("value"), Value("7"));
  EXPECT_EQ(ownership->name(), "Order.Has." + attribute->identifier());
  const auto typeLinks = attribute->outgoing("Attrib.Has.DataType");
  EXPECT_EQ(platform::as<Link>(typeLinks->Item(1))->name(), "") << "the one unnamed type link";

  const auto operation = m.addOperation("Order", "pay", "void");
  const auto parameter = m.addParameter(*operation, "amount", "Money");
  for (const auto& member : {operation, parameter}) {
    const auto links = member->outgoing(member->Parent()->name() + ".Has.DataType");
    EXPECT_EQ(platform::as<Link>(links->Item(1))->name(),
              member->identifier() + ".Has." + m.model->GetDataType(*member)->identifier());
  }
  const auto plain = m.addAttribute("Order", "plain", "String");
  for (const char* key : {"final", "static_", "transient", "volatile"}) {
    EXPECT_EQ(plain->GetProperty(key), Value(false)) << key;
  }
  EXPECT_EQ(plain->GetProperty("scope"), Value(""));
}

TEST(CLSRepository, searchesNodesAndLinks) {
  Model m;
  m.addClass("A");
  m.addAttribute("A", "x", "Int");
  const auto y = m.addAttribute("A", "y", "Int");
  y->SetProperty("scope", "private");
  EXPECT_EQ(m.model->SearchObject("Attrib", "Name", "y"), y);
  EXPECT_EQ(m.model->SearchObject("Attrib", "scope", "private"), y);
  EXPECT_FALSE(m.model->SearchObject("Attrib", "Name", true)) << "equal in kind and content only";

  const auto owner = m.find("Class", "A");
  const auto link = m.model->SearchLinkedObject(*owner, "Class.Has.Attrib", true, "Name", "y");
  ASSERT_TRUE(link);
  EXPECT_EQ(link->Target(), y);
  EXPECT_EQ(m.model->SearchLinkedObject(*y, "Class.Has.Attrib", false, "Name", "A"), link);
  EXPECT_FALSE(m.model->SearchLinkedObject(*owner, "Class.Has.Attrib", true, "Name", "z"));
}

TEST(CLSRepository, removesAnObjectWithAllItsLinks) {
  Model m;
  const auto a = m.addClass("A", "entity");
  m.addClass("B");
  m.addAttribute("A", "x", "Int");
  m.addAttribute("A", "y", "Int");
  m.model->MakeAssociation("uses", "r", "B", "A");
  m.model->RemoveObject("Class", "A");
  EXPECT_FALSE(m.find("Class", "A"));
  EXPECT_EQ(m.linkCount("Class.Has.Attrib"), 0);
  EXPECT_EQ(m.linkCount("Class.As.Stereotype"), 0);
  EXPECT_EQ(Model::ends(*m.find("Association", "r")), "B>?");
  EXPECT_EQ(m.count("Attrib"), 2) << "what was owned stays";
  EXPECT_EQ(a->name(), "A") << "a removed node still answers";
}

TEST(CLSRepository, changesTypesAndStereotypes) {
  Model m;
  const auto a = m.addClass("A", "entity");
  const auto x = m.addAttribute("A", "x", "Int");
  const auto text = m.dataType("Text");
  m.model->SetAttribDataType(*x, *text);
  EXPECT_EQ(x->outgoing("Attrib.Has.DataType")->Count(), 2);
  EXPECT_EQ(m.model->GetDataType(*x)->name(), "Int") << "the first link counts";

  const auto extra = m.model->MakeStereotype("other", "s", "");
  m.store->MakeLink("Class.As.Stereotype", "", "second", *a, *extra);
  m.model->SetStereotype(*a, nullptr);
  EXPECT_EQ(a->outgoing("Class.As.Stereotype")->Count(), 0);
  Ref<Link> link;
  EXPECT_FALSE(m.model->GetStereotype(*a, link));
  EXPECT_FALSE(link);
}

TEST(CLSRepository, deletesOnlyWhatItSays) {
  Model m;
  const auto a = m.addClass("A");
  m.addClass("B");
  m.addAttribute("A", "x", "Int");
  const auto operation = m.addOperation("A", "run", "void");
  m.addParameter(*operation, "p", "Int");
  m.addParameter(*operation, "q", "Int");
  m.model->MakeGeneralization("g", "A", "B");
  m.model->DeleteClass("A");
  EXPECT_EQ(m.count("Attrib") + m.count("Operation") + m.count("Parameter"), 0);
  EXPECT_EQ(m.count("DataType"), 2);
  EXPECT_EQ(m.count("Generalization"), 1) << "relationships are the caller's business";
  EXPECT_EQ(m.linkCount("Operation.Has.Parameter"), 0);
  EXPECT_THROW(m.model->DeleteClass("A"), platform::Error);
  EXPECT_THROW(m.model->DeleteAttribute("none"), platform::Error);

  m.addClass("C");
  m.model->MakeAssociation("r", "r", "B", "C");
  m.model->DeleteAssociation("r");
  EXPECT_EQ(m.count("Association"), 0);
  EXPECT_EQ(m.linkCount("Association.Source.Class") + m.linkCount("Association.Target.Class"), 0);
}

TEST(CLSRepository, copiesProperties) {
  Model m;
  m.addClass("A");
  m.addClass("B");
  const auto from = m.model->MakeAssociation("owns", "r", "A", "B");
  from->SetProperty("SourceRoleName", "owner");
  from->SetProperty("TargetNavigable", true);
  from->SetProperty("colour", "red");
  const auto all = m.model->MakeAssociation("", "s", "A", "B");
  m.model->CopyProperties(*from, *all);
  EXPECT_EQ(all->identifier(), "s");
  EXPECT_EQ(all->name(), "owns");
  EXPECT_EQ(all->GetProperty("colour"), Value("red"));

  const auto other = m.model->MakeAggregation("", "t", "A", "B");
  other->SetProperty("isComposite", true);
  m.model->CopyAssocProperties(*from, *other);
  EXPECT_EQ(other->identifier(), "r") << "the copy takes over the identity";
  EXPECT_EQ(m.find("Aggregation", "r"), other);
  EXPECT_EQ(other->GetProperty("SourceRoleName"), Value("owner"));
  EXPECT_EQ(other->GetProperty("isComposite"), Value(true));
  EXPECT_EQ(other->GetProperty("colour"), Value());
}

TEST(CLSRepository, movesMembersByName) {
  Model m;
  const auto from = m.addClass("From");
  const auto to = m.addClass("To");
  m.addAttribute("From", "a", "Int")->SetProperty("scope", "private");
  const auto stays = m.addAttribute("From", "b", "Int");
  m.addAttribute("To", "b", "Text");
  m.model->MoveAttributes(*to, *from->outgoing("Class.Has.Attrib"), false);
  EXPECT_EQ(Model::owned(*to, "Class.Has.Attrib"), "b a");
  EXPECT_EQ(Model::owned(*from, "Class.Has.Attrib"), "b");
  EXPECT_EQ(m.find("Attrib", stays->identifier()), stays);
  const auto moved = m.model->SearchObject("Attrib", "Name", "a");
  EXPECT_EQ(moved->GetProperty("scope"), Value("private"));
  EXPECT_EQ(m.model->GetDataType(*moved)->name(), "Int");

  const auto run = m.addOperation("From", "run", "void");
  m.addParameter(*run, "p", "Int");
  m.addParameter(*run, "q", "Text");
  m.model->MoveOperations(*to, *from->outgoing("Class.Has.Operation"), true);
  EXPECT_EQ(Model::owned(*from, "Class.Has.Operation"), "run") << "kept";
  const auto copies = to->outgoing("Class.Has.Operation");
  ASSERT_EQ(copies->Count(), 1);
  const auto copy = platform::as<Link>(copies->Item(1))->Target();
  EXPECT_EQ(Model::owned(*copy, "Operation.Has.Parameter"), "p q");
  EXPECT_NE(copy->identifier(), run->identifier());
}

TEST(CLSRepository, movesRelationshipsWithTheirIdentity) {
  Model m;
  const auto before = m.addClass("Old");
  const auto after = m.addClass("New");
  m.addClass("X");
  m.model->MakeAssociation("one", "1", "Old", "X")->SetProperty("SourceRoleName", "r");
  m.model->MakeAssociation("self", "2", "Old", "Old");
  m.model->MakeAggregation("three", "3", "X", "Old")->SetProperty("isComposite", true);
  m.model->MakeGeneralization("4", "Old", "X");
  m.model->MakeGeneralization("5", "X", "Old");
  const auto stereotype = m.model->MakeStereotype("use", "u", "");
  m.model->SetStereotype(*m.find("Association", "1"), stereotype.get());

  const auto records = m.model->MoveAssociations(*after, *before);
  std::string told;
  for (auto& record : each<MovedAssociation>(records)) {
    told += record.clsAssoc()->identifier() + ":" + record.clsSource()->name() + ">" +
            record.clsTarget()->name() + " ";
    EXPECT_EQ(Model::ends(*record.clsAssoc()),
              record.clsSource()->name() + ">" + record.clsTarget()->name());
  }
  EXPECT_EQ(told, "1:New>X 2:New>New 3:X>New 4:New>X 5:X>New ");
  const auto one = m.find("Association", "1");
  EXPECT_EQ(one->name(), "one");
  EXPECT_EQ(one->GetProperty("SourceRoleName"), Value("r"));
  EXPECT_EQ(Model::owned(*one, "Association.As.Stereotype"), "use");
  EXPECT_EQ(m.find("Aggregation", "3")->GetProperty("isComposite"), Value(true));
  for (const char* type : {"Association.Source.Class", "Generalization.Sub.Class"}) {
    EXPECT_EQ(before->Incoming(type)->Count(), 0) << type;
  }
}

TEST(CLSRepository, keepsGeometryKeysAsTheyAreStored) {
  Model m;
  const auto a = m.addClass("A");
  const auto area = m.model->MakeGeomArea(*a, 1, 2, 3, 4);
  for (const auto& [key, value] : {std::pair<const char*, Value>{"top", 1},
                                   {"left", 2},
                                   {"Width", 3},
                                   {"height", 4},
                                   {"IsVisible", true},
                                   {"NodeId", "A"},
                                   {"NodeClass", "Class"}}) {
    EXPECT_EQ(area->GetProperty(key), value) << key;
  }
  m.model->MakeGeomPoint(*a, 1, 2, "MIDDLE", 1);
  m.model->DeleteAllGeomPoints();
  EXPECT_EQ(m.count("GeomPoint"), 0);
  EXPECT_EQ(m.count("GeomArea"), 1);
}

TEST(CLSRepository, answersByNameWithOutArguments) {
  Model m;
  m.addClass("A");
  std::vector<Value> arguments = {"A", "x", m.dataType("Int")->identifier()};
  const Value made = m.model->invoke("AddAttributeS", arguments);
  ASSERT_EQ(arguments.size(), 4U);
  const auto link = platform::as<Link>(arguments[3].object());
  ASSERT_TRUE(link);
  EXPECT_EQ(Value(link->Target()), made);
  EXPECT_EQ(made.object()->get("scope"), Value("")) << "keys answer as members";
  made.object()->set("scope", "public");
  EXPECT_EQ(made.object()->call("GetProperty", {"SCOPE"}), Value("public"));
}

}  // namespace
}  // namespace brisel::repository
