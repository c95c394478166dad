// The frame of screen_bench on a screen with two device pixels to a pixel: 2400 by 1600 of them.
#include <cstdlib>

#include "screen_frames.h"

namespace {

using screen_frames::kFrames;
using screen_frames::NoteMedian;
using screen_frames::Path;

BENCHMARK_CAPTURE(NoteMedian, steps, Path::Steps,
                  {"Frame of 32,768 points at twice the scale", "ms", 0, 8})
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(kFrames);

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_SCALE_FACTOR", "2", 1);
  return bench::Main(argc, argv);
}
