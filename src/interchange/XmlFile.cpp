#include "interchange/XmlFile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "interchange/TextEncoding.h"
#include "platform/Error.h"
#include "platform/Text.h"

namespace brisel::interchange {

namespace {

using platform::Error;
using platform::ErrorNumber;

bool isUmlNamespace(std::string uri) {
  for (char& c : uri) c = platform::lowerCase(c);
  while (uri.ends_with('/')) uri.pop_back();
  if (uri.ends_with("/uml")) return true;
  constexpr std::string_view kSpecification = "/spec/uml/";
  const std::size_t at = uri.find(kSpecification);
  if (at == std::string::npos) return false;
  const std::string version = uri.substr(at + kSpecification.size());
  return !version.empty() && version.find_first_not_of("0123456789.") == std::string::npos;
}

bool isXmiNamespace(std::string_view uri) {
  return uri.find("omg.org/spec/XMI") != std::string_view::npos || uri == "http://www.omg.org/XMI";
}

/// The cause of a parse error in words of what is seen in the file.
std::string causeOf(const pugi::xml_parse_result& result, bool isAtEnd) {
  if (isAtEnd) return "the file ends inside of an element; it may be cut off";
  switch (result.status) {
    case pugi::status_end_element_mismatch:
      return "the end tag does not fit the start tag";
    case pugi::status_no_document_element:
      return "this is no XML file";
    case pugi::status_out_of_memory:
      return "the file is too large for the memory";
    default: {
      std::string text = result.description();
      if (!text.empty()) text[0] = platform::lowerCase(text[0]);
      return "no well-formed XML: " + text;
    }
  }
}

}  // namespace

QualifiedName splitName(std::string_view name) {
  const std::size_t colon = name.find(':');
  if (colon == std::string_view::npos) return {{}, name};
  return {name.substr(0, colon), name.substr(colon + 1)};
}

XmlFile::XmlFile(std::string path, std::string bytes)
    : m_path(std::move(path)), m_name(std::filesystem::path(m_path).filename().string()) {
  if (bytes.starts_with("PK\x03\x04")) fail(1, "this is an archive, no model file");
  m_text = xmlTextAsUtf8(std::move(bytes), m_path);
  for (std::size_t i = 0; i < m_text.size(); ++i) {
    if (m_text[i] == '\n') m_lineEnds.push_back(i);
  }
  parse();
  checkTree();
  readPrefixes();
  recognise();
}

std::string XmlFile::bytesOf(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::exists(path, error)) {
    throw Error(ErrorNumber::fileNotFound, path + ": there is no such file");
  }
  if (std::filesystem::is_directory(path, error)) {
    throw Error(ErrorNumber::fileAccess, path + ": this is a folder");
  }
  std::ifstream stream(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  if (!stream.good() && !stream.eof()) {
    throw Error(ErrorNumber::fileAccess, path + ": the file cannot be read");
  }
  return bytes;
}

void XmlFile::parse() {
  const std::size_t first = m_text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) fail(1, "the file is empty");
  if (m_text[first] != '<') fail(lineOf(first), "this is no XML file");
  const std::size_t last = m_text.find_last_not_of(" \t\r\n");
  const pugi::xml_parse_result result = m_document.load_buffer_inplace(
      m_text.data(), m_text.size(), pugi::parse_default, pugi::encoding_utf8);
  if (result) return;
  const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0));
  const bool isAtEnd = offset >= last && result.status != pugi::status_no_document_element;
  fail(lineOf(offset), causeOf(result, isAtEnd));
}

/// References such as "&#xD800;" put into the text what no character is.
void XmlFile::checkText(pugi::xml_node node) const {
  const auto check = [&](std::string_view text) {
    if (firstBrokenByte(text) == text.size()) return;
    fail(lineOf(node), "a character reference names no character");
  };
  check(node.value());
  for (const pugi::xml_attribute attribute : node.attributes()) check(attribute.value());
}

void XmlFile::checkTree() const {
  int depth = 0;
  pugi::xml_node node = root();
  while (node) {
    if (depth > kMaxDepth) {
      fail(lineOf(node), "elements are nested deeper than " + std::to_string(kMaxDepth));
    }
    checkText(node);
    if (node.first_child()) {
      node = node.first_child();
      ++depth;
      continue;
    }
    while (node && !node.next_sibling()) {
      node = node.parent();
      if (--depth <= 0) return;
    }
    node = node.next_sibling();
  }
}

void XmlFile::readPrefixes() {
  const auto read = [this](pugi::xml_node node) {
    for (const pugi::xml_attribute attribute : node.attributes()) {
      const QualifiedName name = splitName(attribute.name());
      if (name.prefix != "xmlns") continue;
      if (isUmlNamespace(attribute.value())) m_umlPrefixes.push_back(name.local);
      if (isXmiNamespace(attribute.value())) m_xmiPrefixes.push_back(name.local);
    }
  };
  read(root());
  for (const pugi::xml_node child : root().children()) read(child);
}

void XmlFile::recognise() {
  const std::size_t line = lineOf(root());
  const QualifiedName name = splitName(root().name());
  const auto isModel = [this](pugi::xml_node node) {
    return isUmlPrefix(splitName(node.name()).prefix);
  };
  const auto isPackage = [](pugi::xml_node node) {
    return splitName(node.name()).local == "EPackage";
  };
  if (name.local == "XMI") {
    if (const pugi::xml_attribute version = root().attribute("xmi.version")) {
      fail(line, std::string("XMI ") + version.value() + " is not read, only XMI 2.x is");
    }
    if (root().find_child(isModel)) return;
    if (!root().find_child(isPackage)) fail(line, "the XMI file holds no UML or Ecore model");
    m_dialect = Dialect::ecore;
  } else if (isPackage(root())) {
    m_dialect = Dialect::ecore;
  } else if (!isModel(root())) {
    fail(line, std::string("the element \"") + root().name() +
                   "\" begins no UML, XMI 2.x or Ecore model");
  }
}

bool XmlFile::isUmlPrefix(std::string_view prefix) const {
  return std::find(m_umlPrefixes.begin(), m_umlPrefixes.end(), prefix) != m_umlPrefixes.end();
}

bool XmlFile::isXmiPrefix(std::string_view prefix) const {
  return std::find(m_xmiPrefixes.begin(), m_xmiPrefixes.end(), prefix) != m_xmiPrefixes.end();
}

std::string_view XmlFile::xmiAttribute(pugi::xml_node node, std::string_view name) const {
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const QualifiedName qualified = splitName(attribute.name());
    if (qualified.local == name && isXmiPrefix(qualified.prefix)) return attribute.value();
  }
  return {};
}

std::string XmlFile::place(pugi::xml_node node) const {
  return m_name + ":" + std::to_string(lineOf(node));
}

void XmlFile::fail(std::size_t line, const std::string& cause) const {
  throw Error(ErrorNumber::badFile, m_path + ":" + std::to_string(line) + ": " + cause);
}

std::size_t XmlFile::lineOf(std::size_t offset) const {
  const auto end = std::lower_bound(m_lineEnds.begin(), m_lineEnds.end(), offset);
  return static_cast<std::size_t>(end - m_lineEnds.begin()) + 1;
}

std::size_t XmlFile::lineOf(pugi::xml_node node) const {
  return lineOf(static_cast<std::size_t>(std::max<std::ptrdiff_t>(node.offset_debug(), 0)));
}

}  // namespace brisel::interchange
