// Long lines of an editor: only what is in view of them is drawn.
//
// The toolkit draws a line from its first character to its last, however little of it is in view,
// and does so at each blink of the caret: a third of a second for a line of one mebibyte. Here the
// layout of a long line is kept, and of its text that is drawn which lies in the area to be
// painted, each stretch between two tabs where the whole line's layout has it. Nothing in the
// text changes.

#include <QPainter>
#include <QTextBlock>
#include <QTextLayout>
#include <algorithm>
#include <vector>

#include "platform/limits.h"
#include "platform/qt/qt_editor.h"

namespace platform {

namespace {

constexpr int kInParts = 1;  // the user state of a long line
constexpr int kBeside = 16;  // units on either side of what is in view: a character may reach over

// Letters from right to left, Arabic digits, which may turn what stands between them, and the marks
// that turn a text over. Marks that only join or combine, as within an emoji, turn nothing.
bool RunsBackwards(char32_t character) {
  switch (QChar::direction(character)) {
    case QChar::DirR:
    case QChar::DirAL:
    case QChar::DirAN:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirRLI:
      return true;
    default:
      return false;
  }
}

// A text that may run from right to left is drawn by the toolkit alone.
bool MayRunBackwards(const QString& text) {
  constexpr char16_t kFirstBackwards = 0x590;
  for (qsizetype i = 0; i < text.size(); ++i) {
    char32_t character = text[i].unicode();
    if (character < kFirstBackwards) continue;
    if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
      character = QChar::surrogateToUcs4(text[i], text[i + 1]);
      ++i;
    }
    if (RunsBackwards(character)) return true;
  }
  return false;
}

// From the first unit of the line on. `to` is behind the last.
struct Part {
  int from = 0;
  int to = 0;
};

Part PartInView(const QTextBlock& block, double left, double right) {
  const QTextLayout* layout = block.layout();
  const QTextLine line = layout->lineAt(0);
  const int end = block.length() - 1;
  Part part;
  part.from = std::max(0, line.xToCursor(left, QTextLine::CursorOnCharacter) - kBeside);
  part.to = std::min(end, line.xToCursor(right, QTextLine::CursorOnCharacter) + 1 + kBeside);
  while (part.from > 0 && !layout->isValidCursorPosition(part.from)) --part.from;
  while (part.to < end && !layout->isValidCursorPosition(part.to)) ++part.to;
  return part;
}

QString TextOf(const QTextBlock& block, const Part& part) {
  QTextCursor cursor(block);
  cursor.setPosition(block.position() + part.from);
  cursor.setPosition(block.position() + part.to, QTextCursor::KeepAnchor);
  return cursor.selectedText();
}

// Formats of the line as far as they reach into the part, counted from its front.
QList<QTextLayout::FormatRange> Shifted(const QList<QTextLayout::FormatRange>& formats,
                                        const Part& part) {
  QList<QTextLayout::FormatRange> shifted;
  for (QTextLayout::FormatRange format : formats) {
    const int end = std::min(format.start + format.length, part.to);
    format.start = std::max(format.start, part.from);
    format.length = end - format.start;
    if (format.length <= 0) continue;
    format.start -= part.from;
    shifted.append(format);
  }
  return shifted;
}

}  // namespace

bool NoteLongLine(QTextBlock block) {
  const bool isLong = block.length() > kMaxLineDrawnWhole && !MayRunBackwards(block.text());
  block.setUserState(isLong ? kInParts : -1);
  return isLong;
}

bool IsLongLine(const QTextBlock& block) {
  // While an input method writes, the layout has more than the text.
  return block.userState() == kInParts && block.layout()->preeditAreaText().isEmpty();
}

// The toolkit passes over lines that are hidden while it paints.
void EditorWidget::PaintText(QPaintEvent* event) {
  std::vector<std::pair<QTextBlock, QRectF>> longLines;
  QTextBlock block = firstVisibleBlock();
  double top = blockBoundingGeometry(block).translated(contentOffset()).top();
  for (; block.isValid() && top <= event->rect().bottom(); block = block.next()) {
    const double bottom = top + kEditorLineHeight;
    if (IsLongLine(block) && bottom > event->rect().top()) {
      const double left = contentOffset().x();
      longLines.emplace_back(block, QRectF(left, top, viewport()->width() - left, bottom - top));
    }
    top = bottom;
  }
  for (auto& [line, place] : longLines) line.setVisible(false);
  QPlainTextEdit::paintEvent(event);
  for (auto& [line, place] : longLines) line.setVisible(true);
  if (longLines.empty()) return;
  QPainter painter(viewport());
  painter.setClipRect(event->rect());
  for (const auto& [line, place] : longLines) PaintLongLine(painter, line, place, event->rect());
}

void EditorWidget::PaintLongLine(QPainter& painter, const QTextBlock& block, const QRectF& place,
                                 const QRect& area) const {
  const QTextLine whole = block.layout()->lineAt(0);
  const QAbstractTextDocumentLayout::PaintContext context = getPaintContext();
  const Part view = PartInView(block, area.left() - place.left(), area.right() - place.left());
  const auto x = [&](int unit) { return place.left() + whole.cursorToX(unit); };
  QList<QTextLayout::FormatRange> selections;
  for (const auto& selection : context.selections) {
    const QTextCursor& cursor = selection.cursor;
    QTextLayout::FormatRange range;
    range.format = selection.format;
    range.start = std::max(0, cursor.selectionStart() - block.position());
    range.length =
        std::min(block.length() - 1, cursor.selectionEnd() - block.position()) - range.start;
    const bool band = !cursor.hasSelection() && cursor.block() == block &&
                      range.format.boolProperty(QTextFormat::FullWidthSelection);
    if (band) painter.fillRect(area & place.toAlignedRect(), range.format.background());
    if (range.length <= 0) continue;
    const Part chosen{std::max(range.start, view.from),
                      std::min(range.start + range.length, view.to)};
    if (chosen.from >= chosen.to) continue;
    painter.fillRect(
        QRectF(x(chosen.from), place.top(), x(chosen.to) - x(chosen.from), place.height()),
        range.format.background());
    selections.append(range);
  }
  painter.setPen(context.palette.text().color());
  for (Part part = view; part.from < view.to; part.from = part.to + 1) {
    const QString text = TextOf(block, {part.from, view.to});
    const qsizetype tab = text.indexOf(u'\t');
    part.to = tab < 0 ? view.to : part.from + static_cast<int>(tab);
    QTextLayout piece(text.left(part.to - part.from), document()->defaultFont());
    piece.setTextOption(document()->defaultTextOption());
    piece.setFormats(Shifted(block.layout()->formats(), part));
    piece.beginLayout();
    QTextLine line = piece.createLine();
    if (line.isValid()) {
      line.setLeadingIncluded(true);
      line.setLineWidth(whole.width());
      // On the base line of the whole.
      line.setPosition(QPointF(0, whole.y() + whole.ascent() - line.ascent()));
    }
    piece.endLayout();
    piece.draw(&painter, QPointF(x(part.from), place.top()), Shifted(selections, part),
               QRectF(area));
  }
  const int caret = context.cursorPosition - block.position();
  const bool walks = (textInteractionFlags() & (Qt::TextEditable | Qt::TextSelectableByKeyboard));
  if (!walks || context.cursorPosition < 0 || caret < 0 || caret >= block.length()) return;
  block.layout()->drawCursor(&painter, place.topLeft(), caret, cursorWidth());
}

}  // namespace platform
