#include "canvas/ControlObjects.h"

#include "canvas/DiagramControl.h"
#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::canvas {

using platform::MemberTable;
using platform::MemberTableOf;

void DiagramSettings::CanDrawLink(bool can) {
  if (can == m_canDrawLink) return;
  m_canDrawLink = can;
  if (m_control) m_control->canDrawLinkChanged();
}

void DiagramSettings::Layout(std::string_view code) {
  if (!m_control) {
    throw platform::Error(platform::ErrorNumber::objectMissing, "The diagram's control is gone");
  }
  m_control->Layout(code.empty() ? "%HIERARCHY%" : code);
}

const MemberTable& DiagramSettings::memberTable() const {
  static const MemberTable kTable =
      MemberTableOf<DiagramSettings>()
          .property<bool, bool>("CanDrawLink", &DiagramSettings::CanDrawLink,
                                &DiagramSettings::CanDrawLink)
          .method("Layout", &DiagramSettings::Layout)
          .optional(1)
          .build();
  return kTable;
}

const MemberTable& ButtonObject::memberTable() const {
  static const MemberTable kTable = MemberTableOf<ButtonObject>()
                                        .property("key", &ButtonObject::key)
                                        .property("caption", &ButtonObject::caption)
                                        .property("tooltip", &ButtonObject::tooltip)
                                        .property("icon", &ButtonObject::icon)
                                        .property("enabled", &ButtonObject::enabled)
                                        .property("pressed", &ButtonObject::pressed)
                                        .build();
  return kTable;
}

HitObject::HitObject(const Hit& hit)
    : m_item(hit.node ? &hit.node->object() : &hit.link->object()),
      m_part(nameOf(hit.part)),
      m_tag(hit.tag) {}

const MemberTable& HitObject::memberTable() const {
  static const MemberTable kTable = MemberTableOf<HitObject>()
                                        .property("item", &HitObject::item)
                                        .property("part", &HitObject::part)
                                        .property("tag", &HitObject::tag)
                                        .build();
  return kTable;
}

}  // namespace brisel::canvas
