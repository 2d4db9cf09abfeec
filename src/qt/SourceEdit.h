#pragma once

#include <QPlainTextEdit>

namespace brisel::qt {

/// A text in a font of fixed pitch with the numbers of its lines beside it. Tags in double braces
/// stand out where it is one of a template.
class SourceEdit : public QPlainTextEdit {
 public:
  enum class Kind { plain, templateText };

  explicit SourceEdit(Kind kind, QWidget* parent = nullptr);

  /// Marks a line, from 1; none for 0.
  void markLine(int line);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  class Numbers;

  [[nodiscard]] int numbersWidth() const;
  void layNumbersOut();
  void paintNumbers(QPaintEvent& event);
  void showMark();

  QWidget* m_numbers;
  int m_marked = 0;
};

}  // namespace brisel::qt
