#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

namespace brisel::platform {

class Object;
void retain(const Object* object) noexcept;
void release(const Object* object) noexcept;

/// A shared reference to an Object, counted inside the object (not thread-safe: one thread of the
/// user interface holds them all). A raw pointer may be turned into a Ref at any time.
template <class T>
class Ref {
 public:
  constexpr Ref() noexcept = default;
  constexpr Ref(std::nullptr_t) noexcept {}
  Ref(T* object) noexcept : m_object(object) { retainIfSet(); }
  Ref(const Ref& other) noexcept : m_object(other.m_object) { retainIfSet(); }
  Ref(Ref&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
  template <class U>
  requires std::is_convertible_v<U*, T*> Ref(const Ref<U>& other)
  noexcept : m_object(other.get()) { retainIfSet(); }
  ~Ref() {
    if (m_object) release(m_object);
  }
  Ref& operator=(Ref other) noexcept {
    std::swap(m_object, other.m_object);
    return *this;
  }

  [[nodiscard]] T* get() const noexcept { return m_object; }
  T& operator*() const noexcept { return *m_object; }
  T* operator->() const noexcept { return m_object; }
  explicit operator bool() const noexcept { return m_object != nullptr; }

  friend bool operator==(const Ref& a, const Ref& b) noexcept { return a.m_object == b.m_object; }
  friend bool operator==(const Ref& a, const T* b) noexcept { return a.m_object == b; }

 private:
  void retainIfSet() const noexcept {
    if (m_object) retain(m_object);
  }

  T* m_object = nullptr;
};

/// A new T, owned by the reference that comes back.
template <class T, class... Arguments>
[[nodiscard]] Ref<T> make(Arguments&&... arguments) {
  return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

/// The object as a T, or nothing when it is none.
template <class T, class U>
[[nodiscard]] Ref<T> as(const Ref<U>& object) noexcept {
  return Ref<T>(dynamic_cast<T*>(object.get()));
}

}  // namespace brisel::platform
