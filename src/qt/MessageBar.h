#pragma once

#include <QFrame>

class QLabel;
class QPlainTextEdit;
class QToolButton;

namespace brisel::qt {

/// A strip above the diagram that tells what went wrong, or what an import left out, without
/// standing in the way. Hidden until it has something to say; a person closes it.
class MessageBar : public QFrame {
 public:
  enum class Kind { error, note };

  explicit MessageBar(QWidget* parent = nullptr);

  /// `details` are lines that a button of the strip opens; may be empty.
  void show(Kind kind, const QString& text, const QString& details = {});
  [[nodiscard]] QString text() const;

 private:
  QLabel* m_icon;
  QLabel* m_text;
  QToolButton* m_more;
  QPlainTextEdit* m_details;
};

}  // namespace brisel::qt
