#pragma once

#include <string>

#include "platform/Object.h"
#include "platform/ValueArray.h"

namespace brisel::component {

/// How a form that was run by steps ended.
struct FormResult {
  std::string answer;  ///< the control whose step closed it ("Ok"), or "Cancel"
  std::string error;   ///< what a step raised; empty when none failed
};

/// Raises a CallError unless every step is an array of a control, a member and its arguments, the
/// first two strings.
void checkFormSteps(const platform::ValueArray& steps);

/// Takes the steps in turn in a form that is shown, as long as it stays so; one that is still open
/// in the end is cancelled. A control is named by its path, "Pane1.Buttons(2)": a property of the
/// form, where the number is the index into a control array. No steps at all cancel the form.
[[nodiscard]] FormResult runFormSteps(platform::Object& form, const platform::ValueArray* steps);

}  // namespace brisel::component
