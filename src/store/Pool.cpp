#include "store/Pool.h"

namespace brisel::store {

namespace {
constexpr std::size_t kSlabSize = 64 * 1024;
}

void Pool::refill() {
  const std::size_t count = kSlabSize / m_blockSize;
  std::byte* slab = m_slabs.emplace_back(new std::byte[count * m_blockSize]).get();
  // Backwards, so that blocks are handed out in the order of their addresses.
  for (std::size_t i = count; i-- > 0;) give(slab + i * m_blockSize);
}

}  // namespace brisel::store
