// How long a typed character takes to the screen, and a whole program to the editor.
//
// Typing: one key press to the end of the painting that it causes, at 100,000 and 1,000,000
// lines, at the end, in the middle and at the start; bounded at 5 ms. Reading the text back
// after it is measured beside it. Setting a program of 27 MB is measured against a bare
// plain-text edit of the toolkit in the same run; bounded at 1.15 times.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <string>

#include "bench_window.h"
#include "platform/editor.h"
#include "platform/events.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"

namespace {

constexpr int kId = 300;
platform::Events events;

std::u16string Program(int lines) {
  std::u16string text;
  text.reserve(static_cast<std::size_t>(lines) * 28);
  for (int i = 0; i < lines; ++i) text += u"N12345 G01 X12.3456 Y-1.5\r\n";
  return text;
}

// A shown window with the editor in it and `lines` lines in that.
QPlainTextEdit* Stand(int lines) {
  if (!platform::Exists(platform::kMainWindow)) {
    platform::ListenTo(&events);
    platform::MainWindowSpec window;
    window.place = {0, 0, 1200, 800};
    platform::MakeMainWindow(window);
    platform::EditorSpec spec;
    spec.id = kId;
    spec.text = 0xDCE0E6;
    spec.background = 0x03080E;
    platform::MakeEditor(spec);
    platform::SetPlace(kId, {300, 130, 1000, 790});
    platform::ShowMainWindow();
    platform::SetFocusTo(kId);
  }
  auto* edit = static_cast<QPlainTextEdit*>(platform::WidgetOf(kId));
  if (edit->document()->blockCount() != lines + 1) platform::SetEditorText(kId, Program(lines));
  QCoreApplication::processEvents();
  return edit;
}

// Position by tenths of the text.
void Type(benchmark::State& state, bool read) {
  QPlainTextEdit* edit = Stand(static_cast<int>(state.range(0)));
  const int line = static_cast<int>(state.range(0) * state.range(1) / 10);
  const int at = platform::EditorLineStart(kId, line);
  platform::SetEditorSelection(kId, {at, at});
  platform::EditorText(kId);
  QCoreApplication::processEvents();
  for (auto _ : state) {
    QKeyEvent key(QEvent::KeyPress, Qt::Key_7, Qt::NoModifier, QStringLiteral("7"));
    QCoreApplication::sendEvent(edit, &key);
    if (read) {
      benchmark::DoNotOptimize(platform::EditorText(kId).data());
    } else {
      QCoreApplication::processEvents();
    }
  }
}

void TypedCharacterToRepaint(benchmark::State& state) { Type(state, false); }
void TypedCharacterAndTextRead(benchmark::State& state) { Type(state, true); }

void SetWholeProgram(benchmark::State& state) {
  Stand(10);
  const std::u16string text = Program(1000000);
  for (auto _ : state) platform::SetEditorText(kId, text);
}

void BarePlainTextEdit(benchmark::State& state) {
  QPlainTextEdit edit;
  edit.setLineWrapMode(QPlainTextEdit::NoWrap);
  edit.resize(700, 660);
  edit.show();
  QCoreApplication::processEvents();
  const QString text = QString::fromStdU16String(Program(1000000));
  for (auto _ : state) edit.setPlainText(text);
}

// The whole pass over the longest coloured program, 250,000 characters, and the painting.
void ColourEveryLine(benchmark::State& state) {
  constexpr int kLines = 8900;
  Stand(kLines);
  const platform::Colour words[2] = {0x2CD6DF, 0x2CD6E0};
  int turn = 0;
  for (auto _ : state) {
    const platform::Colour colour = words[++turn % 2];
    const platform::ColourRun runs[] = {{0, 6, 0x809AB2, false},
                                        {7, 3, colour, true},
                                        {11, 8, 0xFFA448, true},
                                        {20, 5, colour, true}};
    platform::HoldEditorRedraw(kId, true);
    for (int line = 0; line < kLines; ++line) platform::SetLineRuns(kId, line, runs, 4);
    platform::HoldEditorRedraw(kId, false);
    QCoreApplication::processEvents();
  }
}

BENCHMARK(ColourEveryLine)->Unit(benchmark::kMillisecond);
BENCHMARK(BarePlainTextEdit)->Unit(benchmark::kMillisecond);
BENCHMARK(SetWholeProgram)->Unit(benchmark::kMillisecond);
BENCHMARK(TypedCharacterToRepaint)
    ->ArgsProduct({{100000, 1000000}, {0, 5, 10}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(TypedCharacterAndTextRead)
    ->ArgsProduct({{100000, 1000000}, {0, 5, 10}})
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv); }
