// Diagram files: opened and saved through the suite's importer and exporter.

#include "editor/CLSEditor.h"
#include "editor/DrawnGeometry.h"
#include "platform/Shell.h"

namespace brisel::editor {

using platform::Ref;

namespace {

const platform::FileDialog kDiagramFiles = {"", "DIM Format (*.dim)|*.dim", ".DIM", ""};

}  // namespace

// Both are quiet on purpose: what fails leaves everything as it was, and LastError tells why.

void CLSEditor::OpenDiagram() {
  const std::string before = m_repositoryFileName;
  m_lastError.clear();
  try {
    const auto path = m_registry.shell().askOpenFile(kDiagramFiles);
    if (!path) return;
    const auto opened = importDiagram(*path);
    m_repositoryFileName = *path;  // so that the next save writes this model's file
    showRepository(*opened);
  } catch (...) {
    m_repositoryFileName = before;
    noteFailure();
  }
}

void CLSEditor::SaveDiagram() {
  const std::string before = m_repositoryFileName;
  m_lastError.clear();
  try {
    finishEditing();
    storeDiagram();
    if (m_repositoryFileName.empty()) {
      const auto path = m_registry.shell().askSaveFile(kDiagramFiles);
      if (!path) return;
      m_repositoryFileName = *path;
    }
    const ObjectRef exporter = m_registry.create("BriselExporter.DIMExport");
    exporter->call("Export", {m_repositoryFileName, "BriselCLS", Ref<platform::Object>(&model())});
  } catch (...) {
    m_repositoryFileName = before;  // a name that could not be written to is asked for again
    noteFailure();
  }
}

Ref<platform::MetaRepository> CLSEditor::importDiagram(const std::string& path) {
  const ObjectRef importer = m_registry.create("BriselImporter.DIMImport");
  const ObjectRef files = m_registry.create("BriselImporter.FileList");
  files->call("Add", {path});
  auto opened = platform::as<platform::MetaRepository>(importer->call("Import", {files}).object());
  if (!opened) {
    throw platform::Error(platform::ErrorNumber::objectMissing, "The importer gave no model");
  }
  return opened;
}

void CLSEditor::noteFailure() {
  try {
    throw;
  } catch (const std::exception& error) {
    m_lastError = error.what();
  } catch (...) {
    m_lastError = "Unknown failure";
  }
}

void CLSEditor::storeDiagram() {
  storePositions();
  saveView();
}

void CLSEditor::showRepository(platform::MetaRepository& repository) {
  endNaming();
  closePane();
  const auto before = m_repository->GetRepository();
  const DrawnGeometry drawn(*m_diagram);
  try {
    takeRepository(&repository);
    populate();
    showModelInTools();
  } catch (...) {
    takeRepository(before.get());
    if (before) redraw(drawn);
    throw;
  }
}

void CLSEditor::takeRepository(platform::MetaRepository* repository) {
  m_repository->SetRepository(repository);
  m_diagram->SelectMode();
  m_diagram->Clear();
}

/// The model that was drawn before, with what no save had stored of it.
void CLSEditor::redraw(const DrawnGeometry& drawn) {
  try {
    if (const auto layout = layoutNode()) m_view.load(*layout);
    SyncViewButtons();
    SyncCategoryButtons();
    drawModel();
    drawn.restore(*m_diagram);
  } catch (const std::exception&) {
    // The failure that led here is the one to tell of.
  }
}

}  // namespace brisel::editor
