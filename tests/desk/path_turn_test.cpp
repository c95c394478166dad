// A long path that is turned with the pointer on the real window: thin while it turns, and the same
// picture as before when it is back and rests.

#include <QEvent>
#include <QImage>
#include <QObject>
#include <QTest>
#include <QWidget>

#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "simulator/shown_path.h"
#include "simulator/view_parts.h"

namespace {

class PaintCount : public QObject {
 public:
  int count = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    count += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
};

class LongPath : public AtDesk {
 protected:
  static QWidget* View() { return desk::WidgetOf(morva::kViewToolpath); }
  static QImage Look() { return View()->grab().toImage(); }
  static void TurnBy(int pixels) {
    const QPoint from(120, 300);
    QTest::mousePress(View(), Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(View(), from + QPoint(pixels, 0));
    QTest::mouseRelease(View(), Qt::LeftButton, Qt::NoModifier, from + QPoint(pixels, 0));
  }
};

TEST_F(LongPath, IsWholeAgainWhenItRests) {
  QByteArray program = "%\nO1000\nT1 M06\nG0 X0 Y0\nG1 Z-0.3 F10.\n";
  for (int i = 0; i < 30000; ++i) {
    program += "X" + QByteArray::number(i % 2 * 20) + ". Y" +
               QByteArray::number(10.0 * i / 30000, 'f', 4) + "\n";
  }
  Open(Write("long.NC", program + "M30\n%\n"));
  ASSERT_TRUE(desk::Until([]() { return morva::path.count > 30000; }, 20000));
  desk::Click(morva::kIdPath);
  TurnBy(0);  // takes the keyboard, which a frame around the view shows
  TurnBy(20);
  ASSERT_TRUE(desk::Until([]() { return !morva::ViewMoves(); }));
  const QImage still = Look();
  TurnBy(20);
  TurnBy(-20);
  ASSERT_TRUE(morva::ViewMoves());
  EXPECT_NE(Look(), still);
  View()->repaint();  // what the turns asked for
  PaintCount painted;
  View()->installEventFilter(&painted);
  ASSERT_TRUE(desk::Until([]() { return !morva::ViewMoves(); }));
  EXPECT_TRUE(desk::Until([&painted]() { return painted.count > 0; }));
  EXPECT_EQ(Look(), still);
}

}  // namespace
