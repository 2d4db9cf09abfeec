#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "tools/Seriation.h"

namespace brisel::tools {
namespace {

using Numbers = std::vector<std::uint32_t>;

/// Communities of `size`, dense within and with a thread to the next one, under shuffled numbers.
struct Planted {
  Planted(std::uint32_t communities, std::uint32_t size, std::uint32_t seed)
      : count(communities * size), community(count) {
    Numbers number(count);
    std::iota(number.begin(), number.end(), 0U);
    std::mt19937 random(seed);
    for (std::size_t i = count - 1; i > 0; --i) std::swap(number[i], number[random() % (i + 1)]);
    for (std::uint32_t i = 0; i < count; ++i) community[number[i]] = i / size;
    for (std::uint32_t one = 0; one < communities; ++one) {
      const std::uint32_t first = one * size;
      for (std::uint32_t i = 0; i < size; ++i) {
        for (const std::uint32_t step : {1U, 2U, 3U}) {
          pairs.push_back({number[first + i], number[first + (i + step) % size]});
        }
      }
      if (one + 1 < communities) pairs.push_back({number[first], number[first + size]});
    }
  }

  std::size_t count;
  Numbers community;  ///< by number
  std::vector<Affinity> pairs;
};

std::uint32_t spread(const Seriation& found, const std::vector<Affinity>& pairs) {
  Numbers place(found.order.size());
  for (std::uint32_t i = 0; i < place.size(); ++i) place[found.order[i]] = i;
  std::uint32_t widest = 0;
  for (const Affinity& pair : pairs) {
    const auto [low, high] = std::minmax(place[pair.a], place[pair.b]);
    widest = std::max(widest, high - low);
  }
  return widest;
}

TEST(Seriation, putsWhatBelongsTogetherSideBySide) {
  for (const std::uint32_t seed : {1U, 2U, 3U}) {
    const Planted planted(12, 10, seed);
    const Seriation found = seriate(planted.count, planted.pairs);
    ASSERT_EQ(std::set(found.order.begin(), found.order.end()).size(), planted.count);
    std::set<std::uint32_t> seen;
    for (std::size_t i = 0; i < planted.count; ++i) {
      const std::uint32_t number = found.order[i];
      const bool isNew =
          i == 0 || planted.community[number] != planted.community[found.order[i - 1]];
      if (isNew) {
        EXPECT_TRUE(seen.insert(planted.community[number]).second) << "torn apart";
      }
      if (i == 0) continue;
      const std::uint32_t before = found.order[i - 1];
      EXPECT_EQ(found.group[number] == found.group[before], !isNew);
      EXPECT_GE(found.group[number], found.group[before]);
    }
    // Neighbouring communities stand side by side, too.
    EXPECT_LT(spread(found, planted.pairs), 20U);
  }
}

TEST(Seriation, isTheSameForTheSameInput) {
  const Planted planted(9, 14, 5);
  std::vector<Affinity> turned(planted.pairs.rbegin(), planted.pairs.rend());
  for (Affinity& pair : turned) std::swap(pair.a, pair.b);
  const Seriation one = seriate(planted.count, planted.pairs);
  const Seriation other = seriate(planted.count, turned);
  EXPECT_EQ(one.order, other.order);
  EXPECT_EQ(one.group, other.group);
}

TEST(Seriation, takesWhateverThereIs) {
  EXPECT_TRUE(seriate(0, {}).order.empty());
  // Without relatives, and with oneself only: at the end, in the order of numbers.
  const std::vector<Affinity> few = {{2, 2}, {4, 1}, {4, 1}, {1, 4}};
  const Seriation found = seriate(5, few);
  EXPECT_EQ(Numbers(found.order.begin() + 2, found.order.end()), (Numbers{0, 2, 3}));
  EXPECT_EQ(found.group[1], found.group[4]);
  EXPECT_EQ(std::set(found.group.begin(), found.group.end()).size(), 4U);

  // A chain comes out as one: no step is wide.
  std::vector<Affinity> chain;
  for (std::uint32_t i = 0; i + 1 < 64; ++i) chain.push_back({i * 37 % 64, (i + 1) * 37 % 64});
  EXPECT_LE(spread(seriate(64, chain), chain), 8U);

  // One that everything hangs on.
  std::vector<Affinity> star;
  for (std::uint32_t i = 1; i < 3000; ++i) star.push_back({0, i});
  EXPECT_EQ(seriate(3000, star).order.size(), 3000U);
}

}  // namespace
}  // namespace brisel::tools
