#include "editors/frmExtractAttribute.h"

#include "editors/MemberPanel.h"
#include "platform/Error.h"
#include "platform/ErrorTrap.h"
#include "platform/MemberTableOf.h"

namespace brisel::editors {

using platform::Ref;

frmExtractAttribute::frmExtractAttribute(platform::ComponentRegistry& registry)
    : Form("Extract attribute"), m_registry(registry) {
  m_asComposite->value(1);
  m_listening.push_back(m_ok->Clicked.connect([this] { close(true); }));
  m_listening.push_back(m_cancel->Clicked.connect([this] { close(false); }));
  m_listening.push_back(m_attributes->RowOpened.connect([this](platform::Link&) { close(true); }));
}

void frmExtractAttribute::Prepare(repository::Class& owner, std::string_view,
                                  repository::CLSRepository& repository) {
  platform::trapped(m_registry.shell(), "frmExtractAttribute", "Prepare", [&] {
    const Ref<platform::Node> node = owner.clsObject();
    if (!node) {
      throw platform::Error(platform::ErrorNumber::objectMissing, "The class wrapper has no node");
    }
    m_attributes->clearColumns();
    m_attributes->addColumn("Name", "Name", 3000);
    m_attributes->setIcon(std::string(m_registry.installationFolder()).append(kAttributes.icon),
                          kAttributes.iconKey);
    m_attributes->fill(*repository.GetRepository()->MetaLinks(kAttributes.ownership), *node);
    m_accepted = false;
  });
}

void frmExtractAttribute::close(bool accepted) {
  m_accepted = accepted;
  Hide();
}

const platform::MemberTable& frmExtractAttribute::memberTable() const {
  using F = frmExtractAttribute;
  static const platform::MemberTable kTable = platform::MemberTableOf<F>(Form::memberTable())
                                                  .method("Prepare", &F::Prepare)
                                                  .property("Accepted", &F::Accepted)
                                                  .property("Attributes", &F::Attributes)
                                                  .property("asComposite", &F::asComposite)
                                                  .property("Label1", &F::Label1)
                                                  .property("Ok", &F::Ok)
                                                  .property("Cancel", &F::Cancel)
                                                  .build();
  return kTable;
}

}  // namespace brisel::editors
