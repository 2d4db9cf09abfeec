#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include <simdjson.h>

#include "automation/Handles.h"
#include "automation/Params.h"
#include "automation/Values.h"

namespace brisel::platform {
class ComponentRegistry;
class ValueRecord;
}  // namespace brisel::platform

namespace brisel::automation {

/// Serves the components of a registry to a client by JSON-RPC 2.0, one message a line. What can
/// be called comes from the member tables alone.
///
/// No line can make it throw or end: what is wrong is answered. Whoever owns it feeds it lines and
/// writes what it gives; when it goes, what the client created is torn down.
class Server {
 public:
  /// Takes one message without a line end.
  using Write = std::function<void(std::string_view message)>;

  Server(platform::ComponentRegistry& registry, Write write);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// Handles one message or batch; writes its notifications first, then its answer, if it has one.
  void handle(std::string_view line);
  /// Answers a line that was not read because it is too long.
  void refuse(std::string_view reason);
  /// Tells the client of something outside of the member tables ("message", "dialog").
  void notify(std::string_view method, const platform::Ref<platform::ValueRecord>& params);

 private:
  using Json = simdjson::dom::element;

  void answerLine(std::string_view line);
  std::string answersOf(const simdjson::dom::array& batch);
  std::string answerOf(const Json& request);
  std::string call(std::string_view method, const Params& params);

  std::string create(const Params& params);
  std::string invoke(const Params& params);
  std::string get(const Params& params);
  std::string set(const Params& params);
  std::string members(const Params& params);
  std::string release(const Params& params);

  void tellEvent(std::int64_t handle, const std::string& name, const Handles::Arguments& arguments);

  platform::ComponentRegistry& m_registry;
  Write m_write;
  Handles m_handles;
  Values m_values;
};

}  // namespace brisel::automation
