// Ids that do not exist: setters ignore them, getters answer with zero, false or nothing. The
// same holds for an id of another kind than the function is for.

#include "contract/contract.h"
#include "platform/timer.h"

namespace contract {
namespace {

using namespace platform;

class Unknown : public Contract {
 protected:
  static void SetAll(int id) {
    SetText(id, u"x");
    AppendText(id, u"x");
    ScrollToTop(id);
    SetTextLimit(id, 3);
    SelectAllText(id);
    SetChecked(id, true);
    SetAccessibleName(id, u"x");
    SetToolTip(id, u"x");
    SetColours(id, {});
    RunEditAction(id, EditAction::Paste);
    Destroy(id);
    SetPlace(id, {1, 2, 3, 4});
    SetVisible(id, false);
    SetEnabled(id, false);
    SetFocusTo(id);
    Repaint(id);
    BringToTop(id);
    const int order[] = {id, id + 1};
    SetTabOrder(order, 2);
    CapturePointer(id);
    ReleasePointer();
    SetPointerShape(id, PointerShape::Hand);
    TellViewValue(id);
  }
  static void SetRows(int id) {
    EXPECT_EQ(AddRow(id, u"x", 1), -1);
    ClearRows(id);
    SetRowText(id, 0, u"x");
    SetRowData(id, 0, 1);
    SetRowDim(id, 0, true);
    SelectRow(id, 0);
    SetRowSelected(id, 0, true);
    SetTopRow(id, 1);
    HoldListRedraw(id, true);
    HoldListRedraw(id, false);
  }
  static void ExpectNoRows(int id) {
    EXPECT_EQ(RowCount(id), 0);
    EXPECT_EQ(RowText(id, 0), u"");
    EXPECT_EQ(RowData(id, 0), 0);
    EXPECT_EQ(SelectedRow(id), -1);
    EXPECT_FALSE(IsRowSelected(id, 0));
    EXPECT_FALSE(IsRowDim(id, 0));
    EXPECT_EQ(TopRow(id), 0);
    EXPECT_TRUE(SameRect(RowPlace(id, 0), {}));
  }
  static void SetLines(int id) {
    SetEditorText(id, u"x");
    SetEditorSelection(id, {0, 1});
    ReplaceSelection(id, u"x", true);
    ReplaceRange(id, {0, 1}, u"x");
    SetEditorReadOnly(id, true);
    ScrollToLine(id, 1);
    ScrollCaretIntoView(id);
    ScrollSideways(id, {0, 1});
    MarkEditorLine(id, 0, 0);
    const LineBand band;
    SetLineBands(id, &band, 1);
    const ColourRun run;
    SetLineRuns(id, 0, &run, 1);
    HoldEditorRedraw(id, true);
    HoldEditorRedraw(id, false);
    FreezeEditorUndo(id, true);
    FreezeEditorUndo(id, false);
  }
  static void ExpectNoLines(int id) {
    EXPECT_EQ(EditorText(id), u"");
    EXPECT_EQ(EditorRevision(id), 0u);
    EXPECT_EQ(EditorLength(id), 0);
    EXPECT_EQ(EditorSelection(id).to, 0);
    EXPECT_FALSE(UndoEditor(id));
    EXPECT_FALSE(RedoEditor(id));
    EXPECT_FALSE(CanUndoEditor(id));
    EXPECT_FALSE(CanRedoEditor(id));
    EXPECT_EQ(EditorLineCount(id), 0);
    EXPECT_EQ(EditorLineStart(id, 1), 0);
    EXPECT_EQ(EditorLineLength(id, 0), 0);
    EXPECT_EQ(EditorLineOf(id, 3), 0);
    EXPECT_EQ(FirstVisibleLine(id), 0);
    EXPECT_EQ(VisibleLineCount(id), 0);
    EXPECT_EQ(PositionAt(id, 5, 5), 0);
    EXPECT_EQ(PointOfPosition(id, 3).x, 0);
    ColourRun run;
    EXPECT_EQ(LineRuns(id, 0, &run, 1), 0);
  }
};

TEST_F(Unknown, AnswersNothingAboutAnIdThatDoesNotExist) {
  for (const int id : {0, -1, 99}) {
    SetAll(id);
    EXPECT_FALSE(Exists(id));
    EXPECT_EQ(TextOf(id), u"");
    EXPECT_EQ(AccessibleName(id), u"");
    EXPECT_FALSE(IsChecked(id));
    EXPECT_FALSE(IsTextControl(id));
    EXPECT_EQ(ClassOf(id), u"");
    EXPECT_FALSE(IsVisible(id));
    EXPECT_FALSE(IsEnabled(id));
    EXPECT_TRUE(SameRect(PlaceOf(id), {}));
    EXPECT_TRUE(SameRect(ClientArea(id), {}));
    EXPECT_TRUE(SameRect(PlaceInMainWindow(id), {}));
  }
  EXPECT_EQ(FocusedId(), 0);
  EXPECT_EQ(Told("command selection gained lost"), Lines{});
}

TEST_F(Unknown, HasNoRowsInAnIdThatIsNoList) {
  Make(1, ControlKind::EditLine, u"text");
  MakeEditor(300, u"text");
  for (const int id : {99, 1, 300}) {
    SetRows(id);
    ExpectNoRows(id);
  }
  EXPECT_EQ(TextOf(1), u"text");
  EXPECT_EQ(TextOf(300), u"text");
}

TEST_F(Unknown, HasNoLinesInAnIdThatIsNoEditor) {
  Make(1, ControlKind::MultiEdit, u"text");
  MakeRows(2, ListKind::Single, 3);
  Forget();
  for (const int id : {99, 1, 2}) {
    SetLines(id);
    ExpectNoLines(id);
  }
  EXPECT_EQ(TextOf(1), u"text");
  EXPECT_EQ(RowCount(2), 3);
  EXPECT_EQ(Told("command selection"), Lines{});
}

TEST_F(Unknown, CapturesNoPointer) {
  MakeView(50, {100, 100, 300, 300});
  CapturePointer(99);
  hands::PressAt(50, 7, 9);
  hands::ReleaseAt(50, 7, 9);
  EXPECT_TRUE(WasTold("pointer 50 release 7 9"));
}

TEST_F(Unknown, StopsNoTimerAndRunsNone) {
  StopTimer(kMainWindow, 7);
  EXPECT_FALSE(TimerRuns(kMainWindow, 7));
  StartTimer(kMainWindow, 7, 1000);
  StopTimer(kMainWindow, 8);
  StopTimer(50, 7);
  EXPECT_TRUE(TimerRuns(kMainWindow, 7));
  EXPECT_FALSE(TimerRuns(50, 7));
  StopTimer(kMainWindow, 7);
}

TEST_F(Unknown, CountsTheMainWindowAsNoControl) {
  SetChecked(kMainWindow, true);
  SetTextLimit(kMainWindow, 3);
  AppendText(kMainWindow, u"x");
  EXPECT_FALSE(IsChecked(kMainWindow));
  EXPECT_FALSE(IsTextControl(kMainWindow));
  ExpectNoRows(kMainWindow);
  ExpectNoLines(kMainWindow);
}

}  // namespace
}  // namespace contract
