// The scrolling form and the right button of the CAD workspace on the real window.

#include "cad/model/cad_form.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QTest>
#include <QWheelEvent>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "cad/model/tool_state.h"
#include "desk/cad_desk.h"
#include "platform/window.h"

namespace {

class CadForm : public CadDesk {
 protected:
  static void Wheel(QWidget* widget, int notches) {
    const QPoint at = widget->rect().center();
    QWheelEvent wheel(at, widget->mapToGlobal(at), QPoint(), QPoint(0, 120 * notches), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    // Only a wheel from outside goes on to what lies around a control that leaves it alone.
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    qApp->notify(widget, &wheel);
  }
  static void AskForMenu(QWidget* widget) {
    const QPoint at = widget->rect().center();
    QContextMenuEvent ask(QContextMenuEvent::Mouse, at, widget->mapToGlobal(at));
    QApplication::sendEvent(widget, &ask);
  }
};

TEST_F(CadForm, ScrollsByTheWheelOverWhateverStandsInItAndChangesNoChoice) {
  desk::Click(morva::kIdCadCircularPanel);
  auto* combo = qobject_cast<QComboBox*>(desk::WidgetOf(morva::kIdCadCircularOrientation));
  ASSERT_NE(combo, nullptr);
  combo->setFocus();
  const int row = combo->currentIndex();
  int top = morva::SheetTop(morva::kCadSheet);
  for (const int id : {static_cast<int>(morva::kIdCadLabelFirst) + 1, morva::kIdCadQuantity,
                       morva::kIdCadCircularOrientation, morva::kIdCadQuickCircular,
                       morva::kViewCadSheet, morva::kViewCadScroll}) {
    Wheel(desk::WidgetOf(id), -1);
    EXPECT_EQ(morva::SheetTop(morva::kCadSheet), top + 36) << id;
    top = morva::SheetTop(morva::kCadSheet);
  }
  EXPECT_EQ(combo->currentIndex(), row);
}

// The box is about the drawing and about no field.
TEST_F(CadForm, HasTheKeyboardInItsFieldBehindTheBoxOfGenerate) {
  for (const bool byEnter : {true, false}) {
    desk::Click(morva::kIdCadCutData);
    const int field = morva::kIdCadDepth;
    desk::TypeInto(field, QStringLiteral("0,75"));
    ASSERT_TRUE(desk::Until([]() { return HasKeyboard(morva::kIdCadDepth); }));
    const int seen = desk::BoxesSeen();
    desk::AnswerBox(QStringLiteral("OK"));
    if (byEnter) {
      desk::KeyHere(Qt::Key_Return);
    } else {
      desk::Click(morva::kIdCadGenerate);
    }
    ASSERT_EQ(desk::BoxesSeen(), seen + 1);
    EXPECT_TRUE(desk::Until([]() { return HasKeyboard(morva::kIdCadDepth); }, 2000)) << byEnter;
  }
}

TEST_F(CadForm, AnsweredNowhereARightClickStillGivesUpTheToolInHand) {
  for (const int id : {static_cast<int>(platform::kMainWindow), morva::kIdSurfacePlate,
                       morva::kIdCadStatus, morva::kIdCadQuantity}) {
    desk::Click(morva::kIdCadLine);
    ASSERT_NE(morva::tools.constructionMethod, 0);
    AskForMenu(desk::WidgetOf(id));
    EXPECT_EQ(morva::tools.constructionMethod, 0) << id;
  }
}

}  // namespace
