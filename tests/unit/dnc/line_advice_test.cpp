#include "dnc/line_advice.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using morva::LineAdvice;
using platform::SerialSettings;

constexpr std::string_view kProgram =
    "%\r\nO1000 (BRACKET)\r\nG00 G90 G54 X1.250 Y-0.500\r\nG43 H01 Z0.100 M08\r\nG01 Z-0.125 "
    "F12.0\r\nX2.000\r\nM30\r\n%\r\n";

struct Frame {
  int baud;
  int bits;
  int parity;  // 0 none, 1 odd, 2 even
  int stops;
};

struct Received {
  std::string bytes;
  std::size_t errors = 0;
};

bool IsOdd(int value) { return __builtin_popcount(static_cast<unsigned>(value)) % 2 != 0; }

// The level of the line, sixteen samples a bit of 19200 baud; idle is 1.
std::vector<bool> LevelsOf(std::string_view text, const Frame& sender) {
  std::vector<bool> levels(400, true);
  const int samples = 16 * 19200 / sender.baud;
  const auto put = [&](bool level) { levels.insert(levels.end(), samples, level); };
  for (const char c : text) {
    const int value = c & ((1 << sender.bits) - 1);
    put(false);
    for (int i = 0; i < sender.bits; ++i) put((value >> i & 1) != 0);
    if (sender.parity != 0) put(IsOdd(value) == (sender.parity == 2));
    for (int i = 0; i < sender.stops; ++i) put(true);
  }
  levels.insert(levels.end(), 4000, true);
  return levels;
}

// What a receiver with a frame of its own reads from the levels, bit by bit in their middles.
Received ReadLevels(const std::vector<bool>& levels, const Frame& receiver) {
  const std::size_t bit = 16 * 19200 / static_cast<std::size_t>(receiver.baud);
  Received received;
  for (std::size_t at = 1; at + bit * 12 < levels.size();) {
    if (levels[at] || !levels[at - 1]) {
      ++at;
      continue;
    }
    std::size_t middle = at + bit / 2;
    int value = 0;
    for (int i = 0; i < receiver.bits; ++i) {
      middle += bit;
      value |= (levels[middle] ? 1 : 0) << i;
    }
    bool damaged = false;
    if (receiver.parity != 0) {
      middle += bit;
      damaged = levels[middle] != (IsOdd(value) == (receiver.parity == 2));
    }
    middle += bit;
    damaged |= !levels[middle];  // the first stop bit
    received.bytes += static_cast<char>(value);
    received.errors += damaged ? 1 : 0;
    at = middle;
    while (at < levels.size() && !levels[at]) ++at;
  }
  return received;
}

std::u16string AdviceFor(const Frame& sender, const Frame& receiver) {
  const Received received = ReadLevels(LevelsOf(kProgram, sender), receiver);
  SerialSettings settings;
  settings.baud = receiver.baud;
  settings.dataBits = receiver.bits;
  settings.parity = receiver.parity;
  return LineAdvice(settings, received.bytes, received.errors);
}

constexpr Frame kSevenEven{9600, 7, 2, 2};
constexpr Frame kSevenOdd{9600, 7, 1, 2};
constexpr Frame kSevenNone{9600, 7, 0, 2};
constexpr Frame kEightNone{9600, 8, 0, 1};

TEST(LineAdviceTest, IsSilentWhereBothEndsAgree) {
  for (const Frame& frame : {kSevenEven, kSevenOdd, kSevenNone, kEightNone}) {
    EXPECT_EQ(AdviceFor(frame, frame), u"");
  }
}

TEST(LineAdviceTest, NamesTheOtherParity) {
  const std::u16string odd =
      u"The bytes look like another parity. Try data bits 7, parity Odd, or the machine's own "
      u"setting for this.";
  EXPECT_EQ(AdviceFor(kSevenOdd, kSevenEven), odd);
  EXPECT_EQ(AdviceFor(kSevenOdd, kSevenNone), odd);
  EXPECT_EQ(AdviceFor(kSevenOdd, kEightNone), odd);
  EXPECT_NE(AdviceFor(kSevenEven, kSevenOdd).find(u"data bits 7, parity Even"), odd.npos);
  EXPECT_NE(AdviceFor(kSevenEven, kSevenNone).find(u"data bits 7, parity Even"), odd.npos);
  EXPECT_NE(AdviceFor(kSevenEven, kEightNone).find(u"data bits 7, parity Even"), odd.npos);
}

TEST(LineAdviceTest, NamesEightBitsAndNoneWhereTheMachineSendsNoParity) {
  for (const Frame& receiver : {kSevenEven, kSevenOdd}) {
    EXPECT_NE(AdviceFor(kEightNone, receiver).find(u"data bits 8, parity None"),
              std::u16string::npos);
    EXPECT_NE(AdviceFor(kSevenNone, receiver).find(u"data bits 7, parity None"),
              std::u16string::npos);
  }
}

TEST(LineAdviceTest, NamesHalfTheRateOfASlowerMachine) {
  Frame slow = kSevenEven;
  slow.baud = 4800;
  EXPECT_EQ(AdviceFor(slow, kSevenEven),
            u"The bytes look like another baud rate than 9600. Try 4800.");
}

TEST(LineAdviceTest, SaysThatTheRateDiffersWhereTheMachineIsFaster) {
  Frame fast = kSevenEven;
  fast.baud = 19200;
  EXPECT_NE(AdviceFor(fast, kSevenEven).find(u"another baud rate than 9600"), std::u16string::npos);
}

TEST(LineAdviceTest, SaysNothingOfSingleDamagedBytesAndOfTooFew) {
  EXPECT_EQ(LineAdvice(SerialSettings{}, kProgram, 3), u"");
  EXPECT_EQ(LineAdvice(SerialSettings{}, "\xFF\x80\x81\x92", 4), u"");
}

}  // namespace
