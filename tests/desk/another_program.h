// Another program on the same display, whose window takes the front. For desk tests.
//
// It is this program again, started with a word of its own: a display server hands the keyboard
// from program to program, and windows of one program do not count as that.
#pragma once

#include <QCoreApplication>
#include <QGuiApplication>
#include <QProcess>

#include "desk/desk.h"

namespace desk {

inline constexpr char kAnotherProgram[] = "--another-program";

// Shows a window until its input ends.
int RunAnotherProgram(int argc, char** argv);

class AnotherProgram {
 public:
  AnotherProgram() {
    process_.start(QCoreApplication::applicationFilePath(), {QLatin1String(kAnotherProgram)});
    if (!Until([]() { return !AtTheFront(); }, 20000)) qFatal("no other program took the front");
  }
  // The window manager gives the front back to who had it.
  void End() {
    process_.closeWriteChannel();
    if (!process_.waitForFinished(10000)) process_.kill();
    if (!Until([]() { return AtTheFront(); })) qFatal("the front was not given back");
  }
  static bool AtTheFront() { return QGuiApplication::applicationState() == Qt::ApplicationActive; }

 private:
  QProcess process_;
};

}  // namespace desk
