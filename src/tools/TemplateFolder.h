#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brisel::tools {

/// The templates that there are: those installed beside the library and those of the person, which
/// go before installed ones of the same name. Files that end with ".tml".
class TemplateFolder {
 public:
  TemplateFolder() = default;
  /// Folders in the platform's spelling; either may be empty or missing.
  TemplateFolder(std::string installed, std::string own)
      : m_installed(std::move(installed)), m_own(std::move(own)) {}

  [[nodiscard]] const std::string& installed() const { return m_installed; }
  [[nodiscard]] const std::string& own() const { return m_own; }

  /// File names, sorted, each once.
  [[nodiscard]] std::vector<std::string> list() const;
  /// The path of a template by its file name, with or without ".tml", or of a file that is given by
  /// a path with a separator in it. An Error (fileNotFound) names it and those that there are.
  [[nodiscard]] std::string find(std::string_view name) const;
  /// Where a template of that name is saved: where it is when that can be written, otherwise in the
  /// person's folder.
  [[nodiscard]] std::string pathToSave(std::string_view name) const;

 private:
  std::string m_installed;
  std::string m_own;
};

/// Where templates of the person lie: brisel/Template in the folder for data of programs.
[[nodiscard]] std::string ownTemplateFolder();

}  // namespace brisel::tools
