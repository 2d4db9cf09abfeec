#include <array>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "store/PackedText.h"
#include "store/UUIDGenerator.h"

namespace brisel::store {
namespace {

constexpr std::string_view kUuid = "01234567-89ab-4def-8123-456789abcdef";

TEST(PackedText, comesOutAsItWentIn) {
  std::vector<std::string> texts = {std::string(kUuid), std::string(36, '0'), std::string(36, '-')};
  for (std::size_t length = 0; length < 40; ++length) texts.push_back(std::string(length, 'x'));
  texts.emplace_back("with\0 a zero", 12);
  texts.emplace_back(std::string("tail\0", 6));
  // Almost an identifier: each character of it replaced by those beside the digits and letters.
  for (std::size_t at = 0; at < kUuid.size(); ++at) {
    for (const char c : {'/', ':', '`', 'g', 'o', 'A', 'F', '-', '\0', '\xB1', 'p', '0', 'f'}) {
      texts.emplace_back(kUuid);
      texts.back()[at] = c;
    }
  }
  for (const std::string& text : texts) {
    const TextKey key(text);
    const PackedText packed(text);
    EXPECT_EQ(packed.str(), text);
    EXPECT_EQ(packed.size(), text.size());
    EXPECT_EQ(packed.hash(), key.hash()) << text;
    EXPECT_EQ(PackedText(key).str(), text);
    for (const std::string& other : texts) {
      EXPECT_EQ(packed.equals(TextKey(other)), text == other) << text << " and " << other;
      EXPECT_EQ(packed.equals(other), text == other) << text << " and " << other;
    }
  }
}

TEST(UUIDGenerator, makesIdentifiersOfVersionFourThatNeverMeet) {
  const auto generator = platform::make<UUIDGenerator>();
  const auto other = platform::make<UUIDGenerator>();
  std::set<std::string> seen;
  for (int i = 0; i < 10000; ++i) {
    const std::string id = (i % 2 == 0 ? generator : other)->GetUUID();
    EXPECT_TRUE(seen.insert(id).second) << id;
    std::array<char, 16> bytes{};
    ASSERT_TRUE(packUuid(id, bytes.data())) << id;
    EXPECT_EQ(id[14], '4') << id;
    EXPECT_NE(std::string("89ab").find(id[19]), std::string::npos) << id;
  }
  generator->seed(5);
  const std::string first = generator->GetUUID();
  generator->seed(5);
  EXPECT_EQ(generator->GetUUID(), first);
}

}  // namespace
}  // namespace brisel::store
