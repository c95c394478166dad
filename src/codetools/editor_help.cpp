#include "codetools/editor_help.h"

#include "app/command_ids.h"
#include "app/outlets.h"
#include "documents/save_words.h"
#include "documents/tab_table.h"
#include "library/code_index.h"
#include "platform/editor.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::size_t kTokenMost = 63;
constexpr std::size_t kLineMost = 1000;  // units of the caret's line that are looked at

struct FixedHelp {
  std::u16string_view token;
  std::u16string_view words;
};

constexpr std::u16string_view kArc =
    u"Circular interpolation. In XY work use G17; specify endpoint plus I/J center offsets or R. "
    u"A feed F must be active.";
constexpr std::u16string_view kCompensation =
    u"Cutter compensation left/right. Requires the correct D offset plus a suitable lead-in move; "
    u"verify cutter diameter and direction.";
constexpr std::u16string_view kOffset =
    u"Work coordinate offset. Verify this offset is established correctly on the machine.";

constexpr FixedHelp kFixed[] = {
    {u"G00",
     u"Rapid positioning. No F feed is required. Verify the entire rapid path, work offset, and Z "
     u"clearance before motion."},
    {u"G01",
     u"Feed-limited linear move. Requires a valid F feedrate (on this or a previous modal block) "
     u"and the intended G90/G91 positioning mode."},
    {u"G02", kArc},
    {u"G03", kArc},
    {u"G17",
     u"Selects the XY plane. This controls how G02/G03 arcs and many canned cycles interpret "
     u"coordinates."},
    {u"G20", u"Inch units. Confirm offsets, feeds, and every programmed dimension use inches."},
    {u"G21",
     u"Metric units. Confirm offsets, feeds, and every programmed dimension use millimeters."},
    {u"G40",
     u"Cancels cutter compensation. Use before/after compensated paths as required by the lead-in "
     u"and lead-out strategy."},
    {u"G41", kCompensation},
    {u"G42", kCompensation},
    {u"G43",
     u"Positive tool length compensation. Requires the correct H offset, normally activated with a "
     u"safe Z move."},
    {u"G49",
     u"Cancels tool length compensation. Verify Z clearance before canceling or changing length "
     u"compensation."},
    {u"G54", kOffset},
    {u"G55", kOffset},
    {u"G56", kOffset},
    {u"G57", kOffset},
    {u"G58", kOffset},
    {u"G59", kOffset},
    {u"G80",
     u"Cancels an active canned cycle such as G81/G83/G84. Use it before unrelated motion."},
    {u"G81",
     u"Drilling canned cycle. Requires Z, R, and F; X/Y locate holes. Cancel with G80. G98/G99 "
     u"controls the return level."},
    {u"G83",
     u"Peck drilling canned cycle. Requires Z, R, Q peck amount, and F. Cancel with G80; verify "
     u"peck/retract behavior on the control."},
    {u"G84",
     u"Tapping canned cycle. Requires Z, R, and a feed matched to thread pitch and RPM. Verify "
     u"rigid tapping capability/settings on this machine."},
    {u"G90",
     u"Absolute positioning. X/Y/Z values are interpreted from the active work-coordinate zero."},
    {u"G91",
     u"Incremental positioning. X/Y/Z values are interpreted as moves from the current position."},
    {u"M03",
     u"Spindle forward. A suitable S spindle speed should be active and the tool/workholding must "
     u"be safe for rotation."},
    {u"M05", u"Spindle stop."},
    {u"M06",
     u"Tool change. Select the intended T tool and verify carousel/pocket setup before "
     u"execution."},
    {u"M08", u"Flood coolant on. Verify coolant is appropriate for the tool, material, and setup."},
    {u"M09", u"Coolant off."},
    {u"M30",
     u"Program end and reset/rewind behavior. Normally used at the safe end of the main program."},
};

// Addresses with anything behind the letter.
constexpr FixedHelp kAddresses[] = {
    {u"F",
     u"Feedrate address. Required for feed-limited motion/cycles unless a valid modal feed is "
     u"already active."},
    {u"X",
     u"X-axis address. Meaning depends on the active motion code and G90 absolute / G91 "
     u"incremental mode."},
    {u"Y",
     u"Y-axis address. Meaning depends on the active motion code and G90 absolute / G91 "
     u"incremental mode."},
};

constexpr std::u16string_view kSequence =
    u"Sequence/block number. Used for navigation, references, and macro GOTO targets; it does not "
    u"create motion.";

bool IsTokenUnit(char16_t c) {
  const char16_t folded = FoldUpper(c);
  return IsDigit(c) || (folded >= u'A' && folded <= u'Z') || c == u'.' || c == u'-' || c == u'+' ||
         c == u'#';
}

Token TokenAtPosition(int id, int position) {
  const int line = platform::EditorLineOf(id, position);
  const int start = platform::EditorLineStart(id, line);
  Token token =
      TokenInLine(platform::EditorLineText(id, line).substr(0, kLineMost), position - start);
  token.start += start;
  token.end += start;
  return token;
}

}  // namespace

Token TokenInLine(std::u16string_view line, int place) {
  Token token;
  if (place < 0 || static_cast<std::size_t>(place) > line.size()) return token;
  auto at = static_cast<std::size_t>(place);
  if (at == line.size() || !IsTokenUnit(line[at])) {
    if (at == 0 || !IsTokenUnit(line[at - 1])) return token;
    --at;
  }
  std::size_t start = at;
  while (start > 0 && IsTokenUnit(line[start - 1])) --start;
  std::size_t end = at;
  while (end < line.size() && IsTokenUnit(line[end])) ++end;
  token.start = static_cast<int>(start);
  token.end = static_cast<int>(end);
  for (std::size_t i = start; i < end && i < start + kTokenMost; ++i) {
    token.text += FoldUpper(line[i]);
  }
  return token;
}

Token TokenAtCaret() {
  const int id = ShownEditor();
  return TokenAtPosition(id, platform::EditorSelection(id).to);
}

Token TokenAtPoint(int id, int x, int y) {
  return TokenAtPosition(id, platform::PositionAt(id, x, y));
}

std::u16string HelpForToken(std::u16string_view token) {
  if (token.empty()) return {};
  for (const FixedHelp& help : kFixed) {
    if (help.token == token) return std::u16string(help.words);
  }
  if (token.size() > 1) {
    if (token[0] == u'N' && token[1] >= u'0' && token[1] <= u'9') return std::u16string(kSequence);
    for (const FixedHelp& help : kAddresses) {
      if (help.token[0] == token[0]) return std::u16string(help.words);
    }
  }
  const int row = FindCodeRow(token);
  if (row < 0) return {};
  return std::u16string(codeTable[row].code) + u"  \u2014  " + std::u16string(codeTable[row].name) +
         u". Verify modal state and 1997 control support.";
}

void ShowHoverHelp(std::u16string_view token) {
  if (token.empty()) return;
  // That nothing is saved stays told as long as it is so.
  if (TellHoldOfShown()) return;
  const std::u16string help = HelpForToken(token);
  if (help.empty()) return ShowStanding();
  ShowStatus(help);
}

void ShowAskedHelp(std::u16string_view token) {
  const std::u16string help = HelpForToken(token);
  if (help.empty()) return ShowHoverHelp(token);
  ShowStatus(help);
}

}  // namespace morva
