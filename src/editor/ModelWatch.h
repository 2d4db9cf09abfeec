#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/Repository.h"

namespace brisel::editor {

/// Follows a model's changes, so that questions which would need a walk over the model cost only
/// what changed. Owned by the editor.
class ModelWatch {
 public:
  /// From now on this model, of which nothing is known yet. Following the same one changes nothing.
  void follow(platform::MetaRepository& model);
  /// Lets go of the model.
  void leave();

  /// The "GeomArea" and "GeomPoint" nodes of a class or relationship. The first question of a model
  /// walks over all of them.
  [[nodiscard]] std::vector<platform::Ref<platform::Node>> geometryOf(std::string_view element);

  /// The classes of which a data type of the same name is not known to be there: those that were
  /// made or renamed since the last call, or all when that is all that can be said.
  [[nodiscard]] std::vector<platform::Ref<platform::Node>> takeClassesToSynchronize();

 private:
  using Nodes = std::vector<platform::Ref<platform::Node>>;

  void changed(const platform::Change& change);
  void nodeChanged(platform::Node& node, const platform::Change& change);
  void geometryChanged(platform::Node& record, const platform::Change& change);
  void enter(std::string_view owner, platform::Node& record);
  void strike(std::string_view owner, const platform::Node& record);

  platform::Ref<platform::MetaRepository> m_model;
  platform::Connection m_listening;
  std::unordered_map<std::string, Nodes> m_geometry;
  bool m_knowsGeometry = false;
  Nodes m_classes;  ///< made or renamed
  bool m_allClasses = true;
};

}  // namespace brisel::editor
