#pragma once

#include <chrono>
#include <string>

namespace brisel::platform {
class ComponentRegistry;
}

namespace brisel::canvas {

/// Shows through the shell how far a task is, once it takes a while, and takes that away at its
/// end. Lives on the stack of the task.
class LongTask {
 public:
  using Clock = std::chrono::steady_clock;

  /// Nothing is shown before `patience` has passed.
  LongTask(platform::ComponentRegistry& registry, std::string name, Clock::duration patience);
  ~LongTask();
  LongTask(const LongTask&) = delete;
  LongTask& operator=(const LongTask&) = delete;

  /// False when the person cancelled the task; `share` goes from 0 to 1.
  bool goOn(double share);

 private:
  platform::ComponentRegistry& m_registry;
  std::string m_name;
  Clock::time_point m_next;  ///< when the shell is told again
  bool m_shown = false;
};

}  // namespace brisel::canvas
