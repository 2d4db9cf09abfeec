#include "store/Conventions.h"

#include <array>

#include "platform/Repository.h"

namespace brisel::store {

namespace types = platform::types;

namespace {

using Key = std::string_view;

// In the order in which the model layer sets them, which makes finding them quickest.
constexpr std::array<Key, 4> kClass = {"Description", "category", "comment", "scope"};
constexpr std::array<Key, 6> kAttrib = {"final",     "scope", "static_",
                                        "transient", "value", "volatile"};
constexpr std::array<Key, 7> kOperation = {"category", "constructor", "final",       "native",
                                           "scope",    "static_",     "synchronized"};
constexpr std::array<Key, 2> kDataType = {"Description", "TypeCategory"};
constexpr std::array<Key, 1> kStereotype = {"Description"};
// "SourceRoleName" beside "TargetRolename": kept as the model has always spelled them.
constexpr std::array<Key, 13> kAggregation = {
    "Description",     "SourceRoleName", "SourceMultiplicity", "SourceCardinality",
    "SourceNavigable", "TargetRolename", "TargetMultiplicity", "TargetCardinality",
    "TargetNavigable", "ReverseName",    "PreferredDirection", "IsDerived",
    "isComposite"};
constexpr std::span<const Key> kAssociation(kAggregation.data(), kAggregation.size() - 1);
constexpr std::array<Key, 7> kGeomArea = {"top",    "left",   "Width",    "IsVisible",
                                          "height", "NodeId", "NodeClass"};
constexpr std::array<Key, 6> kGeomPoint = {"X",      "Y",         "kindOfPosition",
                                           "linkId", "linkClass", "rank"};

constexpr std::array<NodeConvention, 12> kNodes = {{
    {types::kClass, kClass},
    {types::kAttrib, kAttrib},
    {types::kOperation, kOperation},
    {types::kParameter, {}},
    {types::kDataType, kDataType},
    {types::kStereotype, kStereotype},
    {types::kAssociation, kAssociation},
    {types::kAggregation, kAggregation},
    {types::kGeneralization, {}},
    {types::kGeomArea, kGeomArea},
    {types::kGeomPoint, kGeomPoint},
    {types::kLayout, {}},
}};

constexpr std::array<std::string_view, 13> kLinks = {
    types::kClassHasAttrib,    types::kClassHasOperation,    types::kOperationHasParameter,
    types::kAttribHasDataType, types::kOperationHasDataType, types::kParameterHasDataType,
    "Class.As.Stereotype",     types::kAssociationSource,    types::kAssociationTarget,
    types::kAggregationSource, types::kAggregationTarget,    types::kGeneralizationSuper,
    types::kGeneralizationSub};

}  // namespace

std::span<const NodeConvention> nodeConventions() { return kNodes; }
std::span<const std::string_view> linkConventions() { return kLinks; }

}  // namespace brisel::store
