#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controls/Button.h"
#include "controls/Label.h"
#include "controls/ListView.h"
#include "controls/Panel.h"
#include "controls/TextBox.h"
#include "editors/Form.h"
#include "platform/ComponentRegistry.h"
#include "repository/Class.h"

namespace brisel::editors {

struct MemberKind;

/// Asks for the name of a new class and which members of an existing one move to it. Its callers
/// put their own wording in.
class frmClass : public Form {
 public:
  explicit frmClass(platform::ComponentRegistry& registry);

  /// Lists the members of the class. An Error (objectMissing) for a wrapper without a node.
  void Prepare(repository::Class& source);
  [[nodiscard]] platform::Ref<repository::Class> CurrentClass() const { return m_current; }
  /// Kept for the caller.
  void CurrentClass(repository::Class* current) { m_current = current; }
  void SetCaption(std::string_view text) { Caption(text); }
  void SetInformation(std::string_view text) { m_information->Caption(text); }
  void SetClassnameLabel(std::string_view text) { m_nameLabel->Caption(text); }
  /// False until Ok was clicked with a name and a ticked member.
  [[nodiscard]] bool Accepted() const { return m_accepted; }

  [[nodiscard]] platform::Ref<controls::TextBox> ClassName() const { return m_name; }
  [[nodiscard]] platform::Ref<controls::Label> ClassNameLabel() const { return m_nameLabel; }
  [[nodiscard]] platform::Ref<controls::Label> Information() const { return m_information; }
  [[nodiscard]] platform::Ref<controls::ListView> Attributes() const { return m_attributes; }
  [[nodiscard]] platform::Ref<controls::ListView> Operations() const { return m_operations; }
  [[nodiscard]] platform::Ref<controls::Button> AllAttributes() const { return m_allAttributes; }
  [[nodiscard]] platform::Ref<controls::Button> AllOperations() const { return m_allOperations; }
  [[nodiscard]] platform::Ref<controls::Panel> ClassData() const { return m_data; }
  [[nodiscard]] platform::Ref<controls::Button> Ok() const { return m_ok; }
  [[nodiscard]] platform::Ref<controls::Button> Cancel() const { return m_cancel; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  void fill(controls::ListView& list, platform::Node& owner, const MemberKind& kind);
  void accept();

  platform::ComponentRegistry& m_registry;
  platform::Ref<repository::Class> m_current;
  bool m_accepted = false;
  platform::Ref<controls::TextBox> m_name = platform::make<controls::TextBox>();
  platform::Ref<controls::Label> m_nameLabel = platform::make<controls::Label>("Name:");
  platform::Ref<controls::Label> m_information = platform::make<controls::Label>();
  platform::Ref<controls::ListView> m_attributes = platform::make<controls::ListView>();
  platform::Ref<controls::ListView> m_operations = platform::make<controls::ListView>();
  platform::Ref<controls::Button> m_allAttributes =
      platform::make<controls::Button>("All &attributes");
  platform::Ref<controls::Button> m_allOperations =
      platform::make<controls::Button>("All o&perations");
  platform::Ref<controls::Panel> m_data = platform::make<controls::Panel>();
  platform::Ref<controls::Button> m_ok = platform::make<controls::Button>("&Ok");
  platform::Ref<controls::Button> m_cancel = platform::make<controls::Button>("&Cancel");
  std::vector<platform::Connection> m_listening;
};

}  // namespace brisel::editors
