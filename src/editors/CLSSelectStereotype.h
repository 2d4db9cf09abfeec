#pragma once

#include "controls/Combo.h"
#include "controls/Label.h"
#include "platform/Repository.h"

namespace brisel::editors {

/// The drop-down in which an editor picks the stereotype of an element. Its caller fills the list.
class CLSSelectStereotype : public controls::Control {
 public:
  CLSSelectStereotype();

  void Create() { m_combo->create(); }
  // The two do nothing; they belong to the lifecycle that all editors have.
  void Init() {}
  void Deinit() {}
  void Destroy() { m_combo->destroy(); }
  [[nodiscard]] platform::Ref<platform::Node> Selection() const { return m_combo->selection(); }
  void Selection(platform::Node* stereotype) { m_combo->selection(stereotype); }
  /// The combo itself.
  [[nodiscard]] platform::Ref<controls::Combo> List() const { return m_combo; }

  /// Resets the list to the stereotypes of a model and selects one of them, or none.
  void show(platform::MetaRepository& model, platform::Node* stereotype);

  [[nodiscard]] platform::Ref<controls::Combo> Combo1() const { return m_combo; }
  [[nodiscard]] platform::Ref<controls::Label> Label1() const { return m_label; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  platform::Ref<controls::Combo> m_combo = platform::make<controls::Combo>();
  platform::Ref<controls::Label> m_label = platform::make<controls::Label>("&Stereotype:");
};

}  // namespace brisel::editors
