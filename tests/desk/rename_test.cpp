// The feature list of the real window: rename over a row, lock and eye under the pointer, and
// the import panel at the smallest window.

#include <QAbstractItemView>
#include <QLineEdit>
#include <QTest>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "platform/window.h"

namespace {

class Rename : public AtDesk {
 protected:
  void SetUp() override {
    AtDesk::SetUp();
    ASSERT_TRUE(desk::Until([]() { return desk::RowsOf(morva::kIdFeatureList).size() == 1; }));
  }

  static QAbstractItemView* List() {
    return qobject_cast<QAbstractItemView*>(desk::WidgetOf(morva::kIdFeatureList));
  }
  static QString Row() { return desk::RowsOf(morva::kIdFeatureList).value(0); }
  // A click so many pixels from the right end of the first row.
  static void ClickFromRight(int pixels) {
    const QRect row = List()->visualRect(List()->model()->index(0, 0));
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                      QPoint(row.right() + 1 - pixels, row.center().y()));
  }
  static QLineEdit* Box() { return qobject_cast<QLineEdit*>(desk::WidgetOf(morva::kIdInlineName)); }
};

TEST_F(Rename, WorksByKeyboardAndPointerOnTheRealList) {
  // A click on the name opens the box over the row; typing takes the place of the old name.
  ClickFromRight(120);
  ASSERT_TRUE(Box()->isVisible());
  EXPECT_TRUE(Box()->hasFocus());
  EXPECT_EQ(Box()->text(), QStringLiteral("User code"));
  const QRect row = List()->visualRect(List()->model()->index(0, 0));
  EXPECT_EQ(Box()->mapToGlobal(QPoint(0, 0)), List()->viewport()->mapToGlobal(row.topLeft()));
  EXPECT_EQ(Box()->height(), row.height());
  QTest::keyClicks(Box(), QStringLiteral("Rough face"));
  QTest::keyClick(Box(), Qt::Key_Return);
  EXPECT_FALSE(Box()->isVisible());
  EXPECT_EQ(Row(), QStringLiteral("#1  Rough face"));
  EXPECT_TRUE(List()->hasFocus());

  QTest::keyClick(List(), Qt::Key_F2);
  ASSERT_TRUE(Box()->isVisible());
  QTest::keyClicks(Box(), QStringLiteral("Thrown away"));
  QTest::keyClick(Box(), Qt::Key_Escape);
  EXPECT_FALSE(Box()->isVisible());
  EXPECT_EQ(Row(), QStringLiteral("#1  Rough face"));
  EXPECT_TRUE(List()->hasFocus());

  // The keyboard that goes elsewhere takes the name along.
  QTest::keyClick(List(), Qt::Key_F2);
  QTest::keyClicks(Box(), QStringLiteral("Finish"));
  desk::WidgetOf(morva::kIdEditor)->setFocus();
  EXPECT_EQ(Row(), QStringLiteral("#1  Finish"));
  EXPECT_FALSE(Box()->isVisible());

  ClickFromRight(50);
  EXPECT_EQ(Row(), QStringLiteral("#1  Finish [hidden]"));
  ClickFromRight(17);
  EXPECT_EQ(Row(), QStringLiteral("#1  Finish [hidden] [locked]"));
  // A locked feature has no name box; the lock opens where it was closed.
  ClickFromRight(120);
  EXPECT_FALSE(Box()->isVisible());
  ClickFromRight(17);
  ClickFromRight(50);
  EXPECT_EQ(Row(), QStringLiteral("#1  Finish"));
}

TEST_F(Rename, TheImportPanelLiesWholeInTheSmallestWindow) {
  QWidget* window = desk::WidgetOf(platform::kMainWindow);
  window->resize(1200, 800);
  ASSERT_TRUE(desk::Until([=]() { return window->width() == 1200; }));
  desk::Click(morva::kIdTabNew);
  desk::Run(200);
  desk::AnswerMenu(QStringLiteral("Import operations"));
  QWidget* modes = desk::WidgetOf(morva::kIdModeList);
  modes->setFocus();
  QContextMenuEvent ask(QContextMenuEvent::Keyboard, modes->rect().center(),
                        modes->mapToGlobal(modes->rect().center()));
  QApplication::sendEvent(qobject_cast<QAbstractItemView*>(modes)->viewport(), &ask);
  const int head = morva::kIdImportHead;
  ASSERT_TRUE(desk::Until([=]() { return desk::WidgetOf(head)->isVisible(); }));
  for (int id = head; id <= head + 8; ++id) {
    QWidget* widget = desk::WidgetOf(id);
    ASSERT_NE(widget, nullptr) << id;
    EXPECT_TRUE(widget->isVisible()) << id;
    const QRect place(widget->mapTo(window, QPoint(0, 0)), widget->size());
    EXPECT_TRUE(window->rect().contains(place)) << id;
    for (int other = head; other < id; ++other) {
      QWidget* before = desk::WidgetOf(other);
      EXPECT_FALSE(place.intersects(QRect(before->mapTo(window, QPoint(0, 0)), before->size())))
          << id << " over " << other;
    }
  }
  EXPECT_FALSE(desk::WidgetOf(morva::kIdEditor)->isVisible());
  EXPECT_FALSE(desk::WidgetOf(morva::kViewToolpath)->isVisible());
  for (const int id : {morva::kIdPreflight, morva::kIdRenumber}) {
    QWidget* key = desk::WidgetOf(id);
    const QRect place(key->mapTo(window, QPoint(0, 0)), key->size());
    QWidget* foot = desk::WidgetOf(head + 7);
    EXPECT_FALSE(place.intersects(QRect(foot->mapTo(window, QPoint(0, 0)), foot->size()))) << id;
  }
  desk::Click(head + 8);
  EXPECT_TRUE(desk::WidgetOf(morva::kIdEditor)->isVisible());
  EXPECT_TRUE(desk::WidgetOf(morva::kIdEditor)->isEnabled());
}

}  // namespace
