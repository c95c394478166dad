// The real editor: its mirror against the document, lines, undo, colours, keys.

#include <gtest/gtest.h>

#include <QClipboard>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <random>

#include "platform/limits.h"
#include "widgets/stand.h"

namespace {

using namespace platform;

constexpr int kId = 300;

QPlainTextEdit* Open(std::u16string_view text = u"") {
  stand::Open();
  EditorSpec spec;
  spec.id = kId;
  spec.accessibleName = u"Program";
  spec.text = 0xDCE0E6;
  spec.background = 0x03080E;
  MakeEditor(spec);
  SetPlace(kId, {10, 10, 610, 410});
  SetEditorText(kId, text);
  SetFocusTo(kId);
  stand::told = stand::Told();
  return static_cast<QPlainTextEdit*>(WidgetOf(kId));
}

// The second method beside the mirror: the document's own plain text, line ends put in.
std::u16string FromDocument(const QPlainTextEdit* edit) {
  QString text = edit->toPlainText();
  text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
  return text.toStdU16String();
}

std::u16string Text() { return std::u16string(EditorText(kId)); }

TEST(EditorWidget, TakesEveryLineEndAndHandsOutCrLf) {
  const QPlainTextEdit* edit = Open(u"a\rb\nc\r\nd\n\re");
  EXPECT_EQ(Text(), u"a\r\nb\r\nc\r\nd\r\n\r\ne");
  EXPECT_EQ(EditorLineCount(kId), 6);
  EXPECT_EQ(EditorLength(kId), 10);
  EXPECT_EQ(FromDocument(edit), Text());
}

TEST(EditorWidget, KeepsNoSeparatorsOfTheToolkitInTheText) {
  Open(u"a\u2028b\u2029c\uFDD0d");
  EXPECT_EQ(Text(), u"a\uFFFDb\uFFFDc\uFFFDd");
  EXPECT_EQ(EditorLineCount(kId), 1);
}

TEST(EditorWidget, AnEmptyTextHasOneLine) {
  Open(u"G0 X1\r\n");
  SetEditorText(kId, u"");
  EXPECT_EQ(EditorLineCount(kId), 1);
  EXPECT_EQ(EditorLength(kId), 0);
  EXPECT_EQ(Text(), u"");
}

TEST(EditorWidget, MirrorEqualsTheDocumentThroughRandomEdits) {
  std::u16string program;
  for (int i = 0; i < 60; ++i) program += u"O1\r\nG0 X0\r\nM30\r\n%\r\n";
  const QPlainTextEdit* edit = Open(program);
  std::mt19937 random(20260u);
  const std::u16string_view pieces[] = {u"G1", u"\n", u"\r\n", u"X1.5\r\nY2\rZ3\n",
                                        u"",   u" ",  u"(a)"};
  for (int i = 0; i < 10000; ++i) {
    const int length = EditorLength(kId);
    const auto pick = [&](int limit) {
      return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const int from = pick(length + 1);
    const int to = std::min(length, from + pick(12));
    const std::u16string_view piece = pieces[pick(7)];
    switch (pick(6)) {
      case 0:
        UndoEditor(kId);
        break;
      case 1:
        RedoEditor(kId);
        break;
      case 2:
        SetEditorSelection(kId, {from, to});
        ReplaceSelection(kId, piece, true);
        break;
      case 3:
        SetEditorSelection(kId, {from, from});
        QTest::keyClick(WidgetOf(kId), pick(2) == 0 ? Qt::Key_Backspace : Qt::Key_7);
        break;
      default:
        ReplaceRange(kId, {from, to}, piece);
    }
    // Read after some of the edits only, so that several, and at times very many, are caught
    // up at once.
    if (pick(i % 1000 < 500 ? 3 : 60) != 0) continue;
    ASSERT_EQ(Text(), FromDocument(edit)) << "after edit " << i;
  }
  EXPECT_EQ(Text(), FromDocument(edit));
}

// Changes at places apart, without a read between them: the last ones are kept as one.
TEST(EditorWidget, MirrorCatchesUpWithMoreChangesThanItKeepsApart) {
  static_assert(platform::kMaxStretches == 16);
  std::u16string program;
  for (int i = 0; i < 40; ++i) program += u"G0 X0\r\n";
  for (const int changes : {15, 16, 17, 18, 40}) {
    const QPlainTextEdit* edit = Open(program);
    for (int i = 0; i < changes; ++i) ReplaceRange(kId, {i * 7, i * 7 + 1}, u"N");
    EXPECT_EQ(Text(), FromDocument(edit)) << changes;
  }
}

TEST(EditorWidget, PositionsCountALineEndAsOne) {
  Open(u"ab\r\ncde\r\n\r\nf");
  EXPECT_EQ(EditorLineStart(kId, 0), 0);
  EXPECT_EQ(EditorLineStart(kId, 1), 3);
  EXPECT_EQ(EditorLineStart(kId, 2), 7);
  EXPECT_EQ(EditorLineStart(kId, 3), 8);
  EXPECT_EQ(EditorLineStart(kId, 9), 9);
  EXPECT_EQ(EditorLineLength(kId, 1), 3);
  EXPECT_EQ(EditorLineLength(kId, 2), 0);
  EXPECT_EQ(EditorLineOf(kId, 6), 1);
  EXPECT_EQ(EditorLineOf(kId, 7), 2);
  EXPECT_EQ(EditorLineOf(kId, 99), 3);
}

TEST(EditorWidget, AReplacementIsOneUndoStepWithItsOwnLineEnds) {
  Open(u"one\r\ntwo\r\nthree");
  ReplaceRange(kId, {4, 7}, u"2\r\n2b\n2c");
  EXPECT_EQ(Text(), u"one\r\n2\r\n2b\r\n2c\r\nthree");
  EXPECT_TRUE(UndoEditor(kId));
  EXPECT_EQ(Text(), u"one\r\ntwo\r\nthree");
  EXPECT_FALSE(CanUndoEditor(kId));
  EXPECT_TRUE(RedoEditor(kId));
  EXPECT_EQ(Text(), u"one\r\n2\r\n2b\r\n2c\r\nthree");
}

TEST(EditorWidget, ReplacingTheSelectionLeavesTheCaretBehindTheText) {
  Open(u"one\r\ntwo");
  SetEditorSelection(kId, {0, 3});
  ReplaceSelection(kId, u"1\r\n11", true);
  EXPECT_EQ(EditorSelection(kId).from, 4);
  EXPECT_EQ(EditorSelection(kId).to, 4);
  EXPECT_EQ(stand::Count(kId, kNotifyEditChange), 1);
  ReplaceSelection(kId, u"x", false);
  EXPECT_FALSE(CanUndoEditor(kId));
}

TEST(EditorWidget, ReplacingARangeCarriesTheCaretOnlyAsFarAsItMust) {
  Open(u"0123456789");
  const auto caretAfter = [](int caret, EditorRange range, std::u16string_view text) {
    SetEditorText(kId, u"0123456789");
    SetEditorSelection(kId, {caret, caret});
    ReplaceRange(kId, range, text);
    return EditorSelection(kId).to;
  };
  EXPECT_EQ(caretAfter(1, {3, 6}, u"abcdef"), 1);   // before
  EXPECT_EQ(caretAfter(3, {3, 6}, u"abcdef"), 3);   // at the front
  EXPECT_EQ(caretAfter(5, {3, 6}, u"abcdef"), 5);   // inside
  EXPECT_EQ(caretAfter(5, {3, 6}, u""), 3);         // inside what goes
  EXPECT_EQ(caretAfter(8, {3, 6}, u"abcdef"), 11);  // behind
  EXPECT_EQ(caretAfter(3, {3, 3}, u"ab"), 5);       // at an insertion
}

TEST(EditorWidget, SettingTheTextTellsOnceAndEmptiesTheHistory) {
  Open(u"a");
  ReplaceSelection(kId, u"b", true);
  ASSERT_TRUE(CanUndoEditor(kId));
  stand::told = stand::Told();
  const std::uint64_t before = EditorRevision(kId);
  SetEditorText(kId, u"new\r\ntext");
  EXPECT_EQ(EditorRevision(kId), before + 1);
  EXPECT_EQ(stand::Count(kId, kNotifyEditChange), 1);
  EXPECT_FALSE(CanUndoEditor(kId));
}

TEST(EditorWidget, ColoursMakeNoUndoStepAndMoveNoCaret) {
  Open(u"G1 X5\r\nM30");
  SetEditorSelection(kId, {2, 2});
  stand::told = stand::Told();
  const std::uint64_t before = EditorRevision(kId);
  const ColourRun runs[] = {{0, 2, 0x2CD6DF, true}, {3, 2, 0xFFA448, true}};
  HoldEditorRedraw(kId, true);
  SetLineRuns(kId, 0, runs, 2);
  SetLineRuns(kId, 1, runs, 1);
  HoldEditorRedraw(kId, false);
  EXPECT_FALSE(CanUndoEditor(kId));
  EXPECT_EQ(EditorRevision(kId), before);
  EXPECT_EQ(EditorSelection(kId).to, 2);
  EXPECT_EQ(stand::Count(kId, kNotifyEditChange), 0);
  ColourRun back[4];
  ASSERT_EQ(LineRuns(kId, 0, back, 4), 2);
  EXPECT_EQ(back[1].from, 3);
  EXPECT_EQ(back[1].colour, 0xFFA448u);
  EXPECT_TRUE(back[1].bold);
  // A later edit of one line is told as that line's alone and leaves other colours standing.
  QTest::keyClick(WidgetOf(kId), Qt::Key_9);
  EXPECT_EQ(LineRuns(kId, 1, back, 4), 1);
  EXPECT_EQ(Text(), u"G19 X5\r\nM30");
}

TEST(EditorWidget, EveryLineIsTwentyPixelsHighFromTheGuttersTop) {
  Open(u"one\r\ntwo\r\n\u4E2D\u6587 three\r\nfour");
  for (int line = 0; line < 4; ++line) {
    const Point at = PointOfPosition(kId, EditorLineStart(kId, line));
    EXPECT_EQ(at.y, 4 + 20 * line);
  }
  EXPECT_EQ(PositionAt(kId, 6, 4 + 20 + 3), 4);
}

TEST(EditorWidget, ACharacterOfAnotherFaceKeepsItsLineOnTheBaseline) {
  const QPlainTextEdit* edit = Open(u"one\r\nTool Change \u2014 M06\r\n\u4E2D\u6587\r\nfour");
  const auto baseline = [edit](int line) {
    const QTextBlock block = edit->document()->findBlockByNumber(line);
    PointOfPosition(kId, block.position());  // lays the line out
    const QTextLine text = block.layout()->lineAt(0);
    return text.y() + text.ascent();
  };
  for (int line = 1; line < 4; ++line) EXPECT_DOUBLE_EQ(baseline(line), baseline(0)) << line;
}

TEST(EditorWidget, TheFirstLineStaysAtTheTopWhenScrolled) {
  std::u16string text;
  for (int i = 0; i < 500; ++i) text += u"G1 X1\r\n";
  Open(text);
  ScrollToLine(kId, 137);
  EXPECT_EQ(FirstVisibleLine(kId), 137);
  EXPECT_EQ(PointOfPosition(kId, EditorLineStart(kId, 137)).y, 4);
  EXPECT_GE(stand::Count(kId, kNotifyVScroll), 1);
}

TEST(EditorWidget, TypingIsToldByCharacterAndUndoneByAltZ) {
  Open(u"");
  QTest::keyClicks(WidgetOf(kId), QStringLiteral("G1"));
  QTest::keyClick(WidgetOf(kId), Qt::Key_Return);
  QTest::keyClick(WidgetOf(kId), Qt::Key_Tab);
  QTest::keyClick(WidgetOf(kId), Qt::Key_Backspace);
  EXPECT_EQ(stand::told.typed, u"G1\n\t");
  EXPECT_EQ(stand::told.typedNothing, 1);
  EXPECT_EQ(Text(), u"G1\r\n");
  while (CanUndoEditor(kId)) QTest::keyClick(WidgetOf(kId), Qt::Key_Z, Qt::AltModifier);
  EXPECT_EQ(Text(), u"");
}

TEST(EditorWidget, ShiftEnterIsAPlainLineEnd) {
  Open(u"");
  QTest::keyClick(WidgetOf(kId), Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(Text(), u"\r\n");
  EXPECT_EQ(EditorLineCount(kId), 2);
}

TEST(EditorWidget, AKeyThatTheApplicationTakesReachesNoText) {
  Open(u"");
  stand::events.key = [](int, const KeyEvent& key) { return key.key == 'S' || key.key == kKeyTab; };
  QTest::keyClick(WidgetOf(kId), Qt::Key_S);
  QTest::keyClick(WidgetOf(kId), Qt::Key_Tab);
  QTest::keyClick(WidgetOf(kId), Qt::Key_A);
  EXPECT_EQ(Text(), u"a");
  EXPECT_EQ(FocusedId(), kId);
}

TEST(EditorWidget, ShiftTabAndCtrlTabLeaveItAndTabDoesNot) {
  Open(u"");
  ControlSpec spec;
  spec.id = 101;
  spec.kind = ControlKind::PushButton;
  spec.text = u"NEW";
  MakeControl(spec);
  QTest::keyClick(WidgetOf(kId), Qt::Key_Tab);
  EXPECT_EQ(FocusedId(), kId);
  EXPECT_EQ(Text(), u"\t");
  QTest::keyClick(WidgetOf(kId), Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(FocusedId(), 101);
  SetFocusTo(kId);
  QTest::keyClick(WidgetOf(kId), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(FocusedId(), 101);
  EXPECT_EQ(Text(), u"\t");
}

TEST(EditorWidget, PastingBringsInForeignLineEndsAsOneStep) {
  Open(u"ab");
  QGuiApplication::clipboard()->setText(QStringLiteral("1\r2\r\n3"));
  SetEditorSelection(kId, {1, 1});
  QTest::keyClick(WidgetOf(kId), Qt::Key_V, Qt::AltModifier);
  EXPECT_EQ(Text(), u"a1\r\n2\r\n3b");
  EXPECT_EQ(EditorSelection(kId).to, 6);
  UndoEditor(kId);
  EXPECT_EQ(Text(), u"ab");
}

TEST(EditorWidget, AMarkedLineChangesNeitherTextNorCaret) {
  QPlainTextEdit* edit = Open(u"one\r\ntwo");
  MarkEditorLine(kId, 1, 0x123456);
  ASSERT_EQ(edit->extraSelections().size(), 1);
  EXPECT_EQ(edit->extraSelections().first().cursor.blockNumber(), 1);
  EXPECT_EQ(EditorSelection(kId).to, 0);
  EXPECT_FALSE(CanUndoEditor(kId));
  MarkEditorLine(kId, -1, 0);
  EXPECT_TRUE(edit->extraSelections().isEmpty());
}

TEST(EditorWidget, AReadOnlyEditorTakesNoKeysButLetsTheCaretWalk) {
  Open(u"one\r\ntwo");
  SetEditorReadOnly(kId, true);
  QTest::keyClick(WidgetOf(kId), Qt::Key_Q);
  EXPECT_EQ(Text(), u"one\r\ntwo");
  QTest::keyClick(WidgetOf(kId), Qt::Key_Down);
  EXPECT_EQ(EditorLineOf(kId, EditorSelection(kId).to), 1);
}

}  // namespace
