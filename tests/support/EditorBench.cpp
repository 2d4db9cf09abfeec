#include "support/EditorBench.h"

#include "component/Suite.h"
#include "platform/ValueArray.h"
#include "platform/ValueRecord.h"

namespace brisel::test {

using platform::each;
using platform::make;
using platform::Ref;

namespace {

template <class Item>
std::string keysOf(const Ref<platform::Collection>& items) {
  std::string keys;
  for (auto& item : each<Item>(items)) keys += (keys.empty() ? "" : " ") + item.key();
  return keys;
}

}  // namespace

EditorBench::EditorBench(const std::function<void(platform::ComponentRegistry&)>& adapt)
    : shell(make<component::AutomaticShell>()), registry(shell) {
  component::registerSuite(registry);
  registry.installationFolder("share");
  adapt(registry);
  m_listening = shell->Answered.connect(
      [this](const std::string& kind, const Ref<platform::ValueRecord>& told) {
        if (kind == "message") messages.push_back(told->get("text").string());
      });
  editor = make<editor::CLSEditor>(registry);
  editor->Repository(store.get());
}

EditorBench::~EditorBench() { editor->terminate(); }

void EditorBench::answerForm(const Steps& steps) const {
  std::vector<platform::Value> values;
  for (const auto& step : steps) values.emplace_back(make<platform::ValueArray>(step));
  shell->AnswerForm(*make<platform::ValueArray>(std::move(values)));
}

void EditorBench::redraw() {
  editor->Clear();
  editor->Populate();
}

Ref<platform::DiagramNode> EditorBench::box(std::string_view key) const {
  return editor->diagram()->getNode(key);
}

Ref<platform::DiagramLink> EditorBench::line(std::string_view key) const {
  return editor->diagram()->getLink(key);
}

std::string EditorBench::drawnNodes() const {
  return keysOf<platform::DiagramNode>(editor->diagram()->getAllNodes());
}

std::string EditorBench::drawnLinks() const {
  return keysOf<platform::DiagramLink>(editor->diagram()->getAllLinks());
}

std::vector<std::string> EditorBench::rows(std::string_view key, int section) const {
  std::vector<std::string> texts;
  for (auto& row : each<platform::Object>(box(key)->Section(section)->Rows())) {
    std::string text = row.get("text").string();
    text.erase(text.find_last_not_of(' ') + 1);
    texts.push_back(std::move(text));
  }
  return texts;
}

bool EditorBench::isPressed(std::string_view button) const {
  const auto buttons = editor->diagram()->get("Buttons").object();
  for (auto& one : each<platform::Object>(platform::as<platform::Collection>(buttons))) {
    if (one.get("key").string() == button) return one.get("pressed").boolean();
  }
  return false;
}

void EditorBench::click(std::string_view button) const {
  editor->diagram()->call("ClickButton", {button});
}

}  // namespace brisel::test
