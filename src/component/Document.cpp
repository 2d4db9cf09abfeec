#include "component/Document.h"

#include <filesystem>

#include "interchange/DimReader.h"
#include "interchange/DimWriter.h"
#include "interchange/ModelImport.h"
#include "platform/Text.h"
#include "repository/ViewDefaults.h"

namespace brisel::component {

using platform::Ref;

namespace {

constexpr std::string_view kUntitled = "Untitled";

std::string fileName(const std::string& path) {
  return std::filesystem::path(path).filename().string();
}

}  // namespace

bool isDimFile(const std::string& file) {
  return platform::equalsIgnoringCase(std::filesystem::path(file).extension().string(), ".dim");
}

Document::Document(platform::ComponentRegistry& registry)
    : m_registry(registry),
      m_editor(registry.create<editor::CLSEditor>("BriselCLS.CLSEditor")),
      m_title(kUntitled) {
  watchDrawing();
  openNew();
}

Document::~Document() {
  m_connections.clear();
  m_editor->terminate();
}

void Document::watchDrawing() {
  const auto drawingChanged = [this](const std::string&) {
    m_drawingChanged = true;
    Changed();
  };
  for (auto* event : {&m_editor->ClassMoved, &m_editor->ClassResized}) {
    m_connections.push_back(event->connect(drawingChanged));
  }
}

void Document::openNew() {
  const auto model = m_registry.create<platform::MetaRepository>("BriselCLS.Meta");
  model->Init();
  const auto fresh = platform::make<repository::CLSRepository>();
  fresh->Create(m_editor->UUIDGenerator().get());
  fresh->SetRepository(model.get());
  repository::makeLayoutNode(*fresh);
  m_report = {};
  show(model, "", std::string(kUntitled));
}

void Document::open(const std::vector<std::string>& files) {
  if (files.size() == 1 && isDimFile(files.front())) {
    auto model = interchange::DimReader(m_registry).read(files);
    m_report = {};
    show(std::move(model), files.front(), fileName(files.front()));
    return;
  }
  interchange::ImportResult imported = interchange::readModel(files, m_registry);
  m_report = std::move(imported.report);
  show(imported.repository, "", fileName(files.front()));
}

void Document::show(Ref<platform::MetaRepository> model, std::string file, std::string title) {
  m_editor->RepositoryFileName(file);
  m_title = std::move(title);
  m_editor->showRepository(*model);
  m_modelChanged = model->onChange([this](const platform::Change&) { Changed(); });
  settle();
}

void Document::save(const std::string& file) {
  m_editor->storeDiagram();
  interchange::DimWriter::write(file, *m_editor->Repository());
  m_editor->RepositoryFileName(file);
  m_title = fileName(file);
  settle();
}

void Document::settle() {
  m_savedChanges = m_editor->Repository()->changeCount();
  m_drawingChanged = false;
  Changed();
}

bool Document::isModified() const {
  return m_drawingChanged || m_editor->Repository()->changeCount() != m_savedChanges;
}

}  // namespace brisel::component
