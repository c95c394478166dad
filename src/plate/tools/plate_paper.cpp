#include "plate/tools/plate_paper.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "app/palette.h"
#include "library/outline.h"
#include "text/length_units.h"
#include "text/series_trig.h"

namespace morva {

namespace {

using platform::Canvas;
using platform::Pen;
using platform::PointF;
using platform::Rect;

constexpr int kFineDots = 300;        // per inch, from which the pen is 2 pixels wide
constexpr int kPlateChords = 72;      // of a round plate
constexpr double kChordError = 0.1;   // pixels between a corner's arc and its chords
constexpr double kCrosshair = 0.04;   // inches from the centre of a feature to the ends
constexpr double kCentreCross = 0.1;  // inches from the plate's centre to the ends
constexpr double kSideTick = 0.1;     // inches, from the middle of a side inwards
// The check bar, in millimetres.
constexpr double kBarLength = 100;
constexpr double kBarHeight = 4;
constexpr double kBarStep = 10;
constexpr double kBarEdge = 1;      // to the edge of the printable area
constexpr double kBarClear = 3;     // to the plate, and to the words
constexpr double kWordsWidth = 35;  // at least
constexpr platform::FontRole kBarFont = platform::FontRole::Small;
constexpr const char16_t* kBarWords = u"100 mm = 3.937 in";

Pen PenOf(const PlateSheet& sheet) {
  Pen pen;
  pen.colour = kPaperInk;
  pen.width = std::min(sheet.page.dpiX, sheet.page.dpiY) < kFineDots ? 1 : 2;
  return pen;
}

PointF CentreOf(const PlateSheet& sheet) {
  return {sheet.left + sheet.width / 2.0, sheet.top + sheet.height / 2.0};
}

// The whole pixels of a length in the plate's units; as a number, as it may be larger than any
// page.
double PixelsOf(double length, double scale) { return std::floor(std::fabs(length) * scale + 0.5); }

double Rounded(double pixels) { return std::floor(pixels + 0.5); }

// A painter that scales points about a pixel of the page.
struct Plotter {
  Canvas& canvas;
  const PlateSheet& sheet;
  Pen pen;

  PointF At(PointF middle, double x, double y) const {
    return {middle.x + x * sheet.scaleX, middle.y - y * sheet.scaleY};
  }
  // A polyline in the plate's units about `middle`.
  void Line(PointF middle, const double* xs, const double* ys, int count) const {
    PointF points[kOutlinePoints];
    for (int i = 0; i < count; ++i) points[i] = At(middle, xs[i], ys[i]);
    if (count > 1) platform::PaintPolyline(canvas, points, count, pen);
  }
  void Object(PointF middle, const SketchObject& object) const {
    double xs[kOutlinePoints];
    double ys[kOutlinePoints];
    Line(middle, xs, ys, ObjectOutline(object, xs, ys));
  }
  // A cross whose arms are so many inches long.
  void Cross(PointF middle, double arm) const {
    const double x = arm * sheet.page.dpiX;
    const double y = arm * sheet.page.dpiY;
    platform::PaintLine(canvas, {middle.x - x, middle.y}, {middle.x + x, middle.y}, pen);
    platform::PaintLine(canvas, {middle.x, middle.y - y}, {middle.x, middle.y + y}, pen);
  }
};

void PaintRound(const Plotter& plot, const PlateSheet& sheet) {
  const PointF centre = CentreOf(sheet);
  PointF points[kPlateChords + 1];
  for (int i = 0; i <= kPlateChords; ++i) {
    const double angle = kTwoPi * (i % kPlateChords) / kPlateChords;
    points[i] = {centre.x + sheet.width / 2.0 * SeriesCosine(angle),
                 centre.y - sheet.height / 2.0 * SeriesSine(angle)};
  }
  platform::PaintPolyline(plot.canvas, points, kPlateChords + 1, plot.pen);
}

// Chords of a quarter of an ellipse, so that none leaves its arc by more than the error.
int ChordsOfCorner(double radius) {
  if (radius <= kChordError) return 1;
  const double step = 2 * std::acos(1 - kChordError / radius);
  return std::max(1, static_cast<int>(std::ceil(kTwoPi / 4 / step)));
}

void PaintRectangle(const Plotter& plot, const PlateSheet& sheet) {
  const double radius = CornerRadius(sheet.numbers);
  const double radiusX = std::min(radius * sheet.scaleX, sheet.width / 2.0);
  const double radiusY = std::min(radius * sheet.scaleY, sheet.height / 2.0);
  const double right = sheet.left + sheet.width;
  const double bottom = sheet.top + sheet.height;
  const bool sharp = radius <= 0;
  const int chords = sharp ? 0 : ChordsOfCorner(std::max(radiusX, radiusY));
  // The middles of the corners' arcs, counter-clockwise from the top right one.
  const PointF middles[4] = {{right - radiusX, sheet.top + radiusY},
                             {sheet.left + radiusX, sheet.top + radiusY},
                             {sheet.left + radiusX, bottom - radiusY},
                             {right - radiusX, bottom - radiusY}};
  std::vector<PointF> points;
  for (int corner = 0; corner < 4; ++corner) {
    for (int i = 0; i <= chords; ++i) {
      const double part = sharp ? 0 : static_cast<double>(i) / chords;
      const double angle = kTwoPi / 4 * (corner + part);
      points.push_back({middles[corner].x + radiusX * SeriesCosine(angle),
                        middles[corner].y - radiusY * SeriesSine(angle)});
    }
  }
  points.push_back(points.front());
  platform::PaintPolyline(plot.canvas, points.data(), static_cast<int>(points.size()), plot.pen);
}

void PaintOutline(const Plotter& plot, const PlateRecord& record, const PlateSheet& sheet) {
  const PlateNumbers& numbers = sheet.numbers;
  const PointF centre = CentreOf(sheet);
  switch (numbers.shape) {
    case PlateShape::Rectangle:
      return PaintRectangle(plot, sheet);
    case PlateShape::Round:
      return PaintRound(plot, sheet);
    case PlateShape::Obround:
      return plot.Object(centre, {kTypeSlot, 0, 0, 0, numbers.length, numbers.width, 0});
    case PlateShape::Custom:
      break;
  }
  const OutlineStretch stretch = StretchOf(numbers, record.outline);
  double xs[kOutlinePoints];
  double ys[kOutlinePoints];
  for (int i = 0; i < record.outline.count; ++i) {
    plot.Line(centre, xs, ys, StretchedOutline(stretch, record.outline.objects[i], xs, ys));
  }
}

void PaintCentreMarks(const Plotter& plot, const PlateSheet& sheet) {
  const PointF centre = CentreOf(sheet);
  plot.Cross(centre, kCentreCross);
  const double x = std::min(kSideTick * sheet.page.dpiX, sheet.width / 2.0);
  const double y = std::min(kSideTick * sheet.page.dpiY, sheet.height / 2.0);
  const double right = sheet.left + sheet.width;
  const double bottom = sheet.top + sheet.height;
  const double left = sheet.left;
  const double top = sheet.top;
  platform::PaintLine(plot.canvas, {left, centre.y}, {left + x, centre.y}, plot.pen);
  platform::PaintLine(plot.canvas, {right - x, centre.y}, {right, centre.y}, plot.pen);
  platform::PaintLine(plot.canvas, {centre.x, top}, {centre.x, top + y}, plot.pen);
  platform::PaintLine(plot.canvas, {centre.x, bottom - y}, {centre.x, bottom}, plot.pen);
}

void PaintFeature(const Plotter& plot, const PlateNumbers& numbers, const PlateFeature& feature,
                  int k, PointF at) {
  if (feature.shape.count > 0) {
    double xs[kOutlinePoints];
    double ys[kOutlinePoints];
    for (int i = 0; i < feature.shape.count; ++i) {
      plot.Line(at, xs, ys, FeatureOutline(numbers, feature.shape.objects[i], {}, xs, ys));
    }
    return;
  }
  const ClosedShape plain = PlainFeature(numbers, k, {});
  if (plain.shape == ItemShape::Circle) {
    platform::PaintEllipse(plot.canvas, at, plain.width / 2 * plot.sheet.scaleX,
                           plain.width / 2 * plot.sheet.scaleY, plot.pen);
    return;
  }
  plot.Object(at, {kTypeSlot, 0, 0, 0, plain.width, plain.height, plain.angle});
}

// What is drawn of the plate and its features, pixels.
struct Taken {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;
};

int PaintFeatures(const Plotter& plot, const PlateRecord& record, const PlateSheet& sheet,
                  Taken& taken) {
  const PlateNumbers& numbers = sheet.numbers;
  const PointF centre = CentreOf(sheet);
  const int count = FeatureCount(numbers);
  int cutOff = 0;
  for (int k = 0; k < count; ++k) {
    const PlateFeature& feature = record.features[k];
    if (feature.hidden || feature.deleted) continue;
    const PointF place = FeaturePlace(numbers, feature, k);
    const PointF at = {centre.x + Rounded(place.x * sheet.scaleX),
                       centre.y - Rounded(place.y * sheet.scaleY)};
    PaintFeature(plot, numbers, feature, k, at);
    plot.Cross(at, kCrosshair);
    const PointF reach = FeatureReach(numbers, feature, k);
    const double x = std::max(reach.x * sheet.scaleX, kCrosshair * sheet.page.dpiX);
    const double y = std::max(reach.y * sheet.scaleY, kCrosshair * sheet.page.dpiY);
    taken.left = std::min(taken.left, at.x - x);
    taken.right = std::max(taken.right, at.x + x);
    taken.top = std::min(taken.top, at.y - y);
    taken.bottom = std::max(taken.bottom, at.y + y);
    const double halfX = reach.x * sheet.scaleX;
    const double halfY = reach.y * sheet.scaleY;
    if (at.x - halfX < 0 || at.x + halfX > sheet.page.width || at.y - halfY < 0 ||
        at.y + halfY > sheet.page.height) {
      ++cutOff;
    }
  }
  return cutOff;
}

// A millimetre of paper in pixels.
double MmX(const PlateSheet& sheet) { return sheet.page.dpiX / kMmPerInch; }
double MmY(const PlateSheet& sheet) { return sheet.page.dpiY / kMmPerInch; }

double WordsHeight(const PlateSheet& sheet) {
  return static_cast<double>(platform::TextHeight(kBarFont)) * sheet.page.dpiY /
         platform::kTextDots;
}

void PaintWords(Canvas& canvas, double left, double top, double right, double height,
                const std::u16string& words) {
  const Rect area{static_cast<int>(std::ceil(left)), static_cast<int>(std::ceil(top)),
                  static_cast<int>(right), static_cast<int>(std::ceil(top + height))};
  platform::PaintText(canvas, area, words, kBarFont, kPaperInk,
                      platform::kAlignLeft | platform::kAlignMiddle | platform::kTextEllipsis);
}

// The bar from `from`, 100 mm to the right or down, with a stroke every 10 mm. The strokes go to
// the right of its way where it goes down, else downwards; those at the ends are twice as long.
void PaintBar(const Plotter& plot, const PlateSheet& sheet, PointF from, bool upright) {
  const auto at = [&](double along, double across) {
    return upright ? PointF{from.x + across * MmX(sheet), from.y + along * MmY(sheet)}
                   : PointF{from.x + along * MmX(sheet), from.y + across * MmY(sheet)};
  };
  const double half = kBarHeight / 2;
  platform::PaintLine(plot.canvas, at(0, half), at(kBarLength, half), plot.pen);
  for (int i = 0; i * kBarStep <= kBarLength; ++i) {
    const bool end = i == 0 || i * kBarStep >= kBarLength;
    platform::PaintLine(plot.canvas, at(i * kBarStep, end ? 0 : half), at(i * kBarStep, kBarHeight),
                        plot.pen);
  }
}

// Below the plate or above it: the bar and the words on one line.
bool PaintBarAcross(const Plotter& plot, const PlateSheet& sheet, const Taken& taken,
                    const std::u16string& name) {
  const double barHeight = kBarHeight * MmY(sheet);
  const double height = std::max(barHeight, WordsHeight(sheet));
  const double edge = kBarEdge * MmY(sheet);
  const double need = edge + height + kBarClear * MmY(sheet);
  if ((2 * kBarEdge + kBarLength + kBarClear + kWordsWidth) * MmX(sheet) > sheet.page.width) {
    return false;
  }
  double top = 0;
  if (sheet.page.height - taken.bottom >= need) {
    top = sheet.page.height - edge - height;
  } else if (taken.top >= need) {
    top = edge;
  } else {
    return false;
  }
  const double left = kBarEdge * MmX(sheet);
  PaintBar(plot, sheet, {left, top + (height - barHeight) / 2}, false);
  PaintWords(plot.canvas, left + (kBarLength + kBarClear) * MmX(sheet), top,
             sheet.page.width - left, height, std::u16string(kBarWords) + u"  \u2022  " + name);
  return true;
}

// To the right of the plate or to its left: the bar goes down, the words stand beside it.
bool PaintBarDown(const Plotter& plot, const PlateSheet& sheet, const Taken& taken,
                  const std::u16string& name) {
  const double edge = kBarEdge * MmX(sheet);
  const double need = (kBarEdge + kBarHeight + 2 * kBarClear + kWordsWidth) * MmX(sheet);
  if ((2 * kBarEdge + kBarLength) * MmY(sheet) > sheet.page.height) return false;
  const bool onRight = sheet.page.width - taken.right >= need;
  if (!onRight && taken.left < need) return false;
  const double left = onRight ? sheet.page.width - need + kBarClear * MmX(sheet) : edge;
  const double top = kBarEdge * MmY(sheet);
  PaintBar(plot, sheet, {left, top}, true);
  const double words = left + (kBarHeight + kBarClear) * MmX(sheet);
  const double right = words + kWordsWidth * MmX(sheet);
  const double line = WordsHeight(sheet);
  PaintWords(plot.canvas, words, top, right, line, kBarWords);
  PaintWords(plot.canvas, words, top + line, right, line, name);
  return true;
}

}  // namespace

bool IsUsablePage(const platform::PrinterFigures& page) {
  return page.width >= 1 && page.height >= 1 && page.dpiX >= 1 && page.dpiY >= 1;
}

bool LayOnPage(const PlateNumbers& numbers, const platform::PrinterFigures& page,
               PlateSheet& sheet) {
  const double unit = numbers.metric ? kMmPerInch : 1;
  const double scaleX = page.dpiX / unit;
  const double scaleY = page.dpiY / unit;
  PointF halves = PlateHalves(numbers);
  // Wider than long, a slot is a circle of its width.
  if (numbers.shape == PlateShape::Obround) halves.x = std::max(halves.x, halves.y);
  const double width = PixelsOf(2 * halves.x, scaleX);
  const double height = PixelsOf(2 * halves.y, scaleY);
  if (!(width <= page.width) || !(height <= page.height)) return false;
  sheet.page = page;
  sheet.numbers = numbers;
  sheet.scaleX = scaleX;
  sheet.scaleY = scaleY;
  sheet.width = static_cast<int>(width);
  sheet.height = static_cast<int>(height);
  sheet.left = (page.width - sheet.width) / 2;
  sheet.top = (page.height - sheet.height) / 2;
  return true;
}

PaperNotes PaintSheet(Canvas& canvas, const PlateRecord& record, const PlateSheet& sheet) {
  const Plotter plot{canvas, sheet, PenOf(sheet)};
  PaperNotes notes;
  PaintOutline(plot, record, sheet);
  PaintCentreMarks(plot, sheet);
  Taken taken{static_cast<double>(sheet.left), static_cast<double>(sheet.top),
              static_cast<double>(sheet.left + sheet.width),
              static_cast<double>(sheet.top + sheet.height)};
  notes.cutOff = PaintFeatures(plot, record, sheet, taken);
  const std::u16string name = record.name;
  notes.barIsOn =
      PaintBarAcross(plot, sheet, taken, name) || PaintBarDown(plot, sheet, taken, name);
  return notes;
}

}  // namespace morva
