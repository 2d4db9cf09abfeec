#include <QImage>
#include <QPainter>
#include <QStaticText>
#include <algorithm>
#include <cmath>
#include <vector>

#include <benchmark/benchmark.h>

#include "qt/BenchApplication.h"
#include "qt/DiagramPicture.h"
#include "support/GeneratedDiagram.h"

/// What a view paints, against the same shapes painted without a diagram behind them: boxes whose
/// texts were prepared, blocks and lines whose places are known.
namespace brisel::bench {
namespace {

using platform::Point;
using platform::Rect;

constexpr QSize kScreen{1920, 1080};
constexpr int kClasses = 10000;

/// A window of the screen's size onto the diagram.
struct Screen {
  Screen() : picture((application(), *diagram.control)), window(kScreen, QImage::Format_RGB32) {
    view().resize({static_cast<double>(kScreen.width()), static_cast<double>(kScreen.height())});
    picture.resize(kScreen, 1);
  }
  canvas::Viewport& view() { return diagram.control->viewport(); }
  void show(double zoom, Point scroll) {
    view().zoomTo(zoom);
    view().scrollTo(scroll);
    picture.update();
  }
  void showAll() {
    view().fit(diagram.control->scene().extent());
    picture.update();
  }
  void present() {
    QPainter painter(&window);
    painter.drawImage(QPointF(), picture.update());
  }
  void paintAll() {
    picture.damage({view().visible()});
    present();
  }

  GeneratedDiagram diagram{kClasses};
  qt::DiagramPicture picture;
  QImage window;
};

Screen& screen() {
  static Screen only;
  return only;
}

constexpr Point kMiddle{200000, 180000};

QFont fontOf(int pixels, bool bold) {
  QFont font(QStringLiteral("Courier New"));
  font.setPixelSize(pixels);
  font.setBold(bold);
  font.setHintingPreference(QFont::PreferVerticalHinting);
  font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
  return font;
}

/// The boxes that a frame shows, with every place and text worked out beforehand.
struct PreparedFrame {
  struct Text {
    QPoint at;
    QStaticText text;
  };
  struct Box {
    QRect rect;
    std::vector<QRect> separators;
    Text title;
    std::vector<Text> rows;
  };

  PreparedFrame() {
    std::vector<const canvas::Node*> nodes;
    std::vector<const canvas::Link*> links;
    Screen& s = screen();
    s.show(100, kMiddle);
    s.diagram.control->scene().itemsIn(s.view().visible(), nodes, links);
    for (const canvas::Node* node : nodes) boxes.push_back(prepare(*node));
  }

  void paint(QPainter& painter) const {
    for (const Box& box : boxes) {
      painter.fillRect(box.rect, QColor(0xF1F3F6));
      painter.setPen(QColor(0x3A4350));
      painter.drawRect(box.rect);
      for (const QRect& line : box.separators) painter.fillRect(line, QColor(0x8C95A1));
      painter.setFont(m_titleFont);
      painter.drawStaticText(box.title.at, box.title.text);
      painter.setFont(m_rowFont);
      for (const Text& row : box.rows) painter.drawStaticText(row.at, row.text);
    }
  }

  std::vector<Box> boxes;

 private:
  static QPoint at(double x, double y) {
    const Point pixel = screen().view().toPixels(Point{x, y});
    return {static_cast<int>(std::floor(pixel.x)), static_cast<int>(std::floor(pixel.y))};
  }
  static Text text(QPoint place, const std::string& string, const QFont& font) {
    Text prepared{place, QStaticText(QString::fromStdString(string))};
    prepared.text.setTextFormat(Qt::PlainText);
    prepared.text.setPerformanceHint(QStaticText::AggressiveCaching);
    prepared.text.prepare(QTransform(), font);
    return prepared;
  }
  Box prepare(const canvas::Node& node) const {
    const Rect bounds = node.bounds();
    Box box;
    box.rect = QRect(at(bounds.left, bounds.top), at(bounds.right(), bounds.bottom()));
    box.title = text(at(bounds.left + 600, bounds.top + 60), node.itemText(), m_titleFont);
    for (std::size_t i = 0; i < node.sectionCount(); ++i) {
      const Rect area = node.sectionArea(i);
      box.separators.push_back({at(area.left, area.top), QSize(box.rect.width(), 1)});
      double top = node.firstRow(i);
      for (const canvas::Row& row : node.section(i).rows()) {
        box.rows.push_back(text(at(area.left + canvas::kPadding, top), row.text, m_rowFont));
        top += node.rowHeight();
      }
    }
    return box;
  }

  QFont m_titleFont = fontOf(20, true);
  QFont m_rowFont = fontOf(13, false);
};

void bareFrame(benchmark::State& state) {
  const PreparedFrame frame;
  QImage image(kScreen, QImage::Format_RGB32);
  for (auto _ : state) {
    QPainter painter(&image);
    painter.fillRect(image.rect(), Qt::white);
    frame.paint(painter);
    painter.end();
    QPainter window(&screen().window);
    window.drawImage(QPointF(), image);
  }
  state.counters["boxes"] = static_cast<double>(frame.boxes.size());
}
BENCHMARK(bareFrame)->Unit(benchmark::kMillisecond);

void frame(benchmark::State& state) {
  screen().show(100, kMiddle);
  for (auto _ : state) screen().paintAll();
}
BENCHMARK(frame)->Unit(benchmark::kMillisecond);

void scrollBy40(benchmark::State& state) {
  screen().show(100, kMiddle);
  double step = 40;
  double way = 0;
  for (auto _ : state) {
    screen().view().scrollBy(state.range(0) == 0 ? Point{0, step} : Point{step, 0});
    screen().present();
    way += std::abs(step);
    if (std::fmod(way, 40000) == 0) step = -step;
  }
}
BENCHMARK(scrollBy40)->ArgName("sideways")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// A class in the middle is dragged about: all that a view does from the pointer to the picture.
void dragOneClass(benchmark::State& state) {
  Screen& s = screen();
  s.show(100, kMiddle);
  canvas::DiagramControl& control = *s.diagram.control;
  std::size_t told = 0;
  const auto damaged = control.scene().Damaged.connect([&](const auto& areas) {
    s.picture.damage(areas);
    told += areas.size();
  });
  std::vector<const canvas::Node*> nodes;
  std::vector<const canvas::Link*> links;
  const Point middle = s.view().visible().center();
  control.scene().itemsIn(Rect{middle.x, middle.y, 1, 1}.grownBy(2000), nodes, links);
  const Point grip = nodes.front()->bounds().topLeft() + Point{300, 200};
  control.PointerPress(grip.x, grip.y, "left", "");
  double step = 0;
  for (auto _ : state) {
    step = step > 3000 ? 0 : step + 75;
    control.PointerMove(grip.x + step, grip.y + step / 2);
    benchmark::DoNotOptimize(control.scene().extent());
    s.present();
  }
  if (told == 0) state.SkipWithError("nothing moved");
  control.KeyPress("Escape", "");
}
BENCHMARK(dragOneClass)->Unit(benchmark::kMillisecond);

void bareWhole(benchmark::State& state) {
  screen().showAll();
  const canvas::Scene& scene = screen().diagram.control->scene();
  const canvas::Viewport& view = screen().view();
  std::vector<QRect> blocks;
  for (const canvas::Node& node : scene.nodes()) {
    const Rect r = view.toPixels(node.bounds());
    blocks.push_back(QRectF(r.left, r.top, r.width, r.height).toRect());
  }
  std::vector<QLine> lines;
  for (const canvas::Link& link : scene.links()) {
    for (std::size_t i = 1; i < link.points().size(); ++i) {
      const Point a = view.toPixels(link.points()[i - 1]);
      const Point b = view.toPixels(link.points()[i]);
      lines.push_back(QLineF(a.x, a.y, b.x, b.y).toLine());
    }
  }
  QImage image(kScreen, QImage::Format_RGB32);
  for (auto _ : state) {
    QPainter painter(&image);
    painter.fillRect(image.rect(), Qt::white);
    for (const QRect& block : blocks) painter.fillRect(block, QColor(0xC3CAD4));
    painter.setPen(QColor(0x8791A0));
    painter.drawLines(lines.data(), static_cast<int>(lines.size()));
    painter.end();
    QPainter window(&screen().window);
    window.drawImage(QPointF(), image);
  }
}
BENCHMARK(bareWhole)->Unit(benchmark::kMillisecond);

void whole(benchmark::State& state) {
  screen().showAll();
  for (auto _ : state) screen().paintAll();
}
BENCHMARK(whole)->Unit(benchmark::kMillisecond);

void keptPicture(benchmark::State& state) {
  screen().showAll();
  for (auto _ : state) screen().present();
}
BENCHMARK(keptPicture)->Unit(benchmark::kMillisecond);

void zoomedTo(benchmark::State& state) {
  screen().show(static_cast<double>(state.range(0)), kMiddle);
  for (auto _ : state) screen().paintAll();
}
BENCHMARK(zoomedTo)
    ->ArgName("percent")
    ->Arg(3)
    ->Arg(5)
    ->Arg(8)
    ->Arg(11)
    ->Arg(13)
    ->Arg(16)
    ->Arg(20)
    ->Arg(24)
    ->Arg(26)
    ->Arg(30)
    ->Arg(36)
    ->Arg(38)
    ->Arg(45)
    ->Arg(60)
    ->Arg(80)
    ->Arg(150)
    ->Arg(400)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brisel::bench
