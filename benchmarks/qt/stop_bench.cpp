// The longest stop of the window's thread while saves go to a disk of 300 ms a flush.
//
// The flush is that of the system, as the linker hands it to this program. A stop is the time
// between two moments at which the window can answer its user: by the clock, because waiting is
// what is looked for, less the time that other programs kept the processor from this thread.
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "../programs.h"
#include "../targets.h"
#include "app/app_state.h"
#include "app/command_ids.h"
#include "bench_files.h"
#include "bench_window.h"
#include "dnc/transfer.h"
#include "documents/autosave.h"
#include "documents/program_tabs.h"
#include "documents/save_state.h"
#include "documents/saver.h"
#include "documents/tab_models.h"
#include "library/shapes.h"
#include "platform/editor.h"
#include "platform/process.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"
#include "shell/start_up.h"
#include "simulator/view.h"

extern "C" int __real_fsync(int handle);
extern "C" int __wrap_fsync(int handle) {
  usleep(300000);
  return __real_fsync(handle);
}

namespace {

constexpr int kRounds = 3;
constexpr int kMostMs = 100;
constexpr std::size_t kLargest = std::size_t{32} << 20;

std::string Program(std::size_t bytes) {
  std::string text = programs::Lines(static_cast<int>(bytes / 27));
  // One line is typed at the end, and the file must stay one that can be opened.
  if (text.size() > bytes - 100) text.resize(text.rfind('\n', bytes - 100) + 1);
  return text;
}

QString FileOf(const char* name, const std::string& bytes) {
  const QString path = bench::folder->filePath(QString::fromLatin1(name));
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), qint64(bytes.size())) < 0) {
    std::abort();
  }
  return path;
}

bool Live(morva::FeatureSettings& record, std::int32_t kind) {
  record.version = 3;
  record.kind = kind;
  return true;
}

void Stand() {
  QDir(bench::folder->path()).mkpath(QStringLiteral("bin"));
  bench::StartWorkbench();
  // Drawings and plates stand by every program.
  morva::liveModels.cadWindowExists = [] { return true; };
  morva::liveModels.plateWindowExists = [] { return true; };
  morva::liveModels.storeSketch = [](morva::FeatureSettings& record) { return Live(record, 4); };
  morva::liveModels.storePlate = [](morva::FeatureSettings& record) { return Live(record, 5); };
  morva::liveModels.loadSketch = nullptr;
  morva::liveModels.loadPlate = nullptr;
  if (!morva::app.dataDirReady) std::abort();
}

// How long this thread stood ready without a processor so far, in nanoseconds; 0 where the system
// does not tell.
qint64 KeptWaiting() {
  long long running = 0;
  long long ready = 0;
  std::FILE* file = std::fopen("/proc/thread-self/schedstat", "r");
  if (!file) return 0;
  if (std::fscanf(file, "%lld %lld", &running, &ready) != 2) ready = 0;
  std::fclose(file);
  return ready;
}

// Until nothing is left to do, at least as long as a save takes.
double LongestStop(void (*act)()) {
  QElapsedTimer clock;
  clock.start();
  qint64 longest = 0;
  const auto passed = [&clock] { return clock.nsecsElapsed() - KeptWaiting(); };
  qint64 before = passed();
  const auto tick = [&] {
    const qint64 now = passed();
    longest = std::max(longest, now - before);
    before = now;
  };
  act();
  tick();
  while (morva::SavesUnderWay()) {
    QCoreApplication::processEvents();
    tick();
    usleep(500);
    before = passed();
  }
  QCoreApplication::processEvents();
  tick();
  return static_cast<double>(longest) * 1e-6;
}

void Settle() {
  while (morva::SavesUnderWay()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  QCoreApplication::processEvents();
}

void Open(const QString& path) {
  bench::nextFile = path;
  morva::OpenProgram();
  if (QString::fromUtf16(morva::app.activePath) != path) std::abort();
  Settle();
}

// The user types a line at the end. What the pause behind it does is no part of a save.
void Type() {
  const int end = platform::EditorLength(morva::kIdEditor);
  platform::SetEditorSelection(morva::kIdEditor, {end, end});
  platform::ReplaceSelection(morva::kIdEditor, u"(A)\r\n", true);
  morva::MarkModified();
  // List and path follow 150 ms behind the last key, the autosave 700 ms.
  QElapsedTimer pause;
  pause.start();
  while (pause.elapsed() < 500) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

void Measure(const char* subject, void (*prepare)(), void (*act)()) {
  for (int round = 0; round < kRounds; ++round) {
    prepare();
    const double longest = LongestStop(act);
    targets::Note({subject, "ms", 0, kMostMs}, longest);
    std::printf("%s: %.1f ms\n", subject, longest);
    std::fflush(stdout);
    Settle();
  }
}

void Save() { morva::SaveProgramCommand(); }
void SaveAs() {
  // Two tabs on one file are refused.
  bench::nextFile =
      bench::folder->filePath(QStringLiteral("other-%1.NC").arg(morva::app.activeTab));
  morva::SaveProgramAs();
}
void Autosave() { morva::RunAutosave(); }

void MeasureProgram(bool large) {
  Measure(large ? "Stop by a save of 32 MiB" : "Stop by a save of 10 KB", Type, Save);
  Measure(large ? "Stop by an autosave of 32 MiB" : "Stop by an autosave of 10 KB", Type, Autosave);
  Measure(large ? "Stop by Save As of 32 MiB" : "Stop by Save As of 10 KB", Type, SaveAs);
}

// Another program changed the file under the shown program, so that a copy takes what is typed.
void Hold(const char* name) {
  Type();
  FileOf(name, "G0\r\n");
  Autosave();
  Settle();
  if (morva::ActiveTab()->save.heldCopy.empty()) std::abort();
}

void MeasureHeld() {
  Open(FileOf("held.NC", Program(kLargest)));
  Hold("held.NC");
  Measure("Stop by the copy of a held program of 32 MiB", Type, Autosave);
  Open(FileOf("beside.NC", Program(10000)));
  Measure("Stop by an autosave beside a held program", Type, Autosave);
}

void Receive() {
  while (morva::app.tabCount < morva::kMaxTabs) morva::NewProgram();
  morva::transfer.receivedData = Program(2000000);
}

}  // namespace

int main(int argc, char** argv) {
  if (!bench::MakeHome()) return 1;
  platform::BeginProcess(argc, argv);
  Stand();
  Open(FileOf("small.NC", Program(10000)));
  MeasureProgram(false);
  Measure(
      "Stop by the settings of the grid",
      [] { morva::view.gridScale = (morva::view.gridScale + 1) % 3; },
      [] { morva::SaveViewSettings(); });
  Measure(
      "Stop by the shape library", [] { morva::AppendShape(u"Bracket"); },
      [] { morva::SaveShapeLibrary(); });
  Open(FileOf("large.NC", Program(kLargest)));
  MeasureProgram(true);
  MeasureHeld();
  Measure("Stop by a received program that is kept", Receive, [] { morva::OpenReceivedProgram(); });
  platform::EndProcess();
  bench::folder.reset();
  return 0;
}
