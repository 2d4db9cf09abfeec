#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "interchange/DimGeometry.h"
#include "interchange/JsonWriter.h"
#include "platform/Repository.h"

namespace brisel::interchange {

/// Writes a repository as a DIM file (docs/dim-format.md). The same repository always gives the
/// same bytes; what was read from a file that this wrote gives the bytes of that file.
///
/// An Error (invalidCall) names the element that a file cannot hold: one with an object as a
/// property, or with text that is not UTF-8.
class DimWriter {
 public:
  using Sink = std::function<void(std::string_view)>;

  /// Replaces the file whole or leaves it as it is; see SafeFile.
  static void write(const std::string& file, const platform::MetaRepository& repository);
  [[nodiscard]] static std::string text(const platform::MetaRepository& repository);
  /// Gives the bytes to the sink in large parts of whole lines.
  static void write(const Sink& sink, const platform::MetaRepository& repository);

 private:
  DimWriter(const Sink& sink, const platform::MetaRepository& repository)
      : m_sink(sink), m_repository(repository), m_geometry(repository) {}

  void writeAll();
  void writeNodes(const platform::MetaType& type);
  void writeNode(const platform::Node& node);
  void writeValue(const platform::Node& node, std::string_view key, const platform::Value& value);
  void writeDouble(double number);
  void writeGeometry(const DimGeometry::OfElement& geometry);
  void writeLinks(const platform::MetaType& type);
  void endLine();
  void flush();
  static void failEncoding(std::string_view text);

  const Sink& m_sink;
  const platform::MetaRepository& m_repository;
  DimGeometry m_geometry;
  JsonWriter m_json;
  std::string m_type;               ///< name of the type whose elements are being written
  std::vector<std::string> m_keys;  ///< of its properties, sorted
  bool m_hasGeometry = false;       ///< geometry belongs to some of them
  std::string m_linkName;           ///< kept for its memory
};

}  // namespace brisel::interchange
