// Modal dialogs of the application's own.

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QEventLoop>
#include <algorithm>
#include <vector>

#include "platform/dialog.h"
#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

class DialogWidget : public PlacedWidget<QDialog> {
 public:
  DialogWidget(const DialogSpec& given, QWidget* parent)
      : PlacedWidget<QDialog>(given.id, true, parent), spec(given) {
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_OpaquePaintEvent);
    // The frame of the well that has the keyboard is painted here.
    connect(qApp, &QApplication::focusChanged, this, [this] { update(); });
  }
  ~DialogWidget() override {
    if (loop != nullptr) loop->quit();
  }
  void Tell(int id, int notification) {
    if (spec.command != nullptr && !ended) spec.command(id, notification);
  }
  void reject() override { Tell(spec.cancelButton, kNotifyClick); }

  DialogSpec spec;
  QEventLoop* loop = nullptr;  // while it runs
  bool running = false;
  bool ended = false;
  int code = 0;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool plain =
        !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (enter && plain) {
      const int button = spec.defaultButton;
      if (!event->isAutoRepeat() && IsEnabled(button) && IsVisible(button)) {
        Tell(button, kNotifyClick);
      }
      return;
    }
    QDialog::keyPressEvent(event);
  }
  void closeEvent(QCloseEvent* event) override {
    // Only the dialog's own function ends it.
    event->ignore();
    reject();
  }
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    Canvas canvas;
    canvas.painter = &painter;
    canvas.area = Rect{0, 0, width(), height()};
    FillArea(canvas, canvas.area, spec.background);
    if (Listener().paint != nullptr) Listener().paint(Id(), canvas);
  }
};

std::vector<QPointer<DialogWidget>> dialogs;

// One that is gone but not deleted yet may have had the same id.
DialogWidget* DialogOf(int id) {
  const Placed* row = FindPlaced(id);
  for (const QPointer<DialogWidget>& dialog : dialogs) {
    if (row != nullptr && !dialog.isNull() && row->widget == dialog) return dialog;
  }
  return nullptr;
}

DialogWidget* DialogAround(int id) {
  const Placed* row = FindPlaced(id);
  if (row == nullptr) return nullptr;
  for (const QPointer<DialogWidget>& dialog : dialogs) {
    if (dialog.isNull()) continue;
    if (row->widget == dialog || dialog->isAncestorOf(row->widget)) return dialog;
  }
  return nullptr;
}

}  // namespace

bool TellDialog(int id, int notification) {
  DialogWidget* dialog = DialogAround(id);
  if (dialog == nullptr) return false;
  dialog->Tell(id, notification);
  return true;
}

bool LiesInDialog(int id) { return DialogAround(id) != nullptr; }

bool MakeDialog(const DialogSpec& spec) {
  QWidget* main = MainWidget();
  if (main == nullptr || FindPlaced(spec.id) != nullptr) return false;
  auto* dialog = new DialogWidget(spec, main);
  dialog->setObjectName(Text(spec.className));
  dialog->setWindowTitle(Text(spec.title));
  dialog->setFixedSize(RectWidth(spec.place), RectHeight(spec.place));
  Placed row;
  row.id = spec.id;
  row.kind = PlacedKind::View;
  row.className = spec.className;
  row.widget = dialog;
  std::erase_if(dialogs, [](const QPointer<DialogWidget>& gone) { return gone.isNull(); });
  dialogs.emplace_back(dialog);
  return Settle(std::move(row), spec.title, FontOf(FontRole::Body), true);
}

int RunDialog(int id) {
  const QPointer<DialogWidget> dialog(DialogOf(id));
  if (dialog.isNull() || dialog->running || MainWidget() == nullptr) return 0;
  const Asking asking;
  dialog->running = true;
  dialog->move(MainWidget()->frameGeometry().topLeft() +
               QPoint(dialog->spec.place.left, dialog->spec.place.top));
  dialog->show();
  dialog->activateWindow();
  // A loop of our own rather than the dialog's: nothing but EndDialog ends it. It stands here
  // because the widget may go before the loop has come to its end.
  QEventLoop loop;
  dialog->loop = &loop;
  if (!dialog->ended) loop.exec(QEventLoop::DialogExec);
  if (dialog.isNull()) return 0;
  dialog->loop = nullptr;
  const int code = dialog->code;
  dialog->ended = true;
  Destroy(id);
  return code;
}

void EndDialog(int id, int code) {
  DialogWidget* dialog = DialogOf(id);
  if (dialog == nullptr || dialog->ended) return;
  dialog->ended = true;
  dialog->code = code;
  if (dialog->loop != nullptr) dialog->loop->quit();
}

}  // namespace platform
