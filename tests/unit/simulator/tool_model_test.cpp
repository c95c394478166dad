#include "simulator/tool_model.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "library/tools.h"
#include "simulator/shown_path.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

constexpr platform::Colour kFlutes = 0xC3CCD4;
constexpr platform::Colour kShank = 0x8795A1;

class ToolModelTest : public ViewTest {
 protected:
  ToolModelTest() {
    ResetToolLibrary();
    FlatPart();
    for (int i = 0; i < path.count; ++i) path.points[i].tool = 3;
    playback.headInUse = true;
    playback.playHead = 2;
  }
  ~ToolModelTest() override { ResetToolLibrary(); }

  static void AddTool(std::int32_t number, std::u16string_view type, double diameter) {
    ToolRecord tool;
    tool.number = number;
    std::copy(type.begin(), type.end(), tool.type);
    tool.diameter = diameter;
    tool.stickout = 1.25;
    tool.gaugeLength = 4;
    AppendTool(tool);
  }
  static std::size_t Solids(platform::Colour fill) {
    std::size_t found = 0;
    for (const headless::DrawCall& call : Paint()) {
      if (call.name == "PaintPolygon" && !call.colours.empty() && call.colours[0] == fill) ++found;
    }
    return found;
  }
};

TEST_F(ToolModelTest, TakesSizesFromTheLibrary) {
  AddTool(3, u"Ball End Mill", 0.75);
  const ToolModel model = ToolModelNow();
  ASSERT_TRUE(model.shown);
  EXPECT_EQ(model.cutter.tool, 3);
  EXPECT_EQ(model.cutter.shape, ToolShape::Ball);
  EXPECT_EQ(model.cutter.diameter, 0.75);
  EXPECT_EQ(model.cutter.fluteLength, 1.25);
  EXPECT_EQ(model.cutter.overallLength, 4);
  EXPECT_EQ(model.x, 4);
  EXPECT_EQ(model.y, 0);
  EXPECT_EQ(model.z, 0);
}

TEST_F(ToolModelTest, InMillimetresSizesAreTimes25Point4) {
  AddTool(3, u"Drill", 0.5);
  SetUnits(true);
  const ToolModel model = ToolModelNow();
  EXPECT_DOUBLE_EQ(model.cutter.diameter, 12.7);
  EXPECT_DOUBLE_EQ(model.cutter.fluteLength, 31.75);
  EXPECT_DOUBLE_EQ(model.cutter.overallLength, 101.6);
}

TEST_F(ToolModelTest, OfEqualNumbersTheFirstIsMeant) {
  AddTool(3, u"End Mill", 0.5);
  AddTool(3, u"Ball End Mill", 1);
  EXPECT_EQ(ToolModelNow().cutter.diameter, 0.5);
  EXPECT_EQ(ToolModelNow().cutter.shape, ToolShape::Flat);
}

TEST_F(ToolModelTest, MovesAlongTheNextSegmentButNotTowardsAJump) {
  AddTool(3, u"End Mill", 0.5);
  playback.playHead = 1;
  playback.segmentFraction = 0.25;
  EXPECT_EQ(ToolModelNow().x, 1);
  path.points[1].jump = true;
  EXPECT_EQ(ToolModelNow().x, 0);
}

TEST_F(ToolModelTest, IsTheToolOfThePointThatWasReached) {
  AddTool(3, u"End Mill", 0.5);
  path.points[2].tool = 8;
  playback.segmentFraction = 0.5;
  EXPECT_EQ(ToolModelNow().cutter.tool, 3);
  playback.playHead = 3;
  EXPECT_FALSE(ToolModelNow().shown);
}

TEST_F(ToolModelTest, IsNotThereWithoutHeadOrTool) {
  EXPECT_FALSE(ToolModelNow().shown);
  EXPECT_EQ(Solids(kFlutes), 0u);
  AddTool(3, u"End Mill", 0.5);
  EXPECT_TRUE(ToolModelNow().shown);
  playback.playHead = 0;
  EXPECT_FALSE(ToolModelNow().shown);
  EXPECT_EQ(Solids(kFlutes), 0u);
}

TEST_F(ToolModelTest, IsDrawnFromItsTipUpWithSmoothedEdges) {
  AddTool(3, u"End Mill", 0.5);
  // From the front, 2 and 4 high as they are: 0.86 x 600 / 4 = 129 pixels a unit, the tip at
  // X 593, Y 329.
  SetViewFront();
  const std::vector<headless::DrawCall> calls = Paint();
  const auto flutes = std::find_if(calls.begin(), calls.end(), [](const headless::DrawCall& call) {
    return call.name == "PaintPolygon" && call.colours[0] == kFlutes;
  });
  ASSERT_NE(flutes, calls.end());
  double left = 1e9, right = -1e9, top = 1e9, bottom = -1e9;
  for (std::size_t i = 0; i + 1 < flutes->numbers.size() - 3; i += 2) {
    left = std::min(left, flutes->numbers[i]);
    right = std::max(right, flutes->numbers[i]);
    top = std::min(top, flutes->numbers[i + 1]);
    bottom = std::max(bottom, flutes->numbers[i + 1]);
  }
  EXPECT_NEAR(left, 593 - 0.25 * 129, 0.01);
  EXPECT_NEAR(right, 593 + 0.25 * 129, 0.01);
  EXPECT_NEAR(bottom, 329, 0.01);
  EXPECT_NEAR(top, 329 - 1.25 * 129, 0.01);
  EXPECT_EQ(flutes->numbers.back(), 1);  // smooth
  EXPECT_EQ(Solids(kShank), 1u);
}

// The tool stands where they are, and would cover them.
TEST_F(ToolModelTest, LiesBelowTheWordsOfTheStock) {
  AddTool(3, u"End Mill", 0.5);
  stockEnvelope = {true, 0, 4, 0, 2, 0, -0.5, 0.5};
  std::size_t solid = 0;
  std::size_t words = 0;
  const std::vector<headless::DrawCall> calls = Paint();
  for (std::size_t i = 0; i < calls.size(); ++i) {
    if (calls[i].name == "PaintPolygon" && calls[i].colours.at(0) == kShank) solid = i;
    if (calls[i].text.starts_with(u"STOCK ENVELOPE")) words = i;
  }
  EXPECT_GT(solid, 0u);
  EXPECT_GT(words, solid);
}

TEST_F(ToolModelTest, TheMarkOfTheHeadLiesOnTopOfIt) {
  AddTool(3, u"End Mill", 0.5);
  const std::vector<headless::DrawCall> calls = Paint();
  std::size_t tool = 0, mark = 0;
  for (std::size_t i = 0; i < calls.size(); ++i) {
    if (calls[i].name == "PaintPolygon" && calls[i].colours[0] == kShank) tool = i;
    if (calls[i].name == "FillArea" && calls[i].colours[0] == 0xFFCB48) mark = i;
  }
  EXPECT_GT(tool, 0u);
  EXPECT_GT(mark, tool);
}

}  // namespace
}  // namespace morva
