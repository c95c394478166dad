// Playing asks for no memory: not for the tick, not for the segments, not for the cut surface.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>

#include "library/tools.h"
#include "simulator/cut_surface.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/tool_model.h"
#include "simulator/toolpath.h"
#include "unit/simulator/view_fixture.h"

namespace {
int allocationsSeen = 0;
}  // namespace

void* operator new(std::size_t size) {
  ++allocationsSeen;
  if (void* const memory = std::malloc(size > 0 ? size : 1)) return memory;
  std::abort();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return operator new(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace morva {
namespace {

class TickMemory : public ViewTest {
 protected:
  TickMemory() {
    ResetToolLibrary();
    ToolRecord tool;
    tool.number = 1;
    tool.diameter = 0.5;
    AppendTool(tool);
  }
  ~TickMemory() override { ResetToolLibrary(); }
};

TEST_F(TickMemory, ATickAndItsSegmentsAndItsSurfaceAskForNone) {
  std::u16string text = u"T1 G1 Z-0.1\n";
  for (int i = 0; i < 200; ++i) text += i % 2 ? u"X4 Y1\n" : u"X1 Y2\n";
  ExtractPathOf(PathOwner::Builder, text, false);
  SetStockOf(PathOwner::Builder, {true, 0, 5, 0, 3, 0, -1, 1});
  ShowPathOf(PathOwner::Builder);
  LoopFromStart(9);
  PlayTick();
  const int before = allocationsSeen;
  std::int32_t stamped = 0;
  bool modelShown = false;
  for (int i = 0; i < 20; ++i) {
    PlayTick();
    VisibleSegments(kClient);
    const CutSurface* const surface = CutSurfaceNow();
    stamped = surface ? surface->stamped : 0;
    modelShown = ToolModelNow().shown;
  }
  EXPECT_EQ(allocationsSeen, before);
  EXPECT_TRUE(modelShown);
  EXPECT_EQ(stamped, 90);  // 21 ticks of 64/15 points are 89.6
  const std::string longOne(100, 'x');
  EXPECT_GT(allocationsSeen, before);  // the count counts
}

}  // namespace
}  // namespace morva
