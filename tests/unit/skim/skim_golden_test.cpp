// Whole codes of every strategy in both units. They were worked out by a second method: rows and
// depths as exact fractions, the spiral by complex numbers, and read over by hand.
//
// A case says the plan's fields that are no defaults, a line each, then "code" and the code with
// line feeds.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "platform/file.h"
#include "skim/model/plan.h"
#include "support/places.h"
#include "support/skim_plans.h"

namespace morva {
namespace {

namespace fs = std::filesystem;

const std::map<std::string, double SkimPlan::*> kNumbers = {
    {"xMin", &SkimPlan::xMin},
    {"yMin", &SkimPlan::yMin},
    {"xMax", &SkimPlan::xMax},
    {"yMax", &SkimPlan::yMax},
    {"diameter", &SkimPlan::diameter},
    {"stepoverPercent", &SkimPlan::stepoverPercent},
    {"rpm", &SkimPlan::rpm},
    {"feed", &SkimPlan::feed},
    {"plunge", &SkimPlan::plunge},
    {"zTop", &SkimPlan::zTop},
    {"depthPerPass", &SkimPlan::depthPerPass},
    {"totalDepth", &SkimPlan::totalDepth},
    {"passCount", &SkimPlan::passCount},
    {"clearance", &SkimPlan::clearance},
    {"entry", &SkimPlan::entry},
    {"exit", &SkimPlan::exit},
};
const std::map<std::string, std::int32_t SkimPlan::*> kIntegers = {
    {"tool", &SkimPlan::tool},
    {"workOffset", &SkimPlan::workOffset},
    {"strategy", &SkimPlan::strategy}};
const std::map<std::string, bool SkimPlan::*> kFlags = {
    {"metric", &SkimPlan::metric}, {"useTotalDepth", &SkimPlan::useTotalDepth}};

bool ReadField(const std::string& line, SkimPlan& plan) {
  std::istringstream in(line);
  std::string name;
  in >> name;
  if (kNumbers.count(name)) return static_cast<bool>(in >> plan.*kNumbers.at(name));
  if (kIntegers.count(name)) return static_cast<bool>(in >> plan.*kIntegers.at(name));
  if (kFlags.count(name)) return static_cast<bool>(in >> plan.*kFlags.at(name));
  SketchObject& segment = plan.centerline.segments[plan.centerline.count++];
  return name == "segment" && in >> segment.x >> segment.y >> segment.size >> segment.angle;
}

void TestCase(const fs::path& file, SkimPlan& plan) {
  std::ifstream in(file);
  std::string line;
  while (std::getline(in, line) && line != "code") {
    if (line[0] == '#') continue;
    ASSERT_TRUE(ReadField(line, plan)) << line;
  }
  const std::string code((std::istreambuf_iterator<char>(in)), {});
  EXPECT_EQ(support::SkimCode(plan), support::WithCrLf(platform::FromUtf8(code)));
}

TEST(SkimGolden, CodesOfAllStrategiesInBothUnits) {
  std::set<int> seen;
  for (const auto& entry :
       fs::directory_iterator(fs::path(support::SourceDir()) / "tests" / "golden" / "skim")) {
    SCOPED_TRACE(entry.path().filename().string());
    SkimPlan plan;
    TestCase(entry.path(), plan);
    seen.insert(2 * plan.strategy + (plan.metric ? 1 : 0));
  }
  EXPECT_EQ(seen.size(), 2u * kSkimStrategies);
}

}  // namespace
}  // namespace morva
