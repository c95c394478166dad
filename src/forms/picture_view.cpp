// Views of a picture: fitted to an area, and at true size on paper.

#include <algorithm>
#include <cmath>

#include "forms/picture_parts.h"
#include "text/length_units.h"

namespace morva {

namespace {

using platform::Rect;

constexpr double kMargin = 14;           // pixels around the marks
constexpr double kLabelMargin = 4;       // pixels around the labels
constexpr double kMostMargin = 1 / 3.0;  // of the area's side
constexpr int kFitPasses = 2;
constexpr double kScreenDots = 96;   // per inch, of a picture without a size
constexpr double kLeastSize = 1e-9;  // drawing units; less is a point
constexpr double kCrossInch = 0.04;  // from the middle of a cross to its ends
constexpr double kDashInch = 0.06;
constexpr int kFineDots = 300;  // per inch, from which the pen is 2 pixels wide

struct Margins {
  double left = kMargin;
  double top = kMargin;
  double right = kMargin;
  double bottom = kMargin;
};

// Everything that has a place in the drawing: marks, measured points, places of labels.
PictureBounds WholeBounds(const Picture& picture) {
  PictureBounds bounds;
  bool any = BoundsOfPicture(picture, bounds);
  for (const PictureLabel& label : picture.labels) {
    if (label.dimension < 0) TakeInPoint(label.x, label.y, bounds, any);
  }
  for (const PictureDimension& d : picture.dimensions) {
    const bool round = d.way == DimensionWay::Diameter || d.way == DimensionWay::Radius;
    TakeInPoint(d.x0 - (round ? d.radius : 0), d.y0 - (round ? d.radius : 0), bounds, any);
    TakeInPoint(round ? d.x0 + d.radius : d.x1, round ? d.y0 + d.radius : d.y1, bounds, any);
  }
  return bounds;
}

// The largest scale at which `size` units take `room` pixels; 0 for a size that is none.
double ScaleFor(double size, double room) {
  return size > kLeastSize ? std::max(room, 1.0) / size : 0;
}

PictureView FitBetween(const Picture& picture, const PictureBounds& bounds, const Rect& area,
                       const Margins& margins) {
  PictureView view;
  view.area = area;
  view.centreX = (bounds.minX + bounds.maxX) / 2;
  view.centreY = (bounds.minY + bounds.maxY) / 2;
  const double left = area.left + margins.left;
  const double top = area.top + margins.top;
  const double right = area.right - margins.right;
  const double bottom = area.bottom - margins.bottom;
  const double across = ScaleFor(bounds.maxX - bounds.minX, right - left);
  const double upright = ScaleFor(bounds.maxY - bounds.minY, bottom - top);
  double scale = std::min(across, upright);
  if (across == 0 || upright == 0) scale = std::max(across, upright);
  if (scale == 0) scale = picture.metric ? kScreenDots / kMmPerInch : kScreenDots;
  view.scaleX = view.scaleY = scale;
  view.originX = (left + right) / 2;
  view.originY = (top + bottom) / 2;
  return view;
}

// The margins in which the labels find room as far as they reach beyond the marks on `view`.
Margins MarginsFor(const Picture& picture, const PictureBounds& bounds, const PictureView& view) {
  Margins margins;
  const Rect& area = view.area;
  const platform::PointF low = OnView(view, bounds.minX, bounds.minY);
  const platform::PointF high = OnView(view, bounds.maxX, bounds.maxY);
  for (const PictureLabel& label : picture.labels) {
    const Rect plate = UsualPlate(picture, view, label);
    margins.left = std::max(margins.left, low.x - plate.left + kLabelMargin);
    margins.top = std::max(margins.top, high.y - plate.top + kLabelMargin);
    margins.right = std::max(margins.right, plate.right - high.x + kLabelMargin);
    margins.bottom = std::max(margins.bottom, plate.bottom - low.y + kLabelMargin);
  }
  const double width = std::max(kMargin, platform::RectWidth(area) * kMostMargin);
  const double height = std::max(kMargin, platform::RectHeight(area) * kMostMargin);
  margins.left = std::min(margins.left, width);
  margins.right = std::min(margins.right, width);
  margins.top = std::min(margins.top, height);
  margins.bottom = std::min(margins.bottom, height);
  return margins;
}

bool IsUsable(const PaperFigures& paper) {
  return paper.width >= 1 && paper.height >= 1 && paper.dpiX >= 1 && paper.dpiY >= 1;
}

double PaperScale(int dots, bool metric) { return metric ? dots / kMmPerInch : dots; }

}  // namespace

bool IsSound(const PictureView& view) {
  const auto positive = [](double scale) { return scale > 0 && std::isfinite(scale); };
  return positive(view.scaleX) && positive(view.scaleY) && std::isfinite(view.originX) &&
         std::isfinite(view.originY) && std::isfinite(view.centreX) && std::isfinite(view.centreY);
}

PictureView FitPicture(const Picture& picture, const Rect& area) {
  const PictureBounds bounds = WholeBounds(picture);
  PictureView view = FitBetween(picture, bounds, area, Margins());
  if (picture.labels.empty()) return view;
  // Smaller marks bring the labels nearer to the edges once more, by little.
  for (int pass = 0; pass < kFitPasses; ++pass) {
    view = FitBetween(picture, bounds, area, MarginsFor(picture, bounds, view));
  }
  return view;
}

bool OneToOne(const PaperFigures& paper, bool metric, PicturePoint at, platform::PointF pixel,
              PictureView& view) {
  if (!IsUsable(paper)) return false;
  PictureView found;
  found.area = {0, 0, paper.width, paper.height};
  found.centreX = at.x;
  found.centreY = at.y;
  found.originX = pixel.x;
  found.originY = pixel.y;
  found.scaleX = PaperScale(paper.dpiX, metric);
  found.scaleY = PaperScale(paper.dpiY, metric);
  found.paper = true;
  found.pen = std::min(paper.dpiX, paper.dpiY) < kFineDots ? 1 : 2;
  found.crossX = kCrossInch * paper.dpiX;
  found.crossY = kCrossInch * paper.dpiY;
  found.dash = kDashInch * std::min(paper.dpiX, paper.dpiY);
  if (!IsSound(found)) return false;
  view = found;
  return true;
}

bool CentreOnPaper(const Picture& picture, const PaperFigures& paper, PictureView& view) {
  PictureBounds bounds;
  BoundsOfPicture(picture, bounds);
  const PicturePoint middle{(bounds.minX + bounds.maxX) / 2, (bounds.minY + bounds.maxY) / 2};
  return OneToOne(paper, picture.metric, middle, {paper.width / 2.0, paper.height / 2.0}, view);
}

bool FitsPaper(const Picture& picture, const PaperFigures& paper) {
  if (!IsUsable(paper)) return false;
  PictureBounds bounds;
  BoundsOfPicture(picture, bounds);
  const double width = (bounds.maxX - bounds.minX) * PaperScale(paper.dpiX, picture.metric);
  const double height = (bounds.maxY - bounds.minY) * PaperScale(paper.dpiY, picture.metric);
  return std::floor(width + 0.5) <= paper.width && std::floor(height + 0.5) <= paper.height;
}

}  // namespace morva
