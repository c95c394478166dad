#include <gtest/gtest.h>

#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "shell/icons.h"
#include "simulator/line_highlight.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view_switches.h"
#include "unit/shell/main_stage.h"

namespace morva {
namespace {

using headless::DrawCall;
using platform::Colour;

class OwnerDraw : public shell_test::MainStage {
 protected:
  static std::vector<DrawCall> CallsNamed(const std::vector<DrawCall>& calls, const char* name) {
    std::vector<DrawCall> found;
    for (const DrawCall& call : calls) {
      if (call.name == name) found.push_back(call);
    }
    return found;
  }
  static bool HasGradient(const std::vector<DrawCall>& calls, Colour top, Colour bottom) {
    for (const DrawCall& call : calls) {
      if (call.name == "FillGradient" && call.colours == std::vector<Colour>{top, bottom}) {
        return true;
      }
    }
    return false;
  }
  // A frame of width 2 in the bright accent.
  static bool HasFocusMark(const std::vector<DrawCall>& calls) {
    for (const DrawCall& call : calls) {
      if (call.name == "FrameArea" && call.colours.at(0) == kBrightAccent &&
          call.numbers.at(4) == 2) {
        return true;
      }
    }
    return false;
  }
};

TEST_F(OwnerDraw, PaintsAKeyWithItsGradientAndCaption) {
  const auto calls = headless::PaintOf(kIdNew);
  EXPECT_TRUE(HasGradient(calls, 0x031A27, 0x02111C));
  EXPECT_TRUE(Paints(calls, u"NEW", kMainText));
  EXPECT_FALSE(HasFocusMark(calls));
}

// One owner drawing as calls, in a state that the headless user cannot hold.
std::vector<DrawCall> DrawnAs(platform::Events& events, int id, const platform::DrawState& state) {
  static int drawn;
  static platform::DrawState held;
  drawn = id;
  held = state;
  events.paint = [](int, platform::Canvas& canvas) { DrawOwnerItem(drawn, held, canvas); };
  return headless::PaintOf(platform::kMainWindow);
}

TEST_F(OwnerDraw, PaintsAPressedKeyAsSelected) {
  platform::DrawState state;
  state.row = -1;
  state.enabled = true;
  state.area = {0, 0, 64, 34};
  EXPECT_FALSE(HasGradient(DrawnAs(events, kIdNew, state), 0x042D43, 0x033A54));
  state.pressed = true;
  EXPECT_TRUE(HasGradient(DrawnAs(events, kIdNew, state), 0x042D43, 0x033A54));
  state.enabled = false;
  EXPECT_FALSE(HasGradient(DrawnAs(events, kIdNew, state), 0x042D43, 0x033A54));
}

TEST_F(OwnerDraw, PaintsAKeyWhoseStateIsOnAsSelected) {
  app.unitsMetric = true;
  EXPECT_TRUE(HasGradient(headless::PaintOf(kIdMm), 0x042D43, 0x033A54));
  EXPECT_FALSE(HasGradient(headless::PaintOf(kIdInch), 0x042D43, 0x033A54));
}

TEST_F(OwnerDraw, CutsADrawingsNameInTheMiddleSoThatItsNumberStays) {
  support::MakeButton(kIdDrawingFirst, u"Drawing 8");
  platform::SetPlace(kIdDrawingFirst, {0, 0, 50, 28});
  std::u16string shown;
  for (const DrawCall& call : CallsNamed(headless::PaintOf(kIdDrawingFirst), "PaintText")) {
    shown = call.text;
  }
  EXPECT_LT(shown.size(), 9u);
  EXPECT_LE(platform::TextWidth(platform::FontRole::Small, shown), 46);
  EXPECT_EQ(shown.front(), u'D');
  EXPECT_NE(shown.find(u'\u2026'), shown.npos);
  EXPECT_EQ(shown.back(), u'8');
  platform::SetPlace(kIdDrawingFirst, {0, 0, 200, 28});
  EXPECT_TRUE(Paints(headless::PaintOf(kIdDrawingFirst), u"Drawing 8", kMainText));
}

TEST_F(OwnerDraw, CutsALongTabInTheMiddleOfItsTitle) {
  const std::u16string title = u"a_program_with_a_name_longer_than_any_tab_17.NC";
  platform::SetText(kIdTabFirst, u"> [C] " + title + u" *");
  std::u16string shown;
  for (const DrawCall& call : CallsNamed(headless::PaintOf(kIdTabFirst), "PaintText")) {
    shown = call.text;
  }
  const platform::Rect place = platform::PlaceOf(kIdTabFirst);
  EXPECT_LE(platform::TextWidth(platform::FontRole::Small, shown), RectWidth(place) - 16);
  EXPECT_EQ(shown.substr(0, 7), u"> [C] a");
  EXPECT_NE(shown.find(u'\u2026'), shown.npos);
  EXPECT_EQ(shown.substr(shown.size() - 5), u".NC *");
  platform::SetText(kIdTabFirst, u"> A.NC *");
  EXPECT_TRUE(Paints(headless::PaintOf(kIdTabFirst), u"> A.NC *", kBrightAccent));
}

TEST_F(OwnerDraw, DimsADisabledKey) {
  platform::SetEnabled(kIdNew, false);
  const auto calls = headless::PaintOf(kIdNew);
  EXPECT_TRUE(Paints(calls, u"NEW", kDimText));
  EXPECT_FALSE(Paints(calls, u"NEW", kMainText));
}

TEST_F(OwnerDraw, MarksTheKeyThatHasTheKeyboard) {
  ASSERT_TRUE(headless::Focus(kIdOpen));
  EXPECT_TRUE(HasFocusMark(headless::PaintOf(kIdOpen)));
  EXPECT_FALSE(HasFocusMark(headless::PaintOf(kIdNew)));
}

TEST_F(OwnerDraw, DrawsAnIconInsteadOfAHint) {
  const auto calls = headless::PaintOf(kIdViewRefresh);
  EXPECT_TRUE(CallsNamed(calls, "PaintText").empty());
  EXPECT_FALSE(CallsNamed(calls, "PaintPolyline").empty());
}

// The headless small font is 6 pixels wide: "Show / hide feature" is 114. Its key is 153 wide in a
// panel of 300 pixels, in one of 190 pixels 84.
TEST_F(OwnerDraw, DrawsTheIconWhereTheWordsDoNotFit) {
  EXPECT_TRUE(Paints(headless::PaintOf(kIdFeatureHide), u"Show / hide feature", kMainText));
  EXPECT_FALSE(CallsNamed(headless::PaintOf(kIdFeatureHide), "PaintPolyline").empty());
  EXPECT_TRUE(Paints(headless::PaintOf(kIdFeatureLock), u"Lock feature", kMainText));
  EXPECT_FALSE(CallsNamed(headless::PaintOf(kIdFeatureLock), "PaintPolyline").empty());
  EXPECT_TRUE(Paints(headless::PaintOf(kIdFeatureEdit), u"Edit feature", kMainText));
  EXPECT_FALSE(CallsNamed(headless::PaintOf(kIdFeatureEdit), "PaintPolyline").empty());
  DragSplitter(190);
  EXPECT_TRUE(CallsNamed(headless::PaintOf(kIdFeatureHide), "PaintText").empty());
  EXPECT_FALSE(CallsNamed(headless::PaintOf(kIdFeatureHide), "PaintPolyline").empty());
}

TEST_F(OwnerDraw, PutsTheIconOverTheWordsInATallKey) {
  platform::DrawState state;
  state.row = -1;
  state.enabled = true;
  state.area = {0, 0, 140, 42};
  double iconBottom = 0;
  for (const DrawCall& call : CallsNamed(DrawnAs(events, kIdFeatureEdit, state), "PaintPolyline")) {
    for (std::size_t i = 1; i + 3 < call.numbers.size(); i += 2) {
      iconBottom = std::max(iconBottom, call.numbers[i]);
    }
  }
  const auto words = CallsNamed(DrawnAs(events, kIdFeatureEdit, state), "PaintText");
  ASSERT_EQ(words.size(), 1u);
  EXPECT_EQ(words[0].text, u"Edit feature");
  EXPECT_GT(iconBottom, 10);
  EXPECT_LE(iconBottom, words[0].numbers[1]);
}

TEST_F(OwnerDraw, TurnsThePlayIconIntoAPause) {
  const std::size_t triangle = CallsNamed(headless::PaintOf(kIdPlayToggle), "PaintPolygon").size();
  playback.playing = true;
  const std::size_t bars = CallsNamed(headless::PaintOf(kIdPlayToggle), "PaintPolygon").size();
  EXPECT_EQ(triangle, 1u);
  EXPECT_EQ(bars, 2u);
}

TEST_F(OwnerDraw, PaintsModeRowsDimWhenStillToCome) {
  const auto calls = headless::PaintOf(kIdModeList);
  EXPECT_TRUE(Paints(calls, u"Home", kMainText));
  EXPECT_TRUE(Paints(calls, u"Simulator", kMainText));
  EXPECT_TRUE(Paints(calls, u"CAD", kMainText));
  EXPECT_TRUE(Paints(calls, u"Plate builder", kMainText));
  EXPECT_TRUE(Paints(calls, u"DNC / RS-232", kDimText));
}

TEST_F(OwnerDraw, StartsTheWordsOfAModeRowAt63) {
  const auto calls = headless::PaintOf(kIdModeList);
  for (const DrawCall& call : CallsNamed(calls, "PaintText")) EXPECT_EQ(call.numbers.at(0), 63);
}

// The icon of "Code index" has three discs 1.7 of 24 units high; at size 23 the middle one lies
// 4.5 units from the icon's left edge, on the middle of the row.
TEST_F(OwnerDraw, PutsTheIconOfAModeRowAt26) {
  platform::DrawState state;
  state.enabled = true;
  state.area = {0, 100, 280, 126};
  state.row = 7;
  ASSERT_EQ(platform::RowText(kIdModeList, 7), u"Code index");
  const auto calls = DrawnAs(events, kIdModeList, state);
  EXPECT_EQ(calls.at(0).name, "FillArea");
  EXPECT_EQ(calls.at(0).colours.at(0), 0x031929u);
  EXPECT_FALSE(HasGradient(calls, 0x042D43, 0x033A54));
  const auto discs = CallsNamed(calls, "FillEllipse");
  ASSERT_EQ(discs.size(), 3u);
  EXPECT_NEAR(discs[1].numbers.at(0), 26 + (4.5 - 12) * 23 / 24, 0.51);
  EXPECT_NEAR(discs[1].numbers.at(1), 113, 0.51);
  state.selected = true;
  EXPECT_TRUE(HasGradient(DrawnAs(events, kIdModeList, state), 0x042D43, 0x033A54));
}

TEST_F(OwnerDraw, PaintsFeatureRowsByTheirState) {
  platform::SetEditorText(kIdEditor,
                          u"(MORVA TEXT 1)\r\n(MORVA NAME One)\r\nG0\r\n(MORVA END 1)\r\n"
                          u"(MORVA TEXT 2)\r\n(MORVA NAME Two)\r\n(MORVA DISABLED 1)\r\n"
                          u"(MORVA END 2)\r\n");
  RefreshFeatureList();
  ASSERT_EQ(platform::RowCount(kIdFeatureList), 2);
  auto calls = headless::PaintOf(kIdFeatureList);
  const std::u16string one = platform::RowText(kIdFeatureList, 0);
  const std::u16string two = platform::RowText(kIdFeatureList, 1);
  EXPECT_TRUE(Paints(calls, one, kMainText));
  EXPECT_TRUE(Paints(calls, two, kDimText));
  EXPECT_TRUE(CallsNamed(calls, "PaintLine").empty());
  ToggleListId(1, ActiveTab()->hiddenIds);
  calls = headless::PaintOf(kIdFeatureList);
  const auto slashes = CallsNamed(calls, "PaintLine");
  ASSERT_EQ(slashes.size(), 1u);
  const platform::Rect row = platform::RowPlace(kIdFeatureList, 0);
  EXPECT_EQ((slashes[0].numbers.at(0) + slashes[0].numbers.at(2)) / 2, row.right - 49);
  ToggleListId(2, ActiveTab()->lockedIds);
  calls = headless::PaintOf(kIdFeatureList);
  int bright = 0;
  for (const DrawCall& call : calls) {
    if (call.name == "FillEllipse" && call.colours.at(0) == kBrightAccent) ++bright;
  }
  EXPECT_EQ(bright, 1);
}

// What the control gets although its block is excluded must be seen: the mark, and no dim row. The
// key says its state alone where it is too narrow for all of its words.
TEST_F(OwnerDraw, ShowsThatAnExcludedFeatureHasCode) {
  platform::SetEditorText(kIdEditor,
                          u"(MORVA TEXT 1)\r\n(MORVA NAME One)\r\n(MORVA DISABLED 1)\r\nG0\r\n"
                          u"(MORVA END 1)\r\n");
  RefreshFeatureList();
  EXPECT_TRUE(Paints(headless::PaintOf(kIdFeatureList), u"#1  One [has code]", kMainText));
  platform::SelectRow(kIdFeatureList, 0);
  UpdateFeatureCaptions();
  ASSERT_EQ(platform::TextOf(kIdFeatureInclude), u"Include code: OFF, has code");
  EXPECT_TRUE(Paints(headless::PaintOf(kIdFeatureInclude), u"OFF, has code", kMainText));
  DragSplitter(430);
  EXPECT_TRUE(
      Paints(headless::PaintOf(kIdFeatureInclude), u"Include code: OFF, has code", kMainText));
}

// The list is painted again before the refresh that follows a change: the rows are those of the
// old text then, and the new one may be shorter than where they stood.
TEST_F(OwnerDraw, PaintsFeatureRowsWhileTheTextIsAheadOfTheList) {
  std::u16string text(400, u'%');
  text +=
      u"\r\n(MORVA TEXT 1)\r\nG0\r\n(MORVA END 1)\r\n"
      u"(MORVA TEXT 2)\r\n(MORVA DISABLED 1)\r\n(MORVA END 2)\r\n";
  platform::SetEditorText(kIdEditor, text);
  RefreshFeatureList();
  const std::u16string one = platform::RowText(kIdFeatureList, 0);
  const std::u16string two = platform::RowText(kIdFeatureList, 1);
  platform::SetEditorText(kIdEditor, u"G0");
  auto calls = headless::PaintOf(kIdFeatureList);
  EXPECT_NE(one, two);
  EXPECT_TRUE(Paints(calls, one, kMainText));
  EXPECT_TRUE(Paints(calls, two, kDimText));
}

TEST_F(OwnerDraw, PaintsTheFeatureThatIsPlayedBrightAndAsSelected) {
  platform::SetEditorText(kIdEditor,
                          u"(MORVA TEXT 1)\r\n(MORVA NAME One)\r\nG0 X1\r\n(MORVA END 1)\r\n"
                          u"(MORVA TEXT 2)\r\n(MORVA NAME Two)\r\nG1 X2\r\n(MORVA END 2)\r\n");
  RefreshFeatureList();
  RebuildToolpath();
  auto calls = headless::PaintOf(kIdFeatureList);
  EXPECT_TRUE(Paints(calls, u"#2  Two", kMainText));
  EXPECT_FALSE(HasGradient(calls, 0x042D43, 0x033A54));
  HighlightSourceLine(6);
  platform::SelectRow(kIdFeatureList, -1);
  calls = headless::PaintOf(kIdFeatureList);
  EXPECT_TRUE(Paints(calls, u"#1  One", kMainText));
  EXPECT_TRUE(Paints(calls, u"#2  Two", kBrightAccent));
  const auto gradients = CallsNamed(calls, "FillGradient");
  ASSERT_EQ(gradients.size(), 1u);
  const platform::Rect row = platform::RowPlace(kIdFeatureList, 1);
  EXPECT_EQ(gradients[0].numbers.at(1), row.top);
  EXPECT_EQ(gradients[0].numbers.at(3), row.bottom);
}

TEST_F(OwnerDraw, PaintsTheSelectedFeatureOnASelectedPanel) {
  platform::SetEditorText(kIdEditor, u"(MORVA TEXT 1)\r\nG0\r\n(MORVA END 1)\r\n");
  RefreshFeatureList();
  EXPECT_FALSE(HasGradient(headless::PaintOf(kIdFeatureList), 0x042D43, 0x033A54));
  platform::SelectRow(kIdFeatureList, 0);
  const auto calls = headless::PaintOf(kIdFeatureList);
  EXPECT_TRUE(HasGradient(calls, 0x042D43, 0x033A54));
  EXPECT_TRUE(Paints(calls, u"#1  User code", kMainText));
}

// The disc of an icon stands at its place and bears its colour: the eye's pupil 49 and the
// lock's keyhole 20 pixels from the right edge.
TEST_F(OwnerDraw, ColoursEyeAndLockByTheirState) {
  platform::SetEditorText(kIdEditor, u"(MORVA TEXT 1)\r\nG0\r\n(MORVA END 1)\r\n");
  RefreshFeatureList();
  const platform::Rect row = platform::RowPlace(kIdFeatureList, 0);
  const auto discs = [&](Colour eye, Colour lock) {
    const auto found = CallsNamed(headless::PaintOf(kIdFeatureList), "FillEllipse");
    return found.size() == 2 && found[0].numbers.at(0) == row.right - 49 &&
           found[0].colours.at(0) == eye && found[1].numbers.at(0) == row.right - 20 &&
           found[1].colours.at(0) == lock;
  };
  EXPECT_TRUE(discs(kMainText, kDimText));
  ToggleListId(1, ActiveTab()->hiddenIds);
  EXPECT_TRUE(discs(kDimText, kDimText));
  ToggleListId(1, ActiveTab()->lockedIds);
  EXPECT_TRUE(discs(kDimText, kBrightAccent));
}

TEST_F(OwnerDraw, CutsFeatureWords66PixelsBeforeTheEdge) {
  platform::SetEditorText(kIdEditor, u"(MORVA TEXT 1)\r\nG0\r\n(MORVA END 1)\r\n");
  RefreshFeatureList();
  const auto texts = CallsNamed(headless::PaintOf(kIdFeatureList), "PaintText");
  ASSERT_EQ(texts.size(), 1u);
  const platform::Rect row = platform::RowPlace(kIdFeatureList, 0);
  EXPECT_EQ(texts[0].numbers.at(0), row.left + 10);
  EXPECT_EQ(texts[0].numbers.at(2), row.right - 66);
}

TEST_F(OwnerDraw, CutsTheNameOfAFeatureRatherThanItsMarks) {
  platform::SetEditorText(kIdEditor,
                          u"(MORVA TEXT 1)\r\n(MORVA NAME Finish of the upper pocket)\r\nG0\r\n"
                          u"(MORVA END 1)\r\n");
  ToggleListId(1, ActiveTab()->hiddenIds);
  ToggleListId(1, ActiveTab()->lockedIds);
  RefreshFeatureList();
  const std::u16string whole = u"#1  Finish of the upper pocket [hidden] [locked]";
  ASSERT_EQ(platform::RowText(kIdFeatureList, 0), whole);
  const std::u16string marks = u" [hidden] [locked]";
  const auto shownIn = [](int room) {
    platform::SetPlace(kIdFeatureList, {0, 0, room + 76, 200});
    const auto texts = CallsNamed(headless::PaintOf(kIdFeatureList), "PaintText");
    return texts.empty() ? std::u16string() : texts[0].text;
  };
  const int wide = platform::TextWidth(platform::FontRole::Body, whole);
  const int small = platform::TextWidth(platform::FontRole::Small, whole);
  const int marksWide = platform::TextWidth(platform::FontRole::Small, marks);
  EXPECT_EQ(shownIn(wide), whole);
  EXPECT_EQ(shownIn(wide - 1), whole);  // in the smaller font
  EXPECT_EQ(shownIn(small), whole);
  const std::u16string cut = shownIn(small - 1);
  EXPECT_TRUE(cut.ends_with(u"\u2026" + marks));
  EXPECT_TRUE(cut.starts_with(u"#1  Finish"));
  EXPECT_LE(platform::TextWidth(platform::FontRole::Small, cut), small - 1);
  // Where next to nothing is left of the name, the icons alone tell what the marks tell.
  const std::u16string bare = shownIn(marksWide + 20);
  EXPECT_TRUE(bare.starts_with(u"#1  Fi"));
  EXPECT_EQ(bare.back(), u'\u2026');
  EXPECT_LE(platform::TextWidth(platform::FontRole::Small, bare), marksWide + 20);
  EXPECT_EQ(platform::RowText(kIdFeatureList, 0), whole);
}

TEST_F(OwnerDraw, MarksTheFeatureThatIsSimulatedAlone) {
  platform::SetEditorText(kIdEditor,
                          u"(MORVA TEXT 1)\r\nG0\r\n(MORVA END 1)\r\n"
                          u"(MORVA TEXT 2)\r\nG1\r\n(MORVA END 2)\r\n");
  RefreshFeatureList();
  EXPECT_FALSE(Paints(headless::PaintOf(kIdFeatureList), u"ONLY", kBrightAccent));
  ActiveTab()->isolatedId = 2;
  const auto texts = CallsNamed(headless::PaintOf(kIdFeatureList), "PaintText");
  ASSERT_EQ(texts.size(), 3u);
  // The first row as ever; in the second the mark ends where the words end else, and they end
  // before it.
  const platform::Rect row = platform::RowPlace(kIdFeatureList, 1);
  EXPECT_EQ(texts[0].numbers.at(2), row.right - 66);
  EXPECT_EQ(texts[1].text, u"ONLY");
  EXPECT_EQ(texts[1].colours.at(0), kBrightAccent);
  EXPECT_GE(texts[1].numbers.at(1), row.top);
  EXPECT_EQ(texts[1].numbers.at(2), row.right - 66);
  EXPECT_EQ(texts[2].text, platform::RowText(kIdFeatureList, 1));
  EXPECT_LT(texts[2].numbers.at(2), texts[1].numbers.at(0));
  ActiveTab()->isolatedId = 0;
  EXPECT_FALSE(Paints(headless::PaintOf(kIdFeatureList), u"ONLY", kBrightAccent));
}

TEST_F(OwnerDraw, PaintsTheTopBandWithItsNames) {
  const auto calls = headless::PaintOf(platform::kMainWindow);
  EXPECT_TRUE(Paints(calls, u"MORVA", kMainText));
  EXPECT_TRUE(Paints(calls, u"CNC EDITOR  \u2022  v4.20", kBrightAccent));
  EXPECT_TRUE(HasGradient(calls, 0x031A27, 0x02111C));
  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls[0].name, "FillArea");
  EXPECT_EQ(calls[0].colours.at(0), kWindowBackground);
}

TEST_F(OwnerDraw, GivesPanelsTheirFourGradients) {
  struct {
    PanelStyle style;
    bool selected;
    Colour top, bottom;
  } const rows[] = {
      {kPanelPlain, false, 0x031A27, 0x02111C}, {kPanelPlain, true, 0x042D43, 0x033A54},
      {kPanelGreen, false, 0x032217, 0x044428}, {kPanelGreen, true, 0x032217, 0x044428},
      {kPanelAmber, false, 0x241A09, 0x352206}, {kPanelAmber, true, 0x241A09, 0x352206},
      {kPanelDeep, false, 0x031E2F, 0x01121F},  {kPanelDeep, true, 0x031E2F, 0x01121F}};
  static PanelStyle style;
  static bool selected;
  events.paint = [](int, platform::Canvas& canvas) {
    DrawPanel(canvas, platform::Rect{1, 2, 3, 4}, selected, style);
  };
  for (const auto& row : rows) {
    style = row.style;
    selected = row.selected;
    const auto calls = headless::PaintOf(platform::kMainWindow);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_TRUE(HasGradient(calls, row.top, row.bottom));
  }
}

TEST_F(OwnerDraw, TellsTheStateOfKeysToAssistiveTechnology) {
  EXPECT_FALSE(platform::IsChecked(kIdViewPan));
  switches.panMode = true;
  RefreshKeyStates();
  EXPECT_TRUE(platform::IsChecked(kIdViewPan));
  EXPECT_TRUE(platform::IsChecked(kIdPan));
  switches.panMode = false;
  RefreshKeyStates();
  EXPECT_FALSE(platform::IsChecked(kIdViewPan));
}

}  // namespace
}  // namespace morva
