#include "app/stop.h"

#include "platform/process.h"

namespace morva {

void StopProgram(std::u16string_view words) {
  platform::StopProcess(u"MORVA", words, kStopExitCode);
}

}  // namespace morva
