#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace brisel::platform {

/// Keeps a listener connected; ends the connection when it goes. May outlive the event.
class Connection {
 public:
  Connection() = default;
  explicit Connection(std::shared_ptr<void> slot) : m_slot(std::move(slot)) {}
  Connection(Connection&&) noexcept = default;
  Connection& operator=(Connection&&) noexcept = default;

  void disconnect() { m_slot.reset(); }

 private:
  std::shared_ptr<void> m_slot;
};

/// A notification that listeners subscribe to. Listeners may connect, disconnect, raise again and
/// destroy the event's owner while it is being raised; one that connects meanwhile hears of the
/// next raise only.
template <class... Arguments>
class Event {
 public:
  using Listener = std::function<void(Arguments...)>;

  Event() = default;
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  [[nodiscard]] Connection connect(Listener listener) const {
    auto slot = std::make_shared<Listener>(std::move(listener));
    m_slots->entries.push_back(slot);
    return Connection(slot);
  }

  /// Calls every listener, in the order in which they connected.
  void operator()(Arguments... arguments) const {
    const std::shared_ptr<Slots> held = m_slots;  // outlives the owner, should it go
    const Raising raising(*held);
    const std::size_t count = held->entries.size();
    for (std::size_t i = 0; i < count; ++i) {
      if (const auto listener = held->entries[i].lock()) (*listener)(arguments...);
    }
  }

 private:
  struct Slots {
    std::vector<std::weak_ptr<Listener>> entries;
    int depth = 0;
  };

  /// Slots of listeners that are gone are dropped when no raise walks them any more.
  class Raising {
   public:
    explicit Raising(Slots& raised) : m_slots(raised) { ++m_slots.depth; }
    ~Raising() {
      if (--m_slots.depth > 0) return;
      std::erase_if(m_slots.entries, [](const auto& slot) { return slot.expired(); });
    }
    Raising(const Raising&) = delete;
    Raising& operator=(const Raising&) = delete;

   private:
    Slots& m_slots;
  };

  std::shared_ptr<Slots> m_slots = std::make_shared<Slots>();
};

}  // namespace brisel::platform
