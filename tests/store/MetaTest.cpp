#include <gtest/gtest.h>

#include "platform/Error.h"
#include "store/Meta.h"
#include "support/RepositoryInvariants.h"

namespace brisel::store {
namespace {

namespace types = platform::types;
using platform::each;
using platform::Error;
using platform::ErrorNumber;
using platform::Link;
using platform::make;
using platform::Node;
using platform::Ref;
using platform::Value;

template <class Call>
int errorOf(Call call) {
  try {
    call();
  } catch (const Error& error) {
    return error.number();
  }
  return 0;
}
constexpr int kDuplicate = static_cast<int>(ErrorNumber::duplicateKey);
constexpr int kInvalid = static_cast<int>(ErrorNumber::invalidCall);
constexpr int kNotFound = static_cast<int>(ErrorNumber::notFound);
constexpr int kSubscript = static_cast<int>(ErrorNumber::subscript);

class MetaTest : public ::testing::Test {
 protected:
  MetaTest() { meta->Init(); }

  Ref<Node> node(std::string_view type, std::string_view id, std::string_view name = {}) {
    return meta->MakeNode(type, name, id);
  }
  Ref<Link> link(std::string_view type, std::string_view id, const Ref<Node>& source,
                 const Ref<Node>& target, std::string_view name = {}) {
    return meta->MakeLink(type, name, id, *source, *target);
  }
  template <class T = platform::Element>
  static std::string ids(const Ref<platform::Collection>& collection) {
    std::string text;
    for (T& element : each<T>(collection)) text += element.identifier() + " ";
    return text;
  }
  std::string extensionOf(std::string_view nodeType) {
    return ids(meta->MetaNodes(nodeType)->extension());
  }

  Ref<Meta> meta = make<Meta>();
};

TEST_F(MetaTest, refusesWhatIsNotAModel) {
  const auto a = node("Class", "a");
  const auto attrib = node("Attrib", "a");  // unique per type only
  const auto other = make<Meta>();
  other->Init();
  const auto foreign = other->MakeNode("Attrib", "", "f");
  link(types::kClassHasAttrib, "l", a, attrib);

  EXPECT_EQ(errorOf([&] { node("Class", "a"); }), kDuplicate);
  EXPECT_EQ(errorOf([&] { link(types::kClassHasAttrib, "l", a, attrib); }), kDuplicate);
  EXPECT_EQ(errorOf([&] { node("Class", "b")->identifier("a"); }), kDuplicate);
  EXPECT_EQ(errorOf([&] { (void)meta->MetaNodes("Clas"); }), kNotFound);
  EXPECT_EQ(errorOf([&] { (void)meta->MetaNodes("Class")->extension("none"); }), kNotFound);
  for (const char* type : {"Class.Has.Operation", "Attrib.Has.Class", "Class.Attrib",
                           "Class..Attrib", "Class.Has.Big.Attrib", ".Has.", ""}) {
    EXPECT_EQ(errorOf([&] { link(type, "x", a, attrib); }), kInvalid) << type;
  }
  EXPECT_EQ(errorOf([&] { link(types::kClassHasAttrib, "x", a, foreign); }), kInvalid);
  EXPECT_EQ(errorOf([&] { node("", "x"); }), kInvalid);
  EXPECT_EQ(errorOf([&] { (void)a->outgoing(types::kClassHasAttrib)->Item(2); }), kSubscript);
  EXPECT_EQ(meta->MetaLinks(types::kClassHasAttrib)->extension()->Count(), 1);
}

TEST_F(MetaTest, removesALinkByAnyRoad) {
  const auto a = node("Class", "a");
  const auto type = meta->MetaLinks(types::kClassHasAttrib);
  const std::vector<std::function<void(Link&, Node&)>> roads = {
      [&](Link& l, Node&) { type->extension()->Remove(l.identifier(), false); },
      [&](Link& l, Node&) { a->outgoing(types::kClassHasAttrib)->Remove(l.identifier(), false); },
      [&](Link& l, Node& end) {
        end.Incoming(types::kClassHasAttrib)->Remove(l.identifier(), false);
      },
      [&](Link& l, Node&) { meta->RemoveAssoc(l); },
      [&](Link&, Node& end) { end.Incoming(types::kClassHasAttrib)->Clear(); },
      [&](Link&, Node& end) {
        meta->MetaNodes("Attrib")->extension()->Remove(end.identifier(), false);
        a->outgoing(types::kClassHasAttrib)->Clear();
      },
  };
  for (std::size_t i = 0; i < roads.size(); ++i) {
    const auto attrib = node("Attrib", "attrib " + std::to_string(i));
    const auto l = link(types::kClassHasAttrib, "l", a, attrib, "name");
    roads[i](*l, *attrib);
    EXPECT_EQ(type->extension()->Count(), 0) << i;
    EXPECT_EQ(a->outgoing(types::kClassHasAttrib)->Count(), 0) << i;
    EXPECT_EQ(attrib->Incoming(types::kClassHasAttrib)->Count(), 0) << i;
    EXPECT_EQ(l->source(), a) << i;
    EXPECT_EQ(l->Target(), attrib) << i;
    roads[i](*l, *attrib);  // what is not there any more
  }
}

TEST_F(MetaTest, keepsWhatEndsAtARemovedNode) {
  const auto a = node("Class", "a", "A");
  const auto b = node("Class", "b", "B");
  const auto leaving = link("Class.Knows.Class", "1", a, b, "a.Knows.b");
  const auto ending = link("Class.Knows.Class", "2", b, a, "b.Knows.a");
  const auto own = link("Class.Knows.Class", "3", a, a, "a.Knows.a");
  a->SetProperty("scope", "private");

  meta->MetaNodes("Class")->extension()->Remove("a", false);

  EXPECT_EQ(ids(meta->MetaLinks("Class.Knows.Class")->extension()), "2 ");
  EXPECT_EQ(ids(b->outgoing("Class.Knows.Class")), "2 ");
  EXPECT_EQ(ids(b->Incoming("Class.Knows.Class")), "");
  EXPECT_EQ(ending->Target(), a);
  EXPECT_EQ(a->Parent()->name(), "Class");
  EXPECT_EQ(a->GetProperty("SCOPE"), Value("private"));
  a->identifier("b");  // free to take any: it is not in the repository
  a->SetProperty("scope", "public");
  EXPECT_EQ(a->GetProperty("scope"), Value("public"));
  EXPECT_EQ(leaving->name() + own->name() + ending->name(), "a.Knows.ba.Knows.ab.Knows.a");
  EXPECT_EQ(errorOf([&] { link("Class.Knows.Class", "4", b, a); }), kInvalid);

  meta->RemoveAssoc(*ending);
  meta->RemoveAssoc(*ending);
  test::checkInvariants(*meta);
  EXPECT_EQ(extensionOf("Class"), "b ");
}

TEST_F(MetaTest, linkNamesStayWhenTheEndsChange) {
  const std::string uuid = "01234567-89ab-4def-8123-456789abcdef";
  const std::string text = "neither short nor an identifier of that kind";
  const std::vector<std::pair<std::string, std::string>> ends = {
      {"a", "b"}, {uuid, text}, {text + "2", uuid}, {"sixteen bytes ok", ""}};
  for (const auto& [from, to] : ends) {
    const auto a = node("Class", from);
    const auto b = node("Attrib", to);
    const std::string composed = from + ".Has." + to;
    // Names of the composed one's length that differ in one place each.
    std::vector<std::string> names = {composed};
    for (const std::size_t at : {std::size_t{0}, from.size() + 1, composed.size() - 1}) {
      names.push_back(composed);
      names.back()[at] = '!';
    }
    std::vector<Ref<Link>> links;
    for (const std::string& name : names) {
      links.push_back(link(types::kClassHasAttrib, name + " of " + from, a, b, name));
    }
    a->identifier("other");
    b->identifier("another");
    for (std::size_t i = 0; i < names.size(); ++i) {
      EXPECT_EQ(links[i]->name(), names[i]);
      EXPECT_EQ(meta->MetaLinks(types::kClassHasAttrib)->findByName(names[i]), links[i]);
    }
    a->identifier("done " + from);
    b->identifier("done " + to);
  }
  test::checkInvariants(*meta);
}

TEST_F(MetaTest, keysAreFoundIgnoringCaseAndKeptAsFirstWritten) {
  const auto a = node("Aggregation", "a", "name");
  a->SetProperty("SourceRolename", "role");
  a->SetProperty("brandNew", std::int64_t{7});
  a->SetProperty("BRANDNEW", std::int64_t{8});
  a->SetProperty("NAME", "renamed");
  a->SetProperty("identifier", "b");
  a->SetProperty("onlyAsked", Value());

  EXPECT_EQ(a->GetProperty("SourceRoleName"), Value("role"));
  EXPECT_EQ(a->get("BrandNew"), Value(std::int64_t{8}));
  EXPECT_EQ(a->name() + a->identifier(), "renamedb");
  EXPECT_TRUE(a->Prop_("TargetMultiplicity").isEmpty());
  EXPECT_EQ(extensionOf("Aggregation"), "b ");
  std::string keys;
  for (const auto& key : each<platform::PropertyDefinition>(a->Parent()->properties())) {
    keys += key.name() + " ";
  }
  EXPECT_NE(keys.find("SourceRoleName "), std::string::npos) << keys;
  EXPECT_EQ(keys.find("SourceRolename "), std::string::npos) << keys;
  EXPECT_NE(keys.find("brandNew "), std::string::npos) << keys;
  EXPECT_EQ(keys.find("onlyAsked"), std::string::npos) << keys;
  EXPECT_NE(keys.find("isComposite "), std::string::npos) << "declared, never set: " << keys;
}

TEST_F(MetaTest, listenersMayChangeTheRepositoryWhileTold) {
  using Kind = platform::Change::Kind;
  const auto keeper = node("Class", "keeper");
  std::vector<std::uint64_t> numbers;
  const auto connection = meta->onChange([&](const platform::Change& change) {
    numbers.push_back(change.number);
    const std::string id = change.element.identifier();
    if (change.kind == Kind::nodeMade && id == "unwanted") {
      meta->MetaNodes("Class")->extension()->Remove(id, false);
    }
    if (change.kind == Kind::nodeMade && id == "wrong") change.element.identifier("right");
    if (change.kind == Kind::linkRemoved && id == "l") {
      // While its node is being removed, which takes the new link along as well.
      auto& source = *static_cast<Link&>(change.element).source();
      meta->MakeLink("Class.Knows.Class", "", "l2", source, *keeper);
    }
    if (change.kind == Kind::linkRemoved && id == "first") {
      keeper->outgoing("Class.Knows.Class")->Clear();
    }
    if (change.kind == Kind::propertySet && change.after == Value("shout")) {
      static_cast<Node&>(change.element).SetProperty(change.key, "SHOUT");
    }
  });

  EXPECT_EQ(node("Class", "unwanted")->identifier(), "unwanted");
  EXPECT_EQ(node("Class", "wrong")->identifier(), "right");
  const auto a = node("Class", "a");
  link("Class.Knows.Class", "l", a, keeper);
  meta->MetaNodes("Class")->extension()->Remove("a", false);
  link("Class.Knows.Class", "first", keeper, keeper);
  link("Class.Knows.Class", "second", keeper, keeper);
  keeper->outgoing("Class.Knows.Class")->Clear();
  keeper->SetProperty("scope", "shout");

  EXPECT_EQ(keeper->GetProperty("scope"), Value("SHOUT"));
  EXPECT_EQ(extensionOf("Class"), "keeper right ");
  EXPECT_EQ(ids(meta->MetaLinks("Class.Knows.Class")->extension()), "");
  test::checkInvariants(*meta);
  for (std::size_t i = 1; i < numbers.size(); ++i) EXPECT_EQ(numbers[i], numbers[i - 1] + 1);
}

TEST_F(MetaTest, initEmptiesAndRefusesNewOnesMeanwhile) {
  const auto a = node("Class", "a", "A");
  const auto w = node("Widget", "w");
  const auto l = link("Widget.Of.Class", "l", w, a, "w.Of.a");
  const auto oldType = meta->MetaNodes("Class");
  const auto oldLinks = w->outgoing("Widget.Of.Class");
  int refusals = 0;
  {
    const auto connection = meta->onChange([&](const platform::Change&) {
      refusals += errorOf([&] { node("Sudden", "s"); }) == kInvalid ? 1 : 0;
    });
    meta->Init();
  }
  EXPECT_EQ(refusals, 3);
  EXPECT_EQ(extensionOf("Class"), "");
  EXPECT_EQ(errorOf([&] { (void)meta->MetaNodes("Widget"); }), kNotFound);
  EXPECT_EQ(oldType->extension()->Count(), 0);
  EXPECT_EQ(oldLinks->Count(), 0);
  EXPECT_EQ(l->name() + l->source()->identifier() + l->Target()->name(), "w.Of.awA");
  EXPECT_EQ(errorOf([&] { link("Class.Knows.Class", "k", a, a); }), kInvalid);

  node("Class", "a");
  meta->Init();
  EXPECT_EQ(extensionOf("Class"), "");
  meta = nullptr;
  a->SetProperty("scope", "still there");
  EXPECT_EQ(a->GetProperty("scope"), Value("still there"));
  EXPECT_EQ(a->outgoing("Class.Knows.Class")->Count(), 0);
}

TEST_F(MetaTest, collectionsAreLive) {
  const auto extension = meta->MetaNodes("Class")->extension();
  const auto owner = node("Class", "0");
  const auto links = owner->outgoing("Class.Knows.Class");  // of a type that is not known yet
  for (int i = 1; i <= 200; ++i) {
    const auto made = node("Class", std::to_string(i));
    link("Class.Knows.Class", std::to_string(i), owner, made);
  }
  ASSERT_EQ(extension->Count(), 201);
  ASSERT_EQ(links->Count(), 200);

  const auto at = [](const Ref<platform::Collection>& list, std::int64_t position) {
    return static_cast<platform::Element&>(*list->Item(position)).identifier();
  };
  // Forwards, backwards and removing in between, as a caller by position does.
  for (std::int64_t i = 200; i >= 1; i -= 2) {
    EXPECT_EQ(at(links, i), std::to_string(i));
    links->Remove(at(links, i), false);
    extension->Remove(std::to_string(i), false);
  }
  ASSERT_EQ(links->Count(), 100);
  for (std::int64_t i = 1; i <= 100; ++i) {
    EXPECT_EQ(at(links, i), std::to_string(2 * i - 1));
    EXPECT_EQ(at(extension, i + 1), std::to_string(2 * i - 1));
  }
  node("Class", "last");
  EXPECT_EQ(at(extension, 102), "last");
  EXPECT_EQ(errorOf([&] { (void)extension->Item(0); }), kSubscript);
  EXPECT_EQ(errorOf([&] { (void)extension->Item(103); }), kSubscript);
  links->Remove("1 of none", false);
  links->Clear();
  EXPECT_EQ(links->Count(), 0);
  EXPECT_EQ(meta->MetaLinks("Class.Knows.Class")->extension()->Count(), 0);
  test::checkInvariants(*meta);
}

}  // namespace
}  // namespace brisel::store
