// Expected lines are worked out by hand from the corners and centres.
#include "library/motion_text.h"

#include <gtest/gtest.h>

#include <string>

#include "text/codetext.h"

namespace morva {
namespace {

constexpr CutData kCut{-0.1, 10, 0.5};
constexpr CutData kSlowCut{-0.1, 8, 0.5};

// What one emitter writes into an empty text.
template <typename Emit>
std::u16string Written(Emit emit) {
  CodeWriter out;
  out.most = 4000;
  emit(out);
  EXPECT_FALSE(out.full);
  return out.text;
}

ClosedShape Circle(double x, double y, double diameter) {
  return {ItemShape::Circle, x, y, diameter, 0, 0};
}

std::u16string Motion(const char16_t* word, double x, double y, double feed, bool withFeed) {
  return Written([&](CodeWriter& out) { EmitMotion(out, word, x, y, feed, withFeed); });
}

std::u16string Shape(int kind, double x, double y, double w, double h, double angle) {
  return Written([&](CodeWriter& out) {
    EmitClosedShape(out, {static_cast<ItemShape>(kind), x, y, w, h, angle}, kCut);
  });
}

std::u16string Slot(double length, double width, double angle) {
  return Written([&](CodeWriter& out) {
    EmitSlot(out, {ItemShape::Slot, 0, 0, length, width, angle}, kCut);
  });
}

TEST(MotionLine, HasThreeDecimalsForPlacesAndOneForTheFeed) {
  EXPECT_EQ(Motion(u"G01", 1, -2.5, 10, true), u"G01 X1.000 Y-2.500 F10.0\r\n");
  EXPECT_EQ(Motion(u"G00", 1, -2.5, 10, false), u"G00 X1.000 Y-2.500\r\n");
}

TEST(MotionLine, RoundsHalfUpOnTheMagnitude) {
  EXPECT_EQ(Motion(u"G01", 0.0625, -0.0625, 0.25, true), u"G01 X0.063 Y-0.063 F0.3\r\n");
}

TEST(MotionLine, KeepsTheMinusOfAValueThatRoundsToZero) {
  EXPECT_EQ(Motion(u"G00", -0.0004, -0.0001, 0, false), u"G00 X-0.000 Y-0.000\r\n");
  EXPECT_EQ(Motion(u"G00", -0.0, 0.0004, 0, false), u"G00 X0.000 Y0.000\r\n");
}

TEST(MotionLine, StandsBehindWhatTheTextHoldsAlready) {
  CodeWriter out{u"G90\r\n", 64};
  EmitMotion(out, u"G00", 1, 2, 0, false);
  EXPECT_EQ(out.text, u"G90\r\nG00 X1.000 Y2.000\r\n");
}

TEST(MotionLine, IsCutAtTheCapacityAndNotOneUnitLater) {
  const std::u16string whole = u"G00 X1.000 Y2.000\r\n";
  for (std::size_t most = 0; most <= whole.size() + 2; ++most) {
    CodeWriter out{u"", most};
    EmitMotion(out, u"G00", 1, 2, 0, false);
    EXPECT_EQ(out.text, whole.substr(0, most)) << most;
    EXPECT_EQ(out.full, most < whole.size()) << most;
  }
}

TEST(MotionLine, LeavesATextWithoutRoomAlone) {
  CodeWriter out{u"abcd", 4};
  EmitMotion(out, u"G00", 1, 2, 0, false);
  EXPECT_EQ(out.text, u"abcd");
  out.most = 2;
  EmitMotion(out, u"G00", 1, 2, 0, false);
  EXPECT_EQ(out.text, u"abcd");
}

TEST(MotionLine, IsKeptUpTo219Units) {
  const std::u16string word(300, u'G');
  EXPECT_EQ(Motion(word.c_str(), 1, 2, 0, false), word.substr(0, 219));
}

TEST(MotionLine, HoldsTheLargestCoordinates) {
  EXPECT_EQ(Motion(u"G01", -999999.9994, 999999.9996, 123456.75, true),
            u"G01 X-999999.999 Y1000000.000 F123456.8\r\n");
}

TEST(RotatePoint, TurnsCounterClockwiseAboutTheCentre) {
  double x = 0;
  double y = 0;
  RotatePoint(1, 2, 3, 0, 90, x, y);
  EXPECT_EQ(x, 1.0);  // the cosine of a quarter turn is exactly 0
  EXPECT_NEAR(y, 5, 3e-7);
  RotatePoint(1, 2, 3, 4, 180, x, y);
  EXPECT_NEAR(x, -2, 3e-7);
  EXPECT_NEAR(y, -2, 3e-7);
  RotatePoint(0, 0, 1, 0, -30, x, y);
  EXPECT_NEAR(x, 0.8660254037844386, 1e-7);
  EXPECT_NEAR(y, -0.5, 1e-7);
}

TEST(ClosedShape, RunsASquareCounterClockwiseFromTheLowerLeft) {
  EXPECT_EQ(Shape(1, 5, 0, 2, 9, 0),
            u"G00 X4.000 Y-1.000\r\nG01 Z-0.100 F10.00\r\nG01 X6.000 Y-1.000 F10.0\r\n"
            u"G01 X6.000 Y1.000 F10.0\r\nG01 X4.000 Y1.000 F10.0\r\n"
            u"G01 X4.000 Y-1.000 F10.0\r\nG00 Z0.500\r\n");
}

TEST(ClosedShape, RunsARectangleCounterClockwiseFromTheLowerLeft) {
  EXPECT_EQ(Shape(2, 0, 0, 4, 2, 0),
            u"G00 X-2.000 Y-1.000\r\nG01 Z-0.100 F10.00\r\nG01 X2.000 Y-1.000 F10.0\r\n"
            u"G01 X2.000 Y1.000 F10.0\r\nG01 X-2.000 Y1.000 F10.0\r\n"
            u"G01 X-2.000 Y-1.000 F10.0\r\nG00 Z0.500\r\n");
}

TEST(ClosedShape, TurnsEveryCorner) {
  EXPECT_EQ(Shape(2, 0, 0, 4, 2, 90),
            u"G00 X1.000 Y-2.000\r\nG01 Z-0.100 F10.00\r\nG01 X1.000 Y2.000 F10.0\r\n"
            u"G01 X-1.000 Y2.000 F10.0\r\nG01 X-1.000 Y-2.000 F10.0\r\n"
            u"G01 X1.000 Y-2.000 F10.0\r\nG00 Z0.500\r\n");
}

TEST(ClosedShape, TakesTheWidthForAHeightOfNothingAndSizesByMagnitude) {
  EXPECT_EQ(Shape(2, 0, 0, -2, 0.0000009, 0), Shape(1, 0, 0, 2, 0, 0));
  EXPECT_EQ(Shape(2, 0, 0, -4, -2, 0), Shape(2, 0, 0, 4, 2, 0));
}

TEST(ClosedShape, RunsATriangleClockwiseFromTheTop) {
  EXPECT_EQ(Shape(3, 0, 0, 4, 2, 0),
            u"G00 X0.000 Y1.000\r\nG01 Z-0.100 F10.00\r\nG01 X2.000 Y-1.000 F10.0\r\n"
            u"G01 X-2.000 Y-1.000 F10.0\r\nG01 X0.000 Y1.000 F10.0\r\nG00 Z0.500\r\n");
}

TEST(ClosedShape, RunsADiamondClockwiseFromTheTop) {
  EXPECT_EQ(Shape(4, 0, 0, 4, 2, 0),
            u"G00 X0.000 Y1.000\r\nG01 Z-0.100 F10.00\r\nG01 X2.000 Y0.000 F10.0\r\n"
            u"G01 X0.000 Y-1.000 F10.0\r\nG01 X-2.000 Y0.000 F10.0\r\n"
            u"G01 X0.000 Y1.000 F10.0\r\nG00 Z0.500\r\n");
}

TEST(ClosedShape, HandsCirclesAndSlotsOn) {
  EXPECT_EQ(Shape(5, 0, 0, 2, 1, 0), Slot(2, 1, 0));
  EXPECT_EQ(Shape(0, 0, 0, 2, 1, 0),
            Written([](CodeWriter& out) { EmitCircle(out, Circle(0, 0, 2), kCut); }));
}

TEST(ClosedShape, WritesNothingForAnotherKind) {
  EXPECT_EQ(Shape(6, 0, 0, 2, 1, 0), u"");
  EXPECT_EQ(Shape(-1, 0, 0, 2, 1, 0), u"");
}

TEST(CircleText, IsSixteenClockwiseArcsWithTheFeedOnTheFirst) {
  const std::u16string text =
      Written([](CodeWriter& out) { EmitCircle(out, Circle(0, 0, 2), kSlowCut); });
  EXPECT_EQ(text.find(u"G00 X1.000 Y0.000\r\nG01 Z-0.100 F8.00\r\n"
                      u"G02 X0.924 Y-0.383 I-1.000 J0.000 F8.00\r\n"
                      u"G02 X0.707 Y-0.707 I-0.924 J0.383\r\n"),
            0u);
  int arcs = 0;
  for (std::size_t at = text.find(u"G02 "); at != text.npos; at = text.find(u"G02 ", at + 1)) {
    ++arcs;
  }
  EXPECT_EQ(arcs, 16);
  EXPECT_EQ(text.find(u"F8.0\r"), text.npos);
  const std::u16string end = u"G02 X1.000 Y0.000 I-0.924 J-0.383\r\nG00 Z0.500\r\n";
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

// With r = 100000 the table gives 92387.95 and 38268.34; the true values are 92387.953 and
// 38268.343.
TEST(CircleText, TakesItsPointsFromSevenDecimals) {
  const std::u16string text =
      Written([](CodeWriter& out) { EmitCircle(out, Circle(0, 0, 200000), kSlowCut); });
  EXPECT_NE(text.find(u"G02 X92387.950 Y-38268.340 "), text.npos);
}

// The start 0.0005 is written 0.001; from there the centre at 0.00025 would lie -0.00075 away
// and be written -0.001.
TEST(CircleText, CountsTheCentreFromTheUnroundedStart) {
  const std::u16string text =
      Written([](CodeWriter& out) { EmitCircle(out, Circle(0.00025, 0, 0.0005), kSlowCut); });
  EXPECT_EQ(text.find(u"G00 X0.001 Y0.000\r\n"), 0u);
  EXPECT_NE(text.find(u" I-0.000 J0.000 F8.00\r\n"), text.npos);
}

TEST(CircleText, IsNothingForADiameterOfZeroOrLess) {
  for (const double diameter : {0.0, -1.0}) {
    EXPECT_EQ(Written([&](CodeWriter& out) { EmitCircle(out, Circle(0, 0, diameter), kSlowCut); }),
              u"");
  }
}

TEST(SlotText, RunsCounterClockwiseWithoutFeedOnItsArcs) {
  EXPECT_EQ(Slot(2, 1, 0),
            u"G00 X0.500 Y0.500\r\nG01 Z-0.100 F10.00\r\nG01 X-0.500 Y0.500 F10.0\r\n"
            u"G03 X-0.500 Y-0.500 I0.000 J-0.500\r\nG01 X0.500 Y-0.500 F10.0\r\n"
            u"G03 X0.500 Y0.500 I0.000 J0.500\r\nG00 Z0.500\r\n");
}

TEST(SlotText, TurnsItsPointsAndItsCentres) {
  EXPECT_EQ(Slot(2, 1, 90),
            u"G00 X-0.500 Y0.500\r\nG01 Z-0.100 F10.00\r\nG01 X-0.500 Y-0.500 F10.0\r\n"
            u"G03 X0.500 Y-0.500 I0.500 J0.000\r\nG01 X0.500 Y0.500 F10.0\r\n"
            u"G03 X-0.500 Y0.500 I-0.500 J0.000\r\nG00 Z0.500\r\n");
}

TEST(SlotText, HasStraightsOfNoLengthWhereItIsShorterThanWide) {
  EXPECT_EQ(Slot(0.5, 1, 0),
            u"G00 X0.000 Y0.500\r\nG01 Z-0.100 F10.00\r\nG01 X0.000 Y0.500 F10.0\r\n"
            u"G03 X0.000 Y-0.500 I0.000 J-0.500\r\nG01 X0.000 Y-0.500 F10.0\r\n"
            u"G03 X0.000 Y0.500 I0.000 J0.500\r\nG00 Z0.500\r\n");
}

TEST(SlotText, IsNothingForAWidthOfNothing) {
  EXPECT_EQ(Slot(2, 0.0000009, 0), u"");
  EXPECT_NE(Slot(2, -1, 0), u"");
  EXPECT_EQ(Slot(-2, -1, 0), Slot(2, 1, 0));
}

TEST(LineText, IsRapidPlungeFeedRetract) {
  EXPECT_EQ(Written([](CodeWriter& out) {
              EmitLine(out, 0, 0, 2, 1, {-0.125, 7.25, 0.5});
            }),
            u"G00 X0.000 Y0.000\r\nG01 Z-0.125 F7.25\r\nG01 X2.000 Y1.000 F7.3\r\nG00 Z0.500\r\n");
}

}  // namespace
}  // namespace morva
