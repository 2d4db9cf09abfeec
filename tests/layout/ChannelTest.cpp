#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "layout/Channel.h"
#include "layout/LineCrossings.h"
#include "layout/Numbers.h"

namespace brisel::layout {
namespace {

using platform::Point;

constexpr double kApart = 2;

/// Draws the wires between the heights 0 and 100, tracks in between.
std::vector<Polyline> draw(const std::vector<Wire>& wires, const Tracks& tracks) {
  std::vector<Polyline> lines;
  const auto y = [&](int track) { return 100.0 * (track + 1) / (tracks.count + 1); };
  for (std::size_t i = 0; i < wires.size(); ++i) {
    Polyline line{{wires[i].top, 0}};
    if (tracks.track[i] >= 0) {
      line.push_back({wires[i].top, y(tracks.track[i])});
      line.push_back({tracks.detour[i], y(tracks.track[i])});
      if (tracks.lowerTrack[i] >= 0) {
        line.push_back({tracks.detour[i], y(tracks.lowerTrack[i])});
        line.push_back({wires[i].bottom, y(tracks.lowerTrack[i])});
      }
    }
    line.push_back({wires[i].bottom, 100});
    lines.push_back(std::move(line));
  }
  return lines;
}

std::int64_t inversions(const std::vector<Wire>& wires) {
  std::int64_t sum = 0;
  for (std::size_t i = 0; i < wires.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      sum += (wires[i].top - wires[k].top) * (wires[i].bottom - wires[k].bottom) < 0;
    }
  }
  return sum;
}

/// Places so many steps apart, in an order of their own.
std::vector<double> shuffled(int places, double step, double from, Numbers& numbers) {
  std::vector<double> all;
  for (int i = 0; i < places; ++i) all.push_back(from + step * i);
  for (int i = places; i > 1; --i) std::swap(all[i - 1], all[numbers.below(i)]);
  return all;
}

/// Pairs of different wires with pieces on each other; wires of one trunk may.
int onEachOther(const std::vector<Wire>& wires, const std::vector<Polyline>& lines) {
  int pairs = 0;
  const auto overlap = [](double a, double b, double c, double d) {
    return std::min(std::max(a, b), std::max(c, d)) - std::max(std::min(a, b), std::min(c, d)) >
           1e-9;
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      if (wires[i].trunk >= 0 && wires[i].trunk == wires[k].trunk) continue;
      for (std::size_t p = 1; p < lines[i].size(); ++p) {
        for (std::size_t q = 1; q < lines[k].size(); ++q) {
          const Point a = lines[i][p - 1];
          const Point b = lines[i][p];
          const Point c = lines[k][q - 1];
          const Point d = lines[k][q];
          pairs += a.y == b.y && c.y == d.y && a.y == c.y && overlap(a.x, b.x, c.x, d.x);
          pairs += a.x == b.x && c.x == d.x && a.x == c.x && overlap(a.y, b.y, c.y, d.y);
        }
      }
    }
  }
  return pairs;
}

TEST(Channel, WiresCrossOnceWhenTheirEndsAreTurnedAndElseNever) {
  Numbers numbers(3);
  for (const int wires : {1, 2, 3, 5, 10, 40, 120}) {
    for (int round = 0; round < 20; ++round) {
      const auto tops = shuffled(wires, 10, 0, numbers);
      const auto bottoms = shuffled(wires, 10, 5, numbers);
      std::vector<Wire> all;
      for (int i = 0; i < wires; ++i) all.push_back({tops[i], bottoms[i]});
      const auto lines = draw(all, assignTracks(all, kApart));
      EXPECT_EQ(lineCrossings(lines), inversions(all));
      EXPECT_EQ(onEachOther(all, lines), 0);
    }
  }
}

TEST(Channel, WiresThatEndWhereOthersStartStayApart) {
  Numbers numbers(4);
  for (const int wires : {2, 3, 5, 10, 40}) {
    for (int round = 0; round < 50; ++round) {
      const auto tops = shuffled(wires, 10, 0, numbers);
      const auto bottoms = shuffled(wires, 10, 0, numbers);
      std::vector<Wire> all;
      for (int i = 0; i < wires; ++i) all.push_back({tops[i], bottoms[i]});
      EXPECT_EQ(onEachOther(all, draw(all, assignTracks(all, kApart))), 0);
    }
  }
}

TEST(Channel, TrunksShareOneTrackAndMeetNoOther) {
  Numbers numbers(5);
  for (int round = 0; round < 50; ++round) {
    const auto bottoms = shuffled(30, 10, 0, numbers);
    std::vector<Wire> all;
    for (int i = 0; i < 30; ++i) {
      const int trunk = i % 5 - 1;
      all.push_back({trunk < 0 ? 10.0 * i : 60.0 * trunk + 5, bottoms[i], trunk});
    }
    const Tracks tracks = assignTracks(all, kApart);
    for (std::size_t i = 5; i < all.size(); ++i) {
      if (all[i].trunk < 0) continue;
      EXPECT_EQ(tracks.track[i], tracks.track[i - 5]);
    }
    EXPECT_EQ(onEachOther(all, draw(all, tracks)), 0);
  }
}

/// The fewest crossings that any order of the tracks gives.
std::int64_t leastCrossings(const std::vector<Wire>& wires, int nets) {
  std::vector<int> order;
  for (int i = 0; i < nets; ++i) order.push_back(i);
  std::int64_t least = std::numeric_limits<std::int64_t>::max();
  do {
    Tracks tracks;
    tracks.count = nets;
    for (const Wire& wire : wires) {
      const auto net =
          static_cast<std::size_t>(wire.trunk >= 0 ? wire.trunk : &wire - wires.data());
      tracks.track.push_back(order[net]);
      tracks.detour.push_back(wire.bottom);
      tracks.lowerTrack.push_back(-1);
    }
    least = std::min(least, lineCrossings(draw(wires, tracks)));
  } while (std::next_permutation(order.begin(), order.end()));
  return least;
}

TEST(Channel, TrunksAreCrossedAboutAsLittleAsTheyCanBe) {
  Numbers numbers(6);
  std::int64_t ours = 0;
  std::int64_t least = 0;
  for (int round = 0; round < 100; ++round) {
    // Two trunks of four wires each, and four wires by themselves, which have numbers above.
    const auto tops = shuffled(12, 10, 0, numbers);
    const auto bottoms = shuffled(12, 10, 5, numbers);
    std::vector<Wire> all;
    for (int i = 0; i < 12; ++i) {
      const int trunk = i < 2 || i > 5 ? i % 2 : -1;
      all.push_back({trunk < 0 ? tops[i] : tops[trunk], bottoms[i], trunk});
    }
    ours += lineCrossings(draw(all, assignTracks(all, kApart)));
    least += leastCrossings(all, 6);
  }
  EXPECT_LE(static_cast<double>(ours), 1.01 * static_cast<double>(least));
}

TEST(Channel, StraightWiresAndApartOnesNeedNoRoom) {
  const Tracks straight = assignTracks({{1, 1}, {2, 2}, {3, 3, 0}}, kApart);
  EXPECT_EQ(straight.count, 0);
  std::vector<Wire> apart;
  for (int i = 0; i < 50; ++i) apart.push_back({100.0 * i, 100.0 * i + 50});
  EXPECT_EQ(assignTracks(apart, kApart).count, 1);
}

TEST(LineCrossings, CountsAsOneByOne) {
  Numbers numbers(6);
  std::vector<Polyline> lines;
  for (int i = 0; i < 60; ++i) {
    Polyline line{{1.0 * numbers.below(40), 1.0 * numbers.below(40)}};
    for (int k = 0; k < 4; ++k) {
      Point next = line.back();
      (k % 2 == 0 ? next.x : next.y) = numbers.below(40);
      if (next != line.back()) line.push_back(next);
    }
    lines.push_back(line);
  }
  std::int64_t expected = 0;
  const auto inside = [](double v, double a, double b) {
    return v > std::min(a, b) && v < std::max(a, b);
  };
  const auto eachPiece = [&](auto&& take) {
    for (const Polyline& line : lines) {
      for (std::size_t i = 1; i < line.size(); ++i) take(line[i - 1], line[i]);
    }
  };
  eachPiece([&](Point a, Point b) {
    eachPiece([&](Point c, Point d) {
      expected += a.y == b.y && c.x == d.x && inside(c.x, a.x, b.x) && inside(a.y, c.y, d.y);
    });
  });
  EXPECT_EQ(lineCrossings(lines), expected);
  EXPECT_GT(expected, 0);
}

}  // namespace
}  // namespace brisel::layout
