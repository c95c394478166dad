// What the wizard of the guided skim hands to the toolpath view, and when it takes it back.

#include <string>

#include "app/hooks.h"
#include "app/path_preview.h"
#include "app/surfaces.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "platform/editor.h"
#include "platform/message.h"
#include "simulator/shown_path.h"
#include "skim/model/plan_record.h"
#include "skim/panel/skim_opening.h"
#include "unit/skim/skim_stage.h"

namespace morva {
namespace {

// The last preview and marker, with the texts that they named.
struct Heard {
  PathPreview preview;
  std::u16string text;
  PreviewMarker marker;
  std::u16string words;
  int shown = 0;
  int left = 0;
};
Heard heard;

struct SkimPreview : support::SkimStage {
  void SetUp() override {
    SkimStage::SetUp();
    heard = Heard();
    hooks.showPreview = [](const PathPreview& preview) {
      heard.preview = preview;
      heard.text = preview.text;
      ++heard.shown;
    };
    hooks.markPreview = [](const PreviewMarker& marker) {
      heard.marker = marker;
      heard.words = marker.words;
    };
    hooks.leavePreview = [] { ++heard.left; };
    OpenSkim();
  }
};

TEST_F(SkimPreview, ShowsCodeStockAndCutterOfEveryCharacter) {
  const int before = heard.shown;
  Type(kSkimXMax, u"6.25");
  EXPECT_GT(heard.shown, before);
  EXPECT_EQ(heard.text.find(u"\r\n(WIZARD: GUIDED SKIM / FACE)\r\n"), 0u);
  EXPECT_NE(heard.text.find(u"G01 X6.8500"), heard.text.npos);
  EXPECT_EQ(heard.preview.stock, (PreviewBox{true, 0, 6.25, 0, 4, -0.5, 0}));
  EXPECT_EQ(std::u16string_view(heard.preview.stockWords), u"SKIM AREA");
  EXPECT_EQ(heard.preview.diameter, 1);
  EXPECT_TRUE(heard.preview.levels);
  EXPECT_FALSE(heard.preview.lags);
}

TEST_F(SkimPreview, KeepsTheLastPlanWhileAFieldDoesNotReadAndSaysSo) {
  const std::u16string before = heard.text;
  Type(kSkimXMax, u"4in");
  EXPECT_EQ(heard.text, before);
  EXPECT_TRUE(heard.preview.lags);
  Type(kSkimXMax, u"4");
  EXPECT_FALSE(heard.preview.lags);
}

TEST_F(SkimPreview, PaintsCoverageWhereAskedTo) {
  EXPECT_FALSE(heard.preview.coverage);
  ASSERT_TRUE(headless::Click(kIdSkimCoverage));
  EXPECT_TRUE(heard.preview.coverage);
  EXPECT_EQ(platform::TextOf(kIdSkimCoverage), u"COVERAGE ON");
  headless::Click(kIdSkimCoverage);
  EXPECT_FALSE(heard.preview.coverage);
  EXPECT_EQ(platform::TextOf(kIdSkimCoverage), u"COVERAGE OFF");
}

TEST_F(SkimPreview, SaysWhatTheFieldWithTheKeyboardMeans) {
  Next();
  Next();
  headless::Focus(Field(kSkimDepthPerPass));
  EXPECT_TRUE(heard.marker.shown);
  EXPECT_DOUBLE_EQ(heard.marker.z, -0.125);
  EXPECT_EQ(heard.words, u"Depth of cut per pass = 0.1250 \u2014 Resulting cut plane  Z -0.1250");
  Type(kSkimDepthPerPass, u"0.25");
  headless::Focus(Field(kSkimDepthPerPass));
  EXPECT_DOUBLE_EQ(heard.marker.z, -0.25);
  Type(kSkimDepthPerPass, u"x");
  EXPECT_FALSE(heard.marker.shown);
  Type(kSkimDepthPerPass, u"0.25");
  headless::Focus(kIdSkimNext);
  EXPECT_FALSE(heard.marker.shown);
}

TEST_F(SkimPreview, GivesTheViewBackHoweverItIsLeft) {
  for (const int key :
       {int{kIdSkimCancel}, int{kIdBack}, int{kIdSurfaceCode}, int{kIdSurfaceCad}}) {
    const int before = heard.left;
    headless::Click(key);
    EXPECT_EQ(heard.left, before + 1) << key;
    EXPECT_NE(app.surface, kSurfaceSkim);
    OpenSkim();
  }
}

TEST_F(SkimPreview, FollowsAnotherProgram) {
  const int before = heard.shown;
  headless::Click(kIdTabNew);
  EXPECT_EQ(app.surface, kSurfaceSkim);
  EXPECT_GT(heard.shown, before);
}

struct SkimEnds : support::SkimStage {};

TEST_F(SkimEnds, ShowsTheProgramsOwnPathAgain) {
  headless::EditorSetAll(kIdEditor, u"G20\r\nG90\r\nG00 X0 Y0 Z1\r\nG01 Z-1 F10\r\nG01 X3\r\n");
  headless::Click(kIdPath);
  const int points = OwnedBy(PathOwner::Program).path.count;
  OpenSkim();
  EXPECT_EQ(ShownOwner(), PathOwner::Builder);
  EXPECT_GT(ShownPath().path.count, 20);
  EXPECT_EQ(OwnedBy(PathOwner::Program).path.count, points);
  SetMode(kModeHome);
  EXPECT_EQ(ShownOwner(), PathOwner::Program);
  EXPECT_EQ(ShownPath().path.count, points);
}

// No plan of the wizard's own makes it, but a file can hold it.
TEST_F(SkimEnds, OpensARecordThatIsNoUsablePlanAndSaysWhatIsWrong) {
  SkimPlan plan;
  plan.strategy = 12;
  plan.tool = 2000;
  FeatureSettings record;
  StoreSkimPlan(plan, record);
  ASSERT_TRUE(OpenSkimFromFeature(record));
  EXPECT_FALSE(skimWizard.planValid);
  EXPECT_EQ(Says(kSkimTool), u"2000");
  Next();
  auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text, u"Select a supported skim strategy.");
  EXPECT_EQ(skimWizard.page, kSkimCutter);
  EXPECT_EQ(platform::FocusedId(), kIdSkimStrategies);
}

TEST_F(SkimEnds, IsNoUpdateInAnotherProgram) {
  OpenSkim();
  GoToReview();
  headless::Click(kIdSkimInsert);
  headless::Click(kIdFeatureEdit);
  ASSERT_EQ(app.surface, kSurfaceSkim);
  headless::Click(kIdTabNew);
  EXPECT_EQ(editLink.kind, 0);
  GoToReview();
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"INSERT SKIM");
}

struct SkimUnderEdit : support::SkimStage {
  void SetUp() override {
    SkimStage::SetUp();
    OpenSkim();
    GoToReview();
    headless::Click(kIdSkimInsert);
    headless::Click(kIdFeatureEdit);
    ASSERT_EQ(app.surface, kSurfaceSkim);
    Type(kSkimXMax, u"6");
    GoToReview();
    ASSERT_EQ(platform::TextOf(kIdSkimInsert), u"UPDATE SKIM");
  }
};

TEST_F(SkimUnderEdit, IsItsUpdateAgainBehindALookAtAnotherProgram) {
  const std::int32_t id = editLink.id;
  headless::Click(kIdTabNew);
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"INSERT SKIM");
  EXPECT_EQ(Status(),
            u"The skim under edit stands in another program; INSERT SKIM writes a new block here.");
  headless::Click(kIdTabFirst);
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"UPDATE SKIM");
  EXPECT_EQ(Status(), u"UPDATE SKIM replaces the skim under edit.");
  EXPECT_EQ(editLink.id, id);
  headless::Click(kIdSkimInsert);
  int skims = 0;
  for (const FeatureRecord& row : BlocksOf(Text())) skims += row.settings.kind == kKindSkim;
  EXPECT_EQ(skims, 1);
  EXPECT_NE(Text().find(u"G01 X6.6000"), std::u16string::npos);
}

TEST_F(SkimUnderEdit, IsItsUpdateAgainWhereThePagesCameBackFromADrawing) {
  headless::Click(kIdSurfaceCad);
  headless::Click(kIdTabNew);
  headless::Click(kIdTabFirst);
  headless::Click(kIdBack);
  ASSERT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"UPDATE SKIM");
}

// As *Save All* does: every program comes up in turn, and the first one again, in one command.
TEST_F(SkimUnderEdit, StaysItsUpdateWhereProgramsComeUpAndGoInOneCommand) {
  headless::Click(kIdTabNew);
  headless::Click(kIdTabFirst);
  SwitchTab(1);
  SwitchTab(0);
  SettleSurface();
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"UPDATE SKIM");
  // A link that the user gave up stays so.
  DropEditLink();
  SettleSurface();
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"INSERT SKIM");
  headless::Click(kIdSurfaceCad);
  headless::Click(kIdBack);
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"INSERT SKIM");
}

// Each look is one step of the back key; at its end stands what is not finished.
TEST_F(SkimUnderEdit, IsLedToBehindTwoLooksAway) {
  const int looks[] = {kIdSurfaceCad, kIdSurfacePlate};
  for (const int look : looks) {
    headless::Click(kIdSurfaceCode);
    ASSERT_EQ(app.surface, kSurfaceCode);
    headless::Click(look);
    ASSERT_NE(app.surface, kSurfaceCode);
    headless::Click(kIdBack);
    ASSERT_EQ(app.surface, kSurfaceCode);
    EXPECT_EQ(platform::TextOf(kIdBack), u"\u2190");
    headless::Click(kIdBack);
    ASSERT_EQ(app.surface, kSurfaceSkim);
    EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"UPDATE SKIM");
    EXPECT_EQ(skimPlan.xMax, 6);
  }
}

TEST_F(SkimUnderEdit, IsLedToBehindTwoModes) {
  SetMode(kModeSimulator);
  SetMode(kModeTools);
  headless::Click(kIdBack);
  ASSERT_EQ(app.mode, kModeSimulator);
  headless::Click(kIdBack);
  ASSERT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"UPDATE SKIM");
}

// The mode of the shapes is none that the back key leads back from.
TEST_F(SkimUnderEdit, IsLedToBehindAModeThatRemembersNothing) {
  SetMode(kModeShapes);
  for (int i = 0; i < 2 && app.surface == kSurfaceCode; ++i) headless::Click(kIdBack);
  EXPECT_EQ(app.surface, kSurfaceSkim);
}

// Another block may come under edit in a look at the program.
TEST_F(SkimUnderEdit, IsItsUpdateAgainBehindTheEditOfAnotherBlock) {
  const std::int32_t id = editLink.id;
  headless::Click(kIdSurfaceCode);
  SetMode(kModeShapes);
  headless::Click(kIdShapeInsert);
  headless::Click(kIdFeatureEdit);
  ASSERT_EQ(editLink.kind, kKindShape);
  for (int i = 0; i < 3 && app.surface == kSurfaceCode; ++i) headless::Click(kIdBack);
  ASSERT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(editLink.kind, kKindSkim);
  EXPECT_EQ(editLink.id, id);
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"UPDATE SKIM");
  headless::Click(kIdSkimInsert);
  int skims = 0;
  for (const FeatureRecord& row : BlocksOf(Text())) skims += row.settings.kind == kKindSkim;
  EXPECT_EQ(skims, 1);
}

TEST_F(SkimUnderEdit, IsLedToNoMoreOnceItIsCancelled) {
  headless::Click(kIdSurfaceCode);
  headless::Click(kIdSurfaceCad);
  headless::Click(kIdBack);
  headless::Click(kIdBack);
  ASSERT_EQ(app.surface, kSurfaceSkim);
  headless::Click(kIdSkimCancel);
  ASSERT_EQ(app.surface, kSurfaceCode);
  EXPECT_EQ(app.mode, kModeHome);
  EXPECT_EQ(platform::TextOf(kIdBack), u"\u2190  Home");
  for (int i = 0; i < 3; ++i) headless::Click(kIdBack);
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_EQ(app.mode, kModeHome);
}

// A block that was changed by hand is never written over; the skim may stand beside it.
struct SkimOfAChangedBlock : SkimUnderEdit {
  void SetUp() override {
    SkimUnderEdit::SetUp();
    Replace(u"S1500", u"S1600");
    ASSERT_EQ(platform::TextOf(kIdSkimInsert), u"UPDATE SKIM");
    headless::Advance(500);
    changed = Text();
    headless::TakeBoxes();
  }
  // In the program, by hand, and back to the skim.
  static void Replace(std::u16string_view from, const char16_t* to) {
    headless::Click(kIdSurfaceCode);
    std::u16string text = Text();
    const std::size_t at = text.find(from);
    ASSERT_NE(at, text.npos);
    headless::EditorSetAll(kIdEditor, text.replace(at, from.size(), to));
    headless::Click(kIdBack);
    ASSERT_EQ(app.surface, kSurfaceSkim);
    if (skimWizard.page != kSkimReview) GoToReview();
  }
  static int Skims() {
    int skims = 0;
    for (const FeatureRecord& row : BlocksOf(Text())) skims += row.settings.kind == kKindSkim;
    return skims;
  }
  std::u16string changed;
};

TEST_F(SkimOfAChangedBlock, StaysUnderEditWhereItIsNotWanted) {
  headless::Click(kIdSkimInsert);
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Skim update stopped");
  EXPECT_EQ(boxes[0].text,
            u"The block of this skim was changed, removed or copied since it was opened; no update "
            u"takes its place.\r\n\r\nInsert the skim as a new block? Code that still stands there "
            u"is run as well.");
  EXPECT_EQ(boxes[0].answer, platform::BoxAnswer::No);
  EXPECT_EQ(app.surface, kSurfaceSkim);
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"UPDATE SKIM");
  EXPECT_EQ(skimPlan.xMax, 6);
  EXPECT_EQ(Text(), changed);
}

TEST_F(SkimOfAChangedBlock, StandsBesideItWhereItIsWanted) {
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdSkimInsert);
  EXPECT_EQ(headless::TakeBoxes().size(), 1u);
  EXPECT_EQ(app.surface, kSurfaceCode);
  EXPECT_EQ(Skims(), 2);
  EXPECT_NE(Text().find(u"S1600"), std::u16string::npos);
  EXPECT_NE(Text().find(u"G01 X6.6000"), std::u16string::npos);
  EXPECT_TRUE(OutputHas(u"Guided skim inserted. Each M00 requires Cycle Start to continue."));
  EXPECT_EQ(editLink.kind, 0);
}

// What was changed by hand is taken back meanwhile: nothing is asked.
TEST_F(SkimOfAChangedBlock, IsUpdatedOnceTheChangeIsTakenBack) {
  headless::Click(kIdSkimInsert);
  headless::TakeBoxes();
  Replace(u"S1600", u"S1500");
  headless::Click(kIdSkimInsert);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_EQ(Skims(), 1);
  EXPECT_NE(Text().find(u"G01 X6.6000"), std::u16string::npos);
}

TEST_F(SkimUnderEdit, SaysThatItWasLeftWhereItsProgramIsClosed) {
  headless::Click(kIdTabNew);
  headless::Click(kIdTabFirst);
  ASSERT_EQ(platform::TextOf(kIdSkimInsert), u"UPDATE SKIM");
  headless::QueueAnswer(platform::BoxAnswer::No);
  CloseProgram();
  SettleSurface();
  ASSERT_EQ(app.tabCount, 1);
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"INSERT SKIM");
  EXPECT_EQ(Status(),
            u"The skim under edit was changed or is gone; INSERT SKIM writes a new block.");
}

TEST_F(SkimUnderEdit, SaysThatItWasLeftWhereItsBlockChanged) {
  headless::Click(kIdTabNew);
  tabs[0].text.replace(tabs[0].text.find(u"F12.000"), 3, u"F13");
  headless::Click(kIdTabFirst);
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"INSERT SKIM");
  EXPECT_EQ(Status(),
            u"The skim under edit was changed or is gone; INSERT SKIM writes a new block.");
}

TEST_F(SkimEnds, IsReachedByTheBackKeyOnlyWhileItIsOpen) {
  OpenSkim();
  headless::Click(kIdSurfaceCad);
  headless::Click(kIdBack);
  EXPECT_EQ(app.surface, kSurfaceSkim);
  headless::Click(kIdSurfaceCad);
  headless::Click(kIdBack);
  GoToReview();
  headless::Click(kIdSkimInsert);
  ASSERT_EQ(app.mode, kModeHome);
  headless::Click(kIdBack);
  EXPECT_EQ(app.surface, kSurfaceCode);
}

// The line is drawn on another surface; the block stays the one that is updated.
TEST_F(SkimEnds, UpdatesItsBlockWithALineDrawnMeanwhile) {
  OpenSkim();
  GoToReview();
  headless::Click(kIdSkimInsert);
  headless::Click(kIdFeatureEdit);
  Next();
  headless::Click(kIdSkimDraw);
  ASSERT_EQ(app.surface, kSurfaceCad);
  EXPECT_EQ(editLink.kind, kKindSkim);
  headless::Focus(kViewCadCanvas);
  headless::PressKey({platform::kKeyEscape});
  ASSERT_EQ(app.surface, kSurfaceSkim);
  Next();
  Next();
  EXPECT_EQ(platform::TextOf(kIdSkimInsert), u"UPDATE SKIM");
}

}  // namespace
}  // namespace morva
