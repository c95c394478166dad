// The motion of the machine: points, their times, and what was found on the way.
#pragma once

#include <cstdint>
#include <string>

#include "app/limits.h"
#include "simulator/control_findings.h"
#include "simulator/control_table.h"
#include "simulator/motion_path.h"

namespace morva {

// A stretch of the program with one tool.
struct Operation {
  std::int32_t line = 0;  // 0-based, where it begins
  std::int32_t tool = 0;
  double began = 0;    // seconds since the start, behind the change of its tool
  double seconds = 0;  // up to the change of the next one
};

// So many lines that a tool does not fit say that the path was not drawn for its radius.
inline constexpr std::int32_t kMostMisfits = 3;

// Beside the points of `path`: when each is reached, and what the machine does on the way there.
struct ControlTrack {
  MotionPath& path;        // the tool's way
  MotionPath& programmed;  // the lines as written where cutter compensation moves the tool off them
  double* const seconds;   // since the start; as many as path has points
  Operation operations[kMaxOperations] = {};
  std::int32_t operationCount = 0;
  double totalSeconds = 0;
  Findings findings = {};
  std::u16string printed = {};  // by DPRNT, a line each
  // Of each D, lines at which its radius did not fit; an entry counts as all of kMostMisfits.
  std::int32_t misfits[kToolNumbers] = {};
  // So many characters of comment lines may be put into the text, and the run would be the same but
  // for its line numbers; below 0 none, and none may be taken out.
  std::int64_t spareUnits = -1;
};

// The one before it ends. In a full table that goes on instead.
void BeginOperation(ControlTrack& track, const Operation& operation);
// The run took so many seconds.
void EndOperations(ControlTrack& track, double seconds);
// Multiplies all times: what a measured run took over what was worked out.
void ScaleTimes(ControlTrack& track, double factor);

}  // namespace morva
