#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "canvas/DiagramControl.h"
#include "component/FileStamp.h"
#include "editor/CLSEditor.h"
#include "platform/ComponentRegistry.h"
#include "platform/Event.h"
#include "platform/Repository.h"

namespace brisel::component {

/// The diagram that an application has open: an editor, the files that its model came from, and
/// whether it differs from what was read or saved last. Knows no window.
///
/// Takes the place of the suite's DIM exporter in the registry, so that it hears of every save,
/// from whichever button it came.
class Document {
 public:
  explicit Document(platform::ComponentRegistry& registry);
  ~Document();
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  [[nodiscard]] editor::CLSEditor& editor() const { return *m_editor; }
  [[nodiscard]] canvas::DiagramControl& canvas() const { return *m_canvas; }
  /// Where the files beside the library lie.
  [[nodiscard]] const std::string& installationFolder() const {
    return m_registry.installationFolder();
  }

  /// An empty diagram in the place of the one that is open.
  void create();
  /// Reads files, several only when they are parts of one model. An Error leaves everything as it
  /// was. What the files hold and the model has no place for is in `notes`. The view shows as much
  /// of the diagram as can be read.
  void open(const std::vector<std::string>& files);
  [[nodiscard]] const std::vector<std::string>& notes() const { return m_notes; }
  /// The whole diagram where it can be read at that size, else the class with the most
  /// relationships and what lies around it. For a view that got its size after the diagram was
  /// opened.
  void showMost();
  /// Adds the demo model, and shows as much as can be read.
  void makeDemo();
  /// Saves to the file that the diagram has, or asks for one. False when the person declined or
  /// the file could not be written; then SaveFailed was raised.
  bool save();
  /// Asks for a file first.
  bool saveAs();
  /// Reads the diagram's file again and shows the same part of it. An Error as for `open`.
  void reload();
  /// What another program did to the diagram's file since it was read or written last. No save
  /// overwrites such a file before the person has agreed.
  [[nodiscard]] FileStamp::Change fileChange() const { return m_stamp.change(); }

  /// The DIM file of the diagram; empty until it has one.
  [[nodiscard]] std::string path() const { return m_editor->RepositoryFileName(); }
  /// The file's name without folders; "Untitled" for a diagram that came from no file.
  [[nodiscard]] std::string title() const;
  /// True when the model, the geometry or the view settings differ from what was read or saved
  /// last. The first question after a change of the geometry costs a walk over boxes and lines.
  [[nodiscard]] bool isModified() const;

  /// True while it came from no file and holds nothing of a person's.
  [[nodiscard]] bool isUntouched() const;
  /// Whether the file, by its absolute path, is what the diagram is saved to or came from.
  [[nodiscard]] bool shows(const std::string& file) const;

  struct Counts {
    std::int64_t classes = 0;
    std::int64_t relationships = 0;
    std::int64_t shownClasses = 0;
    std::int64_t shownRelationships = 0;
  };
  [[nodiscard]] Counts counts() const;
  /// One line on a class or relationship for a person who points at it; empty for an unknown key.
  [[nodiscard]] std::string describe(std::string_view key) const;

  platform::Event<> Changed;                ///< something may differ: model, geometry, file
  platform::Event<std::string> SaveFailed;  ///< the cause

 private:
  class WatchedExporter;

  /// Where a model came from.
  struct Origin {
    std::string path = {};    ///< of its DIM file
    std::string source = {};  ///< the file that was read
    FileStamp stamp = {};     ///< of the DIM file
    std::vector<std::string> notes = {};
  };

  /// An Error leaves everything as it was.
  void show(platform::MetaRepository& repository, Origin origin);
  void connect();
  void settle();
  [[nodiscard]] std::string suggestedPath() const;
  [[nodiscard]] platform::MetaRepository& model() const;
  [[nodiscard]] std::uint64_t geometryFingerprint() const;
  bool saveNow();
  /// The person may choose another target for a save, or none: then it is false.
  [[nodiscard]] bool agreeOnTarget(std::string& path);
  void succeeded(const std::string& path);
  void failed(const std::string& cause);

  platform::ComponentRegistry& m_registry;
  platform::Ref<editor::CLSEditor> m_editor;
  platform::Ref<canvas::DiagramControl> m_canvas;
  platform::Ref<WatchedExporter> m_exporter;
  std::string m_source;  ///< the file that was read when the diagram has no DIM file yet
  FileStamp m_stamp;     ///< of the DIM file
  std::vector<std::string> m_notes;
  std::uint64_t m_settledChanges = 0;
  std::uint64_t m_settledGeometry = 0;  ///< its fingerprint
  mutable std::uint64_t m_knownGeometry = 0;
  mutable std::uint64_t m_knownRevision = 0;  ///< of the scene, when the geometry was as known
  enum class Outcome {
    none,
    saved,
    declined,
    failed
  } m_outcome = Outcome::none;  ///< of the last save
  platform::Connection m_modelChanged;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::component
