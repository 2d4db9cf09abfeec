#include "component/AutomaticShell.h"

#include <algorithm>
#include <filesystem>

#include "component/FormSteps.h"
#include "platform/Error.h"
#include "platform/MemberTableOf.h"
#include "platform/Text.h"

namespace brisel::component {

using platform::CallError;
using platform::ErrorNumber;
using platform::FileDialog;
using platform::Message;
using platform::Object;
using platform::Ref;
using platform::Value;
using platform::ValueArray;
using platform::ValueRecord;

namespace {

/// The next answer of a queue, or nothing.
template <class T>
std::optional<T> take(std::deque<T>& queue) {
  if (queue.empty()) return {};
  T answer = std::move(queue.front());
  queue.pop_front();
  return answer;
}

Value orEmpty(const std::optional<std::string>& text) { return text ? Value(*text) : Value(); }

std::string withExtension(std::string path, const std::string& extension) {
  if (!std::filesystem::path(path).has_extension()) path += extension;
  return path;
}

}  // namespace

void AutomaticShell::AnswerMessage(std::string_view button) { m_messages.emplace_back(button); }

void AutomaticShell::AnswerFile(const Value& path) {
  if (path.isEmpty()) {
    m_files.emplace_back();
  } else if (path.isString()) {
    m_files.emplace_back(path.string());
  } else {
    throw CallError(ErrorNumber::typeMismatch,
                    "Wrong kind of argument 1 of AnswerFile: string expected, " +
                        std::string(path.kindName()) + " given");
  }
}

void AutomaticShell::AnswerForm(ValueArray& steps) {
  checkFormSteps(steps);
  m_forms.emplace_back(&steps);
}

std::string AutomaticShell::showMessage(const Message& message) {
  std::string answer = message.buttons.empty() ? std::string() : message.buttons.front();
  if (const auto wanted = take(m_messages)) {
    const auto isIt = [&](const std::string& button) {
      return platform::equalsIgnoringCase(button, *wanted);
    };
    const auto found = std::find_if(message.buttons.begin(), message.buttons.end(), isIt);
    if (found != message.buttons.end()) answer = *found;
  }
  std::vector<Value> buttons(message.buttons.begin(), message.buttons.end());
  Answered("message", platform::make<ValueRecord>(std::vector<ValueRecord::Field>{
                          {"title", message.title},
                          {"text", message.text},
                          {"buttons", Value(platform::make<ValueArray>(std::move(buttons)))},
                          {"answer", answer}}));
  return answer;
}

std::optional<std::string> AutomaticShell::answerFile(std::string_view kind,
                                                      const FileDialog& dialog) {
  std::optional<std::string> path = take(m_files).value_or(std::nullopt);
  const bool isThere = path && kind == "open" && std::filesystem::exists(*path);
  if (path && !isThere) path = withExtension(*path, dialog.extension);
  Answered(
      "dialog",
      platform::make<ValueRecord>(std::vector<ValueRecord::Field>{
          {"kind", kind}, {"name", dialog.title}, {"object", Value()}, {"answer", orEmpty(path)}}));
  return path;
}

std::optional<std::string> AutomaticShell::askOpenFile(const FileDialog& dialog) {
  return answerFile("open", dialog);
}

std::optional<std::string> AutomaticShell::askSaveFile(const FileDialog& dialog) {
  return answerFile("save", dialog);
}

void AutomaticShell::showPopup(platform::ToolBarControl&, std::string_view) {}

void AutomaticShell::copy(const std::vector<std::pair<std::string, std::string>>& byKind) {
  std::vector<ValueRecord::Field> fields;
  for (const auto& [kind, bytes] : byKind) fields.emplace_back(kind, bytes);
  m_clipboard = platform::make<ValueRecord>(std::move(fields));
}

void AutomaticShell::runForm(std::string_view name, Object& form) {
  const Ref<Object> held(&form);
  const auto steps = take(m_forms);
  form.set("Visible", true);
  const FormResult result = runFormSteps(form, steps ? steps->get() : nullptr);
  std::vector<ValueRecord::Field> fields{
      {"kind", "form"}, {"name", name}, {"object", Value(held)}, {"answer", result.answer}};
  if (!result.error.empty()) fields.emplace_back("error", result.error);
  Answered("dialog", platform::make<ValueRecord>(std::move(fields)));
}

const platform::MemberTable& AutomaticShell::memberTable() const {
  static const platform::MemberTable kTable =
      platform::MemberTableOf<AutomaticShell>()
          .method("AnswerMessage", &AutomaticShell::AnswerMessage)
          .method("AnswerFile", &AutomaticShell::AnswerFile)
          .method("AnswerForm", &AutomaticShell::AnswerForm)
          .method("Clipboard", &AutomaticShell::Clipboard)
          .build();
  return kTable;
}

}  // namespace brisel::component
