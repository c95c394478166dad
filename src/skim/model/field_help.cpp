#include "skim/model/field_help.h"

#include "skim/model/plan_measures.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr const char16_t* kCutPlane = u"Resulting cut plane";

const char16_t* HintOf(int field) {
  switch (field) {
    case kSkimDiameter:
      return u"Cutter outside diameter";
    case kSkimStepover:
      return u"Next row / stepover distance";
    case kSkimRpm:
      return u"Spindle RPM; geometry size stays fixed";
    case kSkimFeed:
      return u"XY cutting feed per minute";
    case kSkimPlunge:
      return u"Vertical G01 plunge";
    case kSkimZTop:
      return u"Tool tip on starting surface Z";
    case kSkimDepthPerPass:
    case kSkimTotalDepth:
    case kSkimPassCount:
      return kCutPlane;
    case kSkimClearance:
      return u"Rapid retract plane";
    case kSkimEntry:
    case kSkimExit:
      return SkimRow(field).label;
    default:
      return u"";
  }
}

}  // namespace

SkimMarker SkimFieldMarker(const SkimPlan& plan, int field) {
  SkimMarker marker{plan.xMin, plan.yMin, plan.zTop};
  switch (field) {
    case kSkimXMax:
      marker.x = plan.xMax;
      break;
    case kSkimYMax:
      marker.y = plan.yMax;
      break;
    case kSkimStepover:
      marker.y = plan.yMin + SkimStep(plan);
      break;
    case kSkimPlunge:
    case kSkimDepthPerPass:
      marker.z = plan.zTop - plan.depthPerPass;
      break;
    case kSkimTotalDepth:
      marker.z = plan.zTop - plan.totalDepth;
      break;
    case kSkimPassCount:
      marker.z = plan.zTop - plan.passCount * plan.depthPerPass;
      break;
    case kSkimClearance:
      marker.z = SkimSafeZ(plan);
      break;
    case kSkimEntry:
      marker.x = SkimEntryX(plan);
      break;
    case kSkimExit:
      marker.x = SkimExitX(plan);
      break;
    default:
      break;
  }
  return marker;
}

std::u16string SkimFieldHelp(const SkimPlan& plan, int field, std::u16string_view text) {
  std::u16string line = SkimRow(field).label;
  line += u" = ";
  line += text;
  line += u" \u2014 ";
  line += HintOf(field);
  line += u"  Z ";
  line += FixedText(SkimFieldMarker(plan, field).z, kSkimDecimals);
  return line;
}

}  // namespace morva
