#include "shell/icons.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <sstream>
#include <string>

namespace morva {
namespace {

TEST(Icons, DrawEveryIdDifferently) {
  std::set<std::string> seen;
  for (int icon = 0; icon < kIconCount; ++icon) {
    EXPECT_GT(std::strlen(IconDrawing(icon)), 0u) << icon;
    EXPECT_TRUE(seen.insert(IconDrawing(icon)).second) << icon;
  }
  EXPECT_EQ(seen.size(), 71u);
}

TEST(Icons, AnswerNothingOutsideTheTable) {
  EXPECT_STREQ(IconDrawing(-1), "");
  EXPECT_STREQ(IconDrawing(71), "");
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

}  // namespace
}  // namespace morva
