// The tables of a picture, full and one beyond.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/limits.h"
#include "forms/picture.h"
#include "forms/picture_parts.h"

namespace morva {
namespace {

TEST(PictureLimits, OneMarkTooManyIsLeftOutAndToldOf) {
  static_assert(kMaxPictureMarks == 32768);
  Picture picture;
  for (int i = 0; i < kMaxPictureMarks; ++i) {
    ASSERT_TRUE(AddCross(picture, {1, 1}, Ink::Feature));
  }
  EXPECT_FALSE(picture.full);
  EXPECT_FALSE(AddCross(picture, {1, 1}, Ink::Feature));
  EXPECT_TRUE(picture.full);
  EXPECT_EQ(picture.marks.size(), 32768u);
  const std::u16string text = PictureText(picture);
  EXPECT_EQ(text.substr(text.size() - 6), u"\nfull\n");
  ClearPicture(picture, false);
  EXPECT_FALSE(picture.full);
  EXPECT_TRUE(AddCross(picture, {1, 1}, Ink::Feature));
  picture.marks.resize(kMaxPictureMarks);
  NextLayer(picture);
  EXPECT_TRUE(picture.full);
}

TEST(PictureLimits, APathThatDoesNotFitWholeIsLeftOutWhole) {
  static_assert(kMaxPicturePoints == 131072);
  Picture picture;
  const std::vector<PicturePoint> half(65536, PicturePoint{1, 1});
  ASSERT_TRUE(AddPath(picture, half, Ink::Outline));
  ASSERT_TRUE(AddLoop(picture, std::span(half).first(65535), Ink::Outline));
  EXPECT_FALSE(AddLine(picture, {0, 0}, {1, 1}, Ink::Outline));
  EXPECT_TRUE(picture.full);
  EXPECT_EQ(picture.points.size(), 131071u);
  EXPECT_TRUE(AddCross(picture, {0, 0}, Ink::Outline));  // one point has room still
  EXPECT_FALSE(AddCross(picture, {0, 0}, Ink::Outline));
  EXPECT_EQ(picture.marks.size(), 3u);
}

TEST(PictureLimits, OneArcTooManyIsLeftOut) {
  static_assert(kMaxPictureArcs == 32768);
  Picture picture;
  for (int i = 0; i < kMaxPictureArcs; ++i) {
    ASSERT_TRUE(AddCircle(picture, {1, 1}, 1, Ink::Feature));
  }
  EXPECT_FALSE(picture.full);
  EXPECT_FALSE(AddDisc(picture, {1, 1, 1, 1}, Ink::Face));
  EXPECT_TRUE(picture.full);
  EXPECT_EQ(picture.arcs.size(), 32768u);
}

TEST(PictureLimits, FourHundredFeaturesOf64SlotsFit) {
  Picture picture;
  for (int i = 0; i < 400; ++i) {
    AddCross(picture, {1, 1}, Ink::Feature, i);
    AddFilledBox(picture, {1, 1, 2, 1}, Ink::Opening, i);
    for (int k = 0; k < 64; ++k) ASSERT_TRUE(AddBox(picture, {1, 1, 3, 1, 30, 1}, Ink::Feature, i));
  }
  EXPECT_FALSE(picture.full);
}

TEST(PictureLimits, OneLabelTooManyIsLeftOutWithItsDimension) {
  static_assert(kMaxPictureLabels == 1400);
  Picture picture;
  for (int i = 0; i < kMaxPictureLabels; ++i) {
    ASSERT_EQ(i % 2 ? AddLabel(picture, {0, 0}, u"one") : AddDimension(picture, {}), i);
  }
  EXPECT_FALSE(picture.full);
  EXPECT_EQ(AddDimension(picture, {}), -1);
  EXPECT_TRUE(picture.full);
  EXPECT_EQ(AddLabel(picture, {0, 0}, u"one"), -1);
  EXPECT_EQ(picture.labels.size(), 1400u);
  EXPECT_EQ(picture.dimensions.size(), 700u);
}

TEST(PictureLimits, WordsOfALabelHave31UnitsAndLongerOnesShowThatTheyAreCut) {
  static_assert(kPictureLabelUnits == 32);
  Picture picture;
  const auto kept = [&picture](const std::u16string& words) {
    const int label = AddLabel(picture, {0, 0}, words);
    return std::u16string(picture.labels[static_cast<std::size_t>(label)].words);
  };
  EXPECT_EQ(kept(std::u16string(31, u'w')), std::u16string(31, u'w'));
  EXPECT_EQ(kept(std::u16string(32, u'w')), std::u16string(30, u'w') + u'\u2026');
  // A character of two units is not cut in half.
  EXPECT_EQ(kept(std::u16string(29, u'w') + u"\U0001F529" + u"ww"),
            std::u16string(29, u'w') + u'\u2026');
  EXPECT_FALSE(picture.full);
}

// A chord stays within a fifth of a pixel: 2 pi / sqrt(8 * 0.2 / radius) chords, up to the limit.
TEST(PictureLimits, AnArcHas4096Chords) {
  static_assert(kMaxArcChords == 4096);
  const struct {
    double radius;
    std::size_t chords;
  } kCases[] = {{670000, 4066}, {679900, 4096}, {700000, 4096}, {1e8, 4096}};
  PictureView view;
  view.scaleX = view.scaleY = 1;
  for (const auto& each : kCases) {
    Picture picture;
    ASSERT_TRUE(AddCircle(picture, {0, 0}, each.radius, Ink::Feature));
    Chain chain;
    ChainOf(picture, picture.marks[0], view, chain);
    EXPECT_EQ(chain.points.size(), each.chords + 1) << each.radius;
  }
}

}  // namespace
}  // namespace morva
