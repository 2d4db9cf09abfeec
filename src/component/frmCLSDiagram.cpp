#include "component/frmCLSDiagram.h"

#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::component {

frmCLSDiagram::frmCLSDiagram(platform::ComponentRegistry& registry)
    : m_editor(registry.create<editor::CLSEditor>("BriselCLS.CLSEditor")) {}

void frmCLSDiagram::HourglassOn() { mousePointer(kHourglassPointer); }
void frmCLSDiagram::HourglassOff() { mousePointer(kDefaultPointer); }

void frmCLSDiagram::mousePointer(int pointer) {
  m_mousePointer = pointer;
  Changed();
}

void frmCLSDiagram::Load() { m_editor->ParentWindow(this); }

void frmCLSDiagram::Unload() {
  if (m_visible) Hide();
  m_editor->terminate();
}

void frmCLSDiagram::Show(bool modal) {
  m_modal = modal;
  m_visible = true;
  Changed();
}

void frmCLSDiagram::Hide() {
  m_visible = false;
  Changed();
}

void frmCLSDiagram::Resize(double width, double height) { m_editor->Resize(width, height); }

void frmCLSDiagram::KeyPress(std::string_view key, std::string_view) {
  if (key != "F1") return;
  try {
    const auto session = m_editor->Session();
    const auto application = session ? session->get("Application").object() : nullptr;
    if (application) application->call("ShowHelp", {"UML class diagram.html"});
  } catch (...) {
    // A host without help is no reason to stop the user.
  }
}

void frmCLSDiagram::Caption(std::string_view caption) {
  m_caption = caption;
  Changed();
}

const platform::MemberTable& frmCLSDiagram::memberTable() const {
  using F = frmCLSDiagram;
  static const platform::MemberTable kTable = platform::MemberTableOf<F>()
                                                  .property("CLSEditor", &F::CLSEditor)
                                                  .property("Editor", &F::Editor)
                                                  .property("CLSEditor1", &F::Editor)
                                                  .method("HourglassOn", &F::HourglassOn)
                                                  .method("HourglassOff", &F::HourglassOff)
                                                  .property("Caption", &F::Caption, &F::Caption)
                                                  .property("Visible", &F::Visible)
                                                  .property("MousePointer", &F::MousePointer)
                                                  .method("Resize", &F::Resize)
                                                  .method("KeyPress", &F::KeyPress)
                                                  .optional(1)
                                                  .build();
  return kTable;
}

}  // namespace brisel::component
