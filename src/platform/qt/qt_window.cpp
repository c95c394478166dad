// The main window, the drawn views and the table of placed things.

#include <QAbstractScrollArea>
#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "platform/control.h"
#include "platform/qt/qt_internal.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"

namespace platform {

namespace {

std::unordered_map<int, Placed> placedThings;
std::unordered_map<const QWidget*, int> idsOfWidgets;
unsigned made = 0;
int captured = 0;
bool loopRuns = false;
bool quitAsked = false;
int quitCode = 0;

constexpr int kWheelNotch = 120;  // eighths of a degree, times 15

bool TellPointer(int id, const PointerEvent& event) {
  return Listener().pointer != nullptr && Listener().pointer(id, event);
}

// What the main window and the views share: paint and pointer through the application.
class DrawnWidget : public PlacedWidget<QWidget> {
 public:
  DrawnWidget(int id, bool takesFocus, Colour background, QWidget* parent)
      : PlacedWidget<QWidget>(id, takesFocus, parent), background_(background) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(takesFocus ? Qt::StrongFocus : Qt::NoFocus);
  }

 protected:
  bool event(QEvent* event) override {
    switch (event->type()) {
      case QEvent::WindowDeactivate:
      case QEvent::WindowBlocked:
      case QEvent::Hide:
        LosePointer();
        break;
      case QEvent::FocusOut:
        if (static_cast<QFocusEvent*>(event)->reason() == Qt::PopupFocusReason) LosePointer();
        break;
      default:
        break;
    }
    return PlacedWidget<QWidget>::event(event);
  }
  void mousePressEvent(QMouseEvent* event) override {
    held_ = true;
    TellPointer(Id(), PointerFrom(*event, PointerAction::Press));
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    held_ = event->buttons() != Qt::NoButton;
    const QPointer<QWidget> self(this);
    TellPointer(Id(), PointerFrom(*event, PointerAction::Release));
    if (!self.isNull() && captured == Id() && event->buttons() == Qt::NoButton) ReleasePointer();
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    TellPointer(Id(), PointerFrom(*event, PointerAction::Move));
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    // Who makes nothing of a double click sees a second press.
    held_ = true;
    const QPointer<QWidget> self(this);
    if (TellPointer(Id(), PointerFrom(*event, PointerAction::DoubleClick))) return;
    if (!self.isNull()) TellPointer(Id(), PointerFrom(*event, PointerAction::Press));
  }
  void wheelEvent(QWheelEvent* event) override {
    wheelRest_ += event->angleDelta().y();
    const int notches = wheelRest_ / kWheelNotch;
    wheelRest_ -= notches * kWheelNotch;
    event->accept();
    if (notches == 0) return;
    PointerEvent pointer;
    pointer.action = PointerAction::Wheel;
    pointer.wheel = notches;
    pointer.ctrl = event->modifiers().testFlag(Qt::ControlModifier);
    pointer.shift = event->modifiers().testFlag(Qt::ShiftModifier);
    pointer.alt = event->modifiers().testFlag(Qt::AltModifier);
    pointer.x = static_cast<int>(std::floor(event->position().x()));
    pointer.y = static_cast<int>(std::floor(event->position().y()));
    TellPointer(Id(), pointer);
  }
  void leaveEvent(QEvent*) override {
    PointerEvent pointer;
    pointer.action = PointerAction::Leave;
    TellPointer(Id(), pointer);
  }
  void focusInEvent(QFocusEvent*) override { update(); }
  void focusOutEvent(QFocusEvent*) override { update(); }
  Colour Background() const { return background_; }

 private:
  // The release of what is held may go elsewhere: to a popup, a box or another window.
  void LosePointer() {
    if (!held_ && captured != Id()) return;
    held_ = false;
    if (captured == Id()) ReleasePointer();
    PointerEvent pointer;
    pointer.action = PointerAction::Lost;
    TellPointer(Id(), pointer);
  }

  Colour background_;
  bool held_ = false;  // a button went down here and is not up yet
  int wheelRest_ = 0;
};

// A view keeps its own pixels, so that a whole toolpath is written without the painter.
class ViewWidget : public DrawnWidget {
 public:
  using DrawnWidget::DrawnWidget;

 protected:
  void paintEvent(QPaintEvent*) override {
    const double scale = devicePixelRatioF();
    const int w = std::max(1, static_cast<int>(std::ceil(width() * scale)));
    const int h = std::max(1, static_cast<int>(std::ceil(height() * scale)));
    if (w != width_ || h != height_) {
      pixels_.assign(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), Background());
      width_ = w;
      height_ = h;
    }
    QImage image(reinterpret_cast<uchar*>(pixels_.data()), w, h, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    {
      QPainter painter(&image);
      Canvas canvas;
      canvas.painter = &painter;
      canvas.area = Rect{0, 0, width(), height()};
      canvas.pixels = pixels_.data();
      canvas.stride = w;
      canvas.width = w;
      canvas.height = h;
      canvas.scale = scale;
      if (Listener().paint != nullptr) {
        Listener().paint(Id(), canvas);
      } else {
        FillArea(canvas, canvas.area, Background());
      }
    }
    QPainter(this).drawImage(QPointF(0, 0), image);
  }

 private:
  std::vector<std::uint32_t> pixels_;
  int width_ = 0;
  int height_ = 0;
};

class MainWindow : public DrawnWidget {
 public:
  explicit MainWindow(Colour background) : DrawnWidget(kMainWindow, true, background, nullptr) {
    // It hears the keys that nobody else gets, and never has the keyboard.
    setFocusPolicy(Qt::NoFocus);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QPainter painter(this);
    painter.setClipRegion(event->region());
    Canvas canvas;
    canvas.painter = &painter;
    canvas.area = Rect{0, 0, width(), height()};
    if (Listener().paint != nullptr) {
      Listener().paint(Id(), canvas);
    } else {
      FillArea(canvas, canvas.area, Background());
    }
  }
  void resizeEvent(QResizeEvent*) override {
    if (Listener().resized != nullptr) Listener().resized(width(), height());
  }
  void closeEvent(QCloseEvent* event) override {
    if (gone_) return;
    if (Listener().closing != nullptr && !Listener().closing()) {
      event->ignore();
      return;
    }
    gone_ = true;
    event->accept();
    if (Listener().destroyed != nullptr) Listener().destroyed();
  }

 private:
  bool gone_ = false;
};

// Pixels that a window manager takes at most for the frame of a window.
constexpr int kTitleBar = 40;   // above and below
constexpr int kSideFrame = 16;  // left and right

// The least size, on the screen that the window comes up on.
QSize LeastSize(const MainWindowSpec& spec) {
  QSize least(spec.minimumWidth, spec.minimumHeight);
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return least;
  const QRect room = screen->availableGeometry();
  if (spec.smallWidth > 0 && room.width() < least.width()) least.setWidth(spec.smallWidth);
  if (spec.smallHeight > 0 && room.height() - kTitleBar < least.height()) {
    least.setHeight(spec.smallHeight);
  }
  return least;
}

// Where the frame begins, and the size inside of it.
QRect FirstPlace(const MainWindowSpec& spec, const QSize& least) {
  QRect place = RectOf(spec.place);
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return place;
  // On a smaller screen the window gives way, down to its least size.
  const QRect room = screen->availableGeometry();
  const QSize most(room.width() - kSideFrame, room.height() - kTitleBar);
  place.setSize(place.size().boundedTo(most).expandedTo(least));
  QRect framed = place.adjusted(0, 0, kSideFrame, kTitleBar);
  if (framed.right() > room.right()) framed.moveRight(room.right());
  if (framed.bottom() > room.bottom()) framed.moveBottom(room.bottom());
  if (framed.left() < room.left()) framed.moveLeft(room.left());
  if (framed.top() < room.top()) framed.moveTop(room.top());
  place.moveTopLeft(framed.topLeft());
  return place;
}

}  // namespace

// The table.

Placed* FindPlaced(int id) {
  const auto found = placedThings.find(id);
  return found != placedThings.end() ? &found->second : nullptr;
}

bool AddPlaced(Placed row) {
  if (FindPlaced(row.id) != nullptr) return false;
  idsOfWidgets[row.widget] = row.id;
  row.order = ++made;
  const int id = row.id;
  placedThings.emplace(id, std::move(row));
  return true;
}

void ForgetPlaced(int id, const QWidget* widget) {
  idsOfWidgets.erase(widget);
  const Placed* row = FindPlaced(id);
  if (row != nullptr && row->widget == widget) placedThings.erase(id);
}

int IdOfWidget(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    const auto found = idsOfWidgets.find(widget);
    if (found != idsOfWidgets.end()) return found->second;
    // The popup of a combo is the combo's; a box over the main window is not the main window's.
    if (widget->windowType() == Qt::Dialog) return 0;
  }
  return 0;
}

QWidget* WidgetOf(int id) {
  const Placed* row = FindPlaced(id);
  return row != nullptr ? row->widget : nullptr;
}

QWidget* ParentWidget(int parent) { return WidgetOf(parent); }

QWidget* MainWidget() { return WidgetOf(kMainWindow); }

bool Settle(Placed row, const char16_t* accessibleName, const QFont& font, bool hidden) {
  QWidget* widget = row.widget;
  row.name = accessibleName;
  if (FindPlaced(row.id) != nullptr) {
    delete widget;
    return false;
  }
  widget->setFont(font);
  if (!widget->isWindow()) widget->setGeometry(0, 0, 0, 0);
  if (const auto* area = qobject_cast<QAbstractScrollArea*>(widget)) {
    area->verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll up and down"));
    area->horizontalScrollBar()->setAccessibleName(QStringLiteral("Scroll left and right"));
  }
  widget->setVisible(!hidden);
  RefreshAccessibleName(row);
  return AddPlaced(std::move(row));
}

// The main window and the loop.

bool MakeMainWindow(const MainWindowSpec& spec) {
  if (FindPlaced(kMainWindow) != nullptr) return false;
  auto* window = new MainWindow(spec.background);
  window->setObjectName(Text(spec.className));
  window->setAcceptDrops(true);
  window->setWindowTitle(Text(spec.title));
  const QSize least = LeastSize(spec);
  window->setMinimumSize(least);
  const QRect place = FirstPlace(spec, least);
  window->resize(place.size());
  window->move(place.topLeft());
  if (least.height() < spec.minimumHeight || least.width() < spec.minimumWidth) {
    window->setWindowState(Qt::WindowMaximized);
  }
  Placed row;
  row.id = kMainWindow;
  row.kind = PlacedKind::MainWindow;
  row.widget = window;
  row.className = spec.className;
  return AddPlaced(std::move(row));
}

// Window managers off Windows choose the title bar themselves.
void DarkTitleBar() {}

void SetWindowIcon(void (*draw)(Canvas& canvas)) {
  if (MainWidget() == nullptr || draw == nullptr) return;
  QIcon icon;
  // Every size from its own drawing: lines of a small icon stay whole pixels wide.
  for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
    QPixmap pixmap(size, size);
    {
      QPainter painter(&pixmap);
      Canvas canvas;
      canvas.painter = &painter;
      canvas.area = Rect{0, 0, size, size};
      draw(canvas);
    }
    icon.addPixmap(pixmap);
  }
  MainWidget()->setWindowIcon(icon);
}

void ShowMainWindow() {
  if (MainWidget() != nullptr) MainWidget()->show();
}

void SetWindowTitle(std::u16string_view title) {
  if (MainWidget() != nullptr) MainWidget()->setWindowTitle(Text(title));
}

std::u16string WindowTitle() {
  return MainWidget() != nullptr ? Text16(MainWidget()->windowTitle()) : std::u16string();
}

Rect ClientArea(int id) {
  const QWidget* widget = WidgetOf(id);
  return widget != nullptr ? Rect{0, 0, widget->width(), widget->height()} : Rect{};
}

void RequestClose() {
  if (MainWidget() == nullptr) return;
  QMetaObject::invokeMethod(MainWidget(), &QWidget::close, Qt::QueuedConnection);
}

void QuitLoop(int code) {
  quitAsked = true;
  quitCode = code;
  if (loopRuns) QCoreApplication::exit(code);
}

int RunLoop() {
  if (!quitAsked) {
    loopRuns = true;
    const int code = QApplication::exec();
    loopRuns = false;
    if (!quitAsked) quitCode = code;
  }
  quitAsked = false;
  return quitCode;
}

// Views.

bool MakeView(const ViewSpec& spec) {
  QWidget* parent = ParentWidget(spec.parent);
  if (parent == nullptr || FindPlaced(spec.id) != nullptr) return false;
  Placed row;
  row.id = spec.id;
  row.kind = PlacedKind::View;
  row.className = spec.className;
  row.role = spec.role;
  row.widget = new ViewWidget(spec.id, spec.takesFocus, spec.background, parent);
  // Its own shape, or it would take over the splitter's from the main window.
  row.widget->setCursor(Qt::ArrowCursor);
  return Settle(std::move(row), spec.accessibleName, FontOf(FontRole::Body), false);
}

int ViewByClass(std::u16string_view className) {
  const Placed* first = nullptr;
  for (const auto& [id, row] : placedThings) {
    if (row.className.empty() || row.className != className) continue;
    if (first == nullptr || row.order < first->order) first = &row;
  }
  return first != nullptr ? first->id : 0;
}

std::u16string_view ClassOf(int id) {
  const Placed* row = FindPlaced(id);
  return row != nullptr ? std::u16string_view(row->className) : std::u16string_view();
}

// Of a placed thing.

bool Exists(int id) { return FindPlaced(id) != nullptr; }

void Destroy(int id) {
  const QPointer<QWidget> widget(WidgetOf(id));
  if (widget.isNull()) return;
  if (captured != 0) ReleasePointer();
  // While its id still stands for it: the keyboard and a pressed button are told as lost.
  SetVisible(id, false);
  if (widget.isNull() || WidgetOf(id) != widget) return;
  // The ids are free at once; the widget itself may be in the middle of an event.
  std::vector<int> lost;
  for (const auto& [other, row] : placedThings) {
    if (row.widget == widget || widget->isAncestorOf(row.widget)) lost.push_back(other);
  }
  for (const int other : lost) ForgetPlaced(other, WidgetOf(other));
  widget->deleteLater();
}

void SetPlace(int id, const Rect& place) {
  QWidget* widget = WidgetOf(id);
  if (widget == nullptr || widget->isWindow()) return;
  const QRect wanted(place.left, place.top, std::max(0, RectWidth(place)),
                     std::max(0, RectHeight(place)));
  if (widget->geometry() != wanted) widget->setGeometry(wanted);
}

Rect PlaceOf(int id) {
  const QWidget* widget = WidgetOf(id);
  if (widget == nullptr) return Rect{};
  return widget->isWindow() ? PlaceInMainWindow(id) : RectFrom(widget->geometry());
}

namespace {

bool CanHoldKeyboard(const QWidget* widget, const QWidget* window) {
  return widget->focusPolicy() != Qt::NoFocus && widget->isEnabled() &&
         widget->isVisibleTo(window) && widget->window() == window;
}

// Hands the keyboard on from a holder that went out of sight or use. The toolkit leaves it with
// an editor, for which Tab is a character, and where nobody else takes it.
void HandKeyboardOn(QWidget* holder) {
  if (holder == nullptr || (holder->isVisible() && holder->isEnabled())) return;
  QWidget* now = QApplication::focusWidget();
  if (now != nullptr && now != holder) return;
  const QWidget* window = holder->window();
  // A window that goes gives the keyboard to another by itself.
  if (!window->isVisible()) return;
  for (QWidget* next = holder->nextInFocusChain(); next != holder;
       next = next->nextInFocusChain()) {
    const bool byTab = (next->focusPolicy() & Qt::TabFocus) != 0;
    if (!byTab || IdOfWidget(next) == 0 || !CanHoldKeyboard(next, window)) continue;
    next->setFocus(Qt::TabFocusReason);
    return;
  }
  holder->clearFocus();
}

}  // namespace

void SetVisible(int id, bool visible) {
  QWidget* widget = WidgetOf(id);
  if (widget == nullptr || widget->isHidden() != visible) return;
  const QPointer<QWidget> holder(QApplication::focusWidget());
  widget->setVisible(visible);
  HandKeyboardOn(holder);
}

// Before the main window is shown a child counts as visible when nothing else hides it, so
// that a layout made beforehand sees the same as later.
bool IsVisible(int id) {
  const QWidget* widget = WidgetOf(id);
  if (widget == nullptr) return false;
  return id == kMainWindow ? widget->isVisible() : widget->isVisibleTo(MainWidget());
}

void SetEnabled(int id, bool enabled) {
  QWidget* widget = WidgetOf(id);
  if (widget == nullptr) return;
  const QPointer<QWidget> holder(QApplication::focusWidget());
  widget->setEnabled(enabled);
  HandKeyboardOn(holder);
}

bool IsEnabled(int id) { return WidgetOf(id) != nullptr && WidgetOf(id)->isEnabled(); }

void SetFocusTo(int id) {
  QWidget* widget = WidgetOf(id);
  if (widget == nullptr) return;
  if (id == kMainWindow) {
    if (QWidget* holder = widget->focusWidget()) holder->clearFocus();
  } else if (CanHoldKeyboard(widget, widget->window())) {
    widget->setFocus(Qt::OtherFocusReason);
  }
}

int FocusedId() {
  const QWidget* widget = QApplication::focusWidget();
  // A window that is not shown yet remembers who will have the keyboard.
  if (widget == nullptr && MainWidget() != nullptr && !MainWidget()->isVisible()) {
    widget = MainWidget()->focusWidget();
  }
  const int id = IdOfWidget(widget);
  return id != kMainWindow ? id : 0;
}

void CatchUpSize(QWidget* widget) {
  if (!widget->testAttribute(Qt::WA_PendingResizeEvent)) return;
  widget->setAttribute(Qt::WA_PendingResizeEvent, false);
  QResizeEvent event(widget->size(), QSize());
  QCoreApplication::sendEvent(widget, &event);
  if (const auto* area = qobject_cast<QAbstractScrollArea*>(widget)) CatchUpSize(area->viewport());
}

void Repaint(int id) {
  if (WidgetOf(id) != nullptr) WidgetOf(id)->update();
}

void BringToTop(int id) {
  if (WidgetOf(id) != nullptr) WidgetOf(id)->raise();
}

void SetTabOrder(const int* ids, int count) {
  QWidget* before = nullptr;
  for (int i = 0; i < count; ++i) {
    QWidget* widget = WidgetOf(ids[i]);
    if (widget == nullptr) continue;
    if (before != nullptr) QWidget::setTabOrder(before, widget);
    before = widget;
  }
}

// Pointer.

int IdUnderPointer() {
  // Another program's window over ours takes the pointer away from it.
  if (MainWidget() == nullptr || !MainWidget()->underMouse()) return 0;
  return IdOfWidget(QApplication::widgetAt(QCursor::pos()));
}

void CapturePointer(int view) {
  QWidget* widget = WidgetOf(view);
  if (widget == nullptr) return;
  captured = view;
  // A pressed button already ties the pointer to the widget it was pressed on.
  const bool tied = QGuiApplication::mouseButtons() != Qt::NoButton && widget->underMouse() &&
                    IdOfWidget(QApplication::widgetAt(QCursor::pos())) == view;
  if (!tied) widget->grabMouse();
}

void ReleasePointer() {
  QWidget* widget = WidgetOf(captured);
  captured = 0;
  if (widget != nullptr && QWidget::mouseGrabber() == widget) widget->releaseMouse();
}

bool CtrlHeld() { return QGuiApplication::keyboardModifiers().testFlag(Qt::ControlModifier); }

bool ButtonHeld() { return QGuiApplication::mouseButtons() != Qt::NoButton; }

void SetPointerShape(int id, PointerShape shape) {
  QWidget* widget = WidgetOf(id);
  if (widget == nullptr) return;
  Qt::CursorShape wanted = Qt::ArrowCursor;
  if (shape == PointerShape::SizeAcross) wanted = Qt::SizeHorCursor;
  if (shape == PointerShape::SizeUpDown) wanted = Qt::SizeVerCursor;
  if (shape == PointerShape::Cross) wanted = Qt::CrossCursor;
  if (shape == PointerShape::Hand) wanted = Qt::PointingHandCursor;
  if (widget->cursor().shape() != wanted) widget->setCursor(wanted);
}

Rect PlaceInMainWindow(int id) {
  const QWidget* widget = WidgetOf(id);
  if (widget == nullptr || MainWidget() == nullptr) return Rect{};
  // Through the screen: a dialog is a window of its own.
  const QPoint at = MainWidget()->mapFromGlobal(widget->mapToGlobal(QPoint(0, 0)));
  return RectFrom(QRect(at, widget->size()));
}

}  // namespace platform
