// Programs that a control refuses, or that never end: each names in its first line, in parentheses,
// what is found, with the 1-based line; "nothing" for one that is none. Comments behind it tell
// stock and tools (control_fixture.h).
#include <filesystem>
#include <string>

#include "support/places.h"
#include "support/stage.h"
#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;
namespace fs = std::filesystem;

TEST(MachineBad, NamesWhatIsWrongAndWhereAndEnds) {
  int cases = 0;
  for (const auto& entry :
       fs::directory_iterator(fs::path(support::SourceDir()) / "tests/bad/machine")) {
    ++cases;
    SCOPED_TRACE(entry.path().filename().string());
    const std::string text = support::ReadRaw(entry.path());
    ASSERT_EQ(text.front(), '(');
    std::string wanted = text.substr(1, text.find(')') - 1);
    if (wanted == "nothing") wanted.clear();
    const KnownStock stock = StockIn(text);
    const ControlTrack& track = RunText(support::Wide(text), {.stock = &stock});
    EXPECT_EQ(Found(track), wanted);
    // What stood before it was read, and nothing runs beyond the bound of steps.
    EXPECT_LE(track.path.count, kMaxControlPoints);
    EXPECT_EQ(track.findings.more, 0);
  }
  EXPECT_GE(cases, 70);
}

TEST(MachineBad, KeepsThePathUpToWhereTheRunEnds) {
  const auto program = [](const char* name) {
    return support::Wide(
        support::ReadRaw(fs::path(support::SourceDir()) / "tests/bad/machine" / name));
  };
  EXPECT_EQ(RunText(program("goto_nowhere.nc")).path.count, 1);
  ExpectEnd(RunText(program("goto_nowhere.nc")), 1, 1, 1);
  EXPECT_GT(RunText(program("steps_without_end.nc")).path.count, 100000);
  EXPECT_GT(RunText(program("repeats_of_repeats.nc")).path.count, 9999);
}

}  // namespace
