#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tools/CodeModel.h"

/// What templates can ask of a model, by name. docs/templates.md describes every key.
namespace brisel::tools {

class KeyTable;

/// Something that a section of a template is about: an object with keys, or a text.
struct Item {
  const KeyTable* keys = nullptr;  ///< nothing for a text
  const void* object = nullptr;
  std::string text;
};

/// A flag, a text, an object, or a list.
using Field = std::variant<bool, std::string, Item, std::vector<Item>>;

/// The keys of one kind of object.
class KeyTable {
 public:
  using Getter = Field (*)(const void* object, CodeModel& model);
  struct Key {
    std::string_view name;
    Getter get;
  };

  KeyTable(std::string_view kind, std::vector<Key> keys);

  [[nodiscard]] std::string_view kind() const { return m_kind; }
  [[nodiscard]] const std::vector<Key>& keys() const { return m_keys; }
  /// Nothing for an unknown key.
  [[nodiscard]] Getter find(std::string_view name) const;

 private:
  std::string_view m_kind;
  std::vector<Key> m_keys;  ///< sorted by name
};

/// What a template starts with.
struct TemplateRoot {
  std::string modelName;
  std::vector<const CodeClass*> selected;  ///< bases first
};

[[nodiscard]] Item rootItem(const TemplateRoot& root);

/// Every kind of object there is, the root first.
[[nodiscard]] const std::vector<const KeyTable*>& allKeyTables();

/// Keys that each element of a list has besides its own.
inline constexpr std::string_view kIsFirst = "isFirst";
inline constexpr std::string_view kIsLast = "isLast";
inline constexpr std::string_view kIndex = "index";
/// The section whose text is the name of the file that the output goes to from here on.
inline constexpr std::string_view kFile = "file";

}  // namespace brisel::tools
