// Injected faults: tests make the N-th file call of a kind fail. Without a hook nothing fails.
#pragma once

#include <cstdint>
#include <string_view>

namespace platform {

// Kinds: "new", "write", "short" (a write takes one byte less than asked), "size", "flush",
// "shut", "access", "rename", "erase", "flushfolder", "read", "folder", "look" (what stands under a
// name cannot be told).
// The hook answers true when this call must fail. Null in production.
extern bool (*fileFault)(std::string_view kind);

inline bool FaultDue(std::string_view kind) { return fileFault && fileFault(kind); }

}  // namespace platform
