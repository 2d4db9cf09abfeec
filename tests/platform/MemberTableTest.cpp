#include <gtest/gtest.h>

#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::platform {
namespace {

class Lamp : public Object {
 public:
  std::string Color() const { return m_color; }
  void Color(std::string_view color) { m_color = color; }
  int Count() const { return 3; }
  bool Switch(bool on, std::int64_t times) {
    Switched(static_cast<int>(times));
    return on;
  }
  Ref<Lamp> Twin(Lamp& other, Lamp* maybe, Ref<Lamp>& out) {
    out = maybe ? maybe : &other;
    return &other;
  }
  int Dim() { return 40; }
  Event<int> Switched;

  const MemberTable& memberTable() const override {
    static const MemberTable kTable = MemberTableOf<Lamp>()
                                          .property("Color", &Lamp::Color, &Lamp::Color)
                                          .property("Count", &Lamp::Count)
                                          .method("Switch", &Lamp::Switch)
                                          .optional(1)
                                          .method("Twin", &Lamp::Twin)
                                          .method("Dim", &Lamp::Dim)
                                          .event("Switched", &Lamp::Switched)
                                          .build();
    return kTable;
  }

 private:
  std::string m_color = "white";
};

TEST(MemberTable, callsReadsAndWritesByName) {
  const auto lamp = make<Lamp>();
  lamp->set("Color", "red");
  EXPECT_EQ(lamp->get("Color"), Value("red"));
  EXPECT_EQ(lamp->call("Color"), Value("red"));
  EXPECT_EQ(lamp->get("Dim"), Value(40)) << "whether a host has it as method or as property";
  EXPECT_EQ(lamp->call("Switch", {true, 2}), Value(true));
  EXPECT_EQ(lamp->call("Switch", {true}), Value(true));
}

TEST(MemberTable, handsOutArgumentsBack) {
  const auto lamp = make<Lamp>();
  const auto other = make<Lamp>();
  std::vector<Value> arguments = {Value(lamp), Value(other)};
  EXPECT_EQ(lamp->invoke("Twin", arguments), Value(lamp));
  ASSERT_EQ(arguments.size(), 3U);
  EXPECT_EQ(arguments[2], Value(other));

  arguments = {Value(lamp), Value(), Value("ignored")};
  lamp->invoke("Twin", arguments);
  EXPECT_EQ(arguments[2], Value(lamp));
}

TEST(MemberTable, refusesWrongCalls) {
  const auto lamp = make<Lamp>();
  EXPECT_THROW(lamp->call("switch", {true}), CallError);
  EXPECT_THROW(lamp->call("Switch", {}), CallError);
  EXPECT_THROW(lamp->call("Switch", {true, 1, 2}), CallError);
  EXPECT_THROW(lamp->call("Switch", {"yes", 1}), CallError);
  EXPECT_THROW(lamp->call("Switch", {true, 1.5}), CallError);
  EXPECT_THROW(lamp->call("Twin", {Value(), Value()}), CallError);
  EXPECT_THROW(lamp->call("Color", {1}), CallError);
  EXPECT_THROW(lamp->set("Count", 3), CallError);
  EXPECT_THROW(lamp->get("Switched"), CallError);
  EXPECT_THROW(lamp->get("Twin"), CallError);
}

TEST(MemberTable, tellsEventsByName) {
  const auto lamp = make<Lamp>();
  std::vector<Value> heard;
  auto connection = lamp->listen("Switched", [&](const std::vector<Value>& a) { heard = a; });
  lamp->call("Switch", {true, 7});
  EXPECT_EQ(heard, std::vector<Value>{7});
  heard.clear();
  connection.disconnect();
  lamp->call("Switch", {true, 7});
  EXPECT_TRUE(heard.empty());
}

TEST(Event, survivesListenersThatChangeIt) {
  auto event = std::make_unique<Event<int>>();
  int calls = 0;
  Connection second;
  Connection late;
  Connection first = event->connect([&](int depth) {
    ++calls;
    second.disconnect();
    late = event->connect([&](int) { calls += 100; });
    if (depth > 0) (*event)(depth - 1);
  });
  second = event->connect([&](int) { calls += 10; });
  (*event)(0);
  EXPECT_EQ(calls, 1);

  first = event->connect([&](int) { event.reset(); });
  late = event->connect([&](int) { calls = -1; });
  (*event)(0);
  EXPECT_EQ(calls, -1) << "a raise goes on to its end when the owner goes";
}

}  // namespace
}  // namespace brisel::platform
