#include "interchange/XmiReader.h"

#include <algorithm>

#include "platform/Text.h"

namespace brisel::interchange {

namespace {

bool isClassifier(Metaclass metaclass) {
  switch (metaclass) {
    case Metaclass::plainClass:
    case Metaclass::interface:
    case Metaclass::enumeration:
    case Metaclass::dataType:
    case Metaclass::associationClass:
      return true;
    default:
      return false;
  }
}

/// Without the carriage returns and the blank lines at its ends that tools leave in long texts.
std::string cleaned(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (const char c : text) {
    if (c != '\r') result.push_back(c);
  }
  const std::size_t first = result.find_first_not_of(" \t\n");
  if (first == std::string::npos) return {};
  return result.substr(first, result.find_last_not_of(" \t\n") - first + 1);
}

std::string lowerFirst(std::string_view word) {
  std::string result(word);
  if (!result.empty()) result[0] = platform::lowerCase(result[0]);
  return result;
}

StereotypeUse useOf(const XmiSideNote& application) {
  StereotypeUse use;
  use.id = application.file->xmiAttribute(application.node, "id");
  use.place = application.file->place(application.node);
  use.name = splitName(application.node.name()).local;
  for (const pugi::xml_attribute attribute : application.node.attributes()) {
    const std::string_view name = attribute.name();
    if (name.starts_with("base_") || name.find(':') != std::string_view::npos) continue;
    use.tags.emplace_back(name, attribute.value());
  }
  for (const pugi::xml_node child : application.node.children()) {
    const std::string_view name = child.name();
    if (child.type() != pugi::node_element || name.starts_with("base_")) continue;
    if (const char* text = child.text().get(); *text) use.tags.emplace_back(name, text);
  }
  return use;
}

}  // namespace

std::string reportKind(const XmiElement& element) {
  switch (element.metaclass) {
    case Metaclass::property:
      return "attribute";
    case Metaclass::literal:
      return "literal";
    case Metaclass::dataType:
      return "dataType";
    case Metaclass::association:
    case Metaclass::associationClass:
      return "association";
    case Metaclass::realization:
      return "realization";
    case Metaclass::dependency:
    case Metaclass::usage:
    case Metaclass::abstraction:
      return "dependency";
    default:
      return lowerFirst(element.metaclassName);
  }
}

XmiReader::XmiReader(const std::vector<const XmlFile*>& files, ModelDescription& description)
    : m_index(files), m_description(description), m_isTold(m_index.size()) {}

void XmiReader::read() {
  for (const std::size_t element : m_index.duplicates()) {
    if (m_index[element].metaclass == Metaclass::other) continue;
    m_description.note(reportKind(m_index[element]), std::string(m_index[element].id),
                       m_index.place(element), "the file has this identifier twice");
  }
  collectComments();
  collectApplications();
  makeClassifiers();
  readRelationships();
  tellRest();
}

void XmiReader::collectComments() {
  for (std::size_t at = 1; at < m_index.size(); ++at) {
    if (m_index[at].metaclass != Metaclass::comment) continue;
    const Comment comment{at, std::string(m_index[at].id), m_index.place(at),
                          cleaned(m_index.value(at, "body")), false};
    const std::vector<XmiReference> targets = m_index.references(at, "annotatedElement", true);
    if (targets.empty()) addComment({}, m_index[at].parent, comment);
    for (const XmiReference& target : targets) addComment(target, m_index[at].parent, comment);
  }
  for (const XmiSideNote& note : m_index.documentation()) {
    const char* property = note.node.attribute("value") ? "value" : "documentation";
    addComment(note.target, XmiIndex::kNone,
               {XmiIndex::kNone, note.target.text, note.file->place(note.node),
                cleaned(note.node.attribute(property).value()), false});
  }
}

void XmiReader::addComment(const XmiReference& target, std::size_t fallback, Comment comment) {
  const std::size_t found = m_index.find(target);
  m_comments[found != XmiIndex::kNone ? found : fallback].push_back(std::move(comment));
}

void XmiReader::collectApplications() {
  for (const XmiSideNote& application : m_index.applications()) {
    const StereotypeUse use = useOf(application);
    const std::size_t target = m_index.find(application.target);
    if (target == XmiIndex::kNone) {
      m_description.skip(use, "\"" + application.target.text + "\", which is in none of the files");
      continue;
    }
    m_applications[target].push_back({use, false});
  }
}

void XmiReader::describe(std::size_t element, Described& described) {
  m_isTold[element] = true;
  described.id = m_index[element].id;
  described.name = m_index.value(element, "name");
  described.place = m_index.place(element);
  described.documentation = documentationOf(element);
  described.stereotypes = stereotypesOf(element);
}

std::string XmiReader::documentationOf(std::size_t element) {
  const auto comments = m_comments.find(element);
  if (comments == m_comments.end()) return {};
  std::string text;
  for (Comment& comment : comments->second) {
    comment.isTold = true;
    m_isTold[comment.element] = true;
    if (comment.text.empty()) continue;
    if (!text.empty()) text.append("\n\n");
    text.append(comment.text);
  }
  return text;
}

std::vector<StereotypeUse> XmiReader::stereotypesOf(std::size_t element) {
  const auto applications = m_applications.find(element);
  if (applications == m_applications.end()) return {};
  std::vector<StereotypeUse> uses;
  for (Application& application : applications->second) {
    application.isTold = true;
    uses.push_back(application.use);
  }
  return uses;
}

void XmiReader::makeClassifiers() {
  for (std::size_t at = 1; at < m_index.size(); ++at) {
    if (!isClassifier(m_index[at].metaclass)) continue;
    DescribedClassifier classifier;
    describe(at, classifier);
    classifier.kind = kindOf(at);
    classifier.category = categoryOf(at);
    classifier.scope = m_index.value(at, "visibility");
    classifier.isAbstract = m_index.flag(at, "isAbstract");
    classifier.isFinal = m_index.flag(at, "isLeaf") || m_index.flag(at, "isFinalSpecialization");
    readMembers(at, classifier);
    m_classifiers.emplace(at, m_description.classifiers.size());
    m_description.classifiers.push_back(std::move(classifier));
  }
}

ClassifierKind XmiReader::kindOf(std::size_t element) const {
  switch (m_index[element].metaclass) {
    case Metaclass::interface:
      return ClassifierKind::interface;
    case Metaclass::enumeration:
      return ClassifierKind::enumeration;
    case Metaclass::dataType: {
      const std::vector<std::size_t> members = m_index.children(element);
      const bool hasMembers =
          std::any_of(members.begin(), members.end(), [this](std::size_t member) {
            const Metaclass metaclass = m_index[member].metaclass;
            return metaclass == Metaclass::property || metaclass == Metaclass::operation;
          });
      return hasMembers ? ClassifierKind::structuredType : ClassifierKind::plainType;
    }
    default:
      return ClassifierKind::plainClass;
  }
}

std::string XmiReader::categoryOf(std::size_t element) const {
  std::string category;
  for (std::size_t at = m_index[element].parent; at != XmiIndex::kNone; at = m_index[at].parent) {
    const std::string name = m_index.value(at, "name");
    if (name.empty()) continue;
    category = category.empty() ? name : name + "::" + category;
  }
  return category;
}

void XmiReader::tellRest() {
  for (std::size_t at = 1; at < m_index.size(); ++at) {
    const Metaclass metaclass = m_index[at].metaclass;
    const bool hasPlace = metaclass == Metaclass::package || metaclass == Metaclass::comment;
    if (!m_isTold[at] && !hasPlace) tellElement(at);
  }
  tellAttachments();
}

void XmiReader::tellElement(std::size_t element) {
  const XmiElement& told = m_index[element];
  const XmiElement& owner = m_index[told.parent];
  const bool isRow = told.metaclass != Metaclass::other;
  // What lies inside of something that is told as a whole is not told once more, unless it is of a
  // kind that the model does have.
  if (!isRow && told.parent != XmiIndex::kNone && owner.metaclass == Metaclass::other) return;
  if (owner.metaclass == Metaclass::association && told.metaclass == Metaclass::property) return;
  std::string cause =
      withArticle(lowerFirst(told.metaclassName)) + " has no place in a class diagram";
  if (isRow) {
    cause = "it belongs to " + withArticle(lowerFirst(owner.metaclassName)) + ", which is not read";
    if (told.metaclass == Metaclass::property && isClassifier(owner.metaclass)) {
      cause = "its association is in none of the files";
    }
  }
  const bool isLooseEnd = !m_index.references(element, "association").empty();
  m_description.skip(isLooseEnd ? "associationEnd" : reportKind(told), std::string(told.id),
                     m_index.place(element), cause);
}

void XmiReader::tellAttachments() {
  for (std::size_t at = 0; at < m_index.size(); ++at) {
    const std::string owner = at == XmiIndex::kNone
                                  ? "an unknown element"
                                  : withArticle(lowerFirst(m_index[at].metaclassName));
    if (const auto comments = m_comments.find(at); comments != m_comments.end()) {
      for (const Comment& comment : comments->second) {
        if (comment.isTold) continue;
        m_description.skip("comment", comment.id, comment.place, "it documents " + owner);
      }
    }
    if (const auto uses = m_applications.find(at); uses != m_applications.end()) {
      for (const Application& application : uses->second) {
        if (application.isTold) continue;
        m_description.skip(application.use, owner);
      }
    }
  }
}

}  // namespace brisel::interchange
