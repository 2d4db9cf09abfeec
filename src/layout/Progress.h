#pragma once

#include <functional>

#include "layout/Layout.h"

namespace brisel::layout {

/// Told by a part of a layout of the share from 0 to 1 of it that is done; may throw Cancelled, and
/// may be empty.
using Step = std::function<void(double share)>;

/// Counts what is done of a layout and asks whether it is to go on.
class Progress {
 public:
  /// "all" is the work of the whole in any unit. The question outlives the progress.
  Progress(const GoOn& goOn, double all) : m_goOn(goOn), m_all(all) {}

  /// A part of so much work is done.
  void done(double work) { m_done += work; }
  /// Throws Cancelled when it is not to go on; "work" is done besides of the part under way.
  void step(double work = 0) const {
    if (m_goOn && !m_goOn(m_all > 0 ? (m_done + work) / m_all : 0)) throw Cancelled();
  }

 private:
  const GoOn& m_goOn;
  double m_all;
  double m_done = 0;
};

}  // namespace brisel::layout
