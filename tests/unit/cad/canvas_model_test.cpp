// The 3D view of the canvas of 1040 by 600 pixels: the model's middle lies at 520, 330, its
// larger size takes 420 pixels; the cube's middle lies at 956, 76.

#include "cad/canvas/canvas_model.h"

#include <cmath>

#include "cad/canvas/canvas_pointer.h"
#include "cad/geometry/canvas_view.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/model/tool_state.h"
#include "cad/tools/draw_tools.h"
#include "platform/control.h"
#include "platform/timer.h"
#include "unit/cad/canvas_fixture.h"

namespace morva {
namespace {

using headless::DrawCall;
using platform::PointerAction;
using platform::PointerButton;

constexpr platform::Colour kLower = 0x4A6C86;
constexpr platform::Colour kUpper = 0x9CC3E0;
constexpr platform::Colour kBright = 0x00D3F2;
constexpr int kTimer = 0x654;

class CanvasModel : public CanvasTest {
 protected:
  static void Look(double yaw, double pitch, double roll) {
    canvasView.modelYaw = yaw;
    canvasView.modelPitch = pitch;
    canvasView.modelRoll = roll;
  }
  // In the 3D view with this camera, at rest.
  static void Enter(double yaw, double pitch, double roll) {
    canvasView.modelViewTouched = true;
    Look(yaw, pitch, roll);
    EnterModelView();
    ASSERT_TRUE(canvasView.modelView);
  }
  static void Field(std::u16string_view text) {
    if (!platform::Exists(kIdCadThicknessValue)) {
      support::MakeText(kIdCadThicknessValue, platform::ControlKind::EditLine);
    }
    platform::SetText(kIdCadThicknessValue, text);
  }
  static void Run(int id) { EXPECT_TRUE(RouteCommand(id, platform::kNotifyClick)); }
};

TEST_F(CanvasModel, OpensItsPanelWithTheProposedThickness) {
  Field(u"");
  Run(kIdCadThickness);
  EXPECT_TRUE(canvasView.modelView);
  EXPECT_EQ(tools.panelMode, kPanelThickness);
  EXPECT_EQ(platform::TextOf(kIdCadThicknessValue), u"0.500");
  EXPECT_EQ(sketch.thickness, 0.5);
  LeaveModelView();
  sketch.thickness = 0;
  sketch.metric = true;
  Run(kIdCadThickness);
  EXPECT_EQ(platform::TextOf(kIdCadThicknessValue), u"12.700");
  EXPECT_NEAR(sketch.thickness, 12.7, 1e-12);
}

TEST_F(CanvasModel, ShowsAThicknessThatStandsAlready) {
  Field(u"");
  sketch.thickness = 1.25;
  Run(kIdCadThickness);
  EXPECT_EQ(platform::TextOf(kIdCadThicknessValue), u"1.250");
  EXPECT_EQ(sketch.thickness, 1.25);
}

TEST_F(CanvasModel, RefusesAThicknessNotAboveZero) {
  sketch.thickness = 0.75;
  for (const char16_t* bad : {u"0", u"-1", u"", u"abc", u"1000000", u"0.000"}) {
    Field(bad);
    Run(kIdCadApplyThickness);
    EXPECT_FALSE(canvasView.modelView) << support::Narrow(bad);
    EXPECT_EQ(sketch.thickness, 0.75);
    EXPECT_EQ(SketchStatus(), u"Wireframe thickness must be above 0 and below 1000000.");
    SetSketchStatus(u"");
  }
}

TEST_F(CanvasModel, TakesANewThicknessWhileItIsUp) {
  Field(u"2");
  Run(kIdCadApplyThickness);
  EXPECT_EQ(sketch.thickness, 2);
  Field(u"0");
  Run(kIdCadApplyThickness);
  EXPECT_TRUE(canvasView.modelView);
  EXPECT_EQ(sketch.thickness, 2);
  Field(u"3.5");
  Run(kIdCadApplyThickness);
  EXPECT_EQ(sketch.thickness, 3.5);
}

TEST_F(CanvasModel, TakesNoUndoStepForTheThickness) {
  Field(u"2");
  Run(kIdCadApplyThickness);
  EXPECT_EQ(sketch.undoDepth, 0);
}

TEST_F(CanvasModel, ReturnsTo2DAsItWas) {
  canvasView.zoom = 7;
  canvasView.panX = 11;
  canvasView.panY = -5;
  Run(kIdCadThickness);
  EXPECT_EQ(canvasView.zoom, 1);
  Run(kIdCadReturnTo2D);
  EXPECT_FALSE(canvasView.modelView);
  EXPECT_EQ(canvasView.zoom, 7);
  EXPECT_EQ(canvasView.panX, 11);
  EXPECT_EQ(canvasView.panY, -5);
  EXPECT_EQ(tools.panelMode, kPanelNone);
}

TEST_F(CanvasModel, ReturnsAtOnceByEscape) {
  Run(kIdCadThickness);
  EXPECT_TRUE(Key(platform::kKeyEscape));
  EXPECT_FALSE(canvasView.modelView);
  EXPECT_FALSE(platform::TimerRuns(kViewCadCanvas, kTimer));
}

TEST_F(CanvasModel, TakesNoOtherKey) {
  Put(kTypeLine, 0, 0, 1);
  sketch.selected = 0;
  Enter(-45, 28, 0);
  platform::KeyEvent key;
  key.key = platform::kKeyDelete;
  CanvasKey(key);
  EXPECT_EQ(sketch.objectCount, 1);
  for (const int plain : {static_cast<int>(platform::kKeyTab), static_cast<int>('+'),
                          static_cast<int>(platform::kKeyHome)}) {
    key.key = plain;
    EXPECT_FALSE(CanvasKey(key));
  }
  EXPECT_EQ(canvasView.zoom, 1);
  EXPECT_TRUE(canvasView.modelView);
}

TEST_F(CanvasModel, AnswersThePointerByTheCubeAlone) {
  Put(kTypeRectangle, 0, 0, 4, 4);
  Enter(-45, 28, 0);
  Wheel(300, 300, 5);
  EXPECT_EQ(canvasView.zoom, 1);
  Press(300, 300);
  DragTo(340, 310);
  Release(340, 310);
  Press(300, 300, PointerButton::Middle);
  DragTo(340, 310, PointerButton::Middle);
  Release(340, 310, PointerButton::Middle);
  Tell(At(PointerAction::DoubleClick, 300, 300, PointerButton::Left));
  EXPECT_EQ(sketch.selected, -1);
  EXPECT_EQ(canvasView.panX, 0);
  EXPECT_EQ(canvasView.modelYaw, -45);
  EXPECT_EQ(canvasView.modelPitch, 28);
  EXPECT_TRUE(canvasView.modelView);
}

TEST_F(CanvasModel, LooksAtTheModelAslantTheFirstTimeAndAsItWasLater) {
  EnterModelView();
  EXPECT_EQ(canvasView.modelPitch, 90);
  EXPECT_TRUE(platform::TimerRuns(kViewCadCanvas, kTimer));
  headless::Advance(16 * 20);
  EXPECT_EQ(canvasView.modelYaw, -45);
  EXPECT_EQ(canvasView.modelPitch, 28);
  EXPECT_TRUE(canvasView.modelView);
  Look(10, 20, 30);
  LeaveModelView();
  EnterModelView();
  headless::Advance(1000);
  EXPECT_EQ(canvasView.modelYaw, 10);
  EXPECT_EQ(canvasView.modelPitch, 20);
  EXPECT_EQ(canvasView.modelRoll, 30);
}

TEST_F(CanvasModel, ReturnsTo2DWhenItEndsAtThePlan) {
  Enter(0, 0, 0);
  Press(1040 - 84, 36);  // elevation up
  Release(1040 - 84, 36);
  headless::Advance(16 * 19);
  EXPECT_TRUE(canvasView.modelView);
  headless::Advance(16);
  EXPECT_FALSE(canvasView.modelView);
  // Next time it looks aslant again.
  EXPECT_FALSE(canvasView.modelViewTouched);
}

TEST_F(CanvasModel, TakesThePlanWithinAThousandthOfADegree) {
  for (const double off : {0.0009, 0.0011}) {
    Enter(off, 0, 0);
    Press(1040 - 84, 36);
    Release(1040 - 84, 36);
    headless::Advance(1000);
    EXPECT_EQ(canvasView.modelView, off > 0.001);
    LeaveModelView();
  }
}

TEST_F(CanvasModel, StaysAtAPlanThatIsTurned) {
  Enter(-90, 0, 0);
  Press(1040 - 84, 36);
  Release(1040 - 84, 36);
  headless::Advance(1000);
  EXPECT_EQ(canvasView.modelPitch, 90);
  EXPECT_TRUE(canvasView.modelView);
}

TEST_F(CanvasModel, LeavesFor2DWithADrawTool) {
  Enter(-45, 28, 0);
  StartMethod(kIdMethodLine);
  Hover(300, 300);
  EXPECT_FALSE(canvasView.modelView);
  EXPECT_EQ(tools.constructionMethod, kIdMethodLine);
  Enter(-45, 28, 0);
  StartDragTool(2);
  Hover(300, 300);
  EXPECT_FALSE(canvasView.modelView);
  EXPECT_EQ(tools.dragTool, 2);
}

TEST_F(CanvasModel, TurnsByTheRingAndRollsAtTheOuterOne) {
  Enter(0, 28, 0);
  Press(956 + 35, 76 + 35);
  DragTo(956 + 35, 76 - 35);
  Release(956 + 35, 76 - 35);
  EXPECT_NEAR(canvasView.modelYaw, 90, 1e-6);
  EXPECT_EQ(canvasView.modelRoll, 0);
  Press(956 + 47, 76 + 47);
  DragTo(956 - 47, 76 + 47);
  Release(956 - 47, 76 + 47);
  EXPECT_NEAR(canvasView.modelRoll, 90, 1e-6);
  EXPECT_EQ(canvasView.modelPitch, 28);
}

TEST_F(CanvasModel, GivesUpARingWhenTheCaptureIsLost) {
  Enter(0, 28, 0);
  Press(956 + 35, 76 + 35);
  Tell(At(PointerAction::Lost, 0, 0));
  DragTo(956 + 35, 76 - 35);
  EXPECT_EQ(canvasView.modelYaw, 0);
}

TEST_F(CanvasModel, DrawsALineAtBothHeightsWithItsVerticals) {
  Put(kTypeLine, 0, 0, 2);
  sketch.thickness = 0.5;
  Enter(0, 0, 0);  // from the front: 210 pixels a unit, the middle at 1, 0.25
  const std::vector<Line> lower = Lines(kLower);
  ASSERT_EQ(lower.size(), 3u);
  ExpectLine(lower[0], 310, 382.5, 730, 382.5);
  ExpectLine(lower[1], 310, 382.5, 310, 277.5);
  ExpectLine(lower[2], 730, 382.5, 730, 277.5);
  const std::vector<Line> upper = Lines(kUpper);
  ASSERT_EQ(upper.size(), 1u);
  ExpectLine(upper[0], 310, 277.5, 730, 277.5);
}

TEST_F(CanvasModel, MultipliesItsScaleByTheZoom) {
  Put(kTypeLine, 0, 0, 2);
  Enter(0, 0, 0);
  canvasView.zoom = 0.5;
  ExpectLine(Lines(kUpper)[0], 415, 303.75, 625, 303.75);
}

TEST_F(CanvasModel, StepsThroughTheOutlinesOfCurves) {
  Put(kTypeRectangle, 0, 0, 2, 2);
  Enter(-45, 28, 0);
  EXPECT_EQ(Lines(kUpper).size(), 4u);
  EXPECT_EQ(Lines(kLower).size(), 4u + 4);
  sketch.objects[0].type = kTypeCircle;  // 96 sides, a vertical at every eighth point
  EXPECT_EQ(Lines(kUpper).size(), 96u);
  EXPECT_EQ(Lines(kLower).size(), 96u + 12);
  sketch.objects[0].type = kTypeSlot;  // 66 sides
  EXPECT_EQ(Lines(kUpper).size(), 66u);
  EXPECT_EQ(Lines(kLower).size(), 66u + 9);
}

TEST_F(CanvasModel, DrawsVisibleCuttingGeometryOnly) {
  Put(kTypeWorkPoint, 50, 0, 0);
  Put(kTypeWorkAxis, 0, 0, 100);
  Put(kTypeLine, 0, 0, 2);
  Put(kTypeLine, 0, 30, 2);
  sketch.hidden[3] = 1;
  Enter(0, 0, 0);
  ASSERT_EQ(Lines(kUpper).size(), 1u);
  // Neither takes part in the size of the model.
  EXPECT_NEAR(Lines(kUpper)[0].x0, 310, 1e-3);
}

TEST_F(CanvasModel, DrawsWhatIsSelectedBright) {
  Put(kTypeLine, 0, 0, 2);
  sketch.selected = 0;
  Enter(0, 0, 0);
  EXPECT_EQ(Lines(kBright).size(), 4u);
  EXPECT_TRUE(Lines(kUpper).empty());
}

// A second method: the matrices about Z, X and the view axis, one after the other.
TEST_F(CanvasModel, ProjectsAsTheMatricesDo) {
  Put(kTypeLine, 1, -2, 4, 0, 30);
  const double r = M_PI / 180;
  const double endX = 1 + 4 * std::cos(30 * r);
  sketch.thickness = 0.8;
  for (const double yaw : {-45.0, 10.0, 130.0}) {
    for (const double pitch : {-60.0, 0.0, 28.0, 89.0}) {
      const double roll = yaw / 3;
      Enter(yaw, pitch, roll);
      const double scale = 420 / (endX - 1);  // X is the larger side
      const auto place = [&](double x, double y, double z) {
        const double dx = x - (1 + endX) / 2;
        const double dy = y - (-1);  // from -2 to 0
        const double dz = z - 0.4;
        const double x1 = std::cos(yaw * r) * dx - std::sin(yaw * r) * dy;
        const double y1 = std::sin(yaw * r) * dx + std::cos(yaw * r) * dy;
        const double up = std::cos((90 - pitch) * r) * y1 + std::sin((90 - pitch) * r) * dz;
        return platform::PointF{520 + scale * (std::cos(roll * r) * x1 + std::sin(roll * r) * up),
                                330 + scale * (std::sin(roll * r) * x1 - std::cos(roll * r) * up)};
      };
      const platform::PointF a = place(1, -2, 0.8);
      const platform::PointF b = place(endX, 0, 0.8);
      ASSERT_EQ(Lines(kUpper).size(), 1u);
      const Line line = Lines(kUpper)[0];
      EXPECT_NEAR(line.x0, a.x, 0.01);
      EXPECT_NEAR(line.y0, a.y, 0.01);
      EXPECT_NEAR(line.x1, b.x, 0.01);
      EXPECT_NEAR(line.y1, b.y, 0.01);
      LeaveModelView();
    }
  }
}

TEST_F(CanvasModel, BearsItsCaption) {
  EXPECT_FALSE(Shows(u"MODEL VIEW \u2014 use the cube; select a draw tool to sketch on XY"));
  Enter(-45, 28, 0);
  EXPECT_TRUE(Shows(u"MODEL VIEW \u2014 use the cube; select a draw tool to sketch on XY"));
}

TEST_F(CanvasModel, DrawsAnEmptySketchAndOneWithoutSize) {
  Enter(-45, 28, 0);
  EXPECT_FALSE(Paint().empty());
  Put(kTypeLine, 3, 3, 0);
  EXPECT_EQ(Lines(kUpper).size(), 1u);
}

TEST_F(CanvasModel, HoldsAFullSketch) {
  for (int i = 0; i < 96; ++i) Put(kTypeCircle, i, 0, 1);
  Enter(-45, 28, 0);
  EXPECT_EQ(Lines(kUpper).size(), 96u * 96);
  for (unsigned char& mark : tools.multiSelect) mark = 1;
  EXPECT_EQ(Lines(kBright).size(), 96u * (96 + 96 + 12));
}

}  // namespace
}  // namespace morva
