// Push buttons, check boxes, labels, edit lines, multi-line edits and logs.

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <QToolTip>
#include <QValidator>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "platform/common/line_ends.h"
#include "platform/control.h"
#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

constexpr int kNoLimit = 32767;  // what an edit line takes without a limit of its own

int clickedAt = -1;

class Button : public PlacedWidget<QPushButton> {
 public:
  Button(int id, QWidget* parent) : PlacedWidget<QPushButton>(id, true, parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_Hover);
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, [this] { Tell(); });
  }

 protected:
  // A key's state follows the application, never the click itself.
  void nextCheckState() override {}
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    Canvas canvas;
    canvas.painter = &painter;
    canvas.area = Rect{0, 0, width(), height()};
    DrawState state;
    state.area = canvas.area;
    state.pressed = isDown();
    state.focused = hasFocus();
    state.enabled = isEnabled();
    state.checked = isChecked();
    state.hovered = underMouse();
    if (Listener().drawItem != nullptr) {
      Listener().drawItem(Id(), state, canvas);
    } else {
      FillArea(canvas, canvas.area, kLookPanel);
    }
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    releasedAt_ = event->pos().x();
    const QPointer<QWidget> self(this);
    QPushButton::mouseReleaseEvent(event);
    if (!self.isNull()) releasedAt_ = -1;
  }
  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !event->isAutoRepeat()) {
      click();
      return;
    }
    QPushButton::keyPressEvent(event);
  }

 private:
  // What the click brings up may let another one happen.
  void Tell() {
    const int before = std::exchange(clickedAt, std::exchange(releasedAt_, -1));
    SendCommand(Id(), kNotifyClick);
    clickedAt = before;
  }

  int releasedAt_ = -1;
};

class Check : public PlacedWidget<QCheckBox> {
 public:
  Check(int id, QWidget* parent) : PlacedWidget<QCheckBox>(id, true, parent) {
    connect(this, &QCheckBox::clicked, this, [this] { SendCommand(Id(), kNotifyClick); });
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    // Some desktops let Enter press a check box; here it is the dialog's.
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter) {
      event->ignore();
      return;
    }
    PlacedWidget<QCheckBox>::keyPressEvent(event);
  }
};

// A label of one line is centred in its height and ends in an ellipsis where it must; a
// higher one breaks at blanks from the top. On a ground of its own it keeps a margin.
class LabelWidget : public PlacedWidget<QLabel> {
  static constexpr int kGroundMargin = 4;

 public:
  LabelWidget(int id, QWidget* parent) : PlacedWidget<QLabel>(id, false, parent) {
    setTextFormat(Qt::PlainText);
    colours.text = kLookText;
    colours.background = kLookWindow;
    colours.transparent = true;
  }
  ControlColours colours;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    if (!colours.transparent) painter.fillRect(rect(), ColourOf(colours.background));
    painter.setPen(isEnabled() ? ColourOf(colours.text) : ColourOf(kLookDim));
    const QFontMetrics metrics = fontMetrics();
    const bool one = height() < 2 * metrics.lineSpacing();
    if (!one) {
      const int margin = colours.transparent ? 0 : kGroundMargin;
      const QRect inner = rect().adjusted(margin, margin, -margin, -margin);
      painter.drawText(inner, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, text());
      return;
    }
    const QString words = metrics.elidedText(text(), Qt::ElideRight, width());
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, words);
  }
};

// Keeps line ends out of an edit line, by whatever way they come.
class OneLine : public QValidator {
 public:
  using QValidator::QValidator;
  State validate(QString& text, int& caret) const override {
    const std::u16string line = WithoutLineEnds(Text16(text));
    if (static_cast<qsizetype>(line.size()) == text.size()) return Acceptable;
    const std::u16string front = WithoutLineEnds(Text16(text.left(caret)));
    caret = static_cast<int>(front.size());
    text = Text(line);
    return Acceptable;
  }
};

bool IsRedoKey(const QKeyEvent& event) {
  return event.key() == Qt::Key_Y && event.modifiers() == Qt::ControlModifier;
}

class EditLineWidget : public PlacedWidget<QLineEdit> {
 public:
  EditLineWidget(int id, bool readOnly, QWidget* parent)
      : PlacedWidget<QLineEdit>(id, true, parent) {
    setReadOnly(readOnly);
    setValidator(new OneLine(this));
    connect(this, &QLineEdit::textChanged, this, [this] {
      if (Quiet::depth == 0) SendCommand(Id(), kNotifyEditChange);
    });
  }

  // One step of its own, also where line ends are left out.
  void PasteLine() {
    if (isReadOnly()) return;
    const QString held = QGuiApplication::clipboard()->text();
    const QString line = Text(WithoutLineEnds(Text16(held)));
    if (line.isEmpty()) return;
    if (line == held) {
      paste();
      return;
    }
    EndStep();
    insert(line);
    EndStep();
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::Paste)) {
      PasteLine();
    } else if (IsRedoKey(*event)) {
      redo();
    } else {
      PlacedWidget<QLineEdit>::keyPressEvent(event);
    }
  }
  void showEvent(QShowEvent* event) override {
    shown_.start();
    PlacedWidget<QLineEdit>::showEvent(event);
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    // An edit that came up between the two clicks of a double click did not get the first one.
    const bool between = shown_.isValid() && shown_.elapsed() < QApplication::doubleClickInterval();
    if (between && DoubleClickBelow(event->globalPosition().toPoint())) return;
    PlacedWidget<QLineEdit>::mouseDoubleClickEvent(event);
  }

 private:
  // The toolkit begins a new step where the caret moves.
  void EndStep() {
    if (hasSelectedText() || text().isEmpty()) return;
    const int caret = cursorPosition();
    setCursorPosition(caret > 0 ? 0 : 1);
    setCursorPosition(caret);
  }

  QElapsedTimer shown_;
};

class TextArea : public PlacedWidget<QPlainTextEdit> {
 public:
  TextArea(int id, bool log, QWidget* parent)
      : PlacedWidget<QPlainTextEdit>(id, true, parent), log_(log) {
    setTabChangesFocus(true);
    if (log) {
      setReadOnly(true);
      setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
      setUndoRedoEnabled(false);
    }
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
      if (Quiet::depth == 0) SendCommand(Id(), kNotifyEditChange);
    });
  }
  int limit = 0;
  bool IsLog() const { return log_; }
  // As a format of the layout: no text changes, and what comes behind the line stays plain.
  void ColourLine(int line, Colour colour) {
    const QTextBlock block = document()->findBlockByNumber(line);
    if (line < 0 || !block.isValid()) return;
    QTextLayout::FormatRange range;
    range.length = block.length();
    range.format.setForeground(ColourOf(colour));
    block.layout()->setFormats({range});
    document()->markContentsDirty(block.position(), block.length());
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool enters = enter || (!event->text().isEmpty() && event->text().at(0).isPrint());
    const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (log_ && enter && plain && window() == MainWidget()) {  // in a dialog it is the dialog's
      SendCommand(Id(), kNotifyListDouble);
      return;
    }
    if (enters && plain && Room() < (enter ? 2 : 1)) return;
    if (IsRedoKey(*event) && !isReadOnly()) {
      redo();
    } else if (enter && plain && !isReadOnly()) {
      // Also with Shift, which the toolkit would make a soft line end.
      QKeyEvent line(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
      QPlainTextEdit::keyPressEvent(&line);
      event->accept();
    } else {
      QPlainTextEdit::keyPressEvent(event);
    }
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    QPlainTextEdit::mouseDoubleClickEvent(event);
    if (log_ && event->button() == Qt::LeftButton) SendCommand(Id(), kNotifyListDouble);
  }
  QMimeData* createMimeDataFromSelection() const override {
    return PlainMimeData(textCursor().selectedText());
  }
  void insertFromMimeData(const QMimeData* source) override {
    if (!source->hasText() || isReadOnly()) return;
    const std::u16string text = WithCrLf(Text16(source->text()));
    const std::u16string_view fitting = FittingUnits(text, Room());
    if (fitting.empty()) return;
    // One step of its own: the toolkit joins it neither to what was typed before nor after.
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    cursor.insertText(Text(fitting));
    cursor.endEditBlock();
    document()->setModified(false);
    ensureCursorVisible();
  }
  void wheelEvent(QWheelEvent* event) override {
    // With Ctrl the toolkit would change the size of the letters.
    if (event->modifiers().testFlag(Qt::ControlModifier)) return;
    QPlainTextEdit::wheelEvent(event);
  }

 private:
  int Room() const {
    if (limit <= 0) return INT32_MAX;
    const int length = document()->characterCount() - 1 + document()->blockCount() - 1;
    const QTextCursor cursor = textCursor();
    return limit - length + (cursor.selectionEnd() - cursor.selectionStart());
  }
  bool log_;
};

TextArea* AreaOf(int id) {
  const Placed* row = FindPlaced(id);
  if (row == nullptr) return nullptr;
  const bool area = row->kind == PlacedKind::MultiEdit || row->kind == PlacedKind::Log;
  return area ? static_cast<TextArea*>(row->widget) : nullptr;
}

EditLineWidget* LineOf(int id) {
  const Placed* row = FindPlaced(id);
  return row != nullptr && row->kind == PlacedKind::EditLine
             ? static_cast<EditLineWidget*>(row->widget)
             : nullptr;
}

QCheckBox* CheckOf(int id) {
  const Placed* row = FindPlaced(id);
  return row != nullptr && row->kind == PlacedKind::CheckBox ? static_cast<QCheckBox*>(row->widget)
                                                             : nullptr;
}

// "&" is a plain character in every caption.
QString Caption(std::u16string_view text) {
  QString caption = Text(text);
  caption.replace(u'&', QStringLiteral("&&"));
  return caption;
}

bool HasCaption(PlacedKind kind) {
  return kind == PlacedKind::PushButton || kind == PlacedKind::CheckBox ||
         kind == PlacedKind::Label;
}

void PlaceCaption(Placed& row, std::u16string_view text) {
  if (row.text == text) return;
  row.text = text;
  if (row.kind == PlacedKind::Label) static_cast<QLabel*>(row.widget)->setText(Text(text));
  if (row.kind == PlacedKind::CheckBox) {
    static_cast<QCheckBox*>(row.widget)->setText(Caption(text));
  }
  if (row.kind == PlacedKind::PushButton) {
    static_cast<QPushButton*>(row.widget)->setText(Caption(text));
  }
  RefreshAccessibleName(row);
}

void PlaceLineText(EditLineWidget* line, int limit, std::u16string_view text) {
  const Quiet quiet;
  const std::u16string held = WithoutLineEnds(text);
  // The limit binds what is typed, never what the program sets.
  const int length = static_cast<int>(held.size());
  line->setMaxLength(std::max(limit > 0 ? limit : kNoLimit, length));
  line->setText(Text(held));
  line->setCursorPosition(0);
}

QWidget* MakeWidget(const ControlSpec& spec, QWidget* parent, PlacedKind& kind) {
  switch (spec.kind) {
    case ControlKind::PushButton:
      kind = PlacedKind::PushButton;
      return new Button(spec.id, parent);
    case ControlKind::CheckBox:
      kind = PlacedKind::CheckBox;
      return new Check(spec.id, parent);
    case ControlKind::Label:
      kind = PlacedKind::Label;
      return new LabelWidget(spec.id, parent);
    case ControlKind::EditLine:
      kind = PlacedKind::EditLine;
      return new EditLineWidget(spec.id, spec.readOnly, parent);
    case ControlKind::MultiEdit:
      kind = PlacedKind::MultiEdit;
      return new TextArea(spec.id, false, parent);
    case ControlKind::Log:
      kind = PlacedKind::Log;
      return new TextArea(spec.id, true, parent);
  }
  return nullptr;
}

template <class Widget>
void RunOn(Widget* widget, EditAction action) {
  switch (action) {
    case EditAction::Undo:
      widget->undo();
      break;
    case EditAction::Redo:
      widget->redo();
      break;
    case EditAction::Cut:
      widget->cut();
      break;
    case EditAction::Copy:
      widget->copy();
      break;
    case EditAction::Paste:
      widget->paste();
      break;
    case EditAction::SelectAll:
      widget->selectAll();
      break;
    case EditAction::Delete:
      break;
  }
}

}  // namespace

std::u16string TextOfDocument(const QTextDocument& document) {
  std::u16string text = Text16(document.toRawText());
  std::replace(text.begin(), text.end(), u'\u2029', u'\n');
  return WithCrLf(text);
}

QMimeData* PlainMimeData(const QString& selected) {
  QString text = selected;
  text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
  auto* data = new QMimeData;
  data->setText(text);
  return data;
}

void RefreshAccessibleName(const Placed& row) {
  const QString name = Text(row.name.empty() ? row.text : row.name);
  if (row.widget->accessibleName() != name) row.widget->setAccessibleName(name);
}

bool MakeControl(const ControlSpec& spec) {
  QWidget* parent = ParentWidget(spec.parent);
  if (parent == nullptr || FindPlaced(spec.id) != nullptr) return false;
  Placed row;
  row.id = spec.id;
  row.widget = MakeWidget(spec, parent, row.kind);
  if (row.widget == nullptr) return false;
  const bool text = row.kind == PlacedKind::EditLine || row.kind == PlacedKind::MultiEdit ||
                    row.kind == PlacedKind::Log;
  if (text) PaintWith(row.widget, kLookText, kLookOutput);
  row.widget->setCursor(text ? Qt::IBeamCursor : Qt::ArrowCursor);
  if (!Settle(std::move(row), spec.accessibleName, FontOf(spec.font), spec.hidden)) return false;
  SetText(spec.id, spec.text);
  return true;
}

void SetText(int id, std::u16string_view text) {
  Placed* row = FindPlaced(id);
  if (row == nullptr) return;
  if (EditLineWidget* line = LineOf(id)) {
    PlaceLineText(line, row->textLimit, text);
  } else if (TextArea* area = AreaOf(id)) {
    const Quiet quiet;
    area->setPlainText(Text(WithCrLf(text)));
  } else if (HasCaption(row->kind)) {
    PlaceCaption(*row, text);
  }
}

std::u16string TextOf(int id) {
  const Placed* row = FindPlaced(id);
  if (row == nullptr) return {};
  if (const EditLineWidget* line = LineOf(id)) return Text16(line->text());
  if (const TextArea* area = AreaOf(id)) return TextOfDocument(*area->document());
  if (row->kind == PlacedKind::Editor) return EditorTextCopy(id);
  return row->text;
}

void AppendText(int id, std::u16string_view text) {
  TextArea* area = AreaOf(id);
  if (area == nullptr) return;
  const Quiet quiet;
  const QTextCursor kept = area->textCursor();
  const int anchor = kept.anchor();
  const int caret = kept.position();
  QTextCursor end(area->document());
  end.movePosition(QTextCursor::End);
  end.insertText(Text(WithCrLf(text)));
  // The toolkit carries a caret at the end along.
  if (area->textCursor().anchor() != anchor || area->textCursor().position() != caret) {
    end.setPosition(anchor);
    end.setPosition(caret, QTextCursor::KeepAnchor);
    area->setTextCursor(end);
  }
  if (!area->IsLog()) area->document()->clearUndoRedoStacks();
  area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
}

void ScrollToTop(int id) {
  if (TextArea* area = AreaOf(id)) area->verticalScrollBar()->setValue(0);
}

void SetLogLineColour(int id, int line, Colour colour) {
  TextArea* area = AreaOf(id);
  if (area != nullptr && area->IsLog()) area->ColourLine(line, colour);
}

int LogCaretLine(int id) {
  const TextArea* area = AreaOf(id);
  return area != nullptr && area->IsLog() ? area->textCursor().blockNumber() : -1;
}

void SetTextLimit(int id, int units) {
  Placed* row = FindPlaced(id);
  if (row == nullptr) return;
  row->textLimit = std::max(units, 0);
  if (TextArea* area = AreaOf(id)) area->limit = row->textLimit;
  if (EditLineWidget* line = LineOf(id)) {
    const int length = static_cast<int>(line->text().size());
    line->setMaxLength(std::max(units > 0 ? units : kNoLimit, length));
  }
}

void SelectAllText(int id) { RunEditAction(id, EditAction::SelectAll); }

int ClickedAt() { return clickedAt; }

// A push button that is told a state has one from then on, also for assistive technology.
void SetChecked(int id, bool checked) {
  const Quiet quiet;
  if (QCheckBox* check = CheckOf(id)) check->setChecked(checked);
  const Placed* row = FindPlaced(id);
  if (row == nullptr || row->kind != PlacedKind::PushButton) return;
  auto* button = static_cast<QPushButton*>(row->widget);
  button->setCheckable(true);
  button->setChecked(checked);
}

bool IsChecked(int id) {
  const Placed* row = FindPlaced(id);
  if (row == nullptr) return false;
  if (row->kind == PlacedKind::PushButton)
    return static_cast<QPushButton*>(row->widget)->isChecked();
  return CheckOf(id) != nullptr && CheckOf(id)->isChecked();
}

void SetAccessibleName(int id, std::u16string_view name) {
  Placed* row = FindPlaced(id);
  if (row == nullptr) return;
  row->name = name;
  RefreshAccessibleName(*row);
}

std::u16string AccessibleName(int id) {
  const Placed* row = FindPlaced(id);
  if (row == nullptr) return {};
  return row->name.empty() ? row->text : row->name;
}

QString FoldTip(const QString& tip, const QWidget* widget) {
  const QFontMetrics metrics(QToolTip::font());
  const int most = widget->screen()->availableGeometry().width() * 2 / 3;
  QString folded;
  for (QStringView line : QStringView(tip).split(u'\n')) {
    if (!folded.isEmpty()) folded += u'\n';
    while (metrics.horizontalAdvance(line.toString()) > most) {
      // The longest piece that fits, by halves.
      qsizetype fits = 1;
      for (qsizetype beyond = line.size(); beyond - fits > 1;) {
        const qsizetype middle = (fits + beyond) / 2;
        const bool narrow = metrics.horizontalAdvance(line.first(middle).toString()) <= most;
        (narrow ? fits : beyond) = middle;
      }
      const qsizetype gap =
          std::max(line.first(fits).lastIndexOf(u' '), line.first(fits).lastIndexOf(u'/'));
      // No character is cut in two.
      const qsizetype edge = fits > 1 && line[fits - 1].isHighSurrogate() ? fits - 1 : fits;
      const qsizetype end = gap > fits / 2 ? gap + 1 : edge;
      folded += line.first(end);
      folded += u'\n';
      line = line.sliced(end);
    }
    folded += line;
  }
  return folded;
}

void SetToolTip(int id, std::u16string_view text) {
  Placed* row = FindPlaced(id);
  if (row != nullptr) row->widget->setToolTip(FoldTip(Text(text), row->widget));
}

void HideToolTips() { QToolTip::hideText(); }

void SetColours(int id, const ControlColours& colours) {
  Placed* row = FindPlaced(id);
  if (row == nullptr) return;
  if (row->kind == PlacedKind::Label) {
    auto* label = static_cast<LabelWidget*>(row->widget);
    label->colours = colours;
    label->update();
    return;
  }
  PaintWith(row->widget, colours.text, colours.background);
}

bool IsTextControl(int id) {
  const Placed* row = FindPlaced(id);
  if (row == nullptr) return false;
  return row->kind == PlacedKind::EditLine || row->kind == PlacedKind::MultiEdit ||
         row->kind == PlacedKind::Log || row->kind == PlacedKind::Editor;
}

void RunEditAction(int id, EditAction action) {
  if (!IsTextControl(id)) return;
  const Placed row = *FindPlaced(id);
  if (EditLineWidget* line = LineOf(id)) {
    const bool reads = action == EditAction::Copy || action == EditAction::SelectAll;
    if (line->isReadOnly() && !reads) return;
    if (action == EditAction::Delete) {
      line->del();
    } else if (action == EditAction::Paste) {
      line->PasteLine();
    } else {
      RunOn(line, action);
    }
    return;
  }
  auto* area = static_cast<QPlainTextEdit*>(row.widget);
  if (action == EditAction::Delete) {
    if (!area->isReadOnly()) area->textCursor().deleteChar();
  } else if (area->isReadOnly() && action != EditAction::Copy && action != EditAction::SelectAll) {
    return;
  } else {
    RunOn(area, action);
  }
}

}  // namespace platform
