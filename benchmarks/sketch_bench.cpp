// What an undo step of the CAD sketch costs beside copying the same bytes, and what a full
// shape library costs at start-up and when a shape is saved.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "app/app_state.h"
#include "cad/model/sketch.h"
#include "cpu_time.h"
#include "documents/program_tabs.h"
#include "library/shapes.h"
#include "platform/file.h"
#include "platform/headless/headless.h"
#include "platform/profile.h"
#include "targets.h"

namespace {

namespace fs = std::filesystem;

constexpr int kPushes = 20000;

const fs::path& Folder() {
  static const fs::path folder = [] {
    std::string name = (fs::current_path() / "sketch-bench-XXXXXX").string();
    if (!mkdtemp(name.data())) std::abort();
    headless::Reset(platform::FromUtf8(name));
    morva::SwitchTab(morva::OpenTab(u"", u"G1 X1\r\n", u"Job.NC"));
    return fs::path(name);
  }();
  return folder;
}

void FillSketch() {
  morva::ResetSketch();
  for (int i = 0; i < morva::kMaxItems; ++i) {
    morva::AppendSketchObject({i % 6, i / 8, i * 0.5, i * -0.25, 1.5, 0.5, 3.0 * i});
  }
}

// Objects, two flags for each, count, selection and unit.
struct Snapshot {
  unsigned char bytes[morva::kMaxItems * 50 + 16];
};

void BM_PushSketchUndo(benchmark::State& state) {
  Folder();
  FillSketch();
  for (int i = 0; i < morva::kMaxSketchUndo; ++i) morva::PushSketchUndo();
  for (auto _ : state) {
    const double start = CpuMilliseconds();
    for (int i = 0; i < kPushes; ++i) morva::PushSketchUndo();
    const double push = (CpuMilliseconds() - start) * 1000 / kPushes;
    static Snapshot from;
    static Snapshot ring[morva::kMaxSketchUndo];
    const double middle = CpuMilliseconds();
    for (int i = 0; i < kPushes; ++i) {
      std::memcpy(&ring[i % morva::kMaxSketchUndo], &from, sizeof from);
      benchmark::ClobberMemory();
    }
    const double copy = (CpuMilliseconds() - middle) * 1000 / kPushes;
    targets::Note({"Undo step of a full sketch, stack full", "us", 0, 5, 0, "memcpy of it"}, push,
                  copy);
  }
}

void FillLibrary() {
  morva::ResetShapeLibrary();
  for (int i = 0; i < morva::kMaxShapes; ++i) {
    morva::SavedShape& shape = morva::shapeLibrary.shapes[morva::AppendShape(u"Shape")];
    shape.count = morva::kMaxShapeObjects;
    for (int k = 0; k < shape.count; ++k) shape.objects[k] = {k % 4, 0, k * 0.5, 1.25, 2, 1, 30};
  }
}

// The bytes of the settings file, read, or written to a file of their own and flushed.
double ReadBytes(std::string& bytes) {
  const double start = CpuMilliseconds();
  std::FILE* file = std::fopen(platform::ToUtf8(platform::ProfilePath()).c_str(), "rb");
  bytes.clear();
  char piece[65536];
  for (std::size_t n = 1; file && n > 0;) {
    n = std::fread(piece, 1, sizeof piece, file);
    bytes.append(piece, n);
  }
  if (file) std::fclose(file);
  return CpuMilliseconds() - start;
}
double WriteBytes(const std::string& bytes) {
  const double start = CpuMilliseconds();
  std::FILE* file = std::fopen((Folder() / "plain").c_str(), "wb");
  if (!file) return 0;
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() &&
                       std::fflush(file) == 0 && fsync(fileno(file)) == 0;
  std::fclose(file);
  return written ? CpuMilliseconds() - start : 0;
}

void BM_FullShapeLibrary(benchmark::State& state) {
  Folder();
  FillLibrary();
  for (auto _ : state) {
    morva::shapeLibrary.shapes[0].objects[0].x += 1;
    const double start = CpuMilliseconds();
    if (!morva::SaveShapeLibrary()) state.SkipWithError("the settings were not written");
    const double middle = CpuMilliseconds();
    morva::LoadShapeLibrary();
    const double end = CpuMilliseconds();
    std::string bytes;
    const double read = ReadBytes(bytes);
    if (bytes.size() < static_cast<std::size_t>(morva::kMaxShapes * morva::kMaxShapeObjects))
      state.SkipWithError("the settings were not found");
    targets::Note({"Shape library of 1536 objects, saved", "ms", 0, 0, 0, "its bytes written"},
                  middle - start, WriteBytes(bytes));
    targets::Note({"Shape library of 1536 objects, loaded", "ms", 0, 0, 0, "its bytes read"},
                  end - middle, read);
  }
}

BENCHMARK(BM_PushSketchUndo)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(BM_FullShapeLibrary)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  std::error_code ignored;
  fs::remove_all(Folder(), ignored);
  return 0;
}
