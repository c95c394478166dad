// The drawn centerline of the guided skim and the places that the stock is put on.

#include <cmath>
#include <string>
#include <vector>

#include "app/hooks.h"
#include "app/path_preview.h"
#include "app/router.h"
#include "cad/geometry/canvas_view.h"
#include "cad/model/drawings.h"
#include "cad/model/sketch.h"
#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "documents/tab_table.h"
#include "library/units.h"
#include "simulator/view.h"
#include "unit/skim/skim_stage.h"

namespace morva {
namespace {

struct SkimPath : support::SkimStage {
  void SetUp() override {
    SkimStage::SetUp();
    OpenSkim();
    Next();
    ASSERT_EQ(skimWizard.page, kSkimCutter);
  }
  static void Draw() { headless::SelectRows(kIdSkimStrategies, {kSkimCustom}); }
  static void Line(double x, double y, double length, double angle) {
    ASSERT_GE(AppendSketchObject({kTypeLine, 0, x, y, length, 0, angle}), 0);
  }
  static void Enter() {
    ASSERT_TRUE(headless::Focus(kViewCadCanvas));
    headless::PressKey({platform::kKeyEnter});
  }
  static std::u16string CadStatus() { return platform::TextOf(kIdCadStatus); }
  static std::u16string Drawing() {
    const CadStore& store = *ActiveTab()->cadStore;
    return store.drawings[store.active].name;
  }
  static std::uint32_t Drawings() { return ActiveTab()->cadStore->count; }
};

TEST_F(SkimPath, OpensADrawingOfItsOwnAndTakesItsLines) {
  Draw();
  ASSERT_EQ(app.surface, kSurfaceCad);
  EXPECT_EQ(Drawing(), u"Skim centerline");
  EXPECT_EQ(Drawings(), 2u);
  EXPECT_EQ(CadStatus(),
            u"Draw the cutter centerline with line segments. Return accepts the path. Separate "
            u"strokes retract safely.");
  Line(0, 1, 4, 0);
  Line(4, 2, 4, 180);
  Enter();
  EXPECT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(skimWizard.page, kSkimCutter);
  EXPECT_EQ(skimPlan.strategy, kSkimCustom);
  ASSERT_EQ(skimPlan.centerline.count, 2);
  EXPECT_EQ(skimPlan.centerline.segments[1].angle, 180);
  EXPECT_TRUE(skimWizard.planValid);
  EXPECT_EQ(platform::SelectedRow(kIdSkimStrategies), kSkimCustom);
}

TEST_F(SkimPath, BringsTheSameDrawingUpAgainAndTakesItByTheBackKey) {
  Draw();
  Line(0, 1, 4, 0);
  Enter();
  headless::Click(kIdSkimDraw);
  ASSERT_EQ(app.surface, kSurfaceCad);
  EXPECT_EQ(Drawings(), 2u);
  EXPECT_EQ(sketch.objectCount, 1);
  Line(0, 2, 4, 0);
  headless::Click(kIdBack);
  EXPECT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(skimPlan.centerline.count, 2);
}

TEST_F(SkimPath, RefusesNothingOtherGeometryAndTooManyLinesAndStays) {
  Draw();
  Enter();
  EXPECT_EQ(app.surface, kSurfaceCad);
  EXPECT_EQ(CadStatus(), u"Draw at least one line before accepting the skim path.");
  headless::Click(kIdBack);
  EXPECT_EQ(app.surface, kSurfaceCad);
  ASSERT_GE(AppendSketchObject({kTypeCircle, 0, 0, 0, 1, 0, 0}), 0);
  Enter();
  EXPECT_EQ(CadStatus(),
            u"Custom skim centerlines currently require line segments; trim or replace other "
            u"geometry.");
  RemoveSketchObject(0);
  for (int i = 0; i < 96; ++i) Line(0, i, 4, 0);
  Enter();
  EXPECT_EQ(app.surface, kSurfaceCad);
  EXPECT_EQ(CadStatus(), u"Limit the custom path to 95 line segments.");
  EXPECT_EQ(skimPlan.strategy, kSkimZigzag);
  RemoveSketchObject(95);
  Enter();
  EXPECT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(skimPlan.centerline.count, 95);
}

TEST_F(SkimPath, IsLeftByEscapeWithoutAChange) {
  Draw();
  Line(0, 1, 4, 0);
  headless::Focus(kViewCadCanvas);
  headless::PressKey({platform::kKeyEscape});
  if (app.surface == kSurfaceCad) headless::PressKey({platform::kKeyEscape});
  EXPECT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(skimPlan.strategy, kSkimZigzag);
  EXPECT_EQ(platform::SelectedRow(kIdSkimStrategies), kSkimZigzag);
}

TEST_F(SkimPath, NeedsAFreeDrawing) {
  headless::Click(kIdSurfaceCad);
  for (int i = 0; i < 8; ++i) {
    Line(0, i, 1, 0);
    if (i < 7) headless::Click(kIdDrawingAdd);
  }
  ASSERT_EQ(Drawings(), 8u);
  OpenSkim();
  Draw();
  EXPECT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(Status(), u"A free CAD drawing tab is needed for the skim path.");
  EXPECT_EQ(platform::SelectedRow(kIdSkimStrategies), kSkimZigzag);
  EXPECT_TRUE(skimWizard.planValid);
}

TEST_F(SkimPath, TakesADrawingOfTheOtherUnit) {
  Draw();
  headless::Click(kIdCadMm);
  Line(0, 25.4, 50.8, 0);
  Enter();
  ASSERT_EQ(skimPlan.centerline.count, 1);
  EXPECT_DOUBLE_EQ(skimPlan.centerline.segments[0].size, 2);
  EXPECT_DOUBLE_EQ(skimPlan.centerline.segments[0].y, 1);
}

// Of a block whose drawing is gone.
TEST_F(SkimPath, BeginsItsDrawingWithTheLinesOfThePlan) {
  SkimPlan plan = skimPlan;
  plan.strategy = kSkimCustom;
  plan.centerline.count = 1;
  plan.centerline.segments[0] = {kTypeLine, 0, 0, 1, 4, 0, 0};
  SetSkimPlan(plan);
  headless::Click(kIdSkimDraw);
  ASSERT_EQ(app.surface, kSurfaceCad);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].size, 4);
}

// A half-typed page survives the way to the drawing and back, whichever key leads there.
struct SkimTextsKept : SkimPath {
  void SetUp() override {
    SkimPath::SetUp();
    Type(kSkimStepover, u"100.01");
    Type(kSkimFeed, u"33");
  }
  static void ExpectTyped() {
    ASSERT_EQ(app.surface, kSurfaceSkim);
    EXPECT_EQ(Says(kSkimStepover), u"100.01");
    EXPECT_EQ(Says(kSkimFeed), u"33");
    EXPECT_FALSE(skimWizard.planValid);
    EXPECT_EQ(skimPlan.feed, 12);
  }
  static void Leave() {
    headless::Focus(kViewCadCanvas);
    headless::PressKey({platform::kKeyEscape});
  }
};

TEST_F(SkimTextsKept, ByTheListOfStrategiesAndEscape) {
  Draw();
  Leave();
  ExpectTyped();
  EXPECT_EQ(platform::SelectedRow(kIdSkimStrategies), kSkimZigzag);
}

TEST_F(SkimTextsKept, ByTheKeyOfTheDrawing) {
  headless::Click(kIdSkimDraw);
  Leave();
  ExpectTyped();
}

TEST_F(SkimTextsKept, OverAnAcceptedLine) {
  headless::Click(kIdSkimDraw);
  Line(0, 1, 4, 0);
  Enter();
  ExpectTyped();
  EXPECT_EQ(skimPlan.strategy, kSkimCustom);
  EXPECT_EQ(platform::SelectedRow(kIdSkimStrategies), kSkimCustom);
  Type(kSkimStepover, u"50");
  EXPECT_TRUE(skimWizard.planValid);
  EXPECT_EQ(skimPlan.feed, 33);
  EXPECT_EQ(skimPlan.strategy, kSkimCustom);
}

// The plan's line is not put in place of what the list says.
TEST_F(SkimTextsKept, WithAStrategyChosenAwayFromTheDrawnLine) {
  headless::Click(kIdSkimDraw);
  Line(0, 1, 4, 0);
  Enter();
  ASSERT_EQ(skimPlan.strategy, kSkimCustom);
  headless::SelectRows(kIdSkimStrategies, {kSkimSpiral});
  headless::Click(kIdSurfaceCode);
  headless::Click(kIdBack);
  ExpectTyped();
  EXPECT_EQ(platform::SelectedRow(kIdSkimStrategies), kSkimSpiral);
  Type(kSkimStepover, u"50");
  ASSERT_TRUE(skimWizard.planValid);
  EXPECT_EQ(skimPlan.strategy, kSkimSpiral);
}

TEST_F(SkimTextsKept, ByOtherSurfaces) {
  headless::SelectRows(kIdSkimStrategies, {kSkimSpiral});
  Type(kSkimRpm, u"1.5x");
  headless::Click(kIdSurfaceCad);
  headless::Click(kIdBack);
  ExpectTyped();
  EXPECT_EQ(Says(kSkimRpm), u"1.5x");
  EXPECT_EQ(platform::SelectedRow(kIdSkimStrategies), kSkimSpiral);
  Type(kSkimRpm, u"");
  headless::Click(kIdSurfaceCad);
  headless::Click(kIdBack);
  ExpectTyped();
  EXPECT_EQ(Says(kSkimRpm), u"");
}

TEST_F(SkimTextsKept, InTheUnitThatWasChosenMeanwhile) {
  headless::Click(kIdSurfaceCad);
  SetUnits(true);
  headless::Click(kIdBack);
  ASSERT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(Says(kSkimStepover), u"100.01");
  EXPECT_EQ(Says(kSkimFeed), u"838.2000");
  EXPECT_EQ(Says(kSkimXMax), u"101.6000");
}

TEST_F(SkimTextsKept, NotWhereAnotherSkimIsOpened) {
  headless::Click(kIdSkimCancel);
  OpenSkim();
  EXPECT_EQ(Says(kSkimStepover), u"60.0000");
}

// A refused drawing says nothing against what else was chosen.
TEST_F(SkimPath, KeepsTheDepthThatWasChosenWhereNoDrawingIsFree) {
  headless::Click(kIdSurfaceCad);
  for (int i = 0; i < 8; ++i) {
    Line(0, i, 1, 0);
    if (i < 7) headless::Click(kIdDrawingAdd);
  }
  headless::Click(kIdBack);
  Next();
  headless::SelectRows(kIdSkimDepths, {1});
  Type(kSkimTotalDepth, u"1x");
  headless::Click(kIdSkimBack);
  ASSERT_EQ(skimWizard.page, kSkimCutter);
  Draw();
  ASSERT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(platform::SelectedRow(kIdSkimStrategies), kSkimZigzag);
  EXPECT_EQ(platform::SelectedRow(kIdSkimDepths), 1);
  EXPECT_EQ(Says(kSkimTotalDepth), u"1x");
}

TEST_F(SkimPath, TakesItsDrawingUnderAnotherName) {
  Draw();
  Line(0, 1, 4, 0);
  NameActiveDrawing(*ActiveTab(), u"My line");
  headless::Focus(kViewCadCanvas);
  headless::PressKey({platform::kKeyEscape});
  ASSERT_EQ(app.surface, kSurfaceSkim);
  headless::Click(kIdSkimDraw);
  EXPECT_EQ(Drawing(), u"My line");
  EXPECT_EQ(Drawings(), 2u);
  Enter();
  EXPECT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(skimPlan.centerline.count, 1);
}

// A sketch of the program that came up in the empty drawing is the part's, and no centerline.
struct SkimPathBesideASketch : SkimPath {
  void SetUp() override {
    SkimPath::SetUp();
    headless::Click(kIdSkimCancel);
    SetDestinationPicker([](int, std::int32_t) { return Destination::Caret; });
    headless::Click(kIdSurfaceCad);
    Line(0, 0, 7, 0);
    ASSERT_TRUE(RouteCommand(kIdCadGenerate, platform::kNotifyClick));
    sketchBlock = BlocksOf(Text())[Row()].id;
    OpenSkim();
    Next();
    Draw();
    ASSERT_EQ(Drawing(), u"Skim centerline");
    ASSERT_EQ(sketch.objectCount, 0);
  }
  static std::size_t Row() {
    const auto blocks = BlocksOf(Text());
    for (std::size_t i = 0; i < blocks.size(); ++i) {
      if (blocks[i].settings.kind == kKindSketch) return i;
    }
    ADD_FAILURE() << "no sketch";
    return 0;
  }
  static void Leave() {
    headless::Focus(kViewCadCanvas);
    headless::PressKey({platform::kKeyEscape});
    ASSERT_EQ(app.surface, kSurfaceSkim);
  }
  std::int32_t sketchBlock = 0;
};

TEST_F(SkimPathBesideASketch, TakesNoDrawingThatABlockTookMeanwhile) {
  Leave();
  SetMode(kModeHome);
  RefreshFeatureList();
  SelectFeatureRow(sketchBlock);
  headless::Click(kIdFeatureEdit);
  ASSERT_EQ(app.surface, kSurfaceCad);
  ASSERT_EQ(ActiveTab()->cadStore->active, 1u);
  ASSERT_EQ(sketch.objectCount, 1);
  headless::Click(kIdSurfaceCode);
  headless::Click(kIdBack);
  if (app.surface != kSurfaceSkim) headless::Click(kIdBack);
  ASSERT_EQ(app.surface, kSurfaceSkim);
  headless::Click(kIdSkimDraw);
  ASSERT_EQ(app.surface, kSurfaceCad);
  EXPECT_EQ(ActiveTab()->cadStore->active, 2u);
  EXPECT_EQ(sketch.objectCount, 0);
}

// What was drawn for the skim and sent as a sketch too is still the skim's.
TEST_F(SkimPathBesideASketch, TakesItsOwnDrawingThatWasSentAsASketch) {
  Line(0, 3, 5, 0);
  ASSERT_TRUE(RouteCommand(kIdCadGenerate, platform::kNotifyClick));
  if (app.surface == kSurfaceCad) Leave();
  for (int i = 0; i < 2 && app.surface != kSurfaceSkim; ++i) headless::Click(kIdBack);
  ASSERT_EQ(app.surface, kSurfaceSkim);
  headless::Click(kIdSkimDraw);
  EXPECT_EQ(ActiveTab()->cadStore->active, 1u);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].size, 5);
}

// Several drawn skims in one program: each opens with lines of its own.
struct SeveralDrawnSkims : SkimPath {
  // Draws a line at this height, and nothing else, and inserts the skim.
  static void DrawAndInsert(double y) {
    headless::Click(kIdSkimDraw);
    ASSERT_EQ(app.surface, kSurfaceCad);
    while (sketch.objectCount > 0) RemoveSketchObject(0);
    Line(0, y, 4, 0);
    Enter();
    ASSERT_EQ(app.surface, kSurfaceSkim);
    while (skimWizard.page < kSkimReview) Next();
    headless::Click(kIdSkimInsert);
    ASSERT_EQ(app.surface, kSurfaceCode);
  }
  static void Fresh() {
    OpenSkim();
    if (skimWizard.page == kSkimStock) Next();
  }
  static std::vector<std::int32_t> Skims() {
    std::vector<std::int32_t> ids;
    for (const FeatureRecord& row : BlocksOf(Text())) {
      if (row.settings.kind == kKindSkim) ids.push_back(row.id);
    }
    return ids;
  }
  // Opens a skim for edit, and its drawing.
  static void Draw(std::int32_t id) {
    RefreshFeatureList();
    SelectFeatureRow(id);
    headless::Click(kIdFeatureEdit);
    ASSERT_EQ(app.surface, kSurfaceSkim);
    Next();
    headless::Click(kIdSkimDraw);
    ASSERT_EQ(app.surface, kSurfaceCad);
  }
  static void GoOut() {
    headless::Focus(kViewCadCanvas);
    for (int i = 0; i < 3 && app.surface == kSurfaceCad; ++i) {
      headless::PressKey({platform::kKeyEscape});
    }
    ASSERT_EQ(app.surface, kSurfaceSkim);
  }
  // Two drawn skims, and eight drawings that all hold something; the first skim's was changed.
  void Crowd() {
    headless::Click(kIdSurfaceCad);
    Line(0, 0, 1, 0);  // none that anybody may take is left
    Fresh();
    DrawAndInsert(1);
    Fresh();
    DrawAndInsert(2);
    headless::Click(kIdSurfaceCad);
    SwitchDrawing(*ActiveTab(), 1);
    Line(0, 9, 1, 0);
    while (Drawings() < 8) {
      headless::Click(kIdDrawingAdd);
      Line(0, 0, 1, 0);
    }
  }
  void Edit(std::int32_t id) {
    SetMode(kModeHome);
    SelectFeatureRow(id);
    headless::Click(kIdFeatureEdit);
    ASSERT_EQ(app.surface, kSurfaceSkim);
    Next();
  }
};

TEST_F(SeveralDrawnSkims, OpenWithTheirOwnLines) {
  DrawAndInsert(1);
  Fresh();
  DrawAndInsert(2);
  const std::vector<std::int32_t> ids = Skims();
  ASSERT_EQ(ids.size(), 2u);
  Draw(ids[0]);
  EXPECT_EQ(Drawing(), u"Skim centerline");
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].y, 1);
  // Accepted from there it updates the first one, and comes up again.
  Line(0, 3, 4, 0);
  Enter();
  EXPECT_EQ(skimPlan.centerline.count, 2);
  headless::Click(kIdSkimDraw);
  EXPECT_EQ(Drawing(), u"Skim centerline");
  EXPECT_EQ(sketch.objectCount, 2);
  GoOut();
  headless::Click(kIdSkimCancel);
  Draw(ids[1]);
  EXPECT_EQ(Drawing(), u"Skim centerline 2");
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].y, 2);
}

// The plan is that of the last skim, but a line belongs to the skim that it was drawn for.
TEST_F(SeveralDrawnSkims, BeginWithNoLineOfAnother) {
  DrawAndInsert(1);
  Fresh();
  EXPECT_EQ(skimPlan.centerline.count, 0);
  EXPECT_EQ(skimPlan.strategy, kSkimZigzag);
  headless::Click(kIdSkimDraw);
  EXPECT_EQ(Drawing(), u"Skim centerline 2");
  EXPECT_EQ(sketch.objectCount, 0);
}

TEST_F(SeveralDrawnSkims, BeginWithNoLineOfAnotherProgram) {
  headless::Click(kIdSkimDraw);
  Line(0, 1, 4, 0);
  Enter();
  headless::Click(kIdSkimCancel);
  headless::Click(kIdTabNew);
  Fresh();
  EXPECT_EQ(skimPlan.centerline.count, 0);
  headless::Click(kIdSkimDraw);
  EXPECT_EQ(sketch.objectCount, 0);
}

TEST_F(SeveralDrawnSkims, KeepALineThatStandsInNoBlockYet) {
  headless::Click(kIdSkimDraw);
  Line(0, 1, 4, 0);
  Enter();
  headless::Click(kIdSkimCancel);
  Fresh();
  EXPECT_EQ(skimPlan.centerline.count, 1);
  EXPECT_EQ(skimPlan.strategy, kSkimCustom);
}

TEST_F(SeveralDrawnSkims, FindTheirDrawingInTheOtherUnit) {
  DrawAndInsert(1);
  SetUnits(true);
  Draw(Skims()[0]);
  EXPECT_EQ(Drawing(), u"Skim centerline");
  EXPECT_EQ(Drawings(), 2u);
}

// A plan that has no lines yet begins with none of another skim's.
TEST_F(SeveralDrawnSkims, BeginEmptyBehindARestart) {
  DrawAndInsert(1);
  ResetSkimPlan();
  Fresh();
  headless::Click(kIdSkimDraw);
  EXPECT_EQ(Drawing(), u"Skim centerline 2");
  EXPECT_EQ(sketch.objectCount, 0);
}

// What was begun and not accepted is no other skim's.
TEST_F(SeveralDrawnSkims, FindWhatWasBegun) {
  headless::Click(kIdSkimDraw);
  Line(0, 1, 4, 0);
  GoOut();
  headless::Click(kIdSkimDraw);
  EXPECT_EQ(sketch.objectCount, 1);
  GoOut();
  headless::Click(kIdSkimCancel);
  Fresh();
  headless::Click(kIdSkimDraw);
  EXPECT_EQ(Drawing(), u"Skim centerline");
  EXPECT_EQ(sketch.objectCount, 1);
}

// Lines that were begun for a skim under edit are not taken away by another look.
TEST_F(SeveralDrawnSkims, KeepWhatIsBegunWhileTheWizardIsOpen) {
  DrawAndInsert(1);
  Draw(Skims()[0]);
  Line(0, 2, 4, 0);
  GoOut();
  headless::Click(kIdSkimDraw);
  EXPECT_EQ(Drawing(), u"Skim centerline");
  EXPECT_EQ(sketch.objectCount, 2);
  EXPECT_EQ(skimPlan.centerline.count, 1);
}

TEST_F(SeveralDrawnSkims, BeginAnEmptiedDrawingWithTheLinesOfTheBlock) {
  DrawAndInsert(1);
  Draw(Skims()[0]);
  RemoveSketchObject(0);
  GoOut();
  headless::Click(kIdSkimCancel);
  Draw(Skims()[0]);
  EXPECT_EQ(Drawing(), u"Skim centerline");
  EXPECT_EQ(sketch.objectCount, 1);
}

// The block of the second skim brings its lines back, the first one's were changed.
TEST_F(SeveralDrawnSkims, TakeADrawingWhoseLinesABlockKeepsWhereNoneIsFree) {
  Crowd();
  Edit(Skims()[0]);
  headless::Click(kIdSkimDraw);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  ASSERT_EQ(app.surface, kSurfaceCad);
  EXPECT_EQ(Drawing(), u"Skim centerline 2");
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].y, 1);
  SwitchDrawing(*ActiveTab(), 1);
  EXPECT_EQ(sketch.objectCount, 2);
}

// Lines that were changed and never accepted are the user's work.
TEST_F(SeveralDrawnSkims, AskBeforeLinesThatStandNowhereGiveWay) {
  Crowd();
  SwitchDrawing(*ActiveTab(), 2);
  Line(0, 9, 2, 0);  // nor is it the second skim's
  Edit(Skims()[0]);
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdSkimDraw);
  EXPECT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(Status(), u"A free CAD drawing tab is needed for the skim path.");
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdSkimDraw);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_NE(boxes[1].text.find(u"\u201CSkim centerline\u201D"), std::u16string::npos);
  ASSERT_EQ(app.surface, kSurfaceCad);
  EXPECT_EQ(Drawing(), u"Skim centerline");
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(sketch.objects[0].y, 1);
  SketchUndo();
  ASSERT_EQ(sketch.objectCount, 2);
  EXPECT_EQ(sketch.objects[1].y, 9);
}

TEST_F(SeveralDrawnSkims, NeedADrawingThatMayGiveWay) {
  Crowd();
  for (std::uint32_t i = 1; i <= 2; ++i) {
    SwitchDrawing(*ActiveTab(), i);
    NameActiveDrawing(*ActiveTab(), u"Mine");
  }
  Edit(Skims()[0]);
  headless::Click(kIdSkimDraw);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(Status(), u"A free CAD drawing tab is needed for the skim path.");
}

struct SkimPlacement : support::SkimStage {
  void SetUp() override {
    SkimStage::SetUp();
    OpenSkim();
  }
};

TEST_F(SkimPlacement, MovesTheStockByNumbersAndKeepsItsSize) {
  EXPECT_FALSE(platform::IsVisible(kIdSkimStartX));
  headless::Click(kIdSkimPosition);
  ASSERT_TRUE(platform::IsVisible(kIdSkimStartX));
  EXPECT_EQ(platform::TextOf(kIdSkimThickness), u"0.5000");
  headless::TypeInto(kIdSkimStartX, u"1");
  headless::TypeInto(kIdSkimStartY, u"-2");
  headless::TypeInto(kIdSkimSurfaceZ, u"0.25");
  EXPECT_EQ(skimPlan.xMin, 1);
  EXPECT_EQ(skimPlan.xMax, 5);
  EXPECT_EQ(skimPlan.yMin, -2);
  EXPECT_EQ(skimPlan.yMax, 2);
  EXPECT_EQ(skimPlan.zTop, 0.25);
  EXPECT_EQ(Says(kSkimXMax), u"5.0000");
  EXPECT_EQ(Says(kSkimZTop), u"0.2500");
}

TEST_F(SkimPlacement, RefusesBadNumbersAndKeepsThePlace) {
  headless::Click(kIdSkimPosition);
  for (const char16_t* text : {u"0", u"-1", u"", u"1,5"}) {
    headless::TypeInto(kIdSkimThickness, text);
    EXPECT_EQ(Status(), u"Enter valid start coordinates and positive stock thickness.");
    EXPECT_EQ(skimPlan.stockThickness, 0.5);
  }
  headless::TypeInto(kIdSkimThickness, u"2");
  EXPECT_EQ(skimPlan.stockThickness, 2);
}

TEST_F(SkimPlacement, WaitsForAPlanThatReads) {
  Type(kSkimXMax, u"");
  headless::Click(kIdSkimPosition);
  EXPECT_EQ(Status(), u"Correct skim inputs before placing the area.");
  EXPECT_FALSE(platform::IsVisible(kIdSkimStartX));
}

TEST_F(SkimPlacement, FollowsTheEdgesThatAreTyped) {
  headless::Click(kIdSkimPosition);
  Type(kSkimXMin, u"0.5");
  EXPECT_EQ(platform::TextOf(kIdSkimStartX), u"0.5000");
}

PlacePick asked;
bool Ask(const PlacePick& pick) {
  asked = pick;
  return true;
}

TEST_F(SkimPlacement, TakesCornerAndSurfaceFromGeometry) {
  hooks.pickPlace = Ask;
  headless::Click(kIdSkimPosition);
  headless::Click(kIdSkimPickGeometry);
  EXPECT_EQ(asked.from, PlaceSource::Geometry);
  EXPECT_EQ(std::u16string_view(asked.words),
            u"Click a drawing endpoint, stock corner or stock top center to place the skim area.");
  asked.done({true, 2, 3, -0.25, true, 0.5});  // a lower corner
  EXPECT_EQ(skimPlan.xMin, 2);
  EXPECT_EQ(skimPlan.yMax, 7);
  EXPECT_EQ(skimPlan.zTop, 0.5);
  EXPECT_EQ(platform::TextOf(kIdSkimStartX), u"2.0000");
  asked.done({false});
  EXPECT_EQ(skimPlan.xMin, 2);
}

// A pocket that was cut to half an inch below the surface.
struct SkimPlacementByClick : SkimPlacement {
  void SetUp() override {
    support::SkimStage::SetUp();
    headless::EditorSetAll(kIdEditor,
                           u"G20\r\nG90\r\nG00 X6 Y1 Z0.1\r\nG01 Z-0.5 F10\r\nG01 X9\r\n"
                           u"G01 Y3\r\nG01 X6\r\nG01 Y1\r\nG00 Z1\r\n");
    headless::Click(kIdPath);
    OpenSkim();
    headless::Click(kIdSkimPosition);
  }
  static void Click(double x, double y, double z) {
    ASSERT_TRUE(headless::Click(kIdSkimPickGeometry));
    const Projection& p = ProjectionFor(platform::ClientArea(kViewToolpath));
    const platform::PointF at = Project(p, x, y, z);
    platform::PointerEvent press;
    press.action = platform::PointerAction::Press;
    press.button = platform::PointerButton::Left;
    press.x = static_cast<int>(std::lround(at.x));
    press.y = static_cast<int>(std::lround(at.y));
    headless::Pointer(kViewToolpath, press);
  }
};

TEST_F(SkimPlacementByClick, KeepsTheSurfaceOverAPocketThatWasCut) {
  SetViewTop();
  const double places[][2] = {{9, 1}, {9, 3}, {6, 3}, {6, 1}};
  for (const auto& place : places) {
    Click(place[0], place[1], -0.5);
    EXPECT_NEAR(skimPlan.xMin, place[0], 1e-9);
    EXPECT_NEAR(skimPlan.yMin, place[1], 1e-9);
    EXPECT_EQ(skimPlan.zTop, 0);
  }
  EXPECT_EQ(Status(), u"Skim area placed at X 6.0000  Y 1.0000  Z 0.0000 (Z kept)");
}

TEST_F(SkimPlacementByClick, SinksTheStockByNoCornerOfItsOwn) {
  headless::TypeInto(kIdSkimSurfaceZ, u"0.25");
  for (int i = 0; i < 3; ++i) {
    Click(skimPlan.xMin, skimPlan.yMin, skimPlan.zTop - skimPlan.stockThickness);
    EXPECT_EQ(skimPlan.zTop, 0.25);
  }
  EXPECT_EQ(Status(), u"Skim area placed at X 0.0000  Y 0.0000  Z 0.2500");
}

// One edge typed away from what a plan may hold would leave a stock that only other fields mend.
TEST_F(SkimPlacement, StaysWhereTheStockWouldReachTooFar) {
  hooks.pickPlace = Ask;
  headless::Click(kIdSkimPosition);
  headless::TypeInto(kIdSkimStartX, u"99998");
  EXPECT_EQ(Status(), u"Enter valid start coordinates and positive stock thickness.");
  EXPECT_EQ(skimPlan.xMin, 0);
  EXPECT_EQ(skimPlan.xMax, 4);
  EXPECT_TRUE(skimWizard.planValid);
  headless::Click(kIdSkimPickPlane);
  asked.done({true, 1, 99999, 0});
  EXPECT_EQ(Status(), u"Not placed: the skim area would reach beyond 100000.");
  EXPECT_EQ(skimPlan.yMax, 4);
  headless::TypeInto(kIdSkimStartX, u"2");
  EXPECT_EQ(skimPlan.xMin, 2);
}

// A field shows 4 decimals; what nobody typed over keeps the others.
TEST_F(SkimPlacement, KeepsTheDecimalsOfWhatWasNotTyped) {
  headless::Click(kIdSkimPosition);
  headless::Click(kIdSkimMm);
  headless::TypeInto(kIdSkimSurfaceZ, u"1");
  headless::Click(kIdSkimInch);
  const double surface = skimPlan.zTop;
  const double thickness = skimPlan.stockThickness;
  EXPECT_NEAR(surface, 1 / 25.4, 1e-9);
  headless::TypeInto(kIdSkimStartY, u"2");
  EXPECT_EQ(skimPlan.yMin, 2);
  EXPECT_EQ(skimPlan.zTop, surface);
  EXPECT_EQ(skimPlan.stockThickness, thickness);
}

TEST_F(SkimPlacement, KeepsTheSurfaceWherePickedFreely) {
  hooks.pickPlace = Ask;
  headless::Click(kIdSkimPosition);
  headless::TypeInto(kIdSkimSurfaceZ, u"0.75");
  headless::Click(kIdSkimPickPlane);
  EXPECT_EQ(asked.from, PlaceSource::Plane);
  EXPECT_DOUBLE_EQ(asked.planeZ(), 0.75);
  asked.done({true, -1, -1, 0});
  EXPECT_EQ(skimPlan.xMin, -1);
  EXPECT_DOUBLE_EQ(skimPlan.zTop, 0.75);
}

TEST_F(SkimPlacement, TakesAPlaceOfTheDrawing) {
  headless::Click(kIdSkimPosition);
  headless::Click(kIdSkimPickDrawing);
  ASSERT_EQ(app.surface, kSurfaceCad);
  SetSketchSnap(false);
  platform::PointerEvent press;
  press.action = platform::PointerAction::Press;
  press.button = platform::PointerButton::Left;
  press.leftDown = true;
  press.x = ToCanvas(1.5, 2.5).x;
  press.y = ToCanvas(1.5, 2.5).y;
  double x = 0;
  double y = 0;
  FromCanvas(press.x, press.y, x, y);
  headless::Pointer(kViewCadCanvas, press);
  EXPECT_EQ(app.surface, kSurfaceSkim);
  EXPECT_NEAR(skimPlan.xMin, x, 1e-9);
  EXPECT_NEAR(skimPlan.yMin, y, 1e-9);
  EXPECT_EQ(Status(), u"Skim area moved in drawing coordinates.");
  EXPECT_EQ(sketch.objectCount, 0);
}

}  // namespace
}  // namespace morva
