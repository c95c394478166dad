#include "documents/generated_code.h"

#include "documents/feature_blocks.h"

namespace morva {

namespace {

CodeRestorer restorers[kFeatureKinds];

bool IsKind(std::int32_t kind) { return kind >= 0 && kind < kFeatureKinds; }

}  // namespace

bool IsGeneratedCode(const FeatureSettings& record, std::u16string_view code) {
  if (CodeHash(code) == record.codeHash) return true;
  if (!IsKind(record.kind) || !restorers[record.kind]) return false;
  std::u16string restored(code);
  restorers[record.kind](record, restored);
  return CodeHash(restored) == record.codeHash;
}

void SetCodeRestorer(int kind, CodeRestorer restorer) {
  if (IsKind(kind)) restorers[kind] = restorer;
}

void ResetCodeRestorers() {
  for (CodeRestorer& restorer : restorers) restorer = nullptr;
}

}  // namespace morva
