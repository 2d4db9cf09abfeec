#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ComponentRegistry.h"
#include "platform/Event.h"
#include "platform/Repository.h"
#include "platform/ValueArray.h"
#include "platform/ValueRecord.h"
#include "tools/Generation.h"
#include "tools/TemplateFolder.h"

namespace brisel::tools {

/// The template editor ("BriselTemplateEditor.Template"): one template, edited, and what it makes
/// of the chosen classes of a live model. The preview is made in steps whenever somebody asks for
/// it; a change of text, classes or model takes it back to its start. Errors are raised to the
/// caller; questions go to the registry's shell.
class Template : public platform::Object {
 public:
  explicit Template(platform::ComponentRegistry& registry);

  // The system's members.
  void Create();
  void SetRepository(platform::MetaRepository& repository);
  /// The folder of the installed templates.
  [[nodiscard]] std::string WorkDirectory() const { return m_workDirectory; }
  void WorkDirectory(std::string_view folder);
  /// The template that `PopUp` opens when none was named.
  [[nodiscard]] std::string MainTemplate() const { return m_mainTemplate; }
  void MainTemplate(std::string_view name) { m_mainTemplate = name; }
  /// The folder that `Write` writes to.
  [[nodiscard]] std::string Output() const { return m_output; }
  void Output(std::string_view folder);
  /// The file of the model, from which templates know the model's name.
  [[nodiscard]] std::string DimFile() const { return m_dimFile; }
  void DimFile(std::string_view path);
  /// The template that is edited, by its file name; setting it opens it without a question, unless
  /// it is empty.
  [[nodiscard]] std::string templateName() const { return m_name; }
  void templateName(std::string_view name);
  /// Opens `MainTemplate` when no template is open yet, and shows the window.
  void PopUp();

  /// Where templates are saved that cannot be saved where they were installed.
  [[nodiscard]] std::string UserDirectory() const { return m_folder.own(); }
  void UserDirectory(std::string_view folder);
  /// The names of all templates.
  [[nodiscard]] platform::Ref<platform::ValueArray> Templates() const;
  /// Opens a template; asks before changes of another are lost. False when the person cancelled.
  bool Open(std::string_view name);
  [[nodiscard]] std::string Text() const { return m_text; }
  void Text(std::string_view text);
  [[nodiscard]] bool Modified() const { return m_text != m_savedText; }
  /// Returns the path that it was saved to. Another template of the name is not replaced without a
  /// question; empty when the answer was "Cancel".
  std::string Save() { return SaveAs(m_name); }
  std::string SaveAs(std::string_view name);
  /// Asks before changes are lost, and saves them when that is the answer. False for "Cancel".
  bool MayClose();

  /// Records of the model's classes with "key" and "name", bases first.
  [[nodiscard]] platform::Ref<platform::ValueArray> Classes();
  /// The classes that the template runs over, by key; all of them for none.
  void Select(platform::ValueArray& keys);
  [[nodiscard]] platform::Ref<platform::ValueArray> Selected() const;

  /// Goes on with the preview for about that many milliseconds; false when it is complete.
  bool StepPreview(double milliseconds);
  /// The files, complete: records with "name" and "text"; none when the template has a fault.
  [[nodiscard]] platform::Ref<platform::ValueArray> Preview();
  /// What is wrong with the template, as far as the preview has come: its line from 1 (0 for none)
  /// and the cause.
  [[nodiscard]] std::int64_t FaultLine() const;
  [[nodiscard]] std::string Fault() const;
  /// Writes the files to `Output`, all of them or none; asks before files that differ are
  /// overwritten. Returns a record with "written" and "unchanged", or nothing when the person
  /// cancelled. An Error for a fault of the template, for no `Output`, and for what cannot be
  /// written.
  platform::Ref<platform::ValueRecord> Write();

  /// For the window: what the preview holds so far.
  [[nodiscard]] const std::vector<GeneratedFile>& files() const;

  /// What changed: "template", "text", "selection", "model", "output".
  platform::Event<std::string> Changed;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  [[nodiscard]] CodeModel& model();
  [[nodiscard]] Generation& generation();
  void load(std::string_view name);
  void restart(const char* what);
  void modelChanged();

  platform::ComponentRegistry& m_registry;
  platform::Ref<platform::MetaRepository> m_repository;
  platform::Connection m_changes;
  std::string m_workDirectory;
  std::string m_mainTemplate;
  std::string m_output;
  std::string m_dimFile;
  TemplateFolder m_folder;
  std::string m_name;
  std::string m_text;
  std::string m_savedText;
  std::vector<std::string> m_selected;
  std::shared_ptr<CodeModel> m_model;  ///< nothing after a change
  std::unique_ptr<Generation> m_generation;
};

}  // namespace brisel::tools
