// A line rate for pseudo-terminals, which have none: for tests of what a real line is given.
#pragma once

#include <atomic>

namespace platform {

// Read at each open. Off in production: a pseudo-terminal takes bytes as fast as they come.
extern std::atomic<bool> pacePseudoTerminals;

}  // namespace platform
