// From one program to another, by its tab, in the whole workbench on real widgets.
//
// A switch ends with the painted editor. Beside it stands the opening of the same program in the
// same run: a tab that was up before must come back in a twentieth of that.
#include <QApplication>
#include <QFile>
#include <QPlainTextEdit>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "../cpu_time.h"
#include "../targets.h"
#include "app/app_state.h"
#include "app/command_ids.h"
#include "bench_window.h"
#include "documents/program_tabs.h"
#include "platform/editor.h"
#include "platform/qt/qt_testing.h"

namespace {

constexpr int kRounds = 3;
constexpr double kMostOfAnOpen = 0.05;

std::u16string Program(int lines) {
  std::u16string text;
  text.reserve(static_cast<std::size_t>(lines) * 28);
  for (int i = 0; i < lines; ++i) text += u"N12345 G01 X12.3456 Y-1.5\r\n";
  return text;
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

double TimeOfSwitch(int index) {
  const double before = CpuMilliseconds();
  morva::SwitchTab(index);
  Paint();
  const double spent = CpuMilliseconds() - before;
  if (morva::app.activeTab != index) std::abort();
  Settle();
  return spent;
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
  const int large = morva::OpenTab(u"", Program(1000000), u"large.NC");
  const int middle = morva::OpenTab(u"", Program(100000), u"middle.NC");
  const double openedLarge = TimeOfSwitch(large);
  const double openedMiddle = TimeOfSwitch(middle);
  for (int round = 0; round < kRounds; ++round) {
    Note("Back to a tab of 1,000,000 lines", TimeOfSwitch(large), openedLarge);
    Note("From 1,000,000 lines to a tab of 100,000", TimeOfSwitch(middle), openedMiddle);
  }
  platform::EndProcess();
  bench::folder.reset();
  return 0;
}
