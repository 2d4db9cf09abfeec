#include "controls/OptionGroup.h"

#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::controls {

namespace {

void requireButton(std::int64_t index, std::int64_t first, std::size_t count) {
  if (index >= first && index < static_cast<std::int64_t>(count)) return;
  throw platform::Error(platform::ErrorNumber::subscript,
                        "No option " + std::to_string(index) + " among " + std::to_string(count));
}

}  // namespace

void OptionGroup::value(std::int64_t index) {
  requireButton(index, -1, m_captions.size());
  if (m_value == index) return;
  m_value = index;
  Changed();
}

void OptionGroup::Choose(std::int64_t index) {
  requireButton(index, 0, m_captions.size());
  if (!Enabled()) return;
  value(index);
  Chosen();
}

platform::Ref<platform::ValueArray> OptionGroup::Captions() const {
  return platform::make<platform::ValueArray>(
      std::vector<platform::Value>(m_captions.begin(), m_captions.end()));
}

const platform::MemberTable& OptionGroup::memberTable() const {
  using G = OptionGroup;
  static const platform::MemberTable kTable = platform::MemberTableOf<G>(Control::memberTable())
                                                  .property("value", &G::value, &G::value)
                                                  .property("Captions", &G::Captions)
                                                  .method("Choose", &G::Choose)
                                                  .event("Chosen", &G::Chosen)
                                                  .build();
  return kTable;
}

}  // namespace brisel::controls
