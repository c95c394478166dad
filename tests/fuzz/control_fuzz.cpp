// Any text through the reader of the machine's motion: it ends, its tables hold, its lines are
// lines of the text, time never runs back.
#include <cmath>
#include <string>
#include <vector>

#include "fuzz/fuzz.h"
#include "simulator/control_reader.h"
#include "simulator/control_stock.h"

namespace {

using namespace morva;
using fuzz::Check;

std::vector<MotionPoint> points(kMaxControlPoints);
std::vector<MotionPoint> programmedPoints(kMaxControlPoints);
std::vector<double> seconds(kMaxControlPoints);
MotionPath path{.points = points.data()};
MotionPath programmed{.points = programmedPoints.data()};
ControlTrack track{.path = path, .programmed = programmed, .seconds = seconds.data()};

std::int32_t LinesOf(const std::u16string& text) {
  std::int32_t lines = 1;
  for (const char16_t c : text) lines += c == u'\n' || c == u'\r';
  return lines;
}

void CheckPath(const MotionPath& of, std::int32_t lines) {
  Check(of.count >= 0 && of.count <= kMaxControlPoints, "the points stay within their table");
  for (std::int32_t i = 0; i < of.count; ++i) {
    const MotionPoint& point = of.points[i];
    Check(point.sourceLine >= 0 && point.sourceLine < lines, "a point's line is one of the text");
  }
}

void CheckTimes() {
  for (std::int32_t i = 1; i < track.path.count; ++i) {
    const bool known = std::isfinite(seconds[static_cast<std::size_t>(i)]);
    const bool later =
        seconds[static_cast<std::size_t>(i)] >= seconds[static_cast<std::size_t>(i - 1)] - 1e-9;
    Check(!known || later, "time does not run back");
  }
}

void CheckFindings(std::int32_t lines) {
  const Findings& findings = track.findings;
  Check(findings.count <= kMaxFindings, "the findings stay within their table");
  for (std::int32_t i = 0; i < findings.count; ++i) {
    Check(findings.found[i].line >= 0 && findings.found[i].line <= lines,
          "a finding's line is one of the text");
    Check(!WordsOf(findings.found[i]).empty(), "a finding has words");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string text = fuzz::TextOf(data, size);
  const std::int32_t lines = LinesOf(text);
  ControlTable table;
  table.tools[1].diameter = 0.5;
  KnownStock stock;
  stock.box = {.shown = true, .minX = -1, .maxX = 2, .minY = -1, .maxY = 1.5, .bottom = -0.5};
  stock.box.depthSaid = true;
  stock.tools[stock.toolCount++] = {0, ToolShape::Flat, 0.25, ToolCut::Rim};
  stock.tools[stock.toolCount++] = {1, ToolShape::Drill, 0.125, ToolCut::Centre};
  for (const bool metric : {false, true}) {
    table.blockDelete = metric;
    stock.box.rounded = metric;
    ReadMachineMotion(track, text, {.metric = metric, .table = &table, .stock = &stock});
    CheckPath(track.path, lines);
    CheckPath(track.programmed, lines);
    CheckTimes();
    CheckFindings(lines);
  }
  return 0;
}
