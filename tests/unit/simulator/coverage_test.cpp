// The ground that a cutter sweeps, against distances worked out by hand.
#include "simulator/coverage.h"

#include <cmath>
#include <string>

#include "simulator/preview_paint.h"
#include "simulator/view_switches.h"
#include "unit/simulator/preview_fixture.h"

namespace morva {
namespace {

class CoverageTest : public PreviewTest {
 protected:
  static Swept At(double x, double y) {
    const Coverage* const ground = CoverageNow();
    if (!ground) return Swept::Never;
    const int column = static_cast<int>(std::floor((x - ground->minX) / ground->cell));
    const int row = static_cast<int>(std::floor((y - ground->minY) / ground->cell));
    if (column < 0 || row < 0 || column >= ground->columns || row >= ground->rows) {
      return Swept::Never;
    }
    return ground->cells[row][column];
  }
  static void Show(std::u16string_view text, double diameter = 1) {
    PathPreview preview = Facing(text);
    preview.diameter = diameter;
    ShowPreview(preview);
  }
};

TEST_F(CoverageTest, NeedsACutterAndAFeed) {
  EXPECT_EQ(CoverageNow(), nullptr);
  Show(u"G0 X4\r\n");
  EXPECT_EQ(CoverageNow(), nullptr);
  Show(u"G1 X4\r\n", 0);
  EXPECT_EQ(CoverageNow(), nullptr);
  Show(u"G1 X4\r\n");
  EXPECT_NE(CoverageNow(), nullptr);
  LeavePreview();
  EXPECT_EQ(CoverageNow(), nullptr);
}

TEST_F(CoverageTest, ReachesHalfACutterToEachSideAndEnd) {
  Show(u"G0 X1 Y1\r\nG1 X5\r\n");
  EXPECT_EQ(At(3, 1), Swept::Once);
  EXPECT_EQ(At(3, 1.45), Swept::Once);
  EXPECT_EQ(At(3, 0.55), Swept::Once);
  EXPECT_EQ(At(3, 1.55), Swept::Never);
  EXPECT_EQ(At(5.45, 1), Swept::Once);
  EXPECT_EQ(At(5.4, 1.4), Swept::Never);  // beyond the round end: 0.57 from it
  EXPECT_EQ(At(0.55, 1), Swept::Once);
}

// Rows 0.6 apart of a cutter of 1: from 0.1 to 0.5 the second row sweeps again.
TEST_F(CoverageTest, TellsWhereTheNextRowSweepsAgain) {
  Show(u"G1 X8\r\nY0.6\r\nX0\r\n");
  EXPECT_EQ(At(4, -0.2), Swept::Once);
  EXPECT_EQ(At(4, 0.0), Swept::Once);
  EXPECT_EQ(At(4, 0.3), Swept::Again);
  EXPECT_EQ(At(4, 0.8), Swept::Once);
  EXPECT_EQ(At(4, 1.2), Swept::Never);
}

TEST_F(CoverageTest, GoingOnIsNotComingBack) {
  // Three moves in one line, and an arc of many chords.
  Show(u"G1 X1\r\nX2\r\nX3\r\nX8\r\n");
  for (double x = 0.1; x < 8; x += 0.1) EXPECT_EQ(At(x, 0), Swept::Once) << x;
  Show(u"G0 X4 Y0\r\nG3 X-4 Y0 I-4 J0\r\n");
  for (int degrees = 5; degrees < 176; degrees += 5) {
    const double turn = degrees * 3.14159265358979 / 180;
    EXPECT_EQ(At(4 * std::cos(turn), 4 * std::sin(turn)), Swept::Once) << degrees;
    EXPECT_EQ(At(3 * std::cos(turn), 3 * std::sin(turn)), Swept::Never) << degrees;
  }
}

TEST_F(CoverageTest, OfLevelsCountsTheDeepestAlone) {
  PathPreview preview = Facing();
  ShowPreview(preview);
  // In the second level the rows overlap as in the first; the first one does not count.
  EXPECT_EQ(At(2, -0.2), Swept::Once);
  EXPECT_EQ(At(2, 0.3), Swept::Again);
  EXPECT_EQ(CoverageNow()->z, -0.2);
  preview.levels = false;
  ShowPreview(preview);
  EXPECT_EQ(At(2, -0.2), Swept::Again);
}

TEST_F(CoverageTest, FollowsTheHeadBothWays) {
  Show(u"G1 X8\r\nY0.6\r\nX0\r\n");
  EXPECT_EQ(At(4, 0.3), Swept::Again);
  GoToStart();
  EXPECT_EQ(CoverageNow(), nullptr);
  Builder().play.playHead = 2;
  EXPECT_EQ(At(4, 0.3), Swept::Once);
  EXPECT_EQ(At(4, 0.8), Swept::Never);
  Builder().play.playHead = 4;
  EXPECT_EQ(At(4, 0.3), Swept::Again);
  EXPECT_EQ(At(4, 0.8), Swept::Once);
  Builder().play.playHead = 2;
  EXPECT_EQ(At(4, 0.8), Swept::Never);
}

TEST_F(CoverageTest, FollowsTheMoveInProgressAndForgetsIt) {
  Show(u"G1 X8\r\nY0.6\r\nX0\r\n");
  GoToStart();
  Builder().play.playHead = 3;
  Builder().play.segmentFraction = 0.5;  // at X 4 of the way back
  EXPECT_EQ(At(6, 0.9), Swept::Once);
  EXPECT_EQ(At(6, 0.3), Swept::Again);
  EXPECT_EQ(At(2, 0.9), Swept::Never);
  Builder().play.segmentFraction = 0;
  EXPECT_EQ(At(6, 0.9), Swept::Never);
  EXPECT_EQ(At(6, 0.3), Swept::Once);
}

TEST_F(CoverageTest, StaysInItsGridForAnyNumbers) {
  for (const char16_t* text :
       {u"G1 X99999 Y0.001\r\n", u"G1 X-99999 Y-99999\r\nX99999\r\n", u"G1 Z-1\r\n",
        u"G1 X0.00001\r\n", u"G1 X99999999999999999999\r\nX1\r\n"}) {
    Show(text, 0.001);
    const Coverage* const ground = CoverageNow();
    if (!ground) continue;
    EXPECT_GE(ground->columns, 1);
    EXPECT_LE(ground->columns, kCoverageCells);
    EXPECT_GE(ground->rows, 1);
    EXPECT_LE(ground->rows, kCoverageCells);
    Paint();
  }
}

std::size_t Patches(const std::vector<headless::DrawCall>& frame, platform::Colour colour) {
  std::size_t found = 0;
  for (const headless::DrawCall& call : frame) {
    found += call.name == "FillPolygon" && call.colours[0] == colour ? 1 : 0;
  }
  return found;
}

TEST_F(CoverageTest, IsPaintedWhereItsKeyOrItsLayerIsOn) {
  constexpr platform::Colour kSwept = 0x123A4C, kAgain = 0x4E4128;
  PathPreview preview = Facing();
  ShowPreview(preview);
  EXPECT_EQ(Patches(Paint(), kSwept), 0u);
  preview.coverage = true;
  ShowPreview(preview);
  EXPECT_GT(Patches(Paint(), kSwept), 0u);
  EXPECT_EQ(Patches(Paint(), kAgain), 0u);
  EXPECT_TRUE(Shows(u"Cutter width 1.0000 in \u00B7 blue: swept"));
  switches.showOverlap = true;
  EXPECT_GT(Patches(Paint(), kSwept), 0u);
  EXPECT_GT(Patches(Paint(), kAgain), 0u);
  preview.coverage = false;
  ShowPreview(preview);
  EXPECT_EQ(Patches(Paint(), kSwept), 0u);
  EXPECT_GT(Patches(Paint(), kAgain), 0u);
  EXPECT_TRUE(Shows(u"Cutter width 1.0000 in \u00B7 brown: swept again"));
  LeavePreview();
  EXPECT_EQ(Patches(Paint(), kAgain), 0u);
}

// The patches of a colour cover each of its cells once: their area is that of the cells.
TEST_F(CoverageTest, PatchesCoverTheirCells) {
  PathPreview preview = Facing();
  preview.coverage = true;
  ShowPreview(preview);
  SetViewTop();
  const Coverage* const ground = CoverageNow();
  std::size_t cells = 0;
  for (int row = 0; row < ground->rows; ++row) {
    for (int column = 0; column < ground->columns; ++column) {
      cells += ground->cells[row][column] != Swept::Never ? 1 : 0;
    }
  }
  const platform::PointF a = ViewTest::At(0, 0, 0);
  const platform::PointF b = ViewTest::At(ground->cell, 0, 0);
  const double side = b.x - a.x;
  double area = 0;
  for (const headless::DrawCall& call : Paint()) {
    if (call.name != "FillPolygon" || call.colours[0] != 0x123A4C) continue;
    double twice = 0;
    const std::size_t from = call.numbers.size() - 8;
    for (int i = 0; i < 4; ++i) {
      const double* const p = &call.numbers[from + 2 * i];
      const double* const q = &call.numbers[from + 2 * ((i + 1) % 4)];
      twice += p[0] * q[1] - q[0] * p[1];
    }
    area += std::abs(twice) / 2;
  }
  EXPECT_NEAR(area / (side * side), static_cast<double>(cells), 0.01);
}

}  // namespace
}  // namespace morva
