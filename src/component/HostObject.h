#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Collection.h"
#include "platform/ValueArray.h"

namespace brisel::component {

/// One invocation that a host object received.
class HostCall : public platform::Object {
 public:
  HostCall(std::string member, std::vector<platform::Value> arguments);

  [[nodiscard]] std::string member() const { return m_member; }
  [[nodiscard]] platform::Ref<platform::ValueArray> arguments() const { return m_arguments; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::string m_member;
  platform::Ref<platform::ValueArray> m_arguments;
};

/// Stands for an object of the host (session, package, parent window) where there is no host: has
/// every member that is asked of it, remembers what it is called with and answers as it was told.
class HostObject : public platform::Object {
 public:
  /// HostCall objects in the order of the invocations; live.
  [[nodiscard]] platform::Ref<platform::Collection> Calls() const { return m_calls; }
  /// What invocations of the member give from now on; reading it as a property gives the same
  /// unless it was set.
  void Returns(std::string_view member, const platform::Value& value);

  /// Any other member: recorded, and answered with what `Returns` was told, else with what was set
  /// for it, else with nothing.
  platform::Value invoke(std::string_view member, std::vector<platform::Value>& arguments) override;
  platform::Value get(std::string_view member) override;
  void set(std::string_view member, const platform::Value& value) override;
  /// Forgets everything, so that objects that refer to each other are freed.
  void terminate() override;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  using Members = std::map<std::string, platform::Value, std::less<>>;

  [[nodiscard]] bool isOwn(std::string_view member) const;

  Members m_values;
  Members m_returns;
  platform::Ref<platform::ObjectList> m_calls = platform::make<platform::ObjectList>();
};

}  // namespace brisel::component
