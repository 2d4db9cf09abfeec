#include <gtest/gtest.h>

#include "platform/Error.h"
#include "repository/Positioner.h"
#include "support/EditorBench.h"

namespace brisel::repository {
namespace {

using platform::Ref;
using platform::Value;
using test::EditorBench;

struct Ends {
  int begin;
  int end;
  bool dashed = false;
  friend bool operator==(const Ends&, const Ends&) = default;
};

Ends endsOf(const EditorBench& bench, const char* key) {
  const auto line = bench.line(key);
  return {line->beginArrow(), line->endArrow(), line->dashed()};
}

class Wrappers : public testing::Test {
 protected:
  Wrappers() {
    bench.addClass("A");
    bench.addClass("B");
    bench.editor->Populate();
  }

  Ref<Association> drawn(const char* kind, bool composite = false) {
    if (std::string_view(kind) == "Association") {
      return bench.editor->CreateAssociation("r", "", "", "A", "B");
    }
    if (std::string_view(kind) == "Aggregation") {
      return bench.editor->CreateAggregation("r", "", "", "A", "B", composite);
    }
    return bench.editor->CreateGeneralization("r", "", "", "A", "B");
  }

  void stereotype(platform::Node& node, const char* name) {
    bench.model->SetStereotype(node, bench.model->MakeStereotype(name, name, "").get());
  }

  EditorBench bench;
};

TEST_F(Wrappers, decorateLinesByKindAndNavigability) {
  struct Case {
    const char* kind;
    bool composite, source, target;
    Ends wanted;
  };
  for (const Case& one : {Case{"Association", false, false, false, {0, 0}},
                          Case{"Association", false, true, false, {3, 0}},
                          Case{"Association", false, true, true, {3, 3}},
                          Case{"Aggregation", false, true, false, {14, 0}},
                          Case{"Aggregation", true, false, true, {13, 3}},
                          Case{"Generalization", false, true, true, {0, 8}}}) {
    const auto wrapper = drawn(one.kind, one.composite);
    wrapper->clsObject()->SetProperty("SourceNavigable", one.source);
    wrapper->clsObject()->SetProperty("TargetNavigable", one.target);
    wrapper->Populate();
    EXPECT_EQ(endsOf(bench, "r"), one.wanted) << one.kind;
    EXPECT_EQ(wrapper->isAssociation() + wrapper->isAggregation() + wrapper->isGeneralization(), 1);
    bench.editor->diagram()->deleteLink("r");
    bench.model->RemoveObject(one.kind, "r");
  }
}

TEST_F(Wrappers, labelLinesAndTheirEnds) {
  const auto wrapper = drawn("Association");
  const auto node = wrapper->clsObject();
  wrapper->name("owns");
  node->SetProperty("SourceRoleName", "owner");
  node->SetProperty("SourceMultiplicity", "1");
  node->SetProperty("SourceCardinality", "9");
  node->SetProperty("TargetCardinality", "0..*");
  stereotype(*node, "use");
  wrapper->Populate();
  const auto line = bench.line("r");
  EXPECT_EQ(line->text(), "<<use>>\r\nowns");
  EXPECT_EQ(line->beginText(), "owner 1") << "the multiplicity counts before the cardinality";
  EXPECT_EQ(line->endText(), "0..*");
  EXPECT_TRUE(line->dashed());

  const auto general = bench.editor->CreateGeneralization("g", "named", "", "A", "B");
  stereotype(*general->clsObject(), "realize");
  general->Populate();
  EXPECT_EQ(bench.line("g")->text(), "") << "a generalization has no label";
  EXPECT_EQ(endsOf(bench, "g"), (Ends{0, 8, true}));
}

TEST_F(Wrappers, outliveTheirLines) {
  const auto wrapper = drawn("Association");
  bench.editor->diagram()->deleteLink("r");
  EXPECT_NO_THROW(wrapper->Populate());
  EXPECT_EQ(wrapper->name(), "New Association");
}

TEST_F(Wrappers, moveLinesWithoutTouchingTheModel) {
  bench.editor->CreateClass("C", "C", "", "", "", "");
  const auto wrapper = drawn("Association");
  wrapper->MoveToNewTarget(*bench.editor->GetClassFromNode("C"));
  EXPECT_EQ(bench.line("r")->target()->key(), "C");
  wrapper->MoveToNewSource(*bench.editor->GetClassFromNode("C"));
  EXPECT_EQ(bench.line("r")->source()->key(), "C");
  EXPECT_EQ(EditorBench::ends(*wrapper->clsObject()), "A>B");
}

TEST_F(Wrappers, padTextsByCharacters) {
  const auto wrapper = bench.editor->GetClassFromNode("A");
  EXPECT_EQ(wrapper->GetString("ab", 4), "ab  ");
  EXPECT_EQ(wrapper->GetString("abcd", 2), "abcd");
  EXPECT_EQ(wrapper->GetString("é", 2), "é ");
  EXPECT_EQ(wrapper->GetString("", -1), "");
}

TEST_F(Wrappers, savePointsByTheirPlace) {
  const auto wrapper = drawn("Association");
  const auto points = bench.line("r")->ExtraPoints();
  Positioner positioner;
  struct Case {
    std::size_t bends;
    const char* kinds;
  };
  for (const Case& one : {Case{0, "START1 END2 "}, Case{2, "START1 MIDDLE2 MIDDLE3 END4 "}}) {
    points->Clear();
    for (std::size_t i = 0; i < one.bends; ++i) points->Add(9000, 9000 + 500.0 * double(i));
    bench.model->DeleteAllGeomPoints();
    wrapper->SavePoints(positioner, *bench.model);
    std::string kinds;
    for (auto& point :
         platform::each<platform::Node>(bench.store->MetaNodes("GeomPoint")->extension())) {
      kinds += point.GetProperty("kindOfPosition").text() + point.GetProperty("rank").text() + " ";
    }
    EXPECT_EQ(kinds, one.kinds);
  }
}

TEST_F(Wrappers, areNeverWithoutWhatTheyPair) {
  const auto isRefused = [](platform::Object& wrapper, const char* member,
                            const platform::Value& value) {
    const platform::Value before = wrapper.get(member);
    EXPECT_THROW(wrapper.set(member, value), platform::Error) << member;
    EXPECT_EQ(wrapper.get(member), before);
  };
  const auto wrapper = bench.editor->GetClassFromNode("A");
  const auto association = drawn("Association");
  isRefused(*wrapper, "clsObject", {});
  isRefused(*wrapper, "clsObject", platform::Value(association->clsObject()));
  isRefused(*wrapper, "Node", {});
  isRefused(*association, "clsObject", {});
  isRefused(*association, "clsObject", platform::Value(wrapper->clsObject()));
  isRefused(*association, "link", {});
}

TEST(StoredTwips, roundTiesToEvenAndOverflow) {
  EXPECT_EQ(storedTwips(10.5), 10);
  EXPECT_EQ(storedTwips(11.5), 12);
  EXPECT_EQ(storedTwips(-0.5), 0);
  EXPECT_EQ(storedTwips(16777217.0), 16777216) << "of single precision";
  for (const double far : {3e9, -3e9, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THROW(static_cast<void>(storedTwips(far)), platform::Error);
  }
}

}  // namespace
}  // namespace brisel::repository
