// The drawing workspace on the real window, and a hand on its canvas. For the tests of CAD jobs.
#pragma once

#include <QApplication>
#include <QTest>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "cad/geometry/canvas_view.h"
#include "desk/at_desk.h"
#include "platform/window.h"

class CadDesk : public AtDesk {
 protected:
  void SetUp() override {
    AtDesk::SetUp();
    desk::Click(morva::kIdSurfaceCad);
    ASSERT_TRUE(desk::Until([]() { return morva::app.surface == morva::kSurfaceCad; }));
    ASSERT_EQ(QApplication::focusWidget(), Canvas());
  }

  static QWidget* Canvas() { return desk::WidgetOf(morva::kViewCadCanvas); }
  static QPoint At(double x, double y) {
    const platform::Point p = morva::ToCanvas(x, y);
    return QPoint(p.x, p.y);
  }
  static void Move(double x, double y) { desk::MovePointer(Canvas(), At(x, y)); }
  static void ClickAt(double x, double y, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    Move(x, y);
    QTest::mouseClick(Canvas(), Qt::LeftButton, keys, At(x, y));
  }
  static void Drag(double x0, double y0, double x1, double y1) {
    Move(x0, y0);
    QTest::mousePress(Canvas(), Qt::LeftButton, Qt::NoModifier, At(x0, y0));
    Move((x0 + x1) / 2, (y0 + y1) / 2);
    Move(x1, y1);
    QTest::mouseRelease(Canvas(), Qt::LeftButton, Qt::NoModifier, At(x1, y1));
  }
  // Types over what a field holds.
  static void Fill(int id, const char* text) {
    desk::WidgetOf(id)->setFocus();
    desk::Key(id, Qt::Key_A, Qt::ControlModifier);
    desk::TypeInto(id, QString::fromLatin1(text));
  }
  // As at any desk, with the window's width in the picture's name.
  static void Show(const char* step) {
    QString file = QString::fromLatin1(step);
    file.replace(QStringLiteral(".png"),
                 QStringLiteral("_%1.png").arg(desk::WidgetOf(platform::kMainWindow)->width()));
    AtDesk::Show(file.toLatin1().constData());
  }
};
