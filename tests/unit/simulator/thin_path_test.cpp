#include "simulator/thin_path.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <utility>
#include <vector>

#include "app/app_state.h"
#include "platform/timer.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

using platform::Segment;

constexpr platform::Rect kArea{0, 0, 1200, 800};
constexpr platform::Colour kFeedColour = 0x48D3B8;

// Level strokes from side to side, each a quarter of a pixel below the one before it.
std::vector<Segment> Strokes(int count, float down = 0) {
  std::vector<Segment> strokes;
  for (int i = 0; i < count; ++i) {
    const float y = down + static_cast<float>(i % 3000) * 0.25F;
    strokes.push_back({0, y, 1200, y});
  }
  return strokes;
}

int Thin(std::vector<Segment>& segments, std::int64_t mostWork) {
  const int count =
      ThinSegments(segments.data(), nullptr, static_cast<int>(segments.size()), kArea, mostWork);
  segments.resize(static_cast<std::size_t>(count));
  return count;
}

TEST(ThinPath, LeavesAPathWholeThatIsDrawnInTime) {
  std::vector<Segment> strokes = Strokes(100);
  strokes.push_back({-50, -50, -40, -40});  // outside
  strokes.push_back({1, 1, 1.5, 1.5});
  strokes.push_back({1.5, 1.5, 2, 2});
  // 128 for each, 1200 for each stroke and less than 1 for each of the short ones.
  EXPECT_EQ(Thin(strokes, 103 * 128 + 100 * 1200), 103);
}

TEST(ThinPath, KeepsAnEvenShareOfWhatIsTooMuch) {
  std::vector<Segment> strokes = Strokes(3000);
  const int kept = Thin(strokes, 1500 * (128 + 1200));
  EXPECT_NEAR(kept, 1500, 100);
  int high = 0;
  for (std::size_t i = 1; i < strokes.size(); ++i) {
    ASSERT_LT(strokes[i - 1].y0, strokes[i].y0);
    high += strokes[i].y0 < 375 ? 1 : 0;
  }
  EXPECT_NEAR(high, kept / 2, 50);
}

TEST(ThinPath, KeepsTheSameSegmentsInEveryFrame) {
  std::vector<Segment> here = Strokes(3000);
  std::vector<Segment> there = Strokes(3000, 20);
  ASSERT_EQ(Thin(here, 2'000'000), Thin(there, 2'000'000));
  ASSERT_LT(here.size(), 2000u);
  for (std::size_t i = 0; i < here.size(); ++i) {
    ASSERT_EQ(here[i].y0 + 20, there[i].y0);
  }
}

TEST(ThinPath, KeepsEverySideOfAContourThatComesAgain) {
  const Segment sides[4] = {
      {100, 100, 900, 100}, {900, 100, 900, 700}, {900, 700, 100, 700}, {100, 700, 100, 100}};
  std::vector<Segment> contour;
  for (int i = 0; i < 8192; ++i) contour.push_back(sides[i % 4]);
  ASSERT_LT(Thin(contour, 1'000'000), 2000);
  std::set<std::pair<float, float>> begins;
  for (const Segment& s : contour) begins.insert({s.x0, s.y0});
  EXPECT_EQ(begins.size(), 4u);
}

TEST(ThinPath, LeavesOutWhatLiesOutsideThePicture) {
  std::vector<Segment> segments;
  for (int i = 0; i < 1000; ++i) {
    segments.push_back({-300, 5, -200, 900});
    segments.push_back({10, 5, 20, 900});
    segments.push_back({NAN, 5, 20, 900});
  }
  // 808 pixels of each are seen or lie right beside the picture.
  EXPECT_EQ(Thin(segments, 1000 * (128 + 808)), 1000);
  for (const Segment& s : segments) ASSERT_EQ(s.x0, 10);
}

// A spiral in steps of 0.4 pixels.
TEST(ThinPath, JoinsShortPiecesWithoutAGap) {
  std::vector<Segment> steps;
  Segment s{600, 400, 600, 400};
  for (int i = 1; i <= 10000; ++i) {
    s.x0 = s.x1;
    s.y0 = s.y1;
    s.x1 = static_cast<float>(600 + 200 * std::cos(i * 0.002));
    s.y1 = static_cast<float>(400 + 200 * std::sin(i * 0.002));
    if (i == 1) s.x0 = s.x1;
    steps.push_back(s);
  }
  const Segment first = steps.front();
  const Segment last = steps.back();
  const int kept = Thin(steps, 10000 * 128 / 3);
  EXPECT_LT(kept, 10000 / 3);
  EXPECT_EQ(steps.front().x0, first.x0);
  EXPECT_EQ(steps.back().x1, last.x1);
  for (std::size_t i = 1; i < steps.size(); ++i) {
    ASSERT_EQ(steps[i - 1].x1, steps[i].x0);
    ASSERT_EQ(steps[i - 1].y1, steps[i].y0);
    // No piece strays from what it stands for.
    ASSERT_LT(std::hypot(steps[i].x1 - steps[i].x0, steps[i].y1 - steps[i].y0), 6);
  }
}

TEST(ThinPath, JoinsNoPiecesOfTwoShades) {
  std::vector<Segment> steps;
  std::vector<unsigned char> shades;
  for (int i = 0; i < 1000; ++i) {
    const auto x = static_cast<float>(i) * 0.5F;
    steps.push_back({x, 10, x + 0.5F, 10});
    shades.push_back(i < 501 ? 3 : 9);
  }
  const int count = ThinSegments(steps.data(), shades.data(), 1000, kArea, 1000 * 128 / 2);
  ASSERT_LT(count, 500);
  for (int i = 0; i < count; ++i) {
    const std::size_t at = static_cast<std::size_t>(i);
    ASSERT_EQ(shades[at], steps[at].x1 <= 250.5F ? 3 : 9) << steps[at].x0;
  }
}

class ThinView : public ViewTest {
 protected:
  ThinView() {
    for (int i = 0; i < kMaxMotionPoints; ++i) Feed(i % 2 * 10, i * 10.0 / kMaxMotionPoints, 0);
    SetViewIsometric();
  }
  static std::size_t Feeds() {
    std::size_t count = 0;
    for (const headless::DrawCall& call : Calls("PaintSegments", kFeedColour)) {
      count += (call.numbers.size() - 3) / 4;
    }
    return count;
  }
  static constexpr std::size_t kAll = kMaxMotionPoints - 1;
};

TEST_F(ThinView, IsThinWhileADragTurnsItAndWholeWhenItRests) {
  EXPECT_EQ(Feeds(), kAll);
  Press(300, 300);
  EXPECT_EQ(Feeds(), kAll);
  DragTo(320, 310);
  EXPECT_LT(Feeds(), kAll * 3 / 4);
  headless::Advance(149);
  EXPECT_LT(Feeds(), kAll * 3 / 4);
  headless::Advance(1);
  EXPECT_EQ(Feeds(), kAll);
  DragTo(330, 310);
  EXPECT_LT(Feeds(), kAll * 3 / 4);
  Release(330, 310);
  headless::Advance(150);
  EXPECT_EQ(Feeds(), kAll);
}

TEST_F(ThinView, WaitsForItsRestOnce) {
  Wheel(-1);
  headless::Advance(100);
  Wheel(-1);
  headless::Advance(149);
  EXPECT_LT(Feeds(), kAll * 3 / 4);
  EXPECT_TRUE(platform::TimerRuns(kViewToolpath, kTimerViewRest));
  headless::Advance(1);
  EXPECT_FALSE(platform::TimerRuns(kViewToolpath, kTimerViewRest));
}

TEST_F(ThinView, IsThinWhileKeysTheWheelOrTheCubeMoveIt) {
  const auto movesAndRests = [] {
    EXPECT_LT(Feeds(), kAll * 3 / 4);
    headless::Advance(1000);
    EXPECT_EQ(Feeds(), kAll);
  };
  Wheel(1);
  movesAndRests();
  Key(platform::kKeyLeft, false, true);
  movesAndRests();
  Key(platform::kKeyLeft, true);
  movesAndRests();
  Press(586 + 35, 76 + 35);  // a ring
  DragTo(586 + 35, 76 - 35);
  movesAndRests();
  Release(586 + 35, 76 - 35);
  Press(586, 76);  // a face
  Release(586, 76);
  headless::Advance(200);
  movesAndRests();
}

}  // namespace
}  // namespace morva
