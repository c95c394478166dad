// One line of 1 MiB on the real window: opened, walked through, typed into, found in, and as
// command words.
//
// Processor time, because other programs share the machine. Opening counts until nothing more is
// to be done, with tagger, path and list; a caret move counts until it is painted.
#include <benchmark/benchmark.h>

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdlib>
#include <fstream>
#include <string>

#include "../cpu_time.h"
#include "../targets.h"
#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/router.h"
#include "bench_files.h"
#include "bench_window.h"
#include "documents/program_tabs.h"
#include "platform/editor.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"
#include "shell/start_up.h"

namespace {

constexpr std::size_t kUnits = 1 << 20;
constexpr int kQuiet = 400;      // milliseconds without work in which it counts as idle
constexpr double kNothing = 20;  // milliseconds of processor time that timers take meanwhile

// Words of code in one line, or one word that never ends.
std::string LongLine(bool blanks) {
  std::string line;
  while (line.size() < kUnits) line += blanks ? "G01 X12.3456 Y-1.5 " : "X1";
  line.resize(kUnits);
  return line;
}

// Sleeps between what comes.
void Run(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

// Processor time of `work` and of all that follows it.
template <typename Work>
double UntilIdle(const Work& work) {
  const double before = CpuMilliseconds();
  work();
  double last = before;
  double now = before;
  do {
    last = now;
    Run(kQuiet);
    now = CpuMilliseconds();
  } while (now - last > kNothing);
  return now - before;
}

template <typename Work>
double UntilPainted(const Work& work) {
  const double before = CpuMilliseconds();
  work();
  for (int i = 0; i < 3; ++i) {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
  }
  return CpuMilliseconds() - before;
}

void Press(int id, int key, const QString& text = QString(),
           Qt::KeyboardModifiers held = Qt::NoModifier) {
  QKeyEvent event(QEvent::KeyPress, key, held, text);
  QCoreApplication::sendEvent(platform::WidgetOf(id), &event);
}

double Open(bool blanks) {
  if (bench::StartWorkbench()) {
    Run(1000);
    morva::app.dataDirReady = false;  // no autosave in between
  }
  bench::nextFile = bench::folder->filePath(QStringLiteral("line.NC"));
  std::ofstream(bench::nextFile.toStdString(), std::ios::binary)
      << "%\r\nO1\r\n"
      << LongLine(blanks) << "\r\nM30\r\n%\r\n";
  return UntilIdle([] { morva::OpenProgram(); });
}

// Without keeping what was typed.
void Close() {
  QTimer::singleShot(100, [] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box) box->button(QMessageBox::No)->click();
  });
  morva::CloseProgram();
  Run(150);
}

// At the front, in the middle and at the end of the line, one to the right and back.
double Walk(int id, int line) {
  double most = 0;
  const int from = platform::EditorLineStart(id, line);
  const int units = platform::EditorLineLength(id, line);
  for (const int part : {1, 5, 9}) {
    const int at = from + units / 10 * part;
    platform::SetEditorSelection(id, {at, at});
    Run(50);
    for (const int key : {Qt::Key_Right, Qt::Key_Left, Qt::Key_Right, Qt::Key_End, Qt::Key_Home,
                          Qt::Key_Down, Qt::Key_Up}) {
      const double spent = UntilPainted([=] { Press(id, key); });
      most = std::max(most, spent);
    }
  }
  return most;
}

int LongestLine(int id) {
  int longest = 0;
  for (int i = 0; i < platform::EditorLineCount(id); ++i) {
    if (platform::EditorLineLength(id, i) > platform::EditorLineLength(id, longest)) longest = i;
  }
  return longest;
}

void OpenLongLine(benchmark::State& state) {
  for (auto _ : state) {
    const double spent = Open(state.range(0) != 0);
    state.SetIterationTime(spent * 1e-3);
    targets::Note({"Line of 1 MiB, opened until idle", "ms", 0, 1000}, spent);
    Close();
  }
}

void MoveCaret(benchmark::State& state) {
  Open(state.range(0) != 0);
  for (auto _ : state) {
    const double spent = Walk(morva::kIdEditor, LongestLine(morva::kIdEditor));
    state.SetIterationTime(spent * 1e-3);
    targets::Note({"Line of 1 MiB, longest caret move", "ms", 0, 50}, spent);
  }
  Close();
}

void TypeAndUndo(benchmark::State& state) {
  Open(state.range(0) != 0);
  const int at = platform::EditorLineStart(morva::kIdEditor, LongestLine(morva::kIdEditor)) +
                 static_cast<int>(kUnits / 2);
  platform::SetEditorSelection(morva::kIdEditor, {at, at});
  Run(100);
  for (auto _ : state) {
    const double spent = UntilIdle([] { Press(morva::kIdEditor, Qt::Key_7, QStringLiteral("7")); });
    state.SetIterationTime(spent * 1e-3);
    state.counters["painted_ms"] =
        UntilPainted([] { Press(morva::kIdEditor, Qt::Key_7, QStringLiteral("7")); });
    targets::Note({"Line of 1 MiB, typed into until idle", "ms", 0, 1000}, spent);
  }
  Close();
}

void ShowWords(benchmark::State& state) {
  Open(state.range(0) != 0);
  for (auto _ : state) {
    const double shown = UntilIdle([] { morva::RouteCommand(morva::kIdCommandWords, 0); });
    state.SetIterationTime(shown * 1e-3);
    const int id = morva::kIdWordsEditor;
    state.counters["caret_ms"] = Walk(id, LongestLine(id));
    morva::RouteCommand(morva::kIdCommandWords, 0);
    Run(100);
  }
  Close();
}

BENCHMARK(OpenLongLine)
    ->Arg(1)
    ->Arg(0)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK(MoveCaret)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);
BENCHMARK(TypeAndUndo)
    ->Arg(1)
    ->Arg(0)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK(ShowWords)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv); }
