#pragma once

#include <QScrollArea>
#include <vector>

#include "controls/Property.h"

class QGridLayout;
class QLabel;

namespace brisel::qt {

/// A property grid: names to the left, and to the right of each the editor that fits its value.
/// Edits go to the grid as they are made. What it refuses stays in the field, with the reason below
/// it.
class PropertyWidget : public QScrollArea {
 public:
  explicit PropertyWidget(platform::Ref<controls::Property> grid, QWidget* parent = nullptr);

  /// The editor of a key as it is shown; nothing for a key that is not.
  [[nodiscard]] QWidget* field(std::string_view key) const;
  /// The keyboard comes to the first editor.
  void enterFields();
  /// What was refused; empty for nothing.
  [[nodiscard]] QString refusal(std::string_view key) const;

 private:
  struct Line {
    std::string key;
    controls::PropertyKind kind;
    QLabel* label;
    QWidget* field;
    QLabel* refusal;
  };

  void follow();
  void showLine(Line& line);
  [[nodiscard]] bool fits() const;
  void rebuild();
  void addLine(const std::string& key);
  void valueChanged(const std::string& key);
  void edit(std::size_t index, const platform::Value& value);
  static void refuse(Line& line, const QString& reason);

  platform::Ref<controls::Property> m_grid;
  QGridLayout* m_layout = nullptr;
  std::vector<Line> m_lines;
  bool m_telling = false;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
