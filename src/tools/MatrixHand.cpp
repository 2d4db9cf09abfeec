// What a person does in the matrix: the current cell, keys, choices.

#include <algorithm>
#include <array>
#include <utility>

#include "platform/ErrorTrap.h"
#include "tools/MatrixBrowser.h"

namespace brisel::tools {

using platform::Ref;
using Index = MatrixBrowser::Index;

namespace {

/// How a key moves the current cell: by steps, by pages, or to the end.
struct Motion {
  std::string_view key;
  int rows, columns;
  enum class Reach { step, page, end } reach;
};

constexpr std::array kMotions = {
    Motion{"Left", 0, -1, Motion::Reach::step},   Motion{"Right", 0, 1, Motion::Reach::step},
    Motion{"Up", -1, 0, Motion::Reach::step},     Motion{"Down", 1, 0, Motion::Reach::step},
    Motion{"PageUp", -1, 0, Motion::Reach::page}, Motion{"PageDown", 1, 0, Motion::Reach::page},
    Motion{"Home", 0, -1, Motion::Reach::end},    Motion{"End", 0, 1, Motion::Reach::end},
};

}  // namespace

Index MatrixBrowser::CurrentRow() {
  settle();
  return m_cursor.row;
}

Index MatrixBrowser::CurrentColumn() {
  settle();
  return m_cursor.column;
}

void MatrixBrowser::Select(Index row, Index column) {
  settle();
  moveTo(row, column);
}

void MatrixBrowser::moveTo(Index row, Index column) {
  row = clampedTo(row);
  column = clampedTo(column);
  if (row == m_cursor.row && column == m_cursor.column) return;
  m_cursor = {row, column, classAt(row), classAt(column)};
  CurrentChanged();
}

void MatrixBrowser::Choose(Index row, Index column) {
  const Ref<Object> held(this);
  Select(row, column);
  std::vector<platform::Value> chosen;
  if (m_cursor.row == 0 || m_cursor.column == 0) {
    const NodeRef& shown = m_cursor.row == 0 ? m_cursor.columnClass : m_cursor.rowClass;
    if (shown) chosen.emplace_back(shown->identifier());
  } else {
    for (const Matrix::Mark& mark :
         m_matrix.cell(placeOf(m_cursor.row), placeOf(m_cursor.column))) {
      chosen.emplace_back(mark.relationship->node->identifier());
    }
  }
  if (!chosen.empty()) Selected(platform::make<platform::ValueArray>(std::move(chosen)));
}

void MatrixBrowser::pageSize(Index rows, Index columns) {
  m_pageRows = std::max<Index>(rows, 1);
  m_pageColumns = std::max<Index>(columns, 1);
}

bool MatrixBrowser::KeyPress(Text key, Text modifiers) {
  const Ref<Object> held(this);
  return platform::trapped(m_registry.shell(), "MatrixBrowser", "KeyPress", [&] {
    settle();
    const bool far = modifiers.find("ctrl") != Text::npos;
    const bool sideways = modifiers.find("shift") != Text::npos;
    for (const Motion& motion : kMotions) {
      if (motion.key != key) continue;
      const auto all = static_cast<Index>(m_matrix.size());
      switch (motion.reach) {
        case Motion::Reach::step:
          step(motion.rows, motion.columns, far);
          break;
        case Motion::Reach::page:
          if (sideways) {
            moveTo(m_cursor.row, std::max<Index>(1, m_cursor.column + motion.rows * m_pageColumns));
          } else {
            moveTo(std::max<Index>(1, m_cursor.row + motion.rows * m_pageRows), m_cursor.column);
          }
          break;
        case Motion::Reach::end: {
          const Index end = motion.columns > 0 ? all : std::min<Index>(1, all);
          moveTo(far ? end : m_cursor.row, end);
          break;
        }
      }
      return true;
    }
    if (key == "Enter" || key == "Return") {
      enter();
    } else if (key == "Space") {
      Choose(m_cursor.row, m_cursor.column);
    } else if (key == "Delete" || key == "Backspace") {
      deleteCurrent();
    } else if (key == "Escape") {
      Close();
    } else {
      return false;
    }
    return true;
  });
}

void MatrixBrowser::step(Index rows, Index columns, bool far) {
  if (far && m_cursor.row > 0 && m_cursor.column > 0) return jump(rows, columns);
  moveTo(m_cursor.row + rows, m_cursor.column + columns);
}

void MatrixBrowser::jump(Index rows, Index columns) {
  // The marks of a column are those of the row of the same class.
  const bool isAlongRow = columns != 0;
  const Index line = isAlongRow ? m_cursor.row : m_cursor.column;
  const Index from = isAlongRow ? m_cursor.column : m_cursor.row;
  const bool isOnwards = rows + columns > 0;
  std::vector<Matrix::Mark> marks;
  m_matrix.marks(placeOf(line), 0, m_matrix.size(), marks);
  Index to = isOnwards ? static_cast<Index>(m_matrix.size()) : 1;
  for (const Matrix::Mark& mark : marks) {
    const auto place = static_cast<Index>(mark.column) + 1;
    if (isOnwards && place > from) to = std::min(to, place);
    if (!isOnwards && place < from) to = std::max(to, place);
  }
  moveTo(isAlongRow ? line : to, isAlongRow ? to : line);
}

/// Into the cell: its menu, or the class of a header.
void MatrixBrowser::enter() {
  if (m_cursor.row == 0 || m_cursor.column == 0) return Choose(m_cursor.row, m_cursor.column);
  MenuAsked(static_cast<int>(m_cursor.row), static_cast<int>(m_cursor.column));
}

/// The one relationship of the current cell; of several the person chooses one in the menu.
void MatrixBrowser::deleteCurrent() {
  if (m_cursor.row == 0 || m_cursor.column == 0) return;
  const std::size_t count = m_matrix.cell(placeOf(m_cursor.row), placeOf(m_cursor.column)).size();
  if (count == 1) Delete(m_cursor.row, m_cursor.column, "");
  if (count > 1) enter();
}

void MatrixBrowser::makeChosen(Text kind, Index row, Index column) {
  const Ref<Object> held(this);
  platform::trapped(m_registry.shell(), "MatrixBrowser", "Make",
                    [&] { static_cast<void>(Make(kind, row, column)); });
}

void MatrixBrowser::deleteChosen(Index row, Index column, Text identifier) {
  const Ref<Object> held(this);
  platform::trapped(m_registry.shell(), "MatrixBrowser", "Delete",
                    [&] { Delete(row, column, identifier); });
}

}  // namespace brisel::tools
