#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "layout/Layout.h"

namespace brisel::app {

/// A plain graph of boxes and edges with the words of its file, and its drawing.
struct GraphFile {
  struct Edge {
    std::string id;
    std::string kind;  ///< kept as it is; layout knows those of a class diagram
  };

  layout::Graph graph;
  std::vector<std::string> boxes;  ///< identifiers
  std::vector<Edge> edges;

  /// {"nodes":[{"id","w","h"}],"edges":[{"id","src","dst","kind"}]}. An Error (badFile) names the
  /// file and the cause.
  [[nodiscard]] static GraphFile read(const std::string& name, std::string_view json);
};

/// {"nodes":[{"id","x","y","w","h"}],"edges":[{"id","kind","src","dst","points":[[x,y],...]}]}, an
/// element a line.
[[nodiscard]] std::string drawingAsJson(const GraphFile& file, const layout::Drawing& drawing);

}  // namespace brisel::app
