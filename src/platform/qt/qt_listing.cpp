// List boxes over a plain table of rows, and combos.

#include <QAbstractItemDelegate>
#include <QAbstractListModel>
#include <QComboBox>
#include <QHelpEvent>
#include <QListView>
#include <QPointer>
#include <QScreen>
#include <QScrollBar>
#include <QStyleOptionComboBox>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <vector>

#include "platform/listing.h"
#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

constexpr int kRowPad = 6;  // pixels on either side of the words of a row

// The words of a row as they stand between its sides. Names in one list often differ at their ends
// alone: programs by their revision, ports by the number in their path.
QString WordsIn(int width, const QFontMetrics& metrics, const QString& words) {
  return metrics.elidedText(words, Qt::ElideMiddle, width - 2 * kRowPad);
}

struct Row {
  QString text;
  std::int64_t data = 0;
  bool dim = false;
};

class RowModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;
  std::vector<Row> rows;

  int rowCount(const QModelIndex& parent = QModelIndex()) const override {
    return parent.isValid() ? 0 : static_cast<int>(rows.size());
  }
  QVariant data(const QModelIndex& index, int role) const override {
    const bool text = role == Qt::DisplayRole || role == Qt::AccessibleTextRole;
    if (!text || !index.isValid() || index.row() >= rowCount()) return QVariant();
    return rows[static_cast<std::size_t>(index.row())].text;
  }
  void Append(Row row) {
    beginInsertRows(QModelIndex(), rowCount(), rowCount());
    rows.push_back(std::move(row));
    endInsertRows();
  }
  void Clear() {
    beginResetModel();
    rows.clear();
    endResetModel();
  }
  void Touch(int row) { Q_EMIT dataChanged(index(row), index(row)); }
};

class RowDelegate : public QAbstractItemDelegate {
 public:
  RowDelegate(int id, int rowHeight, bool ownerDrawn, QObject* parent)
      : QAbstractItemDelegate(parent), id_(id), rowHeight_(rowHeight), ownerDrawn_(ownerDrawn) {}

  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
    return QSize(1, rowHeight_);
  }
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    Canvas canvas;
    canvas.painter = painter;
    canvas.area = RectFrom(option.rect);
    DrawState state;
    state.area = canvas.area;
    state.row = index.row();
    state.selected = option.state.testFlag(QStyle::State_Selected);
    state.focused = option.state.testFlag(QStyle::State_HasFocus);
    state.enabled = option.state.testFlag(QStyle::State_Enabled);
    state.hovered = option.state.testFlag(QStyle::State_MouseOver);
    painter->save();
    painter->setClipRect(option.rect, Qt::IntersectClip);
    if (ownerDrawn_ && Listener().drawItem != nullptr) {
      Listener().drawItem(id_, state, canvas);
    } else {
      PaintPlain(painter, option, state, index);
    }
    painter->restore();
  }

 private:
  void PaintPlain(QPainter* painter, const QStyleOptionViewItem& option, const DrawState& state,
                  const QModelIndex& index) const {
    const QPalette& palette = option.palette;
    painter->fillRect(option.rect, state.selected ? palette.highlight() : palette.base());
    painter->setFont(option.font);
    painter->setPen(palette.color(state.selected ? QPalette::HighlightedText : QPalette::Text));
    const QRect area = option.rect.adjusted(kRowPad, 0, -kRowPad, 0);
    const QString words =
        WordsIn(option.rect.width(), option.fontMetrics, index.data(Qt::DisplayRole).toString());
    painter->drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, words);
    if (!state.focused) return;
    painter->setPen(ColourOf(kLookBright));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
  }
  int id_;
  int rowHeight_;
  bool ownerDrawn_;
};

class ListBox;
QPointer<ListBox> lastPressed;  // the list that took the last press of the left button

class ListBox : public PlacedWidget<QListView> {
 public:
  ListBox(const ListSpec& spec, QWidget* parent)
      : PlacedWidget<QListView>(spec.id, true, parent),
        model_(new RowModel(this)),
        wheelRows_(spec.wheelRows),
        ownerDrawn_(spec.ownerDrawn) {
    setItemDelegate(new RowDelegate(spec.id, spec.rowHeight, spec.ownerDrawn, this));
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setFrameShape(QFrame::NoFrame);
    if (!spec.takesFocus) setFocusPolicy(Qt::NoFocus);
    setSelectionMode(spec.kind == ListKind::Multi ? QAbstractItemView::ExtendedSelection
                                                  : QAbstractItemView::SingleSelection);
    viewport()->setAttribute(Qt::WA_Hover);
    setModel(model_);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
      if (Quiet::depth == 0 && !pressing_) SendCommand(Id(), kNotifyListSelect);
    });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
      if (Quiet::depth == 0) SendCommand(Id(), kNotifyVScroll);
    });
  }
  // Whether the point of the screen lies on the row that the last press chose.
  bool IsOnPressedRow(const QPoint& screen) const {
    const QPoint at = viewport()->mapFromGlobal(screen);
    return isVisible() && viewport()->rect().contains(at) && indexAt(at).isValid() &&
           indexAt(at) == currentIndex();
  }
  RowModel* Rows() { return model_; }
  // What a click in the middle of the row does, and with `turn` one with Ctrl.
  void Press(int row, bool turn) {
    const QPointer<QWidget> self(this);
    if (focusPolicy() != Qt::NoFocus) setFocus(Qt::OtherFocusReason);
    if (self.isNull() || row >= model_->rowCount()) return;
    PlaceRows();
    const QModelIndex index = model_->index(row);
    pressing_ = true;
    selectionModel()->setCurrentIndex(
        index, turn ? QItemSelectionModel::Toggle : QItemSelectionModel::ClearAndSelect);
    pressing_ = false;
    scrollTo(index);
    const QPoint middle = visualRect(index).center();
    SendCommand(Id(), kNotifyListSelect);
    if (self.isNull() || row >= model_->rowCount() || Listener().listClick == nullptr) return;
    Listener().listClick(Id(), row, middle.x(), middle.y());
  }
  // Rows that came or went since the last painting have their places.
  void PlaceRows() {
    CatchUpSize(this);
    executeDelayedItemsLayout();
  }

 protected:
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override {
    if (!index.isValid()) return QItemSelectionModel::NoUpdate;
    if (selectionMode() == QAbstractItemView::SingleSelection) {
      return QItemSelectionModel::ClearAndSelect;
    }
    return QListView::selectionCommand(index, event);
  }
  // A row that is cut is told as a whole. Rows that a room paints cut by themselves.
  bool viewportEvent(QEvent* event) override {
    if (event->type() == QEvent::ToolTip && !ownerDrawn_) {
      const auto* help = static_cast<QHelpEvent*>(event);
      const QModelIndex index = indexAt(help->pos());
      const QRect place = visualRect(index);
      const QString words = index.data(Qt::DisplayRole).toString();
      if (index.isValid() && WordsIn(place.width(), fontMetrics(), words) != words) {
        QToolTip::showText(help->globalPos(), FoldTip(words, this), viewport(), place);
        return true;
      }
    }
    return QListView::viewportEvent(event);
  }
  void mousePressEvent(QMouseEvent* event) override {
    // Only the left button chooses; the right one asks for a menu on the row under it.
    if (event->button() != Qt::LeftButton) return;
    const QPointer<QWidget> self(this);
    const bool row = indexAt(event->pos()).isValid();
    lastPressed = this;
    pressing_ = true;
    QListView::mousePressEvent(event);
    pressing_ = false;
    // A press on the row that is chosen already is told as well.
    if (row && Quiet::depth == 0) SendCommand(Id(), kNotifyListSelect);
    if (!self.isNull()) pressed_ = row;
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton) return;
    QListView::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->pos());
    const bool told = pressed_ && index.isValid();
    pressed_ = false;
    if (told && Listener().listClick != nullptr) {
      Listener().listClick(Id(), index.row(), event->pos().x(), event->pos().y());
    }
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton || !indexAt(event->pos()).isValid()) return;
    SendCommand(Id(), kNotifyListDouble);
  }
  void wheelEvent(QWheelEvent* event) override {
    const int turned = event->angleDelta().y();
    if (turned == 0) return QListView::wheelEvent(event);
    // Fine wheels tell parts of a notch, 120 to each.
    wheel_ += turned * wheelRows_;
    const int rows = wheel_ / 120;
    wheel_ -= rows * 120;
    verticalScrollBar()->setValue(verticalScrollBar()->value() - rows);
    event->accept();
  }
  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter) {
      if (currentIndex().isValid()) SendCommand(Id(), kNotifyListDouble);
      return;
    }
    const bool walks = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (walks && currentIndex().isValid() && !selectionModel()->hasSelection()) {
      selectionModel()->select(currentIndex(), QItemSelectionModel::ClearAndSelect);
      return;
    }
    QListView::keyPressEvent(event);
  }
  void updateGeometries() override {
    // Rows that came or went and a new size may move the top row: that is not the user's doing.
    const Quiet quiet;
    QListView::updateGeometries();
  }
  void contextMenuEvent(QContextMenuEvent* event) override {
    if (event->reason() != QContextMenuEvent::Keyboard) {
      const QPoint at = viewport()->mapFromGlobal(event->globalPos());
      AskContextMenu(Id(), this, event, indexAt(at).row(), nullptr);
      return;
    }
    const QRect place = visualRect(currentIndex());
    const QPoint local = place.isValid() ? place.center() : rect().center();
    AskContextMenu(Id(), this, event, currentIndex().row(), &local);
  }

 private:
  RowModel* model_;
  int wheelRows_;
  bool ownerDrawn_;
  int wheel_ = 0;
  bool pressing_ = false;
  bool pressed_ = false;
};

class Combo : public PlacedWidget<QComboBox> {
 public:
  Combo(const ListSpec& spec, QWidget* parent)
      : PlacedWidget<QComboBox>(spec.id, true, parent), rowHeight_(spec.rowHeight) {
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(0);
    setMinimumSize(0, 0);
    setFocusPolicy(Qt::StrongFocus);
    setMaxVisibleItems(16);
    connect(this, &QComboBox::currentIndexChanged, this, [this] {
      if (Quiet::depth == 0) SendCommand(Id(), kNotifyComboSelect);
    });
  }
  std::vector<std::int64_t> numbers;

 protected:
  void wheelEvent(QWheelEvent* event) override {
    // The wheel belongs to what lies around the combo, which may scroll: a choice made earlier
    // must not change as it passes by under the pointer.
    event->ignore();
  }
  void showPopup() override {
    // The popup list is made on first use only.
    if (!dressed_) {
      dressed_ = true;
      setItemDelegate(new RowDelegate(0, std::max(rowHeight_, 24), false, this));
      view()->setFont(font());
      view()->setAccessibleName(accessibleName());
      // The frame around it stands out from what lies below.
      QPalette frame = view()->parentWidget()->palette();
      frame.setColor(QPalette::WindowText, ColourOf(kLookControlLine));
      view()->parentWidget()->setPalette(frame);
    }
    // As wide as its longest row, as far as the screen goes.
    int widest = 0;
    for (int row = 0; row < count(); ++row) {
      widest = std::max(widest, view()->fontMetrics().horizontalAdvance(itemText(row)));
    }
    const int bar = view()->verticalScrollBar()->sizeHint().width();
    const QRect room = screen()->availableGeometry();
    view()->setMinimumWidth(std::min(widest + 2 * kRowPad + 2 + bar, room.width() - 2));
    QComboBox::showPopup();
    QWidget* list = view()->window();
    const int beyond = list->geometry().right() - room.right();
    if (beyond > 0) list->move(list->x() - beyond, list->y());
  }
  // What is chosen is cut as a row is, and told as a whole.
  void initStyleOption(QStyleOptionComboBox* option) const override {
    QComboBox::initStyleOption(option);
    option->currentText = CutWords(*option);
  }
  bool event(QEvent* event) override {
    if (event->type() == QEvent::ToolTip) {
      QStyleOptionComboBox option;
      QComboBox::initStyleOption(&option);
      if (CutWords(option) != option.currentText) {
        QString words = FoldTip(option.currentText, this);
        if (!toolTip().isEmpty()) words += QLatin1Char('\n') + toolTip();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), words, this);
        return true;
      }
    }
    return PlacedWidget<QComboBox>::event(event);
  }

 private:
  QString CutWords(const QStyleOptionComboBox& option) const {
    const QRect area =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    return WordsIn(area.width() - 2 + 2 * kRowPad, option.fontMetrics, option.currentText);
  }
  int rowHeight_;
  bool dressed_ = false;
};

ListBox* BoxOf(int id) {
  const Placed* row = FindPlaced(id);
  return row != nullptr && row->kind == PlacedKind::List ? static_cast<ListBox*>(row->widget)
                                                         : nullptr;
}

Combo* ComboOf(int id) {
  const Placed* row = FindPlaced(id);
  return row != nullptr && row->kind == PlacedKind::Combo ? static_cast<Combo*>(row->widget)
                                                          : nullptr;
}

bool HasRow(int id, int row) { return row >= 0 && row < RowCount(id); }

std::size_t At(int row) { return static_cast<std::size_t>(row); }

}  // namespace

bool ChoosesSeveral(int id) {
  const ListBox* box = BoxOf(id);
  return box != nullptr && box->selectionMode() == QAbstractItemView::ExtendedSelection;
}

void PressRow(int id, int row, bool turn) {
  if (!HasRow(id, row)) return;
  if (ListBox* box = BoxOf(id)) {
    box->Press(row, turn && ChoosesSeveral(id));
  } else if (Combo* combo = ComboOf(id)) {
    combo->hidePopup();
    combo->setCurrentIndex(row);
  }
}

bool DoubleClickBelow(const QPoint& screen) {
  if (lastPressed.isNull() || !lastPressed->IsOnPressedRow(screen)) return false;
  SendCommand(lastPressed->Id(), kNotifyListDouble);
  return true;
}

bool MakeList(const ListSpec& spec) {
  QWidget* parent = ParentWidget(spec.parent);
  if (parent == nullptr || FindPlaced(spec.id) != nullptr) return false;
  Placed row;
  row.id = spec.id;
  if (spec.kind == ListKind::Combo) {
    row.kind = PlacedKind::Combo;
    row.widget = new Combo(spec, parent);
  } else {
    row.kind = PlacedKind::List;
    row.widget = new ListBox(spec, parent);
  }
  row.widget->setCursor(Qt::ArrowCursor);
  return Settle(std::move(row), spec.accessibleName, FontOf(spec.font), spec.hidden);
}

int AddRow(int id, std::u16string_view text, std::int64_t data) {
  const Quiet quiet;
  if (ListBox* box = BoxOf(id)) {
    box->Rows()->Append(Row{Text(text), data});
  } else if (Combo* combo = ComboOf(id)) {
    const int kept = combo->currentIndex();
    combo->numbers.push_back(data);
    combo->addItem(Text(text));
    // The toolkit would choose the first row by itself.
    combo->setCurrentIndex(kept);
  } else {
    return -1;
  }
  return RowCount(id) - 1;
}

void ClearRows(int id) {
  const Quiet quiet;
  if (ListBox* box = BoxOf(id)) box->Rows()->Clear();
  if (Combo* combo = ComboOf(id)) {
    combo->clear();
    combo->numbers.clear();
  }
}

int RowCount(int id) {
  if (ListBox* box = BoxOf(id)) return box->Rows()->rowCount();
  if (const Combo* combo = ComboOf(id)) return combo->count();
  return 0;
}

void SetRowText(int id, int row, std::u16string_view text) {
  if (!HasRow(id, row)) return;
  if (ListBox* box = BoxOf(id)) {
    box->Rows()->rows[At(row)].text = Text(text);
    box->Rows()->Touch(row);
  }
  if (Combo* combo = ComboOf(id)) combo->setItemText(row, Text(text));
}

std::u16string RowText(int id, int row) {
  if (!HasRow(id, row)) return {};
  if (ListBox* box = BoxOf(id)) return Text16(box->Rows()->rows[At(row)].text);
  return Text16(ComboOf(id)->itemText(row));
}

std::int64_t RowData(int id, int row) {
  if (!HasRow(id, row)) return 0;
  if (ListBox* box = BoxOf(id)) return box->Rows()->rows[At(row)].data;
  return ComboOf(id)->numbers[At(row)];
}

void SetRowData(int id, int row, std::int64_t data) {
  if (!HasRow(id, row)) return;
  if (ListBox* box = BoxOf(id)) {
    box->Rows()->rows[At(row)].data = data;
    box->Rows()->Touch(row);
  } else {
    ComboOf(id)->numbers[At(row)] = data;
  }
}

void SetRowDim(int id, int row, bool dim) {
  ListBox* box = BoxOf(id);
  if (box != nullptr && HasRow(id, row)) box->Rows()->rows[At(row)].dim = dim;
}

bool IsRowDim(int id, int row) {
  ListBox* box = BoxOf(id);
  return box != nullptr && HasRow(id, row) && box->Rows()->rows[At(row)].dim;
}

int SelectedRow(int id) {
  if (const ListBox* box = BoxOf(id)) {
    // A list that gets the keyboard has a current row before one is chosen.
    const QModelIndex index = box->currentIndex();
    const bool multi = box->selectionMode() == QAbstractItemView::ExtendedSelection;
    return multi || box->selectionModel()->isSelected(index) ? index.row() : -1;
  }
  if (const Combo* combo = ComboOf(id)) return combo->currentIndex();
  return -1;
}

void SelectRow(int id, int row) {
  const Quiet quiet;
  if (ListBox* box = BoxOf(id)) {
    if (!HasRow(id, row)) {
      box->selectionModel()->clear();
      return;
    }
    box->PlaceRows();
    const QModelIndex index = box->Rows()->index(row);
    box->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    box->scrollTo(index);
  }
  if (Combo* combo = ComboOf(id)) combo->setCurrentIndex(HasRow(id, row) ? row : -1);
}

bool IsRowSelected(int id, int row) {
  if (!HasRow(id, row)) return false;
  if (ListBox* box = BoxOf(id)) {
    return box->selectionModel()->isSelected(box->Rows()->index(row));
  }
  return ComboOf(id)->currentIndex() == row;
}

void SetRowSelected(int id, int row, bool selected) {
  ListBox* box = BoxOf(id);
  if (box == nullptr || !HasRow(id, row)) return;
  if (box->selectionMode() != QAbstractItemView::ExtendedSelection) return;
  const Quiet quiet;
  const QModelIndex index = box->Rows()->index(row);
  box->selectionModel()->select(
      index, selected ? QItemSelectionModel::Select : QItemSelectionModel::Deselect);
  if (selected) box->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
}

int TopRow(int id) {
  ListBox* box = BoxOf(id);
  if (box == nullptr) return 0;
  box->PlaceRows();
  return box->verticalScrollBar()->value();
}

void SetTopRow(int id, int row) {
  ListBox* box = BoxOf(id);
  if (box == nullptr) return;
  const Quiet quiet;
  box->PlaceRows();
  box->verticalScrollBar()->setValue(row);
}

Rect RowPlace(int id, int row) {
  ListBox* box = BoxOf(id);
  if (box == nullptr || !HasRow(id, row)) return Rect{};
  box->PlaceRows();
  const QRect place = box->visualRect(box->Rows()->index(row));
  if (!place.isValid() || !place.intersects(box->viewport()->rect())) return Rect{};
  return RectFrom(place);
}

void HoldListRedraw(int id, bool hold) {
  Placed* row = FindPlaced(id);
  if (row != nullptr) row->widget->setUpdatesEnabled(!hold);
}

}  // namespace platform
