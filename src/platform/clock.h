// Ticks and sleeping. The headless platform's clock is virtual and moves only when told.
#pragma once

#include <cstdint>

namespace platform {

// Milliseconds since some fixed moment; never goes back.
std::uint64_t TickMilliseconds();
void SleepMilliseconds(int milliseconds);

}  // namespace platform
