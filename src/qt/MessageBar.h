#pragma once

#include <QFrame>
#include <functional>

class QLabel;
class QPlainTextEdit;
class QPushButton;
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
  /// A button that does something about what is told, until the next message; using it closes the
  /// strip.
  void offer(const QString& caption, const QString& tip, std::function<void()> run);
  [[nodiscard]] QString text() const;

 private:
  QLabel* m_icon;
  QLabel* m_text;
  QPushButton* m_offer;
  std::function<void()> m_run;  ///< what it does
  QToolButton* m_more;
  QPlainTextEdit* m_details;
};

}  // namespace brisel::qt
