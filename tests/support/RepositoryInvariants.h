#pragma once

#include "platform/Repository.h"

namespace brisel::test {

/// Fails the running test where the repository contradicts itself: every link is in its type and
/// at both of its ends, all orders are those of making, look-ups agree with a search one by one.
void checkInvariants(const platform::MetaRepository& repository);

}  // namespace brisel::test
