#include "dnc/line_text.h"

#include <algorithm>
#include <string>

namespace morva {

namespace {

constexpr char16_t kRubout = 0x7F;  // DEL, filling on paper tape
constexpr char16_t kFirstDeviceControl = 0x11;
constexpr char16_t kLastDeviceControl = 0x14;

bool IsFilling(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte <= ' ' || byte == kRubout;
}

std::string_view WithoutFillings(std::string_view bytes) {
  while (!bytes.empty() && IsFilling(bytes.front())) bytes.remove_prefix(1);
  while (!bytes.empty() && IsFilling(bytes.back())) bytes.remove_suffix(1);
  return bytes;
}

// Lines that begin with a "%", fillings aside. One in a comment is none.
struct Percents {
  std::size_t count = 0;
  std::size_t last = 0;  // the place of the last one
};

Percents PercentLines(std::string_view program) {
  Percents percents;
  bool begins = true;
  for (std::size_t i = 0; i < program.size(); ++i) {
    const char c = program[i];
    if (begins && c == '%') {
      ++percents.count;
      percents.last = i;
    }
    begins = c == '\r' || c == '\n' || (begins && IsFilling(c));
  }
  return percents;
}

}  // namespace

bool IsTapeCode(char16_t c) {
  return (c >= kFirstDeviceControl && c <= kLastDeviceControl) || c == kRubout;
}

std::size_t DropTapeCodes(std::string& bytes) {
  return std::erase_if(bytes, [](char c) { return IsTapeCode(static_cast<unsigned char>(c)); });
}

std::size_t DropTapeCodes(std::u16string& text) { return std::erase_if(text, IsTapeCode); }

bool IsFillingOnly(std::string_view bytes) {
  return std::ranges::all_of(bytes, [](char c) { return IsFilling(c) || c == '%'; });
}

bool LacksClosingPercent(std::string_view bytes) {
  const std::string_view program = WithoutFillings(bytes);
  return program.starts_with('%') && PercentLines(program).count % 2 != 0;
}

bool IsWholeProgram(std::string_view bytes) {
  const std::string_view program = WithoutFillings(bytes);
  return program.starts_with('%') && PercentLines(program).last + 1 == program.size() &&
         !LacksClosingPercent(program) && !IsFillingOnly(program);
}

}  // namespace morva
