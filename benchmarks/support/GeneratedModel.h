#pragma once

#include <cstdint>

#include "repository/CLSRepository.h"
#include "store/Meta.h"

/// A class model of any size for measurements and for tests that need many elements.
namespace brisel::benchmarks {

/// For every class: 6 attributes, 4 operations, 4 parameters, 1.2 relationships (associations,
/// aggregations, generalizations without circles).
struct ModelShape {
  int classes = 1000;
  bool hasGeometry = false;  ///< boxes in a grid, and lines with a bend in every third
  std::uint64_t seed = 1;    ///< the same shape gives the same model, identifiers included
};

struct GeneratedModel {
  platform::Ref<store::Meta> repository;
  platform::Ref<repository::CLSRepository> model;
};

[[nodiscard]] GeneratedModel generateModel(const ModelShape& shape);
/// Into a repository of the caller's, whose identifier generator must be set.
void generateInto(repository::CLSRepository& model, const ModelShape& shape);

}  // namespace brisel::benchmarks
