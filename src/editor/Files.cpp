// Diagram files: opened and saved through the suite's importer and exporter.

#include "editor/CLSEditor.h"
#include "platform/Shell.h"

namespace brisel::editor {

using platform::Ref;

namespace {

const platform::FileDialog kDiagramFiles = {"", "DIM Format (*.dim)|*.dim", ".DIM", ""};

}  // namespace

void CLSEditor::OpenDiagram() {
  try {
    const auto path = m_registry.shell().askOpenFile(kDiagramFiles);
    if (!path) return;
    const ObjectRef importer = m_registry.create("BriselImporter.DIMImport");
    const ObjectRef files = m_registry.create("BriselImporter.FileList");
    files->call("Add", {*path});
    const auto opened =
        platform::as<platform::MetaRepository>(importer->call("Import", {files}).object());
    if (!opened) return;
    m_repositoryFileName = *path;  // so that the next save writes this model's file
    showRepository(*opened);
  } catch (const std::exception&) {
    // Quiet on purpose: the model is left as it was, and the importer keeps the cause.
  }
}

void CLSEditor::SaveDiagram() {
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
  } catch (const std::exception&) {
    // Quiet on purpose; the exporter keeps the cause.
  }
}

void CLSEditor::storeDiagram() {
  storePositions();
  saveView();
}

void CLSEditor::showRepository(platform::MetaRepository& repository) {
  endNaming();
  closePane();
  m_repository->SetRepository(&repository);
  m_diagram->SelectMode();
  m_diagram->Clear();
  populate();
  showModelInTools();
}

}  // namespace brisel::editor
