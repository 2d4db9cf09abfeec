#include <functional>
#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "editor/CLSEditor.h"
#include "interchange/DimReader.h"
#include "interchange/DimWriter.h"
#include "support/CanvasChecks.h"
#include "support/EditorBench.h"
#include "support/EditorChecks.h"
#include "support/FailingRepository.h"
#include "support/RepositoryInvariants.h"

namespace brisel::editor {
namespace {

using platform::each;
using platform::Node;
using platform::Ref;
using test::EditorBench;
using test::FailingRepository;

/// A random model and a person who refactors it.
class Refactorer : public EditorBench {
 public:
  explicit Refactorer(std::uint32_t seed)
      : canvas(dynamic_cast<canvas::DiagramControl&>(*editor->diagram())), m_random(seed) {
    constexpr std::size_t kClasses = 6;
    for (std::size_t i = 0; i < kClasses; ++i) addClass("C" + std::to_string(i));
    addClass("Shape", "COM::Enum");
    for (std::size_t i = 0; i < 2 * kClasses; ++i) addMember();
    editor->Populate();
    editor->Layout("MATRIX");
    for (std::size_t i = 0; i < 2 * kClasses; ++i) addRelationship();
  }

  /// One refactoring; its name.
  std::string step() {
    const std::string key = anyClass();
    switch (below(6)) {
      case 0:
        hideAndShow();
        answerForm({{"ClassName", "SetText", "S" + std::to_string(below(5))},
                    {once(2) ? "AllAttributes" : "AllOperations", "Click"},
                    {once(9) ? "Cancel" : "Ok", "Click"}});
        return split(key);
      case 1:
        answerForm({{"Attributes", "Select", 1}, {"Ok", "Click"}});
        editor->ExtractAttribute(key);
        return "extract " + key;
      case 2:
        for (int i = 0; i < 3; ++i) canvas.selNode(platform::Value(anyClass()));
        if (once(2)) editor->ActiveBar21()->Click("miMorphMerge");
        canvas.unselectAll();
        return "merge";
      default: {
        static constexpr std::array kWords = {"ToAssociation", "ToSharedAggregation",
                                              "ToCompositeAggregation", "ToGeneralization",
                                              "ToAttribute"};
        const auto lines = canvas.getAllLinks();
        if (lines->Count() == 0) return addRelationship();
        const auto line = platform::as<platform::DiagramLink>(lines->Item(oneUpTo(lines->Count())));
        const std::string which = line->key();
        const char* word = kWords[below(kWords.size())];
        editor->MorphingAssoc(which, word);
        return std::string(word) + " " + which;
      }
    }
  }
  [[nodiscard]] std::int64_t relationships() const {
    return count("Association") + count("Aggregation") + count("Generalization");
  }
  /// Each member of all classes, as it is seen from outside, and how often.
  [[nodiscard]] std::map<std::string, int> members() const {
    std::map<std::string, int> all;
    for (auto& one : each<Node>(store->MetaNodes("Class")->extension())) {
      for (const char* type : {"Class.Has.Attrib", "Class.Has.Operation"}) {
        for (auto& link : each<platform::Link>(one.outgoing(type))) {
          const auto member = link.Target();
          ++all[member->name() + ':' + model->GetDataType(*member)->name() + ' ' +
                member->GetProperty("scope").text() + ' ' +
                owned(*member, "Operation.Has.Parameter")];
        }
      }
    }
    return all;
  }
  std::string anyClass() {
    const auto all = store->MetaNodes("Class")->extension();
    return platform::as<Node>(all->Item(oneUpTo(all->Count())))->identifier();
  }

  canvas::DiagramControl& canvas;

 private:
  std::size_t below(std::size_t count) { return m_random() % count; }
  bool once(std::size_t in) { return below(in) == 0; }
  std::int64_t oneUpTo(std::int64_t count) {
    return 1 + static_cast<std::int64_t>(below(static_cast<std::size_t>(count)));
  }
  /// "semantic" for a split that made a super class.
  std::string split(const std::string& key) {
    const auto classes = count("Class");
    const bool semantic = once(2);
    editor->SplitClass(key, semantic);
    return (semantic && count("Class") > classes ? "semantic split " : "split ") + key;
  }
  /// The stored positions are those that a class has when it comes back.
  void hideAndShow() {
    click("COM::Enum");
    click("COM::Enum");
  }
  void addMember() {
    const std::string name = "m" + std::to_string(below(8));
    if (once(2)) {
      addAttribute(anyClass(), name, once(2) ? "Int" : "Text")->SetProperty("scope", "private");
    } else {
      addParameter(*addOperation(anyClass(), name, "Int"), "p" + std::to_string(below(3)), "Int");
    }
  }
  std::string addRelationship() {
    const std::string key = "r" + std::to_string(m_made++);
    const std::string from = anyClass();
    const std::string to = anyClass();
    if (once(3)) {
      editor->CreateAssociation(key, "", "", from, to);
    } else if (once(3)) {
      editor->CreateGeneralization(key, "", "", from, to);
    } else {
      editor->CreateAggregation(key, "", "", from, to, once(2));
      editor->GetAssociationFromLink(key)->clsObject()->SetProperty("SourceRoleName", key);
    }
    return "add " + key;
  }

  std::mt19937 m_random;
  int m_made = 0;
};

int total(const std::map<std::string, int>& members) {
  int all = 0;
  for (const auto& [what, count] : members) all += count;
  return all;
}

TEST(RefactoringInvariants, holdOnRandomModels) {
  for (std::uint32_t seed = 1; seed <= 20; ++seed) {
    Refactorer hands(seed);
    for (int step = 1; step <= 60; ++step) {
      const auto before = hands.members();
      const auto attributes = hands.count("Attrib");
      const auto lines = hands.relationships();
      const std::string what = hands.step();
      const std::string where =
          "seed " + std::to_string(seed) + ", step " + std::to_string(step) + ": " + what;
      ASSERT_EQ(test::checkAgreement(*hands.editor) + test::checkInvariants(hands.canvas), "")
          << where;
      ASSERT_EQ(hands.count("Attrib") + hands.count("Operation"), total(hands.members())) << where;
      const auto newAttributes = hands.count("Attrib") - attributes;
      const auto newLines = hands.relationships() - lines;
      if (what.starts_with("ToAttribute")) {
        ASSERT_EQ(newAttributes, -newLines) << where;
      } else if (what.starts_with("extract")) {
        ASSERT_EQ(newAttributes, -newLines) << where;
      } else {
        ASSERT_EQ(hands.members(), before) << where;
        ASSERT_EQ(newLines, what.starts_with("semantic") || what.starts_with("add") ? 1 : 0)
            << where;
      }
      for (const std::string& message : hands.messages) {
        ASSERT_FALSE(message.starts_with("Error No")) << where << ": " << message;
      }
    }
    test::checkInvariants(*hands.store);
    const std::string saved = interchange::DimWriter::text(*hands.store);
    const auto read = interchange::DimReader(hands.registry).readText("model.dim", saved);
    EXPECT_EQ(interchange::DimWriter::text(*read), saved) << "seed " << seed;
    hands.redraw();
    EXPECT_EQ(test::checkAgreement(*hands.editor), "") << "seed " << seed << ", drawn anew";
  }
}

/// Two classes with members, joined three times, whose repository can be made to fail.
class Faulty : public EditorBench {
 public:
  Faulty() : failing(platform::make<FailingRepository>(store)) {
    for (const char* name : {"A", "B"}) {
      addClass(name);
      addAttribute(name, std::string("x") + name, "Int");
      addParameter(*addOperation(name, std::string("f") + name, "Int"), "p", "Int");
    }
    const auto owns = model->MakeAggregation("", "owns", "A", "B");
    owns->SetProperty("isComposite", true);
    model->SetStereotype(*owns, model->MakeStereotype("s", "s", "").get());
    model->MakeAssociation("", "knows", "B", "A");
    model->MakeGeneralization("is", "B", "A");
    editor->Repository(failing.get());
    editor->Populate();
  }

  [[nodiscard]] std::int64_t relationships() const {
    return count("Association") + count("Aggregation") + count("Generalization");
  }

  Ref<FailingRepository> failing;
};

/// What is wrong with a saved model after it was opened and drawn; empty when it is all there.
std::string reopened(const platform::MetaRepository& repository) {
  const std::string saved = interchange::DimWriter::text(repository);
  EditorBench other;
  const auto read = interchange::DimReader(other.registry).readText("model.dim", saved);
  other.editor->Repository(read.get());
  other.editor->Populate();
  return test::checkAgreement(*other.editor);
}

TEST(RefactoringInvariants, holdWhenTheRepositoryFails) {
  using Command = std::function<void(Faulty&)>;
  const Command split = [](Faulty& bench) {
    bench.answerForm({{"ClassName", "SetText", "New"},
                      {"AllAttributes", "Click"},
                      {"AllOperations", "Click"},
                      {"Ok", "Click"}});
    bench.editor->SplitClass("A", true);
  };
  const Command extract = [](Faulty& bench) {
    bench.answerForm({{"Attributes", "Select", 1}, {"Ok", "Click"}});
    bench.editor->ExtractAttribute("A");
  };
  const Command merge = [](Faulty& bench) {
    bench.editor->diagram()->call("selNode", {"A"});
    bench.editor->diagram()->call("selNode", {"B"});
    bench.editor->ActiveBar21()->Click("miMorphMerge");
  };
  const auto morph = [](const char* key, const char* word) -> Command {
    return [=](Faulty& bench) { bench.editor->MorphingAssoc(key, word); };
  };
  const std::vector<std::pair<const char*, Command>> commands = {
      {"split", split},
      {"extract", extract},
      {"merge", merge},
      {"to association", morph("owns", "ToAssociation")},
      {"to aggregation", morph("knows", "ToSharedAggregation")},
      {"from generalization", morph("is", "ToCompositeAggregation")},
      {"to generalization", morph("owns", "ToGeneralization")},
      {"to attribute", morph("owns", "ToAttribute")},
  };
  for (const auto& [name, command] : commands) {
    for (const auto when : {FailingRepository::When::called, FailingRepository::When::changed}) {
      std::int64_t chances = 0;
      {
        Faulty bench;
        bench.failing->failAt(when, 0);
        command(bench);
        chances = bench.failing->chances();
        EXPECT_TRUE(bench.messages.empty()) << name;
      }
      ASSERT_GT(chances, 3) << name;
      for (std::int64_t chance = 1; chance <= chances; ++chance) {
        Faulty bench;
        const auto members = bench.count("Attrib") + bench.count("Operation");
        const auto relationships = bench.relationships();
        bench.failing->failAt(when, chance);
        command(bench);
        bench.failing->failAt(when, 0);
        const std::string where = std::string(name) + ", " +
                                  (when == FailingRepository::When::called ? "call " : "change ") +
                                  std::to_string(chance);
        ASSERT_FALSE(bench.messages.empty()) << where;
        EXPECT_TRUE(
            bench.messages.front().starts_with("Error No: 5  'The repository fails'(Module '"))
            << where << ": " << bench.messages.front();
        test::checkInvariants(*bench.store);
        EXPECT_EQ(test::checkAgreement(*bench.editor), "") << where;
        EXPECT_EQ(reopened(*bench.store), "") << where;
        EXPECT_LE(std::abs(bench.count("Attrib") + bench.count("Operation") - members), 1) << where;
        EXPECT_LE(std::abs(bench.relationships() - relationships), 1) << where;
        const auto told = bench.messages.size();
        bench.editor->AddPositions();
        EXPECT_EQ(bench.messages.size(), told) << where << ": it can still be saved";
      }
    }
  }
}

}  // namespace
}  // namespace brisel::editor
