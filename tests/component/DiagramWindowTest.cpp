#include <functional>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "component/AutomaticShell.h"
#include "component/DiagramWindow.h"
#include "component/HostObject.h"
#include "component/Suite.h"
#include "platform/Error.h"
#include "platform/MemberTable.h"
#include "platform/ValueRecord.h"

namespace brisel::component {
namespace {

using platform::make;
using platform::Member;
using platform::Object;
using platform::Ref;
using platform::Value;

/// A host object of which one member fails, whichever way it is asked for.
class FailingHost : public HostObject {
 public:
  explicit FailingHost(std::string member) : m_member(std::move(member)) {}
  Value invoke(std::string_view member, std::vector<Value>& arguments) override {
    check(member);
    return HostObject::invoke(member, arguments);
  }
  Value get(std::string_view member) override {
    check(member);
    return HostObject::get(member);
  }

 private:
  void check(std::string_view member) const {
    if (member == m_member) throw std::runtime_error("The host fails at " + m_member);
  }
  std::string m_member;
};

/// A host's canvas that has no pictures.
class PlainCanvas : public canvas::DiagramControl {
 public:
  using DiagramControl::DiagramControl;
  [[nodiscard]] const platform::MemberTable& memberTable() const override {
    static const platform::MemberTable kTable = [this] {
      platform::MemberTable table;
      for (const Member& member : DiagramControl::memberTable().all()) {
        if (member.name != "AddImage") table.add(member);
      }
      return table;
    }();
    return kTable;
  }
};

/// A session, its component manager, a component and the component's object; the member of that
/// name fails, if any does.
struct Host {
  explicit Host(const std::string& failing = {})
      : session(make<FailingHost>(failing)),
        manager(make<FailingHost>(failing)),
        component(make<FailingHost>(failing)),
        comObject(make<FailingHost>(failing)) {
    session->Returns("Application", Value(session));
    session->Returns("ComponentManager", Value(manager));
    manager->Returns("GetComponent", Value(component));
    component->Returns("ComObject", Value(comObject));
  }
  ~Host() {
    for (const auto& object : {session, manager, component, comObject}) object->terminate();
  }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  /// "GetComponent Deinit": the members that were invoked on one of them.
  static std::string calls(const Ref<HostObject>& object) {
    std::string told;
    for (auto& call : platform::each<HostCall>(object->Calls())) {
      told += (told.empty() ? "" : " ") + call.member();
      for (const Value& argument : call.arguments()->values()) told += ":" + argument.text();
    }
    return told;
  }

  Ref<HostObject> session, manager, component, comObject;
};

class Window : public testing::Test {
 protected:
  Window() {
    registerSuite(registry);
    listening = shell->Answered.connect(
        [this](const std::string& kind, const Ref<platform::ValueRecord>& told) {
          if (kind == "message") messages.push_back(told->get("text").string());
        });
  }

  void create(const Ref<HostObject>& session = {}) {
    window->Create("classes", session.get());
    window->Repository(emptyModel().get());
    window->Populate();
  }

  Ref<platform::MetaRepository> emptyModel() {
    auto model = registry.create<platform::MetaRepository>("BriselCLS.Meta");
    model->Init();
    return model;
  }

  Ref<AutomaticShell> shell = make<AutomaticShell>();
  platform::ComponentRegistry registry{shell};
  platform::Connection listening;
  std::vector<std::string> messages;
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

TEST_F(Window, leavesTheComponentManagerOfItsHost) {
  Host host;
  create(host.session);
  window->Destroy();
  EXPECT_EQ(Host::calls(host.manager), "GetComponent:classes RemoveComponent:classes");
  EXPECT_EQ(Host::calls(host.comObject), "Deinit Destroy");
  window->Destroy();
  EXPECT_EQ(Host::calls(host.comObject), "Deinit Destroy") << "once";
  for (const char* missing : {"GetComponent", "ComObject"}) {
    Host partial;
    (missing == std::string("ComObject") ? partial.component : partial.manager)
        ->Returns(missing, Value());
    create(partial.session);
    window->Destroy();
    EXPECT_EQ(Host::calls(partial.manager), "GetComponent:classes RemoveComponent:classes");
    EXPECT_EQ(Host::calls(partial.comObject), "");
  }
  EXPECT_TRUE(messages.empty());
}

TEST_F(Window, outlivesAHostWhoseMembersFail) {
  for (const char* failing : {"Application", "ShowHelp", "ComponentManager", "GetComponent",
                              "ComObject", "Deinit", "Destroy", "RemoveComponent"}) {
    SCOPED_TRACE(failing);
    Host host(failing);
    create(host.session);
    const auto form = window->form();
    EXPECT_NO_THROW(form->KeyPress("F1", ""));
    EXPECT_NO_THROW(form->KeyPress("F2", ""));
    EXPECT_TRUE(messages.empty()) << "no help is no reason to stop a person";
    EXPECT_NO_THROW(window->Destroy());
    EXPECT_FALSE(window->form());
    EXPECT_FALSE(form->Editor()->Session()) << "let go of all the same";
    const bool inTearDown =
        failing != std::string("Application") && failing != std::string("ShowHelp");
    EXPECT_EQ(messages.size(), inTearDown ? 1U : 0U) << "the editor tells what went wrong";
    messages.clear();
  }
}

TEST_F(Window, showsHelpAndTheBusyPointer) {
  Host host;
  window->Create("classes", host.session.get());
  const auto form = window->form();
  std::string pointers;
  const auto following =
      form->Changed.connect([&] { pointers += std::to_string(form->MousePointer()) + " "; });
  window->Repository(emptyModel().get());
  window->Populate();
  EXPECT_EQ(pointers, "0 11 0 ") << "the caption first";
  form->KeyPress("F2", "");
  EXPECT_EQ(Host::calls(host.session), "");
  form->KeyPress("F1", "");
  EXPECT_EQ(Host::calls(host.session), "ShowHelp:UML class diagram.html");
  form->Resize(9000, 0);
  EXPECT_EQ(form->Editor()->diagramBounds(), (platform::Rect{0, 0, 9000, 0}));
}

TEST_F(Window, waitsInAModalPopUpOnly) {
  int waited = 0;
  const auto waiting = window->ShownModally.connect([&] {
    ++waited;
    EXPECT_TRUE(window->form()->Visible() && window->form()->modal());
    window->Conceal();
  });
  create();
  window->PopUp(false);
  EXPECT_EQ(waited, 0);
  window->PopUp(true);
  EXPECT_EQ(waited, 1);
  EXPECT_FALSE(window->form()->Visible());
}

/// Everything by which a host hears of something, and what leads to it.
TEST_F(Window, survivesAHostThatDropsItInAnEvent) {
  using Press = std::function<void(canvas::DiagramControl&)>;
  struct Case {
    const char* event;
    bool ofEditor;
    Press lead;
  };
  const Press click = [](auto& canvas) {
    canvas.PointerMove(500, 300);
    canvas.PointerPress(500, 300, "left", "");
    canvas.PointerRelease(500, 300, "left", "");
  };
  const Press drag = [](auto& canvas) {
    canvas.PointerMove(500, 300);
    canvas.PointerPress(500, 300, "left", "");
    canvas.PointerMove(5000, 3000);
    canvas.PointerRelease(5000, 3000, "left", "");
  };
  const Press rightClick = [](auto& canvas) {
    canvas.PointerPress(500, 300, "right", "");
    canvas.PointerRelease(500, 300, "right", "");
  };
  const Press makeByHand = [](auto& canvas) {
    canvas.ClickCreateMode();
    canvas.PointerPress(9000, 9000, "left", "");
    canvas.PointerRelease(9000, 9000, "left", "");
  };
  const Press button = [](auto& canvas) { canvas.ClickButton("ViewAttributes"); };
  const Press link = [](auto& canvas) { canvas.createLink("l", "", "a", "b"); };
  const Press remove = [](auto& canvas) {
    canvas.selNode(Value("a"));
    canvas.KeyPress("Delete", "");
  };
  const Case cases[] = {
      {"ClassClicked", true, click},      {"ClassMoved", true, drag},
      {"ClassEnter", true, drag},         {"ClassRClicked", true, rightClick},
      {"ClassCreated", true, makeByHand}, {"ToolbarButton", true, button},
      {"AssocCreated", true, link},       {"AssocChanged", true, link},
      {"ClassDeleted", true, remove},     {"NodeCreated", false, makeByHand},
      {"NodeDeleted", false, remove},     {"NodeMoved", false, drag},
      {"ToolbarButton", false, button},   {"LinkCreated", false, link},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(std::string(one.event) + (one.ofEditor ? " of the editor" : " of the canvas"));
    window = make<DiagramWindow>(registry);
    create();
    window->CreateClass("a", "A", "", "", "", "");
    window->CreateClass("b", "B", "", "", "", "");
    const auto canvas = platform::as<canvas::DiagramControl>(window->form()->Editor()->diagram());
    canvas->getNode("b")->bounds({0, 6000, 3000, 1500});
    Object& raising = one.ofEditor ? static_cast<Object&>(*window->form()->Editor()) : *canvas;
    const auto dropping = raising.listen(one.event, [this](const auto&) { window = {}; });
    EXPECT_NO_THROW(one.lead(*canvas));
    EXPECT_FALSE(window) << "the event was raised";
    messages.clear();
  }
}

TEST_F(Window, survivesAManagerThatDropsTheLastReferenceToIt) {
  class Manager : public HostObject {
   public:
    explicit Manager(Ref<DiagramWindow>& held) : m_held(held) {}
    Value invoke(std::string_view member, std::vector<Value>& arguments) override {
      if (member == "RemoveComponent") m_held = {};
      return HostObject::invoke(member, arguments);
    }

   private:
    Ref<DiagramWindow>& m_held;
  };
  const auto session = make<HostObject>();
  session->set("ComponentManager", Value(Ref<platform::Object>(make<Manager>(window))));
  create(session);
  DiagramWindow& last = *window;
  last.Destroy();
  EXPECT_FALSE(window);
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

TEST_F(Window, forwardsByTypedCall) {
  create();
  window->Path("/suite");
  EXPECT_EQ(window->get("Path"), Value("/suite"));
  EXPECT_TRUE(window->CreateClass("a", "A", "", "", "", ""));
  EXPECT_TRUE(window->CreateClass("b", "B", "", "", "", ""));
  EXPECT_TRUE(window->CreateGeneralization("g", "", "", "a", "b"));
  EXPECT_TRUE(window->GetAssociationFromLink("g"));
  EXPECT_FALSE(window->createNode("a", "again", 0, 0, 3000, 1500, 2)) << "the key is in use";
  EXPECT_TRUE(window->selNode("a"));
  EXPECT_EQ(window->getSelectedNodes()->Count(), 1);
  EXPECT_EQ(window->getIncomingLinks(window->getNode("b"))->Count(), 1);
  window->Layout("%HIERARCHY%");
  EXPECT_NE(window->getNode("a")->get("top"), window->getNode("b")->get("top"));
  window->zoom(50);
  EXPECT_EQ(window->getZoom(), Value(50.0));
  window->BackColor(0x102030);
  EXPECT_EQ(window->BackColor(), 0x102030);
  window->nodeNumberOfSections("3");
  EXPECT_EQ(window->nodeNumberOfSections(), "3");
  EXPECT_TRUE(window->deleteNode("a"));
  EXPECT_EQ(window->getAllNodes()->Count(), 1);
  EXPECT_THROW(window->LabelFont("Courier New", 0), platform::Error) << "errors pass to the host";
}

TEST_F(Window, namesWhatIsWrongWithACall) {
  const auto refusal = [this](const std::function<void()>& call) {
    try {
      call();
    } catch (const platform::Error& error) {
      return std::string(error.what());
    }
    return std::string("no error");
  };
  const auto members = window->memberTable().all();
  for (const Member& member : members) {
    static const std::set<std::string> kAlways = {"Create", "Init",    "Conceal",
                                                  "Deinit", "Destroy", "frmCLSDiagram"};
    if (kAlways.contains(member.name) || member.kind == Member::Kind::event) continue;
    const std::string told = refusal([&] {
      member.kind == Member::Kind::method
          ? static_cast<void>(window->call(member.name, std::vector<Value>(member.arguments)))
          : static_cast<void>(window->get(member.name));
    });
    EXPECT_NE(told.find("no form"), std::string::npos) << member.name << ": " << told;
  }
  create();
  for (const Member& member : members) {
    if (member.kind != Member::Kind::method) continue;
    const std::string told = refusal(
        [&] { window->call(member.name, std::vector<Value>(member.arguments + 1, Value(1))); });
    EXPECT_NE(told.find(member.name), std::string::npos) << member.name << ": " << told;
  }
  EXPECT_NE(refusal([&] { window->call("zoom", {"wide"}); }).find("zoom"), std::string::npos);
  EXPECT_NE(refusal([&] { window->set("linkEndArrow", "long"); }).find("linkEndArrow"),
            std::string::npos);
}

TEST_F(Window, hasNoMoreThanAHostsCanvasHas) {
  registry.add("BriselDiagram.diagramControl",
               [](platform::ComponentRegistry& made) { return make<PlainCanvas>(made); });
  create();
  EXPECT_TRUE(window->createNode("a", "A", 0, 0, 3000, 1500, 2));
  try {
    window->AddImage("logo", "logo.bmp");
    ADD_FAILURE() << "the canvas has no such member";
  } catch (const platform::CallError& error) {
    EXPECT_EQ(error.number(), static_cast<int>(platform::ErrorNumber::memberUnknown));
    EXPECT_NE(std::string(error.what()).find("AddImage"), std::string::npos);
  }
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
