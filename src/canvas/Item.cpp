#include "canvas/Item.h"

#include <algorithm>
#include <utility>

namespace brisel::canvas {

using platform::Object;
using platform::Ref;

Ref<Object> Item::stored(std::string_view name) const {
  const auto found = std::find_if(m_objects.begin(), m_objects.end(),
                                  [&](const auto& entry) { return entry.first == name; });
  return found == m_objects.end() ? nullptr : found->second;
}

void Item::dropStored() { const auto dropped = std::exchange(m_objects, {}); }

void Item::store(std::string_view name, Object* object) {
  const auto found = std::find_if(m_objects.begin(), m_objects.end(),
                                  [&](const auto& entry) { return entry.first == name; });
  if (found != m_objects.end()) {
    const Ref<Object> kept = found->second;  // its end may reach back to this item
    if (object) {
      found->second = object;
    } else {
      m_objects.erase(found);
    }
  } else if (object) {
    m_objects.emplace_back(name, object);
  }
}

}  // namespace brisel::canvas
