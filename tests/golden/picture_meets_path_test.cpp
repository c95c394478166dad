// The comparison of a picture with a path, on pictures and code written by hand: it finds nothing
// where they agree, and it finds what is wrong.
#include "golden/picture_meets_path.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "simulator/extract.h"

namespace golden {
namespace {

using morva::Ink;
using morva::Picture;

struct PictureAndPath : testing::Test {
  Picture picture;

  std::vector<std::string> With(std::u16string_view code, bool more = false) const {
    static std::vector<morva::MotionPoint> points(morva::kMaxMotionPoints);
    static morva::MotionPath path{points.data()};
    morva::ExtractInto(path, code, {});
    return Differences(picture, path, more);
  }
};
using Told = std::vector<std::string>;

constexpr char16_t kSquare[] =
    u"G90 G0 X0 Y0\r\nG1 Z-1 F10\r\nX2\r\nY2\r\nX0\r\nY0\r\nG0 Z1\r\nX9 Y9\r\n";
constexpr morva::PicturePoint kCorners[] = {{0, 0}, {2, 0}, {2, 2}, {0, 2}};
constexpr char16_t kHalfCircle[] = u"G90 G0 X2 Y0\r\nG1 Z-1 F10\r\nG3 X-2 Y0 I-2\r\n";

TEST_F(PictureAndPath, AgreeOnASquare) {
  morva::AddLoop(picture, kCorners, Ink::Feature);
  EXPECT_EQ(With(kSquare), Told{});
}

TEST_F(PictureAndPath, DifferWhereASideIsNotDrawn) {
  morva::AddPath(picture, kCorners, Ink::Feature);
  EXPECT_EQ(With(kSquare), Told{"line 5 cuts at 0.0000,1.8750, where nothing is drawn"});
}

TEST_F(PictureAndPath, DifferWhereALineIsNotCut) {
  morva::AddLoop(picture, kCorners, Ink::Blind);
  morva::AddLine(picture, {0, 0}, {2, 2}, Ink::Feature);
  EXPECT_EQ(With(kSquare), Told{"drawn at 0.1250,0.1250, where nothing is cut"});
  EXPECT_EQ(With(kSquare, true), Told{});
}

TEST_F(PictureAndPath, DifferByTwoThousandths) {
  constexpr morva::PicturePoint moved[] = {{0, 0}, {2.002, 0}, {2.002, 2}, {0, 2}};
  morva::AddLoop(picture, moved, Ink::Feature);
  EXPECT_FALSE(With(kSquare).empty());
}

TEST_F(PictureAndPath, AgreeWithinAThousandth) {
  constexpr morva::PicturePoint moved[] = {{0, 0}, {2.0009, 0}, {2.0009, 2}, {0, 2}};
  morva::AddLoop(picture, moved, Ink::Feature);
  EXPECT_EQ(With(kSquare), Told{});
}

TEST_F(PictureAndPath, LeaveOutWhatStandsForNoCut) {
  morva::AddLoop(picture, kCorners, Ink::Feature);
  morva::AddCircle(picture, {1, 1}, 5, Ink::Stock);
  morva::AddLine(picture, {-3, 1}, {5, 1}, Ink::Construction);
  EXPECT_EQ(With(kSquare), Told{});
  morva::ClearPicture(picture, false);
  morva::AddLoop(picture, kCorners, Ink::Outline);
  EXPECT_FALSE(With(kSquare, true).empty());
}

TEST_F(PictureAndPath, AgreeOnArcsHoweverTheyAreDrawn) {
  morva::AddArc(picture, {.radiusX = 2, .radiusY = 2, .start = 0, .sweep = 180}, Ink::Feature);
  EXPECT_EQ(With(kHalfCircle), Told{});
  morva::ClearPicture(picture, false);
  constexpr morva::PicturePoint bent[] = {{2, 0, 1}, {-2, 0, 0}};
  morva::AddPath(picture, bent, Ink::Feature);
  EXPECT_EQ(With(kHalfCircle), Told{});
  morva::ClearPicture(picture, false);
  // Two quarters the other way round: the tangent of 22.5 degrees.
  constexpr double kQuarter = 0.41421356237309503;
  constexpr morva::PicturePoint back[] = {{-2, 0, -kQuarter}, {0, 2, -kQuarter}, {2, 0, 0}};
  morva::AddPath(picture, back, Ink::Feature);
  EXPECT_EQ(With(kHalfCircle), Told{});
}

TEST_F(PictureAndPath, DifferOnTheOtherHalfOfACircle) {
  constexpr morva::PicturePoint bent[] = {{2, 0, -1}, {-2, 0, 0}};
  morva::AddPath(picture, bent, Ink::Feature);
  EXPECT_EQ(With(kHalfCircle).size(), 2u + 6u);  // the arc, then chords up to the most told
}

TEST_F(PictureAndPath, DifferWhereACircleIsCutByHalf) {
  morva::AddCircle(picture, {0, 0}, 2, Ink::Feature);
  EXPECT_EQ(With(kHalfCircle).size(), 1u);
}

TEST_F(PictureAndPath, AgreeOnAHoleAtTheMiddleOfItsCross) {
  morva::AddCross(picture, {3, 4}, Ink::Feature);
  const char16_t* hole = u"G90 G0 X3 Y4\r\nG1 Z-1 F10\r\nG0 Z1\r\n";
  EXPECT_EQ(With(hole), Told{});
  const char16_t* beside = u"G90 G0 X3 Y4.002\r\nG1 Z-1 F10\r\nG0 Z1\r\n";
  EXPECT_EQ(With(beside).size(), 1u);
}

}  // namespace
}  // namespace golden
