#pragma once

#include <string>
#include <string_view>

#include "controls/ControlArray.h"
#include "controls/Property.h"
#include "controls/TabStrip.h"
#include "editors/CLSSelectStereotype.h"
#include "platform/ComponentRegistry.h"
#include "platform/Diagram.h"
#include "repository/Association.h"
#include "repository/CLSRepository.h"

namespace brisel::editors {

/// Edits one relationship: its properties, those of its two ends, its stereotype. Nothing is
/// written before `Finish`. Protocol: `Path`, `Repository`, `Association`, `Prepare`, `StartEdit`,
/// `Finish`.
class CLSAssociationControl : public controls::Control {
 public:
  explicit CLSAssociationControl(platform::ComponentRegistry& registry);

  [[nodiscard]] std::string Path() const { return m_path; }
  /// Also the property grids'.
  void Path(std::string_view path);
  [[nodiscard]] platform::Ref<repository::CLSRepository> Repository() const { return m_repository; }
  void Repository(repository::CLSRepository* repository) { m_repository = repository; }
  [[nodiscard]] platform::Ref<repository::Association> Association() const { return m_association; }
  void Association(repository::Association* association) { m_association = association; }
  /// Shows the relationship; does nothing without one.
  void Prepare();
  void StartEdit() {}
  /// Writes what was edited. A relationship that left the model meanwhile is not written to.
  void Finish(platform::DiagramControl* diagram);

  [[nodiscard]] platform::Ref<controls::TabStrip> TabStrip1() const { return m_tabs; }
  /// The panels, each with the key of its tab as its tag.
  [[nodiscard]] platform::Ref<controls::ControlArray> Picture1() const { return m_panels; }
  /// The three grids: of the relationship, its source end, its target end.
  [[nodiscard]] platform::Ref<controls::ControlArray> PropertyAssociation() const {
    return m_grids;
  }
  [[nodiscard]] platform::Ref<CLSSelectStereotype> CLSSelectStereotype1() const {
    return m_stereotype;
  }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  void prepare();
  void finish();
  void addKeys();
  void showTab();
  [[nodiscard]] controls::Property& grid(std::int64_t index) const;
  [[nodiscard]] bool isEditable() const;

  platform::ComponentRegistry& m_registry;
  std::string m_path;
  platform::Ref<repository::CLSRepository> m_repository;
  platform::Ref<repository::Association> m_association;
  platform::Ref<controls::TabStrip> m_tabs = platform::make<controls::TabStrip>();
  platform::Ref<controls::ControlArray> m_panels;
  platform::Ref<controls::ControlArray> m_grids;
  platform::Ref<CLSSelectStereotype> m_stereotype = platform::make<CLSSelectStereotype>();
  platform::Connection m_tabChosen;
};

}  // namespace brisel::editors
