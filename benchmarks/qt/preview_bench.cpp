// A typed character in the guided skim until the view is drawn: the code is written anew, the view
// reads it and paints it, with coverage, overlap, cut surface and a program around it.
//
// A plan of 5,000 rows in five passes, its largest one of 20,000 rows, and a spiral of nearly
// 30,000 points. Each step is another feed, so that no text is known already. Beside it stands the
// writing of the code alone. Times are the processor's.
#include <benchmark/benchmark.h>

#include <QWidget>
#include <cstdlib>
#include <string>
#include <vector>

#include "../cpu_time.h"
#include "../programs.h"
#include "../targets.h"
#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/path_preview.h"
#include "bench_window.h"
#include "library/tools.h"
#include "platform/canvas.h"
#include "platform/editor.h"
#include "platform/events.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"
#include "simulator/preview.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "simulator/view_switches.h"
#include "skim/geometry/skim_code.h"

namespace {

platform::Events events;
int painted = 0;

void Paint(int, platform::Canvas& canvas) {
  morva::PaintToolpathView(canvas);
  ++painted;
}

void AddTool() {
  morva::ResetToolLibrary();
  morva::ToolRecord tool;
  tool.number = 1;
  tool.diameter = 1;
  tool.stickout = 1;
  tool.gaugeLength = 2;
  morva::AppendTool(tool);
}

// Rows of 0.6 in passes of 0.01 over stock of 100 by as many rows.
morva::SkimPlan Rows(int rows, int passes) {
  morva::SkimPlan plan;
  plan.tool = 1;
  plan.xMax = 100;
  plan.yMax = 0.6 * (rows - 2);
  plan.depthPerPass = 0.01;
  plan.passCount = passes;
  return plan;
}

morva::SkimPlan Spiral() {
  morva::SkimPlan plan = Rows(2, 1);
  plan.strategy = morva::kSkimSpiral;
  plan.xMax = plan.yMax = 40;
  plan.diameter = 1;
  plan.stepoverPercent = 60;
  return plan;
}

void ShowStep(const morva::SkimPlan& plan, const std::u16string& text) {
  morva::PathPreview preview;
  preview.text = text;
  preview.stock = {true, plan.xMin, plan.xMax, plan.yMin, plan.yMax, -0.5, plan.zTop};
  preview.stockWords = u"SKIM AREA";
  preview.tool = plan.tool;
  preview.diameter = plan.diameter;
  preview.coverage = true;
  preview.levels = true;
  morva::ShowPreview(preview);
  platform::WidgetOf(morva::kViewToolpath)->repaint();
}

void Typed(benchmark::State& state, const char* subject, morva::SkimPlan plan, double most) {
  events.paint = Paint;
  bench::StandView(morva::kViewToolpath, events, painted);
  morva::ResetSimulator();
  AddTool();
  const std::string around = programs::Pockets(5000);
  platform::EditorSpec editor;
  editor.id = morva::kIdEditor;
  if (!platform::Exists(morva::kIdEditor)) platform::MakeEditor(editor);
  platform::SetEditorText(morva::kIdEditor, std::u16string(around.begin(), around.end()));
  morva::switches.showOverlap = true;
  std::vector<double> times;
  std::vector<double> written;
  for (auto step : state) {
    plan.feed = plan.feed < 50 ? plan.feed + 1 : 12;
    const double before = CpuMilliseconds();
    morva::CodeWriter out;
    if (!morva::BuildSkimProgram(plan, out)) std::abort();
    written.push_back(CpuMilliseconds() - before);
    ShowStep(plan, out.text);
    times.push_back(CpuMilliseconds() - before);
    state.SetIterationTime(times.back() * 1e-3);
  }
  state.counters["points"] = morva::ShownPath().path.count;
  targets::Note({subject, "ms", 0, most, 0, "the code alone"}, targets::Median(times),
                targets::Median(written));
  morva::LeavePreview();
  morva::switches.showOverlap = false;
}

constexpr auto kMs = benchmark::kMillisecond;
BENCHMARK_CAPTURE(Typed, rows_5000, "A character typed, 5,000 rows of skim", Rows(1000, 5), 16)
    ->Unit(kMs)
    ->UseManualTime()
    ->Iterations(100);
BENCHMARK_CAPTURE(Typed, rows_20000, "The same, 20,000 rows", Rows(1000, 20), 0)
    ->Unit(kMs)
    ->UseManualTime()
    ->Iterations(50);
BENCHMARK_CAPTURE(Typed, spiral, "The same, a spiral", Spiral(), 0)
    ->Unit(kMs)
    ->UseManualTime()
    ->Iterations(50);

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv); }
