#include "support/EditorChecks.h"

#include <set>

namespace brisel::test {

using platform::each;
using platform::Ref;

namespace {

Ref<platform::Element> find(editor::CLSEditor& editor, std::string_view type,
                            std::string_view identifier) {
  return editor.Repository()->MetaNodes(type)->find(identifier);
}

std::string checkBoxes(editor::CLSEditor& editor) {
  std::string wrong;
  for (auto& box : each<platform::DiagramNode>(editor.diagram()->getAllNodes())) {
    const std::string key = box.key();
    const auto wrapper = editor.GetClassFromNode(key);
    if (!wrapper) {
      wrong += "box " + key + " has no wrapper\n";
    } else if (wrapper->Node().get() != &box) {
      wrong += "the wrapper of box " + key + " has another box\n";
    } else if (wrapper->clsObject() != find(editor, "Class", key)) {
      wrong += "box " + key + " shows what the model does not have\n";
    }
  }
  for (auto& one : each<platform::Node>(editor.Repository()->MetaNodes("Class")->extension())) {
    if (!editor.diagram()->getNode(one.identifier())) wrong += "class " + one.identifier() + " is not drawn\n";
  }
  return wrong;
}

/// The keys of the classes that a relationship joins, the line's source first.
std::string modelEnds(const platform::Node& relationship) {
  const std::string kind = relationship.Parent()->name();
  const bool inherits = kind == "Generalization";
  std::string keys;
  for (const char* word : {inherits ? "Sub" : "Source", inherits ? "Super" : "Target"}) {
    const auto links = relationship.outgoing(kind + "." + word + ".Class");
    keys += links->Count() == 1
                ? platform::as<platform::Link>(links->Item(1))->Target()->identifier() + '>'
                : std::to_string(links->Count()) + " ends>";
  }
  return keys;
}

std::string checkLines(editor::CLSEditor& editor) {
  std::string wrong;
  for (auto& line : each<platform::DiagramLink>(editor.diagram()->getAllLinks())) {
    const std::string key = line.key();
    const auto wrapper = editor.GetAssociationFromLink(key);
    if (!wrapper || wrapper->link().get() != &line) {
      wrong += "line " + key + " has no wrapper\n";
      continue;
    }
    const auto node = wrapper->clsObject();
    if (find(editor, node->Parent()->name(), key) != node) {
      wrong += "line " + key + " shows what the model does not have\n";
    } else if (modelEnds(*node) != line.source()->key() + '>' + line.target()->key() + '>') {
      wrong += "line " + key + " joins other classes than " + modelEnds(*node) + '\n';
    }
  }
  for (const char* kind : {"Association", "Aggregation", "Generalization"}) {
    for (auto& one : each<platform::Node>(editor.Repository()->MetaNodes(kind)->extension())) {
      if (!editor.diagram()->getLink(one.identifier())) wrong += std::string(kind) + " is not drawn\n";
    }
  }
  return wrong;
}

}  // namespace

std::string checkAgreement(editor::CLSEditor& editor) {
  return checkBoxes(editor) + checkLines(editor);
}

}  // namespace brisel::test
