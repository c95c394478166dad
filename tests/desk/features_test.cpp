// The feature list and the import panel of the real window: by mouse, by keyboard and by menu.

#include <QAbstractItemView>
#include <QContextMenuEvent>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QStyle>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <QWheelEvent>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "documents/disabled_code.h"
#include "documents/program_tabs.h"
#include "platform/window.h"

namespace {

using namespace morva;

QByteArray Block(int id, const QByteArray& name, const QByteArray& code) {
  const QByteArray number = QByteArray::number(id);
  return "(MORVA TEXT " + number + ")\n(MORVA NAME " + name + ")\n" + code + "\n(MORVA END " +
         number + ")\n";
}

class Features : public AtDesk {
 protected:
  void SetUp() override {
    AtDesk::SetUp();
    ASSERT_TRUE(desk::Until([]() { return desk::RowsOf(kIdFeatureList).size() == 1; }));
  }

  void Open(const char* name, const QByteArray& bytes, int rows) {
    const int before = app.tabCount;
    desk::AnswerFile(Write(name, bytes));
    desk::Click(kIdOpen);
    ASSERT_TRUE(desk::Until([before]() { return app.tabCount == before + 1; }));
    ASSERT_TRUE(desk::Until([rows]() { return desk::RowsOf(kIdFeatureList).size() == rows; }));
  }

  static QWidget* Window() { return desk::WidgetOf(platform::kMainWindow); }
  static QAbstractItemView* List(int id = kIdFeatureList) {
    return qobject_cast<QAbstractItemView*>(desk::WidgetOf(id));
  }
  static QLineEdit* Box() { return qobject_cast<QLineEdit*>(desk::WidgetOf(kIdInlineName)); }
  static QString Row(int row) { return desk::RowsOf(kIdFeatureList).value(row); }
  static QString Code() { return desk::TextOf(kIdEditor); }
  static QString Hint() { return desk::TextOf(kIdFeatureHint); }
  static QRect RowRect(int row) { return List()->visualRect(List()->model()->index(row, 0)); }
  static void ClickRow(int row, int fromRight) {
    const QRect place = RowRect(row);
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                      QPoint(place.right() + 1 - fromRight, place.center().y()));
  }
  static void Press(Qt::Key key) { desk::KeyHere(key); }

  // What the next popup offers; it is then walked with the arrow keys to the item that begins
  // so, or closed by Escape.
  static void WalkMenu(const QString& wanted, QStringList* items) {
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, qApp, [timer, wanted, items]() {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (!menu || !menu->isVisible()) return;
      timer->deleteLater();
      int steps = 0;
      int found = 0;
      for (const QAction* action : menu->actions()) {
        if (items) *items << (action->isSeparator() ? QStringLiteral("-") : action->text());
        if (action->isSeparator()) continue;
        ++steps;
        if (!wanted.isEmpty() && action->text().startsWith(wanted)) found = steps;
      }
      for (int i = 0; i < found; ++i) QTest::keyClick(menu, Qt::Key_Down);
      QTest::keyClick(menu, found > 0 ? Qt::Key_Return : Qt::Key_Escape);
    });
    timer->start(15);
  }
  static void RightClick(int id, const QPoint& at) {
    QContextMenuEvent ask(QContextMenuEvent::Mouse, at, List(id)->viewport()->mapToGlobal(at));
    QApplication::sendEvent(List(id)->viewport(), &ask);
  }
  static void MenuKey(int id) {
    List(id)->setFocus();
    const QPoint at = List(id)->viewport()->rect().center();
    QContextMenuEvent ask(QContextMenuEvent::Keyboard, at, List(id)->viewport()->mapToGlobal(at));
    QApplication::sendEvent(List(id)->viewport(), &ask);
  }
  // Tab until the control has the keyboard.
  static bool TabTo(int id) {
    for (int i = 0; i < 90; ++i) {
      if (desk::WidgetOf(id)->hasFocus()) return true;
      // Out of the code editor, which takes Tab for itself, Ctrl+Tab leads on.
      const bool code = desk::WidgetOf(kIdEditor)->hasFocus();
      desk::KeyHere(Qt::Key_Tab, code ? Qt::ControlModifier : Qt::NoModifier);
    }
    return false;
  }
};

TEST_F(Features, ADoubleClickOnTheNameEditsAndLeavesNoRenameBox) {
  // Through the window, as the pointer does it: the box that the first click opens lies under
  // the second one.
  const QPoint at = List()->viewport()->mapTo(Window(), RowRect(0).center() - QPoint(40, 0));
  QTest::mouseDClick(Window()->windowHandle(), Qt::LeftButton, {}, at);
  EXPECT_TRUE(desk::Until([]() {
    return Hint() == QStringLiteral("User code: edit the selected block directly. Rename below.");
  }));
  EXPECT_FALSE(Box()->isVisible());
  EXPECT_TRUE(desk::WidgetOf(kIdEditor)->hasFocus());
}

TEST_F(Features, TheRenameBoxGoesWithTheWheelAndEndsOutOfView) {
  QByteArray text;
  for (int i = 1; i <= 30; ++i) text += Block(i, "Block " + QByteArray::number(i), "M8");
  Open("part.NC", text, 30);
  ClickRow(4, 120);
  ASSERT_TRUE(Box()->isVisible());
  const auto boxOnRow = [](int row) {
    return Box()->mapToGlobal(QPoint(0, 0)) ==
           List()->viewport()->mapToGlobal(RowRect(row).topLeft());
  };
  EXPECT_TRUE(boxOnRow(4));
  const auto turn = [](int notches) {
    const QPoint at = List()->viewport()->rect().center();
    QWheelEvent wheel(at, List()->viewport()->mapToGlobal(at), {}, QPoint(0, 120 * notches),
                      Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(List()->viewport(), &wheel);
  };
  const QPoint before = Box()->pos();
  turn(-1);
  EXPECT_TRUE(Box()->isVisible());
  EXPECT_NE(Box()->pos(), before);
  EXPECT_TRUE(boxOnRow(4));
  EXPECT_TRUE(Box()->hasFocus());
  QTest::keyClicks(Box(), QStringLiteral("Kept"));
  turn(-1);
  EXPECT_FALSE(Box()->isVisible());
  EXPECT_EQ(Row(4), QStringLiteral("#5  Kept"));
  EXPECT_TRUE(List()->hasFocus());
}

TEST_F(Features, TheMenuComesByTheRightButtonAndByTheMenuKey) {
  Open("part.NC", Block(1, "First", "G0 X1") + Block(2, "Second", "G1 X2"), 2);
  QStringList items;
  WalkMenu(QStringLiteral("Hide feature"), &items);
  RightClick(kIdFeatureList, RowRect(1).center());
  EXPECT_EQ(items.join(QLatin1Char('|')),
            QStringLiteral("Edit feature|Toggle code inclusion|-|Simulate only this feature|"
                           "Simulate all visible features|-|Hide feature|Show all features|-|"
                           "Lock settings"));
  EXPECT_EQ(Row(1), QStringLiteral("#2  Second [hidden]"));
  EXPECT_EQ(Hint(), QStringLiteral("Visibility changes viewing only, never machine code."));

  // By the key the menu is that of the selected row, and its words follow the state.
  items.clear();
  WalkMenu(QStringLiteral("Lock settings"), &items);
  MenuKey(kIdFeatureList);
  EXPECT_TRUE(items.contains(QStringLiteral("Show feature")));
  EXPECT_EQ(Row(1), QStringLiteral("#2  Second [hidden] [locked]"));
  EXPECT_EQ(Hint(), QStringLiteral("Lock affects builder edits; G-code remains editable."));
  items.clear();
  WalkMenu(QStringLiteral("Unlock settings"), &items);
  MenuKey(kIdFeatureList);
  EXPECT_EQ(Row(1), QStringLiteral("#2  Second [hidden]"));
  WalkMenu(QStringLiteral("Show all features"), nullptr);
  MenuKey(kIdFeatureList);
  EXPECT_EQ(Row(1), QStringLiteral("#2  Second"));
  WalkMenu(QStringLiteral("Simulate only"), nullptr);
  MenuKey(kIdFeatureList);
  EXPECT_EQ(tabs[app.activeTab].isolatedId, 2);
  WalkMenu(QStringLiteral("Simulate all"), nullptr);
  MenuKey(kIdFeatureList);
  EXPECT_EQ(tabs[app.activeTab].isolatedId, 0);
  const QString before = Code();
  WalkMenu(QStringLiteral("Toggle code"), nullptr);
  MenuKey(kIdFeatureList);
  EXPECT_TRUE(Code().contains(QStringLiteral("(MORVA DISABLED 1)")));
  EXPECT_EQ(desk::TextOf(kIdFeatureInclude), QStringLiteral("Include code: OFF"));
  WalkMenu(QStringLiteral("Toggle code"), nullptr);
  MenuKey(kIdFeatureList);
  EXPECT_EQ(Code(), before);

  // Without a row there is no menu.
  List()->selectionModel()->clear();
  RightClick(kIdFeatureList, QPoint(5, List()->viewport()->height() - 3));
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(Features, EveryOperationWorksByKeyboardAlone) {
  Open("part.NC", Block(1, "First", "G0 X1") + Block(2, "Second", "G1 X2"), 2);
  desk::WidgetOf(kIdEditor)->setFocus();
  ASSERT_TRUE(TabTo(kIdFeatureList));
  Press(Qt::Key_Down);
  Press(Qt::Key_Down);
  EXPECT_EQ(Hint(), QStringLiteral("Selected block. Edit Settings reopens its builder."));
  EXPECT_EQ(desk::TextOf(kIdFeatureName), QStringLiteral("Second"));

  Press(Qt::Key_F2);
  desk::TypeHere(QStringLiteral("Rough"));
  Press(Qt::Key_Return);
  EXPECT_EQ(Row(1), QStringLiteral("#2  Rough"));

  ASSERT_TRUE(TabTo(kIdFeatureInclude));
  Press(Qt::Key_Space);
  EXPECT_EQ(desk::TextOf(kIdFeatureInclude), QStringLiteral("Include code: OFF"));
  Press(Qt::Key_Space);
  ASSERT_TRUE(TabTo(kIdFeatureLock));
  Press(Qt::Key_Space);
  EXPECT_EQ(Row(1), QStringLiteral("#2  Rough [locked]"));
  ASSERT_TRUE(TabTo(kIdFeatureEdit));
  Press(Qt::Key_Space);
  EXPECT_EQ(Hint(), QStringLiteral("Feature settings are locked. Right-click to unlock."));
  ASSERT_TRUE(TabTo(kIdFeatureLock));
  Press(Qt::Key_Space);
  ASSERT_TRUE(TabTo(kIdFeatureHide));
  Press(Qt::Key_Space);
  EXPECT_EQ(Row(1), QStringLiteral("#2  Rough [hidden]"));
  Press(Qt::Key_Space);

  ASSERT_TRUE(TabTo(kIdFeatureName));
  desk::KeyHere(Qt::Key_A, Qt::ControlModifier);
  desk::TypeHere(QStringLiteral("Finish"));
  ASSERT_TRUE(TabTo(kIdFeatureRename));
  Press(Qt::Key_Space);
  EXPECT_EQ(Row(1), QStringLiteral("#2  Finish"));

  ASSERT_TRUE(TabTo(kIdFeatureNew));
  Press(Qt::Key_Space);
  EXPECT_EQ(desk::RowsOf(kIdFeatureList).size(), 3);
  EXPECT_TRUE(desk::WidgetOf(kIdEditor)->hasFocus());
  desk::TypeHere(QStringLiteral("M9"));
  EXPECT_TRUE(Code().contains(QStringLiteral("(MORVA NAME User code)\nM9\n(MORVA END 3)")));

  ASSERT_TRUE(TabTo(kIdFeatureList));
  desk::AnswerBox(QStringLiteral("Yes"));
  Press(Qt::Key_Delete);
  EXPECT_EQ(desk::RowsOf(kIdFeatureList).size(), 2);
  EXPECT_EQ(desk::LastBoxText(),
            QStringLiteral("Delete the selected feature and its machining code? Undo can restore "
                           "it."));
  QTest::keyClick(desk::WidgetOf(kIdEditor), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(Code().contains(QStringLiteral("M9")));
}

TEST_F(Features, AKeysTipComesAfterItsRestAndGoesAtAPress) {
  QWidget* key = desk::WidgetOf(kIdFeatureInclude);
  QTest::mouseMove(Window()->windowHandle(), QPoint(3, 3));
  QTest::mouseMove(Window()->windowHandle(), key->mapTo(Window(), key->rect().center()));
  ASSERT_TRUE(desk::Until([]() { return QToolTip::isVisible(); }));
  EXPECT_EQ(key->style()->styleHint(QStyle::SH_ToolTip_WakeUpDelay), 450);
  EXPECT_TRUE(QToolTip::text().startsWith(
      QStringLiteral("Include / exclude machining code; keep geometry")));
  QTest::mousePress(key, Qt::RightButton);
  EXPECT_TRUE(desk::Until([]() { return !QToolTip::isVisible(); }, 400));
  QTest::mouseRelease(key, Qt::RightButton);
}

TEST_F(Features, ImportsFromAnOpenProgramByKeyboardAlone) {
  Open("other.NC", Block(1, "Face", "G1 X1") + Block(2, "Bore", "G1 X2"), 2);
  Open("part.NC", Block(7, "Own", "M8"), 1);
  WalkMenu(QStringLiteral("Import operations into this project"), nullptr);
  MenuKey(kIdModeList);
  ASSERT_TRUE(desk::WidgetOf(kIdImportOperations)->isVisible());
  EXPECT_TRUE(desk::WidgetOf(kIdImportOperations)->hasFocus());
  EXPECT_FALSE(desk::WidgetOf(kIdEditor)->isEnabled());
  // Tab goes down the panel.
  for (const int id :
       {kIdImportPreview, kIdImportAll, kIdImportNone, kIdImportRun, kIdImportCancel}) {
    Press(Qt::Key_Tab);
    EXPECT_TRUE(desk::WidgetOf(id)->hasFocus()) << id;
  }
  // The second of the open programs, and of that the second operation.
  ASSERT_TRUE(TabTo(kIdImportPrograms));
  Press(Qt::Key_Down);
  EXPECT_EQ(desk::RowsOf(kIdImportOperations),
            QStringList({QStringLiteral("Face \u00B7 operation 1"),
                         QStringLiteral("Bore \u00B7 operation 2")}));
  ASSERT_TRUE(TabTo(kIdImportOperations));
  Press(Qt::Key_Home);
  Press(Qt::Key_Down);
  ASSERT_TRUE(TabTo(kIdImportRun));
  Press(Qt::Key_Space);
  EXPECT_EQ(desk::TextOf(kIdStatusLine),
            QStringLiteral("Selected operations imported with new operation IDs."));
  EXPECT_EQ(Code(), QString::fromLatin1(Block(7, "Own", "M8") + Block(8, "Bore", "G1 X2")));
  EXPECT_TRUE(desk::WidgetOf(kIdEditor)->hasFocus());
  QTest::keyClick(desk::WidgetOf(kIdEditor), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Code(), QString::fromLatin1(Block(7, "Own", "M8")));
}

TEST_F(Features, ImportsAnExcludedOperationOfAFileWithItsCompanion) {
  DisabledCodeEntry* list = nullptr;
  ASSERT_EQ(AddDisabledCode(list, u"G84 X1. F20.\r\n"), 1);
  std::string stored;
  ASSERT_TRUE(WriteDisabledCode(list, stored));
  FreeDisabledCode(list);
  const QString path = Write("other.NC", Block(3, "Tap", "(MORVA DISABLED 1)"));
  Open("part.NC", Block(7, "Own", "M8"), 1);
  const QString before = Code();
  const auto browse = [path]() {
    desk::AnswerMenu(QStringLiteral("Import operations"));
    RightClick(kIdModeList, QPoint(20, 20));
    desk::AnswerFile(path);
    desk::Click(kIdImportBrowse);
    return desk::Until([]() { return desk::RowsOf(kIdImportOperations).size() == 1; });
  };
  // Without the companion nothing goes in.
  ASSERT_TRUE(browse());
  desk::Click(kIdImportRun);
  EXPECT_EQ(desk::TextOf(kIdStatusLine),
            QStringLiteral("Import stopped: disabled-code companion data is missing. No code was "
                           "inserted."));
  EXPECT_EQ(Code(), before);
  desk::Click(kIdImportCancel);

  Write("other.NC.features", QByteArray(stored.data(), static_cast<qsizetype>(stored.size())));
  ASSERT_TRUE(browse());
  desk::Click(kIdImportRun);
  EXPECT_EQ(Code(), before + QString::fromLatin1(Block(8, "Tap", "(MORVA DISABLED 1)")));
  // The code that came with it goes in by its key.
  QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, RowRect(1).center());
  Press(Qt::Key_Escape);
  desk::Click(kIdFeatureInclude);
  EXPECT_EQ(Code(), before + QString::fromLatin1(Block(8, "Tap", "G84 X1. F20.")));
}

}  // namespace
