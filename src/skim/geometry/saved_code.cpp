#include "skim/geometry/saved_code.h"

#include <algorithm>

#include "documents/generated_code.h"
#include "skim/model/plan.h"
#include "skim/model/plan_record.h"
#include "text/codetext.h"

namespace morva {

void RestoreSkimCode(const FeatureSettings& record, std::u16string& code) {
  SkimPlan plan;
  if (!LoadSkimPlan(record, plan)) return;
  const std::u16string_view name = SkimStrategyName(plan.strategy);
  std::u16string saved(name);
  std::replace_if(
      saved.begin(), saved.end(), [](char16_t c) { return c >= kAscii; }, u'?');
  const std::size_t head = code.find(kSkimStrategyHead);
  if (head == code.npos) return;
  const std::size_t at = head + kSkimStrategyHead.size();
  if (code.compare(at, saved.size(), saved) == 0) code.replace(at, saved.size(), name);
}

void RegisterSkimCode() { SetCodeRestorer(kKindSkim, RestoreSkimCode); }

}  // namespace morva
