#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "interchange/DimFormat.h"
#include "platform/Repository.h"

namespace brisel::interchange {

/// Which geometry of a repository is written with the elements that it belongs to, and which needs
/// lines of its own. Ordinary is what saving a diagram leaves: one area an element, the points of
/// a line in their order, neither with a name, links or properties beyond their own. Whatever
/// differs in one record keeps all records of its kind at that element on lines of their own.
/// Holds views of the repository, which must not change meanwhile.
class DimGeometry {
 public:
  struct OfElement {
    std::optional<dim::Area> area;
    std::vector<dim::Point> points;
  };

  explicit DimGeometry(const platform::MetaRepository& repository);

  [[nodiscard]] static bool isGeometry(std::string_view type);
  /// Whether geometry belongs to nodes of the type.
  [[nodiscard]] bool reaches(const std::string& type) const {
    return m_elementTypes.contains(type);
  }
  /// What is written on the element's own line, or nothing.
  [[nodiscard]] const OfElement* of(const platform::Node& element) const;
  /// Whether the geometry node goes without a line of its own.
  [[nodiscard]] bool isWithElement(const platform::Node& node) const {
    return m_withElement.contains(&node);
  }

 private:
  using Node = platform::Node;
  struct Kind;
  static const Kind kAreas;
  static const Kind kPoints;

  using Records = std::unordered_map<const Node*, std::vector<const Node*>>;

  [[nodiscard]] Records recordsOf(const Kind& kind);
  [[nodiscard]] static std::optional<std::vector<std::string>> extraKeysOf(
      const platform::MetaType& type, const Kind& kind);
  [[nodiscard]] const Node* elementOf(const Node& record, const Kind& kind);
  void takeAreas();
  void takePoints();

  std::unordered_map<std::string, platform::Ref<platform::MetaType>> m_nodeTypes;
  std::unordered_set<std::string> m_linkEnds;  ///< the node types that links join
  std::unordered_map<const Node*, OfElement> m_elements;
  std::unordered_set<std::string> m_elementTypes;
  std::unordered_set<const Node*> m_withElement;
};

/// The other way: makes the geometry nodes of an element. Their identifiers are drawn from the
/// generator by its member GetUUID.
class DimGeometryMaker {
 public:
  DimGeometryMaker(platform::MetaRepository& repository, platform::Object& generator)
      : m_repository(repository), m_generator(generator) {}

  void makeArea(std::string_view type, std::string_view identifier, const dim::Area& area);
  void makePoints(std::string_view type, std::string_view identifier,
                  std::span<const dim::Point> points);

 private:
  [[nodiscard]] platform::Ref<platform::Node> makeNode(std::string_view type);

  platform::MetaRepository& m_repository;
  platform::Object& m_generator;
};

}  // namespace brisel::interchange
