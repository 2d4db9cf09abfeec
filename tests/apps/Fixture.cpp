#include "apps/Fixture.h"

#include <limits>

#include <simdjson.h>

#include "platform/Error.h"
#include "platform/MemberTableOf.h"
#include "platform/Shell.h"

namespace brisel::automation {

using platform::Error;
using platform::ErrorNumber;
using platform::Object;
using platform::ObjectList;
using platform::Ref;

Ref<Lamp> Lamp::Child() const {
  if (!m_child) m_child = platform::make<Lamp>();
  return m_child;
}

double Lamp::Infinite() const { return std::numeric_limits<double>::infinity(); }

Ref<platform::Collection> Lamp::Children() {
  return platform::make<ObjectList>(std::vector<Ref<Object>>{Ref<Object>(this), Child()});
}

std::string Lamp::Outs(bool on, Ref<Lamp>& self, Ref<Lamp>& nothing) {
  self = this;
  nothing = nullptr;
  return on ? "ok" : "off";
}

void Lamp::Fail() { throw Error(ErrorNumber::notFound, "The lamp is broken"); }

void Lamp::terminate() {
  ++ended;
  Switch();
}

const platform::MemberTable& Lamp::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<Lamp>()
                                                  .property("Color", &Lamp::Color, &Lamp::Color)
                                                  .property("Child", &Lamp::Child)
                                                  .event("Switched", &Lamp::Switched)
                                                  .method("Echo", &Lamp::Echo)
                                                  .method("Broken", &Lamp::Broken)
                                                  .method("Infinite", &Lamp::Infinite)
                                                  .method("Twin", &Lamp::Twin)
                                                  .method("Children", &Lamp::Children)
                                                  .method("Outs", &Lamp::Outs)
                                                  .method("Switch", &Lamp::Switch)
                                                  .method("SwitchChild", &Lamp::SwitchChild)
                                                  .method("Fail", &Lamp::Fail)
                                                  .method("FailInside", &Lamp::FailInside)
                                                  .build();
  return kTable;
}

Serving::Serving() : registry(nullptr) {
  Lamp::ended = 0;
  registry.add("Test.Lamp", [](auto&) { return platform::make<Lamp>(); });
  registry.add("Test.Failing", [](auto&) -> Ref<Object> {
    throw Error(ErrorNumber::invalidCall, "It will not start");
  });
  server = std::make_unique<Server>(
      registry, [this](std::string_view message) { sent.emplace_back(message); });
}

std::vector<std::string> Serving::send(std::string_view line) {
  sent.clear();
  server->handle(line);
  return sent;
}

std::string Serving::request(const std::string& method, const std::string& params) {
  send(R"({"jsonrpc":"2.0","id":1,"method":")" + method + R"(","params":)" + params + "}");
  const std::string start = R"({"jsonrpc":"2.0","id":1,"result":)";
  if (sent.empty() || !sent.back().starts_with(start)) {
    ADD_FAILURE() << method << " " << params << " gave " << (sent.empty() ? "" : sent.back());
    return {};
  }
  return sent.back().substr(start.size(), sent.back().size() - start.size() - 1);
}

std::string Serving::create(const std::string& progId) {
  return request("create", R"({"progId":")" + progId + "\"}");
}

std::string Serving::call(const std::string& method, const std::string& object,
                          const std::string& rest) {
  return request(method, R"({"object":)" + object + (rest.empty() ? "" : ",") + rest + "}");
}

std::string Serving::errorOfRequest(const std::string& method, const std::string& params) {
  send(R"({"jsonrpc":"2.0","id":1,"method":")" + method + R"(","params":)" + params + "}");
  simdjson::dom::parser parser;
  simdjson::dom::element error;
  if (sent.empty() || parser.parse(sent.back())["error"].get(error)) {
    return sent.empty() ? "nothing" : sent.back();
  }
  std::string text = std::to_string(std::int64_t{error["code"]}) + " " +
                     std::string(std::string_view(error["message"]));
  std::int64_t number = 0;
  if (!error["data"]["number"].get(number)) text += " (" + std::to_string(number) + ")";
  return text;
}

std::string Serving::errorOf(const std::string& method, const std::string& object,
                             const std::string& rest) {
  return errorOfRequest(method, R"({"object":)" + object + (rest.empty() ? "" : ",") + rest + "}");
}

std::vector<std::string> Serving::notifications() const {
  return {sent.begin(), sent.empty() ? sent.end() : sent.end() - 1};
}

std::string Serving::event(const std::string& object, const std::string& name,
                           const std::string& arguments) {
  return R"({"jsonrpc":"2.0","method":"event","params":{"object":)" + object + R"(,"name":")" +
         name + R"(","arguments":)" + arguments + "}}";
}

}  // namespace brisel::automation
