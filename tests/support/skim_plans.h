// Plans of a guided skim and their code, for tests.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "skim/geometry/skim_code.h"
#include "skim/model/plan.h"
#include "skim/model/plan_check.h"

namespace support {

// Two inches by one, two passes of 0.125, tool 5, rows 0.6 apart.
inline morva::SkimPlan SmallSkim() {
  morva::SkimPlan plan;
  plan.xMax = 2;
  plan.yMax = 1;
  plan.passCount = 2;
  plan.tool = 5;
  return plan;
}

inline morva::SketchObject SkimLine(double x, double y, double length, double angle) {
  return {.type = morva::kTypeLine, .x = x, .y = y, .size = length, .angle = angle};
}

// A plan that follows `count` lines of one unit beside each other.
inline morva::SkimPlan DrawnSkim(int count) {
  morva::SkimPlan plan = SmallSkim();
  plan.strategy = morva::kSkimCustom;
  for (int i = 0; i < count; ++i) plan.centerline.segments[i] = SkimLine(0, 0.01 * i, 1, 0);
  plan.centerline.count = count;
  return plan;
}

inline std::u16string SkimCode(const morva::SkimPlan& plan) {
  morva::CodeWriter out;
  return morva::BuildSkimProgram(plan, out) && !out.full ? out.text : u"(refused)";
}

// Why a plan is refused, empty for one that passes.
inline std::u16string FaultOfSkim(const morva::SkimPlan& plan) {
  const char16_t* message = u"";
  return morva::ValidateSkimPlan(plan, message) ? u"" : message;
}

inline std::u16string WithCrLf(std::u16string_view text) {
  std::u16string all;
  for (const char16_t c : text) {
    if (c == u'\n') all += u'\r';
    all += c;
  }
  return all;
}

// What stands before each CR LF.
inline std::vector<std::u16string> LinesOf(std::u16string_view text) {
  std::vector<std::u16string> lines;
  while (!text.empty()) {
    const std::size_t end = text.find(u"\r\n");
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end == text.npos ? text.size() : end + 2);
  }
  return lines;
}

}  // namespace support
