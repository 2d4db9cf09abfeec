#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace brisel::store {

/// Hands out blocks of one size without the heap's overhead a block; blocks that come back are
/// used again. For the thread of the user interface alone. Never gives memory back to the system.
class Pool {
 public:
  explicit Pool(std::size_t blockSize) : m_blockSize(blockSize) {}

  [[nodiscard]] void* take() {
    if (!m_free) refill();
    Free* block = m_free;
    m_free = block->next;
    return block;
  }
  void give(void* block) noexcept { m_free = ::new (block) Free{m_free}; }

 private:
  struct Free {
    Free* next;
  };
  void refill();

  std::size_t m_blockSize;
  Free* m_free = nullptr;
  std::vector<std::unique_ptr<std::byte[]>> m_slabs;
};

/// Base of a final class whose objects come from a pool of their own. Under the address sanitizer
/// they come from the heap, so that a use after the end is seen.
template <class T>
class Pooled {
 public:
#ifndef __SANITIZE_ADDRESS__
  static void* operator new(std::size_t) { return pool().take(); }
  static void operator delete(void* block) noexcept { pool().give(block); }
#endif

 private:
  friend T;
  Pooled() = default;
  // Never destroyed: objects may outlive every static.
  static Pool& pool() {
    static Pool& shared = *new Pool(sizeof(T));
    return shared;
  }
};

}  // namespace brisel::store
