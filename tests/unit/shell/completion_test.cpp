// The completion list over the whole application: what opens it, its keys and what it writes.

#include "app/hooks.h"
#include "app/outlets.h"
#include "codetools/completion_popup.h"
#include "documents/program_tabs.h"
#include "documents/save_state.h"
#include "documents/save_words.h"
#include "documents/saving.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/layout.h"
#include "support/workbench.h"

namespace morva {
namespace {

class CompletionList : public support::Workbench {
 protected:
  void SetUp() override {
    support::Workbench::SetUp();
    // A block of its own, so that the tagger leaves the text as it is.
    headless::EditorSetAll(kIdEditor, kProgram);
    headless::Advance(1000);
    PutCaret(1);
  }
  static void PutCaret(int line) {
    const int end =
        platform::EditorLineStart(kIdEditor, line) + platform::EditorLineLength(kIdEditor, line);
    headless::EditorSelect(kIdEditor, end, end);
  }
  static void Type(std::u16string_view text) {
    headless::EditorInsert(kIdEditor, text);
    headless::DrainPosts();
  }
  static void Press(int key, bool ctrl = false) {
    platform::KeyEvent event;
    event.key = key;
    event.ctrl = ctrl;
    headless::PressKey(event);
  }
  static bool Shown() { return platform::IsVisible(kIdCompletion); }
  static std::u16string Row(int row) { return platform::RowText(kIdCompletion, row); }
  static std::u16string Line(int line) {
    const std::u16string text = Text();
    const auto start = static_cast<std::size_t>(platform::EditorLineStart(kIdEditor, line) + line);
    return text.substr(start,
                       static_cast<std::size_t>(platform::EditorLineLength(kIdEditor, line)));
  }
  static std::u16string Status() { return app.statusText; }
  static constexpr const char16_t* kProgram = u"(MORVA TEXT 1)\r\nN10 \r\n(MORVA END 1)\r\n";
};

TEST_F(CompletionList, OpensOnATypedGAndLeavesTheKeyboardToTheEditor) {
  EXPECT_FALSE(Shown());
  Type(u"G");
  EXPECT_TRUE(Shown());
  EXPECT_EQ(platform::RowCount(kIdCompletion), 107);
  EXPECT_EQ(Row(0), u">  G00     Rapid Motion Positioning");
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
  EXPECT_EQ(Status(),
            u"G00 \u2014 Rapid Motion Positioning  \u2022  Up/Down choose  \u2022  Tab inserts  "
            u"\u2022  Esc closes");
  // What was chosen is what Enter takes.
  headless::PressKey({platform::kKeyDown});
  EXPECT_NE(Status().find(u"  \u2022  Enter or Tab inserts  \u2022  "), std::u16string::npos);
}

TEST_F(CompletionList, NarrowsAndClosesWithTheHelpOfAFullCode) {
  Type(u"G0");
  EXPECT_EQ(platform::RowCount(kIdCompletion), 6);
  Type(u"1");
  EXPECT_FALSE(Shown());
  EXPECT_EQ(Status().substr(0, 24), u"Feed-limited linear move");
}

TEST_F(CompletionList, CtrlSpaceHelpsAtAWordWithoutRowsAlsoWhileTheAutosaveIsHeld) {
  Type(u"X1.5");
  Press(platform::kKeySpace, true);
  EXPECT_FALSE(Shown());
  EXPECT_EQ(Status().substr(0, 14), u"X-axis address");
  NoteHeld(*ActiveTab(), AutosaveHold::Loss);
  Type(u"2");
  Press(platform::kKeySpace, true);
  EXPECT_EQ(Status().substr(0, 14), u"X-axis address");
  // At a word that nobody knows it stays told that nothing is saved.
  Type(u" Q1");
  Press(platform::kKeySpace, true);
  EXPECT_EQ(Status(), HeldWords());
}

// A panel's help for its field takes the line for as long as the field has the keyboard.
TEST_F(CompletionList, APanelsHelpGivesWayToWhatHoldsTheAutosave) {
  EXPECT_FALSE(Call(hooks.tellStanding));
  NoteHeld(*ActiveTab(), AutosaveHold::Loss);
  ShowStatus(u"Help of a field");
  EXPECT_TRUE(Call(hooks.tellStanding));
  EXPECT_EQ(Status(), HeldWords());
}

TEST_F(CompletionList, EnterWritesTheChosenCodeWithoutABlank) {
  tabs[0].dirty = false;
  app.editorDirty = false;
  Type(u"g0");
  Press(platform::kKeyDown);
  Press(platform::kKeyDown);
  Press(platform::kKeyUp);
  EXPECT_EQ(Row(0), u"   G00     Rapid Motion Positioning");
  EXPECT_EQ(Row(1), u">  G01     Linear Interpolation Motion");
  Press(platform::kKeyEnter);
  EXPECT_FALSE(Shown());
  EXPECT_EQ(Line(1), u"N10 G01");
  EXPECT_EQ(Status(), u"Inserted G01 \u2014 Linear Interpolation Motion");
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
  EXPECT_TRUE(tabs[0].dirty);
  headless::EditorUndo(kIdEditor);
  EXPECT_EQ(Line(1), u"N10 g0");
}

// "M8" lists M80 and on; a machinist types it and Enter.
TEST_F(CompletionList, EnterBreaksTheLineBehindACodeThatNobodyChose) {
  for (const char16_t* code : {u"M8", u"M5", u"M3", u"M9", u"M6", u"G1", u"G2", u"m8", u"G"}) {
    headless::EditorSetAll(kIdEditor, kProgram);
    headless::Advance(1000);
    PutCaret(1);
    Type(code);
    ASSERT_TRUE(Shown()) << Row(0).size();
    Press(platform::kKeyEnter);
    EXPECT_FALSE(Shown());
    headless::Advance(300);
    EXPECT_FALSE(Shown());
    EXPECT_EQ(Line(1), u"N10 " + std::u16string(code));
    EXPECT_EQ(Line(2), u"");
    Type(u"X1");
    EXPECT_EQ(Line(2), u"X1");
  }
}

TEST_F(CompletionList, EnterBreaksTheLineAlsoBeforeTheListHasFollowedTheLastKey) {
  Type(u"M");
  headless::EditorInsert(kIdEditor, u"8");
  Press(platform::kKeyEnter);
  headless::Advance(300);
  EXPECT_EQ(Line(1), u"N10 M8");
  EXPECT_FALSE(Shown());
}

TEST_F(CompletionList, WhoTypesOnHasChosenNothing) {
  Type(u"M");
  Press(platform::kKeyDown);
  Type(u"8");
  ASSERT_TRUE(Shown());
  Press(platform::kKeyEnter);
  EXPECT_EQ(Line(1), u"N10 M8");
  PutCaret(2);
  Press(platform::kKeySpace, true);
  Type(u"M8");
  ASSERT_TRUE(Shown());
  Press(platform::kKeyEnter);
  EXPECT_EQ(Line(2), u"M8");
}

TEST_F(CompletionList, EnterTakesTheRowOfAListThatWasAskedFor) {
  Type(u"M8");
  Press(platform::kKeySpace, true);
  Press(platform::kKeyEnter);
  EXPECT_EQ(Line(1), u"N10 M80");
}

TEST_F(CompletionList, EnterTakesTheFirstRowWhereTheUserCameBackToIt) {
  Type(u"M8");
  Press(platform::kKeyUp);
  Press(platform::kKeyEnter);
  EXPECT_EQ(Line(1), u"N10 M80");
}

TEST_F(CompletionList, TabAcceptsToo) {
  Type(u"M0");
  Press(platform::kKeyTab);
  EXPECT_EQ(Line(1), u"N10 M00");
}

TEST_F(CompletionList, DoesNotOpenOnItsOwnText) {
  Type(u"G10");
  ASSERT_TRUE(Shown());
  Press(platform::kKeyTab);
  headless::Advance(300);
  EXPECT_FALSE(Shown());
  Type(u"0");
  EXPECT_EQ(Line(1), u"N10 G100");
  EXPECT_FALSE(Shown());
  Type(u" G");
  EXPECT_TRUE(Shown());
}

TEST_F(CompletionList, EscapeClosesAndTheNextCharacterOpens) {
  Type(u"G");
  Press(platform::kKeyEscape);
  EXPECT_FALSE(Shown());
  EXPECT_EQ(Line(1), u"N10 G");
  headless::Advance(100);
  EXPECT_FALSE(Shown());
  Type(u"0");
  EXPECT_TRUE(Shown());
}

TEST_F(CompletionList, AClickOnARowAcceptsItAndTheEditorKeepsTheKeyboard) {
  Type(u"G0");
  ASSERT_TRUE(headless::ClickInRow(kIdCompletion, 4, 10));
  EXPECT_EQ(Line(1), u"N10 G04");
  EXPECT_FALSE(Shown());
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
}

TEST_F(CompletionList, CtrlSpaceListsTheFirst128Rows) {
  Press(platform::kKeySpace, true);
  EXPECT_TRUE(Shown());
  EXPECT_EQ(platform::RowCount(kIdCompletion), 128);
  headless::Advance(300);
  EXPECT_TRUE(Shown());
  Press(platform::kKeyDown);
  Press(platform::kKeyEnter);
  EXPECT_EQ(Line(1), u"N10 G01");
}

TEST_F(CompletionList, ClosedItLeavesEnterToTheText) {
  const int lines = platform::EditorLineCount(kIdEditor);
  Type(u"X1\n");
  EXPECT_FALSE(Shown());
  EXPECT_EQ(platform::EditorLineCount(kIdEditor), lines + 1);
}

TEST_F(CompletionList, ClosedItLeavesTabToTheText) {
  Type(u"X1");
  ASSERT_FALSE(Shown());
  Press(platform::kKeyTab);
  EXPECT_EQ(Line(1), u"N10 X1\t");
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
}

TEST_F(CompletionList, ATypedBlankCloses) {
  Type(u"G");
  Type(u" ");
  EXPECT_FALSE(Shown());
}

TEST_F(CompletionList, TheChoiceStandsWhileRefreshesFollow) {
  Type(u"G0");
  Press(platform::kKeyDown);
  headless::Advance(500);
  ASSERT_TRUE(Shown());
  EXPECT_EQ(platform::SelectedRow(kIdCompletion), 1);
  Press(platform::kKeyEnter);
  EXPECT_EQ(Line(1), u"N10 G01");
}

TEST_F(CompletionList, TheTaggerMovingTheTextKeepsChoiceAndRange) {
  // Foreign text behind the last block: the refresh puts a marker line before it.
  PutCaret(platform::EditorLineCount(kIdEditor) - 1);
  Type(u"X1 G0");
  Press(platform::kKeyDown);
  headless::Advance(140);
  const std::u16string before = Text();
  headless::Advance(60);
  ASSERT_NE(Text(), before);
  ASSERT_TRUE(Shown());
  Press(platform::kKeyEnter);
  EXPECT_NE(Text().find(u"X1 G01\r\n"), std::u16string::npos);
}

TEST_F(CompletionList, AMovedCaretCloses) {
  Type(u"G0");
  headless::EditorSelect(kIdEditor, 0, 0);
  EXPECT_FALSE(Shown());
}

TEST_F(CompletionList, LosingTheKeyboardCloses) {
  Type(u"G");
  headless::Focus(kIdFeatureName);
  EXPECT_FALSE(Shown());
}

TEST_F(CompletionList, AChangeOfModeOrTabCloses) {
  Type(u"G");
  headless::Click(kIdFind);
  EXPECT_FALSE(Shown());
  headless::Click(kIdBack);
  headless::Focus(kIdEditor);
  Type(u"0");
  ASSERT_TRUE(Shown());
  headless::Click(kIdTabNew);
  EXPECT_FALSE(Shown());
}

TEST_F(CompletionList, WritesTheWordInTheWordsView) {
  headless::Click(kIdCommandWords);
  const int end =
      platform::EditorLineStart(kIdWordsEditor, 1) + platform::EditorLineLength(kIdWordsEditor, 1);
  headless::EditorSelect(kIdWordsEditor, end, end);
  headless::EditorInsert(kIdWordsEditor, u"dwe");
  headless::DrainPosts();
  ASSERT_TRUE(Shown());
  EXPECT_EQ(Row(0), u">  G04     Dwell");
  Press(platform::kKeyTab);
  EXPECT_EQ(std::u16string(platform::EditorText(kIdWordsEditor)).find(u"dwe"),
            std::u16string::npos);
  EXPECT_NE(Text().find(u"G04"), std::u16string::npos);
  headless::Click(kIdCommandWords);
  EXPECT_FALSE(Shown());
}

TEST_F(CompletionList, EnterBreaksALineOfTheWordsThatNobodyCompleted) {
  headless::Click(kIdCommandWords);
  const int end =
      platform::EditorLineStart(kIdWordsEditor, 1) + platform::EditorLineLength(kIdWordsEditor, 1);
  headless::EditorSelect(kIdWordsEditor, end, end);
  headless::EditorInsert(kIdWordsEditor, u"coolant o");
  headless::DrainPosts();
  ASSERT_TRUE(Shown());
  Press(platform::kKeyEnter);
  EXPECT_FALSE(Shown());
  EXPECT_NE(Text().find(u"\r\nN10 coolant o\r\n\r\n(MORVA END 1)"), std::u16string::npos);
  headless::EditorInsert(kIdWordsEditor, u"M8");
  headless::DrainPosts();
  Press(platform::kKeyEnter);
  EXPECT_NE(Text().find(u"\r\nM8\r\n\r\n(MORVA END 1)"), std::u16string::npos);
  headless::EditorInsert(kIdWordsEditor, u"coolant o");
  headless::DrainPosts();
  Press(platform::kKeyDown);
  Press(platform::kKeyDown);
  Press(platform::kKeyUp);
  Press(platform::kKeyEnter);
  EXPECT_NE(Text().find(u"\r\nM08\r\n(MORVA END 1)"), std::u16string::npos);
}

TEST_F(CompletionList, GoesWithTheEditorWhenThePanelIsDragged) {
  Type(u"G");
  const int before = platform::PlaceOf(kIdCompletion).left;
  DragSplitter(200);
  EXPECT_TRUE(Shown());
  EXPECT_EQ(platform::PlaceOf(kIdCompletion).left, before - 100);
}

TEST_F(CompletionList, LiesInsideTheEditor) {
  Type(u"G");
  const platform::Rect list = platform::PlaceOf(kIdCompletion);
  const platform::Rect editor = platform::PlaceOf(kIdEditor);
  EXPECT_EQ(platform::RectWidth(list), 394);
  EXPECT_EQ(platform::RectHeight(list), 196);
  EXPECT_TRUE(list.left >= editor.left && list.right <= editor.right);
  EXPECT_TRUE(list.top >= editor.top && list.bottom <= editor.bottom);
}

}  // namespace
}  // namespace morva
