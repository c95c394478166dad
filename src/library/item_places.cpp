#include "library/item_places.h"

#include "library/outline.h"

namespace morva {

ItemPlace PlaceOnCircle(const CirclePlaces& circle, int item) {
  const double a = item * 360.0 / circle.quantity + circle.start;
  const double r = circle.diameter / 2;
  return {circle.x + r * SketchCosine(a), circle.y + r * SketchSine(a), a};
}

ItemPlace PlaceInGrid(const GridPlaces& grid, int item) {
  const double alongX = item % grid.columns * grid.stepX;
  const double alongY = item / grid.columns * grid.stepY;
  return {grid.x + alongX * ExactCosine(grid.directionX) + alongY * ExactCosine(grid.directionY),
          grid.y + alongX * ExactSine(grid.directionX) + alongY * ExactSine(grid.directionY), 0};
}

double ItemTurn(Orientation orientation, double rotation, double angle) {
  if (orientation == Orientation::Radial) return rotation + angle;
  if (orientation == Orientation::Tangential) return rotation + angle + 90;
  return rotation;
}

}  // namespace morva
