#pragma once

#include <string_view>

#include "platform/ComponentRegistry.h"
#include "repository/CLSRepository.h"

namespace brisel::repository {

/// A new, empty repository of the suite behind a wrapper with an identifier generator of its own;
/// `user` is the name that the generator is told.
[[nodiscard]] platform::Ref<CLSRepository> newModel(platform::ComponentRegistry& registry,
                                                    std::string_view user);

}  // namespace brisel::repository
