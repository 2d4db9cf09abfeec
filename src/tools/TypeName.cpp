#include "tools/TypeName.h"

#include <algorithm>
#include <map>

#include "platform/Text.h"

namespace brisel::tools {

namespace {

constexpr int kDeepest = 16;

std::string lowered(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), platform::lowerCase);
  return lower;
}

/// What stands behind the last "::", "." or ":" of a name: "xs:string" is a "string".
std::string_view lastPart(std::string_view name) {
  const auto at = name.find_last_of(":.");
  return at == std::string_view::npos ? name : name.substr(at + 1);
}

/// By lower-case name; kinds of several names stand together.
const std::map<std::string_view, TypeKind>& knownTypes() {
  using enum TypeKind;
  static const std::map<std::string_view, TypeKind> kTypes = {
      {"void", nothing},
      {"none", nothing},
      {"unit", nothing},
      {"", any},
      {"<untyped>", any},
      {"any", any},
      {"object", any},
      {"variant", any},
      {"ejavaobject", any},
      {"anytype", any},
      {"anysimpletype", any},
      {"string", text},
      {"text", text},
      {"str", text},
      {"estring", text},
      {"wstring", text},
      {"varchar", text},
      {"nvarchar", text},
      {"characterstring", text},
      {"bstr", text},
      {"uri", text},
      {"url", text},
      {"anyuri", text},
      {"uuid", text},
      {"guid", text},
      {"normalizedstring", text},
      {"token", text},
      {"ncname", text},
      {"qname", text},
      {"u8string", text},
      {"string_view", text},
      {"qstring", text},
      {"lpstr", text},
      {"lpwstr", text},
      {"clob", text},
      {"id", text},
      {"idref", text},
      {"boolean", boolean},
      {"bool", boolean},
      {"eboolean", boolean},
      {"booleanobject", boolean},
      {"ebooleanobject", boolean},
      {"variant_bool", boolean},
      {"logical", boolean},
      {"char", character},
      {"character", character},
      {"echar", character},
      {"wchar", character},
      {"byte", byte},
      {"ebyte", byte},
      {"uint8", byte},
      {"uint8_t", byte},
      {"unsignedbyte", byte},
      {"unsigned char", byte},
      {"short", int16},
      {"int16", int16},
      {"int16_t", int16},
      {"eshort", int16},
      {"int", int32},
      {"integer", int32},
      {"int32", int32},
      {"int32_t", int32},
      {"eint", int32},
      {"eintegerobject", int32},
      {"signed int", int32},
      {"long", int64},
      {"int64", int64},
      {"int64_t", int64},
      {"elong", int64},
      {"long long", int64},
      {"long int", int64},
      {"biginteger", int64},
      {"ebiginteger", int64},
      {"bigint", int64},
      {"unsigned", unsigned32},
      {"unsigned int", unsigned32},
      {"uint", unsigned32},
      {"uint32", unsigned32},
      {"uint32_t", unsigned32},
      {"unsignedint", unsigned32},
      {"unsigned short", unsigned32},
      {"uint16", unsigned32},
      {"uint16_t", unsigned32},
      {"unsigned long", unsigned64},
      {"ulong", unsigned64},
      {"uint64", unsigned64},
      {"uint64_t", unsigned64},
      {"size_t", unsigned64},
      {"unlimitednatural", unsigned64},
      {"nonnegativeinteger", unsigned64},
      {"positiveinteger", unsigned64},
      {"unsignedlong", unsigned64},
      {"natural", unsigned64},
      {"float", float32},
      {"efloat", float32},
      {"single", float32},
      {"double", float64},
      {"real", float64},
      {"edouble", float64},
      {"decimal", float64},
      {"number", float64},
      {"numeric", float64},
      {"currency", float64},
      {"bigdecimal", float64},
      {"ebigdecimal", float64},
      {"date", time},
      {"datetime", time},
      {"timestamp", time},
      {"time", time},
      {"edate", time},
      {"localdate", time},
      {"localdatetime", time},
      {"instant", time},
  };
  return kTypes;
}

const std::map<std::string_view, TypeKind>& knownTemplates() {
  using enum TypeKind;
  static const std::map<std::string_view, TypeKind> kTemplates = {
      {"list", list},          {"vector", list},       {"array", list},        {"collection", list},
      {"sequence", list},      {"set", list},          {"bag", list},          {"orderedset", list},
      {"arraylist", list},     {"elist", list},        {"qlist", list},        {"qvector", list},
      {"deque", list},         {"linkedlist", list},   {"hashset", list},      {"treeset", list},
      {"unordered_set", list}, {"iterable", list},     {"queue", list},        {"stack", list},
      {"span", list},          {"map", map},           {"dictionary", map},    {"hashmap", map},
      {"treemap", map},        {"unordered_map", map}, {"qmap", map},          {"qhash", map},
      {"dict", map},           {"optional", optional}, {"nullable", optional}, {"maybe", optional},
  };
  return kTemplates;
}

/// Templates that only say how their argument is held.
bool isHolder(std::string_view lowerName) {
  return lowerName == "shared_ptr" || lowerName == "unique_ptr" || lowerName == "weak_ptr" ||
         lowerName == "ref" || lowerName == "reference" || lowerName == "pointer";
}

/// Takes words off that do not change which type is meant; whether a "*" was among them.
bool stripQualifiers(std::string_view& text) {
  bool pointer = false;
  for (std::string_view before; before != text;) {
    before = text;
    text = platform::trimmed(text);
    for (const std::string_view word : {"const ", "volatile ", "struct ", "class ", "enum "}) {
      if (text.starts_with(word)) text.remove_prefix(word.size());
    }
    if (text.ends_with(" const")) text.remove_suffix(6);
    if (text.ends_with('*') || text.ends_with('&')) {
      pointer = pointer || text.back() == '*';
      text.remove_suffix(1);
    }
  }
  return pointer;
}

/// The pieces between the commas that stand in no bracket.
std::vector<std::string_view> piecesOf(std::string_view text) {
  std::vector<std::string_view> pieces;
  int depth = 0;
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '<' || c == '(' || c == '[') ++depth;
    if (c == '>' || c == ')' || c == ']') --depth;
    if (c == ',' && depth == 0) {
      pieces.push_back(text.substr(start, i - start));
      start = i + 1;
    }
  }
  pieces.push_back(text.substr(start));
  return pieces;
}

TypeName parse(std::string_view text, int depth);

TypeName named(std::string_view text) { return {TypeKind::named, std::string(text), {}}; }

/// "Name<arguments>" or "Name(arguments)".
TypeName parseTemplate(std::string_view text, std::size_t open, int depth) {
  const std::string name = lowered(lastPart(platform::trimmed(text.substr(0, open))));
  const auto pieces = piecesOf(text.substr(open + 1, text.size() - open - 2));
  if (isHolder(name) && pieces.size() == 1) return parse(pieces[0], depth + 1);
  if (const auto scalar = knownTypes().find(name); scalar != knownTypes().end()) {
    return {scalar->second, {}, {}};  // "varchar(20)"
  }
  const auto known = knownTemplates().find(name);
  if (known == knownTemplates().end()) return named(text);
  const std::size_t wanted = known->second == TypeKind::map ? 2 : 1;
  if (pieces.size() < wanted) return named(text);
  TypeName type{known->second, {}, {}};
  for (std::size_t i = 0; i < wanted; ++i) type.arguments.push_back(parse(pieces[i], depth + 1));
  return type;
}

TypeName parse(std::string_view text, int depth) {
  const bool pointer = stripQualifiers(text);
  if (depth > kDeepest) return named(text);
  if (text.ends_with(']')) {
    const auto open = text.find('[');
    if (open != std::string_view::npos) {
      return {TypeKind::list, {}, {parse(text.substr(0, open), depth + 1)}};
    }
  }
  const auto open = text.find_first_of("<(");
  if (open != std::string_view::npos && open > 0 && text.ends_with(text[open] == '<' ? '>' : ')')) {
    return parseTemplate(text, open, depth);
  }
  const auto& types = knownTypes();
  auto known = types.find(lowered(text));
  if (known == types.end()) known = types.find(lowered(lastPart(text)));
  if (known == types.end() || (known->first.empty() && !text.empty())) return named(text);
  if (pointer && known->second == TypeKind::character) return {TypeKind::text, {}, {}};
  if (pointer && known->second == TypeKind::nothing) return {TypeKind::any, {}, {}};
  TypeName type{known->second, std::string(text), {}};
  return type;
}

}  // namespace

TypeName parseTypeName(std::string_view text) { return parse(text, 0); }

const TypeWords& wordsOf(TypeKind kind) {
  static const std::map<TypeKind, TypeWords> kWords = {
      {TypeKind::nothing, {"void", "", "void", "Void", "TEXT"}},
      {TypeKind::any, {"std::any", "any", "Object", "Object", "TEXT"}},
      {TypeKind::text, {"std::string", "string", "String", "String", "TEXT"}},
      {TypeKind::boolean, {"bool", "", "boolean", "Boolean", "BOOLEAN"}},
      {TypeKind::character, {"char", "", "char", "Character", "CHAR(1)"}},
      {TypeKind::byte, {"std::uint8_t", "cstdint", "short", "Short", "SMALLINT"}},
      {TypeKind::int16, {"std::int16_t", "cstdint", "short", "Short", "SMALLINT"}},
      {TypeKind::int32, {"int", "", "int", "Integer", "INTEGER"}},
      {TypeKind::int64, {"std::int64_t", "cstdint", "long", "Long", "BIGINT"}},
      {TypeKind::unsigned32, {"std::uint32_t", "cstdint", "long", "Long", "BIGINT"}},
      {TypeKind::unsigned64, {"std::uint64_t", "cstdint", "long", "Long", "BIGINT"}},
      {TypeKind::float32, {"float", "", "float", "Float", "REAL"}},
      {TypeKind::float64, {"double", "", "double", "Double", "DOUBLE PRECISION"}},
      {TypeKind::time,
       {"std::chrono::system_clock::time_point", "chrono", "LocalDateTime", "LocalDateTime",
        "TIMESTAMP"}},
  };
  return kWords.at(kind);
}

}  // namespace brisel::tools
