#include "dnc/line_advice.h"

#include <bit>
#include <cstdint>
#include <cstdlib>

#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::size_t kLeastBytes = 12;
constexpr double kNearlyAll = 0.9;
constexpr double kMost = 0.8;
constexpr double kNoise = 0.05;       // a worse share of damaged bytes is no cable
constexpr double kFitsWithin = 0.04;  // of all bytes, between errors found and errors expected
constexpr std::int32_t kParityNone = 0;
constexpr std::int32_t kParityOdd = 1;
constexpr std::int32_t kParityEven = 2;

constexpr char16_t kTry[] = u"The bytes look like another ";

// What a program consists of, in its lower seven bits.
bool IsProgramUnit(unsigned char byte) {
  const int c = byte & 0x7F;
  return (c >= 0x20 && c < 0x7F) || c == '\r' || c == '\n' || c == '\t' || c == 0 || c == 0x11 ||
         c == 0x12 || c == 0x13 || c == 0x14;
}

bool IsOdd(unsigned char byte, int bits) {
  return (std::popcount(static_cast<unsigned>(byte & ((1 << bits) - 1))) & 1) != 0;
}

struct Counts {
  std::size_t all = 0;
  std::size_t program = 0;
  std::size_t odd = 0;     // lower seven bits with an odd number of ones
  std::size_t topOdd = 0;  // the eighth bit makes the number of ones odd
  std::size_t top = 0;     // the eighth bit is set
  std::size_t twice = 0;   // bits in pairs: a sender at half the rate
};

// A start bit of twice the length fills the first data bit as well; the bits behind it come in
// pairs.
bool HasDoubledBits(unsigned char byte) {
  const auto bit = [byte](int i) { return (byte >> i) & 1; };
  return bit(0) == 0 && bit(1) == bit(2) && bit(3) == bit(4) && bit(5) == bit(6);
}

Counts Count(std::string_view received) {
  Counts counts;
  for (const char c : received) {
    const auto byte = static_cast<unsigned char>(c);
    ++counts.all;
    counts.program += IsProgramUnit(byte) ? 1 : 0;
    counts.odd += IsOdd(byte, 7) ? 1 : 0;
    counts.topOdd += IsOdd(byte, 8) ? 1 : 0;
    counts.top += (byte & 0x80) != 0 ? 1 : 0;
    counts.twice += HasDoubledBits(byte) ? 1 : 0;
  }
  return counts;
}

std::u16string TryFrame(int bits, const char16_t* parity) {
  return std::u16string(kTry) + u"parity. Try data bits " + IntegerText(bits) + u", parity " +
         parity + u", or the machine's own setting for this.";
}

bool Fits(std::size_t errors, std::size_t expected, std::size_t all) {
  const double off = std::abs(static_cast<double>(errors) - static_cast<double>(expected));
  return off <= kFitsWithin * static_cast<double>(all);
}

// The characters are a program's; only the bit behind them, or the eighth, is not as expected.
std::u16string FrameAdvice(const platform::SerialSettings& settings, const Counts& counts,
                           std::size_t errors) {
  const std::size_t even = counts.all - counts.odd;
  if (settings.dataBits == 8) {
    // The eighth bit is the sender's parity bit.
    if (counts.top == 0) return {};
    if (counts.topOdd == 0) return TryFrame(7, u"Even");
    if (counts.topOdd == counts.all) return TryFrame(7, u"Odd");
    return {};
  }
  if (settings.parity == kParityNone) {
    // The parity bit stands where a stop bit should: each 0 is a framing error.
    if (Fits(errors, even, counts.all)) return TryFrame(7, u"Even");
    return Fits(errors, counts.odd, counts.all) ? TryFrame(7, u"Odd") : std::u16string();
  }
  const bool wantsEven = settings.parity == kParityEven;
  if (static_cast<double>(errors) >= kNearlyAll * static_cast<double>(counts.all)) {
    return TryFrame(7, wantsEven ? u"Odd" : u"Even");
  }
  // The eighth bit of the sender's data, always 0 in a program, stands for parity; so does, where
  // there are no eight bits and no parity, the stop bit, always 1.
  const std::size_t atZero = wantsEven ? counts.odd : even;
  const std::size_t atOne = counts.all - atZero;
  if (Fits(errors, atZero, counts.all)) return TryFrame(8, u"None");
  return Fits(errors, atOne, counts.all) ? TryFrame(7, u"None") : std::u16string();
}

std::u16string RateAdvice(const platform::SerialSettings& settings, const Counts& counts) {
  std::u16string words = std::u16string(kTry) + u"baud rate than " + IntegerText(settings.baud);
  if (static_cast<double>(counts.twice) >= kMost * static_cast<double>(counts.all)) {
    return words + u". Try " + IntegerText(settings.baud / 2) + u".";
  }
  return words +
         u". Look up the machine's rate and choose the same one; the next higher is the "
         u"first to try.";
}

}  // namespace

std::u16string LineAdvice(const platform::SerialSettings& settings, std::string_view received,
                          std::size_t errors) {
  if (received.size() < kLeastBytes) return {};
  const Counts counts = Count(received);
  const auto all = static_cast<double>(counts.all);
  if (static_cast<double>(counts.program) < kNearlyAll * all) return RateAdvice(settings, counts);
  if (settings.dataBits != 8 && static_cast<double>(errors) <= kNoise * all) return {};
  return FrameAdvice(settings, counts, errors);
}

}  // namespace morva
