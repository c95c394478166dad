// Files that another program lets go over the main window.

#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QMetaObject>
#include <QMimeData>
#include <QUrl>
#include <QWindow>
#include <string>
#include <utility>
#include <vector>

#include "platform/events.h"
#include "platform/qt/qt_internal.h"

namespace platform {

namespace {

std::vector<std::u16string> FilesIn(const QMimeData* data) {
  std::vector<std::u16string> paths;
  if (data == nullptr) return paths;
  for (const QUrl& url : data->urls()) {
    if (!url.isLocalFile()) continue;
    paths.push_back(Text16(QDir::toNativeSeparators(QDir::cleanPath(url.toLocalFile()))));
  }
  return paths;
}

bool MayDrop() {
  return QApplication::activeModalWidget() == nullptr &&
         QApplication::activePopupWidget() == nullptr && Listener().dropped != nullptr;
}

// Whoever moves files deletes them once they are taken; here they are only read.
void Take(QDropEvent* event) {
  for (const Qt::DropAction action : {Qt::CopyAction, Qt::LinkAction}) {
    if (!event->possibleActions().testFlag(action)) continue;
    event->setDropAction(action);
    return event->accept();
  }
  event->ignore();
}

// Files go to the program wherever in the window they are let go. Nothing in it would take them:
// a field or an editor would write their names. Text that is dragged goes on to the widgets.
class DropWatch : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override {
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) return false;
    const QWidget* main = MainWidget();
    if (main == nullptr || receiver != main->windowHandle()) return false;
    auto* drop = static_cast<QDropEvent*>(event);
    std::vector<std::u16string> paths = FilesIn(drop->mimeData());
    if (paths.empty()) return false;
    if (!MayDrop()) {
      drop->ignore();
      return true;
    }
    Take(drop);
    if (type == QEvent::Drop && drop->isAccepted()) TellSoon(std::move(paths));
    return true;
  }

 private:
  // From the loop: the other program waits for the end of the drop, and a box may come up.
  static void TellSoon(std::vector<std::u16string> paths) {
    MainWidget()->activateWindow();
    QMetaObject::invokeMethod(
        qApp,
        [paths = std::move(paths)] {
          if (Listener().dropped != nullptr) Listener().dropped(paths);
        },
        Qt::QueuedConnection);
  }
};

}  // namespace

void BeginDrops() { QCoreApplication::instance()->installEventFilter(new DropWatch(qApp)); }

}  // namespace platform
