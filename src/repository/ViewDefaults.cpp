#include "repository/ViewDefaults.h"

#include "repository/CLSRepository.h"

namespace brisel::repository {

platform::Ref<platform::Node> makeLayoutNode(CLSRepository& model) {
  auto layout = model.GetRepository()->MakeNode(platform::types::kLayout, "Layout", model.UUID());
  const auto set = [&](std::string_view key, bool shown) {
    layout->SetProperty(key, shown ? kSettingTrue : kSettingFalse);
  };
  for (const TypeCategory& category : kTypeCategories) set(category.key, category.shown);
  set(kViewAttributes, true);
  set(kViewOperations, true);
  set(kViewParameters, false);
  return layout;
}

}  // namespace brisel::repository
