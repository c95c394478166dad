// A line of an editor that is too long to be drawn whole: it looks as it would, and its text and
// its places are those of any line.

#include <gtest/gtest.h>

#include <QImage>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <functional>

#include "platform/limits.h"
#include "widgets/stand.h"

namespace {

using namespace platform;

constexpr int kId = 300;
constexpr int kShort = platform::kMaxLineDrawnWhole - 1;  // with its end just drawn whole
constexpr int kLong = platform::kMaxLineDrawnWhole + 900;

QPlainTextEdit* Open(std::u16string_view text) {
  stand::Open();
  QApplication::setCursorFlashTime(0);
  EditorSpec spec;
  spec.id = kId;
  spec.text = 0xDCE0E6;
  spec.background = 0x03080E;
  MakeEditor(spec);
  SetPlace(kId, {10, 10, 610, 410});
  SetEditorText(kId, text);
  SetFocusTo(kId);
  return static_cast<QPlainTextEdit*>(WidgetOf(kId));
}

std::u16string Line(int units, std::u16string_view words = u"G01\tX12.5 Y-3.75 (a) ") {
  std::u16string line;
  while (static_cast<int>(line.size()) < units) line += words;
  line.resize(static_cast<std::size_t>(units));
  return line;
}

std::u16string Program(int units) { return u"%\r\n" + Line(units) + u"\r\nM30\r\n"; }

const QTextBlock LineBlock(const QPlainTextEdit* edit) {
  return edit->document()->findBlockByNumber(1);
}

// The line below and one that is drawn whole, prepared alike and scrolled alike, look alike. Their
// first units are the same.
void ExpectToLookAlike(const std::function<void()>& prepare) {
  for (const int scrolled : {0, 777, 12000}) {
    SCOPED_TRACE(scrolled);
    QImage pictures[2];
    for (const int units : {kShort, kLong}) {
      QPlainTextEdit* edit = Open(Program(units));
      prepare();
      edit->horizontalScrollBar()->setValue(scrolled);
      EXPECT_EQ(edit->horizontalScrollBar()->value(), scrolled);
      pictures[units == kLong] = edit->viewport()->grab().toImage();
      EXPECT_EQ(IsVisible(kId), true);
    }
    ASSERT_FALSE(pictures[0].isNull());
    EXPECT_EQ(pictures[0], pictures[1]);
  }
}

TEST(LongLine, LooksAsALineThatIsDrawnWhole) {
  ExpectToLookAlike([] {});
}

TEST(LongLine, ShowsTheCaretWhereItStands) {
  for (const int at : {2, 30, 60}) {
    ExpectToLookAlike([at] { SetEditorSelection(kId, {at, at}); });
  }
}

TEST(LongLine, ShowsWhatIsSelectedAlsoOverTabs) {
  ExpectToLookAlike([] { SetEditorSelection(kId, {4, 44}); });
  ExpectToLookAlike([] { SetEditorSelection(kId, {0, 3000}); });
}

TEST(LongLine, ShowsColoursAndMarks) {
  ExpectToLookAlike([] {
    const ColourRun runs[] = {{0, 3, 0x00FF00, false}, {4, 5, 0xFF8800, true}, {90, 40, 0x3366FF}};
    SetLineRuns(kId, 1, runs, 3);
    MarkEditorLine(kId, 1, 0x404000);
  });
}

TEST(LongLine, KeepsEachUnitInItsPlace) {
  for (const int units : {kShort, kLong}) {
    Open(Program(units));
    const int start = EditorLineStart(kId, 1);
    const int cell = PointOfPosition(kId, start + 1).x - PointOfPosition(kId, start).x;
    ASSERT_GT(cell, 4);
    for (const int at : {0, 1, 3, 17, 40}) {
      const Point place = PointOfPosition(kId, start + at);
      EXPECT_EQ(place.y, PointOfPosition(kId, start).y);
      EXPECT_EQ(PositionAt(kId, place.x + 1, place.y + 10), start + at) << at;
    }
    EXPECT_EQ(EditorLineLength(kId, 1), units);
    EXPECT_EQ(PointOfPosition(kId, EditorLineStart(kId, 2)).y,
              PointOfPosition(kId, start).y + kEditorLineHeight);
  }
}

TEST(LongLine, IsEditedUndoneAndCopiedAsAnyLine) {
  constexpr int kUnits = 1 << 18;
  const QPlainTextEdit* edit = Open(Program(kUnits));
  const std::u16string before(EditorText(kId));
  EXPECT_EQ(before, Program(kUnits));
  EXPECT_EQ(EditorLineCount(kId), 4);
  const int middle = EditorLineStart(kId, 1) + kUnits / 2;
  SetEditorSelection(kId, {middle, middle});
  QTest::keyClicks(WidgetOf(kId), QStringLiteral("77"));
  std::u16string typed = before;
  typed.insert(static_cast<std::size_t>(middle) + 1, u"77");
  EXPECT_EQ(EditorText(kId), typed);
  EXPECT_EQ(edit->textCursor().position(), middle + 2);
  EXPECT_TRUE(UndoEditor(kId));
  EXPECT_EQ(EditorText(kId), before);
  QTest::keyClick(WidgetOf(kId), Qt::Key_Right, Qt::ShiftModifier);
  QTest::keyClick(WidgetOf(kId), Qt::Key_Home);
  EXPECT_EQ(edit->textCursor().position(), EditorLineStart(kId, 1));
  QTest::keyClick(WidgetOf(kId), Qt::Key_End);
  EXPECT_EQ(edit->textCursor().position(), EditorLineStart(kId, 1) + kUnits);
  QTest::keyClick(WidgetOf(kId), Qt::Key_Down);
  EXPECT_EQ(EditorLineOf(kId, edit->textCursor().position()), 2);
  ScrollToLine(kId, 1);
  EXPECT_EQ(EditorText(kId), before);
}

// What makes it fast: the layout is kept, and the toolkit does not draw the line.
TEST(LongLine, KeepsItsLayoutFromItsLimitOn) {
  QPlainTextEdit* edit = Open(Program(kShort));
  EXPECT_FALSE(LineBlock(edit).layout()->cacheEnabled());
  SetEditorSelection(kId, {10, 10});
  QTest::keyClicks(WidgetOf(kId), QStringLiteral("77"));
  edit->viewport()->grab();
  EXPECT_TRUE(LineBlock(edit).layout()->cacheEnabled());
  EXPECT_TRUE(LineBlock(edit).isVisible());
  EXPECT_TRUE(UndoEditor(kId));
  edit->viewport()->grab();
  EXPECT_FALSE(LineBlock(edit).layout()->cacheEnabled());
}

// Hebrew letters: the toolkit puts them in order.
TEST(LongLine, LeavesTextFromRightToLeftToTheToolkit) {
  QPlainTextEdit* edit = Open(u"%\r\n" + Line(kLong, u"X1 \u05D0\u05D1 ") + u"\r\n");
  edit->viewport()->grab();
  EXPECT_FALSE(LineBlock(edit).layout()->cacheEnabled());
}

bool IsDrawnInParts(std::u16string_view words) {
  QPlainTextEdit* edit = Open(u"%\r\n" + Line(kLong, words) + u"\r\n");
  edit->viewport()->grab();
  return LineBlock(edit).layout()->cacheEnabled();
}

// Letters of a script above U+FFFF, Arabic digits, and marks that turn plain letters over.
TEST(LongLine, LeavesWhateverMayRunFromRightToLeftToTheToolkit) {
  for (const std::u16string_view words :
       {u"X1 \xD83A\xDD00 ", u"X1 \u0661\u0662 ", u"X1 \u202Eabc\u202C ", u"X1 \u2067abc\u2069 "}) {
    EXPECT_FALSE(IsDrawnInParts(words)) << std::u16string(words).size();
  }
}

// An emoji, one of several characters with a joiner and a mark, a letter with a mark of its own.
TEST(LongLine, DrawsEmojiAsItDrawsAnyText) {
  for (const std::u16string_view words :
       {u"G01 (\xD83D\xDE00) ", u"X1 (\xD83D\xDC69\u200D\xD83D\xDD27) Y2 ", u"(\u2764\uFE0F) M8 ",
        u"X1 (e\u0301 \u2014 \u4E2D) ", u"X1 \xD83D "}) {
    EXPECT_TRUE(IsDrawnInParts(words)) << std::u16string(words).size();
  }
  for (const int scrolled : {0, 777, 12000}) {
    QImage pictures[2];
    for (const int units : {kShort, kLong}) {
      QPlainTextEdit* edit =
          Open(u"%\r\n" + Line(units, u"G01 X12.5 (\xD83D\xDE00\u2764\uFE0F) ") + u"\r\nM30\r\n");
      edit->horizontalScrollBar()->setValue(scrolled);
      pictures[units == kLong] = edit->viewport()->grab().toImage();
    }
    EXPECT_EQ(pictures[0], pictures[1]) << scrolled;
  }
}

}  // namespace
