// The process: nothing stands before the first window here, and a worker ends with it.

#include "platform/process.h"

#include <cstdio>
#include <cstdlib>

#include "platform/file.h"
#include "platform/thread.h"

namespace platform {

void BeginProcess(int&, char**) {}

void EndProcess() { EndWorkers(); }

void StopProcess(std::u16string_view, std::u16string_view words, int exitCode) {
  std::fprintf(stderr, "%s\n", ToUtf8(words).c_str());
  std::fflush(nullptr);
  std::_Exit(exitCode);
}

}  // namespace platform
