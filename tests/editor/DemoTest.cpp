#include <map>
#include <set>

#include <gtest/gtest.h>

#include "repository/ViewDefaults.h"
#include "support/EditorBench.h"
#include "support/EditorChecks.h"
#include "support/RepositoryInvariants.h"

namespace brisel::editor {
namespace {

using platform::each;
using platform::Rect;
using test::EditorBench;
namespace types = platform::types;

std::map<std::string, Rect> placesIn(const EditorBench& bench) {
  std::map<std::string, Rect> places;
  for (auto& box : each<platform::DiagramNode>(bench.editor->diagram()->getAllNodes())) {
    places[box.key()] = box.bounds();
  }
  return places;
}

/// The keys of boxes that another box covers in part.
std::string overlaps(const std::map<std::string, Rect>& places) {
  std::string found;
  for (auto a = places.begin(); a != places.end(); ++a) {
    for (auto b = std::next(a); b != places.end(); ++b) {
      if (a->second.intersects(b->second)) found += a->first + "/" + b->first + " ";
    }
  }
  return found;
}

TEST(Demo, showsEveryKindOfNodeAndLink) {
  const EditorBench bench;
  bench.editor->Populate();
  bench.editor->MakeDemo();
  bench.editor->AddPositions();
  EXPECT_TRUE(bench.messages.empty());
  for (const auto type :
       {types::kClass, types::kAttrib, types::kOperation, types::kParameter, types::kDataType,
        types::kStereotype, types::kAssociation, types::kAggregation, types::kGeneralization,
        types::kGeomArea, types::kGeomPoint, types::kLayout}) {
    EXPECT_GT(bench.count(type), 0) << type;
  }
  for (const char* type :
       {"Class.Has.Attrib", "Class.Has.Operation", "Operation.Has.Parameter", "Attrib.Has.DataType",
        "Operation.Has.DataType", "Parameter.Has.DataType", "Class.As.Stereotype",
        "Association.As.Stereotype", "Generalization.As.Stereotype", "Association.Source.Class",
        "Association.Target.Class", "Aggregation.Source.Class", "Aggregation.Target.Class",
        "Generalization.Super.Class", "Generalization.Sub.Class"}) {
    EXPECT_GT(bench.linkCount(type), 0) << type;
  }
  std::set<std::string> used;
  for (auto& shown : each<platform::Node>(bench.store->MetaNodes(types::kClass)->extension())) {
    used.insert(repository::stereotypeName(shown));
  }
  for (const auto& category : repository::kTypeCategories) {
    EXPECT_TRUE(used.contains(std::string(category.key))) << category.key;
  }
  std::set<std::pair<int, int>> ends;
  int loops = 0;
  for (auto& line : each<platform::DiagramLink>(bench.editor->diagram()->getAllLinks())) {
    ends.emplace(line.beginArrow(), line.endArrow());
    loops += line.source() == line.target() ? 1 : 0;
  }
  EXPECT_GE(ends.size(), 6U) << "plain, both ways, one way, two diamonds, inheritance";
  EXPECT_GT(loops, 0);
  test::checkInvariants(*bench.store);
}

TEST(Demo, isDrawnWithoutBuiltinTypesAndWithoutOverlaps) {
  EditorBench bench;
  bench.editor->Populate();
  bench.editor->MakeDemo();
  EXPECT_EQ(static_cast<std::int64_t>(placesIn(bench).size()), bench.count(types::kClass) - 1);
  EXPECT_EQ(overlaps(placesIn(bench)), "");
  for (const char* button : {"ViewAttributes", "ViewOperations", "ViewParameters"}) {
    EXPECT_TRUE(bench.isPressed(button)) << button;
  }
  const auto before = placesIn(bench);
  bench.editor->AddPositions();
  bench.redraw();
  EXPECT_EQ(placesIn(bench), before);
  bench.click("COM::Builtin");
  EXPECT_EQ(test::checkAgreement(bench), "");
}

TEST(Demo, addsToWhatIsThere) {
  const EditorBench bench;
  bench.editor->Populate();
  bench.editor->CreateClass("mine", "Mine", "", "", "", "public");
  bench.box("mine")->bounds({5000, 4000, 3000, 2000});
  bench.click("ViewOperations");
  bench.editor->diagram()->AddButton("Demo", "", "", "", true);
  auto before = placesIn(bench);
  std::int64_t classes = bench.count(types::kClass);
  std::int64_t dataTypes = 0;
  for (int round = 0; round < 2; ++round) {
    bench.click("Demo");
    const auto after = placesIn(bench);
    for (const auto& [key, bounds] : before) EXPECT_EQ(after.at(key), bounds) << key;
    EXPECT_GT(bench.count(types::kClass), classes);
    EXPECT_EQ(overlaps(after), "");
    classes = bench.count(types::kClass);
    EXPECT_TRUE(round == 0 || bench.count(types::kDataType) == dataTypes) << "used again";
    dataTypes = bench.count(types::kDataType);
    before = after;
  }
  EXPECT_EQ(classes % 2, 1) << "two shops and a class";
  EXPECT_TRUE(bench.messages.empty());
  test::checkInvariants(*bench.store);
}

}  // namespace
}  // namespace brisel::editor
