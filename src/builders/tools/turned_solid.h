// Turned bodies in a picture: seen from the front and a little above, shaded from the left.
#pragma once

#include <span>

#include "forms/picture.h"

namespace morva {

// Where the radius of a body is given; between two of them it is a cone. Radii are not below 0,
// heights do not fall.
struct TurnedRing {
  double radius = 0;
  double height = 0;
};

// A point of a body's skin; angle 0 is in front, above it to the right, radians.
PicturePoint OnTurned(double radius, double height, double angle);
// The radius at a height between the first ring and the last.
double RadiusAt(std::span<const TurnedRing> rings, double height);
// From the lowest ring up. What is above hides what is below and behind.
void AddTurned(Picture& picture, std::span<const TurnedRing> rings);

}  // namespace morva
