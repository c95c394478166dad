#include "app/limits.h"
#include "library/tools.h"
#include "simulator/cut_surface.h"
#include "simulator/shown_path.h"
#include "unit/simulator/view_fixture.h"

namespace morva {
namespace {

using SurfaceLimits = ViewTest;

TEST_F(SurfaceLimits, AMeshWithoutALevelStretchIsDrawnWhole) {
  static_assert(kMaxMeshSegments == 4704);
  ToolRecord tool;
  tool.number = 1;
  tool.diameter = 20;
  AppendTool(tool);
  stockEnvelope = {true, 0, 4, 0, 2, 0, -1, 1};
  // A ramp across the stock, by a cutter that is wider than it.
  Feed(-1, -1, -0.1).tool = 1;
  Feed(5, 3, -0.9).tool = 1;
  const std::vector<headless::DrawCall> mesh = Calls("PaintSegments", 0x577B93);
  ASSERT_EQ(mesh.size(), 1u);
  EXPECT_EQ((mesh[0].numbers.size() - 3) / 4, 4704u);
  ResetToolLibrary();
}

}  // namespace
}  // namespace morva
