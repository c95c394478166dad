// The plate on paper: what is drawn where, in pixels worked out by hand, and what is refused.

#include "plate/tools/plate_print.h"

#include <cmath>

#include "plate/model/plate.h"
#include "support/stage.h"

namespace {

using namespace morva;
using headless::DrawCall;
using headless::PrintRecord;
using platform::PointF;

constexpr double kPi = 3.14159265358979323846;
constexpr platform::PrinterFigures kLetter = {2550, 3300, 300, 300};  // 8.5 by 11 inch
constexpr double kExact = 1e-6;  // pixels, for what is not rounded

void ExpectAt(PointF point, double x, double y, double within = kExact) {
  EXPECT_NEAR(point.x, x, within);
  EXPECT_NEAR(point.y, y, within);
}

// The points of a polyline or line; the pen's three numbers stand behind them.
std::vector<PointF> PointsOf(const DrawCall& call) {
  std::vector<PointF> points;
  for (std::size_t i = 0; i + 4 < call.numbers.size(); i += 2) {
    points.push_back({call.numbers[i], call.numbers[i + 1]});
  }
  return points;
}

std::vector<DrawCall> CallsOf(const PrintRecord& job, const char* name) {
  std::vector<DrawCall> calls;
  for (const DrawCall& call : job.paint) {
    if (call.name == name) calls.push_back(call);
  }
  return calls;
}

bool IsFlat(const DrawCall& line) { return line.numbers[1] == line.numbers[3]; }

// The middles of crosses whose arms have this many pixels: a flat line, then the upright one.
std::vector<PointF> CrossesOf(const PrintRecord& job, double arm) {
  std::vector<PointF> found;
  const std::vector<DrawCall> lines = CallsOf(job, "PaintLine");
  for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
    const std::vector<PointF> flat = PointsOf(lines[i]);
    const std::vector<PointF> upright = PointsOf(lines[i + 1]);
    const PointF middle = {(flat[0].x + flat[1].x) / 2, flat[0].y};
    const bool cross = IsFlat(lines[i]) && std::fabs(flat[1].x - flat[0].x - 2 * arm) < kExact &&
                       upright[0].x == upright[1].x &&
                       std::fabs(upright[0].x - middle.x) < kExact &&
                       std::fabs((upright[0].y + upright[1].y) / 2 - middle.y) < kExact;
    if (cross) found.push_back(middle);
  }
  return found;
}

class PlatePrint : public support::Stage {
 protected:
  PlatePrint() { ResetPlate(); }
  ~PlatePrint() override { ResetPlate(); }

  // A plate with holes of a quarter at its corners, half an inch from its sides; named.
  static void Make(double length, double width, bool metric = false) {
    StartPlate(metric);
    SetPlateName(u"Fixture");
    const double unit = metric ? 25.4 : 1;
    SetPlateNumber(kPlateLength, length, 6);
    SetPlateNumber(kPlateWidth, width, 6);
    SetPlateNumber(kPlateEdgeRadius, 0, 6);
    SetPlateNumber(kPlateSize, 0.25 * unit, 6);
    SetPlateNumber(kPlateEdgeX, 0.5 * unit, 6);
    SetPlateNumber(kPlateEdgeY, 0.5 * unit, 6);
  }
  static void Print(const platform::PrinterFigures& page = kLetter) {
    headless::QueuePrinter(page);
    PrintPlate();
    EXPECT_FALSE(headless::HoldsPrinter());
  }
  // The one job of a plate that is printed.
  static PrintRecord Printed(const platform::PrinterFigures& page = kLetter) {
    Print(page);
    EXPECT_TRUE(headless::TakeBoxes().empty());
    std::vector<PrintRecord> jobs = headless::TakePrinted();
    EXPECT_EQ(jobs.size(), 1u);
    return jobs.empty() ? PrintRecord() : jobs[0];
  }
  // Nothing was printed, and one box said why.
  static void ExpectRefused(const char16_t* title, const char16_t* words) {
    EXPECT_TRUE(headless::TakePrinted().empty());
    const std::vector<headless::BoxRecord> boxes = headless::TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, title);
    EXPECT_EQ(boxes[0].text, words);
    EXPECT_NE(std::u16string_view(plate.status), kPrinted);
  }
  static void ExpectTooLarge() {
    ExpectRefused(u"Plate Does Not Fit at 1:1",
                  u"This plate is larger than the selected printer's printable area at 1:1 scale. "
                  u"Choose larger paper / a different orientation or print a smaller plate. MORVA "
                  u"will not shrink a scale template.");
  }
  static void ExpectRefusedPlainly(const char16_t* words) {
    ExpectRefused(u"Print Plate 1:1", words);
  }
  static bool LogHas(std::u16string_view words) {
    return TextOf(kIdOutputLog).find(words) != std::u16string::npos;
  }
};

TEST_F(PlatePrint, IsOnePageThatSaysToMeasureIt) {
  Make(6, 4);
  const PrintRecord job = Printed();
  EXPECT_EQ(job.document, u"MORVA Plate Template - 1 to 1 Scale");
  EXPECT_EQ(job.pages, 1);
  EXPECT_TRUE(job.ended);
  EXPECT_EQ(std::u16string_view(plate.status),
            u"Printed at true 1:1 scale. Verify the paper template with a ruler/caliper before "
            u"transferring hole locations to stock.");
}

TEST_F(PlatePrint, LiesInTheMiddleOfThePage) {
  Make(6, 4);
  const std::vector<PointF> outline = PointsOf(CallsOf(Printed(), "PaintPolyline")[0]);
  // 1800 by 1200 pixels on 2550 by 3300.
  ASSERT_EQ(outline.size(), 5u);
  ExpectAt(outline[0], 2175, 1050);
  ExpectAt(outline[1], 375, 1050);
  ExpectAt(outline[2], 375, 2250);
  ExpectAt(outline[3], 2175, 2250);
  ExpectAt(outline[4], 2175, 1050);
}

TEST_F(PlatePrint, HasFeaturesAtWholePixelsFromItsCentreWithYUp) {
  Make(6, 4);
  SetPlateNumber(kPlateEdgeX, 0.501, 6);  // 2.499 inch from the centre: 749.7 pixels
  const PrintRecord job = Printed();
  const std::vector<DrawCall> holes = CallsOf(job, "PaintEllipse");
  const PointF places[] = {{525, 2100}, {2025, 2100}, {2025, 1200}, {525, 1200}};
  ASSERT_EQ(holes.size(), 4u);
  const std::vector<PointF> crosses = CrossesOf(job, 0.04 * 300);
  ASSERT_EQ(crosses.size(), 4u);
  for (std::size_t i = 0; i < holes.size(); ++i) {
    ExpectAt({holes[i].numbers[0], holes[i].numbers[1]}, places[i].x, places[i].y);
    ExpectAt({holes[i].numbers[2], holes[i].numbers[3]}, 37.5, 37.5);  // radii of an eighth
    ExpectAt(crosses[i], places[i].x, places[i].y);
  }
}

TEST_F(PlatePrint, ScalesBothWaysByTheirOwnDots) {
  Make(6, 4);
  const PrintRecord job = Printed({5100, 3300, 600, 300});
  const std::vector<PointF> outline = PointsOf(CallsOf(job, "PaintPolyline")[0]);
  ExpectAt(outline[1], 750, 1050);  // 3600 by 1200 pixels
  ExpectAt(outline[3], 4350, 2250);
  const DrawCall hole = CallsOf(job, "PaintEllipse")[1];
  ExpectAt({hole.numbers[0], hole.numbers[1]}, 2550 + 2.5 * 600, 1650 + 1.5 * 300);
  ExpectAt({hole.numbers[2], hole.numbers[3]}, 75, 37.5);
}

TEST_F(PlatePrint, HasAPenOfTwoPixelsAndOfOneBelow300Dots) {
  Make(2, 2);
  for (const auto& [dots, width] : {std::pair{300, 2.0}, {299, 1.0}, {1200, 2.0}}) {
    const DrawCall outline = CallsOf(Printed({8 * dots, 8 * dots, dots, dots}), "PaintPolyline")[0];
    EXPECT_EQ(outline.numbers[outline.numbers.size() - 3], width) << dots;
    EXPECT_EQ(outline.colours[0], 0u);
  }
}

TEST_F(PlatePrint, IsPrintedWhereItIsAsLargeAsThePrintableArea) {
  Make(8.5, 11);
  const std::vector<PointF> outline = PointsOf(CallsOf(Printed(), "PaintPolyline")[0]);
  ExpectAt(outline[1], 0, 0);
  ExpectAt(outline[3], 2550, 3300);
}

TEST_F(PlatePrint, IsRefusedWhereItIsOnePixelLarger) {
  Make(8.5 + 1 / 300.0, 11);
  Print();
  ExpectTooLarge();
  Make(8.5, 11 + 1 / 300.0);
  Print();
  ExpectTooLarge();
  Make(8.5, 11);
  Print({2549, 3300, 300, 300});
  ExpectTooLarge();
}

// Pixels are rounded half up: 0.4 of a pixel more is none, 0.6 is one.
TEST_F(PlatePrint, CountsWholePixelsInTheTestOfItsSize) {
  Make(8.5 + 0.4 / 300, 11 + 0.4 / 300);
  EXPECT_TRUE(Printed().ended);
  Make(8.5 + 0.6 / 300, 11);
  Print();
  ExpectTooLarge();
}

TEST_F(PlatePrint, IsRefusedWhateverItsSize) {
  for (const char16_t* length : {u"100", u"99999", u"999999"}) {
    Make(4, 4);
    SetPlateText(kPlateLength, length);
    ASSERT_TRUE(PlateTextReads(kPlateLength)) << support::Narrow(length);
    Print();
    ExpectTooLarge();
  }
}

TEST_F(PlatePrint, InMillimetresHasTheSamePaperSizeAsInInches) {
  for (const PlateShape shape : {PlateShape::Rectangle, PlateShape::Obround}) {
    Make(8.5, 4);
    SetPlateShape(shape);
    const PrintRecord inch = Printed();
    Make(215.9, 101.6, true);
    SetPlateShape(shape);
    const PrintRecord metric = Printed();
    ASSERT_EQ(inch.paint.size(), metric.paint.size());
    for (std::size_t i = 0; i < inch.paint.size(); ++i) {
      ASSERT_EQ(inch.paint[i].numbers.size(), metric.paint[i].numbers.size());
      for (std::size_t n = 0; n < inch.paint[i].numbers.size(); ++n) {
        EXPECT_NEAR(inch.paint[i].numbers[n], metric.paint[i].numbers[n], kExact) << i;
      }
    }
  }
  Make(216, 101.6, true);  // 8.5039 inch
  Print();
  ExpectTooLarge();
}

TEST_F(PlatePrint, IsAPolygonOf72ChordsWhenRound) {
  Make(5, 3);  // the width of a round plate does not count
  SetPlateShape(PlateShape::Round);
  const std::vector<PointF> outline = PointsOf(CallsOf(Printed(), "PaintPolyline")[0]);
  ASSERT_EQ(outline.size(), 73u);
  for (int i = 0; i <= 72; ++i) {
    const double angle = 2 * kPi * i / 72;
    ExpectAt(outline[static_cast<std::size_t>(i)], 1275 + 750 * std::cos(angle),
             1650 - 750 * std::sin(angle), 1e-3);
  }
  Make(9, 3);
  SetPlateShape(PlateShape::Round);
  Print();
  ExpectTooLarge();
}

// Every point of the outline lies on the two half circles and the two straights between them.
TEST_F(PlatePrint, IsASlotWhenObround) {
  Make(6, 2);
  SetPlateShape(PlateShape::Obround);
  const std::vector<PointF> outline = PointsOf(CallsOf(Printed(), "PaintPolyline")[0]);
  ASSERT_GT(outline.size(), 60u);
  double right = 0;
  for (const PointF& p : outline) {
    const double x = std::max(0.0, std::fabs(p.x - 1275) - 600);  // from the cap's centre outwards
    EXPECT_NEAR(std::hypot(x, p.y - 1650), 300, 1e-3);
    right = std::max(right, p.x);
  }
  EXPECT_NEAR(right, 1275 + 900, 1e-3);
}

// Wider than long it is a circle of its width, which must not leave the page.
TEST_F(PlatePrint, IsRefusedWhereAnObroundPlateIsWiderThanThePage) {
  Make(2, 9);
  SetPlateShape(PlateShape::Obround);
  Print();
  ExpectTooLarge();
}

TEST_F(PlatePrint, HasRoundCornersOfTheRadiusHeldToHalfASide) {
  Make(6, 4);
  SetPlateNumber(kPlateEdgeRadius, 0.5, 6);
  std::vector<PointF> outline = PointsOf(CallsOf(Printed(), "PaintPolyline")[0]);
  ExpectAt(outline[0], 2175, 1200, 1e-3);  // 150 pixels below the corner at 2175, 1050
  for (const PointF& p : outline) {
    const double x = std::max(0.0, std::fabs(p.x - 1275) - 750);
    const double y = std::max(0.0, std::fabs(p.y - 1650) - 450);
    const bool straight = x == 0 || y == 0;
    EXPECT_NEAR(straight ? std::max(x, y) : std::hypot(x, y), 150, 1e-3) << p.x << " " << p.y;
  }
  for (std::size_t i = 1; i < outline.size(); ++i) {  // chords keep to the arcs
    const double x = std::fabs((outline[i - 1].x + outline[i].x) / 2 - 1275) - 750;
    const double y = std::fabs((outline[i - 1].y + outline[i].y) / 2 - 1650) - 450;
    if (x > 0 && y > 0) {
      EXPECT_GE(std::hypot(x, y), 150 - 0.11);
    }
  }
  Make(2, 2);
  SetPlateNumber(kPlateEdgeRadius, 5, 6);
  outline = PointsOf(CallsOf(Printed(), "PaintPolyline")[0]);
  for (const PointF& p : outline) {
    EXPECT_NEAR(std::hypot(p.x - 1275, p.y - 1650), 300, 1e-3);
  }
}

TEST_F(PlatePrint, ShowsACustomOutlineStretchedToThePlate) {
  Make(6, 4);
  SavedShape outline;
  outline.count = 3;
  outline.objects[0] = {kTypeLine, 0, 1, 1, 2, 0, 0};   // from (1, 1) to (3, 1)
  outline.objects[1] = {kTypeLine, 0, 3, 1, 1, 0, 90};  // to (3, 2)
  // Not printed, but the shape is 4 long with it, and 6 / 4 is 1.5 times that.
  outline.objects[2] = {kTypeWorkPoint, 0, 5, 1.5, 0, 0, 0};
  TakePlateOutline(outline, -1);
  SetPlateShape(PlateShape::Custom);
  const std::vector<DrawCall> lines = CallsOf(Printed(), "PaintPolyline");
  ASSERT_EQ(lines.size(), 2u);
  const std::vector<PointF> below = PointsOf(lines[0]);
  ExpectAt(below[0], 375, 2250, 1e-3);
  ExpectAt(below[1], 1275, 2250, 1e-3);
  ExpectAt(PointsOf(lines[1])[1], 1275, 1050, 1e-3);
}

TEST_F(PlatePrint, MarksItsCentreAndTheMiddlesOfItsSides) {
  Make(6, 4);
  const PrintRecord job = Printed();
  const std::vector<PointF> crosses = CrossesOf(job, 30);
  ASSERT_EQ(crosses.size(), 1u);
  ExpectAt(crosses[0], 1275, 1650);
  int ticks = 0;
  for (const DrawCall& line : CallsOf(job, "PaintLine")) {
    const std::vector<PointF> ends = PointsOf(line);
    for (const PointF& side : {PointF{375, 1650}, {2175, 1650}, {1275, 1050}, {1275, 2250}}) {
      for (const PointF& end : ends) ticks += end.x == side.x && end.y == side.y ? 1 : 0;
    }
  }
  EXPECT_EQ(ticks, 4);
}

TEST_F(PlatePrint, LeavesOutHiddenAndDeletedFeatures) {
  Make(6, 4);
  SetFeatureFlag(0, FeatureFlag::Hidden, true);
  SetFeatureFlag(2, FeatureFlag::Deleted, true);
  SetFeatureFlag(3, FeatureFlag::Locked, true);
  const PrintRecord job = Printed();
  const std::vector<DrawCall> holes = CallsOf(job, "PaintEllipse");
  ASSERT_EQ(holes.size(), 2u);
  ExpectAt({holes[0].numbers[0], holes[0].numbers[1]}, 2025, 2100);
  ExpectAt({holes[1].numbers[0], holes[1].numbers[1]}, 525, 1200);
  EXPECT_EQ(CrossesOf(job, 12).size(), 2u);
}

TEST_F(PlatePrint, ShowsAFeatureWithItsOwnShapeAtItsOwnPlace) {
  Make(152.4, 101.6, true);  // 6 by 4 inch
  PlateFeature feature;
  feature.placed = true;
  feature.x = 1;  // inches in any plate
  feature.y = -0.5;
  feature.shape.count = 1;
  feature.shape.objects[0] = {kTypeRectangle, 0, 0, 0, 1, 0.5, 0};
  PutFeature(1, feature);
  const PrintRecord job = Printed();
  EXPECT_EQ(CallsOf(job, "PaintEllipse").size(), 3u);
  const std::vector<PointF> corners = PointsOf(CallsOf(job, "PaintPolyline")[1]);
  ASSERT_EQ(corners.size(), 5u);
  for (const PointF& p : corners) {
    EXPECT_NEAR(std::fabs(p.x - (1275 + 300)), 150, 1e-3);
    EXPECT_NEAR(std::fabs(p.y - (1650 + 150)), 75, 1e-3);
  }
  ExpectAt(CrossesOf(job, 12)[1], 1575, 1800);
}

TEST_F(PlatePrint, ShowsSlotsAsTheyAreCut) {
  Make(6, 4);
  SetPlateType(PlateFeatureType::Mixed);
  SetPlateNumber(kPlateSlotLength, 1, 6);
  const PrintRecord job = Printed();
  EXPECT_EQ(CallsOf(job, "PaintEllipse").size(), 2u);
  const std::vector<DrawCall> lines = CallsOf(job, "PaintPolyline");
  ASSERT_EQ(lines.size(), 3u);  // with the outline
  double top = 1e9;
  double right = 0;
  for (const PointF& p : PointsOf(lines[1])) {
    top = std::min(top, p.y);
    right = std::max(right, p.x);
  }
  EXPECT_NEAR(top, 2100 - 150, 1e-3);  // half an inch above the centre of feature 1
  EXPECT_NEAR(right, 2025 + 37.5, 1e-3);
}

TEST_F(PlatePrint, ShowsEveryObjectOfAFullPlate) {
  Make(8, 10);
  SetPlateLayout(PlateLayout::Grid);
  SetPlateNumber(kPlateCountX, kMaxPlateLines, 0);
  SetPlateNumber(kPlateCountY, kMaxPlateLines, 0);
  PlateFeature full;
  full.shape.count = kMaxShapeObjects;
  for (SketchObject& object : full.shape.objects) object = {kTypeCircle, 0, 0, 0, 0.1, 0, 0};
  for (int k = 0; k < kMaxPlateFeatures; ++k) PutFeature(k, full);
  const PrintRecord job = Printed();
  EXPECT_EQ(CallsOf(job, "PaintPolyline").size(), 1u + kMaxPlateFeatures * kMaxShapeObjects);
  EXPECT_EQ(CrossesOf(job, 12).size(), static_cast<std::size_t>(kMaxPlateFeatures));
}

// The pixels of the bar: 100 mm, and where it lies.
struct Bar {
  bool found = false;
  PointF from;
  PointF to;
};
Bar BarOf(const PrintRecord& job, int dots) {
  Bar bar;
  for (const DrawCall& line : CallsOf(job, "PaintLine")) {
    const std::vector<PointF> ends = PointsOf(line);
    const double length = std::hypot(ends[1].x - ends[0].x, ends[1].y - ends[0].y);
    if (std::fabs(length - dots * 100 / 25.4) < kExact) bar = {true, ends[0], ends[1]};
  }
  return bar;
}

TEST_F(PlatePrint, HasABarOf100MillimetresAndTheNameBelowThePlate) {
  Make(6, 4);
  const PrintRecord job = Printed();
  const Bar bar = BarOf(job, 300);
  ASSERT_TRUE(bar.found);
  EXPECT_GT(bar.from.y, 2250);
  const std::vector<DrawCall> words = CallsOf(job, "PaintText");
  ASSERT_EQ(words.size(), 1u);
  EXPECT_NE(words[0].text.find(u"Fixture"), std::u16string::npos);
  EXPECT_NE(words[0].text.find(u"100 mm"), std::u16string::npos);
  EXPECT_GT(words[0].numbers[1], 2250);
  EXPECT_LE(words[0].numbers[2], 2550);
  EXPECT_LE(words[0].numbers[3], 3300);
  // Eleven strokes, one every 10 mm.
  int strokes = 0;
  for (const DrawCall& line : CallsOf(job, "PaintLine")) {
    const std::vector<PointF> ends = PointsOf(line);
    const double at = (ends[0].x - bar.from.x) / (300 / 2.54);
    const bool stroke = ends[0].x == ends[1].x && ends[1].y > 2250;
    strokes += stroke && std::fabs(at - std::round(at)) < kExact ? 1 : 0;
  }
  EXPECT_EQ(strokes, 11);
}

TEST_F(PlatePrint, HasTheBarBesideAPlateThatIsAsHighAsThePage) {
  Make(4, 11);
  const PrintRecord job = Printed();
  const Bar bar = BarOf(job, 300);
  ASSERT_TRUE(bar.found);
  EXPECT_EQ(bar.from.x, bar.to.x);
  EXPECT_GT(bar.from.x, 1275 + 600);
  EXPECT_EQ(CallsOf(job, "PaintText").size(), 2u);
  for (const DrawCall& words : CallsOf(job, "PaintText")) {
    EXPECT_GT(words.numbers[0], bar.from.x);
    EXPECT_LE(words.numbers[2], 2550);
  }
}

// A feature that lies outside the plate keeps its room on the paper too.
TEST_F(PlatePrint, HasTheBarWhereNoFeatureIs) {
  Make(6, 4);
  PlateFeature feature;
  feature.placed = true;
  feature.y = -5.2;  // 90 pixels above the end of the page
  PutFeature(0, feature);
  const Bar bar = BarOf(Printed(), 300);
  ASSERT_TRUE(bar.found);
  EXPECT_LT(bar.from.y, 1050);
  feature.y = 5.2;
  PutFeature(1, feature);
  EXPECT_FALSE(BarOf(Printed(), 300).found);
  EXPECT_TRUE(LogHas(u"No margin beside the plate has room for the check bar"));
}

TEST_F(PlatePrint, SaysWhenNoMarginIsFreeForTheBar) {
  Make(8.5, 11);
  const PrintRecord job = Printed();
  EXPECT_FALSE(BarOf(job, 300).found);
  EXPECT_TRUE(CallsOf(job, "PaintText").empty());
  EXPECT_TRUE(LogHas(u"No margin beside the plate has room for the check bar and the name."));
}

TEST_F(PlatePrint, TellsOfFeaturesThatThePageCutsOff) {
  Make(6, 4);
  Printed();
  EXPECT_FALSE(LogHas(u"cut off"));
  PlateFeature feature;
  feature.placed = true;
  feature.x = 4.2;  // its edge lies beyond 4.25
  PutFeature(0, feature);
  feature.x = 40;
  PutFeature(1, feature);
  Printed();
  EXPECT_TRUE(LogHas(u"cut off on the template: 2."));
  EXPECT_NE(TextOf(kIdStatusLine).find(u"cut off on the template: 2."), std::u16string::npos);
}

TEST_F(PlatePrint, IsRefusedOnAPrinterThatTellsNoPage) {
  for (int figure = 0; figure < 4; ++figure) {
    for (const int broken : {0, -1}) {
      Make(6, 4);
      int figures[4] = {2550, 3300, 300, 300};
      figures[figure] = broken;
      Print({figures[0], figures[1], figures[2], figures[3]});
      ExpectRefusedPlainly(u"The selected printer did not report a usable printable area.");
    }
  }
}

TEST_F(PlatePrint, EndsInSilenceWhenTheDialogIsCancelled) {
  Make(6, 4);
  headless::QueuePrinterCancel();
  PrintPlate();
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_TRUE(headless::TakePrinted().empty());
  EXPECT_NE(std::u16string_view(plate.status), kPrinted);
}

TEST_F(PlatePrint, SaysThatThereIsNoPrinter) {
  Make(6, 4);
  headless::QueueNoPrinter();
  PrintPlate();
  ExpectRefusedPlainly(u"Windows printing components are unavailable.");
}

TEST_F(PlatePrint, SaysThatADocumentCouldNotBeStarted) {
  Make(6, 4);
  headless::FailCall("document", 1);
  Print();
  ExpectRefusedPlainly(u"The print job could not be started.");
  EXPECT_TRUE(Printed().ended);  // the next one is
}

TEST_F(PlatePrint, EndsADocumentWhosePageCouldNotBeStarted) {
  Make(6, 4);
  headless::FailCall("page", 1);
  Print();
  const std::vector<PrintRecord> jobs = headless::TakePrinted();
  ASSERT_EQ(jobs.size(), 1u);
  EXPECT_EQ(jobs[0].pages, 0);
  EXPECT_FALSE(jobs[0].ended);
  ExpectRefusedPlainly(u"The print job could not be started.");
  EXPECT_TRUE(Printed().ended);
}

TEST_F(PlatePrint, SaysNoLongerThatItWasPrintedWhenTheNextOneIsRefused) {
  Make(6, 4);
  Printed();
  Print({600, 600, 300, 300});
  ExpectTooLarge();
  SayOnPlate(u"Something else");
  Print({600, 600, 300, 300});
  EXPECT_EQ(std::u16string_view(plate.status), u"Something else");
}

TEST_F(PlatePrint, IsRefusedWithoutANameAndWithoutASizeBeforeAPrinterIsAskedFor) {
  constexpr const char16_t* kWords = u"Enter valid plate dimensions before printing.";
  for (const auto& [length, width] : {std::pair{0.0, 4.0}, {6.0, 0.0}, {-6.0, 4.0}, {6.0, -4.0}}) {
    Make(length, width);
    Print();
    ExpectRefusedPlainly(kWords);
  }
  Make(6, 4);
  SetPlateText(kPlateEdgeX, u"0,75");  // reads as no number
  Print();
  ExpectRefusedPlainly(kWords);
  StartPlate(false);
  Print();
  ExpectRefusedPlainly(kWords);
  EXPECT_EQ(std::u16string_view(plate.status), u"Start a named plate before inserting code.");
  headless::ClearQueues();
}

}  // namespace
