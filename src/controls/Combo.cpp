#include "controls/Combo.h"

#include "platform/MemberTableOf.h"

namespace brisel::controls {

void Combo::fill(platform::Collection&, std::string_view) {}
void Combo::refresh() {}
void Combo::clear() {}
std::string Combo::Text() const { return {}; }
Combo::NodeRef Combo::selection() const { return m_selection; }
void Combo::selection(platform::Node*) {}
void Combo::Choose(std::string_view) {}
void Combo::Type(std::string_view) {}
void Combo::Enter(std::string_view) {}
void Combo::cancelTyping() {}
platform::Ref<platform::ValueArray> Combo::Entries() {
  return platform::make<platform::ValueArray>(std::vector<platform::Value>());
}
void Combo::chooseEntry(std::size_t) {}
std::vector<std::size_t> Combo::matches(std::string_view, std::size_t) const { return {}; }
const platform::MemberTable& Combo::memberTable() const { return Control::memberTable(); }

}  // namespace brisel::controls
