#include "tools/Template.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <unordered_set>
#include <utility>

#include "platform/Error.h"
#include "platform/MemberTableOf.h"
#include "platform/Shell.h"
#include "platform/Text.h"
#include "tools/OutputFolder.h"

namespace brisel::tools {

using platform::Error;
using platform::ErrorNumber;
using platform::make;
using platform::Ref;
using platform::Value;
using platform::ValueArray;
using platform::ValueRecord;

namespace {

constexpr std::string_view kProgId = "BriselTemplateEditor.Template";
constexpr std::size_t kNamedFiles = 10;

Ref<ValueArray> arrayOf(const std::vector<std::string>& texts) {
  return make<ValueArray>(std::vector<Value>(texts.begin(), texts.end()));
}

std::string listOf(const std::vector<std::string>& names) {
  std::string list;
  for (std::size_t i = 0; i < names.size() && i < kNamedFiles; ++i)
    list.append("\n").append(names[i]);
  if (names.size() > kNamedFiles) {
    list.append("\nand " + std::to_string(names.size() - kNamedFiles) + " more");
  }
  return list;
}

}  // namespace

Template::Template(platform::ComponentRegistry& registry) : m_registry(registry) {}

void Template::Create() {
  if (m_folder.own().empty()) UserDirectory(ownTemplateFolder());
}

void Template::SetRepository(platform::MetaRepository& repository) {
  m_repository = &repository;
  m_changes = repository.onChange([this](const platform::Change&) { modelChanged(); });
  m_selected.clear();
  modelChanged();
}

/// Told once: whoever is interested asks for the model or the preview and so has it read again.
void Template::modelChanged() {
  const bool isKnown = !m_model && !m_generation;
  m_model.reset();
  m_generation.reset();
  if (!isKnown) Changed("model");
}

void Template::restart(const char* what) {
  m_generation.reset();
  Changed(what);
}

void Template::WorkDirectory(std::string_view folder) {
  m_workDirectory = folder;
  m_folder = TemplateFolder(platform::nativePath(folder), m_folder.own());
}

void Template::UserDirectory(std::string_view folder) {
  m_folder = TemplateFolder(m_folder.installed(), platform::nativePath(folder));
}

void Template::Output(std::string_view folder) {
  if (folder == m_output) return;
  m_output = folder;
  Changed("output");
}

void Template::DimFile(std::string_view path) {
  m_dimFile = path;
  restart("output");
}

void Template::templateName(std::string_view name) {
  if (!name.empty()) load(name);
}

void Template::PopUp() {
  if (m_name.empty() && !m_mainTemplate.empty()) load(m_mainTemplate);
  m_registry.shell().showTool(kProgId, *this);
}

Ref<ValueArray> Template::Templates() const { return arrayOf(m_folder.list()); }

void Template::load(std::string_view name) {
  const std::string path = m_folder.find(name);
  m_text = readTextFile(path);
  m_savedText = m_text;
  const bool isPath = platform::nativePath(name).find('/') != std::string::npos;
  m_name = isPath ? path : std::filesystem::path(path).filename().string();
  restart("template");
}

bool Template::Open(std::string_view name) {
  if (!MayClose()) return false;
  load(name);
  return true;
}

void Template::Text(std::string_view text) {
  if (text == m_text) return;
  m_text = text;
  restart("text");
}

std::string Template::SaveAs(std::string_view name) {
  const std::string trimmed(platform::trimmed(name));
  if (trimmed.empty()) throw Error(ErrorNumber::invalidCall, "A template needs a name");
  const std::string path = m_folder.pathToSave(trimmed);
  const std::string file = std::filesystem::path(path).filename().string();
  const auto known = m_folder.list();
  if (file != m_name && std::find(known.begin(), known.end(), file) != known.end()) {
    const std::string answer =
        m_registry.shell().showMessage({"Brisel",
                                        "There is a template " + file + ". Replace it?",
                                        {"Cancel", "Replace"},
                                        platform::MessageIcon::warning});
    if (answer != "Replace") return {};
  }
  writeTextFile(path, m_text);
  m_savedText = m_text;
  const bool isPath = platform::nativePath(trimmed).find('/') != std::string::npos;
  m_name = isPath ? path : std::filesystem::path(path).filename().string();
  Changed("template");
  return path;
}

bool Template::MayClose() {
  if (!Modified()) return true;
  const std::string answer =
      m_registry.shell().showMessage({"Brisel",
                                      "Save the changes of the template " + m_name + "?",
                                      {"Save", "Discard", "Cancel"},
                                      platform::MessageIcon::question});
  if (answer == "Cancel") return false;
  return answer != "Save" || !Save().empty();
}

CodeModel& Template::model() {
  if (!m_repository) throw Error(ErrorNumber::objectMissing, "The template editor has no model");
  if (!m_model) m_model = std::make_shared<CodeModel>(*m_repository);
  return *m_model;
}

Ref<ValueArray> Template::Classes() {
  std::vector<Value> classes;
  for (const auto& cls : model().classes()) {
    classes.emplace_back(make<ValueRecord>(
        std::vector<ValueRecord::Field>{{"key", cls->identifier}, {"name", cls->name}}));
  }
  return make<ValueArray>(std::move(classes));
}

void Template::Select(ValueArray& keys) {
  std::vector<std::string> selected;
  for (const Value& key : keys.values()) selected.push_back(key.string());
  if (selected == m_selected) return;
  m_selected = std::move(selected);
  restart("selection");
}

Ref<ValueArray> Template::Selected() const { return arrayOf(m_selected); }

Generation& Template::generation() {
  if (m_generation) return *m_generation;
  TemplateRoot root;
  root.modelName = std::filesystem::path(platform::nativePath(m_dimFile)).stem().string();
  if (root.modelName.empty()) root.modelName = "model";
  const std::unordered_set<std::string> selected(m_selected.begin(), m_selected.end());
  for (const auto& cls : model().classes()) {
    if (selected.empty() || selected.contains(cls->identifier)) root.selected.push_back(cls.get());
  }
  const std::string file = std::filesystem::path(m_name).filename().string();
  m_generation = std::make_unique<Generation>(file, m_text, m_model, std::move(root));
  return *m_generation;
}

bool Template::StepPreview(double milliseconds) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::duration<double, std::milli>(milliseconds);
  while (generation().step()) {
    if (Clock::now() >= end) return true;
  }
  return false;
}

Ref<ValueArray> Template::Preview() {
  generation().run();
  std::vector<Value> files;
  if (generation().fault()) return make<ValueArray>(std::move(files));
  for (const GeneratedFile& file : generation().files()) {
    files.emplace_back(make<ValueRecord>(
        std::vector<ValueRecord::Field>{{"name", file.name}, {"text", file.text}}));
  }
  return make<ValueArray>(std::move(files));
}

std::int64_t Template::FaultLine() const {
  return m_generation && m_generation->fault() ? m_generation->fault()->line : 0;
}

std::string Template::Fault() const {
  return m_generation && m_generation->fault() ? m_generation->fault()->cause : std::string();
}

const std::vector<GeneratedFile>& Template::files() const {
  static const std::vector<GeneratedFile> kNone;
  return m_generation && !m_generation->fault() ? m_generation->files() : kNone;
}

Ref<ValueRecord> Template::Write() {
  generation().run();
  if (const auto& fault = generation().fault()) {
    throw Error(ErrorNumber::badFile,
                m_name + ":" + std::to_string(fault->line) + ": " + fault->cause);
  }
  if (m_output.empty()) throw Error(ErrorNumber::invalidCall, "There is no folder to write to");
  const std::string folder = platform::nativePath(m_output);
  const std::vector<GeneratedFile> written = generation().files();
  const OutputPlan plan = planOutput(folder, written);
  if (!plan.differing.empty()) {
    const std::string answer = m_registry.shell().showMessage(
        {"Brisel",
         "These files in " + folder +
             " differ from what would be written:" + listOf(plan.differing),
         {"Cancel", "Overwrite"},
         platform::MessageIcon::warning});
    if (answer != "Overwrite") return {};
  }
  writeOutput(folder, written, true);
  const auto count = static_cast<std::int64_t>(plan.made.size() + plan.differing.size());
  return make<ValueRecord>(std::vector<ValueRecord::Field>{
      {"written", count}, {"unchanged", static_cast<std::int64_t>(plan.same.size())}});
}

const platform::MemberTable& Template::memberTable() const {
  using T = Template;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<T>()
          .method("Create", &T::Create)
          .method("SetRepository", &T::SetRepository)
          .property("WorkDirectory", &T::WorkDirectory, &T::WorkDirectory)
          .property("MainTemplate", &T::MainTemplate, &T::MainTemplate)
          .property("Output", &T::Output, &T::Output)
          .property("DimFile", &T::DimFile, &T::DimFile)
          .property("template", &T::templateName, &T::templateName)
          .method("PopUp", &T::PopUp)
          .property("UserDirectory", &T::UserDirectory, &T::UserDirectory)
          .method("Templates", &T::Templates)
          .method("Open", &T::Open)
          .property("Text", &T::Text, &T::Text)
          .property("Modified", &T::Modified)
          .method("Save", &T::Save)
          .method("SaveAs", &T::SaveAs)
          .method("MayClose", &T::MayClose)
          .method("Classes", &T::Classes)
          .method("Select", &T::Select)
          .method("Selected", &T::Selected)
          .method("StepPreview", &T::StepPreview)
          .method("Preview", &T::Preview)
          .property("FaultLine", &T::FaultLine)
          .property("Fault", &T::Fault)
          .method("Write", &T::Write)
          .event("Changed", &T::Changed)
          .build();
  return kTable;
}

}  // namespace brisel::tools
