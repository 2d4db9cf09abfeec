#include "canvas/LongTask.h"

#include <utility>

#include "platform/ComponentRegistry.h"
#include "platform/Shell.h"

namespace brisel::canvas {

LongTask::LongTask(platform::ComponentRegistry& registry, std::string name,
                   Clock::duration patience)
    : m_registry(registry), m_name(std::move(name)), m_next(Clock::now() + patience) {}

LongTask::~LongTask() {
  if (m_shown) m_registry.shell().hideProgress();
}

bool LongTask::goOn(double share) {
  constexpr std::chrono::milliseconds kPause{40};
  if (Clock::now() < m_next || !m_registry.hasShell()) return true;
  m_shown = true;
  const bool goesOn = m_registry.shell().showProgress(m_name, share);
  m_next = Clock::now() + kPause;
  return goesOn;
}

}  // namespace brisel::canvas
