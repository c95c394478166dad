#include "dnc/line_advice.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "dnc/serial_profile.h"
#include "line_levels.h"

namespace {

using morva::LineAdvice;
using morva_test::AfterFault;
using morva_test::LineFrame;
using morva_test::LineRead;
using platform::SerialSettings;

constexpr std::string_view kPrograms[] = {
    "%\r\nO1000 (BRACKET)\r\nG00 G90 G54 X1.250 Y-0.500\r\nG43 H01 Z0.100 M08\r\nG01 Z-0.125 "
    "F12.0\r\nX2.000\r\nM30\r\n%\r\n",
    "%\nO00012\nN10 G20\n99999 G0 X0. Y0. Z1.\nN30 G1 F20.\n99999 X1. Y1.\nN50 X2. Y2.\nN60 X3. "
    "Y3.\nN70 X4. Y4.\n99999 G28 Z0.\nN90 M30\n%\n",
    "%\r\nO1001 (ROUGH MILLING OF THE OUTER CONTOUR)\r\n(TOOL 4 END MILL 12 MM, LENGTH FROM "
    "TABLE)\r\n(CHECK CLAMPS BEFORE START)\r\nT4 M6\r\nG0 G90 X-10. Y-10.\r\nM30\r\n%\r\n"};
constexpr std::string_view kProgram = kPrograms[0];
constexpr const char16_t* kParities[] = {u"None", u"Odd", u"Even"};

std::u16string AdviceFor(const LineRead& read, const LineFrame& receiver) {
  SerialSettings settings;
  settings.baud = receiver.baud;
  settings.dataBits = receiver.bits;
  settings.parity = receiver.parity;
  return LineAdvice(settings, read.bytes, read.errors);
}

std::u16string AdviceFor(const LineFrame& sender, const LineFrame& receiver) {
  const auto changes = morva_test::ChangesOf(kProgram, sender, 0);
  return AdviceFor(morva_test::ReadLine(changes, receiver, AfterFault::WaitForEdge), receiver);
}

LineFrame FrameOf(int baud, int bits, int parity, int stops) {
  return {baud, bits, parity, 2 * stops};
}

const LineFrame kSevenEven = FrameOf(9600, 7, 2, 2);
const LineFrame kSevenOdd = FrameOf(9600, 7, 1, 2);
const LineFrame kSevenNone = FrameOf(9600, 7, 0, 2);
const LineFrame kEightNone = FrameOf(9600, 8, 0, 1);
const LineFrame kEightEven = FrameOf(9600, 8, 2, 1);

bool Has(std::u16string_view words, std::u16string_view part) {
  return words.find(part) != words.npos;
}

// The number behind "Try ".
int RateIn(std::u16string_view words) {
  int rate = 0;
  for (std::size_t at = words.find(u"Try ") + 4; at < words.size(); ++at) {
    if (words[at] < u'0' || words[at] > u'9') break;
    rate = rate * 10 + (words[at] - u'0');
  }
  return rate;
}

enum class Said { Nothing, Compare, Frame, Rate, RateOrLower, Lower };

Said KindOf(std::u16string_view words) {
  if (words.empty()) return Said::Nothing;
  if (Has(words, u"Try data bits")) return Said::Frame;
  if (Has(words, u"or a lower one")) return Said::RateOrLower;
  if (Has(words, u". Try ")) return Said::Rate;
  return Has(words, u"a lower baud rate") ? Said::Lower : Said::Compare;
}

bool SameSettings(const LineFrame& a, const LineFrame& b) {
  return a.baud == b.baud && a.bits == b.bits && a.parity == b.parity;
}

// Whether what is said holds for this sender.
bool IsTrue(std::u16string_view words, const LineFrame& sender, const LineFrame& receiver) {
  switch (KindOf(words)) {
    case Said::Nothing:
    case Said::Compare:
      return true;
    case Said::Frame: {
      std::u16string frame = sender.bits == 7 ? u"data bits 7, parity " : u"data bits 8, parity ";
      return sender.baud == receiver.baud && Has(words, frame + kParities[sender.parity]);
    }
    case Said::Rate:
      return sender.baud == RateIn(words);
    case Said::RateOrLower:
      return sender.baud <= RateIn(words);
    case Said::Lower:
      return sender.baud < receiver.baud;
  }
  return false;
}

constexpr int kRates[] = {300, 600, 1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200};

struct Tally {
  int all = 0;
  int wrong = 0;
  int noEntry = 0;     // rates that the list does not have
  int atOneFrame = 0;  // said although both ends agree
  int garbledUnseen = 0;
  int frames = 0;       // named at the same rate
  int otherFrames = 0;  // of so many
  int slower[4] = {};   // named at half, a quarter and an eighth of the rate, of so many
};

bool IsOffered(int baud) {
  for (const int offered : morva::kOfferedBauds) {
    if (offered == baud) return true;
  }
  return false;
}

void Weigh(Tally& tally, std::string_view program, const LineRead& read, const LineFrame& sender,
           const LineFrame& receiver) {
  const std::u16string words = AdviceFor(read, receiver);
  const Said said = KindOf(words);
  ++tally.all;
  tally.wrong += IsTrue(words, sender, receiver) ? 0 : 1;
  if (said == Said::Rate || said == Said::RateOrLower) {
    tally.noEntry += IsOffered(RateIn(words)) ? 0 : 1;
  }
  if (SameSettings(sender, receiver)) {
    tally.atOneFrame += words.empty() ? 0 : 1;
  } else if (words.empty() && read.bytes.size() >= 12 && read.bytes != program) {
    ++tally.garbledUnseen;
  }
  if (sender.baud == receiver.baud && !SameSettings(sender, receiver)) {
    ++tally.otherFrames;
    tally.frames += said == Said::Frame ? 1 : 0;
  }
  if (IsOffered(receiver.baud) && IsOffered(sender.baud)) {
    const bool named = said == Said::Rate || said == Said::RateOrLower;
    for (const int part : {2, 4, 8}) {
      if (sender.baud * part != receiver.baud) continue;
      ++tally.slower[3];
      tally.slower[part / 4] += named ? 1 : 0;
    }
  }
}

template <typename Do>
void ForEachFrame(Do&& take) {
  for (const int baud : kRates) {
    for (const int bits : {7, 8}) {
      for (const int parity : {0, 1, 2}) take(baud, bits, parity);
    }
  }
}

// Every pair of rates and frames, characters close together and apart, on both kinds of receivers.
Tally WeighAll(AfterFault after) {
  Tally tally;
  for (const std::string_view program : kPrograms) {
    for (const int idle : {0, 3}) {
      for (const int halfStops : {2, 3, 4}) {
        ForEachFrame([&](int baud, int bits, int parity) {
          const LineFrame sender{baud, bits, parity, halfStops};
          const auto changes = morva_test::ChangesOf(program, sender, idle);
          ForEachFrame([&](int ours, int ourBits, int ourParity) {
            const LineFrame receiver{ours, ourBits, ourParity, 4};
            const LineRead read = morva_test::ReadLine(changes, receiver, after);
            Weigh(tally, program, read, sender, receiver);
          });
        });
      }
    }
  }
  return tally;
}

// What is said is true everywhere. How much is named is a count that may only grow.
void ExpectTrueEverywhere(const Tally& tally) {
  EXPECT_EQ(tally.all, 60 * 60 * 18);
  EXPECT_EQ(tally.wrong, 0);
  EXPECT_EQ(tally.noEntry, 0);
  EXPECT_EQ(tally.atOneFrame, 0);
  EXPECT_EQ(tally.garbledUnseen, 0);
}

TEST(LineAdviceTest, IsNeverWrongOnAReceiverThatWaitsForTheNextStart) {
  const Tally tally = WeighAll(AfterFault::WaitForEdge);
  ExpectTrueEverywhere(tally);
  EXPECT_EQ(tally.otherFrames, 10 * 30 * 18);
  EXPECT_GE(tally.frames, 4680);
  EXPECT_EQ(tally.slower[3], (4 + 3 + 2) * 36 * 18);
  EXPECT_GE(tally.slower[0], 2256);
  EXPECT_GE(tally.slower[1], 1944);
  EXPECT_GE(tally.slower[2], 1260);
}

TEST(LineAdviceTest, IsNeverWrongOnAReceiverThatTakesAFaultForTheNextStart) {
  const Tally tally = WeighAll(AfterFault::TakeAsStart);
  ExpectTrueEverywhere(tally);
  EXPECT_GE(tally.frames, 3030);
  EXPECT_GE(tally.slower[0], 1080);
  EXPECT_GE(tally.slower[1], 306);
  EXPECT_GE(tally.slower[2], 1260);
}

TEST(LineAdviceTest, IsSilentWhereBothEndsAgree) {
  for (const LineFrame& frame : {kSevenEven, kSevenOdd, kSevenNone, kEightNone, kEightEven}) {
    EXPECT_EQ(AdviceFor(frame, frame), u"");
  }
}

TEST(LineAdviceTest, NamesTheOtherParity) {
  const std::u16string odd = u"Try data bits 7, parity Odd, or the machine's own setting for this.";
  EXPECT_EQ(AdviceFor(kSevenOdd, kSevenNone), u"The bytes look like another parity. " + odd);
  EXPECT_EQ(AdviceFor(kSevenOdd, kEightNone), u"The bytes look like other data bits. " + odd);
  EXPECT_TRUE(Has(AdviceFor(kSevenEven, kSevenNone), u"Try data bits 7, parity Even"));
  EXPECT_TRUE(Has(AdviceFor(kSevenEven, kEightNone), u"Try data bits 7, parity Even"));
}

// Where every byte is damaged and its characters are right, several settings give the same.
TEST(LineAdviceTest, NamesAllSettingsThatGiveTheSameBytes) {
  const std::u16string words = AdviceFor(kSevenOdd, kSevenEven);
  EXPECT_EQ(words,
            u"The bytes look like another parity. Try data bits 7, parity Odd, then data bits 8, "
            u"parity Even, then data bits 7, parity None, or the machine's own setting for this.");
  EXPECT_EQ(AdviceFor(kEightEven, kSevenEven), words);
}

TEST(LineAdviceTest, NamesEightBitsAndNoneWhereTheMachineSendsNoParity) {
  for (const LineFrame& receiver : {kSevenEven, kSevenOdd}) {
    EXPECT_TRUE(Has(AdviceFor(kEightNone, receiver), u"data bits 8, parity None"));
    EXPECT_TRUE(Has(AdviceFor(kSevenNone, receiver), u"data bits 7, parity None"));
  }
  EXPECT_TRUE(Has(AdviceFor(kEightNone, kSevenNone), u"data bits 8, parity None"));
}

TEST(LineAdviceTest, NamesTheLowerRateOfASlowerMachine) {
  const auto atRate = [](int baud) {
    LineFrame slow = kSevenEven;
    slow.baud = baud;
    return AdviceFor(slow, kSevenEven);
  };
  EXPECT_EQ(atRate(4800), u"The bytes look like a lower baud rate than 9600. Try 4800.");
  EXPECT_EQ(atRate(2400), u"The bytes look like a lower baud rate than 9600. Try 2400.");
  EXPECT_EQ(atRate(1200),
            u"The bytes look like a lower baud rate than 9600. Try 1200 or a lower one.");
}

// The list begins at 1200.
TEST(LineAdviceTest, NamesNoRateThatTheListDoesNotHave) {
  EXPECT_EQ(AdviceFor(FrameOf(600, 7, 2, 2), FrameOf(1200, 7, 2, 2)),
            u"The bytes look like a lower baud rate than 1200. Look up the machine's rate and "
            u"choose the same one.");
}

// At twice the rate a receiver of eight bits without parity finds no error.
TEST(LineAdviceTest, TellsBytesThatAreNoProgramWithoutALineError) {
  const LineFrame fast = FrameOf(19200, 8, 0, 1);
  const auto changes = morva_test::ChangesOf(kProgram, fast, 0);
  const LineRead read = morva_test::ReadLine(changes, kEightNone, AfterFault::WaitForEdge);
  EXPECT_EQ(read.errors, 0u);
  EXPECT_EQ(AdviceFor(read, kEightNone),
            u"The bytes are no program text. Compare baud rate first, then data bits, parity and "
            u"stop bits, with the machine's settings.");
}

TEST(LineAdviceTest, SaysNothingOfLongCommentsAndOfFillings) {
  SerialSettings settings;
  settings.dataBits = 8;
  settings.parity = 0;
  EXPECT_EQ(LineAdvice(settings,
                       "%\r\n(first clamp the left side, then turn the part over\r\nand look "
                       "for chips)\r\nG0 X0\r\nM30\r\n%\r\n",
                       0),
            u"");
  EXPECT_EQ(LineAdvice(settings, std::string(200, '\0'), 0), u"");
}

TEST(LineAdviceTest, SaysNothingOfSingleDamagedBytesAndOfTooFew) {
  EXPECT_EQ(LineAdvice(SerialSettings{}, kProgram, 3), u"");
  EXPECT_EQ(LineAdvice(SerialSettings{}, "\xFF\x80\x81\x92", 4), u"");
}

}  // namespace
