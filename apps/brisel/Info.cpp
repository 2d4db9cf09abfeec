#include "Commands.h"
#include "Files.h"
#include "Models.h"
#include "Program.h"
#include "interchange/ModelInfo.h"

namespace brisel::app {

void info(const InfoOptions& options) {
  Program program;
  const auto model = readModelFiles(options.files, program.registry());
  const auto counts = interchange::modelInfo(*model.repository);
  writeBytes(std::string(kStandard), options.json ? interchange::infoAsJson(counts, model.report)
                                                  : interchange::infoAsText(counts, model.report));
}

}  // namespace brisel::app
