#include "qt/EmbeddableEditors.h"

#include <utility>

#include "qt/Suite.h"

namespace brisel::qt {

using platform::ComponentRegistry;
using platform::Ref;

CLSClassControlWidget::CLSClassControlWidget(QWidget* parent)
    : CLSClassControlWidget(Suite::instance().registry(), parent) {}

CLSClassControlWidget::CLSClassControlWidget(ComponentRegistry& registry, QWidget* parent)
    : CLSClassControlWidget(registry.create<editors::CLSClassControl>("BriselCLS.CLSClassControl"),
                            parent) {}

CLSClassControlWidget::CLSClassControlWidget(Ref<editors::CLSClassControl> control, QWidget* parent)
    : ClassControlView(control, parent), m_control(std::move(control)) {}

void CLSClassControlWidget::edit(repository::CLSRepository& model, repository::Class& shown) {
  m_control->Repository(&model);
  m_control->Class(&shown);
  m_control->Prepare();
  m_control->StartEdit();
}

CLSAssociationControlWidget::CLSAssociationControlWidget(QWidget* parent)
    : CLSAssociationControlWidget(Suite::instance().registry(), parent) {}

CLSAssociationControlWidget::CLSAssociationControlWidget(ComponentRegistry& registry,
                                                         QWidget* parent)
    : CLSAssociationControlWidget(
          registry.create<editors::CLSAssociationControl>("BriselCLS.CLSAssociationControl"),
          parent) {}

CLSAssociationControlWidget::CLSAssociationControlWidget(
    Ref<editors::CLSAssociationControl> control, QWidget* parent)
    : AssociationPane(control, parent), m_control(std::move(control)) {}

void CLSAssociationControlWidget::edit(repository::CLSRepository& model,
                                       repository::Association& shown) {
  m_control->Repository(&model);
  m_control->Association(&shown);
  m_control->Prepare();
  m_control->StartEdit();
}

CLSSelectStereotypeWidget::CLSSelectStereotypeWidget(QWidget* parent)
    : CLSSelectStereotypeWidget(Suite::instance().registry(), parent) {}

CLSSelectStereotypeWidget::CLSSelectStereotypeWidget(ComponentRegistry& registry, QWidget* parent)
    : CLSSelectStereotypeWidget(
          registry.create<editors::CLSSelectStereotype>("BriselCLS.CLSSelectStereotype"), parent) {
  m_control->Create();
}

CLSSelectStereotypeWidget::CLSSelectStereotypeWidget(Ref<editors::CLSSelectStereotype> control,
                                                     QWidget* parent)
    : StereotypePicker(control, parent), m_control(std::move(control)) {}

CLSSelectStereotypeWidget::~CLSSelectStereotypeWidget() { m_control->Destroy(); }

}  // namespace brisel::qt
