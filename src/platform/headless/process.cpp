// The process: nothing stands before the first window here, and a worker ends with it.

#include "platform/process.h"

#include "platform/thread.h"

namespace platform {

void BeginProcess(int, char**) {}

void EndProcess() { EndWorkers(); }

}  // namespace platform
