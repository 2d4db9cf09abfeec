#include "support/GeneratedModel.h"

#include <array>
#include <cmath>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "store/UUIDGenerator.h"

namespace brisel::benchmarks {

using platform::Node;
using platform::Ref;
using repository::CLSRepository;

namespace {

constexpr std::array<std::string_view, 20> kWords = {
    "Order",   "Invoice",  "Customer", "Account", "Payment", "Address",  "Product",
    "Catalog", "Session",  "Report",   "Message", "Channel", "Schedule", "Shipment",
    "Policy",  "Contract", "Sensor",   "Device",  "Layer",   "Document"};
constexpr std::array<std::string_view, 12> kParts = {"id",    "name",   "amount", "createdAt",
                                                     "owner", "status", "parent", "description",
                                                     "count", "value",  "limit",  "version"};
constexpr std::array<std::string_view, 12> kVerbs = {"open",   "close",    "find",   "update",
                                                     "remove", "validate", "notify", "merge",
                                                     "copy",   "load",     "store",  "calculate"};
constexpr std::array<std::string_view, 10> kTypes = {"String",   "Integer", "Boolean", "Double",
                                                     "DateTime", "Decimal", "Guid",    "Byte",
                                                     "Object",   "Void"};
constexpr std::array<std::string_view, 3> kScopes = {"public", "protected", "private"};
constexpr std::array<std::string_view, 4> kMultiplicities = {"1", "0..1", "*", "1..*"};

constexpr int kCellWidth = 4200;  // twips
constexpr int kCellHeight = 4800;
constexpr int kBoxWidth = 3000;
constexpr int kBoxHeight = 3200;

class Generator {
 public:
  Generator(CLSRepository& model, const ModelShape& shape)
      : m_model(model), m_shape(shape), m_random(shape.seed) {}

  void run() {
    for (const std::string_view type : kTypes) {
      m_types.push_back(m_model.MakeDataType(type, "", "")->identifier());
    }
    for (int i = 0; i < m_shape.classes; ++i) makeClass(i);
    for (int i = 0; i < m_shape.classes; ++i) makeRelationships(i);
  }

 private:
  std::size_t below(std::size_t limit) { return static_cast<std::size_t>(m_random() % limit); }
  template <class Pool>
  auto& any(Pool& pool) {
    return pool[below(pool.size())];
  }
  std::string mixed(std::string_view first, std::string_view second) {
    return std::string(first).append(second);
  }

  void makeClass(int index) {
    const std::string name = mixed(any(kWords), any(kWords)) + std::to_string(index);
    const auto made = m_model.MakeClass(name, m_model.UUID(), "", "", "", "public");
    m_classes.push_back(made);
    const std::string id = made->identifier();
    platform::Ref<platform::Link> link;
    for (int i = 0; i < 6; ++i) {
      m_model.AddAttribute(id, mixed(any(kParts), any(kWords)), "", false, any(kScopes), i == 5,
                           false, i == 0 ? "0" : "", false, any(m_types), link);
    }
    for (int i = 0; i < 4; ++i) {
      const auto operation =
          m_model.AddOperation(id, mixed(any(kVerbs), any(kWords)), "", "", false, false, false,
                               any(kScopes), false, false, any(m_types), link);
      m_model.AddParameterS(operation->identifier(), any(kParts), any(m_types), link);
    }
    if (m_shape.hasGeometry) placeClass(index, *made);
  }

  [[nodiscard]] int columns() const {
    return static_cast<int>(std::ceil(std::sqrt(static_cast<double>(m_shape.classes))));
  }
  [[nodiscard]] int left(int index) const { return 600 + index % columns() * kCellWidth; }
  [[nodiscard]] int top(int index) const { return 600 + index / columns() * kCellHeight; }

  void placeClass(int index, Node& made) {
    m_model.MakeGeomArea(made, top(index), left(index), kBoxWidth, kBoxHeight);
  }

  /// Half an association, 0.3 aggregations and 0.4 generalizations a class.
  void makeRelationships(int index) {
    if (index % 2 == 0) {
      const int other = neighbour(index);
      decorate(
          index, other,
          m_model.MakeAssociation(mixed(any(kVerbs), "s"), m_model.UUID(), id(index), id(other)));
    }
    if (index % 10 < 3) {
      const int part = neighbour(index);
      const auto made = m_model.MakeAggregation("", m_model.UUID(), id(index), id(part));
      made->set("isComposite", index % 10 == 0);
      decorate(index, part, made);
    }
    if (index % 5 < 2) {
      // The super class stands before the sub class, so that there are no circles.
      const int super = index == 0 ? 0 : static_cast<int>(below(static_cast<std::size_t>(index)));
      const int sub = index == 0 ? m_shape.classes - 1 : index;
      drawLine(super, sub, *m_model.MakeGeneralization(m_model.UUID(), id(super), id(sub)));
    }
  }

  [[nodiscard]] std::string id(int index) const {
    return m_classes[static_cast<std::size_t>(index)]->identifier();
  }
  /// Relationships are mostly short, as in a diagram that someone has laid out.
  int neighbour(int index) {
    const int step = 1 + static_cast<int>(below(below(8) == 0 ? m_classes.size() : 4));
    return (index + step) % m_shape.classes;
  }

  void decorate(int source, int target, const Ref<Node>& relationship) {
    Node& node = *relationship;
    node.set("SourceRoleName", mixed("", any(kParts)));
    node.set("SourceMultiplicity", std::string(any(kMultiplicities)));
    node.set("SourceNavigable", false);
    node.set("TargetRolename", mixed("", any(kParts)));
    node.set("TargetMultiplicity", std::string(any(kMultiplicities)));
    node.set("TargetNavigable", true);
    drawLine(source, target, node);
  }

  void drawLine(int from, int to, Node& relationship) {
    if (!m_shape.hasGeometry) return;
    int rank = 0;
    const auto point = [&](int x, int y, std::string_view kind) {
      m_model.MakeGeomPoint(relationship, x, y, kind, ++rank);
    };
    point(left(from) + kBoxWidth / 2, top(from) + kBoxHeight, "START");
    if (++m_lines % 3 == 0) point(left(to) + kBoxWidth / 2, top(from) + kBoxHeight + 300, "MIDDLE");
    point(left(to) + kBoxWidth / 2, top(to), "END");
  }

  CLSRepository& m_model;
  ModelShape m_shape;
  std::mt19937_64 m_random;
  std::vector<std::string> m_types;
  std::vector<Ref<Node>> m_classes;
  int m_lines = 0;
};

}  // namespace

void generateInto(CLSRepository& model, const ModelShape& shape) { Generator(model, shape).run(); }

GeneratedModel generateModel(const ModelShape& shape) {
  GeneratedModel generated = {.repository = platform::make<store::Meta>(),
                              .model = platform::make<CLSRepository>()};
  const auto identifiers = platform::make<store::UUIDGenerator>();
  identifiers->seed(shape.seed);
  generated.repository->Init();
  generated.model->Create(identifiers.get());
  generated.model->SetRepository(generated.repository.get());
  generateInto(*generated.model, shape);
  return generated;
}

}  // namespace brisel::benchmarks
