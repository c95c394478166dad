#include "builders/wizard/wizard_text.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "app/limits.h"
#include "library/motion_text.h"
#include "text/code_writer.h"

namespace morva {

namespace {

using platform::PointF;

constexpr int kPointDecimals = 3;
constexpr int kFeedDecimals = 1;
constexpr int kTapFeedDecimals = 4;
constexpr double kRetractPart = 0.2;  // of Safe Z: the retract plane of holes
constexpr int kMostRpm = 2147483647;
constexpr double kFaceSlack = 0.0001;  // beyond Y max
// What no field says: the step of a face whatever the tool, its reach where Y max is not above Y
// min, and the way from peck hole to peck hole.
struct FixedLengths {
  double faceStep;
  double faceReach;
  double peckSpacing;
};
constexpr FixedLengths kInch{0.4, 4.0, 1.0};
constexpr FixedLengths kMm{10.16, 101.6, 25.4};

constexpr char16_t kCheckWords[] =
    u"Check tool (0=current, 1-999=library), positive spindle/feed, clearance above depth, and "
    u"integer hole count (1-400). Face bounds must increase and fit within 99 passes; peck depth "
    u"must be positive.";

constexpr const char16_t* kKinds[] = {u"Skim / face", u"Profile pass", u"Drill holes",
                                      u"Peck drill", u"Tap holes"};
static_assert(std::size(kKinds) == kWizardKinds);

constexpr std::u16string_view kComments[] = {u"(WIZARD: SKIM / FACE)", u"(WIZARD: SLOT)",
                                             u"(WIZARD: DRILL G81)", u"(WIZARD: PECK DRILL G83)",
                                             u"(WIZARD: TAP G84 - VERIFY RIGID TAPPING)"};

constexpr BuilderField Length(const char16_t* label, const char16_t* start, double fallback = 0) {
  return {.label = label, .start = start, .fallback = fallback, .follows = Follows::Length};
}
constexpr BuilderField Whole(const char16_t* label, const char16_t* start, double fallback) {
  return {.label = label, .start = start, .fallback = fallback, .kind = RowKind::Count};
}
constexpr BuilderField Feed(const char16_t* label) {
  return {
      .label = label, .start = u"12.0", .fallback = 12, .follows = Follows::Length, .decimals = 2};
}
// Holes are read as decimals, so that a number which is not whole can be refused.
constexpr BuilderField Holes() { return {.label = u"Hole count", .start = u"4", .decimals = 0}; }
constexpr BuilderField Tool() { return Whole(u"Tool #", u"0", 1); }
constexpr BuilderField Offset() {
  return {.label = u"Work offset", .start = u"G54", .kind = RowKind::Words};
}
constexpr BuilderField Rpm(const char16_t* start) { return Whole(u"RPM", start, 1500); }
constexpr BuilderField Threads() {
  return {.label = u"TPI",
          .metricLabel = u"Pitch mm",
          .start = u"20",
          .fallback = 12,
          .follows = Follows::Thread};
}
constexpr BuilderField SafeZ() { return Length(u"Safe Z", u"0.500", 0.5); }
constexpr BuilderField Depth(const char16_t* start) { return Length(u"Depth Z", start); }
constexpr BuilderField At(const char16_t* label) { return Length(label, u"0.000"); }
constexpr BuilderField Spacing() { return Length(u"X spacing", u"1.000"); }

// clang-format off
constexpr BuilderField kFields[kWizardKinds][kWizardNumbers] = {
    {Tool(), Offset(), Rpm(u"1500"), Feed(u"Cut feed"), SafeZ(), Depth(u"-0.010"), At(u"X min"),
     At(u"Y min"), Length(u"X max", u"4.000"), Length(u"Y max", u"0.400")},
    {Tool(), Offset(), Rpm(u"1500"), Feed(u"Cut feed"), SafeZ(), Depth(u"-0.125"), At(u"X start"),
     At(u"Y start"), Length(u"X end", u"4.000"), At(u"Y end")},
    {Tool(), Offset(), Rpm(u"1500"), Feed(u"Feed"), SafeZ(), Depth(u"-0.500"), At(u"X start"),
     At(u"Y start"), Holes(), Spacing()},
    {Tool(), Offset(), Rpm(u"1500"), Feed(u"Feed"), SafeZ(), Depth(u"-0.750"), At(u"X start"),
     At(u"Y start"), Length(u"Peck Q", u"0.100"), Holes()},
    {Tool(), Offset(), Rpm(u"500"), Threads(), SafeZ(), Depth(u"-0.500"), At(u"X start"),
     At(u"Y start"), Holes(), Spacing()},
};
// clang-format on

int KindOf(int kind) { return kind >= 0 && kind < kWizardKinds ? kind : kWizardFace; }

bool HasHoles(int kind) { return kind >= kWizardDrill; }

int HolesField(int kind) { return kind == kWizardPeck ? kWizardTenth : kWizardNinth; }

const FixedLengths& FixedOf(const WizardValues& values) { return values.metric ? kMm : kInch; }

// From hole to hole along X.
double SpacingOf(const WizardValues& values) {
  return values.kind == kWizardPeck ? FixedOf(values).peckSpacing : values.numbers[kWizardTenth];
}

bool FitsHoles(double count) {
  return count >= 1 && count <= kMaxWizardHoles && count == std::floor(count);
}

// The field of a face that does not hold, -1 for none.
int FaceFault(const WizardValues& values) {
  const double* n = values.numbers;
  if (n[kWizardNinth] <= n[kWizardX]) return kWizardNinth;
  if (n[kWizardTenth] <= n[kWizardY]) return kWizardTenth;
  const double passes = (n[kWizardTenth] - n[kWizardY]) / FixedOf(values).faceStep;
  return passes > kMaxFacePasses - 1 ? kWizardTenth : -1;
}

// Two heights, as the code writes them.
bool IsAbove(double z, double other) {
  return Printed(z, kPointDecimals) > Printed(other, kPointDecimals);
}

double TapFeed(const WizardValues& values) {
  const double* n = values.numbers;
  return values.metric ? n[kWizardRpm] * n[kWizardFeed] : n[kWizardRpm] / n[kWizardFeed];
}

double PlungeFeed(const WizardValues& values) {
  return values.numbers[kWizardFeed] * (values.kind == kWizardSlot ? 0.5 : 1);
}

bool HasFeed(const WizardValues& values) {
  if (values.numbers[kWizardFeed] <= 0) return false;
  return values.kind == kWizardTap ? Printed(TapFeed(values), kTapFeedDecimals) > 0
                                   : Printed(PlungeFeed(values), kFeedDecimals) > 0;
}

int HolesFault(const WizardValues& values) {
  const double* n = values.numbers;
  if (!IsAbove(n[kWizardSafeZ] * kRetractPart, n[kWizardDepth])) return kWizardSafeZ;
  const int holes = HolesField(values.kind);
  if (!FitsHoles(n[holes])) return holes;
  const bool pecks = values.kind != kWizardPeck || Printed(n[kWizardNinth], kPointDecimals) > 0;
  return pecks ? -1 : kWizardNinth;
}

int FaultyField(const WizardValues& values) {
  const double* n = values.numbers;
  if (n[kWizardTool] < 0 || n[kWizardTool] > kLastWizardTool) return kWizardTool;
  if (n[kWizardRpm] < 1) return kWizardRpm;
  if (!HasFeed(values)) return kWizardFeed;
  if (!IsAbove(n[kWizardSafeZ], n[kWizardDepth])) return kWizardSafeZ;
  if (values.kind == kWizardFace) return FaceFault(values);
  return HasHoles(values.kind) ? HolesFault(values) : -1;
}

// A word of a line that goes on.
void Word(CodeWriter& out, std::u16string_view word, double value) {
  Put(out, word, value, kPointDecimals);
}

void PutFeed(CodeWriter& out, double feed) {
  Put(out, u" F", feed, kFeedDecimals);
  Line(out, u"");
}

void PutHead(const WizardValues& values, CodeWriter& out) {
  const int tool = WholeWithin(values.numbers[kWizardTool], 0, kLastWizardTool);
  Line(out, u"");
  Line(out, kComments[values.kind]);
  Line(out, UnitLine(values.metric));
  Line(out, u"G90 G17 G94 G80");
  if (tool == 0) {
    Line(out, u"(KEEP CURRENT TOOL AND LENGTH OFFSET)");
  } else {
    PutInteger(out, u"T", tool);
    Line(out, u" M06");
  }
  PutInteger(out, u"S", WholeWithin(values.numbers[kWizardRpm], 0, kMostRpm));
  Line(out, u" M03");
  Line(out, values.offset);
  Put(out, u"G00");
  if (tool != 0) PutInteger(out, tool < 10 ? u" G43 H0" : u" G43 H", tool);
  Word(out, u" Z", values.numbers[kWizardSafeZ]);
  Line(out, u"");
  Line(out, u"M08");
}

void PutTail(const WizardValues& values, CodeWriter& out) {
  Word(out, u"G00 Z", values.numbers[kWizardSafeZ]);
  Line(out, u"");
  Line(out, u"M09");
  Line(out, u"M05");
  Line(out, u"(END WIZARD BLOCK)");
}

void PutRapid(CodeWriter& out, PointF to) {
  Word(out, u"G00 X", to.x);
  Word(out, u" Y", to.y);
  Line(out, u"");
}

void PutPlunge(const WizardValues& values, CodeWriter& out) {
  Word(out, u"G01 Z", values.numbers[kWizardDepth]);
  PutFeed(out, PlungeFeed(values));
}

void PutFace(const WizardValues& values, CodeWriter& out) {
  const std::vector<PointF> way = WizardWay(values);
  const double feed = values.numbers[kWizardFeed];
  PutRapid(out, way[0]);
  PutPlunge(values, out);
  for (std::size_t i = 1; i < way.size(); ++i) {
    if (i % 2 == 1) {
      Word(out, u"G01 X", way[i].x);
      PutFeed(out, feed);
    } else {
      Word(out, u"Y", way[i].y);
      Line(out, u"");
    }
  }
}

void PutSlot(const WizardValues& values, CodeWriter& out) {
  const std::vector<PointF> way = WizardWay(values);
  const double feed = values.numbers[kWizardFeed];
  PutRapid(out, way[0]);
  PutPlunge(values, out);
  Word(out, u"G01 X", way[1].x);
  Word(out, u" Y", way[1].y);
  PutFeed(out, feed);
}

void PutCycle(const WizardValues& values, CodeWriter& out) {
  const double* n = values.numbers;
  Word(out,
       values.kind == kWizardDrill  ? u"G81 Z"
       : values.kind == kWizardPeck ? u"G83 Z"
                                    : u"G84 Z",
       n[kWizardDepth]);
  Word(out, u" R", n[kWizardSafeZ] * kRetractPart);
  if (values.kind == kWizardPeck) Word(out, u" Q", n[kWizardNinth]);
  if (values.kind != kWizardTap) return PutFeed(out, n[kWizardFeed]);
  Put(out, u" F", TapFeed(values), kTapFeedDecimals);
  Line(out, u"");
}

void PutHoles(const WizardValues& values, CodeWriter& out) {
  const std::vector<PointF> holes = WizardHoles(values);
  PutRapid(out, {values.numbers[kWizardX], values.numbers[kWizardY]});
  PutCycle(values, out);
  for (std::size_t i = 1; i < holes.size(); ++i) {
    Word(out, u"X", holes[i].x);
    Word(out, u" Y", holes[i].y);
    Line(out, u"");
  }
  Line(out, u"G80");
}

}  // namespace

WizardValues WizardOf(int kind, const FormValues& form) {
  WizardValues values;
  values.kind = KindOf(kind);
  values.metric = form.metric;
  std::copy_n(form.numbers, kWizardNumbers, values.numbers);
  values.offset = form.words[0];
  return values;
}

std::span<const char16_t* const> WizardKinds() { return kKinds; }

std::span<const BuilderField> WizardFields(int kind) { return kFields[KindOf(kind)]; }

BuilderFault CheckWizard(const WizardValues& values) {
  const int field = FaultyField(values);
  if (field < 0) return {};
  return {kCheckWords, field};
}

void WriteWizard(const WizardValues& values, CodeWriter& out) {
  if (values.kind != KindOf(values.kind)) return;
  PutHead(values, out);
  if (values.kind == kWizardFace) PutFace(values, out);
  if (values.kind == kWizardSlot) PutSlot(values, out);
  if (HasHoles(values.kind)) PutHoles(values, out);
  PutTail(values, out);
}

std::size_t WizardRoom() { return kWizardTextUnits - 1; }

std::vector<PointF> WizardWay(const WizardValues& values) {
  const double* n = values.numbers;
  const PointF start{n[kWizardX], n[kWizardY]};
  std::vector<PointF> way = {start};
  if (values.kind == kWizardSlot) way.push_back({n[kWizardNinth], n[kWizardTenth]});
  if (values.kind != kWizardFace) return way;
  const FixedLengths& fixed = FixedOf(values);
  const double last =
      n[kWizardTenth] > start.y ? n[kWizardTenth] + kFaceSlack : start.y + fixed.faceReach;
  double y = start.y;
  for (int pass = 0; pass < kMaxFacePasses; ++pass) {
    if (pass > 0) way.push_back({way.back().x, y});
    way.push_back({pass % 2 == 0 ? n[kWizardNinth] : start.x, y});
    y += fixed.faceStep;
    if (y > last) break;
  }
  return way;
}

std::vector<PointF> WizardHoles(const WizardValues& values) {
  std::vector<PointF> holes;
  if (!HasHoles(values.kind)) return holes;
  const double* n = values.numbers;
  const double count = std::min<double>(n[HolesField(values.kind)], kMaxWizardHoles);
  for (int i = 0; i < count; ++i) {
    holes.push_back({n[kWizardX] + i * SpacingOf(values), n[kWizardY]});
  }
  return holes;
}

}  // namespace morva
