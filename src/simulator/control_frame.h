// Places of the program and places as they are drawn.
//
// Drawn places are those of the first work offset that the program uses, so that an ordinary
// program lies where its numbers say. G92, G52, further offsets, G51, G68 and G101 move it there.
#pragma once

#include "simulator/control_run.h"

namespace morva {

// Axes of a plane in the order in which G03 turns from the first to the second, and the third.
struct PlaneAxes {
  int u, v, w;
};
PlaneAxes AxesOf(int plane);

Vec3 ShownOf(const ControlRun& run, const Vec3& program);
Vec3 ProgramOf(const ControlRun& run, const Vec3& shown);
// Whether an arc in the plane turns the other way round on the machine.
bool IsReversed(const ControlRun& run, int plane);

// The frame's shift out of its parts, and the program place of where the tool stands. Behind each
// change of the frame or of an offset.
void SettleFrame(ControlRun& run);

// Until the first move to a place of a work offset: the drawn zero is that of the work offset. The
// tool, and the moves to places of the machine that are drawn, stay where they are on the machine.
// An offset that is all zero is not set: then the drawn zero lies in the middle of the table, so
// that the way home has a length.
void PlaceZero(ControlRun& run, int workRow);
bool WorkOffsetIsSet(const ControlRun& run, int workRow);
bool AnyWorkOffsetIsSet(const ControlRun& run);

}  // namespace morva
