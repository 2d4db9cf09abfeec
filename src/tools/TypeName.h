#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brisel::tools {

/// What a data type of the model is to a program.
enum class TypeKind {
  nothing,  ///< "void" and the like
  any,      ///< nothing is told, or "Object"
  text,
  boolean,
  character,
  byte,
  int16,
  int32,
  int64,
  unsigned32,
  unsigned64,
  float32,
  float64,
  time,
  list,      ///< one argument
  map,       ///< two arguments
  optional,  ///< one argument
  named,     ///< a class, or what the model does not tell more about
};

/// A data type's name taken apart: "List<Order*>" is a list of what is named "Order". Pointers,
/// references and const are left away.
struct TypeName {
  TypeKind kind = TypeKind::named;
  std::string name;  ///< of a named type
  std::vector<TypeName> arguments;
};

/// Never fails: what cannot be taken apart is named by its whole text. A class of the model may
/// have the name of a known type, so whoever asks looks for one first.
[[nodiscard]] TypeName parseTypeName(std::string_view text);

/// How the languages write a type that is none of list, map, optional and named.
struct TypeWords {
  std::string_view cpp;
  std::string_view cppHeader;  ///< empty where the language has it built in
  std::string_view java;
  std::string_view javaBoxed;
  std::string_view sql;
};
[[nodiscard]] const TypeWords& wordsOf(TypeKind kind);

}  // namespace brisel::tools
