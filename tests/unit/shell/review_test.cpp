// The compare review over the whole application: two and three open programs side by side.

#include "codetools/review.h"

#include <cstddef>
#include <new>
#include <string>
#include <vector>

#include "app/hooks.h"
#include "app/outlets.h"
#include "documents/program_tabs.h"
#include "platform/headless/headless.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "support/workbench.h"
#include "unit/shell/failing_arrays.h"

namespace shell_test {
int arraysUntilFailure = 0;
}  // namespace shell_test

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  using shell_test::arraysUntilFailure;
  if (arraysUntilFailure > 0 && --arraysUntilFailure == 0) return nullptr;
  return ::operator new[](size);
}

namespace morva {
namespace {

using platform::Colour;

constexpr char16_t kTooFew[] =
    u"Select two or more programs (Ctrl/Shift click), then Review selected.";

class Review : public support::Workbench {
 protected:
  // Texts straight into the store, as they were when the tabs were left; the first tab is the
  // start-up's own and stays active.
  static void Programs(const std::vector<std::u16string>& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
      std::u16string title = u"P1.NC";
      title[1] = static_cast<char16_t>(u'1' + i);
      const int index = OpenTab(u"", u"x", title);
      ASSERT_EQ(index, static_cast<int>(i) + 1);
      tabs[index].text = texts[i];
    }
  }
  static void Mark(const std::vector<int>& indices) {
    headless::HoldCtrl(true);
    for (const int index : indices) headless::Click(kIdTabFirst + index);
    headless::HoldCtrl(false);
  }
  // Opens the programs as tabs 1 and 2 and compares them.
  static void Compare(std::u16string_view left, std::u16string_view right) {
    Programs({std::u16string(left), std::u16string(right)});
    Mark({1, 2});
    headless::Click(kIdCompareSecond);
  }
  static std::u16string Summary() { return platform::TextOf(kIdReviewSummary); }
  static std::u16string Left() { return std::u16string(platform::EditorText(kIdReviewLeftPane)); }
  static std::u16string Right() { return std::u16string(platform::EditorText(kIdReviewRightPane)); }
  static std::u16string Word(int id) { return platform::TextOf(id); }
  // The line that is selected in a pane, -1 when the selection is no whole line.
  static int SelectedLine(int pane) {
    const platform::EditorRange range = platform::EditorSelection(pane);
    const int line = platform::EditorLineOf(pane, range.from);
    const bool whole = range.from == platform::EditorLineStart(pane, line) &&
                       range.to == range.from + platform::EditorLineLength(pane, line);
    return whole ? line : -1;
  }
  static bool HasBand(int pane, int line, Colour wanted) {
    Colour band = 0;
    return headless::EditorBand(pane, line, band) && band == wanted;
  }
  static bool HasNoBand(int pane, int line) {
    Colour band = 0;
    return !headless::EditorBand(pane, line, band);
  }
  static Colour ColourAt(int pane, int line, int column) {
    platform::ColourRun runs[64];
    const int count = platform::LineRuns(pane, line, runs, 64);
    for (int i = 0; i < count; ++i) {
      if (column >= runs[i].from && column < runs[i].from + runs[i].length) return runs[i].colour;
    }
    return 0xDEE9F2;  // the pane's own
  }
};

std::u16string Lines(int count, std::u16string_view word) {
  std::u16string text;
  for (int i = 0; i < count; ++i) {
    text += word;
    for (const char c : std::to_string(i)) text += static_cast<char16_t>(c);
    text += u"\r\n";
  }
  return text;
}

TEST_F(Review, TakesTheWorkAreaAndGivesEverythingBack) {
  const std::vector<int> work = {kIdEditor,      kViewGutter,  kViewToolpath,
                                 kIdViewRefresh, kIdPlayStart, kIdSpeedSlider};
  headless::Click(kIdCompareSecond);
  EXPECT_TRUE(app.compareActive);
  EXPECT_EQ(Word(kIdCompareSecond), u"EXIT REVIEW");
  for (const int id : work) EXPECT_FALSE(platform::IsVisible(id)) << id;
  for (int id = kIdReviewHead; id <= kIdReviewRightPane; ++id) {
    EXPECT_TRUE(platform::IsVisible(id)) << id;
  }
  // The lines side by side have the height of the output too.
  EXPECT_FALSE(platform::IsVisible(kIdOutputLog));
  headless::Click(kIdCompareSecond);
  EXPECT_FALSE(app.compareActive);
  EXPECT_EQ(Word(kIdCompareSecond), u"COMPARE");
  for (const int id : work) EXPECT_TRUE(platform::IsVisible(id)) << id;
  for (int id = kIdReviewHead; id <= kIdReviewRightPane; ++id) {
    EXPECT_FALSE(platform::IsVisible(id)) << id;
  }
}

// The stretches of a pane's line that lie on the ground of what changed.
std::vector<std::u16string> Marked(int pane, int line) {
  platform::ColourRun runs[32];
  const int count = platform::LineRuns(pane, line, runs, 32);
  std::u16string text(platform::EditorText(pane));
  for (int i = 0; i < line; ++i) text.erase(0, text.find(u'\n') + 1);
  std::vector<std::u16string> marked;
  for (int i = 0; i < count && i < 32; ++i) {
    if (!runs[i].marked) continue;
    EXPECT_EQ(runs[i].ground, 0x9A5B00u);
    marked.push_back(text.substr(static_cast<std::size_t>(runs[i].from),
                                 static_cast<std::size_t>(runs[i].length)));
  }
  return marked;
}

TEST_F(Review, MarksTheChangedCharactersInsideAChangedLineAlone) {
  using Texts = std::vector<std::u16string>;
  Compare(u"O1\r\nG01 X1.5 Y2.\r\n(KEEP)\r\nM08\r\nM30",
          u"O1\r\nG01 X1.25 Y2. F9\r\n(KEEP)\r\nM30");
  EXPECT_EQ(Marked(kIdReviewLeftPane, 1), Texts{u"1.5"});
  EXPECT_EQ(Marked(kIdReviewRightPane, 1), (Texts{u"1.25", u" F9"}));
  for (const int line : {0, 2, 3, 4}) {
    EXPECT_EQ(Marked(kIdReviewLeftPane, line), Texts{}) << line;
    EXPECT_EQ(Marked(kIdReviewRightPane, line), Texts{}) << line;
  }
  // In words the words that differ.
  headless::Click(kIdCommandWords);
  headless::Advance(200);
  EXPECT_EQ(Marked(kIdReviewLeftPane, 1), Texts{u"1.5"});
}

TEST_F(Review, TakesBlanksForNoChangeWhereTheyAreIgnored) {
  using Texts = std::vector<std::u16string>;
  Compare(u"G1  X1 Y1", u"G1 X1 Y2");
  EXPECT_EQ(Marked(kIdReviewLeftPane, 0), (Texts{u" ", u"1"}));
  headless::Click(kIdReviewSpaces);
  EXPECT_EQ(Marked(kIdReviewLeftPane, 0), Texts{u"1"});
}

TEST_F(Review, BearsItsWords) {
  headless::Click(kIdCompareSecond);
  EXPECT_EQ(Word(kIdReviewHead), u"PROGRAMS (Ctrl / Shift)");
  EXPECT_EQ(platform::AccessibleName(kIdReviewPrograms), u"Programs to review");
  const char16_t* keys[] = {u"Review selected", u"Previous change", u"Next change",
                            u"Swap sides",      u"Spaces: exact",   u"Tags: hidden",
                            u"All lines",       u"Back to program"};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(Word(kIdReviewSelected + i), keys[i]);
  EXPECT_EQ(Summary(), kTooFew);
}

TEST_F(Review, LiesInsideItsAreaWithoutOverlapAtEverySize) {
  for (const int width : {1200, 1560, 2400}) {
    for (const int mode : {int{kModeHome}, int{kModeFind}, int{kModeSimulator}}) {
      headless::Resize(width, 800);
      if (app.compareActive) headless::Click(kIdReviewBack);
      Call(hooks.setMode, mode);
      headless::Click(kIdCompareSecond);
      ASSERT_TRUE(app.compareActive);
      const platform::Rect client = platform::ClientArea(platform::kMainWindow);
      for (int a = kIdReviewHead; a <= kIdReviewRightPane; ++a) {
        const platform::Rect p = platform::PlaceOf(a);
        EXPECT_LT(p.left, p.right) << a;
        EXPECT_LT(p.top, p.bottom) << a;
        EXPECT_LE(p.right, client.right) << a;
        for (int b = a + 1; b <= kIdReviewRightPane; ++b) {
          const platform::Rect q = platform::PlaceOf(b);
          const bool apart =
              p.right <= q.left || q.right <= p.left || p.bottom <= q.top || q.bottom <= p.top;
          EXPECT_TRUE(apart) << a << " " << b << " at " << width << " in mode " << mode;
        }
      }
      EXPECT_GE(platform::RectHeight(platform::PlaceOf(kIdReviewLeftPane)), 100);
    }
  }
}

TEST_F(Review, TheSecondIdAndTheTabMenuEnterItToo) {
  headless::QueuePick(kIdComparePopup);
  headless::ContextMenu(kIdTabFirst, -1);
  EXPECT_TRUE(app.compareActive);
  headless::PressKey({platform::kKeyEscape});
  EXPECT_FALSE(app.compareActive);
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
}

TEST_F(Review, EscapeLeavesFromEveryControlThatTakesTheKeyboard) {
  for (const int id : {kIdReviewPrograms, kIdReviewNext, kIdReviewSpaces, kIdReviewBack,
                       kIdReviewLeft, kIdReviewRight, kIdReviewRightPane}) {
    headless::Click(kIdCompareSecond);
    ASSERT_TRUE(app.compareActive);
    headless::Focus(id);
    headless::PressKey({platform::kKeyEscape});
    EXPECT_FALSE(app.compareActive) << id;
  }
}

TEST_F(Review, EntersWithTheMarkedProgramsCompared) {
  Compare(u"G1 X1\r\nG1 X2\r\n", u"G1 X1\r\nG1 X3\r\n");
  EXPECT_FALSE(platform::IsRowSelected(kIdReviewPrograms, 0));
  EXPECT_TRUE(platform::IsRowSelected(kIdReviewPrograms, 1));
  EXPECT_TRUE(platform::IsRowSelected(kIdReviewPrograms, 2));
  EXPECT_EQ(platform::FocusedId(), kIdReviewPrograms);
  EXPECT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 1");
  EXPECT_EQ(Left(), u"1    G1 X1\r\n2 ~  G1 X2\r\n");
  EXPECT_EQ(Right(), u"1    G1 X1\r\n2 ~  G1 X3\r\n");
}

TEST_F(Review, ComparesWhatStandsInTheEditorOfTheActiveProgram) {
  Programs({u"G1 X1\r\n"});
  headless::EditorSetAll(kIdEditor, u"G1 X1\r\nM30");
  Mark({0, 1});
  headless::Click(kIdCompareSecond);
  EXPECT_EQ(Left(), u"1    G1 X1\r\n2 -  M30\r\n");
  EXPECT_EQ(Right(), u"1    G1 X1\r\n\r\n");
}

TEST_F(Review, NothingCanBeTypedIntoAPane) {
  Compare(u"G1\r\n", u"G2\r\n");
  const std::u16string before = Left();
  EXPECT_FALSE(headless::EditorInsert(kIdReviewLeftPane, u"M8"));
  EXPECT_EQ(Left(), before);
  EXPECT_EQ(tabs[1].text, u"G1\r\n");
}

TEST_F(Review, TwoEqualProgramsHaveNoChangesAndEmptyPanesWithChangesOnly) {
  Compare(u"G1\r\nG2\r\n", u"G1\nG2");
  EXPECT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 0");
  EXPECT_EQ(Left(), u"1    G1\r\n2    G2\r\n");
  headless::Click(kIdReviewLines);
  EXPECT_EQ(Word(kIdReviewLines), u"Changes only");
  EXPECT_EQ(Left(), u"");
  EXPECT_EQ(Right(), u"");
  headless::Click(kIdReviewNext);
  EXPECT_EQ(platform::EditorSelection(kIdReviewLeftPane).to, 0);
  headless::Click(kIdReviewLines);
  EXPECT_EQ(Word(kIdReviewLines), u"All lines");
  EXPECT_EQ(Right(), u"1    G1\r\n2    G2\r\n");
}

TEST_F(Review, AnEmptyLeftSideGivesThreeAddedRows) {
  Compare(u"", u"A\r\nB\r\nC\r\n");
  EXPECT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 3   Removed - 0   Modified ~ 0");
  EXPECT_EQ(Left(), u"\r\n\r\n\r\n");
  EXPECT_EQ(Right(), u"1 +  A\r\n2 +  B\r\n3 +  C\r\n");
}

TEST_F(Review, TwoDeletedAndOneAddedAreOneModifiedAndOneRemoved) {
  Compare(u"A\r\nB\r\nC\r\nD\r\n", u"A\r\nX\r\nD\r\n");
  EXPECT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 0   Removed - 1   Modified ~ 1");
  EXPECT_EQ(Left(), u"1    A\r\n2 ~  B\r\n3 -  C\r\n4    D\r\n");
  EXPECT_EQ(Right(), u"1    A\r\n2 ~  X\r\n\r\n3    D\r\n");
}

TEST_F(Review, ChangedRowsBearTheirBandsAndTokensLieOverThem) {
  Compare(u"SAME\r\nG1 OLD\r\nGONE\r\nEND\r\n", u"SAME\r\nG2 NEW\r\nEND\r\nMORE\r\n");
  EXPECT_TRUE(HasNoBand(kIdReviewLeftPane, 0));
  EXPECT_TRUE(HasBand(kIdReviewLeftPane, 1, 0x453419));
  EXPECT_TRUE(HasBand(kIdReviewRightPane, 1, 0x453419));
  EXPECT_TRUE(HasBand(kIdReviewLeftPane, 2, 0x4B2228));
  EXPECT_TRUE(HasNoBand(kIdReviewRightPane, 2));
  EXPECT_TRUE(HasBand(kIdReviewRightPane, 4, 0x164131));
  // "2 ~  G1 OLD": the number in the row's colour, G in its token's, what changed in its own.
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 1, 0), 0xFFD588u);
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 1, 5), 0x2CD6DFu);
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 1, 7), 0xFFD588u);
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 1, 8), 0xFFFFFFu);
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 2, 6), 0xFF9FACu);
  EXPECT_EQ(ColourAt(kIdReviewRightPane, 4, 6), 0x8CF2B6u);
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 0, 6), 0xDEE9F2u);
}

// Four kinds of words are too dark for the bands and are lighter there.
TEST_F(Review, LightensOnBandsTheWordsThatAreTooDarkForThem) {
  Compare(u"SAME\r\nN1 M8 T7 I1\r\n", u"SAME\r\n");
  ASSERT_TRUE(HasBand(kIdReviewLeftPane, 1, 0x4B2228));
  // Behind "2 -  ".
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 1, 5), 0x91A8BCu);
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 1, 8), 0x5EA6FFu);
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 1, 11), 0xE776FFu);
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 1, 14), 0xC28BFFu);
}

TEST_F(Review, LeavesTheWordsAsTheyAreBesideTheBands) {
  Compare(u"N1 M8 T7 I1\r\n", u"N1 M8 T7 I1\r\n");
  ASSERT_TRUE(HasNoBand(kIdReviewLeftPane, 0));
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 0, 5), 0x809AB2u);
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 0, 8), 0x489AFFu);
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 0, 11), 0xE670FFu);
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 0, 14), 0xBE84FFu);
}

TEST_F(Review, HidesMarkersOfTheFirstColumnAndKeepsTheFilesNumbers) {
  const std::u16string left = u"(MORVA TEXT 1)\r\n (MORVA END 1)\r\n(morva end 1)\r\nG1\r\n";
  const std::u16string right = u"(MORVA TEXT 7)\r\n (MORVA END 7)\r\n(morva end 1)\r\nG1\r\n";
  Compare(left, right);
  EXPECT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 1");
  EXPECT_EQ(Left(), u"2 ~   (MORVA END 1)\r\n3    (morva end 1)\r\n4    G1\r\n");
  headless::Click(kIdReviewTags);
  EXPECT_EQ(Word(kIdReviewTags), u"Tags: shown");
  EXPECT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 2");
  EXPECT_EQ(Left().substr(0, 21), u"1 ~  (MORVA TEXT 1)\r\n");
  headless::Click(kIdReviewTags);
  EXPECT_EQ(Word(kIdReviewTags), u"Tags: hidden");
}

TEST_F(Review, IgnoredSpacesEquateLinesThatDifferByBlanksInsideWords) {
  Compare(u"G1 X1\r\n", u"G 1\tX1 \r\n");
  EXPECT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 1");
  headless::Click(kIdReviewSpaces);
  EXPECT_EQ(Word(kIdReviewSpaces), u"Spaces: ignored");
  EXPECT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 0");
  EXPECT_EQ(Right(), u"1    G 1\tX1 \r\n");
  headless::Click(kIdReviewSpaces);
  EXPECT_EQ(Word(kIdReviewSpaces), u"Spaces: exact");
}

TEST_F(Review, FourMillionCellsStayExactAndOneLineMoreIsSaid) {
  Programs({Lines(1999, u"A"), Lines(1999, u"A"), Lines(2000, u"A"), Lines(2000, u"A")});
  Mark({1, 2});
  headless::Click(kIdCompareSecond);
  EXPECT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 0");
  headless::SelectRows(kIdReviewPrograms, {3, 4});
  headless::Click(kIdReviewSelected);
  EXPECT_EQ(Summary(),
            u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 0   | large-file alignment "
            u"(64-line lookahead)");
}

TEST_F(Review, FortyThousandLinesReportTheLimitAndTheirRestIsNotCompared) {
  std::u16string right = Lines(40000, u"A");
  right += u"ANOTHER END\r\n";
  Compare(Lines(40000, u"A"), right);
  EXPECT_EQ(Summary(),
            u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 0   | large-file alignment "
            u"(64-line lookahead)   | LIMIT: first 32768 lines only");
  // A line for each row and the empty one behind the last line end.
  EXPECT_EQ(platform::EditorLineCount(kIdReviewRightPane), 32769);
}

TEST_F(Review, OfThreeProgramsTheThirdCanStandOnEitherSide) {
  Programs({u"A\r\n", u"B\r\n", u"C\r\n"});
  Mark({1, 2, 3});
  headless::Click(kIdCompareSecond);
  for (const int side : {kIdReviewLeft, kIdReviewRight}) {
    ASSERT_EQ(platform::RowCount(side), 3);
    EXPECT_EQ(platform::RowText(side, 2), u"P3.NC");
    EXPECT_EQ(platform::RowData(side, 2), 3);
  }
  EXPECT_EQ(platform::SelectedRow(kIdReviewLeft), 0);
  EXPECT_EQ(platform::SelectedRow(kIdReviewRight), 1);
  EXPECT_EQ(Right(), u"1 ~  B\r\n");
  headless::SelectRows(kIdReviewRight, {2});
  EXPECT_EQ(Left(), u"1 ~  A\r\n");
  EXPECT_EQ(Right(), u"1 ~  C\r\n");
  headless::SelectRows(kIdReviewLeft, {2});
  EXPECT_EQ(Left(), u"1    C\r\n");
}

TEST_F(Review, SwapExchangesTheSides) {
  Compare(u"A\r\nB\r\n", u"A\r\n");
  EXPECT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 0   Removed - 1   Modified ~ 0");
  headless::Click(kIdReviewSwap);
  EXPECT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 1   Removed - 0   Modified ~ 0");
  EXPECT_EQ(platform::SelectedRow(kIdReviewLeft), 1);
  EXPECT_EQ(platform::SelectedRow(kIdReviewRight), 0);
  EXPECT_EQ(Right(), u"1    A\r\n2 +  B\r\n");
}

TEST_F(Review, WithoutTwoChosenTheKeysSayWhatIsMissing) {
  Compare(u"A\r\n", u"B\r\n");
  headless::SelectRows(kIdReviewPrograms, {1});
  headless::Click(kIdReviewSelected);
  EXPECT_EQ(Summary(), kTooFew);
  EXPECT_EQ(Left(), u"");
  EXPECT_EQ(platform::EditorLineCount(kIdReviewLeftPane), 1);
  headless::Click(kIdReviewSwap);
  EXPECT_EQ(Summary(), u"Select at least two open programs in the list, then Review selected.");
  headless::Click(kIdReviewNext);
  EXPECT_EQ(platform::EditorSelection(kIdReviewLeftPane).to, 0);
}

TEST_F(Review, TheListAndTheMarksOfTheTabsAreOne) {
  Compare(u"A\r\n", u"B\r\n");
  headless::SelectRows(kIdReviewPrograms, {0, 1});
  EXPECT_TRUE(tabs[0].compareSelected);
  EXPECT_FALSE(tabs[2].compareSelected);
  EXPECT_EQ(Word(kIdTabFirst + 1), u"[C] P1.NC");
  EXPECT_EQ(Word(kIdTabFirst + 2), u"P2.NC");
  Mark({2});
  EXPECT_TRUE(app.compareActive);
  headless::Advance(150);
  EXPECT_TRUE(platform::IsRowSelected(kIdReviewPrograms, 2));
  headless::Click(kIdReviewBack);
  EXPECT_EQ(Word(kIdTabFirst + 2), u"[C] P2.NC");
}

TEST_F(Review, StepsThroughTheChangesAndRoundTheEnds) {
  // Changes in rows 1, 3 and 4 of 6.
  Compare(u"A\r\nB\r\nC\r\nD\r\nE\r\nF\r\n", u"A\r\nb\r\nC\r\nd\r\ne\r\nF\r\n");
  for (const int line : {1, 3, 4, 1}) {
    headless::Click(kIdReviewNext);
    EXPECT_EQ(SelectedLine(kIdReviewLeftPane), line);
    EXPECT_EQ(SelectedLine(kIdReviewRightPane), line);
  }
  for (const int line : {4, 3, 1}) {
    headless::Click(kIdReviewPrevious);
    EXPECT_EQ(SelectedLine(kIdReviewRightPane), line);
  }
  // A new comparison forgets the place; the first step back goes to the last change.
  headless::Click(kIdReviewSwap);
  headless::Click(kIdReviewPrevious);
  EXPECT_EQ(SelectedLine(kIdReviewLeftPane), 4);
}

TEST_F(Review, AStepPutsTheRowThreeLinesBelowTheTop) {
  std::u16string right = Lines(300, u"A");
  right.replace(right.find(u"A200\r"), 4, u"B200");
  Compare(Lines(300, u"A"), right);
  headless::Click(kIdReviewNext);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewLeftPane), 197);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewRightPane), 197);
  headless::Advance(450);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewLeftPane), 197);
}

TEST_F(Review, AStepBringsAChangeBehindTheRightEdgeIntoView) {
  const std::u16string tail(300, u'A');
  Compare(u"(" + tail + u") X1.5\r\nB\r\nC1\r\n", u"(" + tail + u") X2.5\r\nB\r\nC2\r\n");
  headless::Click(kIdReviewNext);
  for (const int pane : {kIdReviewLeftPane, kIdReviewRightPane}) {
    EXPECT_EQ(SelectedLine(pane), 0);
    const int number = static_cast<int>(platform::EditorText(pane).find(u".5"));
    const int x = platform::PointOfPosition(pane, number).x;
    EXPECT_GE(x, 0);
    EXPECT_LT(x, platform::RectWidth(platform::PlaceOf(pane)));
  }
  headless::Click(kIdReviewNext);
  for (const int pane : {kIdReviewLeftPane, kIdReviewRightPane}) {
    EXPECT_EQ(platform::PointOfPosition(pane, platform::EditorLineStart(pane, 2)).x, 0);
  }
}

TEST_F(Review, TakesAwayTheWordsThatAskForACompare) {
  Compare(u"A\r\n", u"B\r\n");
  EXPECT_EQ(platform::TextOf(kIdStatusLine), kReadyWords);
  Mark({2});
  EXPECT_EQ(platform::TextOf(kIdStatusLine),
            u"Compare selection changed. Ctrl+click another tab, then press COMPARE.");
  headless::Click(kIdReviewBack);
  EXPECT_EQ(platform::TextOf(kIdStatusLine), kReadyWords);
  ShowStatus(u"Another event.");
  headless::Click(kIdCompareSecond);
  headless::Click(kIdReviewBack);
  EXPECT_EQ(platform::TextOf(kIdStatusLine), u"Another event.");
}

TEST_F(Review, StepsOverShownRowsWithChangesOnly) {
  Compare(u"A\r\nB\r\nC\r\nD\r\n", u"A\r\nb\r\nC\r\nd\r\n");
  headless::Click(kIdReviewLines);
  EXPECT_EQ(Left(), u"2 ~  B\r\n4 ~  D\r\n");
  headless::Click(kIdReviewNext);
  EXPECT_EQ(SelectedLine(kIdReviewLeftPane), 0);
  headless::Click(kIdReviewNext);
  EXPECT_EQ(SelectedLine(kIdReviewLeftPane), 1);
}

TEST_F(Review, EitherPaneTakesTheOtherAlong) {
  Compare(Lines(300, u"A"), Lines(300, u"A"));
  platform::ScrollToLine(kIdReviewLeftPane, 50);
  headless::Advance(150);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewRightPane), 50);
  platform::ScrollToLine(kIdReviewRightPane, 20);
  headless::Advance(150);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewLeftPane), 20);
  // To the end and back they stay beside each other.
  platform::ScrollToLine(kIdReviewRightPane, 1000);
  headless::Advance(150);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewLeftPane),
            platform::FirstVisibleLine(kIdReviewRightPane));
}

TEST_F(Review, ShowsPlainWordsWhereTheWordsViewIsOn) {
  Compare(u"G1 X1\r\nM30\r\n", u"G1 X1\r\nM30\r\n");
  EXPECT_EQ(Left(), u"1    G1 X1\r\n2    M30\r\n");
  headless::Click(kIdCommandWords);
  headless::Advance(150);
  EXPECT_EQ(Left().substr(0, 38), u"1    Linear Interpolation Motion X1\r\n2");
  // "Linear" begins at 5 and is a G code's word; the second line's word is an M code's.
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 0, 5), 0x2CD6DFu);
  EXPECT_EQ(ColourAt(kIdReviewLeftPane, 1, 5), 0x489AFFu);
  headless::Click(kIdReviewBack);
  EXPECT_TRUE(platform::IsVisible(kIdWordsEditor));
}

TEST_F(Review, WithoutMemoryForItsTextAPaneStaysEmptyAndTheOtherIsFilled) {
  Compare(u"A\r\n", u"B\r\n");
  shell_test::arraysUntilFailure = 1;
  headless::Click(kIdReviewSpaces);
  EXPECT_EQ(shell_test::arraysUntilFailure, 0);
  EXPECT_EQ(Left(), u"");
  EXPECT_EQ(Right(), u"1 ~  B\r\n");
  EXPECT_EQ(Summary(), u"READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 1");
  headless::Click(kIdReviewSpaces);
  EXPECT_EQ(Left(), u"1 ~  A\r\n");
}

TEST_F(Review, NewOpenClosingAndATabClickLeaveIt) {
  Programs({u"A\r\n"});
  headless::Click(kIdCompareSecond);
  headless::Click(kIdTabFirst + 1);
  EXPECT_FALSE(app.compareActive);
  headless::Click(kIdCompareSecond);
  headless::Click(kIdNew);
  EXPECT_FALSE(app.compareActive);
  headless::Click(kIdCompareSecond);
  headless::QueueFileCancel();
  headless::Click(kIdOpen);
  EXPECT_FALSE(app.compareActive);
  headless::Click(kIdCompareSecond);
  headless::Click(kIdClose);
  EXPECT_FALSE(app.compareActive);
  headless::Click(kIdCompareSecond);
  headless::Click(kIdFind);
  EXPECT_FALSE(app.compareActive);
  EXPECT_EQ(platform::FocusedId(), kIdFindText);
  EXPECT_EQ(Word(kIdCompareSecond), u"COMPARE");
}

TEST_F(Review, TheKeyboardReachesAndWorksEverything) {
  Programs({u"A\r\n", u"B\r\n"});
  Mark({1, 2});
  headless::Focus(kIdCompareSecond);
  headless::PressKey({platform::kKeyEnter});
  ASSERT_TRUE(app.compareActive);
  EXPECT_EQ(platform::FocusedId(), kIdReviewPrograms);
  const int order[] = {kIdReviewSelected, kIdReviewPrevious, kIdReviewNext,     kIdReviewSwap,
                       kIdReviewSpaces,   kIdReviewTags,     kIdReviewLines,    kIdReviewBack,
                       kIdReviewLeft,     kIdReviewRight,    kIdReviewLeftPane, kIdReviewRightPane};
  for (const int id : order) {
    headless::PressKey({platform::kKeyTab});
    EXPECT_EQ(platform::FocusedId(), id);
  }
  headless::Focus(kIdReviewNext);
  headless::PressKey({platform::kKeySpace});
  EXPECT_EQ(platform::EditorSelection(kIdReviewLeftPane).to, 6);  // "1 ~  A"
  EXPECT_EQ(platform::FocusedId(), kIdReviewNext);
  headless::Focus(kIdReviewRightPane);
  headless::PressKey({platform::kKeyEscape});
  EXPECT_FALSE(app.compareActive);
  EXPECT_EQ(platform::FocusedId(), kIdEditor);
}

TEST_F(Review, ThePointerOverAPaneDoesNotWipeTheLog) {
  Compare(u"A\r\n", u"B\r\n");
  const std::u16string before = Output();
  for (const int id : {kIdReviewLeftPane, kIdReviewSummary}) {
    headless::MovePointerOver(id);
    headless::Advance(300);
    EXPECT_EQ(Output(), before);
  }
}

}  // namespace
}  // namespace morva
