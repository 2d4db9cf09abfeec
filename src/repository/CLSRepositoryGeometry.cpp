// The geometry records of boxes and lines.

#include "repository/CLSRepository.h"

namespace brisel::repository {

namespace types = platform::types;

CLSRepository::NodeRef CLSRepository::MakeGeomArea(Node& node, std::int32_t top, std::int32_t left,
                                                   std::int32_t width, std::int32_t height) {
  NodeRef area = repository().MakeNode(types::kGeomArea, "", UUID());
  area->SetProperty("top", top);
  area->SetProperty("left", left);
  area->SetProperty("Width", width);
  area->SetProperty("IsVisible", true);
  area->SetProperty("height", height);
  area->SetProperty("NodeId", node.identifier());
  area->SetProperty("NodeClass", node.Parent()->name());
  return area;
}

CLSRepository::NodeRef CLSRepository::MakeGeomPoint(Node& relationship, std::int32_t x,
                                                    std::int32_t y, Text kind, std::int32_t rank) {
  NodeRef point = repository().MakeNode(types::kGeomPoint, "", UUID());
  point->SetProperty("X", x);
  point->SetProperty("Y", y);
  point->SetProperty("kindOfPosition", kind);
  point->SetProperty("linkId", relationship.identifier());
  point->SetProperty("linkClass", relationship.Parent()->name());
  point->SetProperty("rank", rank);
  return point;
}

void CLSRepository::DeleteAllGeomAreas() {
  repository().MetaNodes(types::kGeomArea)->extension()->Clear();
}

void CLSRepository::DeleteAllGeomPoints() {
  repository().MetaNodes(types::kGeomPoint)->extension()->Clear();
}

}  // namespace brisel::repository
