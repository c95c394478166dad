// How close the cuts of a path lie on the picture: whether its lines stand apart or run together.
#pragma once

#include "platform/geometry.h"
#include "simulator/motion_path.h"

namespace morva {

// What the cuts cover of the area around them: their length inside `client` times their width, over
// the least rectangle around it, so 1 is as much ink as there is room. `points` are the places of
// the points of the path on the picture, in pixels. Of more than 16,384 points some stand for all.
double CoveredPart(const MotionPath& of, const platform::PointF* points,
                   const platform::Rect& client);

// Up to kSparse lines stand apart, from kDense on they run together.
inline constexpr double kSparse = 0.8;
inline constexpr double kDense = 2.0;
double PartOfDense(double covered);  // 0 up to kSparse, 1 from kDense on

}  // namespace morva
