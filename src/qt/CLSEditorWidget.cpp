#include "qt/CLSEditorWidget.h"

#include "qt/HelpWindow.h"
#include "qt/HostButtons.h"
#include "qt/HostObjects.h"
#include "qt/Suite.h"
#include "qt/Text.h"
#include "repository/NewModel.h"
#include "repository/ViewDefaults.h"

namespace brisel::qt {

CLSEditorWidget::CLSEditorWidget(QWidget* parent)
    : CLSEditorWidget(Suite::instance().registry(), parent) {}

CLSEditorWidget::CLSEditorWidget(platform::ComponentRegistry& registry, QWidget* parent)
    : EditorWidget(*registry.create<editor::CLSEditor>("BriselCLS.CLSEditor"), parent),
      m_registry(registry) {
  passEventsOn();
  giveHostObjects();
  const auto model = repository::newModel(registry, "Application");
  repository::makeLayoutNode(*model);
  editor().Repository(model->GetRepository().get());
  editor().Populate();
}

CLSEditorWidget::~CLSEditorWidget() {
  m_events.clear();
  m_buttons.reset();
  editor().terminate();
}

void CLSEditorWidget::showEvent(QShowEvent* event) {
  if (m_drawingTools && !m_buttons) {
    m_buttons = std::make_unique<HostButtons>(editor(), m_registry.installationFolder());
  }
  EditorWidget::showEvent(event);
}

void CLSEditorWidget::passEventsOn() {
  using W = CLSEditorWidget;
  const auto pass = [this](auto& event, void (W::*signal)(const QString&)) {
    m_events.push_back(
        event.connect([this, signal](const std::string& key) { (this->*signal)(toQt(key)); }));
  };
  editor::CLSEditor& from = editor();
  pass(from.ClassCreated, &W::ClassCreated);
  pass(from.ClassDeleted, &W::ClassDeleted);
  pass(from.ClassMoved, &W::ClassMoved);
  pass(from.ClassResized, &W::ClassResized);
  pass(from.ClassChanged, &W::ClassChanged);
  pass(from.ClassEnter, &W::ClassEnter);
  pass(from.ClassLeave, &W::ClassLeave);
  pass(from.ClassClicked, &W::ClassClicked);
  pass(from.ClassRClicked, &W::ClassRClicked);
  pass(from.AssocCreated, &W::AssocCreated);
  pass(from.AssocDeleted, &W::AssocDeleted);
  pass(from.AssocChanged, &W::AssocChanged);
  pass(from.AssocEnter, &W::AssocEnter);
  pass(from.AssocLeave, &W::AssocLeave);
  pass(from.AssocClicked, &W::AssocClicked);
  pass(from.AssocRClicked, &W::AssocRClicked);
  pass(from.ToolbarButton, &W::ToolbarButton);
  pass(from.PopupButton, &W::PopupButton);
  m_events.push_back(from.DiagramScrolled.connect([this](int x, int y) { DiagramScrolled(x, y); }));
  m_events.push_back(from.DiagramZoomed.connect([this](int x, int y) { DiagramZoomed(x, y); }));
}

void CLSEditorWidget::giveHostObjects() {
  const auto busy = platform::make<BusyCursor>();
  const auto session = platform::make<Session>([this](const std::string& page) {
    if (!m_help) m_help = new HelpWindow(toQt(m_registry.installationFolder()) + "/help", this);
    m_help->showPage(toQt(page));
  });
  editor().ParentWindow(busy.get());
  editor().Session(session.get());
}

QString CLSEditorWidget::Path() const { return toQt(editor().Path()); }
void CLSEditorWidget::Path(const QString& path) { editor().Path(fromQt(path)); }

QString CLSEditorWidget::RepositoryFileName() const { return toQt(editor().RepositoryFileName()); }
void CLSEditorWidget::RepositoryFileName(const QString& name) {
  editor().RepositoryFileName(fromQt(name));
}

QString CLSEditorWidget::ComponentName() const { return toQt(editor().ComponentName()); }
void CLSEditorWidget::ComponentName(const QString& name) { editor().ComponentName(fromQt(name)); }

}  // namespace brisel::qt
