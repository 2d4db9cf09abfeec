#pragma once

#include <string>
#include <vector>

/// What the program does without a window. Each raises an Error when it fails, and a UsageError
/// when it was asked for what there is not.
namespace brisel::app {

struct ConvertOptions {
  std::vector<std::string> files;  ///< those of one model, then the one to write
  std::string format;              ///< ending of what is written, where the name does not tell
  double scale = 1;                ///< of a picture of points; 1 is 100 %
};
void convert(const ConvertOptions& options);

struct InfoOptions {
  std::vector<std::string> files;
  bool json = false;
};
void info(const InfoOptions& options);

struct LayoutOptions {
  std::string file;
  std::string style;
  std::string output;
};
void layOut(const LayoutOptions& options);

struct GenerateOptions {
  std::vector<std::string> files;
  std::string templateName;          ///< a name among those of `listTemplates`, or a path
  std::string output;                ///< folder
  std::vector<std::string> classes;  ///< by name or identifier; all of them when empty
  bool force = false;                ///< overwrite files that differ
  bool list = false;
};
void generate(const GenerateOptions& options);
/// A name a line on standard output.
void listTemplates();

/// Serves automation on standard input and output until the input ends.
void automate();

}  // namespace brisel::app
