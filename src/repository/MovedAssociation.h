#pragma once

#include "platform/Repository.h"

namespace brisel::repository {

/// What became of a relationship that was moved: its new node and the classes at its first and
/// second end. A plain record.
class MovedAssociation : public platform::Object {
 public:
  using NodeRef = platform::Ref<platform::Node>;

  MovedAssociation() = default;
  MovedAssociation(NodeRef assoc, NodeRef source, NodeRef target)
      : m_assoc(std::move(assoc)), m_source(std::move(source)), m_target(std::move(target)) {}

  [[nodiscard]] NodeRef clsAssoc() const { return m_assoc; }
  void clsAssoc(platform::Node* node) { m_assoc = node; }
  [[nodiscard]] NodeRef clsSource() const { return m_source; }
  void clsSource(platform::Node* node) { m_source = node; }
  [[nodiscard]] NodeRef clsTarget() const { return m_target; }
  void clsTarget(platform::Node* node) { m_target = node; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  NodeRef m_assoc;
  NodeRef m_source;
  NodeRef m_target;
};

}  // namespace brisel::repository
