#include "controls/ListView.h"

#include "controls/Row.h"
#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::controls {

using platform::each;
using platform::Link;
using platform::Node;
using platform::Ref;

namespace {

[[noreturn]] void refuseFill() {
  throw platform::CallError(platform::ErrorNumber::typeMismatch,
                            "Wrong kind of argument 1 of fill: a link type or its links expected");
}

}  // namespace

// ---- columns, icon, tick boxes ------------------------------------------------------------------

void ListView::clearColumns() {
  m_columns.clear();
  Changed();
}

void ListView::addColumn(std::string_view key, std::string_view caption, double width) {
  m_columns.push_back({std::string(key), std::string(caption), width});
  Changed();
}

void ListView::setIcon(std::string_view file, std::string_view key) {
  m_icon = {std::string(file), std::string(key)};
  Changed();
}

void ListView::tickBoxes(bool on) {
  if (m_tickBoxes == on) return;
  m_tickBoxes = on;
  for (Line& line : m_rows) line.ticked = false;
  Changed();
}

// ---- rows ---------------------------------------------------------------------------------------

void ListView::fill(platform::Collection& links, Node& owner) {
  platform::Collection::Cursor cursor;
  links.advance(cursor);
  const auto* first = dynamic_cast<const Link*>(cursor.element);
  const Ref<platform::MetaType> type = first ? first->Parent() : nullptr;
  // All links of a type: then those of the owner are known without walking the others.
  if (type && type->extension()->Count() == links.Count()) return fill(*type, owner);
  showLinks(&links, owner);
}

void ListView::fill(platform::MetaType& linkType, Node& owner) {
  showLinks(owner.outgoing(linkType.name()), owner);
}

void ListView::showLinks(const Ref<platform::Collection>& links, const Node& owner) {
  std::vector<Line> rows;
  for (platform::Object& object : each<platform::Object>(links)) {
    auto* link = dynamic_cast<Link*>(&object);
    if (!link) refuseFill();
    if (link->source() == &owner) rows.push_back({link, false});
  }
  resetRows(std::move(rows));
}

void ListView::resetRows(std::vector<Line> rows) {
  const bool hadCurrent = m_current.has_value();
  m_current.reset();
  m_rows = std::move(rows);
  RowsReset();
  if (hadCurrent) CurrentChanged();
}

void ListView::fillFrom(platform::Object& links, Node& owner) {
  if (auto* all = dynamic_cast<platform::Collection*>(&links)) return fill(*all, owner);
  auto* type = dynamic_cast<platform::MetaType*>(&links);
  if (!type) refuseFill();
  fill(*type, owner);
}

void ListView::clearRows() { resetRows({}); }

void ListView::addRow(Link& link) {
  m_rows.push_back({&link, false});
  RowInserted(m_rows.size() - 1);
}

void ListView::refreshRow(Link& link) {
  if (const auto row = find(&link)) RowChanged(*row);
}

void ListView::removeRow(Link& link) {
  const auto row = find(&link);
  if (!row) return;
  const bool wasCurrent = m_current == row;
  m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(*row));
  if (wasCurrent) {
    m_current.reset();
  } else if (m_current && *m_current > *row) {
    --*m_current;
  }
  RowRemoved(*row);
  if (wasCurrent) CurrentChanged();
}

std::optional<std::size_t> ListView::find(const Link* link) const {
  for (std::size_t row = 0; row < m_rows.size(); ++row) {
    if (m_rows[row].link == link) return row;
  }
  return {};
}

// ---- selection and ticks ------------------------------------------------------------------------

void ListView::current(std::optional<std::size_t> row) {
  if (m_current == row) return;
  m_current = row;
  CurrentChanged();
}

Ref<Link> ListView::selectedRow() const {
  if (!m_current) return {};
  const LinkRef& link = m_rows[*m_current].link;
  return shownNode(*link) ? link : LinkRef();
}

void ListView::select(Link* link) { current(link ? find(link) : std::nullopt); }

Ref<platform::Collection> ListView::tickedRows() const {
  auto ticked = platform::make<platform::ObjectList>();
  for (const Line& line : m_rows) {
    if (line.ticked && shownNode(*line.link)) ticked->add(line.link);
  }
  return ticked;
}

void ListView::tickAll() {
  if (!m_tickBoxes) return;
  for (std::size_t row = 0; row < m_rows.size(); ++row) m_rows[row].ticked = true;
  Changed();
  TicksChanged();
}

// ---- what a person does -------------------------------------------------------------------------

std::size_t ListView::checked(std::int64_t row) const {
  if (row < 1 || row > static_cast<std::int64_t>(m_rows.size())) {
    throw platform::Error(
        platform::ErrorNumber::subscript,
        "No row " + std::to_string(row) + " in a list of " + std::to_string(m_rows.size()));
  }
  return static_cast<std::size_t>(row - 1);
}

void ListView::Select(std::int64_t row) {
  const std::size_t index = checked(row);
  if (!Enabled()) return;
  const LinkRef link = m_rows[index].link;
  current(index);
  if (shownNode(*link)) RowSelected(*link);
}

void ListView::Open(std::int64_t row) {
  const std::size_t index = checked(row);
  if (!Enabled()) return;
  const LinkRef link = m_rows[index].link;
  current(index);
  if (shownNode(*link)) RowOpened(*link);
}

void ListView::Tick(std::int64_t row) { setTick(row, true); }
void ListView::Untick(std::int64_t row) { setTick(row, false); }

void ListView::setTick(std::int64_t row, bool ticked) {
  Line& line = m_rows[checked(row)];
  if (!m_tickBoxes) {
    throw platform::Error(platform::ErrorNumber::invalidCall, "The list has no tick boxes");
  }
  if (!Enabled() || line.ticked == ticked) return;
  line.ticked = ticked;
  RowChanged(static_cast<std::size_t>(row - 1));
  TicksChanged();
}

// ---- what is seen -------------------------------------------------------------------------------

Ref<platform::Collection> ListView::Rows() const {
  std::vector<std::string> keys;
  for (const Column& column : m_columns) keys.push_back(column.key);
  const auto shared = std::make_shared<const std::vector<std::string>>(std::move(keys));
  auto rows = platform::make<platform::ObjectList>();
  rows->reserve(m_rows.size());
  for (const Line& line : m_rows) rows->add(platform::make<Row>(line.link, shared));
  return rows;
}

std::string ListView::cell(std::size_t row, std::size_t column) const {
  const Ref<Node> node = shownNode(*m_rows[row].link);
  return node ? node->GetProperty(m_columns[column].key).text() : std::string();
}

const platform::MemberTable& ListView::memberTable() const {
  using L = ListView;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<L>(Control::memberTable())
          .method("clearColumns", &L::clearColumns)
          .method("addColumn", &L::addColumn)
          .method("setIcon", &L::setIcon)
          .property("tickBoxes", &L::tickBoxes, &L::tickBoxes)
          .method("fill", &L::fillFrom)
          .method("clearRows", &L::clearRows)
          .method("addRow", &L::addRow)
          .method("refreshRow", &L::refreshRow)
          .method("removeRow", &L::removeRow)
          .property("selectedRow", &L::selectedRow)
          .method("select", &L::select)
          .property("tickedRows", &L::tickedRows)
          .method("tickAll", &L::tickAll)
          .property("Rows", &L::Rows)
          .method("Select", &L::Select)
          .method("Open", &L::Open)
          .method("Tick", &L::Tick)
          .method("Untick", &L::Untick)
          .event("RowSelected", &L::RowSelected)
          .event("RowOpened", &L::RowOpened)
          .event("TicksChanged", &L::TicksChanged)
          .build();
  return kTable;
}

}  // namespace brisel::controls
