// Records, views and text of pictures. Pixels and numbers are worked out by hand.

#include "forms/picture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace morva {
namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kEndless = std::numeric_limits<double>::infinity();

void AddFrame(Picture& picture, double width, double height) {
  AddBox(picture, {width / 2, height / 2, width, height}, Ink::Outline);
}

void ExpectPixel(const PictureView& view, double x, double y, double pixelX, double pixelY) {
  const platform::PointF at = OnView(view, x, y);
  EXPECT_NEAR(at.x, pixelX, 1e-6) << x << ", " << y;
  EXPECT_NEAR(at.y, pixelY, 1e-6) << x << ", " << y;
}

// 428 less 14 at both sides are 400 pixels for 4 inches, 228 less 28 are 200 for 2.
TEST(PictureFit, FillsTheAreaInsideItsMarginWithYUp) {
  Picture picture;
  AddFrame(picture, 4, 2);
  const PictureView view = FitPicture(picture, {0, 0, 428, 228});
  EXPECT_EQ(view.scaleX, 100);
  EXPECT_EQ(view.scaleY, 100);
  ExpectPixel(view, 0, 0, 14, 214);
  ExpectPixel(view, 4, 2, 414, 14);
  const PicturePoint back = OffView(view, 114, 114);
  EXPECT_DOUBLE_EQ(back.x, 1);
  EXPECT_DOUBLE_EQ(back.y, 1);
}

TEST(PictureFit, KeepsTheAspectAndCentresTheShorterSide) {
  Picture picture;
  AddFrame(picture, 4, 2);
  const PictureView view = FitPicture(picture, {100, 50, 328, 278});
  EXPECT_EQ(view.scaleX, 50);
  EXPECT_EQ(view.scaleY, 50);
  ExpectPixel(view, 0, 0, 114, 214);
  ExpectPixel(view, 4, 2, 314, 114);
}

TEST(PictureFit, ShowsNothingAndASinglePointAtTrueSizeInTheMiddle) {
  Picture picture;
  PictureView view = FitPicture(picture, {0, 0, 200, 100});
  EXPECT_EQ(view.scaleX, 96);
  ExpectPixel(view, 0, 0, 100, 50);
  ClearPicture(picture, true);
  AddCross(picture, {30, -20}, Ink::Feature);
  view = FitPicture(picture, {0, 0, 200, 100});
  EXPECT_DOUBLE_EQ(view.scaleX, 96 / 25.4);
  EXPECT_DOUBLE_EQ(view.scaleY, 96 / 25.4);
  ExpectPixel(view, 30, -20, 100, 50);
}

TEST(PictureFit, MeasuresALineByTheOneSideThatItHas) {
  Picture picture;
  AddLine(picture, {0, 1}, {4, 1}, Ink::Outline);
  PictureView view = FitPicture(picture, {0, 0, 428, 100});
  EXPECT_EQ(view.scaleY, 100);
  ExpectPixel(view, 0, 1, 14, 50);
  ClearPicture(picture, false);
  AddLine(picture, {3, 0}, {3, 10}, Ink::Outline);
  view = FitPicture(picture, {0, 0, 428, 128});
  EXPECT_EQ(view.scaleX, 10);
  ExpectPixel(view, 3, 10, 214, 14);
}

TEST(PictureFit, IsSoundInAnAreaOfNoSize) {
  Picture picture;
  AddFrame(picture, 4, 2);
  EXPECT_TRUE(IsSound(FitPicture(picture, {0, 0, 0, 0})));
  EXPECT_TRUE(IsSound(FitPicture(picture, {10, 10, 5, 5})));
  Picture far;
  AddLine(far, {-1e9, -1e9}, {1e9, 1e9}, Ink::Outline);
  EXPECT_TRUE(IsSound(FitPicture(far, {0, 0, 100, 100})));
}

// The label is 17 + 2 pixels high and stands 26 below the edge: 26.5 rounds its middle there, its
// lower edge is 36 below the edge, and 4 remain free. 228 - 14 - 40 are 174 pixels for 2 inches.
TEST(PictureFit, LeavesRoomForADimensionBelow) {
  Picture picture;
  AddFrame(picture, 4, 2);
  PictureDimension width{DimensionWay::Across, 0, 0, 4, 0};
  width.row = -1;
  EXPECT_EQ(AddDimension(picture, width), 0);
  const PictureView view = FitPicture(picture, {0, 0, 428, 228});
  EXPECT_EQ(view.scaleX, 87);
  ExpectPixel(view, 2, 0, 214, 188);
}

TEST(PictureFit, DoesNotChangeWhileALabelIsMoved) {
  Picture picture;
  AddFrame(picture, 4, 2);
  PictureDimension width{DimensionWay::Across, 0, 0, 4, 0};
  const int label = AddDimension(picture, width);
  const PictureView before = FitPicture(picture, {0, 0, 428, 228});
  MoveLabel(picture, label, 0.3, -0.4);
  MoveLabel(picture, 7, 1, 1);
  const PictureView after = FitPicture(picture, {0, 0, 428, 228});
  EXPECT_EQ(before.scaleX, after.scaleX);
  EXPECT_EQ(before.originY, after.originY);
}

TEST(PictureBoundsOf, AreExactForArcs) {
  Picture picture;
  PictureBounds bounds{7, 7, 7, 7};
  EXPECT_FALSE(BoundsOfPicture(picture, bounds));
  EXPECT_EQ(bounds.minX, 7);
  AddCircle(picture, {1, 2}, 0.5, Ink::Feature);
  ASSERT_TRUE(BoundsOfPicture(picture, bounds));
  EXPECT_EQ(bounds.minX, 0.5);
  EXPECT_EQ(bounds.maxX, 1.5);
  EXPECT_EQ(bounds.minY, 1.5);
  EXPECT_EQ(bounds.maxY, 2.5);
  ClearPicture(picture, false);
  AddArc(picture, {0, 0, 1, 1, 45, 90}, Ink::Feature);  // over the top
  ASSERT_TRUE(BoundsOfPicture(picture, bounds));
  const double half = std::numbers::sqrt2 / 2;
  EXPECT_NEAR(bounds.minX, -half, 1e-15);
  EXPECT_NEAR(bounds.maxX, half, 1e-15);
  EXPECT_NEAR(bounds.minY, half, 1e-15);
  EXPECT_EQ(bounds.maxY, 1);
  ClearPicture(picture, false);
  AddArc(picture, {0, 0, 2, 1, 10, -100}, Ink::Feature);  // clockwise through +X to the bottom
  ASSERT_TRUE(BoundsOfPicture(picture, bounds));
  EXPECT_EQ(bounds.maxX, 2);
  EXPECT_EQ(bounds.minY, -1);
  EXPECT_EQ(bounds.minX, 0);
}

TEST(PictureBoundsOf, FollowTheBulgesOfBoxes) {
  Picture picture;
  PictureBounds bounds;
  AddBox(picture, {1, 1, 4, 2, 0, 9}, Ink::Feature);  // a slot along X
  ASSERT_EQ(picture.marks[0].count, 4);
  ASSERT_TRUE(BoundsOfPicture(picture, bounds));
  EXPECT_NEAR(bounds.minX, -1, 1e-12);
  EXPECT_NEAR(bounds.maxX, 3, 1e-12);
  EXPECT_NEAR(bounds.minY, 0, 1e-12);
  EXPECT_NEAR(bounds.maxY, 2, 1e-12);
  ClearPicture(picture, false);
  AddBox(picture, {1, 1, 4, 2, 90, 0.25}, Ink::Feature);
  ASSERT_EQ(picture.marks[0].count, 8);
  ASSERT_TRUE(BoundsOfPicture(picture, bounds));
  EXPECT_NEAR(bounds.minX, 0, 1e-12);
  EXPECT_NEAR(bounds.maxY, 3, 1e-12);
  ClearPicture(picture, false);
  AddBox(picture, {1, 1, 2, 2, 30, 1}, Ink::Feature);
  EXPECT_EQ(picture.marks[0].kind, MarkKind::Arc);
}

// A slot along Y has its half circles at the top and the bottom.
TEST(PictureBoundsOf, TakeAnUprightSlotAsOne) {
  Picture picture;
  PictureBounds bounds;
  AddBox(picture, {0, 0, 1, 3, 0, 0.5}, Ink::Feature);
  ASSERT_TRUE(BoundsOfPicture(picture, bounds));
  EXPECT_NEAR(bounds.maxX, 0.5, 1e-12);
  EXPECT_NEAR(bounds.maxY, 1.5, 1e-12);
  EXPECT_NEAR(bounds.minY, -1.5, 1e-12);
}

TEST(PictureAtTrueSize, UsesTheDotsOfEachAxisForInches) {
  PictureView view;
  ASSERT_TRUE(OneToOne({4000, 6000, 300, 600}, false, {0, 0}, {1000, 2000}, view));
  ExpectPixel(view, 1.5, -2.25, 1450, 3350);
  EXPECT_EQ(view.pen, 2);
  ASSERT_TRUE(OneToOne({4000, 6000, 600, 299}, false, {1, 1}, {10, 20}, view));
  ExpectPixel(view, 1, 1, 10, 20);
  ExpectPixel(view, 2, 0, 610, 319);
  EXPECT_EQ(view.pen, 1);
}

TEST(PictureAtTrueSize, DividesTheDotsBy25Point4ForMillimetres) {
  PictureView view;
  ASSERT_TRUE(OneToOne({6000, 4000, 600, 300}, true, {0, 0}, {100, 3000}, view));
  ExpectPixel(view, 25.4, 12.7, 700, 2850);
  ExpectPixel(view, 215.9, 0, 5200, 3000);  // 8.5 inches
}

TEST(PictureAtTrueSize, AddsUpNoRounding) {
  PictureView view;
  ASSERT_TRUE(OneToOne({20000, 20000, 600, 1200}, false, {0, 0}, {0.5, 20000}, view));
  double x = 0;
  for (int i = 0; i <= 160; ++i) {
    ExpectPixel(view, x, x, 0.5 + i * 60, 20000 - i * 120);
    x += 0.1;  // sums its own error to far less than a pixel
  }
}

TEST(PictureAtTrueSize, CentresTheMarksOnThePage) {
  Picture picture;
  AddFrame(picture, 8, 6);
  PictureView view;
  ASSERT_TRUE(CentreOnPaper(picture, {5101, 6600, 600, 600}, view));
  ExpectPixel(view, 4, 3, 2550.5, 3300);
  ExpectPixel(view, 0, 0, 150.5, 5100);
}

TEST(PictureAtTrueSize, NeedsFiguresOfThePrinter) {
  PictureView view;
  view.scaleX = 7;
  EXPECT_FALSE(OneToOne({0, 100, 300, 300}, false, {}, {}, view));
  EXPECT_FALSE(OneToOne({100, 0, 300, 300}, false, {}, {}, view));
  EXPECT_FALSE(OneToOne({100, 100, 0, 300}, false, {}, {}, view));
  EXPECT_FALSE(OneToOne({100, 100, 300, -300}, false, {}, {}, view));
  EXPECT_FALSE(OneToOne({100, 100, 300, 300}, false, {kNoNumber, 0}, {}, view));
  EXPECT_FALSE(OneToOne({100, 100, 300, 300}, false, {}, {0, kEndless}, view));
  EXPECT_EQ(view.scaleX, 7);
}

TEST(PictureAtTrueSize, FitsAPageOfItsOwnSizeAndNoneThatIsAPixelSmaller) {
  Picture inch;
  AddFrame(inch, 8.5, 11);
  Picture metric;
  ClearPicture(metric, true);
  AddFrame(metric, 215.9, 279.4);
  for (const Picture* picture : {&inch, &metric}) {
    EXPECT_TRUE(FitsPaper(*picture, {5100, 6600, 600, 600}));
    EXPECT_FALSE(FitsPaper(*picture, {5099, 6600, 600, 600}));
    EXPECT_FALSE(FitsPaper(*picture, {5100, 6599, 600, 600}));
    EXPECT_TRUE(FitsPaper(*picture, {2550, 6600, 300, 600}));
    EXPECT_FALSE(FitsPaper(*picture, {5100, 6600, 0, 600}));
  }
  Picture rounded;
  AddFrame(rounded, 8.5 + 0.4 / 600, 1);  // 5100.4 pixels
  EXPECT_TRUE(FitsPaper(rounded, {5100, 6600, 600, 600}));
  ClearPicture(rounded, false);
  AddFrame(rounded, 8.5 + 0.6 / 600, 1);
  EXPECT_FALSE(FitsPaper(rounded, {5100, 6600, 600, 600}));
}

TEST(PictureViews, AreRefusedWithoutFiniteScales) {
  PictureView view;
  EXPECT_FALSE(IsSound(view));
  view.scaleX = view.scaleY = 2;
  EXPECT_TRUE(IsSound(view));
  for (const double bad : {0.0, -1.0, kNoNumber, kEndless}) {
    PictureView other = view;
    other.scaleY = bad;
    EXPECT_FALSE(IsSound(other)) << bad;
  }
  view.originX = kNoNumber;
  EXPECT_FALSE(IsSound(view));
}

TEST(PictureRecords, LeaveOutWhatIsNoNumberOrTooFarAndSaySo) {
  Picture picture;
  EXPECT_TRUE(AddLine(picture, {0, 0}, {1e9, -1e9}, Ink::Outline));
  EXPECT_FALSE(picture.unsound);
  EXPECT_FALSE(AddLine(picture, {0, 0}, {1.1e9, 0}, Ink::Outline));
  EXPECT_TRUE(picture.unsound);
  ClearPicture(picture, false);
  EXPECT_FALSE(picture.unsound);
  EXPECT_FALSE(AddCircle(picture, {0, 0}, kNoNumber, Ink::Outline));
  EXPECT_FALSE(AddCross(picture, {kEndless, 0}, Ink::Outline));
  EXPECT_FALSE(AddBox(picture, {0, 0, 1, kNoNumber}, Ink::Outline));
  EXPECT_EQ(AddLabel(picture, {kNoNumber, 0}, u"far"), -1);
  PictureDimension wide;
  wide.x1 = kEndless;
  EXPECT_EQ(AddDimension(picture, wide), -1);
  EXPECT_TRUE(picture.unsound);
  EXPECT_FALSE(picture.full);
  EXPECT_EQ(PictureText(picture), u"picture inch\nunsound\n");
}

TEST(PictureRecords, ClearEmptiesEverything) {
  Picture picture;
  AddFrame(picture, 4, 2);
  AddCircle(picture, {0, 0}, 1, Ink::Feature);
  AddDimension(picture, {});
  AddLabel(picture, {0, 0}, u"one");
  ClearPicture(picture, true);
  EXPECT_EQ(PictureText(picture), u"picture mm\n");
  PictureBounds bounds;
  EXPECT_FALSE(BoundsOfPicture(picture, bounds));
}

TEST(PictureRecords, NumberTheirDimensionsAsTheTradeDoes) {
  Picture picture;
  const auto words = [&picture](const PictureDimension& d) {
    const int label = AddDimension(picture, d);
    return std::u16string(picture.labels[static_cast<std::size_t>(label)].words);
  };
  PictureDimension d{DimensionWay::Across, 1, 5, -3, 8};
  EXPECT_EQ(words(d), u"4.000");
  d.way = DimensionWay::Upright;
  EXPECT_EQ(words(d), u"3.000");
  d.way = DimensionWay::Along;
  EXPECT_EQ(words(d), u"5.000");
  d.way = DimensionWay::Radius;
  d.radius = 0.25;
  EXPECT_EQ(words(d), u"R0.250");
  d.way = DimensionWay::Diameter;
  d.times = 4;
  EXPECT_EQ(words(d), u"4\u00D7 \u00D80.500");
  picture.metric = true;
  EXPECT_EQ(words(d), u"4\u00D7 \u00D80.50");
  EXPECT_EQ(DimensionText(12.7, true), u"12.70");
  EXPECT_EQ(DimensionText(12.7, false), u"12.700");
}

TEST(PictureRecords, KeepTheWordsOfALabelOnOneLine) {
  Picture picture;
  AddLabel(picture, {0, 0}, u"one\r\ntwo\t3");
  EXPECT_EQ(std::u16string(picture.labels[0].words), u"one  two 3");
  EXPECT_EQ(picture.labels[0].width, 60);  // six pixels a unit on this platform
}

TEST(PictureText, WritesOneRecordALineWithFourDecimals) {
  Picture picture;
  AddLine(picture, {0, 0}, {1, -0.25}, Ink::Construction);
  const PicturePoint bend[] = {{0, 0}, {1, 0, 1}, {1, 2}};
  AddPath(picture, bend, Ink::Feature, 3);
  AddBox(picture, {0, 0, 2, 1}, Ink::Outline, 0);
  NextLayer(picture);
  AddFilledBox(picture, {1, 1, 2, 2}, Ink::Face);
  AddCircle(picture, {1, 2}, -0.125, Ink::Blind, 12);
  AddArc(picture, {0, 0, 2, 1, 90, -45}, Ink::Outline);
  AddDisc(picture, {0, 0, 2, 2, 7, 7}, Ink::ShadeLight);
  AddCross(picture, {-1e-9, 1.00005}, Ink::Feature, 4);
  LabelSpec spec{LabelSide::Right, 0.5, Ink::Selected, 100, 17, 0.25, -0.5};
  AddLabel(picture, {1, 1}, u"No. 1: bore", spec);
  PictureDimension d{DimensionWay::Upright, 0, 0, 0, 6, 0, -2, true};
  AddDimension(picture, d, {LabelSide::On, 0, Ink::Dimension, 1});
  PictureDimension r{DimensionWay::Radius, 1, 1};
  r.radius = 0.5;
  AddDimension(picture, r, {}, u"Corner radius");
  EXPECT_EQ(PictureText(picture),
            u"picture inch\n"
            u"path construction 0.0000,0.0000 1.0000,-0.2500\n"
            u"path feature part 3 0.0000,0.0000 1.0000,0.0000 bulge 1.0000 1.0000,2.0000\n"
            u"loop outline part 0 -1.0000,-0.5000 1.0000,-0.5000 1.0000,0.5000 -1.0000,0.5000\n"
            u"layer\n"
            u"fill face 0.0000,0.0000 2.0000,0.0000 2.0000,2.0000 0.0000,2.0000\n"
            u"arc blind part 12 1.0000,2.0000 radius 0.1250\n"
            u"arc outline 0.0000,0.0000 radius 2.0000,1.0000 from 90.0000 by -45.0000\n"
            u"disc light 0.0000,0.0000 radius 2.0000\n"
            u"cross feature part 4 0.0000,1.0001\n"
            u"label selected part 100 1.0000,1.0000 right clear 0.5000 place 17 shift "
            u"0.2500,-0.5000: No. 1: bore\n"
            u"dimension upright dimension part 1 0.0000,0.0000 0.0000,6.0000 row -2 outside: "
            u"6.000\n"
            u"dimension radius dimension 1.0000,1.0000 radius 0.5000 leader 45.0000: Corner "
            u"radius\n");
}

}  // namespace
}  // namespace morva
