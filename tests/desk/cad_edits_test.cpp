// Edits of a sketch on the real window: marks, drags, click tools, menus and keys, as a hand
// does them. Places are known to a pixel; snapping is off.

#include <QAbstractScrollArea>
#include <QContextMenuEvent>
#include <cmath>
#include <vector>

#include "cad/geometry/canvas_view.h"
#include "cad/model/cad_hooks.h"
#include "cad/model/sketch.h"
#include "cad/model/tool_state.h"
#include "cad/tools/select_drag.h"
#include "desk/cad_desk.h"
#include "library/outline.h"

namespace {

using morva::sketch;
using morva::SketchObject;

class CadEdits : public CadDesk {
 protected:
  void SetUp() override {
    CadDesk::SetUp();
    desk::Key(morva::kViewCadCanvas, Qt::Key_F8);
    ASSERT_FALSE(sketch.snapOn);
  }
  static void Put(const std::vector<SketchObject>& objects) {
    sketch.objectCount = 0;
    for (const SketchObject& object : objects) morva::AppendSketchObject(object);
    sketch.selected = -1;
    morva::ClearMultiSelect();
    morva::RefreshSketchPanels();
  }
  static void PressAt(double x, double y) {
    Move(x, y);
    QTest::mousePress(Canvas(), Qt::LeftButton, Qt::NoModifier, At(x, y));
  }
  static void ReleaseAt(double x, double y) {
    QTest::mouseRelease(Canvas(), Qt::LeftButton, Qt::NoModifier, At(x, y));
  }
  static void CtrlZ() { desk::Key(morva::kViewCadCanvas, Qt::Key_Z, Qt::ControlModifier); }
  // Two pixels, one for the press and one for the release.
  static double Near() { return 2 / morva::CanvasScale(Canvas()->width()); }
  static void ExpectPlace(double x, double y, double wantedX, double wantedY) {
    EXPECT_NEAR(x, wantedX, Near());
    EXPECT_NEAR(y, wantedY, Near());
  }
  static void ExpectLine(int index, double ax, double ay, double bx, double by) {
    SCOPED_TRACE(index);
    const SketchObject& line = sketch.objects[index];
    EXPECT_EQ(line.type, morva::kTypeLine);
    double x = 0;
    double y = 0;
    morva::LineEndPoint(line, x, y);
    ExpectPlace(line.x, line.y, ax, ay);
    ExpectPlace(x, y, bx, by);
  }
  static QString LastLine() {
    const QStringList lines = desk::RowsOf(morva::kIdCadRecent);
    return lines.isEmpty() ? QString() : lines.last();
  }
  // The toolkit asks for a menu where the pointer is, or where the keyboard is.
  static void AskMenu(QWidget* widget, const QPoint& at, QContextMenuEvent::Reason reason) {
    QContextMenuEvent ask(reason, at, widget->mapToGlobal(at));
    QApplication::sendEvent(widget, &ask);
  }
  static QWidget* Viewport(int id) {
    return qobject_cast<QAbstractScrollArea*>(desk::WidgetOf(id))->viewport();
  }
};

TEST_F(CadEdits, AreMarkedMovedAndReshapedByThePointer) {
  Put({{morva::kTypeLine, 0, -3, 1.5, 2, 0, 0},
       {morva::kTypeCircle, 0, 2, 1, 1, 0, 0},
       {morva::kTypeSlot, 0, 2, -1, 1.5, 0.5, 0},
       {morva::kTypeRectangle, 0, -2, -1, 2, 1, 0}});

  // A band around the line, the circle by Ctrl+click, then both moved by the line.
  PressAt(-3.5, 2);
  Move(-2, 1.7);
  Move(-0.5, 1.1);
  EXPECT_TRUE(morva::SelectDragging());
  Show("edits_1_band.png");
  ReleaseAt(-0.5, 1.1);
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(morva::MultiSelectCount(), 1);
  ClickAt(2.5, 1, Qt::ControlModifier);
  EXPECT_EQ(sketch.selected, 1);
  EXPECT_EQ(morva::MultiSelectCount(), 2);
  Drag(-2.3, 1.5, -2.1, 1.8);
  ExpectLine(0, -2.8, 1.8, -0.8, 1.8);
  ExpectPlace(sketch.objects[1].x, sketch.objects[1].y, 2.2, 1.3);
  EXPECT_EQ(LastLine(), QStringLiteral("Moved geometry"));
  Show("edits_2_marked.png");
  CtrlZ();
  EXPECT_EQ(sketch.objects[0].x, -3);
  EXPECT_EQ(sketch.objects[1].y, 1);
  ClickAt(0, 0);
  EXPECT_EQ(sketch.selected, -1);

  // One handle of each type.
  ClickAt(-2.3, 1.5);
  Drag(-1, 1.5, -1, 2);
  ExpectLine(0, -3, 1.5, -1, 2);
  EXPECT_EQ(LastLine(), QStringLiteral("Pulled geometry handle"));
  ClickAt(2, 1.5);
  Drag(2.5, 1, 3, 1);
  EXPECT_NEAR(sketch.objects[1].size, 2, 2 * Near());
  Drag(2, 1, 2.2, 1);  // its centre moves it
  ExpectPlace(sketch.objects[1].x, sketch.objects[1].y, 2.2, 1);
  ClickAt(1.8, -0.75);
  EXPECT_EQ(sketch.selected, 2);
  Drag(2.75, -1, 3, -1);
  EXPECT_NEAR(sketch.objects[2].size, 2, 2 * Near());
  EXPECT_EQ(sketch.objects[2].size2, 0.5);
  ClickAt(-2.3, -0.5);
  EXPECT_EQ(sketch.selected, 3);
  const int depth = sketch.undoDepth;
  Drag(-1, -0.5, -0.5, 0);
  ASSERT_EQ(sketch.objectCount, 6 + 1);
  ExpectLine(3, -3, -1.5, -1, -1.5);
  ExpectLine(4, -1, -1.5, -0.5, 0);
  Show("edits_3_skewed.png");
  CtrlZ();
  ASSERT_EQ(sketch.objectCount, 4);
  EXPECT_EQ(sketch.objects[3].type, morva::kTypeRectangle);
  EXPECT_EQ(sketch.undoDepth, depth);

  // Escape takes the drag back while the button is down; what follows moves nothing.
  PressAt(-2.3, -0.5);
  Move(-2, 0);
  Move(-1.8, 0.3);
  EXPECT_NE(sketch.objects[3].y, -1);
  desk::Key(morva::kViewCadCanvas, Qt::Key_Escape);
  Move(-1, 1);
  ReleaseAt(-1, 1);
  EXPECT_EQ(sketch.objects[3].x, -2);
  EXPECT_EQ(sketch.objects[3].y, -1);
  EXPECT_EQ(sketch.undoDepth, depth);

  // What is locked says so and stays.
  ClickAt(-2.3, -0.5);
  desk::Click(morva::kIdCadLock);
  ASSERT_EQ(sketch.locked[3], 1);
  PressAt(-2.3, -0.5);
  EXPECT_EQ(desk::TextOf(morva::kIdCadStatus),
            QStringLiteral("This object is locked. Right-click it in Operations to unlock."));
  Show("edits_4_locked.png");
  Move(-2, 0);
  ReleaseAt(-2, 0);
  EXPECT_EQ(sketch.objects[3].y, -1);
  EXPECT_EQ(sketch.undoDepth, depth + 1);
}

TEST_F(CadEdits, JoinTouchAndTrimByClicks) {
  Put({{morva::kTypeLine, 0, -4, -1, 1, 0, 0},
       {morva::kTypeLine, 0, -2, -2, 2.5, 0, 90},
       {morva::kTypeLine, 0, -1, 1.5, 0.5, 0, 90},
       {morva::kTypeCircle, 0, 0.5, 1.5, 1, 0, 0},
       {morva::kTypeCircle, 0, 2.5, 1, 1, 0, 0},
       {morva::kTypeSlot, 0, 2.5, -1, 2, 0.5, 0},
       {morva::kTypeWorkAxis, 0, 2.5, 0, 1, 0, 90}});
  ClickAt(-3.5, -1);
  desk::Click(morva::kIdCadJoin);
  ClickAt(-2, 0);
  ExpectLine(0, -4, -1, -2, -1);
  ExpectLine(1, -2, 0.5, -2, -1);
  EXPECT_EQ(sketch.objects[0].group, sketch.objects[1].group);
  EXPECT_EQ(LastLine(), QStringLiteral("Geometry tool completed"));

  // From (-1, 1.5) to the circle of radius 0.5, 1.5 away: the tangent is root 2 long.
  desk::Click(morva::kIdCadSelect);
  ClickAt(-1, 1.75);
  EXPECT_EQ(sketch.selected, 2);
  desk::Click(morva::kIdCadTangent);
  ClickAt(0.4, 1.9);
  EXPECT_NEAR(sketch.objects[2].size, std::sqrt(2.0), 1e-6);
  EXPECT_GT(sketch.objects[2].angle, 0);
  Show("edits_5_tangent.png");

  // The right halves of a circle and of a slot, which the axis crosses.
  desk::Click(morva::kIdCadTrimAt);
  Move(3, 1);
  EXPECT_GT(morva::tools.previewSegmentCount, 1);
  Show("edits_6_trim_circle.png");
  ClickAt(3, 1);
  EXPECT_EQ(sketch.objectCount, 7 + 18);  // 180 degrees by tens, and one
  ClickAt(3.5, -1);
  EXPECT_EQ(sketch.objectCount, 7 + 18 + 17);  // two halves of flanks and a cap of 16 steps
  Show("edits_7_trim_slot.png");
  for (int i = 0; i < sketch.objectCount; ++i) {
    const SketchObject& object = sketch.objects[i];
    if (object.type != morva::kTypeLine || object.x < 1) continue;
    double x = 0;
    double y = 0;
    morva::LineEndPoint(object, x, y);
    EXPECT_LE(object.x, 2.5 + 1e-6);
    EXPECT_LE(x, 2.5 + 1e-6);
  }
  desk::Key(morva::kViewCadCanvas, Qt::Key_Escape);
  EXPECT_EQ(morva::tools.geometryTool, morva::kGeometryNone);
  CtrlZ();
  CtrlZ();
  ASSERT_EQ(sketch.objectCount, 7);
  EXPECT_EQ(sketch.objects[5].type, morva::kTypeSlot);
}

TEST_F(CadEdits, ComeFromMenusAndKeysToo) {
  Put({{morva::kTypeLine, 0, -3, 1, 2, 0, 0},
       {morva::kTypeCircle, 0, 1, 1, 1, 0, 0},
       {morva::kTypeLine, 0, -3, -1, 2, 0, 0}});
  Move(1, 1);
  desk::AnswerMenu(QStringLiteral("Duplicate"));
  AskMenu(Canvas(), At(1, 1), QContextMenuEvent::Mouse);
  ASSERT_EQ(sketch.objectCount, 4);
  EXPECT_EQ(sketch.objects[3].x, 1.2);
  EXPECT_EQ(sketch.selected, 3);

  // The first row is the first line.
  QWidget* list = Viewport(morva::kIdCadOperations);
  desk::AnswerMenu(QStringLiteral("Lock / Unlock"));
  AskMenu(list, QPoint(60, 8), QContextMenuEvent::Mouse);
  EXPECT_EQ(sketch.selected, 0);
  EXPECT_EQ(sketch.locked[0], 1);
  EXPECT_TRUE(desk::RowsOf(morva::kIdCadOperations)[0].startsWith(QStringLiteral("[locked] 1")));
  desk::Key(morva::kViewCadCanvas, Qt::Key_Delete);
  EXPECT_EQ(sketch.objectCount, 4);
  EXPECT_EQ(desk::TextOf(morva::kIdCadStatus),
            QStringLiteral("This object is locked. Right-click it in Operations to unlock."));
  desk::AnswerMenu(QStringLiteral("Lock / Unlock"));
  AskMenu(list, QPoint(60, 8), QContextMenuEvent::Mouse);
  EXPECT_EQ(sketch.locked[0], 0);

  // By keyboard alone: a row, the menu key, Delete, Cut and Paste, Undo.
  desk::Key(morva::kIdCadOperations, Qt::Key_Home);
  desk::Key(morva::kIdCadOperations, Qt::Key_Down);
  desk::Key(morva::kIdCadOperations, Qt::Key_Down);
  EXPECT_EQ(sketch.selected, 2);
  desk::AnswerMenu(QStringLiteral("Copy"));
  AskMenu(Canvas(), Canvas()->rect().center(), QContextMenuEvent::Keyboard);
  EXPECT_EQ(sketch.selected, 2);
  EXPECT_EQ(LastLine(), QStringLiteral("Copied part"));
  desk::Key(morva::kIdCadOperations, Qt::Key_Delete);
  ASSERT_EQ(sketch.objectCount, 3);
  EXPECT_EQ(LastLine(), QStringLiteral("Deleted geometry"));
  desk::Key(morva::kViewCadCanvas, Qt::Key_V, Qt::ControlModifier);
  ASSERT_EQ(sketch.objectCount, 4);
  EXPECT_EQ(sketch.objects[3].x, -2.8);
  desk::Key(morva::kViewCadCanvas, Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(sketch.objectCount, 3);
  while (sketch.undoDepth > 0) CtrlZ();
  ASSERT_EQ(sketch.objectCount, 3);
  EXPECT_EQ(sketch.objects[2].y, -1);
  EXPECT_EQ(sketch.locked[0], 0);
}

}  // namespace
