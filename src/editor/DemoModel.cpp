// A shop, in tables: what a person reads there is the demo's whole purpose.

#include "editor/DemoModel.h"

#include <map>
#include <string_view>

namespace brisel::editor {

using platform::Node;
using platform::Ref;
namespace types = platform::types;

namespace {

using Text = std::string_view;

struct ClassRow {
  Text name;
  Text stereotype;
  bool isAbstract;
  Text description;
};

constexpr ClassRow kClasses[] = {
    {"Party", "", true, "Anyone the shop deals with. There are only customers and employees."},
    {"Customer", "", false, "Somebody who has bought something, or is about to."},
    {"Employee", "", false, "Somebody who packs, answers and now and then refunds."},
    {"Order", "entity", false, "What a customer wants, from the click to the doorbell."},
    {"OrderLine", "", false, "So many pieces of one product, at the price of that day."},
    {"Product", "entity", false, "A thing on the shelf."},
    {"Category", "", false, "A shelf, which may stand inside another."},
    {"ShoppingCart", "", false, "What a customer may still change their mind about."},
    {"Payment", "", true, "Money on its way to the shop."},
    {"CardPayment", "", false, "By a card, which the bank has to like."},
    {"BankTransfer", "", false, "By the bank, in its own time."},
    {"OrderState", "COM::Enum", false, "How far an order has come."},
    {"Money", "COM::TypeDef", false, "An amount that knows its currency."},
    {"Priced", "COM::Interface", false, "Whatever has a price."},
    {"Checkout", "COM::CoClass", false, "Turns a cart into an order."},
    {"PriceRules", "COM::Module", false, "What a piece costs when you take a dozen."},
    {"ShopScripting", "COM::DispInterface", false, "The shop as scripts see it."},
    {"Decimal", "COM::Builtin", false,
     "A number with a point. Built-in types are hidden until they are asked for."},
};

enum Flags : unsigned {
  kPlain = 0,
  kStatic = 1,
  kFinal = 2,
  kAbstract = 4,
  kConstructor = 8,
  kTransient = 16,
  kVolatile = 32,
  kSynchronized = 64,
};

struct AttributeRow {
  Text owner;
  Text name;
  Text type;
  Text scope = "private";
  Text value = "";
  unsigned flags = kPlain;
  Text description = "";
};

constexpr AttributeRow kAttributes[] = {
    {"Party", "name", "String", "protected"},
    {"Party", "email", "String", "protected", "", kPlain, "Where news are sent to."},
    {"Customer", "since", "Date", "private", "", kFinal},
    {"Customer", "points", "Integer", "private", "0", kPlain, "A hundred make a free delivery."},
    {"Employee", "badge", "Integer", "private", "", kFinal},
    {"Order", "number", "Integer", "public", "", kFinal, "Printed on the parcel."},
    {"Order", "placed", "Date"},
    {"Order", "state", "OrderState", "private", "open"},
    {"Order", "nextNumber", "Integer", "private", "1", kStatic | kVolatile},
    {"OrderLine", "quantity", "Integer", "private", "1"},
    {"OrderLine", "price", "Money", "private", "", kPlain, "Of one piece, when it was ordered."},
    {"Product", "title", "String", "public"},
    {"Product", "price", "Money"},
    {"Product", "stock", "Integer", "protected", "0"},
    {"Category", "title", "String", "public"},
    {"ShoppingCart", "touched", "Date", "private", "", kTransient},
    {"Payment", "amount", "Money", "protected"},
    {"CardPayment", "lastDigits", "String"},
    {"BankTransfer", "iban", "String"},
    {"OrderState", "open", "Integer", "public", "0"},
    {"OrderState", "paid", "Integer", "public", "1"},
    {"OrderState", "sent", "Integer", "public", "2"},
    {"OrderState", "returned", "Integer", "public", "3"},
    {"Money", "amount", "Decimal", "public"},
    {"Money", "currency", "String", "public", "EUR"},
    {"Priced", "smallestPrice", "Money", "public", "0.01", kStatic | kFinal},
    {"Checkout", "attempts", "Integer", "private", "0"},
    {"PriceRules", "dozenRebate", "Decimal", "public", "0.1", kStatic},
    {"ShopScripting", "version", "Integer", "public", "3", kFinal},
    {"Decimal", "digits", "Integer"},
};

struct OperationRow {
  Text owner;
  Text name;
  Text type;
  Text parameters = "";  ///< "name:Type", separated by blanks
  unsigned flags = kPlain;
  Text scope = "public";
  Text description = "";
};

constexpr OperationRow kOperations[] = {
    {"Party", "address", "String", "", kAbstract},
    {"Customer", "Customer", "Customer", "name:String", kConstructor},
    {"Customer", "rank", "Integer", "other:Customer"},
    {"Employee", "refund", "Boolean", "order:Order amount:Money"},
    {"Order", "total", "Money", "", kPlain, "public", "The sum of the lines."},
    {"Order", "add", "OrderLine", "product:Product quantity:Integer"},
    {"Order", "advance", "void", "to:OrderState", kSynchronized, "protected"},
    {"OrderLine", "total", "Money"},
    {"Product", "price", "Money", "quantity:Integer"},
    {"Product", "reserve", "Boolean", "quantity:Integer", kSynchronized},
    {"Category", "path", "String", "separator:String"},
    {"ShoppingCart", "put", "void", "product:Product"},
    {"ShoppingCart", "clear", "void"},
    {"Payment", "settle", "Boolean", "", kAbstract},
    {"CardPayment", "settle", "Boolean"},
    {"BankTransfer", "settle", "Boolean"},
    {"OrderState", "isFinal", "Boolean"},
    {"Money", "plus", "Money", "other:Money", kFinal},
    {"Priced", "price", "Money", "quantity:Integer", kAbstract},
    {"Checkout", "checkOut", "Order", "cart:ShoppingCart payment:Payment"},
    {"PriceRules", "rebate", "Decimal", "product:Product quantity:Integer", kStatic},
    {"ShopScripting", "findOrder", "Order", "number:Integer"},
    {"Decimal", "round", "Decimal", "digits:Integer", kFinal},
};

enum class Kind { association, shared, composite, generalization };

struct EndRow {
  Text role = "";
  Text multiplicity = "";
  bool navigable = false;
};

/// The source is the whole and the sub class.
struct RelationshipRow {
  Kind kind;
  Text name;
  Text source;
  Text target;
  EndRow from = {};
  EndRow to = {};
  Text stereotype = "";
  Text description = "";
  Text reverseName = "";
  bool isDerived = false;
};

constexpr RelationshipRow kRelationships[] = {
    {Kind::generalization, "", "Customer", "Party"},
    {Kind::generalization, "", "Employee", "Party"},
    {Kind::generalization, "", "CardPayment", "Payment"},
    {Kind::generalization, "", "BankTransfer", "Payment"},
    {Kind::generalization, "", "Product", "Priced", {}, {}, "realize"},
    {Kind::generalization, "", "Checkout", "ShopScripting", {}, {}, "realize"},
    {Kind::association,
     "places",
     "Customer",
     "Order",
     {"buyer", "1", true},
     {"orders", "*", true},
     "",
     "A customer sees their orders, an order knows who pays for it.",
     "placed by"},
    {Kind::association,
     "recommends",
     "Customer",
     "Customer",
     {"", "*"},
     {"friend", "*", true},
     "",
     "Customers bring customers: a line from a class to itself."},
    {Kind::composite,
     "",
     "Order",
     "OrderLine",
     {"order", "1"},
     {"lines", "1..*"},
     "",
     "No line outlives its order."},
    {Kind::composite, "", "Order", "Payment", {"", "1"}, {"payment", "0..1"}},
    {Kind::association, "", "OrderLine", "Product", {"", "*"}, {"product", "1", true}},
    {Kind::shared,
     "",
     "ShoppingCart",
     "Product",
     {"", "*"},
     {"", "*"},
     "",
     "A product may lie in many carts, and lives on when they are emptied."},
    {Kind::association, "fills", "Customer", "ShoppingCart", {"", "1"}, {"cart", "0..1", true}},
    {Kind::shared, "", "Category", "Product", {"", "1..*"}, {"", "*"}},
    {Kind::association,
     "contains",
     "Category",
     "Category",
     {"parent", "0..1"},
     {"parts", "*", true}},
    {Kind::association,
     "bought",
     "Customer",
     "Product",
     {"", "*"},
     {"favourites", "*"},
     "",
     "Follows from orders and their lines.",
     "",
     true},
    {Kind::association, "serves", "Employee", "Order", {"clerk", "0..1"}, {"", "*"}},
    {Kind::association, "", "Order", "OrderState", {}, {"state", "1", true}},
    {Kind::association, "", "Checkout", "ShoppingCart", {}, {"", "", true}, "use"},
    {Kind::association, "", "Checkout", "PriceRules", {}, {"", "", true}, "use"},
    {Kind::association, "", "Priced", "Money", {}, {"", "", true}, "dependency"},
};

/// Makes one shop.
class Builder {
 public:
  explicit Builder(repository::CLSRepository& model) : m_model(model) {}

  DemoModel build() {
    for (const ClassRow& row : kClasses) makeClass(row);
    for (const AttributeRow& row : kAttributes) makeAttribute(row);
    for (const OperationRow& row : kOperations) makeOperation(row);
    for (const RelationshipRow& row : kRelationships) makeRelationship(row);
    return std::move(m_made);
  }

 private:
  void makeClass(const ClassRow& row) {
    const std::string& id = m_made.classes.emplace_back(m_model.UUID());
    const auto made = m_model.MakeClass(row.name, id, row.description, "", "", "public");
    if (row.isAbstract) made->SetProperty("abstract", true);
    setStereotype(*made, row.stereotype);
    m_classes[row.name] = id;
  }

  void makeAttribute(const AttributeRow& row) {
    Ref<platform::Link> link;
    const auto has = [&](unsigned flag) { return (row.flags & flag) != 0; };
    const auto made = m_model.AddAttribute(m_classes.at(row.owner), row.name, "", has(kFinal),
                                           row.scope, has(kStatic), has(kTransient), row.value,
                                           has(kVolatile), typeOf(row.type), link);
    describe(*made, row.description);
  }

  void makeOperation(const OperationRow& row) {
    Ref<platform::Link> link;
    const auto has = [&](unsigned flag) { return (row.flags & flag) != 0; };
    const auto made = m_model.AddOperation(
        m_classes.at(row.owner), row.name, "", "", has(kConstructor), has(kFinal), false, row.scope,
        has(kStatic), has(kSynchronized), typeOf(row.type), link);
    if (has(kAbstract)) made->SetProperty("abstract", true);
    describe(*made, row.description);
    for (Text rest = row.parameters; !rest.empty();) {
      const Text parameter = rest.substr(0, rest.find(' '));
      rest.remove_prefix(std::min(rest.size(), parameter.size() + 1));
      const std::size_t colon = parameter.find(':');
      m_model.AddParameterS(made->identifier(), parameter.substr(0, colon),
                            typeOf(parameter.substr(colon + 1)), link);
    }
  }

  void makeRelationship(const RelationshipRow& row) {
    const std::string& id = m_made.relationships.emplace_back(m_model.UUID());
    const std::string& source = m_classes.at(row.source);
    const std::string& target = m_classes.at(row.target);
    Ref<Node> made;
    if (row.kind == Kind::generalization) {
      made = m_model.MakeGeneralization(id, target, source);
    } else if (row.kind == Kind::association) {
      made = m_model.MakeAssociation(row.name, id, source, target);
    } else {
      made = m_model.MakeAggregation(row.name, id, source, target);
      made->SetProperty("isComposite", row.kind == Kind::composite);
    }
    setStereotype(*made, row.stereotype);
    describe(*made, row.description);
    if (row.kind != Kind::generalization) setEnds(*made, row);
  }

  static void setEnds(Node& made, const RelationshipRow& row) {
    made.SetProperty("SourceRoleName", row.from.role);
    made.SetProperty("SourceMultiplicity", row.from.multiplicity);
    made.SetProperty("SourceCardinality", row.from.multiplicity);
    made.SetProperty("SourceNavigable", row.from.navigable);
    made.SetProperty("TargetRolename", row.to.role);
    made.SetProperty("TargetMultiplicity", row.to.multiplicity);
    made.SetProperty("TargetCardinality", row.to.multiplicity);
    made.SetProperty("TargetNavigable", row.to.navigable);
    made.SetProperty("ReverseName", row.reverseName);
    made.SetProperty("IsDerived", row.isDerived);
  }

  static void describe(Node& made, Text description) {
    if (!description.empty()) made.SetProperty("Description", description);
  }

  void setStereotype(Node& made, Text name) {
    if (name.empty()) return;
    auto stereotype = m_model.SearchObject(types::kStereotype, "Name", std::string(name));
    if (!stereotype) stereotype = m_model.MakeStereotype(name, m_model.UUID(), "");
    m_model.SetStereotype(made, stereotype.get());
  }

  const std::string& typeOf(Text name) {
    const auto [found, isNew] = m_types.try_emplace(name);
    if (isNew) {
      auto type = m_model.SearchObject(types::kDataType, "Name", std::string(name));
      if (!type) type = m_model.MakeDataType(name, "", "");
      found->second = type->identifier();
    }
    return found->second;
  }

  repository::CLSRepository& m_model;
  std::map<Text, std::string> m_classes;  ///< identifier by name
  std::map<Text, std::string> m_types;
  DemoModel m_made;
};

}  // namespace

DemoModel makeDemoModel(repository::CLSRepository& model) { return Builder(model).build(); }

}  // namespace brisel::editor
