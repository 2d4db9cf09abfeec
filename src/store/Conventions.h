#pragma once

#include <span>
#include <string_view>

/// The types of the class model, which a repository knows before the first instance is made.
namespace brisel::store {

struct NodeConvention {
  std::string_view type;
  std::span<const std::string_view> keys;  ///< its properties, as they are spelled
};

[[nodiscard]] std::span<const NodeConvention> nodeConventions();
[[nodiscard]] std::span<const std::string_view> linkConventions();

}  // namespace brisel::store
