#pragma once

#include <string>
#include <string_view>

#include "platform/Diagram.h"
#include "platform/Repository.h"

namespace brisel::repository {

class Class;
class CLSRepository;
class Positioner;

/// Pairs a line on the canvas with the relationship node that it shows. Holds no data of the model.
class Association : public platform::Object {
 public:
  [[nodiscard]] platform::Ref<platform::DiagramLink> link() const { return m_line; }
  /// An Error (invalidCall) for none.
  void link(platform::DiagramLink* line);
  [[nodiscard]] platform::Ref<platform::Node> clsObject() const { return m_node; }
  /// An Error (invalidCall) for none and for what is no relationship.
  void clsObject(platform::Node* node);
  [[nodiscard]] std::string name() const;
  void name(std::string_view name);
  [[nodiscard]] bool isGeneralization() const;
  [[nodiscard]] bool isAggregation() const;
  [[nodiscard]] bool isAssociation() const;
  /// Sets the line's decorations, its label (stereotype and name) and the texts at its ends (role
  /// name, multiplicity or, without one, cardinality). A line that left the canvas is tolerated.
  void Populate();
  /// Re-attach an end of the line to the wrapper's box; the model is not touched.
  void MoveToNewSource(Class& to);
  void MoveToNewTarget(Class& to);
  void SavePoints(Positioner& positioner, CLSRepository& repository);

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  [[nodiscard]] platform::Node& node() const;
  [[nodiscard]] bool isKind(std::string_view type) const;
  void decorate();
  void label();

  platform::Ref<platform::DiagramLink> m_line;
  platform::Ref<platform::Node> m_node;
};

}  // namespace brisel::repository
