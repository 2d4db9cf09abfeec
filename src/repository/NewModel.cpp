#include "repository/NewModel.h"

namespace brisel::repository {

platform::Ref<CLSRepository> newModel(platform::ComponentRegistry& registry,
                                      std::string_view user) {
  const auto repository = registry.create<platform::MetaRepository>("BriselCLS.Meta");
  repository->Init();
  const platform::Ref<platform::Object> generator = registry.create("BriselUtility.UUIDGenerator");
  generator->call("Init", {user});
  auto model = platform::make<CLSRepository>();
  model->Create(generator.get());
  model->SetRepository(repository.get());
  return model;
}

}  // namespace brisel::repository
