// Pictures: what a builder shows, in units of its drawing, Y up.
//
// One set of records is painted into a view, painted at true size onto paper, hit by a click, and
// written as text. A builder fills the records and decides nothing about pixels.
//
// What is added later lies on top, with one exception: within a layer all fills lie below all
// lines, and the lines lie in the order of their inks. NextLayer begins a layer above. Dimension
// lines and labels lie above every layer.
//
// The tables grow as they are filled, up to the capacities in app/limits.h. What finds no room is
// left out and `full` stands.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/limits.h"
#include "platform/canvas.h"
#include "platform/geometry.h"
#include "platform/printer.h"

namespace morva {

// What a line or a fill stands for. Colours, widths and dashes follow from it. Within a layer the
// lines of a later ink lie on top.
enum class Ink : unsigned char {
  Face,     // a plate's surface
  Opening,  // where a plate is cut through
  Pocket,   // the floor of a blind cut
  ShadeDark,
  ShadeMid,
  ShadeLight,
  Stock,
  Construction,  // dashed: centre lines, bolt circles
  Hidden,        // what is switched off: dim on the screen, absent from paper
  Outline,
  Feature,  // what is cut; on a plate, through
  Blind,    // what is cut to a depth
  Dimension,
  Selected,
};
inline constexpr int kInks = 14;

inline constexpr int kNoPart = -1;  // what no click finds
inline constexpr platform::FontRole kPictureFont = platform::FontRole::Small;  // of its words
inline constexpr double kPictureFar = 1e9;  // drawing units; what lies farther out is refused

// A corner of a path. `bulge` bends the side that leads to the next corner: it is the tangent of
// a quarter of the arc's angle, 0 for a straight side, 1 for a half circle, above 0
// counter-clockwise.
struct PicturePoint {
  double x = 0;
  double y = 0;
  double bulge = 0;
};

// A circle, an ellipse with upright axes, or a piece of one.
struct PictureArc {
  double x = 0;  // centre
  double y = 0;
  double radiusX = 0;
  double radiusY = 0;
  double start = 0;    // degrees, counter-clockwise from +X
  double sweep = 360;  // degrees; -360 to 360
};

// A rectangle about its centre. The radius of the corners is held to half of the shorter side;
// held there, the box is a slot or a circle.
struct PictureBox {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  double angle = 0;   // degrees, counter-clockwise
  double radius = 0;  // of the corners
};

enum class MarkKind : unsigned char { Path, Loop, Fill, Arc, Disc, Cross, Layer };

// One thing that is painted.
struct PictureMark {
  MarkKind kind = MarkKind::Path;
  Ink ink = Ink::Outline;
  std::int32_t part = kNoPart;
  std::int32_t first = 0;  // in `points`; of Arc and Disc in `arcs`
  std::int32_t count = 0;
};

// Where a label stands as seen from its place.
enum class LabelSide : unsigned char { On, Above, Right, Below, Left };

// What a label is beside its place and its words.
struct LabelSpec {
  LabelSide side = LabelSide::On;
  double clear = 0;  // drawing units around the place that the label keeps free, On excepted
  Ink ink = Ink::Dimension;
  int part = kNoPart;
  int place = -1;     // the number under which the owner keeps the label's shift; -1: not moved
  double shiftX = 0;  // from its usual place, as a fraction of the area's width, to the right
  double shiftY = 0;  // as a fraction of the area's height, downwards
};

struct PictureLabel {
  double x = 0;
  double y = 0;
  LabelSpec spec;
  std::int32_t dimension = -1;  // the dimension that it belongs to
  std::int32_t width = 0;       // pixels of the words
  char16_t words[kPictureLabelUnits] = {};
};

// Across measures along X, Upright along Y, Along from point to point.
enum class DimensionWay : unsigned char { Across, Upright, Along, Diameter, Radius };

// A dimension. Diameter and Radius measure `radius` about the first point; the others the
// distance of the two points.
struct PictureDimension {
  DimensionWay way = DimensionWay::Across;
  double x0 = 0;
  double y0 = 0;
  double x1 = 0;
  double y1 = 0;
  double radius = 0;
  // Which row of dimension lines. Above 0: above the points, to their right, or to the left of
  // the way from the first point to the second; below 0 the other side; 0 on the points. -20 to 20.
  int row = 1;
  bool outside = false;  // rows count from the bounds of the whole picture, not from the points
  int times = 1;         // so many equal features: "4× " in front of the number
  double leader = 45;    // degrees, of the leader of Diameter and Radius
  std::int32_t label = -1;
};

// How coordinates of a drawing become pixels:
//
//     x pixel = originX + (x - centreX) * scaleX
//     y pixel = originY - (y - centreY) * scaleY
//
// Each point is computed by itself in double precision, so nothing adds up. On a screen whole
// pixels are the middles of pixels and both scales are the same.
//
// At 1:1 the scales are dots per inch, divided by 25.4 for a drawing in millimetres, each axis
// with its own:
//
//     x pixel = originX + (x - centreX) * dpiX           inch
//     x pixel = originX + (x - centreX) * (dpiX / 25.4)  millimetre
//
// The numbers stay fractions down to the canvas. Against the exact value they are off by less
// than a millionth of a pixel on any paper; only the chords of arcs add to that, at most a tenth
// of a pixel.
struct PictureView {
  platform::Rect area;
  double centreX = 0;  // the point of the drawing ...
  double centreY = 0;
  double originX = 0;  // ... that lies at this pixel
  double originY = 0;
  double scaleX = 0;  // pixels a unit; 0 is no view
  double scaleY = 0;
  bool paper = false;
  int pen = 1;        // pixels, on paper
  double crossX = 5;  // pixels from the middle of a cross to its ends
  double crossY = 5;
  double dash = 6;  // pixels of a dash; the gaps are two thirds of it
};

using PaperFigures = platform::PrinterFigures;

// Where the labels stand, in their order; kept until the picture or the view changes.
struct PicturePlaces {
  bool known = false;
  PictureView view;
  std::vector<platform::Rect> plates;
};

struct PictureBounds {
  double minX = 0;
  double minY = 0;
  double maxX = 0;
  double maxY = 0;
};

struct Picture {
  bool metric = false;
  bool full = false;     // something found no room
  bool unsound = false;  // something had a number that is not finite or too far out
  std::vector<PictureMark> marks;
  std::vector<PicturePoint> points;
  std::vector<PictureArc> arcs;
  std::vector<PictureLabel> labels;
  std::vector<PictureDimension> dimensions;
  bool hasBounds = false;
  PictureBounds bounds;  // of the marks
  PicturePlaces places;
};

// Empties the picture for a drawing in inches or millimetres. Memory is kept for the next one.
void ClearPicture(Picture& picture, bool metric);

// Each of these returns false and adds nothing where the picture is full or a number is unsound.
// `part` is the number that PartAt gives back. Lengths count by magnitude.
bool AddLine(Picture& picture, PicturePoint from, PicturePoint to, Ink ink, int part = kNoPart);
bool AddPath(Picture& picture, std::span<const PicturePoint> corners, Ink ink, int part = kNoPart);
// Closed: the last corner's side leads back to the first.
bool AddLoop(Picture& picture, std::span<const PicturePoint> corners, Ink ink, int part = kNoPart);
bool AddFill(Picture& picture, std::span<const PicturePoint> corners, Ink ink, int part = kNoPart);
bool AddCircle(Picture& picture, PicturePoint centre, double radius, Ink ink, int part = kNoPart);
bool AddArc(Picture& picture, const PictureArc& arc, Ink ink, int part = kNoPart);
// The whole ellipse, filled; start and sweep do not count.
bool AddDisc(Picture& picture, const PictureArc& arc, Ink ink, int part = kNoPart);
bool AddBox(Picture& picture, const PictureBox& box, Ink ink, int part = kNoPart);
bool AddFilledBox(Picture& picture, const PictureBox& box, Ink ink, int part = kNoPart);
// A cross of one size: 11 pixels on the screen, 0.08 inch on paper.
bool AddCross(Picture& picture, PicturePoint at, Ink ink, int part = kNoPart);
void NextLayer(Picture& picture);

// The index of the label, -1 where nothing was added. Words are cut to kPictureLabelUnits, the
// last unit being "…"; control characters become blanks.
int AddLabel(Picture& picture, PicturePoint at, std::u16string_view words,
             const LabelSpec& spec = {});
// A dimension with its label. Without words it shows its own number. Of the label's spec, side and
// clear do not count.
int AddDimension(Picture& picture, const PictureDimension& dimension, const LabelSpec& spec = {},
                 std::u16string_view words = {});
// The shift of a label after a drag. An index out of range does nothing.
void MoveLabel(Picture& picture, int label, double shiftX, double shiftY);
// A length as dimensions show it: 3 decimals in inches, 2 in millimetres, no unit.
std::u16string DimensionText(double length, bool metric);

// The bounds of the marks in drawing units, exact for arcs. False, with nothing changed, where
// there is no mark.
bool BoundsOfPicture(const Picture& picture, PictureBounds& bounds);

// The largest view that shows marks, labels and dimensions inside `area`: 14 pixels remain free
// around the marks, and more where labels need it, but never more than a third of the area on a
// side. The aspect is kept. One point lies in the middle at true size for a screen of 96 dots an
// inch; so does the origin of an empty picture.
PictureView FitPicture(const Picture& picture, const platform::Rect& area);
// The point `at` of a drawing lies at `pixel` of the page. False, with the view unchanged, where
// a figure of the printer is below 1 or a number is unsound.
bool OneToOne(const PaperFigures& paper, bool metric, PicturePoint at, platform::PointF pixel,
              PictureView& view);
// At 1:1 with the bounds of the marks in the middle of the page.
bool CentreOnPaper(const Picture& picture, const PaperFigures& paper, PictureView& view);
// The marks at 1:1, in whole pixels rounded half up, are not larger than the printable page.
bool FitsPaper(const Picture& picture, const PaperFigures& paper);
// Scales that are finite and above 0, places that are finite.
bool IsSound(const PictureView& view);
inline platform::PointF OnView(const PictureView& view, double x, double y) {
  return {view.originX + (x - view.centreX) * view.scaleX,
          view.originY - (y - view.centreY) * view.scaleY};
}
// The point of the drawing at a pixel of a sound view.
inline PicturePoint OffView(const PictureView& view, double pixelX, double pixelY) {
  return {view.centreX + (pixelX - view.originX) / view.scaleX,
          view.centreY - (pixelY - view.originY) / view.scaleY};
}

// Paints the whole picture on its ground, clipped to the view's area. Paper takes lines and
// crosses in black and nothing else: fonts have the size of screens there, and a template is
// made of lines. False, with nothing painted, for an unsound view, and on paper for a picture
// that is not complete; on the screen such a picture says so.
//
// Labels do not overlap where that can be avoided. Those that were moved stand where they were
// put. Then each dimension, then each plain label takes the first place that is free: a plain
// label its side, the other sides, then the same farther out; a dimension's label its line, places
// along it, then the next row. Without a free one it stands at its usual place. All are held
// inside the area, and a line leads to a plain label that stands far from its place.
bool PaintPicture(platform::Canvas& canvas, Picture& picture, const PictureView& view);

inline constexpr int kPictureReach = 6;  // pixels

// The part that lies at a pixel of the view, kNoPart for none: the topmost label that holds the
// pixel, else the nearest line within `reach` pixels, `reach` included, else the topmost fill
// around the pixel. Of lines at the same distance, to a thousandth of a pixel, the one that is
// painted later counts. A dimension's line has the part of its label.
int PartAt(Picture& picture, const PictureView& view, int x, int y, int reach = kPictureReach);
// The topmost label that holds the pixel, -1 for none; also those without a part.
int LabelAt(Picture& picture, const PictureView& view, int x, int y);

// The records as text, one a line, each line ended by "\n". Numbers have 4 decimals; one that
// rounds to zero has no sign.
std::u16string PictureText(const Picture& picture);

}  // namespace morva
