#include <gtest/gtest.h>

#include "controls/Property.h"
#include "platform/Error.h"
#include "support/Model.h"

namespace brisel::controls {
namespace {

using platform::make;
using platform::Ref;
using platform::Value;

class PropertyGrid : public testing::Test, protected test::Model {
 protected:
  PropertyGrid() {
    addClass("A");
    relation = model->MakeAggregation("owns", "R", "A", "A");
  }

  void show(platform::Node& node, const std::vector<std::string>& keys) {
    grid->initialize();
    grid->owner(node.Parent().get());
    for (const std::string& key : keys) grid->addKey(key);
    grid->load();
    grid->node(&node);
  }
  [[nodiscard]] std::string keys() const {
    std::string all;
    for (const std::string& key : grid->keys()) all += key + " ";
    return all;
  }

  NodeRef relation;
  Ref<Property> grid = make<Property>();
};

TEST_F(PropertyGrid, showsTheKeysAskedForOrElseAll) {
  show(*relation, {"Name", "Intention", "IsDerived", "name"});
  EXPECT_EQ(keys(), "Name Intention IsDerived ");
  show(*find("Class", "A"), {});
  EXPECT_EQ(keys(), "Name Description category comment scope ");
  grid->clear();
  EXPECT_EQ(keys(), "Name Description category comment scope ");
  EXPECT_EQ(grid->ValueOf("scope"), Value("")) << "of no node";
  grid->release();
  EXPECT_EQ(keys(), "");
  EXPECT_THROW((void)grid->ValueOf("scope"), platform::Error);
}

TEST_F(PropertyGrid, keepsEditsUntilTheyAreApplied) {
  relation->SetProperty("Description", "why");
  show(*relation, {"Name", "Intention", "SourceRolename", "IsComposite"});
  EXPECT_EQ(grid->ValueOf("Intention"), Value("why"));
  const std::uint64_t before = store->changeCount();
  grid->Edit("intention", "because\nof it");
  grid->Edit("SourceRolename", "part");
  grid->Edit("Name", "has");
  EXPECT_EQ(grid->ValueOf("Intention"), Value("because\nof it"));
  EXPECT_EQ(store->changeCount(), before) << "nothing is written yet";

  // What is edited is not overtaken by the model, what is not is read from it.
  relation->SetProperty("isComposite", true);
  relation->name("renamed");
  EXPECT_EQ(grid->ValueOf("IsComposite"), Value(true));
  EXPECT_EQ(grid->ValueOf("Name"), Value("has"));
  grid->Edit("Name", "renamed");
  EXPECT_FALSE(grid->isEdited("Name")) << "what the node has already";

  const std::uint64_t changes = store->changeCount();
  grid->apply();
  EXPECT_EQ(store->changeCount(), changes + 2);
  EXPECT_EQ(relation->GetProperty("Description"), Value("because\nof it"));
  EXPECT_EQ(relation->GetProperty("SourceRoleName"), Value("part"));
  EXPECT_FALSE(grid->isEdited("Intention"));
  grid->apply();
  EXPECT_EQ(store->changeCount(), changes + 2) << "once";
}

TEST_F(PropertyGrid, writesNothingToANodeThatIsGone) {
  show(*relation, {"Name", "IsDerived"});
  grid->Edit("Name", "late");
  model->DeleteAggregation("R");
  EXPECT_EQ(grid->ValueOf("IsDerived"), Value(false));
  EXPECT_THROW(grid->Edit("IsDerived", true), platform::Error);
  grid->apply();
  EXPECT_EQ(relation->name(), "owns");
  EXPECT_FALSE(grid->isEdited("Name"));

  // It goes while it is written.
  const NodeRef other = model->MakeAggregation("owns", "R", "A", "A");
  show(*other, {"Name", "IsDerived"});
  grid->Edit("Name", "first");
  grid->Edit("IsDerived", true);
  const auto following = store->onChange([&](const platform::Change& change) {
    if (change.kind == platform::Change::Kind::renamed) model->DeleteAggregation("R");
  });
  grid->apply();
  EXPECT_EQ(other->name(), "first");
  EXPECT_FALSE(other->GetProperty("IsDerived").isTrue());
}

TEST_F(PropertyGrid, dropsEditsOfAnotherNode) {
  const NodeRef other = model->MakeAggregation("other", "S", "A", "A");
  show(*relation, {"Name"});
  grid->Edit("Name", "edited");
  grid->node(other.get());
  EXPECT_EQ(grid->ValueOf("Name"), Value("other"));
  grid->apply();
  EXPECT_EQ(other->name() + relation->name(), "otherowns");
}

TEST_F(PropertyGrid, takesWhatFitsTheKindOfAProperty) {
  const NodeRef attribute = addAttribute("A", "a", "Integer");
  attribute->SetProperty("rank", 7);
  attribute->SetProperty("checked", true);
  struct Case {
    const char* key;
    PropertyKind kind;
    Value given;
    Value kept;  ///< empty: refused
  };
  const Value refused;
  const Case cases[] = {
      {"final", PropertyKind::boolean, true, true},
      {"final", PropertyKind::boolean, "true", true},
      {"final", PropertyKind::boolean, "yes", refused},
      {"final", PropertyKind::boolean, 1, refused},
      {"IsVirtual", PropertyKind::boolean, "False", false},
      {"checked", PropertyKind::boolean, "no", refused},
      {"scope", PropertyKind::choice, "PROTECTED", "protected"},
      {"scope", PropertyKind::choice, "", ""},
      {"scope", PropertyKind::choice, "friend", refused},
      {"SourceMultiplicity", PropertyKind::openChoice, "2..7", "2..7"},
      {"TargetMultiplicity", PropertyKind::openChoice, 3, "3"},
      {"PreferredDirection", PropertyKind::openChoice, "source to target", "source to target"},
      {"rank", PropertyKind::number, "12", 12},
      {"rank", PropertyKind::number, 2.5, 2.5},
      {"rank", PropertyKind::number, "12a", refused},
      {"rank", PropertyKind::number, "inf", refused},
      {"rank", PropertyKind::number, "", refused},
      {"comment", PropertyKind::lines, "a\nb", "a\nb"},
      {"value", PropertyKind::text, 42, "42"},
      {"value", PropertyKind::text, true, refused},
      {"value", PropertyKind::text, Value(attribute), refused},
  };
  for (const Case& one : cases) {
    show(*attribute, {one.key});
    const std::string what = std::string(one.key) + " " + one.given.text();
    EXPECT_EQ(grid->format(one.key).kind, one.kind) << what;
    try {
      grid->Edit(one.key, one.given);
      EXPECT_EQ(grid->ValueOf(one.key), one.kept) << what;
    } catch (const platform::Error& error) {
      EXPECT_EQ(one.kept, refused) << what << ": " << error.what();
      EXPECT_NE(std::string(error.what()).find(one.key), std::string::npos) << error.what();
      EXPECT_FALSE(grid->isEdited(one.key)) << what;
    }
  }
  show(*attribute, {"scope"});
  EXPECT_EQ(as<platform::ValueArray>(grid->call("Words", {"scope"}).object())->values(),
            (std::vector<Value>{"public", "protected", "private"}));
}

TEST_F(PropertyGrid, answersByName) {
  show(*relation, {"IsDerived"});
  EXPECT_EQ(as<platform::ValueArray>(grid->get("Keys").object())->values(),
            (std::vector<Value>{"IsDerived"}));
  grid->call("Edit", {"IsDerived", true});
  EXPECT_EQ(grid->call("ValueOf", {"IsDerived"}), Value(true));
  grid->call("apply");
  EXPECT_EQ(relation->GetProperty("IsDerived"), Value(true)) << "a Boolean as before";
}

}  // namespace
}  // namespace brisel::controls
