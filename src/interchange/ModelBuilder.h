#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "interchange/ModelDescription.h"
#include "repository/CLSRepository.h"

namespace brisel::interchange {

/// Makes the model of a description through the repository layer: once, in the order of the
/// description. What the model has no place for goes into the description's report.
class ModelBuilder {
 public:
  ModelBuilder(repository::CLSRepository& repository, ModelDescription& description);

  void build();

 private:
  using Node = platform::Node;
  using NodeRef = platform::Ref<platform::Node>;

  void makeClass(const DescribedClassifier& classifier, std::size_t position);
  void makeDataType(const DescribedClassifier& classifier);
  void makeAttribute(const std::string& classId, const DescribedAttribute& attribute);
  void makeOperation(const std::string& classId, const DescribedOperation& operation);
  void makeParameter(const std::string& operationId, const DescribedParameter& parameter);
  void makeRelationship(const DescribedRelationship& relationship);
  void setEnds(Node& node, const DescribedRelationship& relationship);

  /// The identifier of the data type of that name, made when there is none.
  const std::string& dataTypeId(const std::string& name);
  [[nodiscard]] std::string freshOrOwn(const Described& described, std::string_view kind);
  void finish(Node& node, const Described& described, std::string_view kind,
              std::string_view ownStereotype);
  void setStereotype(Node& node, const std::string& name);

  repository::CLSRepository& m_repository;
  ModelDescription& m_description;
  std::unordered_map<std::string, std::string> m_dataTypes;
  std::unordered_map<std::string, NodeRef> m_stereotypes;
  std::unordered_set<std::string> m_plainTypes;
  std::unordered_set<std::string> m_identifiers;
  std::vector<std::string> m_classIds;  ///< by position in the description
};

}  // namespace brisel::interchange
