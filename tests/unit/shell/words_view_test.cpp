// Daily work with the command words in the code editor's place: checking, renumbering, undo,
// other programs, insertion, and what the view looks like.

#include "codetools/words_view.h"

#include "app/change_guard.h"
#include "app/hooks.h"
#include "codetools/colours.h"
#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "documents/program_tabs.h"
#include "platform/window.h"
#include "simulator/motion_path.h"
#include "support/program_maker.h"
#include "support/reference_pair.h"
#include "support/workbench.h"
#include "unit/shell/failing_arrays.h"

namespace morva {
namespace {

class WordsAtWork : public support::Workbench {
 protected:
  void SetUp() override {
    support::Workbench::SetUp();
    headless::EditorSetAll(kIdEditor, kProgram);
    headless::Advance(1000);
    headless::Click(kIdCommandWords);
  }
  static std::u16string Words() { return std::u16string(platform::EditorText(kIdWordsEditor)); }
  static void Press(int key, bool alt = false) {
    platform::KeyEvent event;
    event.key = key;
    event.alt = alt;
    headless::PressKey(event);
  }
  // The caret of the view behind so many characters of a line.
  static void PutCaret(int line, int column) {
    const int at = platform::EditorLineStart(kIdWordsEditor, line) + column;
    headless::EditorSelect(kIdWordsEditor, at, at);
  }
  static std::u16string Line(int line) {
    const std::u16string words = Words();
    const auto start =
        static_cast<std::size_t>(platform::EditorLineStart(kIdWordsEditor, line) + line);
    return words.substr(start,
                        static_cast<std::size_t>(platform::EditorLineLength(kIdWordsEditor, line)));
  }
  static constexpr const char16_t* kProgram =
      u"(MORVA TEXT 1)\r\nO1000\r\nG90 G40 G49\r\nG01 X1. F10.\r\nM30\r\n(MORVA END 1)\r\n";
  static constexpr const char16_t* kWords =
      u"(MORVA TEXT 1)\r\nProgram 1000\r\nAbsolute Position Command Cutter Compensation Cancel "
      u"Tool "
      u"Length Compensation Cancel\r\nLinear Interpolation Motion X1. F10.\r\nProgram End and "
      u"Reset\r\n(MORVA END 1)\r\n";
};

TEST_F(WordsAtWork, F5ValidatesTheCodeThatTheWordsStandFor) {
  EXPECT_EQ(Words(), kWords);
  EXPECT_EQ(platform::FocusedId(), kIdWordsEditor);
  Press(platform::kKeyF1 + 4);
  // The one warning left is the missing percent sign.
  EXPECT_TRUE(OutputHas(u"WARNING: % delimiters not found"));
  EXPECT_TRUE(OutputHas(u"Validation complete: 0 error(s), 1 warning(s)."));
  EXPECT_EQ(Words(), kWords);
  EXPECT_EQ(platform::FocusedId(), kIdWordsEditor);
}

TEST_F(WordsAtWork, TheKeyboardComesBackToTheWordsFromTheDrawing) {
  for (const int way : {kIdSurfaceCode, kIdBack}) {
    ASSERT_TRUE(headless::Click(kIdSurfaceCad));
    ASSERT_EQ(platform::FocusedId(), kViewCadCanvas);
    ASSERT_TRUE(headless::Click(way));
    EXPECT_EQ(platform::FocusedId(), kIdWordsEditor) << way;
  }
}

TEST_F(WordsAtWork, ThePathFollowsWhatIsTypedInWords) {
  headless::Click(kIdPath);
  const int before = path.count;
  PutCaret(3, platform::EditorLineLength(kIdWordsEditor, 3));
  headless::EditorInsert(kIdWordsEditor, u"\nRapid Motion Positioning Y2.");
  headless::Click(kIdPath);
  ASSERT_EQ(path.count, before + 1);
  EXPECT_EQ(path.points[before].y, 2.0);
  EXPECT_TRUE(path.points[before].rapid);
}

TEST_F(WordsAtWork, RenumberingShowsInTheWordsAndIsUndoneThere) {
  headless::Click(kIdRenumber);
  EXPECT_EQ(Line(3), u"Sequence 20 Linear Interpolation Motion X1. F10.");
  headless::Focus(kIdWordsEditor);
  Press('Z', true);
  EXPECT_EQ(Words(), kWords);
  EXPECT_EQ(Text(), kProgram);
}

TEST_F(WordsAtWork, RenumberingLeavesTheCaretWhereItIsSeen) {
  // In the view: behind "Motion", without a key typed there.
  PutCaret(3, 27);
  headless::Click(kIdRenumber);
  const int caret = platform::EditorSelection(kIdWordsEditor).to;
  EXPECT_EQ(caret, platform::EditorLineStart(kIdWordsEditor, 3) + 12 + 27);
  // In the code: behind "X1." of "N20 G01 X1. F10.".
  headless::Click(kIdCommandWords);
  headless::EditorSelect(kIdEditor, platform::EditorLineStart(kIdEditor, 3) + 11,
                         platform::EditorLineStart(kIdEditor, 3) + 11);
  headless::EditorInsert(kIdEditor, u"5");
  headless::Click(kIdRenumber);
  EXPECT_EQ(platform::EditorSelection(kIdEditor).to, platform::EditorLineStart(kIdEditor, 3) + 12);
}

TEST_F(WordsAtWork, WhatWasTypedBeforeMarkersCameIsStillUndone) {
  PutCaret(6, 0);
  headless::EditorInsert(kIdWordsEditor, u"Dwell");
  headless::Advance(200);
  ASSERT_NE(Words().find(u"(MORVA TEXT 2)"), std::u16string::npos);
  headless::EditorUndo(kIdWordsEditor);
  headless::EditorUndo(kIdWordsEditor);
  EXPECT_EQ(Text(), kProgram);
  EXPECT_EQ(Words(), kWords);
}

TEST_F(WordsAtWork, AnotherProgramStartsWithoutTheStepsOfTheLast) {
  PutCaret(3, 0);
  headless::EditorInsert(kIdWordsEditor, u"Dwell ");
  headless::Click(kIdTabNew);
  EXPECT_NE(Words().find(u"Select Inches"), std::u16string::npos);
  EXPECT_FALSE(platform::CanUndoEditor(kIdWordsEditor));
  headless::Click(kIdTabFirst);
  EXPECT_EQ(Line(3), u"Dwell Linear Interpolation Motion X1. F10.");
  EXPECT_FALSE(platform::CanUndoEditor(kIdWordsEditor));
}

TEST_F(WordsAtWork, ClosingAProgramShowsTheWordsOfTheOneLeft) {
  headless::Click(kIdTabNew);
  headless::Advance(1000);
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdClose);
  EXPECT_EQ(app.tabCount, 1);
  EXPECT_TRUE(app.commandWordsActive);
  EXPECT_EQ(Words(), kWords);
  EXPECT_EQ(Text(), kProgram);
}

TEST_F(WordsAtWork, AProgramComesBackWhereItsWordsWereLeft) {
  std::u16string lines;
  for (int i = 0; i < 400; ++i) lines += u"G01 X1.\r\n";
  const int other = OpenTab(u"", lines, u"long");
  SwitchTab(other);
  PutCaret(300, 6);
  platform::ScrollToLine(kIdWordsEditor, 200);
  SwitchTab(0);
  EXPECT_EQ(platform::FirstVisibleLine(kIdWordsEditor), 0);
  PutCaret(3, 9);
  SwitchTab(other);
  const int caret = platform::EditorSelection(kIdWordsEditor).to;
  EXPECT_EQ(caret, platform::EditorLineStart(kIdWordsEditor, 300) + 6);
  EXPECT_EQ(platform::FirstVisibleLine(kIdWordsEditor), 200);
  SwitchTab(0);
  EXPECT_EQ(platform::EditorSelection(kIdWordsEditor).to,
            platform::EditorLineStart(kIdWordsEditor, 3) + 9);
  // Left with its code shown, it comes back at the line of the code's caret.
  SwitchTab(other);
  headless::Click(kIdCommandWords);
  const int start = platform::EditorLineStart(kIdEditor, 40);
  headless::EditorSelect(kIdEditor, start + 3, start + 3);
  SwitchTab(0);
  headless::Click(kIdCommandWords);
  SwitchTab(other);
  EXPECT_EQ(platform::EditorSelection(kIdWordsEditor).to,
            platform::EditorLineStart(kIdWordsEditor, 40));
}

TEST_F(WordsAtWork, ASelectionStandsWhereTheViewWouldComeOutTheSame) {
  // The code's caret is on the line of the selection's end, as typing leaves it.
  PutCaret(3, 0);
  headless::EditorInsert(kIdWordsEditor, u"X");
  headless::EditorUndo(kIdWordsEditor);
  const int from = platform::EditorLineStart(kIdWordsEditor, 3);
  headless::EditorSelect(kIdWordsEditor, from, from + 6);
  SyncWordsFromCode();
  EXPECT_EQ(platform::EditorSelection(kIdWordsEditor).from, from);
  EXPECT_EQ(platform::EditorSelection(kIdWordsEditor).to, from + 6);
}

TEST_F(WordsAtWork, AnInsertedWordKeepsFromWhatItWouldTouch) {
  headless::Click(kIdShowIndex);
  // In front of "X1. F10." the bare code goes in without a blank of its own.
  PutCaret(3, 28);
  headless::SelectRows(kIdIndexList, {4});
  headless::Click(kIdIndexInsert);
  EXPECT_EQ(Line(3), u"Linear Interpolation Motion Dwell X1. F10.");
  EXPECT_NE(Text().find(u"\r\nG01 G04 X1. F10.\r\n"), std::u16string::npos);
  // Behind a digit.
  PutCaret(1, 12);
  headless::DoubleClickRow(kIdIndexList, 4);
  EXPECT_EQ(Line(1), u"Program 1000 Dwell ");
  EXPECT_NE(Text().find(u"\r\nO1000 G04 \r\n"), std::u16string::npos);
}

TEST_F(WordsAtWork, NothingComesBetweenWhereNothingTouches) {
  headless::Click(kIdShowIndex);
  PutCaret(3, 27);
  headless::TypeInto(kIdIndexInsertion, u"X5.");
  headless::Click(kIdIndexInsert);
  EXPECT_EQ(Line(3), u"Linear Interpolation MotionX5. X1. F10.") << "the user's text as it stands";
}

TEST_F(WordsAtWork, ACompletedWordKeepsFromWhatItWouldTouch) {
  PutCaret(3, 32);
  headless::EditorInsert(kIdWordsEditor, u"dwe");
  headless::DrainPosts();
  ASSERT_TRUE(platform::IsVisible(kIdCompletion));
  Press(platform::kKeyTab);
  EXPECT_EQ(Line(3), u"Linear Interpolation Motion X1. Dwell F10.");
  EXPECT_NE(Text().find(u"\r\nG01 X1. G04 F10.\r\n"), std::u16string::npos);
}

// What nobody touches in the view keeps its code to the character.
class UntouchedWords : public WordsAtWork {
 protected:
  void SetUp() override {
    support::Workbench::SetUp();
    headless::EditorSetAll(kIdEditor, kLoose);
    headless::Advance(1000);
    ASSERT_EQ(Text(), kLoose);
    headless::Click(kIdCommandWords);
  }
  static constexpr const char16_t* kLoose =
      u"(MORVA TEXT 1)\r\no1\r\nG1X1 ; M6 then G1\r\nT1M6\r\nDPRNT[G1*X#1[44]]\r\nm8\r\n"
      u"(MORVA END 1)\r\n";
  static std::u16string With(std::u16string_view before, std::u16string_view after) {
    std::u16string text = kLoose;
    return text.replace(text.find(before), before.size(), after);
  }
  static void TypeBehind(std::u16string_view words, std::u16string_view text) {
    const std::u16string view = Words();
    const auto at = static_cast<std::int32_t>(view.find(words) + words.size());
    const int position = MapTextOffset(view, at);
    headless::EditorSelect(kIdWordsEditor, position, position);
    headless::EditorInsert(kIdWordsEditor, text);
  }
};

TEST_F(UntouchedWords, LookingAndLeavingMakesNoChangeNoUndoStepAndNoDirtyMark) {
  WriteFile("part.NC", "g1x1 ;M6\nM8\n");
  Open("part.NC");
  headless::Advance(2000);
  const std::u16string before = Text();
  const bool dirty = app.editorDirty;
  headless::Click(kIdCommandWords);
  headless::Advance(2000);
  headless::Click(kIdCommandWords);
  headless::Advance(2000);
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(app.editorDirty, dirty);
  headless::Click(kIdClose);
  EXPECT_EQ(ReadFile("part.NC"), "g1x1 ;M6\nM8\n");
}

TEST_F(UntouchedWords, AnEditedLineAloneIsConverted) {
  TypeBehind(u"T1 Tool Change \u2014 Command M06", u" Dwell P1");
  EXPECT_EQ(Text(), With(u"T1M6", u"T1 M06 G04 P1"));
  headless::Click(kIdCommandWords);
  EXPECT_EQ(Text(), With(u"T1M6", u"T1 M06 G04 P1"));
}

TEST_F(UntouchedWords, TextThatIsNoCodeStandsInTheViewAsItIs) {
  EXPECT_NE(Words().find(u"Linear Interpolation Motion X1 ; M6 then G1\r\n"), std::u16string::npos);
  EXPECT_NE(Words().find(u"\r\nDPRNT[G1*X#1[44]]\r\n"), std::u16string::npos);
}

TEST_F(UntouchedWords, UndoBringsTheCodeBackThatStoodThere) {
  TypeBehind(u"Motion X1", u"5");
  ASSERT_EQ(Text(), With(u"G1X1", u"G01 X15"));
  headless::EditorUndo(kIdWordsEditor);
  EXPECT_EQ(Text(), kLoose);
}

TEST_F(UntouchedWords, UndoBehindARenumberingBringsTheCodeBackThatStoodThere) {
  TypeBehind(u"Motion X1", u"5");
  const std::u16string edited = Text();
  headless::Click(kIdRenumber);
  ASSERT_NE(Text(), edited);
  ASSERT_NE(Text().find(u"N20 T1M6\r\n"), std::u16string::npos);
  const std::u16string renumbered = Text();
  headless::EditorUndo(kIdWordsEditor);
  EXPECT_EQ(Text(), edited);
  platform::RedoEditor(kIdWordsEditor);
  EXPECT_EQ(Text(), renumbered);
  headless::EditorUndo(kIdWordsEditor);
  headless::EditorUndo(kIdWordsEditor);
  EXPECT_EQ(Text(), kLoose);
}

TEST_F(UntouchedWords, UndoBehindMarkersBringsTheCodeBackThatStoodThere) {
  TypeBehind(u"Motion X1", u"5");
  TypeBehind(u"(MORVA END 1)", u"\r\nDwell");
  headless::Advance(200);
  ASSERT_NE(Text().find(u"(MORVA TEXT 2)"), std::u16string::npos);
  while (platform::UndoEditor(kIdWordsEditor)) {
  }
  EXPECT_EQ(Text(), kLoose);
}

TEST_F(UntouchedWords, ABlockInsertedMeanwhileStandsBesideThemAsItWasWritten) {
  headless::Click(kIdFeatureNew);
  EXPECT_EQ(Text().find(kLoose), 0u);
  EXPECT_NE(Text().find(u"(MORVA TEXT 2)"), std::u16string::npos);
  InsertTextAtCaret(u"G1X9\r\nm9", false);
  EXPECT_NE(Text().find(u"G1X9\r\nm9"), std::u16string::npos);
  EXPECT_EQ(Text().find(kLoose), 0u);
}

TEST_F(UntouchedWords, TheWordsOfAnotherProgramNeverReachThisOne) {
  TypeBehind(u"Motion X1", u"5");
  headless::Click(kIdTabNew);
  const std::u16string other = Text();
  Call(hooks.editorFromWords);
  EXPECT_EQ(Text(), other);
  headless::Click(kIdTabFirst);
  EXPECT_EQ(Text(), With(u"G1X1", u"G01 X15"));
  headless::Click(kIdCommandWords);
  EXPECT_EQ(Text(), With(u"G1X1", u"G01 X15"));
}

// A change of the code that nobody told the view of stands: the code is the truth.
TEST_F(UntouchedWords, CodeThatWasChangedBehindTheViewIsNotOverwritten) {
  {
    const SuppressChanges quiet;
    platform::ReplaceRange(kIdEditor, {0, 0}, u"%\r\n");
  }
  TypeBehind(u"Motion X1", u"5");
  EXPECT_EQ(Text(), u"%\r\n" + std::u16string(kLoose));
  EXPECT_EQ(Words().substr(0, 3), u"%\r\n");
  TypeBehind(u"Motion X1", u"5");
  EXPECT_EQ(Text(), u"%\r\n" + With(u"G1X1", u"G01 X15"));
}

TEST_F(UntouchedWords, WhatIsSavedBesideAnEditIsTheCodeAsItWas) {
  WriteFile("part.NC", "(MORVA TEXT 1)\r\ng1x1\r\nM8\r\n(MORVA END 1)\r\n");
  Open("part.NC");
  TypeBehind(u"Coolant On", u" Dwell P2");
  headless::Advance(2000);
  EXPECT_EQ(ReadFile("part.NC"), "(MORVA TEXT 1)\r\ng1x1\r\nM08 G04 P2\r\n(MORVA END 1)\r\n");
}

int RunsOfWordsLine(int line) {
  platform::ColourRun runs[8];
  return platform::LineRuns(kIdWordsEditor, line, runs, 8);
}

TEST_F(WordsAtWork, TheWordsOf250000UnitsOfCodeBearColoursAndThoseOfOneMoreDoNot) {
  headless::Click(kIdCommandWords);
  for (const std::size_t units : {250000u, 250001u, 250000u}) {
    std::u16string text = u"G04\r\n";
    while (text.size() + 100 < units) text += u"G04 " + std::u16string(44, u'-') + u"\r\n";
    text += std::u16string(units - text.size() - 5, u'-') + u"\r\nG04";
    ASSERT_EQ(text.size(), units);
    platform::SetEditorText(kIdEditor, text);
    SetWordsView(true);
    // The words alone are longer than the limit either way: "Dwell" has two units more.
    ASSERT_GT(platform::EditorText(kIdWordsEditor).size(), 255000u);
    const int wanted = units == 250000u ? 1 : 0;
    EXPECT_EQ(RunsOfWordsLine(0), wanted) << units;
    EXPECT_EQ(RunsOfWordsLine(platform::EditorLineCount(kIdWordsEditor) - 1), wanted) << units;
    SetWordsView(false);
  }
}

constexpr char16_t kNoMemory[] =
    u"The memory does not suffice for the command words of this program. Its G-code is shown.";

TEST_F(WordsAtWork, DoNotComeUpWithoutMemoryForThem) {
  headless::Click(kIdCommandWords);  // back to the code
  ASSERT_FALSE(app.commandWordsActive);
  app.editorDirty = false;
  shell_test::arraysUntilFailure = 1;
  headless::Click(kIdCommandWords);
  EXPECT_EQ(shell_test::arraysUntilFailure, 0);
  EXPECT_FALSE(app.commandWordsActive);
  EXPECT_TRUE(platform::IsVisible(kIdEditor));
  EXPECT_FALSE(platform::IsVisible(kIdWordsEditor));
  EXPECT_EQ(platform::TextOf(kIdStatusLine), kNoMemory);
  EXPECT_TRUE(OutputHas(kNoMemory));
  EXPECT_FALSE(app.editorDirty);
  headless::Click(kIdCommandWords);
  EXPECT_TRUE(app.commandWordsActive);
  EXPECT_EQ(Words(), kWords);
}

TEST_F(WordsAtWork, GoWhereAnotherProgramsWordsFindNoMemory) {
  PutCaret(1, 0);
  headless::EditorInsert(kIdWordsEditor, u"Program 7\r\n");
  headless::Advance(1000);
  const std::u16string typed = Text();
  shell_test::arraysUntilFailure = 1;
  headless::Click(kIdTabNew);
  EXPECT_FALSE(app.commandWordsActive);
  EXPECT_TRUE(platform::IsVisible(kIdEditor));
  EXPECT_FALSE(platform::IsVisible(kIdWordsEditor));
  EXPECT_TRUE(OutputHas(kNoMemory));
  // What is typed now goes into the program that is shown.
  headless::EditorInsert(platform::FocusedId(), u"M8 ");
  EXPECT_NE(Text().find(u"M8 "), Text().npos);
  SwitchTab(0);
  EXPECT_EQ(Text(), typed);
}

// Any edits, undone and done again, beside the pair that compares whole texts.
TEST_F(WordsAtWork, AnyEditsLeaveTheCodeThatWholeTextsWould) {
  static constexpr const char16_t* kPut[] = {
      u"5", u"G1", u"Dwell", u"(", u")", u"\n", u"", u"Dwell X1\nG1 X2\n", u"Coolant On\n", u";"};
  const std::u16string start = Text();
  for (std::uint32_t seed = 0; seed < 20; ++seed) {
    headless::Click(kIdCommandWords);
    std::u16string program = start;
    for (std::uint32_t i = 0; i < seed; ++i) program += u"g1x1\r\nM8\r\nM8\r\nG01 X1\r\n";
    headless::EditorSetAll(kIdEditor, program);
    headless::Advance(1000);
    headless::Click(kIdCommandWords);
    reference::WordsPair whole;
    ASSERT_TRUE(reference::MakeWordsPair(Text(), whole));
    reference::Dice dice{seed * 911 + 3};
    for (int edit = 0; edit < 60; ++edit) {
      const int length = platform::EditorLength(kIdWordsEditor);
      const int from = static_cast<int>(dice.Roll(static_cast<std::uint32_t>(length) + 1));
      const int most = dice.Roll(3) == 0 ? length - from : std::min(4, length - from);
      const int to = from + static_cast<int>(dice.Roll(static_cast<std::uint32_t>(most) + 1));
      const std::uint32_t kind = dice.Roll(12);
      if (kind < 3) {
        headless::EditorUndo(kIdWordsEditor);
      } else if (kind == 3) {
        platform::RedoEditor(kIdWordsEditor);
      } else if (kind == 4 && dice.Roll(4) == 0) {
        headless::EditorSetAll(kIdWordsEditor, u"Dwell\nG1\n");
      } else {
        headless::EditorSelect(kIdWordsEditor, from, to);
        headless::EditorInsert(kIdWordsEditor, kPut[dice.Roll(std::size(kPut))]);
      }
      const int caret = platform::EditorSelection(kIdWordsEditor).to;
      const int line = platform::EditorLineOf(kIdWordsEditor, caret);
      reference::TakeWords(whole, Words(), static_cast<std::size_t>(caret + line));
      ASSERT_EQ(Text(), whole.code) << seed << " " << edit;
    }
    while (platform::UndoEditor(kIdWordsEditor)) {
    }
  }
}

}  // namespace
}  // namespace morva
