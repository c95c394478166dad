// What a picture paints, as the canvas records it. One unit is one pixel unless told otherwise,
// and (0, 0) lies at the pixel (0, 200).

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "app/palette.h"
#include "forms/picture.h"
#include "platform/headless/headless.h"
#include "platform/window.h"
#include "support/stage.h"

namespace morva {
namespace {

using Calls = std::vector<headless::DrawCall>;

PictureView Plain() {
  PictureView view;
  view.area = {0, 0, 400, 200};
  view.originY = 200;
  view.scaleX = view.scaleY = 1;
  return view;
}

class PicturePaint : public support::Stage {
 protected:
  PicturePaint() {
    static platform::Events events;
    events = platform::Events();
    events.paint = [](int, platform::Canvas& canvas) {
      painted_ = PaintPicture(canvas, *shown_, *view_);
    };
    platform::ListenTo(&events);
  }

  Calls Paint(Picture& picture, const PictureView& view) {
    shown_ = &picture;
    view_ = &view;
    return headless::PaintOf(platform::kMainWindow);
  }
  static bool Painted() { return painted_; }

  static Calls Only(const Calls& calls, const std::string& name) {
    Calls found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                 [&](const headless::DrawCall& call) { return call.name == name; });
    return found;
  }
  static std::vector<std::string> Names(const Calls& calls) {
    std::vector<std::string> names;
    for (const headless::DrawCall& call : calls) names.push_back(call.name);
    return names;
  }
  // The four coordinates of each segment of a call.
  static std::vector<std::vector<double>> Segments(const headless::DrawCall& call) {
    std::vector<std::vector<double>> segments;
    for (std::size_t i = 0; i + 6 < call.numbers.size(); i += 4) {
      segments.push_back(
          {call.numbers[i], call.numbers[i + 1], call.numbers[i + 2], call.numbers[i + 3]});
    }
    return segments;
  }
  static platform::Rect PlaceOf(const headless::DrawCall& call) {
    return {static_cast<int>(call.numbers[0]), static_cast<int>(call.numbers[1]),
            static_cast<int>(call.numbers[2]), static_cast<int>(call.numbers[3])};
  }

 private:
  static inline Picture* shown_ = nullptr;
  static inline const PictureView* view_ = nullptr;
  static inline bool painted_ = false;
};

bool Overlap(const platform::Rect& a, const platform::Rect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

TEST_F(PicturePaint, PaintsItsGroundInsideItsArea) {
  Picture picture;
  const PictureView view = FitPicture(picture, {10, 20, 110, 220});
  const Calls calls = Paint(picture, view);
  EXPECT_TRUE(Painted());
  ASSERT_EQ(Names(calls), (std::vector<std::string>{"PushClip", "FillArea", "PopClip"}));
  EXPECT_EQ(calls[0].numbers, (std::vector<double>{10, 20, 110, 220}));
  EXPECT_EQ(calls[1].numbers, calls[0].numbers);
  EXPECT_EQ(calls[1].colours[0], kPictureGround);
}

TEST_F(PicturePaint, RefusesAnUnsoundViewAndPaintsNothing) {
  Picture picture;
  AddLine(picture, {0, 0}, {1, 1}, Ink::Outline);
  for (const double bad : {0.0, -2.0, std::numeric_limits<double>::infinity(),
                           std::numeric_limits<double>::quiet_NaN()}) {
    PictureView view = Plain();
    view.scaleX = bad;
    EXPECT_TRUE(Paint(picture, view).empty());
    EXPECT_FALSE(Painted());
  }
}

TEST_F(PicturePaint, GathersTheLinesOfEachInkInTheOrderOfTheInks) {
  Picture picture;
  for (int i = 0; i < 50; ++i) {
    AddBox(picture, {10.0 + i, 10, 4, 4}, i % 2 ? Ink::Selected : Ink::Feature, i);
  }
  AddLine(picture, {0, 0}, {100, 50}, Ink::Stock);
  const Calls batches = Only(Paint(picture, Plain()), "PaintSegments");
  ASSERT_EQ(batches.size(), 3u);
  EXPECT_EQ(batches[0].colours[0], kPictureStock);
  EXPECT_EQ(batches[1].colours[0], kPictureFeature);
  EXPECT_EQ(batches[2].colours[0], kPictureSelected);
  EXPECT_EQ(Segments(batches[0]), (std::vector<std::vector<double>>{{0, 200, 100, 150}}));
  EXPECT_EQ(Segments(batches[1]).size(), 100u);
  EXPECT_EQ(batches[2].numbers[batches[2].numbers.size() - 3], 2);  // its pen's width
}

TEST_F(PicturePaint, PutsFillsBelowTheLinesOfTheirLayerAndAboveTheLayerBelow) {
  Picture picture;
  AddLine(picture, {0, 0}, {9, 9}, Ink::Outline);
  AddFilledBox(picture, {20, 20, 10, 10}, Ink::Face);
  NextLayer(picture);
  AddLine(picture, {0, 0}, {9, 9}, Ink::Feature);
  AddDisc(picture, {20, 20, 3, 3}, Ink::ShadeMid);
  const Calls calls = Paint(picture, Plain());
  EXPECT_EQ(Names(calls),
            (std::vector<std::string>{"PushClip", "FillArea", "FillPolygon", "PaintSegments",
                                      "FillPolygon", "PaintSegments", "PopClip"}));
  EXPECT_EQ(calls[2].colours[0], kPictureFace);
  EXPECT_EQ(calls[4].colours[0], kPictureShadeMid);
  // Closed: the last of its points is the first.
  EXPECT_EQ(calls[2].numbers, (std::vector<double>{15, 185, 25, 185, 25, 175, 15, 175, 15, 185}));
}

// The greatest distance between a chord and its circle is at the chord's middle.
TEST_F(PicturePaint, KeepsTheChordsOfACircleWithinAFifthOfAPixel) {
  for (const double radius : {0.3, 3.0, 40.0, 1500.0}) {
    Picture picture;
    AddCircle(picture, {0, 0}, radius, Ink::Feature);
    const Calls batches = Only(Paint(picture, Plain()), "PaintSegments");
    ASSERT_EQ(batches.size(), 1u);
    const auto chords = Segments(batches[0]);
    ASSERT_GE(chords.size(), 4u);
    double length = 0;
    for (const auto& c : chords) {
      EXPECT_NEAR(std::hypot(c[0], 200 - c[1]), radius, 0.01);
      const double middle = std::hypot((c[0] + c[2]) / 2, 200 - (c[1] + c[3]) / 2);
      EXPECT_GE(middle, radius - 0.21);
      length += std::hypot(c[2] - c[0], c[3] - c[1]);
    }
    EXPECT_LT(length, 2 * 3.1416 * radius + 0.02);
    EXPECT_GT(length, 0.9 * 2 * 3.1416 * radius);
  }
}

TEST_F(PicturePaint, TurnsArcsTheWayOfTheirSweep) {
  Picture picture;
  AddArc(picture, {100, 100, 50, 20, 0, -90}, Ink::Feature);
  const auto chords = Segments(Only(Paint(picture, Plain()), "PaintSegments")[0]);
  EXPECT_NEAR(chords.front()[0], 150, 1e-4);
  EXPECT_NEAR(chords.front()[1], 100, 1e-4);
  EXPECT_NEAR(chords.back()[2], 100, 1e-4);
  EXPECT_NEAR(chords.back()[3], 120, 1e-4);  // below the centre
  for (const auto& c : chords) EXPECT_GE(c[3], c[1]);
}

TEST_F(PicturePaint, BendsBulgedSidesToTheirRight) {
  Picture picture;
  // Up along X 10 with a half circle: counter-clockwise it reaches out to X 20.
  const PicturePoint path[] = {{10, 0, 1}, {10, 20}};
  AddPath(picture, path, Ink::Feature);
  const auto chords = Segments(Only(Paint(picture, Plain()), "PaintSegments")[0]);
  double most = 0;
  for (const auto& c : chords) {
    EXPECT_NEAR(std::hypot(c[2] - 10, 190 - c[3]), 10, 1e-3);
    most = std::max(most, c[2]);
  }
  EXPECT_GT(most, 19.5);
  EXPECT_EQ(chords.back()[2], 10);
  EXPECT_EQ(chords.back()[3], 180);
}

TEST_F(PicturePaint, DashesRunOnAroundCorners) {
  Picture picture;
  const PicturePoint path[] = {{0, 100}, {13, 100}, {13, 80}};
  AddPath(picture, path, Ink::Construction);
  // 6 on, 4 off: 0 to 6, 10 to 16 around the corner at 13, 20 to 26, 30 to 33.
  EXPECT_EQ(Segments(Only(Paint(picture, Plain()), "PaintSegments")[0]),
            (std::vector<std::vector<double>>{{0, 100, 6, 100},
                                              {10, 100, 13, 100},
                                              {13, 100, 13, 103},
                                              {13, 107, 13, 113},
                                              {13, 117, 13, 120}}));
}

TEST_F(PicturePaint, DashesOnlyWhatLiesInsideTheArea) {
  Picture picture;
  AddLine(picture, {-1e9, 100}, {1e9, 100}, Ink::Construction);
  AddLine(picture, {-1e9, 1e6}, {1e9, 1e6}, Ink::Construction);
  const auto dashes = Segments(Only(Paint(picture, Plain()), "PaintSegments")[0]);
  EXPECT_GE(dashes.size(), 39u);
  EXPECT_LE(dashes.size(), 42u);
  for (const auto& d : dashes) {
    EXPECT_GE(d[0], -1e-3);
    EXPECT_LE(d[2], 400 + 1e-3);
  }
}

TEST_F(PicturePaint, LeavesALineWithoutDashesThatIsTooLongToCountThem) {
  Picture picture;
  AddLine(picture, {-1e9, 1e-12}, {1e9, 1e-12}, Ink::Construction);
  PictureView view = Plain();
  view.scaleX = view.scaleY = 1e12;
  EXPECT_EQ(Segments(Only(Paint(picture, view), "PaintSegments")[0]).size(), 1u);
}

TEST_F(PicturePaint, SmoothsFewLinesAndLeavesManyPlain) {
  Picture picture;
  AddLine(picture, {0, 10.3}, {50, 10.3}, Ink::Outline);
  AddLine(picture, {0, 0}, {50, 20}, Ink::Outline);
  Calls batch = Only(Paint(picture, Plain()), "PaintSegments");
  EXPECT_EQ(batch[0].numbers.back(), 1);
  // The level line lies at 189.7. Row 190 is the nearest.
  EXPECT_FLOAT_EQ(static_cast<float>(batch[0].numbers[1]), 190);
  EXPECT_EQ(batch[0].numbers[5], 200);
  for (int i = 0; i < 5000; ++i) AddLine(picture, {0, 0}, {1, 1}, Ink::Feature);
  batch = Only(Paint(picture, Plain()), "PaintSegments");
  EXPECT_EQ(batch[0].numbers.back(), 0);
  EXPECT_EQ(batch[0].numbers[1], 190);
  ClearPicture(picture, false);
  for (int i = 0; i < 200; ++i) AddLine(picture, {0, 0}, {400, 0.5 * i}, Ink::Feature);
  EXPECT_EQ(Only(Paint(picture, Plain()), "PaintSegments")[0].numbers.back(), 0);
}

TEST_F(PicturePaint, GivesEachLabelGroundOfItsOwnAboveAllLines) {
  Picture picture;
  AddLabel(picture, {100, 100}, u"12", {LabelSide::On, 0, Ink::Selected});
  AddLine(picture, {0, 100}, {200, 100}, Ink::Outline);
  const Calls calls = Paint(picture, Plain());
  ASSERT_EQ(Names(calls), (std::vector<std::string>{"PushClip", "FillArea", "PaintSegments",
                                                    "FillArea", "PaintText", "PopClip"}));
  EXPECT_EQ(calls[3].numbers, (std::vector<double>{90, 91, 110, 110}));
  EXPECT_EQ(PlaceOf(calls[4]).left, 90);
  EXPECT_EQ(PlaceOf(calls[4]).bottom, 110);
  EXPECT_EQ(calls[4].text, u"12");
  EXPECT_EQ(calls[4].colours[0], kPictureSelected);
  EXPECT_EQ(calls[4].numbers[4], static_cast<int>(kPictureFont));
}

// Above: 5 pixels from the place, plus what it keeps clear.
TEST_F(PicturePaint, SetsALabelBesideItsPlace) {
  const auto plate = [this](LabelSide side, double clear) {
    Picture picture;
    AddLabel(picture, {100, 100}, u"12", {side, clear});
    return PlaceOf(Only(Paint(picture, Plain()), "PaintText")[0]);
  };
  EXPECT_EQ(plate(LabelSide::Right, 0).left, 105);
  EXPECT_EQ(plate(LabelSide::Right, 10).left, 115);
  EXPECT_EQ(plate(LabelSide::Left, 0).right, 95);
  EXPECT_EQ(plate(LabelSide::Above, 10).bottom, 85);
  EXPECT_EQ(plate(LabelSide::Below, 0).top, 105);
}

TEST_F(PicturePaint, KeepsLabelsOfOnePlaceApart) {
  Picture picture;
  for (int i = 0; i < 8; ++i) AddLabel(picture, {200, 100}, u"label");
  const Calls texts = Only(Paint(picture, Plain()), "PaintText");
  ASSERT_EQ(texts.size(), 8u);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      EXPECT_FALSE(Overlap(PlaceOf(texts[i]), PlaceOf(texts[k]))) << i << ", " << k;
    }
  }
  // The first one has its usual place. The others stand away from it, with a line back to it.
  EXPECT_EQ(PlaceOf(texts[0]).left, 181);
  EXPECT_EQ(Segments(Only(Paint(picture, Plain()), "PaintSegments")[0]).size(), 7u);
}

TEST_F(PicturePaint, KeepsTheLabelsOfFourHundredFeaturesApart) {
  Picture picture;
  for (int i = 0; i < 400; ++i) {
    const double x = i % 20;
    const double y = i / 20;
    AddCircle(picture, {x, y}, 0.15, Ink::Feature, i);
    AddLabel(picture, {x, y}, u"\u00D80.250", {LabelSide::Above, 0.15, Ink::Dimension, i});
  }
  const PictureView view = FitPicture(picture, {0, 0, 1200, 800});
  const Calls texts = Only(Paint(picture, view), "PaintText");
  ASSERT_EQ(texts.size(), 400u);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const platform::Rect place = PlaceOf(texts[i]);
    EXPECT_GE(place.left, 0);
    EXPECT_GE(place.top, 0);
    EXPECT_LE(place.right, 1200);
    EXPECT_LE(place.bottom, 800);
    for (std::size_t k = 0; k < i; ++k) ASSERT_FALSE(Overlap(place, PlaceOf(texts[k])));
  }
}

TEST_F(PicturePaint, StandsAMovedLabelWhereItWasPutAndOthersGiveWay) {
  Picture picture;
  AddLabel(picture, {100, 100}, u"12");
  LabelSpec moved;
  moved.shiftX = 0.1;  // 40 pixels to the right, onto the place of the third
  AddLabel(picture, {100, 50}, u"34", moved);
  AddLabel(picture, {140, 50}, u"56");
  const Calls texts = Only(Paint(picture, Plain()), "PaintText");
  EXPECT_EQ(PlaceOf(texts[1]).left, 130);
  EXPECT_EQ(PlaceOf(texts[1]).top, 141);
  EXPECT_FALSE(Overlap(PlaceOf(texts[1]), PlaceOf(texts[2])));
  MoveLabel(picture, 1, 5, 5);  // held inside the area
  EXPECT_EQ(PlaceOf(Only(Paint(picture, Plain()), "PaintText")[1]).right, 400);
  EXPECT_EQ(PlaceOf(Only(Paint(picture, Plain()), "PaintText")[1]).bottom, 200);
}

// From 50 to 150, 26 pixels above 150: the words take 50 pixels, so that both heads have room.
TEST_F(PicturePaint, DrawsADimensionWithItsHeadsInside) {
  Picture picture;
  AddDimension(picture, {DimensionWay::Across, 50, 50, 150, 50});
  const Calls calls = Paint(picture, Plain());
  const platform::Rect plate = PlaceOf(Only(calls, "PaintText")[0]);
  EXPECT_EQ(Only(calls, "PaintText")[0].text, u"100.000");
  EXPECT_EQ(plate.left, 75);
  EXPECT_EQ(plate.right, 125);
  EXPECT_EQ(plate.top, 115);  // 9.5 above 124, rounded
  const auto lines = Segments(Only(calls, "PaintSegments")[0]);
  ASSERT_EQ(lines.size(), 3u);
  // Extension lines begin 3 pixels from the point and end 4 beyond the dimension line.
  EXPECT_EQ(lines[0], (std::vector<double>{50, 147, 50, 120.5}));
  EXPECT_EQ(lines[1], (std::vector<double>{150, 147, 150, 120.5}));
  EXPECT_EQ(lines[2][0], 50);
  EXPECT_EQ(lines[2][2], 150);
  const Calls heads = Only(calls, "PaintPolygon");
  ASSERT_EQ(heads.size(), 2u);
  EXPECT_EQ(heads[0].numbers[0], 50.5);  // its tip, and its back 9 pixels inwards
  EXPECT_EQ(heads[0].numbers[2], 59.5);
  EXPECT_EQ(heads[1].numbers[0], 150.5);
  EXPECT_EQ(heads[1].numbers[2], 141.5);
}

// The words take 50 pixels with their ground, which is as wide as what is measured, or lies half a
// pixel beside it: heads that stood inside would lie below it.
TEST_F(PicturePaint, CoversNoHeadWithTheWordsOfADimension) {
  for (const double width : {50.0, 51.0, 55.0, 60.0, 67.0}) {
    for (const double from : {50.0, 50.5}) {
      Picture picture;
      AddDimension(picture, {DimensionWay::Across, from, 50, from + width, 50}, {}, u"100.000");
      const Calls calls = Paint(picture, Plain());
      const platform::Rect plate = PlaceOf(Only(calls, "PaintText")[0]);
      for (const auto& head : Only(calls, "PaintPolygon")) {
        const double back = head.numbers[2];
        EXPECT_TRUE(back <= plate.left || back >= plate.right) << width << " " << from;
      }
    }
  }
}

// 30 pixels have no room for the words: they stand beyond the end and the heads outside.
TEST_F(PicturePaint, DrawsASmallDimensionFromOutside) {
  Picture picture;
  AddDimension(picture, {DimensionWay::Across, 50, 50, 66, 50});
  const Calls calls = Paint(picture, Plain());
  EXPECT_EQ(PlaceOf(Only(calls, "PaintText")[0]).left, 66 + 18);
  const Calls heads = Only(calls, "PaintPolygon");
  EXPECT_EQ(heads[0].numbers[0], 50.5);
  EXPECT_EQ(heads[0].numbers[2], 41.5);
  EXPECT_EQ(heads[1].numbers[2], 75.5);
  const auto lines = Segments(Only(calls, "PaintSegments")[0]);
  EXPECT_EQ(lines[2][0], 50 - 18);
  EXPECT_EQ(lines[2][2], 106);  // to the middle of the words
}

// Where the next dimension of the row begins, the words of a small one would be taken for its own.
TEST_F(PicturePaint, SetsTheWordsOfASmallDimensionAwayFromTheMiddle) {
  Picture picture;
  AddBox(picture, {200, 100, 200, 100}, Ink::Outline);
  AddDimension(picture, {DimensionWay::Across, 100, 50, 110, 50, 0, -1});
  AddDimension(picture, {DimensionWay::Across, 300, 50, 290, 50, 0, -2});
  AddDimension(picture, {DimensionWay::Upright, 300, 150, 300, 145, 0, 1});
  const Calls texts = Only(Paint(picture, Plain()), "PaintText");
  EXPECT_EQ(PlaceOf(texts[0]).right, 100 - 18);
  EXPECT_EQ(PlaceOf(texts[1]).left, 300 + 18);
  EXPECT_EQ(PlaceOf(texts[2]).bottom, 50 - 18);
}

TEST_F(PicturePaint, CountsRowsOutsideFromTheBoundsOfThePicture) {
  Picture picture;
  AddBox(picture, {200, 100, 200, 100}, Ink::Outline);  // X 100 to 300, Y 50 to 150
  PictureDimension d{DimensionWay::Upright, 200, 60, 200, 140, 0, 2, true};
  AddDimension(picture, d);
  d = {DimensionWay::Across, 150, 100, 250, 100, 0, -1, true};
  AddDimension(picture, d);
  const Calls texts = Only(Paint(picture, Plain()), "PaintText");
  const platform::Rect upright = PlaceOf(texts[0]);
  EXPECT_EQ((upright.left + upright.right) / 2, 300 + 52);
  const platform::Rect across = PlaceOf(texts[1]);
  EXPECT_NEAR((across.top + across.bottom) / 2.0, 150 + 26, 0.5);
}

TEST_F(PicturePaint, LeadsToTheEdgeOfACircle) {
  Picture picture;
  PictureDimension d{DimensionWay::Diameter, 100, 100};
  d.radius = 30;
  AddDimension(picture, d);
  const Calls calls = Paint(picture, Plain());
  const auto lines = Segments(Only(calls, "PaintSegments")[0]);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_NEAR(std::hypot(lines[0][0] - 100, lines[0][1] - 100), 30, 1e-4);
  EXPECT_GT(lines[0][0], 100);  // to the upper right
  EXPECT_LT(lines[0][1], 100);
  EXPECT_EQ(lines[1][2] - lines[1][0], 6);
  const Calls heads = Only(calls, "PaintPolygon");
  ASSERT_EQ(heads.size(), 1u);
  EXPECT_NEAR(heads[0].numbers[0] - 0.5, lines[0][0], 1e-4);
  EXPECT_EQ(PlaceOf(Only(calls, "PaintText")[0]).left, lines[1][2]);
}

TEST_F(PicturePaint, SaysThatSomethingIsMissing) {
  Picture picture;
  picture.full = true;
  EXPECT_EQ(Only(Paint(picture, Plain()), "PaintText")[0].text,
            u"Picture full. Not everything is shown.");
  picture.full = false;
  AddLine(picture, {0, 0}, {2e9, 0}, Ink::Outline);
  EXPECT_EQ(Only(Paint(picture, Plain()), "PaintText")[0].text,
            u"A value is out of range. Not everything is shown.");
}

class PictureOnPaper : public PicturePaint {
 protected:
  Picture picture;
  PictureView view;
  PictureOnPaper() {
    EXPECT_TRUE(OneToOne({4000, 6000, 300, 600}, false, {0, 0}, {1000, 5000}, view));
  }
};

TEST_F(PictureOnPaper, PaintsLinesInBlackAtTheirExactPlaces) {
  AddBox(picture, {1, 1, 1, 1}, Ink::Outline);
  AddCircle(picture, {2, 3}, 0.5, Ink::Selected, 1);
  const Calls calls = Paint(picture, view);
  EXPECT_TRUE(Painted());
  ASSERT_EQ(Names(calls),
            (std::vector<std::string>{"PushClip", "PaintPolyline", "PaintEllipse", "PopClip"}));
  EXPECT_EQ(calls[1].numbers, (std::vector<double>{1150, 4700, 1450, 4700, 1450, 4100, 1150, 4100,
                                                   1150, 4700, 2, 0, 0}));
  EXPECT_EQ(calls[1].colours[0], 0u);
  EXPECT_EQ(calls[2].numbers, (std::vector<double>{1600, 3200, 150, 300, 2, 0, 0}));
  EXPECT_EQ(calls[2].colours[0], 0u);
}

TEST_F(PictureOnPaper, LeavesOutWordsFillsAndWhatIsHidden) {
  AddFilledBox(picture, {1, 1, 1, 1}, Ink::Face);
  AddDisc(picture, {1, 1, 1, 1}, Ink::Opening);
  AddCircle(picture, {1, 1}, 1, Ink::Hidden);
  AddLabel(picture, {1, 1}, u"12");
  AddDimension(picture, {DimensionWay::Across, 0, 0, 1, 1});
  EXPECT_EQ(Names(Paint(picture, view)), (std::vector<std::string>{"PushClip", "PopClip"}));
}

// 0.08 inch: 24 pixels across at 300, 48 upright at 600.
TEST_F(PictureOnPaper, DrawsCrossesOfOneSize) {
  AddCross(picture, {1, 1}, Ink::Feature);
  const Calls calls = Only(Paint(picture, view), "PaintSegments");
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(Segments(calls[0]),
            (std::vector<std::vector<double>>{{1288, 4400, 1312, 4400}, {1300, 4376, 1300, 4424}}));
}

TEST_F(PictureOnPaper, KeepsArcsWithinATenthOfAPixel) {
  ASSERT_TRUE(OneToOne({9000, 9000, 600, 600}, false, {0, 0}, {0, 9000}, view));
  AddArc(picture, {0, 0, 10, 10, 0, 90}, Ink::Feature);
  const Calls lines = Only(Paint(picture, view), "PaintPolyline");
  ASSERT_EQ(lines.size(), 1u);
  const std::vector<double>& n = lines[0].numbers;
  for (std::size_t i = 0; i + 6 < n.size(); i += 2) {
    EXPECT_NEAR(std::hypot(n[i], 9000 - n[i + 1]), 6000, 1e-6);
    const double x = (n[i] + n[i + 2]) / 2;
    const double y = 9000 - (n[i + 1] + n[i + 3]) / 2;
    EXPECT_GE(std::hypot(x, y), 6000 - 0.1);
  }
}

TEST_F(PictureOnPaper, RefusesATemplateThatIsNotComplete) {
  AddBox(picture, {1, 1, 1, 1}, Ink::Outline);
  picture.full = true;
  EXPECT_TRUE(Paint(picture, view).empty());
  EXPECT_FALSE(Painted());
  picture.full = false;
  AddLine(picture, {0, 0}, {2e9, 0}, Ink::Outline);
  EXPECT_TRUE(Paint(picture, view).empty());
  EXPECT_FALSE(Painted());
}

}  // namespace
}  // namespace morva
