#include "repository/Association.h"

#include <algorithm>
#include <array>

#include "platform/Error.h"
#include "platform/MemberTableOf.h"
#include "repository/CLSRepository.h"
#include "repository/Class.h"
#include "repository/Positioner.h"

namespace brisel::repository {

using platform::Arrow;
namespace types = platform::types;

namespace {

/// Stereotypes of relationships that the notation draws dashed.
constexpr std::array<std::string_view, 4> kDashed = {"dependency", "use", "abstraction", "realize"};

std::string endText(const platform::Node& node, std::string_view role,
                    std::string_view multiplicity, std::string_view cardinality) {
  std::string text = node.GetProperty(role).text();
  std::string count = node.GetProperty(multiplicity).text();
  if (count.empty()) count = node.GetProperty(cardinality).text();
  if (!text.empty() && !count.empty()) text.append(" ");
  return text + count;
}

}  // namespace

void Association::link(platform::DiagramLink* line) {
  if (!line) {
    throw platform::Error(platform::ErrorNumber::invalidCall, "An association wrapper needs a line");
  }
  m_line = line;
}

void Association::clsObject(platform::Node* node) {
  constexpr std::array kKinds = {types::kAssociation, types::kAggregation, types::kGeneralization};
  if (!node || std::find(kKinds.begin(), kKinds.end(), node->Parent()->name()) == kKinds.end()) {
    throw platform::Error(platform::ErrorNumber::invalidCall,
                          "An association wrapper needs a relationship");
  }
  m_node = node;
}

std::string Association::name() const { return node().name(); }
void Association::name(std::string_view name) { node().name(name); }

bool Association::isGeneralization() const { return isKind(types::kGeneralization); }
bool Association::isAggregation() const { return isKind(types::kAggregation); }
bool Association::isAssociation() const { return isKind(types::kAssociation); }

void Association::Populate() {
  if (!m_line) return;
  decorate();
  label();
}

void Association::decorate() {
  const auto arrow = [](Arrow code) { return static_cast<int>(code); };
  m_line->beginArrow(arrow(Arrow::none));
  m_line->endArrow(arrow(Arrow::none));
  const std::string stereotype = stereotypeName(node());
  m_line->dashed(std::find(kDashed.begin(), kDashed.end(), stereotype) != kDashed.end());
  if (isGeneralization()) {
    m_line->endArrow(arrow(Arrow::triangle));
    return;
  }
  if (node().GetProperty("SourceNavigable").isTrue()) m_line->beginArrow(arrow(Arrow::open));
  if (node().GetProperty("TargetNavigable").isTrue()) m_line->endArrow(arrow(Arrow::open));
  if (isAggregation()) {
    const bool composite = node().GetProperty("isComposite").isTrue();
    m_line->beginArrow(arrow(composite ? Arrow::filledDiamond : Arrow::diamond));
  }
}

void Association::label() {
  if (isGeneralization()) {
    m_line->text("");
    m_line->beginText("");
    m_line->endText("");
    return;
  }
  std::string text = stereotypeLabel(node());
  if (!text.empty() && !name().empty()) text.append("\r\n");
  m_line->text(text + name());
  m_line->beginText(endText(node(), "SourceRoleName", "SourceMultiplicity", "SourceCardinality"));
  m_line->endText(endText(node(), "TargetRolename", "TargetMultiplicity", "TargetCardinality"));
}

void Association::MoveToNewSource(Class& to) { m_line->reattachSource(*to.Node()); }
void Association::MoveToNewTarget(Class& to) { m_line->reattachTarget(*to.Node()); }

void Association::SavePoints(Positioner& positioner, CLSRepository& repository) {
  positioner.SavePoints(*this, repository);
}

bool Association::isKind(std::string_view type) const { return node().Parent()->name() == type; }

platform::Node& Association::node() const {
  if (!m_node) {
    throw platform::Error(platform::ErrorNumber::objectMissing,
                          "The association wrapper has no node");
  }
  return *m_node;
}

const platform::MemberTable& Association::memberTable() const {
  using A = Association;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<A>()
          .property("link", &A::link, &A::link)
          .property("clsObject", &A::clsObject, &A::clsObject)
          .property("name", &A::name, &A::name)
          .property("isGeneralization", &A::isGeneralization)
          .property("isAggregation", &A::isAggregation)
          .property("isAssociation", &A::isAssociation)
          .method("Populate", &A::Populate)
          .method("MoveToNewSource", &A::MoveToNewSource)
          .method("MoveToNewTarget", &A::MoveToNewTarget)
          .method("SavePoints", &A::SavePoints)
          .build();
  return kTable;
}

}  // namespace brisel::repository
