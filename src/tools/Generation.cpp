#include "tools/Generation.h"

#include <algorithm>
#include <charconv>
#include <deque>
#include <stdexcept>
#include <unordered_set>
#include <utility>

#include <kainjow/mustache.hpp>

#include "platform/Text.h"
#include "tools/OutputName.h"
#include "tools/TemplateText.h"

namespace brisel::tools {

namespace {

namespace mustache = kainjow::mustache;

// Characters that no text of a model or template has once it was cleaned.
constexpr char kHandle = '\x02';
constexpr char kTagLine = '\x1D';
constexpr char kNameStart = '\x1E';
constexpr char kNameEnd = '\x1F';
constexpr int kDeepestSection = 100;

/// A fault that is met while a template runs: told by the name in the tag.
class RunFault : public std::runtime_error {
 public:
  RunFault(std::string name, const std::string& cause)
      : std::runtime_error(cause), m_name(std::move(name)) {}
  [[nodiscard]] const std::string& name() const { return m_name; }

 private:
  std::string m_name;
};

/// An item with its place in the list that it is from.
struct Placed {
  Item item;
  std::size_t index = 0;  ///< from 1; 0 for what is from no list
  std::size_t count = 0;
};

/// Looks names up in the model when the template asks for them. What was found lives until the
/// section that asked for it ends. Items go through the library as texts that number them.
class Context : public mustache::basic_context<std::string> {
 public:
  explicit Context(CodeModel& model) : m_model(model) {
    m_fileName = mustache::data(
        mustache::lambda2([](const std::string& text, const mustache::renderer& render) {
          std::string name = render(text);
          std::erase(name, kTagLine);
          return kNameStart + std::string(platform::trimmed(name)) + kNameEnd;
        }));
  }

  void enter(Placed placed) {
    m_frames.push_back({std::move(placed), m_data.size(), m_items.size()});
  }
  void push(const mustache::data* data) override {
    Placed placed;
    if (data->is_string()) {
      const std::string& text = data->string_value();
      if (text.starts_with(kHandle)) {
        std::size_t number = 0;
        std::from_chars(text.data() + 1, text.data() + text.size(), number);
        placed = m_items.at(number);
      } else {
        placed.item.text = text;
      }
    } else if (data->is_true()) {
      placed.item.text = "true";
    }
    enter(std::move(placed));
  }
  void pop() override {
    const Frame& frame = m_frames.back();
    while (m_data.size() > frame.dataBefore) m_data.pop_back();
    while (m_items.size() > frame.itemsBefore) m_items.pop_back();
    m_frames.pop_back();
  }

  [[nodiscard]] const mustache::data* get(const std::string& name) const override {
    if (name == ".") return store(ownText(), name);
    if (name == kFile) return &m_fileName;
    const auto dot = name.find('.');
    if (dot != std::string::npos) return getPath(name, dot);
    for (auto frame = m_frames.rbegin(); frame != m_frames.rend(); ++frame) {
      if (const auto field = lookUp(frame->placed, name)) return store(*field, name);
    }
    throw RunFault(name, "there is no \"" + name + "\" here");
  }
  [[nodiscard]] const mustache::data* get_partial(const std::string& name) const override {
    throw RunFault(name, "templates cannot be put into others (\"" + name + "\")");
  }

 private:
  struct Frame {
    Placed placed;
    std::size_t dataBefore;
    std::size_t itemsBefore;
  };

  [[nodiscard]] std::optional<Field> lookUp(const Placed& placed, std::string_view name) const {
    if (placed.item.keys) {
      if (const auto get = placed.item.keys->find(name)) return get(placed.item.object, m_model);
    }
    if (placed.index == 0) return std::nullopt;
    if (name == kIsFirst) return placed.index == 1;
    if (name == kIsLast) return placed.index == placed.count;
    if (name == kIndex) return std::to_string(placed.index);
    return std::nullopt;
  }

  /// "type.name": the first part as any name, each other one in what the part before gave.
  [[nodiscard]] const mustache::data* getPath(const std::string& path, std::size_t dot) const {
    std::optional<Field> field;
    for (auto frame = m_frames.rbegin(); frame != m_frames.rend() && !field; ++frame) {
      field = lookUp(frame->placed, path.substr(0, dot));
    }
    while (field && dot != std::string::npos) {
      const auto next = path.find('.', dot + 1);
      const std::string part = path.substr(dot + 1, next - dot - 1);
      dot = next;
      if (std::holds_alternative<bool>(*field) && !std::get<bool>(*field)) return &m_false;
      const Item* item = std::get_if<Item>(&*field);
      field = item ? lookUp({*item, 0, 0}, part) : std::nullopt;
    }
    if (!field) throw RunFault(path, "there is no \"" + path + "\" here");
    return store(*field, path);
  }

  [[nodiscard]] Field ownText() const {
    const Item& item = m_frames.back().placed.item;
    if (!item.keys) return item.text;
    const auto name = item.keys->find("name");
    return name ? name(item.object, m_model) : Field(std::string());
  }

  const mustache::data* store(const Field& field, const std::string& name) const {
    if (const bool* flag = std::get_if<bool>(&field)) return *flag ? &m_true : &m_false;
    if (const auto* text = std::get_if<std::string>(&field)) {
      if (text->empty()) return &m_false;
      return &m_data.emplace_back(*text);
    }
    if (const Item* item = std::get_if<Item>(&field))
      return &m_data.emplace_back(handle({*item, 0, 0}, name));
    const auto& items = std::get<std::vector<Item>>(field);
    if (items.empty()) return &m_false;
    mustache::list list;
    list.reserve(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
      list.emplace_back(handle({items[i], i + 1, items.size()}, name));
    }
    return &m_data.emplace_back(list);
  }

  /// The number of the item and the name by which the template asked for it.
  [[nodiscard]] std::string handle(Placed placed, const std::string& name) const {
    m_items.push_back(std::move(placed));
    return kHandle + std::to_string(m_items.size() - 1) + kHandle + name + kHandle;
  }

  CodeModel& m_model;
  std::vector<Frame> m_frames;
  mutable std::deque<mustache::data> m_data;
  mutable std::deque<Placed> m_items;
  mustache::data m_fileName;
  const mustache::data m_true{true};
  const mustache::data m_false{false};
};

/// Sorts the output into files by the names that stand in it.
class FileSplitter {
 public:
  explicit FileSplitter(std::string fallback) : m_fallback(std::move(fallback)) {}

  void write(std::string_view text) {
    while (!text.empty()) {
      const auto start = text.find(kNameStart);
      append(text.substr(0, start));
      if (start == std::string_view::npos) return;
      const auto end = text.find(kNameEnd, start);
      open(std::string(text.substr(start + 1, end - start - 1)));
      text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
  }
  [[nodiscard]] const std::vector<GeneratedFile>& files() const { return m_files; }

 private:
  void append(std::string_view text) {
    if (text.empty()) return;
    if (text.find(kHandle) != std::string_view::npos) failAtHandle(text);
    if (m_behindName && (text == "\n" || text == "\r\n")) {
      m_behindName = false;
      return;
    }
    m_behindName = false;
    if (m_files.empty()) {
      if (platform::trimmed(text).empty()) return;
      open(m_fallback);
      m_behindName = false;
    }
    m_files.back().text.append(text);
  }
  /// A tag for a value named an object, whose handle came out.
  [[noreturn]] static void failAtHandle(std::string_view text) {
    const auto start = text.find(kHandle, text.find(kHandle) + 1) + 1;
    const std::string name(text.substr(start, text.find(kHandle, start) - start));
    throw RunFault(name, "\"" + name + "\" has values but is none itself");
  }
  void open(std::string name) {
    if (const std::string cause = outputNameFault(name); !cause.empty()) {
      throw RunFault(std::string(kFile), cause);
    }
    if (!m_names.insert(foldedOutputName(name)).second) {
      throw RunFault(std::string(kFile), "two files would be called \"" + name + "\"");
    }
    m_files.push_back({std::move(name), {}});
    m_behindName = true;
  }

  std::string m_fallback;
  std::vector<GeneratedFile> m_files;
  std::unordered_set<std::string> m_names;
  bool m_behindName = false;
};

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
