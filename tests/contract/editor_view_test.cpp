// The code editors' view: first line, scrolling, the caret in view, places of positions.

#include "contract/text_stages.h"

namespace contract {
namespace {

using platform::FirstVisibleLine;
using platform::PointOfPosition;
using platform::PositionAt;
using platform::ScrollToLine;

constexpr int kLines = 40;

class EditorView : public CodeEditor {
 protected:
  // Lines of two characters: line n begins at position 3 n.
  void SetUp() override {
    Contract::SetUp();
    std::u16string text;
    for (int line = 0; line < kLines; ++line) text += line + 1 < kLines ? u"ab\n" : u"ab";
    MakeEditor(kId, text);
  }
};

TEST_F(EditorView, ShowsAsManyWholeLinesAsFit) {
  EXPECT_EQ(platform::VisibleLineCount(kId), 5);
  EXPECT_EQ(FirstVisibleLine(kId), 0);
}

TEST_F(EditorView, ScrollsToALineAndNoFurtherThanTheLast) {
  ScrollToLine(kId, 12);
  EXPECT_EQ(FirstVisibleLine(kId), 12);
  ScrollToLine(kId, 999);
  EXPECT_EQ(FirstVisibleLine(kId), kLines - 5);
  ScrollToLine(kId, -3);
  EXPECT_EQ(FirstVisibleLine(kId), 0);
}

TEST_F(EditorView, HandsOutALineWithoutItsEnd) {
  platform::ReplaceRange(kId, {3, 5}, u"longer");
  EXPECT_EQ(platform::EditorLineText(kId, 0), u"ab");
  EXPECT_EQ(platform::EditorLineText(kId, 1), u"longer");
  EXPECT_EQ(platform::EditorLineText(kId, kLines - 1), u"ab");
  EXPECT_EQ(platform::EditorLineText(kId, kLines), u"");
  EXPECT_EQ(platform::EditorLineText(kId, -1), u"");
  EXPECT_EQ(platform::EditorLineText(999, 0), u"");
}

TEST_F(EditorView, TellsScrollingOnceAndOnlyWhereItMoved) {
  ScrollToLine(kId, 12);
  EXPECT_EQ(Told("command"), Lines{"command 300 1538"});
  ScrollToLine(kId, 12);
  EXPECT_EQ(Told("command"), Lines{"command 300 1538"});
}

TEST_F(EditorView, MovesNoCaretByScrolling) {
  ScrollToLine(kId, 12);
  EXPECT_EQ(platform::EditorSelection(kId).to, 0);
  EXPECT_EQ(Told("selection"), Lines{});
}

TEST_F(EditorView, BringsTheCaretInAtTheNearerEdge) {
  platform::SetEditorSelection(kId, {3 * 20, 3 * 20});
  platform::ScrollCaretIntoView(kId);
  EXPECT_EQ(FirstVisibleLine(kId), 16);
  platform::SetEditorSelection(kId, {3 * 10, 3 * 10});
  platform::ScrollCaretIntoView(kId);
  EXPECT_EQ(FirstVisibleLine(kId), 10);
  platform::SetEditorSelection(kId, {3 * 12, 3 * 12});
  platform::ScrollCaretIntoView(kId);
  EXPECT_EQ(FirstVisibleLine(kId), 10);
}

TEST_F(EditorView, ShowsTheSelectionsCaretEndWhenAskedTo) {
  platform::SetEditorSelection(kId, {0, 3 * 30});
  platform::ScrollCaretIntoView(kId);
  EXPECT_EQ(FirstVisibleLine(kId), 26);
}

// Where the character stands, sideways.
int XOf(int id, int position) { return PointOfPosition(id, position).x; }

TEST_F(EditorView, ShowsAStretchOfALongLineAndKeepsTheCaret) {
  platform::ReplaceRange(kId, {3, 5}, std::u16string(400, u'x'));
  platform::SetEditorSelection(kId, {3 + 400, 3});
  const int width = platform::RectWidth(platform::PlaceOf(kId));
  ASSERT_GT(XOf(kId, 3 + 305), width);
  Forget();
  platform::ScrollSideways(kId, {3 + 300, 3 + 305});
  EXPECT_GE(XOf(kId, 3 + 300), 0);
  EXPECT_LT(XOf(kId, 3 + 305), width);
  EXPECT_EQ(FirstVisibleLine(kId), 0);
  EXPECT_EQ(platform::EditorSelection(kId).from, 3);
  EXPECT_EQ(platform::EditorSelection(kId).to, 3 + 400);
  EXPECT_EQ(Told("selection"), Lines{});
  // Of one that is wider than the view the front is seen.
  platform::ScrollSideways(kId, {3 + 10, 3 + 390});
  EXPECT_GE(XOf(kId, 3 + 10), 0);
  EXPECT_LT(XOf(kId, 3 + 10), width);
  platform::ScrollSideways(kId, {3 + 300, 3 + 305});
  platform::SetEditorSelection(kId, {3, 3});
  EXPECT_GE(XOf(kId, 3), 0) << "a caret that is placed is seen";
}

TEST_F(EditorView, StaysWhereTheStretchIsInView) {
  const int before = XOf(kId, 1);
  platform::ScrollSideways(kId, {0, 2});
  EXPECT_EQ(XOf(kId, 1), before);
}

TEST_F(EditorView, FollowsTheSelectionOfTheProgram) {
  platform::SetEditorSelection(kId, {0, 3 * 20});
  EXPECT_EQ(FirstVisibleLine(kId), 16);
  ScrollToLine(kId, 0);
  platform::SetEditorSelection(kId, {0, 3 * 20});
  EXPECT_EQ(FirstVisibleLine(kId), 16);
}

TEST_F(EditorView, ScrollsAwayFromTheSelectionWhereTheProgramSaysSo) {
  platform::SetEditorSelection(kId, {3 * 20, 3 * 20});
  ScrollToLine(kId, 2);
  EXPECT_EQ(FirstVisibleLine(kId), 2);
}

TEST_F(EditorView, FollowsTheCaretOfTheUser) {
  for (int i = 0; i < 7; ++i) Press(platform::kKeyDown);
  EXPECT_EQ(FirstVisibleLine(kId), 3);
  PressCtrl(platform::kKeyEnd);
  EXPECT_EQ(FirstVisibleLine(kId), kLines - 5);
  PressCtrl(platform::kKeyHome);
  EXPECT_EQ(FirstVisibleLine(kId), 0);
}

TEST_F(EditorView, FollowsTypingAndPasting) {
  ScrollToLine(kId, 20);
  hands::Type(u"x");
  EXPECT_EQ(FirstVisibleLine(kId), 0);
  ScrollToLine(kId, 20);
  hands::CopyElsewhere(u"y");
  platform::RunEditAction(kId, platform::EditAction::Paste);
  EXPECT_EQ(FirstVisibleLine(kId), 0);
}

TEST_F(EditorView, FollowsAnUndoAndARedo) {
  hands::Type(u"x");
  ScrollToLine(kId, 20);
  platform::UndoEditor(kId);
  EXPECT_EQ(FirstVisibleLine(kId), 0);
  ScrollToLine(kId, 20);
  platform::RedoEditor(kId);
  EXPECT_EQ(FirstVisibleLine(kId), 0);
}

TEST_F(EditorView, KeepsItsFirstLineWhenTheProgramReplacesARange) {
  ScrollToLine(kId, 10);
  Forget();
  platform::ReplaceRange(kId, {0, 1}, u"xyz");
  EXPECT_EQ(FirstVisibleLine(kId), 10);
}

TEST_F(EditorView, StartsAtTheTopOfANewText) {
  ScrollToLine(kId, 10);
  Forget();
  platform::SetEditorText(kId, u"1\n2\n3\n4\n5\n6\n7\n8\n9");
  EXPECT_EQ(FirstVisibleLine(kId), 0);
  EXPECT_EQ(Told("command").back(), "command 300 768");
}

TEST_F(EditorView, IsFilledAgainWhenItsTextBecomesShorter) {
  ScrollToLine(kId, 30);
  platform::SetEditorSelection(kId, {3 * 10, 3 * kLines});
  platform::ReplaceRange(kId, {3 * 10, 3 * kLines}, u"");
  EXPECT_EQ(platform::EditorLineCount(kId), 11);
  EXPECT_EQ(FirstVisibleLine(kId), 6);
}

TEST_F(EditorView, TurnsByThreeLinesANotch) {
  hands::WheelAt(kId, 50, 50, -1);
  EXPECT_EQ(FirstVisibleLine(kId), 3);
  EXPECT_EQ(Told("command"), Lines{"command 300 1538"});
  hands::WheelAt(kId, 50, 50, -2);
  EXPECT_EQ(FirstVisibleLine(kId), 9);
  hands::WheelAt(kId, 50, 50, 5);
  EXPECT_EQ(FirstVisibleLine(kId), 0);
}

TEST_F(EditorView, FindsAPositionWhereItStands) {
  ScrollToLine(kId, 10);
  for (const int position : {30, 31, 32, 33, 37, 42}) {
    const platform::Point at = PointOfPosition(kId, position);
    EXPECT_EQ(PositionAt(kId, at.x + 1, at.y + 10), position);
  }
}

TEST_F(EditorView, LaysLinesTwentyPixelsApart) {
  const int top = PointOfPosition(kId, 0).y;
  EXPECT_GE(top, 0);
  EXPECT_LE(top, 4);
  EXPECT_EQ(PointOfPosition(kId, 3).y, top + 20);
  EXPECT_EQ(PointOfPosition(kId, 6).y, top + 40);
  EXPECT_EQ(PointOfPosition(kId, 6).x, PointOfPosition(kId, 0).x);
  EXPECT_GT(PointOfPosition(kId, 7).x, PointOfPosition(kId, 6).x);
  ScrollToLine(kId, 2);
  EXPECT_EQ(PointOfPosition(kId, 6).y, top);
  EXPECT_EQ(PointOfPosition(kId, 0).y, top - 40);
}

TEST_F(EditorView, FindsTheEndOfALineBesideIt) {
  EXPECT_EQ(PositionAt(kId, 300, PointOfPosition(kId, 3).y + 10), 5);
  EXPECT_EQ(PositionAt(kId, 0, PointOfPosition(kId, 3).y + 10), 3);
}

TEST_F(EditorView, FindsItsLastLineBelowTheText) {
  platform::SetEditorText(kId, u"ab\ncd");
  EXPECT_EQ(PositionAt(kId, 300, 100), 5);
}

TEST_F(EditorView, KeepsWithinItsLastLinesWhenItGrows) {
  ScrollToLine(kId, 35);
  platform::SetPlace(kId, {20, 20, 420, 230});
  EXPECT_EQ(platform::VisibleLineCount(kId), 10);
  hands::Settle();
  EXPECT_EQ(FirstVisibleLine(kId), 30);
}

TEST_F(EditorView, KnowsItsLinesInViewBeforeItIsShown) {
  platform::SetVisible(kId, false);
  platform::SetPlace(kId, {20, 20, 420, 230});
  EXPECT_EQ(platform::VisibleLineCount(kId), 10);
  ScrollToLine(kId, 999);
  EXPECT_EQ(FirstVisibleLine(kId), kLines - 10);
}

TEST_F(EditorView, PutsTheCaretWhereItIsClicked) {
  ScrollToLine(kId, 10);
  const platform::Point at = PointOfPosition(kId, 37);
  hands::ClickAt(kId, at.x + 1, at.y + 10);
  EXPECT_EQ(platform::EditorSelection(kId).from, 37);
  EXPECT_EQ(platform::EditorSelection(kId).to, 37);
}

TEST_F(EditorView, WalksAPageAtATime) {
  Press(platform::kKeyPageDown);
  const int line = platform::EditorLineOf(kId, platform::EditorSelection(kId).to);
  EXPECT_GE(line, 4);
  EXPECT_LE(line, 5);
  Press(platform::kKeyPageUp);
  EXPECT_EQ(platform::EditorSelection(kId).to, 0);
  EXPECT_EQ(FirstVisibleLine(kId), 0);
}

}  // namespace
}  // namespace contract
