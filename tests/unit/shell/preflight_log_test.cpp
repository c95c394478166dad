// The report of a preflight in the log: its colours, and the way from its lines to the program.

#include "codetools/preflight_log.h"

#include <string>

#include "app/hover.h"
#include "app/outlets.h"
#include "app/palette.h"
#include "documents/program_tabs.h"
#include "platform/window.h"
#include "shell/modes.h"
#include "support/workbench.h"

namespace morva {
namespace {

class PreflightLog : public support::Workbench {
 protected:
  // A program with markers, and its report: no M30, no G40, no G49, a G83 without Q.
  void Report() {
    WriteFile("a.NC", "%\r\nO1000\r\nG20 G90\r\nG0 X0 Y0\r\nG83 X1. Z-1. R.1 F5.\r\nG80\r\n%\r\n");
    Open("a.NC");
    headless::Advance(200);
    headless::Focus(kIdEditor);
    headless::PressKey({platform::kKeyF1 + 4});
    ASSERT_TRUE(OutputHas(u"Validation complete: 1 error(s), 3 warning(s)."));
  }
  // The log's line that holds the words, -1 for none.
  static int LineWith(std::u16string_view words) {
    const std::u16string log = Output();
    const std::size_t at = log.find(words);
    if (at == log.npos) return -1;
    return static_cast<int>(std::count(log.begin(), log.begin() + static_cast<long>(at), u'\n'));
  }
  static bool DoubleClick(std::u16string_view words) {
    return headless::DoubleClickLogLine(kIdOutputLog, LineWith(words));
  }
  static std::u16string Selected(int editor) {
    const platform::EditorRange range = platform::EditorSelection(editor);
    const int line = platform::EditorLineOf(editor, range.from);
    EXPECT_EQ(platform::EditorLineOf(editor, range.to), line);
    std::u16string text(platform::EditorText(editor));
    for (int i = 0; i < line; ++i) text.erase(0, text.find(u'\n') + 1);
    return text.substr(0, text.find(u'\r'));
  }
  static std::u16string Status() { return platform::TextOf(kIdStatusLine); }
};

TEST_F(PreflightLog, HasTheMachineCheckBehindItWhileMachineMotionIsOn) {
  WriteFile("b.NC", "%\r\nO1000\r\nG20 G90\r\nG0 X0 Y0 Z0\r\nG1 X1.\r\nM30\r\n%\r\n");
  Open("b.NC");
  headless::Advance(200);
  headless::Focus(kIdEditor);
  headless::PressKey({platform::kKeyF1 + 4});
  EXPECT_FALSE(OutputHas(u"MACHINE CHECK"));
  headless::QueuePick(kIdLayerMachine);
  headless::Click(kIdViewLayers);
  headless::Focus(kIdEditor);
  headless::PressKey({platform::kKeyF1 + 4});
  EXPECT_TRUE(OutputHas(u"Validation complete"));
  ASSERT_TRUE(OutputHas(u": A feed move has no F."));
  platform::Colour colour = 0;
  ASSERT_TRUE(headless::LogLineColour(kIdOutputLog, LineWith(u": A feed move"), colour));
  EXPECT_EQ(colour, 0xFF6473u);
  EXPECT_TRUE(DoubleClick(u": A feed move"));
  EXPECT_EQ(Selected(kIdEditor), u"G1 X1.");
  headless::QueuePick(kIdLayerMachine);
  headless::Click(kIdViewLayers);
}

TEST_F(PreflightLog, BeginsAtItsFirstLineInALowStrip) {
  Report();
  EXPECT_TRUE(headless::ShowsTop(kIdOutputLog));
  AppendOutput(u"Saved program.");
  EXPECT_FALSE(headless::ShowsTop(kIdOutputLog));
}

TEST_F(PreflightLog, WritesErrorsAndWarningsInTheirColours) {
  Report();
  platform::Colour colour = 0;
  ASSERT_TRUE(headless::LogLineColour(kIdOutputLog, LineWith(u"ERROR: M30"), colour));
  EXPECT_EQ(colour, 0xFF6473u);
  for (const char16_t* words : {u"WARNING: G40", u"WARNING: G49", u"WARNING: G83"}) {
    ASSERT_TRUE(headless::LogLineColour(kIdOutputLog, LineWith(words), colour));
    EXPECT_EQ(colour, 0xFFBE50u);
  }
  for (const char16_t* words :
       {u"VALIDATION", u"NOTE:", u"Run unfamiliar", u"Validation complete"}) {
    EXPECT_FALSE(headless::LogLineColour(kIdOutputLog, LineWith(words), colour));
  }
  // What comes next is no report.
  ClearOutput();
  AppendOutput(u"one\r\ntwo\r\nthree\r\nfour");
  for (int line = 0; line < 5; ++line) {
    EXPECT_FALSE(headless::LogLineColour(kIdOutputLog, line, colour)) << line;
  }
}

TEST_F(PreflightLog, LeadsToTheProgramsLineByADoubleClickAndByEnter) {
  Report();
  ASSERT_TRUE(DoubleClick(u"WARNING: G83"));
  EXPECT_EQ(Selected(kIdEditor), u"G83 X1. Z-1. R.1 F5.");
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
  EXPECT_EQ(Status(), u"Line 7  \u2022  WARNING: G83 is present but no Q peck address was found.");
  // The end that has no M30.
  headless::Focus(kIdOutputLog);
  headless::PressKey({platform::kKeyHome, true});
  headless::PressKey({platform::kKeyDown});
  headless::PressKey({platform::kKeyEnter});
  EXPECT_EQ(Selected(kIdEditor), u"G80");
  ASSERT_TRUE(DoubleClick(u"WARNING: G40"));
  EXPECT_EQ(Selected(kIdEditor), u"G0 X0 Y0");
  // The report stays as it was.
  EXPECT_TRUE(OutputHas(u"Validation complete: 1 error(s), 3 warning(s)."));
}

TEST_F(PreflightLog, FollowsTheTextAsItIsNow) {
  Report();
  headless::EditorSelect(kIdEditor, 0, 0);
  headless::EditorInsert(kIdEditor, u"\n\n");
  ASSERT_TRUE(DoubleClick(u"WARNING: G83"));
  EXPECT_EQ(Selected(kIdEditor), u"G83 X1. Z-1. R.1 F5.");
}

TEST_F(PreflightLog, LeadsBackToTheProgramThatWasChecked) {
  Report();
  const int checked = app.activeTab;
  headless::Click(kIdTabNew);
  ASSERT_NE(app.activeTab, checked);
  ASSERT_TRUE(DoubleClick(u"WARNING: G83"));
  EXPECT_EQ(app.activeTab, checked);
  EXPECT_EQ(Selected(kIdEditor), u"G83 X1. Z-1. R.1 F5.");
  headless::Click(kIdClose);
  ASSERT_TRUE(DoubleClick(u"WARNING: G83"));
  EXPECT_EQ(Status(), u"The program of this report was closed.");
}

TEST_F(PreflightLog, LeadsIntoTheWordsAndOutOfTheReview) {
  Report();
  headless::Click(kIdCommandWords);
  ASSERT_TRUE(DoubleClick(u"WARNING: G83"));
  EXPECT_EQ(platform::FocusedId(), kIdWordsEditor);
  EXPECT_NE(Selected(kIdWordsEditor).find(u"X1. Z-1. R.1 F5."), std::u16string::npos);
  headless::Click(kIdCommandWords);
  headless::Click(kIdCompareSecond);
  headless::Click(kIdPreflight);
  ASSERT_TRUE(DoubleClick(u"WARNING: G83"));
  EXPECT_FALSE(app.compareActive);
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
}

TEST_F(PreflightLog, SaysWhichLinesLeadNowhere) {
  Report();
  for (const char16_t* words : {u"VALIDATION", u"NOTE:", u"Validation complete"}) {
    ShowStatus(u"-");
    ASSERT_TRUE(DoubleClick(words));
    EXPECT_EQ(Status(),
              u"Only lines of a preflight that begin with ERROR or WARNING lead into the program.");
  }
}

// A pointer that rests on a key shows its help over the log; the report is there behind it.
TEST_F(PreflightLog, IsThereAgainWhenThePointerHasLeftAKey) {
  Report();
  const std::u16string report = Output();
  headless::MovePointerOver(kIdCompareSecond);
  headless::Advance(400);
  EXPECT_TRUE(platform::IsVisible(kIdOutputHelp));
  EXPECT_EQ(Output(), report);
  headless::MovePointerOver(kIdEditor);
  headless::Advance(400);
  EXPECT_FALSE(platform::IsVisible(kIdOutputHelp));
  EXPECT_EQ(Output(), report);
  platform::Colour colour = 0;
  EXPECT_TRUE(headless::LogLineColour(kIdOutputLog, LineWith(u"ERROR: M30"), colour));
}

}  // namespace
}  // namespace morva
