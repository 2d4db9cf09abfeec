#pragma once

#include <string>
#include <vector>

#include "tools/Generation.h"

namespace brisel::tools {

/// What writing files into a folder would do, by name.
struct OutputPlan {
  std::vector<std::string> made;       ///< not there yet
  std::vector<std::string> same;       ///< there with this text: they are left untouched
  std::vector<std::string> differing;  ///< there with another text
};

/// Looks without writing. An Error (fileAccess) names what cannot be a file or a folder there.
[[nodiscard]] OutputPlan planOutput(const std::string& folder,
                                    const std::vector<GeneratedFile>& files);

/// Writes all files or none: an Error names every one that differs, unless `force` is set, and
/// otherwise what could not be written and why. The folder is made when it is not there.
OutputPlan writeOutput(const std::string& folder, const std::vector<GeneratedFile>& files,
                       bool force);

/// The bytes of a file; an Error (fileNotFound or fileAccess) names it and the cause.
[[nodiscard]] std::string readTextFile(const std::string& path);

/// Puts the text in the place of the file whole, or leaves it as it was. An Error names path and
/// cause.
void writeTextFile(const std::string& path, const std::string& text);

}  // namespace brisel::tools
