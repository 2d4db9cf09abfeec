#pragma once

#include <cstdint>
#include <string_view>

#include "component/AutomaticShell.h"
#include "component/Suite.h"
#include "editor/CLSEditor.h"
#include "support/GeneratedModel.h"

namespace brisel::benchmarks {

inline std::int64_t countOf(const GeneratedModel& model, std::string_view type) {
  return model.repository->MetaNodes(type)->extension()->Count();
}

/// An editor on a generated model with stored geometry.
struct Workbench {
  explicit Workbench(std::int64_t classes)
      : model(generateModel({.classes = static_cast<int>(classes), .hasGeometry = true})),
        registry(platform::make<component::AutomaticShell>()) {
    component::registerSuite(registry);
    editor = platform::make<editor::CLSEditor>(registry);
    editor->Repository(model.repository.get());
  }
  ~Workbench() { editor->terminate(); }

  GeneratedModel model;
  platform::ComponentRegistry registry;
  platform::Ref<editor::CLSEditor> editor;
};

}  // namespace brisel::benchmarks
