#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/Repository.h"
#include "repository/Relationships.h"

namespace brisel::tools {

/// Which classes a model has and what joins them, kept in step with the model's changes at a cost
/// of what changed.
class ModelRelations {
 public:
  static constexpr std::size_t kNowhere = std::numeric_limits<std::size_t>::max();

  struct Class;
  struct Relationship {
    platform::Ref<platform::Node> node;
    repository::RelationshipKind kind;
    Class* source = nullptr;  ///< where its line begins: the sub class, the whole
    Class* target = nullptr;
    /// False where the model has no class at an end; then neither is told.
    [[nodiscard]] bool isComplete() const { return source != nullptr; }
  };
  struct Class {
    platform::Ref<platform::Node> node;
    std::string name;
    std::string stereotype;                    ///< its name; "" for none and for "<NONE>"
    std::vector<Relationship*> relationships;  ///< complete ones, a loop once
    /// For whoever shows the class: where, where before, and in which group.
    std::size_t place = kNowhere;
    std::size_t before = kNowhere;
    std::uint32_t group = 0;
  };
  using Classes = std::unordered_map<const platform::Element*, std::unique_ptr<Class>>;

  /// From now on this model, or none.
  void follow(platform::MetaRepository* model);

  /// In no order.
  [[nodiscard]] const Classes& classes() const { return m_classes; }
  [[nodiscard]] std::size_t relationshipCount() const { return m_relationships.size(); }
  /// Relationships that lack a class at an end.
  [[nodiscard]] std::size_t incompleteCount() const;
  /// By its node; nothing for what is none.
  [[nodiscard]] const Relationship* find(const platform::Node& relationship) const;

  /// Classes came or went, or have another name, identifier or stereotype.
  platform::Event<> ClassesChanged;
  /// Relationships came or went, or tell something else.
  platform::Event<> RelationshipsChanged;

 private:
  using Relationships = std::unordered_map<const platform::Element*, std::unique_ptr<Relationship>>;

  void readAll();
  void changed(const platform::Change& change);
  void nodeChanged(platform::Node& node, const platform::Change& change);
  void linkChanged(platform::Link& link);
  void enterClass(platform::Node& node);
  void strikeClass(const platform::Node& node);
  void readClass(Class& entry) const;
  void enterRelationship(platform::Node& node);
  void strikeRelationship(const platform::Node& node);
  void readRelationship(Relationship& entry);
  void detach(Relationship& entry);
  [[nodiscard]] Class* classOf(const platform::Node* node) const;

  platform::Ref<platform::MetaRepository> m_model;
  Classes m_classes;
  Relationships m_relationships;
  platform::Connection m_listening;
};

}  // namespace brisel::tools
