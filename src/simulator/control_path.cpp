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

void ScaleTimes(ControlTrack& track, double factor) {
  if (factor == 1) return;
  track.totalSeconds *= factor;
  for (std::int32_t i = 0; i < track.path.count; ++i) track.seconds[i] *= factor;
  for (std::int32_t i = 0; i < track.operationCount; ++i) {
    track.operations[i].began *= factor;
    track.operations[i].seconds *= factor;
  }
}

}  // namespace morva
