#pragma once

#include "platform/Event.h"
#include "platform/Object.h"

namespace brisel::controls {

/// What every control has: whether it is shown, and whether a person may use it. What a person does
/// to a disabled control has no effect; the program may still change it. Owned by the form or pane
/// that it lies on; a view shows it as it says and tells it what a person does.
class Control : public platform::Object {
 public:
  [[nodiscard]] bool Visible() const { return m_visible; }
  void Visible(bool visible);
  [[nodiscard]] bool Enabled() const { return m_enabled; }
  void Enabled(bool enabled);

  platform::Event<> Changed;  ///< what is seen of the control differs

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  bool m_visible = true;
  bool m_enabled = true;
};

}  // namespace brisel::controls
