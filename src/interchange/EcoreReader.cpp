#include "interchange/EcoreReader.h"

#include <algorithm>

namespace brisel::interchange {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

std::string_view metaclassOf(pugi::xml_node node) {
  return splitName(node.attribute("xsi:type").value()).local;
}

bool flag(pugi::xml_node node, const char* name) { return node.attribute(name).as_bool(false); }

/// The annotation that generators take documentation from.
std::string documentationOf(pugi::xml_node node) {
  for (const pugi::xml_node annotation : node.children("eAnnotations")) {
    if (!std::string_view(annotation.attribute("source").value()).ends_with("GenModel")) continue;
    const pugi::xml_node detail = annotation.find_child_by_attribute("key", "documentation");
    if (detail.attribute("value")) return detail.attribute("value").value();
    if (detail.child("value")) return detail.child("value").text().get();
  }
  return {};
}

std::string multiplicityOf(pugi::xml_node node) {
  return multiplicityText(node.attribute("lowerBound").as_string("0"),
                          node.attribute("upperBound").as_string("1"));
}

std::string joined(const std::string& path, std::string_view name) {
  return std::string(path).append("/").append(name);
}

}  // namespace

EcoreReader::EcoreReader(std::vector<const XmlFile*> files, ModelDescription& description)
    : m_files(std::move(files)), m_description(description) {}

void EcoreReader::read() {
  for (const XmlFile* file : m_files) collectPackages(*file);
  for (std::size_t i = 0; i < m_classifiers.size(); ++i) readMembers(i);
  for (std::size_t i = 0; i < m_references.size(); ++i) readReference(i);
  for (const Classifier& classifier : m_classifiers) readSuperTypes(classifier);
}

void EcoreReader::collectPackages(const XmlFile& file) {
  const pugi::xml_node root = file.root();
  if (splitName(root.name()).local == "EPackage") {
    collectPackage(root, file, "/", root.attribute("name").value(), "");
    return;
  }
  // Of several packages in one file, each is called by its place.
  int place = 0;
  for (const pugi::xml_node child : root.children()) {
    const std::string path = "/" + std::to_string(place++);
    if (splitName(child.name()).local != "EPackage") {
      m_description.skip(child.name(), "", file.place(child), "it is no package");
      continue;
    }
    collectPackage(child, file, path, child.attribute("name").value(), "");
  }
}

void EcoreReader::collectPackage(pugi::xml_node package, const XmlFile& file,
                                 const std::string& path, const std::string& rootName,
                                 const std::string& category) {
  const std::string name = package.attribute("name").value();
  const std::string inside = category.empty() ? name : category + "::" + name;
  if (!documentationOf(package).empty()) {
    m_description.skip("comment", rootName + "#" + path, file.place(package),
                       "it documents a package");
  }
  for (const pugi::xml_node child : package.children()) {
    const std::string_view role = child.name();
    if (role == "eClassifiers") collectClassifier(child, file, path, rootName, inside);
    if (role != "eSubpackages") continue;
    collectPackage(child, file, joined(path == "/" ? "/" : path, child.attribute("name").value()),
                   rootName, inside);
  }
}

void EcoreReader::collectClassifier(pugi::xml_node node, const XmlFile& file,
                                    const std::string& path, const std::string& rootName,
                                    const std::string& category) {
  Classifier found{node, &file, {}, m_description.classifiers.size()};
  const std::string ownPath = joined(path, node.attribute("name").value());
  found.id = rootName + "#" + ownPath;
  DescribedClassifier classifier;
  describe(node, file, found.id, classifier);
  classifier.category = category;
  classifier.isAbstract = flag(node, "abstract");
  const std::string_view metaclass = metaclassOf(node);
  if (metaclass == "EEnum") {
    classifier.kind = ClassifierKind::enumeration;
  } else if (metaclass == "EDataType") {
    classifier.kind = ClassifierKind::plainType;
  } else if (flag(node, "interface")) {
    classifier.kind = ClassifierKind::interface;
  }
  const std::size_t index = m_classifiers.size();
  if (!m_classifierPaths[&file].try_emplace(ownPath, index).second) {
    m_description.note("class", found.id, classifier.place, "the package has this name twice");
  }
  if (const std::string id(file.xmiAttribute(node, "id")); !id.empty()) {
    m_classifierPaths[&file].try_emplace(id, index);
  }
  for (const pugi::xml_node feature : node.children("eStructuralFeatures")) {
    if (metaclassOf(feature) != "EReference") continue;
    const std::string featurePath = joined(ownPath, feature.attribute("name").value());
    m_referencePaths[&file].try_emplace(featurePath, m_references.size());
    m_references.push_back({feature, index, rootName + "#" + featurePath, false});
  }
  m_classifiers.push_back(std::move(found));
  m_description.classifiers.push_back(std::move(classifier));
}

void EcoreReader::describe(pugi::xml_node node, const XmlFile& file, std::string id,
                           Described& described) {
  described.id = std::move(id);
  described.name = node.attribute("name").value();
  described.place = file.place(node);
  described.documentation = documentationOf(node);
}

void EcoreReader::readMembers(std::size_t classifier) {
  const Classifier& owner = m_classifiers[classifier];
  for (const pugi::xml_node child : owner.node.children()) {
    const std::string_view role = child.name();
    if (role == "eLiterals") {
      readLiteral(child, owner);
    } else if (role == "eOperations") {
      readOperation(child, owner);
    } else if (role == "eStructuralFeatures" && metaclassOf(child) != "EReference") {
      readAttribute(child, owner);
    } else if (role == "eTypeParameters") {
      m_description.skip("typeParameter", joined(owner.id, child.attribute("name").value()),
                         owner.file->place(child),
                         "a type parameter has no place in a class diagram");
    }
  }
}

void EcoreReader::readLiteral(pugi::xml_node node, const Classifier& owner) {
  DescribedClassifier& classifier = m_description.classifiers[owner.position];
  DescribedAttribute literal;
  describe(node, *owner.file, joined(owner.id, node.attribute("name").value()), literal);
  literal.type = classifier.name;
  literal.value = node.attribute("value").value();
  classifier.attributes.push_back(std::move(literal));
}

void EcoreReader::readAttribute(pugi::xml_node node, const Classifier& owner) {
  DescribedAttribute attribute;
  describe(node, *owner.file, joined(owner.id, node.attribute("name").value()), attribute);
  attribute.type = typeName(node, owner, kUntyped);
  attribute.multiplicity = multiplicityOf(node);
  attribute.value = node.attribute("defaultValueLiteral").value();
  attribute.isFinal = !node.attribute("changeable").as_bool(true);
  attribute.isDerived = flag(node, "derived");
  attribute.isTransient = flag(node, "transient");
  attribute.isVolatile = flag(node, "volatile");
  m_description.classifiers[owner.position].attributes.push_back(std::move(attribute));
}

void EcoreReader::readOperation(pugi::xml_node node, const Classifier& owner) {
  DescribedOperation operation;
  describe(node, *owner.file, joined(owner.id, node.attribute("name").value()), operation);
  operation.type = typeName(node, owner, kVoid);
  if (operation.type != kVoid) operation.multiplicity = multiplicityOf(node);
  for (const pugi::xml_node child : node.children("eParameters")) {
    DescribedParameter parameter;
    describe(child, *owner.file, joined(operation.id, child.attribute("name").value()), parameter);
    parameter.type = typeName(child, owner, kUntyped);
    parameter.multiplicity = multiplicityOf(child);
    operation.parameters.push_back(std::move(parameter));
  }
  m_description.classifiers[owner.position].operations.push_back(std::move(operation));
}

std::string EcoreReader::typeName(pugi::xml_node node, const Classifier& owner,
                                  std::string_view otherwise) {
  const Target type = typeOf(node, *owner.file);
  if (type.text.empty()) {
    const char* parameter = node.child("eGenericType").attribute("eTypeParameter").value();
    return *parameter ? nameOfReference(parameter) : std::string(otherwise);
  }
  const auto paths = m_classifierPaths.find(type.file);
  const bool isKnown = paths != m_classifierPaths.end() && paths->second.contains(type.path);
  if (type.file && !isKnown) {
    m_description.note("attribute", joined(owner.id, node.attribute("name").value()),
                       owner.file->place(node),
                       "its type \"" + type.text + "\" is in none of the files");
  }
  return isKnown ? m_classifiers[paths->second.at(type.path)].node.attribute("name").value()
                 : nameOfReference(type.text);
}

void EcoreReader::readSuperTypes(const Classifier& classifier) {
  std::vector<Target> supers = targets(classifier.node, *classifier.file, "eSuperTypes");
  for (const pugi::xml_node generic : classifier.node.children("eGenericSuperTypes")) {
    addTargets(generic.attribute("eClassifier").value(), {}, *classifier.file, supers);
  }
  int number = 0;
  for (const Target& super : supers) {
    DescribedRelationship relationship;
    relationship.kind = RelationshipKind::generalization;
    relationship.id = classifier.id + "::super::" + std::to_string(++number);
    relationship.place = classifier.file->place(classifier.node);
    relationship.source.classifier = classifier.position;
    std::string problem;
    if (!findClass(super, relationship.target.classifier, problem)) {
      m_description.skip("generalization", relationship.id, relationship.place, problem);
      continue;
    }
    m_description.relationships.push_back(std::move(relationship));
  }
}

void EcoreReader::readReference(std::size_t index) {
  if (m_references[index].isRead) return;
  std::size_t opposite = oppositeOf(index);
  if (opposite != kNone && flag(m_references[opposite].node, "containment")) {
    std::swap(index, opposite);
  }
  Reference& reference = m_references[index];
  reference.isRead = true;
  const Classifier& owner = m_classifiers[reference.owner];
  DescribedRelationship relationship;
  describe(reference.node, *owner.file, reference.id, relationship);
  relationship.name.clear();  // the name is that of the end
  relationship.kind = flag(reference.node, "containment") ? RelationshipKind::compositeAggregation
                                                          : RelationshipKind::association;
  relationship.isDerived = flag(reference.node, "derived");
  relationship.source.classifier = owner.position;
  describeEnd(reference, relationship.target);
  if (opposite != kNone) {
    Reference& back = m_references[opposite];
    back.isRead = true;
    describeEnd(back, relationship.source);
    relationship.source.documentation = documentationOf(back.node);
    relationship.isDerived = relationship.isDerived || flag(back.node, "derived");
  }
  std::string problem;
  if (!findClass(typeOf(reference.node, *owner.file), relationship.target.classifier, problem)) {
    m_description.skip("association", reference.id, relationship.place, problem);
    return;
  }
  m_description.relationships.push_back(std::move(relationship));
}

void EcoreReader::describeEnd(const Reference& reference, DescribedEnd& end) const {
  end.role = reference.node.attribute("name").value();
  end.multiplicity = multiplicityOf(reference.node);
  end.isNavigable = true;
}

/// The reference that makes one association with this one; each must name the other.
std::size_t EcoreReader::oppositeOf(std::size_t reference) {
  const auto named = [this](std::size_t from) {
    const Reference& origin = m_references[from];
    const XmlFile& file = *m_classifiers[origin.owner].file;
    const std::vector<Target> found = targets(origin.node, file, "eOpposite");
    if (found.empty()) return kNone;
    const auto paths = m_referencePaths.find(found.front().file);
    if (paths == m_referencePaths.end()) return kNone;
    const auto entry = paths->second.find(found.front().path);
    return entry == paths->second.end() ? kNone : entry->second;
  };
  const std::size_t opposite = named(reference);
  const Reference& origin = m_references[reference];
  if (opposite == kNone && !origin.node.attribute("eOpposite")) return kNone;
  if (opposite != kNone && opposite != reference && named(opposite) == reference) return opposite;
  m_description.note("association", origin.id, m_classifiers[origin.owner].file->place(origin.node),
                     "its opposite does not name it in turn; it stands alone");
  return kNone;
}

EcoreReader::Target EcoreReader::typeOf(pugi::xml_node node, const XmlFile& file) const {
  std::vector<Target> found = targets(node, file, "eType");
  if (found.empty()) {
    addTargets(node.child("eGenericType").attribute("eClassifier").value(), {}, file, found);
  }
  return found.empty() ? Target() : found.front();
}

std::vector<EcoreReader::Target> EcoreReader::targets(pugi::xml_node node, const XmlFile& file,
                                                      const char* property) const {
  std::vector<Target> found;
  addTargets(node.attribute(property).value(), {}, file, found);
  for (const pugi::xml_node child : node.children(property)) {
    addTargets(child.attribute("href").value(), metaclassOf(child), file, found);
  }
  return found;
}

/// References parted by blanks; one into another file may follow its metaclass, "ecore:EClass".
void EcoreReader::addTargets(std::string_view text, std::string_view metaclass, const XmlFile& file,
                             std::vector<Target>& found) const {
  constexpr std::string_view kBlanks = " \t\r\n";
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(kBlanks), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (word.empty()) continue;
    const std::size_t hash = word.find('#');
    if (hash == std::string_view::npos && word.starts_with("ecore:")) {
      metaclass = splitName(word).local;
      continue;
    }
    Target target{std::string(word), &file, std::string(word), std::string(metaclass)};
    metaclass = {};
    if (hash != std::string_view::npos) target.path = word.substr(hash + 1);
    if (hash != std::string_view::npos && hash > 0) {
      const std::string_view where = word.substr(0, hash);
      const std::string_view name = where.substr(where.find_last_of("/\\") + 1);
      const auto given = std::find_if(m_files.begin(), m_files.end(), [&](const XmlFile* other) {
        return other->name() == name || other->root().attribute("nsURI").value() == where;
      });
      target.file = given == m_files.end() ? nullptr : *given;
    }
    found.push_back(std::move(target));
  }
}

bool EcoreReader::findClass(const Target& target, std::size_t& position, std::string& problem) {
  if (target.text.empty()) {
    problem = "the class that it leads to is not stated";
    return false;
  }
  const auto paths = m_classifierPaths.find(target.file);
  const auto none = Paths::const_iterator();
  const auto entry = paths == m_classifierPaths.end() ? none : paths->second.find(target.path);
  if (paths != m_classifierPaths.end() && entry != paths->second.end()) {
    position = m_classifiers[entry->second].position;
    if (m_description.classifiers[position].kind != ClassifierKind::plainType) return true;
    problem = "its end \"" + target.text + "\" is a data type without members, no class";
    return false;
  }
  if (target.file || target.metaclass == "EDataType") {
    problem = "its end \"" + target.text + "\" is " +
              (target.file ? "in none of the files" : "a data type, no class");
    return false;
  }
  position = m_description.stub(target.text, nameOfReference(target.text));
  return true;
}

}  // namespace brisel::interchange
