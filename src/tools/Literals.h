#pragma once

#include <string>
#include <string_view>

#include "tools/CodeModel.h"

namespace brisel::tools {

/// How often something may be there.
struct Multiplicity {
  bool isMany = false;
  bool isOptional = false;
};

/// Of "", "1", "0..1", "*", "1..*", "2..n"; what is no multiplicity counts as "1".
[[nodiscard]] Multiplicity parseMultiplicity(std::string_view text);

/// Fills in the literals of the initial value, as far as the value is one of the type.
void makeLiterals(CodeTyped& typed);

/// The text of an SQL string, in quotes.
[[nodiscard]] std::string sqlText(std::string_view text);

/// The value of an enumeration's literal: a decimal integer of up to nine digits, else empty.
[[nodiscard]] std::string smallInteger(std::string_view text);

}  // namespace brisel::tools
