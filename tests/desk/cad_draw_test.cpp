// Draw tools and dimensions on the real window: methods by rest and by Down, sizes by the keyboard
// alone, tangents, polygons, labels and the measure.

#include <QApplication>
#include <QCursor>
#include <QElapsedTimer>
#include <QTest>
#include <QWindow>
#include <cmath>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "cad/canvas/canvas_pointer.h"
#include "cad/geometry/canvas_view.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/tools/dimension_paint.h"
#include "desk/cad_desk.h"
#include "platform/window.h"

namespace {

using morva::sketch;
using morva::tools;

class CadDraw : public CadDesk {
 protected:
  static void ClickPixel(QPoint at, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    desk::MovePointer(Canvas(), at);
    QTest::mouseClick(Canvas(), Qt::LeftButton, keys, at);
  }
  static const morva::SketchObject& Last() { return sketch.objects[sketch.objectCount - 1]; }

  // Types and presses keys into whatever has the keyboard.
  static void Type(const char* text) { desk::TypeHere(QString::fromLatin1(text)); }
  static void Key(Qt::Key key) { desk::KeyHere(key); }

  // The Down key on a tool key, and the method of its popup.
  static void Choose(int key, const char* method) {
    desk::AnswerMenu(QString::fromUtf8(method));
    desk::Key(key, Qt::Key_Down);
  }
  static void PointAt(int id) {
    QWidget* widget = desk::WidgetOf(id);
    QCursor::setPos(widget->mapToGlobal(widget->rect().center()));
  }
  static QString Status() { return desk::TextOf(morva::kIdCadStatus); }
  static QString Hint() { return desk::TextOf(morva::kIdCadHint); }
};

TEST_F(CadDraw, MethodsAreChosenByRestAndByDownAndDrawByClicks) {
  const QString standing = Hint();
  // A rest of the pointer opens the methods of the key; one of them starts.
  desk::AnswerMenu(QString::fromUtf8("Circle — three perimeter points"));
  PointAt(morva::kIdCadCircle);
  ASSERT_TRUE(
      desk::Until([]() { return tools.constructionMethod == morva::kIdMethodCircleThree; }));
  EXPECT_EQ(QApplication::focusWidget(), Canvas());
  ClickAt(1, 0);
  ClickAt(0, 1);
  Move(-0.6, 0.4);
  EXPECT_TRUE(Status().startsWith(QStringLiteral("CAD cursor")));
  EXPECT_EQ(Hint(), QStringLiteral("Pick the third point to set the circle, height or width."));
  Show("draw_1_three_points.png");
  ClickAt(-1, 0);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_NEAR(Last().x, 0, 1e-9);
  EXPECT_NEAR(Last().size, 2, 1e-9);

  // From (-2, 0) the tangents of the unit circle are root 3 long, 30 degrees up and down.
  Choose(morva::kIdCadLine, "Line — tangent to circle");
  ASSERT_EQ(tools.constructionMethod, morva::kIdMethodLineTangent);
  ClickAt(-2, 0);
  EXPECT_EQ(Hint(), QStringLiteral("Click the desired tangent side of a circle."));
  ClickAt(-0.5, 0.87);
  ASSERT_EQ(sketch.objectCount, 2);
  EXPECT_NEAR(Last().size, std::sqrt(3), 1e-6);
  EXPECT_NEAR(Last().angle, 30, 1e-5);
  EXPECT_EQ(Last().x, -2);

  // With Alt down the very pixel counts; without it the grid of 0.05.
  desk::Click(morva::kIdCadLine);
  const QPoint off = At(2.02, 1.52);
  double x = 0;
  double y = 0;
  morva::FromCanvas(off.x(), off.y(), x, y);
  ASSERT_GT(std::fabs(x / 0.05 - std::round(x / 0.05)), 0.01);
  ClickPixel(off, Qt::AltModifier);
  ClickPixel(At(3, 1.5));
  ASSERT_EQ(sketch.objectCount, 3);
  EXPECT_EQ(Last().x, x);
  EXPECT_EQ(Last().y, y);
  ClickPixel(At(2.02, -1.52));
  ClickPixel(At(3, -1.5));
  EXPECT_NEAR(Last().x, 2, 1e-9);
  EXPECT_NEAR(Last().y, -1.5, 1e-9);

  // A square by its center and a corner of the polygon.
  desk::Click(morva::kIdCadPolygon);
  desk::WidgetOf(morva::kIdCadPolygonSides)->setFocus();
  desk::Key(morva::kIdCadPolygonSides, Qt::Key_A, Qt::ControlModifier);
  Type("4");
  ClickAt(-3, -1.5);
  Move(-3, -0.7);
  Show("draw_2_polygon.png");
  ClickAt(-3, -0.5);
  ASSERT_EQ(sketch.objectCount, 8);
  for (int i = 4; i < 8; ++i) EXPECT_NEAR(sketch.objects[i].size, std::sqrt(2), 1e-6);
  EXPECT_NEAR(sketch.objects[4].y, -0.5, 1e-6);

  Key(Qt::Key_Escape);
  EXPECT_EQ(tools.constructionMethod, 0);
  EXPECT_EQ(Hint(), standing);
}

TEST_F(CadDraw, AToolKeyThatIsHeldDownOpensNoMethods) {
  QWidget* key = desk::WidgetOf(morva::kIdCadRectangle);
  QWindow* window = desk::WidgetOf(platform::kMainWindow)->windowHandle();
  const QPoint in = key->mapTo(desk::WidgetOf(platform::kMainWindow), key->rect().center());
  PointAt(morva::kIdCadRectangle);
  QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, in);
  QElapsedTimer held;
  held.start();
  EXPECT_TRUE(platform::ButtonHeld());
  bool opened = false;
  while (held.elapsed() < 1000) {
    desk::Run(10);
    if (QWidget* popup = QApplication::activePopupWidget()) {
      opened = true;
      popup->close();
      break;
    }
  }
  EXPECT_FALSE(opened);
  EXPECT_EQ(tools.constructionMethod, 0);
  QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, in);
  EXPECT_FALSE(platform::ButtonHeld());
  EXPECT_TRUE(desk::Until([]() { return tools.constructionMethod == morva::kIdMethodRectangle; }));
}

// From the keys of the strip to the drawing and back, with no pointer: in each width of the window
// a line, a circle about its end, a selection and its end by Delete.
TEST_F(CadDraw, EverythingIsDrawnByTheKeyboardAlone) {
  const auto hold = [](Qt::Key key, Qt::KeyboardModifiers with, int times) {
    for (int i = 0; i < times; ++i) desk::KeyHere(key, with);
  };
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    Resize(size.width(), size.height());
    desk::MovePointer(desk::WidgetOf(platform::kMainWindow), QPoint(5, 5));
    desk::WidgetOf(morva::kIdCadLine)->setFocus();
    Key(Qt::Key_Space);
    ASSERT_EQ(tools.constructionMethod, morva::kIdMethodLine);
    ASSERT_EQ(QApplication::focusWidget(), Canvas());
    Key(Qt::Key_Left);  // brings the cross
    EXPECT_EQ(Status(), QStringLiteral("CAD cursor  X 0.0000  Y 0.0000 in"));
    hold(Qt::Key_Left, Qt::NoModifier, 5);
    hold(Qt::Key_Down, Qt::AltModifier, 4);
    EXPECT_EQ(Status(), QStringLiteral("CAD cursor  X -2.0000  Y -0.2000 in"));
    Key(Qt::Key_Return);
    EXPECT_EQ(Hint(), QStringLiteral("Pick the second construction point."));
    hold(Qt::Key_Right, Qt::NoModifier, 8);
    Show("draw_6_keys_line.png");
    Key(Qt::Key_Enter);
    ASSERT_EQ(sketch.objectCount, 1);
    EXPECT_EQ(Last().type, morva::kTypeLine);
    EXPECT_NEAR(Last().x, -2, 1e-9);
    EXPECT_NEAR(Last().y, -0.2, 1e-9);
    EXPECT_NEAR(Last().size, 3.2, 1e-9);
    EXPECT_NEAR(Last().angle, 0, 1e-6);

    desk::WidgetOf(morva::kIdCadCircle)->setFocus();
    Key(Qt::Key_Space);
    Key(Qt::Key_Space);  // on the drawing: its middle, where the line ends
    hold(Qt::Key_Up, Qt::NoModifier, 2);
    Show("draw_7_keys_circle.png");
    Key(Qt::Key_Space);
    ASSERT_EQ(sketch.objectCount, 2);
    EXPECT_EQ(Last().type, morva::kTypeCircle);
    EXPECT_NEAR(Last().x, 1.2, 1e-6);
    EXPECT_NEAR(Last().y, -0.2, 1e-6);
    // The first step comes to the line of the grid at 0, the second to the next.
    EXPECT_NEAR(Last().size, 2 * 0.6, 1e-6);

    Key(Qt::Key_Escape);
    EXPECT_EQ(tools.constructionMethod, 0);
    Key(Qt::Key_Left);
    hold(Qt::Key_Left, Qt::NoModifier, 6);
    hold(Qt::Key_Down, Qt::NoModifier, 1);
    hold(Qt::Key_Down, Qt::AltModifier, 4);
    Show("draw_8_keys_select.png");
    Key(Qt::Key_Return);
    EXPECT_EQ(sketch.selected, 0);
    desk::KeyHere(Qt::Key_Up, Qt::ControlModifier);
    Key(Qt::Key_Delete);
    ASSERT_EQ(sketch.objectCount, 1);
    EXPECT_EQ(Last().type, morva::kTypeCircle);
    Key(Qt::Key_Delete);
    ASSERT_EQ(sketch.objectCount, 0);
    Key(Qt::Key_Escape);
    Key(Qt::Key_Home);
    // A move of the pointer over the drawing takes the cross away.
    Key(Qt::Key_Up);
    ASSERT_TRUE(morva::CrosshairShown());
    Move(-1, -1);
    EXPECT_FALSE(morva::CrosshairShown());
  }
}

TEST_F(CadDraw, SizesAreTypedByTheKeyboardAloneAndLabelsEditThem) {
  desk::Click(morva::kIdCadRectangle);
  ClickAt(-2, -1);
  Move(0, 1);
  Key(Qt::Key_Tab);
  ASSERT_EQ(QApplication::focusWidget(), desk::WidgetOf(morva::kIdCadSizeBox1));
  Type("2.5");
  Key(Qt::Key_Tab);
  ASSERT_EQ(QApplication::focusWidget(), desk::WidgetOf(morva::kIdCadSizeBox2));
  Show("draw_3_typed.png");
  Type("1.25");
  Key(Qt::Key_Return);
  ASSERT_EQ(sketch.objectCount, 1);
  EXPECT_EQ(Last().size, 2.5);
  EXPECT_EQ(Last().size2, 1.25);
  EXPECT_NEAR(Last().x, -0.75, 1e-9);
  EXPECT_NEAR(Last().y, -0.375, 1e-9);
  ASSERT_EQ(QApplication::focusWidget(), Canvas());

  // The label of the height takes a new one; the center stays.
  desk::Click(morva::kIdCadDimension);
  ASSERT_TRUE(desk::Until([]() { return morva::DimensionLabel(0, 1).right > 0; }));
  const platform::Rect label = morva::DimensionLabel(0, 1);
  ClickPixel(QPoint((label.left + label.right) / 2, (label.top + label.bottom) / 2));
  EXPECT_EQ(tools.dimensionPart, 1);
  ASSERT_EQ(QApplication::focusWidget(), desk::WidgetOf(morva::kIdCadDimensionValue));
  EXPECT_EQ(desk::TextOf(morva::kIdCadDimensionValue), QStringLiteral("1.2500"));
  Show("draw_4_label.png");
  Type("3");
  Key(Qt::Key_Return);
  EXPECT_EQ(sketch.objects[0].size2, 3);
  // The next number takes the place of the one that stands there.
  Type("2");
  Key(Qt::Key_Return);
  EXPECT_EQ(sketch.objects[0].size2, 2);
  EXPECT_EQ(sketch.objects[0].size, 2.5);
  EXPECT_NEAR(sketch.objects[0].y, -0.375, 1e-9);
  Key(Qt::Key_Escape);
  EXPECT_FALSE(tools.dimensionMode);
  EXPECT_EQ(QApplication::focusWidget(), Canvas());

  // A measure from corner to corner changes nothing: the diagonal of 2.5 by 2.
  const int steps = sketch.undoDepth;
  Choose(morva::kIdCadDimension, "Measure");
  ASSERT_TRUE(tools.measureMode);
  ClickAt(-2, -1.375);
  EXPECT_EQ(Hint(), QStringLiteral("Measure: click second point."));
  ClickAt(0.5, 0.625);
  EXPECT_EQ(tools.constructionClicks, 2);
  EXPECT_NEAR(std::hypot(tools.pointsX[1] - tools.pointsX[0], tools.pointsY[1] - tools.pointsY[0]),
              std::sqrt(10.25), 1e-6);
  Show("draw_5_measure.png");
  EXPECT_EQ(sketch.undoDepth, steps);
  Key(Qt::Key_Escape);
  EXPECT_FALSE(tools.measureMode);
}

}  // namespace
