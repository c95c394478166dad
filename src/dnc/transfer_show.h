// What the top band shows while a transfer runs: a bar with its words, and the key that aborts.
// SEND and RECEIVE are dim meanwhile.
#pragma once

#include <cstddef>
#include <string>

#include "platform/serial.h"

namespace morva {

struct TransferShown {
  bool receive = false;
  std::size_t count = 0;  // bytes that went or came
  std::size_t total = 0;  // of a send
  bool held = false;      // a send: the control holds the line by XOFF
};

// Seconds that `bytes` need on the line, rounded up: a start bit, data bits, parity, stop bits
// each. A rate of 0 or below has none: 0.
int SecondsOnLine(std::size_t bytes, const platform::SerialSettings& settings);
// "1024 / 4410 bytes   23 %   4 s left" of a send, from 60 s on as minutes and seconds. How long a
// control holds the line nobody knows.
std::u16string TransferWords(const TransferShown& shown, const platform::SerialSettings& settings);

// Whether SEND and RECEIVE are dim: from when the keyboard is on the abort key.
bool KeysAreDim();
// Called at the press of a key, before its question takes the keyboard away: the abort key takes it
// over when the transfer begins, and gives it back at the end.
void NoteKeyboardOfPress();
// The look follows `transfer` and `worker`; to be called when a transfer begins and when it ends.
void ShowTransferBegun();
void ShowTransferEnded();
void ShowTransferred(std::size_t count);  // of a line that goes
void ShowHeld(bool held);
const TransferShown& ShownTransfer();

void RegisterTransferBar();
void ResetTransferBar();

}  // namespace morva
