#pragma once

#include <charconv>
#include <deque>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <kainjow/mustache.hpp>

#include "platform/Text.h"
#include "tools/TemplateKeys.h"

/// What the template library asks of us while a template runs; for Generation alone.
namespace brisel::tools {

namespace mustache = kainjow::mustache;

// Characters that no text of a model or template has once it was cleaned.
inline constexpr char kHandle = '\x02';
inline constexpr char kTagLine = '\x1D';
inline constexpr char kNameStart = '\x1E';
inline constexpr char kNameEnd = '\x1F';

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

}  // namespace brisel::tools
