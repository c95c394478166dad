// Whole files in and out, and the two ways between bytes and program text.
//
// Both ways run over texts of tens of megabytes at every open and save, so that plain ASCII
// between line ends goes eight characters at a time.

#include "documents/file_text.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>

#include "app/limits.h"
#include "platform/atomic_file.h"
#include "platform/file.h"
#include "text/codetext.h"

namespace morva {
namespace {

constexpr std::size_t kStride = 8;
constexpr std::size_t kPieceBytes = 4096;

// Windows-1252 from 0x80 to 0x9F; everything else is its own number. 0 is undefined.
constexpr char16_t kCodePage[] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80 to 87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,       // 88 to 8F
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90 to 97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,  // 98 to 9F
};

// NUL is filling, as punches put in front of a program, and counts for nothing.
bool IsBlank(char16_t c) {
  return c == u'\t' || c == u'\n' || c == u'\r' || c == u' ' || c == u'\0';
}

// How many of four units from the first on are from 0x0E to 0x7F, which go out as they are.
static_assert(std::endian::native == std::endian::little);
int PlainOfFour(const char16_t* units) {
  constexpr std::uint64_t kTop = 0x8000800080008000u;
  std::uint64_t lanes;
  std::memcpy(&lanes, units, 8);
  // The top bits keep a lane from borrowing from its neighbour or carrying into it.
  const std::uint64_t above = ((lanes & ~kTop) + 0x7F807F807F807F80u) | lanes;
  const std::uint64_t below = ~((lanes | kTop) - 0x000E000E000E000Eu);
  return std::countr_zero((above | below) & kTop) / 16;
}

// Gathers output in a piece that stays in the cache, so that the long string is touched once.
struct Writer {
  std::string out;
  std::size_t used = 0;
  char piece[kPieceBytes];

  void Flush() {
    out.append(piece, used);
    used = 0;
  }
  void MakeRoom() {
    if (used + 2 * kStride > kPieceBytes) Flush();
  }
};

// Of eight units: how many go out as they are, 8 or 7 where all are from 0x01 to 0x7F and every
// line end among them is a CR LF. A CR that comes last is left to those behind it. Else 0.
std::size_t PlainOfEight(const char16_t* units) {
  constexpr std::uint64_t kOnes = 0x0001000100010001u;
  constexpr std::uint64_t kTops = kOnes << 15;
  std::uint64_t returned = 0;  // the lane before was a CR
  for (int half = 0; half < 2; ++half) {
    std::uint64_t lanes;
    std::memcpy(&lanes, units + 4 * half, 8);
    // A lane of 0 borrows from the next and has its own top bits set.
    if ((lanes | (lanes - kOnes)) & (kOnes * 0xFF80)) return 0;
    // No lane is above 0x7F, so that none carries: its top bit is set unless it is the one wanted.
    const auto lanesOf = [lanes](std::uint64_t unit) {
      return ~((lanes ^ (kOnes * unit)) + kOnes * 0x7FFF) & kTops;
    };
    const std::uint64_t returns = lanesOf(u'\r');
    if (lanesOf(u'\n') != (returns << 16 | returned)) return 0;
    returned = returns >> 48;
  }
  return returned ? kStride - 1 : kStride;
}

// Copies `text` without NULs, with CR LF for every line end and "?" for what is no ASCII. Whether
// there was such a character.
bool WriteBody(std::u16string_view text, Writer& writer) {
  bool lost = false;
  const char16_t* at = text.data();
  const char16_t* const end = at + text.size();
  while (at != end) {
    writer.MakeRoom();
    if (static_cast<std::size_t>(end - at) >= kStride) {
      // All eight are copied; only those that are plain are counted.
      for (std::size_t i = 0; i < kStride; ++i) {
        writer.piece[writer.used + i] = static_cast<char>(at[i]);
      }
      if (const std::size_t plain = PlainOfEight(at)) {
        writer.used += plain;
        at += plain;
        continue;
      }
      const int plain = PlainOfFour(at);
      writer.used += static_cast<std::size_t>(plain);
      at += plain;
    }
    const char16_t unit = *at++;
    if (unit == u'\0') continue;
    if (unit == u'\r' || unit == u'\n') {
      if (unit == u'\r' && at != end && *at == u'\n') ++at;
      writer.piece[writer.used++] = '\r';
      writer.piece[writer.used++] = '\n';
    } else {
      lost = lost || unit > 127;
      writer.piece[writer.used++] = unit > 127 ? '?' : static_cast<char>(unit);
    }
  }
  writer.Flush();
  return lost;
}

// Which of the two percent lines a text to the control still needs.
void MissingPercents(std::u16string_view text, bool& first, bool& last) {
  first = last = true;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (IsBlank(text[i])) continue;
    first = text[i] != u'%';
    break;
  }
  for (std::size_t i = text.size(); i-- > 0;) {
    if (IsBlank(text[i])) continue;
    last = text[i] != u'%';
    break;
  }
}

}  // namespace

bool ReadWholeFile(std::u16string_view path, std::string& bytes) {
  return platform::ReadBytes(path, kMaxReadBytes, bytes) == platform::ReadAnswer::Read;
}

std::u16string UnreadFileWords(std::u16string_view path) {
  const platform::FileFigures file = platform::FiguresOf(path);
  std::u16string words(path);
  if (file.exists && file.size > kMaxReadBytes) {
    words += u"  (" + IntegerText(static_cast<std::int64_t>(file.size));
    return words + u" bytes; the limit is " + IntegerText(kMaxReadBytes) + u", 32 MiB)";
  }
  return words + (file.exists ? u"  (it cannot be read)" : u"  (it is not there)");
}

bool SaveFileAtomic(std::u16string_view path, std::string_view bytes) {
  return path.size() <= kSavePathUnits && platform::WriteFileAtomic(path, bytes);
}

namespace {

// Counted from 1; CR LF, CR and LF are line ends alike.
int LineOfPlace(std::u16string_view text, std::size_t place) {
  int line = 1;
  for (std::size_t i = 0; i < place; ++i) {
    const bool behindReturn = text[i] == u'\n' && i > 0 && text[i - 1] == u'\r';
    line += (text[i] == u'\r' || text[i] == u'\n') && !behindReturn;
  }
  return line;
}

std::string Normalised(std::u16string_view text, bool wrap, bool& lost) {
  bool first = false;
  bool last = false;
  if (wrap) MissingPercents(text, first, last);
  Writer writer;
  writer.out.reserve(text.size() + text.size() / 32 + 32);
  if (first) writer.out += "%\r\n";
  lost = WriteBody(text, writer);
  if (!writer.out.empty() && writer.out.back() != '\n') writer.out += "\r\n";
  if (last) writer.out += "%\r\n";
  return std::move(writer.out);
}

}  // namespace

std::string NormaliseOutputText(std::u16string_view text, bool wrap) {
  bool lost = false;
  return Normalised(text, wrap, lost);
}

std::string ProgramBytes(std::u16string_view text, bool& lost) {
  return Normalised(text, false, lost);
}

OutputFigures MeasureOutput(std::u16string_view text, std::span<const std::size_t> restored) {
  OutputFigures figures;
  char16_t before = 0;
  char16_t last = 0;
  const char16_t* at = text.data();
  const char16_t* const end = at + text.size();
  while (at != end) {
    std::size_t plain = static_cast<std::size_t>(end - at) >= kStride ? PlainOfEight(at) : 0;
    if (plain == 0 && end - at >= 4) plain = static_cast<std::size_t>(PlainOfFour(at));
    if (plain > 0) {
      figures.bytes += plain;
      at += plain;
      before = last = at[-1];
      continue;
    }
    const char16_t unit = *at++;
    const bool behindReturn = unit == u'\n' && before == u'\r';
    before = unit;
    if (unit == u'\0' || behindReturn) continue;
    last = unit;
    figures.bytes += unit == u'\r' || unit == u'\n' ? 2 : 1;
    const bool secondOfPair = unit >= 0xDC00 && unit <= 0xDFFF;
    if (unit <= 127 || secondOfPair) continue;
    const auto place = static_cast<std::size_t>(at - 1 - text.data());
    if (std::ranges::binary_search(restored, place)) continue;
    ++figures.lost;
    if (figures.firstLostLine == 0) figures.firstLostLine = LineOfPlace(text, place);
  }
  if (figures.bytes > 0 && last != u'\r' && last != u'\n') figures.bytes += 2;
  return figures;
}

bool TakeProgram(std::string& bytes, std::u16string& text) {
  const std::size_t nul = bytes.find('\0');
  const bool whole =
      nul == bytes.npos ||
      bytes.find_first_not_of(std::string_view("\0\t\n\r \x1A", 6), nul) == bytes.npos;
  if (whole && nul != bytes.npos) bytes.resize(nul);
  text = DecodeProgram(bytes);
  return whole;
}

bool TakeByteOrderMark(std::u16string& text) {
  if (text.empty() || text[0] != 0xFEFF) return false;
  text.erase(0, 1);
  return true;
}

std::u16string DecodeProgram(std::string_view bytes) {
  std::u16string text = platform::FromUtf8(bytes);
  if (text.empty()) text = DecodeCodePage(bytes);
  std::erase(text, u'\0');
  return text;
}

std::u16string DecodeCodePage(std::string_view bytes) {
  std::u16string text(bytes.size(), u'\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    char16_t unit = byte;
    if (byte >= 0x80 && byte <= 0x9F) {
      unit = kCodePage[byte - 0x80] ? kCodePage[byte - 0x80] : char16_t{0xFFFD};
    }
    text[i] = unit;
  }
  return text;
}

}  // namespace morva
