// Naming classes in place, with a text box over the box's title.

#include <algorithm>

#include "controls/Row.h"
#include "editor/CLSEditor.h"
#include "platform/Text.h"

namespace brisel::editor {

namespace {

constexpr double kSmallestFont = 6;      // points: smaller cannot be read
constexpr double kLineHeight = 1.5;      // of the text box, in its font's size
constexpr double kSmallestWidth = 1500;  // twips of the view

/// The name is the last line of the title, under the stereotype.
platform::Rect nameArea(const platform::DiagramNode& box) {
  platform::Rect area = box.titleArea();
  const std::string title = box.text();
  const auto lines = static_cast<double>(1 + std::count(title.begin(), title.end(), '\n'));
  area.top += area.height * (lines - 1) / lines;
  area.height /= lines;
  return area;
}

}  // namespace

void CLSEditor::BeginClassName(platform::DiagramNode& box, Text text) {
  m_className->Tag(box.key());
  m_className->Text(text);
  placeClassName();
  m_className->Visible(true);
  m_className->SelStart(0);
  m_className->SelLength(static_cast<std::int64_t>(text.size()));
  m_className->SetFocus();
}

void CLSEditor::renameInPlace(const std::string& key) {
  const ClassRef named = drawnClass(key);
  CommitClassName();
  BeginClassName(*named->Node(), named->name());
}

void CLSEditor::placeClassName() {
  const auto box = m_diagram->getNode(m_className->Tag());
  if (!box) return;
  const double font = std::max(kSmallestFont, kNameFontSize * m_diagram->getZoom() / 100);
  platform::Rect area = m_diagram->toView(nameArea(*box));
  const double height = std::max(area.height, kLineHeight * font * platform::kTwipsPerPoint);
  const double width = std::max(area.width, kSmallestWidth);
  area = {area.center().x - width / 2, area.center().y - height / 2, width, height};
  m_className->FontSize(font);
  m_className->area(area);
}

void CLSEditor::CommitClassName() {
  if (!m_className->Visible()) return;
  const std::string key = m_className->Tag();
  const std::string text = m_className->Text();
  endNaming();
  const ClassRef named = GetClassFromNode(key);
  if (!named || !controls::isInRepository(*named->clsObject())) return;
  if (!platform::trimmed(text).empty()) named->name(text);
  named->Populate();
  SynchronizeDataTypes();
  ClassChanged(key);
}

void CLSEditor::endNaming() {
  m_className->Visible(false);
  m_className->Tag("");
}

void CLSEditor::nameKeyPressed(const std::string& key) {
  if (key == "Return" || key == "Enter" || key == "Tab") {
    CommitClassName();
  } else if (key == "Escape") {
    endNaming();
  }
}

}  // namespace brisel::editor
