// The code index in the left panel, over the whole application.

#include "codetools/index_panel.h"

#include "app/router.h"
#include "documents/program_tabs.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/layout.h"
#include "support/workbench.h"

namespace morva {
namespace {

constexpr int kDetail = kIdIndexDetail;
constexpr int kInsertion = kIdIndexInsertion;
constexpr int kInsert = kIdIndexInsert;
constexpr int kClear = kIdIndexClear;

class IndexPanel : public support::Workbench {
 protected:
  void SetUp() override {
    support::Workbench::SetUp();
    headless::EditorSetAll(kIdEditor, u"(MORVA TEXT 1)\r\n\r\n(MORVA END 1)\r\n");
    headless::Advance(1000);
    const int line = platform::EditorLineStart(kIdEditor, 1);
    headless::EditorSelect(kIdEditor, line, line);
    ASSERT_TRUE(headless::Click(kIdShowIndex));
  }
  static int Rows() { return platform::RowCount(kIdIndexList); }
  static std::u16string Row(int row) { return platform::RowText(kIdIndexList, row); }
  static void Search(std::u16string_view text) {
    ASSERT_TRUE(headless::TypeInto(kIdIndexSearch, text));
  }
  static void Enter() {
    platform::KeyEvent key;
    key.key = platform::kKeyEnter;
    headless::PressKey(key);
  }
  static bool TextHas(std::u16string_view words) {
    return Text().find(words) != std::u16string::npos;
  }
};

TEST_F(IndexPanel, TakesTheFeaturesPlaceInModeThree) {
  EXPECT_EQ(app.mode, kModeCodeIndex);
  EXPECT_FALSE(app.sidebarShowsFeatures);
  EXPECT_EQ(platform::TextOf(kIdPanelHead), u"PROGRAM");
  EXPECT_TRUE(platform::IsVisible(kIdIndexList));
  EXPECT_FALSE(platform::IsVisible(kIdFeatureList));
  EXPECT_FALSE(platform::IsVisible(kIdFeatureEdit));
  EXPECT_TRUE(platform::IsVisible(kIdEditor));
  EXPECT_EQ(platform::FocusedId(), kIdIndexSearch);
  headless::Click(kIdShowFeatures);
  EXPECT_EQ(app.mode, kModeHome);
  EXPECT_TRUE(app.sidebarShowsFeatures);
  EXPECT_FALSE(platform::IsVisible(kIdIndexList));
  EXPECT_TRUE(platform::IsVisible(kIdFeatureList));
}

TEST_F(IndexPanel, TheSecondRouteAndTheModeListOpenItToo) {
  headless::Click(kIdShowFeatures);
  RouteCommand(kIdOldModeFirst, platform::kNotifyClick);
  EXPECT_TRUE(platform::IsVisible(kIdIndexList));
  headless::Click(kIdShowFeatures);
  headless::SelectRows(kIdModeList, {7});
  EXPECT_TRUE(platform::IsVisible(kIdIndexList));
}

TEST_F(IndexPanel, ListsAllWordsAndSelectsTheFirst) {
  EXPECT_EQ(Rows(), 196 + 15);
  EXPECT_EQ(Row(0), u"G00    Rapid Motion Positioning");
  EXPECT_EQ(platform::SelectedRow(kIdIndexList), 0);
  EXPECT_EQ(platform::TextOf(kInsertion), u"G00");
  EXPECT_EQ(platform::TextOf(kDetail).substr(0, 28), u"Rapid Motion Positioning\r\n\r\n");
}

TEST_F(IndexPanel, SearchFindsNamesAndCodes) {
  Search(u"tool change");
  ASSERT_EQ(Rows(), 2);
  EXPECT_EQ(Row(0), u"M06    Tool Change");
  EXPECT_EQ(Row(1), u"M16    Tool Change");
  headless::Click(kClear);
  EXPECT_EQ(Rows(), 211);
  EXPECT_EQ(platform::TextOf(kIdIndexSearch), u"");
}

TEST_F(IndexPanel, LeavesNothingToInsertWhereASearchFindsNothing) {
  const std::u16string before = Text();
  Search(u"drill");
  EXPECT_EQ(platform::TextOf(kInsertion), u"G73");
  Search(u"zzz");
  ASSERT_EQ(Rows(), 0);
  EXPECT_EQ(platform::TextOf(kInsertion), u"");
  EXPECT_EQ(platform::TextOf(kDetail), u"No code or description holds these characters.");
  headless::Click(kInsert);
  EXPECT_EQ(Text(), before);
  headless::Click(kClear);
  EXPECT_EQ(platform::TextOf(kInsertion), u"G00");
}

TEST_F(IndexPanel, KeepsTheProgramInformationBesideItTrue) {
  EXPECT_NE(platform::TextOf(kIdInfoPanel).find(u"\r\nLines: 4\r\n"), std::u16string::npos);
  const int line = platform::EditorLineStart(kIdEditor, 1);
  platform::ReplaceRange(kIdEditor, {line, line}, u"G04\r\nG09\r\n");
  headless::Advance(1000);
  EXPECT_NE(platform::TextOf(kIdInfoPanel).find(u"\r\nLines: 6\r\n"), std::u16string::npos);
}

TEST_F(IndexPanel, SearchesTheMTabInNamesToo) {
  headless::Click(kIdIndexM);
  EXPECT_EQ(Rows(), 87);
  Search(u"g0");
  EXPECT_EQ(Rows(), 0);
  Search(u"g35");
  ASSERT_EQ(Rows(), 1);
  EXPECT_EQ(Row(0), u"M75    Set G35/G136 Reference Point");
}

TEST_F(IndexPanel, TextPutsTheDescriptionFirstAndKeepsItsCaption) {
  headless::Click(kIdIndexG);
  headless::Click(kIdIndexText);
  EXPECT_EQ(Row(4), u"Dwell  (G04)");
  EXPECT_EQ(platform::TextOf(kIdIndexText), u"TEXT");
  EXPECT_TRUE(IsIndexKeyOn(kIdIndexText));
  EXPECT_TRUE(IsIndexKeyOn(kIdIndexG));
  EXPECT_FALSE(IsIndexKeyOn(kIdIndexAll));
}

TEST_F(IndexPanel, TheNTabListsTens) {
  headless::Click(kIdIndexN);
  EXPECT_EQ(Rows(), 99);
  Search(u"99");
  ASSERT_EQ(Rows(), 1);
  EXPECT_EQ(Row(0), u"N990    Sequence / block number");
  EXPECT_EQ(platform::TextOf(kInsertion), u"N990");
  headless::DoubleClickRow(kIdIndexList, 0);
  EXPECT_TRUE(TextHas(u"\r\nN990 \r\n"));
}

TEST_F(IndexPanel, TheMacroTabNamesG65ByTheMacroTable) {
  headless::Click(kIdIndexMacro);
  EXPECT_EQ(Rows(), 15);
  Search(u"g65");
  ASSERT_EQ(Rows(), 1);
  EXPECT_EQ(Row(0), u"G65    Macro subprogram call with arguments (option / control dependent)");
}

TEST_F(IndexPanel, TheKeysStandInTheirOrderOnScreen) {
  const int order[] = {kIdIndexAll, kIdIndexG, kIdIndexM, kIdIndexN, kIdIndexMacro};
  for (int i = 0; i + 1 < 5; ++i) {
    EXPECT_LT(platform::PlaceOf(order[i]).left, platform::PlaceOf(order[i + 1]).left);
  }
}

TEST_F(IndexPanel, ADoubleClickInsertsTheCodeAndOneBlank) {
  tabs[0].dirty = false;
  app.editorDirty = false;
  headless::DoubleClickRow(kIdIndexList, 1);
  EXPECT_TRUE(TextHas(u"\r\nG01 \r\n"));
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
  EXPECT_TRUE(tabs[0].dirty);
  headless::DrainPosts();
  EXPECT_FALSE(platform::IsVisible(kIdCompletion));
  headless::EditorUndo(kIdEditor);
  EXPECT_FALSE(TextHas(u"G01"));
}

TEST_F(IndexPanel, EnterInTheListIsADoubleClick) {
  headless::SelectRows(kIdIndexList, {4});
  headless::Focus(kIdIndexList);
  Enter();
  EXPECT_TRUE(TextHas(u"\r\nG04 \r\n"));
}

TEST_F(IndexPanel, PrefixesInsertAnExample) {
  headless::DoubleClickRow(kIdIndexList, 194);
  EXPECT_TRUE(TextHas(u"\r\nN10 \r\n"));
  headless::DoubleClickRow(kIdIndexList, 195);
  EXPECT_TRUE(TextHas(u"\r\nN10 O1000 \r\n"));
}

TEST_F(IndexPanel, InsertsTheEditedTextAndOpensNoCompletion) {
  headless::TypeInto(kInsertion, u"X1.5 G10");
  headless::Click(kInsert);
  EXPECT_TRUE(TextHas(u"\r\nX1.5 G10\r\n"));
  headless::DrainPosts();
  EXPECT_FALSE(platform::IsVisible(kIdCompletion));
}

TEST_F(IndexPanel, WithoutASelectionNothingIsInserted) {
  Search(u"no such word");
  EXPECT_EQ(Rows(), 0);
  const std::u16string before = Text();
  InsertSelectedCode();
  EXPECT_EQ(Text(), before);
}

TEST_F(IndexPanel, TheWordsViewGetsTheWordAndOneBlank) {
  headless::Click(kIdCommandWords);
  const int line = platform::EditorLineStart(kIdWordsEditor, 1);
  headless::EditorSelect(kIdWordsEditor, line, line);
  headless::DoubleClickRow(kIdIndexList, 0);
  const std::u16string words(platform::EditorText(kIdWordsEditor));
  EXPECT_NE(words.find(u"\r\nRapid Motion Positioning \r\n"), std::u16string::npos);
  EXPECT_TRUE(TextHas(u"\r\nG00 \r\n"));
  EXPECT_EQ(platform::FocusedId(), kIdWordsEditor);
}

bool LiesIn(int id, const platform::Rect& area) {
  const platform::Rect place = platform::PlaceOf(id);
  return platform::IsVisible(id) && place.left >= area.left && place.right <= area.right &&
         place.top >= area.top && place.bottom <= area.bottom && place.bottom > place.top;
}

TEST_F(IndexPanel, KeepsItsControlsInItsPlaceAtEveryPanelWidth) {
  for (const bool page : {true, false}) {
    // In another mode the index stays in the left panel and has no page beside the output.
    if (!page) headless::SelectRows(kIdModeList, {0});
    ASSERT_EQ(app.mode, page ? kModeCodeIndex : kModeHome);
    for (const int width : {kLeftPanelLeast, 300, kLeftPanelMost}) {
      DragSplitter(width);
      const platform::Rect left = Areas().leftLower;
      for (const int id : {kIdIndexSearch, kIdIndexList, kIdIndexAll, kIdIndexText, kClear})
        EXPECT_TRUE(LiesIn(id, left)) << id;
      for (const int id : {kDetail, kInsertion, kInsert})
        EXPECT_TRUE(LiesIn(id, page ? Areas().foot : left)) << id;
      EXPECT_GE(platform::RectHeight(platform::PlaceOf(kIdIndexList)), 48);
    }
  }
}

TEST_F(IndexPanel, ShowsTheWholeDetailAndTenRowsInTheSmallestWindow) {
  headless::Resize(1200, 800);
  const platform::Rect detail = platform::PlaceOf(kDetail);
  // Five lines of 18 pixels: the name, an empty one and the three of the sentence.
  EXPECT_GE(platform::RectHeight(detail), 5 * 18 + 8);
  EXPECT_GE(platform::RectWidth(detail), 290);
  EXPECT_GE(platform::RectHeight(platform::PlaceOf(kIdIndexList)), 10 * 20);
  EXPECT_LE(platform::PlaceOf(kIdOutputLog).right, detail.left);
  EXPECT_LE(detail.right, platform::PlaceOf(kIdInfoPanel).left);
  EXPECT_LE(detail.bottom, platform::PlaceOf(kInsertion).top);
}

TEST_F(IndexPanel, GivesItsPageBackToTheOutput) {
  const platform::Rect before = platform::PlaceOf(kIdOutputLog);
  headless::Click(kIdShowFeatures);
  EXPECT_FALSE(platform::IsVisible(kDetail));
  EXPECT_FALSE(platform::IsVisible(kInsertion));
  EXPECT_FALSE(platform::IsVisible(kInsert));
  headless::Click(kIdShowIndex);
  EXPECT_EQ(platform::PlaceOf(kIdOutputLog).right, before.right);
  app.sidebarShowsFeatures = true;
  Layout();
  EXPECT_FALSE(platform::IsVisible(kDetail));
  EXPECT_GT(platform::PlaceOf(kIdOutputLog).right, before.right);
}

}  // namespace
}  // namespace morva
