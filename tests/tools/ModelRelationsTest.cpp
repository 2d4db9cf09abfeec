#include <algorithm>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "support/Model.h"
#include "tools/ModelRelations.h"

namespace brisel::tools {
namespace {

using Kind = repository::RelationshipKind;

/// Everything that is known, as text: a line a class with its stereotype and what it is joined by.
std::set<std::string> described(const ModelRelations& relations) {
  std::set<std::string> lines;
  for (const auto& [key, entry] : relations.classes()) {
    std::set<std::string> joined;
    for (const ModelRelations::Relationship* each : entry->relationships) {
      joined.insert(each->node->identifier() + std::to_string(static_cast<int>(each->kind)) +
                    each->source->name + '>' + each->target->name);
      EXPECT_EQ(relations.find(*each->node), each);
    }
    EXPECT_EQ(joined.size(), entry->relationships.size()) << "one is entered twice";
    std::string line = entry->node->identifier() + ' ' + entry->name + ' ' + entry->stereotype;
    for (const std::string& one : joined) line += ' ' + one;
    lines.insert(line);
  }
  lines.insert(std::to_string(relations.relationshipCount()) + ' ' +
               std::to_string(relations.incompleteCount()));
  return lines;
}

/// A hand that changes a model at random, through its conventions and beside them.
class Walk : public test::Model {
 public:
  explicit Walk(std::uint32_t seed) : m_random(seed) {
    for (const char* name : {"s0", "s1"}) model->MakeStereotype(name, name, "");
  }

  void step() {
    const auto one = any("Class");
    const auto other = any("Class");
    const auto relationship = any(kTypes[below(3)]);
    const std::string key = std::to_string(++m_made);
    switch (below(12)) {
      case 0:
      case 1:
        model->MakeClass("C" + key, "c" + key, "", "", "", "");
        break;
      case 2:
        if (one && below(3) == 0) model->DeleteClass(one->identifier());
        break;
      case 3:
        if (one) one->name("N" + key);
        break;
      case 4:
        if (one) model->SetStereotype(*one, below(2) == 0 ? nullptr : any("Stereotype").get());
        break;
      case 5:
        any("Stereotype")->name("s" + key);
        break;
      case 6:
        if (relationship) repository::deleteRelationship(*model, *relationship);
        break;
      case 7:
        if (const auto part = any("Aggregation")) part->SetProperty("isComposite", below(2) == 0);
        break;
      case 8:
        if (relationship && one && repository::endOf(*relationship, sourceOf(*relationship)) &&
            repository::endOf(*relationship, targetOf(*relationship))) {
          model->MoveAssoc(*relationship, *one, *other);
        }
        break;
      case 9:
        if (relationship) cutAnEnd(*relationship);
        break;
      default:
        if (!one) break;
        repository::makeRelationship(*model, static_cast<Kind>(below(4)), "r" + key,
                                     one->identifier(), other->identifier());
    }
  }

 private:
  static constexpr const char* kTypes[] = {"Association", "Aggregation", "Generalization"};

  std::size_t below(std::size_t limit) { return m_random() % limit; }
  NodeRef any(std::string_view type) {
    const auto all = store->MetaNodes(type)->extension();
    if (all->Count() == 0) return {};
    const auto number = below(static_cast<std::size_t>(all->Count())) + 1;
    return platform::as<platform::Node>(all->Item(static_cast<std::int64_t>(number)));
  }
  static std::string_view sourceOf(const platform::Node& relationship) {
    return repository::relationshipTypeOf(relationship).source;
  }
  static std::string_view targetOf(const platform::Node& relationship) {
    return repository::relationshipTypeOf(relationship).target;
  }
  void cutAnEnd(const platform::Node& relationship) {
    const auto ends =
        relationship.outgoing(below(2) == 0 ? sourceOf(relationship) : targetOf(relationship));
    if (ends->Count() > 0) store->RemoveAssoc(*platform::as<platform::Link>(ends->Item(1)));
  }

  std::mt19937 m_random;
  int m_made = 0;
};

/// What is followed step by step is what a fresh look would find.
TEST(ModelRelations, followWhateverIsDoneToTheModel) {
  for (const std::uint32_t seed : {1U, 2U, 3U, 4U}) {
    Walk walk(seed);
    ModelRelations followed;
    followed.follow(walk.store.get());
    for (int i = 0; i < 400; ++i) {
      walk.step();
      ModelRelations fresh;
      fresh.follow(walk.store.get());
      ASSERT_EQ(described(followed), described(fresh)) << "seed " << seed << ", step " << i;
    }
    EXPECT_GT(followed.classes().size(), 5U);
    EXPECT_GT(followed.relationshipCount(), followed.incompleteCount());
  }
}

}  // namespace
}  // namespace brisel::tools
