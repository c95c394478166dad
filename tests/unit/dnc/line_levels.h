// The level of a serial line as a sender puts it there, and what a receiver with other settings
// reads from it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace morva_test {

struct LineFrame {
  int baud = 9600;
  int bits = 7;
  int parity = 2;     // 0 none, 1 odd, 2 even
  int halfStops = 4;  // stop bits, in halves
};

struct LineRead {
  std::string bytes;
  std::size_t errors = 0;
};

// What a receiver does behind a stop bit that is 0: it waits for the line to rise and fall again,
// or it takes that bit for the next start bit, as chips with a buffer do.
enum class AfterFault { WaitForEdge, TakeAsStart };

inline bool HasOddBits(unsigned value) { return __builtin_popcount(value) % 2 != 0; }

// Times at which the level changes, in ticks of which a bit at 1 baud has kTicks; the first change
// is the fall of the first start bit.
inline constexpr long long kTicks = 16LL * 115200;

inline std::vector<long long> ChangesOf(std::string_view text, const LineFrame& sender,
                                        int idleBits) {
  std::vector<long long> changes;
  const long long half = kTicks / sender.baud / 2;
  long long now = 100 * half;
  bool level = true;
  const auto put = [&](bool next, int halves) {
    if (next != level) changes.push_back(now);
    level = next;
    now += halves * half;
  };
  for (const char c : text) {
    const unsigned value = static_cast<unsigned char>(c) & ((1U << sender.bits) - 1);
    put(false, 2);
    for (int i = 0; i < sender.bits; ++i) put((value >> i & 1) != 0, 2);
    if (sender.parity != 0) put(HasOddBits(value) == (sender.parity == 2), 2);
    put(true, sender.halfStops + 2 * idleBits);
  }
  return changes;
}

inline LineRead ReadLine(const std::vector<long long>& changes, const LineFrame& receiver,
                         AfterFault after) {
  const long long bit = kTicks / receiver.baud;
  LineRead read;
  std::size_t next = 0;  // the first change behind the time looked at
  const auto levelAt = [&](long long time) {
    while (next < changes.size() && changes[next] <= time) ++next;
    return next % 2 == 0;
  };
  // A fall has an even number.
  for (std::size_t fall = 0; fall < changes.size();) {
    long long start = changes[fall];
    next = fall;
    for (bool going = true; going;) {
      going = false;
      long long middle = start + bit / 2;
      unsigned value = 0;
      for (int i = 0; i < receiver.bits; ++i) {
        value |= (levelAt(middle += bit) ? 1U : 0U) << i;
      }
      bool damaged = false;
      if (receiver.parity != 0) {
        damaged = levelAt(middle += bit) != (HasOddBits(value) == (receiver.parity == 2));
      }
      const bool stop = levelAt(middle += bit);
      damaged |= !stop;
      read.bytes += static_cast<char>(value);
      read.errors += damaged ? 1 : 0;
      if (!stop && after == AfterFault::TakeAsStart && value != 0) {
        start = middle - bit / 2;
        going = true;
      }
    }
    fall = next + next % 2;
  }
  return read;
}

}  // namespace morva_test
