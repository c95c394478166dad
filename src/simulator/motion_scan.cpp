#include "simulator/motion_scan.h"

#include <cmath>
#include <cstddef>
#include <limits>

#include "library/units.h"
#include "simulator/motion_run.h"
#include "text/codetext.h"
#include "text/series_trig.h"

namespace morva {

namespace {

// What a character means outside a comment. Words come first, axes and centre before the
// rest; every letter that is not here is stepped over with its number.
enum CharClass : unsigned char {
  kStep = 0,
  kX,
  kY,
  kZ,
  kI,
  kJ,
  kR,
  kG,
  kT,
  kOpen,       // "(": the rest of the comment is stepped over
  kSemicolon,  // the rest of the line is stepped over
  kReturn,
  kFeed,
  kEnd,  // NUL ends the text
};
inline constexpr int kWordSlots = kR + 1;

struct ClassTable {
  unsigned char of[256] = {};
  constexpr ClassTable() {
    constexpr char letters[] = "XYZIJRGT";
    for (int i = 0; i < 8; ++i) {
      const auto upper = static_cast<unsigned char>(letters[i]);
      of[upper] = static_cast<unsigned char>(kX + i);
      of[upper + 32] = static_cast<unsigned char>(kX + i);
    }
    of[static_cast<int>('(')] = kOpen;
    of[static_cast<int>(';')] = kSemicolon;
    of[13] = kReturn;
    of[10] = kFeed;
    of[0] = kEnd;
  }
};
constexpr ClassTable kClasses;

inline unsigned ClassOf(char16_t c) { return c < 256 ? static_cast<unsigned>(kClasses.of[c]) : 0u; }

// digit times place for the first forty fraction digits, the place being multiplied by 0.1
// each time, as ParseDecimal does.
inline constexpr int kFastFraction = 40;
struct FractionTable {
  double of[kFastFraction][10] = {};
  constexpr FractionTable() {
    double place = 0.1;
    for (auto& row : of) {
      for (int digit = 0; digit < 10; ++digit) row[digit] = digit * place;
      place *= 0.1;
    }
  }
};
constexpr FractionTable kFraction;

enum GAction : unsigned char {
  kNothing = 0,
  kMotion,
  kAbsolute,
  kIncremental,
  kInch,
  kMetric,
  kPlane,
  kNoMotion,
  kCancelCycle,
};
struct GTable {
  GAction of[100] = {};
  constexpr GTable() {
    for (int g : {0, 1, 2, 3, 81, 82, 83, 84, 85, 86, 87, 88, 89}) of[g] = kMotion;
    for (int g : {4, 10, 28, 30, 53, 92}) of[g] = kNoMotion;
    for (int g : {17, 18, 19}) of[g] = kPlane;
    of[90] = kAbsolute;
    of[91] = kIncremental;
    of[20] = kInch;
    of[21] = kMetric;
    of[80] = kCancelCycle;
  }
};
constexpr GTable kGCodes;

struct Modal {
  int motion = 0;  // 0 to 3, or a canned cycle from 81 to 89
  int plane = 17;
  bool absolute = true;
  bool displayMetric = false;
  double scale = 1.0;  // program units to display units
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

struct LineWords {
  double value[kWordSlots];
  unsigned present = 0;  // bit of each class
  bool noMotion = false;
};

constexpr unsigned Bit(CharClass c) { return 1u << c; }
inline constexpr unsigned kAxisBits = Bit(kX) | Bit(kY) | Bit(kZ);
inline constexpr unsigned kCentreBits = Bit(kI) | Bit(kJ);

// Up to the last line end of the text every loop stops there by itself; only the piece behind
// it has to look for the end, which then reads as NUL.
template <bool kBounded>
inline char16_t Peek(const char16_t* p, const char16_t* end) {
  if (kBounded && p == end) return 0;
  return *p;
}

inline unsigned DigitOf(char16_t c) { return static_cast<unsigned>(c) - u'0'; }

// A word's number is at most 62 signs, digits and points; what follows is stepped over.
[[gnu::noinline]] const char16_t* TakeLongNumber(const char16_t* p, const char16_t* end,
                                                 double& value) {
  constexpr int kNumberUnits = 62;
  const char16_t* q = p;
  if (q != end && (*q == u'+' || *q == u'-')) ++q;
  while (q != end && q - p < kNumberUnits && (DigitOf(*q) <= 9 || *q == u'.')) ++q;
  value = ParseDecimal(std::u16string_view(p, static_cast<std::size_t>(q - p)), 0.0);
  return q;
}

// The number straight behind a letter. False: there is none, and only the letter is stepped
// over. A second point ends the number; the rest steps over by itself.
template <bool kBounded>
inline bool TakeNumber(const char16_t*& p, const char16_t* end, double& value) {
  // Below 16 digits an integer converts to the very double that multiplying by ten gives.
  constexpr std::ptrdiff_t kExactDigits = 15;
  const char16_t* q = p;
  char16_t c = Peek<kBounded>(q, end);
  const bool negative = c == u'-';
  const bool sign = negative || c == u'+';
  if (sign) c = Peek<kBounded>(++q, end);
  const char16_t* const digits = q;
  std::int64_t whole = 0;
  while (DigitOf(c) <= 9) {
    if (q - digits == kExactDigits) {
      p = TakeLongNumber(p, end, value);
      return true;
    }
    whole = whole * 10 + static_cast<std::int64_t>(DigitOf(c));
    c = Peek<kBounded>(++q, end);
  }
  std::ptrdiff_t count = q - digits;
  double sum = static_cast<double>(whole);
  if (c == u'.') {
    c = Peek<kBounded>(++q, end);
    int place = 0;
    while (DigitOf(c) <= 9) {
      if (place == kFastFraction) {
        p = TakeLongNumber(p, end, value);
        return true;
      }
      sum += kFraction.of[place++][DigitOf(c)];
      c = Peek<kBounded>(++q, end);
    }
    count += place;
  } else if (count == 0 && !sign) {
    return false;
  }
  p = q;
  value = count == 0 ? 0.0 : negative ? -sum : sum;  // a lone sign or point counts as 0
  return true;
}

inline void TakeG(Modal& m, LineWords& words, double value) {
  if (!(value >= 0.0 && value < 100.0)) return;
  const int code = static_cast<int>(value);
  const bool cycle = value >= 81.0 && value <= 89.0;
  if (static_cast<double>(code) != value && !cycle) return;
  switch (kGCodes.of[code]) {
    case kNothing:
      break;
    case kMotion:
      m.motion = code;
      break;
    case kAbsolute:
      m.absolute = true;
      break;
    case kIncremental:
      m.absolute = false;
      break;
    case kInch:
      m.scale = m.displayMetric ? kMmPerInch : 1.0;
      break;
    case kMetric:
      m.scale = m.displayMetric ? 1.0 : kInchPerMm;
      break;
    case kPlane:
      m.plane = code;
      break;
    case kNoMotion:
      words.noMotion = true;
      break;
    case kCancelCycle:
      m.motion = 0;
      break;
  }
}

inline std::int32_t ToolNumber(double value) {
  constexpr double kMost = std::numeric_limits<std::int32_t>::max();
  if (value >= kMost) return std::numeric_limits<std::int32_t>::max();
  if (value <= -kMost - 1.0) return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(value);
}

// Once a point has found the table full nothing can enter it any more.
inline bool TableClosed() { return motionRun.out->fullAtLine >= 0; }

void AddArrival(double x, double y, double z, std::int32_t line) {
  motionRun.jump = true;
  AddMotionPoint(x, y, z, false, line);
}

struct Target {
  double x;
  double y;
  double z;
};

// A true arc in the XY plane as chords of at most one degree; helices run along Z.
[[gnu::noinline]] void AddArc(const Modal& m, const LineWords& words, const Target& target,
                              std::int32_t line) {
  constexpr double kChord = 0.0174532925199433;
  if (RunDropsLine(line)) {
    motionRun.jump = true;
    return;
  }
  const double cx = m.x + ((words.present & Bit(kI)) ? words.value[kI] * m.scale : 0.0);
  const double cy = m.y + ((words.present & Bit(kJ)) ? words.value[kJ] * m.scale : 0.0);
  const double sx = m.x - cx;
  const double sy = m.y - cy;
  const double ex = target.x - cx;
  const double ey = target.y - cy;
  const double rStart = std::sqrt(sx * sx + sy * sy);
  const double rEnd = std::sqrt(ex * ex + ey * ey);
  if (!(rStart > 0.0) || std::fabs(rStart - rEnd) >= rStart * 0.001 + 0.0001) {
    AddArrival(target.x, target.y, target.z, line);
    return;
  }
  const double start = std::atan2(sy, sx);
  double sweep = std::atan2(ey, ex) - start;
  if (m.motion == 2) {
    while (!(sweep < -1e-10)) sweep -= kTwoPi;
  } else {
    while (!(sweep > 1e-10)) sweep += kTwoPi;
  }
  const int chords = static_cast<int>(std::fabs(sweep) / kChord) + 1;
  for (int i = 1; i < chords && !TableClosed(); ++i) {
    const double angle = start + sweep * i / chords;
    AddMotionPoint(cx + rStart * std::cos(angle), cy + rStart * std::sin(angle),
                   m.z + (target.z - m.z) * i / chords, false, line);
  }
  if (!TableClosed()) AddMotionPoint(target.x, target.y, target.z, false, line);
}

inline double AxisTarget(const Modal& m, const LineWords& words, CharClass axis, double position) {
  if (!(words.present & Bit(axis))) return position;
  const double moved = words.value[axis] * m.scale;
  return m.absolute ? moved : position + moved;
}

// What a whole line does, by its end state.
inline void EndLine(Modal& m, const LineWords& words, std::int32_t line) {
  if (words.noMotion) {
    motionRun.jump = true;
    return;
  }
  if (words.present == 0) return;
  const bool axis = (words.present & kAxisBits) != 0;
  const Target target = {AxisTarget(m, words, kX, m.x), AxisTarget(m, words, kY, m.y),
                         AxisTarget(m, words, kZ, m.z)};
  if (!TableClosed()) {
    if (m.motion <= 1) {
      if (axis) AddMotionPoint(target.x, target.y, target.z, m.motion == 0, line);
    } else if (m.motion <= 3 && m.plane == 17 && (words.present & kCentreBits) &&
               !(words.present & Bit(kR))) {
      AddArc(m, words, target, line);
    } else if (axis) {
      AddArrival(target.x, target.y, target.z, line);
    }
  }
  m.x = target.x;
  m.y = target.y;
  m.z = target.z;
}

// Words of one line from `p` on. Stops on the line end, or on what ends the text.
template <bool kBounded>
inline const char16_t* ScanWords(const char16_t* p, const char16_t* end, Modal& m,
                                 LineWords& words) {
  for (;;) {
    unsigned kind;
    while ((kind = ClassOf(Peek<kBounded>(p, end))) == kStep) ++p;
    if (kind <= kT) {
      double value;
      ++p;
      if (!TakeNumber<kBounded>(p, end, value)) continue;
      if (kind < kWordSlots) {
        words.value[kind] = value;
        words.present |= 1u << kind;
      } else if (kind == kG) {
        TakeG(m, words, value);
      } else {
        motionRun.tool = ToolNumber(value);
      }
      continue;
    }
    if (kind >= kReturn) return p;
    // A comment ends at its first ")" and, like ";", never beyond the line.
    const bool parenthesis = kind == kOpen;
    char16_t c;
    do {
      c = Peek<kBounded>(++p, end);
    } while (c != u'\r' && c != u'\n' && c != 0 && !(parenthesis && c == u')'));
  }
}

// Lines up to `end`. False: a NUL ended the text.
template <bool kBounded>
bool ScanLines(const char16_t* p, const char16_t* end, Modal& m, std::int32_t& line) {
  while (p != end) {
    LineWords words;
    p = ScanWords<kBounded>(p, end, m, words);
    EndLine(m, words, line);
    ++line;
    if (p == end || *p == 0) return false;
    p += *p == u'\r' && p + 1 != end && p[1] == u'\n' ? 2 : 1;
  }
  return true;
}

}  // namespace

void ScanMotion(std::u16string_view text, bool metric) {
  Modal m;
  m.displayMetric = metric;
  std::int32_t line = 0;
  std::size_t whole = text.size();
  while (whole > 0 && text[whole - 1] != u'\r' && text[whole - 1] != u'\n') --whole;
  const char16_t* const first = text.data();
  const char16_t* const last = first + whole;
  if (!ScanLines<false>(first, last, m, line)) return;
  ScanLines<true>(last, first + text.size(), m, line);
}

}  // namespace morva
