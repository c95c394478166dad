// What assistive technology is told of the placed things, and what it does to them.
//
// The toolkit's own record of a push button turns the state of its look over at "toggle" and runs
// no command; its rows are selected without anybody being told. Here every action is what a click
// does. Actions come from another process, which waits for the answer: they are done by the loop
// behind it, because a command may open a box or a menu.

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QListView>
#include <QPushButton>
#include <QWindow>
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/control.h"
#include "platform/listing.h"
#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

// A box, a dialog or a menu over it keeps the user from it.
bool IsBehind(const QWidget* widget) {
  const QWidget* window = widget->window();
  const QWidget* popup = QApplication::activePopupWidget();
  if (popup != nullptr && popup != window) return true;
  const QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr && modal != window && !modal->isAncestorOf(window);
}

bool Works(const QWidget* widget) {
  return widget->isEnabled() && widget->isVisible() && !IsBehind(widget);
}

// Runs `act` from the loop, where the widget still works then.
template <class Act>
void Later(QWidget* widget, Act act) {
  QMetaObject::invokeMethod(
      widget,
      [widget, act] {
        if (Works(widget)) act();
      },
      Qt::QueuedConnection);
}

ViewValue ValueOf(int id) {
  ViewValue value;
  if (Listener().viewValue != nullptr) Listener().viewValue(id, value);
  return value;
}

class KeySpeaks : public QAccessibleWidget {
 public:
  explicit KeySpeaks(QAbstractButton* key) : QAccessibleWidget(key) {}

  QAccessible::Role role() const override {
    return Key()->isCheckable() ? QAccessible::CheckBox : QAccessible::Button;
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = Key()->isCheckable();
    state.checked = Key()->isChecked();
    state.pressed = Key()->isDown();
    return state;
  }
  QStringList actionNames() const override {
    QStringList names;
    if (!Works(Key())) return names;
    if (Key()->isCheckable()) names << toggleAction();
    names << pressAction() << QAccessibleWidget::actionNames();
    return names;
  }
  void doAction(const QString& name) override {
    if (name != pressAction() && name != toggleAction()) return QAccessibleWidget::doAction(name);
    QAbstractButton* key = Key();
    Later(key, [key] { key->click(); });
  }

 private:
  QAbstractButton* Key() const { return static_cast<QAbstractButton*>(object()); }
};

class ViewSpeaks : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit ViewSpeaks(QWidget* view) : QAccessibleWidget(view) {}

  QAccessible::Role role() const override {
    if (widget()->isWindow()) return QAccessible::Window;
    if (childCount() > 0) return QAccessible::Grouping;
    switch (Role()) {
      case ViewRole::Slider:
        return QAccessible::Slider;
      case ViewRole::Progress:
        return QAccessible::ProgressBar;
      case ViewRole::Drawing:
        break;
    }
    return QAccessible::Canvas;
  }
  QString text(QAccessible::Text kind) const override {
    const QString told = QAccessibleWidget::text(kind);
    if (kind == QAccessible::Value) return Text(ValueOf(Id()).words);
    if (kind != QAccessible::Description || Role() == ViewRole::Slider) return told;
    // A drawing's value can be read nowhere else.
    const QString words = Text(ValueOf(Id()).words);
    return told.isEmpty() || words.isEmpty() ? words + told : words + QLatin1Char('\n') + told;
  }
  void* interface_cast(QAccessible::InterfaceType type) override {
    const bool value = type == QAccessible::ValueInterface && Role() != ViewRole::Drawing;
    if (value) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QStringList actionNames() const override {
    QStringList names;
    if (Role() == ViewRole::Slider && Works(widget()))
      names << increaseAction() << decreaseAction();
    return names << QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    if (name == increaseAction()) return Choose(ValueOf(Id()).now + 1);
    if (name == decreaseAction()) return Choose(ValueOf(Id()).now - 1);
    QAccessibleWidget::doAction(name);
  }

  QVariant currentValue() const override { return ValueOf(Id()).now; }
  QVariant minimumValue() const override { return ValueOf(Id()).least; }
  QVariant maximumValue() const override { return ValueOf(Id()).most; }
  QVariant minimumStepSize() const override { return 1; }
  void setCurrentValue(const QVariant& value) override { Choose(qRound(value.toDouble())); }

 private:
  int Id() const { return IdOfWidget(widget()); }
  ViewRole Role() const {
    const Placed* row = FindPlaced(Id());
    return row != nullptr ? row->role : ViewRole::Drawing;
  }
  void Choose(int step) {
    const int id = Id();
    if (Role() != ViewRole::Slider) return;
    Later(widget(), [id, step] {
      const ViewValue value = ValueOf(id);
      if (Listener().chooseValue == nullptr) return;
      Listener().chooseValue(id, std::clamp(step, value.least, std::max(value.least, value.most)));
    });
  }
};

// A row as it was when it was asked for; what is done later is done to that one, wherever it stands
// by then.
struct KnownRow {
  int list = 0;
  int row = 0;
  std::int64_t data = 0;
  std::u16string text;
};

// -1: the row is gone, or cannot be told from others.
int RowNow(const KnownRow& known) {
  const int count = RowCount(known.list);
  const auto is = [&](int row, bool text) {
    return row < count && RowData(known.list, row) == known.data &&
           (!text || RowText(known.list, row) == known.text);
  };
  if (is(known.row, true)) return known.row;
  // Words may count the rows, so a number alone tells a row, but for 0, which rows without have.
  for (const bool text : {false, true}) {
    int found = -1;
    int rows = 0;
    for (int row = 0; row < count && (text || known.data != 0); ++row) {
      if (!is(row, text)) continue;
      found = row;
      ++rows;
    }
    if (rows == 1) return found;
  }
  return -1;
}

// A row of a list box, or of the list that a combo opens.
class RowSpeaks : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  RowSpeaks(QListView* list, int row) : list_(list), row_(row) {}

  bool isValid() const override { return !list_.isNull() && row_ < RowCount(Id()); }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override {
    return list_.isNull() ? nullptr : list_->window()->windowHandle();
  }
  QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(list_);
  }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name && isValid() ? Text(RowText(Id(), row_)) : QString();
  }
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override {
    const QRect place = Place();
    return place.isEmpty() ? place : place.translated(list_->viewport()->mapToGlobal(QPoint()));
  }
  QAccessible::Role role() const override { return QAccessible::ListItem; }
  QAccessible::State state() const override {
    QAccessible::State state;
    if (!isValid()) {
      state.invalid = true;
      return state;
    }
    state.selectable = true;
    state.focusable = list_->focusPolicy() != Qt::NoFocus;
    state.multiSelectable = ChoosesSeveral(Id());
    state.selected = IsRowSelected(Id(), row_);
    state.focused = list_->hasFocus() && list_->currentIndex().row() == row_;
    state.disabled = !list_->isEnabled() || IsRowDim(Id(), row_);
    state.offscreen = !Place().intersects(list_->viewport()->rect());
    state.invisible = !Owner()->isVisible();
    return state;
  }
  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : nullptr;
  }
  QStringList actionNames() const override {
    QStringList names;
    if (!isValid() || !Works(Owner())) return names;
    names << pressAction();
    if (ChoosesSeveral(Id())) names << toggleAction();
    return names;
  }
  void doAction(const QString& name) override {
    if (!isValid() || (name != pressAction() && name != toggleAction())) return;
    const KnownRow known{Id(), row_, RowData(Id(), row_), RowText(Id(), row_)};
    const bool turn = name == toggleAction();
    Later(Owner(), [known, turn] { PressRow(known.list, RowNow(known), turn); });
  }
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  int Id() const { return IdOfWidget(list_); }
  // The placed thing: a combo's list stands in a popup of its own, which may be shut.
  QWidget* Owner() const {
    const Placed* row = FindPlaced(Id());
    return row != nullptr && !list_->isVisible() ? row->widget : list_.data();
  }
  QRect Place() const {
    return isValid() ? list_->visualRect(list_->model()->index(row_, 0)) : QRect();
  }

  QPointer<QListView> list_;
  int row_;
};

class ListSpeaks : public QAccessibleWidget {
 public:
  explicit ListSpeaks(QListView* list) : QAccessibleWidget(list, QAccessible::List) {}

  int childCount() const override { return RowCount(Id()); }
  QAccessibleInterface* child(int row) const override {
    if (row < 0 || row >= childCount()) return nullptr;
    const auto at = static_cast<std::size_t>(row);
    while (rows_.size() <= at) {
      rows_.push_back(QAccessible::registerAccessibleInterface(
          new RowSpeaks(List(), static_cast<int>(rows_.size()))));
    }
    return QAccessible::accessibleInterface(rows_[at]);
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    const QPoint at = List()->viewport()->mapFromGlobal(QPoint(x, y));
    return List()->viewport()->rect().contains(at) ? child(List()->indexAt(at).row()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* each) const override {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      if (QAccessible::accessibleInterface(rows_[i]) == each) return static_cast<int>(i);
    }
    return -1;
  }
  QAccessibleInterface* focusChild() const override {
    return List()->hasFocus() ? child(List()->currentIndex().row()) : nullptr;
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.multiSelectable = ChoosesSeveral(Id());
    return state;
  }

 protected:
  ~ListSpeaks() override {
    for (const QAccessible::Id row : rows_) QAccessible::deleteAccessibleInterface(row);
  }

 private:
  QListView* List() const { return static_cast<QListView*>(object()); }
  int Id() const { return IdOfWidget(List()); }

  mutable std::vector<QAccessible::Id> rows_;  // made as they are asked for
};

// The toolkit's own record names a combo by what is chosen alone, and tells that nowhere else.
class ComboSpeaks : public QAccessibleWidget {
 public:
  explicit ComboSpeaks(QComboBox* combo) : QAccessibleWidget(combo, QAccessible::ComboBox) {}

  int childCount() const override { return 1; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(Combo()->view()) : nullptr;
  }
  // The list opens as a popup, outside of the combo.
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int indexOfChild(const QAccessibleInterface* each) const override {
    return each->object() == Combo()->view() ? 0 : -1;
  }
  QString text(QAccessible::Text kind) const override {
    const QString chosen = Combo()->currentText();
    if (kind == QAccessible::Value) return chosen;
    const QString told = QAccessibleWidget::text(kind);
    if (kind != QAccessible::Name || chosen.isEmpty()) return told;
    return told.isEmpty() ? chosen : told + QStringLiteral(": ") + chosen;
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.expanded = Combo()->view()->isVisible();
    return state;
  }
  QStringList actionNames() const override {
    QStringList names;
    if (Works(Combo()) || state().expanded) names << showMenuAction() << pressAction();
    return names << QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    QComboBox* combo = Combo();
    if (name != showMenuAction() && name != pressAction()) return QAccessibleWidget::doAction(name);
    if (combo->view()->isVisible()) return combo->hidePopup();
    Later(combo, [combo] { combo->showPopup(); });
  }

 private:
  QComboBox* Combo() const { return static_cast<QComboBox*>(object()); }
};

QAccessibleInterface* Speaks(const QString&, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr) return nullptr;
  if (auto* key = dynamic_cast<PlacedWidget<QPushButton>*>(widget)) return new KeySpeaks(key);
  if (auto* check = dynamic_cast<PlacedWidget<QCheckBox>*>(widget)) return new KeySpeaks(check);
  if (auto* combo = dynamic_cast<PlacedWidget<QComboBox>*>(widget)) return new ComboSpeaks(combo);
  if (dynamic_cast<PlacedWidget<QWidget>*>(widget) != nullptr) return new ViewSpeaks(widget);
  auto* list = qobject_cast<QListView*>(widget);
  if (list == nullptr) return nullptr;
  const QWidget* popup = list->parentWidget();
  const bool ofCombo =
      popup != nullptr && dynamic_cast<PlacedWidget<QComboBox>*>(popup->parentWidget()) != nullptr;
  const bool placed = dynamic_cast<PlacedWidget<QListView>*>(list) != nullptr;
  return placed || ofCombo ? new ListSpeaks(list) : nullptr;
}

}  // namespace

void BeginAccess() { QAccessible::installFactory(Speaks); }

void TellViewValue(int id) {
  const Placed* row = FindPlaced(id);
  if (row == nullptr || row->kind != PlacedKind::View || !QAccessible::isActive()) return;
  if (row->role == ViewRole::Drawing) {
    QAccessibleEvent event(row->widget, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
    return;
  }
  QAccessibleValueChangeEvent event(row->widget, ValueOf(id).now);
  QAccessible::updateAccessibility(&event);
}

}  // namespace platform
