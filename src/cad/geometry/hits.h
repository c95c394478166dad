// Which object of the live sketch lies under a drawing position.
#pragma once

namespace morva {

// Topmost object under a drawing position, -1 for none; insides of closed shapes count.
int HitObject(double x, double y);
// Nearest edge within 10 pixels, of visible, unlocked objects of types 0 to 3; -1 for none.
int HitEdge(double x, double y);

}  // namespace morva
