#pragma once

#include <QComboBox>
#include <QListView>
#include <optional>
#include <vector>

#include "controls/Combo.h"

class QCompleter;

namespace brisel::qt {

class ComboModel;

/// A field with a list of entries behind it. The list opens with all entries by the arrow or the
/// arrow keys, and narrows to those that match while a person types. What is typed is completed in
/// the field to the first entry that begins with it; the completed part is selected, so that typing
/// on, or deleting, drops it. Enter takes what stands in the field, or the entry that the arrow
/// keys have reached; Escape gives the selection back.
class ComboWidget : public QComboBox {
 public:
  /// What becomes of a text that no entry has: it may become a new entry, and stays in the field;
  /// or only entries can be chosen, and it goes when the keyboard does.
  enum class Unknown { entered, refused };

  ComboWidget(platform::Ref<controls::Combo> combo, Unknown unknown, QWidget* parent = nullptr);

  void showPopup() override;
  void hidePopup() override;
  /// The list, shown or not.
  [[nodiscard]] QAbstractItemView& list() const { return *m_list; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void follow();
  void makeList();
  void openList(int current);
  void typed(const QString& text);
  void completeInField();
  [[nodiscard]] bool enter();
  void choose(std::size_t entry);
  void tellType(const QString& text);
  [[nodiscard]] bool cancel();
  void settle();

  platform::Ref<controls::Combo> m_combo;
  Unknown m_unknown;
  ComboModel* m_entries;
  QCompleter* m_completer = nullptr;
  QListView* m_list = nullptr;
  QString m_typed;                          ///< without what was completed
  std::optional<std::size_t> m_completion;  ///< the entry that the field was completed to
  bool m_isTyping = false;
  bool m_telling = false;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
