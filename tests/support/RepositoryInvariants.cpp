#include "support/RepositoryInvariants.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace brisel::test {

using platform::Collection;
using platform::each;
using platform::Element;
using platform::Link;
using platform::MetaType;
using platform::Node;
using platform::Ref;

namespace {

using Elements = std::vector<const Element*>;

Elements walk(const Ref<Collection>& collection) {
  Elements elements;
  for (const Element& element : each<Element>(collection)) elements.push_back(&element);
  return elements;
}

/// The walk, the positions and the count say the same.
void checkCollection(const Ref<Collection>& collection, const Elements& expected,
                     const std::string& what) {
  ASSERT_EQ(collection->Count(), static_cast<std::int64_t>(expected.size())) << what;
  EXPECT_EQ(walk(collection), expected) << what;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const Ref<platform::Object> item = collection->Item(static_cast<std::int64_t>(i + 1));
    ASSERT_EQ(item.get(), expected[i]) << what << " at " << i + 1;
  }
}

Elements checkType(const MetaType& type) {
  const Elements instances = walk(type.extension());
  checkCollection(type.extension(), instances, type.name());
  std::set<std::string> identifiers;
  std::map<std::string, const Element*> firstOfName;
  for (const Element* element : instances) {
    EXPECT_EQ(element->Parent().get(), &type) << element->identifier();
    EXPECT_TRUE(identifiers.insert(element->identifier()).second) << element->identifier();
    EXPECT_EQ(type.find(element->identifier()).get(), element) << element->identifier();
    firstOfName.emplace(element->name(), element);
  }
  for (const auto& [name, first] : firstOfName) {
    EXPECT_EQ(type.findByName(name).get(), first) << type.name() << " named " << name;
  }
  return instances;
}

}  // namespace

void checkInvariants(const platform::MetaRepository& repository) {
  std::vector<const Node*> nodes;
  for (const MetaType& type : each<MetaType>(repository.nodeTypes())) {
    for (const Element* node : checkType(type)) nodes.push_back(static_cast<const Node*>(node));
  }
  for (const MetaType& type : each<MetaType>(repository.linkTypes())) {
    std::map<const Node*, std::pair<Elements, Elements>> ends;
    for (const Element* element : checkType(type)) {
      const auto* link = static_cast<const Link*>(element);
      EXPECT_EQ(link->source()->Parent()->find(link->source()->identifier()), link->source())
          << link->identifier() << " leaves a node that is not there";
      ends[link->source().get()].first.push_back(link);
      ends[link->Target().get()].second.push_back(link);
    }
    for (const Node* node : nodes) ends.try_emplace(node);
    for (const auto& [node, links] : ends) {
      const std::string what = type.name() + " at " + node->identifier();
      checkCollection(node->outgoing(type.name()), links.first, what);
      checkCollection(node->Incoming(type.name()), links.second, what);
    }
  }
}

}  // namespace brisel::test
