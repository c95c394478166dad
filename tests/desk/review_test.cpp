// The compare review on the real window: two programs, their changes, the scroll lock.

#include <QAbstractItemView>
#include <QFile>
#include <QListView>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <QTextCursor>
#include <QWheelEvent>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "documents/program_tabs.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/window.h"

namespace {

using namespace morva;

class ReviewDesk : public AtDesk {
 protected:
  void Open(const char* name, const QByteArray& bytes) {
    const int before = app.tabCount;
    desk::AnswerFile(Write(name, bytes));
    desk::Click(kIdOpen);
    ASSERT_TRUE(desk::Until([before]() { return app.tabCount == before + 1; }));
  }
  static QByteArray Program(const char* changed) {
    QByteArray text = "%\nO1234\n(FACE THE BLOCK)\n";
    for (int i = 0; i < 200; ++i) {
      if (i == 4 || i == 120) text += changed;
      text += "G01 X" + QByteArray::number(i) + ". Y1.5 F20.\n";
    }
    return text + "M30\n%\n";
  }
  static QPlainTextEdit* Pane(int id) { return qobject_cast<QPlainTextEdit*>(desk::WidgetOf(id)); }
  static void MarkTab(int index) {
    QTest::mouseClick(desk::WidgetOf(kIdTabFirst + index), Qt::LeftButton, Qt::ControlModifier);
  }
  static QColor PixelOf(QPlainTextEdit* pane, int x, int line) {
    const QImage image = pane->viewport()->grab().toImage();
    return image.pixelColor(x, (line - platform::FirstVisibleLine(IdOf(pane))) * 20 + 3);
  }
  static int IdOf(const QPlainTextEdit* pane) {
    return pane == Pane(kIdReviewLeftPane) ? kIdReviewLeftPane : kIdReviewRightPane;
  }
};

TEST_F(ReviewDesk, ComparesStepsScrollsTogetherAndLeaves) {
  Open("part.NC", Program("M08\n"));
  Open("part-rev-b.NC", Program("M09\nG04 P1.\n"));
  // The markers come a moment after a program does.
  desk::Run(200);
  QTest::keyClick(desk::WidgetOf(kIdEditor), Qt::Key_Home, Qt::ControlModifier);
  MarkTab(1);
  MarkTab(2);
  // On a slow machine the markers of the first one come before the second is opened, with a star.
  const QString marked = desk::TextOf(kIdTabFirst + 1);
  EXPECT_TRUE(marked == QStringLiteral("[C] part.NC") || marked == QStringLiteral("[C] part.NC *"))
      << marked.toStdString();
  desk::Click(kIdCompareSecond);
  ASSERT_TRUE(desk::Until([]() { return desk::WidgetOf(kIdReviewLeftPane)->isVisible(); }));
  EXPECT_FALSE(desk::WidgetOf(kIdEditor)->isVisible());
  EXPECT_EQ(desk::TextOf(kIdCompareSecond), QStringLiteral("EXIT REVIEW"));
  // M08 to M09 twice, and a dwell more twice.
  EXPECT_EQ(desk::TextOf(kIdReviewSummary),
            QStringLiteral("READ-ONLY REVIEW   Added + 2   Removed - 0   Modified ~ 2"));
  QPlainTextEdit* left = Pane(kIdReviewLeftPane);
  QPlainTextEdit* right = Pane(kIdReviewRightPane);
  EXPECT_EQ(left->blockCount(), right->blockCount());

  desk::Click(kIdReviewNext);
  const QString selected = right->textCursor().selectedText();
  EXPECT_TRUE(selected.endsWith(QStringLiteral(" ~  M09"))) << selected.toStdString();
  EXPECT_EQ(left->textCursor().blockNumber(), right->textCursor().blockNumber());
  const int row = right->textCursor().blockNumber();
  // Right of the short text nothing covers the row's band; the dwell below has its own.
  EXPECT_EQ(PixelOf(left, 300, row), QColor(0x45, 0x34, 0x19));
  EXPECT_EQ(PixelOf(right, 300, row + 1), QColor(0x16, 0x41, 0x31));
  EXPECT_EQ(PixelOf(left, 300, row - 1), QColor(0x01, 0x0D, 0x15));
  Show("review.png");

  desk::Click(kIdReviewNext);
  desk::Click(kIdReviewNext);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewLeftPane), left->textCursor().blockNumber() - 3);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewRightPane),
            platform::FirstVisibleLine(kIdReviewLeftPane));

  // The lock, either way, by the panes' own scroll bars.
  right->verticalScrollBar()->setValue(10);
  EXPECT_TRUE(desk::Until([]() { return platform::FirstVisibleLine(kIdReviewLeftPane) == 10; }));
  left->verticalScrollBar()->setValue(77);
  EXPECT_TRUE(desk::Until([]() { return platform::FirstVisibleLine(kIdReviewRightPane) == 77; }));

  // Typing changes nothing.
  const QString before = left->toPlainText();
  desk::TypeInto(kIdReviewLeftPane, QStringLiteral("M00"));
  EXPECT_EQ(left->toPlainText(), before);

  desk::Click(kIdReviewLines);
  EXPECT_EQ(desk::TextOf(kIdReviewLines), QStringLiteral("Changes only"));
  EXPECT_EQ(left->blockCount(), 5);  // four changes and the end
  Show("review-changes.png");

  desk::Click(kIdCompareSecond);
  EXPECT_TRUE(desk::Until([]() { return desk::WidgetOf(kIdEditor)->isVisible(); }));
  EXPECT_FALSE(left->isVisible());
  EXPECT_EQ(desk::TextOf(kIdCompareSecond), QStringLiteral("COMPARE"));
}

TEST_F(ReviewDesk, KeepsTheStartsOfLongLinesInSightAndMarksWhatChangedInThem) {
  const QByteArray tail = " (" + QByteArray(220, 'A') + ")\n";
  Open("a.NC", "O1\nG01 X1.5 Y2." + tail + "M30\n");
  Open("b.NC", "O1\nG01 X1.25 Y2." + tail + "M30\n");
  desk::Run(200);
  MarkTab(1);
  MarkTab(2);
  desk::Click(kIdCompareSecond);
  QPlainTextEdit* left = Pane(kIdReviewLeftPane);
  ASSERT_TRUE(desk::Until([left]() { return left->isVisible(); }));
  // Nothing below the lines but the head of the output.
  EXPECT_FALSE(desk::WidgetOf(kIdOutputLog)->isVisible());
  for (const int key : {kIdReviewNext, kIdReviewPrevious}) {
    for (QPlainTextEdit* pane : {left, Pane(kIdReviewRightPane)}) {
      ASSERT_GT(pane->horizontalScrollBar()->maximum(), 0);
      pane->horizontalScrollBar()->setValue(pane->horizontalScrollBar()->maximum());
    }
    desk::Click(key);
    for (QPlainTextEdit* pane : {left, Pane(kIdReviewRightPane)}) {
      EXPECT_EQ(pane->horizontalScrollBar()->value(), 0);
      EXPECT_TRUE(pane->textCursor().selectedText().contains(QStringLiteral("G01 X1.")));
    }
  }
  // The ground of the changed number, once the selection is gone from the line.
  QTextCursor start(left->document());
  left->setTextCursor(start);
  QTextCursor number = left->document()->find(QStringLiteral("1.5"));
  ASSERT_FALSE(number.isNull());
  number.setPosition(number.selectionStart());
  const QRect at = left->cursorRect(number);
  const QImage image = left->viewport()->grab().toImage();
  EXPECT_EQ(image.pixelColor(at.left() + 2, at.top() + 2), QColor(0x9A, 0x5B, 0x00));
  Show("review-marks.png");
}

TEST_F(ReviewDesk, BringsAChangeAtTheEndOfALongLineIntoView) {
  const QByteArray head = "O1\n(" + QByteArray(220, 'A') + ") X";
  Open("a.NC", head + "1.5\nM30\n");
  Open("b.NC", head + "1.25\nM30\n");
  desk::Run(200);
  MarkTab(1);
  MarkTab(2);
  desk::Click(kIdCompareSecond);
  QPlainTextEdit* left = Pane(kIdReviewLeftPane);
  ASSERT_TRUE(desk::Until([left]() { return left->isVisible(); }));
  for (const int key : {kIdReviewNext, kIdReviewPrevious}) {
    desk::Click(key);
    desk::Run(200);
    for (QPlainTextEdit* pane : {left, Pane(kIdReviewRightPane)}) {
      QTextCursor number = pane->document()->find(QStringLiteral("X1."));
      ASSERT_FALSE(number.isNull());
      const QRect at = pane->cursorRect(number);
      EXPECT_TRUE(pane->viewport()->rect().contains(at)) << at.left();
      EXPECT_TRUE(pane->textCursor().selectedText().contains(QStringLiteral(") X1.")));
    }
  }
  Show("review-far-change.png");
}

TEST_F(ReviewDesk, ChoosesWithTheKeyboardAlone) {
  Open("a.NC", "G0 X0\nM30\n");
  Open("b.NC", "G0 X1\nM30\n");
  desk::Run(200);
  desk::Key(kIdCompareSecond, Qt::Key_Return);
  ASSERT_TRUE(desk::Until([]() { return platform::FocusedId() == kIdReviewPrograms; }));
  EXPECT_EQ(
      desk::TextOf(kIdReviewSummary),
      QStringLiteral("Select two or more programs (Ctrl/Shift click), then Review selected."));
  desk::Key(kIdReviewPrograms, Qt::Key_End);
  desk::Key(kIdReviewPrograms, Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_TRUE(tabs[1].compareSelected);
  EXPECT_TRUE(tabs[2].compareSelected);
  desk::Key(kIdReviewPrograms, Qt::Key_Return);
  EXPECT_EQ(desk::TextOf(kIdReviewSummary),
            QStringLiteral("READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 1"));
  desk::Key(kIdReviewPrograms, Qt::Key_Escape);
  EXPECT_TRUE(desk::Until([]() { return platform::FocusedId() == kIdEditor; }));
}

TEST_F(ReviewDesk, RowsOfTwoLongNamesThatDifferAtTheirEndsLookDifferent) {
  const std::string head = "bearing_housing_second_side_of_the_long_version_op_20_revision_";
  Open((head + "a.NC").c_str(), "G0 X0\nM30\n");
  Open((head + "b.NC").c_str(), "G0 X1\nM30\n");
  desk::Run(200);
  desk::Key(kIdCompareSecond, Qt::Key_Return);
  ASSERT_TRUE(desk::Until([]() { return platform::FocusedId() == kIdReviewPrograms; }));
  auto* const list = qobject_cast<QListView*>(desk::WidgetOf(kIdReviewPrograms));
  ASSERT_NE(list, nullptr);
  for (int row = 0; row < 3; ++row) platform::SetRowSelected(kIdReviewPrograms, row, false);
  desk::Run(100);
  const auto words = [list](int row) {
    const QRect place = list->visualRect(list->model()->index(row, 0));
    return list->viewport()->grab(place.adjusted(2, 2, -2, -2)).toImage();
  };
  EXPECT_EQ(words(1), words(1));
  EXPECT_NE(words(1), words(2));
  Show("review-long-names.png");
}

TEST_F(ReviewDesk, WheelAndPageKeysTakeBothSidesAlongAndThePlaceSurvivesTheTick) {
  Open("part.NC", Program("M08\n"));
  Open("part-rev-b.NC", Program("M09\nG04 P1.\n"));
  desk::Run(200);
  MarkTab(1);
  MarkTab(2);
  desk::Click(kIdCompareSecond);
  QPlainTextEdit* left = Pane(kIdReviewLeftPane);
  QPlainTextEdit* right = Pane(kIdReviewRightPane);
  ASSERT_TRUE(desk::Until([left]() { return left->isVisible(); }));
  // Four notches down over the left side, one key over the right one.
  const QPointF at(60, 60);
  QWheelEvent wheel(at, left->viewport()->mapToGlobal(at), QPoint(), QPoint(0, -480), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(left->viewport(), &wheel);
  const int wheeled = platform::FirstVisibleLine(kIdReviewLeftPane);
  EXPECT_GE(wheeled, 4);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewRightPane), wheeled);
  right->setFocus();
  QTest::keyClick(right, Qt::Key_PageDown);
  QTest::keyClick(right, Qt::Key_PageDown);
  const int paged = platform::FirstVisibleLine(kIdReviewRightPane);
  EXPECT_GT(paged, wheeled);
  EXPECT_TRUE(
      desk::Until([paged]() { return platform::FirstVisibleLine(kIdReviewLeftPane) == paged; }));
  // Three ticks later nothing crept.
  desk::Run(500);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewLeftPane), paged);
  EXPECT_EQ(platform::FirstVisibleLine(kIdReviewRightPane), paged);
}

TEST_F(ReviewDesk, ComparesAThirdProgramChosenByTheCombos) {
  Open("a.NC", "G0 X1\nM30\n");
  Open("b.NC", "G0 X2\nM30\n");
  Open("c.NC", "G0 X1\nM08\nM30\n");
  desk::Run(200);
  for (const int tab : {1, 2, 3}) MarkTab(tab);
  desk::Click(kIdCompareSecond);
  ASSERT_TRUE(desk::Until([]() { return desk::WidgetOf(kIdReviewLeftPane)->isVisible(); }));
  EXPECT_EQ(desk::TextOf(kIdReviewSummary),
            QStringLiteral("READ-ONLY REVIEW   Added + 0   Removed - 0   Modified ~ 1"));
  desk::Key(kIdReviewRight, Qt::Key_Down);
  EXPECT_EQ(desk::TextOf(kIdReviewSummary),
            QStringLiteral("READ-ONLY REVIEW   Added + 1   Removed - 0   Modified ~ 0"));
  desk::Click(kIdReviewSwap);
  EXPECT_EQ(desk::TextOf(kIdReviewSummary),
            QStringLiteral("READ-ONLY REVIEW   Added + 0   Removed - 1   Modified ~ 0"));
  // In words, and back.
  desk::Click(kIdCommandWords);
  EXPECT_TRUE(desk::Until(
      []() { return desk::TextOf(kIdReviewLeftPane).contains(QStringLiteral("Rapid Motion")); }));
  EXPECT_FALSE(desk::WidgetOf(kIdWordsEditor)->isVisible());
  Show("review-words.png");
  desk::Click(kIdCommandWords);
  EXPECT_TRUE(desk::Until(
      []() { return !desk::TextOf(kIdReviewLeftPane).contains(QStringLiteral("Rapid Motion")); }));
  EXPECT_FALSE(desk::WidgetOf(kIdEditor)->isVisible());
}

}  // namespace
