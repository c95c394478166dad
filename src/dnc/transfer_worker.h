// The worker of a transfer: what runs on the thread of its own.
//
// It touches no window. What the worker writes here and in `transfer` it writes before it
// posts its last message, and after that message it touches neither again.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/serial.h"

namespace morva {

struct TransferJob {
  bool active = false;
  std::string sendBuffer;
  bool isReceive = false;
  std::string receivedData;  // written by the worker before it posts
  std::atomic<std::int32_t> abortRequested{0};
};
extern TransferJob transfer;

inline constexpr int kSendChunk = 128;    // bytes per write
inline constexpr int kReceiveRead = 256;  // bytes per read
inline constexpr int kFirstDataWaitMs = 60000;
inline constexpr int kIdleEndMs = 2000;
inline constexpr int kReceivePauseMs = 10;

// What the second press of SEND or RECEIVE is answered with.
inline constexpr char16_t kAlreadyActive[] = u"A transfer is already active.";

// What ended a transfer before its last byte.
enum class TransferStop {
  None,
  Aborted,   // by the operator, of a receive
  TooLong,   // kMaxReceivedBytes came
  NoMemory,  // of a receive
  Gone,      // the port reported an error or is not there any more
  Held,      // XOFF stood for kWriteStallMs
  NotTaken,  // the port took nothing for kWriteStallMs, and no XOFF stood
  NotLeft,   // the port took everything and kept the last bytes, or went with them
};

struct WorkerRecord {
  platform::SerialSettings settings;  // the profile as it was at the start
  platform::SerialProblem problem = platform::SerialProblem::None;  // of a failed open
  TransferStop stop = TransferStop::None;                           // of a failed transfer
  std::size_t lineErrors = 0;  // bytes received with a parity or framing error
  std::u16string advice;       // what the received bytes tell about the settings
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
