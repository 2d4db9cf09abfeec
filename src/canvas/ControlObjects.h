#pragma once

#include <string>
#include <string_view>

#include "canvas/ButtonBar.h"
#include "canvas/HitTest.h"
#include "platform/Diagram.h"

/// The small objects that the control answers with.
namespace brisel::canvas {

class DiagramControl;

/// The settings that a host reaches as the underlying diagram.
class DiagramSettings : public platform::Object {
 public:
  explicit DiagramSettings(DiagramControl& control) : m_control(&control) {}

  /// Whether a link can be drawn by hand from box to box.
  [[nodiscard]] bool CanDrawLink() const { return m_canDrawLink; }
  void CanDrawLink(bool can);
  /// As the control's `Layout`; empty stands for "%HIERARCHY%". An Error when the layout fails, and
  /// (objectMissing) when the control is gone.
  void Layout(std::string_view code);

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  friend class DiagramControl;

  DiagramControl* m_control;
  bool m_canDrawLink = false;
};

/// A tool-bar button as it was at the moment when it was asked for.
class ButtonObject : public platform::Object {
 public:
  explicit ButtonObject(Button button) : m_button(std::move(button)) {}

  [[nodiscard]] std::string key() const { return m_button.key; }
  [[nodiscard]] std::string caption() const { return m_button.caption; }
  [[nodiscard]] std::string tooltip() const { return m_button.tooltip; }
  [[nodiscard]] std::string icon() const { return m_button.icon; }
  [[nodiscard]] bool enabled() const { return m_button.enabled; }
  [[nodiscard]] bool pressed() const { return m_button.pressed; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  Button m_button;
};

/// What lay at a place at the moment of asking.
class HitObject : public platform::Object {
 public:
  explicit HitObject(const Hit& hit);

  [[nodiscard]] platform::Ref<platform::DiagramItem> item() const { return m_item; }
  [[nodiscard]] std::string part() const { return m_part; }
  /// Of a row; empty for all else.
  [[nodiscard]] std::string tag() const { return m_tag; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  platform::Ref<platform::DiagramItem> m_item;
  std::string m_part;
  std::string m_tag;
};

}  // namespace brisel::canvas
