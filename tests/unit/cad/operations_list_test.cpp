// How the list "Sketch operations" looks. Places are those of a row of 200 by 24 pixels.

#include "cad/panel/operations_list.h"

#include <gtest/gtest.h>

#include "app/hooks.h"
#include "app/icon_names.h"
#include "app/palette.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "shell/owner_draw.h"
#include "shell/theme.h"
#include "unit/cad/cad_stage.h"

namespace morva {
namespace {

struct DrawnIcon {
  int icon;
  int x;
  int y;
  platform::Colour colour;
};
std::vector<DrawnIcon> icons;

struct OperationRows : cad_test::CadStage {
  void SetUp() override {
    CadStage::SetUp();
    icons.clear();
    hooks.drawListRow = DrawListRow;
    hooks.drawIcon = [](platform::Canvas&, int icon, int x, int y, int, std::uint32_t colour) {
      icons.push_back({icon, x, y, colour});
    };
  }
  // The calls of one row drawn at the top of the list.
  std::vector<headless::DrawCall> Drawn(int row, bool selected, bool focused = false) {
    static platform::DrawState state;
    state = platform::DrawState();
    state.area = {0, 0, 200, 24};
    state.row = row;
    state.selected = selected;
    state.focused = focused;
    events.paint = [](int, platform::Canvas& canvas) { DrawOperationRow(state, canvas); };
    return headless::PaintOf(platform::kMainWindow);
  }
  static const headless::DrawCall* Find(const std::vector<headless::DrawCall>& calls,
                                        const char* name) {
    for (const headless::DrawCall& call : calls) {
      if (call.name == name) return &call;
    }
    return nullptr;
  }
};

TEST_F(OperationRows, AVisibleObjectHasAnOpenEyeInTheFirst30Pixels) {
  Add(kTypeCircle, 0, 0, 1);
  RefreshSketchPanels();
  const auto calls = Drawn(0, false);
  ASSERT_EQ(icons.size(), 1u);
  EXPECT_EQ(icons[0].icon, kIconEye);
  EXPECT_EQ(icons[0].x, 15);
  EXPECT_EQ(icons[0].y, 12);
  EXPECT_EQ(icons[0].colour, kMainText);
  const headless::DrawCall* text = Find(calls, "PaintText");
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->text, u"1  Circle");
  EXPECT_EQ(text->numbers.at(0), 30);
  EXPECT_EQ(text->colours.at(0), kMainText);
  EXPECT_EQ(Find(calls, "PaintLine"), nullptr);
}

TEST_F(OperationRows, AHiddenObjectIsDimAndItsEyeStruckThrough) {
  Add(kTypeCircle, 0, 0, 1);
  sketch.hidden[0] = 1;
  RefreshSketchPanels();
  const auto calls = Drawn(0, false);
  EXPECT_EQ(icons.at(0).colour, kDimText);
  EXPECT_EQ(Find(calls, "PaintText")->colours.at(0), kDimText);
  EXPECT_NE(Find(calls, "PaintLine"), nullptr);
}

TEST_F(OperationRows, TheSelectedLineOfAGroupHasTheAccentBar) {
  Add(kTypeLine, 0, 0, 1, 0, 0, 1);
  Add(kTypeLine, 0, 0, 1, 0, 0, 1);
  sketch.selected = 1;
  RefreshSketchPanels();
  const auto calls = Drawn(0, true, true);
  EXPECT_EQ(Find(calls, "PaintText")->text, u"1  Trimmed part");
  bool bar = false;
  bool focus = false;
  for (const headless::DrawCall& call : calls) {
    bar = bar || (call.name == "FillArea" && call.colours.at(0) == kBrightAccent &&
                  call.numbers.at(2) - call.numbers.at(0) == 3);
    focus = focus || (call.name == "FrameArea" && call.colours.at(0) == kBrightAccent);
  }
  EXPECT_TRUE(bar);
  EXPECT_TRUE(focus);
}

TEST_F(OperationRows, TheEmptyFaceHasItsIconAndItsWordsAndIsNeverSelected) {
  RefreshSketchPanels();
  const auto calls = Drawn(0, true);
  ASSERT_EQ(icons.size(), 1u);
  EXPECT_EQ(icons[0].icon, kIconCad);
  const headless::DrawCall* text = Find(calls, "PaintText");
  EXPECT_EQ(text->text, u"No geometry yet");
  EXPECT_EQ(text->colours.at(0), kDimText);
  EXPECT_GT(text->numbers.at(0), icons[0].x);
  EXPECT_EQ(Find(calls, "FillGradient"), nullptr);
}

}  // namespace
}  // namespace morva
