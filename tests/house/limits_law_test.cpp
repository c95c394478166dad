// Law: a bound of a table or of a count stands where all bounds stand.
//
// The rule is in the names. kMax... bounds a count and stands in app/limits.h, or for the
// platforms, which lie below it, in platform/limits.h. A name with Most bounds a measure and may
// stay with its file, so it is never the size of an array and never compared with a count.

#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "house/sources.h"

namespace {

using namespace house;

bool DefinesAMax(const std::string& code) {
  static const std::regex pattern(R"(\bconstexpr\b[^=]*\bkMax[A-Z]\w*\s*=)");
  return std::regex_search(code, pattern);
}

bool BoundsACountByMost(const std::string& code) {
  static const std::regex size(R"(\[[^\]]*\bk[A-Za-z]*Most(?![a-z])\w*[^\]]*\])");
  static const std::regex most(R"(\bkMost[A-Z]\w*|\bkMost\b)");
  static const std::regex count(R"(\w*[cC]ount\b|\bsize\(\))");
  if (std::regex_search(code, size)) return true;
  return std::regex_search(code, most) && std::regex_search(code, count);
}

TEST(LimitsLaw, TellsABoundOfACountFromTheMostOfAMeasure) {
  EXPECT_TRUE(DefinesAMax("inline constexpr int kMaxTabs = 8;"));
  EXPECT_TRUE(DefinesAMax("  static constexpr std::size_t kMaxRows = 8;"));
  EXPECT_FALSE(DefinesAMax("constexpr double kMostZoom = 50;"));
  EXPECT_FALSE(DefinesAMax("constexpr int kRows = 2 * kMaxTabs;"));
  EXPECT_TRUE(BoundsACountByMost("  int rows[kMostRows];"));
  EXPECT_TRUE(BoundsACountByMost("  int rows[2 * kMostRows + 1];"));
  EXPECT_TRUE(BoundsACountByMost("  int rows[kRowsMost];"));
  EXPECT_TRUE(BoundsACountByMost("  if (rowCount < kMostRows) return;"));
  EXPECT_TRUE(BoundsACountByMost("  while (list.count != kMostRows) {"));
  EXPECT_TRUE(BoundsACountByMost("  if (found.size() > kMost) return;"));
  EXPECT_FALSE(BoundsACountByMost("  zoom = std::min(zoom, kMostZoom);"));
  EXPECT_FALSE(BoundsACountByMost("  if (countdown < kMostSeconds) return;"));
}

TEST(LimitsLaw, EveryMaxStandsAmongTheLimits) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    const std::string name = NameInSource(path);
    if (name == "app/limits.h" || name == "platform/limits.h") continue;
    for (const std::string& line : Lines(CodeOf(ReadText(path)))) {
      EXPECT_FALSE(DefinesAMax(line)) << name << ": " << line;
    }
  }
}

TEST(LimitsLaw, NoMostBoundsATableOrACount) {
  for (const fs::path& path : SourcesBelow(kSource / "src")) {
    for (const std::string& line : Lines(CodeOf(ReadText(path)))) {
      EXPECT_FALSE(BoundsACountByMost(line)) << NameInSource(path) << ": " << line;
    }
  }
}

// tests/limits says the same of app/limits.h.
TEST(LimitsLaw, EveryLimitOfThePlatformsHasATest) {
  std::string tests;
  for (const fs::path& path : SourcesBelow(kSource / "tests")) {
    if (Below(path, "tests/house")) continue;
    tests += ReadText(path);
  }
  static const std::regex name(R"(\bkMax[A-Z]\w*)");
  int found = 0;
  for (const std::string& line : Lines(CodeOf(ReadText(kSource / "src/platform/limits.h")))) {
    std::smatch match;
    if (!std::regex_search(line, match, name)) continue;
    ++found;
    EXPECT_NE(tests.find("platform::" + match.str()), std::string::npos) << match.str();
  }
  EXPECT_GE(found, 5);
}

}  // namespace
