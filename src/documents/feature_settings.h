// FeatureSettings: the record behind a block's DATA lines, in the companions and in memory.
//
// Little-endian, 160 bytes plus 48 per item, written and read field by field. The layout is a
// file format of this program.
#pragma once

#include <cstddef>
#include <cstdint>

#include "app/limits.h"

namespace morva {

inline constexpr int kSettingsHeadBytes = 160;
inline constexpr int kItemBytes = 48;
inline constexpr int kSettingsValues = 16;
inline constexpr int kSettingsChoices = 3;           // a, b and c
inline constexpr std::int32_t kSettingsVersion = 3;  // as written; 1 and 2 are still read
inline constexpr int kSettingsBytes = kSettingsHeadBytes + kMaxItems * kItemBytes;  // 4768

enum FeatureKind : std::int32_t {
  kKindLegacy = 0,
  kKindShape = 1,
  kKindCircular = 2,
  kKindRectangular = 3,
  kKindSketch = 4,
  kKindPlate = 5,
  kKindSkim = 6,
  kKindUserCode = 7,
  kKindEnd
};

inline constexpr int kFeatureKinds = kKindEnd;  // for tables by kind

// Places in a record's values that others than the builder of the kind read.
inline constexpr int kSketchThickness = 15;
inline constexpr int kPlateDepth = 10;
inline constexpr int kPlateThickness = 13;
inline constexpr int kPlateOutlineItems =
    14;                                   // the first items, of a custom outline; a whole number
inline constexpr int kPlateUnnamed = 15;  // 1 until the plate has a name, then 0
inline constexpr int kSkimEdges = 0;      // the stock's least X, least Y, most X, most Y
inline constexpr int kSkimSurface = 9;    // Z before the first pass
// Of a skim's first item: its p2 is the stock's thickness, its p3 the strategy. This one covers the
// circle within the edges.
inline constexpr std::int32_t kSkimRoundStrategy = 3;

struct FeatureItem {
  std::int32_t type = 0;  // 0 to 3 in version 1, 0 to 5 in versions 2 and 3
  std::int32_t tag = 0;   // identity; version 3 only
  double p0 = 0;
  double p1 = 0;
  double p2 = 0;  // not negative
  double p3 = 0;  // not negative
  double p4 = 0;
};

struct FeatureSettings {
  std::int32_t version = 0;
  std::int32_t kind = 0;
  std::int32_t metric = 0;
  std::int32_t a = 0;
  std::int32_t b = 0;
  std::int32_t c = 0;
  std::int32_t itemCount = 0;
  std::uint32_t codeHash = 0;
  double values[kSettingsValues] = {};
  FeatureItem items[kMaxItems];
};
static_assert(sizeof(FeatureItem) == kItemBytes);
static_assert(sizeof(FeatureSettings) == kSettingsBytes);

// Bytes of the record with its items.
inline int SettingsLength(const FeatureSettings& s) {
  return kSettingsHeadBytes + kItemBytes * s.itemCount;
}

// Whether a record of `length` bytes is one of ours; every field is tested, NaN fails.
bool ValidateSettings(const FeatureSettings& record, std::size_t length);
// Always kSettingsBytes bytes, unused items zero.
void WriteSettings(const FeatureSettings& record, unsigned char* bytes);
// Fills the record from up to kSettingsBytes bytes; what is missing is zero. No checks. An
// itemCount beyond the table is kept for ValidateSettings to refuse.
void ReadSettings(const unsigned char* bytes, std::size_t length, FeatureSettings& record);
// Records below version 3 carry no tags: zeroes them.
void DropOldTags(FeatureSettings& record);
// The words of the feature list for a block without a name; "Unknown" out of 1 to 7.
const char16_t* KindWords(std::int32_t kind);

}  // namespace morva
