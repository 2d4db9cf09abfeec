#pragma once

#include <QWidget>
#include <functional>

#include "controls/PropertyKinds.h"

namespace brisel::qt {

/// Told of each edit of a field at once, with the value that stands in it now.
using FieldEdited = std::function<void(const platform::Value&)>;

/// The editor that fits a property: a tick box, a list of words, a line, or several. Shows nothing
/// until it is told what.
[[nodiscard]] QWidget* makeField(const controls::PropertyFormat& format, QWidget* parent,
                                 FieldEdited edited);

/// Shows a value in a field that was made for that kind; nobody is told of an edit.
void showInField(QWidget& field, controls::PropertyKind kind, const platform::Value& value);

}  // namespace brisel::qt
