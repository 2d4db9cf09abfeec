#include <string>

#include <gtest/gtest.h>

#include "canvas/SvgExport.h"
#include "canvas/SvgPainter.h"
#include "support/DiagramBuilder.h"

namespace brisel::canvas {
namespace {

using namespace std::string_literals;

TEST(SvgPainter, writesOnlyWhatXmlAllows) {
  const struct {
    std::string text;
    std::string written;
  } cases[] = {
      {"<<COM::Enum>> \"a\" & b", "&lt;&lt;COM::Enum&gt;&gt; &quot;a&quot; &amp; b"},
      {"a\0b\x01\x1F\x7F\nc\td"s, "abc d"},
      {"Größe 類 😀", "Größe 類 😀"},
      {"\xC3", "\xEF\xBF\xBD"},                                                  // cut off
      {"\xC0\xAF", "\xEF\xBF\xBD\xEF\xBF\xBD"},                                  // overlong
      {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},                  // half of a pair
      {"\xEF\xBF\xBF!", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD!"},                // no character
      {"\xF4\x90\x80\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},  // beyond Unicode
      {"\x80z", "\xEF\xBF\xBDz"},
  };
  for (const auto& [text, written] : cases) {
    std::string xml;
    appendXmlText(xml, text);
    EXPECT_EQ(xml, written);
  }
}

TEST(SvgPainter, givesThePageWholePixels) {
  SvgPainter svg({-20, 7, 100, 15});
  EXPECT_EQ(svg.page(), (platform::Rect{-30, 0, 120, 30}));
  svg.drawFrame({-30, 0, 30, 30}, {});
  svg.fillRect({0, 1, 10, 100}, 0x80FF0000);
  const std::string text = svg.finish();
  EXPECT_NE(text.find(R"(width="8" height="2" viewBox="-2 0 8 2")"), std::string::npos);
  EXPECT_NE(text.find(R"(M-1.5,0.5H-0.5V1.5H-1.5Z)"), std::string::npos);
  EXPECT_NE(
      text.find(R"(x="0" y="0.07" width="0.67" height="6.67" fill="#ff0000" fill-opacity="0.502")"),
      std::string::npos);
}

std::size_t count(const std::string& text, std::string_view part) {
  std::size_t times = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++times;
  }
  return times;
}

TEST(SvgExport, takesTheWholeDiagramOrWhatIsSelected) {
  test::DiagramBuilder diagram;
  diagram.box("a", "Alpha & Omega", 0, 0, {"+x:int"});
  diagram.box("b", "Beta", 9000, 0, {"+y:int"});
  diagram.line("l", "a", "b", "knows");
  const std::string whole = toSvg(diagram.control->scene());
  EXPECT_EQ(count(whole, "<text"), 5U);
  EXPECT_EQ(count(whole, "Alpha &amp; Omega"), 1U);
  diagram.control->scene().node("b")->selected(true);
  EXPECT_EQ(toSvg(diagram.control->scene()), whole) << "a selection must not show";
  const std::string selected = toSvg(diagram.control->scene(), diagram.control->selection());
  EXPECT_EQ(count(selected, "<text"), 2U);
  EXPECT_EQ(count(selected, "Alpha"), 0U);
  diagram.control->unselectAll();
  EXPECT_EQ(toSvg(diagram.control->scene(), diagram.control->selection()), whole);
}

}  // namespace
}  // namespace brisel::canvas
