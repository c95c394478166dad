// Blocks of shapes and patterns: a record that the scan accepts opens its builder, or is refused
// with words; what the form then says is stored, opened and stored again as the same record, and
// what it inserts is found again.
#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "builders/shapes/pattern_builders.h"
#include "builders/shapes/shape_panel.h"
#include "documents/builder.h"
#include "documents/feature_blocks.h"
#include "documents/insertion.h"
#include "fuzz/fuzz.h"
#include "fuzz/home.h"
#include "library/shapes.h"
#include "platform/editor.h"
#include "shell/start_up.h"

namespace {

using namespace morva;
using fuzz::Check;

const Builder& BuilderOf(int kind) {
  if (kind == kKindCircular) return kCircularBuilder;
  return kind == kKindRectangular ? kGridBuilder : kShapeBuilder;
}

// Numbers of a form come back from their text, to the last of its six decimals.
bool SameRecord(FeatureSettings one, const FeatureSettings& other) {
  for (int i = 0; i < kSettingsValues; ++i) {
    if (!(std::fabs(one.values[i] - other.values[i]) <= 1e-6)) return false;
    one.values[i] = other.values[i];
  }
  unsigned char bytes[kSettingsBytes];
  unsigned char others[kSettingsBytes];
  WriteSettings(one, bytes);
  WriteSettings(other, others);
  return std::equal(bytes, bytes + kSettingsBytes, others);
}

// As opening a block does: the list row of a shape that the record holds itself.
bool Resolve(FeatureSettings& record) {
  if (record.a != -1) return true;
  const int index = RecoverProjectShape(record);
  record.a = index + (record.kind == kKindShape ? 7 : 6);
  return index >= 0;
}

void Run(FeatureSettings& record) {
  const Builder& builder = BuilderOf(record.kind);
  if (!Resolve(record)) return;
  Check(OpenBuilder(builder, record), "an accepted record opens");
  const auto first = std::make_unique<FeatureSettings>();
  if (!StoreBuilder(builder, *first)) return;  // a shape that a record cannot hold
  FeatureSettings again = *first;
  Check(Resolve(again), "its shape stands in the library");
  Check(OpenBuilder(builder, again), "what was stored opens");
  const auto second = std::make_unique<FeatureSettings>();
  Check(StoreBuilder(builder, *second), "and is stored again");
  Check(SameRecord(*first, *second), "as the same record");
  SetDestinationPicker(nullptr);
  if (!InsertFromBuilder(builder)) return;
  ScanProgramText(platform::EditorText(kIdEditor));
  const auto* rows = features.rows;
  Check(std::any_of(rows, rows + features.count,
                    [&](const FeatureRecord& row) { return row.settings.kind == builder.kind; }),
        "its block is found again");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < kSettingsHeadBytes) return 0;
  const auto record = std::make_unique<FeatureSettings>();
  std::vector<std::uint8_t> bytes(data, data + std::min<std::size_t>(size, kSettingsBytes));
  // Kinds 1 to 3 with a length that fits: other records are another target's.
  const std::uint8_t head[] = {3, 0, 0, 0, static_cast<std::uint8_t>(1 + bytes[4] % 3), 0, 0, 0};
  std::copy(std::begin(head), std::end(head), bytes.begin());
  bytes[24] = static_cast<std::uint8_t>(bytes[24] % (kMaxShapeObjects + 2));
  bytes[25] = bytes[26] = bytes[27] = 0;
  bytes.resize(static_cast<std::size_t>(kSettingsHeadBytes + kItemBytes * bytes[24]), 0);
  ReadSettings(bytes.data(), bytes.size(), *record);
  if (!ValidateSettings(*record, bytes.size())) return 0;
  const fuzz::Home home;
  Check(StartApplication() == 0, "the application starts");
  Run(*record);
  ResetApplication();
  return 0;
}
