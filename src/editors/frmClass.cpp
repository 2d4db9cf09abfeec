#include "editors/frmClass.h"

#include "editors/MemberPanel.h"
#include "platform/Error.h"
#include "platform/ErrorTrap.h"
#include "platform/MemberTableOf.h"
#include "platform/Shell.h"
#include "platform/Text.h"

namespace brisel::editors {

using platform::Ref;

frmClass::frmClass(platform::ComponentRegistry& registry) : Form("Class"), m_registry(registry) {
  const auto on = [this](const Ref<controls::Button>& button, auto handler) {
    m_listening.push_back(button->Clicked.connect(handler));
  };
  on(m_allAttributes, [this] { m_attributes->tickAll(); });
  on(m_allOperations, [this] { m_operations->tickAll(); });
  on(m_ok, [this] { accept(); });
  on(m_cancel, [this] {
    m_accepted = false;
    Hide();
  });
}

void frmClass::Prepare(repository::Class& source) {
  platform::trapped(m_registry.shell(), "frmClass", "Prepare", [&] {
    const Ref<platform::Node> node = source.clsObject();
    if (!node) {
      throw platform::Error(platform::ErrorNumber::objectMissing, "The class wrapper has no node");
    }
    fill(*m_attributes, *node, kAttributes);
    fill(*m_operations, *node, kOperations);
    m_name->Text("");
    m_accepted = false;
  });
}

void frmClass::fill(controls::ListView& list, platform::Node& owner, const MemberKind& kind) {
  showColumns(list, kind, m_registry.installationFolder());
  list.tickBoxes(true);
  list.fill(*owner.outgoing(kind.ownership), owner);
}

void frmClass::accept() {
  const auto refuse = [this](const char* text) {
    m_registry.shell().showMessage({"Brisel", text, {"OK"}, platform::MessageIcon::information});
  };
  if (platform::trimmed(m_name->Text()).empty()) {
    return refuse("Please insert a name for the splitted class");
  }
  if (m_attributes->tickedRows()->Count() + m_operations->tickedRows()->Count() == 0) {
    return refuse("Select at least one operation/attribute for the new splitted class.");
  }
  Hide();
  m_accepted = true;
}

const platform::MemberTable& frmClass::memberTable() const {
  using F = frmClass;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<F>(Form::memberTable())
          .method("Prepare", &F::Prepare)
          .property<Ref<repository::Class>, repository::Class*>("CurrentClass", &F::CurrentClass,
                                                                &F::CurrentClass)
          .method("SetCaption", &F::SetCaption)
          .method("SetInformation", &F::SetInformation)
          .method("SetClassnameLabel", &F::SetClassnameLabel)
          .property("Accepted", &F::Accepted)
          .property("ClassName", &F::ClassName)
          .property("ClassNameLabel", &F::ClassNameLabel)
          .property("Information", &F::Information)
          .property("Attributes", &F::Attributes)
          .property("Operations", &F::Operations)
          .property("AllAttributes", &F::AllAttributes)
          .property("AllOperations", &F::AllOperations)
          .property("ClassData", &F::ClassData)
          .property("Ok", &F::Ok)
          .property("Cancel", &F::Cancel)
          .build();
  return kTable;
}

}  // namespace brisel::editors
