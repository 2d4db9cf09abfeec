#include "tools/MatrixBrowser.h"

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <utility>

#include "platform/Error.h"
#include "platform/Shell.h"
#include "platform/ValueArray.h"
#include "platform/ValueRecord.h"
#include "tools/MatrixWords.h"

namespace brisel::tools {

using platform::Error;
using platform::ErrorNumber;
using platform::make;
using platform::Node;
using platform::Ref;
using platform::Value;
using platform::ValueArray;
using repository::RelationshipKind;

namespace {

constexpr const char* kProgId = "BriselUtility.MatrixBrowser";

RelationshipKind requireKind(std::string_view word) {
  if (const auto kind = kindOf(word)) return *kind;
  throw Error(ErrorNumber::invalidCall, "Not a kind of relationship: " + std::string(word));
}

std::array<bool, Matrix::kKinds> kindsIn(std::string_view words) {
  std::array<bool, Matrix::kKinds> kinds{};
  bool any = false;
  std::istringstream stream{std::string(words)};
  for (std::string word; stream >> word; any = true) {
    kinds[static_cast<std::size_t>(requireKind(word))] = true;
  }
  if (!any) kinds.fill(true);
  return kinds;
}

}  // namespace

MatrixBrowser::MatrixBrowser(platform::ComponentRegistry& registry) : m_registry(registry) {
  m_connections.push_back(m_relations.ClassesChanged.connect([this] {
    m_matrix.classesChanged();
    changed();
  }));
  m_connections.push_back(m_relations.RelationshipsChanged.connect([this] {
    m_matrix.relationshipsChanged();
    changed();
  }));
}

void MatrixBrowser::SetRepository(platform::MetaRepository* repository) {
  if (repository) {
    const Ref<Object> generator = m_registry.create("BriselUtility.UUIDGenerator");
    generator->call("Init", {"MatrixBrowser"});
    m_model = make<repository::CLSRepository>();
    m_model->Create(generator.get());
    m_model->SetRepository(repository);
  } else {
    m_model = {};
  }
  m_matrix.sort();
  m_cursor = {};
  m_relations.follow(repository);
  CurrentChanged();
}

void MatrixBrowser::PopUp() {
  if (std::exchange(m_isOpen, true)) return FrontAsked();
  m_registry.shell().showTool(kProgId, *this);
}

void MatrixBrowser::Close() {
  const Ref<Object> held(this);  // whoever hears of it may let go
  const bool wasOpen = std::exchange(m_isOpen, false);
  if (!wasOpen && !m_model) return;
  SetRepository(nullptr);
  Closed();
}

// ---- what is shown ------------------------------------------------------------------------------

void MatrixBrowser::changed() {
  if (!std::exchange(m_isTold, true)) Changed();
}

const Matrix& MatrixBrowser::matrix() {
  settle();
  return m_matrix;
}

void MatrixBrowser::settle() {
  m_isTold = false;
  if (!m_matrix.settle()) return;
  // The current cell stays with its classes, or else where it is.
  const auto follow = [this](Index& place, NodeRef& shown) {
    const Index now = place > 0 && shown ? numberOf(*shown) : 0;
    place = clampedTo(now > 0 ? now : place);
    shown = classAt(place);
  };
  const std::pair before(m_cursor.row, m_cursor.column);
  follow(m_cursor.row, m_cursor.rowClass);
  follow(m_cursor.column, m_cursor.columnClass);
  if (before != std::pair(m_cursor.row, m_cursor.column)) CurrentChanged();
}

MatrixBrowser::Index MatrixBrowser::clampedTo(Index place) const {
  return std::clamp<Index>(place, 0, static_cast<Index>(m_matrix.size()));
}

MatrixBrowser::NodeRef MatrixBrowser::classAt(Index place) const {
  return place < 1 ? NodeRef() : m_matrix.at(placeOf(place)).node;
}

void MatrixBrowser::requireCell(Index row, Index column) {
  settle();
  const auto count = static_cast<Index>(m_matrix.size());
  if (row >= 1 && row <= count && column >= 1 && column <= count) return;
  throw Error(ErrorNumber::subscript, "There is no cell in row " + std::to_string(row) +
                                          " and column " + std::to_string(column) +
                                          ": the matrix has " + std::to_string(count) + " of each");
}

MatrixBrowser::Index MatrixBrowser::numberOf(const Node& shown) {
  settle();
  const auto found = m_relations.classes().find(&shown);
  const bool isShown =
      found != m_relations.classes().end() && found->second->place != ModelRelations::kNowhere;
  return isShown ? static_cast<Index>(found->second->place) + 1 : 0;
}

Ref<platform::Collection> MatrixBrowser::Rows() {
  settle();
  auto rows = make<platform::ObjectList>();
  rows->reserve(m_matrix.size());
  for (std::size_t i = 0; i < m_matrix.size(); ++i) rows->add(m_matrix.at(i).node);
  return rows;
}

Ref<ValueArray> MatrixBrowser::Cell(Index row, Index column) {
  requireCell(row, column);
  std::vector<Value> found;
  for (const Matrix::Mark& mark : m_matrix.cell(placeOf(row), placeOf(column))) {
    const Node& node = *mark.relationship->node;
    found.emplace_back(make<platform::ValueRecord>(
        std::vector<platform::ValueRecord::Field>{{"identifier", node.identifier()},
                                                  {"kind", wordOf(mark.relationship->kind)},
                                                  {"forward", mark.forward},
                                                  {"name", node.name()},
                                                  {"text", sentenceOn(*mark.relationship)}}));
  }
  return make<ValueArray>(std::move(found));
}

std::string MatrixBrowser::Words(Index row, Index column) {
  settle();
  if (row == 0 && column == 0) return {};
  if (row == 0 || column == 0) {
    const Index place = std::max(row, column);
    requireCell(place, place);
    return sentenceOn(m_matrix.at(placeOf(place)));
  }
  requireCell(row, column);
  std::string text;
  for (const Matrix::Mark& mark : m_matrix.cell(placeOf(row), placeOf(column))) {
    text += (text.empty() ? "" : "\n") + sentenceOn(*mark.relationship);
  }
  if (!text.empty()) return text;
  const std::string rowTitle = titleOf(*classAt(row));
  if (row == column) return rowTitle + " has no relationship with itself";
  return "Nothing joins " + rowTitle + " and " + titleOf(*classAt(column));
}

Ref<ValueArray> MatrixBrowser::Groups() {
  settle();
  std::vector<Value> groups;
  for (std::size_t i = 0; m_matrix.hasGroups() && i < m_matrix.size(); ++i) {
    groups.emplace_back(static_cast<Index>(m_matrix.at(i).group));
  }
  return make<ValueArray>(std::move(groups));
}

MatrixBrowser::Index MatrixBrowser::Incomplete() const {
  return static_cast<Index>(m_relations.incompleteCount());
}

std::vector<std::string> MatrixBrowser::stereotypes() const {
  std::set<std::string> names;
  for (const auto& [key, entry] : m_relations.classes()) {
    if (!entry->stereotype.empty()) names.insert(entry->stereotype);
  }
  return {names.begin(), names.end()};
}

Ref<ValueArray> MatrixBrowser::Stereotypes() const {
  std::vector<Value> values;
  for (const std::string& name : stereotypes()) values.emplace_back(name);
  return make<ValueArray>(std::move(values));
}

// ---- what is chosen to be shown -----------------------------------------------------------------

void MatrixBrowser::options(const Matrix::Options& options) {
  m_matrix.options(options);
  changed();
}

void MatrixBrowser::change(const std::function<void(Matrix::Options&)>& set) {
  Matrix::Options wanted = options();
  set(wanted);
  options(wanted);
}

void MatrixBrowser::Filter(Text name, Text stereotype, Text kinds) {
  change([&](Matrix::Options& wanted) {
    wanted.name = name;
    wanted.stereotype = stereotype;
    wanted.kinds = kindsIn(kinds);
  });
}

void MatrixBrowser::NameFilter(Text words) {
  change([&](Matrix::Options& wanted) { wanted.name = words; });
}

void MatrixBrowser::StereotypeFilter(Text name) {
  change([&](Matrix::Options& wanted) { wanted.stereotype = name; });
}

void MatrixBrowser::KindFilter(Text kinds) {
  change([&](Matrix::Options& wanted) { wanted.kinds = kindsIn(kinds); });
}

std::string MatrixBrowser::KindFilter() const {
  std::string words;
  for (std::size_t i = 0; i < Matrix::kKinds; ++i) {
    if (!options().kinds[i]) continue;
    words += (words.empty() ? "" : " ") + std::string(wordOf(static_cast<RelationshipKind>(i)));
  }
  return words;
}

void MatrixBrowser::Neighbours(bool shown) {
  change([&](Matrix::Options& wanted) { wanted.neighbours = shown; });
}

void MatrixBrowser::RelatedOnly(bool related) {
  change([&](Matrix::Options& wanted) { wanted.relatedOnly = related; });
}

void MatrixBrowser::Sort(Text order) {
  if (order != "name" && order != "clusters") {
    throw Error(ErrorNumber::invalidCall,
                "Not an order of classes: " + std::string(order) + "; name and clusters are");
  }
  Matrix::Options wanted = options();
  wanted.order = order == "name" ? Matrix::Order::name : Matrix::Order::clusters;
  m_matrix.options(std::move(wanted));
  m_matrix.sort();
  changed();
}

std::string MatrixBrowser::Order() const {
  return options().order == Matrix::Order::name ? "name" : "clusters";
}

// ---- editing ------------------------------------------------------------------------------------

std::string MatrixBrowser::Objection(Text kind, Index row, Index column) {
  requireCell(row, column);
  if (requireKind(kind) != RelationshipKind::generalization) return {};
  const NodeRef sub = classAt(row);
  const NodeRef super = classAt(column);
  for (const ModelRelations::Relationship* each : m_matrix.at(placeOf(row)).relationships) {
    const bool isSame = each->kind == RelationshipKind::generalization &&
                        each->source->node == sub && each->target->node == super;
    if (isSame) return titleOf(*sub) + " is a sub class of " + titleOf(*super) + " already";
  }
  return repository::inheritanceRefusal(*sub, *super);
}

MatrixBrowser::NodeRef MatrixBrowser::Make(Text kind, Index row, Index column) {
  const std::string objection = Objection(kind, row, column);
  if (!objection.empty()) throw Error(ErrorNumber::invalidCall, objection);
  NodeRef made =
      repository::makeRelationship(*m_model, requireKind(kind), m_model->UUID(),
                                   classAt(row)->identifier(), classAt(column)->identifier());
  Edited(made->Parent()->name(), made->identifier());
  return made;
}

void MatrixBrowser::Delete(Index row, Index column, Text identifier) {
  requireCell(row, column);
  std::vector<NodeRef> doomed;
  for (const Matrix::Mark& mark : m_matrix.cell(placeOf(row), placeOf(column))) {
    const NodeRef& node = mark.relationship->node;
    if (identifier.empty() || node->identifier() == identifier) doomed.push_back(node);
  }
  if (doomed.empty() && !identifier.empty()) {
    throw Error(ErrorNumber::notFound, "The cell in row " + std::to_string(row) + " and column " +
                                           std::to_string(column) + " shows no relationship " +
                                           std::string(identifier));
  }
  for (const NodeRef& node : doomed) {
    // Whoever heard of the one before may have taken this one along.
    if (m_relations.find(*node)) deleteOne(*node);
  }
}

void MatrixBrowser::deleteOne(Node& relationship) {
  const std::string type = relationship.Parent()->name();
  const std::string identifier = relationship.identifier();
  repository::deleteRelationship(*m_model, relationship);
  Edited(type, identifier);
}

}  // namespace brisel::tools
