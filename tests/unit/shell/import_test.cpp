// Import of operations, over the whole application.

#include <algorithm>

#include "codetools/import_panel.h"
#include "codetools/import_text.h"
#include "codetools/words_view.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "support/workbench.h"

namespace morva {
namespace {

constexpr int kPrograms = kIdImportPrograms;
constexpr int kBrowse = kIdImportBrowse;
constexpr int kOperations = kIdImportOperations;
constexpr int kPreview = kIdImportPreview;
constexpr int kAll = kIdImportAll;
constexpr int kNone = kIdImportNone;
constexpr int kRun = kIdImportRun;
constexpr int kCancel = kIdImportCancel;

constexpr char16_t kDone[] = u"Selected operations imported with new operation IDs.";
constexpr char16_t kStopped[] =
    u"Import stopped: disabled-code companion data is missing. No code was inserted.";

std::u16string Number(int n) {
  const std::string digits = std::to_string(n);
  return std::u16string(digits.begin(), digits.end());
}

std::u16string Block(int id, const std::u16string& name, const std::u16string& code) {
  return u"(MORVA TEXT " + Number(id) + u")\r\n(MORVA NAME " + name + u")\r\n" + code +
         u"\r\n(MORVA END " + Number(id) + u")\r\n";
}

std::u16string Blocks(int count) {
  std::u16string text;
  for (int i = 1; i <= count; ++i) text += Block(i, u"B", u"M8");
  return text;
}

const std::u16string kTarget = Block(4, u"Own", u"G0 X1");

class Import : public support::Workbench {
 protected:
  // The source is the first tab, the target a second one that is active.
  void TwoPrograms(const std::u16string& source, const std::u16string& target) {
    headless::EditorSetAll(kIdEditor, source);
    headless::Advance(200);
    headless::Click(kIdTabNew);
    headless::EditorSetAll(kIdEditor, target);
    headless::Advance(200);
    headless::TakeMenus();
  }
  void Restart() {
    TearDown();
    SetUp();
  }
  static void OpenPanel() {
    headless::QueuePick(kIdImport);
    ASSERT_TRUE(headless::ContextMenu(kIdModeList, 0));
  }
  // The companion of other.NC: "G1 X7" under the number 1.
  void WriteCompanion() {
    DisabledCodeEntry* list = nullptr;
    ASSERT_EQ(AddDisabledCode(list, u"G1 X7\r\n"), 1);
    std::string bytes;
    ASSERT_TRUE(WriteDisabledCode(list, bytes));
    FreeDisabledCode(list);
    WriteFile("other.NC.features", bytes);
  }
  // The panel over the program kTarget, with other.NC chosen as the source.
  void BrowseOther() {
    headless::EditorSetAll(kIdEditor, kTarget);
    headless::Advance(200);
    OpenPanel();
    headless::QueueFile(Path("other.NC"));
    headless::Click(kBrowse);
  }
  static std::u16string Status() { return platform::TextOf(kIdStatusLine); }
  static std::u16string Row(int row) { return platform::RowText(kOperations, row); }
};

TEST_F(Import, OpensFromTheModeListWithEveryProgramButTheTarget) {
  TwoPrograms(Block(1, u"Face", u"G1 X1") + Block(2, u"Bore", u"G1 X2"), kTarget);
  OpenPanel();
  const auto menus = headless::TakeMenus();
  ASSERT_EQ(menus.size(), 1u);
  ASSERT_EQ(menus[0].items.size(), 1u);
  EXPECT_EQ(menus[0].items[0].text, u"Import operations into this project");
  EXPECT_EQ(platform::TextOf(kIdImportHead), u"Import operations into the current project");
  ASSERT_EQ(platform::RowCount(kPrograms), 1);
  EXPECT_EQ(platform::RowText(kPrograms, 0), u"Untitled-1.NC");
  ASSERT_EQ(platform::RowCount(kOperations), 2);
  EXPECT_EQ(Row(0), u"Face \u00B7 operation 1");
  EXPECT_EQ(Row(1), u"Bore \u00B7 operation 2");
  EXPECT_TRUE(platform::IsRowSelected(kOperations, 0));
  EXPECT_TRUE(platform::IsRowSelected(kOperations, 1));
  EXPECT_EQ(platform::EditorText(kPreview), tabs[0].text);
  EXPECT_FALSE(platform::IsEnabled(kIdEditor));
  EXPECT_FALSE(platform::IsVisible(kIdEditor));
  EXPECT_FALSE(platform::IsVisible(kViewToolpath));
}

// The target is one block of a whole program, the caret before its second line.
struct ImportBehindEnd : Import {
  const std::u16string head_ = u"(MORVA TEXT 4)\r\n(MORVA NAME Own)\r\nO1\r\n";
  const std::u16string tail_ = u"G0 X1\r\nM30\r\n(MORVA END ";
  void SetUp() override {
    Import::SetUp();
    TwoPrograms(Block(1, u"Face", u"G1 X7") + Block(2, u"Bore", u"G1 X8"),
                head_ + tail_ + u"4)\r\n");
    const int caret = MapTextOffset(Text(), static_cast<std::int32_t>(head_.size()));
    headless::EditorSelect(kIdEditor, caret, caret);
    OpenPanel();
    headless::TakeBoxes();
  }
};

TEST_F(ImportBehindEnd, AsksAndTakesNothingAtCancel) {
  headless::Click(kRun);
  ASSERT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_EQ(Text(), head_ + tail_ + u"4)\r\n");
  EXPECT_TRUE(IsImportOpen());
}

TEST_F(ImportBehindEnd, PartsTheUserCodeAtYesInOneStep) {
  tabs[1].hiddenIds[0] = 4;
  tabs[1].hiddenIds[1] = 5;  // of a block that is gone
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kRun);
  const std::u16string wanted = head_ + u"(MORVA END 4)\r\n" + Block(5, u"Face", u"G1 X7") +
                                Block(6, u"Bore", u"G1 X8") +
                                u"(MORVA TEXT 7)\r\n(MORVA NAME Own)\r\n" + tail_ + u"7)\r\n";
  EXPECT_EQ(Text(), wanted);
  EXPECT_EQ(Status(), kDone);
  EXPECT_TRUE(IdListHolds(tabs[1].hiddenIds, 7));
  EXPECT_FALSE(IdListHolds(tabs[1].hiddenIds, 5));
  platform::UndoEditor(kIdEditor);
  EXPECT_EQ(Text(), head_ + tail_ + u"4)\r\n");
}

TEST_F(ImportBehindEnd, GoesThereAtNo) {
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kRun);
  EXPECT_EQ(Status(), kDone);
  EXPECT_LT(Text().find(u"M30"), Text().find(u"(MORVA TEXT 5)"));
}

TEST_F(Import, TheOnlyProgramIsNoSourceOfItsOwn) {
  headless::Advance(200);
  const std::u16string before = Text();
  OpenPanel();
  EXPECT_EQ(platform::RowCount(kPrograms), 0);
  EXPECT_EQ(platform::EditorText(kPreview),
            u"(Browse a program file, then select the operations to import.)");
  EXPECT_FALSE(headless::EditorInsert(kPreview, u"x"));
  headless::Click(kRun);
  EXPECT_EQ(Text(), before);
  EXPECT_TRUE(IsImportOpen());
}

TEST_F(Import, CopiesTheChosenOperationsBehindTheSelectedFeature) {
  TwoPrograms(Block(1, u"Face", u"G1 X1") + Block(2, u"Bore", u"G1 X2") + Block(3, u"Tap", u"G84"),
              kTarget + Block(2, u"Last", u"M9"));
  headless::SelectRows(kIdFeatureList, {0});
  OpenPanel();
  headless::Click(kNone);
  EXPECT_FALSE(platform::IsRowSelected(kOperations, 1));
  headless::SelectRows(kOperations, {0, 2});
  const std::u16string before = Text();
  headless::Click(kRun);
  // The largest id of the target is 4, whatever the ids in the source were.
  const std::u16string wanted =
      kTarget + Block(5, u"Face", u"G1 X1") + Block(6, u"Tap", u"G84") + Block(2, u"Last", u"M9");
  EXPECT_EQ(Text(), wanted);
  EXPECT_EQ(Status(), kDone);
  EXPECT_FALSE(IsImportOpen());
  EXPECT_TRUE(platform::IsEnabled(kIdEditor));
  EXPECT_TRUE(platform::IsVisible(kIdEditor));
  EXPECT_EQ(platform::RowCount(kIdFeatureList), 4);
  EXPECT_TRUE(tabs[1].dirty);
  headless::EditorUndo(kIdEditor);
  EXPECT_EQ(Text(), before);
}

TEST_F(Import, GoesBehindTheCaretsFeatureAndElseToTheCaret) {
  const std::u16string target = kTarget + u"\r\n" + Block(2, u"Last", u"M9");
  TwoPrograms(Block(9, u"Face", u"G1 X1"), target);
  // The caret in the last block, none selected in the list.
  const int end = platform::EditorLength(kIdEditor);
  headless::EditorSelect(kIdEditor, end - 10, end - 10);
  platform::SelectRow(kIdFeatureList, -1);
  OpenPanel();
  headless::Click(kRun);
  EXPECT_EQ(Text(), target + Block(5, u"Face", u"G1 X1"));
  headless::EditorUndo(kIdEditor);
  // On the empty line between the two blocks: 15 + 17 + 6 + 14 positions lie before it.
  headless::EditorSelect(kIdEditor, 52, 52);
  platform::SelectRow(kIdFeatureList, -1);
  OpenPanel();
  headless::Click(kRun);
  EXPECT_EQ(Text(), kTarget + Block(5, u"Face", u"G1 X1") + Block(2, u"Last", u"M9"));
}

TEST_F(Import, TellsNoSuccessWhereTheProgramHasNoRoom) {
  // 100 bytes below the most that can be opened, as one comment a line.
  std::u16string full;
  while (full.size() + 100 <= 33554432 - 100) full += u"(" + std::u16string(96, u'X') + u")\r\n";
  TwoPrograms(Block(1, u"Face", u"(" + std::u16string(200, u'Y') + u")"), full);
  OpenPanel();
  headless::TakeBoxes();
  const std::size_t before = platform::EditorText(kIdEditor).size();
  headless::Click(kRun);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_EQ(platform::EditorText(kIdEditor).size(), before);
  EXPECT_NE(Status(), kDone);
  EXPECT_TRUE(IsImportOpen());
}

TEST_F(Import, StopsAtOneHundredAndTwentyEight) {
  TwoPrograms(Blocks(10), Blocks(120));
  OpenPanel();
  headless::SelectRows(kOperations, {0, 1, 2, 3, 4, 5, 6, 7, 8});
  const std::u16string before = Text();
  headless::Click(kRun);
  EXPECT_EQ(Status(), u"Import exceeds 128 features; select fewer operations.");
  EXPECT_EQ(Text(), before);
  EXPECT_TRUE(IsImportOpen());
  headless::SelectRows(kOperations, {0, 1, 2, 3, 4, 5, 6, 7});
  headless::Click(kRun);
  EXPECT_EQ(Status(), kDone);
  EXPECT_EQ(platform::RowCount(kIdFeatureList), 128);
}

TEST_F(Import, BringsTheStoredCodeOfExcludedOperations) {
  TwoPrograms(Block(1, u"Face", u"G1 X1"), kTarget);
  headless::Click(kIdTabFirst);
  headless::Advance(200);
  headless::SelectRows(kIdFeatureList, {0});
  headless::Click(kIdFeatureInclude);
  headless::Click(kIdTabFirst + 1);
  headless::Advance(200);
  headless::SelectRows(kIdFeatureList, {0});
  // The target has an entry of its own, so that the number must change.
  AddDisabledCode(tabs[1].disabledCode, u"M0\r\n");
  OpenPanel();
  headless::Click(kRun);
  EXPECT_EQ(Text(), kTarget +
                        u"(MORVA TEXT 5)\r\n(MORVA NAME Face)\r\n(MORVA DISABLED 2)\r\n"
                        u"(MORVA END 5)\r\n");
  headless::SelectRows(kIdFeatureList, {1});
  headless::Click(kIdFeatureInclude);
  EXPECT_EQ(Text(), kTarget + Block(5, u"Face", u"G1 X1"));
}

TEST_F(Import, SaysWhyABrowsedFileCannotBeOpened) {
  OpenPanel();
  std::filesystem::create_directory(home_ / "folder");
  headless::QueueFile(Path("folder"));
  headless::Click(kBrowse);
  EXPECT_EQ(Status(), u"Could not open the selected file.");
  EXPECT_NE(platform::TextOf(kIdOutputLog)
                .find(u"Nothing to import: " + Path("folder") + u"  (it cannot be read)\r\n"),
            std::u16string::npos);
}

TEST_F(Import, ABrowsedFileWithoutItsStoredCodeChangesNothing) {
  WriteFile("other.NC",
            "(MORVA TEXT 1)\r\nG1 X1\r\n(MORVA END 1)\r\n(MORVA TEXT 2)\r\n(MORVA DISABLED 3)\r\n"
            "(MORVA END 2)\r\n");
  headless::EditorSetAll(kIdEditor, kTarget);
  headless::Advance(200);
  OpenPanel();
  headless::TakeFilePicks();
  headless::QueueFile(Path("other.NC"));
  headless::Click(kBrowse);
  const auto picks = headless::TakeFilePicks();
  ASSERT_EQ(picks.size(), 1u);
  ASSERT_EQ(picks[0].filters.size(), 2u);
  EXPECT_EQ(picks[0].filters[0].first, u"NC programs");
  EXPECT_EQ(picks[0].filters[0].second, u"*.NC;*.TAP;*.GCODE");
  EXPECT_EQ(picks[0].filters[1].first, u"All files");
  EXPECT_EQ(Row(0), u"User code \u00B7 operation 1");
  headless::Click(kRun);
  EXPECT_EQ(Status(), kStopped);
  EXPECT_EQ(Text(), kTarget);
  EXPECT_TRUE(IsImportOpen());
  headless::Click(kCancel);
  EXPECT_FALSE(IsImportOpen());
  EXPECT_TRUE(platform::IsEnabled(kIdEditor));
}

TEST_F(Import, ABrowsedFileBringsItsCompanion) {
  WriteFile("other.NC", "(MORVA TEXT 2)\r\n(MORVA DISABLED 1)\r\n(MORVA END 2)\r\n");
  WriteCompanion();
  BrowseOther();
  headless::Click(kRun);
  EXPECT_EQ(Text(), kTarget + u"(MORVA TEXT 5)\r\n(MORVA DISABLED 1)\r\n(MORVA END 5)\r\n");
  ASSERT_NE(tabs[0].disabledCode, nullptr);
  EXPECT_EQ(tabs[0].disabledCode->text, u"G1 X7\r\n");
}

TEST_F(Import, ANumberOfStoredCodeIsReplacedWhereverItsMarkerStands) {
  WriteFile("other.NC",
            "(MORVA TEXT 2)\r\nM8 (MORVA DISABLED 1)\r\n(MORVA END 2)\r\n"
            "(MORVA TEXT 3)\r\n  (morva disabled 1)\r\n(MORVA END 3)\r\n");
  WriteCompanion();
  BrowseOther();
  headless::SelectRows(kOperations, {0});
  headless::Click(kRun);
  // Both blocks name the number, so that nobody knows whose code it is.
  EXPECT_EQ(Status(),
            u"Import stopped: several blocks name one excluded code. No code was inserted.");
  headless::Click(kCancel);
  WriteFile("other.NC", "(MORVA TEXT 2)\r\nM8 (MORVA DISABLED 1)\r\n(MORVA END 2)\r\n");
  AddDisabledCode(tabs[0].disabledCode, u"G1 own");
  BrowseOther();
  headless::Click(kRun);
  EXPECT_EQ(Text(), kTarget + u"(MORVA TEXT 5)\r\nM8 (MORVA DISABLED 2)\r\n(MORVA END 5)\r\n");
}

TEST_F(Import, NonAsciiCommentsOfAFileComeThroughWhole) {
  // No markers and bare line feeds: taken as the tagger would leave the program.
  WriteFile("other.NC",
            "(Fl\xC3\xA4"
            "che \xE2\x8C\x80"
            "8)\nG1 X1\n");
  BrowseOther();
  EXPECT_EQ(platform::RowCount(kOperations), 1);
  headless::Click(kRun);
  EXPECT_EQ(Text(), kTarget + Block(5, u"User code", u"(Fl\u00E4che \u23008)\r\nG1 X1"));
}

TEST_F(Import, AMarkerOfExcludedCodeWithoutANumberStandsForNoneAndIsCopied) {
  WriteFile("other.NC", "(MORVA TEXT 2)\r\n(MORVA DISABLED )\r\n(MORVA END 2)\r\n");
  WriteCompanion();
  BrowseOther();
  headless::Click(kRun);
  EXPECT_EQ(Status(), kDone);
  EXPECT_EQ(Text(), kTarget + u"(MORVA TEXT 5)\r\n(MORVA DISABLED )\r\n(MORVA END 5)\r\n");
  EXPECT_EQ(tabs[0].disabledCode, nullptr);
}

TEST_F(Import, NulsOfABrowsedFileAreFillingAndNothingBehindThemIsLost) {
  using namespace std::string_literals;
  WriteFile("other.NC", "\0\0G1 X1\r\n\0(MORVA TEXT 9)\r\nG1 X3\r\n(MORVA END 9)\r\n"s);
  BrowseOther();
  EXPECT_EQ(platform::RowCount(kOperations), 2);
  headless::Click(kRun);
  EXPECT_EQ(Text(), kTarget + Block(5, u"User code", u"G1 X1") +
                        u"(MORVA TEXT 6)\r\nG1 X3\r\n(MORVA END 6)\r\n");
}

TEST_F(Import, DoesNothingOnceAnotherProgramIsActive) {
  TwoPrograms(Block(1, u"Face", u"G1 X1"), kTarget);
  OpenPanel();
  headless::Click(kIdTabFirst);
  const std::u16string before = Text();
  headless::Click(kRun);
  EXPECT_EQ(Text(), before);
  EXPECT_NE(Status(), kDone);
}

TEST_F(Import, AMissingSourceTabCountsAsMissingStoredCode) {
  TwoPrograms(Block(1, u"Face", u"(MORVA DISABLED 1)"), kTarget);
  OpenPanel();
  headless::Click(kRun);
  EXPECT_EQ(Status(), kStopped);
  EXPECT_EQ(Text(), kTarget);
}

// The words of the question, of millimeters into inches or the other way.
std::u16string UnitsQuestion(bool metricTarget) {
  const std::u16string inches = u"inches (G20)";
  const std::u16string metric = u"millimeters (G21)";
  return u"An operation to import is in " + (metricTarget ? inches : metric) +
         u", but the program is in " + (metricTarget ? metric : inches) +
         u" where it goes in. Nothing is converted, and a units code in an operation also holds "
         u"for the code behind it. Import anyway?";
}

TEST_F(Import, AsksBeforeItTakesOperationsInOtherUnits) {
  for (const bool metricTarget : {false, true}) {
    const std::u16string source = metricTarget ? u"G20" : u"G21";
    const std::u16string own = metricTarget ? u"G21" : u"G20";
    // The second operation has no units code of its own and is in those of the first.
    TwoPrograms(Block(1, u"Head", source) + Block(2, u"Face", u"G1 X1"),
                Block(4, u"Own", own + u" G0 X1"));
    const std::u16string before = Text();
    for (const bool yes : {false, true}) {
      platform::SelectRow(kIdFeatureList, -1);
      OpenPanel();
      headless::Click(kNone);
      headless::SelectRows(kOperations, {1});
      headless::TakeBoxes();
      headless::QueueAnswer(yes ? platform::BoxAnswer::Yes : platform::BoxAnswer::No);
      headless::Click(kRun);
      const auto boxes = headless::TakeBoxes();
      ASSERT_EQ(boxes.size(), 1u);
      EXPECT_EQ(boxes[0].title, u"Import operations");
      EXPECT_EQ(boxes[0].text, UnitsQuestion(metricTarget));
      EXPECT_EQ(Text(), before + (yes ? Block(5, u"Face", u"G1 X1") : u""));
      EXPECT_NE(IsImportOpen(), yes);
    }
    Restart();
  }
}

TEST_F(Import, AsksOfTheUnitsOfExcludedCodeToo) {
  TwoPrograms(Block(1, u"Face", u"G21 G1 X1"), Block(4, u"Own", u"G20 G0 X1"));
  headless::Click(kIdTabFirst);
  headless::Advance(200);
  headless::SelectRows(kIdFeatureList, {0});
  headless::Click(kIdFeatureInclude);
  ASSERT_EQ(Text(), Block(1, u"Face", u"(MORVA DISABLED 1)"));
  headless::Click(kIdTabFirst + 1);
  headless::Advance(200);
  const std::u16string before = Text();
  headless::TakeBoxes();
  OpenPanel();
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kRun);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(tabs[1].disabledCode, nullptr);
}

TEST_F(Import, AsksNothingWhereUnitsAgreeOrAreNotNamed) {
  const std::u16string inch = Block(1, u"Face", u"G20 X1");
  // An operation that goes back to the program's units; one with the code in a comment.
  for (const std::u16string& source :
       {inch, Block(1, u"Face", u"G1 X1"), Block(1, u"Face", u"G21 X1\r\nG20"),
        Block(1, u"Face", u"(G21) X1")}) {
    TwoPrograms(source, Block(4, u"Own", u"G20"));
    headless::TakeBoxes();
    OpenPanel();
    headless::Click(kRun);
    EXPECT_TRUE(headless::TakeBoxes().empty());
    EXPECT_EQ(Status(), kDone);
    Restart();
  }
  TwoPrograms(inch, kTarget);
  OpenPanel();
  headless::Click(kRun);
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

// The units in force at the place count, not those that the program ends on.
TEST_F(Import, TakesTheTargetsUnitsAtThePlace) {
  TwoPrograms(Block(1, u"Face", u"G21 X1"),
              Block(4, u"Inch", u"G20 X1") + Block(5, u"Metric", u"G21 X1"));
  headless::SelectRows(kIdFeatureList, {0});
  OpenPanel();
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kRun);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  headless::Click(kCancel);
  headless::SelectRows(kIdFeatureList, {1});
  OpenPanel();
  headless::Click(kRun);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_EQ(Status(), kDone);
}

// The caret that the user code was to be split at has left it while the second question stood open.
TEST_F(Import, TellsThatNothingWentInWhereTheSplitIsGone) {
  const std::u16string inch = Block(4, u"Own", u"G20\r\nG0 X1\r\nM30");
  TwoPrograms(Block(1, u"Face", u"G21 X7"), inch);
  const auto behind = static_cast<std::int32_t>(inch.find(u"G0 X1"));
  const int caret = MapTextOffset(Text(), behind);
  headless::EditorSelect(kIdEditor, caret, caret);
  OpenPanel();
  headless::TakeBoxes();
  headless::WhileOpen([] {
    headless::WhileOpen([] {
      const int end = platform::EditorLength(kIdEditor);
      platform::SetEditorSelection(kIdEditor, {end, end});
    });
  });
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kRun);
  EXPECT_EQ(headless::TakeBoxes().size(), 2u);
  EXPECT_EQ(Status(), u"Not inserted: the caret stands in no user code any more. Press again.");
  EXPECT_EQ(Text(), inch);
  EXPECT_TRUE(IsImportOpen());
}

// A receive may end while the question stands open and bring another program up.
TEST_F(Import, GoesIntoNoProgramThatCameUpBehindTheQuestion) {
  TwoPrograms(Block(1, u"Face", u"G21 X1"), Block(4, u"Own", u"G20"));
  OpenPanel();
  headless::WhileOpen([] { OpenTab(u"", u"G20\r\n", u"Third.NC"), SwitchTab(2); });
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kRun);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_EQ(Text().find(u"Face"), std::u16string::npos);
  EXPECT_EQ(tabs[1].text.find(u"Face"), std::u16string::npos);
}

TEST_F(Import, KeepsTheCommandWordsViewOn) {
  TwoPrograms(Block(1, u"Face", u"M08"), kTarget);
  headless::Click(kIdCommandWords);
  headless::SelectRows(kIdFeatureList, {0});
  OpenPanel();
  EXPECT_FALSE(platform::IsVisible(kIdWordsEditor));
  EXPECT_EQ(platform::EditorText(kPreview).find(u"M08"), std::u16string_view::npos);
  headless::Click(kRun);
  EXPECT_TRUE(app.commandWordsActive);
  EXPECT_TRUE(platform::IsVisible(kIdWordsEditor));
  EXPECT_NE(platform::EditorText(kIdWordsEditor).find(u"(MORVA TEXT 5)"),
            std::u16string_view::npos);
  EXPECT_EQ(Text(), kTarget + Block(5, u"Face", u"M08"));
}

// 20,000 lines of 5 units give more than 250,000 units of words.
TEST_F(Import, ThePreviewInWordsBearsColoursWhereTheCodeDoes) {
  std::u16string code;
  for (int i = 0; i < 20000; ++i) code += u"G90\r\n";
  TwoPrograms(Block(1, u"Face", code), kTarget);
  headless::Click(kIdCommandWords);
  OpenPanel();
  ASSERT_GT(platform::EditorText(kPreview).size(), 250000u);
  platform::ColourRun runs[4];
  // The third line is the first of the code; a line without a word for its move is all plain.
  ASSERT_EQ(platform::LineRuns(kPreview, 2, runs, 4), 1);
  EXPECT_EQ(runs[0].colour, 0xDEC585u);
}

TEST_F(Import, AnotherOpenProgramCanBeChosen) {
  TwoPrograms(Block(1, u"Face", u"G1 X1"), Block(1, u"Bore", u"G1 X2"));
  headless::Click(kIdTabNew);
  headless::EditorSetAll(kIdEditor, kTarget);
  headless::Advance(200);
  OpenPanel();
  EXPECT_EQ(Row(0), u"Face \u00B7 operation 1");
  headless::SelectRows(kPrograms, {1});
  EXPECT_EQ(Row(0), u"Bore \u00B7 operation 1");
  headless::Click(kNone);
  headless::Click(kAll);
  headless::Click(kRun);
  EXPECT_NE(Text().find(Block(5, u"Bore", u"G1 X2")), std::u16string::npos);
}

TEST_F(Import, NothingChosenDoesNothing) {
  TwoPrograms(Block(1, u"Face", u"G1 X1"), kTarget);
  OpenPanel();
  headless::Click(kNone);
  headless::Click(kRun);
  EXPECT_EQ(Text(), kTarget);
  EXPECT_TRUE(IsImportOpen());
}

TEST_F(Import, EscapeInTheListCancels) {
  TwoPrograms(Block(1, u"Face", u"G1 X1"), kTarget);
  OpenPanel();
  EXPECT_EQ(platform::FocusedId(), kOperations);
  platform::KeyEvent key;
  key.key = platform::kKeyEscape;
  headless::PressKey(key);
  EXPECT_FALSE(IsImportOpen());
  EXPECT_EQ(Text(), kTarget);
}

TEST_F(Import, LeavesTheReviewThatStandsInItsPlace) {
  TwoPrograms(Block(1, u"Face", u"G1 X1"), kTarget);
  headless::Click(kIdCompareSecond);
  ASSERT_TRUE(app.compareActive);
  OpenPanel();
  EXPECT_FALSE(app.compareActive);
  EXPECT_TRUE(platform::IsVisible(kOperations));
  EXPECT_EQ(platform::FocusedId(), kOperations);
}

TEST_F(Import, EscapeCancelsWhereverTheKeyboardIs) {
  TwoPrograms(Block(1, u"Face", u"G1 X1"), kTarget);
  for (int id = kPrograms; id <= kCancel; ++id) {
    OpenPanel();
    ASSERT_TRUE(headless::Focus(id)) << id;
    platform::KeyEvent key;
    key.key = platform::kKeyEscape;
    headless::PressKey(key);
    EXPECT_FALSE(IsImportOpen()) << id;
  }
}

// Two blocks on one line: the import goes between them, never into the second.
TEST_F(Import, BreaksALineOnWhichTheNextBlockBegins) {
  const std::u16string next = Block(2, u"Last", u"M9");
  TwoPrograms(Block(1, u"Face", u"G1 X1"), kTarget.substr(0, kTarget.size() - 2) + next);
  headless::SelectRows(kIdFeatureList, {0});
  OpenPanel();
  headless::Click(kRun);
  EXPECT_EQ(Text(), kTarget + Block(5, u"Face", u"G1 X1") + next);
  EXPECT_EQ(platform::RowCount(kIdFeatureList), 3);
}

TEST_F(Import, GoesToTheCaretOfTheCommandWordsView) {
  const std::u16string target = kTarget + Block(2, u"Last", u"M9");
  TwoPrograms(Block(1, u"Face", u"G1 X1"), target);
  headless::EditorSelect(kIdEditor, platform::EditorLength(kIdEditor), 0);
  headless::Click(kIdCommandWords);
  platform::SelectRow(kIdFeatureList, -1);
  headless::EditorSelect(kIdWordsEditor, 3, 3);
  OpenPanel();
  headless::Click(kRun);
  EXPECT_EQ(Text(), kTarget + Block(5, u"Face", u"G1 X1") + Block(2, u"Last", u"M9"));
}

// Refused: not even what the words view would write otherwise changes.
TEST_F(Import, ARefusalUnderTheCommandWordsViewChangesNothing) {
  TwoPrograms(Block(1, u"Face", u"(MORVA DISABLED 1)"), kTarget);
  headless::Click(kIdCommandWords);
  OpenPanel();
  headless::Click(kRun);
  EXPECT_EQ(Status(), kStopped);
  EXPECT_EQ(Text(), kTarget);
}

// Behind 2,147,483,647 there is no number; the scan's own free ones follow the largest that
// counts, which is at most 1,999,999,999.
TEST_F(Import, FindsNumbersWhereTheTargetHasTheLargestOfAll) {
  const std::u16string target = Block(2147483646, u"Own", u"G0 X1");
  TwoPrograms(Block(1, u"Face", u"G1 X1") + Block(2, u"Bore", u"G1 X2"), target);
  headless::SelectRows(kIdFeatureList, {0});
  OpenPanel();
  headless::Click(kRun);
  EXPECT_EQ(Status(), kDone);
  EXPECT_EQ(Text(), target + Block(1, u"Face", u"G1 X1") + Block(2, u"Bore", u"G1 X2"));
}

TEST_F(Import, IsUndoneInOneStepAndSavedByItself) {
  WriteFile("part.NC", "(MORVA TEXT 4)\r\nM8\r\n(MORVA END 4)\r\n");
  Open("part.NC");
  headless::Advance(900);
  const std::u16string before = Text();
  OpenPanel();
  headless::Click(kRun);
  EXPECT_EQ(platform::RowCount(kIdFeatureList), 2);
  headless::Advance(900);
  EXPECT_NE(ReadFile("part.NC").find("(MORVA TEXT 5)"), std::string::npos);
  EXPECT_FALSE(app.editorDirty);
  headless::EditorUndo(kIdEditor);
  EXPECT_EQ(Text(), before);
}

std::int32_t NoCopy(void*, std::int32_t, const FeatureRecord&, std::int32_t) { return 0; }

std::u16string BuiltFrom(std::u16string_view text, std::int32_t firstId) {
  static ImportSource source;
  LoadImportSource(text, source);
  bool chosen[kMaxFeatures];
  std::fill(chosen, chosen + kMaxFeatures, true);
  std::u16string built;
  EXPECT_EQ(BuildImportText(source, chosen, firstId, NoCopy, nullptr, built), ImportBuild::Done);
  return built;
}

TEST(ImportText, AGeneratedBlockKeepsItsSettingsAndUserCodeTakesTheTextForm) {
  FeatureSettings settings;
  settings.version = 3;
  settings.kind = kKindShape;
  const std::u16string shape = SettingsBlockText(7, u"Slot", settings, u"G1 X1\r\n");
  EXPECT_EQ(BuiltFrom(shape, 3), SettingsBlockText(3, u"Slot", settings, u"G1 X1\r\n") + u"\r\n");
  settings.kind = kKindUserCode;
  const std::u16string user = SettingsBlockText(7, u"U", settings, u"G1 X1\r\n");
  const std::u16string copy = BuiltFrom(user, 3);
  EXPECT_EQ(copy.substr(0, 14), u"(MORVA TEXT 3)");
  EXPECT_EQ(copy.substr(14, 30), user.substr(15, 30));
}

TEST(ImportText, WhatStandsBehindTheIdStays) {
  EXPECT_EQ(BuiltFrom(u"(MORVA TEXT   12 ) rough\r\nM8\r\n(morva end 12)", 2),
            u"(MORVA TEXT 2 ) rough\r\nM8\r\n(MORVA END 2)\r\n");
}

TEST(ImportText, PassesOverAnIdThatWouldCloseTheBlockEarly) {
  const std::u16string inside = u"(MORVA TEXT 9)\r\n(MORVA END 3)\r\nM8\r\n(MORVA END 9)";
  EXPECT_EQ(BuiltFrom(inside, 3), u"(MORVA TEXT 4)\r\n(MORVA END 3)\r\nM8\r\n(MORVA END 4)\r\n");
}

TEST(ImportText, PassesOverSuccessiveIdsThatWouldCloseTheBlockEarly) {
  const std::u16string strays =
      u"(MORVA END 5)\r\nM8\r\n(morva end 3)\r\n(MORVA END 4)\r\n(MORVA END 07)\r\n";
  EXPECT_EQ(BuiltFrom(u"(MORVA TEXT 9)\r\n" + strays + u"(MORVA END 9)", 3),
            u"(MORVA TEXT 6)\r\n" + strays + u"(MORVA END 6)\r\n");
  // The ids of the blocks behind it count on.
  EXPECT_EQ(BuiltFrom(u"(MORVA TEXT 1)\r\nM9\r\n(MORVA END 1)\r\n(MORVA TEXT 9)\r\n" + strays +
                          u"(MORVA END 9)\r\n(MORVA TEXT 2)\r\nM0\r\n(MORVA END 2)",
                      4),
            u"(MORVA TEXT 4)\r\nM9\r\n(MORVA END 4)\r\n(MORVA TEXT 6)\r\n" + strays +
                u"(MORVA END 6)\r\n(MORVA TEXT 7)\r\nM0\r\n(MORVA END 7)\r\n");
}

// The target knows the blocks again and its tagger finds nothing to wrap.
TEST_F(Import, BlocksWithStrayEndsOfSuccessiveIdsCloseWhereTheyShould) {
  const std::u16string strays = u"(MORVA END 5)\r\nM8\r\n(MORVA END 6)\r\nM9\r\n(MORVA END 7)";
  TwoPrograms(Block(1, u"Face", strays) + Block(2, u"Bore", u"G1 X1"), kTarget);
  OpenPanel();
  headless::Click(kRun);
  const std::u16string wanted = kTarget + Block(8, u"Face", strays) + Block(9, u"Bore", u"G1 X1");
  EXPECT_EQ(Text(), wanted);
  headless::Advance(1000);
  EXPECT_EQ(Text(), wanted);
  EXPECT_EQ(platform::RowCount(kIdFeatureList), 3);
}

constexpr char16_t kClosed[] = u"Import closed: another program comes up. No code was inserted.";

TEST_F(Import, ClosesWithWordsWhenAnotherProgramComesUp) {
  for (const int key : {kIdTabFirst, kIdNew, kIdOpen, kIdClose}) {
    Restart();
    WriteFile("O1.NC", "G0 X1\r\n");
    TwoPrograms(kTarget, kTarget);
    OpenImportPanel();
    ASSERT_TRUE(IsImportOpen());
    headless::QueueFile(Path("O1.NC"));
    headless::QueueAnswer(platform::BoxAnswer::No);
    headless::Click(key);
    EXPECT_FALSE(IsImportOpen()) << key;
    EXPECT_FALSE(platform::IsVisible(kOperations)) << key;
    EXPECT_EQ(platform::TextOf(kIdStatusLine), kClosed) << key;
    EXPECT_TRUE(OutputHas(kClosed)) << key;
    EXPECT_EQ(platform::FocusedId(), kIdEditor) << key;
  }
}

TEST_F(Import, StaysWhereNoOtherProgramComesUp) {
  TwoPrograms(kTarget, kTarget);
  OpenImportPanel();
  SwitchTab(app.activeTab);
  EXPECT_TRUE(IsImportOpen());
}

}  // namespace
}  // namespace morva
