// What a save costs beside one plain write, flush and rename of the same bytes in the same
// folder, what the settings file costs for a whole library of keys, and how fast a program of a
// million lines becomes text and bytes again.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "documents/file_text.h"
#include "documents/saver.h"
#include "library/macros.h"
#include "library/shapes.h"
#include "library/tool_fields.h"
#include "library/tools.h"
#include "platform/common/faults.h"
#include "platform/file.h"
#include "platform/headless/headless.h"
#include "platform/profile.h"
#include "targets.h"
#include "text/codetext.h"
#include "workbench.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kProgramBytes = 100000;

// Beside the build and not in the system's folder for such files, which may live in memory
// where a flush costs nothing.
const fs::path& Folder() {
  static const fs::path folder = [] {
    std::string name = (fs::current_path() / "save-bench-XXXXXX").string();
    if (!mkdtemp(name.data())) std::abort();
    return fs::path(name);
  }();
  return folder;
}

std::string Program(int bytes) {
  std::string text;
  for (int line = 0; static_cast<int>(text.size()) < bytes; ++line) {
    text += "N" + std::to_string(line % 100000) + " G1 X-1" + std::to_string(line % 1000) +
            ".125 Y2.5\r\n";
  }
  return text;
}

void PlainSave(const std::string& bytes) {
  const std::string target = (Folder() / "plain.NC").string();
  const std::string temporary = target + ".new";
  const int handle = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (write(handle, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
  if (fsync(handle) != 0 || close(handle) != 0) std::abort();
  if (rename(temporary.c_str(), target.c_str()) != 0) std::abort();
}

void AtomicSave(const std::string& bytes) {
  static const std::u16string target = platform::FromUtf8((Folder() / "saved.NC").string());
  if (!morva::SaveFileAtomic(target, bytes)) std::abort();
}

// The median in turn, so that a disk that slows down meanwhile slows both.
double Ratio(const std::string& bytes) {
  std::vector<double> plain;
  std::vector<double> atomic;
  for (int round = 0; round < 41; ++round) {
    const Clock::time_point start = Clock::now();
    PlainSave(bytes);
    const Clock::time_point middle = Clock::now();
    AtomicSave(bytes);
    plain.push_back(std::chrono::duration<double>(middle - start).count());
    atomic.push_back(std::chrono::duration<double>(Clock::now() - middle).count());
  }
  const auto median = [](std::vector<double>& times) {
    std::nth_element(times.begin(), times.begin() + 20, times.end());
    return times[20];
  };
  targets::Note({"Save of 100 KB", "ms", 0, 0, 1.5, "write, flush, rename"}, median(atomic) * 1e3,
                median(plain) * 1e3);
  return median(atomic) / median(plain);
}

void BM_PlainSave(benchmark::State& state) {
  const std::string bytes = Program(kProgramBytes);
  for (auto _ : state) PlainSave(bytes);
}

void BM_SaveFileAtomic(benchmark::State& state) {
  const std::string bytes = Program(kProgramBytes);
  for (auto _ : state) AtomicSave(bytes);
  state.counters["ratio to plain"] = Ratio(bytes);
}

// Sixty-four tools with twenty keys each, changed in one bracket.
void BM_ProfileRewrite(benchmark::State& state) {
  headless::Reset(platform::FromUtf8(Folder().string()));
  int round = 0;
  for (auto _ : state) {
    const std::u16string value = platform::FromUtf8(std::to_string(++round));
    platform::BeginProfileChange();
    for (int tool = 0; tool < 64; ++tool) {
      const std::u16string section = u"Tool" + platform::FromUtf8(std::to_string(tool));
      for (int key = 0; key < 20; ++key) {
        platform::WriteProfile(section, u"Key" + platform::FromUtf8(std::to_string(key)), value);
      }
    }
    if (!platform::EndProfileChange()) state.SkipWithError("the settings were not written");
  }
}

double Milliseconds(Clock::time_point since) {
  return std::chrono::duration<double>(Clock::now() - since).count() * 1e3;
}

// What of a library's save is not the disk's: with a disk that refuses every write.
bool RefuseWrites(std::string_view kind) { return kind == "write"; }

std::string SettingsBytes() {
  std::string bytes;
  if (platform::ReadBytes(platform::ProfilePath(), 1 << 24, bytes) != platform::ReadAnswer::Read) {
    std::abort();
  }
  return bytes;
}

void FillLibraries() {
  const morva::ToolRecord tool = morva::ToolOfTexts(morva::NewToolTexts(false), false);
  while (morva::AppendTool(tool) >= 0) {
  }
  const std::u16string code = morva::DecodeProgram(Program(morva::kMaxMacroCode - 100));
  for (int i = 0; i < morva::kMaxMacros; ++i) morva::PutMacro(morva::IntegerText(i), code);
  morva::SavedShape shape;
  shape.count = morva::kMaxShapeObjects;
  for (morva::SketchObject& object : shape.objects) object = {1, 0, -1.25, 2.5, 0.75, 0.5, 30};
  for (int i = 0; i < morva::kMaxShapes; ++i) {
    shape.name[0] = static_cast<char16_t>(u'A' + i);
    morva::PutShape(shape);
  }
  morva::SaveToolLibrary();
  morva::SaveMacroLibrary();
  morva::SaveShapeLibrary();
  if (!morva::WaitForSaves()) std::abort();
}

using Save = bool (*)(void (*told)(bool saved));

// When the settings are on the disk, and when the mirror is written too.
struct Took {
  double settings = 0;
  double all = 0;
  bool saved = false;
};

// By the program's own writer of files, in this thread: the headless platform's worker has its own
// cost, which no user meets. The library is safe when the settings are; the mirror waits for
// nobody.
Took SaveAll(Save save, bool (*fault)(std::string_view kind)) {
  static Took took;
  static Clock::time_point start;
  headless::FailCall("worker", 1);
  platform::fileFault = fault;
  took = {};
  start = Clock::now();
  save([](bool saved) { took = {Milliseconds(start), 0, saved}; });
  took.all = Milliseconds(start);
  platform::fileFault = nullptr;
  return took;
}

struct Subject {
  const char* settings;
  const char* all;  // null: there is no mirror
  const char* mirror;
  double mostRatio = 1.5;  // 0: nothing is asked for
};

std::string BytesOf(const fs::path& path) {
  std::string bytes;
  const std::u16string wide = platform::FromUtf8(path.string());
  if (platform::ReadBytes(wide, 1 << 24, bytes) != platform::ReadAnswer::Read) std::abort();
  return bytes;
}

// A workbench with every table full. `change` makes the next save one of other bytes: before the
// refused one and before the timed one, which finds nothing made for it.
void MeasureSave(benchmark::State& state, const Subject& subject, Save save, void (*change)(int)) {
  const Workbench workbench(fs::current_path());
  FillLibraries();
  const std::string bytes = SettingsBytes();
  const std::string mirror =
      subject.all ? BytesOf(workbench.home / "Documents/MORVA" / subject.mirror) : "";
  std::vector<double> plain;
  std::vector<double> plainBoth;
  std::vector<double> own;
  std::vector<double> settings;
  std::vector<double> all;
  int round = 0;
  for (auto _ : state) {
    change(++round);
    const Took refused = SaveAll(save, RefuseWrites);
    if (refused.saved) state.SkipWithError("the disk took what it had to refuse");
    own.push_back(refused.all);
    const Clock::time_point start = Clock::now();
    PlainSave(bytes);
    plain.push_back(Milliseconds(start));
    if (subject.all) PlainSave(mirror);
    plainBoth.push_back(Milliseconds(start));
    change(++round);
    const Took took = SaveAll(save, nullptr);
    if (!took.saved) state.SkipWithError("the settings were not written");
    settings.push_back(took.settings);
    all.push_back(took.all);
  }
  targets::Note({subject.settings, "ms", 0, 0, subject.mostRatio, "write, flush, rename"},
                targets::Median(settings), targets::Median(plain));
  if (subject.all) {
    targets::Note({subject.all, "ms", 0, 0, 1.5, "the same of both"}, targets::Median(all),
                  targets::Median(plainBoth));
  }
  state.counters["own ms"] = targets::Median(own);
}

void BM_SaveTools(benchmark::State& state) {
  MeasureSave(state,
              {"Full libraries: save tools", "Full libraries: tools and mirror",
               "Tool Library/Library.tools"},
              morva::SaveToolLibrary, [](int round) {
                morva::ToolRecord tool = morva::toolLibrary.tools[40];
                tool.number = round % 999 + 1;
                morva::ReplaceTool(40, tool);
              });
}

// What the first save of a run costs, and one behind a change of the unit: no section stands in the
// file as it is to be.
void BM_SaveAllTools(benchmark::State& state) {
  MeasureSave(state, {"Full libraries: save tools, all changed", nullptr, nullptr, 0},
              morva::SaveToolLibrary, [](int round) {
                for (int i = 0; i < morva::kMaxTools; ++i) {
                  morva::ToolRecord tool = morva::toolLibrary.tools[i];
                  tool.number = (round + i) % 999 + 1;
                  morva::ReplaceTool(i, tool);
                }
              });
}

void BM_SaveAllMacros(benchmark::State& state) {
  MeasureSave(state, {"Full libraries: save macros, all changed", nullptr, nullptr, 0},
              morva::SaveMacroLibrary, [](int round) {
                for (int i = 0; i < morva::kMaxMacros; ++i) {
                  morva::RenameMacro(i, morva::IntegerText(100 * round + i));
                }
              });
}

void BM_SaveAllShapes(benchmark::State& state) {
  MeasureSave(state, {"Full libraries: save shapes, all changed", nullptr, nullptr, 0},
              morva::SaveShapeLibrary, [](int round) {
                for (int i = 0; i < morva::kMaxShapes; ++i) {
                  morva::SavedShape shape = morva::shapeLibrary.shapes[i];
                  shape.objects[30].x = round;
                  morva::PutShape(shape);
                }
              });
}

void BM_SaveMacros(benchmark::State& state) {
  MeasureSave(state, {"Full libraries: save macros", nullptr, nullptr}, morva::SaveMacroLibrary,
              [](int round) { morva::RenameMacro(7, morva::IntegerText(round + 100)); });
}

void BM_SaveShapes(benchmark::State& state) {
  MeasureSave(
      state,
      {"Full libraries: save shapes", "Full libraries: shapes and mirror", "Shapes/Library.shapes"},
      morva::SaveShapeLibrary, [](int round) {
        morva::SavedShape shape = morva::shapeLibrary.shapes[7];
        shape.objects[30].x = round;
        morva::PutShape(shape);
      });
}

// A library read at the start, out of a settings file in which all three are full, beside one
// reading of that file's bytes.
void MeasureLoad(benchmark::State& state, const char* subject, void (*load)()) {
  const Workbench workbench(fs::current_path());
  FillLibraries();
  platform::SetProfileWriter(nullptr);
  std::vector<double> bytes;
  std::vector<double> library;
  for (auto _ : state) {
    const Clock::time_point start = Clock::now();
    benchmark::DoNotOptimize(SettingsBytes());
    bytes.push_back(Milliseconds(start));
    const Clock::time_point middle = Clock::now();
    load();
    library.push_back(Milliseconds(middle));
  }
  targets::Note({subject, "ms", 0, 3, 0, "the bytes of its file"}, targets::Median(library),
                targets::Median(bytes));
}

void BM_LoadTools(benchmark::State& state) {
  MeasureLoad(state, "Full libraries: read tools", morva::LoadToolLibrary);
}

void BM_LoadMacros(benchmark::State& state) {
  MeasureLoad(state, "Full libraries: read macros", morva::LoadMacroLibrary);
}

void BM_LoadShapes(benchmark::State& state) {
  MeasureLoad(state, "Full libraries: read shapes", morva::LoadShapeLibrary);
}

void BM_Decode(benchmark::State& state) {
  const std::string bytes = Program(27000000);
  for (auto _ : state) benchmark::DoNotOptimize(morva::DecodeProgram(bytes));
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes.size()) * state.iterations());
}

void BM_NormaliseOutput(benchmark::State& state) {
  const std::u16string text = morva::DecodeProgram(Program(27000000));
  for (auto _ : state) benchmark::DoNotOptimize(morva::NormaliseOutputText(text, true));
  state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}

BENCHMARK(BM_PlainSave)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_SaveFileAtomic)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_ProfileRewrite)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_SaveTools)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_SaveMacros)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_SaveShapes)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_SaveAllTools)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_SaveAllMacros)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_SaveAllShapes)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_LoadTools)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_LoadMacros)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_LoadShapes)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(BM_Decode)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NormaliseOutput)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  std::error_code ignored;
  fs::remove_all(Folder(), ignored);
  return 0;
}
