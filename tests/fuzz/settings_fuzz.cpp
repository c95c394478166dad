// Any bytes are read without harm; a record that is accepted comes back byte for byte, from its
// image and through a block in a program.
#include <memory>
#include <vector>

#include "documents/feature_blocks.h"
#include "fuzz/fuzz.h"

namespace {

using namespace morva;
using fuzz::Check;

// Whether nothing but tags differs: versions below 3 lose theirs.
bool SameBytes(const unsigned char* one, const unsigned char* other, bool withTags) {
  for (int i = 0; i < kSettingsBytes; ++i) {
    const bool tag = i >= kSettingsHeadBytes && (i - kSettingsHeadBytes) % kItemBytes / 4 == 1;
    if (one[i] != other[i] && (withTags || !tag)) return false;
  }
  return true;
}

void CheckRecord(const std::uint8_t* data, std::size_t size) {
  static const auto record = std::make_unique<FeatureSettings>();
  const std::size_t length = size < kSettingsBytes ? size : kSettingsBytes;
  ReadSettings(data, length, *record);
  KindWords(record->kind);
  if (!ValidateSettings(*record, size)) return;
  Check(size == length, "an accepted record fits its buffer");
  std::vector<unsigned char> given(data, data + size);
  given.resize(kSettingsBytes, 0);
  std::vector<unsigned char> written(kSettingsBytes, 0xAA);
  WriteSettings(*record, written.data());
  Check(given == written, "an accepted record is written as it was read");
  const std::u16string block = SettingsBlockText(7, u"N", *record, u"G0");
  ScanProgramText(block);
  Check(features.count == 1 && !features.rows[0].needsMarkers, "its block is found again");
  WriteSettings(features.rows[0].settings, written.data());
  Check(SameBytes(given.data(), written.data(), record->version >= 3), "with the same settings");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CheckRecord(data, size);
  // Most changed inputs have the wrong length for their item count: tried with the right one too.
  if (size < kSettingsHeadBytes || data[24] > kMaxItems) return 0;
  std::vector<std::uint8_t> fitted(data, data + size);
  fitted[25] = fitted[26] = fitted[27] = 0;
  fitted.resize(static_cast<std::size_t>(kSettingsHeadBytes + kItemBytes * data[24]), 0);
  CheckRecord(fitted.data(), fitted.size());
  return 0;
}
