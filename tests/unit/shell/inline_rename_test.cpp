// The feature list under the hand, over the whole application.

#include "shell/inline_rename.h"

#include "app/router.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/program_tabs.h"
#include "platform/listing.h"
#include "support/kinds.h"
#include "support/workbench.h"

namespace morva {
namespace {

const std::u16string kTwo =
    u"(MORVA TEXT 1)\r\n(MORVA NAME First)\r\nG0 X1\r\n(MORVA END 1)\r\n"
    u"(MORVA TEXT 2)\r\n(MORVA NAME Second)\r\nG1 X2\r\n(MORVA END 2)\r\n";
constexpr char16_t kRefusal[] = u"Name must be 1\u201380 characters without parentheses.";

class InlineRename : public support::Workbench {
 protected:
  void SetUp() override {
    support::Workbench::SetUp();
    headless::EditorSetAll(kIdEditor, kTwo);
    headless::Advance(1000);
  }
  static void Press(int key) {
    platform::KeyEvent event;
    event.key = key;
    headless::PressKey(event);
  }
  static void ClickFromRight(int row, int pixels) {
    const platform::Rect place = platform::RowPlace(kIdFeatureList, row);
    ASSERT_TRUE(headless::ClickInRow(kIdFeatureList, row, place.right - pixels));
  }
  static std::u16string Row(int row) { return platform::RowText(kIdFeatureList, row); }
  static std::u16string Status() { return platform::TextOf(kIdStatusLine); }
  static bool BoxShows() { return platform::IsVisible(kIdInlineName); }
  static const ProgramTab& Tab() { return tabs[app.activeTab]; }
};

constexpr int kKeyF2 = platform::kKeyF1 + 1;

TEST_F(InlineRename, AClickOnTheNameShowsTheBoxOverThatRow) {
  ClickFromRight(1, 69);
  ASSERT_TRUE(BoxShows());
  EXPECT_EQ(platform::FocusedId(), kIdInlineName);
  EXPECT_EQ(platform::TextOf(kIdInlineName), u"Second");
  const platform::Rect list = platform::PlaceInMainWindow(kIdFeatureList);
  const platform::Rect row = platform::RowPlace(kIdFeatureList, 1);
  const platform::Rect box = platform::PlaceOf(kIdInlineName);
  EXPECT_EQ(box.top, list.top + row.top);
  EXPECT_EQ(box.bottom, list.top + row.bottom);
  EXPECT_EQ(box.right, list.left + row.right - 68);
}

TEST_F(InlineRename, EnterCommitsAndTheListHasTheKeyboardAgain) {
  headless::SelectRows(kIdFeatureList, {0});
  headless::Focus(kIdFeatureList);
  Press(kKeyF2);
  ASSERT_TRUE(headless::TypeInto(kIdInlineName, u"Rough face"));
  Press(platform::kKeyEnter);
  EXPECT_FALSE(BoxShows());
  EXPECT_EQ(platform::FocusedId(), kIdFeatureList);
  EXPECT_EQ(Row(0), u"#1  Rough face");
  EXPECT_NE(Text().find(u"(MORVA NAME Rough face)\r\nG0 X1"), std::u16string::npos);
  EXPECT_TRUE(app.editorDirty);
  headless::EditorUndo(kIdEditor);
  EXPECT_EQ(Text(), kTwo);
}

TEST_F(InlineRename, EscapeChangesNothing) {
  ClickFromRight(0, 100);
  headless::TypeInto(kIdInlineName, u"Other");
  Press(platform::kKeyEscape);
  EXPECT_FALSE(BoxShows());
  EXPECT_EQ(platform::FocusedId(), kIdFeatureList);
  EXPECT_EQ(Text(), kTwo);
}

TEST_F(InlineRename, LosingTheKeyboardCommits) {
  ClickFromRight(0, 100);
  headless::TypeInto(kIdInlineName, u"Other");
  headless::Focus(kIdEditor);
  EXPECT_FALSE(BoxShows());
  EXPECT_EQ(Row(0), u"#1  Other");
  // The keyboard stays where the user put it.
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
}

TEST_F(InlineRename, AClickOnAnotherRowCommitsTheFirstAndGoesOnThere) {
  ClickFromRight(0, 100);
  headless::TypeInto(kIdInlineName, u"Other");
  ClickFromRight(1, 100);
  EXPECT_EQ(Row(0), u"#1  Other");
  EXPECT_TRUE(BoxShows());
  EXPECT_EQ(platform::TextOf(kIdInlineName), u"Second");
}

TEST_F(InlineRename, AnUntouchedNameLeavesNoEdit) {
  tabs[0].dirty = false;
  app.editorDirty = false;
  ClickFromRight(0, 100);
  Press(platform::kKeyEnter);
  EXPECT_EQ(Text(), kTwo);
  EXPECT_FALSE(app.editorDirty);
}

TEST_F(InlineRename, RefusesWhatIsNoNameInTheStatusLine) {
  for (const std::u16string& name :
       {std::u16string(), std::u16string(u"a)b"), std::u16string(u"caf\u00e9")}) {
    headless::SelectRows(kIdFeatureList, {0});
    headless::Focus(kIdFeatureList);
    Press(kKeyF2);
    headless::TypeInto(kIdInlineName, name);
    Press(platform::kKeyEnter);
    EXPECT_EQ(Status(), kRefusal);
    EXPECT_FALSE(BoxShows());
    EXPECT_EQ(platform::FocusedId(), kIdFeatureList);
    EXPECT_EQ(Text(), kTwo);
    headless::Click(kIdPath);
  }
}

TEST_F(InlineRename, TakesEightyCharactersAndNoMore) {
  ClickFromRight(0, 100);
  headless::TypeInto(kIdInlineName, std::u16string(81, u'x'));
  EXPECT_EQ(platform::TextOf(kIdInlineName).size(), 80u);
  Press(platform::kKeyEnter);
  EXPECT_EQ(Row(0), u"#1  " + std::u16string(80, u'x'));
}

TEST_F(InlineRename, ALockedFeatureShowsNoBox) {
  headless::SelectRows(kIdFeatureList, {0});
  headless::Click(kIdFeatureLock);
  ClickFromRight(0, 100);
  EXPECT_FALSE(BoxShows());
  headless::Focus(kIdFeatureList);
  Press(kKeyF2);
  EXPECT_FALSE(BoxShows());
}

TEST_F(InlineRename, TheLastThirtyFourPixelsLock) {
  ClickFromRight(1, 1);
  EXPECT_EQ(Row(1), u"#2  Second [locked]");
  ClickFromRight(1, 34);
  EXPECT_EQ(Row(1), u"#2  Second");
  EXPECT_FALSE(BoxShows());
}

TEST_F(InlineRename, TheThirtyFourBeforeThemHide) {
  ClickFromRight(1, 35);
  EXPECT_EQ(Row(1), u"#2  Second [hidden]");
  ClickFromRight(1, 68);
  EXPECT_EQ(Row(1), u"#2  Second");
  EXPECT_FALSE(BoxShows());
  EXPECT_EQ(Tab().hiddenIds[0], 0);
}

TEST_F(InlineRename, DeleteInTheListAsksAndDeletes) {
  headless::SelectRows(kIdFeatureList, {0});
  headless::Focus(kIdFeatureList);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  Press(platform::kKeyDelete);
  EXPECT_EQ(platform::RowCount(kIdFeatureList), 1);
  EXPECT_EQ(Row(0), u"#1  Second");
}

TEST_F(InlineRename, UndoBringsADeletedBlockBackFromTheListAndFromTheKey) {
  const std::u16string before = Text();
  platform::KeyEvent undo;
  undo.key = 'Z';
  undo.ctrl = true;
  for (const int from : {kIdFeatureList, kIdFeatureDelete}) {
    headless::SelectRows(kIdFeatureList, {0});
    headless::Focus(from);
    headless::QueueAnswer(platform::BoxAnswer::Yes);
    if (from == kIdFeatureList) {
      Press(platform::kKeyDelete);
    } else {
      headless::Click(from);
    }
    ASSERT_NE(Text(), before);
    EXPECT_TRUE(headless::PressKey(undo));
    EXPECT_EQ(Text(), before);
    headless::Advance(1000);
    EXPECT_EQ(Text(), before);
    EXPECT_EQ(platform::RowCount(kIdFeatureList), 2);
  }
}

TEST_F(InlineRename, EnterInTheListEditsTheFeature) {
  headless::SelectRows(kIdFeatureList, {1});
  headless::Focus(kIdFeatureList);
  Press(platform::kKeyEnter);
  EXPECT_EQ(platform::TextOf(kIdFeatureHint),
            u"User code: edit the selected block directly. Rename below.");
}

// The settings of a slot whose code is unchanged, so that its builder may open.
std::u16string SlotBlock(int id) {
  const std::u16string code = u"G1 X1\r\n";
  FeatureSettings record;
  record.version = 3;
  record.kind = kKindShape;
  record.a = 6;
  record.codeHash = CodeHash(code);
  return SettingsBlockText(id, u"Slot", record, code);
}

TEST_F(InlineRename, ADoubleClickOnTheNameOpensTheBuilderAndRenamesNothing) {
  static int opened;
  opened = 0;
  support::TakeKind(kKindShape, [](const FeatureSettings&) { return ++opened > 0; });
  const std::u16string text = SlotBlock(1);
  headless::EditorSetAll(kIdEditor, text);
  headless::Advance(1000);
  ASSERT_TRUE(headless::DoubleClickRow(kIdFeatureList, 0));
  EXPECT_EQ(opened, 1);
  EXPECT_FALSE(BoxShows());
  EXPECT_FALSE(IsInlineRenaming());
  EXPECT_EQ(Text(), text);
  EXPECT_EQ(platform::TextOf(kIdFeatureHint),
            u"Editing existing block. Update replaces it; New unlinks.");
}

// Two quick clicks on an icon are two clicks; the builder opens from the name, or by Enter.
TEST_F(InlineRename, ADoubleClickOnAnIconTogglesTwice) {
  headless::TakeBoxes();
  for (const int pixels : {17, 50}) {
    ClickFromRight(1, pixels);
    EXPECT_NE(Row(1), u"#2  Second");
    const std::u16string before = platform::TextOf(kIdFeatureHint);
    RouteCommand(kIdFeatureList, platform::kNotifyListDouble);
    EXPECT_EQ(Row(1), u"#2  Second");
    EXPECT_EQ(platform::TextOf(kIdFeatureHint), before);
  }
  headless::Focus(kIdFeatureList);
  Press(platform::kKeyEnter);
  EXPECT_EQ(platform::TextOf(kIdFeatureHint),
            u"User code: edit the selected block directly. Rename below.");
}

// Thirty blocks of four lines; the list shows fewer rows.
void LoadThirty() {
  std::u16string text;
  for (int i = 1; i <= 30; ++i) {
    const std::string digits = std::to_string(i);
    const std::u16string id(digits.begin(), digits.end());
    text += u"(MORVA TEXT " + id + u")\r\n(MORVA NAME Block " + id + u")\r\nM8\r\n(MORVA END " +
            id + u")\r\n";
  }
  headless::EditorSetAll(kIdEditor, text);
  headless::Advance(1000);
  ASSERT_EQ(platform::RowCount(kIdFeatureList), 30);
}

TEST_F(InlineRename, TheBoxFollowsTheWheel) {
  LoadThirty();
  ClickFromRight(4, 100);
  const int before = platform::PlaceOf(kIdInlineName).top;
  ASSERT_TRUE(headless::WheelRows(kIdFeatureList, 3));
  EXPECT_TRUE(BoxShows());
  EXPECT_EQ(platform::PlaceOf(kIdInlineName).top, before - 3 * 24);
  EXPECT_EQ(platform::FocusedId(), kIdInlineName);
}

TEST_F(InlineRename, ARowThatIsScrolledOutOfViewTakesItsNameAlong) {
  LoadThirty();
  ClickFromRight(1, 100);
  headless::TypeInto(kIdInlineName, u"Gone");
  ASSERT_TRUE(headless::WheelRows(kIdFeatureList, 3));
  EXPECT_FALSE(BoxShows());
  EXPECT_EQ(Row(1), u"#2  Gone");
  EXPECT_EQ(platform::FocusedId(), kIdFeatureList);
}

// A refresh puts a new row above; the box stays with the one it was opened for.
TEST_F(InlineRename, TheBoxFollowsItsRowWhenOneComesAboveIt) {
  ClickFromRight(0, 100);
  const int before = platform::PlaceOf(kIdInlineName).top;
  platform::ReplaceRange(kIdEditor, {0, 0}, u"M3\r\n");
  headless::Advance(200);
  ASSERT_EQ(platform::RowCount(kIdFeatureList), 3);
  ASSERT_TRUE(BoxShows());
  EXPECT_EQ(platform::PlaceOf(kIdInlineName).top, before + 24);
  headless::TypeInto(kIdInlineName, u"Other");
  Press(platform::kKeyEnter);
  EXPECT_EQ(Row(1), u"#2  Other");
}

TEST_F(InlineRename, TheBoxStaysWithItsRowWhenTheSelectionMovesOn) {
  ClickFromRight(0, 100);
  const int before = platform::PlaceOf(kIdInlineName).top;
  platform::SelectRow(kIdFeatureList, 1);
  headless::Resize(1500, 940);
  EXPECT_EQ(platform::PlaceOf(kIdInlineName).top, before);
}

TEST_F(InlineRename, NamesNothingInAProgramThatCameUpMeanwhile) {
  ClickFromRight(0, 100);
  headless::TypeInto(kIdInlineName, u"Other");
  SwitchTab(OpenTab(u"", kTwo, u"received"));
  // Gone at once, though the other program has a block of that number as well.
  EXPECT_FALSE(BoxShows());
  headless::Advance(200);
  headless::Focus(kIdEditor);
  EXPECT_EQ(Text(), kTwo);
}

TEST_F(InlineRename, TheBoxFollowsItsRowWhenThePanelIsDragged) {
  ClickFromRight(0, 100);
  const int before = platform::PlaceOf(kIdInlineName).right;
  app.leftPanelWidth += 50;
  headless::Resize(1500, 900);
  EXPECT_EQ(platform::PlaceOf(kIdInlineName).right, before + 50);
  EXPECT_TRUE(BoxShows());
}

TEST_F(InlineRename, ThePointerOverTheRowDoesNotWipeWhatIsSaidAboutTheName) {
  headless::MovePointerOver(kIdFeatureList);
  headless::Advance(150);
  ClickFromRight(0, 100);
  headless::MovePointerOver(kIdInlineName);
  headless::Advance(150);
  headless::TypeInto(kIdInlineName, u"a)b");
  Press(platform::kKeyEnter);
  headless::MovePointerOver(kIdFeatureList);
  headless::Advance(300);
  EXPECT_EQ(Status(), kRefusal);
}

TEST_F(InlineRename, TheFourKeysSayWhatTheyDo) {
  EXPECT_EQ(headless::ToolTipOf(kIdFeatureInclude),
            u"Include / exclude machining code; keep geometry");
  EXPECT_EQ(headless::ToolTipOf(kIdFeatureNew), u"Add a new feature");
  EXPECT_EQ(headless::ToolTipOf(kIdFeatureEdit), u"Edit selected feature settings");
  EXPECT_EQ(headless::ToolTipOf(kIdFeatureDelete), u"Delete selected feature (Undo restores)");
}

}  // namespace
}  // namespace morva
