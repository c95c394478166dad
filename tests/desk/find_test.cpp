// The find pane on the real window: a batch of rules by keys and clicks, the order of Tab, and
// everything in sight.

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "desk/at_desk.h"
#include "platform/control.h"
#include "platform/window.h"

namespace {

constexpr int kAddRule = morva::kIdRuleAdd;
constexpr int kRemoveRule = morva::kIdRuleRemove;
constexpr int kPreview = morva::kIdRulePreview;
constexpr int kApply = morva::kIdRuleApply;
constexpr int kUndo = morva::kIdRuleUndo;

class Find : public AtDesk {
 protected:
  void SetUp() override {
    AtDesk::SetUp();
    desk::Key(morva::kIdEditor, Qt::Key_A, Qt::ControlModifier);
    auto* edit = qobject_cast<QPlainTextEdit*>(desk::WidgetOf(morva::kIdEditor));
    edit->insertPlainText(QStringLiteral("(MORVA TEXT 1)\n(MORVA NAME A)\nA B\n(MORVA END 1)"));
    desk::Key(morva::kIdEditor, Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(desk::Until([]() { return desk::WidgetOf(morva::kIdFindText)->hasFocus(); }));
  }
  // Into what has the keyboard.
  static void Press(int key) { desk::KeyHere(key); }
  static void Type(const QString& text) { desk::TypeHere(text); }
  static QString Code() { return desk::TextOf(morva::kIdEditor); }
};

TEST_F(Find, SwapsTwoWordsByKeysAndTakesItBackByAClick) {
  Type(QStringLiteral("A"));
  Press(Qt::Key_Tab);
  Type(QStringLiteral("B"));
  desk::Click(kAddRule);
  desk::TypeInto(morva::kIdFindText, QString());
  desk::Key(morva::kIdFindText, Qt::Key_A, Qt::ControlModifier);
  Type(QStringLiteral("B"));
  desk::Key(morva::kIdReplaceText, Qt::Key_A, Qt::ControlModifier);
  Type(QStringLiteral("A"));
  desk::Key(kAddRule, Qt::Key_Space);
  EXPECT_EQ(desk::RowsOf(morva::kIdRuleList),
            QStringList({QStringLiteral("A  \u2192  B"), QStringLiteral("B  \u2192  A")}));
  const QString before = Code();
  desk::Click(kPreview);
  EXPECT_EQ(desk::TextOf(morva::kIdFindStatus),
            QStringLiteral("2 matches in the active program. Apply Rules performs this batch."));
  EXPECT_EQ(Code(), before);
  desk::Click(kApply);
  EXPECT_EQ(Code(), QStringLiteral("(MORVA TEXT 1)\n(MORVA NAME A)\nB A\n(MORVA END 1)"));
  desk::Click(kUndo);
  EXPECT_EQ(Code(), before);
}

TEST_F(Find, ABatchAndItsUndoLeaveCaretAndViewWhereTheyWere) {
  auto* edit = qobject_cast<QPlainTextEdit*>(desk::WidgetOf(morva::kIdEditor));
  QString text = QStringLiteral("(MORVA TEXT 1)\n");
  for (int i = 0; i < 300; ++i) text += QStringLiteral("G01 X1. Y1.\n");
  edit->setPlainText(text + QStringLiteral("(MORVA END 1)"));
  desk::Run(300);
  QTextCursor caret(edit->document()->findBlockByNumber(150));
  caret.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, 8);  // before "Y1."
  edit->setTextCursor(caret);
  edit->verticalScrollBar()->setValue(141);
  desk::TypeInto(morva::kIdFindText, QStringLiteral("G01"));
  desk::TypeInto(morva::kIdReplaceText, QStringLiteral("G1"));
  desk::Click(kApply);
  ASSERT_TRUE(Code().contains(QStringLiteral("G1 X1. Y1.")));
  EXPECT_EQ(edit->textCursor().blockNumber(), 150);
  EXPECT_EQ(edit->textCursor().positionInBlock(), 7);
  EXPECT_EQ(edit->verticalScrollBar()->value(), 141);
  desk::Run(300);
  desk::Click(kUndo);
  ASSERT_FALSE(Code().contains(QStringLiteral("G1 X1. Y1.")));
  EXPECT_EQ(edit->textCursor().blockNumber(), 150);
  EXPECT_EQ(edit->verticalScrollBar()->value(), 141);
}

TEST_F(Find, TheMouseAloneQueuesAndAppliesARule) {
  // By the check box's square and its words alike.
  QWidget* token = desk::WidgetOf(morva::kIdWholeToken);
  QTest::mouseClick(token, Qt::LeftButton, Qt::NoModifier, QPoint(8, token->height() / 2));
  EXPECT_TRUE(platform::IsChecked(morva::kIdWholeToken));
  QTest::mouseClick(token, Qt::LeftButton, Qt::NoModifier, QPoint(60, token->height() / 2));
  EXPECT_FALSE(platform::IsChecked(morva::kIdWholeToken));
  desk::Click(kAddRule);
  EXPECT_EQ(desk::TextOf(morva::kIdFindStatus),
            QStringLiteral("Enter nonempty Find text. Up to 24 rules can be queued."));
  platform::SetText(morva::kIdFindText, u"A");
  platform::SetText(morva::kIdReplaceText, u"C");
  desk::Click(kAddRule);
  EXPECT_EQ(desk::TextOf(morva::kIdFindStatus), QString());
  desk::Click(kApply);
  EXPECT_TRUE(Code().contains(QStringLiteral("C B")));
  auto* rules = qobject_cast<QAbstractItemView*>(desk::WidgetOf(morva::kIdRuleList));
  QTest::mouseClick(rules->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 8));
  desk::Click(kRemoveRule);
  EXPECT_TRUE(desk::RowsOf(morva::kIdRuleList).isEmpty());
}

TEST_F(Find, StartAsksAtEachByKeysAndTheEditorHasTheKeyboardAfterwards) {
  Type(QStringLiteral("b"));
  desk::AnswerBox(QStringLiteral("Yes"));
  desk::Key(morva::kIdReplaceText, Qt::Key_Q);
  desk::Key(morva::kIdPromptEach, Qt::Key_Space);
  EXPECT_TRUE(desk::LastBoxText().contains(QStringLiteral("Find:  b\r\nReplace with:  q")));
  EXPECT_TRUE(Code().contains(QStringLiteral("A q\n")));
  EXPECT_TRUE(desk::Until([]() { return desk::WidgetOf(morva::kIdEditor)->hasFocus(); }));
}

TEST_F(Find, TabGoesDownThePane) {
  const int order[] = {morva::kIdFindText,
                       morva::kIdReplaceText,
                       morva::kIdMatchCase,
                       morva::kIdWholeToken,
                       morva::kIdNextMatch,
                       kAddRule,
                       morva::kIdRuleList,
                       kRemoveRule,
                       kUndo,
                       kPreview,
                       kApply,
                       morva::kIdPromptEach,
                       morva::kIdDoAll};
  for (const int id : order) {
    EXPECT_TRUE(desk::WidgetOf(id)->hasFocus()) << id;
    Press(Qt::Key_Tab);
  }
}

TEST_F(Find, EnterFindsTheNextMatchAndTheFieldKeepsTheKeyboard) {
  Type(QStringLiteral("a b"));
  Press(Qt::Key_Return);
  auto* edit = qobject_cast<QPlainTextEdit*>(desk::WidgetOf(morva::kIdEditor));
  EXPECT_EQ(edit->textCursor().selectedText(), QStringLiteral("A B"));
  EXPECT_TRUE(desk::WidgetOf(morva::kIdFindText)->hasFocus());
}

TEST_F(Find, NothingOfThePaneIsCutOff) {
  QWidget* window = desk::WidgetOf(platform::kMainWindow);
  const int all[] = {morva::kIdFindText,
                     morva::kIdReplaceText,
                     morva::kIdMatchCase,
                     morva::kIdWholeToken,
                     morva::kIdNextMatch,
                     kAddRule,
                     morva::kIdRuleList,
                     kRemoveRule,
                     kUndo,
                     kPreview,
                     kApply,
                     morva::kIdFindStatus,
                     morva::kIdFindHelp,
                     morva::kIdChangeHelp,
                     morva::kIdPromptEach,
                     morva::kIdDoAll};
  desk::Click(kPreview);
  desk::TypeInto(morva::kIdFindText, QString());
  desk::Click(kAddRule);  // the longest words of the status
  for (const QSize size : {QSize(1200, 800), QSize(1560, 940)}) {
    window->resize(size);
    ASSERT_TRUE(desk::Until([=]() { return window->size() == size; }));
    desk::Run(80);
    Show(size.width() == 1200 ? "find_1200.png" : "find_1560.png");
    for (const int id : all) {
      QWidget* widget = desk::WidgetOf(id);
      const QRect place(widget->mapTo(window, QPoint(0, 0)), widget->size());
      EXPECT_TRUE(window->rect().contains(place)) << id;
      const QWidget* status = desk::WidgetOf(morva::kIdStatusLine);
      EXPECT_LE(place.bottom(), status->mapTo(window, QPoint(0, 0)).y()) << id;
      const QFontMetrics metrics(widget->font());
      if (const auto* label = qobject_cast<QLabel*>(widget)) {
        const QRect text = metrics.boundingRect(QRect(0, 0, widget->width(), 1000),
                                                Qt::TextWordWrap, label->text());
        EXPECT_LE(text.height(), widget->height()) << id;
      }
      if (const auto* key = qobject_cast<QAbstractButton*>(widget)) {
        EXPECT_LE(metrics.horizontalAdvance(key->text()), widget->width() - 8) << id;
      }
    }
  }
}

}  // namespace
