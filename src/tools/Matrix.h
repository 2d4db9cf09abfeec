#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/ModelRelations.h"

namespace brisel::tools {

/// Which classes of a model stand in the matrix, in which order, and what its cells show. Rows and
/// columns are the same classes in the same order. Places count from 0.
class Matrix {
 public:
  using Class = ModelRelations::Class;
  using Relationship = ModelRelations::Relationship;

  enum class Order { name, clusters };
  static constexpr std::size_t kKinds = 4;

  struct Options {
    /// Words between blanks, of which the name of a class must hold one, ignoring case; empty for
    /// all classes.
    std::string name;
    /// The name of a stereotype, "<NONE>" for classes without one, empty for all.
    std::string stereotype;
    std::array<bool, kKinds> kinds = {true, true, true, true};  ///< by RelationshipKind
    bool neighbours = false;   ///< the classes that those found are joined with, too
    bool relatedOnly = false;  ///< none without a relationship that is shown
    Order order = Order::clusters;

    friend bool operator==(const Options&, const Options&) = default;
  };

  /// A relationship as a cell shows it.
  struct Mark {
    std::size_t column;
    const Relationship* relationship;
    bool forward;  ///< from the row's class to the column's; a loop is
  };

  /// The relations must outlive it.
  explicit Matrix(const ModelRelations& relations) : m_relations(relations) {}

  [[nodiscard]] const Options& options() const { return m_options; }
  void options(Options options);
  /// Orders anew: what changed in the model meanwhile moves classes of an order by clusters only
  /// then, not under the person's hands.
  void sort();
  /// Classes of the model changed, or, where that decides what is shown, relationships did.
  void classesChanged() { m_isStale = true; }
  void relationshipsChanged() { m_isStale |= m_options.relatedOnly || m_options.neighbours; }
  /// Brings the matrix in step; true when places may have changed.
  bool settle();

  // Of the settled matrix.
  [[nodiscard]] std::size_t size() const { return m_shown.size(); }
  [[nodiscard]] const Class& at(std::size_t place) const { return *m_shown[place]; }
  /// Whether classes that belong together stand together, under one number of a group.
  [[nodiscard]] bool hasGroups() const { return m_options.order == Order::clusters; }
  /// The marks of the row in columns from `first` up to, but not including, `last`, by column.
  /// Costs the relationships of the row's class.
  void marks(std::size_t row, std::size_t first, std::size_t last, std::vector<Mark>& into) const;
  [[nodiscard]] std::vector<Mark> cell(std::size_t row, std::size_t column) const;
  /// How many relationships of the kind join classes that are shown, whether the kind is or not.
  [[nodiscard]] std::array<std::size_t, kKinds> counts() const;

 private:
  [[nodiscard]] bool isWanted(const Class& candidate) const;
  [[nodiscard]] bool isShown(const Relationship& relationship) const {
    return m_options.kinds[static_cast<std::size_t>(relationship.kind)];
  }
  void collect();
  void addNeighbours();
  void dropUnrelated();
  void arrange();
  void keepOrder();
  void cluster();

  const ModelRelations& m_relations;
  Options m_options;
  std::vector<Class*> m_shown;
  bool m_isStale = true;
  bool m_isOrdered = false;  ///< the classes that stand somewhere keep their order
};

}  // namespace brisel::tools
