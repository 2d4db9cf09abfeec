#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Control.h"
#include "platform/Collection.h"
#include "platform/Repository.h"

namespace brisel::controls {

/// "BriselControls.ListView": a list with columns, a row a link of a repository. The columns show
/// properties of the links' targets, by their keys; nothing is copied, cells are read when they are
/// asked for. A row whose link or target has left the repository shows empty cells until its owner
/// removes it. Rows count from 1 for persons and callers by name, from 0 for views.
class ListView : public Control {
 public:
  using LinkRef = platform::Ref<platform::Link>;

  struct Column {
    std::string key;  ///< of the property shown
    std::string caption;
    double width;  ///< in twips
  };
  struct Icon {
    std::string file;  ///< may be joined with backslashes
    std::string key;
  };

  // What the owner sets up.
  void clearColumns();
  void addColumn(std::string_view key, std::string_view caption, double width);
  /// The picture in front of each row.
  void setIcon(std::string_view file, std::string_view key);
  /// Whether each row has a tick box; off at first. Switching them off takes all ticks away.
  [[nodiscard]] bool tickBoxes() const { return m_tickBoxes; }
  void tickBoxes(bool on);

  // The rows.
  /// Shows a row for each link of the collection whose source is the owner, in their order, and
  /// none other. Costs O(links of the owner) where the collection is the extension of a link type.
  void fill(platform::Collection& links, platform::Node& owner);
  /// The same for all links of a type.
  void fill(platform::MetaType& linkType, platform::Node& owner);
  void clearRows();
  /// A row at the end, in O(1).
  void addRow(platform::Link& link);
  /// The target's properties may differ. A link without a row does nothing, here and below.
  void refreshRow(platform::Link& link);
  /// Nothing is selected afterwards when this row was.
  void removeRow(platform::Link& link);

  /// The selected row's link; nothing when there is none or it shows nothing any more.
  [[nodiscard]] LinkRef selectedRow() const;
  /// Selected by the program; nothing, or a link without a row, for none.
  void select(platform::Link* link);
  /// The links of the ticked rows in their order, without those that show nothing any more.
  [[nodiscard]] platform::Ref<platform::Collection> tickedRows() const;
  /// Ticks every row.
  void tickAll();

  // What a person does; rows from 1, an Error (subscript) outside of the list.
  /// Raises RowSelected, also for the row that was selected already.
  void Select(std::int64_t row);
  /// A double click, or Enter: selects the row without telling of it and raises RowOpened.
  void Open(std::int64_t row);
  /// An Error (invalidCall) without tick boxes.
  void Tick(std::int64_t row);
  void Untick(std::int64_t row);

  // Neither is raised for a row that shows nothing any more.
  platform::Event<platform::Link&> RowSelected;
  platform::Event<platform::Link&> RowOpened;
  platform::Event<> TicksChanged;  ///< once for `tickAll`

  /// The rows, each with `cells` and `tag`.
  [[nodiscard]] platform::Ref<platform::Collection> Rows() const;

  // For views; rows and columns from 0, which must be there.
  [[nodiscard]] std::size_t rowCount() const { return m_rows.size(); }
  [[nodiscard]] const std::vector<Column>& columns() const { return m_columns; }
  [[nodiscard]] const Icon& icon() const { return m_icon; }
  [[nodiscard]] std::string cell(std::size_t row, std::size_t column) const;
  [[nodiscard]] platform::Link& link(std::size_t row) const { return *m_rows[row].link; }
  [[nodiscard]] bool isTicked(std::size_t row) const { return m_rows[row].ticked; }
  [[nodiscard]] std::optional<std::size_t> currentRow() const { return m_current; }

  // Told after it was done. Columns, icon, tick boxes and the ticks of `tickAll` raise Changed.
  platform::Event<> RowsReset;
  platform::Event<std::size_t> RowInserted;
  platform::Event<std::size_t> RowRemoved;
  platform::Event<std::size_t> RowChanged;  ///< cells or tick
  platform::Event<> CurrentChanged;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  struct Line {
    LinkRef link;
    bool ticked = false;
  };

  [[nodiscard]] std::optional<std::size_t> find(const platform::Link* link) const;
  [[nodiscard]] std::size_t checked(std::int64_t row) const;
  void showLinks(const platform::Ref<platform::Collection>& links, const platform::Node& owner);
  void resetRows(std::vector<Line> rows);
  void current(std::optional<std::size_t> row);
  void setTick(std::int64_t row, bool ticked);
  void fillFrom(platform::Object& links, platform::Node& owner);

  std::vector<Column> m_columns;
  std::vector<Line> m_rows;
  std::optional<std::size_t> m_current;
  Icon m_icon;
  bool m_tickBoxes = false;
};

}  // namespace brisel::controls
