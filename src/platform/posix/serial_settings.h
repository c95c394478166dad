// A serial line's settings as the system's terminal record, set and read back.
#pragma once

#include <cstdint>

#include "platform/serial.h"

struct termios;

namespace platform {

// Whether the values name a line at all: a positive rate, 5 to 8 data bits, parity 0 to 4
// (3 mark, 4 space), one or two stop bits. One and a half is refused, and so is two with five
// data bits, which the hardware makes one and a half of.
bool SettingsHold(const SerialSettings& settings);
// Changes every field that belongs to the line. The rate is left to SetLineRate.
void FillTerminal(const SerialSettings& settings, termios& record);
// Whether `taken` holds what `wanted` asks for. A pseudo-terminal can hold neither data bits
// nor parity, so these are passed over there.
bool SameTerminal(const termios& wanted, const termios& taken, bool pseudo);
// Sets all and compares what the driver took. False: a field was refused.
bool ConfigureLine(int fd, const SerialSettings& settings, bool pseudo);
// Nanoseconds of one byte with start, parity and stop bits.
std::int64_t ByteNanoseconds(const SerialSettings& settings);

// The rate in bits per second, also one that the system has no name for.
bool SetLineRate(int fd, std::int32_t baud);
// What the driver says it took, 0 when it does not tell.
std::int32_t LineRateOf(int fd);

}  // namespace platform
