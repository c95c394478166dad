// What a click finds. One unit is one pixel here, and (0, 0) lies at the pixel (0, 100).

#include <gtest/gtest.h>

#include <limits>

#include "forms/picture.h"

namespace morva {
namespace {

PictureView Plain() {
  PictureView view;
  view.area = {0, 0, 200, 100};
  view.originY = 100;
  view.scaleX = view.scaleY = 1;
  return view;
}

TEST(PictureHit, TakesALineUpToTheToleranceAndNoFurther) {
  Picture picture;
  AddLine(picture, {10, 50}, {90, 50}, Ink::Outline, 1);
  const PictureView view = Plain();
  EXPECT_EQ(PartAt(picture, view, 50, 50), 1);
  EXPECT_EQ(PartAt(picture, view, 50, 56), 1);
  EXPECT_EQ(PartAt(picture, view, 50, 44), 1);
  EXPECT_EQ(PartAt(picture, view, 50, 57), kNoPart);
  EXPECT_EQ(PartAt(picture, view, 50, 43), kNoPart);
  EXPECT_EQ(PartAt(picture, view, 96, 50), 1);
  EXPECT_EQ(PartAt(picture, view, 97, 50), kNoPart);
  EXPECT_EQ(PartAt(picture, view, 93, 54), 1);  // 5 from the end
  EXPECT_EQ(PartAt(picture, view, 95, 54), kNoPart);
  EXPECT_EQ(PartAt(picture, view, 50, 60, 10), 1);
  EXPECT_EQ(PartAt(picture, view, 50, 61, 10), kNoPart);
  EXPECT_EQ(PartAt(picture, view, 50, 50, 0), 1);
  EXPECT_EQ(PartAt(picture, view, 50, 51, 0), kNoPart);
}

TEST(PictureHit, TakesACircleByItsEdge) {
  Picture picture;
  AddCircle(picture, {50, 50}, 20, Ink::Feature, 5);
  const PictureView view = Plain();
  EXPECT_EQ(PartAt(picture, view, 76, 50), 5);
  EXPECT_EQ(PartAt(picture, view, 77, 50), kNoPart);
  EXPECT_EQ(PartAt(picture, view, 64, 50), 5);
  EXPECT_EQ(PartAt(picture, view, 63, 50), kNoPart);
  EXPECT_EQ(PartAt(picture, view, 62, 34), 5);  // 12, 16: on it
  EXPECT_EQ(PartAt(picture, view, 50, 50), kNoPart);
}

TEST(PictureHit, TakesOnlyThePieceOfAnArcThatIsThere) {
  Picture picture;
  AddArc(picture, {50, 50, 20, 20, 0, 90}, Ink::Feature, 5);
  const PictureView view = Plain();
  EXPECT_EQ(PartAt(picture, view, 64, 36), 5);
  EXPECT_EQ(PartAt(picture, view, 36, 36), kNoPart);
  EXPECT_EQ(PartAt(picture, view, 64, 64), kNoPart);
  EXPECT_EQ(PartAt(picture, view, 70, 54), 5);  // 4 below its start
}

// The half circle at the right of a slot 60 long and 20 wide about (50, 50).
TEST(PictureHit, FollowsBulgedSides) {
  Picture picture;
  AddBox(picture, {50, 50, 60, 20, 0, 10}, Ink::Feature, 2);
  const PictureView view = Plain();
  EXPECT_EQ(PartAt(picture, view, 80, 50, 1), 2);
  EXPECT_EQ(PartAt(picture, view, 77, 43, 1), 2);
  EXPECT_EQ(PartAt(picture, view, 80, 40, 1), kNoPart);
  EXPECT_EQ(PartAt(picture, view, 50, 40, 1), 2);
}

TEST(PictureHit, PrefersTheNearestLine) {
  Picture picture;
  AddLine(picture, {0, 50}, {100, 50}, Ink::Outline, 1);
  AddLine(picture, {0, 60}, {100, 60}, Ink::Outline, 2);
  const PictureView view = Plain();
  EXPECT_EQ(PartAt(picture, view, 50, 46), 1);
  EXPECT_EQ(PartAt(picture, view, 50, 44), 2);
}

TEST(PictureHit, GivesTheLaterDrawnOfTwoAtTheSameDistance) {
  const PictureView view = Plain();
  Picture picture;
  AddLine(picture, {0, 50}, {100, 50}, Ink::Outline, 1);
  AddLine(picture, {0, 60}, {100, 60}, Ink::Outline, 2);
  EXPECT_EQ(PartAt(picture, view, 50, 45), 2);
  ClearPicture(picture, false);
  AddLine(picture, {0, 60}, {100, 60}, Ink::Outline, 2);
  AddLine(picture, {100, 50}, {0, 50}, Ink::Outline, 1);
  EXPECT_EQ(PartAt(picture, view, 50, 45), 1);
  // A later ink of the same layer is painted later, whatever the order of the records.
  ClearPicture(picture, false);
  AddLine(picture, {0, 50}, {100, 50}, Ink::Selected, 1);
  AddLine(picture, {0, 50}, {100, 50}, Ink::Outline, 2);
  EXPECT_EQ(PartAt(picture, view, 50, 50), 1);
  NextLayer(picture);
  AddLine(picture, {0, 50}, {100, 50}, Ink::Stock, 3);
  EXPECT_EQ(PartAt(picture, view, 50, 50), 3);
}

TEST(PictureHit, FindsNoLineWithoutAPart) {
  Picture picture;
  AddLine(picture, {0, 50}, {100, 50}, Ink::Outline, 1);
  AddLine(picture, {0, 48}, {100, 48}, Ink::Selected);
  const PictureView view = Plain();
  EXPECT_EQ(PartAt(picture, view, 50, 52), 1);
}

TEST(PictureHit, TakesTheTopmostFillWhereNoLineIsNear) {
  Picture picture;
  AddFilledBox(picture, {100, 50, 200, 100}, Ink::Face, 0);
  AddDisc(picture, {100, 50, 30, 30}, Ink::Opening, 4);
  AddBox(picture, {100, 50, 200, 100}, Ink::Outline, 9);
  const PictureView view = Plain();
  EXPECT_EQ(PartAt(picture, view, 40, 50), 0);
  EXPECT_EQ(PartAt(picture, view, 100, 50), 4);
  EXPECT_EQ(PartAt(picture, view, 128, 50), 4);
  EXPECT_EQ(PartAt(picture, view, 132, 50), 0);
  EXPECT_EQ(PartAt(picture, view, 5, 50), 9);
}

TEST(PictureHit, TakesACrossByItsArms) {
  Picture picture;
  AddCross(picture, {50, 50}, Ink::Feature, 8);
  const PictureView view = Plain();
  EXPECT_EQ(PartAt(picture, view, 61, 50), 8);  // 5 and 6
  EXPECT_EQ(PartAt(picture, view, 62, 50), kNoPart);
  EXPECT_EQ(PartAt(picture, view, 50, 39), 8);
  EXPECT_EQ(PartAt(picture, view, 50, 38), kNoPart);
}

// The words are 12 pixels wide and 17 high: a plate of 20 by 19 about (50, 50).
TEST(PictureHit, PrefersALabelToTheLinesBelowIt) {
  Picture picture;
  AddLine(picture, {0, 50}, {100, 50}, Ink::Outline, 1);
  AddLabel(picture, {50, 50}, u"12", {LabelSide::On, 0, Ink::Dimension, 40});
  AddLabel(picture, {150, 50}, u"34");
  const PictureView view = Plain();
  EXPECT_EQ(PartAt(picture, view, 50, 50), 40);
  EXPECT_EQ(PartAt(picture, view, 59, 50), 40);
  EXPECT_EQ(PartAt(picture, view, 60, 50), 1);
  EXPECT_EQ(PartAt(picture, view, 150, 50), kNoPart);
  EXPECT_EQ(LabelAt(picture, view, 59, 50), 0);
  EXPECT_EQ(LabelAt(picture, view, 60, 50), -1);
  EXPECT_EQ(LabelAt(picture, view, 150, 50), 1);
}

TEST(PictureHit, FindsALabelWhereItWasMovedTo) {
  Picture picture;
  const int label = AddLabel(picture, {50, 50}, u"12", {LabelSide::On, 0, Ink::Dimension, 40});
  const PictureView view = Plain();
  EXPECT_EQ(LabelAt(picture, view, 50, 50), label);
  MoveLabel(picture, label, 0.5, 0.2);  // 100 pixels to the right, 20 down
  EXPECT_EQ(LabelAt(picture, view, 50, 50), -1);
  EXPECT_EQ(LabelAt(picture, view, 150, 70), label);
  EXPECT_EQ(PartAt(picture, view, 150, 70), 40);
}

TEST(PictureHit, TakesADimensionByItsLineToo) {
  Picture picture;
  PictureDimension d{DimensionWay::Across, 10, 20, 190, 20};
  AddDimension(picture, d, {LabelSide::On, 0, Ink::Dimension, 6});
  const PictureView view = Plain();
  // The row lies 26 pixels above 80.
  EXPECT_EQ(PartAt(picture, view, 40, 54), 6);
  EXPECT_EQ(PartAt(picture, view, 10, 70), 6);  // its extension line
  EXPECT_EQ(PartAt(picture, view, 40, 70), kNoPart);
}

TEST(PictureHit, FindsNothingOnAnUnsoundView) {
  Picture picture;
  AddLine(picture, {10, 50}, {90, 50}, Ink::Outline, 1);
  PictureView view = Plain();
  view.scaleX = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(PartAt(picture, view, 50, 50), kNoPart);
  EXPECT_EQ(LabelAt(picture, view, 50, 50), -1);
  Picture empty;
  EXPECT_EQ(PartAt(empty, Plain(), 50, 50), kNoPart);
}

}  // namespace
}  // namespace morva
