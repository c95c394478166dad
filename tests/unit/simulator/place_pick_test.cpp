#include "simulator/place_pick.h"

#include <cmath>
#include <string>
#include <vector>

#include "simulator/view_switches.h"
#include "unit/simulator/preview_fixture.h"

namespace morva {
namespace {

std::vector<PickedPlace> told;
void Tell(const PickedPlace& place) { told.push_back(place); }
double plane = 0;  // of the picks that begin

class PlacePicks : public PreviewTest {
 protected:
  PlacePicks() {
    told.clear();
    OpenProgram(u"G0 X10 Y2\r\nG1 Z-0.25\r\nG1 X12\r\nG3 X12 Y6 I0 J2\r\nG0 Z1\r\n");
    ShowPreview(Facing());
  }
  static bool Begin(PlaceSource from, double z = 0) {
    plane = z;
    return BeginPlacePick({from, [] { return plane; }, u"Click somewhere.", Tell});
  }
  static void Click(double x, double y, double z, int dx = 0, int dy = 0) {
    const platform::PointF at = At(x, y, z);
    Press(static_cast<int>(std::lround(at.x)) + dx, static_cast<int>(std::lround(at.y)) + dy);
    Release(static_cast<int>(std::lround(at.x)) + dx, static_cast<int>(std::lround(at.y)) + dy);
  }
  static void ExpectPicked(double x, double y, double z) {
    ASSERT_EQ(told.size(), 1u);
    EXPECT_TRUE(told[0].picked);
    constexpr double kFar = 1e-6;  // records of drawings hold single precision
    EXPECT_NEAR(told[0].x, x, kFar);
    EXPECT_NEAR(told[0].y, y, kFar);
    EXPECT_NEAR(told[0].z, z, kFar);
    EXPECT_FALSE(PlacePickWaits());
  }
  static std::u16string Status() { return platform::TextOf(kIdStatusLine); }
};

TEST_F(PlacePicks, NeedAPreview) {
  LeavePreview();
  EXPECT_FALSE(Begin(PlaceSource::Geometry));
  EXPECT_FALSE(PlacePickWaits());
  EXPECT_TRUE(told.empty());
}

TEST_F(PlacePicks, SayWhatTheyWaitFor) {
  EXPECT_TRUE(Begin(PlaceSource::Geometry));
  EXPECT_EQ(Status(), u"Click somewhere.");
  EXPECT_TRUE(Shows(u"PICK  arrows move the cross  Enter takes it  Esc gives up"));
  EXPECT_EQ(platform::FocusedId(), kViewToolpath);
}

TEST_F(PlacePicks, SnapToTheEndOfAMoveNearThePress) {
  Begin(PlaceSource::Geometry);
  const double pan = Builder().view.panX;
  Click(12, 2, -0.25, 5, -4);
  ExpectPicked(12, 2, -0.25);
  // The press took no other way: nothing is dragged, nothing measured.
  DragTo(300, 300);
  EXPECT_EQ(Builder().view.panX, pan);
  EXPECT_EQ(Builder().view.yawDegrees, -45);
}

TEST_F(PlacePicks, SnapToNoPlaceWithinAnArc) {
  Begin(PlaceSource::Geometry);
  ZoomBy(8);
  Builder().view.panX = -1000;
  Click(14, 4, -0.25);  // a quarter of the way round
  EXPECT_TRUE(told.empty());
  EXPECT_TRUE(PlacePickWaits());
  EXPECT_EQ(Status(), u"Click somewhere.");
  Click(12, 6, -0.25);
  ExpectPicked(12, 6, -0.25);
}

TEST_F(PlacePicks, SnapToCornersOfTheStockAndTheMiddleOfItsTop) {
  Begin(PlaceSource::Geometry);
  Click(2, 0.5, 0);
  ExpectPicked(2, 0.5, 0);
  told.clear();
  Begin(PlaceSource::Geometry);
  Click(4, 1, 0, 2, 2);
  ExpectPicked(4, 1, 0);
}

TEST_F(PlacePicks, SayTheTopOfAStockAndOfNothingElse) {
  Begin(PlaceSource::Geometry);
  Click(4, 0, -0.5);  // in front: below a corner, at the bottom
  ExpectPicked(4, 0, -0.5);
  EXPECT_TRUE(told[0].ofStock);
  EXPECT_EQ(told[0].stockTop, 0);
  told.clear();
  Begin(PlaceSource::Geometry);
  Click(12, 2, -0.25);
  ExpectPicked(12, 2, -0.25);
  EXPECT_FALSE(told[0].ofStock);
}

TEST_F(PlacePicks, InPlanTakeTheUpperOfTwoCorners) {
  SetViewTop();
  Begin(PlaceSource::Geometry);
  Click(4, 1, -0.5);
  ExpectPicked(4, 1, 0);
}

TEST_F(PlacePicks, InPlanTakeTheHighestOfManyEnds) {
  OpenProgram(
      u"G0 X10 Y2\r\nG1 Z-0.5\r\nX12\r\nG0 Z1\r\nG0 X10\r\nG1 Z-0.2\r\nX12\r\nG0 Z1\r\n"
      u"G0 X10\r\nG1 Z-0.4\r\nX12\r\n");
  ShowPreview(Facing());
  SetViewTop();
  Begin(PlaceSource::Geometry);
  Click(12, 2, 0);
  ExpectPicked(12, 2, -0.2);
}

// A profile is entered above the corner of its part: the move's end lies higher than the stock.
TEST_F(PlacePicks, InPlanTakeTheStockUnderTheEndOfAMove) {
  OpenProgram(SketchBlock(1, u"\r\nG0 X4 Y2.5 Z2\r\nG1 Z-0.5\r\nG1 X6\r\nG0 Z2\r\n"));
  ShowPreview(Facing());
  SetViewTop();
  Begin(PlaceSource::Geometry);
  Click(4, 2.5, 2);
  ExpectPicked(4, 2.5, 0);
  EXPECT_TRUE(told[0].ofStock);
  EXPECT_EQ(told[0].stockTop, 0);
}

// The own stock lies higher on the corner of the part: its own corner would change nothing.
TEST_F(PlacePicks, InPlanTakeThePartsStockUnderTheOwnOne) {
  OpenProgram(SketchBlock(1, u"\r\nG1 X0.5\r\n"));
  PathPreview raised = Facing();
  raised.stock = {true, 4, 8, 2.5, 3.5, 1, 1.5};
  ShowPreview(raised);
  SetViewTop();
  Begin(PlaceSource::Geometry);
  Click(4, 2.5, 0);
  ExpectPicked(4, 2.5, 0);
  EXPECT_EQ(told[0].stockTop, 0);
}

TEST_F(PlacePicks, InPlanStopAtTheStockByArrowsToo) {
  OpenProgram(SketchBlock(1, u"\r\nG0 X4 Y2.5 Z2\r\nG1 Z-0.5\r\nG1 X6\r\nG0 Z2\r\n"));
  PathPreview left = Facing();
  left.stock = {true, -1, 1, 2, 3, -0.5, 0};
  ShowPreview(left);
  SetViewTop();
  Begin(PlaceSource::Geometry);
  PickedPlace cross;
  for (int i = 0; i < 4 && cross.x < 3.9; ++i) {
    PlacePickKey({platform::kKeyRight});
    PickCross(cross);
  }
  EXPECT_NEAR(cross.x, 4, 1e-6);
  EXPECT_NEAR(cross.y, 2.5, 1e-6);
  EXPECT_TRUE(cross.ofStock);
}

TEST_F(PlacePicks, SnapToTheStockOfTheProgram) {
  OpenProgram(SketchBlock(1, u"\r\nG1 X0.5\r\n"));
  ShowPreview(Facing());
  Begin(PlaceSource::Geometry);
  Click(5, 3, 0);  // no corner of the drawing, but the middle of its stock
  ExpectPicked(5, 3, 0);
}

TEST_F(PlacePicks, SnapToNothingThatIsNotDrawn) {
  switches.showDrawingPaths = false;
  Begin(PlaceSource::Geometry);
  ZoomBy(0.3);
  Click(12, 6, -0.25);
  EXPECT_TRUE(told.empty());
  Click(12, 2, -0.25);
  EXPECT_TRUE(told.empty());
}

// Inches are no places of a preview in millimetres: Enter must not take the cross as it stood.
TEST_F(PlacePicks, LoseTheCrossAtAnotherUnit) {
  Begin(PlaceSource::Geometry);
  PlacePickKey({platform::kKeyRight});
  PickedPlace cross;
  ASSERT_TRUE(PickCross(cross));
  SetUnits(true);
  PathPreview metric = Facing();
  metric.stock = {true, 0, 101.6, 0, 25.4, -12.7, 0};
  ShowPreview(metric);
  EXPECT_FALSE(PickCross(cross));
  EXPECT_TRUE(PlacePickWaits());
  PlacePickKey({platform::kKeyEnter});
  EXPECT_TRUE(told.empty());
  PlacePickKey({platform::kKeyRight});
  PlacePickKey({platform::kKeyEnter});
  ExpectPicked(50.8, 12.7, 0);
  SetUnits(false);
}

TEST_F(PlacePicks, LoseTheCrossWhereTheStockMoves) {
  Begin(PlaceSource::Geometry);
  PlacePickKey({platform::kKeyRight});
  PathPreview moved = Facing();
  moved.stock.maxX = 6;
  ShowPreview(moved);
  PickedPlace cross;
  EXPECT_FALSE(PickCross(cross));
  EXPECT_TRUE(PlacePickWaits());
}

TEST_F(PlacePicks, LoseTheCrossWhereTheProgramChanges) {
  Begin(PlaceSource::Geometry);
  PlacePickKey({platform::kKeyRight});
  FollowPreviewedProgram();
  PickedPlace cross;
  EXPECT_TRUE(PickCross(cross));  // nothing did
  platform::SetEditorText(kIdEditor, u"G0 X20 Y2\r\nG1 Z-0.25\r\nG1 X22\r\n");
  FollowPreviewedProgram();
  EXPECT_FALSE(PickCross(cross));
}

TEST_F(PlacePicks, KeepTheCrossWhereOnlyThePathChanges) {
  Begin(PlaceSource::Geometry);
  PlacePickKey({platform::kKeyRight});
  PickedPlace before;
  ASSERT_TRUE(PickCross(before));
  ShowPreview(Facing(u"G20 G90\r\nG0 Z0.5\r\nG1 Z-0.1\r\nG1 X5\r\n"));
  PickedPlace after;
  ASSERT_TRUE(PickCross(after));
  EXPECT_EQ(before, after);
}

// The plane is that of the press, by the mouse and by the keys.
TEST_F(PlacePicks, FollowThePlane) {
  Begin(PlaceSource::Plane, 0);
  plane = 3;
  const platform::PointF at = At(3.3, 0.4, 3);
  Press(static_cast<int>(std::lround(at.x)), static_cast<int>(std::lround(at.y)));
  ASSERT_EQ(told.size(), 1u);
  EXPECT_EQ(told[0].z, 3);
  EXPECT_NEAR(told[0].x, 3.3, 0.05);
  EXPECT_NEAR(told[0].y, 0.4, 0.05);
  told.clear();
  Begin(PlaceSource::Plane, 0);
  PlacePickKey({platform::kKeyRight});
  PlacePickKey({platform::kKeyRight});
  plane = 3;
  PlacePickKey({platform::kKeyEnter});
  ASSERT_EQ(told.size(), 1u);
  EXPECT_EQ(told[0].z, 3);
}

TEST_F(PlacePicks, TakeAnyPlaceOnThePlane) {
  Begin(PlaceSource::Plane, 0.75);
  const platform::PointF at = At(3.3, 0.4, 0.75);
  const int x = static_cast<int>(std::lround(at.x));
  const int y = static_cast<int>(std::lround(at.y));
  Press(x, y);
  ASSERT_EQ(told.size(), 1u);
  EXPECT_EQ(told[0].z, 0.75);
  // A pixel is more than this; back on the screen it is the pixel that was pressed.
  EXPECT_NEAR(told[0].x, 3.3, 0.05);
  EXPECT_NEAR(told[0].y, 0.4, 0.05);
  const platform::PointF back = At(told[0].x, told[0].y, 0.75);
  EXPECT_NEAR(back.x, x, 1e-6);
  EXPECT_NEAR(back.y, y, 1e-6);
}

TEST_F(PlacePicks, TakeNoPlaceOnAPlaneSeenFromItsEdge) {
  SetViewFront();
  Begin(PlaceSource::Plane);
  Press(200, 200);
  EXPECT_TRUE(told.empty());
  EXPECT_TRUE(PlacePickWaits());
}

TEST_F(PlacePicks, EscGivesUp) {
  Begin(PlaceSource::Geometry);
  EXPECT_TRUE(Key(platform::kKeyEscape));
  ASSERT_EQ(told.size(), 1u);
  EXPECT_FALSE(told[0].picked);
  EXPECT_FALSE(PlacePickWaits());
  EXPECT_FALSE(DropPlacePick());
  EXPECT_EQ(told.size(), 1u);
}

TEST_F(PlacePicks, LeavingThePreviewGivesUp) {
  Begin(PlaceSource::Geometry);
  LeavePreview();
  ASSERT_EQ(told.size(), 1u);
  EXPECT_FALSE(told[0].picked);
}

TEST_F(PlacePicks, AnotherOneGivesUpTheFirst) {
  Begin(PlaceSource::Geometry);
  Begin(PlaceSource::Plane);
  ASSERT_EQ(told.size(), 1u);
  EXPECT_FALSE(told[0].picked);
  EXPECT_TRUE(PlacePickWaits());
}

TEST_F(PlacePicks, MayBeginAgainFromItsAnswer) {
  static int rounds;
  rounds = 0;
  const auto again = [](const PickedPlace& place) {
    told.push_back(place);
    if (++rounds < 2) BeginPlacePick({PlaceSource::Geometry, 0, u"Again.", Tell});
  };
  BeginPlacePick({PlaceSource::Geometry, 0, u"First.", again});
  Click(4, 1, 0);
  EXPECT_TRUE(PlacePickWaits());
  EXPECT_EQ(Status(), u"Again.");
  Click(2, 0.5, 0);
  EXPECT_EQ(told.size(), 2u);
  EXPECT_FALSE(PlacePickWaits());
}

TEST_F(PlacePicks, FollowThePointerWithACross) {
  Begin(PlaceSource::Geometry);
  const platform::PointF at = At(4, 1, 0);
  Hover(static_cast<int>(at.x) + 3, static_cast<int>(at.y) + 3);
  PickedPlace cross;
  ASSERT_TRUE(PickCross(cross));
  EXPECT_EQ(cross.x, 4);
  EXPECT_TRUE(Shows(u"X 4.0000  Y 1.0000  Z 0.0000 in"));
  EXPECT_EQ(Status(), u"Click somewhere.");
  Hover(1, 700);
  EXPECT_FALSE(PickCross(cross));
}

TEST_F(PlacePicks, KeysGoFromSnapToSnapAndEnterTakes) {
  SetViewTop();
  Begin(PlaceSource::Geometry);
  EXPECT_TRUE(Key(platform::kKeyEnter));  // no cross yet
  EXPECT_TRUE(told.empty());
  Key(platform::kKeyRight);  // begins in the middle of the stock
  PickedPlace cross;
  ASSERT_TRUE(PickCross(cross));
  EXPECT_EQ(cross.x, 2);
  Key(platform::kKeyRight);
  PickCross(cross);
  EXPECT_EQ(cross.x, 4);
  Key(platform::kKeyLeft);
  PickCross(cross);
  EXPECT_EQ(cross.x, 2);
  Key(platform::kKeyLeft);
  PickCross(cross);
  EXPECT_EQ(cross.x, 0);
  Key(platform::kKeyUp);
  PickCross(cross);
  EXPECT_EQ(cross.y, 1);
  EXPECT_TRUE(Key(platform::kKeyEnter));
  ExpectPicked(0, 1, 0);
}

TEST_F(PlacePicks, KeysMoveOverThePlaneByTheGrid) {
  Begin(PlaceSource::Plane, 0.25);
  Key(platform::kKeyUp);
  PickedPlace cross;
  ASSERT_TRUE(PickCross(cross));
  EXPECT_EQ(cross.x, 0);
  EXPECT_EQ(cross.y, 0);
  const double step = GridSpacing();
  Key(platform::kKeyRight);
  Key(platform::kKeyUp);
  Key(platform::kKeyUp);
  Key(platform::kKeyDown);
  Key(platform::kKeyEnter);
  ExpectPicked(step, step, 0.25);
}

TEST_F(PlacePicks, LeaveTurningAndZoomingToTheUser) {
  Begin(PlaceSource::Geometry);
  Key(platform::kKeyRight, false, true);
  EXPECT_NE(Builder().view.yawDegrees, -45);
  const double zoom = Builder().view.zoom;
  Wheel(1);
  EXPECT_GT(Builder().view.zoom, zoom);
  EXPECT_TRUE(PlacePickWaits());
  EXPECT_TRUE(told.empty());
}

TEST_F(PlacePicks, ComeBeforeMeasuring) {
  switches.measureMode = true;
  Begin(PlaceSource::Geometry);
  Click(4, 1, 0);
  EXPECT_EQ(told.size(), 1u);
  EXPECT_EQ(Builder().picks.a, -1);
  switches.measureMode = false;
}

}  // namespace
}  // namespace morva
