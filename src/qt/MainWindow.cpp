#include "qt/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
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
#include "qt/StatusLine.h"
#include "qt/Text.h"

namespace brisel::qt {

namespace {

constexpr const char* kModelFilter =
    "Class models (*.dim;*.uml;*.xmi;*.ecore)|*.dim;*.uml;*.xmi;*.ecore|"
    "DIM Format (*.dim)|*.dim|All files (*)|*";
constexpr int kRefreshDelay = 150;  // ms

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
      {"Open", [this] { askAndOpen(); }},
      {"Save", [this] { save(false); }},
      {"SaveAs", [this] { save(true); }},
      {"Export", [this] { exportPicture(); }},
      {"Quit", [this] { close(); }},
      {"CopyPicture", [this] { m_document.canvas().ClickButton("Copy"); }},
  };
  m_menus = std::make_unique<MainMenus>(*menuBar(), *m_editor, own);
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
  m_editor->finishEditing();
  const bool done = askForFile ? m_document.saveAs() : m_document.save();
  if (done) m_messages->hide();
  refreshState();
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
  m_editor->finishEditing();
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
  m_editor->finishEditing();
  if (mayReplaceDiagram()) openFiles(files);
}

}  // namespace brisel::qt
