#include "canvas/Section.h"

#include <algorithm>

#include "canvas/Node.h"
#include "platform/MemberTableOf.h"
#include "platform/Text.h"

namespace brisel::canvas {

using platform::Collection;
using platform::MemberTable;
using platform::MemberTableOf;
using platform::ObjectList;
using platform::Ref;

const MemberTable& RowObject::memberTable() const {
  static const MemberTable kTable = MemberTableOf<RowObject>()
                                        .property("text", &RowObject::text)
                                        .property("kind", &RowObject::kind)
                                        .property("tag", &RowObject::tag)
                                        .build();
  return kTable;
}

void Section::visible(bool visible) {
  if (visible == m_visible) return;
  m_visible = visible;
  if (m_node) m_node->contentChanged();
}

void Section::addRow(std::string_view text, std::string_view kind, std::string_view tag) {
  m_rows.push_back({std::string(text), std::string(kind), std::string(tag)});
  m_columns = std::max(m_columns, platform::columnsOf(text));
  if (m_node && m_visible) m_node->contentChanged();
}

void Section::clearRows() {
  if (m_rows.empty()) return;
  m_rows.clear();
  m_columns = 0;
  if (m_node && m_visible) m_node->contentChanged();
}

Ref<Collection> Section::Rows() const {
  auto list = platform::make<ObjectList>();
  list->reserve(m_rows.size());
  for (const Row& row : m_rows) list->add(platform::make<RowObject>(row));
  return list;
}

const MemberTable& Section::memberTable() const {
  static const MemberTable kTable =
      MemberTableOf<Section>()
          .property<bool, bool>("visible", &Section::visible, &Section::visible)
          .method("addRow", &Section::addRow)
          .method("clearRows", &Section::clearRows)
          .property("Rows", &Section::Rows)
          .build();
  return kTable;
}

}  // namespace brisel::canvas
