// What holds the window while nobody types: the pause behind a key, and the autosave behind it, in
// programs of 1,000,000 and 100,000 lines and in the largest that can be opened.
//
// A stretch is what the window does from one look for keys to the next, in processor time of its
// thread; the longest one is told. Beside a pause stands one walk through the text, beside an
// autosave one copy of it.
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "../cpu_time.h"
#include "../programs.h"
#include "../targets.h"
#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/limits.h"
#include "bench_window.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "documents/saver.h"
#include "documents/tab_table.h"
#include "platform/editor.h"
#include "platform/qt/qt_testing.h"
#include "platform/timer.h"
#include "platform/window.h"

namespace {

constexpr int kRounds = 5;
constexpr int kSettleMs = 1500;
constexpr int kLongestSaveMs = 60000;

constexpr char kWalk[] = "a walk";
constexpr char kCopy[] = "a copy";

// The longest stretch until `done`, and what all of them took.
struct Held {
  double longest = 0;
  double all = 0;
};

template <typename Done>
Held Watch(const Done& done, int mostMs) {
  Held held;
  QElapsedTimer clock;
  clock.start();
  while (!done(clock.elapsed())) {
    if (clock.elapsed() > mostMs) std::abort();
    const double before = CpuMilliseconds();
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    const double spent = CpuMilliseconds() - before;
    held.longest = std::max(held.longest, spent);
    held.all += spent;
  }
  return held;
}

Held WatchFor(int milliseconds) {
  return Watch([milliseconds](qint64 passed) { return passed >= milliseconds; }, kLongestSaveMs);
}

// The refresh has run, and what it left to do at once.
bool Refreshed(qint64) { return !platform::TimerRuns(platform::kMainWindow, morva::kTimerText); }

bool AllSaved(qint64) {
  const morva::ProgramTab* tab = morva::ActiveTab();
  return tab->save.savedChanges >= tab->save.changes && !morva::SavesUnderWay();
}

void Press(int code, const QString& text) {
  QKeyEvent event(QEvent::KeyPress, code, Qt::NoModifier, text);
  QCoreApplication::sendEvent(platform::WidgetOf(morva::kIdEditor), &event);
  QCoreApplication::sendPostedEvents();
}

void TypeInLine(int line) {
  const int at = platform::EditorLineStart(morva::kIdEditor, line);
  platform::SetEditorSelection(morva::kIdEditor, {at, at});
  Press(Qt::Key_7, QStringLiteral("7"));
}

// What stands behind all blocks gets markers of its own at the pause.
void TypeBehindBlocks() {
  const int end = platform::EditorLength(morva::kIdEditor);
  platform::SetEditorSelection(morva::kIdEditor, {end, end});
  Press(Qt::Key_Return, QStringLiteral("\r"));
  Press(Qt::Key_7, QStringLiteral("7"));
}

double TimeOfWalk() {
  const std::u16string_view text = platform::EditorText(morva::kIdEditor);
  const double before = CpuMilliseconds();
  if (std::ranges::count(text, u'(') == 0) std::abort();  // its markers
  return CpuMilliseconds() - before;
}

double TimeOfCopy() {
  const std::u16string_view text = platform::EditorText(morva::kIdEditor);
  const double before = CpuMilliseconds();
  const std::u16string copy(text);
  if (copy.size() != text.size()) std::abort();
  return CpuMilliseconds() - before;
}

struct Subject {
  const char* file;
  int lines;
  targets::Goal pause;
  targets::Goal save;
  const char* marks;  // the pause that writes markers
};

QString FileOf(const Subject& subject) {
  std::string bytes = programs::Lines(subject.lines);
  if (bytes.size() > morva::kMaxReadBytes) std::abort();
  QFile file(bench::folder->filePath(QString::fromLatin1(subject.file)));
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), qint64(bytes.size())) < 0) {
    std::abort();
  }
  return file.fileName();
}

void Measure(const Subject& subject) {
  morva::OpenProgramFile(FileOf(subject).toStdU16String());
  WatchFor(kSettleMs);
  for (int round = 0; round < kRounds; ++round) {
    TypeInLine(subject.lines / (round + 2));
    const Held pause = Watch(Refreshed, kLongestSaveMs);
    const double walk = TimeOfWalk();
    const Held save = Watch(AllSaved, kLongestSaveMs);
    const double copy = TimeOfCopy();
    std::printf("%s: pause %.1f (%.1f in all, walk %.1f), save %.1f (%.1f in all, copy %.1f)\n",
                subject.file, pause.longest, pause.all, walk, save.longest, save.all, copy);
    targets::Note(subject.pause, pause.longest, walk);
    targets::Note(subject.save, save.longest, copy);
    const int blocks = morva::features.count;
    TypeBehindBlocks();
    const Held marks = Watch(Refreshed, kLongestSaveMs);
    if (morva::features.count != blocks + 1) std::abort();
    std::printf("%s: pause with markers %.1f (%.1f in all)\n", subject.file, marks.longest,
                marks.all);
    targets::Note({subject.marks, "ms", 0, 0, 0, kWalk}, marks.longest, TimeOfWalk());
    Watch(AllSaved, kLongestSaveMs);
  }
  morva::CloseProgram();
}

}  // namespace

int main(int argc, char** argv) {
  if (!bench::MakeHome()) return 1;
  platform::BeginProcess(argc, argv);
  bench::StartWorkbench();
  if (!morva::app.dataDirReady) return 1;
  const Subject subjects[] = {
      {"small.NC",
       100000,
       {"Pause, 100,000 lines, longest stretch", "ms", 0, 15, 0, kWalk},
       {"Autosave, 100,000 lines, longest stretch", "ms", 0, 20, 0, kCopy},
       "Pause with markers, 100,000 lines, longest stretch"},
      {"million.NC",
       1000000,
       {"Pause, 1,000,000 lines, longest stretch", "ms", 0, 30, 0, kWalk},
       {"Autosave, 1,000,000 lines, longest stretch", "ms", 0, 50, 0, kCopy},
       "Pause with markers, 1,000,000 lines, longest stretch"},
      {"largest.NC",
       1200000,
       {"Pause, 32 MiB, longest stretch", "ms", 0, 0, 0, kWalk},
       {"Autosave, 32 MiB, longest stretch", "ms", 0, 50, 0, kCopy},
       "Pause with markers, 32 MiB, longest stretch"},
  };
  for (const Subject& subject : subjects) Measure(subject);
  platform::EndProcess();
  bench::folder.reset();
  return 0;
}
