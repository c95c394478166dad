#include "shell/speed_slider.h"

#include <gtest/gtest.h>

#include "app/hover.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "unit/shell/main_stage.h"

namespace morva {
namespace {

// Left half (3x + 55) / 110, right half (6x - 605) / 110 + 3, both in whole numbers: the first
// half changes at 18.3, 55 and 91.7 pixels, the second at 119.2 and every 18.3 from there.
TEST(SpeedTrack, ChoosesASpeedByThePlaceOfTheThumb) {
  const struct {
    int x, index;
  } rows[] = {{-5, 0},  {0, 0},   {18, 0},  {19, 1},  {54, 1},  {55, 2},  {91, 2},  {92, 3},
              {110, 3}, {119, 3}, {120, 4}, {137, 4}, {138, 5}, {156, 6}, {174, 6}, {175, 7},
              {192, 7}, {193, 8}, {210, 8}, {211, 9}, {220, 9}, {300, 9}};
  for (const auto& row : rows) EXPECT_EQ(SpeedIndexAt(row.x), row.index) << row.x;
}

TEST(SpeedTrack, StandsOneTimesInTheMiddleAndGivesEveryThumbItsSpeedBack) {
  EXPECT_EQ(ThumbPlace(3), 110);
  EXPECT_EQ(ThumbPlace(0), 0);
  EXPECT_EQ(ThumbPlace(9), 220);
  for (int i = 0; i < kSpeedCount; ++i) EXPECT_EQ(SpeedIndexAt(ThumbPlace(i)), i);
}

class SpeedSlider : public shell_test::MainStage {};

TEST_F(SpeedSlider, FollowsPointerAndKeys) {
  platform::PointerEvent press;
  press.action = platform::PointerAction::Press;
  press.button = platform::PointerButton::Left;
  press.x = 8 + 220;
  press.y = 10;
  ASSERT_TRUE(headless::Pointer(kIdSpeedSlider, press));
  EXPECT_EQ(playback.speedIndex, 9);
  ASSERT_TRUE(headless::Focus(kIdSpeedSlider));
  headless::PressKey({platform::kKeyLeft});
  EXPECT_EQ(playback.speedIndex, 8);
  headless::PressKey({platform::kKeyHome});
  EXPECT_EQ(playback.speedIndex, 0);
  headless::PressKey({platform::kKeyDown});
  EXPECT_EQ(playback.speedIndex, 0);
  EXPECT_TRUE(Paints(headless::PaintOf(kIdSpeedSlider), u"0.125x", kMainText));
}

TEST_F(SpeedSlider, ShowsAndSetsTheSpeedOfThePathThatIsShown) {
  SetPlaySpeed(5);
  ShowPathOf(PathOwner::Builder);
  EXPECT_TRUE(Paints(headless::PaintOf(kIdSpeedSlider), u"1x", kMainText));
  ASSERT_TRUE(headless::Focus(kIdSpeedSlider));
  headless::PressKey({platform::kKeyLeft});
  EXPECT_EQ(OwnedBy(PathOwner::Builder).play.speedIndex, 2);
  EXPECT_EQ(playback.speedIndex, 5);
  ShowPathOf(PathOwner::Program);
  EXPECT_TRUE(Paints(headless::PaintOf(kIdSpeedSlider), u"4x", kMainText));
}

TEST_F(SpeedSlider, APressTellsTheSpeedADragOnlyChangesOfIt) {
  platform::PointerEvent event;
  event.action = platform::PointerAction::Press;
  event.button = platform::PointerButton::Left;
  event.x = 8 + 110;
  event.y = 10;
  headless::Pointer(kIdSpeedSlider, event);
  EXPECT_EQ(TextOf(kIdStatusLine),
            u"Simulation speed: 1x. Drag left to slow down, right to speed up.");
  ShowStatus(u"");
  event.action = platform::PointerAction::Move;
  event.button = platform::PointerButton::None;
  event.leftDown = true;
  event.x = 8 + 112;
  headless::Pointer(kIdSpeedSlider, event);
  EXPECT_EQ(TextOf(kIdStatusLine), u"");
  event.x = 8 + 300;
  headless::Pointer(kIdSpeedSlider, event);
  EXPECT_EQ(TextOf(kIdStatusLine),
            u"Simulation speed: 64x. Drag left to slow down, right to speed up.");
}

TEST_F(SpeedSlider, TellsItsSpeedToWhoDoesNotSeeIt) {
  RefreshSpeedSlider();
  EXPECT_EQ(platform::AccessibleName(kIdSpeedSlider), u"Simulation speed");
  EXPECT_EQ(headless::ToolTipOf(kIdSpeedSlider),
            u"Simulation speed: 1x. Drag left to slow down, right to speed up.");
  SetPlaySpeed(0);
  RefreshSpeedSlider();
  EXPECT_EQ(headless::ToolTipOf(kIdSpeedSlider),
            u"Simulation speed: 0.125x. Drag left to slow down, right to speed up.");
}

TEST_F(SpeedSlider, SharesTheHintOfThePlaybackBar) {
  ResetHover();
  const std::u16string hint =
      u"Playback: start | previous operation | rewind | play/pause | fast forward | next "
      u"operation | end | stop. Slider: slower / faster simulation (0.125x\u201364x); center = "
      u"1x.";
  for (int id = kIdPlayStart; id <= kIdSpeedSlider; ++id) {
    headless::MovePointerOver(id);
    HoverTick();
    HoverTick();
    EXPECT_EQ(TextOf(kIdStatusLine), hint) << id;
    headless::MovePointerOver(kIdNew);
    HoverTick();
    EXPECT_NE(TextOf(kIdStatusLine), hint);
  }
  ResetHover();
}

}  // namespace
}  // namespace morva
