// The guided skim on the real window: its pages at both sizes, by keyboard and by pointer.

#include <vector>

#include "cad/model/sketch.h"
#include "desk/at_desk.h"
#include "library/tools.h"
#include "platform/window.h"
#include "shell/modes.h"
#include "skim/model/plan.h"
#include "skim/model/wizard_state.h"

namespace {

class SkimAtTheDesk : public AtDesk {
 protected:
  void SetUp() override {
    AtDesk::SetUp();
    morva::ToolRecord tool;
    tool.number = 3;
    constexpr std::u16string_view kType = u"Face Mill";
    std::copy(kType.begin(), kType.end(), tool.type);
    constexpr std::u16string_view kName = u"2 IN FACE MILL";
    std::copy(kName.begin(), kName.end(), tool.name);
    tool.diameter = 2;
    tool.gaugeLength = 4;
    tool.stickout = 2;
    ASSERT_GE(morva::AppendTool(tool), 0);
    morva::RefreshToolLists();
    morva::SetMode(morva::kModeWizard);
    desk::Click(morva::kIdWizardInsert);
    ASSERT_TRUE(desk::Until([] { return morva::SkimIsUp(); }));
  }
  static void TypeOver(int id, const char* text) {
    desk::Key(id, Qt::Key_A, Qt::ControlModifier);
    desk::TypeInto(id, QString::fromLatin1(text));
  }
  static int Field(int field) { return morva::kIdSkimField + field; }
  static void ShowPage(const char* what, int width) {
    Show(QStringLiteral("skim_%1_%2.png")
             .arg(QLatin1String(what))
             .arg(width)
             .toLatin1()
             .constData());
  }
};

TEST_F(SkimAtTheDesk, ShowsEachPageAtBothSizes) {
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    const int width = size.width();
    Resize(width, size.height());
    while (morva::skimWizard.page > 0) desk::Click(morva::kIdSkimBack);
    TypeOver(Field(morva::kSkimXMax), "6");
    ShowPage("stock", width);
    desk::Click(morva::kIdSkimPosition);
    ShowPage("place", width);
    desk::Click(morva::kIdSkimPosition);
    desk::Click(morva::kIdSkimNext);
    ASSERT_TRUE(desk::Until([] { return morva::skimWizard.page == morva::kSkimCutter; }));
    desk::Click(morva::kIdSkimCoverage);
    ShowPage("cutter", width);
    desk::Click(morva::kIdSkimCoverage);
    desk::Click(morva::kIdSkimNext);
    ASSERT_TRUE(desk::Until([] { return morva::skimWizard.page == morva::kSkimDepths; }));
    desk::Click(morva::kIdSkimShowMatrix);
    desk::WidgetOf(Field(morva::kSkimDepthPerPass))->setFocus();
    ShowPage("depths", width);
    desk::Click(morva::kIdSkimNext);
    ASSERT_TRUE(desk::Until([] { return morva::skimWizard.page == morva::kSkimReview; }));
    ShowPage("review_matrix", width);
    desk::Click(morva::kIdSkimShowMatrix);
    ShowPage("review", width);
  }
}

// From the first page to the program without a pointer.
TEST_F(SkimAtTheDesk, IsDoneByKeyboardAlone) {
  Resize(1200, 800);
  ASSERT_TRUE(desk::Until([] { return HasKeyboard(morva::kIdSkimTools); }));
  desk::KeyHere(Qt::Key_Tab);  // tool
  desk::KeyHere(Qt::Key_Tab);  // offset
  for (int field = morva::kSkimXMin; field <= morva::kSkimXMax; ++field) desk::KeyHere(Qt::Key_Tab);
  ASSERT_TRUE(desk::Until([] { return HasKeyboard(Field(morva::kSkimXMax)); }));
  desk::TypeHere(QStringLiteral("6"));
  ASSERT_TRUE(desk::Until([] { return morva::skimPlan.xMax == 6; }));
  desk::KeyHere(Qt::Key_Return);
  ASSERT_TRUE(desk::Until([] { return HasKeyboard(morva::kIdSkimStrategies); }));
  desk::KeyHere(Qt::Key_Down);
  ASSERT_TRUE(desk::Until([] { return morva::skimPlan.strategy == morva::kSkimRightToLeft; }));
  desk::Key(morva::kIdSkimNext, Qt::Key_Space);
  ASSERT_TRUE(desk::Until([] { return HasKeyboard(morva::kIdSkimDepths); }));
  desk::Key(morva::kIdSkimNext, Qt::Key_Space);
  ASSERT_TRUE(desk::Until([] { return morva::skimWizard.page == morva::kSkimReview; }));
  desk::Key(morva::kIdSkimInsert, Qt::Key_Space);
  EXPECT_TRUE(desk::Until([] {
    return desk::TextOf(morva::kIdEditor).contains(QStringLiteral("(WIZARD: GUIDED SKIM / FACE)"));
  }));
  EXPECT_FALSE(morva::SkimIsUp());
  EXPECT_TRUE(desk::Until([] { return HasKeyboard(morva::kIdEditor); }));
}

TEST_F(SkimAtTheDesk, LeavesTheKeyboardBehindCancelOnTheKeyThatLedThere) {
  desk::Key(morva::kIdSkimCancel, Qt::Key_Space);
  ASSERT_TRUE(desk::Until([] { return !morva::SkimIsUp(); }));
  EXPECT_EQ(platform::FocusedId(), morva::kIdWizardInsert);
}

TEST_F(SkimAtTheDesk, PlacesTheStockByAClickInTheView) {
  Resize(1560, 940);
  desk::Click(morva::kIdSkimPosition);
  ASSERT_TRUE(desk::Until([] { return platform::IsVisible(morva::kIdSkimPickPlane); }));
  desk::Click(morva::kIdSkimPickPlane);
  QWidget* const view = desk::WidgetOf(morva::kViewToolpath);
  desk::MovePointer(view, QPoint(view->width() / 3, view->height() / 3));
  QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier,
                    QPoint(view->width() / 3, view->height() / 3));
  EXPECT_TRUE(desk::Until([] { return morva::skimPlan.xMin != 0; }));
  EXPECT_NEAR(morva::skimPlan.xMax - morva::skimPlan.xMin, 4, 1e-9);
  EXPECT_EQ(morva::skimPlan.zTop, 0);
  Show("skim_placed_1560.png");
}

TEST_F(SkimAtTheDesk, TakesADrawnCenterlineByReturn) {
  Resize(1200, 800);
  desk::Click(morva::kIdSkimNext);
  ASSERT_TRUE(desk::Until([] { return HasKeyboard(morva::kIdSkimStrategies); }));
  desk::Click(morva::kIdSkimDraw);
  ASSERT_TRUE(desk::Until([] { return HasKeyboard(morva::kViewCadCanvas); }));
  ASSERT_GE(morva::AppendSketchObject({morva::kTypeLine, 0, 0, 1, 4, 0, 0}), 0);
  Show("skim_centerline_1200.png");
  desk::KeyHere(Qt::Key_Return);
  ASSERT_TRUE(desk::Until([] { return morva::SkimIsUp(); }));
  EXPECT_EQ(morva::skimPlan.strategy, morva::kSkimCustom);
  Show("skim_drawn_1200.png");
}

// The keyboard and the pointer alone: a half-typed page, a look at the program, a drawing that is
// left by Escape although a line in it is selected.
TEST_F(SkimAtTheDesk, KeepsWhatIsTypedOverLooksAway) {
  Resize(1200, 800);
  desk::Click(morva::kIdSkimNext);
  ASSERT_TRUE(desk::Until([] { return HasKeyboard(morva::kIdSkimStrategies); }));
  TypeOver(Field(morva::kSkimFeed), "33");
  TypeOver(Field(morva::kSkimStepover), "100.01");
  ASSERT_TRUE(desk::Until([] { return !morva::skimWizard.planValid; }));
  desk::Click(morva::kIdSurfaceCode);
  ASSERT_TRUE(desk::Until([] { return !morva::SkimIsUp(); }));
  desk::Click(morva::kIdBack);
  ASSERT_TRUE(desk::Until([] { return HasKeyboard(morva::kIdSkimStrategies); }));
  EXPECT_EQ(desk::TextOf(Field(morva::kSkimFeed)), QStringLiteral("33"));
  EXPECT_EQ(desk::TextOf(Field(morva::kSkimStepover)), QStringLiteral("100.01"));
  desk::Click(morva::kIdSkimDraw);
  ASSERT_TRUE(desk::Until([] { return HasKeyboard(morva::kViewCadCanvas); }));
  ASSERT_GE(morva::AppendSketchObject({morva::kTypeLine, 0, 0, 1, 4, 0, 0}), 0);
  morva::SetSelected(0);
  desk::KeyHere(Qt::Key_Escape);
  ASSERT_TRUE(desk::Until([] { return HasKeyboard(morva::kIdSkimStrategies); }));
  EXPECT_EQ(desk::TextOf(Field(morva::kSkimFeed)), QStringLiteral("33"));
  EXPECT_EQ(desk::TextOf(Field(morva::kSkimStepover)), QStringLiteral("100.01"));
  TypeOver(Field(morva::kSkimStepover), "50");
  EXPECT_TRUE(desk::Until([] { return morva::skimPlan.feed == 33; }));
}

}  // namespace
