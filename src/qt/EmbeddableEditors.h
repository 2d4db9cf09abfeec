#pragma once

#include "editors/CLSAssociationControl.h"
#include "editors/CLSClassControl.h"
#include "editors/CLSSelectStereotype.h"
#include "qt/AssociationPane.h"
#include "qt/ClassControlView.h"
#include "qt/StereotypePicker.h"

/// The editors of one element as controls for a form, each with an editor of its own.
namespace brisel::qt {

/// Edits one class: stereotype and properties, attributes, operations and their parameters.
class CLSClassControlWidget : public ClassControlView {
  Q_OBJECT

 public:
  explicit CLSClassControlWidget(QWidget* parent = nullptr);
  explicit CLSClassControlWidget(platform::ComponentRegistry& registry, QWidget* parent = nullptr);

  [[nodiscard]] editors::CLSClassControl& control() const { return *m_control; }
  /// Shows the class. Members are written to the model as they are edited, the rest at `Finish` of
  /// the control.
  void edit(repository::CLSRepository& model, repository::Class& shown);

 private:
  CLSClassControlWidget(platform::Ref<editors::CLSClassControl> control, QWidget* parent);

  platform::Ref<editors::CLSClassControl> m_control;
};

/// Edits one relationship: its properties, those of its ends, its stereotype.
class CLSAssociationControlWidget : public AssociationPane {
  Q_OBJECT

 public:
  explicit CLSAssociationControlWidget(QWidget* parent = nullptr);
  explicit CLSAssociationControlWidget(platform::ComponentRegistry& registry,
                                       QWidget* parent = nullptr);

  [[nodiscard]] editors::CLSAssociationControl& control() const { return *m_control; }
  /// Shows the relationship. Nothing is written to the model before `Finish` of the control.
  void edit(repository::CLSRepository& model, repository::Association& shown);

 private:
  CLSAssociationControlWidget(platform::Ref<editors::CLSAssociationControl> control,
                              QWidget* parent);

  platform::Ref<editors::CLSAssociationControl> m_control;
};

/// The drop-down in which the stereotype of an element is picked.
class CLSSelectStereotypeWidget : public StereotypePicker {
  Q_OBJECT

 public:
  explicit CLSSelectStereotypeWidget(QWidget* parent = nullptr);
  explicit CLSSelectStereotypeWidget(platform::ComponentRegistry& registry,
                                     QWidget* parent = nullptr);
  ~CLSSelectStereotypeWidget() override;

  /// Its `show` fills the list from a model; its `Selection` is what is picked.
  [[nodiscard]] editors::CLSSelectStereotype& control() const { return *m_control; }

 private:
  CLSSelectStereotypeWidget(platform::Ref<editors::CLSSelectStereotype> control, QWidget* parent);

  platform::Ref<editors::CLSSelectStereotype> m_control;
};

}  // namespace brisel::qt
