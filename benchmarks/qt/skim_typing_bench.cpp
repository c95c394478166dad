// A typed character in a field of the guided skim until the view is drawn: all fields are read, the
// plan is checked, code and matrix are written, the marker is set, and everything is painted, with
// coverage, overlap, cut surface and a program around it.
//
// The character goes over the whole text of the entry, so that all rows are others each time. Times
// are the processor's.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QWidget>
#include <QWindow>
#include <cstdlib>
#include <string>
#include <vector>

#include "../cpu_time.h"
#include "../programs.h"
#include "../targets.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/router.h"
#include "bench_window.h"
#include "library/tools.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/qt/qt_testing.h"
#include "platform/window.h"
#include "simulator/shown_path.h"
#include "simulator/view_switches.h"
#include "skim/model/plan.h"
#include "skim/model/wizard_state.h"
#include "skim/tools/skim_fields.h"
#include "skim/tools/skim_preview.h"

namespace {

using namespace morva;

constexpr int kEntryField = kIdSkimField + kSkimEntry;

class PaintCount : public QObject {
 public:
  int paints = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    paints += event->type() == QEvent::Paint;
    return false;
  }
};

void Settle() {
  QCoreApplication::sendPostedEvents();
  QCoreApplication::processEvents();
}

// The workbench, shown, with a tool and a program of its own.
void Stand() {
  if (!bench::StartWorkbench()) return;
  QElapsedTimer clock;
  clock.start();
  while (!platform::WidgetOf(platform::kMainWindow)->windowHandle()->isExposed()) {
    if (clock.elapsed() > 60000) std::abort();
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  app.dataDirReady = false;  // no autosave in between
  ToolRecord tool;
  tool.number = 1;
  tool.diameter = 1;
  tool.stickout = 1;
  tool.gaugeLength = 2;
  if (AppendTool(tool) < 0) std::abort();
  const std::string around = programs::Pockets(5000);
  platform::SetEditorText(kIdEditor, std::u16string(around.begin(), around.end()));
  switches.showOverlap = true;
  Settle();
}

// Rows of 0.6 in passes of 0.01 over stock of 100 by as many rows.
SkimPlan Rows(int rows, int passes) {
  SkimPlan plan;
  plan.tool = 1;
  plan.xMax = 100;
  plan.yMax = 0.6 * (rows - 2);
  plan.depthPerPass = 0.01;
  plan.passCount = passes;
  return plan;
}

void Press(int id) { RouteCommand(id, platform::kNotifyClick); }

// The second page with this plan, coverage on and the matrix below.
void OpenOn(const SkimPlan& plan) {
  if (!SkimIsUp() && !(hooks.openSkim && hooks.openSkim())) std::abort();
  SetSkimPlan(plan);
  FillSkimForm();
  RefreshSkimPreview();
  if (skimWizard.page == kSkimStock) Press(kIdSkimNext);
  if (!skimWizard.coverage) Press(kIdSkimCoverage);
  if (!skimWizard.matrixShown) Press(kIdSkimShowMatrix);
  platform::SetFocusTo(kEntryField);
  Settle();
  if (skimWizard.page != kSkimCutter || !skimWizard.planValid) std::abort();
}

void Typed(benchmark::State& state, const char* subject, const SkimPlan& plan, double most) {
  Stand();
  OpenOn(plan);
  QWidget* const view = platform::WidgetOf(kViewToolpath);
  PaintCount count;
  view->installEventFilter(&count);
  std::vector<double> times;
  int digit = 0;
  for (auto step : state) {
    digit = digit % 9 + 1;
    platform::SelectAllText(kEntryField);
    Settle();
    const int painted = count.paints;
    const double before = CpuMilliseconds();
    QKeyEvent key(QEvent::KeyPress, Qt::Key_0 + digit, Qt::NoModifier, QString::number(digit));
    QCoreApplication::sendEvent(platform::WidgetOf(kEntryField), &key);
    QCoreApplication::sendPostedEvents();
    if (count.paints == painted) view->repaint();
    times.push_back(CpuMilliseconds() - before);
    state.SetIterationTime(times.back() * 1e-3);
    if (skimPlan.entry != digit || count.paints == painted) std::abort();
  }
  view->removeEventFilter(&count);
  state.counters["points"] = ShownPath().path.count;
  targets::Note({subject, "ms", 0, most}, targets::Median(times));
}

constexpr auto kMs = benchmark::kMillisecond;
BENCHMARK_CAPTURE(Typed, rows_5000, "A key in the skim's form, 5,000 rows", Rows(1000, 5), 16)
    ->Unit(kMs)
    ->UseManualTime()
    ->Iterations(100);
BENCHMARK_CAPTURE(Typed, rows_20000, "The same, 20,000 rows, in the form", Rows(1000, 20), 0)
    ->Unit(kMs)
    ->UseManualTime()
    ->Iterations(50);

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv); }
