// The frames of a path that stands still. Strokes from rim to rim have their goal while they are
// turned (turn_bench.cpp).
#include "screen_frames.h"

namespace {

using screen_frames::kFrames;
using screen_frames::NoteMedian;
using screen_frames::NoteSlowest;
using screen_frames::Path;

constexpr auto kMs = benchmark::kMillisecond;
BENCHMARK_CAPTURE(NoteMedian, steps, Path::Steps,
                  {"Frame of 32,768 points at 1200 by 800", "ms", 0, 4})
    ->Unit(kMs)
    ->UseManualTime()
    ->Iterations(kFrames);
BENCHMARK_CAPTURE(NoteSlowest, strokes, Path::Strokes,
                  {"Of strokes from rim to rim, 99th percentile", "ms"})
    ->Unit(kMs)
    ->UseManualTime()
    ->Iterations(kFrames);
BENCHMARK_CAPTURE(NoteSlowest, crossing, Path::Crossing,
                  {"Of strokes that all cross it, 99th percentile", "ms", 0, 16.6})
    ->Unit(kMs)
    ->UseManualTime()
    ->Iterations(kFrames);

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv); }
