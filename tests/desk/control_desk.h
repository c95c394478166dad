// The control at the far end of the line: the simulator as a process, and the words it prints. For
// tests of transfers on the real window.
#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QProcess>
#include <QStringList>

#include "desk/desk.h"

namespace desk {

class ControlAtTheFarEnd {
 public:
  ControlAtTheFarEnd() = default;
  ~ControlAtTheFarEnd() { Stop(); }
  ControlAtTheFarEnd(const ControlAtTheFarEnd&) = delete;
  ControlAtTheFarEnd& operator=(const ControlAtTheFarEnd&) = delete;

  // Puts its port into the settings of the application. False: no port within the usual time.
  bool Start(const QStringList& more = {}) {
    return StartWith(
        QStringList{QStringLiteral("--hidden"), QStringLiteral("--ini"), SettingsFile()} + more);
  }
  // Its line is listed among the ports; the settings stay as they are.
  bool StartListed() { return StartWith({}); }
  // Waits until it has printed these words; false after `milliseconds`.
  bool Heard(const char* words, int milliseconds = 5000) {
    return Until(
        [this, words]() {
          heard_ += process_.readAllStandardOutput();
          return heard_.contains(words);
        },
        milliseconds);
  }
  void Say(const QByteArray& line) { process_.write(line + "\n"); }
  void Stop() {
    if (process_.state() == QProcess::NotRunning) return;
    Say("quit");
    if (!process_.waitForFinished(3000)) process_.kill();
  }

 private:
  bool StartWith(const QStringList& options) {
    process_.setProcessChannelMode(QProcess::MergedChannels);
    process_.start(QCoreApplication::applicationDirPath() + QStringLiteral("/control_sim"),
                   options);
    return Heard("PORT ");
  }

  QProcess process_;
  QByteArray heard_;
};

}  // namespace desk
