#include "interchange/DimLines.h"

#include <array>
#include <limits>
#include <string>

#include <simdjson.h>

namespace brisel::interchange {

namespace {

namespace json = simdjson::ondemand;
using simdjson::simdjson_error;

/// The keys of all elements, in an order in which each element's own follow one another.
constexpr std::array kLineKeys = {dim::key::kFormat, dim::key::kVersion,    dim::key::kKind,
                                  dim::key::kEnd,    dim::key::kNode,       dim::key::kLink,
                                  dim::key::kId,     dim::key::kName,       dim::key::kSource,
                                  dim::key::kTarget, dim::key::kProperties, dim::key::kArea,
                                  dim::key::kPoints};
constexpr std::size_t kNoKey = kLineKeys.size();

using KeySet = std::uint32_t;
constexpr KeySet setOf(std::string_view key) {
  for (std::size_t i = 0; i < kLineKeys.size(); ++i) {
    if (kLineKeys[i] == key) return KeySet{1} << i;
  }
  return 0;
}

/// Which keys an element has: the first tells its kind.
struct Form {
  DimLine::Kind kind;
  std::string_view called;
  KeySet mark;
  KeySet required;
  KeySet allowed;
};
constexpr KeySet kNamed = setOf(dim::key::kId) | setOf(dim::key::kName);
constexpr KeySet kEnds = setOf(dim::key::kId) | setOf(dim::key::kSource) | setOf(dim::key::kTarget);
constexpr std::array kLineForms = {
    Form{DimLine::Kind::node, "a node", setOf(dim::key::kNode), kNamed,
         kNamed | setOf(dim::key::kProperties) | setOf(dim::key::kArea) | setOf(dim::key::kPoints)},
    Form{DimLine::Kind::link, "a link", setOf(dim::key::kLink), kEnds,
         kEnds | setOf(dim::key::kName)},
    Form{DimLine::Kind::header, "a header", setOf(dim::key::kFormat),
         setOf(dim::key::kVersion) | setOf(dim::key::kKind),
         setOf(dim::key::kVersion) | setOf(dim::key::kKind)},
    Form{DimLine::Kind::end, "an end", setOf(dim::key::kEnd), 0, 0}};

class LineParser {
 public:
  LineParser(DimText& text, const std::function<void(const DimLine&)>& take)
      : m_text(text), m_take(take) {}

  void readAll() {
    while (const auto piece = m_text.next()) readPiece(*piece);
  }

 private:
  void readPiece(std::string_view piece);
  void readElement(json::value value);
  void readField(std::size_t key, json::value value);
  void readProperties(json::value value);
  platform::Value readProperty(std::string_view key, json::value value);
  platform::Value readSpecialDouble(std::string_view key, json::value value);
  void readArea(json::value value);
  void readPoints(json::value value);
  void checkForm();

  std::string_view text(json::value& value, std::string_view key);
  std::int64_t integer(json::value& value, std::string_view key);
  json::object object(json::value& value, std::string_view key);
  std::size_t findKey(const json::raw_json_string& key, std::size_t expected) const;

  void checkEnds(std::string_view piece);
  [[noreturn]] void explain(std::string_view piece, simdjson::error_code code) const;
  [[noreturn]] void fail(std::string_view cause) const { failAt(m_line.place, cause); }
  [[noreturn]] void failAt(const char* place, std::string_view cause) const;

  DimText& m_text;
  const std::function<void(const DimLine&)>& m_take;
  json::parser m_parser;
  json::document m_document;
  DimLine m_line;
  KeySet m_keys = 0;         ///< of the element being read
  std::string m_unknownKey;  ///< of the element being read
  bool m_begun = false;      ///< this is a DIM file, whatever else is wrong with it
};

void LineParser::readPiece(std::string_view piece) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (!m_begun && piece.starts_with(kByteOrderMark)) piece.remove_prefix(kByteOrderMark.size());
  checkEnds(piece);
  m_line.place = piece.data();
  const simdjson::padded_string_view padded(piece.data(), piece.size(),
                                            piece.size() + DimText::kPadding);
  if (const auto code = m_parser.iterate(padded).get(m_document)) explain(piece, code);
  try {
    json::array elements = m_document.get_array();
    for (auto element : elements) readElement(element.value());
    const char* rest = nullptr;
    if (!m_document.current_location().get(rest)) failAt(rest, "text behind the last bracket");
  } catch (const simdjson_error& error) {
    const char* place = nullptr;
    if (m_document.current_location().get(place)) place = m_line.place;
    failAt(place, std::string("broken JSON: ") + error.what());
  }
}

void LineParser::readElement(json::value value) {
  m_line.place = value.current_location();
  if (value.type() != simdjson::ondemand::json_type::object) fail("not an object");
  m_line.name.reset();
  m_line.properties.clear();
  m_line.area.reset();
  m_line.points.clear();
  m_keys = 0;
  m_unknownKey.clear();
  std::size_t expected = 0;
  json::object fields = value.get_object();
  for (auto field : fields) {
    const json::raw_json_string key = field.key();
    const std::size_t index = findKey(key, expected);
    if (index == kNoKey) {
      m_unknownKey = std::string_view(field.unescaped_key());
      if (m_unknownKey.empty()) m_unknownKey = " ";
      continue;
    }
    expected = index + 1;
    if ((m_keys & (KeySet{1} << index)) != 0)
      fail(dim::inQuotes(kLineKeys[index]) + " stands here twice");
    m_keys |= KeySet{1} << index;
    readField(index, field.value());
  }
  checkForm();
  m_begun = true;
  m_take(m_line);
}

std::size_t LineParser::findKey(const json::raw_json_string& key, std::size_t expected) const {
  for (std::size_t i = 0; i < kLineKeys.size(); ++i) {
    const std::size_t index = (expected + i) % kLineKeys.size();
    const std::string_view candidate = kLineKeys[index];
    if (*key.raw() == candidate.front() && key.unsafe_is_equal(candidate)) return index;
  }
  return kNoKey;
}

void LineParser::readField(std::size_t index, json::value value) {
  const std::string_view key = kLineKeys[index];
  if (key == dim::key::kVersion) {
    m_line.version = integer(value, key);
  } else if (key == dim::key::kProperties) {
    readProperties(value);
  } else if (key == dim::key::kArea) {
    readArea(value);
  } else if (key == dim::key::kPoints) {
    readPoints(value);
  } else {
    const std::string_view words = text(value, key);
    if (key == dim::key::kId)
      m_line.identifier = words;
    else if (key == dim::key::kName)
      m_line.name = words;
    else if (key == dim::key::kSource)
      m_line.source = words;
    else if (key == dim::key::kTarget)
      m_line.target = words;
    else if (key == dim::key::kKind)
      m_line.modelKind = words;
    else
      m_line.type = words;
  }
}

void LineParser::checkForm() {
  const Form* form = nullptr;
  for (const Form& candidate : kLineForms) {
    if ((m_keys & candidate.mark) == 0) continue;
    if (form) fail("both " + std::string(form->called) + " and " + std::string(candidate.called));
    form = &candidate;
  }
  const bool isNewer =
      form && form->kind == DimLine::Kind::header && m_line.version > dim::kVersion;
  if (!m_unknownKey.empty() && !isNewer) fail("unknown key " + dim::inQuotes(m_unknownKey));
  if (!form) fail("neither a node nor a link");
  for (std::size_t i = 0; i < kLineKeys.size(); ++i) {
    const KeySet key = KeySet{1} << i;
    if ((form->required & key) != 0 && (m_keys & key) == 0) {
      fail(std::string(form->called) + " without " + dim::inQuotes(kLineKeys[i]));
    }
    if ((m_keys & key) != 0 && ((form->mark | form->allowed) & key) == 0) {
      fail(dim::inQuotes(kLineKeys[i]) + " has no place in " + std::string(form->called));
    }
  }
  m_line.kind = form->kind;
}

void LineParser::readProperties(json::value value) {
  for (auto field : object(value, dim::key::kProperties)) {
    const std::string_view key = field.unescaped_key();
    m_line.properties.push_back({key, readProperty(key, field.value())});
  }
}

platform::Value LineParser::readProperty(std::string_view key, json::value value) {
  const json::json_type type = value.type();
  switch (type) {
    case json::json_type::string:
      return std::string_view(value.get_string());
    case json::json_type::boolean:
      return bool(value.get_bool());
    case json::json_type::number: {
      json::number number = value.get_number();
      if (number.is_int64()) return number.get_int64();
      if (number.is_uint64()) fail("the property " + dim::inQuotes(key) + " is too large a number");
      return number.get_double();
    }
    case json::json_type::object:
      return readSpecialDouble(key, value);
    default:
      fail("the property " + dim::inQuotes(key) + " is neither a text, a number nor true or false");
  }
}

platform::Value LineParser::readSpecialDouble(std::string_view key, json::value value) {
  using Limits = std::numeric_limits<double>;
  std::optional<double> number;
  for (auto field : object(value, key)) {
    const std::string_view kind = field.unescaped_key();
    json::value held = field.value();
    const std::string_view words = text(held, kind);
    if (kind != dim::key::kDouble || number) break;
    if (words == dim::word::kNotANumber) number = Limits::quiet_NaN();
    if (words == dim::word::kInfinity) number = Limits::infinity();
    if (words == dim::word::kMinusInfinity) number = -Limits::infinity();
  }
  if (!number) fail("the property " + dim::inQuotes(key) + " is no number");
  return *number;
}

void LineParser::readArea(json::value value) {
  dim::Area area;
  const std::array<std::pair<std::string_view, std::int64_t*>, 4> sides = {
      {{dim::key::kLeft, &area.left},
       {dim::key::kTop, &area.top},
       {dim::key::kWidth, &area.width},
       {dim::key::kHeight, &area.height}}};
  std::size_t found = 0;
  for (auto field : object(value, dim::key::kArea)) {
    const std::string_view key = field.unescaped_key();
    json::value held = field.value();
    for (const auto& [side, number] : sides) {
      if (side != key) continue;
      *number = integer(held, key);
      ++found;
    }
  }
  if (found != sides.size()) fail("an area has left, top, width and height");
  m_line.area = area;
}

void LineParser::readPoints(json::value value) {
  constexpr std::string_view kWanted = "points are pairs of whole numbers";
  if (value.type() != json::json_type::array) fail(kWanted);
  for (auto pair : value.get_array()) {
    json::value held = pair.value();
    if (held.type() != json::json_type::array) fail(kWanted);
    std::array<std::int64_t, 2> numbers{};
    std::size_t count = 0;
    for (auto part : held.get_array()) {
      json::value number = part.value();
      if (count == numbers.size()) fail(kWanted);
      numbers[count++] = integer(number, dim::key::kPoints);
    }
    if (count != numbers.size()) fail(kWanted);
    m_line.points.push_back({numbers[0], numbers[1]});
  }
}

std::string_view LineParser::text(json::value& value, std::string_view key) {
  std::string_view words;
  const auto error = value.get_string().get(words);
  if (error == simdjson::INCORRECT_TYPE) fail(dim::inQuotes(key) + " is not a text");
  if (error) throw simdjson_error(error);
  return words;
}

std::int64_t LineParser::integer(json::value& value, std::string_view key) {
  std::int64_t number = 0;
  if (value.get_int64().get(number)) fail(dim::inQuotes(key) + " is not a whole number");
  return number;
}

json::object LineParser::object(json::value& value, std::string_view key) {
  if (value.type() != json::json_type::object) fail(dim::inQuotes(key) + " is not an object");
  return value.get_object();
}

/// That the file begins and ends as one of ours, before anything in it is looked at.
void LineParser::checkEnds(std::string_view piece) {
  constexpr std::string_view kSpace = " \t\r\n";
  const auto first = piece.find_first_not_of(kSpace);
  if (first == std::string_view::npos) {
    m_text.fail(piece.data(), piece.empty() ? "the file is empty" : "the file is blank");
  }
  if (piece[first] != '[') failAt(piece.data() + first, "no bracket at the beginning");
  if (piece.substr(first).starts_with(R"([{"format":"DIM")")) m_begun = true;
  if (!m_text.isLast()) return;
  const auto last = piece.find_last_not_of(kSpace);
  if (piece[last] != ']') failAt(piece.data() + last, "the file breaks off in this line");
}

/// Finds the place of an error that the parser reports for the piece as a whole.
void LineParser::explain(std::string_view piece, simdjson::error_code code) const {
  const char* const message = simdjson::error_message(code);
  if (code == simdjson::UTF8_ERROR) {
    for (std::size_t at = 0; at < piece.size();) {
      const auto end = std::min(piece.find('\n', at), piece.size() - 1) + 1;
      if (!simdjson::validate_utf8(piece.substr(at, end - at))) {
        failAt(piece.data() + at, "not UTF-8");
      }
      at = end;
    }
  }
  bool inText = false;
  for (std::size_t i = 0; i < piece.size(); ++i) {
    if (inText && static_cast<unsigned char>(piece[i]) < 0x20) {
      failAt(piece.data() + i, "a text that is not closed, or a control character in it");
    }
    if (inText && piece[i] == '\\')
      ++i;
    else if (piece[i] == '"')
      inText = !inText;
  }
  failAt(piece.data() + piece.size(), std::string("broken JSON: ") + message);
}

void LineParser::failAt(const char* place, std::string_view cause) const {
  m_text.fail(place, m_begun ? std::string(cause) : "not a DIM file (" + std::string(cause) + ")");
}

}  // namespace

void readDimLines(DimText& text, const std::function<void(const DimLine&)>& take) {
  LineParser(text, take).readAll();
}

}  // namespace brisel::interchange
