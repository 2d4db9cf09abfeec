#pragma once

#include <string>
#include <vector>

#include "editor/CLSEditor.h"
#include "interchange/ImportReport.h"
#include "platform/ComponentRegistry.h"

namespace brisel::component {

/// What a program keeps open: an editor, the file that its model came from, and whether the model
/// or its drawing has changed since. Opening and saving raise their errors; what was open stays
/// open when they do.
class Document {
 public:
  explicit Document(platform::ComponentRegistry& registry);
  ~Document();
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  [[nodiscard]] editor::CLSEditor& editor() const { return *m_editor; }

  /// An empty model that shows attributes and operations.
  void openNew();
  /// A DIM file, or the files of one model in another format, told apart by their endings.
  void open(const std::vector<std::string>& files);
  /// Writes the model with its geometry and view settings; the file is the document's from then on.
  void save(const std::string& file);

  /// The DIM file that a save writes to; empty for a new or an imported model.
  [[nodiscard]] std::string file() const { return m_editor->RepositoryFileName(); }
  /// What a title shows: the name of the file, of what was imported, or "Untitled".
  [[nodiscard]] const std::string& title() const { return m_title; }
  [[nodiscard]] bool isModified() const;
  /// What was skipped and told when the model was imported; empty for others.
  [[nodiscard]] const interchange::ImportReport& report() const { return m_report; }

  platform::Event<> Changed;  ///< title, file or the modified state may be others now

 private:
  void show(platform::Ref<platform::MetaRepository> model, std::string file, std::string title);
  void watchDrawing();
  void settle();

  platform::ComponentRegistry& m_registry;
  platform::Ref<editor::CLSEditor> m_editor;
  std::vector<platform::Connection> m_connections;
  platform::Connection m_modelChanged;
  std::string m_title;
  interchange::ImportReport m_report;
  std::uint64_t m_savedChanges = 0;
  bool m_drawingChanged = false;
};

/// True for a name that ends like a DIM file, in any case.
[[nodiscard]] bool isDimFile(const std::string& file);

}  // namespace brisel::component
