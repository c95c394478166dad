// Pictures made at random: the fit against what is painted, and clicks against the nearest of the
// painted lines, found by walking along all of them.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "forms/picture.h"
#include "platform/headless/headless.h"
#include "platform/window.h"
#include "support/stage.h"

namespace morva {
namespace {

constexpr platform::Rect kArea{20, 10, 620, 410};
constexpr int kMarks = 24;
constexpr double kHalfPixel = 0.51;
constexpr double kChordError = 0.21;  // pixels, the rounding of the canvas included

class RandomPicture : public support::Stage {
 protected:
  std::mt19937 random{20240607};

  RandomPicture() {
    static platform::Events events;
    events = platform::Events();
    events.paint = [](int, platform::Canvas& canvas) { PaintPicture(canvas, *shown_, *view_); };
    platform::ListenTo(&events);
  }

  double Number(double least, double most) {
    return std::uniform_real_distribution<double>(least, most)(random);
  }

  // One mark of any kind, its lines in one ink.
  void AddAny(Picture& picture, int part) {
    const double x = Number(-5, 5);
    const double y = Number(-5, 5);
    switch (random() % 5) {
      case 0:
        AddLine(picture, {x, y}, {Number(-5, 5), Number(-5, 5)}, Ink::Feature, part);
        return;
      case 1:
        AddCircle(picture, {x, y}, Number(0, 2), Ink::Feature, part);
        return;
      case 2:
        AddArc(picture, {x, y, Number(0, 2), Number(0, 2), Number(-720, 720), Number(-360, 360)},
               Ink::Feature, part);
        return;
      case 3:
        AddBox(picture, {x, y, Number(0, 3), Number(0, 2), Number(-360, 360), Number(0, 1)},
               Ink::Feature, part);
        return;
      default: {
        const PicturePoint path[] = {{x, y, Number(-3, 3)},
                                     {Number(-5, 5), Number(-5, 5), Number(-0.5, 0.5)},
                                     {Number(-5, 5), Number(-5, 5)}};
        AddLoop(picture, path, Ink::Feature, part);
      }
    }
  }

  // The lines that a picture paints, four numbers each.
  static std::vector<double> LinesOf(Picture& picture, const PictureView& view) {
    shown_ = &picture;
    view_ = &view;
    std::vector<double> lines;
    for (const headless::DrawCall& call : headless::PaintOf(platform::kMainWindow)) {
      if (call.name != "PaintSegments") continue;
      const double shift = call.numbers.back() != 0 ? 0.5 : 0;
      for (std::size_t i = 0; i + 3 < call.numbers.size(); ++i) {
        lines.push_back(call.numbers[i] - shift);
      }
    }
    return lines;
  }

  static double Nearest(const std::vector<double>& lines, double x, double y) {
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i + 3 < lines.size(); i += 4) {
      const double length = std::hypot(lines[i + 2] - lines[i], lines[i + 3] - lines[i + 1]);
      const int steps = static_cast<int>(length * 20) + 1;
      for (int k = 0; k <= steps; ++k) {
        const double t = static_cast<double>(k) / steps;
        least = std::min(least, std::hypot(lines[i] + (lines[i + 2] - lines[i]) * t - x,
                                           lines[i + 1] + (lines[i + 3] - lines[i + 1]) * t - y));
      }
    }
    return least;
  }

 private:
  static inline Picture* shown_ = nullptr;
  static inline const PictureView* view_ = nullptr;
};

TEST_F(RandomPicture, FillsTheInsideOfItsMarginAndNoMore) {
  for (int round = 0; round < 60; ++round) {
    Picture picture;
    for (int i = 0; i < kMarks; ++i) AddAny(picture, i);
    const PictureView view = FitPicture(picture, kArea);
    const std::vector<double> lines = LinesOf(picture, view);
    double least[2] = {1e9, 1e9};
    double most[2] = {-1e9, -1e9};
    for (std::size_t i = 0; i < lines.size(); ++i) {
      least[i % 2] = std::min(least[i % 2], lines[i]);
      most[i % 2] = std::max(most[i % 2], lines[i]);
    }
    // Lines along an axis are moved into a row of pixels.
    EXPECT_GE(least[0], kArea.left + 14 - kHalfPixel);
    EXPECT_LE(most[0], kArea.right - 14 + kHalfPixel);
    EXPECT_GE(least[1], kArea.top + 14 - kHalfPixel);
    EXPECT_LE(most[1], kArea.bottom - 14 + kHalfPixel);
    // One of the sides is filled, but for the height of a chord.
    const double spare = std::min(600 - 28 - (most[0] - least[0]), 400 - 28 - (most[1] - least[1]));
    EXPECT_LE(spare, 2 * kChordError) << round;
  }
}

TEST_F(RandomPicture, GivesAClickTheNearestOfTheLinesThatArePainted) {
  int found = 0;
  for (int round = 0; round < 12; ++round) {
    Picture picture;
    std::vector<std::vector<double>> lines;
    const std::mt19937 before = random;
    for (int i = 0; i < kMarks; ++i) AddAny(picture, i);
    const PictureView view = FitPicture(picture, kArea);
    random = before;
    for (int i = 0; i < kMarks; ++i) {
      Picture alone;
      AddAny(alone, i);
      lines.push_back(LinesOf(alone, view));
    }
    for (int click = 0; click < 25; ++click) {
      const int x = static_cast<int>(Number(kArea.left, kArea.right));
      const int y = static_cast<int>(Number(kArea.top, kArea.bottom));
      std::vector<double> distances;
      for (const std::vector<double>& of : lines) distances.push_back(Nearest(of, x, y));
      const double least = *std::min_element(distances.begin(), distances.end());
      const int part = PartAt(picture, view, x, y);
      // A level or upright line is painted in the middle of its row, half a pixel off at most.
      const double slack = kChordError + 0.5 + 0.05;
      if (part == kNoPart) {
        EXPECT_GT(least, kPictureReach - slack) << round << ", " << click;
      } else {
        ++found;
        const double distance = distances[static_cast<std::size_t>(part)];
        EXPECT_LE(distance, least + slack) << round << ", " << click;
        EXPECT_LE(distance, kPictureReach + slack) << round << ", " << click;
      }
    }
  }
  EXPECT_GT(found, 40);
}

// Numbers of any size and views of any scale: nothing is expected but an orderly end.
TEST_F(RandomPicture, EndsInOrderWhateverTheNumbersAre) {
  for (int round = 0; round < 300; ++round) {
    const auto wild = [this] {
      return Number(-1, 1) * std::pow(10.0, static_cast<int>(random() % 24) - 12);
    };
    Picture picture;
    for (int i = 0; i < 6; ++i) {
      const PicturePoint path[] = {{wild(), wild(), wild()}, {wild(), wild(), wild()}, {0, 0}};
      AddPath(picture, path, static_cast<Ink>(random() % kInks), i);
      AddFill(picture, path, Ink::Face, i);
      AddArc(picture, {wild(), wild(), wild(), wild(), wild(), wild()}, Ink::Construction, i);
      AddBox(picture, {wild(), wild(), wild(), wild(), wild(), wild()}, Ink::Feature, i);
      AddLabel(picture, {wild(), wild()}, u"label",
               {static_cast<LabelSide>(random() % 5), wild(), Ink::Dimension, i, i, wild(), 0});
      PictureDimension d{
          static_cast<DimensionWay>(random() % 5), wild(),           wild(), wild(), wild(), wild(),
          static_cast<int>(random() % 60) - 30,    random() % 2 == 0};
      AddDimension(picture, d, {LabelSide::On, 0, Ink::Dimension, i});
    }
    PictureView view = FitPicture(picture, {0, 0, static_cast<int>(random() % 900), 300});
    EXPECT_TRUE(IsSound(view));
    LinesOf(picture, view);
    PartAt(picture, view, 100, 100);
    view.scaleX = std::fabs(wild());
    view.originY = wild();
    LinesOf(picture, view);
    PartAt(picture, view, 100, 100);
    LabelAt(picture, view, 100, 100);
    if (CentreOnPaper(picture, {5100, 6600, 600, 600}, view)) LinesOf(picture, view);
    EXPECT_FALSE(PictureText(picture).empty());
  }
}

}  // namespace
}  // namespace morva
