// Whole programs against point tables that were worked out by hand; each case says how.
//
// expected.txt: comment lines, "display inch" or "display mm", "tolerance", "count", then
// points by their index: x y z, rapid or feed, "line" n, "tool" n, and "jump" where it is set.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "simulator/motion_path.h"
#include "simulator/toolpath.h"
#include "support/places.h"
#include "unit/simulator/simulator_fixture.h"

namespace morva {
namespace {

namespace fs = std::filesystem;

struct ExpectedPoint {
  int index = 0;
  double x = 0, y = 0, z = 0;
  bool rapid = false;
  bool jump = false;
  int line = 0;
  int tool = 0;
};

struct Expected {
  bool metric = false;
  double tolerance = -1;
  int count = -1;
  std::vector<ExpectedPoint> points;
};

bool ReadPoint(const std::string& line, ExpectedPoint& p) {
  std::istringstream in(line);
  std::string move, lineWord, toolWord, jump;
  if (!(in >> p.index >> p.x >> p.y >> p.z >> move >> lineWord >> p.line >> toolWord >> p.tool)) {
    return false;
  }
  p.rapid = move == "rapid";
  in >> jump;
  p.jump = jump == "jump";
  return (p.rapid || move == "feed") && lineWord == "line" && toolWord == "tool" &&
         (p.jump || jump.empty());
}

Expected ReadExpected(const fs::path& file) {
  Expected expected;
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    if (line == "display inch" || line == "display mm") {
      expected.metric = line == "display mm";
    } else if (line.rfind("tolerance ", 0) == 0) {
      expected.tolerance = std::stod(line.substr(10));
    } else if (line.rfind("count ", 0) == 0) {
      expected.count = std::stoi(line.substr(6));
    } else {
      ExpectedPoint point;
      if (ReadPoint(line, point)) {
        expected.points.push_back(point);
      } else {
        ADD_FAILURE() << file << ": " << line;
      }
    }
  }
  return expected;
}

// The table as it came out, beside the expected one and in its form.
void LeaveActual(const fs::path& folder) {
  std::ofstream out(folder / "expected.txt.new");
  out << "count " << path.count << "\n";
  for (int i = 0; i < path.count; ++i) {
    const MotionPoint& p = path.points[i];
    char line[200];
    std::snprintf(line, sizeof line, "%d  %.17g %.17g %.17g  %s  line %d  tool %d%s\n", i, p.x, p.y,
                  p.z, p.rapid ? "rapid" : "feed", p.sourceLine, p.tool, p.jump ? "  jump" : "");
    out << line;
  }
}

void CheckCase(const fs::path& folder) {
  SCOPED_TRACE(folder.filename().string());
  const Expected expected = ReadExpected(folder / "expected.txt");
  ASSERT_GE(expected.tolerance, 0);
  ASSERT_GE(expected.points.size(), 5u);
  ExtractToolpath(support::Wide(support::ReadRaw(folder / "program.nc")), expected.metric);
  EXPECT_EQ(path.count, expected.count);
  for (const ExpectedPoint& wanted : expected.points) {
    SCOPED_TRACE("point " + std::to_string(wanted.index));
    ASSERT_LT(wanted.index, path.count);
    const MotionPoint& p = path.points[wanted.index];
    EXPECT_NEAR(p.x, wanted.x, expected.tolerance);
    EXPECT_NEAR(p.y, wanted.y, expected.tolerance);
    EXPECT_NEAR(p.z, wanted.z, expected.tolerance);
    EXPECT_EQ(p.rapid, wanted.rapid);
    EXPECT_EQ(p.jump, wanted.jump);
    EXPECT_EQ(p.sourceLine, wanted.line);
    EXPECT_EQ(p.tool, wanted.tool);
  }
}

using PathGolden = SimulatorTest;

TEST_F(PathGolden, ProgramsGiveThePointsWorkedOutByHand) {
  int cases = 0;
  bool failedBefore = HasFailure();
  for (const auto& entry :
       fs::directory_iterator(fs::path(support::SourceDir()) / "tests/golden/path")) {
    if (!entry.is_directory()) continue;
    ++cases;
    CheckCase(entry.path());
    if (HasFailure() && !failedBefore) LeaveActual(entry.path());
    failedBefore = HasFailure();
  }
  EXPECT_GE(cases, 7);
}

}  // namespace
}  // namespace morva
