#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "interchange/DimGeometry.h"
#include "interchange/DimLines.h"
#include "platform/ComponentRegistry.h"
#include "platform/Repository.h"

namespace brisel::interchange {

/// Makes the elements of DIM texts in a repository, one text after the other. Errors (badFile)
/// name file, line and cause; the repository is of no use after one.
class DimLoader {
 public:
  /// The repository is new and empty.
  DimLoader(platform::ComponentRegistry& registry, platform::MetaRepository& repository);

  void load(DimText& text);

 private:
  /// The node types that links of the type join; found anew where the type changes.
  struct LinkEnds {
    std::string type;
    dim::LinkWords words;
    const platform::MetaType* source = nullptr;
    const platform::MetaType* target = nullptr;
  };

  void take(const DimLine& line);
  void takeHeader(const DimLine& line);
  void makeNode(const DimLine& line);
  void makeLink(const DimLine& line);
  void makeGeometry(const DimLine& line);
  void findLinkEnds(std::string_view type);
  [[nodiscard]] const platform::MetaType* nodeType(std::string_view name) const;
  [[nodiscard]] platform::Node& end(const DimLine& line, std::string_view verb,
                                    const platform::MetaType* type, std::string_view typeName,
                                    std::string_view identifier) const;
  [[nodiscard]] std::string firstPlace(const DimLine& line) const;

  platform::ComponentRegistry& m_registry;
  platform::MetaRepository& m_repository;
  platform::Ref<platform::Object> m_generator;  ///< made where geometry is met
  LinkEnds m_linkEnds;
  platform::Ref<platform::Node> m_lastSource;
  std::string m_lastSourceId;
  const platform::MetaType* m_lastSourceType = nullptr;
  std::string m_linkName;                 ///< kept for its memory
  std::vector<const DimText*> m_earlier;  ///< texts loaded before the current one
  DimText* m_text = nullptr;
  bool m_headerSeen = false;
  bool m_endSeen = false;
};

}  // namespace brisel::interchange
