// The looping example of the machining wizard: a small demonstration of one operation that plays
// in the toolpath view, again and again, over stock of its own.
//
// It is the path of the builder that is open, so the program's path, head, speed and view stay as
// they are behind it.
#pragma once

#include "text/code_writer.h"

namespace morva {

inline constexpr int kExamples = 5;  // face, profile, drill, peck, tap

// The demonstration of an operation, 0 to 4: three lines, its moves, three lines. In inches,
// whatever unit the user works in. Another number writes no moves.
void WriteExample(int operation, CodeWriter& out);

// Shows the example of an operation, 0 to 4, from its first point, at its own speed and from its
// own side. The same for a change of the operation. Another number leaves what is shown.
void ShowExample(int operation);
// The program is shown again as it was, with its path read anew; the builder has its own side and
// speed back. Nothing happens where no example is shown.
void LeaveExample();
// The user works in another unit now: the example begins again in that one.
void FollowExampleUnits();

}  // namespace morva
