#include "controls/PropertyKinds.h"

namespace brisel::controls {

PropertyFormat formatOf(std::string_view, const platform::Value&) { return {}; }
std::string_view propertyBehind(std::string_view key) { return key; }
platform::Value shownValue(const PropertyFormat&, const platform::Value& stored) { return stored; }
platform::Value storedValue(std::string_view, const PropertyFormat&, const platform::Value& given) {
  return given;
}

}  // namespace brisel::controls
