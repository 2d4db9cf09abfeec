#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Control.h"
#include "platform/ComponentRegistry.h"
#include "platform/Repository.h"

namespace brisel::controls {

/// "BriselControls.ListEditor": adds, renames and removes the nodes of one type, a row a node in
/// the order of the type's extension. While it is open it follows the repository, whoever changes
/// it. Protocol: `create`, `repository`, `generator`, `open`, `init`; `deinit`, `destroy`.
class ListEditor : public Control {
 public:
  /// The registry's shell asks the person.
  explicit ListEditor(platform::ComponentRegistry& registry) : m_registry(registry) {}

  void create() { destroy(); }
  [[nodiscard]] platform::Ref<platform::MetaRepository> repository() const { return m_repository; }
  /// Closes the list.
  void repository(platform::MetaRepository* repository);
  /// Whose member `GetUUID` makes identifiers.
  [[nodiscard]] platform::Ref<platform::Object> generator() const { return m_generator; }
  void generator(platform::Object* generator) { m_generator = generator; }
  /// Shows the nodes of the type, which need not be known yet. An Error (objectMissing) without a
  /// repository.
  void open(std::string_view type);
  /// Reads the list of the open type again.
  void init();
  /// Closes the list: no rows, and the repository is not followed any more.
  void deinit();
  /// Lets go of repository and generator too.
  void destroy();

  /// The rows, each with `cells` (the name) and `tag` (the identifier).
  [[nodiscard]] platform::Ref<platform::Collection> Rows() const;

  // What a person does; rows from 1, an Error (subscript) outside of the list.
  /// A new node of the name, without blanks around it, and a fresh identifier; its row. An Error
  /// (invalidCall) for an empty name, an Error (objectMissing) when no list is open or there is no
  /// generator.
  std::int64_t Add(std::string_view name);
  /// An Error (invalidCall) for an empty name.
  void Rename(std::int64_t row, std::string_view name);
  /// Removes the node with all links that end at it; asks before that when there are such links.
  void Remove(std::int64_t row);

  // For views; rows from 0, which must be there.
  [[nodiscard]] std::size_t rowCount() const { return m_nodes.size(); }
  [[nodiscard]] std::string name(std::size_t row) const { return m_nodes[row]->name(); }
  [[nodiscard]] platform::Node& node(std::size_t row) const { return *m_nodes[row]; }

  // Told after it was done.
  platform::Event<> RowsReset;
  platform::Event<std::size_t> RowInserted;
  platform::Event<std::size_t> RowRemoved;
  platform::Event<std::size_t> RowChanged;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  using NodeRef = platform::Ref<platform::Node>;

  [[nodiscard]] NodeRef checked(std::int64_t row) const;
  [[nodiscard]] std::optional<std::size_t> find(const platform::Element& node) const;
  void follow(const platform::Change& change);

  platform::ComponentRegistry& m_registry;
  platform::Ref<platform::MetaRepository> m_repository;
  platform::Ref<platform::Object> m_generator;
  std::string m_type;  ///< empty while the list is closed
  std::vector<NodeRef> m_nodes;
  platform::Connection m_following;
};

}  // namespace brisel::controls
