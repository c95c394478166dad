#include "skim/geometry/skim_matrix.h"

#include <algorithm>
#include <cstdint>

#include "skim/model/plan_check.h"
#include "skim/model/plan_measures.h"
#include "text/codetext.h"

namespace morva {

namespace {

// Where the columns of the pass table begin, in characters.
constexpr std::size_t kCutColumn = 8;
constexpr std::size_t kRemovedColumn = 18;
constexpr std::size_t kTargetColumn = 32;

// One line under way.
struct Words {
  std::u16string text;
  Words& Say(std::u16string_view words) {
    text += words;
    return *this;
  }
  Words& Number(double value) {
    text += FixedText(value, kSkimDecimals);
    return *this;
  }
  Words& Whole(std::int64_t value) {
    text += IntegerText(value);
    return *this;
  }
  // At least one blank, so that long numbers do not run into each other.
  Words& Column(std::size_t column) {
    text.append(std::max<std::size_t>(column, text.size() + 1) - text.size(), u' ');
    return *this;
  }
};

void AddLine(std::u16string& all, std::u16string_view line) {
  if (!all.empty()) all += u"\r\n";
  all += line;
}
void AddLine(std::u16string& all, const Words& line) { AddLine(all, line.text); }

void AddStrategy(std::u16string& all, const SkimPlan& plan) {
  AddLine(all, plan.metric ? u"LIVE SETTING -> CODE MATRIX (mm)"
                           : u"LIVE SETTING -> CODE MATRIX (inch)");
  AddLine(all, SkimStrategyName(plan.strategy));
  if (plan.strategy == kSkimSpiral) {
    AddLine(all, Words()
                     .Say(u"Circular diameter ")
                     .Number(2 * CircleOfSkim(plan).radius)
                     .Say(u" / radial step per turn ")
                     .Number(SkimStep(plan)));
    AddLine(all, u"Inscribed circle only; rectangle corners are not faced.");
    AddLine(all, u"Outer cleanup circle then CCW spiral to center; G01 segments.");
  }
  if (plan.strategy == kSkimRightToLeft || plan.strategy == kSkimLeftToRight) {
    AddLine(all, u"Each row: G00 Z safe -> G00 XY start -> G01 Z plunge.");
  }
}

void AddPlaces(std::u16string& all, const SkimPlan& plan) {
  AddLine(all, Words().Say(u"Tool -> T").Whole(plan.tool).Say(u" M06 / G43 H").Whole(plan.tool));
  AddLine(all, Words().Say(u"Work offset -> G").Whole(plan.workOffset));
  AddLine(all, Words().Say(u"Stock X -> ").Number(plan.xMin).Say(u" to ").Number(plan.xMax));
  AddLine(all, Words().Say(u"Stock Y -> ").Number(plan.yMin).Say(u" to ").Number(plan.yMax));
  AddLine(all, Words()
                   .Say(u"Cutter diameter ")
                   .Number(plan.diameter)
                   .Say(u" -> entry ")
                   .Number(plan.entry)
                   .Say(u" / exit ")
                   .Number(plan.exit));
  if (plan.strategy != kSkimSpiral) {
    AddLine(
        all,
        Words().Say(u"X travel -> ").Number(SkimEntryX(plan)).Say(u" to ").Number(SkimExitX(plan)));
  }
}

void AddRates(std::u16string& all, const SkimPlan& plan) {
  AddLine(all, Words()
                   .Say(u"Stepover ")
                   .Number(plan.stepoverPercent)
                   .Say(u"% -> Y step ")
                   .Number(SkimStep(plan))
                   .Say(u" / rows ")
                   .Number(RowEstimate(plan)));
  AddLine(all,
          Words().Say(u"Spindle -> S").Whole(static_cast<std::int64_t>(plan.rpm)).Say(u" M03"));
  AddLine(all, Words().Say(u"Cut feed -> G01 X/Y F").Number(plan.feed));
  AddLine(all, Words().Say(u"Plunge -> G01 Z... F").Number(plan.plunge));
}

void AddDepths(std::u16string& all, const SkimPlan& plan) {
  AddLine(all, Words()
                   .Say(u"Surface Z -> ")
                   .Number(plan.zTop)
                   .Say(u"; pass increment ")
                   .Number(plan.depthPerPass));
  AddLine(
      all,
      Words().Say(u"Clearance ").Number(plan.clearance).Say(u" -> G00 Z").Number(SkimSafeZ(plan)));
  AddLine(all, u"Retract Z first, then G00 X0 Y0.");
  Words mode;
  mode.Say(plan.useTotalDepth ? u"Total-removal mode" : u"Pass-count mode");
  mode.Say(u" -> passes ").Whole(PassCount(plan));
  if (plan.useTotalDepth) mode.Say(u" / removal ").Number(SkimTotal(plan));
  AddLine(all, mode);
}

void AddPasses(std::u16string& all, const SkimPlan& plan) {
  AddLine(all, u"PASS    CUT       REMOVED       TARGET Z");
  const int passes = PassCount(plan);
  for (int pass = 1; pass <= passes; ++pass) {
    const double removed = SkimRemoved(plan, pass);
    AddLine(all, Words()
                     .Whole(pass)
                     .Column(kCutColumn)
                     .Number(removed - SkimRemoved(plan, pass - 1))
                     .Column(kRemovedColumn)
                     .Number(removed)
                     .Column(kTargetColumn)
                     .Number(plan.zTop - removed)
                     .Say(pass < passes ? u"  M00" : u"  END"));
  }
}

void AddNotes(std::u16string& all, const SkimPlan& plan) {
  AddLine(all, u"M00: Cycle Start continues the next pass.");
  Words width;
  width.Say(u"Repeated coverage width ").Number(SkimStep(plan));
  if (plan.strategy == kSkimSpiral) {
    width.Say(u" / radial step inward");
  } else if (plan.strategy != kSkimCustom) {
    width.Say(u" / stepover direction +Y");
  }
  AddLine(all, width);
  AddLine(all, u"Cutter OD coverage is illustrative; not material removal.");
}

}  // namespace

std::u16string_view SkimMatrixInvalid() {
  return u"Complete valid numeric inputs to update the preview.\r\n"
         u"Check stock bounds, positive feeds/depths, stepover 0-100%, and the active pass plan.";
}

std::u16string SkimMatrixText(const SkimPlan& plan) {
  const char16_t* message = nullptr;
  if (!ValidateSkimPlan(plan, message)) return std::u16string(SkimMatrixInvalid());
  std::u16string all;
  AddStrategy(all, plan);
  AddPlaces(all, plan);
  AddRates(all, plan);
  AddDepths(all, plan);
  AddPasses(all, plan);
  AddNotes(all, plan);
  return all;
}

}  // namespace morva
