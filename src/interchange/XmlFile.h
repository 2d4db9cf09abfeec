#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

namespace brisel::interchange {

enum class Dialect : std::uint8_t { uml, ecore };

/// The two parts of a name such as "uml:Model"; the prefix is empty where there is none.
struct QualifiedName {
  std::string_view prefix;
  std::string_view local;
};
[[nodiscard]] QualifiedName splitName(std::string_view name);

/// A model file, parsed and recognised by what it holds. Nodes and the texts they give live as
/// long as the file. Elements are at most kMaxDepth deep, so that a walk may recurse.
class XmlFile {
 public:
  static constexpr int kMaxDepth = 500;

  /// Raises an Error "path:line: cause": the bytes are no text, no well-formed XML, nested too
  /// deep, or of a kind of file that is not read.
  XmlFile(std::string path, std::string bytes);
  XmlFile(const XmlFile&) = delete;
  XmlFile& operator=(const XmlFile&) = delete;

  /// The bytes of a file; an Error when it cannot be read.
  [[nodiscard]] static std::string bytesOf(const std::string& path);

  [[nodiscard]] Dialect dialect() const { return m_dialect; }
  [[nodiscard]] pugi::xml_node root() const { return m_document.document_element(); }
  /// The name without folders: what references of other files call it.
  [[nodiscard]] const std::string& name() const { return m_name; }
  /// "name:line".
  [[nodiscard]] std::string place(pugi::xml_node node) const;

  [[nodiscard]] bool isUmlPrefix(std::string_view prefix) const;
  [[nodiscard]] bool isXmiPrefix(std::string_view prefix) const;
  /// The value of an attribute of the interchange format, whatever its prefix; empty without one.
  [[nodiscard]] std::string_view xmiAttribute(pugi::xml_node node, std::string_view name) const;

 private:
  void parse();
  void checkTree() const;
  void checkText(pugi::xml_node node) const;
  void readPrefixes();
  void recognise();
  [[noreturn]] void fail(std::size_t line, const std::string& cause) const;
  [[nodiscard]] std::size_t lineOf(std::size_t offset) const;
  [[nodiscard]] std::size_t lineOf(pugi::xml_node node) const;

  std::string m_path;
  std::string m_name;
  std::string m_text;  ///< the document points into it
  std::vector<std::size_t> m_lineEnds;
  pugi::xml_document m_document;
  std::vector<std::string_view> m_umlPrefixes;
  std::vector<std::string_view> m_xmiPrefixes;
  Dialect m_dialect = Dialect::uml;
};

}  // namespace brisel::interchange
