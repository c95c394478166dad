// The transfer engine: one whole program over the line in one direction, on a worker thread.
//
// No protocol beyond the text: percent lines and flow control. The worker touches no window
// and reports by four posted messages; `active` alone says that a transfer runs.
#pragma once

#include <string>
#include <string_view>

#include "dnc/transfer_worker.h"

namespace morva {

bool TransferRuns();
// Says on the status line how far the transfer is. False: none runs.
bool TellTransfer();
void SendEditorProgram();
void SendFileFromDisk();
void ReceiveProgram();
void StartSend(std::string bytes, std::u16string_view message);
// The flag alone; ends waits on the line at once. Nothing happens where no transfer runs.
void RequestAbort();
// The key of the setup panel: "Abort requested..." and the flag.
void AbortTransfer();
// In a new tab; where eight are open meanwhile, by the writer of files into the folder "Recovery".
// A text that can be kept nowhere stays here, and the next ReceiveProgram opens it first. The words
// for the status line; empty: nothing had been received.
std::u16string OpenReceivedProgram();
// Tries once more to keep a program in "Recovery" that was received and is in no tab, and waits for
// the disk. False: no file takes it either. For moments at which no transfer runs.
bool KeepHeldProgram();
// Ends what runs when the window goes: the abort, and the wait for the worker. A program that had
// come whole, now or earlier, is on its way into "Recovery" then; WaitForSaves waits for it.
void EndTransferForGood();

void RegisterTransferCommands();
void ResetTransfer();

}  // namespace morva
