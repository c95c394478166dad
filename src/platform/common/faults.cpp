// The hook behind injected faults; null in production.

#include "platform/common/faults.h"

namespace platform {

bool (*fileFault)(std::string_view kind) = nullptr;

}  // namespace platform
