#include "simulator/control_path.h"

namespace morva {

void BeginOperation(ControlTrack& track, const Operation& operation) {
  std::int32_t& count = track.operationCount;
  if (count > 0)
    track.operations[count - 1].seconds = operation.began - track.operations[count - 1].began;
  const bool goesOn = count == kMaxOperations;
  if (!goesOn) track.operations[count++] = operation;
}

void EndOperations(ControlTrack& track, double seconds) {
  track.totalSeconds = seconds;
  if (track.operationCount == 0) return;
  Operation& last = track.operations[track.operationCount - 1];
  last.seconds = seconds - last.began;
}

}  // namespace morva
