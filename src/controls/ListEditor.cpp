#include "controls/ListEditor.h"

#include <algorithm>

#include "controls/Row.h"
#include "platform/Error.h"
#include "platform/MemberTableOf.h"
#include "platform/Shell.h"
#include "platform/Text.h"

namespace brisel::controls {

using platform::Change;
using platform::each;
using platform::Error;
using platform::ErrorNumber;
using platform::Node;
using platform::Ref;

namespace {

/// The name without blanks around it; an Error when nothing is left.
std::string checkedName(std::string_view name) {
  const std::string_view text = platform::trimmed(name);
  if (text.empty()) throw Error(ErrorNumber::invalidCall, "The name must not be empty");
  return std::string(text);
}

std::vector<Ref<platform::Link>> incomingLinks(const Node& node) {
  std::vector<Ref<platform::Link>> links;
  for (const auto& type : each<platform::MetaType>(node.Parent()->Incoming())) {
    for (platform::Link& link : each<platform::Link>(node.Incoming(type.name()))) {
      links.emplace_back(&link);
    }
  }
  return links;
}

std::string question(const Node& node, std::size_t uses) {
  const std::string times = uses == 1 ? "once" : std::to_string(uses) + " times";
  return "\"" + node.name() + "\" is used " + times + ". Remove it all the same?";
}

}  // namespace

// ---- the protocol -------------------------------------------------------------------------------

void ListEditor::repository(platform::MetaRepository* repository) {
  deinit();
  m_repository = repository;
}

void ListEditor::open(std::string_view type) {
  if (!m_repository) {
    throw Error(ErrorNumber::objectMissing, "The list editor has no repository");
  }
  m_type = type;
  m_following = m_repository->onChange([this](const Change& change) { follow(change); });
  init();
}

void ListEditor::init() {
  m_nodes.clear();
  if (!m_type.empty()) {
    for (const auto& type : each<platform::MetaType>(m_repository->nodeTypes())) {
      if (type.name() != m_type) continue;
      for (Node& node : each<Node>(type.extension())) m_nodes.emplace_back(&node);
    }
  }
  RowsReset();
}

void ListEditor::deinit() {
  m_following.disconnect();
  m_type.clear();
  init();
}

void ListEditor::destroy() {
  repository(nullptr);
  m_generator = nullptr;
}

// ---- following the repository -------------------------------------------------------------------

void ListEditor::follow(const Change& change) {
  auto* node = dynamic_cast<Node*>(&change.element);
  if (!node || node->Parent()->name() != m_type) return;
  const auto row = find(*node);
  switch (change.kind) {
    case Change::Kind::nodeMade:
      // A listener before this one may have removed it, or have had the list read again.
      if (row || !isInRepository(*node)) return;
      m_nodes.emplace_back(node);
      return RowInserted(m_nodes.size() - 1);
    case Change::Kind::nodeRemoved:
      if (!row) return;
      m_nodes.erase(m_nodes.begin() + static_cast<std::ptrdiff_t>(*row));
      return RowRemoved(*row);
    case Change::Kind::renamed:
    case Change::Kind::identified:
      if (row) RowChanged(*row);
      return;
    case Change::Kind::linkMade:
    case Change::Kind::linkRemoved:
    case Change::Kind::propertySet:
      return;
  }
}

std::optional<std::size_t> ListEditor::find(const platform::Element& node) const {
  const auto found = std::find_if(m_nodes.begin(), m_nodes.end(),
                                  [&](const NodeRef& one) { return one.get() == &node; });
  if (found == m_nodes.end()) return {};
  return static_cast<std::size_t>(found - m_nodes.begin());
}

// ---- rows ---------------------------------------------------------------------------------------

Ref<platform::Collection> ListEditor::Rows() const {
  static const auto kKeys =
      std::make_shared<const std::vector<std::string>>(std::vector<std::string>{"Name"});
  auto rows = platform::make<platform::ObjectList>();
  rows->reserve(m_nodes.size());
  for (const NodeRef& node : m_nodes) rows->add(platform::make<Row>(node, kKeys));
  return rows;
}

ListEditor::NodeRef ListEditor::checked(std::int64_t row) const {
  if (row < 1 || row > static_cast<std::int64_t>(m_nodes.size())) {
    throw Error(ErrorNumber::subscript, "No row " + std::to_string(row) + " in a list of " +
                                            std::to_string(m_nodes.size()));
  }
  return m_nodes[static_cast<std::size_t>(row - 1)];
}

std::int64_t ListEditor::Add(std::string_view name) {
  const std::string checked = checkedName(name);
  if (m_type.empty()) throw Error(ErrorNumber::objectMissing, "No list is open");
  if (!m_generator) {
    throw Error(ErrorNumber::objectMissing, "The list editor has no UUID generator");
  }
  if (!Enabled()) return 0;
  const std::string identifier = m_generator->call("GetUUID").text();
  const Ref<platform::MetaRepository> repository = m_repository;
  const NodeRef made = repository->MakeNode(m_type, checked, identifier);
  const auto row = find(*made);
  return row ? static_cast<std::int64_t>(*row) + 1 : 0;
}

void ListEditor::Rename(std::int64_t row, std::string_view name) {
  const NodeRef node = checked(row);
  const std::string given = checkedName(name);
  if (Enabled()) node->name(given);
}

void ListEditor::Remove(std::int64_t row) {
  const NodeRef node = checked(row);
  if (!Enabled()) return;
  if (const std::size_t uses = incomingLinks(*node).size(); uses > 0) {
    const std::string answer = m_registry.shell().showMessage(
        {"Brisel", question(*node, uses), {"Yes", "No"}, platform::MessageIcon::question});
    if (answer != "Yes") return;
  }
  // Much may have happened while the question stood there.
  const Ref<platform::MetaRepository> repository = m_repository;
  if (!repository || !isInRepository(*node)) return;
  for (const auto& link : incomingLinks(*node)) repository->RemoveAssoc(*link);
  node->Parent()->extension()->Remove(node->identifier(), false);
}

const platform::MemberTable& ListEditor::memberTable() const {
  using L = ListEditor;
  using Repository = platform::MetaRepository;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<L>(Control::memberTable())
          .method("create", &L::create)
          .property<Ref<Repository>, Repository*>("repository", &L::repository, &L::repository)
          .property<Ref<platform::Object>, platform::Object*>("generator", &L::generator,
                                                              &L::generator)
          .method("open", &L::open)
          .method("init", &L::init)
          .method("deinit", &L::deinit)
          .method("destroy", &L::destroy)
          .property("Rows", &L::Rows)
          .method("Add", &L::Add)
          .method("Rename", &L::Rename)
          .method("Remove", &L::Remove)
          .build();
  return kTable;
}

}  // namespace brisel::controls
