// Companion files: ".cadmv" and ".platemv", the drawings and plates of a program.
//
// Fixed-size little-endian images. A file of another size or with a bad record is ignored.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "documents/feature_settings.h"
#include "documents/known_block.h"

namespace morva {

inline constexpr int kDrawingNameUnits = 64;
inline constexpr int kDrawingSlotBytes = kSettingsBytes + 2 * kMaxItems + 2 * kDrawingNameUnits;
inline constexpr int kCadFileBytes = 8 + kMaxDrawings * kDrawingSlotBytes;  // 40,712
inline constexpr int kPlateFileBytes = 8 + kMaxPlates * kSettingsBytes;     // 38,152
inline constexpr int kOldPlateFileBytes = kSettingsBytes;                   // 4768
static_assert(kDrawingSlotBytes == 5088 && kCadFileBytes == 40712 && kPlateFileBytes == 38152);

struct Drawing {
  FeatureSettings settings;  // kind 4
  unsigned char hidden[kMaxItems] = {};
  unsigned char locked[kMaxItems] = {};
  char16_t name[kDrawingNameUnits] = {};
  // The file keeps the hash of its code alone, as that of the record.
  KnownBlock block;
  // GeometryHash of what the file held, until the drawing is begun anew, opened or sent. 0: it came
  // from no file.
  std::uint32_t readGeometry = 0;
};

struct CadStore {
  std::uint32_t count = 0;   // 1 to 8
  std::uint32_t active = 0;  // below count
  Drawing drawings[kMaxDrawings];
};

struct PlateStore {
  std::uint32_t count = 0;
  std::uint32_t active = 0;
  FeatureSettings plates[kMaxPlates];  // kind 5
  // Not in the file: their names, and under which the library has them.
  char16_t names[kMaxPlates][kShapeNameUnits] = {};
  char16_t savedNames[kMaxPlates][kShapeNameUnits] = {};
};

inline constexpr std::u16string_view kPlateEnd = u".platemv";

// Where a companion of this program stands: the program's path and the suffix. Where that would
// be a name of more than 255 bytes, the end of the program's name gives way to "~" and the hash
// of the whole name in eight hexadecimal digits.
std::u16string CompanionPath(std::u16string_view program, std::u16string_view suffix);

// Over the unit and all objects of a drawing's record; never 0. Equal drawings have equal hashes.
std::uint32_t GeometryHash(const FeatureSettings& drawing);
// False: not one of ours, `store` untouched.
bool ReadCadFile(std::string_view bytes, CadStore& store);
void WriteCadFile(const CadStore& store, std::string& bytes);
bool ReadPlateFile(std::string_view bytes, PlateStore& store);
void WritePlateFile(const PlateStore& store, std::string& bytes);
// The older form, one record of 4768 bytes.
bool ReadOldPlateFile(std::string_view bytes, FeatureSettings& plate);
void WriteOldPlateFile(const FeatureSettings& plate, std::string& bytes);

}  // namespace morva
