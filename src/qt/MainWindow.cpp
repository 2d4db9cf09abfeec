#include "qt/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QUrl>

#include "platform/Error.h"
#include "qt/EditorWidget.h"
#include "qt/HelpWindow.h"
#include "qt/HostObjects.h"
#include "qt/MainMenus.h"
#include "qt/MessageBar.h"
#include "qt/PictureFile.h"
#include "qt/QtShell.h"
#include "qt/RecentMenu.h"
#include "qt/StatusLine.h"
#include "qt/Text.h"

namespace brisel::qt {

using Change = component::FileStamp::Change;

namespace {

constexpr const char* kModelFilter =
    "Class models (*.dim;*.uml;*.xmi;*.ecore)|*.dim;*.uml;*.xmi;*.ecore|"
    "DIM Format (*.dim)|*.dim|All files (*)|*";
constexpr int kRefreshDelay = 150;  // ms
constexpr int kCascade = 32;        // pixels from one window to the next
constexpr const char* kGeometry = "window/geometry";

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
      m_messages(new MessageBar(this)),
      m_hostButtons(document.editor(), document.installationFolder()),
      m_status(std::make_unique<StatusLine>(*statusBar(), document)) {
  setObjectName("MainWindow");
  setAcceptDrops(true);
  setCentralWidget(m_editor);
  m_editor->setStrip(m_messages);
  m_shell->window(this);
  giveHostObjects();
  makeMenus();
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

void MainWindow::makeMenus() {
  const MainMenus::Commands own = {
      {"New", [this] { newDiagram(); }},
      {"NewWindow", [this] { NewWindowAsked(); }},
      {"Open", [this] { askAndOpen(); }},
      {"Save", [this] { save(false); }},
      {"SaveAs", [this] { save(true); }},
      {"Export", [this] { exportPicture(); }},
      {"ClearRecent", [] {}},
      {"Demo", [this] { m_document.makeDemo(); }},
      {"Close", [this] { close(); }},
      {"Quit", [this] { QuitAsked(); }},
      {"CopyPicture", [this] { m_document.canvas().ClickButton("Copy"); }},
  };
  m_menus = std::make_unique<MainMenus>(*menuBar(), *m_editor, own);
  m_recent = std::make_unique<RecentMenu>(*m_menus->menu("&File/Open &Recent"),
                                          *m_menus->action("ClearRecent"),
                                          [this](const std::string& file) { OpenAsked(file); });
  connect(m_menus->menu("&File"), &QMenu::aboutToShow, this, [this] { m_recent->refresh(); });
}

void MainWindow::connectDocument() {
  m_refresh.setSingleShot(true);
  m_refresh.setInterval(kRefreshDelay);
  connect(&m_refresh, &QTimer::timeout, this, [this] { refreshState(); });
  m_connections.push_back(m_document.Changed.connect([this] {
    if (!m_refresh.isActive()) m_refresh.start();
  }));
  m_connections.push_back(m_document.SaveFailed.connect([this](const std::string& cause) {
    m_messages->show(MessageBar::Kind::error, tr("The diagram was not saved. %1").arg(toQt(cause)));
    m_messages->offer(tr("Save As..."), tr("Save to another file"), [this] { save(true); });
  }));
  m_connections.push_back(m_watch.Touched.connect([this] { lookAtFile(); }));
}

void MainWindow::restorePlace() {
  // Leaves room for the frame that the desktop puts around the window.
  resize(QSize(1280, 860).boundedTo(screen()->availableSize() * 0.9));
  restoreGeometry(QSettings().value(kGeometry).toByteArray());
}

void MainWindow::rememberPlace() const { QSettings().setValue(kGeometry, saveGeometry()); }

void MainWindow::standBeside(const QWidget& other) {
  if (other.isMaximized() || other.isFullScreen()) return;
  const QRect room = other.screen()->availableGeometry();
  QRect place = other.geometry().translated(kCascade, kCascade);
  if (place.right() > room.right()) place.moveLeft(room.left() + kCascade);
  if (place.bottom() > room.bottom()) place.moveTop(room.top() + kCascade);
  setGeometry(place);
}

void MainWindow::bringToFront() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

void MainWindow::refreshState() {
  setWindowTitle(toQt(m_document.title()) + "[*] - Brisel");
  setWindowFilePath(toQt(m_document.path()));
  setWindowModified(m_document.isModified());
  m_watch.follow(toQt(m_document.path()));
  m_status->showCounts();
}

void MainWindow::showHelp(const std::string& page) {
  if (!m_help) m_help = new HelpWindow(toQt(m_document.installationFolder()) + "/help", this);
  m_help->showPage(toQt(page));
}

void MainWindow::newDiagram() {
  m_editor->finishEditing();
  if (!mayReplaceDiagram()) return;
  m_messages->hide();
  m_document.create();
  refreshState();
}

void MainWindow::askAndOpen() {
  m_editor->finishEditing();
  const auto file = m_shell->askOpenFile({"Open diagram", kModelFilter, ".dim", m_document.path()});
  if (file) OpenAsked(*file);
}

bool MainWindow::openFiles(const std::vector<std::string>& files) {
  m_messages->hide();
  QApplication::setOverrideCursor(Qt::WaitCursor);
  bool done = true;
  try {
    m_document.open(files);
    m_toldChange = Change::none;
    tellOfNotes();
    for (const std::string& file : files) RecentMenu::add(toQt(file));
  } catch (const std::exception& error) {
    done = false;
    m_toldChange = Change::none;  // what was told of the open file is covered
    m_messages->show(MessageBar::Kind::error, tr("Nothing was opened. %1").arg(error.what()));
  }
  QApplication::restoreOverrideCursor();
  refreshState();
  return done;
}

void MainWindow::tellOfNotes() {
  const auto& notes = m_document.notes();
  if (notes.empty()) return;
  QStringList lines;
  for (const std::string& note : notes) lines += toQt(note);
  m_messages->show(
      MessageBar::Kind::note,
      tr("Not everything in the file could be taken over as it is: %1 remarks.").arg(lines.size()),
      lines.join('\n'));
}

void MainWindow::save(bool askForFile) {
  m_editor->finishEditing();
  const bool done = askForFile ? m_document.saveAs() : m_document.save();
  if (done) {
    m_messages->hide();
    m_toldChange = Change::none;
    RecentMenu::add(toQt(m_document.path()));
  }
  refreshState();
}

void MainWindow::reload() {
  m_editor->finishEditing();
  if (!mayReplaceDiagram()) return lookAgain();
  try {
    m_document.reload();
    m_toldChange = Change::none;
  } catch (const std::exception& error) {
    m_messages->show(MessageBar::Kind::error, tr("Nothing was reloaded. %1").arg(error.what()));
  }
  refreshState();
}

void MainWindow::lookAgain() {
  m_toldChange = Change::none;
  lookAtFile();
}

/// Tells once of each thing that another program did to the file.
void MainWindow::lookAtFile() {
  const Change change = m_document.fileChange();
  if (change == m_toldChange) return;
  m_toldChange = change;
  const QString name = toQt(m_document.title());
  if (change == Change::changed) {
    m_messages->show(MessageBar::Kind::note, tr("%1 was changed by another program.").arg(name));
    m_messages->offer(tr("Reload"), tr("Show what the file holds now"), [this] { reload(); });
  } else if (change == Change::vanished) {
    m_messages->show(
        MessageBar::Kind::note,
        tr("%1 was moved or deleted by another program. Save to write it again.").arg(name));
  } else {
    m_messages->hide();
  }
}

void MainWindow::exportPicture() {
  m_editor->finishEditing();
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
  const bool isGone = m_document.fileChange() == Change::vanished;
  if (!m_document.isModified() && !isGone) return true;
  bringToFront();
  const std::string answer =
      m_shell->showMessage({"Brisel",
                            "Save the changes to \"" + m_document.title() + "\"?",
                            {"Save", "Discard", "Cancel"},
                            platform::MessageIcon::question});
  if (answer == "Save") return m_document.save();
  return answer == "Discard";
}

bool MainWindow::mayClose() {
  m_editor->finishEditing();
  return mayReplaceDiagram();
}

void MainWindow::closeUnasked() {
  m_closesUnasked = true;
  close();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (!m_closesUnasked && !mayClose()) {
    event->ignore();
    return;
  }
  rememberPlace();
  m_shell->closeTools();
  event->accept();
  Closed();
}

void MainWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) lookAtFile();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!localFiles(*event->mimeData()).empty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const std::vector<std::string> files = localFiles(*event->mimeData());
  if (files.empty()) return;
  event->acceptProposedAction();
  for (const std::string& file : files) OpenAsked(file);
}

}  // namespace brisel::qt
