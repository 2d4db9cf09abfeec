// What no well-meaning client sends: whatever it is, the server answers and goes on.

#include <array>
#include <random>
#include <string>

#include <gtest/gtest.h>
#include <simdjson.h>

#include "apps/Fixture.h"
#include "component/AutomaticShell.h"
#include "component/HostObject.h"

namespace brisel::automation {
namespace {

class Hostile : public Serving {
 protected:
  Hostile() {
    registry.add("Brisel.Shell",
                 [shell = platform::make<component::AutomaticShell>()](auto&) { return shell; });
    registry.add("Brisel.HostObject",
                 [](auto&) { return platform::make<component::HostObject>(); });
  }

  template <std::size_t N>
  std::string pick(const std::array<const char*, N>& words) {
    return words[random() % N];
  }

  std::string value(int depth) {
    static constexpr std::array kValues = {"null",
                                           "true",
                                           "1",
                                           "-1",
                                           "1e308",
                                           "1e-400",
                                           "9223372036854775807",
                                           "18446744073709551615",
                                           "1e999",
                                           "123456789012345678901234567890",
                                           "\"\"",
                                           "\"Echo\"",
                                           "\"\\u0000\"",
                                           "\"\\ud800\"",
                                           "\"\xFF\"",
                                           "\"ä\"",
                                           "{}",
                                           "[]",
                                           "{\"ref\":1}",
                                           "{\"ref\":2}",
                                           "{\"ref\":-1}",
                                           "{\"ref\":\"1\"}",
                                           "{\"ref\":1e9}",
                                           "{\"ref\":1,\"ref\":2}",
                                           "[["};
    if (depth > 0 && random() % 4 == 0) {
      return "[" + value(depth - 1) + "," + value(depth - 1) + "]";
    }
    return pick(kValues);
  }

  std::string request() {
    static constexpr std::array kMethods = {"create",  "invoke", "get", "set", "members",
                                            "release", "create", "fly", ""};
    static constexpr std::array kProgIds = {"Test.Lamp", "Test.Failing", "Brisel.Shell",
                                            "Brisel.HostObject", "No.Such"};
    static constexpr std::array kMembers = {"Color",    "Child",   "Echo",       "Outs",
                                            "Children", "Switch",  "Fail",       "FailInside",
                                            "Calls",    "Returns", "AnswerForm", "AnswerFile",
                                            "Count",    "Item",    "ToArray",    "x"};
    std::string text = R"({"jsonrpc":"2.0","id":)" + value(0) + R"(,"method":")" + pick(kMethods) +
                       R"(","params":{"progId":")" + pick(kProgIds) + R"(","object":)" +
                       std::to_string(random() % 40) + R"(,"member":")" + pick(kMembers) +
                       R"(","value":)" + value(2) + R"(,"arguments":[)";
    for (std::size_t i = random() % 4; i > 0; --i) text += value(2) + (i > 1 ? "," : "");
    text += "]}}";
    return text;
  }

  /// Cuts, doubles or overwrites a part.
  void damage(std::string& text) {
    const std::size_t at = random() % text.size();
    const std::size_t length = random() % 12;
    switch (random() % 3) {
      case 0:
        text.erase(at, length);
        break;
      case 1:
        text.insert(at, text.substr(random() % text.size(), length));
        break;
      default:
        text[at] = static_cast<char>(random() % 256);
    }
  }

  std::mt19937 random{20261121};  // NOLINT: the same input at every run
};

TEST_F(Hostile, everyMessageWrittenIsWellFormed) {
  simdjson::dom::parser parser;
  for (int i = 0; i < 20000; ++i) {
    std::string line = random() % 5 == 0 ? "[" + request() + "," + request() + "]" : request();
    if (random() % 3 == 0) damage(line);
    for (const std::string& message : send(line)) {
      simdjson::dom::element json;
      ASSERT_EQ(parser.parse(message).get(json), simdjson::SUCCESS) << line << "\n" << message;
      ASSERT_EQ(message.find('\n'), std::string::npos) << line;
    }
  }
  EXPECT_NE(create("Test.Lamp"), "") << "the server still serves";
}

TEST_F(Hostile, longChainsOfObjectsAreFreed) {
  std::string next = create("Brisel.HostObject");
  const std::string first = next;
  for (int i = 0; i < 50000; ++i) {
    const std::string object = create("Brisel.HostObject");
    call("set", object, R"("member":"next","value":)" + next);
    call("invoke", next, R"("member":"Call","arguments":[)" + object + "]");
    next = object;
  }
  call("release", next);
  EXPECT_EQ(call("get", first, R"("member":"next")"), "null");
  server.reset();
}

TEST_F(Hostile, aLineOfHundredMegabytesIsAnswered) {
  const std::string lamp = create("Test.Lamp");
  const std::string text = '"' + std::string(100'000'000, 'x') + '"';
  EXPECT_EQ(call("invoke", lamp, R"("member":"Echo","arguments":[)" + text + "]").size(),
            text.size());
  const auto answers = send(std::string(100'000'000, '{'));
  ASSERT_EQ(answers.size(), 1U);
  EXPECT_NE(answers[0].find("-32700"), std::string::npos);
}

}  // namespace
}  // namespace brisel::automation
