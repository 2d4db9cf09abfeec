#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Control.h"
#include "platform/Collection.h"
#include "platform/Repository.h"
#include "platform/ValueArray.h"

namespace brisel::controls {

/// "BriselControls.Combo": an entry a node of a collection, one of them selected, found in place as
/// a person types. The entries of views are those of the last `fill` or `refresh`, which a view
/// calls as it opens the list; `Entries`, and the text of what is selected, are always read from
/// the nodes. A selected node that has left its repository counts as none.
class Combo : public Control {
 public:
  using NodeRef = platform::Ref<platform::Node>;

  /// Empties the combo.
  void create() { clear(); }
  /// Shows the nodes of the collection by one of their properties ("Name"). Holds the collection,
  /// so that `refresh` finds what came and went. Keeps the selection. A CallError for a collection
  /// of anything else than nodes.
  void fill(platform::Collection& nodes, std::string_view displayProperty);
  /// Reads the collection again: nodes made, removed and renamed since.
  void refresh();
  /// No entries, no selection, no typed text.
  void clear();
  void destroy() { clear(); }

  /// What is in the field: the text that was typed, or else the text of what is selected.
  [[nodiscard]] std::string Text() const;
  /// The selected node. While a person types, the entry of the very text typed; one that is typed in
  /// part, or is none, changes nothing.
  [[nodiscard]] NodeRef selection() const;
  /// Whether the field says what is selected, and is not on the way to something else.
  [[nodiscard]] bool saysSelection() const { return !m_isTyping || find(m_typed); }
  /// Selected by the program, nothing for none: raises Changed only. What was typed is gone.
  void selection(platform::Node* node);

  // What a person does.
  /// Chooses the first entry of exactly that text: raises Chosen. An Error (notFound) naming the
  /// text when there is none.
  void Choose(std::string_view text);
  /// What is in the field while typing; nothing is chosen by it.
  void Type(std::string_view text);
  /// Ends the typing: chooses the entry of that text, without blanks around it, when there is one, else raises Entered
  /// so that the owner may make one. A text of blanks alone gives the selection back, as
  /// `cancelTyping` does.
  void Enter(std::string_view text);
  /// The text of what is selected stands in the field again.
  void cancelTyping();

  platform::Event<> Chosen;
  platform::Event<std::string> Entered;  ///< the text, which no entry has

  /// All texts, as they are now.
  [[nodiscard]] platform::Ref<platform::ValueArray> Entries() const;

  // For views; entries from 0, as of the last refresh.
  [[nodiscard]] std::size_t entryCount() const { return m_entries.size(); }
  [[nodiscard]] const std::string& entryText(std::size_t entry) const {
    return m_entries[entry].text;
  }
  /// Chooses the entry as a person does; one whose node is gone only refreshes.
  void chooseEntry(std::size_t entry);
  /// The indexes of the entries that contain the text, ignoring case: those that begin with it
  /// first, in the order of the entries, `limit` of them at most. All match the empty text.
  [[nodiscard]] std::vector<std::size_t> matches(std::string_view text, std::size_t limit) const;

  platform::Event<> EntriesChanged;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  struct Entry {
    NodeRef node;
    std::string text;
    std::string folded;  ///< the text in lower case
  };

  void fillFrom(platform::Object& nodes, std::string_view displayProperty);
  [[nodiscard]] std::string textOf(const platform::Node& node) const;
  [[nodiscard]] NodeRef find(std::string_view text) const;
  [[nodiscard]] NodeRef findNow(std::string_view text);
  void choose(const NodeRef& node);

  platform::Ref<platform::Collection> m_nodes;
  std::string m_displayProperty;
  std::vector<Entry> m_entries;
  NodeRef m_selection;
  bool m_isTyping = false;
  std::string m_typed;
};

}  // namespace brisel::controls
