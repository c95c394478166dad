#include "simulator/control_compensation.h"

#include "simulator/control_emit.h"

namespace morva {

void CompensateSegment(ControlRun& run, const ControlSegment& segment) {
  EmitSegment(run, segment);
}

void TakeCompensation(ControlRun& run, int code, const ControlBlock& block) {
  run.modes.compensation = code;
  if (block.Has('D')) run.diameterNumber = static_cast<std::int32_t>(block.Of('D'));
}

void FlushMoves(ControlRun&) {}

}  // namespace morva
