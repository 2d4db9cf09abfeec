#pragma once

#include <memory>
#include <string_view>

#include "platform/Object.h"

class QWidget;

namespace brisel::qt {

class FormDialog;

/// The dialog of a form by its class's name ("frmAssociation"); nothing for a name, or an object,
/// that there is no dialog for.
[[nodiscard]] std::unique_ptr<FormDialog> makeFormDialog(std::string_view name,
                                                         platform::Object& form, QWidget* parent);

}  // namespace brisel::qt
