// A run of the control over a text, and its points to compare.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/control_reader.h"
#include "simulator/control_stock.h"

namespace control_test {

using namespace morva;

// A track of its own, so that no run sees another's.
struct Track {
  std::vector<MotionPoint> points = std::vector<MotionPoint>(kMaxControlPoints);
  std::vector<MotionPoint> programmedPoints = std::vector<MotionPoint>(kMaxControlPoints);
  std::vector<double> seconds = std::vector<double>(kMaxControlPoints);
  MotionPath path{.points = points.data()};
  MotionPath programmed{.points = programmedPoints.data()};
  ControlTrack track{.path = path, .programmed = programmed, .seconds = seconds.data()};
};

inline Track& TheTrack() {
  static Track track;
  return track;
}

inline const ControlTrack& RunText(std::u16string_view text,
                                   const ReadMotionOptions& options = {}) {
  ReadMachineMotion(TheTrack().track, text, options);
  return TheTrack().track;
}

// What the comments of a program say of its stock and tools, lengths as in the program:
// "(STOCK -4 -3 4 3 0 -0.5)" from corner to corner, top and bottom, "ROUND STOCK" of a round one;
// "(TOOL 3 0.5 END MILL)".
inline KnownStock StockIn(const std::string& program) {
  KnownStock known;
  std::istringstream lines(program);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream in(line);
    std::string word;
    in >> word;
    known.box.rounded = known.box.rounded || word == "(ROUND";
    if (word == "(ROUND") in >> word;
    if (word == "(STOCK" || word == "STOCK") {
      StockEnvelope& box = known.box;
      in >> box.minX >> box.minY >> box.maxX >> box.maxY >> box.top >> box.bottom;
      box.shown = box.depthSaid = !in.fail();
    } else if (word == "(TOOL") {
      double diameter = 0;
      std::string type;
      StockTool& tool = known.tools[known.toolCount++];
      in >> tool.number >> diameter;
      std::getline(in, type, ')');
      const std::u16string wide(type.begin(), type.end());
      tool = {tool.number, ShapeOfTool(wide), diameter / 2, CutOfTool(wide)};
    }
  }
  return known;
}

// A point as a test writes it: where, and how the tool came there.
struct At {
  double x, y, z;
  bool rapid = false;
};

inline void ExpectPoints(const ControlTrack& track, const std::vector<At>& wanted) {
  ASSERT_EQ(static_cast<std::size_t>(track.path.count), wanted.size());
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const MotionPoint& point = track.path.points[i];
    EXPECT_NEAR(point.x, wanted[i].x, 1e-9) << "x of point " << i;
    EXPECT_NEAR(point.y, wanted[i].y, 1e-9) << "y of point " << i;
    EXPECT_NEAR(point.z, wanted[i].z, 1e-9) << "z of point " << i;
    EXPECT_EQ(point.rapid, wanted[i].rapid) << "rapid into point " << i;
  }
}

inline const MotionPoint& LastPoint(const ControlTrack& track) {
  return track.path.points[track.path.count - 1];
}

inline void ExpectEnd(const ControlTrack& track, double x, double y, double z) {
  ASSERT_GT(track.path.count, 0);
  EXPECT_NEAR(LastPoint(track).x, x, 1e-9);
  EXPECT_NEAR(LastPoint(track).y, y, 1e-9);
  EXPECT_NEAR(LastPoint(track).z, z, 1e-9);
}

// "BadWord 3, NoEnd 7": what was found, with 1-based lines, in order.
inline std::string Found(const ControlTrack& track) {
  std::string words;
  for (std::int32_t i = 0; i < track.findings.count; ++i) {
    const FoundLine& found = track.findings.found[i];
    if (!words.empty()) words += ", ";
    for (const char16_t* c = NameOf(found.kind); *c; ++c) words += static_cast<char>(*c);
    words += " " + std::to_string(found.line + 1);
  }
  return words;
}

}  // namespace control_test
