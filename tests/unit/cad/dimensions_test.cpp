#include "cad/tools/dimensions.h"

#include "cad/geometry/canvas_view.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/dimension_paint.h"
#include "cad/tools/draw_tools.h"
#include "cad/tools/tool_change.h"
#include "library/outline.h"
#include "unit/cad/draw_stage.h"

namespace morva {
namespace {

using Dimensions = DrawStage;

constexpr const char16_t* kRefused =
    u"Choose a supported dimension on unlocked geometry and enter a positive size. Slot length "
    u"must be at least its width.";

void Choose(int index, int part) {
  sketch.selected = index;
  tools.dimensionPart = part;
}

void Apply(std::u16string_view text) {
  platform::SetText(kIdCadDimensionValue, text);
  ASSERT_TRUE(headless::Click(kIdCadApplyDimension));
}

TEST_F(Dimensions, TheModeTellsWhatToDo) {
  EnterDimensionMode(false);
  EXPECT_TRUE(tools.dimensionMode);
  EXPECT_FALSE(tools.measureMode);
  EXPECT_EQ(tools.panelMode, kPanelDimension);
  EXPECT_EQ(Status(),
            u"Dimension: click an object or dimension label, change its value, and press Enter.");
  EnterDimensionMode(true);
  EXPECT_TRUE(tools.measureMode);
  EXPECT_EQ(tools.panelMode, kPanelDimension);
  EXPECT_EQ(Status(),
            u"Reference measurement: pick two points; this value does not resize geometry.");
}

TEST_F(Dimensions, TheModeClearsOtherTools) {
  StartMethod(kIdMethodLine);
  Click(0, 0);
  StartMethod(kIdMethodMeasure);
  EXPECT_EQ(tools.constructionMethod, 0);
  EXPECT_EQ(tools.constructionClicks, 0);
  EXPECT_TRUE(tools.measureMode);
  StartMethod(kIdMethodLine);
  EXPECT_FALSE(tools.dimensionMode);
  EXPECT_FALSE(tools.measureMode);
}

TEST_F(Dimensions, EscapeAndCancelEndTheMode) {
  EnterDimensionMode(false);
  EXPECT_TRUE(Key(platform::kKeyEscape));
  EXPECT_FALSE(tools.dimensionMode);
  EXPECT_EQ(tools.panelMode, kPanelNone);
  EnterDimensionMode(true);
  CancelTools();
  EXPECT_FALSE(tools.dimensionMode);
  EXPECT_FALSE(tools.measureMode);
}

TEST_F(Dimensions, TheValueIsThatOfTheChosenPart) {
  Put(kTypeSlot, 0, 0, 3, 1.25);
  Put(kTypeCircle, 3, 3, 1.5);
  EnterDimensionMode(false);
  Choose(0, 0);
  ShowDimensionValue();
  EXPECT_EQ(TextOf(kIdCadDimensionValue), u"3.0000");
  ASSERT_TRUE(headless::SelectRows(kIdCadDimensionPart, {1}));
  EXPECT_EQ(tools.dimensionPart, 1);
  EXPECT_EQ(TextOf(kIdCadDimensionValue), u"1.2500");
  sketch.selected = 1;
  ASSERT_TRUE(headless::SelectRows(kIdCadDimensionPart, {2}));
  EXPECT_EQ(TextOf(kIdCadDimensionValue), u"0.7500");
}

TEST_F(Dimensions, WithoutASizeTheValueBoxAsksForGeometry) {
  Put(kTypeWorkPoint, 0, 0, 0);
  for (const int selected : {-1, 0, 1}) {
    sketch.selected = selected;
    Type(kIdCadDimensionValue, u"");
    ShowDimensionValue();
    EXPECT_EQ(TextOf(kIdCadDimensionValue), u"Click geometry to measure and resize.");
  }
}

// Applying.

TEST_F(Dimensions, ALineKeepsItsStartAndAngle) {
  Put(kTypeLine, 1, 2, 3, 0, 30);
  EXPECT_TRUE(ApplyDimension(0, 0, 4.5));
  ExpectObject(sketch.objects[0], kTypeLine, 1, 2, 4.5, 0, 30);
  EXPECT_EQ(sketch.undoDepth, 1);
  EXPECT_EQ(LastLogged(), u"Changed driving dimension");
  SketchUndo();
  EXPECT_EQ(sketch.objects[0].size, 3);
}

TEST_F(Dimensions, ShapesKeepTheirCentre) {
  Put(kTypeRectangle, 1, 2, 3, 1, 30);
  EXPECT_TRUE(ApplyDimension(0, 0, 4));
  EXPECT_TRUE(ApplyDimension(0, 1, 5));
  ExpectObject(sketch.objects[0], kTypeRectangle, 1, 2, 4, 5, 30);
}

TEST_F(Dimensions, ACirclesRadiusOf1Point5GivesSize3) {
  Put(kTypeCircle, 1, 2, 1);
  EXPECT_TRUE(ApplyDimension(0, 2, 1.5));
  ExpectObject(sketch.objects[0], kTypeCircle, 1, 2, 3, 0, 0);
}

TEST_F(Dimensions, AWorkAxisTakesALength) {
  Put(kTypeWorkAxis, 1, 2, 1);
  EXPECT_TRUE(ApplyDimension(0, 0, 2));
  EXPECT_EQ(sketch.objects[0].size, 2);
}

TEST_F(Dimensions, ASlotsWidthAboveItsLengthIsRefusedAndTheLengthStays) {
  Put(kTypeSlot, 0, 0, 2, 1);
  EnterDimensionMode(false);
  Choose(0, 1);
  Apply(u"2.0001");
  EXPECT_EQ(Status(), kRefused);
  ExpectObject(sketch.objects[0], kTypeSlot, 0, 0, 2, 1, 0);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_FALSE(ApplyDimension(0, 0, 0.9999));
  EXPECT_TRUE(ApplyDimension(0, 1, 2));
  EXPECT_TRUE(ApplyDimension(0, 0, 2));
}

TEST_F(Dimensions, Part1OnALineIsRefused) {
  Put(kTypeLine, 0, 0, 2);
  EnterDimensionMode(false);
  Choose(0, 1);
  Apply(u"1");
  EXPECT_EQ(Status(), kRefused);
  EXPECT_EQ(sketch.objects[0].size, 2);
  EXPECT_EQ(sketch.objects[0].size2, 0);
}

TEST_F(Dimensions, PartsFitTheirShapes) {
  for (int type = kTypeLine; type <= kTypeWorkAxis; ++type) {
    Put(static_cast<SketchType>(type), 0, 0, 2, 1);
  }
  const bool allowed[6][3] = {{true, false, false}, {true, true, false},   {true, false, true},
                              {true, true, false},  {false, false, false}, {true, false, false}};
  for (int type = 0; type < 6; ++type) {
    for (int part = 0; part < 3; ++part) {
      EXPECT_EQ(ApplyDimension(type, part, 1.5), allowed[type][part]) << type << " " << part;
    }
    EXPECT_FALSE(ApplyDimension(type, 3, 1.5));
    EXPECT_FALSE(ApplyDimension(type, -1, 1.5));
  }
}

TEST_F(Dimensions, ValuesAndIndicesHaveTheirBounds) {
  Put(kTypeCircle, 0, 0, 2);
  for (const double value : {0.0, -1.0, 1000000.0, std::nan("")}) {
    EXPECT_FALSE(ApplyDimension(0, 0, value));
  }
  EXPECT_FALSE(ApplyDimension(0, 2, 500000));
  EXPECT_TRUE(ApplyDimension(0, 2, 499999));
  EXPECT_FALSE(ApplyDimension(-1, 0, 1));
  EXPECT_FALSE(ApplyDimension(1, 0, 1));
  sketch.locked[0] = 1;
  EXPECT_FALSE(ApplyDimension(0, 0, 1));
  EXPECT_EQ(sketch.undoDepth, 1);
}

TEST_F(Dimensions, TheButtonReadsStrictNumbersOnly) {
  Put(kTypeLine, 0, 0, 2);
  EnterDimensionMode(false);
  Choose(0, 0);
  for (const char16_t* text : {u"", u"3in", u"3,5", u" 3", u"0", u"-3", u"1000000",
                               u"Click geometry to measure and resize."}) {
    SetSketchStatus(u"");
    Apply(text);
    EXPECT_EQ(Status(), kRefused);
    EXPECT_EQ(sketch.objects[0].size, 2);
  }
  Apply(u"+3.5");
  EXPECT_EQ(sketch.objects[0].size, 3.5);
  EXPECT_EQ(TextOf(kIdCadDimensionValue), u"3.5000");
}

TEST_F(Dimensions, WithoutASelectionApplyIsRefused) {
  EnterDimensionMode(false);
  Apply(u"1");
  EXPECT_EQ(Status(), kRefused);
}

TEST_F(Dimensions, WhileMeasuringApplyIsRefused) {
  Put(kTypeLine, 0, 0, 2);
  EnterDimensionMode(true);
  Choose(0, 0);
  Apply(u"3");
  EXPECT_EQ(Status(), kRefused);
  EXPECT_EQ(sketch.objects[0].size, 2);
  EXPECT_EQ(sketch.undoDepth, 0);
}

TEST_F(Dimensions, TheValueFollowsTheSelectionAndTheUndo) {
  Put(kTypeLine, 0, 0, 2);
  Put(kTypeCircle, 0, -2, 1);
  EnterDimensionMode(false);
  Choose(0, 0);
  Apply(u"3");
  EXPECT_EQ(TextOf(kIdCadDimensionValue), u"3.0000");
  Type(kIdCadDimensionValue, u"4");
  SketchUndo();
  EXPECT_EQ(TextOf(kIdCadDimensionValue), u"2.0000");
  sketch.selected = 1;
  RefreshSketchPanels();
  EXPECT_EQ(TextOf(kIdCadDimensionValue), u"1.0000");
}

// Clicks.

TEST_F(Dimensions, AClickOnGeometryChoosesItAndItsValue) {
  Put(kTypeLine, 0, 0, 2);
  Put(kTypeCircle, 0, -2, 1);
  EnterDimensionMode(false);
  tools.dimensionPart = 2;
  EXPECT_TRUE(Press(0, -2));
  EXPECT_EQ(sketch.selected, 1);
  EXPECT_EQ(tools.dimensionPart, 0);
  EXPECT_EQ(tools.panelMode, kPanelDimension);
  EXPECT_EQ(TextOf(kIdCadDimensionValue), u"1.0000");
  EXPECT_EQ(platform::FocusedId(), kIdCadDimensionValue);
}

// The first object of the sketch is one like the others.
TEST_F(Dimensions, AClickOnTheFirstObjectGivesItsValueTheKeyboardWithTheNumberSelected) {
  Put(kTypeLine, 0, 0, 2);
  EnterDimensionMode(false);
  headless::Focus(kViewCadCanvas);
  EXPECT_TRUE(Press(1, 0));
  EXPECT_EQ(sketch.selected, 0);
  ASSERT_EQ(platform::FocusedId(), kIdCadDimensionValue);
  headless::PressKey({'7'});
  EXPECT_EQ(TextOf(kIdCadDimensionValue), u"7");
}

TEST_F(Dimensions, AClickBesideEverythingChoosesNothing) {
  Put(kTypeLine, 0, 0, 2);
  EnterDimensionMode(false);
  sketch.selected = 0;
  EXPECT_TRUE(Press(0, 2));
  EXPECT_EQ(sketch.selected, -1);
  EXPECT_EQ(TextOf(kIdCadDimensionValue), u"Click geometry to measure and resize.");
}

// The middle of a painted label, as the click that hits it.
bool PressLabel(int index, int label) {
  const platform::Rect rect = DimensionLabel(index, label);
  platform::PointerEvent event;
  event.action = platform::PointerAction::Press;
  event.button = platform::PointerButton::Left;
  event.x = (rect.left + rect.right) / 2;
  event.y = (rect.top + rect.bottom) / 2;
  return DimensionPress(event);
}

TEST_F(Dimensions, AClickOnALabelChoosesItsPart) {
  Put(kTypeRectangle, 0, 0, 4, 2);
  EnterDimensionMode(false);
  Paint();
  EXPECT_TRUE(PressLabel(0, 1));
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(tools.dimensionPart, 1);
  EXPECT_EQ(TextOf(kIdCadDimensionValue), u"2.0000");
  EXPECT_TRUE(PressLabel(0, 0));
  EXPECT_EQ(tools.dimensionPart, 0);
  EXPECT_EQ(TextOf(kIdCadDimensionValue), u"4.0000");
}

bool Overlap(const platform::Rect& a, const platform::Rect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

TEST_F(Dimensions, OfLabelsOnOneAnotherTheLaterObjectsWins) {
  // Four places there are for one line's label; the fifth lies on the first.
  for (int i = 0; i < 5; ++i) Put(kTypeLine, -1, 0, 2);
  EnterDimensionMode(false);
  Paint();
  for (int i = 0; i < 4; ++i) {
    for (int k = 0; k < i; ++k) EXPECT_FALSE(Overlap(DimensionLabel(i, 0), DimensionLabel(k, 0)));
  }
  EXPECT_TRUE(PressLabel(1, 0));
  EXPECT_EQ(sketch.selected, 1);
  EXPECT_TRUE(PressLabel(0, 0));
  EXPECT_EQ(sketch.selected, 4);
}

TEST_F(Dimensions, LabelsOfNeighboursKeepApartAndOffTheirShapes) {
  // Circles 30 pixels across and 60 apart; their texts are 74 wide.
  for (int i = 0; i < 3; ++i) Put(kTypeCircle, 0.6 * i, 0, 0.3);
  EnterDimensionMode(false);
  Paint();
  for (int i = 0; i < 3; ++i) {
    const platform::Rect label = DimensionLabel(i, 0);
    ASSERT_GT(label.right, 0);
    for (int k = 0; k < 3; ++k) {
      EXPECT_TRUE(k == i || !Overlap(label, DimensionLabel(k, 0))) << i << " on " << k;
      const int x = 520 + 60 * k;
      EXPECT_FALSE(Overlap(label, {x - 15, 285, x + 16, 316})) << i << " on circle " << k;
    }
  }
}

TEST_F(Dimensions, AFittedDrawingKeepsItsLabelsInsideTheCanvas) {
  sketch.metric = true;
  Put(kTypeRectangle, 100, -50, 1200, 200);
  Put(kTypeRectangle, 100, -50, 1000, 900);
  EnterDimensionMode(false);
  CanvasFit();
  Paint();
  const platform::Rect client = platform::ClientArea(kViewCadCanvas);
  for (int i = 0; i < 2; ++i) {
    for (int k = 0; k < 2; ++k) {
      const platform::Rect label = DimensionLabel(i, k);
      ASSERT_GT(label.right, 0);
      EXPECT_GE(label.left, client.left);
      EXPECT_GE(label.top, client.top);
      EXPECT_LE(label.right, client.right);
      EXPECT_LE(label.bottom, client.bottom);
    }
  }
}

TEST_F(Dimensions, ALabelThatIsNoLongerPaintedIsNotHit) {
  Put(kTypeLine, -1, 0, 2);
  EnterDimensionMode(false);
  Paint();
  const platform::Rect rect = DimensionLabel(0, 0);
  ASSERT_LT(rect.left, rect.right);
  sketch.hidden[0] = 1;
  Paint();
  EXPECT_EQ(DimensionLabel(0, 0).right, 0);
  platform::PointerEvent event;
  event.button = platform::PointerButton::Left;
  event.x = rect.left + 2;
  event.y = rect.top + 2;
  DimensionPress(event);
  EXPECT_EQ(sketch.selected, -1);
}

TEST_F(Dimensions, WithoutTheModeAPressIsNotUsed) {
  Put(kTypeLine, 0, 0, 2);
  EXPECT_FALSE(Press(0, 0));
}

// Measuring.

TEST_F(Dimensions, MeasureTakesTwoPointsAndThenANewPair) {
  EnterDimensionMode(true);
  EXPECT_TRUE(Press(0, 0));
  EXPECT_EQ(tools.constructionClicks, 1);
  EXPECT_EQ(Status(), u"Measure: click second point.");
  EXPECT_TRUE(Press(3, 1));
  EXPECT_EQ(tools.constructionClicks, 2);
  EXPECT_EQ(Status(), u"Reference distance shown. Click to measure another pair; Esc exits.");
  EXPECT_TRUE(Press(2, 2));
  EXPECT_EQ(tools.constructionClicks, 1);
  EXPECT_EQ(tools.pointsX[0], 2);
  EXPECT_EQ(tools.pointsY[0], 2);
  EXPECT_EQ(Status(), u"Measure: click second point.");
}

TEST_F(Dimensions, MeasureSnaps) {
  sketch.snapOn = true;
  Put(kTypeLine, 1, 1, 2);
  EnterDimensionMode(true);
  Press(1.04, 1.05);
  EXPECT_EQ(tools.pointsX[0], 1);
  EXPECT_EQ(tools.pointsY[0], 1);
  Press(0.52, 0.51, true);
  EXPECT_EQ(tools.pointsX[1], 0.52);
}

TEST_F(Dimensions, MeasureNeverCreatesAnUndoStep) {
  Put(kTypeLine, 1, 1, 2);
  EnterDimensionMode(true);
  for (int i = 0; i < 7; ++i) Press(0.5 * i, 0.25 * i);
  Key(platform::kKeyEscape);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].size, 2);
}

// Labels.

struct Label {
  std::u16string text;
  platform::Rect rect;
};

std::vector<Label> PaintedLabels() {
  std::vector<Label> labels;
  for (const headless::DrawCall& call : headless::PaintOf(kViewCadCanvas)) {
    if (call.name != "PaintText") continue;
    labels.push_back({call.text,
                      {static_cast<int>(call.numbers[0]), static_cast<int>(call.numbers[1]),
                       static_cast<int>(call.numbers[2]), static_cast<int>(call.numbers[3])}});
  }
  return labels;
}

platform::Point Middle(const platform::Rect& rect) {
  return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

TEST_F(Dimensions, EveryShapeHasItsLabels) {
  Put(kTypeLine, 0, 0, 1.5);
  Put(kTypeRectangle, 1, 1, 2, 0.5);
  Put(kTypeCircle, -2, 1, 1);
  Put(kTypeSlot, -2, -1, 1, 0.25);
  Put(kTypeWorkPoint, 3, 1, 0);
  Put(kTypeWorkAxis, 3, -1, 1, 0, 90);
  Put(kTypeLine, 0, 2, 9);
  sketch.hidden[6] = 1;
  EnterDimensionMode(false);
  std::vector<std::u16string> texts;
  for (const Label& label : PaintedLabels()) texts.push_back(label.text);
  EXPECT_EQ(texts, (std::vector<std::u16string>{u"L 1.5000 in", u"W 2.0000 in", u"H 0.5000 in",
                                                u"Ø 1.0000 in", u"W 1.0000 in", u"H 0.2500 in",
                                                u"L 1.0000 in"}));
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(DimensionLabel(i, 0).right > 0, i != 4) << i;
    EXPECT_EQ(DimensionLabel(i, 1).right > 0, i == 1 || i == 3) << i;
  }
}

TEST_F(Dimensions, LabelsStandBesideWhatTheyMeasure) {
  Put(kTypeLine, 0, 0, 2);           // screen (520, 300) to (720, 300)
  Put(kTypeRectangle, 0, -1, 2, 1);  // screen 420 to 620, 350 to 450
  Put(kTypeCircle, -3, 1, 1);        // centre at screen (220, 200)
  EnterDimensionMode(false);
  ASSERT_EQ(PaintedLabels().size(), 4u);
  const platform::Point line = Middle(DimensionLabel(0, 0));
  EXPECT_NEAR(line.x, 620, 1);
  EXPECT_NEAR(line.y, 300 - 22, 1);
  const platform::Point bottom = Middle(DimensionLabel(1, 0));
  EXPECT_NEAR(bottom.x, 520, 1);
  EXPECT_NEAR(bottom.y, 450 + 22, 1);
  const platform::Point right = Middle(DimensionLabel(1, 1));
  // The text is 11 times 6 and 8 wide and keeps 6 clear of the edge: farther out than the 26.
  EXPECT_NEAR(right.x, 620 + 37 + 6, 1);
  EXPECT_NEAR(right.y, 400, 1);
  const platform::Point circle = Middle(DimensionLabel(2, 0));
  EXPECT_NEAR(circle.x, 220, 1);
  EXPECT_NEAR(circle.y, 200 - 22, 1);
}

// Whether one of the lines that were painted runs so, either way round, to the pixel that places
// are cut off to.
bool LinePainted(double x0, double y0, double x1, double y1) {
  for (const headless::DrawCall& call : headless::PaintOf(kViewCadCanvas)) {
    if (call.name != "PaintSegments") continue;
    for (std::size_t i = 0; i + 6 < call.numbers.size(); i += 4) {  // behind them stands the pen
      const double* n = &call.numbers[i];
      const auto runs = [n](double ax, double ay, double bx, double by) {
        return std::hypot(n[0] - ax, n[1] - ay) < 1.5 && std::hypot(n[2] - bx, n[3] - by) < 1.5;
      };
      if (runs(x0, y0, x1, y1) || runs(x1, y1, x0, y0)) return true;
    }
  }
  return false;
}

TEST_F(Dimensions, DimensionLinesKeepTheirDistanceFromWhatTheyMeasure) {
  Put(kTypeLine, 0, 0, 2);           // screen (520, 300) to (720, 300)
  Put(kTypeRectangle, 0, -1, 2, 1);  // screen 420 to 620, 350 to 450
  EnterDimensionMode(false);
  EXPECT_TRUE(LinePainted(520, 300 - 22, 720, 300 - 22));
  EXPECT_TRUE(LinePainted(420, 450 + 22, 620, 450 + 22));
  EXPECT_TRUE(LinePainted(620 + 26, 350, 620 + 26, 450));
  EnterDimensionMode(true);
  Press(0, 1);
  Press(3, 1);
  EXPECT_TRUE(LinePainted(520, 200 - 20, 820, 200 - 20));
}

TEST_F(Dimensions, LabelsShowMillimetres) {
  sketch.metric = true;
  Put(kTypeLine, 0, 0, 12.7);
  EnterDimensionMode(false);
  ASSERT_EQ(PaintedLabels().size(), 1u);
  EXPECT_EQ(PaintedLabels()[0].text, u"L 12.7000 mm");
}

TEST_F(Dimensions, LabelsShowWhileAMethodRunsAndNotOtherwise) {
  Put(kTypeLine, 0, 0, 1);
  EXPECT_TRUE(PaintedLabels().empty());
  StartMethod(kIdMethodCircleRadius);
  EXPECT_EQ(PaintedLabels().size(), 1u);
  StartDragTool(1);
  EXPECT_TRUE(PaintedLabels().empty());
  EXPECT_EQ(DimensionLabel(0, 0).right, 0);
}

TEST_F(Dimensions, AReferenceMeasureShowsItsDistance) {
  EnterDimensionMode(true);
  Press(0, 0);
  EXPECT_TRUE(PaintedLabels().empty());
  Press(3, 2);
  ASSERT_EQ(PaintedLabels().size(), 1u);
  EXPECT_EQ(PaintedLabels()[0].text, u"REF 3.6056 in");  // the root of 13
}

TEST_F(Dimensions, AMeasureOfOnePlaceHasADistanceOfZero) {
  EnterDimensionMode(true);
  Press(1, 1);
  Press(1, 1);
  ASSERT_EQ(PaintedLabels().size(), 1u);
  EXPECT_EQ(PaintedLabels()[0].text, u"REF 0.0000 in");
}

TEST_F(Dimensions, AnObjectFarOutsideIsPaintedWithoutHarm) {
  Put(kTypeLine, 999999, 0, 2);
  Put(kTypeLine, 0, 0, 999999);
  canvasView.zoom = 40;
  EnterDimensionMode(false);
  EXPECT_TRUE(PaintedLabels().empty());
}

TEST_F(Dimensions, ExactCosineOf450IsExactlyZero) {
  EXPECT_EQ(ExactCosine(450), 0.0);
  EXPECT_EQ(ExactCosine(0), 1.0);
  EXPECT_EQ(ExactCosine(-180), -1.0);
  EXPECT_EQ(ExactCosine(630), 0.0);
  EXPECT_EQ(ExactSine(180), 0.0);
  EXPECT_EQ(ExactSine(-90), -1.0);
  EXPECT_NEAR(ExactCosine(60), 0.5, 1e-7);
}

}  // namespace
}  // namespace morva
