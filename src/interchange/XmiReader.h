#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "interchange/ModelDescription.h"
#include "interchange/XmiIndex.h"

namespace brisel::interchange {

/// Reads Eclipse UML2 and XMI 2.x files that refer to each other into a description. Second pass:
/// whatever the index holds is either described or told as skipped.
class XmiReader {
 public:
  XmiReader(const std::vector<const XmlFile*>& files, ModelDescription& description);

  void read();

 private:
  struct Comment {
    std::size_t element = XmiIndex::kNone;  ///< the comment itself; none for a tool's own notes
    std::string id;
    std::string place;
    std::string text;
    bool isTold = false;
  };
  struct Application {
    StereotypeUse use;
    bool isTold = false;
  };
  /// An end of an association: the property, or nothing of it but the reference that names it.
  struct End {
    std::size_t property = XmiIndex::kNone;
    XmiReference reference;
  };

  /// The class that a reference leads to: one of the files, or one that needs a stub, or neither,
  /// for the cause that `problem` tells.
  struct Found {
    std::size_t position = 0;
    std::string stubId;
    std::string stubName;
    std::string problem;
  };

  void collectComments();
  void addComment(const XmiReference& target, std::size_t fallback, Comment comment);
  void collectApplications();

  // XmiReader.cpp
  void describe(std::size_t element, Described& described);
  [[nodiscard]] std::string documentationOf(std::size_t element);
  [[nodiscard]] std::vector<StereotypeUse> stereotypesOf(std::size_t element);
  void makeClassifiers();
  [[nodiscard]] ClassifierKind kindOf(std::size_t element) const;
  [[nodiscard]] std::string categoryOf(std::size_t element) const;
  void tellRest();
  void tellElement(std::size_t element);
  void tellAttachments();

  // XmiMembers.cpp
  void readMembers(std::size_t element, DescribedClassifier& classifier);
  [[nodiscard]] DescribedAttribute attribute(std::size_t element);
  [[nodiscard]] DescribedAttribute literal(std::size_t element, const std::string& enumeration);
  [[nodiscard]] DescribedOperation operation(std::size_t element);
  [[nodiscard]] DescribedParameter parameter(std::size_t element);
  void readResult(std::size_t element, DescribedOperation& operation);
  void describeFeature(std::size_t element, DescribedFeature& feature);
  [[nodiscard]] std::string typeName(std::size_t element, std::string_view kind);
  [[nodiscard]] std::string multiplicity(std::size_t element) const;
  [[nodiscard]] std::string valueOf(std::size_t element, const char* role) const;

  // XmiRelationships.cpp
  void readRelationships();
  void readAssociation(std::size_t element);
  void addAssociation(std::size_t element, const End& first, const End& second);
  [[nodiscard]] std::vector<End> endsOf(std::size_t association);
  [[nodiscard]] Found classOf(const End& end, const End& opposite) const;
  void describeEnd(const End& end, DescribedEnd& described, DescribedRelationship& relationship);
  [[nodiscard]] bool isNavigable(const End& end, std::size_t association) const;
  [[nodiscard]] std::string aggregationOf(const End& end) const;
  void readGeneralization(std::size_t element);
  void readRealization(std::size_t element);
  void readDependency(std::size_t element, RelationshipKind kind);
  void addDirected(std::size_t element, RelationshipKind kind,
                   const std::vector<XmiReference>& sources,
                   const std::vector<XmiReference>& targets);
  [[nodiscard]] std::vector<XmiReference> firstOf(std::size_t element,
                                                  std::initializer_list<const char*> properties,
                                                  std::size_t otherwise) const;
  [[nodiscard]] Found classOf(const XmiReference& reference) const;
  [[nodiscard]] Found classOf(std::size_t element) const;
  std::size_t positionOf(const Found& found);

  XmiIndex m_index;
  ModelDescription& m_description;
  std::vector<bool> m_isTold;                                        ///< by element
  std::unordered_map<std::size_t, std::size_t> m_classifiers;        ///< element to position
  std::unordered_map<std::size_t, std::vector<std::size_t>> m_ends;  ///< association to properties
  std::unordered_map<std::size_t, std::vector<Comment>> m_comments;
  std::unordered_map<std::size_t, std::vector<Application>> m_applications;
};

/// The word by which reports call elements of a metaclass.
[[nodiscard]] std::string reportKind(const XmiElement& element);

}  // namespace brisel::interchange
