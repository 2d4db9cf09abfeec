// The suite's tools that work on the model, made by name so that a host can have its own.

#include "editor/CLSEditor.h"

namespace brisel::editor {

using platform::Ref;

void CLSEditor::MatrixBrowser() {
  trap("MatrixBrowser", [this] {
    const ObjectRef browser = m_registry.create("BriselUtility.MatrixBrowser");
    browser->call("Create");
    browser->set("Path", m_path);
    browser->call("SetRepository", {Ref<platform::Object>(&model())});
    browser->call("PopUp");
  });
}

void CLSEditor::ShowTemplateEditor() {
  trap("ShowTemplateEditor", [this] {
    const ObjectRef templates = m_registry.create("BriselTemplateEditor.Template");
    templates->call("Create");
    templates->call("SetRepository", {Ref<platform::Object>(&model())});
    templates->set("WorkDirectory", m_registry.installationFolder() + "\\Template");
    templates->set("MainTemplate", "C++.tml");
    templates->set("Output", "");
    templates->set("DimFile", "");
    templates->set("template", "");
    templates->call("PopUp");
  });
}

}  // namespace brisel::editor
