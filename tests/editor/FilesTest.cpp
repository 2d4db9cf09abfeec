#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "component/HostObject.h"
#include "platform/Error.h"
#include "platform/ValueArray.h"
#include "support/EditorBench.h"
#include "support/FailingRepository.h"

namespace brisel::editor {
namespace {

using component::HostObject;
using platform::ComponentRegistry;
using platform::Error;
using platform::make;
using platform::Object;
using platform::Ref;
using platform::Value;
using test::EditorBench;

constexpr const char* kImporter = "BriselImporter.DIMImport";
constexpr const char* kFileList = "BriselImporter.FileList";
constexpr const char* kExporter = "BriselExporter.DIMExport";
constexpr const char* kBrowser = "BriselUtility.MatrixBrowser";
constexpr const char* kTemplates = "BriselTemplateEditor.Template";

/// A host's component in which one member fails.
class FailingComponent : public HostObject {
 public:
  explicit FailingComponent(std::string member) : m_member(std::move(member)) {}
  Value invoke(std::string_view member, std::vector<Value>& arguments) override {
    if (member == m_member) throw Error(platform::ErrorNumber::badFile, "Nothing will do");
    return HostObject::invoke(member, arguments);
  }

 private:
  std::string m_member;
};

void use(EditorBench& bench, const char* progId, const Ref<Object>& component) {
  bench.registry.add(progId, [component](ComponentRegistry&) { return component; });
}

/// "Import(...) PopUp()": what a host's component was called with; objects as "object".
std::string callsOf(const HostObject& host) {
  std::string told;
  for (auto& call : platform::each<component::HostCall>(host.Calls())) {
    told += (told.empty() ? "" : " ") + call.member() + "(";
    std::string arguments;
    for (const Value& argument : call.arguments()->values()) {
      arguments += (arguments.empty() ? "" : ",") +
                   (argument.isObject() ? std::string("object") : argument.text());
    }
    told += arguments + ")";
  }
  return told;
}

/// An editor with two classes, moved from where they were stored, and a bent line.
class Files : public testing::Test {
 protected:
  Files() {
    bench.addClass("A");
    bench.addClass("B");
    bench.model->MakeGeneralization("g", "A", "B");
    reset();
  }

  void expectKept(const std::string& what) {
    SCOPED_TRACE(what);
    EXPECT_EQ(bench.editor->Repository(), Ref<platform::MetaRepository>(bench.store));
    EXPECT_EQ(bench.editor->RepositoryFileName(), "kept.dim");
    ASSERT_EQ(bench.drawnNodes(), "A B");
    ASSERT_EQ(bench.drawnLinks(), "g");
    EXPECT_EQ(bench.box("A")->bounds(), (platform::Rect{4500, 900, 2400, 1800}));
    ASSERT_EQ(bench.line("g")->ExtraPoints()->Count(), 3);
    EXPECT_EQ(bench.line("g")->ExtraPoints()->at(1), (platform::Point{6000, 7000}));
    EXPECT_TRUE(bench.messages.empty());
  }

  /// Back to the model that was there first.
  void reset() {
    bench.editor->showRepository(*bench.store);
    bench.box("A")->bounds({4500, 900, 2400, 1800});
    bench.box("B")->bounds({9500, 5900, 2400, 1800});
    bench.line("g")->ExtraPoints()->Clear();
    bench.line("g")->ExtraPoints()->Add(6000, 7000);
    bench.editor->RepositoryFileName("kept.dim");
  }

  void open() {
    bench.shell->AnswerFile("chosen.dim");
    bench.editor->OpenDiagram();
  }

  EditorBench bench;
};

TEST_F(Files, aHostsImporterAndExporterAreUsed) {
  const auto importer = make<HostObject>();
  const auto list = make<HostObject>();
  const auto exporter = make<HostObject>();
  use(bench, kImporter, importer);
  use(bench, kFileList, list);
  use(bench, kExporter, exporter);
  test::Model other;
  other.addClass("C");
  importer->Returns("Import", Value(other.store));
  open();
  EXPECT_EQ(callsOf(*list), "Add(chosen.dim)");
  EXPECT_EQ(callsOf(*importer), "Import(object)");
  EXPECT_EQ(bench.drawnNodes(), "C");
  EXPECT_EQ(bench.editor->Repository(), Ref<platform::MetaRepository>(other.store));
  bench.editor->SaveDiagram();
  EXPECT_EQ(callsOf(*exporter), "Export(chosen.dim,BriselCLS,object)");
  EXPECT_EQ(other.count("GeomArea"), 1) << "positions are stored before the export";
  EXPECT_EQ(bench.editor->LastError(), "");
}

TEST_F(Files, anOpenThatFailsLeavesEverythingAsItWas) {
  bench.editor->OpenDiagram();
  expectKept("cancelled");
  EXPECT_EQ(bench.editor->LastError(), "");

  const auto fail = [](ComponentRegistry&) -> Ref<Object> {
    throw Error(platform::ErrorNumber::componentUnknown, "Not to be had");
  };
  bench.registry.add(kFileList, fail);
  open();
  expectKept("no file list");
  EXPECT_EQ(bench.editor->LastError(), "Not to be had");

  use(bench, kFileList, make<HostObject>());
  const auto importer = make<HostObject>();
  for (const Ref<Object>& given : {Ref<Object>(), Ref<Object>(make<HostObject>())}) {
    importer->Returns("Import", given ? Value(given) : Value());
    use(bench, kImporter, importer);
    open();
    expectKept("no model");
    EXPECT_EQ(bench.editor->LastError(), "The importer gave no model");
  }
  use(bench, kImporter, make<FailingComponent>("Import"));
  open();
  expectKept("import failed");
  EXPECT_EQ(bench.editor->LastError(), "Nothing will do");
}

TEST_F(Files, aModelThatFailsWhileItIsDrawnIsGivenBack) {
  test::Model other;
  for (const char* key : {"C", "D"}) other.addClass(key);
  other.model->MakeGeneralization("h", "C", "D");
  const auto failing = make<test::FailingRepository>(other.store);
  const auto importer = make<HostObject>();
  importer->Returns("Import", Value(Ref<Object>(failing)));
  use(bench, kImporter, importer);
  using When = test::FailingRepository::When;
  for (const When when : {When::called, When::changed}) {
    int failures = 0;
    for (std::int64_t number = 1; number < 400; ++number) {
      failing->failAt(when, number);
      open();
      if (bench.editor->LastError().empty()) break;
      ++failures;
      expectKept("chance " + std::to_string(number));
      if (HasFailure()) return;
    }
    EXPECT_GT(failures, when == When::called ? 5 : 0);
    EXPECT_EQ(bench.editor->LastError(), "") << "nothing of the failures stays";
    EXPECT_EQ(bench.drawnNodes(), "C D");
    bench.editor->RepositoryFileName("kept.dim");
    if (when == When::called) {
      reset();
      other.store->MetaNodes("Layout")->extension()->Clear();
    }
  }
}

TEST_F(Files, aSaveThatFailsAsksForAnotherNameNextTime) {
  bench.editor->RepositoryFileName("");
  use(bench, kExporter, make<FailingComponent>("Export"));
  bench.shell->AnswerFile("nowhere.dim");
  bench.editor->SaveDiagram();
  EXPECT_EQ(bench.editor->LastError(), "Nothing will do");
  EXPECT_EQ(bench.editor->RepositoryFileName(), "");
  const auto exporter = make<HostObject>();
  use(bench, kExporter, exporter);
  bench.shell->AnswerFile("somewhere.dim");
  bench.editor->SaveDiagram();
  EXPECT_EQ(callsOf(*exporter), "Export(somewhere.dim,BriselCLS,object)");
  EXPECT_EQ(bench.editor->LastError(), "");
  EXPECT_TRUE(bench.messages.empty());
}

TEST_F(Files, toolsAreMadeByNameAndSetUpOnTheLiveModel) {
  const auto browser = make<HostObject>();
  const auto templates = make<HostObject>();
  use(bench, kBrowser, browser);
  use(bench, kTemplates, templates);
  bench.editor->Path("/suite");
  bench.editor->MatrixBrowser();
  EXPECT_EQ(callsOf(*browser), "Create() SetRepository(object) PopUp()");
  EXPECT_EQ(browser->get("Path"), Value("/suite"));
  bench.editor->ShowTemplateEditor();
  EXPECT_EQ(callsOf(*templates), "Create() SetRepository(object) PopUp()");
  const std::vector<std::pair<std::string, std::string>> settings = {
      {"WorkDirectory", "share\\Template"},
      {"MainTemplate", "C++.tml"},
      {"Output", ""},
      {"DimFile", ""},
      {"template", ""}};
  for (const auto& [name, value] : settings) {
    EXPECT_EQ(templates->get(name), Value(value)) << name;
  }
  EXPECT_TRUE(bench.messages.empty());
}

TEST_F(Files, aToolThatCannotBeMadeIsPassedOverQuietly) {
  for (const char* tool : {kBrowser, kTemplates}) {
    bench.registry.add(tool, [](ComponentRegistry&) -> Ref<Object> { throw 1; });
  }
  bench.editor->MatrixBrowser();
  bench.editor->ShowTemplateEditor();
  EXPECT_TRUE(bench.messages.empty());
  // One that was made and then fails has something to say.
  use(bench, kBrowser, make<FailingComponent>("PopUp"));
  bench.editor->MatrixBrowser();
  ASSERT_EQ(bench.messages.size(), 1U);
  EXPECT_NE(bench.messages[0].find("Nothing will do"), std::string::npos);
}

}  // namespace
}  // namespace brisel::editor
