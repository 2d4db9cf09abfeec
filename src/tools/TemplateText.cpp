#include "tools/TemplateText.h"

#include <algorithm>

#include "platform/Text.h"

namespace brisel::tools {

namespace {

constexpr std::string_view kKinds = "#^/!>=&";

/// The whole line around a tag that stands alone on it, with its line break; an empty range with
/// begin behind end for others.
struct Range {
  std::size_t begin = 1;
  std::size_t end = 0;
  [[nodiscard]] bool isLine() const { return begin < end; }
};

Range lineAround(std::string_view text, const TemplateTag& tag) {
  std::size_t begin = tag.begin;
  while (begin > 0 && (text[begin - 1] == ' ' || text[begin - 1] == '\t')) --begin;
  std::size_t end = tag.end;
  while (end < text.size() && (text[end] == ' ' || text[end] == '\t' || text[end] == '\r')) ++end;
  const bool startsLine = begin == 0 || text[begin - 1] == '\n';
  const bool endsLine = end == text.size() || text[end] == '\n';
  if (!startsLine || !endsLine) return {};
  return {begin, std::min(end + 1, text.size())};
}

/// Reads "<% %>=", what stands behind the "=" of a tag that sets delimiters; false for anything
/// else.
bool setDelimiters(std::string_view content, std::string& open, std::string& close) {
  if (!content.ends_with('=')) return false;
  content = platform::trimmed(content.substr(0, content.size() - 1));
  const auto blank = content.find(' ');
  if (blank == std::string_view::npos || blank == 0) return false;
  open = content.substr(0, blank);
  close = platform::trimmed(content.substr(blank));
  return true;
}

}  // namespace

std::vector<TemplateTag> tagsOf(std::string_view text) {
  std::vector<TemplateTag> tags;
  std::string open = "{{";
  std::string close = "}}";
  for (std::size_t at = text.find(open); at != std::string_view::npos; at = text.find(open, at)) {
    const bool isTriple = open == "{{" && text.substr(at + open.size(), 1) == "{";
    const std::string closing = isTriple ? "}}}" : close;
    const std::size_t start = at + open.size() + (isTriple ? 1 : 0);
    const auto end = text.find(closing, start);
    if (end == std::string_view::npos) break;
    TemplateTag tag;
    tag.begin = at;
    tag.end = end + closing.size();
    std::string_view content = platform::trimmed(text.substr(start, end - start));
    if (isTriple) tag.kind = '&';
    if (!isTriple && !content.empty() && kKinds.find(content[0]) != std::string_view::npos) {
      tag.kind = content[0];
      content = platform::trimmed(content.substr(1));
    }
    tag.name = content;
    at = tag.end;
    tags.push_back(std::move(tag));
    if (tags.back().kind == '=' && !setDelimiters(content, open, close)) break;
  }
  return tags;
}

int lineAt(std::string_view text, std::size_t position) {
  const std::string_view before = text.substr(0, position);
  return 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
}

std::vector<TemplatePart> partsOf(std::string_view text) {
  const std::vector<TemplateTag> tags = tagsOf(text);
  const auto setsDelimiters = [](const TemplateTag& tag) { return tag.kind == '='; };
  if (std::any_of(tags.begin(), tags.end(), setsDelimiters)) return {{{}, std::string(text), 1}};
  std::vector<TemplatePart> parts;
  std::size_t done = 0;
  const auto add = [&](const std::string& section, std::size_t begin, std::size_t end) {
    if (begin < end || !section.empty()) {
      parts.push_back({section, std::string(text.substr(begin, end - begin)), lineAt(text, begin)});
    }
  };
  int depth = 0;
  const TemplateTag* open = nullptr;
  for (const TemplateTag& tag : tags) {
    if (tag.kind == '#' || tag.kind == '^') {
      if (depth++ == 0) open = &tag;
    } else if (tag.kind == '/' && --depth == 0 && open && open->kind == '#') {
      const Range first = lineAround(text, *open);
      const Range last = lineAround(text, tag);
      if (first.isLine() && last.isLine() && first.end <= last.begin) {
        add({}, done, first.begin);
        add(open->name, first.end, last.begin);
        done = last.end;
      }
    }
  }
  add({}, done, text.size());
  return parts;
}

std::string withoutTagLines(std::string_view text, char mark) {
  constexpr std::string_view kSilent = "#^/!=";
  std::string made;
  std::size_t done = 0;
  for (const TemplateTag& tag : tagsOf(text)) {
    if (tag.kind == 0 || kSilent.find(tag.kind) == std::string_view::npos) continue;
    const Range line = lineAround(text, tag);
    if (!line.isLine() || line.begin < done) continue;
    made.append(text.substr(done, line.begin - done));
    made.append(text.substr(tag.begin, tag.end - tag.begin)).push_back(mark);
    done = line.end;
  }
  return made.append(text.substr(done));
}

}  // namespace brisel::tools
