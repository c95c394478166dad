// Cuts coloured by their depth: which colours, in which order, with which words.

#include "simulator/depth_shade.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "app/command_ids.h"
#include "app/palette.h"
#include "simulator/view_switches.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

// Relative luminance by the usual rule, near enough to tell lighter from darker.
double Light(platform::Colour colour) {
  return 0.2126 * platform::RedOf(colour) + 0.7152 * platform::GreenOf(colour) +
         0.0722 * platform::BlueOf(colour);
}

TEST(DepthShade, RunsFromDarkByTheColourOfCutsToLight) {
  EXPECT_EQ(ColourOfShade(0), kPathDeepest);
  EXPECT_EQ(ColourOfShade(kDepthShades / 2), 0x48D3B8u);
  EXPECT_EQ(ColourOfShade(kDepthShades - 1), kPathHighest);
  for (int i = 1; i < kDepthShades; ++i) {
    EXPECT_GT(Light(ColourOfShade(i)), Light(ColourOfShade(i - 1))) << i;
  }
}

TEST(DepthShade, PutsAFeedAtTheMiddleOfWhatLiesWithinTheDepths) {
  const CutDepths depths{true, -1, -0.2};
  EXPECT_EQ(ShadeBetween(depths, -1, -1), 0);
  EXPECT_EQ(ShadeBetween(depths, -0.2, -0.2), kDepthShades - 1);
  EXPECT_EQ(ShadeBetween(depths, -0.6, -0.6), kDepthShades / 2);
  EXPECT_EQ(ShadeBetween(depths, -1, -0.2), kDepthShades / 2);
  // A plunge from clearance counts from the highest cut on.
  EXPECT_EQ(ShadeBetween(depths, 5, -0.2), kDepthShades - 1);
  EXPECT_EQ(ShadeBetween(depths, 5, -1), kDepthShades / 2);
  const double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(ShadeBetween(depths, none, none), 0);
}

TEST(DepthShade, GivesOneDepthTheColourOfCuts) {
  EXPECT_EQ(ShadeBetween({true, -1, -1}, -1, -1), kDepthShades / 2);
  EXPECT_EQ(ShadeBetween({true, -1, -1 + 1e-9}, -1, -1), kDepthShades / 2);
  EXPECT_EQ(ShadeBetween({}, 3, 4), kDepthShades / 2);
}

class ShadedView : public ViewTest {
 protected:
  ShadedView() {
    LoadViewSettings();  // or the first draw would take the shades away
    ShadeByDepth(true);
  }
  // Squares at three depths with plunges between them; the first comes from Z 0.5.
  static void ThreeLevels() {
    RapidTo(0, 0, 0.5);
    for (const double z : {-0.1, -0.2, -0.3}) {
      Feed(0, 0, z);
      Feed(4, 0, z);
      Feed(4, 2, z);
      Feed(0, 2, z);
      Feed(0, 0, z);
    }
    SetViewIsometric();
  }
  // The colours of the batches of width 2, first to last.
  static std::vector<platform::Colour> Batches() {
    std::vector<platform::Colour> colours;
    for (const headless::DrawCall& call : headless::PaintOf(kViewToolpath)) {
      if (call.name != "PaintSegments" || call.colours[0] == kPathStock) continue;
      if (call.numbers[call.numbers.size() - 3] == 2) colours.push_back(call.colours[0]);
    }
    return colours;
  }
};

TEST_F(ShadedView, KnowsTheDepthsOfMovesAcross) {
  ThreeLevels();
  const CutDepths depths = DepthsOf(path);
  EXPECT_TRUE(depths.known);
  EXPECT_EQ(depths.low, -0.3);
  EXPECT_EQ(depths.high, -0.1);
}

TEST_F(ShadedView, TakesTheDepthsOfPlungesWhereNothingMovesAcross) {
  RapidTo(0, 0, 1);
  Feed(0, 0, -2);
  RapidTo(0, 0, 1);
  RapidTo(3, 0, 1);
  Feed(3, 0, -1);
  EXPECT_EQ(DepthsOf(path).low, -2);
  EXPECT_EQ(DepthsOf(path).high, -1);
  EXPECT_FALSE(DepthsOf(ghostPath).known);
}

TEST_F(ShadedView, LaysTheHighestLevelOnTopSeenFromAbove) {
  ThreeLevels();
  const std::vector<platform::Colour> colours = Batches();
  ASSERT_GE(colours.size(), 3u);
  EXPECT_EQ(colours.front(), kPathDeepest);
  EXPECT_EQ(colours.back(), kPathHighest);
  EXPECT_EQ(std::count(colours.begin(), colours.end(), kPathFeed), 1);
  view.elevationDegrees = -30;
  const std::vector<platform::Colour> below = Batches();
  EXPECT_EQ(below.front(), kPathHighest);
  EXPECT_EQ(below.back(), kPathDeepest);
}

TEST_F(ShadedView, DrawsEveryFeedOnceWhateverTheShade) {
  ThreeLevels();
  std::size_t shaded = 0;
  for (const headless::DrawCall& call : headless::PaintOf(kViewToolpath)) {
    if (call.name == "PaintSegments" && call.numbers[call.numbers.size() - 3] == 2) {
      shaded += call.numbers.size() / 4;
    }
  }
  EXPECT_EQ(shaded, 15u);
}

TEST_F(ShadedView, KeepsItsColoursWhileTheHeadMoves) {
  ThreeLevels();
  playback.headInUse = true;
  playback.playHead = 4;  // within the first level
  for (const platform::Colour colour : Batches()) EXPECT_EQ(colour, kPathHighest);
}

TEST_F(ShadedView, WritesTheHeightsBesideTheShades) {
  ThreeLevels();
  std::vector<std::u16string> words;
  int swatches = 0;
  for (const headless::DrawCall& call : headless::PaintOf(kViewToolpath)) {
    if (call.name == "PaintText") words.push_back(call.text);
    const bool shade = call.name == "FillArea" && call.numbers[2] - call.numbers[0] == 6;
    swatches += shade ? 1 : 0;
  }
  EXPECT_EQ(std::count(words.begin(), words.end(), u"Z -0.3000"), 1);
  EXPECT_EQ(std::count(words.begin(), words.end(), u"Z -0.1000 in"), 1);
  EXPECT_EQ(swatches, kDepthShades);
  ShadeByDepth(false);
  for (const headless::DrawCall& call : headless::PaintOf(kViewToolpath)) {
    EXPECT_NE(call.text, u"Z -0.3000");
  }
  EXPECT_EQ(Batches(), std::vector<platform::Colour>{kPathFeed});
}

class DenseView : public ShadedView {
 protected:
  DenseView() { ShadeByDepth(false); }
  // Squares one within the other, `apart` between them, at each of some depths.
  static void Pocket(double apart, int levels) {
    RapidTo(2, 1, 0.5);
    for (int level = 1; level <= levels; ++level) {
      for (double reach = apart; reach < 1; reach += apart) {
        const double z = -0.05 * level;
        Feed(2 - reach, 1 - reach, z);
        Feed(2 + reach, 1 - reach, z);
        Feed(2 + reach, 1 + reach, z);
        Feed(2 - reach, 1 + reach, z);
        Feed(2 - reach, 1 - reach, z);
      }
    }
    SetViewIsometric();
  }
};

TEST(DepthShade, TonesRunFromTheColourOfCutsDownWithTheDepth) {
  EXPECT_EQ(ToneOfShade(kDepthShades - 1, 1), kPathFeed);
  EXPECT_EQ(ToneOfShade(0, 1), kPathFeedLow);
  EXPECT_EQ(ToneOfShade(0, 0), kPathFeed);
  for (int i = 1; i < kDepthShades; ++i) {
    EXPECT_GT(Light(ToneOfShade(i, 1)), Light(ToneOfShade(i - 1, 1))) << i;
  }
  EXPECT_GT(Light(ToneOfShade(3, 0.5)), Light(ToneOfShade(3, 1)));
}

TEST(DepthShade, TakesFourTonesForAllWhileAPictureMoves) {
  EXPECT_EQ(CoarseShade(0), 0);
  EXPECT_EQ(CoarseShade(kDepthShades - 1), kDepthShades - 1);
  int steps = 0;
  for (int i = 1; i < kDepthShades; ++i) {
    EXPECT_GE(CoarseShade(i), CoarseShade(i - 1));
    steps += CoarseShade(i) != CoarseShade(i - 1) ? 1 : 0;
  }
  EXPECT_EQ(steps, kCoarseShades - 1);
}

TEST_F(DenseView, LeavesLinesThatStandApartInOneColour) {
  Pocket(0.25, 2);
  EXPECT_EQ(Batches(), std::vector<platform::Colour>{kPathFeed});
}

TEST_F(DenseView, DarkensTheDeeperCutsOfLinesThatRunTogether) {
  Pocket(0.02, 6);
  std::vector<platform::Colour> colours = Batches();
  ASSERT_EQ(colours.size(), 11u);  // six levels and the plunges between them
  EXPECT_EQ(colours.front(), kPathFeedLow);
  EXPECT_EQ(colours.back(), kPathFeed);
  EXPECT_TRUE(std::is_sorted(colours.begin(), colours.end(),
                             [](auto a, auto b) { return Light(a) < Light(b); }));
  // What lies nearest to the eye is the light one from below too.
  view.elevationDegrees = -30;
  colours = Batches();
  EXPECT_EQ(colours.front(), kPathFeedLow);
  EXPECT_EQ(colours.back(), kPathFeed);
}

TEST_F(DenseView, ShowsOneColourAgainWhereTheLinesStandApart) {
  Pocket(0.02, 6);
  ASSERT_GT(Batches().size(), 1u);
  view.zoom = 12;
  EXPECT_EQ(Batches(), std::vector<platform::Colour>{kPathFeed});
}

TEST_F(DenseView, HasNoTonesForOneDepth) {
  Pocket(0.01, 1);
  EXPECT_EQ(Batches(), std::vector<platform::Colour>{kPathFeed});
}

TEST_F(DenseView, LeavesTheColoursOfTheLayerAsTheyAre) {
  Pocket(0.02, 6);
  ShadeByDepth(true);
  const std::vector<platform::Colour> colours = Batches();
  EXPECT_EQ(colours.front(), kPathDeepest);
  EXPECT_EQ(colours.back(), kPathHighest);
}

TEST_F(DenseView, KeepsItsTonesWhileTheHeadMoves) {
  Pocket(0.02, 6);
  playback.headInUse = true;
  playback.playHead = 60;  // few lines of the first level
  EXPECT_EQ(Batches(), std::vector<platform::Colour>{kPathFeed});
  playback.playHead = path.count - 1;
  EXPECT_EQ(Batches().size(), 11u);
}

TEST_F(DenseView, HasFourTonesAtMostWhileItPlays) {
  Pocket(0.02, 6);
  playback.playing = true;
  const std::vector<platform::Colour> colours = Batches();
  EXPECT_EQ(colours.size(), static_cast<std::size_t>(kCoarseShades));
  EXPECT_EQ(colours.front(), kPathFeedLow);
  EXPECT_EQ(colours.back(), kPathFeed);
}

TEST_F(DenseView, MeasuresALongPathBySomeOfItsPoints) {
  Pocket(0.002, 12);
  ASSERT_GT(path.count, 16384);
  EXPECT_EQ(Batches().front(), kPathFeedLow);
  EXPECT_EQ(Batches().back(), kPathFeed);
  // As many points of lines that stand apart.
  ResetSimulator();
  RapidTo(0, 0, 0.5);
  for (int i = 0; i < 20000; ++i) Feed(4.0 * i / 20000, i % 2 * 1e-4, -0.1 - i % 4000 * 1e-5);
  SetViewIsometric();
  EXPECT_EQ(Batches(), std::vector<platform::Colour>{kPathFeed});
}

TEST_F(ShadedView, HoldsOverARestart) {
  ShadeByDepth(false);
  headless::QueuePick(kIdLayerDepthShade);
  ShowLayersMenu();
  EXPECT_TRUE(switches.shadeByDepth);
  ResetView();
  ResetSwitches();
  EXPECT_FALSE(switches.shadeByDepth);
  LoadViewSettings();
  EXPECT_TRUE(switches.shadeByDepth);
}

TEST_F(ShadedView, DrawsTheCubeBelowThePath) {
  ThreeLevels();
  int letters = -1, lastFeed = -1, i = 0;
  for (const headless::DrawCall& call : headless::PaintOf(kViewToolpath)) {
    if (call.name == "PaintSegments" && call.colours[0] == kCubeLetter) letters = i;
    if (call.name == "PaintSegments" && call.colours[0] == kPathHighest) lastFeed = i;
    ++i;
  }
  ASSERT_GE(letters, 0);
  EXPECT_LT(letters, lastFeed);
}

}  // namespace
}  // namespace morva
