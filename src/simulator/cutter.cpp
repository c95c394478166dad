#include "simulator/cutter.h"

#include <algorithm>

#include "library/units.h"
#include "simulator/shown_path.h"

namespace morva {

namespace {

DemoCutter demo;
bool demoStands = false;

double DisplayUnits() { return UnitsMetric() ? kMmPerInch : 1.0; }

bool DemoIsAsked() { return demoStands && ExampleIsShown(); }

Cutter OfDemo() {
  const double unit = DisplayUnits();
  return {0, demo.shape, demo.diameter * unit, demo.fluteLength * unit, demo.overallLength * unit};
}

Cutter OfRecord(const ToolRecord& tool) {
  const double unit = DisplayUnits();
  return {tool.number, ShapeOfTool(tool.type), tool.diameter * unit, tool.stickout * unit,
          tool.gaugeLength * unit};
}

}  // namespace

void ReadCutters(CutterTable& out) {
  out.count = 0;
  if (DemoIsAsked()) out.rows[out.count++] = OfDemo();
  const int tools = std::clamp(toolLibrary.count, 0, kMaxTools);
  for (int i = 0; i < tools; ++i) out.rows[out.count++] = OfRecord(toolLibrary.tools[i]);
}

bool SameCutters(const CutterTable& a, const CutterTable& b) {
  return a.count == b.count && std::equal(a.rows, a.rows + a.count, b.rows);
}

const Cutter* FindCutter(const CutterTable& cutters, std::int32_t number) {
  for (std::int32_t i = 0; i < cutters.count; ++i) {
    if (cutters.rows[i].tool == number) return &cutters.rows[i];
  }
  return nullptr;
}

bool CutterOfTool(std::int32_t number, Cutter& out) {
  CutterTable cutters;
  ReadCutters(cutters);
  const Cutter* const cutter = FindCutter(cutters, number);
  if (cutter) out = *cutter;
  return cutter != nullptr;
}

void StandDemoCutter(const DemoCutter& cutter) {
  demo = cutter;
  demoStands = true;
}

void RemoveDemoCutter() { demoStands = false; }

}  // namespace morva
