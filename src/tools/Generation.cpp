#include "tools/Generation.h"

#include <charconv>
#include <utility>

#include "platform/Text.h"
#include "tools/FileSplitter.h"
#include "tools/TemplateContext.h"
#include "tools/TemplateText.h"

namespace brisel::tools {

namespace {

constexpr int kDeepestSection = 100;

/// The library tells "cause at position".
TemplateFault faultOf(std::string_view message, std::string_view text) {
  const auto at = message.rfind(" at ");
  std::size_t position = 0;
  if (at != std::string_view::npos) {
    std::from_chars(message.data() + at + 4, message.data() + message.size(), position);
  }
  std::string cause(message.substr(0, at));
  if (!cause.empty()) cause[0] = platform::lowerCase(cause[0]);
  return {lineAt(text, position), cause};
}

std::string stemOf(std::string_view name) {
  const auto dot = name.rfind('.');
  return std::string(dot == 0 ? name : name.substr(0, dot));
}

/// What the library would not notice or not bear.
std::optional<TemplateFault> faultIn(std::string_view text) {
  int depth = 0;
  for (const TemplateTag& tag : tagsOf(text)) {
    if (tag.kind == '#' || tag.kind == '^') ++depth;
    if (tag.kind == '/') --depth;
    if (depth > kDeepestSection)
      return TemplateFault{lineAt(text, tag.begin), "too many sections in sections"};
    if (tag.name.empty() && tag.kind != '!')
      return TemplateFault{lineAt(text, tag.begin), "a tag without a name"};
  }
  const auto control = text.find_first_of(std::string{kHandle, kTagLine, kNameStart, kNameEnd});
  if (control == std::string_view::npos) return std::nullopt;
  return TemplateFault{lineAt(text, control), "a control character"};
}

}  // namespace

class Generation::Work {
 public:
  Work(std::string_view name, std::string text, std::shared_ptr<CodeModel> model, TemplateRoot root)
      : m_text(std::move(text)),
        m_model(std::move(model)),
        m_root(std::move(root)),
        m_context(*m_model),
        m_splitter(stemOf(name) + ".txt") {
    m_context.enter({rootItem(m_root), 0, 0});
  }

  std::optional<TemplateFault> check() {
    if (auto fault = faultIn(m_text)) return fault;
    const mustache::mustache whole(m_text);
    if (!whole.is_valid()) return faultOf(whole.error_message(), m_text);
    m_parts = partsOf(m_text);
    return std::nullopt;
  }

  /// Whether there was something to do.
  bool step() {
    while (m_part < m_parts.size()) {
      if (!m_compiled) start();
      if (m_next < m_items.size()) {
        m_context.enter({m_items[m_next], m_next + 1, m_items.size()});
        render();
        m_context.pop();
        ++m_next;
        return true;
      }
      if (m_isOnce) {
        m_isOnce = false;
        render();
        return true;
      }
      m_compiled.reset();
      ++m_part;
    }
    return false;
  }

  [[nodiscard]] TemplateFault faultOfTag(const RunFault& fault) const {
    const TemplatePart& part = m_parts.at(m_part);
    for (const TemplateTag& tag : tagsOf(part.text)) {
      if (tag.kind != '/' && tag.kind != '!' && tag.name == fault.name()) {
        return {part.line + lineAt(part.text, tag.begin) - 1, fault.what()};
      }
    }
    return {part.line, fault.what()};
  }

  [[nodiscard]] const std::vector<GeneratedFile>& files() const { return m_splitter.files(); }

 private:
  /// Prepares the part that is next. A section that is no list is run as it stands.
  void start() {
    TemplatePart& part = m_parts[m_part];
    m_items.clear();
    m_next = 0;
    m_isOnce = part.section.empty();
    if (!m_isOnce) {
      const auto get = rootItem(m_root).keys->find(part.section);
      const Field field = get ? get(&m_root, *m_model) : Field(false);
      if (const auto* items = std::get_if<std::vector<Item>>(&field)) {
        m_items = *items;
      } else {
        part.text = "{{#" + part.section + "}}\n" + part.text + "{{/" + part.section + "}}\n";
        --part.line;
        m_isOnce = true;
      }
    }
    m_compiled = std::make_unique<mustache::mustache>(withoutTagLines(part.text, kTagLine));
    m_compiled->set_custom_escape([](const std::string& text) { return text; });
  }

  void render() {
    Sink sink{*this};
    m_compiled->render(m_context, sink);
  }

  /// What the library writes its pieces to.
  struct Sink {
    Work& work;
    Sink& operator<<(std::string piece) {
      std::erase(piece, kTagLine);
      work.m_splitter.write(piece);
      return *this;
    }
  };

  std::string m_text;
  std::shared_ptr<CodeModel> m_model;
  TemplateRoot m_root;
  Context m_context;
  FileSplitter m_splitter;
  std::vector<TemplatePart> m_parts;
  std::size_t m_part = 0;
  std::vector<Item> m_items;  ///< that the part is run for
  std::size_t m_next = 0;
  bool m_isOnce = false;
  std::unique_ptr<mustache::mustache> m_compiled;
};

Generation::Generation(std::string_view name, std::string text, std::shared_ptr<CodeModel> model,
                       TemplateRoot root)
    : m_work(std::make_unique<Work>(name, std::move(text), std::move(model), std::move(root))) {
  m_fault = m_work->check();
}

Generation::~Generation() = default;

bool Generation::step() {
  if (m_fault) return false;
  try {
    if (!m_work->step()) return false;
    ++m_stepsDone;
    return true;
  } catch (const RunFault& fault) {
    m_fault = m_work->faultOfTag(fault);
    return false;
  }
}

const std::vector<GeneratedFile>& Generation::files() const { return m_work->files(); }

}  // namespace brisel::tools
