#include "desk/another_program.h"

#include <unistd.h>

#include <QApplication>
#include <QSocketNotifier>
#include <QWidget>

namespace desk {

int RunAnotherProgram(int argc, char** argv) {
  QApplication application(argc, argv);
  QWidget window;
  window.setWindowTitle(QStringLiteral("another program"));
  window.resize(300, 200);
  window.show();
  window.activateWindow();
  QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, &application, &QApplication::quit);
  return QApplication::exec();
}

}  // namespace desk
