#include "desk/desk.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include "platform/process.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"
#include "shell/start_up.h"

namespace desk {

namespace {

QString lastBoxText;
int boxesSeen = 0;
QString settingsFolder;

// Looks for a modal thing every few milliseconds until `serve` takes it or ten seconds pass.
void Watch(const std::function<bool()>& serve) {
  auto* timer = new QTimer(qApp);
  auto* waited = new QElapsedTimer();
  waited->start();
  QObject::connect(timer, &QTimer::timeout, qApp, [timer, waited, serve]() {
    if (!serve() && waited->elapsed() < 10000) return;
    timer->stop();
    timer->deleteLater();
    delete waited;
  });
  timer->start(15);
}

QString Plain(QString caption) { return caption.remove(QLatin1Char('&')); }

}  // namespace

void Start(const QString& home) {
  static int argc = 1;
  static char name[] = "MORVA";
  static char* argv[] = {name, nullptr};
  if (!qApp) platform::BeginProcess(argc, argv);
  QDir().mkpath(home + QStringLiteral("/bin"));
  settingsFolder = home + QStringLiteral("/bin");
  qputenv("XDG_CONFIG_HOME", (home + QStringLiteral("/.config")).toLocal8Bit());
  platform::SetExecutablePathForTests(settingsFolder + QStringLiteral("/desk"));
  if (morva::StartApplication() != 0) qFatal("the application did not start");
  Until([]() { return WidgetOf(platform::kMainWindow)->isVisible(); });
  (void)QTest::qWaitForWindowActive(WidgetOf(platform::kMainWindow), 3000);
}

QString SettingsFile() { return settingsFolder + QStringLiteral("/MORVA.ini"); }

QWidget* WidgetOf(int id) { return platform::WidgetOf(id); }

bool Until(const std::function<bool()>& state, int milliseconds) {
  QElapsedTimer timer;
  timer.start();
  while (!state()) {
    if (timer.elapsed() > milliseconds) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    QTest::qSleep(1);
  }
  return true;
}

void Run(int milliseconds) { QTest::qWait(milliseconds); }

namespace {

// Sees the moves of the pointer before anything else does.
class MoveWatch : public QObject {
 public:
  explicit MoveWatch(const QPoint& target) : target_(target) { qApp->installEventFilter(this); }
  bool Arrived() const { return arrived_; }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::MouseMove) {
      const QPoint at = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
      arrived_ = arrived_ || at == target_;
    }
    return false;
  }

 private:
  QPoint target_;
  bool arrived_ = false;
};

}  // namespace

void MovePointer(QWidget* widget, const QPoint& at) {
  const QPoint target = widget->mapToGlobal(at);
  const bool there = QCursor::pos() == target;
  const MoveWatch watch(target);
  QTest::mouseMove(widget, at);
  if (!there && !Until([&watch]() { return watch.Arrived(); })) qFatal("the pointer did not move");
  QTest::qWait(5);
}

void Click(int id) {
  QWidget* widget = WidgetOf(id);
  if (!widget) qFatal("no control with id %d", id);
  QTest::mouseClick(widget, Qt::LeftButton);
}

void TypeInto(int id, const QString& text) {
  QWidget* widget = WidgetOf(id);
  widget->setFocus();
  for (const QChar c : text) {
    if (c == QLatin1Char('\n')) {
      QTest::keyClick(widget, Qt::Key_Return);
    } else {
      QTest::keyClicks(widget, QString(c));
    }
  }
}

void Key(int id, int key, Qt::KeyboardModifiers modifiers) {
  QWidget* widget = WidgetOf(id);
  widget->setFocus();
  QTest::keyClick(widget, static_cast<Qt::Key>(key), modifiers);
}

namespace {

QWidget* KeyboardHolder() {
  if (!Until([]() { return QApplication::focusWidget() != nullptr; })) {
    qFatal("nothing has the keyboard");
  }
  return QApplication::focusWidget();
}

}  // namespace

void TypeHere(const QString& text) { QTest::keyClicks(KeyboardHolder(), text); }

void KeyHere(int key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(KeyboardHolder(), static_cast<Qt::Key>(key), modifiers);
}

void AnswerBox(const QString& caption) {
  Watch([caption]() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || !box->isVisible()) return false;
    for (QAbstractButton* button : box->buttons()) {
      if (Plain(button->text()) != caption) continue;
      lastBoxText = box->text();
      ++boxesSeen;
      button->click();
      return true;
    }
    return false;
  });
}

QString LastBoxText() { return lastBoxText; }
int BoxesSeen() { return boxesSeen; }

void AnswerFile(const QString& path) {
  Watch([path]() {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible()) return false;
    if (path.isEmpty()) {
      dialog->reject();
      return true;
    }
    auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (!edit) return false;
    edit->setText(path);
    QTest::keyClick(edit, Qt::Key_Return);
    return true;
  });
}

void AnswerMenu(const QString& caption) {
  Watch([caption]() {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!menu || !menu->isVisible()) return false;
    if (caption.isEmpty()) {
      menu->close();
      return true;
    }
    for (QAction* action : menu->actions()) {
      if (!Plain(action->text()).startsWith(caption)) continue;
      QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                        menu->actionGeometry(action).center());
      return true;
    }
    return false;
  });
}

QString TextOf(int id) {
  QWidget* widget = WidgetOf(id);
  if (auto* edit = qobject_cast<QPlainTextEdit*>(widget)) return edit->toPlainText();
  if (auto* line = qobject_cast<QLineEdit*>(widget)) return line->text();
  if (auto* label = qobject_cast<QLabel*>(widget)) return label->text();
  if (auto* button = qobject_cast<QAbstractButton*>(widget)) return button->text();
  return QString();
}

QStringList RowsOf(int id) {
  QStringList rows;
  if (auto* view = qobject_cast<QAbstractItemView*>(WidgetOf(id))) {
    const QAbstractItemModel* model = view->model();
    for (int row = 0; row < model->rowCount(); ++row) {
      rows << model->index(row, 0).data().toString();
    }
  }
  return rows;
}

void Picture(const QString& file) {
  QWidget* window = WidgetOf(platform::kMainWindow);
  QPixmap picture;
  if (QGuiApplication::platformName() == QLatin1String("xcb")) {
    picture = window->screen()->grabWindow(
        0, window->frameGeometry().x(), window->frameGeometry().y(),
        window->frameGeometry().width(), window->frameGeometry().height());
  }
  if (picture.isNull()) picture = window->grab();
  picture.save(file);
}

void CloseWindow() { WidgetOf(platform::kMainWindow)->close(); }

}  // namespace desk
