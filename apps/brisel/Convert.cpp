#include "Commands.h"
#include "Diagram.h"
#include "Files.h"
#include "Models.h"
#include "Pictures.h"
#include "UsageError.h"
#include "canvas/SvgExport.h"
#include "interchange/DimWriter.h"
#include "platform/Text.h"

namespace brisel::app {

namespace {

enum class Format { dim, svg, png, pdf };

Format formatOf(const ConvertOptions& options) {
  const std::string& output = options.files.back();
  std::string ending = options.format.empty() ? endingOf(output) : "." + options.format;
  for (char& c : ending) c = platform::lowerCase(c);
  if (ending == ".dim") return Format::dim;
  if (ending == ".svg") return Format::svg;
  if (ending == ".png") return Format::png;
  if (ending == ".pdf") return Format::pdf;
  throw UsageError("cannot tell from \"" + output +
                   "\" what to write: .dim, .svg, .png or .pdf, or --to");
}

std::string pictureOf(const canvas::Scene& scene, Format format, double scale) {
  switch (format) {
    case Format::png:
      return drawPng(scene, scale);
    case Format::pdf:
      return drawPdf(scene);
    default:
      return canvas::toSvg(scene);
  }
}

}  // namespace

void convert(const ConvertOptions& options) {
  if (options.files.size() < 2) throw UsageError("convert needs a file to read and one to write");
  const Format format = formatOf(options);
  const std::string& output = options.files.back();

  Program program;
  const auto model =
      readModelFiles({options.files.begin(), options.files.end() - 1}, program.registry());
  if (format == Format::dim) {
    writeBytes(output, interchange::DimWriter::text(*model.repository));
  } else {
    const Diagram diagram(program, *model.repository);
    writeBytes(output, pictureOf(diagram.scene(), format, options.scale));
  }
  tellOfReport(model.report);
}

}  // namespace brisel::app
