// The builders: the largest text, and a character until its picture stands.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "builders/shapes/pattern_text.h"
#include "builders/wizard/wizard_text.h"
#include "cpu_time.h"
#include "library/shapes.h"
#include "library/tool_fields.h"
#include "platform/headless/headless.h"
#include "platform/listing.h"
#include "shell/modes.h"
#include "targets.h"
#include "text/code_writer.h"
#include "workbench.h"

namespace {

using namespace morva;

// Every object of its own place, size and angle, of the four types that are cut.
SavedShape FullShape() {
  SavedShape shape;
  shape.name[0] = u'F';
  for (int i = 0; i < kMaxShapeObjects; ++i) {
    shape.objects[shape.count++] = {
        i % 4, 0, i * 0.0537 - 1.7, i * -0.0251 + 0.8, 0.1 + i * 0.01, 0.05 + i * 0.004, i * 7.0};
  }
  return shape;
}

void BM_PatternOfSavedShapes(benchmark::State& state) {
  static const SavedShape shape = FullShape();
  GridValues values;
  values.item.saved = &shape;
  const double numbers[] = {1, 1, 30, 0, 0, 20, 20, 4, 4, -0.1, 10, 0.5};
  std::copy(std::begin(numbers), std::end(numbers), values.numbers);
  std::size_t units = 0;
  for (auto _ : state) {
    const double start = CpuMilliseconds();
    CodeWriter out;
    out.most = GridRoom(values);
    WriteGrid(values, out);
    targets::Note({"pattern of 400 saved shapes of 64 objects", "ms", 0, 20},
                  CpuMilliseconds() - start);
    units = out.text.size();
  }
  state.counters["units"] = static_cast<double>(units);
}
BENCHMARK(BM_PatternOfSavedShapes)->Unit(benchmark::kMillisecond);

// A character in a field, and the paint of one or two pictures that follows.
void TypeAndPaint(benchmark::State& state, const char* subject, int field, int view,
                  int second = 0) {
  int turn = 0;
  for (auto _ : state) {
    const double start = CpuMilliseconds();
    headless::TypeInto(field, ++turn % 2 == 0 ? u"2.5" : u"2.25");
    benchmark::DoNotOptimize(headless::PaintOf(view));
    if (second != 0) benchmark::DoNotOptimize(headless::PaintOf(second));
    targets::Note({subject, "ms", 0, 4}, CpuMilliseconds() - start);
  }
}

void BM_CharacterInAShape(benchmark::State& state) {
  const Workbench workbench;
  SetMode(kModeShapes);
  TypeAndPaint(state, "a character in a shape, drawn", kIdShapeField + 2, kViewShapePicture);
}
BENCHMARK(BM_CharacterInAShape)->Unit(benchmark::kMillisecond);

void BM_CharacterInACircularPattern(benchmark::State& state) {
  const Workbench workbench;
  SetMode(kModeCircular);
  platform::SelectRow(kIdCircularItem, 5);
  headless::TypeInto(kIdCadCircQuantity, u"120");
  TypeAndPaint(state, "a character in a pattern of 120, drawn", kIdCadCircDiameter,
               kViewCircularPicture);
}
BENCHMARK(BM_CharacterInACircularPattern)->Unit(benchmark::kMillisecond);

void BM_CharacterInAGrid(benchmark::State& state) {
  const Workbench workbench;
  SetMode(kModeRectangular);
  headless::TypeInto(kIdCadRectColumns, u"20");
  headless::TypeInto(kIdCadRectRows, u"20");
  TypeAndPaint(state, "a character in a grid of 400, drawn", kIdCadRectSpacingX, kViewRectPicture);
}
BENCHMARK(BM_CharacterInAGrid)->Unit(benchmark::kMillisecond);

void BM_CharacterInTheWizard(benchmark::State& state) {
  const Workbench workbench;
  SetMode(kModeWizard);
  headless::SelectRows(kIdWizardCombo, {kWizardDrill});
  headless::TypeInto(kIdWizardField + kWizardNinth, u"400");
  TypeAndPaint(state, "a character in a row of 400 holes, drawn", kIdWizardField + kWizardTenth,
               kViewWizardPicture);
}
BENCHMARK(BM_CharacterInTheWizard)->Unit(benchmark::kMillisecond);

void BM_CharacterInATool(benchmark::State& state) {
  const Workbench workbench;
  SetMode(kModeTools);
  headless::Click(kIdToolAdd);
  const auto field = [](ToolField of) { return kIdToolField + static_cast<int>(of); };
  headless::TypeInto(field(ToolField::Flutes), u"64");
  TypeAndPaint(state, "a character in a tool of 64 flutes, drawn", field(ToolField::Diameter),
               kViewToolPicture, kViewToolEnd);
}
BENCHMARK(BM_CharacterInATool)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
