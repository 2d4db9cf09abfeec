#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Shell.h"
#include "platform/ValueArray.h"
#include "platform/ValueRecord.h"

namespace brisel::component {

/// The shell of a program without a person: modal dialogs are answered at once, from queues that
/// were filled before the call that needs them. One object serves the whole process.
class AutomaticShell : public platform::Shell {
 public:
  // Members for whoever plays the person.
  /// The button for the next message box, by caption; with none queued, or one that the box does
  /// not have, its default button is taken.
  void AnswerMessage(std::string_view button);
  /// The file for the next open or save dialog; an empty value cancels it. With none queued a
  /// dialog is cancelled. A CallError for a value that is no string.
  void AnswerFile(const platform::Value& path);
  /// What is done in the next modal form: steps [control, member, argument...]. A form that is
  /// still open after the last step, or with none queued, is cancelled. A CallError for steps of
  /// another shape.
  void AnswerForm(platform::ValueArray& steps);
  /// What was copied last, by MIME type.
  [[nodiscard]] platform::Ref<platform::ValueRecord> Clipboard() const { return m_clipboard; }

  // What the components ask for.
  std::string showMessage(const platform::Message& message) override;
  std::optional<std::string> askOpenFile(const platform::FileDialog& dialog) override;
  std::optional<std::string> askSaveFile(const platform::FileDialog& dialog) override;
  /// Nothing pops up: a choice is made by a click on the tool-bar control.
  void showPopup(platform::ToolBarControl& toolBar, std::string_view band) override;
  void copy(const std::vector<std::pair<std::string, std::string>>& byKind) override;
  /// Runs a form modally: shows it by its property "Visible", takes the steps that are queued, and
  /// closes it by its "Cancel" button, or else hides it, when they left it open. A step that fails
  /// is the last one.
  void runForm(std::string_view name, platform::Object& form) override;

  /// A dialog was answered. "message" with title, text, buttons, answer; "dialog" with kind
  /// ("open", "save", "form"), name, object (the form), answer, and error where a step failed.
  platform::Event<std::string, platform::Ref<platform::ValueRecord>> Answered;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::optional<std::string> answerFile(std::string_view kind, const platform::FileDialog& dialog);

  std::deque<std::string> m_messages;
  std::deque<std::optional<std::string>> m_files;
  std::deque<platform::Ref<platform::ValueArray>> m_forms;
  platform::Ref<platform::ValueRecord> m_clipboard =
      platform::make<platform::ValueRecord>(std::vector<platform::ValueRecord::Field>());
};

}  // namespace brisel::component
