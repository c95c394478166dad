// The worker of a transfer: what runs on the thread of its own.
//
// It touches no window. What the worker writes here and in `transfer` it writes before it
// posts its last message, and after that message it touches neither again.
#pragma once

#include <cstddef>

#include "platform/serial.h"

namespace morva {

struct WorkerRecord {
  platform::SerialSettings settings;  // the profile as it was at the start
  platform::SerialProblem problem = platform::SerialProblem::None;  // of a failed open
  std::size_t lineErrors = 0;  // bytes received with a parity or framing error
};
extern WorkerRecord worker;

// TransferFailed's first argument. The user is not told which.
enum TransferFailure : unsigned {
  kFailedOpen = 1,
  kFailedMemory = 2,
  kFailedWrite = 3,
  kFailedReceive = 4,
};

void RunTransfer();

}  // namespace morva
