#pragma once

#include <functional>
#include <string>

#include "platform/Object.h"

/// The host objects that the application gives its editor, called by name.
namespace brisel::qt {

/// The parent window: shows the busy cursor. Calls may be nested.
class BusyCursor : public platform::Object {
 public:
  ~BusyCursor() override;

  void HourglassOn();
  void HourglassOff();

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  int m_depth = 0;
};

/// The session: shows help pages, and has no component manager.
class Session : public platform::Object {
 public:
  using ShowPage = std::function<void(const std::string& page)>;

  explicit Session(ShowPage show) : m_show(std::move(show)) {}

  /// The session is its own application.
  [[nodiscard]] platform::Ref<platform::Object> Application() const;
  [[nodiscard]] platform::Ref<platform::Object> ComponentManager() const { return {}; }
  void ShowHelp(std::string_view page) { m_show(std::string(page)); }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  ShowPage m_show;
};

}  // namespace brisel::qt
