#include "simulator/motion_scan.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>

#include "library/units.h"
#include "simulator/motion_run.h"
#include "simulator/path_notes.h"
#include "text/codetext.h"
#include "text/series_trig.h"

namespace morva {

namespace {

// What a character means outside a comment. Words come first, axes and centre before the
// rest; every letter that is not here is stepped over with its number. From kM to kSlash
// nothing acts on the path: these only tell that a line would move the machine otherwise.
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
  kM,
  kK,
  kRotary,     // A, B, C
  kHash,       // "#"
  kBracket,    // "["
  kSlash,      // "/"
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
    constexpr char letters[] = "XYZIJRGTMKABC";
    for (int i = 0; i < 13; ++i) {
      const auto upper = static_cast<unsigned char>(letters[i]);
      const int kind = kX + i < kRotary ? kX + i : kRotary;
      of[upper] = static_cast<unsigned char>(kind);
      of[upper + 32] = static_cast<unsigned char>(kind);
    }
    of[static_cast<int>('#')] = kHash;
    of[static_cast<int>('[')] = kBracket;
    of[static_cast<int>('/')] = kSlash;
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
  kHome,     // no motion in the path, but one of the machine
  kMachine,  // the same where an axis is named
  kCancelCycle,
  kUnknownCycle,
  kPocket,
  kMacro,
};
struct GTable {
  GAction of[100] = {};
  constexpr GTable() {
    for (int g : {0, 1, 2, 3, 81, 82, 83, 84, 85, 86, 87, 88, 89}) of[g] = kMotion;
    for (int g : {4, 10, 92}) of[g] = kNoMotion;
    for (int g : {28, 30}) of[g] = kHome;
    of[53] = kMachine;
    // The control moves by these, the path goes on by the motion that was in force.
    for (int g : {73, 74, 76, 77}) of[g] = kUnknownCycle;
    for (int g : {12, 13, 47, 70, 71, 72}) of[g] = kPocket;
    for (int g : {65, 66}) of[g] = kMacro;
    for (int g : {17, 18, 19}) of[g] = kPlane;
    of[90] = kAbsolute;
    of[91] = kIncremental;
    of[20] = kInch;
    of[21] = kMetric;
    of[80] = kCancelCycle;
  }
};
constexpr GTable kGCodes;
inline constexpr double kGeneralPocket = 150.0;  // beyond the table

struct Modal {
  int motion = 0;  // 0 to 3, or a canned cycle from 81 to 89
  int plane = 17;
  bool absolute = true;
  bool displayMetric = false;
  bool unknownCycle = false;  // a cycle is in force that the path does not know
  bool ended = false;         // M30 or M02 stood on an earlier line
  double scale = 1.0;         // program units to display units
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

struct LineWords {
  double value[kWordSlots];
  unsigned present = 0;  // bit of each class
  unsigned seen = 0;     // bits of notes and of kSeen...: what makes the line worth a second look
  bool noMotion = false;
};

constexpr unsigned Bit(CharClass c) { return 1u << c; }
constexpr unsigned Bit(PathNote note) { return 1u << static_cast<unsigned>(note); }

// Beside the notes in LineWords::seen; alone they are none yet.
enum Seen : unsigned {
  kSeenEnd = 1u << kPathNotes,
  kSeenSlash = kSeenEnd << 1,
  kSeenExpression = kSeenEnd << 2,  // "#" or "[" anywhere
  kSeenMachine = kSeenEnd << 3,
  kSeenRotary = kSeenEnd << 4,
  kSeenK = kSeenEnd << 5,
  kSeenBlankG = kSeenEnd << 6,  // a G word that a blank takes apart
};
inline constexpr unsigned kNotShown =
    Bit(PathNote::BehindEnd) - 1;  // all kinds of lines that are not drawn
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
  if (!(value >= 0.0 && value < 100.0)) {
    if (value == kGeneralPocket) words.seen |= Bit(PathNote::Pockets);
    return;
  }
  const int code = static_cast<int>(value);
  const bool cycle = value >= 81.0 && value <= 89.0;
  if (static_cast<double>(code) != value && !cycle) return;
  switch (kGCodes.of[code]) {
    case kNothing:
      break;
    case kMotion:
      m.motion = code;
      m.unknownCycle = false;
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
    case kHome:
      words.noMotion = true;
      words.seen |= Bit(PathNote::Home);
      break;
    case kMachine:
      words.noMotion = true;
      words.seen |= kSeenMachine;
      break;
    case kCancelCycle:
      m.motion = 0;
      m.unknownCycle = false;
      break;
    case kUnknownCycle:
      m.unknownCycle = true;
      break;
    case kPocket:
      words.seen |= Bit(PathNote::Pockets);
      break;
    case kMacro:
      words.seen |= Bit(PathNote::Macros);
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

struct ArcCentre {
  double x;
  double y;
  double radius;
  bool fits;  // start and end are about as far from it
};

inline ArcCentre CentreOf(const Modal& m, const LineWords& words, const Target& target) {
  const double cx = m.x + ((words.present & Bit(kI)) ? words.value[kI] * m.scale : 0.0);
  const double cy = m.y + ((words.present & Bit(kJ)) ? words.value[kJ] * m.scale : 0.0);
  const double sx = m.x - cx;
  const double sy = m.y - cy;
  const double ex = target.x - cx;
  const double ey = target.y - cy;
  const double rStart = std::sqrt(sx * sx + sy * sy);
  const double rEnd = std::sqrt(ex * ex + ey * ey);
  const bool fits = rStart > 0.0 && !(std::fabs(rStart - rEnd) >= rStart * 0.001 + 0.0001);
  return {cx, cy, rStart, fits};
}

// A true arc in the XY plane as chords of at most one degree; helices run along Z.
[[gnu::noinline]] void AddArc(const Modal& m, const ArcCentre& centre, const Target& target,
                              std::int32_t line) {
  constexpr double kChord = 0.0174532925199433;
  if (RunDropsLine(line)) {
    motionRun.jump = true;
    return;
  }
  if (!centre.fits) {
    AddArrival(target.x, target.y, target.z, line);
    return;
  }
  const double start = std::atan2(m.y - centre.y, m.x - centre.x);
  double sweep = std::atan2(target.y - centre.y, target.x - centre.x) - start;
  if (m.motion == 2) {
    while (!(sweep < -1e-10)) sweep -= kTwoPi;
  } else {
    while (!(sweep > 1e-10)) sweep += kTwoPi;
  }
  const int chords = static_cast<int>(std::fabs(sweep) / kChord) + 1;
  for (int i = 1; i < chords && !TableClosed(); ++i) {
    const double angle = start + sweep * i / chords;
    AddMotionPoint(centre.x + centre.radius * std::cos(angle),
                   centre.y + centre.radius * std::sin(angle), m.z + (target.z - m.z) * i / chords,
                   false, line);
  }
  if (!TableClosed()) AddMotionPoint(target.x, target.y, target.z, false, line);
}

inline double AxisTarget(const Modal& m, const LineWords& words, CharClass axis, double position) {
  if (!(words.present & Bit(axis))) return position;
  const double moved = words.value[axis] * m.scale;
  return m.absolute ? moved : position + moved;
}

// Why an arc or a cycle is no line in the path.
inline unsigned ArrivalNote(const Modal& m, const LineWords& words) {
  if (m.motion > 3) return Bit(PathNote::Cycles);
  if (m.plane != 17) return Bit(PathNote::OtherPlanes);
  return Bit((words.present & Bit(kR)) ? PathNote::RArcs : PathNote::BadArcs);
}

// What a whole line does, by its end state.
inline void EndLine(Modal& m, LineWords& words, std::int32_t line) {
  if (words.noMotion) {
    motionRun.jump = true;
    return;
  }
  if (words.present == 0) return;
  const bool axis = (words.present & kAxisBits) != 0;
  const Target target = {AxisTarget(m, words, kX, m.x), AxisTarget(m, words, kY, m.y),
                         AxisTarget(m, words, kZ, m.z)};
  if (m.motion <= 1) {
    if (axis && !TableClosed()) {
      AddMotionPoint(target.x, target.y, target.z, m.motion == 0, line);
    }
  } else if (m.motion <= 3 && m.plane == 17 && (words.present & kCentreBits) &&
             !(words.present & Bit(kR))) {
    const ArcCentre centre = CentreOf(m, words, target);
    if (!centre.fits) words.seen |= Bit(PathNote::BadArcs);
    if (!TableClosed()) AddArc(m, centre, target, line);
  } else if (axis) {
    words.seen |= ArrivalNote(m, words);
    if (!TableClosed()) AddArrival(target.x, target.y, target.z, line);
  } else if (m.motion <= 3 && m.plane != 17 && (words.present & kCentreBits)) {
    words.seen |= Bit(PathNote::OtherPlanes);
  }
  m.x = target.x;
  m.y = target.y;
  m.z = target.z;
}

// The kinds for which a line is not shown, as bits of notes.
unsigned KindsOf(const Modal& m, const LineWords& words) {
  constexpr unsigned kMissed =
      Bit(PathNote::Macros) | Bit(PathNote::Brackets) | Bit(PathNote::Blanks);
  const bool axis = (words.present & kAxisBits) != 0;
  const bool rotary = (words.seen & kSeenRotary) != 0;
  unsigned kinds = words.seen & kNotShown;
  const bool places = axis || rotary || (kinds & kMissed) != 0;
  if (places && (words.seen & kSeenMachine)) kinds |= Bit(PathNote::Home);
  if (words.noMotion) {
    return kinds & Bit(PathNote::Home) ? kinds : kinds & Bit(PathNote::Calls);
  }
  if (places && (words.seen & kSeenBlankG)) kinds |= Bit(PathNote::Blanks);
  if (axis && m.unknownCycle) kinds |= Bit(PathNote::Cycles);
  if (!axis && rotary) kinds |= Bit(PathNote::Rotary);
  // A whole turn in another plane may name K alone.
  const bool otherArc = (m.motion == 2 || m.motion == 3) && m.plane != 17;
  if (otherArc && (words.seen & kSeenK)) kinds |= Bit(PathNote::OtherPlanes);
  return kinds;
}

// Counts a line that is not shown as it runs. What the filter drops is left out on purpose.
[[gnu::noinline]] void NoteWhatIsMissing(Modal& m, const LineWords& words, std::int32_t line) {
  const bool ended = m.ended;
  if (words.seen & kSeenEnd) m.ended = true;
  if (RunDropsLine(line)) return;
  const unsigned kinds = KindsOf(m, words);
  const bool arc = (m.motion == 2 || m.motion == 3) && (words.present & kCentreBits);
  const bool drawn = !words.noMotion && (arc || (words.present & kAxisBits) != 0);
  if (kinds == 0 && !drawn) return;
  if (kinds != 0) NoteRunLine(static_cast<PathNote>(std::countr_zero(kinds)), line);
  if (ended) NoteRunLine(PathNote::BehindEnd, line);
  if (words.seen & kSeenSlash) NoteRunLine(PathNote::BlockDelete, line);
}

// Characters of one line, for the rare looks back and ahead.
struct LinePlace {
  const char16_t* first;  // of the line
  const char16_t* at;
  const char16_t* end;  // of the text
};

inline bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }
inline bool IsLetter(char16_t c) {
  const char16_t upper = FoldUpper(c);
  return upper >= u'A' && upper <= u'Z';
}

// Whether the letter begins a word: no other letter stands before it, nor the comma of ",C" and
// ",R".
bool BeginsWord(const LinePlace& place) {
  return place.at == place.first || !(IsLetter(place.at[-1]) || place.at[-1] == u',');
}

bool Follows(const LinePlace& place, std::u16string_view capitals) {
  const char16_t* p = place.at;
  for (const char16_t c : capitals) {
    if (++p >= place.end || FoldUpper(*p) != c) return false;
  }
  return true;
}

// A letter that no number follows directly: what of a move is lost by that.
[[gnu::noinline]] unsigned SeenAtBareLetter(const LinePlace& place) {
  const char16_t letter = FoldUpper(*place.at);
  if (letter == u'I' && place.at - place.first >= 2 && Follows(place, u"LE") &&
      FoldUpper(place.at[-1]) == u'H' && FoldUpper(place.at[-2]) == u'W') {
    return Bit(PathNote::Macros);
  }
  if (!BeginsWord(place)) return 0;
  if (letter == u'G' && Follows(place, u"OTO")) return Bit(PathNote::Macros);
  const char16_t* p = place.at + 1;
  while (p < place.end && IsBlank(*p)) ++p;
  if (p == place.at + 1 || p >= place.end) return 0;
  if (!(DigitOf(*p) <= 9 || *p == u'+' || *p == u'-' || *p == u'.')) return 0;
  return letter == u'G' ? unsigned{kSeenBlankG} : Bit(PathNote::Blanks);
}

// Whether "#" or "[" stands for the number of a letter that moves, as in X#1, X-#1 or X [#1].
bool StandsForNumber(LinePlace place) {
  const auto back = [&place] {
    while (place.at > place.first && IsBlank(place.at[-1])) --place.at;
  };
  back();
  if (place.at > place.first && (place.at[-1] == u'-' || place.at[-1] == u'+')) --place.at;
  back();
  if (place.at == place.first) return false;
  --place.at;
  return std::u16string_view(u"XYZIJKRGABC").find(FoldUpper(*place.at)) !=
             std::u16string_view::npos &&
         BeginsWord(place);
}

// What acts on no path, from `place` on; answers where the scan goes on.
[[gnu::noinline]] const char16_t* TakeRare(unsigned kind, const LinePlace& place,
                                           LineWords& words) {
  const char16_t* p = place.at + 1;
  double value = 0;
  switch (kind) {
    case kHash:
    case kBracket:
      words.seen |= kSeenExpression;
      if (StandsForNumber(place)) {
        words.seen |= Bit(kind == kHash ? PathNote::Macros : PathNote::Brackets);
      }
      return p;
    case kSlash:
      // Behind "#" or "[" it divides.
      if (!(words.seen & kSeenExpression)) words.seen |= kSeenSlash;
      return p;
    case kM:
      while (p < place.end && IsBlank(*p)) ++p;
      if (!TakeNumber<true>(p, place.end, value) || !BeginsWord(place)) return p;
      if (value == 30.0 || value == 2.0) words.seen |= kSeenEnd;
      if (value == 97.0 || value == 98.0) words.seen |= Bit(PathNote::Calls);
      return p;
    default:  // kK, kRotary
      if (!TakeNumber<true>(p, place.end, value)) {
        words.seen |= SeenAtBareLetter(place);
      } else if (BeginsWord(place)) {
        words.seen |= kind == kK ? kSeenK : kSeenRotary;
      }
      return p;
  }
}

// Words of one line from `p` on. Stops on the line end, or on what ends the text.
template <bool kBounded>
inline const char16_t* ScanWords(const char16_t* p, const char16_t* end, Modal& m,
                                 LineWords& words) {
  const char16_t* const first = p;
  for (;;) {
    unsigned kind;
    while ((kind = ClassOf(Peek<kBounded>(p, end))) == kStep) ++p;
    if (kind <= kT) {
      double value;
      ++p;
      if (!TakeNumber<kBounded>(p, end, value)) {
        if (kind != kT) words.seen |= SeenAtBareLetter({first, p - 1, end});
        continue;
      }
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
    if (kind < kOpen) {
      p = TakeRare(kind, {first, p, end}, words);
      continue;
    }
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
    if (words.seen != 0 || m.ended || m.unknownCycle) NoteWhatIsMissing(m, words, line);
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
