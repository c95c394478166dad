// Where the items of a pattern stand: the one source for code, pictures and sketch geometry.
#pragma once

namespace morva {

// Items on a circle about (x, y), the first at the start angle, counter-clockwise. Degrees.
struct CirclePlaces {
  double x = 0, y = 0;
  double diameter = 0;
  double start = 0;
  double quantity = 1;  // at least 1
};

// Rows and columns from (x, y) on; each runs along a direction of its own, in degrees.
struct GridPlaces {
  double x = 0, y = 0;
  int columns = 1;  // at least 1
  double stepX = 0, stepY = 0;
  double directionX = 0, directionY = 90;
};

struct ItemPlace {
  double x = 0, y = 0;
  double angle = 0;  // of the item on its circle, degrees, not reduced; 0 in a grid
};

// Item number `item`, counted from 0.
ItemPlace PlaceOnCircle(const CirclePlaces& circle, int item);
// Item number `item`, row by row from 0.
ItemPlace PlaceInGrid(const GridPlaces& grid, int item);

// How an item of a circle is turned; the numbers stand in records of blocks.
enum class Orientation { Fixed = 0, Radial = 1, Tangential = 2 };
inline constexpr const char16_t* kOrientationWords[] = {u"Fixed angle", u"Radial", u"Tangential"};
// The turn of an item that stands at `angle` and is turned by `rotation` itself, degrees.
double ItemTurn(Orientation orientation, double rotation, double angle);

}  // namespace morva
