// Messages to the user-interface thread, from any thread, in order.
#pragma once

#include <cstdint>

namespace platform {

// Arrives as Events::posted, never before this call has returned, also while a box or dialog
// stands. What the sender wrote before the call is visible to the handler.
void PostToMain(std::uint32_t message, std::uint64_t first, std::uint64_t second);

}  // namespace platform
