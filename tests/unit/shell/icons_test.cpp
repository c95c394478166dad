#include "shell/icons.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <sstream>
#include <string>

#include "app/app_state.h"
#include "shell/theme.h"

namespace morva {
namespace {

TEST(Icons, DrawEveryIdDifferently) {
  std::set<std::string> seen;
  for (int icon = 0; icon < kIconCount; ++icon) {
    EXPECT_GT(std::strlen(IconDrawing(icon)), 0u) << icon;
    EXPECT_TRUE(seen.insert(IconDrawing(icon)).second) << icon;
  }
  EXPECT_EQ(seen.size(), 42u);
}

TEST(Icons, AnswerNothingOutsideTheTable) {
  EXPECT_STREQ(IconDrawing(-1), "");
  EXPECT_STREQ(IconDrawing(42), "");
}

// The drawings are read here by the library's stream, not by the drawing routine.
TEST(Icons, StayOnTheGridAndAreWellFormed) {
  for (int icon = 0; icon < kIconCount; ++icon) {
    std::istringstream in(IconDrawing(icon));
    char kind = 0;
    while (in >> kind) {
      ASSERT_TRUE(std::strchr("lcfod", kind)) << icon << " " << kind;
      int count = 0;
      double value = 0;
      while (in >> std::ws && std::isdigit(in.peek()) && in >> value) {
        EXPECT_GE(value, 0) << icon;
        EXPECT_LE(value, 24) << icon;
        ++count;
      }
      if (kind == 'o') {
        EXPECT_EQ(count, 4) << icon;
      } else if (kind == 'd') {
        EXPECT_EQ(count, 3) << icon;
      } else {
        EXPECT_EQ(count % 2, 0) << icon;
        EXPECT_GE(count, kind == 'l' ? 4 : 6) << icon;
        EXPECT_LE(count, 48) << icon;
      }
    }
  }
}

TEST(Icons, StandForTheModesAsTold) {
  EXPECT_EQ(ModeIcon(kModeHome), 9);
  EXPECT_EQ(ModeIcon(kModeWizard), 12);
  EXPECT_EQ(ModeIcon(kModeTools), 14);
  EXPECT_EQ(ModeIcon(kModeCodeIndex), 16);
  EXPECT_EQ(ModeIcon(kModeMacros), 15);
  EXPECT_EQ(ModeIcon(kModeShapes), 13);
  for (int mode : {6, 7, 8, 10, 11, 15, -1, 99}) EXPECT_EQ(ModeIcon(mode), 18) << mode;
  EXPECT_EQ(ModeIcon(kModeSimulator), 17);
  EXPECT_EQ(ModeIcon(kModeFind), 7);
  EXPECT_EQ(ModeIcon(kModeCadItem), 10);
  EXPECT_EQ(ModeIcon(kModePlateItem), 11);
}

}  // namespace
}  // namespace morva
