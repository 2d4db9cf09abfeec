#include "layout/ConnectorSpreading.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "layout/LayerGraph.h"

namespace brisel::layout {
namespace {

/// Pieces that are nearer to each other, in tracks, belong to one passage.
constexpr double kPassage = 2;
/// How far apart, in tracks, pieces of a passage are set: the first that there is room for.
constexpr std::array kTracks{1.0, 0.75, 0.5, 0.4, kLeastTrack, 0.2, 0.1};
constexpr std::size_t kMostInPassage = 500;
constexpr double kAlike = 1e-6;

/// Lower, level or higher than the piece: where the line goes on from one end of it.
double sideOf(const std::vector<Point>& course, std::size_t piece, bool fromLow, Way way) {
  const Point a = course[piece];
  const Point b = course[piece + 1];
  const bool first = (along(a, way) < along(b, way)) == fromLow;
  if (first) return piece == 0 ? 0 : across(course[piece - 1], way) - across(a, way);
  return piece + 2 == course.size() ? 0 : across(course[piece + 2], way) - across(b, way);
}

double signOf(double value) { return value > kAlike ? 1 : value < -kAlike ? -1 : 0; }

}  // namespace

void ConnectorSpreading::spread(std::vector<int>& numbers) {
  m_numbers = &numbers;
  for (int round = 0; round < 2; ++round) {
    for (const Way way : {Way::level, Way::upright}) spread(numbers, way);
  }
}

void ConnectorSpreading::spread(std::vector<int>& numbers, Way way) {
  collect(way);
  std::unordered_map<std::size_t, std::vector<Point>> changed;
  for (Passage& passage : passages()) {
    limit(passage, way);
    findFixed(passage, way);
    if (!isCrowded(passage)) continue;
    sort(passage, way);
    const auto fits = [&](double tracks) { return separate(passage, tracks * m_measures.track); };
    if (std::none_of(kTracks.begin(), kTracks.end(), fits)) continue;
    for (const std::size_t i : passage) {
      const Mover& mover = m_movers[i];
      auto& course = changed.try_emplace(mover.line, lineOf(mover).course).first->second;
      for (const std::size_t p : {mover.piece, mover.piece + 1}) {
        course[p] = pointAt(along(course[p], way), mover.level, way);
      }
    }
  }
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const auto change = changed.find(i);
    if (change == changed.end()) continue;
    const Connector connector = m_field.line(numbers[i]).connector;
    m_field.removeLine(numbers[i]);
    numbers[i] = m_field.addLine({connector, std::move(change->second)});
  }
}

/// Branches of a trunk and the trunk itself stay together.
bool ConnectorSpreading::isOnTrunk(const StandingLine& line, const Mover& mover, Way way) {
  if (line.connector.kind < EdgeKind::generalization) return false;
  bool isShared = false;
  const Range level = Range{mover.level, mover.level}.grownBy(1);
  m_field.eachPiece(
      rectOf(mover.span.grownBy(1), level, way), way, [&](const RoutingField::Piece& piece) {
        const Connector& other = m_field.line(piece.line).connector;
        isShared |= other.id != line.connector.id && areRelated(other, line.connector) &&
                    piece.span.low < piece.span.high;
      });
  return isShared;
}

void ConnectorSpreading::collect(Way way) {
  m_movers.clear();
  for (std::size_t i = 0; i < m_numbers->size(); ++i) {
    const StandingLine& line = m_field.line((*m_numbers)[i]);
    for (std::size_t p = 0; p + 1 < line.course.size(); ++p) {
      const Point a = line.course[p];
      const Point b = line.course[p + 1];
      if (std::abs(across(a, way) - across(b, way)) > kAlike) continue;
      const Mover mover{i, p, across(a, way), between(along(a, way), along(b, way))};
      const double length = mover.span.high - mover.span.low;
      const bool isFar = !(length < kFarthestLed * m_measures.tile);
      if (length <= kAlike || isFar || isOnTrunk(line, mover, way)) continue;
      m_movers.push_back(mover);
    }
  }
  std::stable_sort(m_movers.begin(), m_movers.end(),
                   [](const Mover& a, const Mover& b) { return a.level < b.level; });
}

/// Whether it does not matter how near they are to each other.
bool ConnectorSpreading::areApart(const Mover& a, const Mover& b) const {
  return !a.span.grownBy(m_measures.track / 4).overlaps(b.span) ||
         (a.line != b.line && areRelated(lineOf(a).connector, lineOf(b).connector));
}

std::vector<ConnectorSpreading::Passage> ConnectorSpreading::passages() const {
  std::vector<std::size_t> heads(m_movers.size());
  std::iota(heads.begin(), heads.end(), std::size_t{0});
  const auto headOf = [&](std::size_t i) {
    while (heads[i] != i) i = heads[i] = heads[heads[i]];
    return i;
  };
  for (std::size_t i = 0; i < m_movers.size(); ++i) {
    for (std::size_t k = i + 1; k < m_movers.size(); ++k) {
      if (m_movers[k].level - m_movers[i].level > kPassage * m_measures.track) break;
      if (!areApart(m_movers[i], m_movers[k])) heads[headOf(k)] = headOf(i);
    }
  }
  std::vector<Passage> all(m_movers.size());
  for (std::size_t i = 0; i < m_movers.size(); ++i) all[headOf(i)].push_back(i);
  std::erase_if(all, [](const Passage& p) { return p.empty() || p.size() > kMostInPassage; });
  return all;
}

/// Pieces of one line that follow each other may come half way to each other.
void ConnectorSpreading::limit(const Passage& passage, Way way) {
  for (const std::size_t i : passage) {
    Mover& mover = m_movers[i];
    const StandingLine& line = lineOf(mover);
    mover.limits = m_nudging.limitsOf(line.connector, line.course, mover.piece);
    const auto keepOff = [&](Point far) {
      const double half = (across(far, way) + mover.level) / 2;
      if (half < mover.level) mover.limits.low = std::max(mover.limits.low, half);
      if (half > mover.level) mover.limits.high = std::min(mover.limits.high, half);
    };
    if (mover.piece > 0) keepOff(line.course[mover.piece - 1]);
    if (mover.piece + 2 < line.course.size()) keepOff(line.course[mover.piece + 2]);
  }
}

void ConnectorSpreading::findFixed(const Passage& passage, Way way) {
  m_fixed.clear();
  std::unordered_map<int, std::vector<const Mover*>> moversOf;
  for (const std::size_t i : passage) {
    moversOf[(*m_numbers)[m_movers[i].line]].push_back(&m_movers[i]);
  }
  for (const std::size_t i : passage) {
    const Mover& mover = m_movers[i];
    const Connector& own = lineOf(mover).connector;
    const Rect area = rectOf(mover.span.grownBy(m_measures.track / 4),
                             mover.limits.grownBy(m_measures.track), way);
    m_field.eachPiece(area, way, [&](const RoutingField::Piece& piece) {
      const Connector& other = m_field.line(piece.line).connector;
      if (other.id == own.id || areRelated(other, own)) return;
      const auto movers = moversOf.find(piece.line);
      const auto isPiece = [&](const Mover* m) {
        return m->level == piece.at && m->span.low == piece.span.low;
      };
      if (movers != moversOf.end() &&
          std::any_of(movers->second.begin(), movers->second.end(), isPiece)) {
        return;
      }
      m_fixed.push_back({i, piece.at});
    });
  }
}

bool ConnectorSpreading::isCrowded(const Passage& passage) const {
  const double least = kLeastTrack * m_measures.track - kAlike;
  for (std::size_t i = 0; i < passage.size(); ++i) {
    const Mover& a = m_movers[passage[i]];
    for (std::size_t k = i + 1; k < passage.size(); ++k) {
      const Mover& b = m_movers[passage[k]];
      if (b.level - a.level >= least) break;
      if (a.line != b.line && !areApart(a, b)) return true;
    }
  }
  return std::any_of(m_fixed.begin(), m_fixed.end(), [&](const Fixed& fixed) {
    return std::abs(m_movers[fixed.mover].level - fixed.at) < least;
  });
}

/// Of two pieces on one place: which one is to be the lower one, so that they cross least.
bool ConnectorSpreading::goesBefore(const Mover& a, const Mover& b, Way way) const {
  double votes = 0;
  for (const bool low : {true, false}) {
    const double sideA = signOf(sideOf(lineOf(a).course, a.piece, low, way));
    const double sideB = signOf(sideOf(lineOf(b).course, b.piece, low, way));
    const double inside = low ? a.span.low - b.span.low : b.span.high - a.span.high;
    votes += inside > kAlike ? sideA : inside < -kAlike ? -sideB : signOf(sideA - sideB);
  }
  return votes < 0;
}

void ConnectorSpreading::sort(Passage& passage, Way way) const {
  Passage sorted;
  for (const std::size_t i : passage) {
    auto place = sorted.end();
    for (auto it = sorted.end(); it != sorted.begin();) {
      --it;
      if (m_movers[i].level - m_movers[*it].level > 1) break;
      if (goesBefore(m_movers[i], m_movers[*it], way)) place = it;
    }
    sorted.insert(place, i);
  }
  passage = std::move(sorted);
}

/// Sets the levels so that all are so far apart, and changes nothing where there is no room.
bool ConnectorSpreading::separate(const Passage& passage, double apart) {
  const std::size_t size = passage.size();
  std::vector<Range> bounds(size);
  for (std::size_t i = 0; i < size; ++i) bounds[i] = m_movers[passage[i]].limits;
  std::unordered_map<std::size_t, std::size_t> placeOf;
  for (std::size_t i = 0; i < size; ++i) placeOf.emplace(passage[i], i);
  for (const Fixed& fixed : m_fixed) {
    Range& range = bounds[placeOf.at(fixed.mover)];
    const Mover& mover = m_movers[fixed.mover];
    const bool isOn = std::abs(fixed.at - mover.level) < 1;
    const bool hasMoreAbove = mover.limits.high - mover.level >= mover.level - mover.limits.low;
    if (isOn ? hasMoreAbove : fixed.at < mover.level) {
      range.low = std::max(range.low, fixed.at + apart);
    } else {
      range.high = std::min(range.high, fixed.at - apart);
    }
  }
  const auto distance = [&](std::size_t i, std::size_t k) -> std::optional<double> {
    const Mover& a = m_movers[passage[i]];
    const Mover& b = m_movers[passage[k]];
    if (areApart(a, b)) return {};
    return a.line == b.line ? std::clamp(b.level - a.level, 0.0, m_measures.least) : apart;
  };
  for (std::size_t k = size; k-- > 0;) {
    for (std::size_t i = 0; i < k; ++i) {
      if (const auto d = distance(i, k)) {
        bounds[i].high = std::min(bounds[i].high, bounds[k].high - *d);
      }
    }
  }
  std::vector<double> levels(size);
  for (std::size_t k = 0; k < size; ++k) {
    for (std::size_t i = 0; i < k; ++i) {
      if (const auto d = distance(i, k)) {
        bounds[k].low = std::max(bounds[k].low, levels[i] + *d);
      }
    }
    if (bounds[k].low > bounds[k].high + kAlike) return false;
    levels[k] = std::clamp(m_movers[passage[k]].level, bounds[k].low,
                           std::max(bounds[k].low, bounds[k].high));
  }
  for (std::size_t i = 0; i < size; ++i) m_movers[passage[i]].level = levels[i];
  return true;
}

}  // namespace brisel::layout
