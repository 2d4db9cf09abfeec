// The suite's tools that work on the model, made by name so that a host can have its own.

#include <utility>

#include "controls/Row.h"
#include "editor/Busy.h"
#include "editor/CLSEditor.h"
#include "platform/Error.h"
#include "platform/MemberTable.h"
#include "platform/ValueArray.h"

namespace brisel::editor {

using platform::each;
using platform::Ref;
using platform::Value;

namespace {

/// Listens where the tool has such an event; false for one without.
template <class Handler>
bool hear(platform::Object& tool, std::string_view event, Handler handler,
          std::vector<platform::Connection>& connections) {
  try {
    connections.push_back(tool.listen(event, std::move(handler)));
    return true;
  } catch (const platform::CallError&) {
    return false;
  }
}

std::vector<std::string> textsIn(const std::vector<Value>& arguments) {
  std::vector<std::string> texts;
  for (const Value& argument : arguments) {
    const auto array = argument.isObject() ? platform::as<platform::ValueArray>(argument.object())
                                           : Ref<platform::ValueArray>();
    if (!array) {
      texts.push_back(argument.text());
      continue;
    }
    for (const Value& value : array->values()) texts.push_back(value.text());
  }
  return texts;
}

}  // namespace

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
    followTool(browser);
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
    selectIn(*templates);
    templates->call("PopUp");
  });
}

/// The classes that are selected are those that a template is tried on; a host's tool may not have
/// that.
void CLSEditor::selectIn(platform::Object& templates) {
  if (!templates.memberTable().find("Select", platform::Member::Kind::method)) return;
  std::vector<Value> keys;
  for (auto& box : each<platform::DiagramNode>(m_diagram->getSelectedNodes())) {
    keys.emplace_back(box.key());
  }
  templates.call("Select", {platform::make<platform::ValueArray>(std::move(keys))});
}

CLSEditor::ObjectRef CLSEditor::MatrixBrowser1() const {
  for (auto open = m_openTools.rbegin(); open != m_openTools.rend(); ++open) {
    if (open->tool) return open->tool;
  }
  return {};
}

/// A host's own tool may have none of the events, or some of them.
void CLSEditor::followTool(const ObjectRef& tool) {
  OpenTool followed;
  hear(
      *tool, "Selected",
      [this](const std::vector<Value>& arguments) {
        trap("ToolSelected", [&] { toolSelected(textsIn(arguments)); });
      },
      followed.connections);
  hear(
      *tool, "Edited",
      [this](const std::vector<Value>& arguments) {
        const std::vector<std::string> texts = textsIn(arguments);
        if (texts.size() != 2) return;
        trap("ToolEdited", [&] { toolEdited(texts[0], texts[1]); });
      },
      followed.connections);
  const bool tellsItsEnd = hear(
      *tool, "Closed",
      [this, closed = tool.get()](const std::vector<Value>&) { toolClosed(closed); },
      followed.connections);
  if (tellsItsEnd) followed.tool = tool;
  if (!followed.connections.empty()) m_openTools.push_back(std::move(followed));
}

void CLSEditor::toolClosed(const platform::Object* tool) {
  std::erase_if(m_openTools, [&](const OpenTool& open) { return open.tool == tool; });
}

void CLSEditor::showModelInTools() {
  const std::vector<ObjectRef> held = [this] {
    std::vector<ObjectRef> tools;
    for (const OpenTool& open : m_openTools) {
      if (open.tool) tools.push_back(open.tool);
    }
    return tools;
  }();
  const Ref<platform::Object> shown(m_repository->GetRepository().get());
  for (const ObjectRef& tool : held) tool->call("SetRepository", {shown});
}

void CLSEditor::endTools() {
  for (const OpenTool& open : std::exchange(m_openTools, {})) {
    if (open.tool) open.tool->terminate();
  }
}

void CLSEditor::toolSelected(const std::vector<std::string>& identifiers) {
  CommitClassName();
  if (!present(identifiers)) m_diagram->showHint("The diagram does not show it");
}

/// Exactly these are selected, and brought into view; false when none of them is drawn.
bool CLSEditor::present(const std::vector<std::string>& identifiers) {
  const CanvasUpdate update(*m_diagram);
  for (auto& box : each<platform::DiagramNode>(m_diagram->getSelectedNodes())) box.selected(false);
  for (auto& line : each<platform::DiagramLink>(m_diagram->getSelectedLinks())) {
    line.selected(false);
  }
  platform::Rect area;
  for (const std::string& key : identifiers) {
    if (const auto box = m_diagram->getNode(key)) {
      box->selected(true);
      area = area.united(box->bounds());
    } else if (const auto line = m_diagram->getLink(key)) {
      line->selected(true);
      const auto points = line->ExtraPoints();
      for (std::size_t i = 0; i < static_cast<std::size_t>(points->Count()); ++i) {
        const platform::Point at = points->at(i);
        area = area.united(platform::Rect{at.x, at.y, 0, 0}.grownBy(platform::kTwipsPerPixel));
      }
    }
  }
  if (!area.isEmpty()) m_diagram->reveal(area);
  return !area.isEmpty();
}

/// Draws the relationship that was made there, or takes the line of one that is gone away; the rest
/// of the diagram stays as it is.
void CLSEditor::toolEdited(Text type, const std::string& identifier) {
  const auto line = GetAssociationFromLink(identifier);
  const auto found = model().MetaNodes(type)->find(identifier);
  if (!found) {
    if (line && controls::isInRepository(*line->clsObject()))
      return;  // it is of another type by now
    deleteGeometryOf(identifier);
    m_diagram->deleteLink(identifier);
  } else if (line) {
    line->Populate();
  } else {
    const auto relationship = platform::as<platform::Node>(found);
    const Temporarily programmatic(m_programmatic, true);
    drawRelationship(*relationship, repository::relationshipTypeOf(*relationship));
  }
}

}  // namespace brisel::editor
