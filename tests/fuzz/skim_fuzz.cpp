// Any record and any texts of fields are read without harm. What passes the check gives code that
// fits into its room, whose record comes back, and that is known as its own once it was saved.
//
// Input: a byte that picks the field, its text up to a zero byte, then the bytes of a record.
#include <cstring>
#include <memory>
#include <string>

#include "documents/feature_blocks.h"
#include "documents/generated_code.h"
#include "fuzz/fuzz.h"
#include "skim/geometry/saved_code.h"
#include "skim/geometry/skim_code.h"
#include "skim/geometry/skim_matrix.h"
#include "skim/model/field_help.h"
#include "skim/model/plan_check.h"
#include "skim/model/plan_record.h"

namespace {

using namespace morva;
using fuzz::Check;

// Larger codes take too long for many runs.
constexpr std::size_t kLargestCode = 400000;

bool SamePlan(const SkimPlan& one, const SkimPlan& other) {
  for (int field = 0; field < kSkimFields; ++field) {
    if (SkimValue(one, field) != SkimValue(other, field)) return false;
  }
  return one.strategy == other.strategy && one.metric == other.metric &&
         one.useTotalDepth == other.useTotalDepth && one.stockThickness == other.stockThickness &&
         (one.strategy != kSkimCustom || one.centerline.count == other.centerline.count);
}

void CheckCode(const SkimPlan& plan, FeatureSettings& record) {
  CodeWriter out;
  Check(BuildSkimProgram(plan, out) && !out.full, "code of a plan that passes is whole");
  record.codeHash = CodeHash(out.text);
  for (char16_t& unit : out.text) unit = unit > 127 ? u'?' : unit;
  Check(IsGeneratedCode(record, out.text), "it is known once it was saved");
}

void CheckPlan(const SkimPlan& plan) {
  const char16_t* message = nullptr;
  const std::u16string matrix = SkimMatrixText(plan);
  if (!ValidateSkimPlan(plan, message)) {
    Check(message != nullptr && *message != 0, "a refusal has words");
    Check(matrix == SkimMatrixInvalid() && SkimProgramUnits(plan) == 0, "and nothing is shown");
    return;
  }
  static const auto record = std::make_unique<FeatureSettings>();
  StoreSkimPlan(plan, *record);
  Check(ValidateSettings(*record, static_cast<std::size_t>(SettingsLength(*record))),
        "a plan that passes can be stored");
  static const auto back = std::make_unique<SkimPlan>();
  Check(LoadSkimPlan(*record, *back) && SamePlan(plan, *back), "and comes back");
  for (int field = 0; field < kSkimFields; ++field) SkimFieldHelp(plan, field, u"1");
  if (SkimProgramUnits(plan) < kLargestCode) CheckCode(plan, *record);
}

// The plan with one field as it was typed.
void CheckField(const SkimPlan& plan, int field, const std::u16string& text) {
  SkimTexts texts = TextsOf(SkimPlan());
  texts.fields[field] = text;
  texts.strategy = plan.strategy;
  SkimPlan read = plan;
  SkimRefusal refusal;
  if (!ReadSkimFields(texts, read, refusal)) {
    Check(SamePlan(plan, read), "texts that do not read leave the plan");
    Check(refusal.field == field, "and the field is told");
    return;
  }
  Check(text.find_first_not_of(u"+-.0123456789 ") == text.npos, "a number has digits alone");
  CheckPlan(read);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  RegisterSkimCode();
  if (size == 0) return 0;
  const int field = data[0] % kSkimFields;
  const void* zero = std::memchr(data + 1, 0, size - 1);
  const auto* behind = zero ? static_cast<const std::uint8_t*>(zero) : data + size;
  const std::u16string text = fuzz::TextOf(data + 1, static_cast<std::size_t>(behind - (data + 1)));
  static const auto record = std::make_unique<FeatureSettings>();
  const std::size_t from = static_cast<std::size_t>(behind - data) + (zero ? 1 : 0);
  ReadSettings(data + from, size - from, *record);
  static const auto plan = std::make_unique<SkimPlan>();
  *plan = SkimPlan();
  record->kind = kKindSkim;
  if (record->itemCount >= 0 && record->itemCount <= kMaxItems &&
      ValidateSettings(*record, static_cast<std::size_t>(SettingsLength(*record)))) {
    Check(LoadSkimPlan(*record, *plan), "a record that is accepted is a plan");
    CheckPlan(*plan);
  }
  std::u16string code = text;
  RestoreSkimCode(*record, code);
  CheckField(*plan, field, text);
  return 0;
}
