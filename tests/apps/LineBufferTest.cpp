#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "apps/Fixture.h"
#include "automation/LineBuffer.h"
#include "automation/Serve.h"

namespace brisel::automation {
namespace {

/// The lines of the text when it comes in pieces of that many bytes; "!" stands for a refused one.
std::vector<std::string> linesOf(const std::string& text, std::size_t piece, std::size_t longest) {
  LineBuffer buffer(longest);
  std::vector<std::string> lines;
  const auto add = [&](const LineBuffer::Line& line) {
    lines.push_back(line.tooLong ? "!" : line.text);
  };
  for (std::size_t at = 0; at < text.size(); at += piece) {
    buffer.append(std::string_view(text).substr(at, piece));
    while (const auto line = buffer.next()) add(*line);
  }
  if (const auto rest = buffer.rest()) add(*rest);
  return lines;
}

TEST(LineBuffer, cutsTheSameLinesHoweverTheyCome) {
  struct Case {
    std::string text;
    std::vector<std::string> lines;
  };
  const std::vector<Case> cases = {
      {"", {}},
      {"\n", {""}},
      {"a\nbc\n", {"a", "bc"}},
      {"a\nbc", {"a", "bc"}},
      {"123456\n1234567\n12\n", {"123456", "!", "12"}},
      {"1234567890123456789\nx\n12345678", {"!", "x", "!"}},
      {std::string("a\0b\n", 4), {std::string("a\0b", 3)}},
  };
  for (const Case& c : cases) {
    for (const std::size_t piece : {1, 2, 3, 5, 100}) {
      EXPECT_EQ(linesOf(c.text, piece, 6), c.lines) << c.text << " in pieces of " << piece;
    }
  }
}

using Streams = Serving;

TEST_F(Streams, servesUntilTheInputEnds) {
  std::istringstream input(
      R"({"jsonrpc":"2.0","id":1,"method":"create","params":{"progId":"Test.Lamp"}})"
      "\r\nrubbish\n"
      R"({"jsonrpc":"2.0","id":2,"method":"get","params":{"object":1,"member":"Color"}})");
  serve(input, *server);
  ASSERT_EQ(sent.size(), 3U);
  EXPECT_EQ(sent[0], R"({"jsonrpc":"2.0","id":1,"result":{"ref":1}})");
  EXPECT_NE(sent[1].find("-32700"), std::string::npos);
  EXPECT_EQ(sent[2], R"({"jsonrpc":"2.0","id":2,"result":"white"})");
}

}  // namespace
}  // namespace brisel::automation
