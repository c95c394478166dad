// A key in the words view and in the plain view of a program of 1,000 to 1,000,000 lines, beside
// a key in a bare plain-text edit that holds the same text.
//
// A key is what the window is busy with: the event, the messages that it posts, and the painting.
// Times are the processor's. The three take turns, so that they meet the same machine. Between two
// keys nothing runs that waits for a pause. The counter "ratio" is the share of one line, beside
// that of the shortest program: a cost in proportion to the text would keep it at 1.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <algorithm>
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
#include "codetools/words_view.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"

namespace {

constexpr int kKeys = 40;
constexpr double kMostKey = 5;  // milliseconds

struct Size {
  int lines;
  const char* inWords;
  const char* inCode;
};
constexpr Size kSizes[] = {
    {1000, "Key in the words of 1,000 lines", "Key in the code of 1,000 lines"},
    {10000, "Key in the words of 10,000 lines", "Key in the code of 10,000 lines"},
    {100000, "Key in the words of 100,000 lines", "Key in the code of 100,000 lines"},
    {1000000, "Key in the words of 1,000,000 lines", "Key in the code of 1,000,000 lines"}};

double Press(QPlainTextEdit* edit) {
  const double before = CpuMilliseconds();
  QKeyEvent key(QEvent::KeyPress, Qt::Key_7, Qt::NoModifier, QStringLiteral("7"));
  QCoreApplication::sendEvent(edit, &key);
  QCoreApplication::sendPostedEvents();
  edit->viewport()->repaint();
  return CpuMilliseconds() - before;
}

QPlainTextEdit* Edit(int id) { return static_cast<QPlainTextEdit*>(platform::WidgetOf(id)); }

void PutCaret(int id, int line) {
  const int at = platform::EditorLineStart(id, line) + platform::EditorLineLength(id, line);
  platform::SetEditorSelection(id, {at, at});
  platform::ScrollCaretIntoView(id);
  platform::SetFocusTo(id);
  QCoreApplication::processEvents();
}

// The median of the keys at the front, in the middle and at the end: the dearest of the three.
double KeyIn(int id, int lines) {
  double dearest = 0;
  for (const int line : {10, lines / 2, lines - 10}) {
    PutCaret(id, line);
    std::vector<double> times;
    for (int i = 0; i < kKeys; ++i) times.push_back(Press(Edit(id)));
    dearest = std::max(dearest, targets::Median(times));
    // A refresh behind the last keys may have put markers in front of the line.
    const int stands = platform::EditorLineOf(id, platform::EditorSelection(id).to);
    const std::u16string typed = platform::EditorLineText(id, stands);
    if (typed.find(u"7777777777") == std::u16string::npos) std::abort();
  }
  return dearest;
}

double BareKey(QPlainTextEdit& edit) {
  double dearest = 0;
  const int lines = edit.document()->blockCount();
  for (const int line : {10, lines / 2, lines - 10}) {
    QTextCursor cursor(edit.document()->findBlockByNumber(line));
    cursor.movePosition(QTextCursor::EndOfBlock);
    edit.setTextCursor(cursor);
    QCoreApplication::processEvents();
    std::vector<double> times;
    for (int i = 0; i < kKeys; ++i) times.push_back(Press(&edit));
    dearest = std::max(dearest, targets::Median(times));
  }
  return dearest;
}

void Keys(benchmark::State& state) {
  const Size& size = kSizes[state.range(0)];
  const int lines = size.lines;
  if (bench::StartWorkbench()) morva::app.dataDirReady = false;  // no autosave in between
  morva::SetWordsView(false);
  const std::string program = programs::Lines(lines);
  platform::SetEditorText(morva::kIdEditor, std::u16string(program.begin(), program.end()));
  QCoreApplication::processEvents();
  QPlainTextEdit bare;
  bare.setLineWrapMode(QPlainTextEdit::NoWrap);
  bare.resize(700, 660);
  bare.show();
  double words = 0;
  double plain = 0;
  double opened = 0;
  double left = 0;
  double bareKey = 0;
  for (auto step : state) {
    plain = KeyIn(morva::kIdEditor, lines);
    double before = CpuMilliseconds();
    morva::SetWordsView(true);
    opened = CpuMilliseconds() - before;
    words = KeyIn(morva::kIdWordsEditor, lines);
    const std::u16string_view shown = platform::EditorText(morva::kIdWordsEditor);
    bare.setPlainText(QString::fromUtf16(shown.data(), static_cast<qsizetype>(shown.size())));
    before = CpuMilliseconds();
    morva::SetWordsView(false);
    left = CpuMilliseconds() - before;
    bareKey = BareKey(bare);
    state.SetIterationTime(words * 1e-3);
  }
  if (platform::EditorText(morva::kIdEditor).find(u"7777777777") == std::u16string_view::npos) {
    std::abort();
  }
  static const double shortest = words / lines;
  state.counters["lines"] = lines;
  state.counters["ratio"] = words / lines / shortest;
  state.counters["plain_ms"] = plain;
  state.counters["bare_ms"] = bareKey;
  state.counters["open_ms"] = opened;
  state.counters["leave_ms"] = left;
  targets::Note({size.inWords, "ms", 0, kMostKey, 0, "bare edit"}, words, bareKey);
  targets::Note({size.inCode, "ms", 0, kMostKey, 0, "bare edit"}, plain, bareKey);
}

BENCHMARK(Keys)->DenseRange(0, 3)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv); }
