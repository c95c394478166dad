// What the tests of this room start from, and how they say what they expect.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "app/app_state.h"
#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "documents/program_tabs.h"
#include "simulator/motion_path.h"
#include "simulator/toolpath.h"
#include "support/stage.h"

namespace morva {

class SimulatorTest : public support::Stage {
 protected:
  SimulatorTest() { Clear(); }
  ~SimulatorTest() override { Clear(); }

  static void Clear() {
    FreeDisabledCode(tabs[0].disabledCode);
    tabs[0] = ProgramTab{};
    ResetFeatures();
    editLink = EditLink{};
    ResetSimulator();
  }

  // One active program; its record holds what isolates and hides.
  static ProgramTab& OneTab() {
    app.activeTab = 0;
    app.tabCount = 1;
    return tabs[0];
  }

  static void AddFeature(std::int32_t id, std::size_t start, std::size_t end) {
    FeatureRecord& row = features.rows[features.count++];
    row = FeatureRecord{};
    row.id = id;
    row.start = static_cast<std::int32_t>(start);
    row.end = static_cast<std::int32_t>(end);
  }

  // Points apart by one inch from line 0 on, without a line for each.
  static std::u16string Moves(int count) {
    std::u16string text;
    for (int i = 0; i < count; ++i) text += i % 2 == 0 ? u"G1 X1\r\n" : u"X2\r\n";
    return text;
  }
};

inline const MotionPoint& LastPoint() { return path.points[path.count - 1]; }

inline void ExpectAt(const MotionPoint& point, double x, double y, double z) {
  EXPECT_DOUBLE_EQ(point.x, x);
  EXPECT_DOUBLE_EQ(point.y, y);
  EXPECT_DOUBLE_EQ(point.z, z);
}

}  // namespace morva
