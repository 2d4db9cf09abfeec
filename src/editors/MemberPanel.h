#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controls/Combo.h"
#include "controls/ListView.h"
#include "controls/OptionGroup.h"
#include "controls/TextBox.h"
#include "platform/Repository.h"
#include "repository/CLSRepository.h"

namespace brisel::editors {

/// What tells attributes, operations and parameters apart where they are edited.
struct MemberKind {
  std::string_view type;       ///< "Attrib"
  std::string_view ownership;  ///< "Class.Has.Attrib"
  std::string_view dataType;   ///< "Attrib.Has.DataType"
  bool hasScope;
  std::string_view icon;  ///< file, and the key under which it is known
  std::string_view iconKey;
  /// Makes a member of the owner; the link is the one by which it is owned.
  void (*add)(repository::CLSRepository& repository, std::string_view owner, std::string_view name,
              std::string_view scope, std::string_view dataType);
  void (repository::CLSRepository::*setDataType)(platform::Node& member, platform::Node& dataType);
  void (repository::CLSRepository::*remove)(std::string_view member);
};

/// The columns and the icon of a list of such members, which has no rows any more.
void showColumns(controls::ListView& list, const MemberKind& kind, std::string_view iconFolder);

extern const MemberKind kAttributes;
extern const MemberKind kOperations;
extern const MemberKind kParameters;

/// The list of an owner's members of one kind, with the fields in which one is entered. Every
/// change is written to the model at once; the list follows the model, whoever changes it. Members
/// are found by their names: of two of one name the first is meant.
class MemberPanel {
 public:
  explicit MemberPanel(const MemberKind& kind);

  platform::Ref<controls::ListView> list = platform::make<controls::ListView>();
  platform::Ref<controls::TextBox> name = platform::make<controls::TextBox>();
  platform::Ref<controls::OptionGroup> scope = platform::make<controls::OptionGroup>(
      std::vector<std::string>{"Public", "Protected", "Private"});
  platform::Ref<controls::Combo> type = platform::make<controls::Combo>();

  /// Empties the fields and offers the model's data types.
  void prepare(repository::CLSRepository& repository, std::string_view iconFolder);
  /// Shows the owner's members, none of nothing.
  void show(platform::Node* owner);
  /// Lets go of model and owner.
  void finish();

  [[nodiscard]] platform::Ref<platform::Node> owner() const { return m_owner; }
  /// Identifier of the member that was selected last; empty after New and Delete.
  [[nodiscard]] const std::string& currentKey() const { return m_currentKey; }
  void currentKey(std::string_view key) { m_currentKey = key; }
  /// Empties the name, sets the first scope, and no member is the current one.
  void startNew();

  /// Adds or updates what the name field says: pieces between ";" one by one, trimmed, empty ones
  /// left out; a text without ";" as it stands.
  void addEntered();
  /// Adds a member with the scope and type that are set, or gives the one of that name both.
  /// Nothing without a type or an owner.
  void add(std::string_view name);
  /// Deletes the member that the name field names.
  void removeEntered();
  /// A data type that was typed: found by its name or made, then selected.
  void enterType(std::string_view name);
  /// The model changed.
  void follow(const platform::Change& change);

  platform::Event<> Edited;  ///< once for several pieces; a member was added, updated or deleted here

 private:
  void select(platform::Link& link);
  /// False when nothing was done.
  bool addOne(std::string_view name);
  void update(platform::Link& ownership, std::string_view scopeWord, platform::Node& dataType);
  [[nodiscard]] platform::Ref<platform::Link> find(std::string_view name) const;
  void followNode(platform::Node& node, const platform::Change& change);

  const MemberKind& m_kind;
  platform::Ref<repository::CLSRepository> m_repository;
  platform::Ref<platform::Node> m_owner;
  std::string m_currentKey;
  std::vector<platform::Connection> m_listening;
};

}  // namespace brisel::editors
