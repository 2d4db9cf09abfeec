#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/Object.h"

namespace brisel::automation {

/// The objects that a client may name by a number. An object keeps its number until the client
/// releases it; numbers are never given out twice. While an object has a handle, every event of
/// its member table is heard.
class Handles {
 public:
  using Arguments = std::vector<platform::Value>;
  using Heard = std::function<void(std::int64_t handle, const std::string& event,
                                   const Arguments& arguments)>;

  /// `heard` is called inside the call that raised the event; it may give out further handles.
  explicit Handles(Heard heard) : m_heard(std::move(heard)) {}
  Handles(const Handles&) = delete;
  Handles& operator=(const Handles&) = delete;

  /// The object's handle; a new one when it has none.
  std::int64_t of(const platform::Ref<platform::Object>& object);
  /// The same for an object that the client asked to be created: it is torn down when it is
  /// released.
  std::int64_t ofCreated(const platform::Ref<platform::Object>& object);
  /// Nothing for a number that is no handle (any more).
  [[nodiscard]] platform::Ref<platform::Object> object(std::int64_t handle) const;
  /// Ends the handle; a component that was created is torn down. False when there is none. What
  /// the tear-down throws comes through, and the handle is gone all the same.
  bool release(std::int64_t handle);
  /// Ends all of them, the last first; what a tear-down throws is dropped.
  void releaseAll();

 private:
  struct Entry {
    platform::Ref<platform::Object> object;
    bool created = false;
    std::vector<platform::Connection> connections;
  };

  void listen(std::int64_t handle, Entry& entry);

  Heard m_heard;
  std::int64_t m_last = 0;
  std::unordered_map<std::int64_t, Entry> m_entries;
  std::unordered_map<const platform::Object*, std::int64_t> m_numbers;
};

}  // namespace brisel::automation
