#include "layout/Channel.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <tuple>
#include <utility>

#include "layout/Comb.h"
#include "layout/LayerGraph.h"

namespace brisel::layout {
namespace {

/// What shares one horizontal piece: a wire or a trunk.
struct Net : Comb {
  [[nodiscard]] double left() const { return std::min(top, bottoms.front()); }
  [[nodiscard]] double right() const { return std::max(top, bottoms.back()); }
  [[nodiscard]] bool goesLeft() const { return bottoms.front() < top; }
  [[nodiscard]] bool goesRight() const { return bottoms.back() > top; }
};

/// The highest number over stretches of a line of slots, where numbers only grow.
class Skyline {
 public:
  explicit Skyline(int slots) {
    while (m_leaves < slots) m_leaves *= 2;
    m_highest.assign(static_cast<std::size_t>(2) * m_leaves, -1);
    m_whole.assign(static_cast<std::size_t>(2) * m_leaves, -1);
  }
  [[nodiscard]] int highest(int first, int last) const {
    return highest(1, 0, m_leaves, first, last);
  }
  void raise(int first, int last, int to) { raise(1, 0, m_leaves, first, last, to); }

 private:
  [[nodiscard]] int highest(int node, int low, int high, int first, int last) const {
    if (last < low || high <= first) return -1;
    if (first <= low && high <= last + 1) return m_highest[node];
    const int middle = (low + high) / 2;
    return std::max({m_whole[node], highest(2 * node, low, middle, first, last),
                     highest(2 * node + 1, middle, high, first, last)});
  }
  void raise(int node, int low, int high, int first, int last, int to) {
    if (last < low || high <= first) return;
    m_highest[node] = std::max(m_highest[node], to);
    if (first <= low && high <= last + 1) {
      m_whole[node] = std::max(m_whole[node], to);
      return;
    }
    const int middle = (low + high) / 2;
    raise(2 * node, low, middle, first, last, to);
    raise(2 * node + 1, middle, high, first, last, to);
  }

  int m_leaves = 1;
  std::vector<int> m_highest;
  std::vector<int> m_whole;
};

class Assigner {
 public:
  Assigner(const std::vector<Wire>& wires, double apart) : m_wires(wires), m_apart(apart) {}

  Tracks assign() {
    m_tracks.track.assign(m_wires.size(), -1);
    m_tracks.lowerTrack.assign(m_wires.size(), -1);
    for (const Wire& wire : m_wires) m_tracks.detour.push_back(wire.bottom);
    collectNets();
    if (m_nets.empty()) return std::move(m_tracks);
    wishOrder();
    findMeetings();
    order();
    sift();
    stack();
    detour();
    return std::move(m_tracks);
  }

 private:
  /// The bottom of a wire comes near the top of another, which then has to lie above it.
  struct Meeting {
    int upper;  ///< net
    int lower;  ///< net
    int wire;   ///< that has the bottom
  };

  void collectNets() {
    int trunks = 0;
    for (const Wire& wire : m_wires) trunks = std::max(trunks, wire.trunk + 1);
    std::vector<bool> bent(trunks, false);
    for (const Wire& wire : m_wires) {
      if (wire.trunk >= 0 && wire.top != wire.bottom) bent[wire.trunk] = true;
    }
    std::vector<int> ofTrunk(trunks, -1);
    m_net.assign(m_wires.size(), -1);
    for (int i = 0; i < count(m_wires); ++i) {
      const Wire& wire = m_wires[i];
      if (wire.trunk < 0 ? wire.top == wire.bottom : !bent[wire.trunk]) continue;
      int& known = wire.trunk < 0 ? m_net[i] : ofTrunk[wire.trunk];
      if (known < 0) {
        known = count(m_nets);
        m_nets.push_back({{wire.top}});
      }
      m_net[i] = known;
      m_nets[known].bottoms.push_back(wire.bottom);
    }
    for (Net& net : m_nets) std::sort(net.bottoms.begin(), net.bottoms.end());
  }

  /// Of the nets that go one way, those whose horizontal pieces touch follow each other.
  void wishOrder() {
    for (const bool right : {true, false}) {
      std::vector<int> nets;
      for (int n = 0; n < count(m_nets); ++n) {
        if (right ? m_nets[n].goesRight() : m_nets[n].goesLeft()) nets.push_back(n);
      }
      std::stable_sort(nets.begin(), nets.end(), [&](int a, int b) {
        return right ? m_nets[a].top > m_nets[b].top : m_nets[a].top < m_nets[b].top;
      });
      chain(nets, right);
    }
  }

  /// Of nets whose pieces go from their tops one way and touch, the next is to lie below the one
  /// before.
  void chain(const std::vector<int>& nets, bool right) {
    double reach = 0;
    for (int k = count(nets) - 1; k >= 0; --k) {
      const Net& net = m_nets[nets[k]];
      // Seen from where the tops come first.
      const double start = right ? net.top : -net.top;
      const double end = right ? net.right() : -net.left();
      const bool touches = k + 1 < count(nets) && start <= reach;
      if (touches) m_wishes.emplace_back(nets[k], nets[k + 1]);
      reach = touches ? std::max(reach, end) : end;
    }
  }

  void findMeetings() {
    std::vector<std::pair<double, int>> tops;
    for (int i = 0; i < count(m_wires); ++i) {
      if (m_net[i] >= 0) tops.emplace_back(m_wires[i].top, m_net[i]);
    }
    std::sort(tops.begin(), tops.end());
    tops.erase(std::unique(tops.begin(), tops.end()), tops.end());
    for (int i = 0; i < count(m_wires); ++i) {
      if (m_net[i] < 0) continue;
      const double x = m_wires[i].bottom;
      auto top = std::upper_bound(tops.begin(), tops.end(), std::pair(x - m_apart, count(m_nets)));
      for (; top != tops.end() && top->first < x + m_apart; ++top) {
        if (top->second != m_net[i]) m_meetings.push_back({top->second, m_net[i], i});
      }
    }
  }

  /// Takes nets that nothing has to lie above; where wishes block each other one of them is given
  /// up, where meetings do a meeting.
  void order() {
    const int nets = count(m_nets);
    const Adjacency wished = makeAdjacency(nets, [&](auto&& add) {
      for (const auto& [upper, lower] : m_wishes) add(upper, lower);
    });
    const Adjacency forced = makeAdjacency(nets, [&](auto&& add) {
      for (const Meeting& meeting : m_meetings) add(meeting.upper, meeting.lower);
    });
    std::vector<int> wishes(nets, 0);
    std::vector<int> meetings(nets, 0);
    for (const auto& [upper, lower] : m_wishes) ++wishes[lower];
    for (const Meeting& meeting : m_meetings) ++meetings[meeting.lower];
    std::vector<int> ready;
    std::vector<bool> taken(nets, false);
    for (int n = nets - 1; n >= 0; --n) {
      if (wishes[n] == 0 && meetings[n] == 0) ready.push_back(n);
    }
    const auto take = [&](int n) {
      taken[n] = true;
      m_order.push_back(n);
      for (const int lower : wished.of(n)) {
        if (--wishes[lower] == 0 && meetings[lower] == 0 && !taken[lower]) ready.push_back(lower);
      }
      for (const int lower : forced.of(n)) {
        if (--meetings[lower] == 0 && wishes[lower] == 0 && !taken[lower]) ready.push_back(lower);
      }
    };
    while (count(m_order) < nets) {
      if (ready.empty()) {
        take(leastBlocked(taken, wishes, meetings));
        continue;
      }
      const int n = ready.back();
      ready.pop_back();
      if (!taken[n]) take(n);
    }
  }

  static int leastBlocked(const std::vector<bool>& taken, const std::vector<int>& wishes,
                          const std::vector<int>& meetings) {
    int best = -1;
    for (int n = 0; n < count(wishes); ++n) {
      if (taken[n]) continue;
      if (best < 0 || std::pair(meetings[n], wishes[n]) < std::pair(meetings[best], wishes[best])) {
        best = n;
      }
    }
    return best;
  }

  /// Moves single nets up and down in the order while fewer lines cross by that. The first order
  /// takes each pair by itself for as good as it can be, which trunks are not.
  void sift() {
    constexpr int kMost = 400;
    constexpr int kMostRounds = 20;
    const int nets = count(m_nets);
    if (nets > kMost) return;
    // Of a pair, what it costs that the first lies above the second.
    std::vector<int> costs(static_cast<std::size_t>(nets) * nets, 0);
    const auto cost = [&](int upper, int lower) -> int& {
      return costs[static_cast<std::size_t>(upper) * nets + lower];
    };
    for (int a = 0; a < nets; ++a) {
      for (int b = 0; b < nets; ++b) {
        const bool touch =
            m_nets[a].left() < m_nets[b].right() && m_nets[b].left() < m_nets[a].right();
        if (a != b && touch) cost(a, b) = m_nets[a].crossingsAbove(m_nets[b]);
      }
    }
    // A line that lies the wrong way round has to make a detour.
    for (const Meeting& meeting : m_meetings) cost(meeting.lower, meeting.upper) += nets;
    for (int round = 0; round < kMostRounds; ++round) {
      bool any = false;
      for (int n = 0; n < nets; ++n) any |= siftOne(n, cost);
      if (!any) break;
    }
  }

  /// Moves a net to its best place in the order; true when that is another one.
  template <class Cost>
  bool siftOne(int net, Cost&& cost) {
    const auto begin = m_order.begin();
    const auto at = static_cast<int>(std::find(begin, m_order.end(), net) - begin);
    int least = 0;
    int best = at;
    int sum = 0;
    for (int k = at + 1; k < count(m_order); ++k) {
      sum += cost(m_order[k], net) - cost(net, m_order[k]);
      if (sum < least) std::tie(least, best) = std::pair(sum, k);
    }
    sum = 0;
    for (int k = at - 1; k >= 0; --k) {
      sum += cost(net, m_order[k]) - cost(m_order[k], net);
      if (sum < least) std::tie(least, best) = std::pair(sum, k);
    }
    if (best > at) std::rotate(begin + at, begin + at + 1, begin + best + 1);
    if (best < at) std::rotate(begin + best, begin + at, begin + at + 1);
    return best != at;
  }

  void stack() {
    std::vector<double> ends;
    for (const Net& net : m_nets) ends.insert(ends.end(), {net.left(), net.right()});
    std::sort(ends.begin(), ends.end());
    ends.erase(std::unique(ends.begin(), ends.end()), ends.end());
    const auto slot = [&](double x) {
      return static_cast<int>(std::lower_bound(ends.begin(), ends.end(), x) - ends.begin());
    };
    Skyline skyline(count(ends));
    m_trackOf.assign(m_nets.size(), 0);
    for (const int n : m_order) {
      // Also nets that do not touch but meet have to lie below each other.
      const int first = slot(m_nets[n].left() - m_apart);
      const int last = slot(m_nets[n].right() + m_apart) - 1;
      m_trackOf[n] = 1 + skyline.highest(first, std::max(first, last));
      skyline.raise(slot(m_nets[n].left()), slot(m_nets[n].right()), m_trackOf[n]);
      m_tracks.count = std::max(m_tracks.count, m_trackOf[n] + 1);
    }
    for (int i = 0; i < count(m_wires); ++i) {
      if (m_net[i] >= 0) m_tracks.track[i] = m_trackOf[m_net[i]];
    }
  }

  /// Leads wires that still meet another round it: down beside it and back below all tracks.
  void detour() {
    std::vector<double> used;
    int extra = 0;
    for (const Meeting& meeting : m_meetings) {
      if (m_trackOf[meeting.upper] < m_trackOf[meeting.lower]) continue;
      const int wire = meeting.wire;
      if (m_tracks.lowerTrack[wire] >= 0) continue;
      if (used.empty()) {
        for (const Wire& w : m_wires) used.insert(used.end(), {w.top, w.bottom});
        std::sort(used.begin(), used.end());
      }
      m_tracks.detour[wire] = freePlace(used, m_wires[wire].bottom, m_wires[wire].top);
      m_tracks.lowerTrack[wire] = m_tracks.count + extra++;
    }
    m_tracks.count += extra;
  }

  /// The middle of a wide gap between places, near x and on the side of "towards".
  [[nodiscard]] double freePlace(const std::vector<double>& used, double x, double towards) const {
    const bool right = towards > x;
    auto at = std::lower_bound(used.begin(), used.end(), x);
    for (int tries = 0; tries < 20; ++tries) {
      if (right ? at + 1 >= used.end() : at == used.begin()) break;
      const double low = right ? *at : *(at - 1);
      const double high = right ? *(at + 1) : *at;
      if (high - low > 2 * m_apart) return right ? low + m_apart : high - m_apart;
      right ? ++at : --at;
    }
    return right ? x + m_apart / 2 : x - m_apart / 2;
  }

  const std::vector<Wire>& m_wires;
  double m_apart;
  Tracks m_tracks;
  std::vector<int> m_net;  ///< of each wire; -1: it is straight
  std::vector<Net> m_nets;
  std::vector<std::pair<int, int>> m_wishes;  ///< nets, the first rather above the second
  std::vector<Meeting> m_meetings;
  std::vector<int> m_order;
  std::vector<int> m_trackOf;  ///< of each net
};

}  // namespace

Tracks assignTracks(const std::vector<Wire>& wires, double apart) {
  return Assigner(wires, apart).assign();
}

}  // namespace brisel::layout
