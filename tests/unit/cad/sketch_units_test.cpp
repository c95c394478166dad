// The sketch's own unit switch. Factors are 25.4 and the double next to 1/25.4.

#include <gtest/gtest.h>

#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "unit/cad/cad_stage.h"

namespace morva {
namespace {

using SketchUnits = cad_test::CadStage;

TEST_F(SketchUnits, MillimetresScaleEveryLengthAndNoAngle) {
  Add(kTypeSlot, 1, -2, 3, 0.5, 45, 9);
  sketch.thickness = 0.5;
  tools.pivotX = 2;
  tools.pivotY = -1;
  SwitchSketchUnits(true);
  EXPECT_TRUE(sketch.metric);
  const SketchObject& slot = sketch.objects[0];
  EXPECT_DOUBLE_EQ(slot.x, 25.4);
  EXPECT_DOUBLE_EQ(slot.y, -50.8);
  EXPECT_DOUBLE_EQ(slot.size, 76.19999999999999);
  EXPECT_DOUBLE_EQ(slot.size2, 12.7);
  EXPECT_EQ(slot.angle, 45);
  EXPECT_EQ(slot.group, 9);
  EXPECT_DOUBLE_EQ(sketch.thickness, 12.7);
  EXPECT_DOUBLE_EQ(tools.pivotX, 50.8);
  EXPECT_DOUBLE_EQ(tools.pivotY, -25.4);
}

TEST_F(SketchUnits, InchesUseTheStoredReciprocal) {
  sketch.metric = true;
  Add(kTypeCircle, 10, 0, 7);
  SwitchSketchUnits(false);
  EXPECT_EQ(sketch.objects[0].x, 10 * 0.03937007874015748);
  EXPECT_EQ(sketch.objects[0].size, 7 * 0.03937007874015748);
}

TEST_F(SketchUnits, FieldsConvertAsTextWithTheirDecimals) {
  platform::SetText(kIdCadPolygonRadius, u"1");
  platform::SetText(kIdCadPivotX, u"-0.5");
  platform::SetText(kIdCadX, u"2");
  platform::SetText(kIdCadAmount, u"0.1");
  platform::SetText(kIdCadDepth, u"-0.1");
  platform::SetText(kIdCadFeed, u"10");
  platform::SetText(kIdCadSafeZ, u"0.5");
  platform::SetText(kIdCadCircularDiameter, u"4");
  platform::SetText(kIdCadSpacingY, u"");
  platform::SetText(kIdCadSpacingX, u"abc");
  platform::SetText(kIdCadAngle, u"30");
  platform::SetText(kIdCadRevolveAngle, u"90");
  platform::SetText(kIdCadQuantity, u"6");
  SwitchSketchUnits(true);
  EXPECT_EQ(TextOf(kIdCadPolygonRadius), u"25.40000");
  EXPECT_EQ(TextOf(kIdCadPivotX), u"-12.70000");
  EXPECT_EQ(TextOf(kIdCadX), u"50.800");
  EXPECT_EQ(TextOf(kIdCadAmount), u"2.540");
  EXPECT_EQ(TextOf(kIdCadDepth), u"-2.540");
  EXPECT_EQ(TextOf(kIdCadFeed), u"254.00");
  EXPECT_EQ(TextOf(kIdCadSafeZ), u"12.700");
  EXPECT_EQ(TextOf(kIdCadCircularDiameter), u"101.600");
  EXPECT_EQ(TextOf(kIdCadSpacingY), u"");
  EXPECT_EQ(TextOf(kIdCadSpacingX), u"abc");
  EXPECT_EQ(TextOf(kIdCadAngle), u"30");
  EXPECT_EQ(TextOf(kIdCadRevolveAngle), u"90");
  EXPECT_EQ(TextOf(kIdCadQuantity), u"6");
}

TEST_F(SketchUnits, TheActiveUnitChangesNothingButCaptions) {
  Add(kTypeLine, 1, 1, 1);
  headless::Click(kIdCadInch);
  EXPECT_EQ(sketch.objects[0].x, 1);
  EXPECT_EQ(sketch.undoDepth, 0);
  EXPECT_EQ(TextOf(kIdCadInch), u"INCH *");
  EXPECT_EQ(TextOf(kIdCadMm), u"MM");
}

TEST_F(SketchUnits, TheKeysSwitchWithOneUndoStepAndWithoutTheApplicationsUnit) {
  Add(kTypeLine, 0.1, 0, 1);
  headless::Click(kIdCadMm);
  EXPECT_TRUE(sketch.metric);
  EXPECT_FALSE(UnitsMetric());
  EXPECT_EQ(TextOf(kIdCadInch), u"INCH");
  EXPECT_EQ(TextOf(kIdCadMm), u"MM *");
  EXPECT_EQ(sketch.undoDepth, 1);
  headless::Click(kIdCadUndo);
  EXPECT_FALSE(sketch.metric);
  EXPECT_EQ(sketch.objects[0].x, 0.1);  // the very number, not 0.1 * 25.4 / 25.4
  EXPECT_EQ(TextOf(kIdCadInch), u"INCH *");
}

TEST_F(SketchUnits, APanelOfNumbersStaysAndOneOfAToolGoesWithIt) {
  for (const int panel : {kPanelCircular, kPanelRectangular, kPanelScale, kPanelCutData,
                          kPanelRevolve, kPanelThickness}) {
    tools.panelMode = panel;
    tools.constructionMethod = kIdMethodLine;
    tools.constructionClicks = 1;
    SwitchSketchUnits(!sketch.metric);
    EXPECT_EQ(tools.panelMode, panel);
    EXPECT_EQ(tools.constructionMethod, 0) << panel;
    EXPECT_EQ(tools.constructionClicks, 0) << panel;
  }
  for (const int panel : {kPanelPolygon, kPanelDimension}) {
    tools.panelMode = panel;
    SwitchSketchUnits(!sketch.metric);
    EXPECT_EQ(tools.panelMode, kPanelNone) << panel;
  }
}

TEST_F(SketchUnits, UndoAcrossAUnitChangeRestoresOldNumbersAndTheUnit) {
  Add(kTypeCircle, 0.3, 0.7, 1.1);
  PushSketchUndo();
  sketch.objects[0].x = 5;
  platform::SetText(kIdCadDepth, u"-0.1");
  SwitchSketchUnits(true);
  EXPECT_EQ(TextOf(kIdCadDepth), u"-2.540");
  SketchUndo();
  EXPECT_FALSE(sketch.metric);
  EXPECT_EQ(sketch.objects[0].x, 0.3);
  EXPECT_EQ(sketch.objects[0].y, 0.7);
  EXPECT_EQ(sketch.objects[0].size, 1.1);
  EXPECT_EQ(TextOf(kIdCadDepth), u"-0.100");
}

TEST_F(SketchUnits, ASketchThatWouldReachTheCoordinateLimitStaysInInches) {
  Add(kTypeLine, 39370, 0, 1);  // 999,998 mm
  headless::Click(kIdCadMm);
  EXPECT_TRUE(sketch.metric);
  headless::Click(kIdCadInch);
  sketch.objects[0].x = 39371;  // 1,000,023.4 mm
  headless::Click(kIdCadMm);
  EXPECT_FALSE(sketch.metric);
  EXPECT_EQ(sketch.objects[0].x, 39371);
  EXPECT_EQ(sketch.undoDepth, 2);
  EXPECT_EQ(TextOf(kIdCadStatus),
            u"Units unchanged: millimetres would exceed the sketch coordinate limit.");
}

// 39,370.0788 inches are 1,000,000.0 mm: each number of an object is held to the limit.
TEST_F(SketchUnits, EachNumberOfAnObjectKeepsTheSketchInInches) {
  Add(kTypeSlot, 1, 1, 1, 1);
  SketchObject& slot = sketch.objects[0];
  for (double* number : {&slot.x, &slot.y, &slot.size, &slot.size2}) {
    *number = 39371;
    headless::Click(kIdCadMm);
    EXPECT_FALSE(sketch.metric) << number - &slot.x;
    EXPECT_EQ(sketch.undoDepth, 0);
    *number = 1;
  }
  headless::Click(kIdCadMm);
  EXPECT_TRUE(sketch.metric);
}

}  // namespace
}  // namespace morva
