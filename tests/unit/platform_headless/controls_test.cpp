// Controls, lists and editors under the user's hands.

#include <algorithm>

#include "machine_for_test.h"
#include "platform/file.h"
#include "platform/menu.h"
#include "platform/pick_file.h"

namespace {

using headless_test::HeadlessTest;
using headless_test::heard;
using Lines = std::vector<std::string>;

class Controls : public HeadlessTest {
 protected:
  void Make(int id, platform::ControlKind kind, const char16_t* text) {
    platform::ControlSpec spec;
    spec.id = id;
    spec.kind = kind;
    spec.text = text;
    ASSERT_TRUE(platform::MakeControl(spec));
    platform::SetPlace(id, {0, 0, 100, 40});
  }
  void MakeList(int id, platform::ListKind kind, int rows) {
    platform::ListSpec spec;
    spec.id = id;
    spec.kind = kind;
    ASSERT_TRUE(platform::MakeList(spec));
    platform::SetPlace(id, {10, 20, 110, 20 + 24 * 3});
    for (int i = 0; i < rows; ++i) platform::AddRow(id, u"row", i * 10);
  }
  void MakeEditor(int id, const char16_t* text) {
    platform::EditorSpec spec;
    spec.id = id;
    ASSERT_TRUE(platform::MakeEditor(spec));
    platform::SetPlace(id, {0, 0, 400, 100});
    platform::SetEditorText(id, text);
    platform::SetFocusTo(id);
    heard.clear();
  }
  void Press(int key, bool ctrl = false, bool shift = false, bool alt = false) {
    headless::PressKey({key, ctrl, shift, alt});
  }
};

TEST_F(Controls, AClickOnAHiddenOrDisabledButtonDoesNothing) {
  Make(1, platform::ControlKind::PushButton, u"NEW");
  platform::SetVisible(1, false);
  EXPECT_FALSE(headless::Click(1));
  platform::SetVisible(1, true);
  platform::SetEnabled(1, false);
  EXPECT_FALSE(headless::Click(1));
  EXPECT_TRUE(heard.empty());
  platform::SetEnabled(1, true);
  EXPECT_TRUE(headless::Click(1));
  EXPECT_EQ(heard, Lines{"command 1 0"});
}

TEST_F(Controls, AChildOfAHiddenPanelCannotBeClicked) {
  platform::ViewSpec panel;
  panel.id = 5;
  ASSERT_TRUE(platform::MakeView(panel));
  platform::ControlSpec spec;
  spec.id = 6;
  spec.kind = platform::ControlKind::PushButton;
  spec.parent = 5;
  ASSERT_TRUE(platform::MakeControl(spec));
  platform::SetVisible(5, false);
  EXPECT_FALSE(headless::Click(6));
}

TEST_F(Controls, ACheckBoxTurnsOverBeforeItSpeaks) {
  Make(1, platform::ControlKind::CheckBox, u"Whole word");
  EXPECT_TRUE(headless::Click(1));
  EXPECT_TRUE(platform::IsChecked(1));
  EXPECT_EQ(heard, Lines{"command 1 0"});
}

TEST_F(Controls, AnIdIsTakenOnlyOnce) {
  Make(1, platform::ControlKind::Label, u"a");
  platform::ControlSpec again;
  again.id = 1;
  EXPECT_FALSE(platform::MakeControl(again));
}

TEST_F(Controls, TypingIntoAnEditStopsAtItsLimitAndDropsLineEnds) {
  Make(1, platform::ControlKind::EditLine, u"old");
  platform::SetTextLimit(1, 4);
  EXPECT_TRUE(headless::TypeInto(1, u"1\r\n2345"));
  EXPECT_EQ(platform::TextOf(1), u"1234");
  EXPECT_EQ(heard, Lines{"command 1 768"});
  platform::RunEditAction(1, platform::EditAction::Undo);
  EXPECT_EQ(platform::TextOf(1), u"old");
}

TEST_F(Controls, SettingATextSaysNothing) {
  Make(1, platform::ControlKind::EditLine, u"");
  platform::SetText(1, u"12");
  EXPECT_TRUE(heard.empty());
}

TEST_F(Controls, CopyAndPasteGoThroughTheClipboard) {
  Make(1, platform::ControlKind::EditLine, u"0.375");
  Make(2, platform::ControlKind::EditLine, u"");
  platform::SetFocusTo(1);
  Press('A', true);
  Press('C', false, false, true);
  platform::SetFocusTo(2);
  Press('V', false, false, true);
  EXPECT_EQ(platform::TextOf(2), u"0.375");
  Press('Z', false, false, true);
  EXPECT_EQ(platform::TextOf(2), u"");
}

TEST_F(Controls, TheApplicationSeesAKeyFirst) {
  Make(1, platform::ControlKind::EditLine, u"");
  platform::SetFocusTo(1);
  headless_test::takeKeys = true;
  Press('5');
  EXPECT_EQ(platform::TextOf(1), u"");
  headless_test::takeKeys = false;
  Press('5');
  EXPECT_EQ(platform::TextOf(1), u"5");
  EXPECT_EQ(heard, (Lines{"key 1 53", "key 1 53", "command 1 768"}));
}

TEST_F(Controls, TabGoesInTheGivenOrderPastWhatCannotBeUsed) {
  for (int id = 1; id <= 4; ++id) Make(id, platform::ControlKind::PushButton, u"b");
  const int order[] = {3, 1, 2, 4};
  platform::SetTabOrder(order, 4);
  platform::SetEnabled(1, false);
  platform::SetFocusTo(3);
  Press(platform::kKeyTab);
  EXPECT_EQ(platform::FocusedId(), 2);
  Press(platform::kKeyTab, false, true);
  EXPECT_EQ(platform::FocusedId(), 3);
}

TEST_F(Controls, HidingAControlTakesTheKeyboardFromIt) {
  Make(1, platform::ControlKind::EditLine, u"");
  events_.focusChanged = headless_test::HearFocus;
  platform::SetFocusTo(1);
  platform::SetVisible(1, false);
  EXPECT_EQ(platform::FocusedId(), 0);
  EXPECT_EQ(heard, (Lines{"gained 1", "lost 1"}));
}

TEST_F(Controls, SpaceAndEnterPressAButton) {
  Make(1, platform::ControlKind::PushButton, u"b");
  platform::SetFocusTo(1);
  Press(platform::kKeySpace);
  Press(platform::kKeyEnter);
  EXPECT_EQ(std::count(heard.begin(), heard.end(), "command 1 0"), 2);
}

TEST_F(Controls, ArrowsSelectRowsAndEnterIsADoubleClick) {
  MakeList(1, platform::ListKind::Single, 3);
  platform::SetFocusTo(1);
  Press(platform::kKeyDown);
  Press(platform::kKeyDown);
  Press(platform::kKeyEnter);
  EXPECT_EQ(platform::SelectedRow(1), 1);
  EXPECT_EQ(platform::RowData(1, 1), 10);
  Lines commands;
  for (const std::string& line : heard) {
    if (line.rfind("command", 0) == 0) commands.push_back(line);
  }
  EXPECT_EQ(commands, (Lines{"command 1 1", "command 1 1", "command 1 2"}));
}

TEST_F(Controls, AComboSpeaksOnlyWhenAnotherRowIsChosen) {
  MakeList(1, platform::ListKind::Combo, 3);
  platform::SelectRow(1, 2);
  EXPECT_TRUE(headless::SelectRows(1, {2}));
  EXPECT_TRUE(heard.empty());
  EXPECT_TRUE(headless::SelectRows(1, {0}));
  EXPECT_EQ(heard, Lines{"command 1 1"});
  EXPECT_FALSE(headless::SelectRows(1, {3}));
}

TEST_F(Controls, AMultiListHoldsSeveralRows) {
  MakeList(1, platform::ListKind::Multi, 4);
  EXPECT_TRUE(headless::SelectRows(1, {1, 3}));
  EXPECT_FALSE(platform::IsRowSelected(1, 0));
  EXPECT_TRUE(platform::IsRowSelected(1, 1));
  EXPECT_TRUE(platform::IsRowSelected(1, 3));
}

TEST_F(Controls, ARowOutOfViewHasNoPlace) {
  MakeList(1, platform::ListKind::Single, 10);
  EXPECT_EQ(platform::RowPlace(1, 2).top, 48);
  EXPECT_EQ(platform::RectHeight(platform::RowPlace(1, 3)), 0);
  platform::SelectRow(1, 9);
  EXPECT_EQ(platform::TopRow(1), 7);
}

TEST_F(Controls, EveryTypedCharacterPassesKeyAndTyped) {
  MakeEditor(300, u"");
  EXPECT_TRUE(headless::EditorInsert(300, u"g("));
  EXPECT_EQ(heard, (Lines{"key 300 71", "command 300 768", "typed 300 103", "command 300 768",
                          "typed 300 40"}));
  EXPECT_EQ(platform::EditorText(300), u"g(");
}

TEST_F(Controls, EditorPositionsCountALineEndAsOne) {
  MakeEditor(300, u"G0\nX1\r\nY2");
  EXPECT_EQ(platform::EditorText(300), u"G0\r\nX1\r\nY2");
  EXPECT_EQ(platform::EditorLength(300), 8);
  EXPECT_EQ(platform::EditorLineStart(300, 2), 6);
  EXPECT_EQ(platform::EditorLineOf(300, 5), 1);
  EXPECT_EQ(platform::EditorLineLength(300, 1), 2);
}

TEST_F(Controls, AReplacedRangeMovesTheCaretBehindIt) {
  MakeEditor(300, u"AB\nCD");
  platform::SetEditorSelection(300, {4, 4});  // between C and D
  platform::ReplaceRange(300, {0, 0}, u"(x)\n");
  EXPECT_EQ(platform::EditorSelection(300).from, 8);
  platform::ReplaceRange(300, {8, 9}, u"");
  EXPECT_EQ(platform::EditorSelection(300).from, 8);
  EXPECT_TRUE(platform::UndoEditor(300));
  EXPECT_TRUE(platform::UndoEditor(300));
  EXPECT_EQ(platform::EditorText(300), u"AB\r\nCD");
  EXPECT_FALSE(platform::UndoEditor(300));
}

TEST_F(Controls, ColourRunsAreNoUndoStepAndNoChange) {
  MakeEditor(300, u"G0");
  const std::uint64_t revision = platform::EditorRevision(300);
  const platform::ColourRun run{0, 2, 0x2CD6DF, true};
  platform::SetLineRuns(300, 0, &run, 1);
  platform::ColourRun back[2];
  ASSERT_EQ(platform::LineRuns(300, 0, back, 2), 1);
  EXPECT_TRUE(back[0].bold);
  EXPECT_FALSE(platform::CanUndoEditor(300));
  EXPECT_EQ(platform::EditorRevision(300), revision);
  EXPECT_TRUE(heard.empty());
}

TEST_F(Controls, CaretKeysMoveThroughLines) {
  MakeEditor(300, u"G0 X1\nM30");
  Press(platform::kKeyEnd);
  Press(platform::kKeyDown);
  EXPECT_EQ(platform::EditorSelection(300).from, 9);  // the end of the shorter line
  Press(platform::kKeyHome, true, true);
  EXPECT_EQ(platform::EditorSelection(300).from, 0);
  EXPECT_EQ(platform::EditorSelection(300).to, 9);
  Press(platform::kKeyDelete);
  EXPECT_EQ(platform::EditorText(300), u"");
  Press('Z', true);
  EXPECT_EQ(platform::EditorText(300), u"G0 X1\r\nM30");
}

TEST_F(Controls, AReadOnlyEditorTakesNoTypingButTheProgramsText) {
  MakeEditor(300, u"a");
  platform::SetEditorReadOnly(300, true);
  EXPECT_FALSE(headless::EditorInsert(300, u"b"));
  EXPECT_FALSE(headless::EditorSetAll(300, u"b"));
  platform::ReplaceSelection(300, u"c", true);
  EXPECT_EQ(platform::EditorText(300), u"ca");
}

TEST_F(Controls, TheCaretComesIntoViewWhereItIsTyped) {
  MakeEditor(300, u"1\n2\n3\n4\n5\n6\n7\n8");  // five lines of 20 pixels are in view
  platform::SetEditorSelection(300, {15, 15});
  platform::ScrollToLine(300, 0);
  headless::EditorInsert(300, u"0");
  EXPECT_EQ(platform::FirstVisibleLine(300), 3);
  EXPECT_EQ(platform::PointOfPosition(300, 14).y, 80);
  EXPECT_EQ(platform::PositionAt(300, 0, 85), 14);
  platform::ScrollToLine(300, 100);
  EXPECT_EQ(platform::FirstVisibleLine(300), 3);
}

TEST_F(Controls, ABoxWithoutAnAnswerGetsItsMostCautiousOne) {
  using platform::BoxAnswer;
  using platform::BoxButtons;
  using platform::BoxIcon;
  EXPECT_EQ(platform::ShowBox(u"t", u"1", BoxButtons::Ok, BoxIcon::None), BoxAnswer::Ok);
  EXPECT_EQ(platform::ShowBox(u"t", u"2", BoxButtons::YesNo, BoxIcon::None), BoxAnswer::No);
  EXPECT_EQ(platform::ShowBox(u"t", u"3", BoxButtons::YesNoCancel, BoxIcon::None),
            BoxAnswer::Cancel);
  headless::QueueAnswer(BoxAnswer::Yes);
  EXPECT_EQ(platform::ShowBox(u"t", u"4", BoxButtons::YesNoCancel, BoxIcon::Question),
            BoxAnswer::Yes);
  const std::vector<headless::BoxRecord> boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 4u);
  EXPECT_EQ(boxes[3].text, u"4");
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(Controls, AMenuItemThatIsDimmedCannotBePicked) {
  const platform::MenuItem items[] = {{1, u"Undo", false, true}, {2, u"Cut", false, false}};
  headless::QueuePick(2);
  EXPECT_EQ(platform::ShowPopup(items, 2, 0, 0), 0);
  headless::QueuePick(1);
  EXPECT_EQ(platform::ShowPopup(items, 2, 0, 0), 1);
  EXPECT_EQ(platform::ShowPopup(items, 2, 0, 0), 0);
  EXPECT_EQ(headless::TakeMenus().size(), 3u);
}

TEST_F(Controls, AFileThatIsNotThereCannotBeOpened) {
  std::u16string path = u"kept";
  headless::QueueFile((home_ / "none.NC").u16string());
  EXPECT_FALSE(platform::PickFileToOpen({}, path));
  EXPECT_EQ(path, u"kept");
}

TEST_F(Controls, ASavedNameGetsTheDefaultExtension) {
  platform::PickFileSpec spec;
  spec.defaultExtension = u"NC";
  std::u16string path;
  headless::QueueFile(u"/jobs.old/part");
  EXPECT_TRUE(platform::PickFileToSave(spec, path));
  EXPECT_EQ(path, u"/jobs.old/part.NC");
  spec.capacity = 18;
  headless::QueueFile(u"/jobs.old/part.NC");  // 17 units and the terminator
  EXPECT_TRUE(platform::PickFileToSave(spec, path));
  spec.capacity = 17;
  headless::QueueFile(u"/jobs.old/part.NC");
  EXPECT_FALSE(platform::PickFileToSave(spec, path));
}

TEST_F(Controls, TheNthCallOfAKindCanBeToldToFail) {
  headless::FailCall("control", 2);
  Make(1, platform::ControlKind::Label, u"a");
  platform::ControlSpec spec;
  spec.id = 2;
  EXPECT_FALSE(platform::MakeControl(spec));
  EXPECT_TRUE(platform::MakeControl(spec));
}

TEST_F(Controls, ResizingStopsAtTheLeastSize) {
  platform::MainWindowSpec spec;
  spec.className = u"Main";
  spec.place = {50, 35, 1610, 975};
  spec.minimumWidth = 1200;
  spec.minimumHeight = 800;
  ASSERT_TRUE(platform::MakeMainWindow(spec));
  headless::Resize(900, 900);
  EXPECT_EQ(platform::ClientArea(platform::kMainWindow).right, 1200);
  EXPECT_EQ(platform::ClientArea(platform::kMainWindow).bottom, 900);
  EXPECT_EQ(platform::ViewByClass(u"Main"), platform::kMainWindow);
  EXPECT_TRUE(headless::CloseKey());
  EXPECT_TRUE(headless::WindowClosed());
}

TEST_F(Controls, TheExecutableAndDocumentsLieInTheHome) {
  std::u16string documents;
  EXPECT_TRUE(platform::DocumentsFolder(documents));
  EXPECT_EQ(documents, (home_ / "Documents").u16string());
  EXPECT_EQ(platform::ExecutablePath(), (home_ / "bin" / "MORVA").u16string());
  EXPECT_TRUE(std::filesystem::is_directory(home_ / "Documents"));
  headless::RemoveDocuments();
  EXPECT_FALSE(platform::DocumentsFolder(documents));
}

void DrawOne(int, const platform::DrawState& state, platform::Canvas& canvas) {
  platform::FillArea(canvas, state.area, state.selected ? 1 : 2);
}

TEST_F(Controls, AListIsDrawnRowByRow) {
  MakeList(1, platform::ListKind::Single, 2);
  platform::SelectRow(1, 1);
  events_.drawItem = DrawOne;
  const std::vector<headless::DrawCall> calls = headless::PaintOf(1);
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].colours[0], 2u);
  EXPECT_EQ(calls[1].colours[0], 1u);
  EXPECT_EQ(calls[1].numbers, (std::vector<double>{0, 24, 100, 48}));
}

}  // namespace
