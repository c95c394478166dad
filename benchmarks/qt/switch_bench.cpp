// From one program to another, by its tab, in the whole workbench on real widgets.
//
// A switch ends with the painted editor. Beside it stands the opening of the same file in the same
// run, from its path to the painted editor: a tab that was up before must come back in a twentieth
// of that. Each round opens the files anew and closes them; the medians count.
#include <QApplication>
#include <QFile>
#include <QPlainTextEdit>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "../cpu_time.h"
#include "../programs.h"
#include "../targets.h"
#include "app/app_state.h"
#include "app/command_ids.h"
#include "bench_window.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "platform/editor.h"
#include "platform/qt/qt_testing.h"

namespace {

constexpr int kRounds = 3;
constexpr double kMostOfAnOpen = 0.05;

std::u16string FileOf(const char* name, int lines) {
  const std::string bytes = programs::Lines(lines);
  QFile file(bench::folder->filePath(QString::fromLatin1(name)));
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), qint64(bytes.size())) < 0) {
    std::abort();
  }
  return file.fileName().toStdU16String();
}

void Paint() {
  QCoreApplication::sendPostedEvents();
  static_cast<QPlainTextEdit*>(platform::WidgetOf(morva::kIdEditor))->viewport()->repaint();
}

// What follows the switch by itself, until nothing is left to do.
void Settle() {
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < 400) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

double TimeOfOpen(const std::u16string& path) {
  const int shown = morva::app.activeTab;
  const double before = CpuMilliseconds();
  morva::OpenProgramFile(path);
  Paint();
  const double spent = CpuMilliseconds() - before;
  if (morva::app.activeTab == shown || morva::ActiveTab()->path != path) std::abort();
  Settle();
  return spent;
}

double TimeOfSwitch(int index) {
  const double before = CpuMilliseconds();
  morva::SwitchTab(index);
  Paint();
  const double spent = CpuMilliseconds() - before;
  if (morva::app.activeTab != index) std::abort();
  Settle();
  return spent;
}

void Close(int index) {
  const int count = morva::app.tabCount;
  if (morva::app.activeTab != index) morva::SwitchTab(index);
  morva::CloseProgram();
  if (morva::app.tabCount != count - 1) std::abort();
  Settle();
}

void Note(const char* subject, double spent, double opened) {
  std::printf("%s: %.1f ms, its open %.1f ms\n", subject, spent, opened);
  targets::Note({subject, "ms", 0, 0, kMostOfAnOpen, "its open"}, spent, opened);
}

}  // namespace

int main(int argc, char** argv) {
  if (!bench::MakeHome()) return 1;
  platform::BeginProcess(argc, argv);
  bench::StartWorkbench();
  morva::app.dataDirReady = false;  // no autosave in between
  const std::u16string largeFile = FileOf("large.NC", 1000000);
  const std::u16string middleFile = FileOf("middle.NC", 100000);
  for (int round = 0; round < kRounds; ++round) {
    const double openedLarge = TimeOfOpen(largeFile);
    const int large = morva::app.activeTab;
    const double openedMiddle = TimeOfOpen(middleFile);
    const int middle = morva::app.activeTab;
    Note("Back to a tab of 1,000,000 lines", TimeOfSwitch(large), openedLarge);
    Note("From 1,000,000 lines to a tab of 100,000", TimeOfSwitch(middle), openedMiddle);
    Close(middle);
    Close(large);
  }
  platform::EndProcess();
  bench::folder.reset();
  return 0;
}
