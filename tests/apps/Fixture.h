#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "automation/Server.h"
#include "platform/Collection.h"
#include "platform/ComponentRegistry.h"

namespace brisel::automation {

/// A component with one member of every shape.
class Lamp : public platform::Object {
 public:
  static inline int ended = 0;

  std::string Color() const { return m_color; }
  void Color(std::string_view color) { m_color = color; }
  platform::Ref<Lamp> Child() const;
  platform::Value Echo(const platform::Value& value) { return value; }
  std::string Broken() const { return "x\xC3y"; }
  double Infinite() const;
  platform::Ref<Lamp> Twin() { return this; }
  platform::Ref<platform::Collection> Children();
  std::string Outs(bool on, platform::Ref<Lamp>& self, platform::Ref<Lamp>& nothing);
  void Switch() { Switched(++m_count, platform::Ref<Lamp>(this)); }
  void SwitchChild() { Child()->Switch(); }
  void Fail();
  void FailInside() { call("Deep"); }
  void terminate() override;

  platform::Event<int, platform::Ref<Lamp>> Switched;

  const platform::MemberTable& memberTable() const override;

 private:
  std::string m_color = "white";
  mutable platform::Ref<Lamp> m_child;
  int m_count = 0;
};

/// A server over lamps; `sent` holds every message that it wrote.
class Serving : public testing::Test {
 protected:
  Serving();

  /// The messages written for one line.
  std::vector<std::string> send(std::string_view line);
  /// The result of a request with id 1; a failure when it is answered with an error.
  std::string request(const std::string& method, const std::string& params);
  std::string create(const std::string& progId);
  std::string call(const std::string& method, const std::string& object,
                   const std::string& rest = {});
  /// "-32602 message", or "-32000 message (number)".
  std::string errorOfRequest(const std::string& method, const std::string& params);
  std::string errorOf(const std::string& method, const std::string& object,
                      const std::string& rest = {});
  /// Those written before the answer of the last request.
  std::vector<std::string> notifications() const;
  static std::string event(const std::string& object, const std::string& name,
                           const std::string& arguments);

  platform::ComponentRegistry registry;
  std::vector<std::string> sent;
  std::unique_ptr<Server> server;
};

}  // namespace brisel::automation
