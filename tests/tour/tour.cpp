// The tour: a typical job on the real window, with a picture of each step.
//
// Opens a sample, runs the preflight, draws and plays its path, sends it to the simulated
// control over a pseudo-terminal and receives it back. Needs a display; ends with 1 and a word
// on what failed when a step does not come about.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <cstdio>

#include "app/command_ids.h"
#include "desk/control_desk.h"
#include "desk/desk.h"
#include "documents/file_text.h"
#include "platform/qt/qt_testing.h"
#include "simulator/motion_path.h"
#include "simulator/shown_path.h"

namespace {

QString pictures;
int step = 0;

void Fail(const char* what) {
  std::fprintf(stderr, "The tour stopped: %s\n", what);
  desk::Picture(pictures + QStringLiteral("/stopped-here.png"));
  std::exit(1);
}

void Shoot(const char* name, const char* words) {
  desk::Run(300);
  ++step;
  const QString file = QStringLiteral("%1/%2-%3.png")
                           .arg(pictures)
                           .arg(step, 2, 10, QLatin1Char('0'))
                           .arg(QLatin1String(name));
  desk::Picture(file);
  std::printf("%2d  %s\n", step, words);
  std::fflush(stdout);
}

void Wait(const std::function<bool()>& state, const char* what, int milliseconds = 8000) {
  if (!desk::Until(state, milliseconds)) Fail(what);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "tour SAMPLES PICTURES\n");
    return 2;
  }
  const QString samples = QString::fromLocal8Bit(argv[1]);
  pictures = QString::fromLocal8Bit(argv[2]);
  const QString home = pictures + QStringLiteral("/home");
  QDir().mkpath(home);
  desk::Start(home);
  desk::Run(400);
  Shoot("start", "MORVA starts with one fresh program");

  // A copy, because an autosave writes over the file that is open.
  const QString program = home + QStringLiteral("/bearing_flange.NC");
  QFile::remove(program);
  QFile::copy(samples + QStringLiteral("/bearing_flange.NC"), program);
  QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner);
  desk::AnswerFile(program);
  desk::Click(morva::kIdOpen);
  Wait([]() { return desk::TextOf(morva::kIdEditor).contains(QStringLiteral("BEARING FLANGE")); },
       "the sample did not open");
  Wait([]() { return desk::TextOf(morva::kIdEditor).contains(QStringLiteral("(MORVA TEXT ")); },
       "the markers did not appear");
  Shoot("open", "A program is open; its blocks stand in the list");

  desk::Key(morva::kIdEditor, Qt::Key_F5);
  Wait(
      []() {
        return desk::TextOf(morva::kIdOutputLog).contains(QStringLiteral("Validation complete"));
      },
      "the preflight did not report");
  Shoot("preflight", "F5 runs the preflight");

  desk::Click(morva::kIdPath);
  Wait([]() { return morva::path.count > 100; }, "no path was drawn");
  Shoot("path", "PATH draws the tool path");

  desk::Click(morva::kIdPlayToggle);
  // From 1x to 16x, as an operator in a hurry does.
  for (int i = 0; i < 4; ++i) desk::Click(morva::kIdPlayForward);
  Wait([]() { return morva::playback.playHead > 700; }, "playback does not move", 30000);
  Shoot("play", "Play steps the tool, the source line beside it");
  desk::Click(morva::kIdPlayToggle);

  desk::ControlAtTheFarEnd control;
  const QString received = home + QStringLiteral("/at-the-control.NC");
  if (!control.Start({QStringLiteral("--save"), received})) {
    Fail("the simulated control did not start");
  }
  const QByteArray text = desk::TextOf(morva::kIdEditor).toUtf8();
  desk::AnswerBox(QStringLiteral("Yes"));
  desk::Click(morva::kIdSend);
  Wait(
      []() { return desk::TextOf(morva::kIdOutputLog).contains(QStringLiteral("Send complete.")); },
      "the program was not sent", 60000);
  Wait([&received]() { return QFile::exists(received) && QFile(received).size() > 1000; },
       "the control did not save the program");
  Shoot("send", "SEND: the simulated control has the program");

  desk::Click(morva::kIdReceive);
  Wait(
      []() { return desk::TextOf(morva::kIdOutputLog).contains(QStringLiteral("Receive armed.")); },
      "the receive was not armed");
  control.Say("send " + received.toLocal8Bit());
  Wait(
      []() {
        return desk::TextOf(morva::kIdOutputLog)
            .contains(QStringLiteral("Received RS-232 program opened in a new tab."));
      },
      "the program did not come back", 60000);
  Shoot("receive", "RECEIVE: the same program in a new tab");

  QFile saved(received);
  if (!saved.open(QIODevice::ReadOnly)) Fail("the control's file cannot be read");
  QByteArray wanted = text;
  wanted.replace("\n", "\r\n");
  if (!wanted.endsWith("\r\n")) wanted += "\r\n";
  if (!wanted.startsWith("%")) wanted = "%\r\n" + wanted;
  if (!wanted.trimmed().endsWith("%")) wanted += "%\r\n";
  if (saved.readAll() != wanted) Fail("the control got other bytes than the editor shows");
  std::printf("What went out is what the editor shows, byte for byte.\n");
  return 0;
}
