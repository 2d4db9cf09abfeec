#pragma once

#include <string>
#include <vector>

namespace brisel::interchange {

/// What an import tells besides the model that it made. Whatever a file holds and the model has no
/// place for is in here; causes name the file and the line as "file:line: cause".
struct ImportReport {
  /// An element that was not made. `kind` is the word of the element's row in docs/import.md, such
  /// as "association", "dependency" or "attribute".
  struct Skipped {
    std::string kind;
    std::string id;
    std::string reason;
  };
  /// A class that stands for one of a file that was not given.
  struct Stub {
    std::string id;
    std::string name;
  };
  /// An element that was made, but for the part of it that the text tells.
  struct Note {
    std::string kind;
    std::string id;
    std::string text;
  };

  std::vector<Skipped> skipped;
  std::vector<Stub> stubs;
  std::vector<Note> notes;
};

}  // namespace brisel::interchange
