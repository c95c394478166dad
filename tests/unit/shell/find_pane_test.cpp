// The find pane and the command words view, over the whole application.

#include "codetools/find_pane.h"

#include "app/outlets.h"
#include "codetools/colours.h"
#include "codetools/find_rules.h"
#include "codetools/preflight_log.h"
#include "codetools/words_view.h"
#include "documents/program_tabs.h"
#include "platform/listing.h"
#include "shell/layout.h"
#include "support/workbench.h"

namespace morva {
namespace {

class FindPane : public support::Workbench {
 protected:
  void SetUp() override {
    support::Workbench::SetUp();
    headless::EditorSetAll(kIdEditor, kProgram);
    headless::Advance(200);
    headless::Click(kIdFind);
  }
  static void Fields(std::u16string_view find, std::u16string_view replaceWith = u"") {
    ASSERT_TRUE(headless::TypeInto(kIdFindText, find));
    ASSERT_TRUE(headless::TypeInto(kIdReplaceText, replaceWith));
  }
  static std::u16string Status() { return platform::TextOf(kIdFindStatus); }
  static constexpr const char16_t* kProgram =
      u"(MORVA TEXT 1)\r\n(MORVA NAME A)\r\nG1 X1\r\nG10 X1\r\n(MORVA END 1)\r\n";
};

TEST_F(FindPane, OpensWithTheKeyboardInTheFindField) {
  EXPECT_EQ(app.mode, kModeFind);
  EXPECT_EQ(platform::FocusedId(), kIdFindText);
  EXPECT_EQ(platform::TextOf(kIdPanelHead), u"FIND / REPLACE");
  EXPECT_FALSE(platform::IsVisible(kViewToolpath));
  headless::Click(kIdBack);
  EXPECT_EQ(app.mode, kModeHome);
  EXPECT_FALSE(platform::IsVisible(kIdFindText));
  EXPECT_TRUE(platform::IsVisible(kViewToolpath));
}

TEST_F(FindPane, NextMatchSelectsAndWrapsOnceRound) {
  Fields(u"x1");
  headless::Click(kIdNextMatch);
  // Two marker lines are 15 and 15 positions long, "G1 " is 3.
  EXPECT_EQ(platform::EditorSelection(kIdEditor).from, 33);
  EXPECT_EQ(Status(), u"Match selected in the code. Next Match wraps around the program.");
  headless::Click(kIdNextMatch);
  EXPECT_EQ(platform::EditorSelection(kIdEditor).from, 40);
  headless::Click(kIdNextMatch);
  EXPECT_EQ(platform::EditorSelection(kIdEditor).from, 33);
  headless::Click(kIdMatchCase);
  headless::Click(kIdNextMatch);
  EXPECT_EQ(Status(), u"No matching text found.");
}

TEST_F(FindPane, EnterInTheFindFieldIsTheNextMatchAndOtherKeysAreNot) {
  Fields(u"x1");
  headless::Focus(kIdFindText);
  headless::PressKey({platform::kKeyDown});
  platform::KeyEvent ctrlEnter;
  ctrlEnter.key = platform::kKeyEnter;
  ctrlEnter.ctrl = true;
  headless::PressKey(ctrlEnter);
  EXPECT_EQ(Status(), u"");
  headless::PressKey({platform::kKeyEnter});
  EXPECT_EQ(platform::EditorSelection(kIdEditor).from, 33);
  headless::PressKey({platform::kKeyEnter});
  EXPECT_EQ(platform::EditorSelection(kIdEditor).from, 40);
  EXPECT_EQ(platform::FocusedId(), kIdFindText);
}

TEST_F(FindPane, PreviewCountsAndChangesNothing) {
  tabs[0].dirty = false;
  app.editorDirty = false;
  Fields(u"G1", u"G01");
  headless::Click(kIdWholeToken);
  headless::Click(kIdRulePreview);
  EXPECT_EQ(Status(), u"1 matches in the active program. Apply Rules performs this batch.");
  EXPECT_EQ(Text(), kProgram);
  EXPECT_FALSE(tabs[0].dirty);
}

TEST_F(FindPane, AppliesTheQueueAsOneUndoStepAndSparesMarkers) {
  Fields(u"G1", u"G01");
  headless::Click(kIdRuleAdd);
  Fields(u"TEXT", u"T");
  headless::Click(kIdRuleAdd);
  EXPECT_EQ(platform::RowText(kIdRuleList, 0), u"G1  \u2192  G01");
  headless::Click(kIdWholeToken);
  headless::Click(kIdRuleApply);
  EXPECT_EQ(Status(), u"1 replacements applied. Undo restores the previous code.");
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\n(MORVA NAME A)\r\nG01 X1\r\nG10 X1\r\n(MORVA END 1)\r\n");
  headless::Click(kIdRuleUndo);
  EXPECT_EQ(Text(), kProgram);
}

TEST_F(FindPane, ACommitWithoutAMatchMakesNoUndoStep) {
  headless::EditorInsert(kIdEditor, u"M8");
  const std::u16string text = Text();
  Fields(u"nowhere", u"x");
  headless::Click(kIdRuleApply);
  EXPECT_EQ(Status(), u"0 replacements applied. Undo restores the previous code.");
  EXPECT_EQ(Text(), text);
  headless::EditorUndo(kIdEditor);
  EXPECT_EQ(Text(), kProgram);
}

TEST_F(FindPane, RefusesAnEmptyRuleAndTheTwentyFifth) {
  Fields(u"", u"x");
  headless::Click(kIdRuleAdd);
  EXPECT_EQ(Status(), u"Enter nonempty Find text. Up to 24 rules can be queued.");
  Fields(u"a", u"b");
  for (int i = 0; i < 24; ++i) headless::Click(kIdRuleAdd);
  EXPECT_EQ(platform::RowCount(kIdRuleList), 24);
  headless::Click(kIdRuleAdd);
  EXPECT_EQ(platform::RowCount(kIdRuleList), 24);
  EXPECT_EQ(platform::TextOf(kIdFindText), u"a");
  headless::SelectRows(kIdRuleList, {5});
  headless::Click(kIdRuleRemove);
  EXPECT_EQ(platform::RowCount(kIdRuleList), 23);
}

TEST_F(FindPane, PromptEachAsksAtEveryOccurrenceInAnyCase) {
  Fields(u"g1", u"g1 g1");
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::TakeBoxes();
  headless::Click(kIdPromptEach);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0].title, u"MORVA Change All");
  EXPECT_EQ(boxes[0].text,
            u"Change this occurrence?\r\n\r\nFind:  g1\r\nReplace with:  g1 g1\r\n\r\nYES = "
            u"replace this one\r\nNO = skip this one\r\nCANCEL = stop");
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\n(MORVA NAME A)\r\nG1 X1\r\ng1 g10 X1\r\n(MORVA END 1)\r\n");
  EXPECT_TRUE(OutputHas(u"Change All: 1 replacement(s) accepted from 2 occurrence(s) reviewed."));
}

TEST_F(FindPane, CancelCountsAsReviewed) {
  Fields(u"G1", u"x");
  headless::QueueAnswer(platform::BoxAnswer::Cancel);
  headless::Click(kIdPromptEach);
  EXPECT_TRUE(OutputHas(u"Change All: 0 replacement(s) accepted from 1 occurrence(s) reviewed."));
}

// A receive that ends behind the question opens another program with the same text.
void AnotherComesUp() { SwitchTab(OpenTab(u"", u"G1 X1\r\n", u"received")); }

TEST_F(FindPane, ChangesNothingInAProgramThatCameUpBehindTheQuestion) {
  Fields(u"x1", u"X9");
  for (const int key : {kIdDoAll, kIdPromptEach}) {
    headless::WhileOpen(AnotherComesUp);
    for (int i = 0; i < 4; ++i) headless::QueueAnswer(platform::BoxAnswer::Yes);
    ASSERT_TRUE(headless::Click(key));
    headless::ClearQueues();
    EXPECT_EQ(Text(), u"G1 X1\r\n") << key;
    EXPECT_FALSE(app.editorDirty) << key;
    SwitchTab(0);
    EXPECT_NE(Text().find(u"G1 X1\r\nG10 X1"), std::u16string::npos) << key;
  }
}

TEST_F(FindPane, DoAllAsksOnceAndChangesMarkersToo) {
  Fields(u"morva", u"M");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::TakeBoxes();
  headless::Click(kIdDoAll);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Confirm DO ALL");
  EXPECT_EQ(boxes[0].text,
            u"Replace every matching occurrence in the active program?\r\n\r\nFind:  "
            u"morva\r\nReplace with:  M\r\n\r\nIn lines that mark features:  3. A change there can "
            u"take a feature apart, and the code of an excluded one is not found again.\r\n\r\n"
            u"Matches:  3");
  EXPECT_EQ(Text().substr(0, 10), u"(M TEXT 1)");
  EXPECT_TRUE(OutputHas(u"DO ALL complete: 3 occurrence(s) changed."));
}

TEST_F(FindPane, SaysOfMarkersWhatTheChangeMayDoAndOfCodeNothing) {
  headless::EditorSetAll(kIdEditor,
                         u"(MORVA TEXT 1)\r\n  (morva DISABLED 17)\r\nG1 X7 Y7\r\n(MORVA END 1)");
  Fields(u"7", u"8");
  headless::TakeBoxes();
  headless::Click(kIdDoAll);
  auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_NE(boxes[0].text.find(u"In lines that mark features:  1."), std::u16string::npos);
  EXPECT_NE(boxes[0].text.find(u"Matches:  3"), std::u16string::npos);
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdPromptEach);
  boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 3u);
  EXPECT_NE(boxes[0].text.find(u"This line marks a feature."), std::u16string::npos);
  EXPECT_EQ(boxes[1].text.find(u"marks a feature"), std::u16string::npos);
  Fields(u"G1");
  headless::Click(kIdDoAll);
  boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text.find(u"mark features"), std::u16string::npos);
}

// A report says nothing about another program.
TEST_F(FindPane, SaysWhoseReportStandsInTheLogWhenAnotherProgramIsShown) {
  ValidateProgram();
  EXPECT_TRUE(OutputHas(u"Validation complete"));
  EXPECT_FALSE(OutputHas(u"The validation above"));
  const std::u16string words = u"The validation above is that of " + NameOfTab(0) + u".";
  NewProgram();
  EXPECT_TRUE(OutputHas(words));
  // Once, and not for a program without a report.
  const std::u16string log = platform::TextOf(kIdOutputLog);
  SwitchTab(0);
  EXPECT_EQ(platform::TextOf(kIdOutputLog).find(u"The validation above", log.find(words) + 1),
            std::u16string::npos);
}

TEST_F(FindPane, SaysWhatIsMissing) {
  Fields(u"");
  headless::TakeBoxes();
  headless::Click(kIdDoAll);
  headless::Click(kIdPromptEach);
  Fields(u"nowhere");
  headless::Click(kIdDoAll);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 3u);
  EXPECT_EQ(boxes[0].text, u"Enter text/code to find first.");
  EXPECT_EQ(boxes[1].text, u"Enter text/code to find first.");
  EXPECT_EQ(boxes[2].text, u"No matching text was found in the active tab.");
}

class WordsView : public support::Workbench {
 protected:
  void SetUp() override {
    support::Workbench::SetUp();
    headless::EditorSetAll(kIdEditor, u"(MORVA TEXT 1)\r\nG1 X1\r\nG5\r\n(MORVA END 1)");
    headless::Advance(200);
  }
  static std::u16string Words() { return std::u16string(platform::EditorText(kIdWordsEditor)); }
};

TEST_F(WordsView, TakesTheEditorsPlaceAndGivesItBack) {
  EXPECT_EQ(platform::TextOf(kIdCommandWords), u"G-code \u2192 Text");
  headless::Click(kIdCommandWords);
  EXPECT_TRUE(platform::IsVisible(kIdWordsEditor));
  EXPECT_FALSE(platform::IsVisible(kIdEditor));
  EXPECT_TRUE(platform::IsVisible(kViewGutter));
  EXPECT_EQ(platform::TextOf(kIdCommandWords), u"Text \u2192 G-code");
  EXPECT_EQ(platform::FocusedId(), kIdWordsEditor);
  EXPECT_EQ(Words(), u"(MORVA TEXT 1)\r\nLinear Interpolation Motion X1\r\nG5\r\n(MORVA END 1)");
  headless::Click(kIdCommandWords);
  EXPECT_TRUE(platform::IsVisible(kIdEditor));
  EXPECT_FALSE(platform::IsVisible(kIdWordsEditor));
}

TEST_F(WordsView, ATypedCharacterReachesTheCode) {
  headless::Click(kIdCommandWords);
  const int end =
      platform::EditorLineStart(kIdWordsEditor, 1) + platform::EditorLineLength(kIdWordsEditor, 1);
  headless::EditorSelect(kIdWordsEditor, end, end);
  headless::EditorInsert(kIdWordsEditor, u".5");
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\nG01 X1.5\r\nG5\r\n(MORVA END 1)");
  EXPECT_TRUE(app.editorDirty);
  EXPECT_EQ(platform::EditorLineOf(kIdEditor, platform::EditorSelection(kIdEditor).to), 1);
}

TEST_F(WordsView, OffWithoutAnEditLeavesTheCodeToTheCharacter) {
  const auto revision = platform::EditorRevision(kIdEditor);
  headless::Click(kIdCommandWords);
  headless::Click(kIdCommandWords);
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\nG1 X1\r\nG5\r\n(MORVA END 1)");
  EXPECT_EQ(platform::EditorRevision(kIdEditor), revision);
}

TEST_F(WordsView, OffRewritesNothingWhereTheRoundTripIsTheSame) {
  headless::EditorSetAll(kIdEditor, u"(MORVA TEXT 1)\r\nG01 X1\r\n(MORVA END 1)");
  headless::Advance(900);
  ASSERT_FALSE(app.editorDirty);
  const auto revision = platform::EditorRevision(kIdEditor);
  headless::Click(kIdCommandWords);
  headless::Click(kIdCommandWords);
  EXPECT_EQ(platform::EditorRevision(kIdEditor), revision);
  EXPECT_FALSE(app.editorDirty);
}

TEST_F(WordsView, RulesLeaveTheViewAndDoNotReturn) {
  headless::Click(kIdCommandWords);
  headless::Click(kIdFind);
  headless::TypeInto(kIdFindText, u"G5");
  headless::Click(kIdRulePreview);
  EXPECT_FALSE(app.commandWordsActive);
}

int WordsCaret() { return platform::EditorSelection(kIdWordsEditor).to; }

TEST_F(WordsView, MarkersThatComeBetweenTwoCharactersMoveNeither) {
  headless::Click(kIdCommandWords);
  const int end = platform::EditorLength(kIdWordsEditor);
  headless::EditorSelect(kIdWordsEditor, end, end);
  headless::EditorInsert(kIdWordsEditor, u"\nX1 Y");
  headless::Advance(200);
  ASSERT_NE(Words().find(u"(MORVA TEXT 2)\r\n(MORVA NAME User code)\r\nX1 Y\r\n(MORVA END 2)"),
            std::u16string::npos);
  headless::EditorInsert(kIdWordsEditor, u"2");
  EXPECT_NE(Words().find(u"\r\nX1 Y2\r\n(MORVA END 2)"), std::u16string::npos);
  EXPECT_NE(Text().find(u"\r\nX1 Y2\r\n(MORVA END 2)"), std::u16string::npos);
}

TEST_F(WordsView, TheCaretStaysBehindACodeThatBecomesAWord) {
  headless::Click(kIdCommandWords);
  const int end = platform::EditorLength(kIdWordsEditor);
  headless::EditorSelect(kIdWordsEditor, end, end);
  headless::EditorInsert(kIdWordsEditor, u"\nM30");
  headless::Advance(200);
  // The tagger made the view anew, and the code typed into it is a word now.
  ASSERT_EQ(Words().find(u"M30"), std::u16string::npos);
  headless::EditorInsert(kIdWordsEditor, u" X9");
  EXPECT_NE(Text().find(u"\r\nM30 X9\r\n(MORVA END 2)"), std::u16string::npos);
}

TEST_F(WordsView, ShowsTheProgramOfTheTabAndForgetsTheLastOnesSteps) {
  headless::Click(kIdCommandWords);
  headless::EditorInsert(kIdWordsEditor, u" ");
  NewProgram();
  ASSERT_EQ(app.activeTab, 1);
  EXPECT_TRUE(app.commandWordsActive);
  EXPECT_NE(Words().find(u"Select Inches"), std::u16string::npos) << "template with G20";
  const std::u16string before = Text();
  headless::EditorUndo(kIdWordsEditor);
  EXPECT_EQ(Text(), before);
  SwitchTab(0);
  EXPECT_NE(Words().find(u"Linear Interpolation Motion"), std::u16string::npos);
}

TEST_F(WordsView, UndoInTheViewReachesTheCode) {
  headless::Click(kIdCommandWords);
  const int end =
      platform::EditorLineStart(kIdWordsEditor, 1) + platform::EditorLineLength(kIdWordsEditor, 1);
  headless::EditorSelect(kIdWordsEditor, end, end);
  headless::EditorInsert(kIdWordsEditor, u"7");
  ASSERT_EQ(Text(), u"(MORVA TEXT 1)\r\nG01 X17\r\nG5\r\n(MORVA END 1)");
  headless::EditorUndo(kIdWordsEditor);
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\nG1 X1\r\nG5\r\n(MORVA END 1)");
}

TEST_F(WordsView, SplitsNoCharacterOfTwoUnits) {
  headless::EditorSetAll(kIdEditor, u"(MORVA TEXT 1)\r\n(\xD83D\xDE00)\r\n(MORVA END 1)");
  headless::Advance(200);
  headless::Click(kIdCommandWords);
  const int at = platform::EditorLineStart(kIdWordsEditor, 1) + 1;
  headless::EditorSelect(kIdWordsEditor, at, at + 2);
  platform::ReplaceSelection(kIdWordsEditor, u"\xD83D\xDE01", true);
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\n(\xD83D\xDE01)\r\n(MORVA END 1)");
  platform::UndoEditor(kIdEditor);
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\n(\xD83D\xDE00)\r\n(MORVA END 1)");
}

TEST_F(WordsView, KeepsWhatIsInSightWhenItIsMadeAnew) {
  std::u16string text = u"(MORVA TEXT 1)\r\n";
  for (int i = 0; i < 200; ++i) text += u"X1\r\n";
  headless::EditorSetAll(kIdEditor, text + u"(MORVA END 1)");
  headless::Advance(200);
  headless::Click(kIdCommandWords);
  const int at = platform::EditorLineStart(kIdWordsEditor, 110) + 1;
  headless::EditorSelect(kIdWordsEditor, at, at);
  headless::EditorInsert(kIdWordsEditor, u"0");
  platform::ScrollToLine(kIdWordsEditor, 100);
  SyncWordsFromCode();
  EXPECT_EQ(platform::FirstVisibleLine(kIdWordsEditor), 100);
  EXPECT_EQ(WordsCaret(), at + 1);
}

TEST_F(WordsView, SavesTheCodeByItsKey) {
  WriteFile("part.NC", "(MORVA TEXT 1)\r\nG01 X1\r\n(MORVA END 1)\r\n");
  Open("part.NC");
  headless::Advance(200);
  headless::Click(kIdCommandWords);
  const int end =
      platform::EditorLineStart(kIdWordsEditor, 1) + platform::EditorLineLength(kIdWordsEditor, 1);
  headless::EditorSelect(kIdWordsEditor, end, end);
  headless::EditorInsert(kIdWordsEditor, u".5");
  EXPECT_TRUE(app.editorDirty);
  platform::KeyEvent save;
  save.key = 'S';
  save.ctrl = true;
  headless::PressKey(save);
  EXPECT_FALSE(app.editorDirty);
  EXPECT_EQ(ReadFile("part.NC"), "(MORVA TEXT 1)\r\nG01 X1.5\r\n(MORVA END 1)\r\n");
}

class HoverHelp : public WordsView {
 protected:
  // Over the middle of a character's cell.
  static void Hover(int id, int position) {
    const platform::Point cell = platform::PointOfPosition(id, position);
    platform::PointerEvent event;
    event.x = cell.x + 1;
    event.y = cell.y + 2;
    headless::Pointer(id, event);
  }
  static std::u16string Status() { return platform::TextOf(kIdStatusLine); }
};

TEST_F(HoverHelp, TellsOfTheTokenUnderThePointerOnce) {
  headless::EditorSetAll(kIdEditor, u"(MORVA TEXT 1)\r\nM05 G01 X1\r\n(MORVA END 1)");
  headless::Advance(200);
  const int line = platform::EditorLineStart(kIdEditor, 1);
  Hover(kIdEditor, line + 1);
  EXPECT_EQ(Status(), u"Spindle stop.");
  ShowStatus(u"Something else");
  Hover(kIdEditor, line + 2);
  EXPECT_EQ(Status(), u"Something else");
  Hover(kIdEditor, line + 5);
  EXPECT_EQ(Status().substr(0, 24), u"Feed-limited linear move");
}

TEST_F(HoverHelp, GivesBackWhatWasToldWhenThePointerGoesOn) {
  headless::EditorSetAll(kIdEditor, u"(MORVA TEXT 1)\r\nM05 QQ X1\r\n(MORVA END 1)");
  headless::Advance(2000);
  ShowStatus(u"Told.");
  const int line = platform::EditorLineStart(kIdEditor, 1);
  const std::u16string log = Output();
  Hover(kIdEditor, line + 1);
  EXPECT_EQ(Status(), u"Spindle stop.");
  EXPECT_FALSE(platform::IsVisible(kIdOutputHelp));
  headless::Advance(600);
  EXPECT_EQ(Status(), u"Spindle stop.");
  Hover(kIdEditor, line + 5);  // no code at all
  EXPECT_EQ(Status(), u"Told.");
  Hover(kIdEditor, line + 1);
  EXPECT_EQ(Status(), u"Spindle stop.");
  headless::MovePointerOver(0);
  headless::Advance(150);
  EXPECT_EQ(Status(), u"Told.");
  EXPECT_EQ(Output(), log);
}

TEST_F(HoverHelp, TheCaretGivesHelpOnlyUnderTheUsersHand) {
  headless::EditorSetAll(kIdEditor, u"G0 X1\r\nM05 M09\r\n");
  ShowStatus(u"Told.");
  headless::Advance(2000);  // the tagger puts markers around the caret
  ASSERT_NE(Text().find(u"(MORVA TEXT"), std::u16string::npos);
  EXPECT_EQ(Status(), u"Project autosaved.");
  ShowStatus(u"Told.");
  std::u16string text = Text();
  std::erase(text, u'\r');
  const int line = static_cast<int>(text.find(u"M05"));
  platform::SetEditorSelection(kIdEditor, {line + 1, line + 1});
  EXPECT_EQ(Status(), u"Told.");
  headless::EditorSelect(kIdEditor, line + 2, line + 2);
  EXPECT_EQ(Status(), u"Spindle stop.");
}

}  // namespace
}  // namespace morva
