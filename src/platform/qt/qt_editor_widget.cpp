// The editor widget: lines of one height, the mirror, keys and colours.

#include <QApplication>
#include <QFontMetricsF>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QPainter>
#include <QPlainTextDocumentLayout>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <QWheelEvent>
#include <algorithm>
#include <unordered_map>
#include <utility>

#include "platform/common/line_ends.h"
#include "platform/control.h"
#include "platform/limits.h"
#include "platform/qt/qt_editor.h"
#include "platform/same_units.h"

namespace platform {

namespace {

int programMoves = 0;  // how many ByProgram stand

// Every line is as high as the gutter's pitch, also one with characters of another face. A line
// never wraps.
//
// The toolkit's layout looks for the widest line anew, through the whole text, whenever the one
// it knows becomes narrower. Here that is done in short texts only: in a long one the width
// stays until the text is replaced, and a key costs the same at any length.
class EvenLayout : public QPlainTextDocumentLayout {
 public:
  using QPlainTextDocumentLayout::QPlainTextDocumentLayout;
  QRectF blockBoundingRect(const QTextBlock& block) const override {
    if (block.isValid()) const_cast<EvenLayout*>(this)->Arranged(block);
    QRectF place = QPlainTextDocumentLayout::blockBoundingRect(block);
    if (block.isVisible() || IsLongLine(block)) place.setHeight(kEditorLineHeight);
    // The toolkit scrolls to no line whose place is empty.
    place.setWidth(std::max(1.0, place.width()));
    return place;
  }
  QSizeF documentSize() const override {
    return QSizeF(widest_, QPlainTextDocumentLayout::documentSize().height());
  }

 protected:
  void documentChanged(int from, int removed, int added) override {
    const QTextDocument* text = document();
    const QTextBlock first = text->findBlock(from);
    const QTextBlock last = text->findBlock(std::max(0, from + removed + added - 1));
    const bool oneLine = first.isValid() && first == last && text->blockCount() == lines_;
    lines_ = text->blockCount();
    if (oneLine) {
      first.layout()->clearLayout();
      Arranged(first);
      if (lines_ <= kShort) FindWidest();
      Q_EMIT updateBlock(first);
      return;
    }
    if (from == 0 && added >= text->characterCount() - 1) widest_ = 0;
    QPlainTextDocumentLayout::documentChanged(from, removed, added);
    if (lines_ <= kShort) FindWidest();
  }

 private:
  static constexpr int kShort = 4000;  // lines

  // Lays the line out where it is not, and keeps the greatest width.
  void Arranged(const QTextBlock& block) {
    QTextLayout* layout = block.layout();
    if (layout->lineCount() == 0) {
      layout->setTextOption(document()->defaultTextOption());
      // The toolkit shapes a whole line anew for each caret that it looks for.
      layout->setCacheEnabled(NoteLongLine(block));
      layout->beginLayout();
      QTextLine line = layout->createLine();
      if (line.isValid()) {
        line.setLeadingIncluded(true);
        line.setLineWidth(kUnlimited);
        // A character of another face, as the dash in a shared command word, is higher and
        // would push its line down.
        const double up = QFontMetricsF(document()->defaultFont()).ascent() - line.ascent();
        line.setPosition(QPointF(document()->documentMargin(), up));
      }
      layout->endLayout();
    }
    if (Width(block) <= widest_) return;
    widest_ = Width(block);
    Q_EMIT documentSizeChanged(documentSize());
  }
  double Width(const QTextBlock& block) const {
    const QTextLayout* layout = block.layout();
    if (layout->lineCount() == 0) return 0;
    return layout->lineAt(0).naturalTextWidth() + 2 * document()->documentMargin();
  }
  void FindWidest() {
    const double before = widest_;
    widest_ = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
      widest_ = std::max(widest_, Width(block));
    }
    if (widest_ != before) Q_EMIT documentSizeChanged(documentSize());
  }

  static constexpr double kUnlimited = 1 << 24;  // pixels
  double widest_ = 0;
  int lines_ = 0;
};

// One shared format for every run of the same look; a program has a dozen of them.
const QTextCharFormat& FormatFor(const ColourRun& run) {
  static std::unordered_map<std::uint64_t, QTextCharFormat> formats;
  const std::uint64_t ground = run.marked ? (std::uint64_t{run.ground} << 1) | 1u : 0u;
  const std::uint32_t face = (run.colour << 1) | (run.bold ? 1u : 0u);
  QTextCharFormat& format = formats[(ground << 32) | face];
  if (format.isEmpty()) {
    format.setForeground(ColourOf(run.colour));
    if (run.bold) format.setFontWeight(QFont::Bold);
    if (run.marked) format.setBackground(ColourOf(run.ground));
  }
  return format;
}

// The toolkit goes through all lines of a text whenever a view comes up with it or gets another
// width, unless the text was shown by another view first, and that was the wider one: then the
// first one lays it out for all. This one has met each text while that was empty, and is never
// seen.
std::shared_ptr<QPlainTextEdit> MainView() {
  static std::weak_ptr<QPlainTextEdit> only;
  std::shared_ptr<QPlainTextEdit> view = only.lock();
  if (view) return view;
  constexpr int kWiderThanAll = 1 << 20;  // pixels
  view = std::make_shared<QPlainTextEdit>();
  view->setLineWrapMode(QPlainTextEdit::NoWrap);
  view->viewport()->resize(kWiderThanAll, kEditorLineHeight);
  only = view;
  return view;
}

}  // namespace

ByProgram::ByProgram() { ++programMoves; }
ByProgram::~ByProgram() { --programMoves; }
bool ByProgram::Stands() { return programMoves > 0; }

EditorWidget::EditorWidget(const EditorSpec& spec, QWidget* parent)
    : PlacedWidget<QPlainTextEdit>(spec.id, true, parent),
      mainView_(MainView()),
      caretBand_(spec.caretLine) {
  setLineWrapMode(QPlainTextEdit::NoWrap);
  setDocument(MakeDocument());
  setViewportMargins(kEditorTop, kEditorTop, 0, 0);
  setFrameShape(QFrame::NoFrame);
  setAutoFillBackground(true);
  PaintWith(this, spec.text, spec.background);
  QPalette colours = palette();
  colours.setColor(QPalette::Window, ColourOf(spec.background));
  setPalette(colours);
  viewport()->setMouseTracking(true);
  connect(this, &QPlainTextEdit::textChanged, this, [this] {
    if (!settingWhole_ && !keeping_) TellChange();
  });
  connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] {
    FollowCaretLine();
    TellSelection();
  });
  connect(this, &QPlainTextEdit::selectionChanged, this, [this] { TellSelection(); });
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this,
          [this] { SendCommand(Id(), kNotifyVScroll); });
  connect(horizontalScrollBar(), &QScrollBar::valueChanged, this,
          [this] { SendCommand(Id(), kNotifyHScroll); });
}

QTextDocument* EditorWidget::MakeDocument() {
  auto* text = new QTextDocument(this);
  text->setDocumentLayout(new EvenLayout(text));
  text->setDefaultFont(FontOf(FontRole::Code));
  // The room above the first line is the view's, so that it stays when the text scrolls.
  text->setDocumentMargin(0);
  mainView_->setDocument(text);
  mainView_->setDocument(nullptr);
  text->clearUndoRedoStacks();
  connect(text, &QTextDocument::contentsChange, this,
          [this, text](int from, int removed, int added) {
            if (text == document()) DocumentChanged(from, removed, added);
          });
  return text;
}

void EditorWidget::DocumentChanged(int from, int removed, int added) {
  if (removed == 0 && added == 0) return;
  ++revision_;
  textChanged_ = true;
  const int before = knownLength_;
  knownLength_ = Length();
  if (settingWhole_) return;
  // The toolkit may count the text's own end along on both sides.
  from = std::clamp(from, 0, knownLength_);
  added = std::clamp(added, 0, knownLength_ - from);
  removed = before + added - knownLength_;
  if (removed < 0 || from + removed > before) {
    from = 0;
    removed = before;
    added = knownLength_;
  }
  NoteStretch(from, removed, added);
  NoteChangedLines(from, added);
}

void EditorWidget::NoteChangedLines(int from, int added) {
  const int before = knownLines_;
  knownLines_ = document()->blockCount();
  ChangedLines lines;
  lines.line = document()->findBlock(from).blockNumber();
  lines.after = document()->findBlock(from + added).blockNumber() - lines.line + 1;
  lines.before = lines.after - knownLines_ + before;
  NoteLines(journal_, revision_, lines);
}

// Takes every stretch that the change touches into one; those behind it move along.
void EditorWidget::NoteStretch(int from, int removed, int added) {
  Stretch whole{from, from + removed, 0};
  int held = 0;
  int mirrored = 0;
  std::vector<Stretch> kept;
  std::size_t place = 0;
  for (Stretch stretch : stale_) {
    if (stretch.to < from) {
      kept.push_back(stretch);
      place = kept.size();
    } else if (stretch.from > from + removed) {
      stretch.from += added - removed;
      stretch.to += added - removed;
      kept.push_back(stretch);
    } else {
      whole.from = std::min(whole.from, stretch.from);
      whole.to = std::max(whole.to, stretch.to);
      held += stretch.to - stretch.from;
      mirrored += stretch.mirrored;
    }
  }
  whole.mirrored = whole.to - whole.from - held + mirrored;
  whole.to += added - removed;
  kept.insert(kept.begin() + static_cast<std::ptrdiff_t>(place), whole);
  stale_ = std::move(kept);
  if (stale_.size() <= kMaxStretches) return;
  // Edits without a read in between, all over the text: one stretch around the last two.
  const Stretch last = stale_.back();
  stale_.pop_back();
  Stretch& other = stale_.back();
  other.mirrored += last.from - other.to + last.mirrored;
  other.to = last.to;
}

// The mirror is right up to the front of the stretch.
void EditorWidget::CopyStretch(const Stretch& stretch) {
  const QTextDocument* text = document();
  // A line end is one position and two units of the mirror.
  const std::size_t front = std::min(
      mirror_.size(),
      static_cast<std::size_t>(stretch.from + text->findBlock(stretch.from).blockNumber()));
  std::size_t back = front;
  for (int i = 0; i < stretch.mirrored && back < mirror_.size(); ++i) {
    back += mirror_[back] == u'\r' ? 2 : 1;
  }
  std::u16string middle;
  middle.reserve(static_cast<std::size_t>(stretch.to - stretch.from) + 16);
  QTextCursor cursor(document());
  cursor.setPosition(stretch.from);
  cursor.setPosition(stretch.to, QTextCursor::KeepAnchor);
  for (const QChar c : cursor.selectedText()) {
    if (c == QChar::ParagraphSeparator) {
      middle.append(u"\r\n");
    } else {
      middle.push_back(c.unicode());
    }
  }
  mirror_.replace(front, back - front, middle);
}

std::u16string_view EditorWidget::Mirror() {
  if (stale_.empty()) return mirror_;
  for (const Stretch& stretch : stale_) CopyStretch(stretch);
  stale_.clear();
  const int units = Length() + document()->blockCount() - 1;
  if (mirror_.size() != static_cast<std::size_t>(units)) {
    mirror_ = TextOfDocument(*document());
  }
  return mirror_;
}

// What follows every new text.
void EditorWidget::BeginAtFront() {
  stale_.clear();
  bands_.clear();
  marks_.clear();
  runsFrom_ = runsTo_ = -1;
  knownLength_ = Length();
  knownLines_ = document()->blockCount();
  setTextCursor(QTextCursor(document()));
  verticalScrollBar()->setValue(0);
  horizontalScrollBar()->setValue(0);
  textChanged_ = false;
  lastAnchor_ = lastCaret_ = 0;
}

void EditorWidget::TellWhole() {
  const QPointer<QWidget> self(this);
  SendCommand(Id(), kNotifyEditChange);
  if (!self.isNull() && Listener().selection != nullptr)
    Listener().selection(Id(), !ByProgram::Stands());
}

void EditorWidget::SetWhole(std::u16string_view text) {
  settingWhole_ = true;
  const std::uint64_t before = revision_;
  mirror_ = WithCrLf(text);
  // No copy: the document takes its own while it builds the lines.
  document()->setPlainText(QString::fromRawData(reinterpret_cast<const QChar*>(mirror_.data()),
                                                static_cast<qsizetype>(mirror_.size())));
  revision_ = before + 1;
  coloured_ = false;
  BeginAtFront();
  settingWhole_ = false;
  TellWhole();
}

void EditorWidget::ShowDocument(QTextDocument* text) {
  // A band behind a line is a caret in the text that leaves.
  setExtraSelections({});
  if (text->defaultFont() != document()->defaultFont()) {
    text->setDefaultFont(document()->defaultFont());
  }
  setDocument(text);
}

void EditorWidget::LayAside(std::uint64_t number) {
  DropAside(number);
  settingWhole_ = true;
  (void)Mirror();
  QTextDocument* const text = document();
  text->clearUndoRedoStacks();
  aside_.push_back({number, text, std::exchange(mirror_, {}), std::exchange(coloured_, false)});
  ShowDocument(MakeDocument());
  BeginAtFront();
  settingWhole_ = false;
  DropOldAside();
}

void EditorWidget::DropOldAside() {
  int lines = 0;
  for (const Aside& each : aside_) lines += each.document->blockCount();
  while (lines > kMaxLinesAside) {
    lines -= aside_.front().document->blockCount();
    delete aside_.front().document;
    aside_.erase(aside_.begin());
  }
}

void EditorWidget::DropAside(std::uint64_t number) {
  std::erase_if(aside_, [number](const Aside& each) {
    if (number != 0 && each.number != number) return false;
    delete each.document;
    return true;
  });
}

bool EditorWidget::TakeBack(std::uint64_t number, std::u16string_view text) {
  const auto found = std::ranges::find(aside_, number, &Aside::number);
  if (found == aside_.end()) return false;
  if (!SameUnits(found->mirror, text)) {
    DropAside(number);
    return false;
  }
  settingWhole_ = true;
  QTextDocument* const left = document();
  mirror_ = std::move(found->mirror);
  coloured_ = found->coloured;
  ShowDocument(found->document);
  aside_.erase(found);
  delete left;
  ++revision_;
  BeginAtFront();
  settingWhole_ = false;
  TellWhole();
  return true;
}

void EditorWidget::Select(int anchor, int caret) {
  const int length = Length();
  QTextCursor cursor(document());
  cursor.setPosition(std::clamp(anchor, 0, length));
  cursor.setPosition(std::clamp(caret, 0, length), QTextCursor::KeepAnchor);
  setTextCursor(cursor);
}

void EditorWidget::Replace(QTextCursor cursor, std::u16string_view text) {
  const std::u16string normal = WithCrLf(text);
  cursor.beginEditBlock();
  cursor.removeSelectedText();
  cursor.insertText(Text(normal));
  cursor.endEditBlock();
  // What is typed next is a step of its own: the toolkit adds nothing to a step after this.
  document()->setModified(false);
  if (Frozen()) document()->clearUndoRedoStacks();
}

void EditorWidget::TellChange() {
  if (!textChanged_) return;
  textChanged_ = false;
  SendCommand(Id(), kNotifyEditChange);
}

void EditorWidget::TellKept() {
  keeping_ = false;
  const QPointer<QWidget> self(this);
  TellSelection();
  if (!self.isNull()) TellChange();
}

void EditorWidget::TellSelection() {
  const QTextCursor cursor = textCursor();
  if (settingWhole_ || keeping_) return;
  if (cursor.anchor() == lastAnchor_ && cursor.position() == lastCaret_) return;
  lastAnchor_ = cursor.anchor();
  lastCaret_ = cursor.position();
  if (Listener().selection != nullptr) Listener().selection(Id(), !ByProgram::Stands());
}

void EditorWidget::TellTyped(const QString& characters) {
  if (Listener().typed == nullptr) return;
  const QPointer<QWidget> self(this);
  if (characters.isEmpty()) {
    Listener().typed(Id(), 0);
    return;
  }
  for (const QChar c : characters) {
    if (!self.isNull()) Listener().typed(Id(), c == u'\r' ? u'\n' : c.unicode());
  }
}

bool EditorWidget::focusNextPrevChild(bool next) {
  // Tab is a character here; Shift+Tab and Ctrl+Tab leave the editor, and Tab as well where
  // nothing can be written.
  return (!next || isReadOnly()) && QWidget::focusNextPrevChild(next);
}

void EditorWidget::keyPressEvent(QKeyEvent* event) {
  const bool ctrl = event->modifiers().testFlag(Qt::ControlModifier);
  if (event->key() == Qt::Key_Backtab || (event->key() == Qt::Key_Tab && ctrl)) {
    QWidget::focusNextPrevChild(event->key() == Qt::Key_Tab);
    return;
  }
  const std::uint64_t before = revision_;
  const QPointer<QWidget> self(this);
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (ctrl && event->key() == Qt::Key_Y && !isReadOnly()) {
    redo();
  } else if (enter && !isReadOnly()) {
    // Also with Shift, which the toolkit would make a soft line end.
    QKeyEvent plain(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    QPlainTextEdit::keyPressEvent(&plain);
    event->accept();
  } else {
    QPlainTextEdit::keyPressEvent(event);
  }
  if (self.isNull() || revision_ == before) return;
  QString typed = event->text();
  if (enter) typed = QStringLiteral("\n");
  const bool character = !typed.isEmpty() && !ctrl &&
                         (typed.at(0).isPrint() || typed.at(0) == u'\n' || typed.at(0) == u'\t');
  TellTyped(character ? typed : QString());
}

void EditorWidget::inputMethodEvent(QInputMethodEvent* event) {
  const QPointer<QWidget> self(this);
  const QString typed = event->commitString();
  const bool enabled = !isReadOnly();
  QPlainTextEdit::inputMethodEvent(event);
  if (!self.isNull() && enabled && !typed.isEmpty()) TellTyped(typed);
}

void EditorWidget::wheelEvent(QWheelEvent* event) {
  // With Ctrl the toolkit would change the size of the letters.
  if (event->modifiers().testFlag(Qt::ControlModifier)) return;
  QPlainTextEdit::wheelEvent(event);
}

void EditorWidget::mouseMoveEvent(QMouseEvent* event) {
  QPlainTextEdit::mouseMoveEvent(event);
  if (event->buttons() != Qt::NoButton || !Listener().pointer) return;
  PointerEvent pointer = PointerFrom(*event, PointerAction::Move);
  const QPoint place = viewport()->mapTo(this, event->pos());
  pointer.x = place.x();
  pointer.y = place.y();
  Listener().pointer(Id(), pointer);
}

QMimeData* EditorWidget::createMimeDataFromSelection() const {
  return PlainMimeData(textCursor().selectedText());
}

void EditorWidget::insertFromMimeData(const QMimeData* source) {
  if (isReadOnly() || !source->hasText()) return;
  const std::u16string text = Text16(source->text());
  QTextCursor cursor = textCursor();
  Replace(cursor, text);
  ensureCursorVisible();
}

// Colours go on as formats of the line's layout. Each change leaves a note in the document
// that would widen the next edit, so the notes are worked off when the colouring ends.
void EditorWidget::SetRuns(int line, const ColourRun* runs, int count) {
  const QTextBlock block = document()->findBlockByNumber(line);
  if (!block.isValid()) return;
  const QTextLayout* known = block.layout();
  if (count <= 0 && known->formats().isEmpty()) return;
  QList<QTextLayout::FormatRange> formats;
  formats.reserve(count);
  for (int i = 0; i < count; ++i) {
    QTextLayout::FormatRange range;
    range.start = runs[i].from;
    range.length = runs[i].length;
    range.format = FormatFor(runs[i]);
    formats.append(range);
  }
  if (known->formats() == formats) return;
  coloured_ = true;
  block.layout()->setFormats(formats);
  const int end = block.position() + block.length();
  runsFrom_ = runsFrom_ < 0 ? block.position() : std::min(runsFrom_, block.position());
  runsTo_ = std::max(runsTo_, end);
  if (holds_ == 0) FlushRuns();
}

void EditorWidget::ClearRuns() {
  if (!coloured_) return;
  coloured_ = false;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    block.layout()->clearFormats();
  }
  runsFrom_ = 0;
  runsTo_ = Length() + 1;
  if (holds_ == 0) FlushRuns();
}

void EditorWidget::FlushRuns() {
  if (runsFrom_ < 0) return;
  const int from = std::min(runsFrom_, Length());
  const int to = std::min(runsTo_, Length() + 1);
  runsFrom_ = runsTo_ = -1;
  // Told to the layout alone: no change of the text is announced.
  document()->markContentsDirty(from, std::max(0, to - from));
}

void EditorWidget::Hold(bool hold) {
  if (hold) {
    if (holds_++ == 0) setUpdatesEnabled(false);
    return;
  }
  if (holds_ == 0 || --holds_ > 0) return;
  FlushRuns();
  setUpdatesEnabled(true);
}

void EditorWidget::Mark(int line, Colour band) {
  QList<QTextEdit::ExtraSelection> marks;
  const QTextBlock block = document()->findBlockByNumber(line);
  if (line >= 0 && block.isValid()) {
    QTextEdit::ExtraSelection mark;
    mark.cursor = QTextCursor(block);
    mark.format.setBackground(ColourOf(band));
    mark.format.setProperty(QTextFormat::FullWidthSelection, true);
    marks.append(mark);
  }
  if (marks.isEmpty() && extraSelections().isEmpty()) return;
  setExtraSelections(marks);
}

void EditorWidget::SetBands(const LineBand* bands, int count) {
  bands_.assign(bands, bands + std::max(0, count));
  viewport()->update();
}

void EditorWidget::SetMarks(const LineMark* marks, int count, Colour ground, Colour frame) {
  if (count <= 0 && marks_.empty()) return;
  marks_.assign(marks, marks + std::max(0, count));
  markGround_ = ground;
  markFrame_ = frame;
  viewport()->update();
}

void EditorWidget::FollowCaretLine() {
  const int line = caretBand_ != 0 ? textCursor().blockNumber() : caretLine_;
  if (line == caretLine_) return;
  caretLine_ = line;
  viewport()->update();
}

void EditorWidget::PaintMarks(QPainter& painter, const QTextBlock& block, double top) const {
  blockBoundingRect(block);  // lays the line out where it is not
  const int line = block.blockNumber();
  auto mark = std::lower_bound(marks_.begin(), marks_.end(), line,
                               [](const LineMark& each, int wanted) { return each.line < wanted; });
  if (mark == marks_.end() || mark->line != line || block.layout()->lineCount() == 0) return;
  const QTextLine whole = block.layout()->lineAt(0);
  const double left = contentOffset().x();
  painter.setPen(ColourOf(markFrame_));
  painter.setBrush(ColourOf(markGround_));
  for (; mark != marks_.end() && mark->line == line; ++mark) {
    const int to = std::min(mark->from + mark->length, block.length() - 1);
    if (to <= mark->from) continue;  // the line became shorter
    const double from = left + whole.cursorToX(mark->from);
    painter.drawRect(
        QRectF(from, top + 1, left + whole.cursorToX(to) - from, kEditorLineHeight - 3));
  }
}

// What goes under the text of the lines in view; the rest of the tables is not touched.
void EditorWidget::PaintBands(QPaintEvent* event) {
  QPainter painter(viewport());
  QTextBlock block = firstVisibleBlock();
  double top = blockBoundingGeometry(block).translated(contentOffset()).top();
  auto band = std::lower_bound(bands_.begin(), bands_.end(), block.blockNumber(),
                               [](const LineBand& each, int line) { return each.line < line; });
  const auto fill = [&](Colour colour) {
    painter.fillRect(QRectF(0, top, viewport()->width(), kEditorLineHeight), ColourOf(colour));
  };
  for (; block.isValid() && top <= event->rect().bottom(); block = block.next()) {
    const int line = block.blockNumber();
    if (caretBand_ != 0 && line == caretLine_) fill(caretBand_);
    if (band != bands_.end() && band->line == line) fill((band++)->band);
    PaintMarks(painter, block, top);
    top += kEditorLineHeight;
  }
}

void EditorWidget::paintEvent(QPaintEvent* event) {
  if (!bands_.empty() || !marks_.empty() || caretBand_ != 0) PaintBands(event);
  PaintText(event);
}

int EditorWidget::PositionAtPoint(int x, int y) const {
  return cursorForPosition(viewport()->mapFrom(this, QPoint(x, y))).position();
}

Point EditorWidget::PointOf(int position) const {
  QTextCursor cursor(document());
  cursor.setPosition(std::clamp(position, 0, Length()));
  // The caret itself is higher in a line with characters of another face.
  const double top = blockBoundingGeometry(cursor.block()).translated(contentOffset()).top();
  const QPoint at = viewport()->mapTo(this, QPoint(cursorRect(cursor).left(), qRound(top)));
  return Point{at.x(), at.y()};
}

void EditorWidget::ShowColumnOf(int position) {
  QTextCursor cursor(document());
  cursor.setPosition(std::clamp(position, 0, Length()));
  const int margin = 2 * fontMetrics().averageCharWidth();  // what stands beside it
  const int left = cursorRect(cursor).left();
  const int behind = left + margin - viewport()->width();
  QScrollBar* bar = horizontalScrollBar();
  if (left < margin) {
    bar->setValue(bar->value() + left - margin);
  } else if (behind > 0) {
    bar->setValue(bar->value() + behind);
  }
}

}  // namespace platform
