// The command words view on the real window: typing in it, and back to the code.

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "codetools/colours.h"
#include "desk/at_desk.h"
#include "platform/editor.h"
#include "platform/window.h"

namespace {

class Words : public AtDesk {
 protected:
  static QPlainTextEdit* Edit(int id) { return qobject_cast<QPlainTextEdit*>(desk::WidgetOf(id)); }
  static void SetProgram(const QString& text) {
    desk::Key(morva::kIdEditor, Qt::Key_A, Qt::ControlModifier);
    Edit(morva::kIdEditor)->insertPlainText(text);
    ASSERT_TRUE(desk::Until([]() {
      return desk::TextOf(morva::kIdEditor).startsWith(QStringLiteral("(MORVA TEXT 1)"));
    }));
  }
};

TEST_F(Words, TheCodeFollowsWhatIsTypedAndTheMarkersMoveNoCaret) {
  SetProgram(QStringLiteral("(MORVA TEXT 1)\nG01 X1\n(MORVA END 1)"));
  desk::Click(morva::kIdCommandWords);
  ASSERT_TRUE(desk::Until([]() { return desk::WidgetOf(morva::kIdWordsEditor)->isVisible(); }));
  EXPECT_FALSE(desk::WidgetOf(morva::kIdEditor)->isVisible());
  EXPECT_TRUE(desk::WidgetOf(morva::kIdWordsEditor)->hasFocus());
  EXPECT_EQ(desk::TextOf(morva::kIdCommandWords), QStringLiteral("Text \u2192 G-code"));
  desk::Key(morva::kIdWordsEditor, Qt::Key_End, Qt::ControlModifier);
  desk::TypeInto(morva::kIdWordsEditor, QStringLiteral("\nRapid Motion Positioning X5"));
  desk::Key(morva::kIdWordsEditor, Qt::Key_Escape);
  ASSERT_TRUE(desk::Until([]() {
    return desk::TextOf(morva::kIdWordsEditor).contains(QStringLiteral("(MORVA END 2)"));
  }));
  desk::TypeInto(morva::kIdWordsEditor, QStringLiteral(".25"));
  EXPECT_EQ(desk::TextOf(morva::kIdEditor),
            QStringLiteral("(MORVA TEXT 1)\nG01 X1\n(MORVA END 1)\n(MORVA TEXT 2)\n"
                           "(MORVA NAME User code)\nG00 X5.25\n(MORVA END 2)"));
  desk::Click(morva::kIdCommandWords);
  EXPECT_TRUE(desk::WidgetOf(morva::kIdEditor)->isVisible());
  EXPECT_TRUE(desk::WidgetOf(morva::kIdEditor)->hasFocus());
  EXPECT_FALSE(desk::WidgetOf(morva::kIdWordsEditor)->isVisible());
}

TEST_F(Words, RenumberingIsUndoneInTheViewByItsKey) {
  SetProgram(QStringLiteral("(MORVA TEXT 1)\nG01 X1\nM30\n(MORVA END 1)\n"));
  desk::Click(morva::kIdCommandWords);
  const QString words = desk::TextOf(morva::kIdWordsEditor);
  desk::Click(morva::kIdRenumber);
  EXPECT_TRUE(desk::TextOf(morva::kIdWordsEditor)
                  .contains(QStringLiteral("\nSequence 20 Program End and Reset\n")));
  desk::Key(morva::kIdWordsEditor, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(desk::TextOf(morva::kIdWordsEditor), words);
  EXPECT_EQ(desk::TextOf(morva::kIdEditor),
            QStringLiteral("(MORVA TEXT 1)\nG01 X1\nM30\n(MORVA END 1)\n"));
}

TEST_F(Words, TheListOfWordsIsWorkedByKeysAndTheViewKeepsTheKeyboard) {
  SetProgram(QStringLiteral("(MORVA TEXT 1)\n\n(MORVA END 1)\n"));
  desk::Click(morva::kIdCommandWords);
  desk::Key(morva::kIdWordsEditor, Qt::Key_Home, Qt::ControlModifier);
  desk::Key(morva::kIdWordsEditor, Qt::Key_Down);
  desk::TypeInto(morva::kIdWordsEditor, QStringLiteral("coolant o"));
  QWidget* list = desk::WidgetOf(morva::kIdCompletion);
  ASSERT_TRUE(desk::Until([list]() { return list->isVisible(); }));
  // Shower coolant, coolant on and off, through the spindle on and off.
  ASSERT_TRUE(desk::Until([]() { return desk::RowsOf(morva::kIdCompletion).size() == 5; }));
  EXPECT_EQ(platform::FocusedId(), morva::kIdWordsEditor);
  desk::Key(morva::kIdWordsEditor, Qt::Key_Down);
  desk::Key(morva::kIdWordsEditor, Qt::Key_Down);
  desk::Key(morva::kIdWordsEditor, Qt::Key_Up);
  desk::Key(morva::kIdWordsEditor, Qt::Key_Return);
  EXPECT_FALSE(list->isVisible());
  EXPECT_EQ(desk::TextOf(morva::kIdWordsEditor),
            QStringLiteral("(MORVA TEXT 1)\nCoolant On\n(MORVA END 1)\n"));
  EXPECT_EQ(desk::TextOf(morva::kIdEditor), QStringLiteral("(MORVA TEXT 1)\nM08\n(MORVA END 1)\n"));
  EXPECT_EQ(platform::FocusedId(), morva::kIdWordsEditor);
  // Closed, it leaves Enter to the text.
  desk::Key(morva::kIdWordsEditor, Qt::Key_Return);
  EXPECT_EQ(desk::TextOf(morva::kIdEditor),
            QStringLiteral("(MORVA TEXT 1)\nM08\n\n(MORVA END 1)\n"));
}

TEST_F(Words, EnterBreaksALineThatNobodyCompletedAndTabCompletesIt) {
  SetProgram(QStringLiteral("(MORVA TEXT 1)\ng1x1\n(MORVA END 1)\n"));
  desk::Click(morva::kIdCommandWords);
  desk::Key(morva::kIdWordsEditor, Qt::Key_Home, Qt::ControlModifier);
  desk::Key(morva::kIdWordsEditor, Qt::Key_Down);
  desk::Key(morva::kIdWordsEditor, Qt::Key_End);
  desk::TypeInto(morva::kIdWordsEditor, QStringLiteral("\nM8"));
  QWidget* list = desk::WidgetOf(morva::kIdCompletion);
  ASSERT_TRUE(desk::Until([list]() { return list->isVisible(); }));
  desk::Key(morva::kIdWordsEditor, Qt::Key_Return);
  EXPECT_FALSE(list->isVisible());
  desk::TypeInto(morva::kIdWordsEditor, QStringLiteral("coolant of"));
  ASSERT_TRUE(desk::Until([list]() { return list->isVisible(); }));
  desk::Key(morva::kIdWordsEditor, Qt::Key_Tab);
  EXPECT_EQ(desk::TextOf(morva::kIdWordsEditor),
            QStringLiteral("(MORVA TEXT 1)\nLinear Interpolation Motion x1\nM8\nCoolant Off\n"
                           "(MORVA END 1)\n"));
  EXPECT_EQ(desk::TextOf(morva::kIdEditor),
            QStringLiteral("(MORVA TEXT 1)\ng1x1\nM8\nM09\n(MORVA END 1)\n"));
}

TEST_F(Words, LookingAndLeavingChangesNothingAndOneEditOneLine) {
  const QString code =
      QStringLiteral("(MORVA TEXT 1)\ng1x1 ; M6\nDPRNT[G1*#1[44]]\nT1M6\n(MORVA END 1)\n");
  SetProgram(code);
  desk::Run(300);
  const auto revision = platform::EditorRevision(morva::kIdEditor);
  desk::Click(morva::kIdCommandWords);
  desk::Run(300);
  desk::Click(morva::kIdCommandWords);
  desk::Run(300);
  EXPECT_EQ(platform::EditorRevision(morva::kIdEditor), revision);
  EXPECT_EQ(desk::TextOf(morva::kIdEditor), code);
  desk::Click(morva::kIdCommandWords);
  desk::Key(morva::kIdWordsEditor, Qt::Key_Home, Qt::ControlModifier);
  for (int i = 0; i < 3; ++i) desk::Key(morva::kIdWordsEditor, Qt::Key_Down);
  desk::Key(morva::kIdWordsEditor, Qt::Key_End);
  desk::TypeInto(morva::kIdWordsEditor, QStringLiteral(" X2"));
  desk::Key(morva::kIdWordsEditor, Qt::Key_Escape);
  EXPECT_EQ(desk::TextOf(morva::kIdEditor),
            QString(code).replace(QStringLiteral("T1M6"), QStringLiteral("T1 M06 X2")));
  desk::Key(morva::kIdWordsEditor, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(desk::TextOf(morva::kIdEditor), code);
}

TEST_F(Words, ColoursMakeNoUndoStepAndKeepThePlace) {
  QString text = QStringLiteral("(MORVA TEXT 1)\n");
  for (int i = 0; i < 400; ++i) text += QStringLiteral("G01 X%1 F20.\n").arg(i);
  SetProgram(text + QStringLiteral("(MORVA END 1)"));
  QPlainTextEdit* edit = Edit(morva::kIdEditor);
  desk::Run(300);
  platform::SetLineRuns(morva::kIdEditor, 210, nullptr, 0);
  edit->verticalScrollBar()->setValue(200);
  const int steps = edit->document()->availableUndoSteps();
  const int caret = edit->textCursor().position();
  const auto revision = platform::EditorRevision(morva::kIdEditor);
  morva::ColourCodeEditor();
  desk::Run(30);
  platform::ColourRun runs[4];
  EXPECT_EQ(platform::LineRuns(morva::kIdEditor, 210, runs, 4), 3);
  EXPECT_EQ(runs[0].colour, 0x2CD6DFu);
  EXPECT_TRUE(runs[0].bold);
  EXPECT_EQ(edit->verticalScrollBar()->value(), 200);
  EXPECT_EQ(edit->textCursor().position(), caret);
  EXPECT_EQ(edit->document()->availableUndoSteps(), steps);
  EXPECT_EQ(platform::EditorRevision(morva::kIdEditor), revision);
}

TEST_F(Words, ThePointerOverATokenShowsItsHelp) {
  SetProgram(QStringLiteral("(MORVA TEXT 1)\nM05\n(MORVA END 1)"));
  QPlainTextEdit* edit = Edit(morva::kIdEditor);
  QTextCursor cursor(edit->document()->findBlockByNumber(1));
  cursor.setPosition(cursor.position() + 1);
  const QPoint place = edit->cursorRect(cursor).center();
  for (const int y : {90, 0}) {
    const QPoint at = place + QPoint(0, y);
    QMouseEvent move(QEvent::MouseMove, at, edit->viewport()->mapToGlobal(at), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(edit->viewport(), &move);
  }
  EXPECT_EQ(desk::TextOf(morva::kIdStatusLine), QStringLiteral("Spindle stop."));
}

}  // namespace
