#include "component/DiagramWindow.h"

#include <array>

#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::component {

using platform::Member;
using platform::MemberTable;
using platform::Object;
using platform::Ref;
using platform::Value;

namespace {

using Text = std::string_view;

constexpr std::array kEditorProperties = {
    Text("PackageObject"), Text("RepositoryFileName"), Text("Path"),
    Text("Repository"),    Text("UUIDGenerator"),      Text("CLSRepository"),
};

struct Forwarded {
  Text name;
  std::size_t arguments;
};

constexpr std::array kEditorMembers = {
    Forwarded{"CreateAggregation", 6},
    Forwarded{"CreateAssociation", 5},
    Forwarded{"CreateClass", 6},
    Forwarded{"CreateGeneralization", 5},
    Forwarded{"CreateMode", 0},
    Forwarded{"DeleteClass", 1},
    Forwarded{"EditAssociation", 1},
    Forwarded{"EditClass", 1},
    Forwarded{"ExtractAttribute", 1},
    Forwarded{"MorphingAssoc", 2},
    Forwarded{"MorphingClass", 2},
    Forwarded{"ShowCompartments", 3},
    Forwarded{"SizeToFit", 1},
    Forwarded{"SplitClass", 2},
    Forwarded{"SynchronizeDataTypes", 0},
    Forwarded{"GetAssociationFromLink", 1},
    Forwarded{"GetClassFromNode", 1},
    Forwarded{"PropertyNode", 1},
    Forwarded{"ShowPopupMenu", 1},
    Forwarded{"MakeDemo", 0},
    Forwarded{"MatrixBrowser", 0},
    Forwarded{"OpenDiagram", 0},
    Forwarded{"SaveDiagram", 0},
    Forwarded{"ShowTemplateEditor", 0},
};

constexpr std::array kCanvasMembers = {
    Forwarded{"ShowToolbar", 1},
    Forwarded{"AddImage", 2},
    Forwarded{"AddButton", 5},
    Forwarded{"AddStandardButtons", 0},
    Forwarded{"createLink", 4},
    Forwarded{"createNode", 7},
    Forwarded{"deleteSelectedItems", 0},
    Forwarded{"deleteMarkedItems", 0},
    Forwarded{"deleteLink", 1},
    Forwarded{"deleteNode", 1},
    Forwarded{"markNode", 1},
    Forwarded{"markLink", 1},
    Forwarded{"selNode", 1},
    Forwarded{"selLink", 1},
    Forwarded{"unmarkAll", 0},
    Forwarded{"unselectAll", 0},
    Forwarded{"TransformExtent", 1},
    Forwarded{"getNode", 1},
    Forwarded{"getLink", 1},
    Forwarded{"getAllLinks", 0},
    Forwarded{"getAllNodes", 0},
    Forwarded{"getSelectedNodes", 0},
    Forwarded{"getSelectedLinks", 0},
    Forwarded{"getIncomingLinks", 1},
    Forwarded{"getOutgoingLinks", 1},
    Forwarded{"getZoom", 0},
    Forwarded{"zoom", 1},
    Forwarded{"noZoom", 0},
    Forwarded{"SelectMode", 0},
    Forwarded{"DrawCreateMode", 0},
    Forwarded{"ClickCreateMode", 0},
    Forwarded{"CopyToClipboard", 0},
    Forwarded{"Clear", 0},
    Forwarded{"GetDiagram", 0},
    Forwarded{"GetDiagramHandle", 0},
    Forwarded{"refresh", 0},
    Forwarded{"Layout", 1},
    Forwarded{"SetNewNodeSize", 2},
    Forwarded{"LabelFont", 2},
    Forwarded{"SectionFont", 2},
    Forwarded{"PrintDiagram", 1},
    Forwarded{"GetCenter", 1},
    Forwarded{"GetHitNode", 1},
};

constexpr std::array kCanvasProperties = {
    Text("nodePicture"),    Text("linkPicture"),  Text("linkBeginPicture"),
    Text("linkEndPicture"), Text("BackColor"),    Text("nodeNumberOfSections"),
    Text("linkBeginArrow"), Text("linkEndArrow"), Text("linkNodeCX"),
    Text("linkNodeCY"),
};

/// What goes wrong while a window goes away is of no use to the host.
template <class Step>
void quietly(Step&& step) {
  try {
    step();
  } catch (...) {
  }
}

/// Gives a reference that outlives the call: a host may destroy the window in one of its events.
using Receiver = std::function<Ref<Object>(Object&)>;

void forwardMethod(MemberTable& table, const Forwarded& row, const Receiver& receiver) {
  Member member;
  member.name = row.name;
  member.arguments = member.required = row.arguments;
  member.call = [receiver, name = row.name](Object& self, std::vector<Value>& arguments) {
    return receiver(self)->invoke(name, arguments);
  };
  table.add(std::move(member));
}

void forwardProperty(MemberTable& table, Text name, const Receiver& receiver) {
  Member member;
  member.name = name;
  member.kind = Member::Kind::property;
  member.call = [receiver, name](Object& self, std::vector<Value>&) {
    return receiver(self)->get(name);
  };
  // A number of sections is handed on as a string, whatever a host gives.
  const bool asText = name == "nodeNumberOfSections";
  member.assign = [receiver, name, asText](Object& self, const Value& value) {
    receiver(self)->set(name, asText && value.isInteger() ? Value(value.text()) : value);
  };
  table.add(std::move(member));
}

}  // namespace

void DiagramWindow::Create(Text componentName, Object* session) {
  const Ref<DiagramWindow> self(this);
  Destroy();
  const auto form = platform::make<frmCLSDiagram>(m_registry);
  m_form = form;
  form->Load();
  form->Editor()->ComponentName(componentName);
  form->Editor()->Session(session);
  FormChanged();
}

void DiagramWindow::PopUp(bool modal) {
  const Ref<DiagramWindow> self(this);
  loadedForm()->Show(modal);
  FormChanged();
  if (modal) ShownModally();
}

void DiagramWindow::Conceal() {
  const Ref<DiagramWindow> self(this);
  const Ref<frmCLSDiagram> form = m_form;
  if (!form) return;
  quietly([&] { form->Hide(); });
  quietly([&] { FormChanged(); });
}

void DiagramWindow::Destroy() {
  const Ref<DiagramWindow> self(this);  // a host's component manager may drop the last one
  dropForm();
}

void DiagramWindow::dropForm() {
  const Ref<frmCLSDiagram> form = std::exchange(m_form, {});  // its tear-down may come back here
  if (!form) return;
  quietly([&] { form->Hide(); });
  quietly([&] { form->Unload(); });
  quietly([&] { FormChanged(); });
}

void DiagramWindow::Populate() {
  const Ref<frmCLSDiagram> form = loadedForm();
  form->Caption("UML Class Diagram");
  form->Editor()->Populate();
}

Ref<frmCLSDiagram> DiagramWindow::loadedForm() const {
  if (!m_form) {
    throw platform::Error(platform::ErrorNumber::objectMissing,
                          "The diagram window has no form: call Create first");
  }
  return m_form;
}

const MemberTable& DiagramWindow::memberTable() const {
  static const MemberTable kTable = [] {
    using D = DiagramWindow;
    MemberTable table = platform::MemberTableOf<D>()
                            .method("Create", &D::Create)
                            .method("Init", &D::Init)
                            .method("PopUp", &D::PopUp)
                            .method("Conceal", &D::Conceal)
                            .method("Deinit", &D::Deinit)
                            .method("Destroy", &D::Destroy)
                            .method("Populate", &D::Populate)
                            .property("frmCLSDiagram", &D::form)
                            .build();
    const Receiver toEditor = [](Object& self) -> Ref<Object> {
      return dynamic_cast<D&>(self).editor();
    };
    const Receiver toCanvas = [](Object& self) -> Ref<Object> {
      return dynamic_cast<D&>(self).canvas();
    };
    for (const Text name : kEditorProperties) forwardProperty(table, name, toEditor);
    for (const Forwarded& row : kEditorMembers) forwardMethod(table, row, toEditor);
    for (const Forwarded& row : kCanvasMembers) forwardMethod(table, row, toCanvas);
    for (const Text name : kCanvasProperties) forwardProperty(table, name, toCanvas);
    return table;
  }();
  return kTable;
}

}  // namespace brisel::component
