#include "qt/MainMenus.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <algorithm>

#include "qt/CanvasToolBar.h"
#include "qt/DiagramView.h"
#include "qt/EditorWidget.h"
#include "qt/Text.h"

namespace brisel::qt {

namespace {
constexpr const char* kLayoutMenu = "D&iagram/&Layout";
}

/// What must be there for a command to apply. Tools of the popup menus act on the one selected
/// class or relationship; whether they apply to it the editor knows.
enum class MainMenus::Needs { nothing, items, selection, oneItem, oneNode, classTool, lineTool };

/// `canvasKey` is a key that the canvas answers itself: the menu shows it as the shortcut and
/// presses it, but leaves it to whoever has the keyboard. A row without a key is a separator.
struct MainMenus::Row {
  const char* menu;  ///< titles from the bar on, separated by "/"
  const char* key = "";
  const char* text = "";
  const char* shortcut = "";
  const char* tip = "";  ///< empty for a button of the canvas, which has one
  Needs needs = Needs::nothing;
  const char* canvasKey = "";
};

const std::vector<MainMenus::Row>& MainMenus::rows() {
  static const std::vector<Row> kRows = {
      {"&File", "New", "&New", "Ctrl+N", "Start an empty diagram"},
      {"&File", "NewWindow", "New &Window", "Ctrl+Alt+N", "Start an empty diagram in another window"},
      {"&File", "Open", "&Open...", "Ctrl+O", "Open a diagram or a model of another tool"},
      {"&File/Open &Recent", "ClearRecent", "&Clear List", "", "Forget the files of this list"},
      {"&File"},
      {"&File", "Save", "&Save", "Ctrl+S", "Save model, positions and view settings"},
      {"&File", "SaveAs", "Save &As...", "Ctrl+Shift+S", "Save to another file"},
      {"&File", "Export", "&Export Picture...", "Ctrl+E",
       "Write the whole diagram as SVG, PNG or PDF"},
      {"&File"},
      {"&File", "PrintPreview", "Print Pre&view...", "Ctrl+Shift+P"},
      {"&File", "Print", "&Print...", "Ctrl+P"},
      {"&File"},
      {"&File", "Close", "&Close", "Ctrl+W", "Close the window"},
      {"&File", "Quit", "&Quit", "Ctrl+Q", "Close all windows and end the program"},

      {"&Edit", "CopyPicture", "&Copy Picture", "Ctrl+C",
       "Put a picture of the whole diagram on the clipboard", Needs::items},
      {"&Edit"},
      {"&Edit", "Rename", "&Rename", "F2", "Type another name for the selected class",
       Needs::oneNode, "F2"},
      {"&Edit", "Properties", "&Properties", "Return", "Edit the selected class or relationship",
       Needs::oneItem, "Enter"},
      {"&Edit", "Delete", "&Delete", "Del", "Delete what is selected", Needs::selection, "Delete"},
      {"&Edit"},
      {"&Edit", "SelectAll", "Select &All", "Ctrl+A", "Select every class and relationship",
       Needs::items, "a"},

      {"&Draw", "Select", "&Select", "Ctrl+Shift+V"},
      {"&Draw"},
      {"&Draw", "NewClass", "&New Class", "Ctrl+Shift+N"},
      {"&Draw"},
      {"&Draw", "Association", "&Association", "Ctrl+Shift+A"},
      {"&Draw", "CompositeAggregation", "&Composite Aggregation", "Ctrl+Shift+C"},
      {"&Draw", "SharedAggregation", "S&hared Aggregation", "Ctrl+Shift+H"},
      {"&Draw", "Generalization", "&Generalization", "Ctrl+Shift+G"},

      {"&View", "ZoomIn", "Zoom &In", "Ctrl++"},
      {"&View", "ZoomOut", "Zoom &Out", "Ctrl+-"},
      {"&View", "ZoomNo", "&Actual Size", "Ctrl+0"},
      {"&View", "ZoomFull", "&Whole Diagram", "Ctrl+9"},
      {"&View"},
      {"&View/&Compartments", "ViewAttributes", "&Attributes", "Ctrl+1"},
      {"&View/&Compartments", "ViewOperations", "&Operations", "Ctrl+2"},
      {"&View/&Compartments", "ViewParameters", "&Parameters", "Ctrl+3"},
      {"&View/&Types", "COM::Builtin", "&Built-in Types"},
      {"&View/&Types", "COM::Enum", "&Enumerations"},
      {"&View/&Types", "COM::TypeDef", "&Type Definitions"},
      {"&View/&Types", "COM::Module", "&Modules"},
      {"&View/&Types", "COM::Interface", "&Interfaces"},
      {"&View/&Types", "COM::CoClass", "&Component Classes"},
      {"&View/&Types", "COM::DispInterface", "&Dispatch Interfaces"},

      {kLayoutMenu, "LayoutHierarchy", "&Hierarchical", "Ctrl+L"},
      {kLayoutMenu, "LayoutSpring", "&Spring"},
      {kLayoutMenu, "LayoutMatrix", "&Matrix"},
      {kLayoutMenu, "LayoutRandom", "&Random"},
      {"D&iagram/&Align", "AlignLeft", "&Left Sides", "Ctrl+Alt+Left"},
      {"D&iagram/&Align", "AlignRight", "&Right Sides", "Ctrl+Alt+Right"},
      {"D&iagram/&Align", "AlignTop", "&Top Sides", "Ctrl+Alt+Up"},
      {"D&iagram/&Align", "AlignBottom", "&Bottom Sides", "Ctrl+Alt+Down"},
      {"D&iagram"},
      {"D&iagram", "Stereotypes", "&Stereotypes..."},
      {"D&iagram", "MatrixBrowser", "&Matrix Browser..."},
      {"D&iagram", "Template", "&Template Editor..."},
      {"D&iagram", "Demo", "&Demo Model"},

      {"&Refactor", "miMorpToAss", "To &Association", "",
       "Turn the selected relationship into an association", Needs::lineTool},
      {"&Refactor", "miMorphToAggShared", "To &Shared Aggregation", "",
       "Turn the selected relationship into a shared aggregation", Needs::lineTool},
      {"&Refactor", "miMorphToAggComposite", "To &Composite Aggregation", "",
       "Turn the selected relationship into a composite aggregation, inheritance into a shared one",
       Needs::lineTool},
      {"&Refactor", "miMorphToGen", "To &Generalization", "",
       "Turn the selected composite aggregation into inheritance", Needs::lineTool},
      {"&Refactor", "miMorphToAttr", "To Class A&ttribute", "",
       "Turn the selected composite aggregation into an attribute of the whole", Needs::lineTool},
      {"&Refactor"},
      {"&Refactor", "miMorphClassSplit", "S&plit Class...", "",
       "Move members of the selected class to a new class", Needs::classTool},
      {"&Refactor", "miMorphClassSplitSemantic", "Split off S&uperclass...", "",
       "Move members of the selected class to a new super class", Needs::classTool},
      {"&Refactor", "miMorphExtractAttribute", "&Extract Attribute...", "",
       "Make an attribute of the selected class a class of its own", Needs::classTool},
      {"&Refactor"},
      {"&Refactor", "miMorphMerge", "&Merge Classes", "",
       "Move everything of the selected classes to one new class", Needs::classTool},

      {"&Help", "Help", "&Class Diagrams", "F1", "", Needs::nothing, "F1"},
  };
  return kRows;
}

MainMenus::MainMenus(QMenuBar& bar, EditorWidget& editor, const Commands& own)
    : m_bar(bar), m_editor(editor), m_canvas(editor.view().control()) {
  for (const Row& row : rows()) add(row, own);
  m_refresh.setSingleShot(true);
  m_refresh.setInterval(0);
  connect(&m_refresh, &QTimer::timeout, this, [this] { refresh(); });
  m_changed = m_canvas.scene().Damaged.connect([this](const auto&) {
    if (!m_refresh.isActive()) m_refresh.start();
  });
  refresh();
}

void MainMenus::add(const Row& row, const Commands& own) {
  QMenu& menu = menuAt(row.menu);
  if (row.key[0] == '\0') {
    menu.addSeparator();
    return;
  }
  QAction* button = m_editor.action(row.key);
  QAction* action = button ? buttonAction(row, own) : makeAction(row, own);
  if (!action) return;
  action->setText(tr(row.text));
  action->setShortcut(QKeySequence(row.shortcut));
  if (row.canvasKey[0] != '\0') action->setShortcutContext(Qt::WidgetShortcut);
  if (button && !action->shortcut().isEmpty()) {
    action->setToolTip(action->toolTip() + " (" +
                       action->shortcut().toString(QKeySequence::NativeText) + ")");
  }
  menu.addAction(action);
  m_actions.emplace_back(&row, action);
}

QMenu& MainMenus::menuAt(const std::string& path) {
  QMenu*& menu = m_menus[path];
  if (menu) return *menu;
  const std::size_t slash = path.find_last_of('/');
  if (slash == std::string::npos) {
    menu = m_bar.addMenu(tr(path.c_str()));
    menu->setToolTipsVisible(true);
    connect(menu, &QMenu::aboutToShow, this, [this] { refresh(); });
  } else {
    menu = menuAt(path.substr(0, slash)).addMenu(tr(path.substr(slash + 1).c_str()));
  }
  return *menu;
}

QAction* MainMenus::buttonAction(const Row& row, const Commands& own) const {
  const auto command = own.find(row.key);
  if (command != own.end()) m_editor.toolBar().runInstead(row.key, command->second);
  return m_editor.action(row.key);
}

/// Nothing for a button that the canvas does not have.
QAction* MainMenus::makeAction(const Row& row, const Commands& own) {
  const auto command = own.find(row.key);
  if (command == own.end() && row.canvasKey[0] == '\0' && !isTool(row)) return nullptr;
  auto* action = new QAction(&m_bar);
  action->setObjectName(row.key);
  action->setStatusTip(tr(row.tip));
  if (isTool(row)) {
    connect(action, &QAction::triggered, this, [this, &row] { runTool(row); });
  } else if (command == own.end()) {
    connect(action, &QAction::triggered, this, [this, &row] { pressKey(row); });
  } else {
    connect(action, &QAction::triggered, this, [run = command->second] { run(); });
  }
  return action;
}

void MainMenus::pressKey(const Row& row) {
  const bool ctrl = QString(row.shortcut).startsWith("Ctrl+");
  m_canvas.KeyPress(row.canvasKey, ctrl ? "ctrl" : "");
}

bool MainMenus::isTool(const Row& row) {
  return row.needs == Needs::classTool || row.needs == Needs::lineTool;
}

/// The key of what the tool acts on; empty unless it is selected alone.
std::string MainMenus::elementOf(const Row& row) const {
  const canvas::Selection& selection = m_canvas.selection();
  if (selection.size() != 1) return {};
  const auto nodes = selection.nodes();
  const auto links = selection.links();
  if (row.needs == Needs::classTool) return nodes.empty() ? std::string() : nodes.front()->key();
  return links.empty() ? std::string() : links.front()->key();
}

void MainMenus::runTool(const Row& row) {
  const auto toolBar = m_editor.editor().ActiveBar21();
  toolBar->Tag(elementOf(row));
  toolBar->Click(row.key);
}

/// The reason where a tool does not apply stands where its purpose stands otherwise.
void MainMenus::refreshTool(const Row& row, QAction& action) const {
  const std::string objection = m_editor.editor().objection(row.key, elementOf(row));
  const QString tip = objection.empty() ? tr(row.tip) : toQt(objection);
  action.setEnabled(objection.empty());
  action.setToolTip(tip);
  action.setStatusTip(tip);
}

bool MainMenus::has(Needs needs) const {
  const canvas::Selection& selection = m_canvas.selection();
  switch (needs) {
    case Needs::nothing:
    case Needs::classTool:
    case Needs::lineTool:
      break;
    case Needs::items:
      return m_canvas.scene().nodes().size() > 0;
    case Needs::selection:
      return !selection.empty();
    case Needs::oneItem:
      return selection.size() == 1;
    case Needs::oneNode:
      return selection.size() == 1 && !selection.nodes().empty();
  }
  return true;
}

void MainMenus::refresh() {
  for (const auto& [row, action] : m_actions) {
    if (isTool(*row)) {
      refreshTool(*row, *action);
    } else if (row->needs != Needs::nothing) {
      action->setEnabled(has(row->needs));
    }
  }
  const auto& selected = m_canvas.selection().selectedItems();
  const auto isNode = [](const canvas::Item* item) { return !item->isLink(); };
  const auto first = std::find_if(selected.begin(), selected.end(), isNode);
  const bool some = first != selected.end() && std::any_of(first + 1, selected.end(), isNode);
  menuAt(kLayoutMenu).setTitle(some ? tr("&Layout of the Selection") : tr("&Layout"));
}

QMenu* MainMenus::menu(std::string_view path) const {
  const auto found = m_menus.find(path);
  return found == m_menus.end() ? nullptr : found->second;
}

QAction* MainMenus::action(std::string_view key) const {
  const auto found = std::find_if(m_actions.begin(), m_actions.end(),
                                  [&](const auto& entry) { return entry.first->key == key; });
  return found == m_actions.end() ? nullptr : found->second;
}

}  // namespace brisel::qt
