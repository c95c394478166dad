// The strip below the editor on the real window: its edge under the pointer, its key and its chord.

#include "shell/strip.h"

#include <QApplication>
#include <QCursor>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "platform/window.h"
#include "shell/layout.h"

namespace {

using namespace morva;

class StripDesk : public AtDesk {
 protected:
  static QWidget* Window() { return desk::WidgetOf(platform::kMainWindow); }
  static int LogHeight() { return desk::WidgetOf(kIdOutputLog)->height(); }
  static bool LogShown() { return desk::WidgetOf(kIdOutputLog)->isVisible(); }
  static QPoint MiddleOfEdge() {
    const platform::Rect edge = Areas().stripEdge;
    return {(edge.left + edge.right) / 2, (edge.top + edge.bottom) / 2};
  }
};

TEST_F(StripDesk, IsDraggedByItsEdgeUnderAPointerThatSaysSo) {
  const int log = LogHeight();
  const int editor = desk::WidgetOf(kIdEditor)->height();
  const QPoint at = MiddleOfEdge();
  desk::MovePointer(Window(), at);
  EXPECT_TRUE(desk::Until([]() { return Window()->cursor().shape() == Qt::SizeVerCursor; }));
  QTest::mousePress(Window(), Qt::LeftButton, Qt::NoModifier, at);
  QTest::mouseMove(Window(), at - QPoint(0, 50));
  EXPECT_TRUE(desk::Until([log]() { return LogHeight() == log + 50; })) << LogHeight() - log;
  EXPECT_EQ(desk::WidgetOf(kIdEditor)->height(), editor - 50);
  QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, at - QPoint(0, 50));
  desk::MovePointer(Window(), at - QPoint(0, 120));
  EXPECT_EQ(LogHeight(), log + 50);
  Show("strip-high.png");
  // Down to the foot it closes; from there it is drawn up again.
  const QPoint low = MiddleOfEdge();
  QTest::mousePress(Window(), Qt::LeftButton, Qt::NoModifier, low);
  QTest::mouseMove(Window(), low + QPoint(0, log + 40));
  EXPECT_TRUE(desk::Until([]() { return !LogShown(); }));
  QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, low + QPoint(0, log + 40));
  Show("strip-closed.png");
  const QPoint closed = MiddleOfEdge();
  QTest::mousePress(Window(), Qt::LeftButton, Qt::NoModifier, closed);
  QTest::mouseMove(Window(), closed - QPoint(0, 120));
  EXPECT_TRUE(desk::Until([]() { return LogShown(); }));
  QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, closed - QPoint(0, 120));
}

TEST_F(StripDesk, ClosesAndOpensWithoutAPointerAndLeavesTheKeyboardWhereItIs) {
  const int log = LogHeight();
  const QString before = desk::TextOf(kIdEditor);
  desk::WidgetOf(kIdEditor)->setFocus();
  desk::KeyHere(Qt::Key_J, Qt::ControlModifier);
  EXPECT_TRUE(desk::Until([]() { return !LogShown(); }));
  EXPECT_TRUE(HasKeyboard(kIdEditor));
  desk::KeyHere(Qt::Key_J, Qt::ControlModifier);
  EXPECT_TRUE(desk::Until([]() { return LogShown(); }));
  // The chord is no character of the program.
  EXPECT_EQ(desk::TextOf(kIdEditor), before);
  desk::WidgetOf(kIdStrip)->setFocus();
  desk::KeyHere(Qt::Key_Up);
  EXPECT_TRUE(desk::Until([log]() { return LogHeight() == log + 20; }));
  EXPECT_TRUE(HasKeyboard(kIdStrip));
  desk::KeyHere(Qt::Key_Space);
  EXPECT_TRUE(desk::Until([]() { return !LogShown(); }));
  EXPECT_TRUE(HasKeyboard(kIdStrip));
  // Who reads the output when it closes does not lose the keyboard.
  desk::KeyHere(Qt::Key_Return);
  EXPECT_TRUE(desk::Until([]() { return LogShown(); }));
  desk::WidgetOf(kIdOutputLog)->setFocus();
  desk::KeyHere(Qt::Key_J, Qt::ControlModifier);
  EXPECT_TRUE(desk::Until([]() { return !LogShown(); }));
  EXPECT_TRUE(desk::Until([]() { return QApplication::focusWidget() != nullptr; }));
  // A preflight brings its report up.
  desk::WidgetOf(kIdEditor)->setFocus();
  desk::KeyHere(Qt::Key_F5);
  EXPECT_TRUE(desk::Until([]() { return LogShown(); }));
}

// The report under a real double click and Enter, in its colours.
TEST_F(StripDesk, ShowsAReportWhoseLinesLeadIntoTheProgram) {
  auto* log = qobject_cast<QPlainTextEdit*>(desk::WidgetOf(kIdOutputLog));
  const int height = LogHeight();
  desk::WidgetOf(kIdStrip)->setFocus();
  for (int step = 0; step < 4; ++step) desk::KeyHere(Qt::Key_Down);
  ASSERT_TRUE(desk::Until([height]() { return LogHeight() == height - 80; })) << LogHeight();
  desk::WidgetOf(kIdEditor)->setFocus();
  desk::KeyHere(Qt::Key_End, Qt::ControlModifier);
  desk::KeyHere(Qt::Key_Return);
  desk::TypeHere(QStringLiteral("G83 Z-1"));
  desk::KeyHere(Qt::Key_F5);
  ASSERT_TRUE(desk::Until([log]() { return log->toPlainText().contains(QStringLiteral("G83")); }));
  Show("report.png");
  // Its first line is in sight, although it is longer than the strip is high.
  EXPECT_EQ(log->verticalScrollBar()->value(), 0);
  EXPECT_GT(log->verticalScrollBar()->maximum(), 0);
  const auto blockWith = [log](const char* words) {
    QTextBlock block = log->document()->begin();
    while (block.isValid() && !block.text().contains(QLatin1String(words))) block = block.next();
    return block;
  };
  const auto colourOf = [](const QTextBlock& block) {
    const auto formats = block.layout()->formats();
    return formats.isEmpty() ? QColor() : formats.at(0).format.foreground().color();
  };
  EXPECT_EQ(colourOf(blockWith("ERROR: M30")), QColor(0xFF, 0x64, 0x73));
  EXPECT_EQ(colourOf(blockWith("WARNING: G83")), QColor(0xFF, 0xBE, 0x50));
  EXPECT_EQ(colourOf(blockWith("NOTE")), QColor());
  QTextCursor there(blockWith("WARNING: G83"));
  log->setTextCursor(there);
  log->ensureCursorVisible();
  const QPoint at = log->cursorRect(there).center() + QPoint(30, 0);
  QTest::mouseDClick(log->viewport(), Qt::LeftButton, Qt::NoModifier, at);
  EXPECT_TRUE(desk::Until([]() { return HasKeyboard(kIdEditor); }));
  auto* editor = qobject_cast<QPlainTextEdit*>(desk::WidgetOf(kIdEditor));
  EXPECT_EQ(editor->textCursor().selectedText(), QStringLiteral("G83 Z-1"));
  // By keys alone.
  QTextCursor error(blockWith("ERROR: No O-number"));
  log->setFocus();
  log->setTextCursor(error);
  desk::KeyHere(Qt::Key_Return);
  EXPECT_TRUE(desk::Until([]() { return HasKeyboard(kIdEditor); }));
  EXPECT_NE(editor->textCursor().selectedText(), QStringLiteral("G83 Z-1"));
}

}  // namespace
