#include <set>

#include <gtest/gtest.h>

#include "component/AutomaticShell.h"
#include "component/DiagramWindow.h"
#include "component/HostObject.h"
#include "component/Suite.h"
#include "platform/Error.h"
#include "platform/MemberTable.h"

namespace brisel::component {
namespace {

using platform::make;
using platform::Member;
using platform::Ref;
using platform::Value;

class Window : public testing::Test {
 protected:
  Window() { registerSuite(registry); }

  Ref<platform::MetaRepository> emptyModel() {
    auto model = registry.create<platform::MetaRepository>("BriselCLS.Meta");
    model->Init();
    return model;
  }

  platform::ComponentRegistry registry{make<AutomaticShell>()};
  Ref<DiagramWindow> window = make<DiagramWindow>(registry);
};

TEST_F(Window, livesFromCreateToDestroy) {
  EXPECT_THROW(window->call("Populate"), platform::Error);
  EXPECT_THROW(window->get("Path"), platform::Error);
  EXPECT_FALSE(window->get("frmCLSDiagram").object());
  window->call("Init");
  window->call("Conceal");
  window->call("Destroy");

  const auto session = make<HostObject>();
  window->call("Create", {"classes", Value(session)});
  const auto form = window->form();
  EXPECT_EQ(form->Editor()->ComponentName(), "classes");
  EXPECT_EQ(form->Editor()->ParentWindow(), Ref<platform::Object>(form));
  EXPECT_FALSE(form->Visible());
  window->call("PopUp", {true});
  EXPECT_TRUE(form->Visible() && form->modal());
  window->set("Repository", Value(emptyModel()));
  window->call("Populate");
  EXPECT_EQ(form->Caption(), "UML Class Diagram");
  EXPECT_EQ(form->MousePointer(), frmCLSDiagram::kDefaultPointer);
  form->KeyPress("F1", "");

  window->call("Destroy");
  window->call("Destroy");
  EXPECT_FALSE(form->Visible());
  EXPECT_FALSE(form->Editor()->Session()) << "nothing of the host's is held any more";
  EXPECT_THROW(window->call("Clear"), platform::Error);
}

TEST_F(Window, survivesAHostThatDestroysItWhileItIsTornDown) {
  const auto session = make<HostObject>();
  const auto manager = make<HostObject>();
  const auto component = make<HostObject>();
  session->set("ComponentManager", Value(manager));
  manager->Returns("GetComponent", Value(component));
  component->set("ComObject", Value(window));
  window->call("Create", {"classes", Value(session)});
  window->call("Destroy");
  EXPECT_FALSE(window->form());
  EXPECT_EQ(manager->Calls()->Count(), 2);
}

TEST_F(Window, survivesAHostThatDestroysItInAnEvent) {
  window->call("Create", {"classes", Value()});
  window->set("Repository", Value(emptyModel()));
  window->call("Populate");
  const auto listening = window->form()->Editor()->ClassCreated.connect(
      [this](const std::string&) { window->Destroy(); });
  EXPECT_NO_THROW(window->call("CreateClass", {"a", "A", "", "", "", ""}));
  EXPECT_FALSE(window->form());
}

TEST_F(Window, forwardsByNameToEditorAndCanvas) {
  window->call("Create", {"classes", Value()});
  window->set("Path", "/suite");
  EXPECT_EQ(window->form()->Editor()->Path(), "/suite");
  window->set("Repository", Value(emptyModel()));
  window->call("Populate");
  window->call("CreateClass", {"a", "A", "", "", "", ""});
  EXPECT_EQ(window->call("createNode", {"b", "B", 0, 9000, 3000, 1500, 2}), Value(true));
  EXPECT_EQ(window->call("getAllNodes").object()->call("Count"), Value(2));
  EXPECT_EQ(window->call("getNode", {"a"}).object()->get("text"), Value("A"));
  window->set("linkEndArrow", 3);
  EXPECT_EQ(window->form()->Editor()->diagram()->get("linkEndArrow"), Value(3));
  window->set("nodeNumberOfSections", 3);
  EXPECT_EQ(window->get("nodeNumberOfSections"), Value("3")) << "handed on as a string";
  EXPECT_THROW(window->set("nodeNumberOfSections", 17), platform::Error);
  EXPECT_THROW(window->call("createNode", {"c"}), platform::CallError);
  EXPECT_THROW(window->call("noSuchMember"), platform::CallError);
}

TEST_F(Window, forwardsNothingThatIsNotThere) {
  window->call("Create", {"classes", Value()});
  const auto& editor = window->form()->Editor()->memberTable();
  const auto& canvas = window->form()->Editor()->diagram()->memberTable();
  for (const Member& member : window->memberTable().all()) {
    static const std::set<std::string> kOwn = {"Create", "Init",    "PopUp",    "Conceal",
                                               "Deinit", "Destroy", "Populate", "frmCLSDiagram"};
    if (kOwn.contains(member.name)) continue;
    const Member* target = editor.find(member.name, member.kind);
    if (!target) target = canvas.find(member.name, member.kind);
    ASSERT_TRUE(target) << member.name;
    EXPECT_EQ(target->arguments, member.arguments) << member.name;
  }
}

}  // namespace
}  // namespace brisel::component
