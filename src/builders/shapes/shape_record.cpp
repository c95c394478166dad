#include "builders/shapes/shape_record.h"

#include <cmath>

namespace morva {

namespace {

constexpr double kTooMuch = 1000000000;  // numbers of a record stay below it in size

bool IsBuiltIn(std::int64_t data) { return data >= 0 && data < kCustomShapeData; }

bool FitsRecord(const SketchObject& object) {
  for (const double number : {object.x, object.y, object.angle, object.size, object.size2}) {
    if (!(std::fabs(number) < kTooMuch)) return false;
  }
  return object.type >= kTypeLine && object.type <= kTypeWorkAxis && object.size >= 0 &&
         object.size2 >= 0;
}

}  // namespace

const SavedShape* SavedShapeOf(std::int64_t data) {
  const std::int64_t index = data - kCustomShapeData;
  return index >= 0 && index < shapeLibrary.count ? &shapeLibrary.shapes[index] : nullptr;
}

bool StoreShape(std::int64_t data, FeatureSettings& record) {
  record.itemCount = 0;
  if (IsBuiltIn(data)) {
    record.a = static_cast<std::int32_t>(data);
    return true;
  }
  const SavedShape* saved = SavedShapeOf(data);
  if (!saved || saved->count < 1) return false;
  record.a = -1;
  for (int i = 0; i < saved->count; ++i) {
    if (!FitsRecord(saved->objects[i])) return false;
    record.items[i] = ItemOf(saved->objects[i]);
  }
  record.itemCount = saved->count;
  return true;
}

}  // namespace morva
