#include "qt/Windows.h"

#include <QApplication>
#include <QSessionManager>
#include <QTimer>
#include <algorithm>
#include <filesystem>

#include "component/Document.h"
#include "component/Suite.h"
#include "qt/MainWindow.h"
#include "qt/MessageBar.h"
#include "qt/QtShell.h"
#include "qt/Text.h"

namespace brisel::qt {

namespace {

std::string absolute(const std::string& file) {
  std::error_code none;
  return std::filesystem::absolute(file, none).lexically_normal().string();
}

}  // namespace

/// A window and what it stands on, in the order in which they are made.
struct Windows::Entry {
  Entry(platform::Ref<QtShell> ownShell, const std::string& installationFolder)
      : shell(std::move(ownShell)), registry(shell) {
    component::registerSuite(registry);
    registry.installationFolder(installationFolder);
    document = std::make_unique<component::Document>(registry);
    window = std::make_unique<MainWindow>(*document, shell);
  }

  platform::Ref<QtShell> shell;
  platform::ComponentRegistry registry;
  std::unique_ptr<component::Document> document;
  std::unique_ptr<MainWindow> window;
  std::vector<platform::Connection> connections;
  bool closed = false;
};

Windows::Windows(std::string installationFolder, MakeShell makeShell)
    : m_installationFolder(std::move(installationFolder)), m_makeShell(std::move(makeShell)) {
  if (!m_makeShell) m_makeShell = [] { return platform::make<QtShell>(); };
  followSession();
}

Windows::~Windows() = default;

MainWindow& Windows::add() {
  Entry& entry = make();
  show(entry);
  return *entry.window;
}

Windows::Entry& Windows::make() {
  Entry& entry =
      *m_entries.emplace_back(std::make_unique<Entry>(m_makeShell(), m_installationFolder));
  connectEvents(entry);
  return entry;
}

void Windows::show(Entry& entry) {
  const std::vector<MainWindow*> windows = all();
  const auto own = std::find(windows.begin(), windows.end(), entry.window.get());
  if (own != windows.begin()) entry.window->standBeside(**std::prev(own));
  entry.window->show();
  entry.document->showMost();
}

void Windows::connectEvents(Entry& entry) {
  MainWindow& window = *entry.window;
  auto& connections = entry.connections;
  connections.push_back(window.NewWindowAsked.connect([this] { add(); }));
  connections.push_back(window.QuitAsked.connect([this] { quit(); }));
  connections.push_back(window.OpenAsked.connect(
      [this, &window](const std::string& file) { open({file}, &window); }));
  connections.push_back(window.Closed.connect([this, &entry] { letGoOf(entry); }));
}

MainWindow& Windows::open(const std::vector<std::string>& files, MainWindow* from) {
  std::vector<std::string> paths;
  for (const std::string& file : files) paths.push_back(absolute(file));
  if (const Entry* shown = showing(paths.front())) {
    shown->window->bringToFront();
    shown->window->lookAgain();
    return *shown->window;
  }
  if (from && from->isUntouched()) {
    from->openFiles(paths);
    return *from;
  }
  Entry& entry = make();
  if (!entry.window->openFiles(paths) && from) {
    from->messages().show(MessageBar::Kind::error, entry.window->messages().text());
    letGoOf(entry);
    return *from;
  }
  show(entry);
  return *entry.window;
}

Windows::Entry* Windows::showing(const std::string& file) const {
  const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&](const auto& entry) {
    return !entry->closed && entry->document->shows(file);
  });
  return found == m_entries.end() ? nullptr : found->get();
}

bool Windows::quit() {
  const std::vector<MainWindow*> windows = all();
  for (MainWindow* window : windows) {
    if (!window->mayClose()) return false;
  }
  for (MainWindow* window : windows) window->closeUnasked();
  return true;
}

bool Windows::prepareToEnd(bool mayAsk) {
  for (MainWindow* window : all()) {
    window->rememberPlace();
    if (mayAsk && !window->mayClose()) return false;
  }
  return true;
}

void Windows::followSession() {
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, this,
                   [this](QSessionManager& session) {
                     const bool mayAsk = session.allowsInteraction();
                     const bool goesOn = !prepareToEnd(mayAsk);
                     if (mayAsk) session.release();
                     if (goesOn) session.cancel();
                   });
  QObject::connect(qApp, &QGuiApplication::saveStateRequest, this,
                   [this](QSessionManager& session) {
                     QStringList command{QApplication::applicationFilePath()};
                     for (const auto& entry : m_entries) {
                       const std::string path = entry->document->path();
                       if (!path.empty()) command += toQt(path);
                     }
                     session.setRestartCommand(command);
                   });
}

/// Not at once: it is told of inside the window's own event.
void Windows::letGoOf(Entry& entry) {
  if (entry.closed) return;
  entry.closed = true;
  QTimer::singleShot(0, this, [this, gone = &entry] {
    std::erase_if(m_entries, [&](const auto& each) { return each.get() == gone; });
  });
}

std::vector<MainWindow*> Windows::all() const {
  std::vector<MainWindow*> windows;
  for (const auto& entry : m_entries) {
    if (!entry->closed) windows.push_back(entry->window.get());
  }
  return windows;
}

}  // namespace brisel::qt
