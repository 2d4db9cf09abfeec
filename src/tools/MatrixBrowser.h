#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Collection.h"
#include "platform/ComponentRegistry.h"
#include "repository/CLSRepository.h"
#include "tools/Matrix.h"

namespace brisel::tools {

/// The matrix browser: a model's classes as rows and columns of one matrix, the relationships
/// between two classes in the cell where they cross. Works on the live model and follows it while
/// it is open; what is edited goes through the model's conventions and is told as `Edited`.
///
/// Rows and columns count from 1; 0 stands for the headers. A cell shows the relationships from the
/// class of its row to that of its column, and those back. What a person does by keys and choices
/// runs under the error trap; the members that edit by name raise their errors.
class MatrixBrowser : public platform::Object {
 public:
  using Text = std::string_view;
  using Index = std::int64_t;
  using NodeRef = platform::Ref<platform::Node>;

  explicit MatrixBrowser(platform::ComponentRegistry& registry);

  // The system's members.
  void Create() {}
  [[nodiscard]] std::string Path() const { return m_path; }
  void Path(Text path) { m_path = path; }
  /// Another model in the place of the one that is shown; nothing for none.
  void SetRepository(platform::MetaRepository* repository);
  /// Shows the window; one that is open comes to the front.
  void PopUp();

  // Ours: what is shown.
  /// The classes in their order: "Class" nodes of the model.
  [[nodiscard]] platform::Ref<platform::Collection> Rows();
  [[nodiscard]] platform::Ref<platform::Collection> Columns() { return Rows(); }
  /// What a cell shows: an array of records with `identifier`, `kind` (as for Make), `forward`
  /// (false for one from the column's class to the row's), `name` and `text`, a sentence. An Error
  /// (subscript) for a cell that is not there.
  [[nodiscard]] platform::Ref<platform::ValueArray> Cell(Index row, Index column);
  /// A cell or, where one of the two is 0, a class in words for a person, a line each; "" for both
  /// 0.
  [[nodiscard]] std::string Words(Index row, Index column);
  /// The number of the group that each class of `Rows` stands in; empty without groups.
  [[nodiscard]] platform::Ref<platform::ValueArray> Groups();
  /// Relationships of the model that lack a class at an end, hence have no cell.
  [[nodiscard]] Index Incomplete() const;
  /// The stereotypes that classes of the model have, by name.
  [[nodiscard]] std::vector<std::string> stereotypes() const;
  [[nodiscard]] platform::Ref<platform::ValueArray> Stereotypes() const;

  // What is chosen to be shown.
  /// Words of which a name must hold one, a stereotype or "<NONE>", and kinds as for Make between
  /// blanks; what is empty filters nothing. An Error (invalidCall) for an unknown kind.
  void Filter(Text name, Text stereotype, Text kinds);
  [[nodiscard]] std::string NameFilter() const { return options().name; }
  void NameFilter(Text words);
  [[nodiscard]] std::string StereotypeFilter() const { return options().stereotype; }
  void StereotypeFilter(Text name);
  [[nodiscard]] std::string KindFilter() const;
  void KindFilter(Text kinds);
  /// Also the classes that those found are joined with.
  [[nodiscard]] bool Neighbours() const { return options().neighbours; }
  void Neighbours(bool shown);
  /// Only classes with a relationship that is shown.
  [[nodiscard]] bool RelatedOnly() const { return options().relatedOnly; }
  void RelatedOnly(bool related);
  /// "name" or "clusters", and anew if it is that order already. An Error (invalidCall) otherwise.
  void Sort(Text order);
  [[nodiscard]] std::string Order() const;
  [[nodiscard]] const Matrix::Options& options() const { return m_matrix.options(); }
  void options(const Matrix::Options& options);

  // Editing.
  /// "association", "shared", "composite" or "generalization" from the row's class to the column's:
  /// the row's is the whole, the sub class. An Error (invalidCall) for another kind and for what
  /// `Objection` objects to.
  NodeRef Make(Text kind, Index row, Index column);
  /// Why that relationship must not be made: a sentence for a person; empty where it may.
  [[nodiscard]] std::string Objection(Text kind, Index row, Index column);
  /// The relationship of the identifier, or with none all that the cell shows. An Error (notFound)
  /// when the cell does not show it.
  void Delete(Index row, Index column, Text identifier);

  // A person's hand.
  [[nodiscard]] Index CurrentRow();
  [[nodiscard]] Index CurrentColumn();
  /// Makes a cell, or a header, the current one; beyond the edge the nearest. Nothing where there
  /// are no classes.
  void Select(Index row, Index column);
  /// As a click: makes it the current one and tells the class of a header, or what a filled cell
  /// shows, as `Selected` to whoever shows the diagram.
  void Choose(Index row, Index column);
  /// Arrows, Home, End, PageUp, PageDown (with "ctrl" to the next filled cell or the farthest one),
  /// Enter, Space, Delete, Escape. False for a key without a use.
  bool KeyPress(Text key, Text modifiers);
  /// How many rows and columns a page has.
  void pageSize(Index rows, Index columns);
  /// Make and Delete by a person's choice: under the trap.
  void makeChosen(Text kind, Index row, Index column);
  void deleteChosen(Index row, Index column, Text identifier);
  /// Ends the browser: its window closes, and the model is followed no more.
  void Close();
  void terminate() override { Close(); }

  // For views.
  [[nodiscard]] Index classCount() const {
    return static_cast<Index>(m_relations.classes().size());
  }
  /// The row and column of a class; 0 for one that is not shown.
  [[nodiscard]] Index numberOf(const platform::Node& shown);
  /// In step with the model. Places count from 0.
  [[nodiscard]] const Matrix& matrix();

  platform::Event<> Changed;            ///< something of what is shown; once until it is asked for
  platform::Event<> CurrentChanged;     ///< CurrentRow or CurrentColumn
  platform::Event<int, int> MenuAsked;  ///< the menu of a cell: row, column
  platform::Event<> FrontAsked;         ///< the window shall come to the front
  platform::Event<> Closed;
  /// A person chose classes or relationships: their identifiers.
  platform::Event<platform::Ref<platform::ValueArray>> Selected;
  /// A relationship was made, or deleted: node type and identifier.
  platform::Event<std::string, std::string> Edited;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  struct Cursor {
    Index row = 0, column = 0;
    NodeRef rowClass, columnClass;  ///< whom it stays with when rows change their order
  };

  [[nodiscard]] static std::size_t placeOf(Index number) {
    return static_cast<std::size_t>(number - 1);
  }
  void changed();
  void settle();
  void moveTo(Index row, Index column);
  [[nodiscard]] Index clampedTo(Index place) const;
  [[nodiscard]] NodeRef classAt(Index place) const;
  void requireCell(Index row, Index column);
  /// The next filled cell in a direction, or the last one there.
  void jump(Index rows, Index columns);
  void step(Index rows, Index columns, bool far);
  void enter();
  void deleteCurrent();
  void deleteOne(platform::Node& relationship);
  void change(const std::function<void(Matrix::Options&)>& set);

  platform::ComponentRegistry& m_registry;
  std::string m_path;
  platform::Ref<repository::CLSRepository> m_model;
  ModelRelations m_relations;
  Matrix m_matrix{m_relations};
  Cursor m_cursor;
  Index m_pageRows = 10;
  Index m_pageColumns = 10;
  bool m_isTold = false;  ///< of a change that nobody has looked at yet
  bool m_isOpen = false;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::tools
