#include "simulator/motion_scan.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utility>

#include "library/units.h"
#include "simulator/motion_run.h"
#include "simulator/path_notes.h"
#include "text/codetext.h"
#include "text/series_trig.h"

namespace morva {

namespace {

// What a character means outside a comment. Words come first, axes and centre before the
// rest; every letter that is not here is stepped over with its number. From kM to kPercent
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
  kPercent,    // "%"
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
    of[static_cast<int>('%')] = kPercent;
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
  kShift,  // the path is drawn without this and all that follow
  kOffsets,
  kLocalZero,
  kTurn,
  kScale,
  kWorkOffset,
};
inline constexpr int kGNumbers = 100;
struct GTable {
  GAction of[kGNumbers] = {};
  constexpr GTable() {
    for (int g : {0, 1, 2, 3, 81, 82, 83, 84, 85, 86, 87, 88, 89}) of[g] = kMotion;
    of[4] = kNoMotion;
    of[92] = kShift;
    of[10] = kOffsets;
    of[52] = kLocalZero;
    of[68] = kTurn;
    of[51] = kScale;
    for (int g : {54, 55, 56, 57, 58, 59}) of[g] = kWorkOffset;
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
// Beyond the table.
inline constexpr double kGeneralPocket = 150.0;
inline constexpr double kMirror = 101.0;
inline constexpr double kFirstFurtherOffset = 110.0;
inline constexpr double kLastFurtherOffset = 129.0;
inline constexpr int kOffsetByNumber = 154;  // its P, which is not read, tells which one

struct Modal {
  int motion = 0;  // 0 to 3, or a canned cycle from 81 to 89
  int plane = 17;
  int workOffset = 0;                // its G number, 0 before the first
  const char16_t* noCode = nullptr;  // no code stands from the text's start up to here
  bool absolute = true;
  bool displayMetric = false;
  unsigned standing = 0;  // what the next line has seen before it begins, of kStanding
  double scale = 1.0;     // program units to display units
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

struct LineWords {
  double value[kWordSlots];
  unsigned present;  // bit of each class
  unsigned seen;     // bits of notes and of kSeen...: what makes the line worth a second look
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
  kSeenNoMotion = kSeenEnd << 7,
  kSeenUnknownCycle = kSeenEnd << 8,  // a cycle is in force that the path does not know
  kSeenEnded = kSeenEnd << 9,         // M30 or M02 stood on an earlier line
  kSeenClosed = kSeenEnd << 10,       // "%" begins the line, or one behind code stood above it
};
static_assert(kSeenEnd << 10 != 0);
// What holds for the lines that follow, too.
inline constexpr unsigned kStanding = kSeenUnknownCycle | kSeenEnded | kSeenClosed;
inline constexpr unsigned kNotShown =
    Bit(PathNote::BehindEnd) - 1;  // all kinds of lines that are not drawn
inline constexpr unsigned kNotApplied =
    Bit(PathNote::Shift) | Bit(PathNote::LocalZero) | Bit(PathNote::Turn) | Bit(PathNote::Scale) |
    Bit(PathNote::Offsets) | Bit(PathNote::Mirror) | Bit(PathNote::OtherZero);
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

constexpr double kSigns[] = {1.0, -1.0};  // of a number without and with minus

// The number straight behind a letter. False: there is none, and only the letter is stepped
// over. A second point ends the number; the rest steps over by itself. No branch asks for the
// sign, because signs come in no order that a processor could foresee.
template <bool kBounded>
inline bool TakeNumber(const char16_t*& p, const char16_t* end, double& value) {
  // Below 16 digits an integer converts to the very double that multiplying by ten gives.
  constexpr std::ptrdiff_t kExactDigits = 15;
  char16_t c = Peek<kBounded>(p, end);
  bool negative = c == u'-';
  const char16_t* const digits = p + (negative | (c == u'+'));
  const char16_t* q = digits;
  std::uint64_t whole = 0;  // wraps where the digits are too many
  unsigned digit;
  while ((digit = DigitOf(c = Peek<kBounded>(q, end))) <= 9) {
    whole = whole * 10 + digit;
    ++q;
  }
  if (q - digits > kExactDigits) {
    p = TakeLongNumber(p, end, value);
    return true;
  }
  double sum = static_cast<double>(static_cast<std::int64_t>(whole));
  if (c == u'.') {
    const auto* row = kFraction.of;
    for (++q; (digit = DigitOf(Peek<kBounded>(q, end))) <= 9; ++q) {
      if (row == std::end(kFraction.of)) {
        p = TakeLongNumber(p, end, value);
        return true;
      }
      sum += (*row++)[digit];
    }
    // A lone point, or sign, counts as 0, which has no sign.
    if (q == digits + 1) negative = false;
  } else if (q == digits) {
    const bool sign = q != p;
    p = q;
    value = 0.0;
    return sign;
  }
  p = q;
  value = sum * kSigns[negative];
  return true;
}

// The first one is where the path lies; what another one moves is drawn in the same place.
unsigned TakeWorkOffset(Modal& m, int code, unsigned seen) {
  const int before = std::exchange(m.workOffset, code);
  const bool same = before == code && code != kOffsetByNumber;
  return before == 0 || same ? seen : seen | Bit(PathNote::OtherZero);
}

[[gnu::noinline, gnu::cold]] unsigned TakeHighG(Modal& m, double value, unsigned seen) {
  if (value == kGeneralPocket) return seen | Bit(PathNote::Pockets);
  if (value == kMirror) return seen | Bit(PathNote::Mirror);
  const bool further = value >= kFirstFurtherOffset && value <= kLastFurtherOffset;
  if (!further && value != kOffsetByNumber) return seen;
  return TakeWorkOffset(m, static_cast<int>(value), seen);
}

// Answers what the line has seen by then.
inline unsigned TakeG(Modal& m, double value, unsigned seen) {
  if (!(value >= 0.0 && value < 100.0)) return TakeHighG(m, value, seen);
  const int code = static_cast<int>(value);
  const bool cycle = value >= 81.0 && value <= 89.0;
  if (static_cast<double>(code) != value && !cycle) return seen;
  switch (kGCodes.of[code]) {
    case kNothing:
      return seen;
    case kMotion:
      m.motion = code;
      return seen & ~kSeenUnknownCycle;
    case kAbsolute:
      m.absolute = true;
      return seen;
    case kIncremental:
      m.absolute = false;
      return seen;
    case kInch:
      m.scale = m.displayMetric ? kMmPerInch : 1.0;
      return seen;
    case kMetric:
      m.scale = m.displayMetric ? 1.0 : kInchPerMm;
      return seen;
    case kPlane:
      m.plane = code;
      return seen;
    case kNoMotion:
      return seen | kSeenNoMotion;
    case kHome:
      return seen | kSeenNoMotion | Bit(PathNote::Home);
    case kMachine:
      return seen | kSeenNoMotion | kSeenMachine;
    case kCancelCycle:
      m.motion = 0;
      return seen & ~kSeenUnknownCycle;
    case kUnknownCycle:
      return seen | kSeenUnknownCycle;
    case kPocket:
      return seen | Bit(PathNote::Pockets);
    case kMacro:
      return seen | Bit(PathNote::Macros);
    case kShift:
      return seen | kSeenNoMotion | Bit(PathNote::Shift);
    case kOffsets:
      return seen | kSeenNoMotion | Bit(PathNote::Offsets);
    case kLocalZero:
      return seen | Bit(PathNote::LocalZero);
    case kTurn:
      return seen | Bit(PathNote::Turn);
    case kScale:
      return seen | Bit(PathNote::Scale);
    case kWorkOffset:
      return TakeWorkOffset(m, code, seen);
  }
  return seen;
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
  double start;  // squares of the distances of start and end
  double end;
  bool fits;  // start and end are about as far from it
};

// Whether the distances with these squares differ by less than 0.0001 and a thousandth of the
// first. Roots are taken only where the squares leave it open: within kSure of each other they
// surely fit, beyond kWide and 0.0001 they surely do not.
inline bool Fits(double start, double end) {
  constexpr double kSure = 0.0019;
  constexpr double kWide = 0.01;
  if (std::fabs(start - end) < start * kSure) return true;
  if (std::fabs(start - end) > start * kWide + 0.0001) return false;
  const double rStart = std::sqrt(start);
  const double rEnd = std::sqrt(end);
  return rStart > 0.0 && !(std::fabs(rStart - rEnd) >= rStart * 0.001 + 0.0001);
}

inline ArcCentre CentreOf(const Modal& m, const LineWords& words, const Target& target) {
  const double cx = m.x + ((words.present & Bit(kI)) ? words.value[kI] * m.scale : 0.0);
  const double cy = m.y + ((words.present & Bit(kJ)) ? words.value[kJ] * m.scale : 0.0);
  const double sx = m.x - cx;
  const double sy = m.y - cy;
  const double ex = target.x - cx;
  const double ey = target.y - cy;
  const double start = sx * sx + sy * sy;
  const double end = ex * ex + ey * ey;
  return {cx, cy, start, end, Fits(start, end)};
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
  const double radius = std::sqrt(centre.start);
  const int chords = static_cast<int>(std::fabs(sweep) / kChord) + 1;
  for (int i = 1; i < chords && !TableClosed(); ++i) {
    const double angle = start + sweep * i / chords;
    AddMotionPoint(centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle),
                   m.z + (target.z - m.z) * i / chords, false, line);
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

// What a whole line does, by its end state. A call for every line would cost a fortieth of the
// time.
[[gnu::always_inline]] inline void EndLine(Modal& m, LineWords& words, std::int32_t line) {
  if (words.seen & kSeenNoMotion) {
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
  constexpr unsigned kDepends =
      kSeenMachine | kSeenRotary | kSeenK | kSeenBlankG | kSeenNoMotion | kSeenUnknownCycle;
  unsigned kinds = words.seen & kNotShown;
  if (!(words.seen & kDepends)) return kinds;
  const bool axis = (words.present & kAxisBits) != 0;
  const bool rotary = (words.seen & kSeenRotary) != 0;
  const bool places = axis || rotary || (kinds & kMissed) != 0;
  if (places && (words.seen & kSeenMachine)) kinds |= Bit(PathNote::Home);
  if (words.seen & kSeenNoMotion) {
    return kinds & Bit(PathNote::Home) ? kinds : kinds & Bit(PathNote::Calls);
  }
  if (places && (words.seen & kSeenBlankG)) kinds |= Bit(PathNote::Blanks);
  if (axis && (words.seen & kSeenUnknownCycle)) kinds |= Bit(PathNote::Cycles);
  if (!axis && rotary) kinds |= Bit(PathNote::Rotary);
  // A whole turn in another plane may name K alone.
  const bool otherArc = (m.motion == 2 || m.motion == 3) && m.plane != 17;
  if (otherArc && (words.seen & kSeenK)) kinds |= Bit(PathNote::OtherPlanes);
  return kinds;
}

// Whether the line draws something, or is an arc that does not fit.
bool Draws(const Modal& m, const LineWords& words) {
  const bool arc = (m.motion == 2 || m.motion == 3) && (words.present & kCentreBits);
  return !(words.seen & kSeenNoMotion) && (arc || (words.present & kAxisBits) != 0);
}

// Counts a line that is not shown as it runs. What the filter drops is left out on purpose.
[[gnu::noinline]] void NoteWhatIsMissing(const Modal& m, const LineWords& words,
                                         std::int32_t line) {
  if (RunDropsLine(line)) return;
  for (unsigned bits = words.seen & kNotApplied; bits != 0; bits &= bits - 1) {
    NoteRunLine(static_cast<PathNote>(std::countr_zero(bits)), line);
  }
  const unsigned kinds = KindsOf(m, words);
  if (kinds != 0) {
    NoteRunLine(static_cast<PathNote>(std::countr_zero(kinds)), line);
  } else if (!Draws(m, words)) {
    return;
  }
  if (words.seen & kSeenEnded) NoteRunLine(PathNote::BehindEnd, line);
  if (words.seen & kSeenClosed) NoteRunLine(PathNote::Unread, line);
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
[[gnu::noinline, gnu::cold]] unsigned SeenAtBareLetter(const LinePlace& place) {
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

// Whether a letter stands outside comments between two places, the first of which begins a line.
[[gnu::cold]] bool HoldsCode(const char16_t* p, const char16_t* end) {
  bool comment = false;
  bool tail = false;  // behind ";"
  for (; p != end; ++p) {
    if (*p == u'\r' || *p == u'\n') comment = tail = false;
    if (*p == u';' && !comment) tail = true;
    if (*p == u'(') comment = true;
    if (!comment && !tail && IsLetter(*p)) return true;
    if (*p == u')') comment = false;
  }
  return false;
}

// A "%" closes a program where code stands before its line; else it opens one.
[[gnu::noinline, gnu::cold]] unsigned TakePercentLine(Modal& m, const char16_t* line,
                                                      unsigned seen) {
  if (HoldsCode(m.noCode, line)) return seen;
  m.noCode = line;
  return seen & ~unsigned{kSeenClosed};
}

struct Rare {
  const char16_t* next;  // where the scan goes on
  unsigned seen;         // what the line has seen by then
};

// What acts on no path, from `place` on.
[[gnu::noinline, gnu::cold]] Rare TakeRare(unsigned kind, LinePlace place, unsigned seen) {
  const char16_t* p = place.at + 1;
  double value = 0;
  switch (kind) {
    case kHash:
    case kBracket:
      seen |= kSeenExpression;
      if (StandsForNumber(place)) {
        seen |= Bit(kind == kHash ? PathNote::Macros : PathNote::Brackets);
      }
      break;
    case kSlash:
      // Behind "#" or "[" it divides.
      if (!(seen & kSeenExpression)) seen |= kSeenSlash;
      break;
    case kPercent:
      while (place.at > place.first && IsBlank(place.at[-1])) --place.at;
      if (place.at == place.first) seen |= kSeenClosed;
      break;
    case kM:
      while (p < place.end && IsBlank(*p)) ++p;
      if (!TakeNumber<true>(p, place.end, value) || !BeginsWord(place)) break;
      if (value == 30.0 || value == 2.0) seen |= kSeenEnd;
      if (value == 97.0 || value == 98.0) seen |= Bit(PathNote::Calls);
      break;
    default:  // kK, kRotary
      if (!TakeNumber<true>(p, place.end, value)) {
        seen |= SeenAtBareLetter(place);
      } else if (BeginsWord(place)) {
        seen |= kind == kK ? kSeenK : kSeenRotary;
      }
      break;
  }
  return {p, seen};
}

// Words of one line from `p` on. Stops on the line end, or on what ends the text. What the rare
// functions see comes back by value, so that the masks of the line can stay in registers.
template <bool kBounded>
inline const char16_t* ScanWords(const char16_t* p, const char16_t* end, Modal& m,
                                 LineWords& words) {
  const char16_t* const first = p;
  unsigned present = 0;
  unsigned seen = m.standing;
  for (;;) {
    unsigned kind = ClassOf(Peek<kBounded>(p, end));
    while (kind == kStep) kind = ClassOf(Peek<kBounded>(++p, end));
    if (kind <= kT) {
      double value;
      ++p;
      if (!TakeNumber<kBounded>(p, end, value)) {
        if (kind != kT) seen |= SeenAtBareLetter({first, p - 1, end});
        continue;
      }
      if (kind < kWordSlots) {
        words.value[kind] = value;
        present |= 1u << kind;
      } else if (kind == kG) {
        seen = TakeG(m, value, seen);
      } else {
        motionRun.tool = ToolNumber(value);
      }
      continue;
    }
    if (kind >= kReturn) break;
    if (kind < kOpen) {
      const Rare rare = TakeRare(kind, {first, p, end}, seen);
      p = rare.next;
      seen = rare.seen;
      continue;
    }
    // A comment ends at its first ")" and, like ";", never beyond the line.
    const bool parenthesis = kind == kOpen;
    char16_t c;
    do {
      c = Peek<kBounded>(++p, end);
    } while (c != u'\r' && c != u'\n' && c != 0 && !(parenthesis && c == u')'));
  }
  words.present = present;
  words.seen = seen;
  return p;
}

// Lines up to `end`. False: a NUL ended the text.
template <bool kBounded>
bool ScanLines(const char16_t* p, const char16_t* end, Modal& m, std::int32_t& line) {
  while (p != end) {
    LineWords words;
    const char16_t* const first = p;
    p = ScanWords<kBounded>(p, end, m, words);
    if ((words.seen & ~m.standing) & kSeenClosed)
      words.seen = TakePercentLine(m, first, words.seen);
    EndLine(m, words, line);
    if (words.seen != 0) NoteWhatIsMissing(m, words, line);
    m.standing = words.seen & kStanding;
    // A line that the block delete switch takes out ends nothing.
    if ((words.seen & kSeenEnd) && !(words.seen & kSeenSlash)) m.standing |= kSeenEnded;
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
  m.noCode = first;
  const char16_t* const last = first + whole;
  if (!ScanLines<false>(first, last, m, line)) return;
  ScanLines<true>(last, first + text.size(), m, line);
}

}  // namespace morva
