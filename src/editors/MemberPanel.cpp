#include "editors/MemberPanel.h"

#include <array>

#include "controls/Row.h"
#include "platform/Text.h"

namespace brisel::editors {

using platform::as;
using platform::Change;
using platform::each;
using platform::Link;
using platform::Node;
using platform::Ref;
using repository::CLSRepository;
namespace types = platform::types;

namespace {

using Text = std::string_view;

constexpr std::array<Text, 3> kScopes = {"public", "protected", "private"};
constexpr double kColumnWidth = 1000;  // twips

}  // namespace

const MemberKind kAttributes = {
    types::kAttrib,
    types::kClassHasAttrib,
    types::kAttribHasDataType,
    true,
    "\\Attrib.ico",
    "Attributes",
    [](CLSRepository& repository, Text owner, Text name, Text scope, Text dataType) {
      Ref<Link> link;
      repository.AddAttribute(owner, name, "", false, scope, false, false, "", false, dataType,
                              link);
    },
    &CLSRepository::SetAttribDataType,
    &CLSRepository::DeleteAttribute};

const MemberKind kOperations = {
    types::kOperation,
    types::kClassHasOperation,
    types::kOperationHasDataType,
    true,
    "\\Operation.ico",
    "Operation",
    [](CLSRepository& repository, Text owner, Text name, Text scope, Text dataType) {
      Ref<Link> link;
      repository.AddOperation(owner, name, "", "", false, false, false, scope, false, false,
                              dataType, link);
    },
    &CLSRepository::SetOperationDataType,
    &CLSRepository::DeleteOperation};

const MemberKind kParameters = {
    types::kParameter,
    types::kOperationHasParameter,
    types::kParameterHasDataType,
    false,
    "\\Parameter.ico",
    "Parameter",
    [](CLSRepository& repository, Text owner, Text name, Text, Text dataType) {
      Ref<Link> link;
      repository.AddParameter(owner, name, "", dataType, link);
    },
    &CLSRepository::SetParameterDataType,
    &CLSRepository::DeleteParameter};

void showColumns(controls::ListView& list, const MemberKind& kind, Text iconFolder) {
  list.clearRows();
  list.clearColumns();
  for (const Text column : {"Name", "Identifier", "Scope"}) {
    if (column == "Scope" && !kind.hasScope) continue;
    list.addColumn(column, column, kColumnWidth);
  }
  list.setIcon(std::string(iconFolder).append(kind.icon), kind.iconKey);
}

MemberPanel::MemberPanel(const MemberKind& kind) : m_kind(kind) {
  m_listening.push_back(list->RowSelected.connect([this](Link& link) { select(link); }));
  m_listening.push_back(type->Chosen.connect([this] { addEntered(); }));
  m_listening.push_back(type->Entered.connect([this](const std::string& text) {
    enterType(text);
    addEntered();
  }));
  m_listening.push_back(name->KeyPressed.connect([this](const std::string& key) {
    if (key == "Return" || key == "Enter") addEntered();
  }));
}

void MemberPanel::prepare(CLSRepository& repository, Text iconFolder) {
  m_repository = &repository;
  startNew();
  type->create();
  type->fill(*repository.GetRepository()->MetaNodes(types::kDataType)->extension(), "Name");
  showColumns(*list, m_kind, iconFolder);
}

void MemberPanel::startNew() {
  name->Text("");
  scope->value(0);
  m_currentKey.clear();
}

void MemberPanel::show(Node* owner) {
  m_owner = owner;
  if (owner) {
    list->fill(*m_repository->GetRepository()->MetaLinks(m_kind.ownership), *owner);
  } else {
    list->clearRows();
  }
}

void MemberPanel::finish() {
  m_owner = nullptr;
  m_repository = nullptr;
  list->clearRows();
  type->clear();
}

void MemberPanel::select(Link& link) {
  const Ref<Node> member = link.Target();
  m_currentKey = member->identifier();
  name->Text(member->name());
  const auto dataTypes = member->outgoing(m_kind.dataType);
  type->selection(dataTypes->Count() == 0 ? nullptr : as<Link>(dataTypes->Item(1))->Target().get());
  if (!m_kind.hasScope) return;
  const std::string word = member->GetProperty("scope").text();
  for (std::size_t i = 0; i < kScopes.size(); ++i) {
    if (platform::equalsIgnoringCase(word, kScopes[i])) scope->value(static_cast<int>(i));
  }
}

void MemberPanel::addEntered() {
  // A type that was typed and left is as good as one that was entered.
  if (!type->saysSelection()) {
    const std::string field = type->Text();
    const Text typed = platform::trimmed(field);
    if (!typed.empty()) enterType(typed);
  }
  const std::string text = name->Text();
  if (text.find(';') == std::string::npos) return add(text);
  bool edited = false;
  std::string_view rest = text;
  while (true) {
    const std::size_t end = rest.find(';');
    const Text piece = platform::trimmed(rest.substr(0, end));
    if (!piece.empty()) edited |= addOne(piece);
    if (end == std::string_view::npos) break;
    rest.remove_prefix(end + 1);
  }
  if (edited) Edited();
}

void MemberPanel::add(Text memberName) {
  if (addOne(memberName)) Edited();
}

bool MemberPanel::addOne(Text memberName) {
  const Ref<Node> dataType = type->selection();
  if (!dataType || !m_owner || !controls::isInRepository(*m_owner)) return false;
  const auto chosen = scope->value();
  const Text word = chosen < 0 ? Text() : kScopes[static_cast<std::size_t>(chosen)];
  if (const auto known = find(memberName)) {
    update(*known, word, *dataType);
  } else {
    m_kind.add(*m_repository, m_owner->identifier(), memberName, word, dataType->identifier());
  }
  return true;
}

void MemberPanel::update(Link& ownership, Text scopeWord, Node& dataType) {
  const Ref<Node> member = ownership.Target();
  if (m_kind.hasScope) member->SetProperty("scope", scopeWord);
  for (Link& old : each<Link>(m_repository->CopyList(*member->outgoing(m_kind.dataType)))) {
    m_repository->RemoveLink(m_kind.dataType, true, old.identifier());
  }
  (*m_repository.*m_kind.setDataType)(*member, dataType);
  list->refreshRow(ownership);
}

Ref<Link> MemberPanel::find(Text memberName) const {
  return m_repository->SearchLinkedObject(*m_owner, m_kind.ownership, true, "Name", memberName);
}

void MemberPanel::removeEntered() {
  m_currentKey.clear();
  if (!m_owner || !controls::isInRepository(*m_owner)) return;
  const auto known = find(name->Text());
  if (!known) return;
  (*m_repository.*m_kind.remove)(known->Target()->identifier());
  Edited();
}

void MemberPanel::enterType(Text typeName) {
  if (!m_repository) return;
  Ref<Node> found = m_repository->SearchObject(types::kDataType, "Name", typeName);
  if (!found) found = m_repository->MakeDataType(typeName, "", "");
  type->refresh();
  type->selection(found.get());
}

void MemberPanel::follow(const Change& change) {
  if (!m_owner) return;
  using Kind = Change::Kind;
  if (auto* node = dynamic_cast<Node*>(&change.element)) return followNode(*node, change);
  auto& link = dynamic_cast<Link&>(change.element);
  if (link.Parent()->name() != m_kind.ownership || link.source() != m_owner) return;
  if (change.kind == Kind::linkMade) list->addRow(link);
  if (change.kind == Kind::linkRemoved) list->removeRow(link);
}

void MemberPanel::followNode(Node& node, const Change& change) {
  using Kind = Change::Kind;
  if (change.kind != Kind::propertySet && change.kind != Kind::renamed &&
      change.kind != Kind::identified) {
    return;
  }
  if (node.Parent()->name() != m_kind.type) return;
  const auto owners = node.Incoming(m_kind.ownership);
  if (owners->Count() > 0) list->refreshRow(*as<Link>(owners->Item(1)));
}

}  // namespace brisel::editors
