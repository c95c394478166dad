// The guided skim's preview on the real window: seen, picked in with the pointer and with the
// keyboard alone, and left without a trace on the program's path.

#include <QTest>
#include <QWidget>

#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/path_preview.h"
#include "desk/at_desk.h"
#include "shell/modes.h"
#include "simulator/place_pick.h"
#include "simulator/preview_state.h"
#include "simulator/shown_path.h"
#include "simulator/view.h"
#include "simulator/view_switches.h"

namespace {

morva::PickedPlace picked;
int answers = 0;
void Tell(const morva::PickedPlace& place) {
  picked = place;
  ++answers;
}

class PreviewAtDesk : public AtDesk {
 protected:
  void SetUp() override {
    AtDesk::SetUp();
    answers = 0;
    // A pocket in a corner, around which a face is placed.
    Open(Write("part.NC",
               "%\nO1000\nT1 M06\nG0 X1 Y1\nG1 Z-0.3 F10.\nX5\nY3\nX1\nY1\nG0 Z0.5\nM30\n%\n"));
    ASSERT_TRUE(desk::Until(
        []() { return desk::TextOf(morva::kIdEditor).contains(QStringLiteral("(MORVA END")); }));
    desk::Click(morva::kIdPath);
  }
  static QWidget* View() { return desk::WidgetOf(morva::kViewToolpath); }
  static QPoint At(double x, double y, double z) {
    const platform::Rect client = platform::ClientArea(morva::kViewToolpath);
    const platform::PointF at = morva::Project(morva::ProjectionFor(client), x, y, z);
    return QPoint(qRound(at.x), qRound(at.y));
  }
  static bool Pick(morva::PlaceSource from) {
    return morva::Call(morva::hooks.pickPlace,
                       morva::PlacePick{from, [] { return 0.25; }, u"Click a place in the view.", Tell});
  }
};

TEST_F(PreviewAtDesk, OfAGuidedSkimShowsItsStockOverTheProgramAndLeavesItAsItWas) {
  const std::int32_t points = morva::path.count;
  const double zoom = morva::view.zoom;
  desk::Click(morva::kIdPlayStart);
  ASSERT_EQ(morva::playback.playHead, 1);
  ASSERT_TRUE(morva::Call(morva::hooks.openSkim));
  ASSERT_TRUE(desk::Until([]() { return morva::PreviewIsShown(); }));
  EXPECT_TRUE(View()->isVisible());
  EXPECT_GE(View()->width(), 450);
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    Resize(size.width(), size.height());
    Show(size.width() == 1200 ? "preview_1200.png" : "preview_1560.png");
  }
  desk::Click(morva::kIdSkimCoverage);
  ASSERT_TRUE(desk::Until([]() { return morva::previewState.coverage; }));
  desk::AnswerMenu(QStringLiteral("Show coverage overlap"));
  desk::Click(morva::kIdViewLayers);
  EXPECT_TRUE(desk::Until([]() { return morva::switches.showOverlap; }));
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    Resize(size.width(), size.height());
    Show(size.width() == 1200 ? "coverage_1200.png" : "coverage_1560.png");
  }
  desk::Click(morva::kIdSkimCancel);
  ASSERT_TRUE(desk::Until([]() { return !morva::PreviewIsShown(); }));
  EXPECT_EQ(morva::ShownOwner(), morva::PathOwner::Program);
  EXPECT_EQ(morva::path.count, points);
  EXPECT_EQ(morva::view.zoom, zoom);
  EXPECT_EQ(morva::playback.playHead, 1);
  EXPECT_TRUE(morva::playback.headInUse);
}

TEST_F(PreviewAtDesk, TakesAPlaceByThePointerAndByTheKeyboardAlone) {
  ASSERT_TRUE(morva::Call(morva::hooks.openSkim));
  ASSERT_TRUE(desk::Until([]() { return morva::PreviewIsShown(); }));
  ASSERT_TRUE(Pick(morva::PlaceSource::Geometry));
  EXPECT_TRUE(HasKeyboard(morva::kViewToolpath));
  EXPECT_EQ(View()->cursor().shape(), Qt::CrossCursor);
  EXPECT_EQ(desk::TextOf(morva::kIdStatusLine), QStringLiteral("Click a place in the view."));
  desk::MovePointer(View(), At(5, 3, -0.3));
  desk::Run(50);
  Show("pick_1200.png");
  QTest::mouseClick(View(), Qt::LeftButton, Qt::NoModifier, At(5, 3, -0.3) + QPoint(3, 2));
  ASSERT_TRUE(desk::Until([]() { return answers == 1; }));
  EXPECT_TRUE(picked.picked);
  EXPECT_DOUBLE_EQ(picked.x, 5);
  EXPECT_DOUBLE_EQ(picked.y, 3);
  EXPECT_EQ(View()->cursor().shape(), Qt::ArrowCursor);

  ASSERT_TRUE(Pick(morva::PlaceSource::Plane));
  desk::KeyHere(Qt::Key_Up);  // to the stock's corner
  desk::KeyHere(Qt::Key_Right);
  desk::KeyHere(Qt::Key_Return);
  ASSERT_TRUE(desk::Until([]() { return answers == 2; }));
  EXPECT_TRUE(picked.picked);
  EXPECT_DOUBLE_EQ(picked.x, morva::GridSpacing());
  EXPECT_DOUBLE_EQ(picked.z, 0.25);

  ASSERT_TRUE(Pick(morva::PlaceSource::Geometry));
  desk::KeyHere(Qt::Key_Escape);
  ASSERT_TRUE(desk::Until([]() { return answers == 3; }));
  EXPECT_FALSE(picked.picked);
  EXPECT_TRUE(morva::PreviewIsShown());
}

}  // namespace
