// The code editors' history: what is one step, what empties it, where the caret is afterwards.

#include "contract/text_stages.h"

namespace contract {
namespace {

using platform::CanRedoEditor;
using platform::CanUndoEditor;
using platform::RedoEditor;
using platform::ReplaceRange;
using platform::ReplaceSelection;
using platform::UndoEditor;

class EditorUndo : public CodeEditor {};

TEST_F(EditorUndo, TakesARunOfTypedCharactersBackAtOnce) {
  MakeEditor(kId, u"ab");
  Select(1, 1);
  hands::Type(u"xyz");
  EXPECT_TRUE(UndoEditor(kId));
  EXPECT_EQ(Text(), u"ab");
  EXPECT_EQ(Selection(), "1 1");
  EXPECT_FALSE(CanUndoEditor(kId));
  EXPECT_TRUE(RedoEditor(kId));
  EXPECT_EQ(Text(), u"axyzb");
  EXPECT_EQ(Selection(), "4 4");
}

TEST_F(EditorUndo, EndsARunOfTypingAtALineEnd) {
  MakeEditor(kId, u"");
  hands::Type(u"ab\ncd");
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"ab\r\n");
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"ab");
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"");
}

TEST_F(EditorUndo, EndsARunOfTypingWhereTheCaretGoesElsewhere) {
  MakeEditor(kId, u"abc");
  hands::Type(u"x");
  PressCtrl(platform::kKeyEnd);
  hands::Type(u"y");
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"xabc");
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"abc");
}

TEST_F(EditorUndo, BringsBackWhatWasTypedOverInOneStep) {
  MakeEditor(kId, u"abcdef");
  Select(1, 4);
  hands::Type(u"x");
  EXPECT_EQ(Text(), u"axef");
  EXPECT_TRUE(UndoEditor(kId));
  EXPECT_EQ(Text(), u"abcdef");
  EXPECT_FALSE(CanUndoEditor(kId));
}

TEST_F(EditorUndo, TakesAPasteBackAlone) {
  MakeEditor(kId, u"");
  hands::Type(u"ab");
  hands::CopyElsewhere(u"1\n2");
  platform::RunEditAction(kId, platform::EditAction::Paste);
  hands::Type(u"c");
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"ab1\r\n2");
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"ab");
  EXPECT_EQ(Selection(), "2 2");
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"");
}

TEST_F(EditorUndo, MakesAReplacedSelectionOneStep) {
  MakeEditor(kId, u"one\ntwo\nthree");
  Select(4, 7);
  ReplaceSelection(kId, u"2\n2b", true);
  EXPECT_TRUE(UndoEditor(kId));
  EXPECT_EQ(Text(), u"one\r\ntwo\r\nthree");
  EXPECT_FALSE(CanUndoEditor(kId));
  EXPECT_TRUE(RedoEditor(kId));
  EXPECT_EQ(Text(), u"one\r\n2\r\n2b\r\nthree");
  EXPECT_FALSE(CanRedoEditor(kId));
}

TEST_F(EditorUndo, PutsTheCaretBehindWhatAnUndoOrRedoBringsIn) {
  MakeEditor(kId, u"0123456789");
  Select(2, 5);
  ReplaceSelection(kId, u"abcdef", true);
  Select(0, 0);
  UndoEditor(kId);
  EXPECT_EQ(Selection(), "5 5");
  Select(0, 0);
  RedoEditor(kId);
  EXPECT_EQ(Selection(), "8 8");
}

TEST_F(EditorUndo, PutsTheCaretWhereAnUndoneInsertionStood) {
  MakeEditor(kId, u"0123456789");
  Select(4, 4);
  ReplaceSelection(kId, u"abc", true);
  Select(0, 0);
  UndoEditor(kId);
  EXPECT_EQ(Selection(), "4 4");
}

TEST_F(EditorUndo, PutsTheCaretBehindWhatWasErased) {
  MakeEditor(kId, u"0123456789");
  Select(4, 7);
  Press(platform::kKeyDelete);
  Select(0, 0);
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"0123456789");
  EXPECT_EQ(Selection(), "7 7");
}

TEST_F(EditorUndo, MakesAReplacedRangeOneStep) {
  MakeEditor(kId, u"abcdef");
  ReplaceRange(kId, {1, 3}, u"xyz");
  ReplaceRange(kId, {0, 1}, u"-");
  EXPECT_TRUE(UndoEditor(kId));
  EXPECT_EQ(Text(), u"axyzdef");
  EXPECT_TRUE(UndoEditor(kId));
  EXPECT_EQ(Text(), u"abcdef");
  EXPECT_FALSE(UndoEditor(kId));
}

TEST_F(EditorUndo, KeepsNeighbouringReplacementsApart) {
  MakeEditor(kId, u"");
  ReplaceSelection(kId, u"a", true);
  ReplaceSelection(kId, u"b", true);
  ReplaceRange(kId, {2, 2}, u"c");
  EXPECT_EQ(Text(), u"abc");
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"ab");
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"a");
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"");
}

TEST_F(EditorUndo, KeepsTypingApartFromAReplacementBeforeIt) {
  MakeEditor(kId, u"");
  ReplaceSelection(kId, u"ab", true);
  hands::Type(u"cd");
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"ab");
}

TEST_F(EditorUndo, KeepsAReplacementApartFromTypingBeforeIt) {
  MakeEditor(kId, u"");
  hands::Type(u"ab");
  ReplaceSelection(kId, u"cd", true);
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"ab");
}

TEST_F(EditorUndo, IsEmptiedByAReplacementThatCannotBeUndone) {
  MakeEditor(kId, u"");
  hands::Type(u"ab");
  ReplaceSelection(kId, u"c", false);
  EXPECT_EQ(Text(), u"abc");
  EXPECT_FALSE(CanUndoEditor(kId));
  EXPECT_FALSE(UndoEditor(kId));
  hands::Type(u"d");
  EXPECT_TRUE(UndoEditor(kId));
  EXPECT_EQ(Text(), u"abc");
}

TEST_F(EditorUndo, IsEmptiedByANewText) {
  MakeEditor(kId, u"");
  hands::Type(u"ab");
  platform::SetEditorText(kId, u"new");
  EXPECT_FALSE(CanUndoEditor(kId));
  EXPECT_FALSE(UndoEditor(kId));
  EXPECT_FALSE(RedoEditor(kId));
  EXPECT_EQ(Text(), u"new");
}

TEST_F(EditorUndo, LosesWhatCouldBeRedoneAtTheNextChange) {
  MakeEditor(kId, u"");
  hands::Type(u"ab");
  UndoEditor(kId);
  EXPECT_TRUE(CanRedoEditor(kId));
  hands::Type(u"c");
  EXPECT_FALSE(CanRedoEditor(kId));
  EXPECT_FALSE(RedoEditor(kId));
  EXPECT_EQ(Text(), u"c");
}

TEST_F(EditorUndo, TellsTheSelectionOfAStepAndThenTheChange) {
  MakeEditor(kId, u"ab");
  hands::Type(u"x");
  Forget();
  UndoEditor(kId);
  EXPECT_EQ(Told("command selection typed"), (Lines{"selection 300", "command 300 768"}));
  Forget();
  RedoEditor(kId);
  EXPECT_EQ(Told("command selection typed"), (Lines{"selection 300", "command 300 768"}));
}

TEST_F(EditorUndo, KeepsNoStepOfAReplacementWhileItIsFrozen) {
  MakeEditor(kId, u"");
  ReplaceSelection(kId, u"a", true);
  platform::FreezeEditorUndo(kId, true);
  ReplaceSelection(kId, u"b", true);
  ReplaceRange(kId, {0, 1}, u"A");
  platform::FreezeEditorUndo(kId, false);
  EXPECT_EQ(Text(), u"Ab");
  EXPECT_FALSE(CanUndoEditor(kId));
  ReplaceSelection(kId, u"c", true);
  EXPECT_TRUE(CanUndoEditor(kId));
}

TEST_F(EditorUndo, StaysFrozenUntilTheLastThaw) {
  MakeEditor(kId, u"");
  platform::FreezeEditorUndo(kId, true);
  platform::FreezeEditorUndo(kId, true);
  platform::FreezeEditorUndo(kId, false);
  ReplaceSelection(kId, u"a", true);
  EXPECT_FALSE(CanUndoEditor(kId));
  platform::FreezeEditorUndo(kId, false);
  ReplaceSelection(kId, u"b", true);
  EXPECT_TRUE(CanUndoEditor(kId));
}

TEST_F(EditorUndo, WorksByItsKeys) {
  MakeEditor(kId, u"");
  hands::Type(u"x");
  PressCtrl('Z');
  EXPECT_EQ(Text(), u"");
  PressCtrl('Y');
  EXPECT_EQ(Text(), u"x");
  PressAlt('Z');
  EXPECT_EQ(Text(), u"");
  hands::Press({'Z', true, true, false});
  EXPECT_EQ(Text(), u"x");
}

TEST_F(EditorUndo, TakesARunOfErasingBack) {
  MakeEditor(kId, u"abcdef");
  Select(5, 5);
  Press(platform::kKeyBackspace);
  Press(platform::kKeyBackspace);
  EXPECT_EQ(Text(), u"abcf");
  while (CanUndoEditor(kId)) UndoEditor(kId);
  EXPECT_EQ(Text(), u"abcdef");
  Select(0, 0);
  Press(platform::kKeyDelete);
  Press(platform::kKeyDelete);
  while (CanUndoEditor(kId)) UndoEditor(kId);
  EXPECT_EQ(Text(), u"abcdef");
}

TEST_F(EditorUndo, KeepsItsStepsOverColouring) {
  MakeEditor(kId, u"");
  hands::Type(u"ab");
  const platform::ColourRun run{0, 2, 0x2CD6DF, true};
  platform::SetLineRuns(kId, 0, &run, 1);
  hands::Type(u"c");
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"");
}

}  // namespace
}  // namespace contract
