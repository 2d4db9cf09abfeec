#include <QKeyEvent>
#include <string>

#include <benchmark/benchmark.h>

#include "component/Document.h"
#include "component/Suite.h"
#include "qt/BenchApplication.h"
#include "qt/ClassPane.h"
#include "qt/ComboWidget.h"
#include "qt/DiagramView.h"
#include "qt/EditorWidget.h"
#include "qt/QtShell.h"

/// What a person waits for at the property editors: from the call to the painted window.
namespace brisel::bench {
namespace {

constexpr int kMembers = 2000;
constexpr int kTypes = 20000;

/// A window on a class of many members, in a model of many types.
struct LargeClass {
  LargeClass() : registry(platform::make<qt::QtShell>()) {
    component::registerSuite(registry);
    document = std::make_unique<component::Document>(registry);
    const auto model = editor().CLSRepository();
    editor().CreateClass("large", "Large", "", "", "", "public");
    for (int i = 0; i < kTypes; ++i) model->MakeDataType("type" + std::to_string(i), "", "");
    const auto type = model->MakeDataType("int", "", "");
    platform::Ref<platform::Link> link;
    for (int i = 0; i < kMembers; ++i) {
      const std::string number = std::to_string(i);
      model->AddAttributeS("large", "attribute" + number, type->identifier(), link);
      model->AddOperationS("large", "operation" + number, type->identifier(), link);
    }
    editor().GetClassFromNode("large")->Populate();
    window = std::make_unique<qt::EditorWidget>(editor());
    window->resize(1280, 860);
    window->show();
    QApplication::processEvents();
  }
  editor::CLSEditor& editor() { return document->editor(); }

  QApplication& app = application();
  platform::ComponentRegistry registry;
  std::unique_ptr<component::Document> document;
  std::unique_ptr<qt::EditorWidget> window;
};

LargeClass& largeClass() {
  static auto* const only = new LargeClass;  // as long as the application
  return *only;
}

void openPane(benchmark::State& state) {
  LargeClass& large = largeClass();
  const auto pane = large.editor().CLSClassControl1();
  for (auto _ : state) {
    large.editor().EditClass("large");
    QApplication::processEvents();
    state.PauseTiming();
    if (!large.window->classPane().isVisible()) state.SkipWithError("the pane is not shown");
    pane->Close();
    QApplication::processEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(openPane)->Unit(benchmark::kMillisecond);

/// The list of attributes, behind the tab.
void showAttributes(benchmark::State& state) {
  LargeClass& large = largeClass();
  large.editor().EditClass("large");
  const auto tabs = large.editor().CLSClassControl1()->TabStrip1();
  for (auto _ : state) {
    tabs->Choose("Attributes");
    QApplication::processEvents();
    state.PauseTiming();
    tabs->Choose("Class");
    QApplication::processEvents();
    state.ResumeTiming();
  }
  large.editor().CLSClassControl1()->Close();
}
BENCHMARK(showAttributes)->Unit(benchmark::kMillisecond);

/// Into the model, the list and the box; `painted` is how many areas of the canvas were damaged
/// outside of the box.
void addMember(benchmark::State& state) {
  LargeClass& large = largeClass();
  large.editor().EditClass("large");
  const auto pane = large.editor().CLSClassControl1();
  pane->TabStrip1()->Choose("Attributes");
  pane->AttributeType()->Choose("int");
  pane->AttributeName()->Text("added");
  QApplication::processEvents();
  canvas::Scene& scene = large.document->canvas().scene();
  std::size_t elsewhere = 0;
  const auto damaged = scene.Damaged.connect([&](const std::vector<platform::Rect>& areas) {
    const platform::Rect box = large.document->canvas().getNode("large")->bounds().grownBy(300);
    for (const platform::Rect& area : areas) elsewhere += box.contains(area) ? 0 : 1;
  });
  for (auto _ : state) {
    pane->ToolAttr()->Click("miAttrAdd");
    if (state.range(0) == 1) QApplication::processEvents();
    state.PauseTiming();
    pane->ToolAttr()->Click("miAttrDelete");
    QApplication::processEvents();
    state.ResumeTiming();
  }
  state.counters["elsewhere"] = static_cast<double>(elsewhere);
  pane->Close();
}
BENCHMARK(addMember)->ArgName("painted")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// A field over many types in a window of its own.
struct Types {
  Types() : field(shown(), qt::ComboWidget::Unknown::entered) {
    field.show();
    field.setFocus();
    QApplication::processEvents();
  }
  platform::Ref<controls::Combo> shown() {
    const auto model = largeClass().editor().CLSRepository()->GetRepository();
    combo->fill(*model->MetaNodes("DataType")->extension(), "Name");
    return combo;
  }
  void press(int key, const QString& text = {}) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&field, &event);
  }

  platform::Ref<controls::Combo> combo = platform::make<controls::Combo>();
  qt::ComboWidget field;
};

void openCombo(benchmark::State& state) {
  Types types;
  for (auto _ : state) {
    types.field.showPopup();
    QApplication::processEvents();
    state.PauseTiming();
    if (types.field.list().model()->rowCount() < kTypes) state.SkipWithError("entries are missing");
    types.field.hidePopup();
    QApplication::processEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(openCombo)->Unit(benchmark::kMillisecond);

/// The second letter and those behind it: the list is open and narrows.
void filterCombo(benchmark::State& state) {
  Types types;
  const QString wanted = "type1999";
  qsizetype at = 0;
  for (auto _ : state) {
    if (at == 0) {
      state.PauseTiming();
      types.press(Qt::Key_Escape);
      types.press(0, "t");
      QApplication::processEvents();
      state.ResumeTiming();
      at = 1;
    }
    types.press(0, wanted.mid(at, 1));
    QApplication::processEvents();
    at = (at + 1) % wanted.size();
  }
  if (!types.field.list().isVisible()) state.SkipWithError("the list is not open");
}
BENCHMARK(filterCombo)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brisel::bench
