#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Control.h"
#include "controls/PropertyKinds.h"
#include "platform/Repository.h"
#include "platform/ValueArray.h"

namespace brisel::controls {

/// "BriselControls.Property": a grid of a node's properties, a line a key. What a person edits is
/// kept until `apply` writes it to the node; everything else is read from the node when it is asked
/// for. Protocol: `initialize`, `owner`, `addKey`..., `load`, `node`; `apply`, `clear`, `release`.
class Property : public Control {
 public:
  /// The folder of the suite's resources.
  [[nodiscard]] std::string Path() const { return m_path; }
  void Path(std::string_view path) { m_path = path; }

  /// As new: no keys, no owner, no node, no edits.
  void initialize();
  /// The type whose nodes are shown.
  void owner(platform::MetaType* type);
  /// A key to show, behind those added before; "Intention" stands for "Description". A key that is
  /// there already stays where it is.
  void addKey(std::string_view key);
  /// Shows the keys that were added or, with none added, all that the owner lists in `properties`
  /// but the identifier.
  void load();
  /// The node whose values are shown, nothing for none. Edits of another node are dropped.
  void node(platform::Node* node);
  [[nodiscard]] platform::Ref<platform::Node> node() const { return m_node; }
  /// Writes what was edited, and nothing else, to the node in the order of the keys; drops it when
  /// the node has left its repository. Nothing is edited afterwards. What the repository refuses
  /// stays edited, with all behind it.
  void apply();
  /// No node, no edits; the keys stay.
  void clear();
  /// No keys and no owner either.
  void release();

  /// The keys shown, in order.
  [[nodiscard]] const std::vector<std::string>& keys() const { return m_keys; }
  [[nodiscard]] platform::Ref<platform::ValueArray> Keys() const;
  /// What the grid shows: the edited value or else the node's, as `shownValue` says; of no node,
  /// and of one that has left its repository, as of a property that was never set. Keys are
  /// compared ignoring case; an Error (notFound) for one that is not shown, here and below.
  [[nodiscard]] platform::Value ValueOf(std::string_view key) const;
  [[nodiscard]] PropertyFormat format(std::string_view key) const;
  [[nodiscard]] bool isEdited(std::string_view key) const;

  /// A person's edit, kept until `apply`. Setting back what the node has ends the edit. An Error
  /// (typeMismatch) naming the key for a value that does not fit; an Error (objectMissing) without
  /// a node in its repository.
  void Edit(std::string_view key, const platform::Value& value);

  platform::Event<> Reset;                    ///< other keys, another node, or all values
  platform::Event<std::string> ValueChanged;  ///< the key as it is shown

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  [[nodiscard]] const std::string& shownKey(std::string_view key) const;
  /// The node's own value; empty without a node in its repository.
  [[nodiscard]] platform::Value stored(std::string_view key) const;
  [[nodiscard]] bool hasNode() const;
  [[nodiscard]] platform::Ref<platform::ValueArray> Words(std::string_view key) const;
  void reset();

  std::string m_path;
  platform::Ref<platform::MetaType> m_owner;
  platform::Ref<platform::Node> m_node;
  std::vector<std::string> m_added;
  std::vector<std::string> m_keys;
  std::map<std::string, platform::Value, std::less<>> m_edits;  ///< by key as shown
};

}  // namespace brisel::controls
