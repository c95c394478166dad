// UTF-8 and 16-bit text, both ways, with one defined answer for what is not well formed.
//
// A piece of bytes that cannot begin or go on as a character becomes one U+FFFD: the longest
// run that is the start of a well-formed character counts as one piece, every other byte as
// one of its own. Programs are nearly all ASCII, so sixteen such bytes go at a time.

#include <cstdint>
#include <cstring>

#include "platform/file.h"

namespace platform {
namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr std::size_t kStride = 16;

bool AllAscii(const char* bytes) {
  std::uint64_t low;
  std::uint64_t high;
  std::memcpy(&low, bytes, 8);
  std::memcpy(&high, bytes + 8, 8);
  return ((low | high) & 0x8080808080808080u) == 0;
}

unsigned char ByteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

// What a leading byte asks for: how many bytes follow it, its own bits, and the range of the
// first of them, which keeps overlong forms, surrogates and values above U+10FFFF out.
struct Lead {
  int following;
  std::uint32_t bits;
  unsigned char least;
  unsigned char most;
};

Lead ReadLead(unsigned char byte) {
  const std::uint32_t value = byte;
  if (byte >= 0xC2 && byte <= 0xDF) return {1, value & 0x1Fu, 0x80, 0xBF};
  if (byte == 0xE0) return {2, 0, 0xA0, 0xBF};
  if (byte == 0xED) return {2, 0xD, 0x80, 0x9F};
  if (byte >= 0xE1 && byte <= 0xEF) return {2, value & 0xFu, 0x80, 0xBF};
  if (byte == 0xF0) return {3, 0, 0x90, 0xBF};
  if (byte == 0xF4) return {3, 4, 0x80, 0x8F};
  if (byte >= 0xF1 && byte <= 0xF3) return {3, value & 7u, 0x80, 0xBF};
  return {0, 0, 0, 0};
}

// Reads one character above 127 at `at` and steps over it or over its ill-formed piece.
std::uint32_t ReadCharacter(std::string_view bytes, std::size_t& at) {
  const Lead lead = ReadLead(ByteAt(bytes, at));
  ++at;
  if (lead.following == 0) return kReplacement;
  std::uint32_t value = lead.bits;
  for (int i = 0; i < lead.following; ++i) {
    if (at == bytes.size()) return kReplacement;
    const unsigned char next = ByteAt(bytes, at);
    const unsigned char least = i == 0 ? lead.least : 0x80;
    const unsigned char most = i == 0 ? lead.most : 0xBF;
    if (next < least || next > most) return kReplacement;
    value = (value << 6) | (next & 0x3Fu);
    ++at;
  }
  return value;
}

bool AllAscii(const char16_t* units) {
  std::uint64_t words[kStride / 4];
  std::memcpy(words, units, sizeof words);
  return ((words[0] | words[1] | words[2] | words[3]) & 0xFF80FF80FF80FF80u) == 0;
}

std::size_t AsciiUnits(std::u16string_view text) {
  std::size_t count = 0;
  while (text.size() - count >= kStride && AllAscii(text.data() + count)) count += kStride;
  while (count < text.size() && text[count] < 0x80) ++count;
  return count;
}

void AppendAscii(std::string& out, std::u16string_view text) {
  const std::size_t from = out.size();
  out.resize(from + text.size());
  char* to = out.data() + from;
  // Strides of a known length are the ones that the compiler turns into wide moves.
  for (; text.size() >= kStride; text.remove_prefix(kStride), to += kStride) {
    for (std::size_t i = 0; i < kStride; ++i) to[i] = static_cast<char>(text[i]);
  }
  for (const char16_t unit : text) *to++ = static_cast<char>(unit);
}

void AppendUtf8(std::string& out, std::uint32_t value) {
  const auto put = [&out](std::uint32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (value < 0x80) {
    put(value);
  } else if (value < 0x800) {
    put(0xC0u | (value >> 6));
    put(0x80u | (value & 0x3Fu));
  } else if (value < 0x10000) {
    put(0xE0u | (value >> 12));
    put(0x80u | ((value >> 6) & 0x3Fu));
    put(0x80u | (value & 0x3Fu));
  } else {
    put(0xF0u | (value >> 18));
    put(0x80u | ((value >> 12) & 0x3Fu));
    put(0x80u | ((value >> 6) & 0x3Fu));
    put(0x80u | (value & 0x3Fu));
  }
}

}  // namespace

std::u16string FromUtf8(std::string_view bytes) {
  // Never more units than bytes: four bytes make two units, a bad byte makes one.
  std::u16string text(bytes.size(), u'\0');
  char16_t* out = text.data();
  std::size_t at = 0;
  while (at < bytes.size()) {
    while (bytes.size() - at >= kStride && AllAscii(bytes.data() + at)) {
      for (std::size_t i = 0; i < kStride; ++i) out[i] = static_cast<char16_t>(bytes[at + i]);
      out += kStride;
      at += kStride;
    }
    if (at == bytes.size()) break;
    if (ByteAt(bytes, at) < 0x80) {
      *out++ = static_cast<char16_t>(bytes[at++]);
      continue;
    }
    const std::uint32_t value = ReadCharacter(bytes, at);
    if (value < 0x10000) {
      *out++ = static_cast<char16_t>(value);
    } else {
      *out++ = static_cast<char16_t>(0xD800 + ((value - 0x10000) >> 10));
      *out++ = static_cast<char16_t>(0xDC00 + ((value - 0x10000) & 0x3FFu));
    }
  }
  text.resize(static_cast<std::size_t>(out - text.data()));
  return text;
}

std::string ToUtf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::size_t ascii = AsciiUnits(text.substr(i));
    AppendAscii(out, text.substr(i, ascii));
    i += ascii;
    if (i == text.size()) break;
    const std::uint32_t unit = text[i];
    if (unit < 0xD800 || unit > 0xDFFF) {
      AppendUtf8(out, unit);
      continue;
    }
    const bool pair =
        unit < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
    if (!pair) {
      AppendUtf8(out, kReplacement);
      continue;
    }
    AppendUtf8(out, 0x10000u + ((unit - 0xD800u) << 10) + (text[i + 1] - 0xDC00u));
    ++i;
  }
  return out;
}

}  // namespace platform
