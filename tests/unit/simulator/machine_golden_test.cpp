// Whole programs through the reader of the machine's motion, against point tables that were worked
// out by hand or by a second method; each case says how.
//
// expected.txt: comment lines, "display inch" or "display mm", "tolerance", "count", "find" with
// the name of a finding and its 1-based line in the order of the program, "seconds" in all, then
// points by their index: x y z, rapid or feed, "line" n from 0, "tool" n, and "jump" where it is
// set.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/places.h"
#include "support/stage.h"
#include "unit/simulator/control_fixture.h"

namespace {

using namespace control_test;
namespace fs = std::filesystem;

struct Expected {
  bool metric = false;
  double tolerance = -1;
  int count = -1;
  double seconds = -1;  // below 0: not told
  std::string found;
  std::vector<std::pair<int, MotionPoint>> points;
};

bool TakePoint(const std::string& line, Expected& into) {
  std::istringstream in(line);
  int index = 0;
  MotionPoint p;
  std::string move, lineWord, toolWord, jump;
  if (!(in >> index >> p.x >> p.y >> p.z >> move >> lineWord >> p.sourceLine >> toolWord >>
        p.tool)) {
    return false;
  }
  in >> jump;
  p.rapid = move == "rapid";
  p.jump = jump == "jump";
  into.points.push_back({index, p});
  return (p.rapid || move == "feed") && lineWord == "line" && toolWord == "tool" &&
         (p.jump || jump.empty());
}

bool TakeLine(const std::string& line, Expected& into) {
  std::istringstream in(line);
  std::string word, value;
  in >> word >> value;
  if (word == "display") {
    into.metric = value == "mm";
    return into.metric || value == "inch";
  }
  if (word == "tolerance") into.tolerance = std::stod(value);
  if (word == "count") into.count = std::stoi(value);
  if (word == "seconds") into.seconds = std::stod(value);
  if (word == "find") {
    std::string at;
    in >> at;
    into.found += (into.found.empty() ? "" : ", ") + value + " " + at;
  }
  const bool known = word == "tolerance" || word == "count" || word == "seconds" || word == "find";
  return known || TakePoint(line, into);
}

Expected ReadExpected(const fs::path& file) {
  Expected expected;
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    EXPECT_TRUE(TakeLine(line, expected)) << file << ": " << line;
  }
  return expected;
}

void CheckPoint(const MotionPoint& p, const MotionPoint& wanted, double tolerance) {
  EXPECT_NEAR(p.x, wanted.x, tolerance);
  EXPECT_NEAR(p.y, wanted.y, tolerance);
  EXPECT_NEAR(p.z, wanted.z, tolerance);
  EXPECT_EQ(p.rapid, wanted.rapid);
  EXPECT_EQ(p.jump, wanted.jump);
  EXPECT_EQ(p.sourceLine, wanted.sourceLine);
  EXPECT_EQ(p.tool, wanted.tool);
}

void CheckCase(const fs::path& folder) {
  SCOPED_TRACE(folder.filename().string());
  const Expected expected = ReadExpected(folder / "expected.txt");
  ASSERT_GE(expected.tolerance, 0);
  ASSERT_GE(expected.points.size(), 4u);
  const ControlTrack& track =
      RunText(support::Wide(support::ReadRaw(folder / "program.nc")), {.metric = expected.metric});
  EXPECT_EQ(track.path.count, expected.count);
  EXPECT_EQ(Found(track), expected.found);
  if (expected.seconds >= 0) {
    EXPECT_NEAR(track.totalSeconds, expected.seconds, 1e-6 * (1 + expected.seconds));
  }
  for (const auto& [index, wanted] : expected.points) {
    SCOPED_TRACE("point " + std::to_string(index));
    ASSERT_LT(index, track.path.count);
    CheckPoint(track.path.points[index], wanted, expected.tolerance);
  }
}

TEST(MachineGolden, ProgramsGiveThePointsWorkedOutBesideTheReader) {
  int cases = 0;
  for (const auto& entry :
       fs::directory_iterator(fs::path(support::SourceDir()) / "tests/golden/machine")) {
    if (!entry.is_directory()) continue;
    ++cases;
    CheckCase(entry.path());
  }
  EXPECT_GE(cases, 17);
}

}  // namespace
