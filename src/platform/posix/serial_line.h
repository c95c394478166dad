// The pure pieces of the serial line: error marks, XON/XOFF, line rate, receive buffer.
//
// No file and no clock of its own; times are nanoseconds of one clock that the caller reads.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/serial.h"

namespace platform {

// What may wait in the driver. An adapter does not stop what it already holds, and a control
// with a small buffer must not be overrun.
inline constexpr int kDriverBytes = 64;
inline constexpr std::size_t kReceiveBuffer = 8192;
inline constexpr std::size_t kReceiveNearFull = 6144;   // XOFF goes out
inline constexpr std::size_t kReceiveNearEmpty = 2048;  // XON goes out

// The driver marks a byte with a parity or framing error as FF 00 byte, and a good FF as FF FF.
struct MarkDecoder {
  int marks = 0;           // bytes of a mark seen so far, 0 to 2
  std::size_t errors = 0;  // damaged bytes since the start
};

// Feeds one byte of the driver. True: `out` is the next byte of the line, damaged or not.
inline bool DecodeMark(MarkDecoder& decoder, unsigned char byte, unsigned char& out) {
  if (decoder.marks == 0) {
    if (byte == 0xFF) {
      decoder.marks = 1;
      return false;
    }
    out = byte;
    return true;
  }
  if (decoder.marks == 1) {
    if (byte == 0) {
      decoder.marks = 2;
      return false;
    }
    // FF FF is a good FF; anything else is no mark of ours and is passed as it stands.
    decoder.marks = 0;
    out = byte;
    return true;
  }
  decoder.marks = 0;
  ++decoder.errors;
  out = byte;
  return true;
}

// What comes back while sending.
struct BackChannel {
  bool stopped = false;
  std::size_t ordinary = 0;  // bytes that were neither XON nor XOFF
};

// XON and XOFF are obeyed with or without the eighth bit, because a control that sends even
// parity to a line set to eight bits sets it. Nothing but XON releases a stopped line. A
// damaged XON may be any byte, and a control that is overrun cuts a wrong program; a damaged
// XOFF is obeyed, because stopping harms nothing.
inline void ObeyBackChannel(BackChannel& back, unsigned char byte, bool damaged) {
  if ((byte & 0x7F) == kXoff) {
    back.stopped = true;
  } else if ((byte & 0x7F) == kXon && !damaged) {
    back.stopped = false;
  } else {
    ++back.ordinary;
  }
}

// Bytes that cannot have left yet at the line's own rate. A USB adapter tells an empty queue
// as soon as its chip has the bytes.
struct LineRate {
  std::int64_t byteNs = 0;     // time of one byte; 0: a line without a rate, a pseudo-terminal
  std::int64_t busyUntil = 0;  // when the last byte handed down has left
};

inline std::int64_t Backlog(const LineRate& rate, std::int64_t now) {
  if (rate.byteNs == 0 || rate.busyUntil <= now) return 0;
  return (rate.busyUntil - now + rate.byteNs - 1) / rate.byteNs;
}

inline void AddToLine(LineRate& rate, std::int64_t now, std::int64_t bytes) {
  if (rate.busyUntil < now) rate.busyUntil = now;
  rate.busyUntil += bytes * rate.byteNs;
}

// How many bytes should be free before the next piece goes down: half of what may wait, so
// that a sender wakes rarely and the line never runs dry; less on a line so slow that half of
// it takes more than a second.
inline int PieceWanted(const LineRate& rate, std::size_t left) {
  std::int64_t wanted = kDriverBytes / 2;
  if (rate.byteNs > 0 && wanted * rate.byteNs > 1000000000) wanted = 1000000000 / rate.byteNs;
  if (wanted < 1) wanted = 1;
  if (static_cast<std::int64_t>(left) < wanted) wanted = static_cast<std::int64_t>(left);
  return static_cast<int>(wanted);
}

// First in, first out.
struct ReceiveBuffer {
  unsigned char bytes[kReceiveBuffer];
  std::size_t first = 0;
  std::size_t count = 0;
};

inline std::size_t ReceiveRoom(const ReceiveBuffer& buffer) {
  return kReceiveBuffer - buffer.count;
}

inline void PutReceived(ReceiveBuffer& buffer, unsigned char byte) {
  if (buffer.count == kReceiveBuffer) return;
  buffer.bytes[(buffer.first + buffer.count) % kReceiveBuffer] = byte;
  ++buffer.count;
}

inline std::size_t TakeReceived(ReceiveBuffer& buffer, unsigned char* bytes, std::size_t capacity) {
  std::size_t taken = 0;
  while (taken < capacity && buffer.count > 0) {
    bytes[taken++] = buffer.bytes[buffer.first];
    buffer.first = (buffer.first + 1) % kReceiveBuffer;
    --buffer.count;
  }
  return taken;
}

}  // namespace platform
