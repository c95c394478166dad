// The user's hands on the toolkit's platform: keys and pointer go to its windows as from the
// window system. Needs a display with a window manager.

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QCursor>
#include <QElapsedTimer>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <QWheelEvent>
#include <QWindow>
#include <memory>

#include "contract/hands.h"
#include "platform/dialog.h"
#include "platform/process.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"

namespace hands {

namespace {

using platform::WidgetOf;

// Looks at a state until it is given up: some seconds, and more on a machine that is busy or has
// stopped this program meanwhile.
constexpr int kMostLooks = 5000;
constexpr int kLooksAtADialog = 20;  // before it is answered

QString Text(std::u16string_view text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

QWidget* Main() { return WidgetOf(platform::kMainWindow); }

// The window that holds a thing, and a place of the thing in it.
QWindow* WindowOf(int id) {
  QWidget* widget = WidgetOf(id);
  if (widget == nullptr) qFatal("no thing has the id %d", id);
  return widget->window()->windowHandle();
}

QPoint PlaceInWindow(int id, int x, int y) {
  const QWidget* widget = WidgetOf(id);
  return widget->mapTo(widget->window(), QPoint(x, y));
}

Qt::KeyboardModifiers ModifiersOf(bool ctrl, bool shift, bool alt) {
  Qt::KeyboardModifiers modifiers;
  modifiers.setFlag(Qt::ControlModifier, ctrl);
  modifiers.setFlag(Qt::ShiftModifier, shift);
  modifiers.setFlag(Qt::AltModifier, alt);
  return modifiers;
}

Qt::MouseButton ButtonOf(const Held& held) {
  if (held.button == platform::PointerButton::Right) return Qt::RightButton;
  return held.button == platform::PointerButton::Middle ? Qt::MiddleButton : Qt::LeftButton;
}

Qt::Key KeyOf(const platform::KeyEvent& key) {
  constexpr struct {
    int ours;
    Qt::Key theirs;
  } kKeys[] = {
      {platform::kKeyEnter, Qt::Key_Return},  {platform::kKeyTab, Qt::Key_Tab},
      {platform::kKeyEscape, Qt::Key_Escape}, {platform::kKeySpace, Qt::Key_Space},
      {platform::kKeyUp, Qt::Key_Up},         {platform::kKeyDown, Qt::Key_Down},
      {platform::kKeyLeft, Qt::Key_Left},     {platform::kKeyRight, Qt::Key_Right},
      {platform::kKeyHome, Qt::Key_Home},     {platform::kKeyEnd, Qt::Key_End},
      {platform::kKeyPageUp, Qt::Key_PageUp}, {platform::kKeyPageDown, Qt::Key_PageDown},
      {platform::kKeyDelete, Qt::Key_Delete}, {platform::kKeyBackspace, Qt::Key_Backspace},
  };
  if (key.key == platform::kKeyTab && key.shift) return Qt::Key_Backtab;
  for (const auto& each : kKeys) {
    if (each.ours == key.key) return each.theirs;
  }
  const bool function = key.key >= platform::kKeyF1;
  return static_cast<Qt::Key>(function ? Qt::Key_F1 + key.key - platform::kKeyF1 : key.key);
}

// The window that has the keyboard. The window manager answers when it likes.
QWindow* KeyWindow() {
  if (!Until([] { return QGuiApplication::focusWindow() != nullptr; })) {
    qFatal("no window has the keyboard");
  }
  return QGuiApplication::focusWindow();
}

QObject* watches = nullptr;  // of the question that is asked

// Looks every few milliseconds until `serve` has done its work or the question is over.
void Watch(const std::function<bool()>& serve) {
  if (watches == nullptr) watches = new QObject;
  auto* timer = new QTimer(watches);
  auto looks = std::make_shared<int>(0);
  QObject::connect(timer, &QTimer::timeout, timer, [timer, looks, serve] {
    if (!serve() && ++*looks < kMostLooks) return;
    timer->stop();
    timer->deleteLater();
  });
  timer->start(3);
}

bool Stands(const QWidget* widget) {
  return widget != nullptr && widget->isVisible() && widget->windowHandle() != nullptr &&
         widget->windowHandle()->isExposed();
}

QMessageBox* StandingBox() {
  auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  return Stands(box) && box->isActiveWindow() ? box : nullptr;
}

QMessageBox::StandardButton ButtonFor(platform::BoxAnswer answer) {
  switch (answer) {
    case platform::BoxAnswer::Yes:
      return QMessageBox::Yes;
    case platform::BoxAnswer::No:
      return QMessageBox::No;
    case platform::BoxAnswer::Cancel:
      return QMessageBox::Cancel;
    case platform::BoxAnswer::Other:
      return QMessageBox::Retry;
    default:
      return QMessageBox::Ok;
  }
}

void ClickIn(const QWidget* widget, const QPoint& at) {
  QTest::mouseClick(widget->window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                    widget->mapTo(widget->window(), at));
}

}  // namespace

void Open() {
  platform::MainWindowSpec spec;
  spec.className = u"ContractWindow";
  spec.title = u"contract";
  spec.place = {0, 0, kWidth, kHeight};
  spec.minimumWidth = kLeastWidth;
  spec.minimumHeight = kLeastHeight;
  if (!platform::MakeMainWindow(spec)) qFatal("no main window could be made");
  QGuiApplication::clipboard()->clear();
  PointAway();
  platform::ShowMainWindow();
  if (!Until([] { return Main()->isActiveWindow() && Stands(Main()); })) {
    qFatal("the main window did not become active");
  }
  // Every question begins with the pointer in the same place, so that a move is one.
  QTest::mouseMove(Main()->windowHandle(), QPoint(kWidth - 1, kHeight - 1));
  Settle();
}

void Close() {
  delete watches;
  watches = nullptr;
  platform::Destroy(platform::kMainWindow);
  Settle();
}

void Settle() {
  for (int i = 0; i < 3; ++i) {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
  }
}

void Pass(int milliseconds) {
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < milliseconds) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    QTest::qSleep(1);
  }
}

bool Until(const std::function<bool()>& state) {
  for (int looks = 0; looks < kMostLooks; ++looks) {
    if (state()) return true;
    Pass(1);
  }
  return state();
}

void Press(const platform::KeyEvent& key) {
  // Letters come with their text, as they do from a keyboard.
  QString text;
  if (key.key > ' ' && key.key < 0x7F && !key.ctrl) {
    const QChar c(key.key);
    text = key.shift ? c : c.toLower();
  }
  if (key.key == platform::kKeySpace) text = QStringLiteral(" ");
  if (key.key == platform::kKeyTab) text = QStringLiteral("\t");
  if (key.key == platform::kKeyEnter) text = QStringLiteral("\r");
  QTest::sendKeyEvent(QTest::Click, KeyWindow(), KeyOf(key), text,
                      ModifiersOf(key.ctrl, key.shift, key.alt));
  Settle();
}

void Type(std::u16string_view text) {
  for (const char16_t c : text) {
    if (c == u'\n') {
      Press({platform::kKeyEnter, false, false, false});
    } else if (c == u'\t') {
      Press({platform::kKeyTab, false, false, false});
    } else {
      const bool shift = c >= u'A' && c <= u'Z';
      QTest::sendKeyEvent(QTest::Click, KeyWindow(),
                          static_cast<Qt::Key>(QChar(c).toUpper().unicode()), QString(QChar(c)),
                          ModifiersOf(false, shift, false));
      Settle();
    }
  }
}

void ClickAt(int id, int x, int y, const Held& held) {
  QTest::mouseClick(WindowOf(id), ButtonOf(held), ModifiersOf(held.ctrl, held.shift, false),
                    PlaceInWindow(id, x, y));
  Settle();
}

void DoubleClickAt(int id, int x, int y) {
  QTest::mouseDClick(WindowOf(id), Qt::LeftButton, Qt::NoModifier, PlaceInWindow(id, x, y));
  Settle();
}

void PressAt(int id, int x, int y, const Held& held) {
  QTest::mousePress(WindowOf(id), ButtonOf(held), ModifiersOf(held.ctrl, held.shift, false),
                    PlaceInWindow(id, x, y));
  Settle();
}

void MoveTo(int id, int x, int y) {
  QTest::mouseMove(WindowOf(id), PlaceInWindow(id, x, y));
  Settle();
}

void ReleaseAt(int id, int x, int y, const Held& held) {
  QTest::mouseRelease(WindowOf(id), ButtonOf(held), ModifiersOf(held.ctrl, held.shift, false),
                      PlaceInWindow(id, x, y));
  Settle();
}

void WheelAt(int id, int x, int y, int notches) {
  QWidget* window = WidgetOf(id)->window();
  const QPoint at = PlaceInWindow(id, x, y);
  for (int i = 0; i < std::abs(notches); ++i) {
    QWheelEvent event(at, window->mapToGlobal(at), QPoint(), QPoint(0, notches > 0 ? 120 : -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window->windowHandle(), &event);
  }
  Settle();
}

void PointTo(int id, int x, int y) {
  QCursor::setPos(WidgetOf(id)->mapToGlobal(QPoint(x, y)));
  Settle();
}

void PointAway() {
  const QRect screen = QGuiApplication::primaryScreen()->geometry();
  QCursor::setPos(screen.bottomRight());
  Settle();
}

void ChooseInCombo(int id, int row) {
  auto* combo = qobject_cast<QComboBox*>(WidgetOf(id));
  ClickAt(id, combo->width() / 2, combo->height() / 2);
  QAbstractItemView* view = combo->view();
  if (!Until([view] { return Stands(view->window()); })) qFatal("the combo did not open");
  const QPoint at = view->visualRect(view->model()->index(row, 0)).center();
  const auto spot = [view](const QPoint& p) { return view->viewport()->mapTo(view->window(), p); };
  // A release where the pointer did not move would count as that of the opening click.
  QTest::mouseMove(view->window()->windowHandle(), spot(at + QPoint(20, 0)));
  QTest::mouseMove(view->window()->windowHandle(), spot(at));
  QTest::mouseClick(view->window()->windowHandle(), Qt::LeftButton, Qt::NoModifier, spot(at));
  if (!Until([view] { return !view->window()->isVisible(); })) qFatal("the combo stayed open");
  Settle();
}

namespace {

void DoAction(QAccessibleInterface* speaks, bool turn) {
  QAccessibleActionInterface* acts = speaks->actionInterface();
  acts->doAction(turn ? acts->toggleAction() : acts->pressAction());
  Settle();
}

QAccessibleInterface* Speaks(int id) { return QAccessible::queryAccessibleInterface(WidgetOf(id)); }

}  // namespace

void Assist(int id, bool turn) { DoAction(Speaks(id), turn); }

void AssistRow(int id, int row, bool turn) {
  QAccessibleInterface* list = Speaks(id);
  if (list->role() == QAccessible::ComboBox) list = list->child(0);
  DoAction(list->child(row), turn);
}

void AssistValue(int view, int step) {
  if (QAccessibleValueInterface* value = Speaks(view)->valueInterface()) {
    value->setCurrentValue(step);
  }
  Settle();
}

platform::ViewValue ValueRead(int view) {
  platform::ViewValue read;
  read.words = Speaks(view)->text(QAccessible::Value).toStdU16String();
  if (QAccessibleValueInterface* value = Speaks(view)->valueInterface()) {
    read.least = value->minimumValue().toInt();
    read.most = value->maximumValue().toInt();
    read.now = value->currentValue().toInt();
  }
  return read;
}

void CopyElsewhere(std::u16string_view text) { QGuiApplication::clipboard()->setText(Text(text)); }

std::u16string PasteElsewhere() {
  return QGuiApplication::clipboard()
      ->text()
      .replace(QLatin1String("\r\n"), QLatin1String("\n"))
      .toStdU16String();
}

void ResizeWindow(int width, int height) {
  Main()->resize(width, height);
  Settle();
}

void PressCloseKey() {
  Main()->close();
  Settle();
}

void ComeToFront() {
  Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
  Settle();
}

void AnswerBox(platform::BoxAnswer answer, const std::function<void()>& meanwhile) {
  Watch([answer, meanwhile] {
    QMessageBox* box = StandingBox();
    if (box == nullptr) return false;
    if (meanwhile) meanwhile();
    const QAbstractButton* button = box->button(ButtonFor(answer));
    if (button == nullptr) {
      box->reject();
    } else {
      ClickIn(button, button->rect().center());
    }
    return true;
  });
}

void EscapeFromBox() {
  Watch([] {
    if (StandingBox() == nullptr) return false;
    Press({platform::kKeyEscape, false, false, false});
    return true;
  });
}

namespace {

QTemporaryDir& PrintFolder() {
  static QTemporaryDir folder;
  return folder;
}

// A page without margins, of as many dots as wanted.
void PrepareFile(QPrinter& printer, const platform::PrinterFigures& figures) {
  printer.setOutputFileName(PrintFolder().filePath(QStringLiteral("page.pdf")));
  printer.setResolution(figures.dpiX);
  const QSizeF inches(static_cast<double>(figures.width) / figures.dpiX,
                      static_cast<double>(figures.height) / figures.dpiY);
  const QPageSize size(inches, QPageSize::Inch, QString(), QPageSize::ExactMatch);
  printer.setPageLayout(QPageLayout(size, QPageLayout::Portrait, QMarginsF()));
}

void ServePrinter(const std::function<void(QPrintDialog&)>& serve) {
  Watch([serve] {
    auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
    if (!Stands(dialog) || !dialog->isActiveWindow()) return false;
    serve(*dialog);
    return true;
  });
}

}  // namespace

void AnswerPrinter(const platform::PrinterFigures& figures) {
  ServePrinter([figures](QPrintDialog& dialog) {
    PrepareFile(*dialog.printer(), figures);
    dialog.done(QDialog::Accepted);
  });
}

void CancelPrinter() {
  ServePrinter([](QPrintDialog& dialog) { dialog.reject(); });
}

void PickFromMenu(int itemId) {
  Watch([itemId] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!Stands(menu)) return false;
    const QPointer<QMenu> self(menu);
    for (QAction* action : menu->actions()) {
      if (itemId == 0 || action->data().toInt() != itemId) continue;
      ClickIn(menu, menu->actionGeometry(action).center());
      break;
    }
    if (!self.isNull() && self->isVisible()) self->close();
    return true;
  });
}

void InDialog(int dialog, const std::function<void()>& act) {
  auto looks = std::make_shared<int>(0);
  Watch([dialog, act, looks] {
    const QWidget* widget = WidgetOf(dialog);
    if (!Stands(widget) || !widget->isActiveWindow()) return false;
    // Nobody answers within a few milliseconds. A dialog that is gone while the window manager is
    // still busy with showing it leaves the toolkit without an active window.
    if (++*looks < kLooksAtADialog) return false;
    act();
    if (platform::Exists(dialog)) Press({platform::kKeyEscape, false, false, false});
    platform::EndDialog(dialog, 0);
    return true;
  });
}

std::u16string TipOver(int id) {
  const QWidget* widget = WidgetOf(id);
  // From beside it: a pointer that stands there already does not come to rest.
  MoveTo(id, widget->width() / 2 - 5, widget->height() / 2);
  MoveTo(id, widget->width() / 2, widget->height() / 2);
  // A tip shows after 450 ms.
  for (int waited = 0; waited < 900 && !QToolTip::isVisible(); waited += 5) Pass(5);
  return QToolTip::isVisible() ? QToolTip::text().toStdU16String() : std::u16string();
}

void Paint(int id) {
  WidgetOf(id)->grab();
  Settle();
}

}  // namespace hands

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  platform::BeginProcess(argc, argv);
  const int failed = RUN_ALL_TESTS();
  platform::EndProcess();
  return failed;
}
