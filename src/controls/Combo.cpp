#include "controls/Combo.h"

#include <algorithm>

#include "controls/Row.h"
#include "platform/Error.h"
#include "platform/MemberTableOf.h"
#include "platform/Text.h"

namespace brisel::controls {

using platform::Node;
using platform::Ref;

namespace {

std::string folded(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), platform::lowerCase);
  return lower;
}

[[noreturn]] void refuseFill() {
  throw platform::CallError(platform::ErrorNumber::typeMismatch,
                            "Wrong kind of argument 1 of fill: a node type or its nodes expected");
}

}  // namespace

// ---- entries ------------------------------------------------------------------------------------

void Combo::fill(platform::Collection& nodes, std::string_view displayProperty) {
  for (platform::Object& object : platform::each<platform::Object>(&nodes)) {
    if (!dynamic_cast<Node*>(&object)) refuseFill();
  }
  m_nodes = &nodes;
  m_displayProperty = displayProperty;
  refresh();
}

void Combo::fillFrom(platform::Object& nodes, std::string_view displayProperty) {
  if (auto* type = dynamic_cast<platform::MetaType*>(&nodes)) {
    return fill(*type->extension(), displayProperty);
  }
  auto* all = dynamic_cast<platform::Collection*>(&nodes);
  if (!all) refuseFill();
  fill(*all, displayProperty);
}

void Combo::refresh() {
  m_entries.clear();
  if (m_nodes) {
    m_entries.reserve(static_cast<std::size_t>(m_nodes->Count()));
    for (Node& node : platform::each<Node>(m_nodes)) {
      std::string text = textOf(node);
      std::string lower = folded(text);
      m_entries.push_back({&node, std::move(text), std::move(lower)});
    }
  }
  EntriesChanged();
}

void Combo::clear() {
  m_nodes = nullptr;
  m_displayProperty.clear();
  m_selection = nullptr;
  m_isTyping = false;
  m_typed.clear();
  refresh();
  Changed();
}

std::string Combo::textOf(const Node& node) const {
  return node.GetProperty(m_displayProperty).text();
}

/// The first node of that very text now, whatever it was at the last refresh.
Ref<Node> Combo::find(std::string_view text) const {
  for (const Entry& entry : m_entries) {
    if (entry.text == text && textOf(*entry.node) == text && isInRepository(*entry.node)) {
      return entry.node;
    }
  }
  return {};
}

/// The same, and of nodes that came since.
Ref<Node> Combo::findNow(std::string_view text) {
  if (NodeRef node = find(text)) return node;
  refresh();
  return find(text);
}

Ref<platform::ValueArray> Combo::Entries() const {
  std::vector<platform::Value> texts;
  if (m_nodes) {
    texts.reserve(static_cast<std::size_t>(m_nodes->Count()));
    for (const Node& node : platform::each<Node>(m_nodes)) texts.emplace_back(textOf(node));
  }
  return platform::make<platform::ValueArray>(std::move(texts));
}

std::vector<std::size_t> Combo::matches(std::string_view text, std::size_t limit) const {
  const std::string wanted = folded(text);
  std::vector<std::size_t> beginning;
  std::vector<std::size_t> containing;
  for (std::size_t i = 0; i < m_entries.size() && beginning.size() < limit; ++i) {
    const std::size_t at = m_entries[i].folded.find(wanted);
    if (at == 0) {
      beginning.push_back(i);
    } else if (at != std::string::npos && containing.size() < limit) {
      containing.push_back(i);
    }
  }
  const std::size_t more = std::min(limit - beginning.size(), containing.size());
  beginning.insert(beginning.end(), containing.begin(),
                   containing.begin() + static_cast<std::ptrdiff_t>(more));
  return beginning;
}

// ---- selection ----------------------------------------------------------------------------------

std::string Combo::Text() const {
  if (m_isTyping) return m_typed;
  const NodeRef selected = selection();
  return selected ? textOf(*selected) : std::string();
}

Ref<Node> Combo::selection() const {
  if (const NodeRef typed = m_isTyping ? find(m_typed) : NodeRef()) return typed;
  return m_selection && isInRepository(*m_selection) ? m_selection : NodeRef();
}

void Combo::selection(Node* node) {
  if (!m_isTyping && m_selection == node) return;
  m_selection = node;
  m_isTyping = false;
  m_typed.clear();
  Changed();
}

// ---- what a person does -------------------------------------------------------------------------

void Combo::choose(const NodeRef& node) {
  selection(node.get());
  Chosen();
}

void Combo::chooseEntry(std::size_t entry) {
  if (!Enabled()) return;
  const NodeRef node = m_entries[entry].node;
  if (isInRepository(*node)) return choose(node);
  refresh();
}

void Combo::Choose(std::string_view text) {
  const NodeRef node = findNow(text);
  if (!node) {
    throw platform::Error(platform::ErrorNumber::notFound,
                          "There is no entry '" + std::string(text) + "'");
  }
  if (Enabled()) choose(node);
}

void Combo::Type(std::string_view text) {
  if (!Enabled() || (m_isTyping && m_typed == text)) return;
  m_isTyping = true;
  m_typed = text;
  Changed();
}

void Combo::Enter(std::string_view text) {
  if (!Enabled()) return;
  const std::string wanted(platform::trimmed(text));
  if (wanted.empty()) return cancelTyping();
  if (const NodeRef node = findNow(wanted)) return choose(node);
  Type(wanted);
  Entered(wanted);
}

void Combo::cancelTyping() {
  if (!m_isTyping) return;
  m_isTyping = false;
  m_typed.clear();
  Changed();
}

const platform::MemberTable& Combo::memberTable() const {
  using C = Combo;
  using Get = Ref<Node> (C::*)() const;
  using Set = void (C::*)(Node*);
  static const platform::MemberTable kTable =
      platform::MemberTableOf<C>(Control::memberTable())
          .method("create", &C::create)
          .method("fill", &C::fillFrom)
          .method("clear", &C::clear)
          .method("destroy", &C::destroy)
          .property("Text", &C::Text)
          .property("selection", static_cast<Get>(&C::selection), static_cast<Set>(&C::selection))
          .property("Entries", &C::Entries)
          .method("Choose", &C::Choose)
          .method("SetText", &C::Type)
          .method("Enter", &C::Enter)
          .event("Chosen", &C::Chosen)
          .event("Entered", &C::Entered)
          .build();
  return kTable;
}

}  // namespace brisel::controls
