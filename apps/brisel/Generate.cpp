#include <filesystem>
#include <iostream>

#include "Commands.h"
#include "Files.h"
#include "Models.h"
#include "Program.h"
#include "UsageError.h"
#include "platform/Error.h"
#include "tools/Generation.h"
#include "tools/OutputFolder.h"
#include "tools/TemplateFolder.h"

namespace brisel::app {

namespace {

tools::TemplateFolder templates() {
  return {installationFolder() + "/Template", tools::ownTemplateFolder()};
}

std::string pathOf(const std::string& name) {
  try {
    return templates().find(name);
  } catch (const platform::Error& error) {
    throw UsageError(error.what());
  }
}

/// The classes of the names, or all of them; in both cases bases first.
std::vector<const tools::CodeClass*> chosenClasses(const tools::CodeModel& model,
                                                   const std::vector<std::string>& names) {
  std::vector<bool> isChosen(model.classes().size(), names.empty());
  for (const std::string& name : names) {
    const auto found = model.find(name);
    if (found.empty()) throw UsageError("there is no class \"" + name + "\" in the model");
    for (const tools::CodeClass* cls : found) isChosen[cls->position] = true;
  }
  std::vector<const tools::CodeClass*> chosen;
  for (const auto& cls : model.classes()) {
    if (isChosen[cls->position]) chosen.push_back(cls.get());
  }
  return chosen;
}

}  // namespace

void listTemplates() {
  for (const std::string& name : templates().list()) std::cout << name << '\n';
}

void generate(const GenerateOptions& options) {
  if (options.files.empty() || options.templateName.empty() || options.output.empty()) {
    throw UsageError("generate needs a FILE, --template and -o, or --list");
  }
  const std::string path = pathOf(options.templateName);
  std::string text = tools::readTextFile(path);
  Program program;
  const auto model = readModelFiles(options.files, program.registry());
  const auto code = std::make_shared<tools::CodeModel>(*model.repository);
  const std::string name = std::filesystem::path(options.files.front()).stem().string();
  tools::Generation generation(std::filesystem::path(path).filename().string(), std::move(text),
                               code, {name, chosenClasses(*code, options.classes)});
  generation.run();
  if (const auto& fault = generation.fault()) {
    throw platform::Error(platform::ErrorNumber::badFile,
                          path + ":" + std::to_string(fault->line) + ": " + fault->cause);
  }
  const auto plan = tools::writeOutput(options.output, generation.files(), options.force);
  std::cout << plan.made.size() + plan.differing.size() << " written, " << plan.same.size()
            << " unchanged\n";
  tellOfReport(model.report);
}

}  // namespace brisel::app
