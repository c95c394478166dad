// Any bytes as the record of a plate: what is refused leaves the live plate as it was; what is
// accepted is drawn, cut and saved without harm, and comes back the same.
#include <cstring>
#include <memory>
#include <string>

#include "documents/feature_settings.h"
#include "fuzz/fuzz.h"
#include "library/shapes.h"
#include "plate/geometry/plate_code.h"
#include "plate/geometry/plate_picture.h"
#include "plate/model/plate.h"
#include "plate/model/plate_record.h"
#include "plate/tools/plate_edit.h"
#include "plate/tools/plate_saving.h"

namespace {

using namespace morva;
using fuzz::Check;

std::string BytesOf(const FeatureSettings& record) {
  std::string bytes(kSettingsBytes, '\0');
  WriteSettings(record, reinterpret_cast<unsigned char*>(bytes.data()));
  return bytes;
}

void CheckSaved() {
  static FeatureSettings once;
  static FeatureSettings twice;
  Check(SavePlateSettings(once), "an accepted plate is saved");
  Check(IsPlateRecord(once), "as a plate");
  Check(LoadPlateSettings(once), "and read again");
  Check(SavePlateSettings(twice) && BytesOf(once) == BytesOf(twice), "and goes out the same");
}

void CheckUse() {
  static Picture picture;
  DrawPlate(plate, {.selected = 1}, picture);
  CodeWriter out;
  out.most = PlateCodeRoom(plate);
  WritePlate(plate, out);
  Check(out.text.size() <= out.most, "the code keeps to its room");
  SavedShape shape;
  if (BuildPlateShape(plate, shape) == PlateSave::Done) {
    Check(shape.count > 0 && shape.count <= kMaxShapeObjects, "a saved plate is a shape");
  }
  for (int k = 0; k < 4; ++k) ApplyFeature(k, ShowFeature(plate, k));
}

void CheckRecord(const std::string& bytes) {
  static FeatureSettings record;
  ReadSettings(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), record);
  DropOldTags(record);
  ResetShapeLibrary();
  ResetPlate();
  const std::uint32_t changes = plate.changes;
  if (!LoadPlateSettings(record)) {
    Check(plate.changes == changes, "refused is untouched");
    return;
  }
  CheckSaved();
  CheckUse();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  CheckRecord(bytes);
  // Most inputs are no plate, or have fewer items than they say.
  if (size < kSettingsHeadBytes) return 0;
  bytes.resize(kSettingsBytes, '\0');
  const char head[] = {3, 0, 0, 0, 5, 0, 0, 0};
  std::memcpy(bytes.data(), head, sizeof head);
  bytes[24] = static_cast<char>(static_cast<unsigned char>(bytes[24]) % (kMaxItems + 1));
  std::memset(bytes.data() + 25, 0, 3);
  CheckRecord(bytes);
  return 0;
}
