// The completion list and the code index on the real window.

#include <QAbstractItemView>
#include <QApplication>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "platform/window.h"

namespace {

class Completion : public AtDesk {
 protected:
  void SetUp() override {
    AtDesk::SetUp();
    desk::Key(morva::kIdEditor, Qt::Key_End, Qt::ControlModifier);
    desk::TypeInto(morva::kIdEditor, QStringLiteral("\n"));
  }
  static QAbstractItemView* List() {
    return qobject_cast<QAbstractItemView*>(desk::WidgetOf(morva::kIdCompletion));
  }
  static bool Opens(const char* text) {
    desk::TypeInto(morva::kIdEditor, QString::fromLatin1(text));
    return desk::Until([]() { return List()->isVisible(); });
  }
  static bool TextHas(const char* words) {
    return desk::TextOf(morva::kIdEditor).contains(QString::fromLatin1(words));
  }
  static bool EditorHasKeyboard() { return platform::FocusedId() == morva::kIdEditor; }
};

TEST_F(Completion, DownAndEnterWriteTheSecondRow) {
  ASSERT_TRUE(Opens("G0"));
  EXPECT_EQ(desk::RowsOf(morva::kIdCompletion).size(), 6);
  EXPECT_TRUE(EditorHasKeyboard());
  desk::Key(morva::kIdEditor, Qt::Key_Down);
  desk::Key(morva::kIdEditor, Qt::Key_Return);
  EXPECT_FALSE(List()->isVisible());
  EXPECT_TRUE(TextHas("G01"));
  EXPECT_TRUE(EditorHasKeyboard());
}

TEST_F(Completion, EnterBreaksTheLineBehindACodeThatNobodyChose) {
  ASSERT_TRUE(Opens("M8"));
  desk::Key(morva::kIdEditor, Qt::Key_Return);
  EXPECT_FALSE(List()->isVisible());
  desk::TypeInto(morva::kIdEditor, QStringLiteral("M5"));
  desk::Key(morva::kIdEditor, Qt::Key_Return);
  desk::TypeInto(morva::kIdEditor, QStringLiteral("X1"));
  EXPECT_TRUE(TextHas("\nM8\nM5\nX1"));
  desk::Run(200);
  EXPECT_FALSE(List()->isVisible());
  EXPECT_TRUE(EditorHasKeyboard());
}

TEST_F(Completion, EnterWritesTheRowOfAListThatWasAskedForOrGoneThrough) {
  ASSERT_TRUE(Opens("M8"));
  desk::Key(morva::kIdEditor, Qt::Key_Up);
  desk::Key(morva::kIdEditor, Qt::Key_Return);
  EXPECT_TRUE(TextHas("\nM80"));
  desk::TypeInto(morva::kIdEditor, QStringLiteral("\nG2"));
  desk::Key(morva::kIdEditor, Qt::Key_Space, Qt::ControlModifier);
  ASSERT_TRUE(List()->isVisible());
  desk::Key(morva::kIdEditor, Qt::Key_Return);
  EXPECT_TRUE(TextHas("\nM80\nG20"));
  EXPECT_FALSE(List()->isVisible());
}

TEST_F(Completion, TabWritesACodeAndNoTab) {
  ASSERT_TRUE(Opens("M0"));
  desk::Key(morva::kIdEditor, Qt::Key_Tab);
  EXPECT_TRUE(TextHas("M00"));
  EXPECT_FALSE(TextHas("\t"));
  EXPECT_TRUE(EditorHasKeyboard());
}

TEST_F(Completion, EscapeClosesIt) {
  ASSERT_TRUE(Opens("G"));
  desk::Key(morva::kIdEditor, Qt::Key_Escape);
  EXPECT_FALSE(List()->isVisible());
  desk::Run(200);
  EXPECT_FALSE(List()->isVisible());
  EXPECT_TRUE(EditorHasKeyboard());
}

TEST_F(Completion, AClickOnARowWritesIt) {
  ASSERT_TRUE(Opens("G0"));
  const QRect row = List()->visualRect(List()->model()->index(3, 0));
  QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, row.center());
  EXPECT_TRUE(TextHas("G03"));
  EXPECT_FALSE(List()->isVisible());
  EXPECT_TRUE(EditorHasKeyboard());
}

TEST_F(Completion, TheWheelScrollsByTwoRows) {
  ASSERT_TRUE(Opens("G"));
  QWidget* port = List()->viewport();
  const QPointF at(port->rect().center());
  QWheelEvent down(at, port->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                   Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(port, &down);
  EXPECT_EQ(List()->verticalScrollBar()->value(), 2);
  EXPECT_TRUE(List()->isVisible());
}

TEST_F(Completion, CtrlSpaceOpensItOnNothing) {
  desk::Key(morva::kIdEditor, Qt::Key_Space, Qt::ControlModifier);
  EXPECT_TRUE(List()->isVisible());
  EXPECT_EQ(desk::RowsOf(morva::kIdCompletion).size(), 128);
}

TEST_F(Completion, TheIndexInsertsFromTheListByEnter) {
  desk::Click(morva::kIdShowIndex);
  ASSERT_TRUE(desk::WidgetOf(morva::kIdIndexList)->isVisible());
  desk::TypeInto(morva::kIdIndexSearch, QStringLiteral("dwell"));
  EXPECT_EQ(desk::RowsOf(morva::kIdIndexList).value(0), QStringLiteral("G04    Dwell"));
  desk::Key(morva::kIdIndexList, Qt::Key_Return);
  EXPECT_TRUE(TextHas("G04 "));
  EXPECT_TRUE(EditorHasKeyboard());
  EXPECT_FALSE(List()->isVisible());
}

TEST_F(Completion, TheIndexPageShowsAllOfItsDetailInTheSmallestWindow) {
  desk::WidgetOf(platform::kMainWindow)->resize(1200, 800);
  desk::Click(morva::kIdShowIndex);
  auto* detail = qobject_cast<QPlainTextEdit*>(desk::WidgetOf(morva::kIdIndexDetail));
  ASSERT_NE(detail, nullptr);
  // The longest name takes two lines.
  desk::TypeInto(morva::kIdIndexSearch, QStringLiteral("g65"));
  ASSERT_TRUE(desk::Until([]() { return desk::RowsOf(morva::kIdIndexList).size() == 2; }));
  desk::Key(morva::kIdIndexList, Qt::Key_Down);
  ASSERT_TRUE(desk::TextOf(morva::kIdIndexDetail).startsWith(QStringLiteral("Macro subprogram")));
  EXPECT_TRUE(desk::Until([detail]() { return detail->verticalScrollBar()->maximum() == 0; }));
  EXPECT_TRUE(detail->isVisible());
}

}  // namespace
