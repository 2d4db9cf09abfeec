#include "controls/Property.h"

#include <algorithm>

#include "controls/Row.h"
#include "platform/Error.h"
#include "platform/MemberTableOf.h"
#include "platform/Text.h"

namespace brisel::controls {

using platform::equalsIgnoringCase;
using platform::Error;
using platform::ErrorNumber;
using platform::Ref;
using platform::Value;
using platform::ValueArray;

namespace {

auto findKey(const std::vector<std::string>& keys, std::string_view key) {
  return std::find_if(keys.begin(), keys.end(),
                      [&](const std::string& each) { return equalsIgnoringCase(each, key); });
}

}  // namespace

// ---- the protocol -------------------------------------------------------------------------------

void Property::initialize() { release(); }

void Property::owner(platform::MetaType* type) { m_owner = type; }

void Property::addKey(std::string_view key) {
  if (findKey(m_added, key) == m_added.end()) m_added.emplace_back(key);
}

void Property::load() {
  m_keys = m_added;
  if (m_added.empty() && m_owner) {
    for (const auto& property :
         platform::each<platform::PropertyDefinition>(m_owner->properties())) {
      if (!equalsIgnoringCase(property.name(), "Identifier")) m_keys.push_back(property.name());
    }
  }
  m_edits.clear();
  reset();
}

void Property::node(platform::Node* node) {
  if (m_node != node) m_edits.clear();
  m_node = node;
  reset();
}

void Property::apply() {
  const Ref<platform::Node> node = m_node;
  const std::vector<std::string> keys = m_keys;
  for (const std::string& key : keys) {
    const auto edit = m_edits.find(key);
    if (edit == m_edits.end()) continue;
    const Value value = edit->second;
    // Whoever hears of one change may remove the node before the next.
    if (node && isInRepository(*node)) node->SetProperty(propertyBehind(key), value);
    m_edits.erase(key);
  }
  reset();
}

void Property::clear() {
  m_edits.clear();
  m_node = nullptr;
  reset();
}

void Property::release() {
  m_added.clear();
  m_keys.clear();
  m_owner = nullptr;
  clear();
}

void Property::reset() {
  Reset();
  Changed();
}

// ---- values -------------------------------------------------------------------------------------

bool Property::hasNode() const { return m_node && isInRepository(*m_node); }

const std::string& Property::shownKey(std::string_view key) const {
  const auto found = findKey(m_keys, key);
  if (found == m_keys.end()) {
    throw Error(ErrorNumber::notFound, "The property is not shown: " + std::string(key));
  }
  return *found;
}

Value Property::stored(std::string_view key) const {
  return hasNode() ? m_node->GetProperty(propertyBehind(key)) : Value();
}

Ref<ValueArray> Property::Keys() const {
  return platform::make<ValueArray>(std::vector<Value>(m_keys.begin(), m_keys.end()));
}

Value Property::ValueOf(std::string_view key) const {
  const std::string& shown = shownKey(key);
  const Value value = stored(shown);
  const auto edit = m_edits.find(shown);
  return edit == m_edits.end() ? shownValue(formatOf(shown, value), value) : edit->second;
}

PropertyFormat Property::format(std::string_view key) const {
  const std::string& shown = shownKey(key);
  return formatOf(shown, stored(shown));
}

bool Property::isEdited(std::string_view key) const { return m_edits.contains(shownKey(key)); }

void Property::Edit(std::string_view key, const Value& value) {
  const std::string shown = shownKey(key);
  if (!hasNode()) {
    throw Error(ErrorNumber::objectMissing, "There is no node whose " + shown + " can be edited");
  }
  const Value old = stored(shown);
  const PropertyFormat format = formatOf(shown, old);
  const Value edited = storedValue(shown, format, value);
  if (!Enabled()) return;
  if (edited == shownValue(format, old)) {
    m_edits.erase(shown);
  } else {
    m_edits.insert_or_assign(shown, edited);
  }
  ValueChanged(shown);
  Changed();
}

Ref<ValueArray> Property::Words(std::string_view key) const {
  const auto words = format(key).words;
  return platform::make<ValueArray>(std::vector<Value>(words.begin(), words.end()));
}

const platform::MemberTable& Property::memberTable() const {
  using P = Property;
  using SetNode = void (P::*)(platform::Node*);
  using GetNode = Ref<platform::Node> (P::*)() const;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<P>(Control::memberTable())
          .property("Path", &P::Path, &P::Path)
          .method("initialize", &P::initialize)
          .method("owner", &P::owner)
          .method("addKey", &P::addKey)
          .method("load", &P::load)
          .property("node", static_cast<GetNode>(&P::node), static_cast<SetNode>(&P::node))
          .method("apply", &P::apply)
          .method("clear", &P::clear)
          .method("release", &P::release)
          .property("Keys", &P::Keys)
          .method("ValueOf", &P::ValueOf)
          .method("Words", &P::Words)
          .method("isEdited", &P::isEdited)
          .method("Edit", &P::Edit)
          .event("ValueChanged", &P::ValueChanged)
          .build();
  return kTable;
}

}  // namespace brisel::controls
