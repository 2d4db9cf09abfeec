#include <array>
#include <cstdio>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "StoreModel.h"
#include "platform/Error.h"
#include "store/Meta.h"
#include "support/RepositoryInvariants.h"

namespace brisel::store::test {
namespace {

using platform::Change;
using platform::Element;
using platform::Error;
using platform::Link;
using platform::Node;
using platform::Ref;
using platform::Value;

const std::vector<std::string> kTypes = {"Class",
                                         "Attrib",
                                         "Operation",
                                         "Widget",  // not of the class model
                                         "Class.Has.Attrib",
                                         "Class.Has.Operation",
                                         "Class.Knows.Class",
                                         "Widget.Of.Class"};
constexpr std::size_t kNodeTypes = 4;

/// Random changes of a repository by all roads, beside a model of what they should lead to and
/// another one that only hears the change records.
class Walk {
 public:
  explicit Walk(unsigned seed) : m_random(seed) {
    m_meta->Init();
    for (std::size_t i = 0; i < kNodeTypes; ++i) makeNode(kTypes[i]);  // so that all are known
    for (std::size_t i = kNodeTypes; i < kTypes.size(); ++i) makeLink(kTypes[i]);
    m_connection = m_meta->onChange([this](const Change& change) { hear(change); });
  }

  void step() {
    readByPosition();
    const std::size_t chance = below(100);
    if (chance < 28) return makeNode(kTypes[below(kNodeTypes)]);
    if (chance < 54) return makeLink(kTypes[kNodeTypes + below(kTypes.size() - kNodeTypes)]);
    if (chance < 62) return removeLink();
    if (chance < 66) return removeNode();
    if (chance < 73) return rename();
    if (chance < 81) return identify();
    if (chance < 97) return setProperty();
    if (chance < 99) return clearLinks();
    if (below(8) == 0) clearType();
  }

  void compare() const {
    EXPECT_EQ(StoreModel::text(*m_meta, kTypes), m_expected.text(kTypes));
    EXPECT_EQ(m_heard.text(kTypes), m_expected.text(kTypes));
    brisel::test::checkInvariants(*m_meta);
    for (const auto& [gone, text] : m_gone) EXPECT_EQ(answer(*gone), text);
  }

 private:
  std::size_t below(std::size_t limit) { return m_random() % limit; }

  /// Identifiers of all the forms that the store keeps differently, few enough to meet again.
  std::string anyId() {
    const auto number = static_cast<unsigned>(below(300));
    std::array<char, 64> text{};
    const char* const format = number % 3 == 0   ? "n%u"
                               : number % 3 == 1 ? "01234567-89ab-4def-8123-%012x"
                                                 : "an identifier longer than others %u";
    // NOLINTNEXTLINE(clang-diagnostic-format-nonliteral)
    const int size = std::snprintf(text.data(), text.size(), format, number);
    return {text.data(), static_cast<std::size_t>(size)};
  }
  std::string anyName() {
    static const std::vector<std::string> kNames = {"", "name", "Name", "name of many characters",
                                                    "ein schöner Name"};
    return kNames[below(kNames.size())] + (below(2) ? "" : std::to_string(below(20)));
  }
  Value anyValue() {
    switch (below(7)) {
      case 0:
        return {};
      case 1:
        return below(2) == 0;
      case 2:
        return static_cast<std::int64_t>(below(1000)) - 500;
      case 3:
        return std::int64_t{1} << (30 + below(30));
      case 4:
        return static_cast<double>(below(100)) / 8;
      case 5:
        return std::string(below(400), 'x');
      default:
        return anyName();
    }
  }

  /// Whether the call is refused because of its identifier, as it must be exactly when another has
  /// it; a refused call changes nothing.
  template <class Call>
  bool refused(const std::string& type, const std::string& id, Call call) {
    const bool taken = m_expected.has(type, id);
    const std::uint64_t changes = m_meta->changeCount();
    try {
      call();
      EXPECT_FALSE(taken) << type << " " << id;
      return false;
    } catch (const Error& error) {
      EXPECT_EQ(error.number(), static_cast<int>(platform::ErrorNumber::duplicateKey));
      EXPECT_TRUE(taken) << type << " " << id;
      EXPECT_EQ(m_meta->changeCount(), changes);
      return true;
    }
  }

  void makeNode(const std::string& type) {
    const std::string id = anyId();
    const std::string name = anyName();
    Ref<Node> made;
    if (refused(type, id, [&] { made = m_meta->MakeNode(type, name, id); })) return;
    m_nodes.push_back(made);
    m_expected.addNode(*made, type, name, id);
    if (!m_connection) m_heard.addNode(*made, type, name, id);
  }

  Ref<Node> anyNode(std::string_view type) {
    std::vector<Ref<Node>> fitting;
    for (const auto& node : m_nodes) {
      if (node->Parent()->name() == type) fitting.push_back(node);
    }
    return fitting.empty() ? Ref<Node>() : fitting[below(std::min<std::size_t>(fitting.size(), 9))];
  }

  void makeLink(const std::string& type) {
    const std::size_t first = type.find('.');
    const std::size_t second = type.rfind('.');
    const auto source = anyNode(type.substr(0, first));
    const auto target = anyNode(type.substr(second + 1));
    if (!source || !target) return;
    const std::string relation = type.substr(first, second + 1 - first);
    const std::string name =
        below(3) == 0 ? anyName() : source->identifier() + relation + target->identifier();
    const std::string id = anyId();
    Ref<Link> made;
    if (refused(type, id, [&] { made = m_meta->MakeLink(type, name, id, *source, *target); })) {
      return;
    }
    m_links.push_back(made);
    m_expected.addLink(*made, type, name, id, *source, *target);
    if (!m_connection) m_heard.addLink(*made, type, name, id, *source, *target);
  }

  void removeLink() {
    if (m_links.empty()) return;
    const Ref<Link> link = m_links[below(m_links.size())];
    const std::string type = link->Parent()->name();
    const std::string id = link->identifier();
    switch (below(4)) {
      case 0:
        m_meta->RemoveAssoc(*link);
        break;
      case 1:
        m_meta->MetaLinks(type)->extension()->Remove(id, false);
        break;
      case 2:
        link->source()->outgoing(type)->Remove(id, true);
        break;
      default:
        link->Target()->Incoming(type)->Remove(id, false);
    }
    m_expected.remove(*link);
    prune();
  }

  void removeNode() {
    if (m_nodes.empty()) return;
    const Ref<Node> node = m_nodes[below(m_nodes.size())];
    m_meta->MetaNodes(node->Parent()->name())->extension()->Remove(node->identifier(), false);
    m_expected.remove(*node);
    prune();
  }

  void clearLinks() {
    if (m_links.empty()) return;
    const Ref<Link> one = m_links[below(m_links.size())];
    const auto collection = below(2) == 0 ? one->source()->outgoing(one->Parent()->name())
                                          : one->Target()->Incoming(one->Parent()->name());
    const auto going = collection->copy();
    collection->Clear();
    for (const Link& link : platform::each<Link>(going)) m_expected.remove(link);
    prune();
  }

  [[nodiscard]] Ref<platform::Collection> extensionOf(const std::string& type) const {
    const bool isOfLinks = type.find('.') != std::string::npos;
    return (isOfLinks ? m_meta->MetaLinks(type) : m_meta->MetaNodes(type))->extension();
  }

  void clearType() {
    const std::string& type = kTypes[below(kTypes.size())];
    const auto extension = extensionOf(type);
    const auto going = extension->copy();
    extension->Clear();
    for (const Element& element : platform::each<Element>(going)) m_expected.remove(element);
    prune();
  }

  /// Anywhere, since reading by position remembers where it was.
  void readByPosition() {
    const std::string& type = kTypes[below(kTypes.size())];
    const auto extension = extensionOf(type);
    if (extension->Count() == 0) return;
    const auto position =
        static_cast<std::int64_t>(1 + below(static_cast<std::size_t>(extension->Count())));
    EXPECT_EQ(extension->Item(position), extension->copy()->Item(position));
  }

  Ref<Element> anyElement() {
    if (m_links.empty() || (!m_nodes.empty() && below(2) == 0)) {
      return m_nodes.empty() ? Ref<Element>() : Ref<Element>(m_nodes[below(m_nodes.size())]);
    }
    return m_links[below(m_links.size())];
  }

  void rename() {
    const Ref<Element> element = anyElement();
    if (!element) return;
    const std::string name = anyName();
    element->name(name);
    m_expected.rename(*element, name);
  }

  void identify() {
    const Ref<Element> element = anyElement();
    if (!element) return;
    const std::string id = anyId();
    if (id == element->identifier()) return;
    if (refused(element->Parent()->name(), id, [&] { element->identifier(id); })) return;
    m_expected.identify(*element, id);
  }

  void setProperty() {
    static constexpr std::array kKeys = {"scope", "Scope", "SCOPE",   "value",
                                         "own",   "oWN",   "another", "Description"};
    if (m_nodes.empty()) return;
    const Ref<Node> node = m_nodes[below(m_nodes.size())];
    const char* const key = kKeys[below(kKeys.size())];
    const Value value = anyValue();
    node->SetProperty(key, value);
    m_expected.set(*node, key, value);
  }

  /// What an element answers for, in the repository or out of it.
  static std::string answer(const Element& element) {
    std::string text = element.identifier() + " '" + element.name() + "'";
    if (const auto* node = dynamic_cast<const Node*>(&element)) {
      return text + node->GetProperty("scope").text() + node->GetProperty("own").text();
    }
    const auto& link = dynamic_cast<const Link&>(element);
    return text + link.source()->name() + ">" + link.Target()->name();
  }

  /// Elements that went are held and asked again later; their ends are nodes that may be renamed.
  void prune() {
    const auto isGone = [&](const auto& element) {
      if (element->Parent()->find(element->identifier()) == element) return false;
      if (dynamic_cast<const Node*>(element.get())) m_gone.emplace_back(element, answer(*element));
      m_held.emplace_back(element);
      return true;
    };
    std::erase_if(m_links, isGone);
    std::erase_if(m_nodes, isGone);
  }

  void hear(const Change& change) {
    EXPECT_EQ(change.number, m_meta->changeCount());
    const Element& element = change.element;
    const std::string type = element.Parent()->name();
    switch (change.kind) {
      case Change::Kind::nodeMade:
        return m_heard.addNode(element, type, element.name(), element.identifier());
      case Change::Kind::linkMade: {
        const auto& link = dynamic_cast<const Link&>(element);
        return m_heard.addLink(element, type, link.name(), link.identifier(), *link.source(),
                               *link.Target());
      }
      case Change::Kind::nodeRemoved:
      case Change::Kind::linkRemoved:
        return m_heard.remove(element);
      case Change::Kind::renamed:
        EXPECT_NE(change.before, change.after);
        return m_heard.rename(element, change.after.string());
      case Change::Kind::identified:
        EXPECT_NE(change.before, change.after);
        return m_heard.identify(element, change.after.string());
      case Change::Kind::propertySet:
        EXPECT_NE(change.before, change.after);
        return m_heard.set(element, change.key, change.after);
    }
  }

  std::mt19937 m_random;
  Ref<Meta> m_meta = platform::make<Meta>();
  StoreModel m_expected;
  StoreModel m_heard;
  std::vector<Ref<Node>> m_nodes;
  std::vector<Ref<Link>> m_links;
  std::vector<std::pair<Ref<Element>, std::string>> m_gone;
  std::vector<Ref<Element>> m_held;
  std::optional<platform::Connection> m_connection;
};

TEST(RandomWalk, endsWhereTheModelEnds) {
  for (const unsigned seed : {1U, 2U, 3U, 4U, 5U, 6U}) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Walk walk(seed);
    for (int i = 0; i < 1500; ++i) {
      walk.step();
      if (i % 100 == 99) walk.compare();
      ASSERT_FALSE(::testing::Test::HasFailure()) << "at step " << i;
    }
  }
}

}  // namespace
}  // namespace brisel::store::test
