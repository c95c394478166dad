// Words can be read and controls be seen: the contrast of what is drawn with its ground, 1 for two
// equal colours and 21 for black on white.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <functional>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "house/contrast_pairs.h"
#include "house/sources.h"
#include "platform/canvas.h"
#include "platform/control.h"
#include "platform/headless/headless.h"
#include "platform/headless/headless_internal.h"
#include "shell/modes.h"
#include "support/workbench.h"

namespace {

using headless::DrawCall;
using platform::Colour;

constexpr double kLeastOfText = 4.5;
constexpr double kLeastOfLines = 3.0;

double Linear(unsigned part) {
  const double value = part / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(Colour colour) {
  return 0.2126 * Linear(colour >> 16 & 0xFF) + 0.7152 * Linear(colour >> 8 & 0xFF) +
         0.0722 * Linear(colour & 0xFF);
}

double Contrast(Colour a, Colour b) {
  const double light = std::max(Luminance(a), Luminance(b));
  const double dark = std::min(Luminance(a), Luminance(b));
  return (light + 0.05) / (dark + 0.05);
}

std::string Written(Colour colour) {
  char digits[8];
  std::snprintf(digits, sizeof digits, "%06X", static_cast<unsigned>(colour));
  return digits;
}

void ExpectContrast(const std::vector<contrast::Group>& groups, double least) {
  for (const contrast::Group& group : groups) {
    for (const Colour colour : group.colours) {
      for (const Colour ground : group.grounds) {
        EXPECT_GE(Contrast(colour, ground), least) << Written(colour) << " on " << Written(ground);
      }
    }
  }
}

// Ratios that tables print: black on white, and two greys beside the bound for text.
TEST(Contrast, IsMeasuredAsTheTablesOfItPrintIt) {
  EXPECT_DOUBLE_EQ(Contrast(0x000000, 0xFFFFFF), 21.0);
  EXPECT_DOUBLE_EQ(Contrast(0x0089B2, 0x0089B2), 1.0);
  EXPECT_NEAR(Contrast(0x767676, 0xFFFFFF), 4.54, 0.005);
  EXPECT_NEAR(Contrast(0xFFFFFF, 0x777777), 4.48, 0.005);
  EXPECT_NEAR(Contrast(0xFF0000, 0xFFFFFF), 4.00, 0.005);
}

TEST(Contrast, LetsEveryTextBeRead) { ExpectContrast(contrast::kTexts, kLeastOfText); }

TEST(Contrast, ShowsEveryOutlineAndEveryLine) { ExpectContrast(contrast::kLines, kLeastOfLines); }

TEST(Contrast, IsAskedOfEveryColourOfThePalette) {
  const std::string pairs = house::ReadText(house::kSource / "tests/house/contrast_pairs.h");
  static const std::regex kName("inline constexpr platform::Colour (k\\w+)");
  int names = 0;
  for (const std::string& line :
       house::Lines(house::CodeOf(house::ReadText(house::kSource / "src/app/palette.h")))) {
    std::smatch found;
    if (!std::regex_search(line, found, kName)) continue;
    ++names;
    EXPECT_TRUE(std::regex_search(pairs, std::regex("\\b" + found[1].str() + "\\b")))
        << found[1] << " stands in no table of pairs";
  }
  EXPECT_GT(names, 100);
}

// The whole program painted, mode for mode: which colour words have, and what lies below them.
using Pairs = std::set<std::pair<Colour, Colour>>;

bool Inside(const std::vector<double>& points, double x, double y, std::size_t count) {
  bool inside = false;
  for (std::size_t i = 0, before = count - 1; i < count; before = i++) {
    const double xi = points[2 * i], yi = points[2 * i + 1];
    const double xb = points[2 * before], yb = points[2 * before + 1];
    if ((yi > y) != (yb > y) && x < (xb - xi) * (y - yi) / (yb - yi) + xi) inside = !inside;
  }
  return inside;
}

// What the first `end` calls leave at a place: one colour, the two ends of a gradient, or nothing.
std::vector<Colour> GroundAt(const std::vector<DrawCall>& calls, std::size_t end, double x,
                             double y) {
  while (end-- > 0) {
    const DrawCall& call = calls[end];
    const std::vector<double>& n = call.numbers;
    if (call.name == "FillArea" || call.name == "FillGradient") {
      if (x >= n[0] && x < n[2] && y >= n[1] && y < n[3]) return call.colours;
    }
    if (call.name == "FillPolygon" && Inside(n, x, y, n.size() / 2)) return call.colours;
    // Behind its corners stand width, dashes and smoothness of the pen.
    if (call.name == "PaintPolygon" && Inside(n, x, y, (n.size() - 3) / 2)) {
      return {call.colours[0]};
    }
    if (call.name == "FillEllipse") {
      const double dx = (x - n[0]) / n[2], dy = (y - n[1]) / n[3];
      if (dx * dx + dy * dy <= 1) return call.colours;
    }
  }
  return {};
}

// A place in the middle of the text of a call.
platform::PointF MiddleOf(const DrawCall& call) {
  const std::vector<double>& n = call.numbers;
  const auto font = static_cast<platform::FontRole>(static_cast<int>(n[4]));
  const auto align = static_cast<unsigned>(n[5]);
  const double width = std::min<double>(platform::TextWidth(font, call.text), n[2] - n[0]);
  const double height = platform::TextHeight(font);
  double x = n[0] + width / 2;
  if (align & platform::kAlignCentre) x = (n[0] + n[2]) / 2;
  if (align & platform::kAlignRight) x = n[2] - width / 2;
  double y = n[1] + height / 2;
  if (align & platform::kAlignMiddle) y = (n[1] + n[3]) / 2;
  if (align & platform::kAlignBottom) y = n[3] - height / 2;
  return {x, y};
}

void AddDrawnTexts(int id, Pairs& pairs) {
  const std::vector<DrawCall> calls = headless::PaintOf(id);
  for (std::size_t i = 0; i < calls.size(); ++i) {
    if (calls[i].name != "PaintText" || calls[i].text.empty()) continue;
    const platform::PointF at = MiddleOf(calls[i]);
    std::vector<Colour> grounds = GroundAt(calls, i, at.x, at.y);
    if (const headless::Item* item = headless::Find(id); grounds.empty() && item) {
      grounds = {item->background};
    }
    for (const Colour ground : grounds) pairs.insert({calls[i].colours[0], ground});
  }
}

// Labels lie clear on what their parent paints.
void AddLabel(const headless::Item& item, Pairs& pairs) {
  const double x = item.place.left + 1;
  const double y = (item.place.top + item.place.bottom) / 2.0;
  const std::vector<DrawCall> calls = headless::PaintOf(item.parent);
  std::vector<Colour> grounds = GroundAt(calls, calls.size(), x, y);
  if (const headless::Item* parent = headless::Find(item.parent); grounds.empty() && parent) {
    grounds = {parent->background};
  }
  for (const Colour ground : grounds) pairs.insert({item.colours.text, ground});
}

void AddShown(Pairs& pairs) {
  AddDrawnTexts(platform::kMainWindow, pairs);
  for (const int id : headless::AllIds()) {
    const headless::Item* item = headless::Find(id);
    if (!item || !platform::IsVisible(id)) continue;
    using headless::Kind;
    AddDrawnTexts(id, pairs);
    if (!platform::IsEnabled(id) || item->kind == Kind::View || item->kind == Kind::Button)
      continue;
    if (item->colours.text == item->colours.background) continue;  // as the platform has it
    if (item->colours.transparent) {
      AddLabel(*item, pairs);
    } else {
      pairs.insert({item->colours.text, item->colours.background});
    }
  }
}

// The outlines of keys that can be pressed, on their own grounds.
void AddOutlines(Pairs& pairs) {
  for (const int id : headless::AllIds()) {
    const headless::Item* item = headless::Find(id);
    if (!item || item->kind != headless::Kind::Button || !platform::IsEnabled(id)) continue;
    if (!platform::IsVisible(id)) continue;
    const std::vector<DrawCall> calls = headless::PaintOf(id);
    for (std::size_t i = 0; i < calls.size(); ++i) {
      if (calls[i].name != "FrameArea") continue;
      const double x = calls[i].numbers[0], y = calls[i].numbers[1];
      for (const Colour ground : GroundAt(calls, i, x, y)) {
        pairs.insert({calls[i].colours[0], ground});
      }
    }
  }
}

bool Listed(const std::vector<contrast::Group>& groups, const std::pair<Colour, Colour>& pair) {
  for (const contrast::Group& group : groups) {
    const auto holds = [](const std::vector<Colour>& colours, Colour colour) {
      return std::find(colours.begin(), colours.end(), colour) != colours.end();
    };
    if (holds(group.colours, pair.first) && holds(group.grounds, pair.second)) return true;
  }
  return false;
}

struct ContrastOfTheProgram : public support::Workbench {
  // Shows mode after mode and surface after surface, with a program open, and has `add` look.
  Pairs InEveryPlace(void (*add)(Pairs& pairs)) {
    WriteFile("A.NC", "%\r\nO1001 (PART)\r\nG20\r\nG00 X0 Y0\r\nG01 X1. F10.\r\nM30\r\n%\r\n");
    Open("A.NC");
    Pairs pairs;
    for (int mode = 0; mode <= morva::kModeFind; ++mode) {
      morva::SetMode(mode);
      add(pairs);
    }
    for (const int surface : {morva::kSurfaceCad, morva::kSurfacePlate, morva::kSurfaceSkim}) {
      morva::SetSurface(surface);
      add(pairs);
    }
    return pairs;
  }
};

TEST_F(ContrastOfTheProgram, IsAskedOfTheOutlineOfEveryKey) {
  const Pairs pairs = InEveryPlace(AddOutlines);
  EXPECT_GT(pairs.size(), 3u);
  for (const auto& pair : pairs) {
    EXPECT_TRUE(Listed(contrast::kLines, pair))
        << Written(pair.first) << " around " << Written(pair.second);
  }
}

TEST_F(ContrastOfTheProgram, IsAskedOfEveryTextThatItPaints) {
  const Pairs pairs = InEveryPlace(AddShown);
  EXPECT_GT(pairs.size(), 30u);
  for (const auto& pair : pairs) {
    EXPECT_TRUE(Listed(contrast::kTexts, pair))
        << Written(pair.first) << " on " << Written(pair.second);
  }
}

}  // namespace
