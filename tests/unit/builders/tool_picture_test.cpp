// Pictures of tools: which tools have one, and that what is drawn has the tool's sizes.

#include "builders/tools/tool_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "platform/file.h"
#include "text/codetext.h"

namespace morva {
namespace {

ToolRecord Cutter(const char16_t* type) {
  ToolRecord tool;
  CopyBounded(tool.type, kToolTypeUnits, type);
  tool.diameter = 0.5;
  tool.flutes = 4;
  tool.gaugeLength = 3;
  tool.stickout = 1.5;
  return tool;
}

std::string DimensionsOf(const Picture& picture) {
  std::string words;
  for (const PictureDimension& dimension : picture.dimensions) {
    words += platform::ToUtf8(
        std::u16string(picture.labels[static_cast<std::size_t>(dimension.label)].words));
    words += "|";
  }
  return words;
}

TEST(ToolPicture, WantsPositiveSizesAndUpTo64Flutes) {
  EXPECT_TRUE(HasToolPicture(Cutter(u"End Mill")));
  const auto broken = [](auto change) {
    ToolRecord tool = Cutter(u"End Mill");
    change(tool);
    Picture picture;
    DrawTool(tool, false, picture);
    DrawToolEnd(tool, false, picture);
    return !HasToolPicture(tool) && picture.marks.empty() && picture.labels.empty();
  };
  EXPECT_TRUE(broken([](ToolRecord& t) { t.diameter = 0; }));
  EXPECT_TRUE(broken([](ToolRecord& t) { t.gaugeLength = -3; }));
  EXPECT_TRUE(broken([](ToolRecord& t) { t.stickout = 0; }));
  EXPECT_TRUE(broken([](ToolRecord& t) { t.stickout = 3.001; }));
  EXPECT_TRUE(broken([](ToolRecord& t) { t.flutes = 0; }));
  EXPECT_TRUE(broken([](ToolRecord& t) { t.flutes = 65; }));
  EXPECT_FALSE(broken([](ToolRecord& t) { t.stickout = 3; }));
}

TEST(ToolPicture, MeasuresGaugeLengthStickoutAndDiameter) {
  for (const char16_t* type : ToolTypes()) {
    Picture picture;
    ClearPicture(picture, false);
    DrawTool(Cutter(type), false, picture);
    EXPECT_EQ(DimensionsOf(picture), "3.000|1.500|\u00D8 0.500|") << platform::ToUtf8(type);
    ClearPicture(picture, true);
    DrawTool(Cutter(type), true, picture);
    EXPECT_EQ(DimensionsOf(picture), "76.20|38.10|\u00D8 12.70|") << platform::ToUtf8(type);
    EXPECT_FALSE(picture.full || picture.unsound);
  }
}

TEST(ToolPicture, ReachesFromTheTipToAboveTheGaugeLine) {
  for (const char16_t* type : ToolTypes()) {
    Picture picture;
    DrawTool(Cutter(type), false, picture);
    PictureBounds bounds;
    ASSERT_TRUE(BoundsOfPicture(picture, bounds));
    EXPECT_GT(bounds.maxY, 3);
    EXPECT_LE(bounds.minY, 0);
    EXPECT_GT(bounds.minY, -0.1) << platform::ToUtf8(type);
  }
}

int FeatureMarks(const Picture& picture) {
  return static_cast<int>(
      std::count_if(picture.marks.begin(), picture.marks.end(),
                    [](const PictureMark& mark) { return mark.ink == Ink::Feature; }));
}

TEST(ToolEnd, HasAnEdgeForEachFlute) {
  for (const int flutes : {1, 2, 3, 7, 64}) {
    ToolRecord tool = Cutter(u"End Mill");
    tool.flutes = flutes;
    Picture picture;
    DrawToolEnd(tool, false, picture);
    EXPECT_EQ(FeatureMarks(picture), flutes);
    EXPECT_EQ(std::u16string(picture.labels.back().words),
              IntegerText(flutes) + (flutes == 1 ? u" FLUTE" : u" FLUTES"));
    EXPECT_FALSE(picture.full || picture.unsound);
    tool = Cutter(u"Face Mill");
    tool.flutes = flutes;
    ClearPicture(picture, false);
    DrawToolEnd(tool, false, picture);
    EXPECT_EQ(FeatureMarks(picture), flutes);
  }
}

TEST(ToolEnd, StaysInsideItsDiameter) {
  for (const char16_t* type : ToolTypes()) {
    Picture picture;
    DrawToolEnd(Cutter(type), false, picture);
    for (const PicturePoint& point : picture.points) {
      EXPECT_LE(std::hypot(point.x, point.y), 0.25 * 1.05) << platform::ToUtf8(type);
    }
  }
}

TEST(ToolPicture, IsBoundedForAnyTool) {
  for (const char16_t* type : ToolTypes()) {
    for (const double diameter : {1e-4, 0.01, 40.0, 999999.0}) {
      for (const double stickout : {1e-4, 12.0, 999999.0}) {
        ToolRecord tool = Cutter(type);
        tool.diameter = diameter;
        tool.stickout = stickout;
        tool.gaugeLength = stickout * (1 + 1e-3);
        tool.flutes = 64;
        Picture picture;
        DrawTool(tool, true, picture);
        DrawToolEnd(tool, true, picture);
        EXPECT_FALSE(picture.full || picture.unsound)
            << platform::ToUtf8(type) << " " << diameter << " " << stickout;
      }
    }
  }
}

}  // namespace
}  // namespace morva
