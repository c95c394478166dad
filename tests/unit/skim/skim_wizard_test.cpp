// The wizard of the guided skim: pages, fields, matrix, units, insertion and reopening.

#include <algorithm>
#include <string>
#include <vector>

#include "app/palette.h"
#include "app/router.h"
#include "app/surfaces.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
#include "documents/feature_operations.h"
#include "documents/program_tabs.h"
#include "forms/sheet.h"
#include "library/units.h"
#include "platform/editor.h"
#include "skim/panel/skim_form.h"
#include "skim/panel/skim_opening.h"
#include "unit/skim/skim_stage.h"

namespace morva {
namespace {

struct SkimWizardPages : support::SkimStage {};

std::vector<headless::BoxRecord> Boxes() { return headless::TakeBoxes(); }

TEST_F(SkimWizardPages, ComesUpWithTheNumbersOfTheMachiningWizard) {
  SetMode(kModeWizard);
  headless::TypeInto(kIdWizardField + 0, u"7");
  headless::TypeInto(kIdWizardField + 1, u"G56");
  headless::TypeInto(kIdWizardField + 2, u"1800");
  headless::TypeInto(kIdWizardField + 3, u"14.5");
  headless::TypeInto(kIdWizardField + 4, u"0.75");
  headless::Click(kIdWizardInsert);
  ASSERT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(skimPlan.tool, 7);
  EXPECT_EQ(skimPlan.workOffset, 56);
  EXPECT_EQ(skimPlan.rpm, 1800);
  EXPECT_EQ(skimPlan.feed, 14.5);
  EXPECT_DOUBLE_EQ(skimPlan.clearance, 0.75);
  EXPECT_EQ(Says(kSkimTool), u"7");
  EXPECT_EQ(Says(kSkimFeed), u"14.5000");
  EXPECT_TRUE(skimWizard.planValid);
  EXPECT_EQ(skimWizard.page, kSkimStock);
  EXPECT_TRUE(
      std::u16string_view(app.statusText).ends_with(u"Area and depth are set here: check them."));
}

TEST_F(SkimWizardPages, TakesDefaultsWhereTheMachiningWizardSaysNoNumber) {
  SetMode(kModeWizard);
  headless::TypeInto(kIdWizardField + 0, u"abc");
  headless::TypeInto(kIdWizardField + 1, u"");
  headless::TypeInto(kIdWizardField + 2, u"fast");
  headless::Click(kIdWizardInsert);
  EXPECT_EQ(skimPlan.tool, 0);
  EXPECT_EQ(skimPlan.workOffset, 54);
  EXPECT_EQ(skimPlan.rpm, 1500);
}

TEST_F(SkimWizardPages, OpensWithTheDiameterOfTheLibrarysTool) {
  AddTool(3, 0.75);
  AddTool(3, 2);  // the first in the table counts
  OpenSkim();
  Next();
  Type(kSkimDiameter, u"1.25");
  ASSERT_EQ(skimPlan.diameter, 1.25);
  headless::Click(kIdSkimCancel);
  SetMode(kModeWizard);
  headless::TypeInto(kIdWizardField, u"3");
  headless::Click(kIdWizardInsert);
  EXPECT_EQ(skimPlan.diameter, 0.75);
  EXPECT_EQ(Says(kSkimDiameter), u"0.7500");
  EXPECT_EQ(platform::SelectedRow(kIdSkimTools), 1);
}

TEST_F(SkimWizardPages, TakesNumberAndDiameterOfATool) {
  AddTool(12, 0.5);
  OpenSkim();
  EXPECT_EQ(platform::RowText(kIdSkimTools, 0), u"0 \u00B7 Current machine tool");
  headless::SelectRows(kIdSkimTools, {1});
  EXPECT_EQ(Says(kSkimTool), u"12");
  EXPECT_EQ(skimPlan.diameter, 0.5);
  headless::SelectRows(kIdSkimTools, {0});
  EXPECT_EQ(skimPlan.tool, 0);
  EXPECT_EQ(skimPlan.diameter, 0.5);
  Type(kSkimTool, u"12");
  EXPECT_EQ(platform::SelectedRow(kIdSkimTools), 1);
  Type(kSkimTool, u"13");
  EXPECT_EQ(platform::SelectedRow(kIdSkimTools), -1);
}

TEST_F(SkimWizardPages, StaysOverAnEmptyFieldAndSaysItsName) {
  OpenSkim();
  Type(kSkimXMax, u"");
  Next();
  const auto boxes = Boxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Stock X maximum");
  EXPECT_EQ(boxes[0].text, u"Enter one valid decimal number.");
  EXPECT_EQ(skimWizard.page, kSkimStock);
  EXPECT_EQ(platform::FocusedId(), Field(kSkimXMax));
}

TEST_F(SkimWizardPages, SaysWhatIsWrongWithThePlanAndStays) {
  OpenSkim();
  Type(kSkimXMax, u"-1");
  Next();
  const auto boxes = Boxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Check skim plan");
  EXPECT_EQ(boxes[0].text, u"Stock X/Y maxima must be greater than their minima.");
  EXPECT_EQ(skimWizard.page, kSkimStock);
}

TEST_F(SkimWizardPages, PutsTheKeyboardIntoAToolThatIsNotWholeWithoutAWord) {
  OpenSkim();
  for (const int field : {int{kSkimTool}, int{kSkimWorkOffset}}) {
    const std::u16string before = Says(field);
    Type(field, u"54.5");
    headless::Focus(kIdSkimNext);
    Next();
    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(skimWizard.page, kSkimStock);
    EXPECT_EQ(platform::FocusedId(), Field(field));
    Type(field, before.c_str());
  }
}

// The page with the field comes up, as nobody could mend it from the page before.
TEST_F(SkimWizardPages, GoesToTheFieldOfAnotherPageThatDoesNotRead) {
  OpenSkim();
  Next();
  Type(kSkimDiameter, u"1,5");
  headless::Click(kIdSkimBack);
  EXPECT_EQ(skimWizard.page, kSkimStock);
  EXPECT_TRUE(Boxes().empty());
  Next();
  ASSERT_EQ(Boxes().size(), 1u);
  EXPECT_EQ(skimWizard.page, kSkimCutter);
  EXPECT_EQ(platform::FocusedId(), Field(kSkimDiameter));
}

// Otherwise a plan that does not pass could be mended on a page that nobody reaches any more.
TEST_F(SkimWizardPages, GoesToTheFieldOfAnotherPageThatDoesNotPass) {
  OpenSkim();
  Next();
  Type(kSkimStepover, u"100.01");
  headless::Click(kIdSkimBack);
  Next();
  ASSERT_EQ(Boxes().size(), 1u);
  EXPECT_EQ(skimWizard.page, kSkimCutter);
  EXPECT_EQ(platform::FocusedId(), Field(kSkimStepover));
  Type(kSkimStepover, u"60");
  Next();
  Type(kSkimPassCount, u"101");
  headless::Click(kIdSkimBack);
  headless::Click(kIdSkimBack);
  Next();
  EXPECT_EQ(skimWizard.page, kSkimDepths);
  EXPECT_EQ(platform::FocusedId(), Field(kSkimPassCount));
}

TEST_F(SkimWizardPages, GoesToTheStepoverOfASpiralThatIsTooLong) {
  OpenSkim();
  Next();
  headless::SelectRows(kIdSkimStrategies, {kSkimSpiral});
  headless::Click(kIdSkimBack);
  Type(kSkimXMax, u"4000");
  Type(kSkimYMax, u"4000");
  Next();
  const auto boxes = Boxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text.find(u"Spiral exceeds"), 0u);
  EXPECT_EQ(skimWizard.page, kSkimCutter);
  EXPECT_EQ(platform::FocusedId(), Field(kSkimStepover));
}

TEST_F(SkimWizardPages, LeavesThePlanWhereNumbersDoNotPass) {
  OpenSkim();
  const struct {
    int field;
    const char16_t* bad;
  } numbers[] = {{kSkimStepover, u"100.01"}, {kSkimRpm, u"1500.5"},    {kSkimFeed, u"0.0009"},
                 {kSkimXMax, u"0"},          {kSkimPassCount, u"2.5"}, {kSkimPassCount, u"101"}};
  for (const auto& number : numbers) {
    const std::u16string shown = Says(number.field);
    const double value = SkimValue(skimPlan, number.field);
    for (int page = 1; page < SkimPageOf(number.field) + 1; ++page) Next();
    Type(number.field, number.bad);
    for (const int key : {int{kIdSkimNext}, int{kIdSkimMm}}) {
      headless::Click(key);
      EXPECT_EQ(Boxes().size(), 1u) << number.field;
      EXPECT_EQ(SkimValue(skimPlan, number.field), value) << number.field;
      EXPECT_FALSE(skimPlan.metric);
    }
    headless::Click(kIdSkimCancel);
    OpenSkim();
    EXPECT_EQ(Says(number.field), shown);
    EXPECT_TRUE(skimWizard.planValid);
  }
}

TEST_F(SkimWizardPages, RefusesAUnitInWhichThePlanIsTooLarge) {
  OpenSkim();
  Type(kSkimXMax, u"4000");
  headless::Click(kIdSkimMm);
  const auto boxes = Boxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Check skim plan");
  EXPECT_FALSE(skimPlan.metric);
  EXPECT_FALSE(UnitsMetric());
  EXPECT_EQ(skimPlan.xMax, 4000);
  EXPECT_TRUE(skimWizard.planValid);
  EXPECT_EQ(platform::FocusedId(), Field(kSkimXMax));
}

// Surfaces with unit keys of their own lie between leaving the wizard and the back key.
TEST_F(SkimWizardPages, ComesBackInTheUnitThatWasChosenMeanwhile) {
  OpenSkim();
  headless::Click(kIdSurfaceCad);
  ASSERT_EQ(app.surface, kSurfaceCad);
  SetUnits(true);
  headless::Click(kIdBack);
  ASSERT_EQ(app.surface, kSurfaceSkim);
  EXPECT_TRUE(skimPlan.metric);
  EXPECT_EQ(Says(kSkimXMax), u"101.6000");
  EXPECT_EQ(Says(kSkimDiameter), u"25.4000");
  EXPECT_TRUE(skimWizard.planValid);
}

TEST_F(SkimWizardPages, BringsAHiddenDepthBackWhereItDoesNotRead) {
  OpenSkim();
  Next();
  Next();
  Type(kSkimPassCount, u"3x");
  headless::SelectRows(kIdSkimDepths, {1});
  EXPECT_EQ(Says(kSkimPassCount), u"3");
  EXPECT_TRUE(platform::IsVisible(Field(kSkimTotalDepth)));
  EXPECT_FALSE(platform::IsVisible(Field(kSkimPassCount)));
  EXPECT_TRUE(skimPlan.useTotalDepth);
  Next();
  EXPECT_EQ(skimWizard.page, kSkimReview);
}

TEST_F(SkimWizardPages, KeepsThePlanWhileAFieldDoesNotRead) {
  OpenSkim();
  for (const char16_t* text : {u" 4", u"4in", u"1,5", u"1e3", u"--1", u"", u"100000"}) {
    Type(kSkimXMax, text);
    EXPECT_FALSE(skimWizard.planValid);
    EXPECT_EQ(skimPlan.xMax, 4);
  }
  for (const char16_t* text : {u"+4", u"4 ", u"5."}) {
    Type(kSkimXMax, text);
    EXPECT_TRUE(skimWizard.planValid);
  }
  EXPECT_EQ(skimPlan.xMax, 5);
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(SkimWizardPages, ShowsTheMatrixOfEveryCharacter) {
  OpenSkim();
  EXPECT_FALSE(platform::IsVisible(kIdSkimMatrix));
  headless::Click(kIdSkimShowMatrix);
  EXPECT_EQ(platform::TextOf(kIdSkimShowMatrix), u"HIDE CODE MATRIX");
  ASSERT_TRUE(platform::IsVisible(kIdSkimMatrix));
  Type(kSkimXMax, u"6.5");
  EXPECT_NE(Matrix().find(u"Stock X -> 0.0000 to 6.5000"), Matrix().npos);
  Type(kSkimXMax, u"6.5.");
  EXPECT_EQ(Matrix(),
            u"Complete valid numeric inputs to update the preview.\r\nCheck stock bounds, positive "
            u"feeds/depths, stepover 0-100%, and the active pass plan.");
  headless::Click(kIdSkimShowMatrix);
  EXPECT_FALSE(platform::IsVisible(kIdSkimMatrix));
  EXPECT_EQ(platform::TextOf(kIdSkimShowMatrix), u"SHOW CODE MATRIX");
}

TEST_F(SkimWizardPages, ListsAHundredPassesInTheMatrixOfTheLastPage) {
  OpenSkim();
  headless::Click(kIdSkimShowMatrix);
  Next();
  Next();
  Type(kSkimPassCount, u"100");
  Next();
  const std::u16string text = Matrix();
  std::size_t stops = 0;
  for (std::size_t at = text.find(u"  M00\r\n"); at != text.npos;
       at = text.find(u"  M00\r\n", at + 1)) {
    ++stops;
  }
  EXPECT_EQ(stops, 99u);
  EXPECT_NE(text.find(u"  END\r\n"), text.npos);
}

// Who presses NEXT three times presses at one place; INSERT stands at another.
TEST_F(SkimWizardPages, KeepsCancelBackAndNextWhereTheyAre) {
  OpenSkim();
  const auto foot = [] {
    std::vector<int> edges;
    for (const int key : {kIdSkimCancel, kIdSkimBack, kIdSkimNext}) {
      const platform::Rect place = platform::PlaceOf(key);
      for (const int edge : {place.left, place.top, place.right, place.bottom}) {
        edges.push_back(edge);
      }
    }
    return edges;
  };
  const std::vector<int> first = foot();
  const auto below = [](int id) {
    return platform::PlaceOf(kViewSkimForm).top + platform::PlaceOf(id).bottom <=
           platform::PlaceOf(kIdSkimCancel).top;
  };
  EXPECT_TRUE(below(kIdSkimMm));
  headless::Click(kIdSkimPosition);
  EXPECT_EQ(foot(), first);
  EXPECT_TRUE(below(kIdSkimMm));
  headless::Click(kIdSkimPosition);
  Next();
  EXPECT_EQ(foot(), first);
  Next();
  EXPECT_EQ(foot(), first);
  for (const int row : {1, 0}) {
    headless::SelectRows(kIdSkimDepths, {row});
    EXPECT_EQ(foot(), first);
  }
  Next();
  ASSERT_EQ(skimWizard.page, kSkimReview);
  EXPECT_LT(platform::PlaceOf(kIdSkimInsert).bottom, platform::PlaceOf(kIdSkimCode).top + 1);
}

TEST_F(SkimWizardPages, EndsTheRowOfNextWithTheRowsAboveIt) {
  OpenSkim();
  ASSERT_FALSE(SheetScrolls(kSkimSheet));
  const int sheet = platform::PlaceOf(kViewSkimForm).left;
  EXPECT_EQ(platform::PlaceOf(kIdSkimNext).right, sheet + platform::PlaceOf(kIdSkimMm).right);
  EXPECT_EQ(platform::PlaceOf(kIdSkimCancel).left, sheet + platform::PlaceOf(kIdSkimInch).left);
}

TEST_F(SkimWizardPages, WalksTheFourPagesAndReviewsTheCode) {
  OpenSkim();
  EXPECT_FALSE(platform::IsEnabled(kIdSkimBack));
  GoToReview();
  EXPECT_TRUE(platform::IsVisible(kIdSkimInsert));
  EXPECT_FALSE(platform::IsVisible(kIdSkimNext));
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"INSERT SKIM");
  const std::u16string code(platform::EditorText(kIdSkimCode));
  EXPECT_EQ(code.find(u"\r\n(WIZARD: GUIDED SKIM / FACE)\r\n"), 0u);
  EXPECT_EQ(platform::FocusedId(), kIdSkimCode);
  headless::Click(kIdSkimBack);
  EXPECT_EQ(skimWizard.page, kSkimDepths);
  EXPECT_TRUE(platform::IsEnabled(kIdSkimBack));
}

TEST_F(SkimWizardPages, RefusesAnotherUnitOverABadField) {
  OpenSkim();
  Type(kSkimYMax, u"4in");
  headless::Click(kIdSkimMm);
  EXPECT_EQ(Boxes().size(), 1u);
  EXPECT_FALSE(skimPlan.metric);
  EXPECT_FALSE(UnitsMetric());
  EXPECT_EQ(Says(kSkimYMax), u"4in");
}

TEST_F(SkimWizardPages, ConvertsLengthsAndFeedsAndNothingElse) {
  OpenSkim();
  Type(kSkimTool, u"9");
  headless::Click(kIdSkimMm);
  EXPECT_TRUE(UnitsMetric());
  EXPECT_EQ(Says(kSkimXMax), u"101.6000");
  EXPECT_EQ(Says(kSkimFeed), u"304.8000");
  EXPECT_EQ(Says(kSkimDepthPerPass), u"3.1750");
  EXPECT_EQ(Says(kSkimStepover), u"60.0000");
  EXPECT_EQ(Says(kSkimRpm), u"1500");
  EXPECT_EQ(Says(kSkimPassCount), u"3");
  EXPECT_EQ(Says(kSkimTool), u"9");
  EXPECT_DOUBLE_EQ(skimPlan.stockThickness, 12.7);
  EXPECT_EQ(Status(), u"Units switched to MM (G21). Tool inputs converted.");
}

// 15 mm are 0.5906 inch and a little: what is not shown comes back.
TEST_F(SkimWizardPages, LosesNothingByAUnitThatGoesToAndFro) {
  SetUnits(true);
  OpenSkim();
  Type(kSkimXMax, u"115");
  headless::Click(kIdSkimInch);
  EXPECT_EQ(Says(kSkimXMax), u"4.5276");
  headless::Click(kIdSkimMm);
  EXPECT_EQ(Says(kSkimXMax), u"115.0000");
}

TEST_F(SkimWizardPages, OpensInTheUnitOfTheApplication) {
  SetUnits(true);
  OpenSkim();
  EXPECT_TRUE(skimPlan.metric);
  EXPECT_EQ(Says(kSkimXMax), u"101.6000");
}

// Where all fields fit, nothing is drawn beside them.
TEST_F(SkimWizardPages, DrawsNoScrollBarWhereNothingScrolls) {
  OpenSkim();
  headless::Click(kIdSkimPosition);
  const auto pieces = headless::PaintOf(kViewSkimBar);
  ASSERT_EQ(pieces.size(), 1u);
  EXPECT_EQ(pieces.at(0).colours, std::vector<platform::Colour>{kPanelBackground});
}

TEST_F(SkimWizardPages, GoesBackToWhereItWasOpenedAndKeepsThePlan) {
  OpenSkim();
  Type(kSkimXMax, u"7");
  const std::u16string before = Text();
  headless::Click(kIdSkimCancel);
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_EQ(app.mode, kModeWizard);
  EXPECT_EQ(skimPlan.xMax, 7);
  EXPECT_EQ(Text(), before);
  OpenSkim();
  GoBack();
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_EQ(app.mode, kModeWizard);
}

// A look at the program is no end of the wizard: back, or the same key again, leads to what was
// typed.
TEST_F(SkimWizardPages, ComesBackFromALookAtTheProgram) {
  OpenSkim();
  Next();
  Type(kSkimFeed, u"33");
  headless::Click(kIdSurfaceCode);
  ASSERT_EQ(app.surface, kSurfaceCode);
  ASSERT_EQ(app.mode, kModeWizard);
  headless::Click(kIdBack);
  ASSERT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(skimWizard.page, kSkimCutter);
  EXPECT_EQ(skimPlan.feed, 33);
  headless::Click(kIdSurfaceCode);
  OpenSkim();
  EXPECT_EQ(skimWizard.page, kSkimCutter);
  EXPECT_EQ(skimPlan.feed, 33);
  // Cancelled, it is not led to any more, but to where the machining wizard was opened.
  headless::Click(kIdSkimCancel);
  ASSERT_EQ(app.mode, kModeWizard);
  headless::Click(kIdBack);
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_EQ(app.mode, kModeHome);
}

TEST_F(SkimWizardPages, ComesBackInAnotherUnitToo) {
  OpenSkim();
  Next();
  Type(kSkimFeed, u"33");
  headless::Click(kIdSurfaceCode);
  SetUnits(true);
  OpenSkim();
  EXPECT_EQ(skimWizard.page, kSkimCutter);
  EXPECT_NEAR(skimPlan.feed, 838.2, 1e-9);
}

TEST_F(SkimWizardPages, BeginsAnewWhereTheMachiningWizardSaysSomethingElse) {
  OpenSkim();
  Next();
  Type(kSkimFeed, u"33");
  headless::Click(kIdSurfaceCode);
  headless::TypeInto(kIdWizardField + 2, u"2500");
  OpenSkim();
  EXPECT_EQ(skimWizard.page, kSkimStock);
  EXPECT_EQ(skimPlan.rpm, 2500);
  EXPECT_EQ(skimPlan.feed, 12);
}

TEST_F(SkimWizardPages, BeginsAnewWhereTheLibrarysToolHasAnotherDiameter) {
  AddTool(3, 2);
  SetMode(kModeWizard);
  headless::TypeInto(kIdWizardField, u"3");
  headless::Click(kIdWizardInsert);
  Next();
  Type(kSkimStepover, u"33");
  headless::Click(kIdSurfaceCode);
  headless::Click(kIdWizardInsert);
  EXPECT_EQ(skimPlan.stepoverPercent, 33);
  EXPECT_EQ(skimPlan.diameter, 2);
  headless::Click(kIdSurfaceCode);
  toolLibrary.tools[0].diameter = 0.5;
  headless::Click(kIdWizardInsert);
  EXPECT_EQ(skimPlan.diameter, 0.5);
}

// To who presses the key in another program this skim is a new one. The back key leads to the
// other.
TEST_F(SkimWizardPages, BeginsAnewInAnotherProgram) {
  OpenSkim();
  Next();
  Type(kSkimStepover, u"100.01");
  headless::Click(kIdTabNew);
  if (app.surface != kSurfaceCode) headless::Click(kIdSurfaceCode);
  ASSERT_EQ(app.tabCount, 2);
  OpenSkim();
  EXPECT_EQ(skimWizard.page, kSkimCutter);  // it was up in this program
  headless::Click(kIdTabFirst);
  headless::Click(kIdSurfaceCode);
  headless::Click(kIdTabFirst + 1);
  headless::Click(kIdBack);
  EXPECT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(Says(kSkimStepover), u"100.01");
  headless::Click(kIdTabFirst);
  headless::Click(kIdSurfaceCode);
  headless::Click(kIdTabFirst + 1);
  OpenSkim();
  EXPECT_EQ(skimWizard.page, kSkimStock);
  EXPECT_EQ(Says(kSkimStepover), u"60.0000");
}

// The last page has no field, so the status line says no field's help.
TEST_F(SkimWizardPages, SaysOnTheLastPageWhatStandsThere) {
  OpenSkim();
  Next();
  Next();
  platform::SetFocusTo(Field(kSkimClearance));
  ASSERT_EQ(Status(), u"How far the safe plane lies above the uncut surface");
  Next();
  ASSERT_EQ(skimWizard.page, kSkimReview);
  EXPECT_EQ(Status(), u"The code that goes into the program, to be read through");
}

TEST_F(SkimWizardPages, InsertsTheReviewedCodeAndGoesHome) {
  OpenSkim();
  GoToReview();
  const std::u16string code(platform::EditorText(kIdSkimCode));
  headless::Click(kIdSkimInsert);
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_EQ(app.mode, kModeHome);
  EXPECT_NE(Text().find(u"(MORVA CODE)\r\n" + code), std::u16string::npos);
  EXPECT_TRUE(app.editorDirty);
  EXPECT_TRUE(OutputHas(u"Guided skim inserted. Each M00 requires Cycle Start to continue."));
  ScanProgramText(Text());
  int skims = 0;
  for (int i = 0; i < features.count; ++i) skims += features.rows[i].settings.kind == kKindSkim;
  EXPECT_EQ(skims, 1);
}

struct SkimBlock : support::SkimStage {
  void SetUp() override {
    SkimStage::SetUp();
    OpenSkim();
  }
  static void Insert() {
    GoToReview();
    headless::Click(kIdSkimInsert);
    ASSERT_EQ(app.surface, kSurfaceCode);
  }
  // The block that was inserted last is the selected row.
  static void Edit() {
    headless::Click(kIdFeatureEdit);
    ASSERT_EQ(app.surface, kSurfaceSkim);
  }
  static void SelectSkim() {
    for (int row = 0; row < platform::RowCount(kIdFeatureList); ++row) {
      headless::SelectRows(kIdFeatureList, {row});
      ScanProgramText(Text());
      if (features.rows[row].settings.kind == kKindSkim) return;
    }
    FAIL() << "no skim";
  }
};

TEST_F(SkimBlock, ReopensAndIsUpdatedInPlace) {
  Type(kSkimXMax, u"6");
  Insert();
  const std::int32_t id = SelectedFeatureId();
  Edit();
  EXPECT_EQ(skimWizard.page, kSkimStock);
  EXPECT_EQ(Says(kSkimXMax), u"6.0000");
  Type(kSkimXMax, u"8");
  GoToReview();
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"UPDATE SKIM");
  headless::Click(kIdSkimInsert);
  EXPECT_EQ(SelectedFeatureId(), id);
  EXPECT_NE(Text().find(u"G01 X8.6000"), std::u16string::npos);
  EXPECT_EQ(Text().find(u"G01 X6.6000"), std::u16string::npos);
  EXPECT_EQ(app.mode, kModeHome);
}

TEST_F(SkimBlock, ReopensInItsOwnUnit) {
  headless::Click(kIdSkimMm);
  Insert();
  SetUnits(false);
  Edit();
  EXPECT_TRUE(UnitsMetric());
  EXPECT_TRUE(skimPlan.metric);
  EXPECT_EQ(Says(kSkimXMax), u"101.6000");
}

// A plate that is up and has no name yet is asked about before another surface comes up.
TEST_F(SkimBlock, ChangesNothingWhereThePlateStaysUp) {
  Type(kSkimXMax, u"6");
  Insert();
  OpenSkim();
  Type(kSkimXMax, u"9");
  headless::Click(kIdSkimCancel);
  headless::Click(kIdSurfacePlate);
  ASSERT_EQ(app.surface, kSurfacePlate);
  headless::TypeInto(kIdPlateField, u"7");
  const SkimWizard before = skimWizard;
  ASSERT_FALSE(before.open);
  headless::TakeBoxes();
  SelectSkim();
  RouteCommand(kIdFeatureEdit, platform::kNotifyClick);
  EXPECT_EQ(app.surface, kSurfacePlate);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_FALSE(skimWizard.open);
  EXPECT_EQ(skimPlan.xMax, 9);
  EXPECT_EQ(editLink.kind, 0);
  EXPECT_FALSE(OpenSkimWizard());
  EXPECT_FALSE(skimWizard.open);
  EXPECT_EQ(skimPlan.xMax, 9);
}

TEST_F(SkimBlock, IsNoUpdateAfterAFreshOpening) {
  Insert();
  Edit();
  headless::Click(kIdSkimCancel);
  EXPECT_EQ(editLink.kind, 0);
  OpenSkim();
  GoToReview();
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"INSERT SKIM");
}

TEST_F(SkimBlock, IsNotReopenedAfterAnEditByHand) {
  Insert();
  const std::u16string text = Text();
  const auto at = static_cast<int>(text.find(u"S1500"));
  ASSERT_GT(at, 0);
  std::u16string edited = text;
  edited.replace(static_cast<std::size_t>(at), 5, u"S1600");
  platform::SetEditorText(kIdEditor, edited);
  headless::Advance(300);
  RefreshFeatureList();
  SelectSkim();
  headless::TakeBoxes();
  headless::Click(kIdFeatureEdit);
  EXPECT_EQ(app.surface, kSurfaceCode);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Shape has manual changes");
}

TEST_F(SkimBlock, ReopensFromASavedFileWithItsStrategy) {
  Next();
  headless::SelectRows(kIdSkimStrategies, {kSkimLeftDown});
  headless::Click(kIdSkimBack);
  Insert();
  EXPECT_NE(Text().find(u"Alternate X/Y \u00B7 left then down"), std::u16string::npos);
  // The file cannot hold one of its characters, but nothing is lost with it.
  headless::TakeBoxes();
  headless::QueueFile(Path("faced.NC"));
  RouteCommand(kIdSaveAs, platform::kNotifyClick);
  headless::Advance(3000);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  ASSERT_NE(ReadFile("faced.NC").find("Alternate X/Y ? left then down"), std::string::npos);
  headless::Click(kIdClose);
  Open("faced.NC");
  headless::Advance(300);
  ASSERT_EQ(Text().find(u'\u00B7'), std::u16string::npos);
  SelectSkim();
  headless::TakeBoxes();
  headless::Click(kIdFeatureEdit);
  for (const auto& box : headless::TakeBoxes()) ADD_FAILURE() << platform::ToUtf8(box.text);
  ASSERT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(skimPlan.strategy, kSkimLeftDown);
  GoToReview();
  headless::Click(kIdSkimInsert);
  EXPECT_NE(Text().find(u"Alternate X/Y \u00B7 left then down"), std::u16string::npos);
}

}  // namespace
}  // namespace morva
