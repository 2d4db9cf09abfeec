#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "interchange/DimTestSupport.h"

namespace brisel::interchange {
namespace {

namespace types = platform::types;
using platform::each;
using platform::Link;

class DimRoundTrip : public ::testing::Test {
 protected:
  Ref<Node> node(std::string_view type, std::string_view id, std::string_view name = {}) {
    return model->MakeNode(type, name, id);
  }
  Ref<Node> area(const Ref<Node>& of, std::string_view id) {
    const auto made = node(types::kGeomArea, id);
    for (const char* key : {"top", "left", "Width", "height"}) made->SetProperty(key, 10);
    made->SetProperty("IsVisible", true);
    made->SetProperty("NodeId", of->identifier());
    made->SetProperty("NodeClass", of->Parent()->name());
    return made;
  }
  Ref<Node> point(std::string_view relation, int rank, std::string_view kind) {
    const auto made = node(types::kGeomPoint, "p" + std::to_string(++points));
    made->SetProperty("X", 100 * rank);
    made->SetProperty("Y", -7);
    made->SetProperty("kindOfPosition", kind);
    made->SetProperty("linkId", relation);
    made->SetProperty("linkClass", types::kAssociation);
    made->SetProperty("rank", rank);
    return made;
  }
  /// Writes, reads, and expects the bytes of the first writing when it is written again.
  Ref<MetaRepository> expectStable() {
    const std::string first = DimWriter::text(*model);
    const auto read = kit.read(first);
    EXPECT_EQ(DimWriter::text(*read), first);
    return read;
  }
  bool writes(std::string_view words) {
    return DimWriter::text(*model).find(words) != std::string::npos;
  }

  DimKit kit;
  Ref<MetaRepository> model = kit.empty();
  int points = 0;
};

TEST_F(DimRoundTrip, writesWhatTheFormatSays) {
  const auto customer = node(types::kClass, "c1", "Customer");
  customer->SetProperty("scope", "public");
  customer->SetProperty("category", "");
  const auto address = node(types::kAttrib, "a1", "address");
  address->SetProperty("final", false);
  const auto knows = node(types::kAssociation, "r1", "knows");
  model->MakeLink(types::kClassHasAttrib, "c1.Has.a1", "l1", *customer, *address);
  model->MakeLink(types::kAssociationSource, "s", "l2", *knows, *customer);
  area(customer, "g1")->SetProperty("left", -20);
  point("r1", 1, "START");
  point("r1", 2, "MIDDLE");
  point("r1", 3, "END");

  const std::string text = dimFile(
      R"({"node":"Class","id":"c1","name":"Customer","properties":{"category":"","scope":"public"},)"
      R"("area":{"left":-20,"top":10,"width":10,"height":10}},)"
      "\n"
      R"({"node":"Attrib","id":"a1","name":"address","properties":{"final":false}},)"
      "\n"
      R"({"node":"Association","id":"r1","name":"knows","points":[[100,-7],[200,-7],[300,-7]]},)"
      "\n"
      R"({"link":"Class.Has.Attrib","id":"l1","source":"c1","target":"a1"},)"
      "\n"
      R"({"link":"Association.Source.Class","id":"l2","name":"s","source":"r1","target":"c1"},)"
      "\n");
  EXPECT_EQ(DimWriter::text(*model), text);
  const auto read = expectStable();
  EXPECT_EQ(nodeOf(*read, types::kClass, "c1")->GetProperty("category"), Value(""));
  EXPECT_TRUE(nodeOf(*read, types::kClass, "c1")->GetProperty("comment").isEmpty());
  EXPECT_EQ(nodeOf(*read, types::kAttrib, "a1")->Incoming(types::kClassHasAttrib)->Count(), 1);
  EXPECT_EQ(read->MetaNodes(types::kGeomPoint)->extension()->Count(), 3);
}

TEST_F(DimRoundTrip, keepsHostileTextsAsTheyAre) {
  const std::vector<std::string> texts = {
      "",
      "\"quoted\" \\back\\slash/ \b\f\n\r\t\x01\x1f\x7f",
      std::string("a\0b", 3),
      "\xC2\x85|\xE2\x80\xA8|\xE2\x80\xA9|\xE2\x80\xAA",
      "\xF0\x9F\x98\x80 \xC3\xA4\xC3\xB6 \xE6\xBC\xA2",
      "},\n{\"node\":\"Class\"},\n]",
      "%TRUE%::.\xEF\xBB\xBF",
      std::string(3'000'000, 'x'),
      std::string(70'000, '\n'),
  };
  for (std::size_t i = 0; i < texts.size(); ++i) {
    // The name tells the nodes apart, should an identifier get lost.
    const auto made = node(types::kClass, texts[i], texts[i]);
    made->SetProperty("comment", texts[i]);
    if (i > 0 && texts[i].size() < 100) made->SetProperty(texts[i], static_cast<int>(i));
  }
  const auto read = expectStable();
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const auto found = nodeOf(*read, types::kClass, texts[i]);
    ASSERT_TRUE(found) << i;
    EXPECT_EQ(found->name(), texts[i]);
    EXPECT_EQ(found->GetProperty("comment"), Value(texts[i]));
  }
  const std::string text = DimWriter::text(*model);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), static_cast<int>(texts.size()) + 2);
  EXPECT_EQ(text.find("\xE2\x80\xA8"), std::string::npos);
}

TEST_F(DimRoundTrip, keepsTheKindOfAValue) {
  const double infinite = std::numeric_limits<double>::infinity();
  const std::vector<Value> values = {true,
                                     false,
                                     0,
                                     std::numeric_limits<std::int64_t>::min(),
                                     std::numeric_limits<std::int64_t>::max(),
                                     0.0,
                                     -0.0,
                                     1.0,
                                     0.1,
                                     1e300,
                                     5e-324,
                                     9007199254740993.0,
                                     infinite,
                                     -infinite,
                                     "1",
                                     "true",
                                     ""};
  const auto layout = node(types::kLayout, "L");
  for (std::size_t i = 0; i < values.size(); ++i) {
    layout->SetProperty("p" + std::to_string(i), values[i]);
  }
  layout->SetProperty("nan", std::nan(""));
  const auto read = expectStable();
  const auto back = nodeOf(*read, types::kLayout, "L");
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(back->GetProperty("p" + std::to_string(i)), values[i]) << i;
  }
  EXPECT_TRUE(std::signbit(back->GetProperty("p6").number()));
  EXPECT_TRUE(std::isnan(back->GetProperty("nan").number()));
}

TEST_F(DimRoundTrip, doesNotDependOnTheOrderOfSetting) {
  node("Widget", "w1")->SetProperty("second", 2);
  const auto other = node("Widget", "w2");
  other->SetProperty("First", 1);
  other->SetProperty("SECOND", 3);  // the key is kept as it was first written
  EXPECT_TRUE(writes(R"({"First":1,"second":3})"));
  expectStable();
}

TEST_F(DimRoundTrip, keepsGeometryThatIsNotTheUsual) {
  const auto plain = node(types::kClass, "plain");
  const auto twice = node(types::kClass, "twice");
  const auto extra = node(types::kClass, "extra");
  const auto hidden = node(types::kClass, "hidden");
  area(plain, "g-plain");
  area(twice, "g-first");
  area(twice, "g-second");
  area(extra, "g-extra")->SetProperty("color", "red");
  area(hidden, "g-hidden")->SetProperty("IsVisible", false);
  area(plain, "g-lost")->SetProperty("NodeId", "nothing");
  area(plain, "g-type")->SetProperty("NodeClass", "Nothing");
  area(plain, "g-named")->name("named");
  node(types::kAssociation, "r");
  point("r", 2, "END");
  point("r", 1, "START");
  point("lone", 1, "START");

  const auto read = expectStable();
  for (const char* type : {"GeomArea", "GeomPoint"}) {
    EXPECT_EQ(read->MetaNodes(type)->extension()->Count(),
              model->MetaNodes(type)->extension()->Count());
  }
  for (const char* id :
       {"g-first", "g-second", "g-extra", "g-hidden", "g-lost", "g-type", "g-named", "g-plain"}) {
    EXPECT_TRUE(nodeOf(*read, types::kGeomArea, id)) << id;
  }
  EXPECT_TRUE(nodeOf(*read, types::kGeomPoint, "p1"));
}

TEST_F(DimRoundTrip, savingTwiceGivesTheSameBytesThoughGeometryIsNew) {
  const auto drawn = node(types::kClass, "c");
  area(drawn, "before");
  const std::string first = DimWriter::text(*model);
  model->MetaNodes(types::kGeomArea)->extension()->Clear();
  area(drawn, "after");
  EXPECT_EQ(DimWriter::text(*model), first);
  model->MakeLink("GeomArea.As.Class", "", "l", *nodeOf(*model, types::kGeomArea, "after"), *drawn);
  EXPECT_TRUE(writes("after"));  // something refers to it now
  expectStable();
}

TEST_F(DimRoundTrip, leavesLinksToRemovedNodesAwayAndNothingElse) {
  const auto stays = node(types::kClass, "stays");
  const auto goes = node(types::kClass, "goes");
  const auto relation = node(types::kAssociation, "r", "knows");
  relation->SetProperty("SourceRoleName", "owner");
  model->MakeLink(types::kAssociationSource, "x", "l1", *relation, *stays);
  model->MakeLink(types::kAssociationTarget, "y", "l2", *relation, *goes);
  model->MetaNodes(types::kClass)->extension()->Remove("goes", false);
  const auto read = expectStable();
  EXPECT_EQ(nodeOf(*read, types::kAssociation, "r")->GetProperty("SourceRoleName"), "owner");
  EXPECT_EQ(read->MetaLinks(types::kAssociationSource)->extension()->Count(), 1);
  EXPECT_EQ(read->MetaLinks(types::kAssociationTarget)->extension()->Count(), 0);
}

TEST_F(DimRoundTrip, oneEditChangesOneLine) {
  const auto moved = node(types::kClass, "c1", "Moved");
  const auto box = area(moved, "g");
  node(types::kClass, "c2", "Other");
  const auto linesOf = [&] {
    std::multiset<std::string> lines;
    std::istringstream text(DimWriter::text(*model));
    for (std::string line; std::getline(text, line);) lines.insert(line);
    return lines;
  };
  const auto changed = [](const auto& before, const auto& after) {
    std::vector<std::string> gone;
    std::set_difference(before.begin(), before.end(), after.begin(), after.end(),
                        std::back_inserter(gone));
    return gone.size();
  };
  const auto before = linesOf();
  box->SetProperty("left", 99);
  const auto boxMoved = linesOf();
  EXPECT_EQ(changed(before, boxMoved), 1U);
  node(types::kClass, "c3", "New");
  const auto added = linesOf();
  EXPECT_EQ(changed(boxMoved, added), 0U);
  EXPECT_EQ(changed(added, boxMoved), 1U);
}

TEST_F(DimRoundTrip, holdsForGeneratedModels) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    std::mt19937 random(seed);
    const auto pick = [&](std::size_t below) { return random() % below; };
    const std::string bits[] = {"a", "\"", "\n", "\xE2\x80\xA8", ".", "::", "\\u0041", ",", "{"};
    const auto word = [&] {
      std::string text;
      for (std::size_t i = pick(5); i > 0; --i) text += bits[pick(std::size(bits))];
      return text;
    };
    model = kit.empty();
    std::vector<Ref<Node>> nodes;
    const std::string_view kinds[] = {types::kClass, types::kAssociation, "Thing",
                                      types::kGeomArea};
    for (std::size_t i = 0; i < 300; ++i) {
      nodes.push_back(node(kinds[pick(4)], word() + std::to_string(i), word()));
      const Value values[] = {word(), static_cast<int>(pick(9)), pick(2) == 0, 0.5, Value()};
      for (std::size_t k = pick(4); k > 0; --k)
        nodes.back()->SetProperty("k" + word(), values[pick(5)]);
      if (pick(3) == 0) area(nodes[pick(nodes.size())], "area" + std::to_string(i));
    }
    for (std::size_t i = 0; i < 300; ++i) {
      Node& source = *nodes[pick(nodes.size())];
      Node& target = *nodes[pick(nodes.size())];
      const std::string type = source.Parent()->name() + ".Has." + target.Parent()->name();
      const std::string named = source.identifier() + ".Has." + target.identifier();
      model->MakeLink(type, pick(2) == 0 ? named : word(), std::to_string(i), source, target);
    }
    for (std::size_t i = 0; i < 30; ++i) {
      const auto& gone = nodes[pick(nodes.size())];
      gone->Parent()->extension()->Remove(gone->identifier(), false);
    }
    expectStable();
    ASSERT_FALSE(HasFailure()) << "seed " << seed;
  }
}

TEST_F(DimRoundTrip, readsAFileInPiecesAndInAnyLayout) {
  std::string lines;
  for (int i = 0; i < 20'000; ++i) {
    lines += R"({"node":"Class","id":"c)" + std::to_string(i) +
             R"(","name":"Some class"},)"
             "\n";
  }
  const std::string text = dimFile(lines);
  ASSERT_GT(text.size(), 900'000U);  // several pieces
  EXPECT_EQ(kit.again(text), text);

  const auto replaced = [&](char what, std::string_view by) {
    std::string changed;
    for (const char c : text) changed += c == what ? by : std::string_view(&c, 1);
    return changed;
  };
  EXPECT_EQ(kit.again(replaced('\n', "\r\n")), text);
  EXPECT_EQ(kit.again(replaced('\n', "")), text);
  EXPECT_EQ(kit.again(replaced(',', "\n  ,\n  ")), text);
  EXPECT_EQ(kit.again("\xEF\xBB\xBF" + text), text);
}

TEST_F(DimRoundTrip, refusesWhatAFileCannotHold) {
  const auto odd = node(types::kClass, "c1");
  odd->SetProperty("comment", Value(Ref<platform::Object>(model.get())));
  auto failure = failureOf([&] { static_cast<void>(DimWriter::text(*model)); });
  EXPECT_EQ(failure.text,
            "A DIM file cannot hold the object that is the property \"comment\" of the Class "
            "\"c1\"");
  odd->SetProperty("comment", "broken \xFF byte");
  failure = failureOf([&] { static_cast<void>(DimWriter::text(*model)); });
  EXPECT_EQ(failure.text,
            "A DIM file cannot hold text that is not UTF-8, as is in "
            R"({"node":"Class","id":"c1","name":"")");
}

}  // namespace
}  // namespace brisel::interchange
