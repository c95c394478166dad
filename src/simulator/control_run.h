// A run of the control over a program: its place, its state, and where its motion goes.
//
// Internal to the reader of the machine's motion. A block is read whole and checked, then acts in
// numbered steps (control_motion.cpp). Lengths of the state are in display units; variables hold
// program units, as a program sees them.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "app/limits.h"
#include "simulator/control_offset.h"
#include "simulator/control_path.h"
#include "simulator/control_table.h"

namespace morva {

struct Vec3 {
  double of[3] = {0, 0, 0};
};

// The modal codes in force, one of each group (control_codes.cpp).
struct ControlModes {
  int motion = 0;  // 0 to 3; a cycle's number while one is in force
  int line = 0;    // 0 to 3: what remains when a cycle ends
  int plane = 17;
  bool absolute = true;
  int feedMode = 94;
  bool metric = false;
  int compensation = 40;
  int lengthMode = 49;
  int returnPlane = 98;
  int workRow = kFirstWorkRow;
  bool exactStop = false;
};

struct CycleWords {  // R, Z, Q, P, I, J, K of the cycle in force; lengths in display units
  double r = 0, z = 0, q = 0, dwell = 0, i = 0, j = 0, k = 0;
  bool hasQ = false, hasI = false, hasJ = false, hasK = false;
  bool named = false;                 // its first line had R and Z
  bool rStep = false, zStep = false;  // given in G91: from the initial plane, and from R
  double initialPlane = 0;
};

// From program places to shown ones: scale about a point, turn about a point, mirror, shift.
struct ControlFrame {
  double scale = 1;
  Vec3 scaleCentre;
  bool turned = false;
  int turnU = 0, turnV = 1;  // axes of the plane that turns
  double turnCos = 1, turnSin = 0, turnCentreU = 0, turnCentreV = 0;
  bool mirror[3] = {false, false, false};
  Vec3 shift;  // G92, G52 and the work offset, less the place of the drawn zero
  Vec3 g92;
  bool shiftsOnly = true;  // neither scaled nor turned nor mirrored
};

enum class CallKind : unsigned char { Main, Label, Program, Macro, Pocket };

struct ControlText {
  std::u16string_view text;
  std::int32_t number = -1;  // of its O word
  struct Label {
    std::int32_t number;
    std::int32_t line;
    std::size_t at;
  };
  // Lines with N and with O at their start, by number, those of one number by place. Made at the
  // first jump or call.
  std::vector<Label> labels;
  std::vector<Label> programs;
  std::vector<std::size_t> starts;  // of the programs, by place
  bool indexed = false;
};

struct ControlPlace {
  int text = 0;
  std::size_t at = 0;
  std::int32_t line = 0;
};

// A program that was looked for, found or not.
struct ControlProgram {
  std::int32_t number = 0;
  bool found = false;
  ControlPlace place;  // of its O word
};

struct ControlLoop {
  int number = 0;
  ControlPlace start;
};

struct ControlCall {
  CallKind kind = CallKind::Main;
  ControlPlace back;         // behind the call
  ControlPlace start;        // for repeats
  std::int32_t repeats = 0;  // still to come
  std::int32_t shownLine =
      -1;          // line of the program that bears what a called text does, -1: its own
  int locals = 0;  // row of local variables
  int loopCount = 0;
  ControlLoop loops[kMaxLoops];
};

inline constexpr int kLocals = 34;     // #0 to #33
inline constexpr int kCommons = 1000;  // #100 to #999

// Undefined variables hold a NaN.
struct ControlVariables {
  double locals[kMaxCalls + 1][kLocals];
  double common[kCommons];
  std::uint8_t last[26] = {};
};

// A stretch of motion in shown places.
struct ControlSegment {
  enum class Kind : unsigned char { Rapid, Line, Arc } kind = Kind::Line;
  Vec3 from, to;
  double centreU = 0, centreV = 0;  // in the plane's axes
  int plane = 17;
  bool clockwise = false;
  std::int32_t line = 0;
  double feed = 0;  // display units a minute; in G93 one over minutes
  bool inverse = false;
  std::uint8_t machineAxes = 0;  // of its end, as in MotionPoint
};

// Cutter compensation under way.
struct ControlCompensation {
  int side = 0;           // 0 off, 1 left, -1 right
  int wanted = 0;         // of the last G40, G41 or G42
  bool ofPocket = false;  // ... which is a word of a G150: many write no G40 behind it
  double radius = 0;      // display units; below 0 the tool goes to the other side
  Vec3 at;                // the tool's centre
  bool holds = false;     // a move waits for the next one
  bool entry = false;     // ... on which compensation begins
  ControlSegment held;
  ControlSegment heights[kMaxHeldMoves];  // moves along Z that wait behind it
  int heightCount = 0;
  double waitSeconds = 0;  // at the corner behind the held move
  double finish = 0;  // that a pocket's outline leaves for its last run, which tells what is amiss
};

// A corner that ",C" or ",R" cuts: the line up to it waits for the one behind. The program stands
// at the corner already, the tool at the line's start.
struct ControlCorner {
  char kind = 0;  // 'C', 'R', 0 for none
  double size = 0;
  Vec3 from;
  Vec3 to;
  std::int32_t line = 0;
};

// A general pocket under way: its outline is called at one depth behind the other.
struct ControlPocket {
  bool on = false;
  bool ofProgram = false;  // the outline is a program of its own, and no part of the calling one
  std::int32_t line = 0;   // that its own moves are told for
  Vec3 start;              // program place, at R
  double bottom = 0;
  double step = 0;  // above 0
  double reached = 0;
  double feed = 0;
  int wanted = 0;          // cutter compensation of the outline, as in ControlCompensation
  bool finishing = false;  // the outline runs for the last time, at the bottom
};

// A move of its outline, and compensation as it stood there.
struct OutlineMove {
  ControlSegment segment;
  int wanted = 0;
  double radius = 0;
};

struct GroundStroke {
  Flat from, to;
  bool over = false;  // to its start the tool goes by way of R, as a wall stands between
};

// What such a pocket clears within its outline, in shown places.
struct PocketGround {
  bool wanted = false;   // the block says how far apart
  bool noting = false;   // the outline runs for the first time, and its moves wait in `moves`
  bool alongX = true;    // direction of the strokes
  bool beside = false;   // the tool runs beside the outline
  bool between = false;  // the tool goes from one stroke to the next, on a way that is presumed
  double step = 0;       // between two strokes, above 0
  double radius = 0;     // that the tool keeps off the outline, 0 where that is its own way
  double finish = 0;     // that strokes leave at the walls
  std::vector<OutlineMove> moves;
  std::vector<Flat> outline;  // a loop: the last place is the first
  std::vector<GroundStroke> strokes;
  bool backOver = false;  // behind the last stroke too
};

struct StockCheck;

// Places in XY, each as a bit that several share: a place that is not among them may seem to be,
// the more the fuller it is.
inline constexpr std::size_t kPlaceBits = 4096;
using PlaceBits = std::bitset<kPlaceBits>;

struct ControlRun {
  ControlTable table;  // what the program may write
  ControlTrack* track = nullptr;
  double perInch = 1;  // display units
  double unit = 1;     // display units of a program unit
  bool unitKnown = false;
  std::int32_t (*findProgram)(std::int32_t number, std::u16string_view& text) = nullptr;

  std::vector<ControlText> texts;  // the first is the program's
  std::vector<ControlProgram> programs;
  bool entersProgram = false;  // the next block is the first of a program: its O word ends nothing
  ControlPlace place;
  std::int32_t line = 0;  // that motion and findings are told for
  ControlCall calls[kMaxCalls + 1];
  int callCount = 1;  // the main program is the first
  ControlVariables variables;

  ControlModes modes;
  CycleWords cycle;
  ControlFrame frame;
  ControlCompensation compensation;
  ControlCorner corner;
  ControlPocket pocket;
  PocketGround ground;
  std::unique_ptr<StockCheck> stock;  // null: no stock is known
  Vec3 reached;                       // the end of the way that it has seen
  Vec3 zero;                          // machine place of the drawn zero, display units
  Vec3 homeBy;                        // the point that the last G28 went by, for G29
  Vec3 at;                            // program place
  Vec3 shown;                         // the same, drawn
  std::uint8_t machineAxes = 7;  // axes that stand at a place of the machine, as in MotionPoint

  double feed = 0;         // display units a minute, or one over minutes in G93
  double feedPerTurn = 0;  // of the last F, for an S behind it in G95
  bool feedKnown = false;
  double speed = 0;
  bool speedKnown = false;  // by an S
  bool spindle = false;
  std::int32_t tool = 0;        // in the spindle
  std::int32_t toolCalled = 0;  // by the last T
  std::int32_t lengthNumber = 0;
  std::int32_t diameterNumber = 0;
  bool lengthMissing = false;  // nobody has set the length of H, and others are
  bool lengthInForce = false;  // by G43 or G44, since the last change of tools
  bool offsetSet = false;      // the work offset in force
  bool offsetMissing = false;  // it is not set, and another one is

  // Bounds of what is run again.
  std::int32_t jumps = 0;
  std::int64_t repeatedUnits = 0;
  std::int64_t repeats = 0;  // stretches whose characters these are
  std::int64_t strokes = 0;
  std::int64_t mostStrokes = 0;        // up to the end of the present block
  std::int64_t groundLooks = 8000000;  // at lines of pockets' outlines, a tenth of a second
  ControlPlace blockStart;
  bool ended = false;       // M30, M02, M99, an alarm, or a bound
  bool sawEnd = false;      // by M30, M02 or M99
  bool stopped = false;     // by a finding
  bool outOfSteps = false;  // ... by one of the bounds above

  bool moved = false;          // a move was drawn
  bool movedInWork = false;    // ... to a place of a work offset
  bool codeSeen = false;       // a "%" from here on closes the program
  bool sawPoint = false;       // a length with a decimal point
  bool sawChange = false;      // M06
  bool sawSpindle = false;     // M03 or M04
  bool modeRemained = false;   // a cycle has ended, and no G00 to G03 stood since
  bool standsInCut = false;    // a cut along X or Y, or downwards, ended at cutHeight
  double cutHeight = 0;        // display units
  bool probes = false;         // the tool feeds with the spindle off, as it should
  std::int32_t offLine = -1;   // of the finding that it does, of this tool and start of the spindle
  PlaceBits drilled;           // where a tool went straight down
  PlaceBits opened;            // ... an earlier one than that in the spindle; middles of arcs in XY
  bool jumped = false;         // by GOTO or by P of M99
  std::uint32_t axesTold = 0;  // letters of axes that are not followed
  bool stepsAtChange = false;  // G91 was in force at the last change of tools
  bool saidNoDiameter[kControlTools + 1] = {};
  std::bitset<kFindings> told;    // findings that hold until something changes
  double lastWay[3] = {0, 0, 0};  // direction of the last feed, for corners in time
  double time = 0;                // seconds since the start
  double timerMs = 0;             // what #3001 shows beyond it
  double timerHours = 0;          // ... and #3002
};

inline constexpr std::int64_t kMostRepeatedUnits = 16000000;  // characters that are run again

// Stops the run where a finding makes going on senseless.
void StopWith(ControlRun& run, Finding kind, double number = 0);
// Whether a block repeats its moves beyond the bound; the reader stops behind it.
inline bool OutOfStrokes(const ControlRun& run) { return run.strokes > run.mostStrokes; }
// A finding of the present line, which is told once for the line and kind.
inline void Report(ControlRun& run, Finding kind, double number = 0, char letter = 0) {
  AddFinding(run.track->findings, {kind, run.line, number, run.modes.metric, letter});
}

}  // namespace morva
