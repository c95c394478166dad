#include "simulator/machine_path.h"

#include <algorithm>

namespace morva {

namespace {

MotionPoint points[kMaxControlPoints];
MotionPoint programmedPoints[kMaxControlPoints];

// `seconds` may be null.
void DropLines(MotionPath& from, double* seconds, bool (*drops)(std::int32_t line)) {
  std::int32_t kept = 0;
  bool gap = false;  // the next point is an arrival
  for (std::int32_t i = 0; i < from.count; ++i) {
    if (drops(from.points[i].sourceLine)) {
      gap = true;
      continue;
    }
    from.points[kept] = from.points[i];
    from.points[kept].jump = from.points[i].jump || gap;
    if (seconds) seconds[kept] = seconds[i];
    gap = false;
    ++kept;
  }
  if (kept != from.count) ++from.generation;
  from.count = kept;
}

void MoveLines(MotionPath& of, LineShift& shift) {
  for (std::int32_t i = 0; i < of.count; ++i) {
    of.points[i].sourceLine = shift.Moved(of.points[i].sourceLine);
  }
  if (of.fullAtLine >= 0) of.fullAtLine = shift.Moved(of.fullAtLine);
  ++of.generation;
}

}  // namespace

MotionPath machinePath{points};
MotionPath machineProgrammed{programmedPoints};
double machineSeconds[kMaxControlPoints];
ControlTrack machineTrack{machinePath, machineProgrammed, machineSeconds};

void EmptyMachineTrack() {
  EmptyPath(machinePath);
  EmptyPath(machineProgrammed);
  machineTrack.findings = Findings{};
  machineTrack.operationCount = 0;
  machineTrack.totalSeconds = 0;
  machineTrack.printed.clear();
  machineTrack.spareUnits = -1;
}

void MoveMachineLines(LineShift& shift) {
  MoveLines(machinePath, shift);
  MoveLines(machineProgrammed, shift);
  for (std::int32_t i = 0; i < machineTrack.operationCount; ++i) {
    machineTrack.operations[i].line = shift.Moved(machineTrack.operations[i].line);
  }
}

void DropMachineLines(bool (*drops)(std::int32_t line)) {
  DropLines(machinePath, machineSeconds, drops);
  DropLines(machineProgrammed, nullptr, drops);
}

void AppendProgrammed(const MotionPath& from) {
  MotionPath& into = machineProgrammed;
  const std::int32_t room = kMaxControlPoints - into.count;
  const std::int32_t count = std::min(from.count, room);
  if (count <= 0) return;
  std::copy_n(from.points, count, into.points + into.count);
  into.points[into.count].jump = true;
  into.count += count;
  ++into.generation;
}

}  // namespace morva
