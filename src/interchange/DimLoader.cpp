#include "interchange/DimLoader.h"

#include "interchange/JsonWriter.h"
#include "platform/Error.h"

namespace brisel::interchange {

using platform::Error;
using platform::ErrorNumber;
using platform::MetaType;
using platform::Node;
using platform::Ref;

DimLoader::DimLoader(platform::ComponentRegistry& registry, platform::MetaRepository& repository)
    : m_registry(registry), m_repository(repository) {}

void DimLoader::load(DimText& text) {
  m_text = &text;
  m_headerSeen = m_endSeen = false;
  const char* last = nullptr;
  readDimLines(text, [&](const DimLine& line) {
    last = line.place;
    take(line);
  });
  if (!m_headerSeen) text.fail(last, "not a DIM file (nothing in it)");
  if (!m_endSeen) text.fail(last, "the file breaks off behind this line: its end is missing");
  m_earlier.push_back(&text);
}

void DimLoader::take(const DimLine& line) {
  if (!m_headerSeen) return takeHeader(line);
  if (m_endSeen) m_text->fail(line.place, "an element behind the end");
  try {
    switch (line.kind) {
      case DimLine::Kind::header:
        m_text->fail(line.place, "a second header");
      case DimLine::Kind::node:
        return makeNode(line);
      case DimLine::Kind::link:
        return makeLink(line);
      case DimLine::Kind::end:
        m_endSeen = true;
    }
  } catch (const Error& error) {
    if (error.number() == static_cast<int>(ErrorNumber::badFile)) throw;
    if (error.number() != static_cast<int>(ErrorNumber::duplicateKey)) {
      m_text->fail(line.place, error.what());
    }
    m_text->fail(line.place, "a second " + std::string(line.type) + " " +
                                 dim::inQuotes(line.identifier) + firstPlace(line));
  }
}

void DimLoader::takeHeader(const DimLine& line) {
  if (line.kind != DimLine::Kind::header || line.type != dim::kFormat) {
    m_text->fail(line.place, "not a DIM file (no header in its first line)");
  }
  if (line.version > dim::kVersion || line.version < 1) {
    m_text->fail(line.place, "the file is of version " + std::to_string(line.version) +
                                 " of the format; this program reads up to version " +
                                 std::to_string(dim::kVersion));
  }
  if (line.modelKind != dim::kModelKind) {
    m_text->fail(line.place, "the file holds a model of the kind " + dim::inQuotes(line.modelKind) +
                                 ", not " + dim::inQuotes(dim::kModelKind));
  }
  m_headerSeen = true;
}

void DimLoader::makeNode(const DimLine& line) {
  const Ref<Node> node = m_repository.MakeNode(line.type, *line.name, line.identifier);
  for (const auto& [key, value] : line.properties) {
    if (dim::isOwnProperty(key)) {
      m_text->fail(line.place, dim::inQuotes(key) + " cannot be among the properties");
    }
    node->SetProperty(key, value);
  }
  if (line.area || !line.points.empty()) makeGeometry(line);
}

void DimLoader::makeLink(const DimLine& line) {
  if (m_linkEnds.type != line.type) findLinkEnds(line.type);
  const LinkEnds& ends = m_linkEnds;
  // Links of one owner mostly follow one another.
  if (!m_lastSource || m_lastSourceId != line.source || m_lastSourceType != ends.source) {
    m_lastSource = &end(line, "begins", ends.source, ends.words.source, line.source);
    m_lastSourceId = line.source;
    m_lastSourceType = ends.source;
  }
  Node& source = *m_lastSource;
  Node& target = end(line, "ends", ends.target, ends.words.target, line.target);
  if (line.name)
    m_linkName = *line.name;
  else
    dim::ownershipName(m_linkName, line.source, ends.words.relation, line.target);
  m_repository.MakeLink(line.type, m_linkName, line.identifier, source, target);
}

void DimLoader::makeGeometry(const DimLine& line) {
  if (!m_generator) {
    m_generator = m_registry.create("BriselUtility.UUIDGenerator");
    m_generator->call("Init", {"DIMImport"});
  }
  DimGeometryMaker maker(m_repository, *m_generator);
  if (line.area) maker.makeArea(line.type, line.identifier, *line.area);
  maker.makePoints(line.type, line.identifier, line.points);
}

void DimLoader::findLinkEnds(std::string_view type) {
  m_linkEnds.type = type;
  m_linkEnds.words = dim::linkWords(m_linkEnds.type);
  m_linkEnds.source = nodeType(m_linkEnds.words.source);
  m_linkEnds.target = nodeType(m_linkEnds.words.target);
}

const MetaType* DimLoader::nodeType(std::string_view name) const {
  for (MetaType& type : platform::each<MetaType>(m_repository.nodeTypes())) {
    if (type.name() == name) return &type;
  }
  return nullptr;
}

Node& DimLoader::end(const DimLine& line, std::string_view verb, const MetaType* type,
                     std::string_view typeName, std::string_view identifier) const {
  if (typeName.empty()) {
    m_text->fail(line.place, dim::inQuotes(line.type) +
                                 " is no type of links: three words are, "
                                 "with \".\" between them");
  }
  if (type) {
    if (const auto node = type->find(identifier)) return static_cast<Node&>(*node);
  }
  m_text->fail(line.place, "link " + dim::inQuotes(line.type) + " " + std::string(verb) +
                               " at unknown " + std::string(typeName) + " " +
                               dim::inQuotes(identifier));
}

/// Where the element of the same type and identifier was read, as far as its line begins as the
/// writer begins it.
std::string DimLoader::firstPlace(const DimLine& line) const {
  JsonWriter start;
  start.openObject();
  start.key(line.kind == DimLine::Kind::node ? dim::key::kNode : dim::key::kLink);
  start.value(line.type);
  start.key(dim::key::kId);
  start.value(line.identifier);
  for (const DimText* text : m_earlier) {
    const std::size_t found = text->firstLineWith(start.text());
    if (found > 0) return "; the first is in " + text->name() + ":" + std::to_string(found);
  }
  const std::size_t found = m_text->firstLineWith(start.text());
  if (found == 0 || found == m_text->lineOf(line.place)) return {};
  return "; the first is in line " + std::to_string(found);
}

}  // namespace brisel::interchange
