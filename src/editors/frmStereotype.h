#pragma once

#include "controls/Button.h"
#include "controls/ListEditor.h"
#include "editors/Form.h"
#include "platform/ComponentRegistry.h"
#include "repository/CLSRepository.h"

namespace brisel::editors {

/// The dialog that edits the list of a model's stereotypes. A model always has one at least:
/// "<NONE>" is made where there is no other, when the dialog is created and when it is destroyed.
class frmStereotype : public Form {
 public:
  explicit frmStereotype(platform::ComponentRegistry& registry);

  [[nodiscard]] std::string Path() const { return m_path; }
  void Path(std::string_view path) { m_path = path; }
  /// Opens the list of the repository's stereotypes.
  void Create(repository::CLSRepository& repository);
  void Init() { m_list->init(); }
  void Deinit() { m_list->deinit(); }
  /// Unloads the form.
  void Destroy();

  [[nodiscard]] platform::Ref<controls::ListEditor> ListEditor1() const { return m_list; }
  [[nodiscard]] platform::Ref<controls::Button> Ok() const { return m_ok; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  void ensureNone();

  std::string m_path;
  platform::Ref<repository::CLSRepository> m_repository;
  platform::Ref<controls::ListEditor> m_list;
  platform::Ref<controls::Button> m_ok = platform::make<controls::Button>("&Close");
  platform::Connection m_closing;
};

}  // namespace brisel::editors
