#include "tools/Matrix.h"

#include <algorithm>
#include <utility>

#include "platform/Text.h"
#include "tools/Seriation.h"

namespace brisel::tools {

namespace {

constexpr auto kNowhere = ModelRelations::kNowhere;

std::vector<std::string> wordsOf(std::string_view text) {
  std::vector<std::string> words;
  std::string word;
  for (const char c : text) {
    if (c != ' ' && c != '\t') {
      word += platform::lowerCase(c);
    } else if (!word.empty()) {
      words.push_back(std::exchange(word, {}));
    }
  }
  if (!word.empty()) words.push_back(std::move(word));
  return words;
}

std::string folded(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), platform::lowerCase);
  return text;
}

/// By name in any case, then by name, then by identifier: one order for every run.
void sortByName(std::vector<ModelRelations::Class*>& classes) {
  using Keyed = std::pair<std::string, ModelRelations::Class*>;
  std::vector<Keyed> keyed;
  keyed.reserve(classes.size());
  for (ModelRelations::Class* one : classes) keyed.emplace_back(folded(one->name), one);
  std::sort(keyed.begin(), keyed.end(), [](const Keyed& a, const Keyed& b) {
    if (a.first != b.first) return a.first < b.first;
    if (a.second->name != b.second->name) return a.second->name < b.second->name;
    return a.second->node->identifier() < b.second->node->identifier();
  });
  for (std::size_t i = 0; i < classes.size(); ++i) classes[i] = keyed[i].second;
}

}  // namespace

void Matrix::options(Options options) {
  if (options == m_options) return;
  m_options = std::move(options);
  sort();
}

void Matrix::sort() {
  m_isStale = true;
  m_isOrdered = false;
}

bool Matrix::settle() {
  if (!m_isStale) return false;
  m_isStale = false;
  collect();
  if (m_options.neighbours) addNeighbours();
  if (m_options.relatedOnly) dropUnrelated();
  arrange();
  return true;
}

bool Matrix::isWanted(const Class& candidate) const {
  if (m_options.stereotype == "<NONE>") return candidate.stereotype.empty();
  return m_options.stereotype.empty() || candidate.stereotype == m_options.stereotype;
}

/// Those that the filters find. From here on a class that is shown has a place, whichever.
void Matrix::collect() {
  const std::vector<std::string> words = wordsOf(m_options.name);
  m_shown.clear();
  for (const auto& [key, entry] : m_relations.classes()) {
    entry->before = std::exchange(entry->place, kNowhere);
    const std::string name = words.empty() ? std::string() : folded(entry->name);
    const bool isNamed =
        words.empty() || std::any_of(words.begin(), words.end(), [&](const std::string& word) {
          return name.find(word) != std::string::npos;
        });
    if (!isNamed || !isWanted(*entry)) continue;
    entry->place = 0;
    m_shown.push_back(entry.get());
  }
}

void Matrix::addNeighbours() {
  const std::size_t found = m_shown.size();
  for (std::size_t i = 0; i < found; ++i) {
    for (const Relationship* each : m_shown[i]->relationships) {
      if (!isShown(*each)) continue;
      for (Class* end : {each->source, each->target}) {
        if (end->place != kNowhere) continue;
        end->place = 0;
        m_shown.push_back(end);
      }
    }
  }
}

void Matrix::dropUnrelated() {
  std::vector<Class*> dropped;
  for (Class* one : m_shown) {
    const bool isRelated = std::any_of(one->relationships.begin(), one->relationships.end(),
                                       [this](const Relationship* each) {
                                         return isShown(*each) && each->source->place != kNowhere &&
                                                each->target->place != kNowhere;
                                       });
    if (!isRelated) dropped.push_back(one);
  }
  for (Class* one : dropped) one->place = kNowhere;
  std::erase_if(m_shown, [](const Class* one) { return one->place == kNowhere; });
}

void Matrix::arrange() {
  sortByName(m_shown);
  if (m_options.order == Order::clusters && m_isOrdered) {
    keepOrder();
  } else if (m_options.order == Order::clusters) {
    cluster();
  }
  m_isOrdered = true;
  for (std::size_t i = 0; i < m_shown.size(); ++i) m_shown[i]->place = i;
}

/// What was not shown before stands at the end, each class by itself.
void Matrix::keepOrder() {
  std::stable_sort(m_shown.begin(), m_shown.end(),
                   [](const Class* a, const Class* b) { return a->before < b->before; });
  std::uint32_t group = 0;
  for (Class* one : m_shown) {
    if (one->before == kNowhere) one->group = group + 1;
    group = std::max(group, one->group);
  }
}

void Matrix::cluster() {
  for (std::size_t i = 0; i < m_shown.size(); ++i) m_shown[i]->place = i;
  std::vector<Affinity> pairs;
  for (const Class* one : m_shown) {
    for (const Relationship* each : one->relationships) {
      if (each->source != one || !isShown(*each) || each->target->place == kNowhere) continue;
      pairs.push_back({static_cast<std::uint32_t>(one->place),
                       static_cast<std::uint32_t>(each->target->place)});
    }
  }
  const Seriation found = seriate(m_shown.size(), pairs);
  std::vector<Class*> ordered;
  ordered.reserve(m_shown.size());
  for (const std::uint32_t number : found.order) {
    m_shown[number]->group = found.group[number];
    ordered.push_back(m_shown[number]);
  }
  m_shown = std::move(ordered);
}

void Matrix::marks(std::size_t row, std::size_t first, std::size_t last,
                   std::vector<Mark>& into) const {
  into.clear();
  const Class& own = *m_shown[row];
  for (const Relationship* each : own.relationships) {
    if (!isShown(*each)) continue;
    const bool forward = each->source == &own;
    const std::size_t column = (forward ? each->target : each->source)->place;
    if (column >= first && column < last) into.push_back({column, each, forward});
  }
  std::stable_sort(into.begin(), into.end(), [](const Mark& a, const Mark& b) {
    if (a.column != b.column) return a.column < b.column;
    if (a.forward != b.forward) return a.forward;
    return a.relationship->kind < b.relationship->kind;
  });
}

std::vector<Matrix::Mark> Matrix::cell(std::size_t row, std::size_t column) const {
  std::vector<Mark> found;
  marks(row, column, column + 1, found);
  return found;
}

std::array<std::size_t, Matrix::kKinds> Matrix::counts() const {
  std::array<std::size_t, kKinds> counts{};
  for (const Class* one : m_shown) {
    for (const Relationship* each : one->relationships) {
      if (each->source == one && each->target->place != kNowhere) {
        ++counts[static_cast<std::size_t>(each->kind)];
      }
    }
  }
  return counts;
}

}  // namespace brisel::tools
