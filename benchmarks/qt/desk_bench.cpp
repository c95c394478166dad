// The whole workbench on real widgets: opening, typing, the pause after it, frames, playback.
//
// Times are the processor's and not the clock's, so that a busy machine changes them little;
// the bare peers run in turn with what they bound. The file dialog is answered here, below.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextCursor>
#include <QWindow>
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
#include "app/commands.h"
#include "app/hover.h"
#include "bench_files.h"
#include "bench_window.h"
#include "documents/feature_blocks.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "documents/text_refresh.h"
#include "platform/editor.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"
#include "shell/keys.h"
#include "shell/start_up.h"
#include "simulator/motion_path.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/view.h"
#include "simulator/view_switches.h"

namespace {

constexpr int kPresses = 100;

struct Spent {
  double cpu = 0;
  double clock = 0;
};

template <typename Work>
Spent Measure(const Work& work) {
  QElapsedTimer clock;
  clock.start();
  const double before = CpuMilliseconds();
  work();
  return {CpuMilliseconds() - before, static_cast<double>(clock.nsecsElapsed()) * 1e-6};
}

void Settle() {
  QCoreApplication::sendPostedEvents();
  QCoreApplication::processEvents();
}

// What the display server does not show yet is not painted either.
void AwaitShown(const QWidget& widget) {
  QElapsedTimer clock;
  clock.start();
  while (!widget.windowHandle()->isExposed()) {
    if (clock.elapsed() > 60000) std::abort();
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  Settle();
}

// Counts what a widget really paints: a frame that never came must not look fast.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget* widget) : widget_(widget) { widget_->installEventFilter(this); }
  ~PaintCounter() override { widget_->removeEventFilter(this); }
  // Waits, at no cost to the processor, until the widget has been painted once more.
  void Await() {
    const int before = paints_;
    QElapsedTimer clock;
    clock.start();
    while (paints_ == before) {
      if (clock.elapsed() > 60000) std::abort();
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::sendPostedEvents();
  }
  // Paints at once, before any timer comes in between.
  void Now() {
    const int before = paints_;
    widget_->repaint();
    if (paints_ == before) std::abort();
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints_;
    return false;
  }

 private:
  QWidget* widget_;
  int paints_ = 0;
};

QWidget* EditorSurface() {
  return static_cast<QPlainTextEdit*>(platform::WidgetOf(morva::kIdEditor))->viewport();
}

QString FileOf(const char* name, const std::string& bytes) {
  const QString path = bench::folder->filePath(QString::fromLatin1(name));
  if (QFile::exists(path)) return path;
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), qint64(bytes.size())) < 0) {
    std::abort();
  }
  return path;
}

void Stand() {
  if (!bench::StartWorkbench()) return;
  AwaitShown(*platform::WidgetOf(platform::kMainWindow));
  morva::app.dataDirReady = false;  // no autosave in between
}

// The program that is shown, with what was typed into it; else closing would ask, and wait.
void CloseWithoutSaving() {
  morva::app.editorDirty = false;
  if (morva::ProgramTab* tab = morva::ActiveTab()) tab->save.savedChanges = tab->save.changes;
  morva::CloseProgram();
}

// Opens the file as the key does, once per file; the tagger and the list have run after it.
void OpenOnly(const QString& path) {
  Stand();
  if (QString::fromUtf16(morva::app.activePath) == path) return;
  while (morva::app.activePath[0]) CloseWithoutSaving();
  bench::nextFile = path;
  morva::OpenProgram();
  morva::RunTextRefresh();
  Settle();
}

void CloseAll() {
  while (morva::app.activePath[0]) CloseWithoutSaving();
  Settle();
}

// A million lines from the disk to the screen, beside a bare edit that does the least.
Spent OpenBare(const QString& path) {
  auto edit = std::make_unique<QPlainTextEdit>();
  edit->setLineWrapMode(QPlainTextEdit::NoWrap);
  edit->resize(700, 660);
  edit->show();
  AwaitShown(*edit);
  PaintCounter paints(edit->viewport());
  return Measure([&] {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) std::abort();
    edit->setPlainText(QString::fromUtf8(file.readAll()));
    paints.Now();
  });
}

// The least that a refresh does: it reads every unit of the text, and writes one that has its
// markers.
Spent CopyText() {
  const std::u16string_view text = platform::EditorText(morva::kIdEditor);
  return Measure([text] {
    std::u16string copy;
    copy.reserve(text.size());
    for (const char16_t c : text) copy += c;
    benchmark::DoNotOptimize(copy.data());
  });
}

void OpenMillionLines(benchmark::State& state) {
  Stand();
  const QString path = FileOf("million.NC", programs::Lines(1000000));
  std::vector<double> ours;
  std::vector<double> bare;
  std::vector<double> ratios;
  std::vector<double> refresh;
  std::vector<double> copies;
  for (auto _ : state) {
    CloseAll();
    bench::nextFile = path;
    PaintCounter paints(EditorSurface());
    const Spent opened = Measure([&paints] {
      morva::OpenProgram();
      paints.Now();
    });
    refresh.push_back(Measure([] {
                        morva::RunTextRefresh();
                        Settle();
                      }).cpu);
    copies.push_back(CopyText().cpu);
    CloseAll();
    const Spent peer = OpenBare(path);
    ours.push_back(opened.cpu);
    bare.push_back(peer.cpu);
    ratios.push_back(opened.cpu / peer.cpu);
    state.SetIterationTime(opened.cpu * 1e-3);
    state.counters["clock_ms"] = opened.clock;
    state.counters["bare_clock_ms"] = peer.clock;
  }
  state.counters["bare_ms"] = targets::Median(bare);
  state.counters["ratio"] = targets::Median(ratios);
  state.counters["first_refresh_ms"] = targets::Median(refresh);
  for (std::size_t i = 0; i < ours.size(); ++i) {
    targets::Note({"Open 1,000,000 lines, drawn", "ms", 0, 0, 1.15, "bare edit"}, ours[i], bare[i]);
    targets::Note({"First refresh behind that open", "ms", 0, 0, 0, "its text copied"}, refresh[i],
                  copies[i]);
  }
}

void SwitchTabsOfMillionLines(benchmark::State& state) {
  const QString path = FileOf("million.NC", programs::Lines(1000000));
  OpenOnly(path);
  for (auto _ : state) {
    const Spent there = Measure([] {
      morva::SwitchTab(0);
      Settle();
    });
    const Spent back = Measure([] {
      morva::SwitchTab(1);
      Settle();
    });
    state.SetIterationTime((there.cpu + back.cpu) * 1e-3);
    state.counters["leave_ms"] = there.cpu;
    state.counters["return_ms"] = back.cpu;
  }
}

QString ProgramOf(int lines) {
  return lines == 1000000 ? FileOf("million.NC", programs::Lines(lines))
                          : FileOf("long.NC", programs::Lines(lines));
}

void PressIn(QWidget* widget, int key, const QString& text) {
  QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
  QCoreApplication::sendEvent(widget, &event);
}

void PressInEditor(int key, const QString& text) {
  PressIn(platform::WidgetOf(morva::kIdEditor), key, text);
}

// A bare edit of the same size, in the same font, with the program's text; one at a time. It is
// never taken away, because the application ends before this program's statics do.
QPlainTextEdit& BareEditWith(int lines) {
  static QPlainTextEdit* edit = nullptr;
  static int shown = 0;
  const QWidget* const ours = platform::WidgetOf(morva::kIdEditor);
  if (!edit) {
    edit = new QPlainTextEdit;
    edit->setLineWrapMode(QPlainTextEdit::NoWrap);
    edit->setFont(ours->font());
    edit->resize(ours->size());
    edit->show();
    AwaitShown(*edit);
  }
  if (shown != lines) {
    shown = lines;
    edit->setPlainText(QString::fromStdString(programs::Lines(lines)));
    Settle();
  }
  return *edit;
}

// Presses beside those of TypeToRepaint, at the same place.
std::vector<double> TypeBare(int lines, int presses, bool shorten) {
  QPlainTextEdit& edit = BareEditWith(lines);
  QTextCursor caret(edit.document()->findBlockByNumber(lines / 2));
  if (shorten) {
    caret.insertText(QString(200, QLatin1Char('8')));
  }
  edit.setTextCursor(caret);
  edit.centerCursor();
  Settle();
  std::vector<double> times;
  PaintCounter paints(edit.viewport());
  for (int i = 0; i < presses; ++i) {
    times.push_back(Measure([&] {
                      if (shorten) {
                        PressIn(&edit, Qt::Key_Backspace, QStringLiteral("\b"));
                      } else {
                        PressIn(&edit, Qt::Key_7, QStringLiteral("7"));
                      }
                      paints.Await();
                    }).cpu);
  }
  return times;
}

// One key to the end of all painting, with everything that follows a change: digits in the
// middle of the text, or backspaces that shorten what is by far its longest line.
void TypeToRepaint(benchmark::State& state, bool shorten) {
  const int lines = static_cast<int>(state.range(0));
  OpenOnly(ProgramOf(lines));
  const int at = platform::EditorLineStart(morva::kIdEditor, lines / 2);
  platform::SetEditorSelection(morva::kIdEditor, {at, at});
  if (shorten) platform::ReplaceSelection(morva::kIdEditor, std::u16string(200, u'8'), true);
  Settle();
  std::vector<double> times;
  PaintCounter paints(EditorSurface());
  for (auto _ : state) {
    const Spent spent = Measure([&paints, shorten] {
      if (shorten) {
        PressInEditor(Qt::Key_Backspace, QStringLiteral("\b"));
      } else {
        PressInEditor(Qt::Key_7, QStringLiteral("7"));
      }
      paints.Await();
    });
    times.push_back(spent.cpu);
    state.SetIterationTime(spent.cpu * 1e-3);
  }
  const bool most = lines == 1000000;
  const char* typed = most ? "Typed character, 1,000,000 lines" : "Typed character, 100,000 lines";
  const char* taken = most ? "Backspace, 1,000,000 lines" : "Backspace, 100,000 lines";
  const std::vector<double> bare = TypeBare(lines, kPresses, shorten);
  targets::Note({shorten ? taken : typed, "ms", 0, 5, 0, "bare edit"}, targets::Median(times),
                targets::Median(bare));
}

void TypeCharacter(benchmark::State& state) { TypeToRepaint(state, false); }
void TypeBackspace(benchmark::State& state) { TypeToRepaint(state, true); }

// What runs 150 ms after the last key, and the scan in it.
void PauseAfterTyping(benchmark::State& state) {
  constexpr int kLines = 100000;
  OpenOnly(ProgramOf(kLines));
  int line = kLines / 2;
  std::vector<double> pauses;
  std::vector<double> scans;
  for (auto _ : state) {
    line = (line + 7919) % kLines;
    const int at = platform::EditorLineStart(morva::kIdEditor, line);
    platform::SetEditorSelection(morva::kIdEditor, {at, at});
    PressInEditor(Qt::Key_7, QStringLiteral("7"));
    Settle();
    const Spent pause = Measure([] {
      morva::RunTextRefresh();
      Settle();
    });
    scans.push_back(
        Measure([] { morva::ScanProgramText(platform::EditorText(morva::kIdEditor)); }).cpu);
    pauses.push_back(pause.cpu);
    state.SetIterationTime(pause.cpu * 1e-3);
  }
  state.counters["scan_ms"] = targets::Median(scans);
  targets::Note({"Pause after typing, 100,000 lines", "ms", 0, 15}, targets::Median(pauses));
  targets::Note({"  of which one scan", "ms", 0, 8}, targets::Median(scans));
}

// Playing at 64x: the tick, the source line that follows it, both paintings.
void PlaybackTick(benchmark::State& state) {
  OpenOnly(ProgramOf(100000));
  morva::SetPlaySpeed(morva::kSpeedCount - 1);
  morva::playback.playing = true;
  morva::playback.playHead = 1;
  std::vector<double> times;
  PaintCounter paints(platform::WidgetOf(morva::kViewToolpath));
  for (auto _ : state) {
    if (!morva::playback.playing) {
      morva::playback.playHead = 1;
      morva::playback.playing = true;
    }
    const Spent spent = Measure([&paints] {
      morva::PlayTick();
      paints.Await();
    });
    times.push_back(spent.cpu);
    state.SetIterationTime(spent.cpu * 1e-3);
  }
  morva::HaltPlayback(morva::PathOwner::Program);
  targets::Note({"Playback tick at 64x, 100,000 lines", "ms", 0, 16}, targets::Median(times));
}

// A frame of the view while it is turned: every point is projected and drawn anew.
void ViewFrame(benchmark::State& state, bool crossing) {
  constexpr int kMore = 40000;  // more lines than points, so that the table is full
  OpenOnly(crossing ? FileOf("strokes.NC", programs::Strokes(kMore))
                    : FileOf("pockets.NC", programs::Pockets(kMore)));
  platform::SetPlace(morva::kViewToolpath, {0, 0, 1200, 800});
  platform::BringToTop(morva::kViewToolpath);
  morva::switches.showCutSurface = false;
  crossing ? morva::SetViewTop() : morva::SetViewIsometric();
  if (crossing) morva::view.zoom = 20;
  Settle();
  std::vector<double> times;
  PaintCounter paints(platform::WidgetOf(morva::kViewToolpath));
  for (auto _ : state) {
    (crossing ? morva::view.panY : morva::view.yawDegrees) += 0.55;
    const Spent spent = Measure([&paints] {
      platform::Repaint(morva::kViewToolpath);
      paints.Await();
    });
    times.push_back(spent.cpu);
    state.SetIterationTime(spent.cpu * 1e-3);
  }
  std::sort(times.begin(), times.end());
  const double median = times[times.size() / 2];
  const double late = times[times.size() * 99 / 100];
  state.counters["points"] = morva::path.count;
  state.counters["median_ms"] = median;
  state.counters["p99_ms"] = late;
  if (!crossing) targets::Note({"Frame of 32,768 points, median", "ms", 0, 4}, median);
  targets::Note({crossing ? "Frame, all segments crossing, 99th percentile"
                          : "Frame of 32,768 points, 99th percentile",
                 "ms", 0, 16.6},
                late);
}

void FrameOfPockets(benchmark::State& state) { ViewFrame(state, false); }
void FrameOfCrossings(benchmark::State& state) { ViewFrame(state, true); }

// What goes on while nobody does anything: the keys' states and the hover hint.
void IdleTick(benchmark::State& state) {
  OpenOnly(ProgramOf(100000));
  for (auto _ : state) {
    morva::HoverTick();
    morva::RefreshKeyStates();
  }
}

constexpr auto kMs = benchmark::kMillisecond;
BENCHMARK(OpenMillionLines)->Unit(kMs)->UseManualTime()->Iterations(1);
BENCHMARK(SwitchTabsOfMillionLines)->Unit(kMs)->UseManualTime()->Iterations(1);
BENCHMARK(TypeCharacter)->Arg(1000000)->Unit(kMs)->UseManualTime()->Iterations(kPresses);
BENCHMARK(TypeBackspace)->Arg(1000000)->Unit(kMs)->UseManualTime()->Iterations(kPresses);
BENCHMARK(TypeCharacter)->Arg(100000)->Unit(kMs)->UseManualTime()->Iterations(kPresses);
BENCHMARK(TypeBackspace)->Arg(100000)->Unit(kMs)->UseManualTime()->Iterations(kPresses);
BENCHMARK(PauseAfterTyping)->Unit(kMs)->UseManualTime()->Iterations(50);
BENCHMARK(PlaybackTick)->Unit(kMs)->UseManualTime()->Iterations(300);
BENCHMARK(IdleTick)->Unit(benchmark::kMicrosecond);
BENCHMARK(FrameOfPockets)->Unit(kMs)->UseManualTime()->Iterations(300);
BENCHMARK(FrameOfCrossings)->Unit(kMs)->UseManualTime()->Iterations(300);

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv); }
