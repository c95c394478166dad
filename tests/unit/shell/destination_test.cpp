// The destination picker on the whole application: blocks of a kind that asks are inserted
// with code of the test's own, and the user's doings are handed in while the picker stands.
#include "documents/destination.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cad/model/sketch.h"
#include "cad/model/sketch_words.h"
#include "cad/panel/sketch_code.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "support/kinds.h"
#include "support/workbench.h"
#include "text/codetext.h"

namespace morva {
namespace {

constexpr char16_t kCode[] = u"\r\n(CUT)\r\nG1 X1\r\n";
constexpr char16_t kThree[] =
    u"(MORVA TEXT 1)\r\nG0 X1\r\n(MORVA END 1)\r\n"
    u"(MORVA TEXT 2)\r\nG0 X2\r\n(MORVA END 2)\r\n"
    u"(MORVA TEXT 3)\r\nG0 X3\r\n(MORVA END 3)\r\n";

bool WriteModel(FeatureSettings& record) {
  record.version = 3;
  record.kind = kKindSketch;
  return true;
}

struct DestinationTest : support::Workbench {
  void SetUp() override {
    Workbench::SetUp();
    headless::Advance(200);  // the template is tagged
    support::TakeKind(kKindSketch, WriteModel);
    platform::SetEditorText(kIdEditor, kThree);
    Caret(0);
    opened = false;
    headless::TakeBoxes();
  }
  static void Caret(int position) { platform::SetEditorSelection(kIdEditor, {position, position}); }
  // The caret before the first place of these words.
  static void CaretAt(std::u16string_view words) {
    const std::u16string text = Text();
    Caret(MapTextOffset(text, static_cast<std::int32_t>(text.find(words))));
  }
  static bool Insert() { return InsertFeatureBlock(kKindSketch, kCode, true); }
  static std::u16string Position() { return platform::TextOf(kIdDestinationPosition); }
  static std::u16string Help() { return platform::TextOf(kIdDestinationHelp); }
  static std::vector<std::u16string> Choices() {
    std::vector<std::u16string> rows;
    for (int i = 0; i < platform::RowCount(kIdDestinationProgram); ++i) {
      rows.push_back(platform::RowText(kIdDestinationProgram, i));
    }
    return rows;
  }
  // What is looked at, then the picker is cancelled.
  static void Look(std::function<void()> look) {
    headless::InDialog([look] {
      opened = true;
      look();
    });
    EXPECT_FALSE(Insert());
    EXPECT_TRUE(opened);
  }
  static void AcceptAt(const char16_t* position) {
    headless::InDialog([position] { headless::TypeInto(kIdDestinationPosition, position); });
    headless::InDialog([] { headless::Click(kIdDestinationInsert); });
  }
  // Ids of the active program's blocks in their order.
  static std::vector<int> Ids() {
    ScanProgramText(Text());
    std::vector<int> ids;
    for (int i = 0; i < features.count; ++i) ids.push_back(features.rows[i].id);
    return ids;
  }
  static void AddProgram(const char16_t* title, const char16_t* text) {
    ASSERT_GE(OpenTab(u"", text, title), 0);
  }
  // The link as it is made when a block is opened for edit.
  static void LinkTo(int id) {
    const std::u16string text = Text();
    ScanProgramText(text);
    const FeatureRecord& row = features.rows[FindFeature(id)];
    editLink.kind = kKindSketch;
    editLink.id = id;
    editLink.tab = app.activeTab;
    editLink.original = text.substr(static_cast<std::size_t>(row.start),
                                    static_cast<std::size_t>(row.end - row.start));
  }
  static inline bool opened = false;
};

TEST_F(DestinationTest, ShowsTheProgramsInOrderAndANewOneAtTheEnd) {
  AddProgram(u"B.NC", u"G0");
  Look([] {
    EXPECT_EQ(headless::DialogTitle(), u"Insert code into project");
    EXPECT_EQ(platform::ClassOf(kViewDestination), u"MorvaDestination");
    EXPECT_EQ(Choices(),
              (std::vector<std::u16string>{u"Untitled-1.NC", u"B.NC", u"+ New project"}));
    EXPECT_EQ(platform::SelectedRow(kIdDestinationProgram), 0);
    EXPECT_EQ(platform::PlaceOf(kViewDestination).left, 100);
    EXPECT_EQ(platform::PlaceOf(kViewDestination).top, 120);
    EXPECT_EQ(platform::RectWidth(platform::PlaceOf(kViewDestination)), 640);
    EXPECT_EQ(platform::RectHeight(platform::PlaceOf(kViewDestination)), 528);
  });
}

TEST_F(DestinationTest, DoesNotOfferANewProjectWithEightProgramsOpen) {
  while (app.tabCount < kMaxTabs) AddProgram(u"X.NC", u"G0");
  Look([] { EXPECT_EQ(Choices().size(), 8u); });
}

TEST_F(DestinationTest, StartsBehindTheBlocksThatEndBeforeTheCaret) {
  const struct {
    const char16_t* at;
    const char16_t* position;
  } kCases[] = {{u"(MORVA TEXT 1)", u"1"},
                {u"G0 X1", u"1"},
                {u"(MORVA TEXT 2)", u"2"},
                {u"G0 X2", u"2"},
                {u"G0 X3", u"3"}};
  for (const auto& each : kCases) {
    CaretAt(each.at);
    Look([&each] { EXPECT_EQ(Position(), each.position) << support::Workbench::Text().size(); });
  }
  Caret(platform::EditorLength(kIdEditor));
  Look([] { EXPECT_EQ(Position(), u"4"); });
}

TEST_F(DestinationTest, TellsWhereTheCodeGoes) {
  AddProgram(u"B.NC", u"G0");
  Look([] {
    EXPECT_EQ(Help(),
              u"Add code to \u201CUntitled-1.NC\u201D at operation 1\r\n"
              u"Available positions: 1\u20134. Later operations move down.");
    headless::TypeInto(kIdDestinationPosition, u"3");
    EXPECT_EQ(Help().find(u"Add code to \u201CUntitled-1.NC\u201D at operation 3\r\n"), 0u);
    headless::SelectRows(kIdDestinationProgram, {1});
    EXPECT_EQ(Position(), u"2");
    EXPECT_EQ(Help(),
              u"Add code to \u201CB.NC\u201D at operation 2\r\n"
              u"Available positions: 1\u20132. Later operations move down.\r\n"
              u"The source drawing remains in its original project.");
    headless::SelectRows(kIdDestinationProgram, {2});
    EXPECT_EQ(Help(),
              u"Add code to \u201CNew project\u201D at operation 2\r\n"
              u"Available positions: 1\u20132. Later operations move down.\r\n"
              u"The source drawing remains in its original project.");
    headless::SelectRows(kIdDestinationProgram, {0});
    EXPECT_EQ(Position(), u"4");
  });
}

TEST_F(DestinationTest, KeepsTheFeatureTableOfTheProgramOnTheStage) {
  AddProgram(u"B.NC", u"G0");
  Look([] {
    headless::SelectRows(kIdDestinationProgram, {1});
    EXPECT_EQ(features.count, 3);
  });
}

TEST_F(DestinationTest, PutsTheBlockBeforeTheChosenOperation) {
  for (const char16_t* position : {u"1", u"2", u"3"}) {
    platform::SetEditorText(kIdEditor, kThree);
    AcceptAt(position);
    ASSERT_TRUE(Insert());
    std::vector<int> wanted{1, 2, 3};
    wanted.insert(wanted.begin() + (position[0] - u'1'), 4);
    EXPECT_EQ(Ids(), wanted);
  }
}

TEST_F(DestinationTest, PutsTheBlockBehindTheLastAtTheLastPosition) {
  AcceptAt(u"4");
  ASSERT_TRUE(Insert());
  EXPECT_EQ(Ids(), (std::vector<int>{1, 2, 3, 4}));
}

// A block of one line starts on the line that it ends on.
TEST_F(DestinationTest, PutsTheBlockBehindALastBlockOfOneLine) {
  platform::SetEditorText(kIdEditor, u"(MORVA TEXT 1)G0 X1(MORVA END 1)\r\n");
  AcceptAt(u"2");
  ASSERT_TRUE(Insert());
  EXPECT_EQ(Ids(), (std::vector<int>{1, 2}));
  platform::SetEditorText(kIdEditor, u"(MORVA TEXT 1)G0 X1(MORVA END 1)\r\n");
  AcceptAt(u"1");
  ASSERT_TRUE(Insert());
  EXPECT_EQ(Ids(), (std::vector<int>{2, 1}));
}

TEST_F(DestinationTest, StaysBeforeTheClosingPercentLine) {
  platform::SetEditorText(kIdEditor, u"%\r\n(MORVA TEXT 1)\r\nG0\r\n(MORVA END 1)\r\n%\r\n");
  AcceptAt(u"2");
  ASSERT_TRUE(Insert());
  const std::u16string text = Text();
  EXPECT_GT(text.rfind(u"%"), text.find(u"(MORVA END 2)"));
}

TEST_F(DestinationTest, TakesAnEmptyProgramAtItsOnlyPosition) {
  platform::SetEditorText(kIdEditor, u"");
  AcceptAt(u"1");
  ASSERT_TRUE(Insert());
  EXPECT_EQ(Ids(), std::vector<int>{1});
}

TEST_F(DestinationTest, RefusesPositionsOutsideTheRangeAndStays) {
  for (const char16_t* position : {u"0", u"5", u"-1", u"", u"abc", u"+1"}) {
    headless::InDialog([position] { headless::TypeInto(kIdDestinationPosition, position); });
    headless::InDialog([] { headless::Click(kIdDestinationInsert); });
    headless::InDialog([] {
      EXPECT_EQ(headless::OpenDialog(), kViewDestination);
      EXPECT_EQ(platform::FocusedId(), kIdDestinationPosition);
    });
    EXPECT_FALSE(Insert());
    const auto boxes = headless::TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u) << support::Workbench::Text().size();
    EXPECT_EQ(boxes[0].title, u"Insert code");
    EXPECT_EQ(boxes[0].text, u"Choose an operation position within the displayed range.");
  }
  EXPECT_EQ(Text(), kThree);
}

constexpr char16_t kEnded[] = u"(MORVA TEXT 1)\r\nO1\r\nG20\r\nG0 X1\r\nM30\r\n(MORVA END 1)\r\n";

// The default place is behind the caret's block; a second Enter must not put code there.
TEST_F(DestinationTest, AsksBeforeCodeGoesWhereItIsNeverRun) {
  platform::SetEditorText(kIdEditor, kEnded);
  Caret(platform::EditorLength(kIdEditor));
  for (const bool wants : {false, true}) {
    headless::QueueAnswer(wants ? platform::BoxAnswer::Yes : platform::BoxAnswer::No);
    headless::InDialog([] {
      EXPECT_EQ(Position(), u"2");
      EXPECT_EQ(platform::TextOf(kIdDestinationAround), u"Behind M30: never run");
      headless::PressKey({platform::kKeyEnter});
    });
    if (!wants) {
      headless::InDialog([] {
        EXPECT_EQ(headless::OpenDialog(), kViewDestination);
        EXPECT_EQ(platform::FocusedId(), kIdDestinationPosition);
      });
    }
    EXPECT_EQ(Insert(), wants);
    const auto boxes = headless::TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].title, u"Insert code");
    EXPECT_EQ(boxes[0].text,
              u"The code would stand behind M30, where it is never run.\r\n\r\nInsert it there all "
              u"the same?");
    EXPECT_EQ(Text() == kEnded, !wants);
  }
  // Nothing is asked where a split runs it, and of an update, which stays where it is.
  platform::SetEditorText(kIdEditor, kEnded);
  CaretAt(u"M30");
  headless::InDialog([] {
    headless::TypeInto(kIdDestinationPosition, u"2");
    EXPECT_TRUE(platform::IsChecked(kIdDestinationSplit));
    headless::Click(kIdDestinationInsert);
  });
  EXPECT_TRUE(Insert());
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(DestinationTest, AsksNothingOfAnUpdateWhereverItStands) {
  platform::SetEditorText(kIdEditor, kEnded);
  Caret(platform::EditorLength(kIdEditor));
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::InDialog([] { headless::Click(kIdDestinationInsert); });
  ASSERT_TRUE(Insert());
  headless::TakeBoxes();
  LinkTo(2);
  headless::InDialog([] { headless::Click(kIdDestinationInsert); });
  EXPECT_TRUE(InsertFeatureBlock(kKindSketch, u"\r\nG21\r\nG1 X1\r\n", true));
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

TEST_F(DestinationTest, SaysThatAnUpdateMovesNothing) {
  AcceptAt(u"2");
  ASSERT_TRUE(Insert());
  LinkTo(4);
  Look([] {
    EXPECT_EQ(platform::TextOf(kIdDestinationAround),
              u"In the place of operation 2; the others stay");
  });
}

// Of the place in the chosen program, as the tool library asks.
TEST_F(DestinationTest, AsksBeforeCodeLeavesTheOtherUnitOn) {
  AddProgram(u"B.NC", u"G21\r\nG0 X1\r\n");
  AddProgram(u"C.NC", u"G0 X1\r\n");
  platform::SetEditorText(kIdEditor,
                          u"(MORVA TEXT 1)\r\nG20\r\n(MORVA END 1)\r\n"
                          u"(MORVA TEXT 2)\r\nG21\r\n(MORVA END 2)\r\n");
  const struct {
    const char16_t* code;
    int program;
    const char16_t* position;
    const char16_t* switches;  // null: nothing is asked
  } kCases[] = {{u"\r\nG21 (MM)\r\n", 0, u"2", u"switches it to millimeters."},
                {u"\r\nG21 (MM)\r\n", 0, u"3", nullptr},
                {u"\r\nG20 (INCH)\r\n", 0, u"2", nullptr},
                {u"\r\nG20 (INCH)\r\n", 0, u"3", u"switches it to inches."},
                {u"\r\nG20 (INCH)\r\n", 1, u"2", u"switches it to inches."},
                {u"\r\nG21 (MM)\r\n", 1, u"2", nullptr},
                {u"\r\nG21 (MM)\r\n", 2, u"2", nullptr},
                {u"\r\nG1 X1\r\n", 0, u"2", nullptr}};
  const std::u16string before = Text();
  for (const auto& c : kCases) {
    SCOPED_TRACE(testing::Message() << platform::ToUtf8(c.code) << c.program);
    SwitchTab(0);
    platform::SetEditorText(kIdEditor, before);
    headless::TakeBoxes();
    headless::QueueAnswer(platform::BoxAnswer::No);
    headless::InDialog([&c] { headless::SelectRows(kIdDestinationProgram, {c.program}); });
    AcceptAt(c.position);
    EXPECT_EQ(InsertFeatureBlock(kKindSketch, c.code, true), c.switches == nullptr);
    const auto boxes = headless::TakeBoxes();
    ASSERT_EQ(boxes.size(), c.switches ? 1u : 0u);
    if (!c.switches) continue;
    EXPECT_EQ(boxes[0].title, u"Insert code");
    EXPECT_NE(boxes[0].text.find(c.switches), std::u16string::npos);
    EXPECT_EQ(Text(), before);
  }
}

TEST_F(DestinationTest, TakesAPositionAfterARefusedOne) {
  AcceptAt(u"9");
  AcceptAt(u"2.9");  // whole digits count
  ASSERT_TRUE(Insert());
  EXPECT_EQ(Ids(), (std::vector<int>{1, 4, 2, 3}));
}

TEST_F(DestinationTest, ChangesNothingWhenCancelled) {
  AddProgram(u"B.NC", u"G0");
  CaretAt(u"G0 X2");
  const platform::EditorRange caret = platform::EditorSelection(kIdEditor);
  const std::u16string output = Output();
  const bool dirty = app.editorDirty;
  headless::InDialog([] {
    headless::SelectRows(kIdDestinationProgram, {1});
    headless::PressKey({platform::kKeyEscape});
  });
  EXPECT_FALSE(Insert());
  EXPECT_EQ(Text(), kThree);
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_EQ(app.tabCount, 2);
  EXPECT_EQ(app.editorDirty, dirty);
  EXPECT_EQ(platform::EditorSelection(kIdEditor).to, caret.to);
  EXPECT_EQ(Output(), output);
  EXPECT_FALSE(platform::Exists(kViewDestination));
}

TEST_F(DestinationTest, GoesIntoAnotherProgramWhichComesUp) {
  AddProgram(u"B.NC", kThree);
  headless::InDialog([] { headless::SelectRows(kIdDestinationProgram, {1}); });
  AcceptAt(u"2");
  ASSERT_TRUE(Insert());
  EXPECT_EQ(app.activeTab, 1);
  EXPECT_EQ(Ids(), (std::vector<int>{1, 4, 2, 3}));
  EXPECT_EQ(tabs[0].text, kThree);
}

TEST_F(DestinationTest, TagsForeignTextOfTheDestinationFirst) {
  AddProgram(u"B.NC", u"G0 X1\r\n(SHAPE: SLOT)\r\nG1\r\n\r\nG0 X2\r\n");
  headless::InDialog([] {
    headless::SelectRows(kIdDestinationProgram, {1});
    EXPECT_EQ(Position(), u"4");
  });
  AcceptAt(u"2");
  ASSERT_TRUE(Insert());
  const std::u16string text = Text();
  EXPECT_LT(text.find(u"G0 X1"), text.find(u"(CUT)"));
  EXPECT_LT(text.find(u"(CUT)"), text.find(u"(SHAPE: SLOT)"));
  EXPECT_EQ(Ids().size(), 4u);
}

TEST_F(DestinationTest, OpensANewProjectBeforeOrBehindItsTemplate) {
  for (const char16_t* position : {u"1", u"2"}) {
    const int row = app.tabCount;
    headless::InDialog([row] { headless::SelectRows(kIdDestinationProgram, {row}); });
    AcceptAt(position);
    ASSERT_TRUE(Insert());
    EXPECT_EQ(std::u16string(tabs[app.activeTab].title), u"New project.NC");
    const std::u16string text = Text();
    const bool before = text.find(u"(CUT)") < text.find(u"(FILE: New project.NC)");
    EXPECT_EQ(before, position[0] == u'1');
  }
  EXPECT_EQ(app.tabCount, 3);
}

TEST_F(DestinationTest, FailsWhenTheNewProgramCannotBeOpened) {
  headless::InDialog([] {
    headless::SelectRows(kIdDestinationProgram, {1});
    // A received program comes up meanwhile, and more.
    while (app.tabCount < kMaxTabs) OpenTab(u"", u"G0", u"X.NC");
    headless::Click(kIdDestinationInsert);
  });
  EXPECT_FALSE(Insert());
  EXPECT_EQ(Text(), kThree);
  ASSERT_EQ(headless::TakeBoxes().size(), 1u);
}

// An update.

TEST_F(DestinationTest, KeepsThePositionOfAnUpdateAndDoesNotAllowChangingIt) {
  AcceptAt(u"2");
  ASSERT_TRUE(Insert());
  LinkTo(4);
  headless::InDialog([] {
    EXPECT_EQ(Position(), u"2");
    EXPECT_FALSE(headless::TypeInto(kIdDestinationPosition, u"3"));
    EXPECT_EQ(Help().find(u"Update code in \u201CUntitled-1.NC\u201D at operation 2\r\n"), 0u);
    headless::Click(kIdDestinationInsert);
  });
  EXPECT_TRUE(InsertFeatureBlock(kKindSketch, u"\r\n(OTHER)\r\n", true));
  EXPECT_EQ(Ids(), (std::vector<int>{1, 4, 2, 3}));
  EXPECT_EQ(Text().find(u"(CUT)"), std::u16string::npos);
  EXPECT_NE(Text().find(u"(OTHER)"), std::u16string::npos);
}

TEST_F(DestinationTest, PutsAnUpdateIntoAnotherProgramAsANewBlock) {
  AcceptAt(u"2");
  ASSERT_TRUE(Insert());
  AddProgram(u"B.NC", kThree);
  LinkTo(4);
  headless::InDialog([] {
    headless::SelectRows(kIdDestinationProgram, {1});
    EXPECT_EQ(Position(), u"4");
    EXPECT_EQ(Help().find(u"Add code to \u201CB.NC\u201D at operation 4\r\n"), 0u);
    headless::SelectRows(kIdDestinationProgram, {0});
    EXPECT_EQ(Position(), u"2");
    EXPECT_FALSE(platform::IsEnabled(kIdDestinationPosition));
    headless::SelectRows(kIdDestinationProgram, {1});
    EXPECT_TRUE(platform::IsEnabled(kIdDestinationPosition));
  });
  AcceptAt(u"1");
  ASSERT_TRUE(InsertFeatureBlock(kKindSketch, u"\r\n(OTHER)\r\n", true));
  EXPECT_EQ(app.activeTab, 1);
  EXPECT_EQ(Ids(), (std::vector<int>{4, 1, 2, 3}));
  EXPECT_EQ(editLink.kind, 0);
  EXPECT_NE(tabs[0].text.find(u"(CUT)"), std::u16string::npos);
}

TEST_F(DestinationTest, RefusesAnUpdateOfABlockThatIsGone) {
  AcceptAt(u"2");
  ASSERT_TRUE(Insert());
  LinkTo(4);
  platform::SetEditorText(kIdEditor, kThree);
  headless::InDialog([] { headless::Click(kIdDestinationInsert); });
  EXPECT_FALSE(Insert());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Shape update stopped");
  EXPECT_EQ(Text(), kThree);
}

TEST_F(DestinationTest, TakesALinkOfAnotherKindForNoUpdate) {
  LinkTo(1);
  editLink.kind = kKindPlate;
  Look([] { EXPECT_TRUE(platform::IsEnabled(kIdDestinationPosition)); });
}

// What can happen behind it.

TEST_F(DestinationTest, FindsItsProgramAgainWhenAnotherOneCameUpMeanwhile) {
  headless::InDialog([] { SwitchTab(OpenTab(u"", u"(RECEIVED)", u"Received.NC")); });
  AcceptAt(u"2");
  ASSERT_TRUE(Insert());
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_EQ(Ids(), (std::vector<int>{1, 4, 2, 3}));
  EXPECT_EQ(tabs[1].text.find(u"(CUT)"), std::u16string::npos);
}

TEST_F(DestinationTest, UpdatesTheBlockThoughAnotherProgramCameUpMeanwhile) {
  AcceptAt(u"2");
  ASSERT_TRUE(Insert());
  LinkTo(4);
  headless::InDialog([] { SwitchTab(OpenTab(u"", u"(RECEIVED)", u"Received.NC")); });
  headless::InDialog([] { headless::Click(kIdDestinationInsert); });
  EXPECT_TRUE(InsertFeatureBlock(kKindSketch, u"\r\n(OTHER)\r\n", true));
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_EQ(Ids(), (std::vector<int>{1, 4, 2, 3}));
  EXPECT_NE(Text().find(u"(OTHER)"), std::u16string::npos);
}

TEST_F(DestinationTest, GivesUpWhenTheChosenProgramWasClosed) {
  AddProgram(u"B.NC", kThree);
  headless::InDialog([] {
    headless::SelectRows(kIdDestinationProgram, {1});
    SwitchTab(1);
    app.editorDirty = false;
    CloseProgram();
    headless::TypeInto(kIdDestinationPosition, u"1");
    headless::Click(kIdDestinationInsert);
  });
  EXPECT_FALSE(Insert());
  EXPECT_EQ(app.tabCount, 1);
  EXPECT_EQ(Text(), kThree);
}

TEST_F(DestinationTest, StandsOnlyOnce) {
  headless::InDialog([] { EXPECT_FALSE(Insert()); });
  AcceptAt(u"4");
  ASSERT_TRUE(Insert());
  EXPECT_EQ(Ids().size(), 4u);
}

TEST_F(DestinationTest, AutosavesAndTagsWhileItStands) {
  platform::SetEditorText(kIdEditor, kThree);
  headless::EditorInsert(kIdEditor, u"G4\n");
  headless::InDialog([] {
    headless::Advance(2000);
    EXPECT_FALSE(app.editorDirty);  // saved by itself
    EXPECT_EQ(features.count, 4);   // the typed line has its markers
  });
  AcceptAt(u"5");
  ASSERT_TRUE(Insert());
  EXPECT_EQ(Ids().size(), 5u);
}

TEST_F(DestinationTest, WorksInTheCommandWordsView) {
  headless::Click(kIdCommandWords);
  ASSERT_TRUE(app.commandWordsActive);
  for (const char16_t* position : {u"2", u"5"}) {
    AcceptAt(position);
    ASSERT_TRUE(Insert());
    EXPECT_TRUE(app.commandWordsActive);
  }
  const std::vector<int> ids = Ids();
  EXPECT_EQ(ids, (std::vector<int>{1, 4, 2, 3, 5}));
}

TEST_F(DestinationTest, IsWorkedByKeyboardAlone) {
  AddProgram(u"B.NC", kThree);
  headless::InDialog([] {
    // The number is marked: typing takes its place.
    EXPECT_EQ(platform::FocusedId(), kIdDestinationPosition);
    headless::PressKey({'2'});
    EXPECT_EQ(Position(), u"2");
    platform::KeyEvent back{platform::kKeyTab};
    back.shift = true;
    headless::PressKey(back);
    EXPECT_EQ(platform::FocusedId(), kIdDestinationProgram);
    headless::PressKey({platform::kKeyDown});
    EXPECT_EQ(Position(), u"4");
    for (const int id : {kIdDestinationPosition, kIdDestinationList, kIdDestinationSplit,
                         kIdDestinationHelp, kIdDestinationInsert, kIdDestinationCancel}) {
      if (id == kIdDestinationSplit) continue;  // of another program: it has no caret
      headless::PressKey({platform::kKeyTab});
      EXPECT_EQ(platform::FocusedId(), id);
    }
    for (int i = 0; i < 3; ++i) headless::PressKey(back);
    headless::PressKey({platform::kKeyUp});
    EXPECT_EQ(Position(), u"3");
    headless::PressKey({platform::kKeyEnter});  // on a row
  });
  ASSERT_TRUE(Insert());
  EXPECT_EQ(app.activeTab, 1);
  EXPECT_EQ(Ids(), (std::vector<int>{1, 2, 4, 3}));
}

TEST_F(DestinationTest, TakesNoRoomWithoutAPicker) {
  headless::FailCall("control", 1);
  EXPECT_FALSE(Insert());
  EXPECT_EQ(Text(), kThree);
}

// What it tells, and code at the caret.

constexpr char16_t kForeign[] =
    u"%\r\n(MORVA TEXT 1)\r\n(MORVA NAME Plate)\r\nO1001\r\nG20 G54\r\nT1 M06\r\nG00 X0\r\nM30\r\n"
    u"(MORVA END 1)\r\n%\r\n";

struct PlaceTest : DestinationTest {
  void SetUp() override {
    DestinationTest::SetUp();
    platform::SetEditorText(kIdEditor, kForeign);
    CaretAt(u"G00 X0");
  }
  static std::u16string Around() { return platform::TextOf(kIdDestinationAround); }
  static bool Ticked() { return platform::IsChecked(kIdDestinationSplit); }
  static std::vector<std::u16string> Operations() {
    std::vector<std::u16string> rows;
    for (int i = 0; i < platform::RowCount(kIdDestinationList); ++i) {
      rows.push_back(platform::RowText(kIdDestinationList, i));
    }
    return rows;
  }
};

TEST_F(PlaceTest, ListsTheOperationsOfTheChosenProgramWithTheirNumbers) {
  platform::SetEditorText(kIdEditor, kThree);
  AddProgram(u"B.NC", u"(SHAPE: SLOT)\r\nG1\r\n\r\nG0 X2\r\n");
  Look([] {
    EXPECT_EQ(Operations(),
              (std::vector<std::u16string>{u"#1  User code", u"#2  User code", u"#3  User code",
                                           u"#4  (behind the last operation)"}));
    EXPECT_EQ(platform::SelectedRow(kIdDestinationList), 0);
    headless::TypeInto(kIdDestinationPosition, u"3");
    EXPECT_EQ(platform::SelectedRow(kIdDestinationList), 2);
    headless::TypeInto(kIdDestinationPosition, u"9");
    EXPECT_EQ(platform::SelectedRow(kIdDestinationList), -1);
    EXPECT_EQ(Around(), u"");
    headless::SelectRows(kIdDestinationList, {1});
    EXPECT_EQ(Position(), u"2");
    headless::SelectRows(kIdDestinationProgram, {1});
    // A legacy block shows the name that it will bear.
    EXPECT_EQ(Operations(),
              (std::vector<std::u16string>{u"#1  SHAPE: SLOT [text]", u"#2  User code",
                                           u"#3  (behind the last operation)"}));
    headless::SelectRows(kIdDestinationProgram, {2});
    EXPECT_EQ(Operations(),
              (std::vector<std::u16string>{u"#1  User code", u"#2  (behind the last operation)"}));
    EXPECT_EQ(features.count, 3);  // of the program on the stage
  });
}

TEST_F(PlaceTest, TakesAPlaceByADoubleClickOnItsRow) {
  platform::SetEditorText(kIdEditor, kThree);
  headless::InDialog([] { headless::DoubleClickRow(kIdDestinationList, 2); });
  ASSERT_TRUE(Insert());
  EXPECT_EQ(Ids(), (std::vector<int>{1, 2, 4, 3}));
}

TEST_F(PlaceTest, SaysWhatLiesAroundThePlace) {
  Look([] {
    headless::Click(kIdDestinationSplit);  // ticked by itself
    EXPECT_EQ(Around(), u"Before the program's head (O1001)");
    headless::TypeInto(kIdDestinationPosition, u"2");
    headless::Click(kIdDestinationSplit);
    EXPECT_FALSE(Ticked());
    EXPECT_EQ(Around(), u"Behind M30: never run");
    headless::SelectRows(kIdDestinationProgram, {1});
    EXPECT_EQ(Around(), u"Behind line 7 (G40 G80), at the end");
    headless::TypeInto(kIdDestinationPosition, u"1");
    EXPECT_EQ(Around(), u"Before the program's head (G20)");
  });
}

TEST_F(PlaceTest, TicksTheBoxByItselfWhereTheCodeWouldNotBeRunAsMeant) {
  Look([] {
    EXPECT_EQ(platform::TextOf(kIdDestinationSplit), u"Split the user code at line 7");
    EXPECT_EQ(Position(), u"1");
    EXPECT_TRUE(Ticked());
    EXPECT_EQ(Around(), u"Behind line 6 (T1 M06), before line 7 (G00 X0)");
    EXPECT_EQ(Help().find(u"Add code to \u201CUntitled-1.NC\u201D at operation 2\r\n"), 0u);
    headless::Click(kIdDestinationSplit);
    EXPECT_FALSE(Ticked());
    EXPECT_EQ(Help().find(u"Add code to \u201CUntitled-1.NC\u201D at operation 1\r\n"), 0u);
    headless::TypeInto(kIdDestinationPosition, u"2");
    EXPECT_TRUE(Ticked());
    // Another program has no caret.
    headless::SelectRows(kIdDestinationProgram, {1});
    EXPECT_FALSE(Ticked());
    EXPECT_FALSE(platform::IsEnabled(kIdDestinationSplit));
    headless::SelectRows(kIdDestinationProgram, {0});
    EXPECT_TRUE(Ticked());
  });
}

TEST_F(PlaceTest, TicksNothingWhereThePlaceIsGoodOrTheCaretNoBetter) {
  platform::SetEditorText(kIdEditor,
                          u"(MORVA TEXT 1)\r\nO1\r\nG20\r\n(MORVA END 1)\r\n"
                          u"(MORVA TEXT 2)\r\nG0 X2\r\nG0 X3\r\nM30\r\nG0 X9\r\n(MORVA END 2)\r\n");
  CaretAt(u"G0 X3");
  Look([] {
    EXPECT_EQ(Position(), u"2");
    EXPECT_FALSE(Ticked());
    EXPECT_EQ(Around(), u"Behind line 3 (G20), before line 6 (G0 X2)");
    headless::TypeInto(kIdDestinationPosition, u"3");
    EXPECT_TRUE(Ticked());
  });
  for (const std::u16string_view at : {u"O1", u"X9"}) {
    CaretAt(at);
    Look([] {
      headless::TypeInto(kIdDestinationPosition, u"3");
      EXPECT_FALSE(Ticked());
      EXPECT_EQ(Around(), u"Behind M30: never run");
    });
  }
}

TEST_F(PlaceTest, AsksBeforeCodeGoesWhereItIsNeverRun) {
  const std::u16string before = Text();
  const auto press = [] {
    headless::InDialog([] {
      headless::TypeInto(kIdDestinationPosition, u"2");
      headless::Click(kIdDestinationSplit);
      EXPECT_EQ(Around(), u"Behind M30: never run");
      headless::Click(kIdDestinationInsert);
      if (platform::Exists(kViewDestination)) headless::Click(kIdDestinationCancel);
    });
  };
  headless::QueueAnswer(platform::BoxAnswer::No);
  press();
  EXPECT_FALSE(Insert());
  EXPECT_EQ(Text(), before);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text,
            u"The code would stand behind M30, where it is never run.\r\n\r\n"
            u"Insert it there all the same?");
  EXPECT_EQ(boxes[0].buttons, platform::BoxButtons::NoYes);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  press();
  EXPECT_TRUE(Insert());
  EXPECT_GT(Text().find(u"(CUT)"), Text().find(u"M30"));
}

TEST_F(PlaceTest, HasTheBoxOnlyForUserCodeThatHoldsTheCaret) {
  Caret(platform::EditorLength(kIdEditor));
  Look([] { EXPECT_FALSE(platform::IsVisible(kIdDestinationSplit)); });
  CaretAt(u"G00 X0");
  AcceptAt(u"2");
  headless::InDialog([] {});
  ASSERT_TRUE(Insert());
  CaretAt(u"(CUT)");  // a block of a drawing
  Look([] { EXPECT_FALSE(platform::IsVisible(kIdDestinationSplit)); });
}

TEST_F(PlaceTest, PutsTheCodeAtTheCaretWithEnterAlone) {
  headless::InDialog([] {
    EXPECT_EQ(platform::FocusedId(), kIdDestinationPosition);
    headless::PressKey({platform::kKeyEnter});
  });
  ASSERT_TRUE(Insert());
  EXPECT_EQ(Ids(), (std::vector<int>{1, 2, 3}));
  const std::u16string text = Text();
  EXPECT_LT(text.find(u"T1 M06"), text.find(u"(CUT)"));
  EXPECT_LT(text.find(u"(CUT)"), text.find(u"(MORVA TEXT 3)\r\n(MORVA NAME Plate)\r\nG00 X0"));
  EXPECT_TRUE(platform::UndoEditor(kIdEditor));
  EXPECT_EQ(Text(), kForeign);
}

TEST_F(PlaceTest, KeepsTheNumberWhereTheUserTakesTheTickAway) {
  headless::InDialog([] {
    headless::Click(kIdDestinationSplit);
    headless::Click(kIdDestinationInsert);
  });
  ASSERT_TRUE(Insert());
  EXPECT_LT(Text().find(u"(CUT)"), Text().find(u"O1001"));
  EXPECT_EQ(Ids(), (std::vector<int>{2, 1}));
}

TEST_F(PlaceTest, PartsTheCodeInTheCommandWordsViewToo) {
  headless::Click(kIdCommandWords);
  ASSERT_TRUE(app.commandWordsActive);
  const int line = platform::EditorLineOf(kIdEditor, platform::EditorSelection(kIdEditor).to);
  const int at = platform::EditorLineStart(kIdWordsEditor, line);
  platform::SetEditorSelection(kIdWordsEditor, {at, at});
  headless::InDialog([] {
    EXPECT_TRUE(Ticked());
    headless::PressKey({platform::kKeyEnter});
  });
  ASSERT_TRUE(Insert());
  const std::u16string text = Text();
  EXPECT_LT(text.find(u"T1 M06"), text.find(u"(CUT)"));
  EXPECT_LT(text.find(u"(CUT)"), text.find(u"G00 X0"));
}

TEST_F(PlaceTest, FindsTheLineAgainWhenAnotherProgramCameUpMeanwhile) {
  headless::InDialog([] {
    SwitchTab(OpenTab(u"", u"(RECEIVED)", u"Received.NC"));
    headless::PressKey({platform::kKeyEnter});
  });
  ASSERT_TRUE(Insert());
  EXPECT_EQ(app.activeTab, 0);
  EXPECT_LT(Text().find(u"T1 M06"), Text().find(u"(CUT)"));
  EXPECT_LT(Text().find(u"(CUT)"), Text().find(u"G00 X0"));
}

// The CAD command through the picker.
TEST_F(DestinationTest, BringsASketchsCodeToItsPlace) {
  AppendSketchObject({kTypeLine, 0, 0, 0, 2, 0, 0});
  AcceptAt(u"1");
  GenerateSketchCode();
  EXPECT_EQ(Ids(), (std::vector<int>{4, 1, 2, 3}));
  EXPECT_TRUE(OutputHas(u"Custom Shape Editor geometry inserted into active program."));
  AppendSketchObject({kTypeLine, 0, 0, 0, 3, 0, 0});
  const std::u16string text = Text();
  const std::u16string output = Output();
  GenerateSketchCode();
  EXPECT_EQ(Text(), text);
  EXPECT_EQ(Output(), output);
}

// An update that goes into another program is a new feature there, and is not told as an update.
TEST_F(DestinationTest, TellsWhetherASketchsCodeIsNewOrUpdated) {
  AppendSketchObject({kTypeLine, 0, 0, 0, 2, 0, 0});
  AcceptAt(u"2");
  GenerateSketchCode();
  EXPECT_EQ(SketchStatus().substr(0, 28), u"Code added to Untitled-1.NC.");
  LinkTo(4);
  headless::InDialog([] { headless::Click(kIdDestinationInsert); });
  GenerateSketchCode();
  EXPECT_EQ(SketchStatus().substr(0, 30), u"Code updated in Untitled-1.NC.");
  EXPECT_EQ(Ids(), (std::vector<int>{1, 4, 2, 3}));
  LinkTo(4);
  AddProgram(u"B.NC", kThree);
  headless::InDialog([] { headless::SelectRows(kIdDestinationProgram, {1}); });
  AcceptAt(u"4");
  GenerateSketchCode();
  EXPECT_EQ(app.activeTab, 1);
  EXPECT_EQ(Ids(), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(SketchStatus().substr(0, 19), u"Code added to B.NC.");
}

}  // namespace
}  // namespace morva
