#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "interchange/XmlFile.h"

namespace brisel::interchange {

/// The metaclasses that the class model has a place for; the rest are `other`.
enum class Metaclass : std::uint8_t {
  package,
  plainClass,
  interface,
  enumeration,
  dataType,
  association,
  associationClass,
  property,
  operation,
  parameter,
  literal,
  generalization,
  realization,
  dependency,
  usage,
  abstraction,
  comment,
  other,
};

/// A reference as it is written; `file` is nothing when it leads to a file that was not given.
/// Where the file leaves a reference out because its place says it, `element` is what it means.
struct XmiReference {
  std::size_t element = 0;
  std::string text;
  std::string id;
  const XmlFile* file = nullptr;
  std::string metaclass;  ///< where the reference states it, such as "Class"
};

struct XmiElement {
  pugi::xml_node node;
  const XmlFile* file = nullptr;
  Metaclass metaclass = Metaclass::other;
  std::string_view metaclassName;
  std::string_view id;
  std::size_t parent = 0;
  std::size_t firstChild = 0;
  std::size_t nextSibling = 0;
};

/// Text that a tool keeps apart from the element it belongs to.
struct XmiSideNote {
  XmiReference target;
  pugi::xml_node node;
  const XmlFile* file = nullptr;
};

/// The elements of UML files by position and by identifier, in document order. First of the two
/// passes: who refers to what is asked only when all files were walked.
class XmiIndex {
 public:
  /// No element: position 0 is kept free.
  static constexpr std::size_t kNone = 0;

  explicit XmiIndex(std::vector<const XmlFile*> files);

  [[nodiscard]] std::size_t size() const { return m_elements.size(); }
  [[nodiscard]] const XmiElement& operator[](std::size_t at) const { return m_elements[at]; }
  [[nodiscard]] std::vector<std::size_t> children(std::size_t at) const;
  [[nodiscard]] std::vector<std::size_t> children(std::size_t at, Metaclass metaclass) const;

  /// A property of an element, written as attribute or as child; empty without one.
  [[nodiscard]] std::string value(std::size_t at, const char* property) const;
  [[nodiscard]] bool flag(std::size_t at, const char* property) const;
  /// References written as attribute (of one value, or of several parted by blanks), as children
  /// that refer, or both.
  [[nodiscard]] std::vector<XmiReference> references(std::size_t at, const char* property,
                                                     bool isManyValued = false) const;
  /// The first reference of that name in a value of an element; its text is empty without one.
  [[nodiscard]] XmiReference referenceIn(pugi::xml_node node, const XmlFile& file,
                                         const char* property) const;
  /// The element that a reference leads to, or kNone.
  [[nodiscard]] std::size_t find(const XmiReference& reference) const;
  /// The name that an exporter left for an element outside of what it exported; empty without one.
  [[nodiscard]] std::string nameOfStub(const XmiReference& reference) const;

  /// Elements of profiles that are applied to elements of the model.
  [[nodiscard]] const std::vector<XmiSideNote>& applications() const { return m_applications; }
  /// Documentation that stands in the extension of a tool; the node holds it in an attribute.
  [[nodiscard]] const std::vector<XmiSideNote>& documentation() const { return m_documentation; }
  /// Elements whose identifier an earlier one of their file has.
  [[nodiscard]] const std::vector<std::size_t>& duplicates() const { return m_duplicates; }

  [[nodiscard]] std::string place(std::size_t at) const {
    return m_elements[at].file->place(m_elements[at].node);
  }

 private:
  using Ids = std::unordered_map<std::string_view, std::size_t>;

  void walk(pugi::xml_node node, const XmlFile& file, std::size_t parent, std::size_t& last);
  std::size_t add(pugi::xml_node node, const XmlFile& file, std::string_view metaclass,
                  std::size_t parent, std::size_t& last);
  [[nodiscard]] std::string_view metaclassOf(pugi::xml_node node, const XmlFile& file) const;
  bool isApplication(pugi::xml_node node, const XmlFile& file);
  void readExtension(pugi::xml_node extension, const XmlFile& file);
  [[nodiscard]] XmiReference reference(std::string_view text, const XmlFile& file) const;
  [[nodiscard]] XmiReference referenceOf(pugi::xml_node node, const XmlFile& file) const;

  std::vector<const XmlFile*> m_files;
  std::vector<XmiElement> m_elements;
  std::unordered_map<const XmlFile*, Ids> m_ids;
  std::unordered_map<const XmlFile*, std::unordered_map<std::string_view, std::string>> m_stubs;
  std::vector<XmiSideNote> m_applications;
  std::vector<XmiSideNote> m_documentation;
  std::vector<std::size_t> m_duplicates;
};

}  // namespace brisel::interchange
