// Regular polygons: a closed run of lines in a group of its own, by two clicks or the panel.
#pragma once

namespace morva {

inline constexpr int kLeastSides = 3;

// Sides of the next polygon from the panel's field: 3 to 64, 0 when it holds something else.
int PolygonSidesField();
// Closed lines of a fresh group. False: refused, the status says why.
bool CreatePolygon(int sides, double radius, double centreX, double centreY, double startAngle);
// CreatePolygon without a word on the status line.
bool MakePolygon(int sides, double radius, double centreX, double centreY, double startAngle);
void CreatePolygonFromPanel();

}  // namespace morva
