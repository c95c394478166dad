// Field help, the drawn centerline, and what a fresh skim starts with.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "library/tools.h"
#include "skim/model/centerline.h"
#include "skim/model/field_help.h"
#include "skim/model/plan_seeds.h"
#include "support/skim_plans.h"

namespace morva {
namespace {

using support::SkimLine;
using support::SmallSkim;

TEST(SkimFieldHelp, MarksWhatTheFieldMeans) {
  SkimPlan plan = SmallSkim();
  plan.xMin = -1;
  plan.yMin = 0.5;
  plan.zTop = 3;
  plan.exit = 0.75;
  const struct {
    int field;
    double x, y, z;
  } markers[] = {
      {kSkimTool, -1, 0.5, 3},
      {kSkimWorkOffset, -1, 0.5, 3},
      {kSkimXMin, -1, 0.5, 3},
      {kSkimYMin, -1, 0.5, 3},
      {kSkimXMax, 2, 0.5, 3},
      {kSkimYMax, -1, 1, 3},
      {kSkimDiameter, -1, 0.5, 3},
      {kSkimStepover, -1, 1.1, 3},
      {kSkimRpm, -1, 0.5, 3},
      {kSkimFeed, -1, 0.5, 3},
      {kSkimPlunge, -1, 0.5, 2.875},
      {kSkimZTop, -1, 0.5, 3},
      {kSkimDepthPerPass, -1, 0.5, 2.875},
      {kSkimTotalDepth, -1, 0.5, 2},
      {kSkimPassCount, -1, 0.5, 2.75},
      {kSkimClearance, -1, 0.5, 3.5},
      {kSkimEntry, -1.6, 0.5, 3},
      {kSkimExit, 2.75, 0.5, 3},
  };
  for (const auto& expected : markers) {
    const SkimMarker marker = SkimFieldMarker(plan, expected.field);
    EXPECT_DOUBLE_EQ(marker.x, expected.x) << expected.field;
    EXPECT_DOUBLE_EQ(marker.y, expected.y) << expected.field;
    EXPECT_DOUBLE_EQ(marker.z, expected.z) << expected.field;
  }
}

TEST(SkimFieldHelp, IsOneLine) {
  const SkimPlan plan = SmallSkim();
  EXPECT_EQ(SkimFieldHelp(plan, kSkimDepthPerPass, u".125"),
            u"Depth of cut per pass = .125 \u2014 Resulting cut plane  Z -0.1250");
  EXPECT_EQ(SkimFieldHelp(plan, kSkimXMin, u"0"), u"Stock X minimum = 0 \u2014   Z 0.0000");
  EXPECT_EQ(SkimFieldHelp(plan, kSkimRpm, u"1500"),
            u"Spindle speed (RPM) = 1500 \u2014 Spindle RPM; geometry size stays fixed  Z 0.0000");
  EXPECT_EQ(SkimFieldHelp(plan, kSkimEntry, u"0.6"),
            u"Entry beyond left edge = 0.6 \u2014 Entry beyond left edge  Z 0.0000");
}

struct Taken {
  std::u16string words;
  SkimCenterline line;
};
Taken Take(std::vector<SketchObject> objects, std::vector<int> hidden = {}, double factor = 1) {
  unsigned char flags[kMaxItems] = {};
  for (const int index : hidden) flags[index] = 1;
  Taken taken;
  taken.line.count = -1;
  const char16_t* words = TakeCenterline(objects, flags, factor, taken.line);
  taken.words = words ? words : u"";
  return taken;
}

TEST(SkimCenterlineTaken, HoldsTheVisibleLinesInTheirOrder) {
  SketchObject circle = SkimLine(0, 0, 2, 0);
  circle.type = kTypeCircle;
  SketchObject point = circle;
  point.type = kTypeWorkPoint;
  SketchObject axis = circle;
  axis.type = kTypeWorkAxis;
  const Taken taken = Take(
      {SkimLine(1, 2, 3, 10), circle, point, axis, SkimLine(4, 5, 6, 20), SkimLine(7, 8, 9, 0)},
      {1, 5}, 2);
  EXPECT_EQ(taken.words, u"");
  ASSERT_EQ(taken.line.count, 2);
  EXPECT_TRUE(SameGeometry(taken.line.segments[0], SkimLine(2, 4, 6, 10)));
  EXPECT_TRUE(SameGeometry(taken.line.segments[1], SkimLine(8, 10, 12, 20)));
}

TEST(SkimCenterlineTaken, IsRefusedForAnythingButLines) {
  for (const std::int32_t type : {kTypeRectangle, kTypeCircle, kTypeSlot}) {
    SketchObject other = SkimLine(0, 0, 1, 0);
    other.type = type;
    const Taken taken = Take({SkimLine(0, 0, 1, 0), other});
    EXPECT_EQ(taken.words,
              u"Custom skim centerlines currently require line segments; trim or replace other "
              u"geometry.");
    EXPECT_EQ(taken.line.count, -1);
  }
}

TEST(SkimCenterlineTaken, IsRefusedWithoutALine) {
  EXPECT_EQ(Take({}).words, u"Draw at least one line before accepting the skim path.");
  EXPECT_EQ(Take({SkimLine(0, 0, 1, 0)}, {0}).words,
            u"Draw at least one line before accepting the skim path.");
}

struct SkimSeedsTest : testing::Test {
  SkimSeedsTest() { ResetToolLibrary(); }
  ~SkimSeedsTest() override { ResetToolLibrary(); }
  static void Add(std::int32_t number, double diameter) {
    ToolRecord tool;
    tool.number = number;
    tool.diameter = diameter;
    AppendTool(tool);
  }
};

TEST_F(SkimSeedsTest, TakeTheDiameterOfTheFirstToolOfTheNumber) {
  Add(2, 0.5);
  Add(3, 0.75);
  Add(3, 0.25);
  SkimPlan last;
  last.diameter = 2;
  EXPECT_EQ(SeededSkimPlan(last, {.tool = u"3"}, false).diameter, 0.75);
  EXPECT_DOUBLE_EQ(SeededSkimPlan(last, {.tool = u"3"}, true).diameter, 19.05);
  EXPECT_EQ(SeededSkimPlan(last, {.tool = u"4"}, false).diameter, 2);
  EXPECT_DOUBLE_EQ(SeededSkimPlan(last, {.tool = u"4"}, true).diameter, 50.8);
}

TEST_F(SkimSeedsTest, AreTheFieldsOfTheMachiningWizard) {
  const SkimSeeds seeds{
      .tool = u"7", .workOffset = u"G55", .rpm = u"900", .feed = u"305.5", .safeZ = u"12.5"};
  const SkimPlan plan = SeededSkimPlan(SkimPlan(), seeds, true);
  EXPECT_TRUE(plan.metric);
  EXPECT_EQ(plan.tool, 7);
  EXPECT_EQ(plan.workOffset, 55);
  EXPECT_EQ(plan.rpm, 900);
  EXPECT_EQ(plan.feed, 305.5);
  EXPECT_EQ(plan.clearance, 12.5);
  EXPECT_DOUBLE_EQ(plan.xMax, 101.6);
  EXPECT_EQ(SeededSkimPlan(SkimPlan(), {.workOffset = u"58"}, false).workOffset, 58);
  EXPECT_EQ(SeededSkimPlan(SkimPlan(), {.workOffset = u"g59"}, false).workOffset, 59);
}

TEST_F(SkimSeedsTest, HaveFallbacks) {
  SkimPlan last;
  last.tool = 9;
  last.workOffset = 59;
  last.rpm = 3;
  const SkimSeeds seeds{.tool = u"x", .workOffset = u"G", .rpm = u"", .feed = u"1,5", .safeZ = u""};
  const SkimPlan plan = SeededSkimPlan(last, seeds, false);
  EXPECT_EQ(plan.tool, 0);
  EXPECT_EQ(plan.workOffset, 54);
  EXPECT_EQ(plan.rpm, 1500);
  EXPECT_EQ(plan.feed, 12);
  EXPECT_EQ(plan.clearance, 0.5);
}

}  // namespace
}  // namespace morva
