#include "dnc/line_advice.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <iterator>
#include <span>

#include "dnc/serial_profile.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::size_t kLeastBytes = 12;
constexpr std::size_t kLongestLine = 100;  // characters, on an average
constexpr std::size_t kFewestDigits = 25;  // one in so many characters
// Shares of all bytes.
constexpr double kNoise = 0.05;       // damaged bytes; a worse share is no cable
constexpr double kFitsWithin = 0.01;  // between what is found and what a frame would give
constexpr double kProgram = 0.9;      // characters of a program, to name a frame
constexpr double kText = 0.6;         // the same and small letters, in text with comments
constexpr double kNoText = 0.05;      // control characters
constexpr double kLong = 0.9;         // bytes whose bits come in runs, to name a slower rate
constexpr double kShort = 0.7;        // at most so many fit the still slower rates
constexpr std::int32_t kParityNone = 0;
constexpr std::int32_t kParityOdd = 1;
constexpr std::int32_t kParityEven = 2;

constexpr char16_t kTry[] = u"The bytes look like ";

// A sender's setting; its stop bits change nothing of what is read.
struct Frame {
  std::int32_t dataBits;
  std::int32_t parity;
  const char16_t* words;
};
// In the order in which machines use them.
constexpr Frame kFrames[] = {
    {7, kParityEven, u"data bits 7, parity Even"}, {7, kParityOdd, u"data bits 7, parity Odd"},
    {8, kParityNone, u"data bits 8, parity None"}, {8, kParityEven, u"data bits 8, parity Even"},
    {8, kParityOdd, u"data bits 8, parity Odd"},   {7, kParityNone, u"data bits 7, parity None"}};

bool IsOdd(unsigned value) { return (std::popcount(value) & 1) != 0; }

bool IsDigit(int c) { return c >= '0' && c <= '9'; }

bool IsProgramUnit(int c) {
  constexpr std::string_view kMarks = "%.-+()[]#=*/:,;'\"&<>_\r\n\t ";
  return IsDigit(c) || (c >= 'A' && c <= 'Z') || kMarks.find(static_cast<char>(c)) != kMarks.npos;
}

// Leader, trailer and pauses of a sender.
bool IsFilling(int c) { return c == 0 || (c >= 0x11 && c <= 0x14) || c == 0x7F; }

bool IsNoText(int c) {
  return (c < 0x20 && c != '\r' && c != '\n' && c != '\t') || (c >= 0x80 && c < 0xA0);
}

bool IsMoreThan(std::size_t count, double share, std::size_t all) {
  return static_cast<double>(count) > share * static_cast<double>(all);
}

struct Counts {
  std::size_t all = 0;
  std::size_t filling = 0;
  std::size_t program = 0;  // by the lower seven bits
  std::size_t text = 0;     // by all bits, small letters too
  std::size_t noText = 0;
  std::size_t lineEnds = 0;  // by the lower seven bits, as are the digits
  std::size_t digits = 0;
};

Counts Count(std::string_view received) {
  Counts counts;
  for (const char c : received) {
    const auto byte = static_cast<unsigned char>(c);
    ++counts.all;
    if (IsFilling(byte)) {
      ++counts.filling;
      continue;
    }
    counts.program += IsProgramUnit(byte & 0x7F) ? 1 : 0;
    counts.text += IsProgramUnit(byte) || (byte >= 'a' && byte <= 'z') ? 1 : 0;
    counts.digits += IsDigit(byte & 0x7F) ? 1 : 0;
    counts.noText += IsNoText(byte) ? 1 : 0;
    counts.lineEnds += (byte & 0x7F) == '\r' || (byte & 0x7F) == '\n' ? 1 : 0;
  }
  return counts;
}

bool HasLinesAndNumbers(const Counts& counts, std::size_t characters) {
  return counts.lineEnds * kLongestLine >= characters &&
         counts.digits * kFewestDigits >= characters;
}

// The characters of a program, in lines.
bool IsProgram(const Counts& counts, std::size_t characters) {
  return characters >= kLeastBytes && IsMoreThan(counts.program, kProgram, characters) &&
         HasLinesAndNumbers(counts, characters);
}

// Text with comments in words.
bool IsText(const Counts& counts, std::size_t characters) {
  return HasLinesAndNumbers(counts, characters) &&
         !IsMoreThan(counts.noText, kNoText, characters) &&
         IsMoreThan(counts.text, kText, characters);
}

struct Reading {
  unsigned byte = 0;
  bool damaged = false;
};

// What the receiver makes of one character of a sender with another frame: it takes its own number
// of bits from those that the sender puts on the line. The stop stays; `close`: for one bit, and
// the next character follows.
Reading Read(unsigned character, const Frame& sender, const platform::SerialSettings& receiver,
             bool close) {
  unsigned line = ~0U;
  const auto dataBits = static_cast<unsigned>(sender.dataBits);
  line = (line << dataBits) | character;
  if (sender.parity != kParityNone && IsOdd(character) != (sender.parity == kParityEven)) {
    line &= ~(1U << dataBits);
  }
  if (close) line &= ~(1U << (dataBits + (sender.parity == kParityNone ? 1 : 2)));
  auto at = static_cast<unsigned>(receiver.dataBits);
  Reading reading;
  reading.byte = line & ((1U << at) - 1);
  if (receiver.parity != kParityNone) {
    const bool mark = (line >> at++ & 1) != 0;
    reading.damaged = mark != (IsOdd(reading.byte) == (receiver.parity == kParityEven));
  }
  reading.damaged |= (line >> at & 1) == 0;
  return reading;
}

// Bytes whose eighth bit is not the one that this frame gives.
std::size_t WrongBytes(const Frame& sender, const platform::SerialSettings& receiver,
                       std::string_view received, bool close) {
  return static_cast<std::size_t>(std::ranges::count_if(received, [&](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return Read(byte & 0x7FU, sender, receiver, close).byte != byte;
  }));
}

// How far what came is from what this frame gives, in bytes.
std::size_t Misfit(const Frame& sender, const platform::SerialSettings& receiver,
                   std::string_view received, std::size_t errors, bool close) {
  const auto damaged = static_cast<std::size_t>(std::ranges::count_if(received, [&](char c) {
    return Read(static_cast<unsigned char>(c) & 0x7FU, sender, receiver, close).damaged;
  }));
  return WrongBytes(sender, receiver, received, close) +
         (damaged > errors ? damaged - errors : errors - damaged);
}

// The characters are a program's. Every frame that gives these bytes and so many errors is named,
// the likeliest first.
std::u16string FrameAdvice(const platform::SerialSettings& settings, std::string_view received,
                           std::size_t errors, bool noisy) {
  const Frame own{settings.dataBits, settings.parity, u""};
  const bool even =
      !IsMoreThan(WrongBytes(own, settings, received, false), kNoise, received.size());
  if (!noisy && even) return {};
  struct Fit {
    std::size_t misfit;
    const Frame* frame;
  };
  std::array<Fit, std::size(kFrames)> fits{};
  std::size_t count = 0;
  for (const Frame& frame : kFrames) {
    const std::size_t misfit = std::min(Misfit(frame, settings, received, errors, false),
                                        Misfit(frame, settings, received, errors, true));
    if (!IsMoreThan(misfit, kFitsWithin, received.size())) fits[count++] = {misfit, &frame};
  }
  if (count == 0) {
    return u"Compare data bits, parity and stop bits with the machine's settings, then the baud "
           u"rate.";
  }
  const std::span<Fit> found(fits.data(), count);
  std::ranges::stable_sort(found, {}, &Fit::misfit);
  std::u16string words = kTry;
  words += found[0].frame->dataBits == settings.dataBits ? u"another parity" : u"other data bits";
  for (const Fit& fit : found) {
    words += &fit == &found[0] ? u". Try " : u", then ";
    words += fit.frame->words;
  }
  return words + u", or the machine's own setting for this.";
}

// A sender at a part of the rate: its start bit fills the first bits as well, and those behind
// come in runs. A byte begins `into` bits behind the beginning of one of the sender's.
bool HasRuns(unsigned char byte, int dataBits, int run, int into) {
  for (int i = 0; i < dataBits; ++i) {
    const int first = (i + 1 + into) / run * run - into - 1;  // bit at which the run of bit i began
    const bool level = first >= 0 && (byte >> first & 1) != 0;
    if (((byte >> i & 1) != 0) != level) return false;
  }
  return true;
}

// The highest rate of the list that is not above this one; 0: none.
std::int32_t OfferedUpTo(std::int32_t baud) {
  std::int32_t best = 0;
  for (const std::int32_t offered : kOfferedBauds) {
    if (offered <= baud) best = std::max(best, offered);
  }
  return best;
}

// Behind "Try "; empty where the list has no such rate.
std::u16string LowerRate(const platform::SerialSettings& settings, int run) {
  // A start bit that fills a whole character leaves nothing but zeros, however long it is.
  if (run > settings.dataBits) {
    const std::int32_t most = OfferedUpTo(settings.baud / (settings.dataBits + 1));
    return most == 0 ? std::u16string() : IntegerText(most) + u" or a lower one";
  }
  if (settings.baud % run != 0) return {};
  const std::int32_t baud = settings.baud / run;
  return OfferedUpTo(baud) == baud ? IntegerText(baud) : std::u16string();
}

// How many bits of the receiver one of the sender's takes, as the bytes tell. 1: they do not.
int RunOf(const platform::SerialSettings& settings, std::string_view received) {
  const auto allHave = [&](int run, int other, double share) {
    const auto fits = std::ranges::count_if(received, [&](char c) {
      const auto byte = static_cast<unsigned char>(c);
      return HasRuns(byte, settings.dataBits, run, 0) ||
             HasRuns(byte, settings.dataBits, run, other);
    });
    return !IsMoreThan(received.size() - static_cast<std::size_t>(fits), 1 - share,
                       received.size());
  };
  int run = settings.dataBits + 1;
  while (run > 1 && !allHave(run, 0, kLong)) --run;
  if (run == 1 || run > settings.dataBits) return run;
  // Bytes that nearly all fit a still lower rate may be of that one.
  for (int more = run + 1; more <= settings.dataBits + 1; ++more) {
    if (allHave(more, 0, kShort)) return 1;
  }
  // Behind a damaged byte some receivers begin the next one at once. Where that is in the middle of
  // one of the sender's bits, runs of twice the length look like these.
  const int stop = settings.dataBits + (settings.parity == kParityNone ? 1 : 2);
  return stop % (2 * run) == run && allHave(2 * run, run, kLong) ? 1 : run;
}

std::u16string RateAdvice(const platform::SerialSettings& settings, std::string_view received) {
  const int run = RunOf(settings, received);
  if (run == 1) {
    return u"The bytes are no program text. Compare baud rate first, then data bits, parity and "
           u"stop bits, with the machine's settings.";
  }
  std::u16string words = kTry;
  words += u"a lower baud rate than " + IntegerText(settings.baud) + u". ";
  const std::u16string rate = LowerRate(settings, run);
  if (rate.empty()) return words + u"Look up the machine's rate and choose the same one.";
  return words + u"Try " + rate + u".";
}

}  // namespace

std::u16string LineAdvice(const platform::SerialSettings& settings, std::string_view received,
                          std::size_t errors) {
  if (received.size() < kLeastBytes) return {};
  const Counts counts = Count(received);
  const bool noisy = IsMoreThan(errors, kNoise, counts.all);
  const std::size_t characters = counts.all - counts.filling;
  if (characters == 0 && !noisy) return {};
  if (IsProgram(counts, characters)) {
    return FrameAdvice(settings, received, errors, noisy);
  }
  return !noisy && IsText(counts, characters) ? std::u16string() : RateAdvice(settings, received);
}

}  // namespace morva
