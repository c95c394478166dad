// The editors of the whole workbench on real widgets: colours after a pause, and a typed
// character in the command words view.
//
// Times are the processor's, so that a busy machine changes them little, and hold everything up
// to the painted line.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "../cpu_time.h"
#include "../programs.h"
#include "../targets.h"
#include "app/app_state.h"
#include "app/command_ids.h"
#include "bench_window.h"
#include "codetools/colours.h"
#include "codetools/words_view.h"
#include "documents/text_refresh.h"
#include "platform/editor.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"
#include "shell/start_up.h"

namespace {

void Settle() {
  QCoreApplication::sendPostedEvents();
  QCoreApplication::processEvents();
}

void Stand(const std::string& program) {
  if (bench::StartWorkbench()) morva::app.dataDirReady = false;  // no autosave in between
  morva::SetWordsView(false);
  platform::SetEditorText(morva::kIdEditor, std::u16string(program.begin(), program.end()));
  morva::RunTextRefresh();
  Settle();
}

QPlainTextEdit* Edit(int id) { return static_cast<QPlainTextEdit*>(platform::WidgetOf(id)); }

// A key and the painting that it causes; no timer runs in between.
double Press(QPlainTextEdit* edit, int code, const QString& text) {
  const double before = CpuMilliseconds();
  QKeyEvent key(QEvent::KeyPress, code, Qt::NoModifier, text);
  QCoreApplication::sendEvent(edit, &key);
  edit->viewport()->repaint();
  return CpuMilliseconds() - before;
}

// As after a typed character: one line has changed, and all are gone through.
void ColoursAfterAPause(benchmark::State& state) {
  std::string program = programs::Lines(10000);
  program.resize(249000);
  Stand(program);
  QPlainTextEdit* edit = Edit(morva::kIdEditor);
  std::vector<double> times;
  for (auto step : state) {
    Press(edit, Qt::Key_7, QStringLiteral("7"));
    const double before = CpuMilliseconds();
    morva::ColourCodeEditor();
    edit->viewport()->repaint();
    const double spent = CpuMilliseconds() - before;
    times.push_back(spent);
    state.SetIterationTime(spent * 1e-3);
  }
  platform::ColourRun runs[8];
  if (platform::LineRuns(morva::kIdEditor, 9000, runs, 8) != 4) std::abort();
  state.counters["characters"] = static_cast<double>(platform::EditorText(morva::kIdEditor).size());
  targets::Note({"Colours of 250,000 characters after a pause", "ms", 0, 40},
                targets::Median(times));
}

void FirstColours(benchmark::State& state) {
  std::string program = programs::Lines(10000);
  program.resize(249000);
  Stand(program);
  const std::u16string text(program.begin(), program.end());
  for (auto step : state) {
    platform::SetEditorText(morva::kIdEditor, text);
    Settle();
    const double before = CpuMilliseconds();
    morva::ColourCodeEditor();
    Edit(morva::kIdEditor)->viewport()->repaint();
    state.SetIterationTime((CpuMilliseconds() - before) * 1e-3);
  }
}

void TypeInWords(benchmark::State& state) {
  Stand(programs::Lines(10000));
  morva::SetWordsView(true);
  Settle();
  QPlainTextEdit* edit = Edit(morva::kIdWordsEditor);
  const int line = static_cast<int>(state.range(0));
  const int at = platform::EditorLineStart(morva::kIdWordsEditor, line) +
                 platform::EditorLineLength(morva::kIdWordsEditor, line);
  platform::SetEditorSelection(morva::kIdWordsEditor, {at, at});
  platform::ScrollCaretIntoView(morva::kIdWordsEditor);
  Settle();
  std::vector<double> times;
  for (auto step : state) {
    const double spent = Press(edit, Qt::Key_7, QStringLiteral("7"));
    times.push_back(spent);
    state.SetIterationTime(spent * 1e-3);
  }
  const std::u16string_view code = platform::EditorText(morva::kIdEditor);
  if (code.find(u"7777777777") == std::u16string_view::npos) std::abort();
  morva::SetWordsView(false);
  targets::Note({"Character in words of 10,000 lines", "ms", 0, 16}, targets::Median(times));
}

constexpr auto kMs = benchmark::kMillisecond;
BENCHMARK(ColoursAfterAPause)->Unit(kMs)->UseManualTime()->Iterations(30);
BENCHMARK(FirstColours)->Unit(kMs)->UseManualTime()->Iterations(10);
BENCHMARK(TypeInWords)->Arg(10)->Arg(9990)->Unit(kMs)->UseManualTime()->Iterations(50);

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv); }
