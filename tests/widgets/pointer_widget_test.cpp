// The pointer's capture gets lost: to a popup, a box, another window, or because the view goes.
#include <gtest/gtest.h>

#include <QDialog>
#include <QMenu>

#include "stand.h"

namespace {

using namespace platform;

constexpr int kView = 50;

void StandWithView() {
  stand::Open();
  ViewSpec view;
  view.id = kView;
  view.className = u"StandView";
  view.takesFocus = true;
  ASSERT_TRUE(MakeView(view));
  SetPlace(kView, {100, 100, 300, 300});
  SetFocusTo(kView);
  QCoreApplication::processEvents();
}

void PressView() {
  QTest::mousePress(WidgetOf(kView), Qt::LeftButton, Qt::NoModifier, QPoint(7, 9));
}

int Losses() {
  int count = 0;
  for (const PointerEvent& event : stand::told.pointers) {
    count += event.action == PointerAction::Lost ? 1 : 0;
  }
  return count;
}

TEST(LostPointer, IsToldWhenTheViewIsHidden) {
  StandWithView();
  PressView();
  SetVisible(kView, false);
  EXPECT_EQ(Losses(), 1);
}

TEST(LostPointer, IsToldWhenABoxOpens) {
  StandWithView();
  PressView();
  QDialog box(WidgetOf(kMainWindow));
  box.setModal(true);
  box.show();
  EXPECT_TRUE(stand::Until([] { return Losses() == 1; }));
}

TEST(LostPointer, IsToldWhenAPopupOpens) {
  StandWithView();
  ASSERT_TRUE(stand::Until([] { return FocusedId() == kView; }));
  PressView();
  QMenu menu;
  menu.addAction(QStringLiteral("Row"));
  menu.popup(QPoint(10, 10));
  EXPECT_TRUE(stand::Until([] { return Losses() == 1; }));
}

TEST(LostPointer, IsToldWhenAnotherWindowBecomesActive) {
  StandWithView();
  ASSERT_TRUE(stand::Until([] { return WidgetOf(kMainWindow)->isActiveWindow(); }));
  PressView();
  QWidget other;
  other.show();
  other.activateWindow();
  EXPECT_TRUE(stand::Until([] { return Losses() == 1; }));
}

TEST(LostPointer, IsNotToldWithNothingHeld) {
  StandWithView();
  PressView();
  QTest::mouseRelease(WidgetOf(kView), Qt::LeftButton, Qt::NoModifier, QPoint(7, 9));
  SetVisible(kView, false);
  EXPECT_EQ(Losses(), 0);
}

TEST(LostPointer, IsToldOfACaptureWithoutAPress) {
  StandWithView();
  CapturePointer(kView);
  SetVisible(kView, false);
  EXPECT_EQ(Losses(), 1);
  EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
}

}  // namespace
