#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "apps/Fixture.h"
#include "automation/Server.h"

namespace brisel::automation {
namespace {

TEST_F(Serving, givesTheSameHandleWhileOneLives) {
  const std::string lamp = create("Test.Lamp");
  EXPECT_EQ(call("invoke", lamp, R"("member":"Twin","arguments":[])"), lamp);
  const std::string child = call("get", lamp, R"("member":"Child")");
  EXPECT_EQ(call("get", lamp, R"("member":"Child")"), child);
  EXPECT_NE(child, lamp);

  EXPECT_EQ(call("release", child), "null");
  EXPECT_EQ(errorOf("get", child, R"("member":"Color")"), "-32602 Unknown handle: 2");
  const std::string again = call("get", lamp, R"("member":"Child")");
  EXPECT_NE(again, child) << "a number is never given out twice";
}

TEST_F(Serving, takesAndGivesEveryKindOfValue) {
  const std::string lamp = create("Test.Lamp");
  // What goes in comes out, byte for byte; a handle may be plain where an object is called.
  for (const std::string value :
       {"null", "true", "false", "0", "-9223372036854775808", "9223372036854775807", "1.5", "-0.0",
        "3.0", "1e+300", R"("")", R"("a\"\\\n\t\u0001b")", R"("ä€𝄞")", R"([1,[],["x",null]])"}) {
    EXPECT_EQ(call("invoke", lamp, R"("member":"Echo","arguments":[)" + value + "]"), value);
  }
  EXPECT_EQ(call("invoke", lamp, R"("member":"Echo","arguments":[)" + lamp + "]"), lamp);
  EXPECT_EQ(call("invoke", "1", R"("member":"Echo","arguments":[18446744073709551615])"),
            "18446744073709551616.0");
  EXPECT_EQ(call("invoke", lamp, R"("member":"Echo","arguments":["\u00e4"])"), R"("ä")");
  EXPECT_EQ(call("invoke", lamp, R"("member":"Broken")"), R"("x�y")");
  EXPECT_EQ(call("invoke", lamp, R"("member":"Infinite")"), "null");
}

TEST_F(Serving, handsOutArgumentsBack) {
  const std::string lamp = create("Test.Lamp");
  const std::string expected = R"({"result":"ok","out":[)" + lamp + ",null]}";
  for (const std::string arguments :
       {"[true]", "[true,null]", "[true,null,null]", "[true,7,\"x\"]"}) {
    EXPECT_EQ(call("invoke", lamp, R"("member":"Outs","arguments":)" + arguments), expected);
  }
}

TEST_F(Serving, collectionsAnswerByReferenceAndToArrayByValue) {
  const std::string lamp = create("Test.Lamp");
  const std::string list = call("invoke", lamp, R"("member":"Children")");
  EXPECT_EQ(call("get", list, R"("member":"Count")"), "2");
  EXPECT_EQ(call("invoke", list, R"("member":"Item","arguments":[1])"), lamp);
  const std::string second = call("invoke", list, R"("member":"Item","arguments":[2])");
  EXPECT_EQ(call("invoke", list, R"("member":"ToArray")"), "[" + lamp + "," + second + "]");
  EXPECT_EQ(call("get", list, R"("member":"ToArray")"), "[" + lamp + "," + second + "]");
  EXPECT_EQ(errorOf("invoke", list, R"("member":"Item","arguments":[3])"),
            "-32000 No item 3 in a collection of 2 (9)");
}

TEST_F(Serving, namesWhatIsWrong) {
  create("Test.Lamp");
  struct Case {
    std::string method, params, error;
  };
  const std::vector<Case> cases = {
      {"fly", "{}", "-32601 Unknown method: fly"},
      {"create", R"({"progId":"No.Such"})", "-32602 Unknown component: No.Such"},
      {"create", R"({"progId":7})", "-32602 Parameter progId must be a string"},
      {"create", "{}", "-32602 Missing parameter: progId"},
      {"create", R"(["Test.Lamp"])", "-32602 params must be an object"},
      {"create", R"({"progId":"Test.Failing"})", "-32000 It will not start (5)"},
      {"get", R"({"object":99,"member":"Color"})", "-32602 Unknown handle: 99"},
      {"get", R"({"object":{"ref":0},"member":"Color"})", "-32602 Unknown handle: 0"},
      {"get", R"({"object":{"ref":1,"x":1},"member":"Color"})",
       R"(-32602 Not a handle: {"ref":1,"x":1})"},
      {"get", R"({"object":"1","member":"Color"})", R"(-32602 Not a handle: "1")"},
      {"get", R"({"object":1,"member":"color"})", "-32602 Unknown member: color"},
      {"get", R"({"object":1,"member":"Switched"})", "-32602 Unknown member: Switched"},
      {"get", R"({"object":1,"member":"Echo"})", "-32602 Unknown member: Echo"},
      {"set", R"({"object":1,"member":"Color"})", "-32602 Missing parameter: value"},
      {"set", R"({"object":1,"member":"Child","value":1})", "-32602 Read-only property: Child"},
      {"set", R"({"object":1,"member":"Color","value":1})",
       "-32602 Wrong kind of argument 1 of Color: string expected, integer given"},
      {"set", R"({"object":1,"member":"Color","value":{"ref":5}})", "-32602 Unknown handle: 5"},
      {"invoke", R"({"object":1,"member":"Echo","arguments":{}})",
       "-32602 arguments must be an array"},
      {"invoke", R"({"object":1,"member":"Echo","arguments":[]})",
       "-32602 Wrong number of arguments: Echo takes 1, 0 given"},
      {"invoke", R"({"object":1,"member":"Echo","arguments":[{"a":1}]})",
       R"(-32602 Not a handle: {"a":1})"},
      {"invoke", R"({"object":1,"member":"Fail"})", "-32000 The lamp is broken (1000)"},
      {"invoke", R"({"object":1,"member":"FailInside"})", "-32000 Unknown member: Deep (438)"},
      {"release", R"({"object":3})", "-32602 Unknown handle: 3"},
      {"members", "{}", "-32602 Missing parameter: object"},
  };
  for (const Case& c : cases) EXPECT_EQ(errorOfRequest(c.method, c.params), c.error) << c.method;
}

TEST_F(Serving, refusesWhatIsNoRequest) {
  const std::string parse = R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700,"message":"Parse)";
  for (const std::string line : {"", "  ", "{", "nonsense", "{} {}", "\"\xff\"", R"("\ud800")",
                                 "\xEF\xBB\xBF{}", "1e999", "\x01"}) {
    const auto answers = send(line);
    ASSERT_EQ(answers.size(), 1U) << line;
    EXPECT_TRUE(answers[0].starts_with(parse)) << answers[0];
  }
  EXPECT_TRUE(send(std::string(200000, '['))[0].starts_with(parse));

  const std::string invalid = R"("error":{"code":-32600,)";
  for (const std::string line :
       {"1", "null", "[]", "{}", R"({"jsonrpc":"1.0","id":1,"method":"create"})",
        R"({"jsonrpc":"2.0","id":1})", R"({"jsonrpc":"2.0","id":1,"method":7})",
        R"({"jsonrpc":"2.0","id":[1],"method":"create"})"}) {
    const auto answers = send(line);
    ASSERT_EQ(answers.size(), 1U) << line;
    EXPECT_NE(answers[0].find(invalid), std::string::npos) << answers[0];
  }
}

TEST_F(Serving, answersBatchesAndKeepsQuietAboutNotifications) {
  EXPECT_TRUE(
      send(R"({"jsonrpc":"2.0","method":"create","params":{"progId":"Test.Lamp"}})").empty());
  EXPECT_TRUE(send(R"([{"jsonrpc":"2.0","method":"fly"}])").empty());
  const auto answers = send(
      R"([{"jsonrpc":"2.0","id":"a","method":"invoke","params":{"object":1,"member":"Switch"}},7,)"
      R"({"jsonrpc":"2.0","method":"invoke","params":{"object":1,"member":"Switch"}},)"
      R"({"jsonrpc":"2.0","id":2.5,"method":"get","params":{"object":1,"member":"Color"}}])");
  // The notification made its handle 1 at the time when it was told nobody.
  EXPECT_EQ(answers,
            (std::vector<std::string>{event("{\"ref\":1}", "Switched", "[1,{\"ref\":1}]"),
                                      event("{\"ref\":1}", "Switched", "[2,{\"ref\":1}]"),
                                      R"([{"jsonrpc":"2.0","id":"a","result":null},)"
                                      R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600,)"
                                      R"("message":"Invalid request: not an object"}},)"
                                      R"({"jsonrpc":"2.0","id":2.5,"result":"white"}])"}));
}

TEST_F(Serving, tellsEventsOfEveryObjectWithAHandle) {
  const std::string lamp = create("Test.Lamp");
  const std::string child = call("get", lamp, R"("member":"Child")");
  call("invoke", child, R"("member":"Switch")");
  EXPECT_EQ(notifications(),
            std::vector<std::string>{event(child, "Switched", "[1," + child + "]")});
  call("release", child);
  call("invoke", lamp, R"("member":"SwitchChild")");
  EXPECT_TRUE(notifications().empty());
}

TEST_F(Serving, releasingWhatWasCreatedEndsIt) {
  const std::string lamp = create("Test.Lamp");
  const std::string child = call("get", lamp, R"("member":"Child")");
  call("release", child);
  EXPECT_EQ(Lamp::ended, 0) << "a part is only let go";
  const std::string kept = call("get", lamp, R"("member":"Child")");
  call("release", lamp);
  EXPECT_EQ(notifications().size(), 1U) << "the tear-down is heard";
  EXPECT_EQ(Lamp::ended, 1);
  EXPECT_EQ(call("get", kept, R"("member":"Color")"), R"("white")") << "parts still answer";

  create("Test.Lamp");
  server.reset();
  EXPECT_EQ(Lamp::ended, 2) << "the end of the service ends what was created";
}

TEST_F(Serving, listsMembersFromTheTable) {
  const std::string members = call("members", create("Test.Lamp"));
  EXPECT_TRUE(members.starts_with(R"([{"name":"Color","kind":"property","arguments":0},)"));
  for (const std::string row : {R"({"name":"Switched","kind":"event","arguments":2})",
                                R"({"name":"Outs","kind":"method","arguments":3})"}) {
    EXPECT_NE(members.find(row), std::string::npos) << members;
  }
}

}  // namespace
}  // namespace brisel::automation
