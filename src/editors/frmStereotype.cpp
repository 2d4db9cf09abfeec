#include "editors/frmStereotype.h"

#include "platform/MemberTableOf.h"

namespace brisel::editors {

namespace types = platform::types;

frmStereotype::frmStereotype(platform::ComponentRegistry& registry)
    : Form("Stereotypes"), m_list(platform::make<controls::ListEditor>(registry)) {
  m_closing = m_ok->Clicked.connect([this] { Hide(); });
}

void frmStereotype::Create(repository::CLSRepository& repository) {
  m_repository = &repository;
  m_list->create();
  m_list->repository(repository.GetRepository().get());
  ensureNone();
  m_list->generator(repository.UUIDGenerator().get());
  m_list->open(types::kStereotype);
}

void frmStereotype::Destroy() {
  Hide();
  m_list->destroy();
  if (m_repository) ensureNone();
  m_repository = nullptr;
}

void frmStereotype::ensureNone() {
  const auto model = m_repository->GetRepository();
  if (model->MetaNodes(types::kStereotype)->extension()->Count() > 0) return;
  model->MakeNode(types::kStereotype, "<NONE>", m_repository->UUID());
}

const platform::MemberTable& frmStereotype::memberTable() const {
  using F = frmStereotype;
  static const platform::MemberTable kTable = platform::MemberTableOf<F>(Form::memberTable())
                                                  .property("Path", &F::Path, &F::Path)
                                                  .method("Create", &F::Create)
                                                  .method("Init", &F::Init)
                                                  .method("Deinit", &F::Deinit)
                                                  .method("Destroy", &F::Destroy)
                                                  .property("ListEditor1", &F::ListEditor1)
                                                  .property("Ok", &F::Ok)
                                                  .build();
  return kTable;
}

}  // namespace brisel::editors
