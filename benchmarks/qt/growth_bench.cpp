// How work on a program grows with its lines: 1,000 to 1,000,000 of them, in ten blocks, in the
// workbench on real widgets.
//
// A figure is the time of a line, and beside it stands that of a program of 1,000 lines in the same
// run: a ratio of 1 is growth in proportion. Programs above 250,000 characters have no colours;
// what is told of them is the way to find that out. Times are the processor's, the median of
// rounds. Beside the undo of many lines stands that of the same edit in a bare editor control: the
// toolkit takes each line out and puts each back.
#include <QApplication>
#include <QPlainTextEdit>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "../cpu_time.h"
#include "../programs.h"
#include "../targets.h"
#include "app/app_state.h"
#include "app/command_ids.h"
#include "bench_window.h"
#include "codetools/colours.h"
#include "codetools/renumber.h"
#include "codetools/validator.h"
#include "documents/feature_blocks.h"
#include "platform/editor.h"
#include "platform/qt/qt_testing.h"

namespace {

constexpr int kSizes[] = {1000, 10000, 100000, 1000000};
constexpr int kBlocks = 10;
constexpr double kNanoseconds = 1e6;  // of a millisecond
constexpr double kMostOfBare = 1.2;

std::u16string Wide(const std::string& text) { return std::u16string(text.begin(), text.end()); }

// The lines as they are written, and in blocks with their markers.
std::string Blocks(int lines) {
  std::string text;
  for (int i = 1; i <= kBlocks; ++i) {
    const std::string number = std::to_string(i);
    text += "(MORVA TEXT " + number + ")\r\n(MORVA NAME User code)\r\n";
    text += programs::Lines(lines / kBlocks);
    text += "(MORVA END " + number + ")\r\n";
  }
  return text;
}

QPlainTextEdit* Edit() {
  return static_cast<QPlainTextEdit*>(platform::WidgetOf(morva::kIdEditor));
}

void Paint() {
  QCoreApplication::sendPostedEvents();
  Edit()->viewport()->repaint();
}

void Show(const std::u16string& text) {
  platform::SetEditorText(morva::kIdEditor, text);
  QCoreApplication::processEvents();
  Paint();
}

// A character behind the first line: all that is known of the text is old.
void Type() {
  const int at = platform::EditorLineLength(morva::kIdEditor, 0);
  platform::ReplaceRange(morva::kIdEditor, {at, at}, u"7");
  Paint();
}

struct Program {
  int lines = 0;
  std::u16string plain;
  std::u16string blocks;
  std::u16string renumbered;
};

double Scan(const Program& program) {
  const double before = CpuMilliseconds();
  morva::ScanProgramText(program.blocks);
  const double spent = CpuMilliseconds() - before;
  if (morva::features.count != kBlocks) std::abort();
  return spent;
}

double Tag(const Program& program) {
  const double before = CpuMilliseconds();
  const std::u16string tagged = morva::TaggedText(program.plain);
  const double spent = CpuMilliseconds() - before;
  if (tagged.size() <= program.plain.size()) std::abort();
  return spent;
}

double Preflight(const Program& program) {
  const double before = CpuMilliseconds();
  const std::u16string report = morva::PreflightReport(program.plain);
  const double spent = CpuMilliseconds() - before;
  if (report.empty()) std::abort();
  return spent;
}

double List(const Program&) {
  Type();
  const double before = CpuMilliseconds();
  morva::RefreshFeatureList();
  const double spent = CpuMilliseconds() - before;
  if (morva::features.count != kBlocks) std::abort();
  return spent;
}

double Colours(const Program&) {
  Type();
  const double before = CpuMilliseconds();
  morva::ColourCodeEditor();
  Paint();
  return CpuMilliseconds() - before;
}

// All lines come back in one step.
double Undo(const Program& program) {
  platform::SetEditorSelection(morva::kIdEditor, {0, platform::EditorLength(morva::kIdEditor)});
  platform::ReplaceSelection(morva::kIdEditor, program.renumbered, true);
  Paint();
  const double before = CpuMilliseconds();
  if (!platform::UndoEditor(morva::kIdEditor)) std::abort();
  Paint();
  return CpuMilliseconds() - before;
}

double BareUndo(const Program& program) {
  QPlainTextEdit bare;
  bare.setLineWrapMode(QPlainTextEdit::NoWrap);
  bare.resize(Edit()->size());
  bare.show();
  bare.setPlainText(QString::fromStdU16String(program.blocks));
  QCoreApplication::processEvents();
  bare.selectAll();
  bare.textCursor().insertText(QString::fromStdU16String(program.renumbered));
  bare.viewport()->repaint();
  const double before = CpuMilliseconds();
  bare.undo();
  bare.viewport()->repaint();
  return CpuMilliseconds() - before;
}

struct Work {
  const char* names[4];  // of each size
  double (*run)(const Program& program);
  double ofFewest = 0;  // the time of a line in nanoseconds
};

Work works[] = {
    {{"Scan, 1,000 lines", "Scan, 10,000 lines", "Scan, 100,000 lines", "Scan, 1,000,000 lines"},
     Scan},
    {{"Tag, 1,000 lines", "Tag, 10,000 lines", "Tag, 100,000 lines", "Tag, 1,000,000 lines"}, Tag},
    {{"Preflight grows, 1,000 lines", "Preflight grows, 10,000 lines",
      "Preflight grows, 100,000 lines", "Preflight grows, 1,000,000 lines"},
     Preflight},
    {{"Feature list, 1,000 lines", "Feature list, 10,000 lines", "Feature list, 100,000 lines",
      "Feature list, 1,000,000 lines"},
     List},
    {{"Colours, 1,000 lines", "Colours, 9,000 lines", "Colours, 100,000 lines: none",
      "Colours, 1,000,000 lines: none"},
     Colours},
    {{"Undo of all 1,000 lines", "Undo of all 10,000 lines", "Undo of all 100,000 lines",
      "Undo of all 1,000,000 lines"},
     Undo},
};

Program Make(int lines) {
  Program program;
  program.lines = lines;
  program.plain = Wide(programs::Lines(lines));
  program.blocks = Wide(Blocks(lines));
  program.renumbered = morva::RenumberedText(program.blocks);
  return program;
}

void Measure(Work& work, int size, const Program& program) {
  const int rounds = program.lines > 100000 ? 3 : 9;
  std::vector<double> times;
  for (int i = 0; i < rounds; ++i) times.push_back(work.run(program));
  const double line = targets::Median(times) * kNanoseconds / program.lines;
  if (work.run == Undo && program.lines >= 100000) {
    const char* const subject = program.lines > 100000 ? "Undo of all 1,000,000 lines, whole"
                                                       : "Undo of all 100,000 lines, whole";
    targets::Note({subject, "ms", 0, 0, kMostOfBare, "bare control"}, targets::Median(times),
                  BareUndo(program));
  }
  if (size == 0) work.ofFewest = line;
  std::printf("%s: %.3g ms\n", work.names[size], targets::Median(times));
  std::fflush(stdout);
  if (size == 0) {
    targets::Note({work.names[0], "ns/line"}, line);
  } else {
    targets::Note({work.names[size], "ns/line", 0, 0, 0, "of 1,000 lines"}, line, work.ofFewest);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (!bench::MakeHome()) return 1;
  platform::BeginProcess(argc, argv);
  bench::StartWorkbench();
  morva::app.dataDirReady = false;  // no autosave in between
  for (int size = 0; size < 4; ++size) {
    const Program program = Make(kSizes[size]);
    Show(program.blocks);
    for (Work& work : works) {
      if (work.run == Colours && size == 1) {
        const Program fewer = Make(9000);
        Show(fewer.blocks);
        Measure(work, size, fewer);
        Show(program.blocks);
      } else {
        Measure(work, size, program);
      }
    }
  }
  platform::EndProcess();
  bench::folder.reset();
  return 0;
}
