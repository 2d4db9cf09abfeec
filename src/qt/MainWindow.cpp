#include "qt/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QUrl>
#include <cmath>

#include "platform/Error.h"
#include "qt/CanvasToolBar.h"
#include "qt/DiagramView.h"
#include "qt/EditorWidget.h"
#include "qt/HelpWindow.h"
#include "qt/HostObjects.h"
#include "qt/MessageBar.h"
#include "qt/PictureFile.h"
#include "qt/QtShell.h"
#include "qt/Text.h"

namespace brisel::qt {

namespace {

constexpr const char* kModelFilter =
    "Class models (*.dim;*.uml;*.xmi;*.ecore)|*.dim;*.uml;*.xmi;*.ecore|"
    "DIM Format (*.dim)|*.dim|All files (*)|*";
constexpr int kRefreshDelay = 150;  // ms

/// The canvas's buttons as the View menu names them; an empty key is a separator. A menu runs from
/// its title to the next.
struct MenuEntry {
  const char* menu;
  const char* key;
  const char* text;
  const char* shortcut;
};
constexpr MenuEntry kViewMenu[] = {
    {"", "ZoomIn", "Zoom &In", "Ctrl++"},
    {"", "ZoomOut", "Zoom &Out", "Ctrl+-"},
    {"", "ZoomNo", "&Actual Size", "Ctrl+0"},
    {"", "ZoomFull", "&Whole Diagram", "Ctrl+9"},
    {"&Compartments", "ViewAttributes", "&Attributes", "Ctrl+1"},
    {"&Compartments", "ViewOperations", "&Operations", "Ctrl+2"},
    {"&Compartments", "ViewParameters", "&Parameters", "Ctrl+3"},
    {"&Types", "COM::Builtin", "&Built-in Types", ""},
    {"&Types", "COM::Enum", "&Enumerations", ""},
    {"&Types", "COM::TypeDef", "&Type Definitions", ""},
    {"&Types", "COM::Module", "&Modules", ""},
    {"&Types", "COM::Interface", "&Interfaces", ""},
    {"&Types", "COM::CoClass", "&Component Classes", ""},
    {"&Types", "COM::DispInterface", "&Dispatch Interfaces", ""},
    {"&Layout", "LayoutHierarchy", "&Hierarchical", "Ctrl+L"},
    {"&Layout", "LayoutSpring", "&Spring", ""},
    {"&Layout", "LayoutMatrix", "&Matrix", ""},
    {"&Layout", "LayoutRandom", "&Random", ""},
    {"&Align", "AlignLeft", "&Left Sides", "Ctrl+Alt+Left"},
    {"&Align", "AlignRight", "&Right Sides", "Ctrl+Alt+Right"},
    {"&Align", "AlignTop", "&Top Sides", "Ctrl+Alt+Up"},
    {"&Align", "AlignBottom", "&Bottom Sides", "Ctrl+Alt+Down"},
};

QString counted(std::int64_t count, const QString& one, const QString& many) {
  return QString::number(count) + ' ' + (count == 1 ? one : many);
}

std::vector<std::string> localFiles(const QMimeData& data) {
  std::vector<std::string> files;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile()) files.push_back(fromQt(url.toLocalFile()));
  }
  return files;
}

}  // namespace

MainWindow::MainWindow(component::Document& document, platform::Ref<QtShell> shell)
    : m_document(document),
      m_shell(std::move(shell)),
      m_editor(new EditorWidget(document.editor(), this)),
      m_messages(new MessageBar(this)) {
  setObjectName("MainWindow");
  setAcceptDrops(true);
  setCentralWidget(m_editor);
  m_editor->setStrip(m_messages);
  m_shell->window(this);
  giveHostObjects();
  makeFileMenu();
  makeViewMenu();
  makeHelpMenu();
  makeStatusBar();
  connectDocument();
  restorePlace();
  refreshState();
  m_editor->setFocus();
}

MainWindow::~MainWindow() {
  m_document.editor().ParentWindow(nullptr);
  m_document.editor().Session(nullptr);
}

void MainWindow::giveHostObjects() {
  const auto busy = platform::make<BusyCursor>();
  const auto session = platform::make<Session>([this](const std::string& page) { showHelp(page); });
  m_document.editor().ParentWindow(busy.get());
  m_document.editor().Session(session.get());
}

void MainWindow::makeFileMenu() {
  QMenu* menu = menuBar()->addMenu(tr("&File"));
  const auto add = [&](const char* text, const QKeySequence& keys, const char* tip, auto slot) {
    QAction* action = menu->addAction(tr(text));
    action->setShortcut(keys);
    action->setStatusTip(tr(tip));
    connect(action, &QAction::triggered, this, slot);
  };
  add("&New", QKeySequence::New, "Start an empty diagram", [this] { newDiagram(); });
  add("&Open...", QKeySequence::Open, "Open a diagram or a model of another tool",
      [this] { askAndOpen(); });
  menu->addSeparator();
  add("&Save", QKeySequence::Save, "Save model, positions and view settings",
      [this] { save(false); });
  add("Save &As...", QKeySequence("Ctrl+Shift+S"), "Save to another file", [this] { save(true); });
  add("&Export Picture...", QKeySequence("Ctrl+E"), "Write the whole diagram as SVG, PNG or PDF",
      [this] { exportPicture(); });
  menu->addSeparator();
  add("&Quit", QKeySequence("Ctrl+Q"), "Close the window", [this] { close(); });
}

void MainWindow::makeViewMenu() {
  QMenu* view = menuBar()->addMenu(tr("&View"));
  QMenu* menu = view;
  std::string title;
  for (const MenuEntry& entry : kViewMenu) {
    QAction* action = m_editor->toolBar().action(entry.key);
    if (!action) continue;
    if (title != entry.menu) menu = view->addMenu(tr(entry.menu));
    title = entry.menu;
    action->setText(tr(entry.text));
    action->setShortcut(QKeySequence(entry.shortcut));
    menu->addAction(action);
  }
}

void MainWindow::makeHelpMenu() {
  QMenu* menu = menuBar()->addMenu(tr("&Help"));
  if (QAction* help = m_editor->toolBar().action("Help")) {
    help->setText(tr("&Class Diagrams"));
    menu->addAction(help);
  }
}

void MainWindow::makeStatusBar() {
  m_hint = new QLabel(this);
  m_counts = new QLabel(this);
  m_zoom = new QLabel(this);
  m_zoom->setMinimumWidth(fontMetrics().horizontalAdvance("8888 %"));
  m_zoom->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  statusBar()->addWidget(m_hint, 1);
  statusBar()->addPermanentWidget(m_counts);
  statusBar()->addPermanentWidget(m_zoom);
  showZoom();
}

void MainWindow::connectDocument() {
  m_refresh.setSingleShot(true);
  m_refresh.setInterval(kRefreshDelay);
  connect(&m_refresh, &QTimer::timeout, this, [this] { refreshState(); });

  editor::CLSEditor& editor = m_document.editor();
  const auto enter = [this](const std::string& key) { hint(key); };
  const auto leave = [this](const std::string&) { m_hint->clear(); };
  m_connections.push_back(editor.ClassEnter.connect(enter));
  m_connections.push_back(editor.ClassLeave.connect(leave));
  m_connections.push_back(editor.AssocEnter.connect(enter));
  m_connections.push_back(editor.AssocLeave.connect(leave));
  m_connections.push_back(
      m_document.canvas().viewport().ZoomChanged.connect([this] { showZoom(); }));
  m_connections.push_back(m_document.Changed.connect([this] {
    if (!m_refresh.isActive()) m_refresh.start();
  }));
  m_connections.push_back(m_document.SaveFailed.connect([this](const std::string& cause) {
    m_messages->show(MessageBar::Kind::error, tr("The diagram was not saved. %1").arg(toQt(cause)));
  }));
}

void MainWindow::restorePlace() {
  // Leaves room for the frame that the desktop puts around the window.
  resize(QSize(1280, 860).boundedTo(screen()->availableSize() * 0.9));
  restoreGeometry(QSettings().value("window/geometry").toByteArray());
}

void MainWindow::refreshState() {
  setWindowTitle(toQt(m_document.title()) + "[*] - Brisel");
  setWindowFilePath(toQt(m_document.path()));
  setWindowModified(m_document.isModified());
  const component::Document::Counts counts = m_document.counts();
  QString text = counted(counts.classes, tr("class"), tr("classes")) + ", " +
                 counted(counts.relationships, tr("relationship"), tr("relationships"));
  if (const auto hidden = counts.classes - counts.shownClasses; hidden > 0) {
    text += tr(" (%1 hidden)").arg(hidden);
  }
  m_counts->setText(text);
}

void MainWindow::showZoom() {
  m_zoom->setText(QString::number(std::lround(m_document.canvas().getZoom())) + " %");
}

void MainWindow::showHelp(const std::string& page) {
  if (!m_help) m_help = new HelpWindow(toQt(m_document.installationFolder()) + "/help", this);
  m_help->showPage(toQt(page));
}

void MainWindow::hint(const std::string& key) { m_hint->setText(toQt(m_document.describe(key))); }

void MainWindow::newDiagram() {
  if (!mayReplaceDiagram()) return;
  m_messages->hide();
  m_document.create();
  refreshState();
}

void MainWindow::askAndOpen() {
  if (!mayReplaceDiagram()) return;
  const auto file = m_shell->askOpenFile({"Open diagram", kModelFilter, ".dim", m_document.path()});
  if (file) openFiles({*file});
}

void MainWindow::openFiles(const std::vector<std::string>& files) {
  m_messages->hide();
  QApplication::setOverrideCursor(Qt::WaitCursor);
  try {
    m_document.open(files);
    if (const auto& notes = m_document.notes(); !notes.empty()) {
      QStringList lines;
      for (const std::string& note : notes) lines += toQt(note);
      m_messages->show(MessageBar::Kind::note,
                       tr("Not everything in the file could be taken over as it is: %1 remarks.")
                           .arg(lines.size()),
                       lines.join('\n'));
    }
  } catch (const std::exception& error) {
    m_messages->show(MessageBar::Kind::error, tr("Nothing was opened. %1").arg(error.what()));
  }
  QApplication::restoreOverrideCursor();
  refreshState();
}

void MainWindow::save(bool askForFile) {
  const bool done = askForFile ? m_document.saveAs() : m_document.save();
  if (done) m_messages->hide();
  refreshState();
}

void MainWindow::exportPicture() {
  const QString suggestion = QFileInfo(toQt(m_document.path())).path() + '/' +
                             QFileInfo(toQt(m_document.title())).completeBaseName() + ".svg";
  const auto file =
      m_shell->askSaveFile({"Export picture", kPictureFilter, ".svg", fromQt(suggestion)});
  if (!file) return;
  try {
    writePicture(m_document.canvas().scene(), *file);
    statusBar()->showMessage(tr("Written: %1").arg(toQt(*file)), 5000);
  } catch (const std::exception& error) {
    m_messages->show(MessageBar::Kind::error, tr("No picture was written. %1").arg(error.what()));
  }
}

bool MainWindow::mayReplaceDiagram() {
  if (!m_document.isModified()) return true;
  const std::string answer =
      m_shell->showMessage({"Brisel",
                            "Save the changes to \"" + m_document.title() + "\"?",
                            {"Save", "Discard", "Cancel"},
                            platform::MessageIcon::question});
  if (answer == "Save") return m_document.save();
  return answer == "Discard";
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (!mayReplaceDiagram()) {
    event->ignore();
    return;
  }
  QSettings().setValue("window/geometry", saveGeometry());
  event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!localFiles(*event->mimeData()).empty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const std::vector<std::string> files = localFiles(*event->mimeData());
  if (files.empty()) return;
  event->acceptProposedAction();
  if (mayReplaceDiagram()) openFiles(files);
}

}  // namespace brisel::qt
