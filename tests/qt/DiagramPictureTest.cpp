#include <QApplication>
#include <QBuffer>
#include <algorithm>
#include <cstdlib>
#include <random>

#include <gtest/gtest.h>

#include "qt/DiagramPicture.h"
#include "qt/Render.h"
#include "support/DiagramBuilder.h"

namespace brisel::qt {
namespace {

using platform::Point;
using platform::Rect;
using test::DiagramBuilder;

constexpr QSize kSize{640, 480};

void build(DiagramBuilder& diagram) {
  for (int i = 0; i < 12; ++i) {
    const std::string key = "c" + std::to_string(i);
    diagram.box(key, i % 3 == 0 ? "<<entity>>\r\nOrderLine" : "Order", i % 4 * 4500.0,
                i / 4 * 4000.0, {"+number:int", "-größe:Länge"}, {"+total() : Money"});
  }
  for (int i = 1; i < 12; ++i) {
    const std::string from = "c" + std::to_string(i);
    canvas::Link& link = diagram.line("l" + from, from, "c" + std::to_string(i / 2), "label");
    link.endArrow(i % 2 == 0 ? 8 : 3);
    link.beginArrow(i % 2 == 0 ? 0 : 14);
    link.dashed(i % 5 == 0);
    link.endText("0..*");
  }
}

/// Pixels that differ by more than rounding does.
int differences(const QImage& a, const QImage& b) {
  int count = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y);
      const QRgb q = b.pixel(x, y);
      const int most = std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                 std::abs(qBlue(p) - qBlue(q))});
      if (most > 48) ++count;
    }
  }
  return count;
}

class DiagramPictureTest : public testing::TestWithParam<double> {
 protected:
  canvas::Viewport& view() { return diagram.control->viewport(); }
  void changeSomething(std::mt19937& random) {
    const auto pick = [&](int below) { return static_cast<int>(random() % unsigned(below)); };
    canvas::Node& node = *diagram.control->scene().node("c" + std::to_string(pick(12)));
    switch (pick(6)) {
      case 0:
        view().scrollBy({pick(200) - 100.0, pick(200) - 100.0});
        break;
      case 1:
        node.bounds(node.bounds().movedBy({pick(900) - 450.0, pick(900) - 450.0}));
        break;
      case 2:
        node.selected(!node.selected());
        break;
      case 3:
        view().zoomTo(40 + 30 * pick(4));
        break;
      case 4:
        node.Section(0)->visible(!node.Section(0)->visible());
        break;
      default:
        view().scrollBy({0, pick(3) * 40.0 - 40});
    }
  }

  DiagramBuilder diagram;
};

TEST_P(DiagramPictureTest, keptPictureIsTheOneThatWouldBePaintedAnew) {
  const double ratio = GetParam();
  build(diagram);
  view().resize({kSize.width() / ratio, kSize.height() / ratio});
  DiagramPicture kept(*diagram.control);
  kept.resize(kSize, ratio);
  const auto connection = diagram.control->scene().Damaged.connect(
      [&](const std::vector<Rect>& areas) { kept.damage(areas); });
  std::mt19937 random(11);
  for (int step = 0; step < 150; ++step) {
    changeSomething(random);
    if (step % 3 == 0) continue;
    DiagramPicture fresh(*diagram.control);
    fresh.resize(kSize, ratio);
    const QImage expected = fresh.update();
    const QImage& actual = kept.update();
    ASSERT_LE(differences(expected, actual), 4) << "after step " << step;
  }
}
INSTANTIATE_TEST_SUITE_P(Screens, DiagramPictureTest, testing::Values(1.0, 2.0, 1.5));

TEST_F(DiagramPictureTest, picturesAndPagesShowTheWholeDiagram) {
  build(diagram);
  const canvas::Scene& scene = diagram.control->scene();
  const QImage full = renderToImage(scene, 1, 1e8);
  EXPECT_NEAR(full.width(), scene.extent().width / 15 + 40, 2);
  const QImage small = renderToImage(scene, 4, 90000);
  EXPECT_LE(small.width() * small.height(), 92000);
  EXPECT_NEAR(double(small.width()) / small.height(), double(full.width()) / full.height(), 0.02);
  diagram.control->scene().node("c0")->selected(true);
  EXPECT_EQ(renderToImage(scene, 1, 1e8), full) << "a selection must not show";

  QBuffer page;
  page.open(QIODevice::WriteOnly);
  EXPECT_TRUE(renderToPdf(scene, page));
  EXPECT_TRUE(page.data().startsWith("%PDF"));
  EXPECT_TRUE(page.data().contains("/FontFile")) << "text stays text";
}

TEST_F(DiagramPictureTest, anEmptyDiagramAndAnEmptyWindowAreFine) {
  EXPECT_FALSE(renderToImage(diagram.control->scene(), 1, 1e6).isNull());
  DiagramPicture picture(*diagram.control);
  picture.resize({0, 0}, 1);
  EXPECT_TRUE(picture.update().isNull());
}

TEST_F(DiagramPictureTest, aColumnIsAsWideAsTheCanvasMeasures) {
  for (const bool bold : {false, true}) {
    FixedFont font(bold);
    const QRawFont& sized = font.at(40.0 / 3);
    const quint32 glyphs[] = {font.glyph('i'), font.glyph('W'), font.glyph(U'ß')};
    for (const quint32 glyph : glyphs) {
      ASSERT_NE(glyph, 0U);
      EXPECT_NEAR(sized.advancesForGlyphIndexes({glyph}).front().x(), 8, 0.05);
    }
  }
}

}  // namespace
}  // namespace brisel::qt
