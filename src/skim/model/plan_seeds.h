// What a fresh skim takes over from the machining wizard and the tool library.
#pragma once

#include <string>

#include "skim/model/plan.h"

namespace morva {

// Texts of the machining wizard's fields, in the application's unit.
struct SkimSeeds {
  std::u16string tool = {};
  std::u16string workOffset = {};  // with or without its "G"
  std::u16string rpm = {};
  std::u16string feed = {};
  std::u16string safeZ = {};
  double diameter = 0;  // inches, of the library's tool; 0: it has none of this number
};

// Whether two sets of seeds give the same numbers, each in its unit.
bool SameSeeds(const SkimSeeds& a, bool aMetric, const SkimSeeds& b, bool bMetric);

// `plan` in the application's unit with what the seeds say: a text without a number gives tool 0,
// offset 54 and 1500 turns, and leaves feed and clearance as they are. The diameter is that of the
// first tool of this number in the library, if there is one. Nothing is checked.
SkimPlan SeededSkimPlan(const SkimPlan& plan, const SkimSeeds& seeds, bool metric);

}  // namespace morva
