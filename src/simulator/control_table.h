// What the control knows besides the program: its switches, its offsets, its rates.
//
// The user keeps it in the settings file; the reader of the machine's motion works on a copy,
// because programs write offsets. Lengths are in inches unless a line says otherwise.
#pragma once

#include <cstdint>

#include "app/limits.h"

namespace morva {

inline constexpr int kLocalZeroRow = 0;    // G52
inline constexpr int kFirstWorkRow = 1;    // G54 to G59
inline constexpr int kFurtherWorkRow = 7;  // G154 P1 to P99; G110 to G129 are P1 to P20
inline constexpr int kFurtherWorkRows = 99;
inline constexpr int kWorkRows = kFurtherWorkRow + kFurtherWorkRows;
inline constexpr int kControlTools = 200;  // numbers of lengths and diameters, 1 to 200
inline constexpr int kToolNumbers = kControlTools + 1;  // with 0, which has none

struct ToolOffset {
  double length = 0;
  double lengthWear = 0;
  double diameter = 0;
  double diameterWear = 0;
  bool lengthSaid = false;     // by the user: a length of 0 is meant so
  bool diameterSaid = false;   // by the user; a 0 that nobody said may be known from elsewhere
  bool diameterUnfit = false;  // one known from elsewhere was taken away: the path does not fit it

  bool operator==(const ToolOffset&) const = default;
};

struct ControlTable {
  // How a number without a decimal point counts on a length: in the control's least step, 0.0001 in
  // or 0.001 mm, or as whole units.
  bool wholeLengths = false;
  bool wholeFeeds = false;    // the same of F
  bool blockDelete = false;   // "/" takes a line out
  bool optionalStop = false;  // M01 stops; it changes no path
  bool drillsInPlace = true;  // a cycle's line without X and Y drills where the tool stands
  double peckRetract = 0.05;  // G73's way back, and how far above the last depth G83 comes again
  double retractAboveR = 0;   // G83 lifts so far above R
  double scale = 1;           // of G51 without P
  int shiftDirection = 0;     // of G76 and G77 with Q: 0 X+, 1 X-, 2 Y+, 3 Y-

  double work[kWorkRows][3] = {};  // machine position of each zero
  ToolOffset tools[kToolNumbers];

  double travel[3] = {40, 20, 25};    // from machine zero towards minus
  double rapidRate = 710;             // in/min, of each axis
  double acceleration = 50;           // in/s^2
  double toolChangeSeconds = 6;       // chip to chip without the way of Z
  double spindleSeconds = 2;          // to start or to stop
  double reversalSeconds = 0.0375;    // the lag of the drives at a sharp corner
  double leastBlockSeconds = 0.0025;  // a block takes no less
  double timeFactor = 1;              // measured over estimated: all times are told by it
  double mostSpeed = 7500;            // rpm

  bool operator==(const ControlTable&) const = default;
};

}  // namespace morva
