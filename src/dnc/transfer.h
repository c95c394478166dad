// The transfer engine: one whole program over the line in one direction, on a worker thread.
//
// No protocol beyond the text: percent lines and flow control. The worker touches no window
// and reports by four posted messages; `active` alone says that a transfer runs.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>

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

void SendEditorProgram();
void SendFileFromDisk();
void ReceiveProgram();
void StartSend(std::string bytes, std::u16string_view message);
// The flag alone; ends waits on the line at once. Nothing happens where no transfer runs.
void RequestAbort();
// The key of the setup panel: "Abort requested..." and the flag.
void AbortTransfer();
void OpenReceivedProgram();

void RegisterTransferCommands();
void ResetTransfer();

}  // namespace morva
