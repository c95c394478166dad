// The G codes of the control: their groups and what each does.
#pragma once

#include <cstdint>

namespace morva {

enum class CodeAction : unsigned char {
  Unknown,
  Motion,    // G00 to G03
  Cycle,     // G73, G74, G76, G77, G81 to G89
  CycleEnd,  // G80
  Plane,
  Absolute,
  Incremental,
  FeedMode,  // G93, G94, G95
  Inch,
  Metric,
  Compensation,
  Length,       // G43, G44, G49
  Return,       // G98, G99
  WorkOffset,   // G54 to G59, G110 to G129, G154
  ExactStop,    // G61, G64
  Scale,        // G50, G51
  Turn,         // G68, G69
  Mirror,       // G100, G101
  Dwell,        // G04
  ExactBlock,   // G09
  SetOffsets,   // G10
  Circle,       // G12, G13
  Home,         // G28
  FromHome,     // G29
  LocalZero,    // G52
  Machine,      // G53
  Macro,        // G65
  HolePattern,  // G70, G71, G72
  Shift,        // G92
  LookAhead,    // G103
  Pocket,       // G150
  NotFollowed,  // the control has it, the reader takes no motion from it
  Lathe,        // a code of turning machines
};

// Modal groups; codes of group 0 hold for their block.
struct CodeRow {
  CodeAction action = CodeAction::Unknown;
  std::uint8_t group = 0;
};

// By the code times ten.
CodeRow CodeOf(int timesTen);
// Whether an M code is one of this control.
bool IsKnownM(int code);

}  // namespace morva
