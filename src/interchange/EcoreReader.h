#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "interchange/ModelDescription.h"
#include "interchange/XmlFile.h"

namespace brisel::interchange {

/// Reads Ecore files that refer to each other into a description. Ecore has no identifiers: an
/// element is called by its package and its path, "shapes#//Circle/radius".
class EcoreReader {
 public:
  EcoreReader(std::vector<const XmlFile*> files, ModelDescription& description);

  void read();

 private:
  struct Classifier {
    pugi::xml_node node;
    const XmlFile* file = nullptr;
    std::string id;
    std::size_t position = 0;  ///< in the description
  };
  struct Reference {
    pugi::xml_node node;
    std::size_t owner = 0;  ///< in m_classifiers
    std::string id;
    bool isRead = false;
  };
  struct Target {
    std::string text;  ///< as it is written; empty for no reference
    const XmlFile* file = nullptr;
    std::string path;
    std::string metaclass;
  };

  void collectPackages(const XmlFile& file);
  void collectPackage(pugi::xml_node package, const XmlFile& file, const std::string& path,
                      const std::string& rootName, const std::string& category);
  void collectClassifier(pugi::xml_node node, const XmlFile& file, const std::string& path,
                         const std::string& rootName, const std::string& category);

  void readMembers(std::size_t classifier);
  void readLiteral(pugi::xml_node node, const Classifier& owner);
  void readAttribute(pugi::xml_node node, const Classifier& owner);
  void readOperation(pugi::xml_node node, const Classifier& owner);
  void readSuperTypes(const Classifier& classifier);
  void readReference(std::size_t reference);
  [[nodiscard]] std::size_t oppositeOf(std::size_t reference);
  void describe(pugi::xml_node node, const XmlFile& file, std::string id, Described& described);
  void describeEnd(const Reference& reference, DescribedEnd& end) const;
  [[nodiscard]] std::string typeName(pugi::xml_node node, const Classifier& owner,
                                     std::string_view otherwise);

  [[nodiscard]] std::vector<Target> targets(pugi::xml_node node, const XmlFile& file,
                                            const char* property) const;
  [[nodiscard]] Target typeOf(pugi::xml_node node, const XmlFile& file) const;
  void addTargets(std::string_view text, std::string_view metaclass, const XmlFile& file,
                  std::vector<Target>& found) const;
  /// The position of the class in the description, or why there is none.
  bool findClass(const Target& target, std::size_t& position, std::string& problem);

  using Paths = std::unordered_map<std::string, std::size_t>;
  std::vector<const XmlFile*> m_files;
  ModelDescription& m_description;
  std::vector<Classifier> m_classifiers;
  std::vector<Reference> m_references;
  std::unordered_map<const XmlFile*, Paths> m_classifierPaths;
  std::unordered_map<const XmlFile*, Paths> m_referencePaths;
};

}  // namespace brisel::interchange
