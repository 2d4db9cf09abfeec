#include "controls/Property.h"

namespace brisel::controls {

void Property::initialize() {}
void Property::owner(platform::MetaType*) {}
void Property::addKey(std::string_view) {}
void Property::load() {}
void Property::node(platform::Node*) {}
void Property::apply() {}
void Property::clear() {}
void Property::release() {}
platform::Ref<platform::ValueArray> Property::Keys() const { return {}; }
platform::Value Property::ValueOf(std::string_view) const { return {}; }
PropertyFormat Property::format(std::string_view) const { return {}; }
bool Property::isEdited(std::string_view) const { return false; }
void Property::Edit(std::string_view, const platform::Value&) {}
const platform::MemberTable& Property::memberTable() const { return Control::memberTable(); }

}  // namespace brisel::controls
