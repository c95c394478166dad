// The find pane where it meets something else: timers, the words view, the review, the limits.

#include <string>

#include "app/hooks.h"
#include "app/limits.h"
#include "app/outlets.h"
#include "codetools/find_pane.h"
#include "codetools/find_rules.h"
#include "documents/program_tabs.h"
#include "platform/listing.h"
#include "support/workbench.h"
#include "unit/shell/failing_arrays.h"

namespace morva {
namespace {

constexpr int kAdd = kIdRuleAdd;
constexpr int kRemove = kIdRuleRemove;
constexpr int kPreview = kIdRulePreview;
constexpr int kApply = kIdRuleApply;
constexpr int kUndo = kIdRuleUndo;

class FindEdges : public support::Workbench {
 protected:
  void SetUp() override {
    support::Workbench::SetUp();
    headless::Advance(200);
    headless::Click(kIdFind);
  }
  // A program that bears its markers, shown, clean and with nothing pending.
  static void Program(const std::u16string& code) {
    headless::EditorSetAll(kIdEditor, u"(MORVA TEXT 1)\r\n" + code + u"(MORVA END 1)");
    headless::Advance(2000);
    ASSERT_FALSE(app.editorDirty);
  }
  static void Fields(std::u16string_view find, std::u16string_view replaceWith = u"") {
    ASSERT_TRUE(headless::TypeInto(kIdFindText, find));
    ASSERT_TRUE(headless::TypeInto(kIdReplaceText, replaceWith));
  }
  static void Answer(platform::BoxAnswer answer, int times) {
    for (int i = 0; i < times; ++i) headless::QueueAnswer(answer);
  }
  static std::u16string Status() { return platform::TextOf(kIdFindStatus); }
  static std::u16string Words() { return std::u16string(platform::EditorText(kIdWordsEditor)); }
  static int CaretLine(int id) {
    return platform::EditorLineOf(id, platform::EditorSelection(id).to);
  }
  static int CaretColumn(int id) {
    return platform::EditorSelection(id).to - platform::EditorLineStart(id, CaretLine(id));
  }
  static void PutCaret(int id, int line, int column) {
    const int at = platform::EditorLineStart(id, line) + column;
    headless::EditorSelect(id, at, at);
  }
};

std::u16string Repeated(std::u16string_view line, int times) {
  std::u16string text;
  for (int i = 0; i < times; ++i) text += line;
  return text;
}

// Where the user is.

TEST_F(FindEdges, ABatchLeavesTheUserAtTheSameCode) {
  Program(Repeated(u"X1 Y1 Z1\r\n", 300));
  Fields(u"1", u"1.25");
  for (const int key : {kApply, int{kIdDoAll}}) {
    Answer(platform::BoxAnswer::Yes, 1);
    // Before the "Z" of line 150, which stands after two of the words that grow by three.
    PutCaret(kIdEditor, 150, 6);
    platform::ScrollToLine(kIdEditor, 141);
    headless::Click(key);
    EXPECT_EQ(CaretLine(kIdEditor), 150);
    EXPECT_EQ(CaretColumn(kIdEditor), 12);
    EXPECT_EQ(platform::EditorSelection(kIdEditor).from, platform::EditorSelection(kIdEditor).to);
    EXPECT_EQ(platform::FirstVisibleLine(kIdEditor), 141);
    headless::Click(kUndo);
    EXPECT_EQ(CaretLine(kIdEditor), 150);
    EXPECT_EQ(platform::FirstVisibleLine(kIdEditor), 141);
  }
}

TEST_F(FindEdges, ACaretInsideWhatIsReplacedStaysThere) {
  Program(u"G1 X123456 Y1\r\n");
  Fields(u"X123456", u"X7");
  PutCaret(kIdEditor, 1, 8);
  headless::Click(kApply);
  EXPECT_EQ(Text().substr(16, 8), u"G1 X7 Y1");
  EXPECT_EQ(CaretLine(kIdEditor), 1);
  EXPECT_EQ(CaretColumn(kIdEditor), 5);
}

TEST_F(FindEdges, UndoLeadsToAChangeFarAway) {
  Program(Repeated(u"X1\r\n", 300));
  PutCaret(kIdEditor, 10, 2);
  headless::EditorInsert(kIdEditor, u"7");
  PutCaret(kIdEditor, 250, 0);
  headless::Click(kUndo);
  EXPECT_EQ(CaretLine(kIdEditor), 10);
}

// The caret stands amid what comes back, and the column is that of the line and not of the text.
TEST_F(FindEdges, UndoOfABatchAroundTheCaretLeavesItInItsLineAndColumn) {
  Program(u"X1 Y1\r\nX1 Y1\r\nX1 Y1\r\n");
  Fields(u"1", u"2.5");
  headless::Click(kApply);
  PutCaret(kIdEditor, 2, 3);
  headless::Click(kUndo);
  ASSERT_EQ(CountOccurrences(Text(), u"2.5"), 0);
  EXPECT_EQ(CaretLine(kIdEditor), 2);
  EXPECT_EQ(CaretColumn(kIdEditor), 3);
  // A line that is shorter again holds the caret at its end.
  headless::Click(kApply);
  PutCaret(kIdEditor, 2, 8);
  headless::Click(kUndo);
  EXPECT_EQ(CaretLine(kIdEditor), 2);
  EXPECT_EQ(CaretColumn(kIdEditor), 5);
}

TEST_F(FindEdges, AWholeBatchIsOneStepForUndo) {
  Program(u"X1\r\nX1\r\nX1\r\n");
  const std::u16string before = Text();
  Fields(u"X1", u"Y2");
  headless::Click(kApply);
  ASSERT_EQ(CountOccurrences(Text(), u"Y2"), 3);
  EXPECT_TRUE(app.editorDirty);
  headless::EditorUndo(kIdEditor);
  EXPECT_EQ(Text(), before);
}

// What the status line says.

TEST_F(FindEdges, ARefusalGoesWhenARuleIsTaken) {
  Fields(u"", u"x");
  headless::Click(kAdd);
  ASSERT_EQ(Status(), u"Enter nonempty Find text. Up to 24 rules can be queued.");
  Fields(u"G1", u"G01");
  headless::Click(kAdd);
  EXPECT_EQ(Status(), u"");
}

TEST_F(FindEdges, ACountGoesWithTheRulesAndTheTextThatItCounted) {
  Program(u"G1 X1\r\n");
  Fields(u"G1", u"G01");
  headless::Click(kAdd);
  headless::Click(kPreview);
  ASSERT_EQ(Status(), u"1 matches in the active program. Apply Rules performs this batch.");
  headless::Click(kRemove);
  EXPECT_NE(Status(), u"") << "nothing was selected, so nothing changed";
  headless::SelectRows(kIdRuleList, {0});
  headless::Click(kRemove);
  EXPECT_EQ(Status(), u"");
  headless::Click(kApply);
  ASSERT_EQ(Status(), u"1 replacements applied. Undo restores the previous code.");
  headless::Click(kUndo);
  EXPECT_EQ(Status(), u"");
}

// Next Match.

TEST_F(FindEdges, NextMatchGoesOnWhereItWasThoughTheTextChanged) {
  Program(u"Q1\r\nQ2\r\nQ3\r\n");
  Fields(u"Q");
  headless::Click(kIdNextMatch);
  headless::Click(kIdNextMatch);
  ASSERT_EQ(CaretLine(kIdEditor), 2);
  // The place is one in the text, not in the program: a shorter text wraps at once.
  headless::EditorSetAll(kIdEditor, u"BQ");
  headless::Click(kIdNextMatch);
  EXPECT_EQ(Status(), u"Match selected in the code. Next Match wraps around the program.");
  EXPECT_EQ(platform::EditorSelection(kIdEditor).from, 1);
}

TEST_F(FindEdges, NextMatchMakesTheLineCurrentInTheFeatureList) {
  headless::EditorSetAll(kIdEditor,
                         u"(MORVA TEXT 1)\r\nG1 X1\r\n(MORVA END 1)\r\n(MORVA TEXT 2)\r\nG1 "
                         u"X2\r\n(MORVA END 2)");
  headless::Advance(200);
  Call(hooks.rebuildToolpath);
  Fields(u"X2");
  headless::Click(kIdNextMatch);
  EXPECT_EQ(platform::SelectedRow(kIdFeatureList), 1);
}

// START - PROMPT EACH.

TEST_F(FindEdges, StartAndDoAllChangeMarkerLinesAndIgnoreMatchCase) {
  Program(u"BEGIN\r\n");
  headless::Click(kIdMatchCase);
  headless::Click(kIdWholeToken);
  Fields(u"morva tex", u"x");
  Answer(platform::BoxAnswer::Yes, 1);
  headless::Click(kIdPromptEach);
  EXPECT_EQ(Text().substr(0, 6), u"(xT 1)");
  EXPECT_TRUE(OutputHas(u"Change All: 1 replacement(s) accepted from 1 occurrence(s) reviewed."));
  Fields(u"morva en", u"y");
  Answer(platform::BoxAnswer::Yes, 1);
  headless::Click(kIdDoAll);
  EXPECT_NE(Text().find(u"(yD 1)"), std::u16string::npos);
}

void TwoSeconds() { headless::Advance(2000); }

// The refresh of a pause and autosave wrap foreign code while the first question stands open:
// two lines come in before the occurrence and one behind it.
TEST_F(FindEdges, MarkersThatComeWhileAQuestionStandsShiftNothing) {
  headless::EditorSetAll(kIdEditor, u"G0 X1\r\nG0 X2\r\nG0 X3");
  Fields(u"G0", u"G1");
  ASSERT_EQ(Text().find(u"MORVA"), std::u16string::npos);
  headless::TakeBoxes();
  headless::WhileOpen(TwoSeconds);
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdPromptEach);
  EXPECT_EQ(headless::TakeBoxes().size(), 3u);
  EXPECT_EQ(
      Text(),
      u"(MORVA TEXT 1)\r\n(MORVA NAME User code)\r\nG0 X1\r\nG1 X2\r\nG1 X3\r\n(MORVA END 1)");
  EXPECT_TRUE(OutputHas(u"Change All: 2 replacement(s) accepted from 3 occurrence(s) reviewed."));
}

TEST_F(FindEdges, AnOccurrenceThatSomebodyElseTookAwayIsNotReplaced) {
  Program(u"G0 X1\r\nG0 X2\r\n");
  Fields(u"G0", u"G1");
  headless::TakeBoxes();
  headless::WhileOpen([] { platform::ReplaceRange(kIdEditor, {15, 17}, u"M8"); });
  Answer(platform::BoxAnswer::Yes, 2);
  headless::Click(kIdPromptEach);
  EXPECT_EQ(headless::TakeBoxes().size(), 2u);
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\nM8 X1\r\nG1 X2\r\n(MORVA END 1)");
  EXPECT_TRUE(OutputHas(u"Change All: 1 replacement(s) accepted from 1 occurrence(s) reviewed."));
}

TEST_F(FindEdges, EachYesIsAnUndoStepOfItsOwn) {
  Program(u"G0 X1\r\nG0 X2\r\n");
  Fields(u"G0", u"G1");
  Answer(platform::BoxAnswer::Yes, 2);
  headless::Click(kIdPromptEach);
  EXPECT_TRUE(app.editorDirty);
  headless::Click(kUndo);
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\nG1 X1\r\nG0 X2\r\n(MORVA END 1)");
  headless::Click(kUndo);
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\nG0 X1\r\nG0 X2\r\n(MORVA END 1)");
}

TEST_F(FindEdges, StartThatChangesNothingLeavesTheProgramClean) {
  Program(u"G0 X1\r\n");
  Fields(u"G0", u"G1");
  Answer(platform::BoxAnswer::No, 1);
  headless::Click(kIdPromptEach);
  EXPECT_FALSE(app.editorDirty);
}

TEST_F(FindEdges, TheCompletionListStaysAwayFromWhatAChangeWrote) {
  Program(u"X1\r\n");
  Fields(u"X1", u"G0");
  Answer(platform::BoxAnswer::Yes, 1);
  headless::Click(kIdPromptEach);
  ASSERT_EQ(platform::FocusedId(), kIdEditor);
  for (int i = 0; i < 30; ++i) {
    headless::Advance(10);
    EXPECT_FALSE(platform::IsVisible(kIdCompletion)) << i;
  }
}

TEST_F(FindEdges, TheOutcomeOfAQuestionStaysInTheLogUnderThePointer) {
  Program(u"G0 X1\r\n");
  Fields(u"G0", u"G1");
  // Pressed after a rest on the key, and as soon as the pointer is there.
  for (const bool rests : {true, false}) {
    headless::MovePointerOver(kIdEditor);
    headless::Advance(300);
    headless::MovePointerOver(kIdPromptEach);
    if (rests) headless::Advance(300);
    EXPECT_EQ(platform::IsVisible(kIdOutputHelp), rests);
    headless::WhileOpen([] {
      headless::MovePointerOver(0);
      headless::Advance(300);
    });
    Answer(platform::BoxAnswer::No, 1);
    headless::Click(kIdPromptEach);
    headless::MovePointerOver(kIdPromptEach);
    headless::Advance(300);
    EXPECT_TRUE(OutputHas(u"Change All: 0 replacement(s) accepted from 1 occurrence(s) reviewed."));
    EXPECT_FALSE(platform::IsVisible(kIdOutputHelp));
    ClearOutput();
  }
}

// The words view.

TEST_F(FindEdges, RulesChangeTheCodeAndNotTheWords) {
  Program(u"G01 X1\r\n");
  headless::Click(kIdCommandWords);
  Fields(u"Linear", u"x");
  headless::Click(kApply);
  EXPECT_FALSE(app.commandWordsActive);
  EXPECT_EQ(Status(), u"0 replacements applied. Undo restores the previous code.");
  headless::Click(kIdCommandWords);
  Fields(u"G01", u"G00");
  headless::Click(kApply);
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\nG00 X1\r\n(MORVA END 1)");
}

TEST_F(FindEdges, DoAllChangesTheCodeUnderTheWordsAndStaysInThem) {
  Program(Repeated(u"G01 X1 Y1\r\n", 200));
  headless::Click(kIdCommandWords);
  // Behind "Linear Interpolation Motion" of line 120, which becomes "Rapid Motion".
  PutCaret(kIdWordsEditor, 120, 27);
  platform::ScrollToLine(kIdWordsEditor, 111);
  Fields(u"G01", u"M30");
  headless::TakeBoxes();
  Answer(platform::BoxAnswer::Yes, 1);
  headless::Click(kIdDoAll);
  EXPECT_TRUE(app.commandWordsActive);
  EXPECT_EQ(CountOccurrences(Text(), u"M30 X1 Y1"), 200);
  EXPECT_EQ(CountOccurrences(Words(), u"Linear"), 0);
  EXPECT_EQ(CaretLine(kIdWordsEditor), 120);
  EXPECT_EQ(platform::FirstVisibleLine(kIdWordsEditor), 111);
  EXPECT_TRUE(OutputHas(u"DO ALL complete: 200 occurrence(s) changed."));
  // The same from the words back to the code, and the step back.
  headless::Click(kUndo);
  EXPECT_EQ(CountOccurrences(Words(), u"Linear"), 200);
  EXPECT_EQ(CountOccurrences(Text(), u"G01 X1 Y1"), 200);
}

TEST_F(FindEdges, StartSwitchesTheWordsOff) {
  Program(u"G01 X1\r\n");
  headless::Click(kIdCommandWords);
  Fields(u"G01", u"G00");
  Answer(platform::BoxAnswer::Yes, 1);
  headless::Click(kIdPromptEach);
  EXPECT_FALSE(app.commandWordsActive);
  EXPECT_TRUE(platform::IsVisible(kIdEditor));
  EXPECT_EQ(Text(), u"(MORVA TEXT 1)\r\nG00 X1\r\n(MORVA END 1)");
}

// The review covers the code: what shows or changes code leaves it first.

TEST_F(FindEdges, ThePreviewLeavesTheReviewAlone) {
  Program(u"G01 X1\r\n");
  Fields(u"G01", u"G00");
  headless::Click(kIdCompareSecond);
  headless::Click(kPreview);
  EXPECT_TRUE(app.compareActive);
  EXPECT_EQ(Status(), u"1 matches in the active program. Apply Rules performs this batch.");
}

TEST_F(FindEdges, WhatShowsOrChangesTheCodeLeavesTheReview) {
  for (const int key : {int{kIdNextMatch}, kApply, kUndo, int{kIdPromptEach}, int{kIdDoAll}}) {
    Program(u"G01 X1\r\n");
    Fields(u"G01", u"G00");
    headless::Click(kIdCompareSecond);
    ASSERT_TRUE(app.compareActive) << key;
    Answer(platform::BoxAnswer::Yes, 1);
    headless::Click(key);
    headless::ClearQueues();
    EXPECT_FALSE(app.compareActive) << key;
    EXPECT_TRUE(platform::IsVisible(kIdEditor)) << key;
  }
  Fields(u"X1", u"X2");
  headless::Click(kIdCompareSecond);
  Answer(platform::BoxAnswer::No, 1);
  headless::Click(kIdDoAll);
  EXPECT_TRUE(app.compareActive) << "refused, so nothing changes";
}

// The limits.

TEST_F(FindEdges, ARuleThatGrowsTheTextTooFarChangesNothing) {
  // 40,000 lines of 48 characters and a line end.
  Program(Repeated(std::u16string(47, u'-') + u"A\r\n", 40000));
  const std::u16string before = Text();
  ASSERT_GT(before.size(), 2000000u);
  Fields(u"A", u"B");
  for (const int key : {kPreview, kApply}) {
    headless::Click(key);
    EXPECT_EQ(Status(), u"Replacement exceeds the size limit. No code changed.");
    EXPECT_TRUE(Text() == before);
    EXPECT_FALSE(app.editorDirty);
  }
}

TEST_F(FindEdges, ABatchEndsBelowTwoMillionCharacters) {
  // Both marker lines and the line ends are 31 characters: 999,984 doubled ones make 1,999,999.
  Program(std::u16string(999984, u'A') + u"\r\n");
  Fields(u"A", u"AA");
  headless::Click(kPreview);
  EXPECT_EQ(Status(), u"999984 matches in the active program. Apply Rules performs this batch.");
  Program(std::u16string(999985, u'A') + u"\r\n");
  headless::Click(kApply);
  EXPECT_EQ(Status(), u"Replacement exceeds the size limit. No code changed.");
  EXPECT_TRUE(Text() ==
              u"(MORVA TEXT 1)\r\n" + std::u16string(999985, u'A') + u"\r\n(MORVA END 1)");
}

TEST_F(FindEdges, WithoutMemoryForItsOutputABatchSaysSoAndChangesNothing) {
  Program(u"G1 X1\r\n");
  const std::u16string before = Text();
  Fields(u"G1", u"G2");
  for (const int key : {kPreview, kApply, int{kIdDoAll}}) {
    platform::SetText(kIdFindStatus, u"");
    Answer(platform::BoxAnswer::Yes, 1);
    shell_test::arraysUntilFailure = 1;
    headless::Click(key);
    headless::ClearQueues();
    EXPECT_EQ(shell_test::arraysUntilFailure, 0) << key;
    EXPECT_EQ(Status(), u"Replacement exceeds the size limit. No code changed.") << key;
    EXPECT_EQ(Text(), before) << key;
    EXPECT_FALSE(app.editorDirty) << key;
  }
}

TEST_F(FindEdges, DoAllWritesNoProgramThatCouldNotBeOpenedAgain) {
  // 140,000 times 255 is above the 33,554,432 that a file may have.
  Program(Repeated(u"XXXX\r\n", 35000));
  const std::u16string before = Text();
  Fields(u"X", std::u16string(255, u'Y'));
  Answer(platform::BoxAnswer::Yes, 1);
  headless::Click(kIdDoAll);
  EXPECT_EQ(Status(), u"Replacement exceeds the size limit. No code changed.");
  EXPECT_TRUE(Text() == before);
  EXPECT_FALSE(app.editorDirty);
  EXPECT_FALSE(OutputHas(u"DO ALL complete"));
}

// One block that leaves the file so many bytes to its limit.
void FillProgram(std::size_t room, std::u16string_view tail) {
  const std::u16string head = u"(MORVA TEXT 1)\r\n";
  const std::u16string line = u"(" + std::u16string(96, u'-') + u")\r\n";
  const std::u16string end = std::u16string(tail) + u"(MORVA END 1)";
  std::u16string text = head;
  while (text.size() + end.size() + line.size() + room <= kMaxReadBytes) text += line;
  text.insert(head.size(), kMaxReadBytes - room - text.size() - end.size(), u' ');
  headless::EditorSetAll(kIdEditor, text + end);
  headless::Advance(2000);
}

TEST_F(FindEdges, PromptEachWritesNoProgramThatCouldNotBeOpenedAgain) {
  FillProgram(90, u"Q\r\nQ\r\n");
  const std::u16string before = Text();
  Fields(u"Q", std::u16string(47, u'Y'));
  Answer(platform::BoxAnswer::Yes, 1);
  headless::Click(kIdPromptEach);
  EXPECT_EQ(Status(), u"Replacement exceeds the size limit. No code changed.");
  EXPECT_TRUE(Text() == before);
  // The first finds room, the second none.
  Fields(u"Q", std::u16string(42, u'Y'));
  Answer(platform::BoxAnswer::Yes, 2);
  headless::Click(kIdPromptEach);
  EXPECT_EQ(Status(), u"The next replacement exceeds the size limit. Those before it stay.");
  EXPECT_TRUE(OutputHas(u"Change All: 1 replacement(s) accepted from 2 occurrence(s) reviewed."));
  EXPECT_EQ(Text().size(), before.size() + 41);
}

TEST_F(FindEdges, RenumberWritesNoProgramThatCouldNotBeOpenedAgain) {
  FillProgram(3, u"G0 X1\r\n");
  const std::u16string before = Text();
  headless::TakeBoxes();
  headless::Click(kIdRenumber);
  const auto boxes = headless::TakeBoxes();
  ASSERT_FALSE(boxes.empty());
  EXPECT_NE(boxes.back().text.find(u"larger than 33554432 bytes"), std::u16string::npos);
  EXPECT_TRUE(Text() == before);
}

TEST_F(FindEdges, FortyThousandLinesTakeABatch) {
  Program(Repeated(u"G01 X1.5\r\n", 40000));
  Fields(u"G01", u"G1");
  headless::Click(kApply);
  EXPECT_EQ(Status(), u"40000 replacements applied. Undo restores the previous code.");
  EXPECT_EQ(CountOccurrences(Text(), u"G1 X1.5"), 40000);
}

}  // namespace
}  // namespace morva
