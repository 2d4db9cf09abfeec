#pragma once

#include <cstddef>
#include <vector>

#include "platform/Geometry.h"

namespace brisel::canvas {

/// The rectangle around many rectangles, kept while they come, change and go: a tree over them in
/// an array, in which each node is around its two children. A change costs the height of the tree.
class ExtentTree {
 public:
  static constexpr std::size_t kNoSlot = static_cast<std::size_t>(-1);

  /// `slot` is where the rectangle stands, kept by who owns it; kNoSlot enters a new one.
  void put(std::size_t& slot, const platform::Rect& extent);
  /// Does nothing for kNoSlot, which the slot is afterwards.
  void remove(std::size_t& slot);
  /// All slots that were given out are void.
  void clear() { *this = {}; }
  /// Empty without any.
  [[nodiscard]] const platform::Rect& all() const { return m_nodes[1]; }

 private:
  void set(std::size_t slot, const platform::Rect& extent);
  void grow();
  [[nodiscard]] std::size_t leaves() const { return m_nodes.size() / 2; }
  [[nodiscard]] platform::Rect around(std::size_t parent) const {
    return m_nodes[2 * parent].united(m_nodes[2 * parent + 1]);
  }

  /// The children of node i are 2 i and 2 i + 1, the root is 1, the second half are the leaves.
  std::vector<platform::Rect> m_nodes{2};
  std::size_t m_used = 0;
  std::vector<std::size_t> m_free;  ///< slots below m_used
};

}  // namespace brisel::canvas
