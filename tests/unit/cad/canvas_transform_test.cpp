// Expected places are worked out by hand from the figures at the head of the fixture, unless a
// test says otherwise.
#include <cmath>

#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "unit/cad/canvas_fixture.h"

namespace morva {
namespace {

class CanvasTransform : public CanvasTest {};

constexpr double kSeries = 1e-6;  // what the sine series may add to an outline's bounds

void ExpectPoint(platform::Point place, int x, int y) {
  EXPECT_EQ(place.x, x);
  EXPECT_EQ(place.y, y);
}

void ExpectPosition(int px, int py, double x, double y) {
  double gotX = 0;
  double gotY = 0;
  FromCanvas(px, py, gotX, gotY);
  EXPECT_NEAR(gotX, x, 1e-12);
  EXPECT_NEAR(gotY, y, 1e-12);
}

TEST_F(CanvasTransform, ShowsTenInchesOr250MillimetresAcrossAtRest) {
  EXPECT_EQ(CanvasScale(1040), 100);
  sketch.metric = true;
  EXPECT_EQ(CanvasScale(1040), 4);
}

TEST_F(CanvasTransform, MultipliesTheScaleByTheZoom) {
  canvasView.zoom = 2.5;
  EXPECT_EQ(CanvasScale(1040), 250);
  sketch.metric = true;
  EXPECT_EQ(CanvasScale(1040), 10);
}

TEST_F(CanvasTransform, KeepsAPositiveScaleInANarrowWindowAtTheLeastZoom) {
  canvasView.zoom = 0.1;
  for (const int width : {0, 1, 30, 39, 40}) EXPECT_EQ(CanvasScale(width), 0.01) << width;
  // A width of 41 gives 1 / 10 x 0.1, just the floor; one of 42 0.02.
  EXPECT_DOUBLE_EQ(CanvasScale(41), 0.01);
  EXPECT_DOUBLE_EQ(CanvasScale(42), 0.02);
}

TEST_F(CanvasTransform, PutsTheOriginInTheMiddleAndYUpwards) {
  ExpectPoint(ToCanvas(0, 0), 520, 300);
  ExpectPoint(ToCanvas(1, 2), 620, 100);
  ExpectPoint(ToCanvas(-1, -2), 420, 500);
}

TEST_F(CanvasTransform, CutsPixelsTowardsTheMiddle) {
  ExpectPoint(ToCanvas(0.019, 0.019), 521, 299);  // 1.9 becomes 1 either way
  ExpectPoint(ToCanvas(-0.019, -0.019), 519, 301);
  ExpectPoint(ToCanvas(0.009, -0.009), 520, 300);
}

TEST_F(CanvasTransform, HalvesAnOddClientAsAWholeNumber) {
  Size(1041, 601);  // 100.1 pixels an inch; the middle at 520, 300
  ExpectPoint(ToCanvas(0, 0), 520, 300);
  ExpectPoint(ToCanvas(1, 1), 620, 200);
  // Backwards the halves are 520.5 and 300.5.
  ExpectPosition(520, 300, -0.5 / 100.1, 0.5 / 100.1);
}

TEST_F(CanvasTransform, AddsThePanInPixels) {
  canvasView.panX = 15.5;
  canvasView.panY = -20.25;
  ExpectPoint(ToCanvas(1, 1), 520 + 115, 300 - 120);  // 115.5 and -120.25 cut
  ExpectPosition(520, 300, -0.155, -0.2025);
}

TEST_F(CanvasTransform, KeepsPlacesFarOutAsNumbers) {
  canvasView.zoom = 40;
  const platform::Point far = ToCanvas(1e6, -1e6);
  EXPECT_GT(far.x, 1000000);
  EXPECT_GT(far.y, 1000000);
  const platform::Point none = ToCanvas(std::nan(""), 0);
  EXPECT_LT(none.x, -1000000);
}

// A property: there and back meets within a pixel, at every zoom, pan and size.
TEST_F(CanvasTransform, AgreesWithItsReverseWithinAPixelAtEveryZoom) {
  for (const bool metric : {false, true}) {
    sketch.metric = metric;
    for (const int width : {200, 803, 1040, 1561}) {
      Size(width, width * 2 / 3);
      for (double zoom = 0.1; zoom <= 40; zoom *= 1.15) {
        canvasView.zoom = zoom;
        canvasView.panX = 3.7 * zoom;
        canvasView.panY = -11.1 * zoom;
        for (const platform::Point p : {platform::Point{0, 0}, {17, 90}, {199, 133}, {100, 1}}) {
          double x = 0;
          double y = 0;
          FromCanvas(p.x, p.y, x, y);
          const platform::Point back = ToCanvas(x, y);
          EXPECT_LE(std::abs(back.x - p.x), 1) << zoom << " " << width;
          EXPECT_LE(std::abs(back.y - p.y), 1) << zoom << " " << width;
        }
      }
    }
  }
}

TEST_F(CanvasTransform, GivesTheTolerancesOfEightTenAndTenPixels) {
  // 80 / 1000 and 100 / 1000; 2000 / 1000 and 2500 / 1000.
  EXPECT_DOUBLE_EQ(CanvasTolerance(8), 0.08);
  EXPECT_DOUBLE_EQ(CanvasTolerance(10), 0.1);
  sketch.metric = true;
  EXPECT_DOUBLE_EQ(CanvasTolerance(8), 2);
  EXPECT_DOUBLE_EQ(CanvasTolerance(10), 2.5);
  canvasView.zoom = 4;
  EXPECT_DOUBLE_EQ(CanvasTolerance(8), 0.5);
}

TEST_F(CanvasTransform, TakesAWindowOf41PixelsForANarrowerTolerance) {
  for (const int width : {0, 10, 40, 41}) {
    Size(width, 100);
    EXPECT_DOUBLE_EQ(CanvasTolerance(8), 80);
  }
}

TEST_F(CanvasTransform, ZoomsByTheWheel) {
  EXPECT_TRUE(Wheel(520, 300, 1));
  EXPECT_DOUBLE_EQ(canvasView.zoom, 1.15);
  Wheel(520, 300, -1);
  EXPECT_DOUBLE_EQ(canvasView.zoom, 1.15 * 0.8695652173913044);
  Wheel(520, 300, 3);
  EXPECT_NEAR(canvasView.zoom, 1.15 * 1.15 * 1.15, 1e-12);
}

TEST_F(CanvasTransform, KeepsThePointUnderTheCursorUnderTheWheel) {
  for (const platform::Point p : {platform::Point{520, 300}, {3, 597}, {811, 42}}) {
    canvasView = CanvasView();
    canvasView.panX = 33;
    canvasView.panY = -7;
    double x = 0;
    double y = 0;
    FromCanvas(p.x, p.y, x, y);
    for (const int notches : {1, 5, -2, 30, -64, 64, -7}) {
      Wheel(p.x, p.y, notches);
      double nowX = 0;
      double nowY = 0;
      FromCanvas(p.x, p.y, nowX, nowY);
      EXPECT_NEAR(nowX, x, 1e-9);
      EXPECT_NEAR(nowY, y, 1e-9);
    }
  }
}

TEST_F(CanvasTransform, StopsTheWheelAtFortyAndAtATenth) {
  Wheel(520, 300, 64);
  EXPECT_EQ(canvasView.zoom, 40);
  Wheel(520, 300, -64);
  Wheel(520, 300, -64);
  EXPECT_EQ(canvasView.zoom, 0.1);
  // Neither of these may hang.
  Wheel(520, 300, 2147483647);
  EXPECT_EQ(canvasView.zoom, 40);
  Wheel(520, 300, -2147483647 - 1);
  EXPECT_EQ(canvasView.zoom, 0.1);
}

TEST_F(CanvasTransform, FitsTheVisibleObjects) {
  // Across 890 / 4, down 480 / 4: the height binds, 120 pixels an inch.
  Put(kTypeRectangle, 3, 1, 4, 4);
  CanvasFit();
  EXPECT_NEAR(canvasView.zoom, 1.2, kSeries);
  EXPECT_NEAR(canvasView.panX, -360, 1e-4);
  EXPECT_NEAR(canvasView.panY, 120, 1e-4);
  EXPECT_NEAR(ToCanvas(3, 1).x, 520, 1);
  EXPECT_NEAR(ToCanvas(3, 1).y, 300, 1);
  EXPECT_NEAR(ToCanvas(3, 3).y, 60, 1);
}

TEST_F(CanvasTransform, FitsAcrossWhenTheWidthBinds) {
  Put(kTypeLine, -5, 2, 10, 0, 0);  // 890 / 10 = 89; the height is the least span
  CanvasFit();
  EXPECT_NEAR(canvasView.zoom, 0.89, kSeries);
  EXPECT_NEAR(ToCanvas(-5, 2).x, 520 - 445, 1);
  EXPECT_NEAR(ToCanvas(5, 2).x, 520 + 445, 1);
  EXPECT_EQ(ToCanvas(0, 2).y, 300);
}

TEST_F(CanvasTransform, FitsNoHiddenObject) {
  Put(kTypeRectangle, 3, 1, 4, 4);
  Put(kTypeRectangle, 300, 1, 4, 4);
  sketch.hidden[1] = 1;
  CanvasFit();
  EXPECT_NEAR(canvasView.zoom, 1.2, kSeries);
}

TEST_F(CanvasTransform, FitsToTheRestViewWithNothingVisible) {
  canvasView.zoom = 3;
  canvasView.panX = 100;
  canvasView.panY = 50;
  Put(kTypeRectangle, 3, 1, 4, 4);
  sketch.hidden[0] = 1;
  CanvasFit();
  EXPECT_EQ(canvasView.zoom, 1);
  EXPECT_EQ(canvasView.panX, 0);
  EXPECT_EQ(canvasView.panY, 0);
}

TEST_F(CanvasTransform, FitsALonePointAtTheMostZoom) {
  Put(kTypeWorkPoint, 7, -2, 0);
  CanvasFit();
  EXPECT_EQ(canvasView.zoom, 40);
  EXPECT_NEAR(ToCanvas(7, -2).x, 520, 1);
  EXPECT_NEAR(ToCanvas(7, -2).y, 300, 1);
}

TEST_F(CanvasTransform, FitsByTheOutlinesOfTurnedShapes) {
  // A square of 2 on its corner spans 2 sqrt 2 = 2.8284: 480 / 2.8284 = 169.7.
  Put(kTypeRectangle, 0, 0, 2, 2, 45);
  CanvasFit();
  EXPECT_NEAR(canvasView.zoom, 480 / (2 * std::sqrt(2.0)) / 100, 1e-6);
}

TEST_F(CanvasTransform, FitsInAWindowTooNarrowToShowAnything) {
  Put(kTypeRectangle, 3, 1, 4, 4);
  Size(40, 600);
  CanvasFit();
  EXPECT_EQ(canvasView.zoom, 1);
  // Less than the margins: one pixel for the 4 inches, where rest shows 2 pixels an inch.
  Size(60, 10);
  CanvasFit();
  EXPECT_NEAR(canvasView.zoom, 0.25 / 2, kSeries);
}

}  // namespace
}  // namespace morva
