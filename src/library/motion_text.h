// Motion text: the G-code lines that the generators of shapes share.
//
// X, Y, Z, I and J have 3 decimals, F 2 on a plunge and on the first arc of a circle, 1
// elsewhere; half up on the absolute value, with "-" for every value below 0. I and J run from
// the unrounded start of their arc to its centre. The tool's centre follows the outline: no
// compensation, no lead-in. Lengths are in the unit of the program, angles in degrees
// counter-clockwise from +X.
#pragma once

#include <cstdint>
#include <string_view>

#include "text/code_writer.h"

namespace morva {

// How deep a cut goes, how fast, and the height of the rapids around it.
struct CutData {
  double depth = 0;
  double feed = 0;  // length units a minute
  double safeZ = 0;
};

// The numbers stand in records of blocks.
enum class ItemShape : std::int32_t {
  Circle = 0,
  Square = 1,
  Rectangle = 2,
  Triangle = 3,
  Diamond = 4,
  Slot = 5,
};
// Their words in lists, in this order.
inline constexpr const char16_t* kItemWords[] = {u"Circle",   u"Square",  u"Rectangle",
                                                 u"Triangle", u"Diamond", u"Slot"};

// The line of a program's unit: "G20 (INCH)" or "G21 (MM)".
inline std::u16string_view UnitLine(bool metric) { return metric ? u"G21 (MM)" : u"G20 (INCH)"; }
// Absolute, in the XY plane, feeds a minute.
inline constexpr std::u16string_view kPlainModes = u"G90 G17 G94";
// How a block begins: an empty line, its comment, its unit and the plain modes, a line each.
void PutHead(CodeWriter& out, std::u16string_view comment, bool metric);

// A closed outline about its centre. A circle's diameter is `width`; a slot is `width` long and
// `height` wide. Sizes count by magnitude; from square to diamond a height below 1e-6 is the
// width.
struct ClosedShape {
  ItemShape shape = ItemShape::Circle;
  double x = 0, y = 0;
  double width = 0, height = 0;
  double angle = 0;
};

// One line: the word, X, Y and, `withFeed`, F with 1 decimal. At most 219 units of it are kept.
void EmitMotion(CodeWriter& out, std::u16string_view word, double x, double y, double feed,
                bool withFeed);
// Rapid to the start and down to the depth.
void EmitStart(CodeWriter& out, double x, double y, const CutData& cut);
// Up to the height of the rapids.
void EmitRetract(CodeWriter& out, const CutData& cut);
// G02 or G03 to (x, y) about a centre that lies (i, j) from the arc's start; no feed.
void EmitArc(CodeWriter& out, std::u16string_view word, double x, double y, double i, double j);
// From rapid to retract along straights from point to point; nothing without a point.
void EmitPolyline(CodeWriter& out, const double* xs, const double* ys, int count,
                  const CutData& cut);
// The local point (lx, ly) turned counter-clockwise and moved to (cx, cy).
void RotatePoint(double cx, double cy, double lx, double ly, double angleDegrees, double& outX,
                 double& outY);
// A straight cut: rapid to the start, plunge, feed to the end, retract.
void EmitLine(CodeWriter& out, double x, double y, double endX, double endY, const CutData& cut);
// From rapid to retract. Squares and rectangles run counter-clockwise, triangles and diamonds
// clockwise. Another shape writes nothing.
void EmitClosedShape(CodeWriter& out, const ClosedShape& item, const CutData& cut);
// Clockwise in 16 arcs, because some controls refuse a full circle in one word. A diameter of
// 0 or less writes nothing. The angle is not looked at.
void EmitCircle(CodeWriter& out, const ClosedShape& circle, const CutData& cut);
// Counter-clockwise: straight, half circle, straight, half circle. A width below 1e-6 in size
// writes nothing; a length below the width leaves straights of no length between half circles.
void EmitSlot(CodeWriter& out, const ClosedShape& slot, const CutData& cut);

// A point of square to diamond in the shape's own frame, and how many there are; 0 for another.
int ShapeCorners(ItemShape shape, double width, double height, double* xs, double* ys);

}  // namespace morva
