#include "qt/HostObjects.h"

#include <QCursor>
#include <QGuiApplication>

#include "platform/MemberTableOf.h"

namespace brisel::qt {

BusyCursor::~BusyCursor() {
  while (m_depth > 0) HourglassOff();
}

void BusyCursor::HourglassOn() {
  ++m_depth;
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

void BusyCursor::HourglassOff() {
  if (m_depth == 0) return;
  --m_depth;
  QGuiApplication::restoreOverrideCursor();
}

const platform::MemberTable& BusyCursor::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<BusyCursor>()
                                                  .method("HourglassOn", &BusyCursor::HourglassOn)
                                                  .method("HourglassOff", &BusyCursor::HourglassOff)
                                                  .build();
  return kTable;
}

platform::Ref<platform::Object> Session::Application() const {
  return platform::Ref<platform::Object>(const_cast<Session*>(this));
}

const platform::MemberTable& Session::memberTable() const {
  static const platform::MemberTable kTable =
      platform::MemberTableOf<Session>()
          .property("Application", &Session::Application)
          .property("ComponentManager", &Session::ComponentManager)
          .method("ShowHelp", &Session::ShowHelp)
          .build();
  return kTable;
}

}  // namespace brisel::qt
