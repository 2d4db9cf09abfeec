#pragma once

#include <string_view>
#include <vector>

#include "controls/Button.h"
#include "controls/CheckBox.h"
#include "controls/Label.h"
#include "controls/ListView.h"
#include "editors/Form.h"
#include "platform/ComponentRegistry.h"
#include "repository/CLSRepository.h"
#include "repository/Class.h"

namespace brisel::editors {

/// Asks which attribute of a class becomes a class of its own, and whether as a composite part.
class frmExtractAttribute : public Form {
 public:
  explicit frmExtractAttribute(platform::ComponentRegistry& registry);

  /// Lists the attributes of the class, whose key is its node's on the canvas.
  void Prepare(repository::Class& owner, std::string_view key,
               repository::CLSRepository& repository);
  /// False until Ok is clicked.
  [[nodiscard]] bool Accepted() const { return m_accepted; }

  [[nodiscard]] platform::Ref<controls::ListView> Attributes() const { return m_attributes; }
  [[nodiscard]] platform::Ref<controls::CheckBox> asComposite() const { return m_asComposite; }
  [[nodiscard]] platform::Ref<controls::Label> Label1() const { return m_label; }
  [[nodiscard]] platform::Ref<controls::Button> Ok() const { return m_ok; }
  [[nodiscard]] platform::Ref<controls::Button> Cancel() const { return m_cancel; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  void close(bool accepted);

  platform::ComponentRegistry& m_registry;
  bool m_accepted = false;
  platform::Ref<controls::Label> m_label =
      platform::make<controls::Label>("&Attribute that becomes a class:");
  platform::Ref<controls::ListView> m_attributes = platform::make<controls::ListView>();
  platform::Ref<controls::CheckBox> m_asComposite =
      platform::make<controls::CheckBox>("as &composite aggregation");
  platform::Ref<controls::Button> m_ok = platform::make<controls::Button>("&Ok");
  platform::Ref<controls::Button> m_cancel = platform::make<controls::Button>("&Cancel");
  std::vector<platform::Connection> m_listening;
};

}  // namespace brisel::editors
