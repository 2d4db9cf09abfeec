#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Diagram.h"

namespace brisel::canvas {

class Node;

/// One line of text of a section.
struct Row {
  std::string text;
  std::string kind;  ///< "STRING"
  std::string tag;   ///< identifier of what the row stands for; empty for none
};

/// A row as an object: a picture of the row at the moment when it was asked for.
class RowObject : public platform::Object {
 public:
  explicit RowObject(Row row) : m_row(std::move(row)) {}

  [[nodiscard]] std::string text() const { return m_row.text; }
  [[nodiscard]] std::string kind() const { return m_row.kind; }
  [[nodiscard]] std::string tag() const { return m_row.tag; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  Row m_row;
};

/// A compartment of a box. Owned by its box; one whose box is gone still answers.
class Section : public platform::DiagramSection {
 public:
  explicit Section(Node& node) : m_node(&node) {}

  [[nodiscard]] bool visible() const override { return m_visible; }
  void visible(bool visible) override;
  void addRow(std::string_view text, std::string_view kind, std::string_view tag) override;
  void clearRows() override;
  [[nodiscard]] platform::Ref<platform::Collection> Rows() const override;

  [[nodiscard]] const std::vector<Row>& rows() const { return m_rows; }
  /// Columns of the widest row.
  [[nodiscard]] int columns() const { return m_columns; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  friend class Node;

  Node* m_node;
  std::vector<Row> m_rows;
  int m_columns = 0;
  bool m_visible = true;
};

}  // namespace brisel::canvas
