#pragma once

#include <string>

#include "support/EditorBench.h"

namespace brisel::test {

/// Where canvas and model contradict each other, a line each, empty when they agree: every box has
/// its wrapper and its class, every line its wrapper and its relationship between the same two
/// classes, and the reverse. For models without hidden categories.
[[nodiscard]] std::string checkAgreement(editor::CLSEditor& editor);
[[nodiscard]] inline std::string checkAgreement(const EditorBench& bench) {
  return checkAgreement(*bench.editor);
}

}  // namespace brisel::test
