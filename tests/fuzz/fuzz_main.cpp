// Runs one fuzz target: each file of its corpus, then changed inputs from a fixed seed.
//
//   <target>              the corpus and 20,000 changed inputs, 10 seconds at most
//   <target> 1000000      another count, without a limit of time
//   <target> FILE...      these files only, to see a failure again
//
// The inputs run in a child process, so that any kind of failure is seen; the input that
// failed is left beside the program. Memory that nobody holds any more at the end is a failure of
// the whole run; only the sanitizer's variant sees it. The canary targets must fail: they show
// that a failure would be noticed.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <vector>

#include "fuzz/fuzz.h"
#include "support/places.h"

extern "C" void __sanitizer_set_death_callback(void (*callback)()) __attribute__((weak));
extern "C" int __lsan_do_recoverable_leak_check() __attribute__((weak));
// Deep stacks of every block are a third of a run; ASAN_OPTIONS brings them back for one input.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
  return "malloc_context_size=4:quarantine_size_mb=16:thread_local_quarantine_size_kb=64";
}

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kLongestInput = 65536;
constexpr long kRuns = 20000;
constexpr std::chrono::seconds kWallTime{10};

// Pieces that a blind change of bytes would not come upon.
constexpr std::string_view kPieces[] = {
    "(MORVA BEGIN 1)\r\n",
    "(MORVA TEXT 2)\r\n",
    "(MORVA NAME A)\r\n",
    "(MORVA DATA 03)\r\n",
    "(MORVA CODE)\r\n",
    "(MORVA END 1)\r\n",
    "(MORVA END 2)",
    "(morva end 1)",
    "(SHAPE: A)\r\n",
    "(MORVA DISABLED 1)",
    "\r\n",
    "\n",
    "%",
    "M30\r\n",
    "G01 X1.5 Y-2.\r\n",
    "G2 I1. J0 ",
    "G91 G28 Z0\r\n",
    "G83 R.1 Z-1. Q.2 ",
    "G80\r\n",
    "N10 ",
    "T1 M6\r\n",
    "#100=[1+2]\r\n",
    "(",
    ")",
    ";",
    "4294967296",
    "2147483647",
    "-1",
    "0.0000001",
    "999999999999999999.",
    "[Tool0]\r\n",
    "Key=Value\r\n",
    "\x13",
    "\x11",
    "\xEF\xBB\xBF",
    "MVC1",
};

struct Current {
  const std::uint8_t* data = nullptr;
  std::size_t size = 0;
  char path[4096] = {};
};
Current current;

// Called while the process dies: nothing but plain system calls.
void KeepInput() {
  const int file = open(current.path, O_CREAT | O_WRONLY | O_TRUNC, 0644);
  if (file < 0) return;
  std::size_t at = 0;
  while (at < current.size) {
    const ssize_t written = write(file, current.data + at, current.size - at);
    if (written <= 0) break;
    at += static_cast<std::size_t>(written);
  }
  close(file);
}

void OnSignal(int signal) {
  KeepInput();
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

void RunOne(const Bytes& input) {
  // A copy of its own size, so that a sanitizer sees a read behind the end.
  static std::uint8_t* copy = nullptr;
  std::free(copy);
  copy = static_cast<std::uint8_t*>(std::malloc(std::max<std::size_t>(input.size(), 1)));
  std::copy(input.begin(), input.end(), copy);
  current.data = copy;
  current.size = input.size();
  LLVMFuzzerTestOneInput(copy, input.size());
}

Bytes ReadFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// The inputs in the order of their names, an empty one in front.
std::vector<Bytes> ReadCorpus(const fs::path& folder) {
  std::vector<fs::path> paths;
  std::error_code missing;
  for (const auto& entry : fs::directory_iterator(folder, missing)) paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  std::vector<Bytes> corpus(1);
  for (const fs::path& path : paths) corpus.push_back(ReadFile(path));
  return corpus;
}

struct Random {
  std::uint64_t state = 0x9E3779B97F4A7C15u;
  std::uint64_t Next() {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    return state;
  }
  std::size_t Below(std::size_t bound) { return bound == 0 ? 0 : Next() % bound; }
};

template <typename Source>
void InsertAt(Bytes& input, std::size_t at, const Source& source) {
  input.insert(input.begin() + static_cast<std::ptrdiff_t>(at), source.begin(), source.end());
}

Bytes Slice(const Bytes& input, Random& random) {
  const std::size_t from = random.Below(input.size() + 1);
  const std::size_t count = random.Below(std::min<std::size_t>(input.size() - from, 256) + 1);
  const auto begin = input.begin() + static_cast<std::ptrdiff_t>(from);
  return Bytes(begin, begin + static_cast<std::ptrdiff_t>(count));
}

void Change(Bytes& input, const std::vector<Bytes>& corpus, Random& random) {
  const std::size_t at = random.Below(input.size() + 1);
  const bool inside = at < input.size();
  switch (random.Below(8)) {
    case 0:
      if (inside) input[at] = static_cast<std::uint8_t>(input[at] ^ 1u << random.Below(8));
      break;
    case 1:
      if (inside) input[at] = static_cast<std::uint8_t>(random.Next());
      break;
    case 2:
      InsertAt(input, at, Bytes(random.Below(8) + 1, static_cast<std::uint8_t>(random.Next())));
      break;
    case 3: {
      const std::size_t end = at + random.Below(std::min<std::size_t>(input.size() - at, 64) + 1);
      input.erase(input.begin() + static_cast<std::ptrdiff_t>(at),
                  input.begin() + static_cast<std::ptrdiff_t>(end));
      break;
    }
    case 4:
      InsertAt(input, at, Slice(input, random));
      break;
    case 5:
      InsertAt(input, at, Slice(corpus[random.Below(corpus.size())], random));
      break;
    case 6:
      input.resize(at);
      break;
    default:
      InsertAt(input, at, kPieces[random.Below(std::size(kPieces))]);
      break;
  }
  if (input.size() > kLongestInput) input.resize(kLongestInput);
}

// 0 when all inputs passed; does not come back from one that failed.
int RunAll(const std::string& target, long runs, bool limited) {
  const std::vector<Bytes> corpus =
      ReadCorpus(fs::path(support::SourceDir()) / "tests/fuzz/corpus" / target);
  for (const Bytes& input : corpus) RunOne(input);
  const auto end = std::chrono::steady_clock::now() + kWallTime;
  Random random;
  long done = 0;
  for (; done < runs; ++done) {
    if (limited && std::chrono::steady_clock::now() > end) break;
    Bytes input = corpus[random.Below(corpus.size())];
    for (std::size_t changes = random.Below(6) + 1; changes > 0; --changes) {
      Change(input, corpus, random);
    }
    RunOne(input);
  }
  std::printf("%s: %zu inputs of the corpus, %ld changed ones\n", target.c_str(), corpus.size(),
              done);
  return 0;
}

bool IsCount(std::string_view argument) {
  return argument.find_first_not_of("0123456789") == std::string_view::npos;
}

// The child ends without the checks of a process's end.
bool LeaksMemory() {
  return __lsan_do_recoverable_leak_check && __lsan_do_recoverable_leak_check() != 0;
}

int RunInputs(int argc, char** argv, const std::string& target) {
  if (argc < 2) return RunAll(target, kRuns, true);
  if (IsCount(argv[1])) return RunAll(target, std::strtol(argv[1], nullptr, 10), false);
  for (int i = 1; i < argc; ++i) RunOne(ReadFile(argv[i]));
  return 0;
}

int Child(int argc, char** argv, const std::string& target) {
  for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP}) {
    std::signal(signal, OnSignal);
  }
  if (__sanitizer_set_death_callback) __sanitizer_set_death_callback(KeepInput);
  const int result = RunInputs(argc, argv, target);
  if (!LeaksMemory()) return result;
  std::printf("%s: memory was lost; run single inputs to see which of them does it\n",
              target.c_str());
  return 1;
}

// Whether a canary was caught; that of memory can be caught by the sanitizer alone.
int TellCanary(const std::string& target, bool caught) {
  const bool unseen = target == "leak_canary_fuzz" && !__lsan_do_recoverable_leak_check;
  std::printf("the canary %s\n", caught ? "was caught" : unseen ? "cannot be seen" : "got away");
  return caught || unseen ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const fs::path program = fs::absolute(argv[0]);
  // The sanitizer's variant of a target reads the same corpus.
  std::string target = program.filename().string();
  const std::size_t variant = target.find("_fuzz_");
  if (variant != std::string::npos) target.resize(variant + 5);
  const std::string kept = program.string() + ".failed";
  std::snprintf(current.path, sizeof current.path, "%s", kept.c_str());
  // A kept input that is tried again must not be lost.
  if (argc < 2 || IsCount(argv[1])) fs::remove(kept);
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child < 0) return 2;
  if (child == 0) {
    const int result = Child(argc, argv, target);
    std::fflush(nullptr);
    _exit(result);
  }
  int status = 0;
  waitpid(child, &status, 0);
  const bool failed = !WIFEXITED(status) || WEXITSTATUS(status) != 0;
  if (target == "canary_fuzz") return TellCanary(target, failed && fs::exists(kept));
  if (target == "leak_canary_fuzz") return TellCanary(target, failed);
  if (failed) std::printf("%s failed; its input is %s\n", target.c_str(), kept.c_str());
  return failed ? 1 : 0;
}
