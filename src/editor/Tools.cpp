// The suite's tools that work on the model, made by name so that a host can have its own.

#include "editor/CLSEditor.h"

namespace brisel::editor {

using platform::Ref;

/// Nothing where the tool is not installed or cannot be made: the command is quiet then.
CLSEditor::ObjectRef CLSEditor::createTool(Text progId) {
  try {
    return m_registry.create(progId);
  } catch (...) {
    return {};
  }
}

void CLSEditor::MatrixBrowser() {
  const ObjectRef browser = createTool("BriselUtility.MatrixBrowser");
  if (!browser) return;
  trap("MatrixBrowser", [&] {
    browser->call("Create");
    browser->set("Path", m_path);
    browser->call("SetRepository", {Ref<platform::Object>(&model())});
    browser->call("PopUp");
  });
}

void CLSEditor::ShowTemplateEditor() {
  const ObjectRef templates = createTool("BriselTemplateEditor.Template");
  if (!templates) return;
  trap("ShowTemplateEditor", [&] {
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
