// The program of the editor as the control runs it: the tables of its points, their times and its
// findings. They are filled while the switch "Machine motion" is on.
#pragma once

#include "app/limits.h"
#include "simulator/control_path.h"
#include "simulator/marker_shift.h"
#include "simulator/motion_path.h"

namespace morva {

extern MotionPath machinePath;                    // room for kMaxControlPoints
extern MotionPath machineProgrammed;              // as many
extern double machineSeconds[kMaxControlPoints];  // since the start, of each point of machinePath
extern ControlTrack machineTrack;                 // of these three

// Leaves nothing in the tables.
void EmptyMachineTrack();
// Gives the points of both paths and the operations other line numbers.
void MoveMachineLines(LineShift& shift);
// Takes the points of some lines out of both paths. What the machine does there still counts in
// times and findings.
void DropMachineLines(bool (*drops)(std::int32_t line));
// Puts a path's points behind the programmed lines, as far as there is room.
void AppendProgrammed(const MotionPath& from);

}  // namespace morva
