// The serial line: names, open with read-back, read, write, drain, close, wake.
//
// One line is open at a time. Everything but the names, SerialHeld and WakeSerial is called by the
// one thread that opened it. XON/XOFF (flow 1) is done here, not by the driver: DC1 (0x11) and DC3
// (0x13), with or without the eighth bit, that come back while sending are taken out of the
// data and obeyed, and a stopped line sends nothing more until XON, whatever else arrives.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace platform {

// Terminators included.
inline constexpr int kSerialPortUnits = 32;
inline constexpr int kSerialDeviceUnits = 64;
inline constexpr int kSerialAdapterUnits = 96;

struct SerialSettings {
  char16_t port[kSerialPortUnits] = {};
  std::int32_t baud = 9600;   // bits per second
  std::int32_t dataBits = 7;  // 5 to 8
  std::int32_t parity = 2;    // 0 none, 1 odd, 2 even
  std::int32_t stopBits = 2;  // 0 one, 2 two; 1 means one and a half and is refused
  std::int32_t flow = 1;      // 1 XON/XOFF, 2 RTS/CTS, anything else none
};

struct SerialName {
  char16_t name[kSerialPortUnits] = {};        // "COM33"
  char16_t device[kSerialDeviceUnits] = {};    // "ttyUSB0"
  char16_t adapter[kSerialAdapterUnits] = {};  // "FT232R USB UART", empty when nobody tells
};

// Present ports of COM1 to COM64 in rising order, behind them the lines that programs of this user
// offer in place of one, with their path as name; at most `capacity`; how many there are.
int ListSerialPorts(SerialName* names, int capacity);
// Whoever knows better words for an adapter than the system's own list sets this; it answers
// false for a device that it does not know. On the thread that lists.
void SetAdapterNamer(bool (*namer)(const char16_t* device, char16_t* words, int capacity));

enum class SerialProblem {
  None,
  Missing,  // no such port
  Busy,     // held by another
  Rights,   // it exists and may not be opened by this user
  Refused,  // the driver did not take a setting
};

// How long a call waits, in milliseconds.
inline constexpr int kReadGapMs = 50;       // between two bytes of a read
inline constexpr int kReadTotalMs = 100;    // a read in all
inline constexpr int kWriteStallMs = 5000;  // with not a byte taken

// DC1 and DC3 of XON/XOFF.
inline constexpr unsigned char kXon = 0x11;
inline constexpr unsigned char kXoff = 0x13;

// Opens and configures. False: closed again, `problem` tells why.
bool OpenSerial(const SerialSettings& settings, SerialProblem& problem);
// The group whose members may open the port, for SerialProblem::Rights; empty when unknown.
std::u16string SerialGroup(const SerialSettings& settings);
// Up to `capacity` bytes. Returns when 50 ms pass between bytes, when 100 ms pass in all, when
// the buffer is full or after WakeSerial. `got` may be 0. False: the port is gone.
bool ReadSerial(void* bytes, std::size_t capacity, std::size_t& got);
// Writes up to `count` bytes; returns when all are taken, or when none was taken for 5000 ms
// or WakeSerial was called, with what was taken until then in `written`. False: the port is gone.
bool WriteSerial(const void* bytes, std::size_t count, std::size_t& written);
// Any thread: whether the far end holds a line that is open and sends by XOFF (flow 1). A ready wire
// that is down (flow 2) tells nothing: it is down as well where the cable is out.
bool SerialHeld();
// Waits as long as bytes keep leaving. False: the port is gone, or bytes stayed.
bool DrainSerial();
// Bytes that WriteSerial has taken and that have not left, as far as the system tells; of a port
// that is gone what was known last.
std::size_t SerialUnsent();
// Drops what is queued, releases a stopped line, closes. Never blocks for long.
void CloseSerial();
// Any thread: ends the wait of a read, write or drain under way or about to begin, until the
// next OpenSerial.
void WakeSerial();
// Since the open: received bytes with a parity or framing error, and bytes other than
// XON and XOFF that came back while sending.
std::size_t SerialLineErrors();
std::size_t SerialBackChannelBytes();

}  // namespace platform
