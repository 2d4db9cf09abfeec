#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brisel::tools {

/// A tag of a template as it stands in the text.
struct TemplateTag {
  char kind = 0;  ///< '#', '^', '/', '!', '>', '=', '&', or 0 for a variable
  std::string name;
  std::size_t begin = 0;  ///< of its opening braces
  std::size_t end = 0;    ///< behind its closing ones
};

/// The tags up to one that is not closed. A template that sets other delimiters is read up to
/// there.
[[nodiscard]] std::vector<TemplateTag> tagsOf(std::string_view text);

/// The line of a position, from 1.
[[nodiscard]] int lineAt(std::string_view text, std::size_t position);

/// A piece of a template that can be run on its own.
struct TemplatePart {
  std::string section;  ///< the list whose elements it is run for; empty for once
  std::string text;
  int line = 1;  ///< where it starts
};

/// The text cut at the sections that stand at its top, as far as their tags have lines of their
/// own.
[[nodiscard]] std::vector<TemplatePart> partsOf(std::string_view text);

/// The text in which a tag that shows nothing and has a line of its own is followed by the mark in
/// the place of the rest of its line, so that the line leaves no trace whether or not its section
/// is shown. Whoever runs the text takes the marks out of the output.
[[nodiscard]] std::string withoutTagLines(std::string_view text, char mark);

}  // namespace brisel::tools
