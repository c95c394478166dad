#include "simulator/control_check.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "simulator/control_frame.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr double kSame = 1e-6;
constexpr double kLongTool = 10;  // inches from the spindle's nose: hardly a tool is longer
constexpr std::uint32_t kAxes = LetterBit('X') | LetterBit('Y') | LetterBit('Z');
constexpr std::uint32_t kCentre = LetterBit('I') | LetterBit('J') | LetterBit('K');

// Codes of probes, and of tools that are measured.
constexpr int kProbeCodes[] = {31, 35, 36, 37, 136};

// Lengths that shops give to a second gauge point of the same tool.
constexpr int kUsualSteps[] = {0, 20, 30, 50};

bool EndsLine(char16_t c) { return c == u'\n' || c == u'\r' || c == 0; }

// The first line from a place on that has code outside comments, -1 for none; `code` is its first
// letter.
std::int32_t FirstCodeLine(std::u16string_view text, ControlPlace place, char16_t& code) {
  bool comment = false;
  for (std::size_t at = place.at; at < text.size() && text[at] != 0; ++at) {
    const char16_t c = text[at];
    const char16_t upper = FoldUpper(c);
    if (c == u'%' && !comment) return -1;
    if (c == u'(') comment = true;
    if (!comment && upper >= u'A' && upper <= u'Z') {
      code = upper;
      return place.line;
    }
    if (c == u')') comment = false;
    if (c == u';' && !comment) {
      while (at + 1 < text.size() && !EndsLine(text[at + 1])) ++at;
    }
    if (!EndsLine(c)) continue;
    comment = false;
    const bool pair = c == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n';
    at += pair;
    ++place.line;
  }
  return -1;
}

// The next "%" outside comments from a place on. False: there is none.
bool FindPercent(std::u16string_view text, ControlPlace& place) {
  bool comment = false;
  for (; place.at < text.size() && text[place.at] != 0; ++place.at) {
    const char16_t c = text[place.at];
    if (c == u'%' && !comment) return true;
    if (c == u'(') comment = true;
    if (c == u')') comment = false;
    if (!EndsLine(c)) continue;
    comment = false;
    const bool pair = c == u'\r' && place.at + 1 < text.size() && text[place.at + 1] == u'\n';
    place.at += pair;
    ++place.line;
  }
  return false;
}

// Whether the block may be left out by the switch for "/".
bool IsOptional(const ControlRun& run, const ControlPlace& block) {
  const std::u16string_view text = run.texts[static_cast<std::size_t>(block.text)].text;
  std::size_t at = block.at;
  while (at < text.size() && !EndsLine(text[at])) {
    const char16_t c = text[at++];
    if (c == u'/') return true;
    if (c != u' ' && c != u'\t' && FoldUpper(c) != u'N' && !IsDigit(c)) return false;
  }
  return false;
}

// Bodies of M97 and other programs stand behind the end as they should.
void NoteBehindEnd(ControlRun& run) {
  if (run.place.text != 0 || !run.sawEnd || run.callCount != 1) return;
  if (IsOptional(run, run.blockStart)) return;
  char16_t code = 0;
  const std::int32_t line = FirstCodeLine(run.texts[0].text, run.place, code);
  if (line < 0 || code == u'O' || (code == u'N' && run.jumps > 0)) return;
  AddFinding(run.track->findings, {Finding::BehindEnd, line});
}

// Whether a comment of the block says that its H is meant so.
bool SaysWhichLength(const ControlRun& run) {
  std::u16string_view line = run.texts[static_cast<std::size_t>(run.blockStart.text)].text;
  line.remove_prefix(run.blockStart.at);
  std::size_t end = 0;
  while (end < line.size() && !EndsLine(line[end])) ++end;
  line = line.substr(0, end);
  const std::size_t comment = line.find(u'(');
  if (comment == line.npos) return false;
  line.remove_prefix(comment);
  return HoldsFolded(line, u"GAUGE") || HoldsFolded(line, u"OFFSET") ||
         HoldsFolded(line, u"LENGTH");
}

// Places closer than a thousandth of an inch are one. No number that a program writes to four
// places lies where two of them meet.
std::size_t BitOf(const ControlRun& run, double x, double y) {
  const auto step = [&run](double length) {
    const double steps = std::clamp(length / run.perInch * 1000 + 0.25, -1e9, 1e9);
    return static_cast<std::uint64_t>(std::llround(steps));
  };
  return (step(x) * 73856093 + step(y) * 19349663) % kPlaceBits;
}

void NoteSpindleOff(ControlRun& run) {
  const auto row = static_cast<std::size_t>(Finding::SpindleOff);
  if (run.probes || run.told[row]) return;
  const std::int32_t& count = run.track->findings.ofKind[row];
  const std::int32_t before = count;
  ReportOnce(run, Finding::SpindleOff);
  run.offLine = count > before ? run.line : -1;
}

void NoteOpening(ControlRun& run, const ControlSegment& segment) {
  const Vec3& to = segment.to;
  if (segment.kind == ControlSegment::Kind::Arc) {
    if (segment.plane == 17) run.opened.set(BitOf(run, segment.centreU, segment.centreV));
  } else if (to.of[2] < segment.from.of[2]) {
    run.drilled.set(BitOf(run, to.of[0], to.of[1]));
  }
}

}  // namespace

void ReportOnce(ControlRun& run, Finding kind, double number, char letter) {
  const auto at = static_cast<std::size_t>(kind);
  if (!run.told[at]) Report(run, kind, number, letter);
  run.told[at] = true;
}

void NoteLength(ControlRun& run, const ControlBlock& block, char letter) {
  if (block.pointed & LetterBit(letter)) {
    run.sawPoint = true;
    return;
  }
  // In a file without any point it is meant so.
  if (!run.sawPoint || run.table.wholeLengths || block.Of(letter) == 0) return;
  const double least = run.modes.metric ? 0.001 : 0.0001;
  Report(run, Finding::WholeNumber, block.Of(letter) * least);
}

void NoteCut(ControlRun& run) {
  if (!run.feedKnown) ReportOnce(run, Finding::NoFeed);
  const int cycle = run.modes.motion;
  const bool taps = cycle == 74 || cycle == 84;  // the cycle starts the spindle
  if (!run.spindle && !taps) NoteSpindleOff(run);
  // A text without a change of tools may rely on the S of the one that calls it.
  const bool asked = run.speedKnown || run.sawChange;
  if ((run.spindle || taps) && run.speed <= 0 && asked) ReportOnce(run, Finding::NoSpeed);
  if (run.tool == 0 && run.toolCalled != 0) {
    ReportOnce(run, Finding::ToolNotChanged, run.toolCalled);
  }
  if (run.sawChange && !run.lengthInForce) ReportOnce(run, Finding::NoLength);
  const bool saidOfH = run.told[static_cast<std::size_t>(Finding::OffsetOther)];
  if (run.lengthInForce && run.lengthMissing && !saidOfH) {
    ReportOnce(run, Finding::LengthNotSet, run.lengthNumber);
  }
  if (run.offsetMissing) ReportOnce(run, Finding::OffsetNotSet);
}

void NoteRapid(ControlRun& run, const Vec3& target) {
  if (!run.sawChange || run.lengthInForce || !run.modes.absolute) return;
  if (ShownOf(run, target).of[2] >= run.shown.of[2] - kSame) return;
  // The nose of the spindle goes to Z, and the tool's tip below it.
  const bool hasRow = run.tool >= 1 && run.tool <= kControlTools;
  const double known = hasRow ? run.table.tools[run.tool].length : 0;
  const double length = (known > 0 ? known : kLongTool) * run.perInch;
  if (target.of[2] < length - kSame) ReportOnce(run, Finding::NoLength);
}

void NoteToolLength(ControlRun& run) {
  const auto& tools = run.table.tools;
  const auto isSet = [](const ToolOffset& tool) { return tool.length != 0 || tool.lengthSaid; };
  const std::int32_t number = run.lengthNumber;
  run.lengthMissing = number >= 1 && number <= kControlTools && !isSet(tools[number]) &&
                      std::any_of(std::begin(tools), std::end(tools), isSet);
  if (run.tool == 0 || run.modes.lengthMode == 49) return;
  const int step = run.lengthNumber - run.tool;
  const bool usual =
      std::find(std::begin(kUsualSteps), std::end(kUsualSteps), step) != std::end(kUsualSteps);
  if (!usual && !SaysWhichLength(run)) ReportOnce(run, Finding::OffsetOther, run.lengthNumber);
}

void PassHead(ControlRun& run) {
  const std::u16string_view text = run.texts[0].text;
  const std::size_t first = text.find(u'%');
  if (first == text.npos || text.find(u'%', first + 1) == text.npos) return;
  char16_t code = 0;
  const std::int32_t line = FirstCodeLine(text, run.place, code);
  ControlPlace opens = run.place;
  if (line < 0 || !FindPercent(text, opens)) return;
  ControlPlace closes = opens;
  ++closes.at;
  if (!FindPercent(text, closes)) return;
  AddFinding(run.track->findings, {Finding::BeforeStart, line});
  run.place = opens;
}

void NoteFurtherAxes(ControlRun& run, const ControlBlock& block) {
  const std::uint32_t fresh = block.has & kFurtherAxes & ~run.axesTold;
  run.axesTold |= fresh;
  for (const char letter : {'A', 'B', 'C'}) {
    if (fresh & LetterBit(letter)) Report(run, Finding::NotFollowed, block.Of(letter), letter);
  }
}

void NoteWay(ControlRun& run, const ControlSegment& segment) {
  const Vec3& from = segment.from;
  const Vec3& to = segment.to;
  const bool sideways =
      segment.kind == ControlSegment::Kind::Arc || from.of[0] != to.of[0] || from.of[1] != to.of[1];
  const bool cuts = segment.kind != ControlSegment::Kind::Rapid;
  if (cuts) NoteOpening(run, segment);
  if (cuts && (sideways || to.of[2] < from.of[2])) {
    run.standsInCut = true;
    run.cutHeight = to.of[2];
  }
  if (to.of[2] > run.cutHeight + kSame) run.standsInCut = false;
}

bool IsOpened(const ControlRun& run, const Vec3& shown) {
  return run.opened.test(BitOf(run, shown.of[0], shown.of[1]));
}

void NoteWayHome(ControlRun& run, const Vec3& home) {
  const bool sideways = home.of[0] != run.shown.of[0] || home.of[1] != run.shown.of[1];
  if (sideways && run.standsInCut) Report(run, Finding::HomeInCut);
}

void NoteNoDiameter(ControlRun& run, std::int32_t number) {
  if (std::exchange(run.saidNoDiameter[number], true)) return;
  const bool unfit = run.table.tools[number].diameterUnfit;
  Report(run, unfit ? Finding::CompAsWear : Finding::CompNoDiameter, number);
}

void NoteChange(ControlRun& run) {
  run.sawChange = true;
  run.told.reset();
  run.probes = false;
  run.offLine = -1;
  run.opened |= run.drilled;
  run.stepsAtChange = !run.modes.absolute;
}

void NoteSpindlePlaced(ControlRun& run) { run.probes = true; }

void NoteUnfollowed(ControlRun& run, int code) {
  Report(run, Finding::NotFollowed, code, 'G');
  const auto end = std::end(kProbeCodes);
  if (std::find(std::begin(kProbeCodes), end, code) == end) return;
  run.probes = true;
  // It fed to where it measures, too.
  if (run.offLine >= 0) DropFinding(run.track->findings, Finding::SpindleOff, run.offLine);
}

void NoteSpindle(ControlRun& run) {
  run.sawSpindle = true;
  run.probes = false;
  run.offLine = -1;
  run.told[static_cast<std::size_t>(Finding::SpindleOff)] = false;
  run.told[static_cast<std::size_t>(Finding::NoSpeed)] = false;
}

void NoteMove(ControlRun& run, const ControlBlock& block) {
  const bool arc = run.modes.motion == 2 || run.modes.motion == 3;
  const bool feeds =
      (arc || run.modes.motion == 1) && (block.has & (arc ? kAxes | kCentre : kAxes));
  if (run.modes.feedMode == 93 && feeds && !block.Has('F')) {
    Report(run, Finding::InverseNoFeed);
  }
  // Many take G00 for what is in force behind G80.
  const bool moves = (block.has & kAxes) != 0 && run.modes.motion < 73;
  if (run.modeRemained && moves) {
    if (run.modes.motion > 0) Report(run, Finding::ModeLeft, run.modes.motion);
    run.modeRemained = false;
  }
  if (!run.stepsAtChange || (block.has & kAxes) == 0) return;
  // G91 that only a way home needed, and that the next moves still go by.
  if (!run.modes.absolute && !block.HasG(910)) Report(run, Finding::IncrementalLeft);
  run.stepsAtChange = false;
}

void NoteTravel(ControlRun& run, const Vec3& shown) {
  if (!run.offsetSet) return;
  for (int axis = 0; axis < 3; ++axis) {
    double machine = (shown.of[axis] + run.zero.of[axis]) / run.perInch;
    // A height of the machine is one of the spindle, whatever the tool's length.
    const bool ofSpindle = (run.machineAxes & 4) != 0;
    if (axis == 2 && run.modes.lengthMode != 49 && !ofSpindle) {
      const std::int32_t number = run.lengthNumber;
      const double length =
          number > 0 && number <= kControlTools ? run.table.tools[number].length : 0;
      // A length that is not set says nothing of where the spindle stands.
      if (length == 0) continue;
      machine += run.modes.lengthMode == 44 ? -length : length;
    }
    const double beyond = std::max(machine, -machine - run.table.travel[axis]);
    if (beyond > kSame) {
      ReportOnce(run, Finding::TravelExceeded, beyond * run.perInch / run.unit,
                 static_cast<char>('X' + axis));
    }
  }
}

void NoteEnd(ControlRun& run) {
  NoteBehindEnd(run);
  // A text without tool change and spindle is a part of a program: others start what it needs.
  if (run.sawChange || run.sawSpindle) return;
  DropFindings(run.track->findings, Finding::SpindleOff);
}

}  // namespace morva
