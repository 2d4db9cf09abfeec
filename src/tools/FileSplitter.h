#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "platform/Text.h"
#include "tools/Generation.h"
#include "tools/OutputName.h"
#include "tools/TemplateContext.h"

namespace brisel::tools {

/// Sorts the output into files by the names that stand in it.
class FileSplitter {
 public:
  explicit FileSplitter(std::string fallback) : m_fallback(std::move(fallback)) {}

  void write(std::string_view text) {
    while (!text.empty()) {
      const auto start = text.find(kNameStart);
      append(text.substr(0, start));
      if (start == std::string_view::npos) return;
      const auto end = text.find(kNameEnd, start);
      open(std::string(text.substr(start + 1, end - start - 1)));
      text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
  }
  [[nodiscard]] const std::vector<GeneratedFile>& files() const { return m_files; }

 private:
  void append(std::string_view text) {
    if (text.empty()) return;
    if (text.find(kHandle) != std::string_view::npos) failAtHandle(text);
    if (m_behindName && (text == "\n" || text == "\r\n")) {
      m_behindName = false;
      return;
    }
    m_behindName = false;
    if (m_files.empty()) {
      if (platform::trimmed(text).empty()) return;
      open(m_fallback);
      m_behindName = false;
    }
    m_files.back().text.append(text);
  }
  /// A tag for a value named an object, whose handle came out.
  [[noreturn]] static void failAtHandle(std::string_view text) {
    const auto start = text.find(kHandle, text.find(kHandle) + 1) + 1;
    const std::string name(text.substr(start, text.find(kHandle, start) - start));
    throw RunFault(name, "\"" + name + "\" has values but is none itself");
  }
  void open(std::string name) {
    if (const std::string cause = outputNameFault(name); !cause.empty()) {
      throw RunFault(std::string(kFile), cause);
    }
    if (!m_names.insert(foldedOutputName(name)).second) {
      throw RunFault(std::string(kFile), "two files would be called \"" + name + "\"");
    }
    m_files.push_back({std::move(name), {}});
    m_behindName = true;
  }

  std::string m_fallback;
  std::vector<GeneratedFile> m_files;
  std::unordered_set<std::string> m_names;
  bool m_behindName = false;
};

}  // namespace brisel::tools
