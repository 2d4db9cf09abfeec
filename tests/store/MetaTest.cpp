#include <gtest/gtest.h>

#include "platform/Error.h"
#include "store/Meta.h"

namespace brisel::store {
namespace {

namespace types = platform::types;
using platform::each;
using platform::Error;
using platform::ErrorNumber;
using platform::Link;
using platform::make;
using platform::Node;
using platform::Ref;
using platform::Value;

template <class Call>
int errorOf(Call call) {
  try {
    call();
  } catch (const Error& error) {
    return error.number();
  }
  return 0;
}
constexpr int kDuplicate = static_cast<int>(ErrorNumber::duplicateKey);
constexpr int kInvalid = static_cast<int>(ErrorNumber::invalidCall);
constexpr int kNotFound = static_cast<int>(ErrorNumber::notFound);
constexpr int kSubscript = static_cast<int>(ErrorNumber::subscript);

class MetaTest : public ::testing::Test {
 protected:
  MetaTest() { meta->Init(); }

  Ref<Node> node(std::string_view type, std::string_view id, std::string_view name = {}) {
    return meta->MakeNode(type, name, id);
  }
  Ref<Link> link(std::string_view type, std::string_view id, const Ref<Node>& source,
                 const Ref<Node>& target, std::string_view name = {}) {
    return meta->MakeLink(type, name, id, *source, *target);
  }
  template <class T = platform::Element>
  static std::string ids(const Ref<platform::Collection>& collection) {
    std::string text;
    for (T& element : each<T>(collection)) text += element.identifier() + " ";
    return text;
  }
  std::string extensionOf(std::string_view nodeType) {
    return ids(meta->MetaNodes(nodeType)->extension());
  }

  Ref<Meta> meta = make<Meta>();
};

TEST_F(MetaTest, refusesWhatIsNotAModel) {
  const auto a = node("Class", "a");
  const auto attrib = node("Attrib", "a");  // unique per type only
  const auto other = make<Meta>();
  other->Init();
  const auto foreign = other->MakeNode("Attrib", "", "f");
  link(types::kClassHasAttrib, "l", a, attrib);

  EXPECT_EQ(errorOf([&] { node("Class", "a"); }), kDuplicate);
  EXPECT_EQ(errorOf([&] { link(types::kClassHasAttrib, "l", a, attrib); }), kDuplicate);
  EXPECT_EQ(errorOf([&] { node("Class", "b")->identifier("a"); }), kDuplicate);
  EXPECT_EQ(errorOf([&] { (void)meta->MetaNodes("Clas"); }), kNotFound);
  EXPECT_EQ(errorOf([&] { (void)meta->MetaNodes("Class")->extension("none"); }), kNotFound);
  for (const char* type : {"Class.Has.Operation", "Attrib.Has.Class", "Class.Attrib",
                           "Class..Attrib", "Class.Has.Big.Attrib", ".Has.", ""}) {
    EXPECT_EQ(errorOf([&] { link(type, "x", a, attrib); }), kInvalid) << type;
  }
  EXPECT_EQ(errorOf([&] { link(types::kClassHasAttrib, "x", a, foreign); }), kInvalid);
  EXPECT_EQ(errorOf([&] { node("", "x"); }), kInvalid);
  EXPECT_EQ(errorOf([&] { (void)a->outgoing(types::kClassHasAttrib)->Item(2); }), kSubscript);
  EXPECT_EQ(meta->MetaLinks(types::kClassHasAttrib)->extension()->Count(), 1);
}

TEST_F(MetaTest, removesALinkByAnyRoad) {
  const auto a = node("Class", "a");
  const auto type = meta->MetaLinks(types::kClassHasAttrib);
  const std::vector<std::function<void(Link&, Node&)>> roads = {
      [&](Link& l, Node&) { type->extension()->Remove(l.identifier(), false); },
      [&](Link& l, Node&) { a->outgoing(types::kClassHasAttrib)->Remove(l.identifier(), false); },
      [&](Link& l, Node& end) {
        end.Incoming(types::kClassHasAttrib)->Remove(l.identifier(), false);
      },
      [&](Link& l, Node&) { meta->RemoveAssoc(l); },
      [&](Link&, Node& end) { end.Incoming(types::kClassHasAttrib)->Clear(); },
      [&](Link&, Node& end) {
        meta->MetaNodes("Attrib")->extension()->Remove(end.identifier(), false);
        a->outgoing(types::kClassHasAttrib)->Clear();
      },
  };
  for (std::size_t i = 0; i < roads.size(); ++i) {
    const auto attrib = node("Attrib", "attrib " + std::to_string(i));
    const auto l = link(types::kClassHasAttrib, "l", a, attrib, "name");
    roads[i](*l, *attrib);
    EXPECT_EQ(type->extension()->Count(), 0) << i;
    EXPECT_EQ(a->outgoing(types::kClassHasAttrib)->Count(), 0) << i;
    EXPECT_EQ(attrib->Incoming(types::kClassHasAttrib)->Count(), 0) << i;
    EXPECT_EQ(l->source(), a) << i;
    EXPECT_EQ(l->Target(), attrib) << i;
    roads[i](*l, *attrib);  // what is not there any more
  }
}

}  // namespace
}  // namespace brisel::store
