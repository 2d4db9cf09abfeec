#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "canvas/Item.h"
#include "canvas/Labels.h"
#include "canvas/Section.h"
#include "platform/Diagram.h"

namespace brisel::canvas {

class Link;

/// A box: a title over sections of rows. What does not fit into the box is cut off at its border.
class Node : public platform::DiagramNode, public Item {
 public:
  /// How a box is drawn; the number that `createNode` takes.
  static constexpr std::int64_t kClassBox = 2;

  Node(std::string_view key, std::string_view text, const platform::Rect& bounds,
       std::int64_t style, std::size_t sections);
  ~Node() override;

  [[nodiscard]] std::string key() const override { return m_key; }
  [[nodiscard]] std::string text() const override { return m_text; }
  void text(std::string_view text) override;
  [[nodiscard]] bool selected() const override { return isSelected(); }
  void selected(bool selected) override;
  [[nodiscard]] platform::Ref<platform::Object> getItem(std::string_view name) const override;
  void setItem(std::string_view name, platform::Object* object) override;
  [[nodiscard]] platform::Rect bounds() const override;
  /// An Error (invalidCall) for what is not a number or lies out of all reach. Sets fit-to-text
  /// off when the size is another. A box that is large enough for its text grows and shrinks with
  /// the text, not below this size; one that is made too small for it stays as small as that.
  void bounds(const platform::Rect& bounds) override;
  [[nodiscard]] std::int64_t fillColor() const override { return m_fillColor; }
  void fillColor(std::int64_t color) override;
  [[nodiscard]] platform::Ref<platform::DiagramSection> Section(std::int64_t number) const override;
  void fitToText(bool fit) override;
  void beginUpdate() override { ++m_updates; }
  void endUpdate() override;

  // By name one by one: left, top, width, height (twips), style, marked.
  [[nodiscard]] double left() const { return bounds().left; }
  void left(double left);
  [[nodiscard]] double top() const { return bounds().top; }
  void top(double top);
  [[nodiscard]] double width() const { return bounds().width; }
  void width(double width);
  [[nodiscard]] double height() const { return bounds().height; }
  void height(double height);
  [[nodiscard]] std::int64_t style() const { return m_style; }
  [[nodiscard]] bool marked() const { return isMarked(); }

  [[nodiscard]] platform::DiagramItem& object() override { return *this; }
  [[nodiscard]] bool isLink() const override { return false; }
  [[nodiscard]] platform::Rect extent() const override;

  // What painting and hit testing read. Areas are in twips on the canvas and cut at the border.
  [[nodiscard]] std::vector<std::string_view> titleLines() const;
  [[nodiscard]] platform::Rect titleArea() const override;
  [[nodiscard]] std::size_t sectionCount() const { return m_sections.size(); }
  [[nodiscard]] const canvas::Section& section(std::size_t number) const {
    return *m_sections[number];
  }
  /// Empty when the section is hidden or lies wholly below the border. Its top edge is where the
  /// separating line is drawn.
  [[nodiscard]] platform::Rect sectionArea(std::size_t number) const;
  /// Where the rows of a visible section begin and how high each is: row i lies at
  /// `firstRow(n) + i * rowHeight()`, to be cut at the section's area.
  [[nodiscard]] double firstRow(std::size_t number) const;
  [[nodiscard]] double rowHeight() const;

  [[nodiscard]] bool fitsText() const { return m_fits; }
  /// The size that the title and the visible rows need.
  [[nodiscard]] platform::Size neededSize() const;
  /// Below this a person cannot shrink the box: its title stays readable.
  [[nodiscard]] platform::Size minimumSize() const;

  /// The links at the box; one to itself stands in it twice, once an end.
  struct Attached {
    Link* link;
    bool atSource;
  };
  [[nodiscard]] const std::vector<Attached>& attached() const { return m_attached; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  friend class canvas::Section;
  friend class Labels;
  friend class Link;
  friend class Scene;

  /// Title or rows are others: fits the box to them when it is to be fitted.
  void contentChanged();
  void place(const platform::Rect& bounds);
  [[nodiscard]] double titleHeight() const;
  [[nodiscard]] double sectionTop(std::size_t number) const;

  platform::Rect m_bounds;
  bool m_fits = false;
  int m_updates = 0;
  bool m_isStale = false;  ///< content changed during an update
  platform::Size m_ownSize;  ///< as it was set: below it the box does not go with its text
  bool m_grows = true;  ///< shows all of its text, and will
  int m_titleColumns = 0;
  int m_titleLineCount = 1;
  std::int64_t m_style;
  std::int64_t m_fillColor;
  std::vector<platform::Ref<canvas::Section>> m_sections;
  std::vector<Attached> m_attached;
  Labels::OfNode m_labels;
};

}  // namespace brisel::canvas
