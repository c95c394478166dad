// The toolkit's application object, before the first window and after the last.

#include <QApplication>
#include <QDir>
#include <QSerialPortInfo>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "platform/file.h"
#include "platform/folders.h"
#include "platform/message.h"
#include "platform/posix/configuration_folder.h"
#include "platform/posix/termination.h"
#include "platform/process.h"
#include "platform/qt/qt_internal.h"
#include "platform/qt/qt_testing.h"
#include "platform/serial.h"
#include "platform/window.h"

namespace platform {

namespace {

int argumentCount = 0;
QApplication* application = nullptr;
std::u16string executableForTests;

// The main window itself never has the keyboard.
void TellFocus(int id, bool gained) {
  if (id == 0 || id == kMainWindow || Listener().focusChanged == nullptr) return;
  Listener().focusChanged(id, gained);
}

// The wish comes once; a second signal meanwhile changes nothing.
void ListenForTermination() {
  const int pipe = WatchTermination();
  if (pipe < 0) return;
  auto* wish = new QSocketNotifier(pipe, QSocketNotifier::Read, application);
  QObject::connect(wish, &QSocketNotifier::activated, wish, [wish] {
    wish->setEnabled(false);
    if (Listener().terminated != nullptr) Listener().terminated();
    QuitLoop(0);
  });
}

// The toolkit knows the adapter's own description where the system's list is mute.
bool NameAdapter(const char16_t* device, char16_t* words, int capacity) {
  const QSerialPortInfo info(Text(device));
  const QString name = info.description();
  if (info.isNull() || name.isEmpty() || capacity < 1) return false;
  const QString kept = name.left(capacity - 1);
  std::copy_n(reinterpret_cast<const char16_t*>(kept.constData()), kept.size(), words);
  words[kept.size()] = 0;
  return true;
}

}  // namespace

void BeginProcess(int& argc, char** argv) {
  if (application != nullptr) return;
  // The look is the program's own; the desktop's colours and fonts are not asked for.
  QApplication::setDesktopSettingsAware(false);
  QApplication::setHighDpiScaleFactorRoundingPolicy(
      Qt::HighDpiScaleFactorRoundingPolicy::RoundPreferFloor);
  argumentCount = argc;
  application = new QApplication(argumentCount, argv);
  argc = argumentCount;
  QCoreApplication::setApplicationName(QStringLiteral("MORVA"));
  QGuiApplication::setDesktopFileName(QStringLiteral("morva"));
  BeginLook();
  BeginAccess();
  BeginMoves();
  BeginDrops();
  BeginFront();
  BeginPosts();
  SetAdapterNamer(NameAdapter);
  ListenForTermination();
  QObject::connect(application, &QApplication::focusChanged, application,
                   [](QWidget* old, QWidget* now) {
                     const int lost = IdOfWidget(old);
                     const int gained = IdOfWidget(now);
                     if (lost == gained) return;
                     TellFocus(lost, false);
                     TellFocus(gained, true);
                   });
}

void EndProcess() {
  if (application == nullptr) return;
  ListenTo(nullptr);
  EndTimers();
  Destroy(kMainWindow);
  EndPosts();
  delete application;
  application = nullptr;
}

void StopProcess(std::u16string_view title, std::u16string_view words, int exitCode) {
  // The box may stand for hours; the words must be readable before.
  std::fprintf(stderr, "%s\n", ToUtf8(words).c_str());
  std::fflush(nullptr);
  if (application != nullptr) ShowBox(title, words, BoxButtons::Ok, BoxIcon::Error);
  std::_Exit(exitCode);
}

void SetExecutablePathForTests(const QString& path) { executableForTests = Text16(path); }

std::u16string ExecutablePath() {
  if (!executableForTests.empty()) return executableForTests;
  return Text16(QDir::toNativeSeparators(QCoreApplication::applicationFilePath()));
}

bool ConfigurationFolder(std::u16string& path) {
  return ConfigurationFolderFrom(std::getenv("XDG_CONFIG_HOME"), std::getenv("HOME"), path);
}

bool DocumentsFolder(std::u16string& path) {
  QString place = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  if (place.isEmpty() && !QDir::homePath().isEmpty()) {
    place = QDir::homePath() + QStringLiteral("/Documents");
  }
  // A fresh home has no such folder yet.
  if (place.isEmpty() || !QDir().mkpath(place)) return false;
  path = Text16(QDir::toNativeSeparators(place));
  return true;
}

}  // namespace platform
