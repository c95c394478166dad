// Where a plate's features stand, how deep and in which shape they are cut. Pure functions; lengths
// are in the plate's unit, the plate's centre is the origin.
#pragma once

#include "library/motion_text.h"
#include "plate/model/plate.h"
#include "platform/geometry.h"

namespace morva {

// The form's numbers by name, in the plate's unit.
struct PlateNumbers {
  double length = 0, width = 0;
  double edgeRadius = 0;
  double size = 0;        // magnitude
  double slotLength = 0;  // magnitude
  int countX = 1, countY = 1;
  double edgeX = 0, edgeY = 0;  // magnitudes
  double patternDiameter = 0;
  double depth = 0;  // Z of the cut
  double feed = 0;
  double safeZ = 0;  // magnitude
  double thickness = 0;
  PlateShape shape = PlateShape::Rectangle;
  PlateFeatureType type = PlateFeatureType::Holes;
  PlateLayout layout = PlateLayout::Corners;
  bool metric = false;
};

// What last read as a number; counts are held to 1 to 20.
PlateNumbers NumbersOf(const PlateRecord& record);
// Every text reads by the strict rule. False: `refused` is the first PlateValue that does not.
bool PlateTextsRead(const PlateRecord& record, int& refused);

// 4, countX times countY, and on a circle at most 120 of these.
int FeatureCount(const PlateNumbers& numbers);
// The place that the layout gives to feature k, 0 to FeatureCount - 1.
platform::PointF LayoutPlace(const PlateNumbers& numbers, int k);
// The radius of the circle of a Circular layout.
double PatternRadius(const PlateNumbers& numbers);
// Where it stands: its own place, else the layout's.
platform::PointF FeaturePlace(const PlateNumbers& numbers, const PlateFeature& feature, int k);
// Z of its cut.
double FeatureZ(const PlateNumbers& numbers, const PlateFeature& feature);
// Down to the plate's thickness or beyond it.
bool IsThrough(const PlateNumbers& numbers, const PlateFeature& feature);

// What the feature type says: a circle, or a slot along X or Y.
ClosedShape PlainFeature(const PlateNumbers& numbers, int k, platform::PointF at);
// Half of width and height of the room that it takes about its place; of the plain feature, or of
// its own shape.
platform::PointF FeatureReach(const PlateNumbers& numbers, const PlateFeature& feature, int k);
// The polyline of an object of the feature's own shape as it is cut about `at`; arrays of
// kOutlinePoints. 0 for a work point or axis.
int FeatureOutline(const PlateNumbers& numbers, const SketchObject& object, platform::PointF at,
                   double* xs, double* ys);

// How far the plate reaches to both sides of its centre; a round plate has its length both ways.
platform::PointF PlateHalves(const PlateNumbers& numbers);
// The corner radius of a rectangle, held to half of the shorter side.
double CornerRadius(const PlateNumbers& numbers);
// A custom outline is stretched so that the shape is as long and as wide as the plate, about the
// plate's centre. Its work points and axes count, as in every measure of a shape.
struct OutlineStretch {
  double middleX = 0, middleY = 0;  // of the outline, inches
  double scaleX = 0, scaleY = 0;    // the plate's units for an inch; 0 where it has no extent
};
OutlineStretch StretchOf(const PlateNumbers& numbers, const SavedShape& outline);
// The polyline of an object of the outline; arrays of kOutlinePoints. 0 for a work point or axis.
int StretchedOutline(const OutlineStretch& stretch, const SketchObject& object, double* xs,
                     double* ys);

}  // namespace morva
