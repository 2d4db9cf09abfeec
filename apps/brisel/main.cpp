#include <algorithm>
#include <exception>
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "Commands.h"
#include "UsageError.h"
#ifdef BRISEL_QT
#include "Window.h"
#endif

namespace brisel::app {
namespace {

enum ExitCode { kDone = 0, kFailed = 1, kWrongUsage = 2 };

constexpr const char* kExitCodes =
    "Exit codes: 0 done, 1 failed (the cause is on standard error), 2 wrong usage.";

struct Options {
  std::vector<std::string> files;
  ConvertOptions convert;
  InfoOptions info;
  LayoutOptions layout{{}, "%HIERARCHY%", {}};
  GenerateOptions generate;
  bool window = false;
  bool oneModel = false;
};

/// One line, whatever a cause holds.
int tell(std::string text, ExitCode code) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  std::cerr << "brisel: " << text << '\n';
  return code;
}

void addConvert(CLI::App& app, ConvertOptions& options) {
  CLI::App& command = *app.add_subcommand("convert", "Write a model in another format");
  command
      .add_option("FILES", options.files,
                  "IN... OUT: the files of one model (.dim, or .uml .xmi .ecore), then the file to "
                  "write (.dim .svg .png .pdf); - is standard input or output")
      ->required();
  command.add_option("--to", options.format,
                     "Format to write, where OUT does not tell: dim, svg, "
                     "png, pdf");
  command.add_option("--scale", options.scale, "Scale of a .png, 1 is 100 %")
      ->check(CLI::Range(0.01, 100.0));
  command.callback([&options] { convert(options); });
}

void addInfo(CLI::App& app, InfoOptions& options) {
  CLI::App& command = *app.add_subcommand("info", "Count what a model holds");
  command.add_option("FILE", options.files, "The files of one model; - is standard input")
      ->required();
  command.add_flag("--json", options.json, "Write JSON");
  command.callback([&options] { info(options); });
}

void addLayout(CLI::App& app, LayoutOptions& options) {
  CLI::App& command = *app.add_subcommand("layout", "Lay out a model or a plain graph");
  command
      .add_option("FILE", options.file,
                  "A model, or a graph (.json): {\"nodes\":[{\"id\",\"w\",\"h\"}],"
                  "\"edges\":[{\"id\",\"src\",\"dst\",\"kind\"}]}")
      ->required();
  command.add_option("--style", options.style, "%HIERARCHY%, MATRIX, RANDOM or SPRING")
      ->capture_default_str();
  command
      .add_option("-o,--output", options.output,
                  "Where to write the drawing as JSON; - is standard output")
      ->required();
  command.callback([&options] { layOut(options); });
}

void addGenerate(CLI::App& app, GenerateOptions& options) {
  CLI::App& command =
      *app.add_subcommand("generate", "Write source text that a template makes of a model");
  command.add_option("FILE", options.files, "The files of one model; - is standard input");
  command.add_option("--template", options.templateName,
                     "Name of a template, such as C++, or path of one (.tml)");
  command.add_option("-o,--output", options.output,
                     "Folder to write to; nothing is written when a file there differs");
  command.add_option("--class", options.classes,
                     "Names of the classes; all of them without it");
  command.add_flag("--force", options.force, "Overwrite files that differ");
  command.add_flag("--list", options.list, "List the templates");
  command.callback([&options] { options.list ? listTemplates() : generate(options); });
}

void addAutomate(CLI::App& app, Options& options) {
  CLI::App& command = *app.add_subcommand(
      "automate", "Serve the components by JSON-RPC 2.0 on standard input and output");
  command.add_flag("--window", options.window, "Show what is created in windows while serving");
}

#ifdef BRISEL_QT
int show(const Options& options, const CLI::App& app) {
  if (!app.got_subcommand("automate")) return runWindows(options.files, options.oneModel);
  return runAutomationWindow();
}
#else
int show(const Options&, const CLI::App&) {
  return tell("this program was built without Qt and has no window", kFailed);
}
#endif

int run(int count, char** arguments) {
  Options options;
  CLI::App app("Brisel, an editor for UML class diagrams", "brisel");
  app.footer(kExitCodes);
  app.set_version_flag("--version", "brisel " BRISEL_VERSION, "Print the version and exit");
  app.add_option("FILE", options.files,
                 "Files to open (.dim, or .uml .xmi .ecore), each in a window of its own");
  app.add_flag("--one-model", options.oneModel,
               "The files are parts of one model: open them together in one window");
  app.require_subcommand(0, 1);
  addConvert(app, options.convert);
  addInfo(app, options.info);
  addLayout(app, options.layout);
  addGenerate(app, options.generate);
  addAutomate(app, options);
  try {
    app.parse(count, arguments);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == kDone) return app.exit(error);
    return tell(std::string(error.what()) + "; see brisel --help", kWrongUsage);
  } catch (const UsageError& error) {
    return tell(std::string(error.what()) + "; see brisel --help", kWrongUsage);
  }
  const bool serves = app.got_subcommand("automate");
  if (serves && !options.window) automate();
  if (serves ? options.window : app.get_subcommands().empty()) return show(options, app);
  return kDone;
}

}  // namespace
}  // namespace brisel::app

int main(int count, char** arguments) {
  try {
    return brisel::app::run(count, arguments);
  } catch (const std::bad_alloc&) {
    return brisel::app::tell("out of memory", brisel::app::kFailed);
  } catch (const std::exception& error) {
    return brisel::app::tell(error.what(), brisel::app::kFailed);
  }
}
