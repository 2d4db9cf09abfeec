#include "qt/HostButtons.h"

namespace brisel::qt {

namespace {

struct HostButton {
  const char* key;  ///< also the icon's; empty for a separator
  const char* tooltip;
  const char* icon = nullptr;
};

constexpr const char* kNewClass = "NewClass";

constexpr HostButton kButtons[] = {
    {kNewClass, "draw new classes"},
    {"Association", "draw associations"},
    {"CompositeAggregation", "draw composite aggregations"},
    {"SharedAggregation", "draw shared aggregations"},
    {"Generalization", "draw generalizations"},
    {"Open", "Open diagram", "FileOpen"},
    {"Stereotypes", "edit stereotypes"},
    {"MatrixBrowser", "browse all relationships in a matrix"},
    {"Template", "edit code templates"},
    {"Demo", "fill the model with a demo"},
    {"", ""},
};

}  // namespace

HostButtons::HostButtons(editor::CLSEditor& editor, const std::string& installationFolder)
    : m_editor(editor), m_canvas(editor.diagram()) {
  for (const HostButton& row : kButtons) {
    const std::string stem = row.icon ? row.icon : row.key;
    const std::string icon = stem.empty() ? stem : installationFolder + "\\" + stem + ".bmp";
    m_canvas->AddButton(row.key, "", row.tooltip, icon, !stem.empty());
  }
  m_connections.push_back(m_editor.ToolbarButton.connect([this](const std::string& key) {
    if (key == kNewClass) m_editor.CreateMode();
  }));
  m_connections.push_back(m_canvas->ModeChanged.connect([this] { showMode(); }));
  showMode();
}

void HostButtons::showMode() {
  if (m_canvas->Mode() == "clickCreate") {
    m_canvas->PressButton(kNewClass);
  } else {
    m_canvas->ReleaseButton(kNewClass);
  }
}

}  // namespace brisel::qt
