#include "controls/Row.h"

#include "platform/MemberTableOf.h"

namespace brisel::controls {

using platform::Node;
using platform::Ref;

bool isInRepository(const platform::Element& element) {
  const Ref<platform::MetaType> type = element.Parent();
  return type && type->find(element.identifier()) == &element;
}

Ref<Node> shownNode(const platform::Element& element) {
  if (!isInRepository(element)) return {};
  const auto* link = dynamic_cast<const platform::Link*>(&element);
  if (!link) return const_cast<Node*>(dynamic_cast<const Node*>(&element));
  Ref<Node> target = link->Target();
  return target && isInRepository(*target) ? target : Ref<Node>();
}

Ref<platform::ValueArray> Row::cells() const {
  const Ref<Node> node = shownNode(*m_element);
  std::vector<platform::Value> texts;
  for (const std::string& key : *m_keys) {
    texts.emplace_back(node ? node->GetProperty(key).text() : std::string());
  }
  return platform::make<platform::ValueArray>(std::move(texts));
}

std::string Row::tag() const {
  const Ref<Node> node = shownNode(*m_element);
  return node ? node->identifier() : std::string();
}

const platform::MemberTable& Row::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<Row>()
                                                  .property("cells", &Row::cells)
                                                  .property("tag", &Row::tag)
                                                  .build();
  return kTable;
}

}  // namespace brisel::controls
