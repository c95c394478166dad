// A line rate for pseudo-terminals, which have none of their own.
#pragma once

#include <atomic>

namespace platform {

// Read at each open. On: a pseudo-terminal is given the bytes at the rate of the settings, as a
// real line is. It would take about 20 kB at once, so that a control at its far end could stop the
// line only behind all of them. Tests that need no rate switch it off.
extern std::atomic<bool> pacePseudoTerminals;

}  // namespace platform
