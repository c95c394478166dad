#include "plate/model/plate_record.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

#include "library/shapes.h"
#include "plate/model/plate.h"
#include "text/codetext.h"

namespace morva {

namespace {

// Items are told apart by type and tag. A tag counts features and labels from the first of its
// range.
constexpr std::int32_t kDepthType = 4;
constexpr std::int32_t kPlaceType = 5;  // of labels as well
constexpr std::int32_t kFirstShapeTag = 1;
constexpr std::int32_t kFirstDepthTag = 1001;
constexpr std::int32_t kFirstSectionTag = 2000;
constexpr std::int32_t kFirstDimensionTag = 3000;
constexpr std::int32_t kFirstPlaceTag = 4000;

constexpr int kPlacedBit = 1;
constexpr int kHiddenBit = 2;
constexpr int kLockedBit = 4;
constexpr int kDeletedBit = 8;

constexpr int kLoadedDecimals = 6;

// The place of a tag in its range; -1: it lies in none of `count`.
int IndexOf(std::int32_t tag, std::int32_t first, int count) {
  return tag >= first && tag - first < count ? tag - first : -1;
}

int FlagsOf(const PlateFeature& feature) {
  return (feature.placed ? kPlacedBit : 0) | (feature.hidden ? kHiddenBit : 0) |
         (feature.locked ? kLockedBit : 0) | (feature.deleted ? kDeletedBit : 0);
}

// Work points and axes are not cut, and their types say something else in a record.
bool IsStored(const SketchObject& object) {
  return object.type >= kTypeLine && object.type <= kTypeSlot;
}

// Items under way: counted all, kept as far as there is room.
struct ItemList {
  FeatureItem* items = nullptr;  // null: they are only counted
  int count = 0;
  int expendable = kMaxPlateLabels;  // of the labels that may be left out so many are not
};

void Add(ItemList& list, const FeatureItem& item) {
  if (list.items && list.count < kMaxItems) list.items[list.count] = item;
  ++list.count;
}

void AddOutline(ItemList& list, const SavedShape& outline) {
  for (int i = 0; i < outline.count; ++i) {
    FeatureItem item = ItemOf(outline.objects[i]);
    item.tag = 0;
    Add(list, item);
  }
}

void AddShape(ItemList& list, const SavedShape& shape, std::int32_t tag) {
  for (int i = 0; i < shape.count; ++i) {
    if (!IsStored(shape.objects[i])) continue;
    FeatureItem item = ItemOf(shape.objects[i]);
    item.tag = tag;
    Add(list, item);
  }
}

void AddDepth(ItemList& list, const PlateFeature& feature, std::int32_t tag) {
  if (!(feature.depth > 0) && !feature.through) return;
  Add(list, {kDepthType, tag, feature.depth, feature.through ? 1.0 : 0.0, 0, 0, 0});
}

void AddPlace(ItemList& list, const PlateFeature& feature, std::int32_t tag) {
  const int flags = FlagsOf(feature);
  if (flags == 0) return;
  Add(list, {kPlaceType, tag, feature.x, feature.y, static_cast<double>(flags), 0, 0});
}

void AddSection(ItemList& list, const PlateSectionLabel& label, std::int32_t tag) {
  if (!label.set) return;
  FeatureItem item{kPlaceType, tag, 0, 0, 0, 0, 0};
  double* const numbers[kSectionNumbers] = {&item.p0, &item.p1, &item.p2, &item.p3, &item.p4};
  for (int i = 0; i < kSectionNumbers; ++i) *numbers[i] = label.numbers[i];
  Add(list, item);
}

void AddDimension(ItemList& list, const PlateLabel& label, std::int32_t tag) {
  if (label.set && label.expendable && list.expendable-- <= 0) return;
  if (label.set) Add(list, {kPlaceType, tag, label.x, label.y, 0, 0, 0});
}

void AddFeature(ItemList& list, const PlateFeature& feature, int k) {
  AddShape(list, feature.shape, kFirstShapeTag + k);
  AddDepth(list, feature, kFirstDepthTag + k);
  AddPlace(list, feature, kFirstPlaceTag + k);
}

// All items, in the order of the table above.
void AddItems(ItemList& list, const PlateRecord& record) {
  if (record.shape == PlateShape::Custom) AddOutline(list, record.outline);
  for (int k = 0; k < kMaxPlateFeatures; ++k) {
    AddShape(list, record.features[k].shape, kFirstShapeTag + k);
  }
  for (int k = 0; k < kMaxPlateFeatures; ++k) {
    AddDepth(list, record.features[k], kFirstDepthTag + k);
  }
  for (int i = 0; i < kMaxPlateSectionLabels; ++i) {
    AddSection(list, record.sectionLabels[i], kFirstSectionTag + i);
  }
  for (int i = 0; i < kMaxPlateLabels; ++i) {
    AddDimension(list, record.dimensionLabels[i], kFirstDimensionTag + i);
  }
  for (int k = 0; k < kMaxPlateFeatures; ++k) {
    AddPlace(list, record.features[k], kFirstPlaceTag + k);
  }
}

// How many labels that may be left out fit behind all else.
int RoomForLabels(const PlateRecord& record) {
  ItemList list;
  list.expendable = 0;
  AddItems(list, record);
  return std::max(kMaxItems - list.count, 0);
}

void PutHead(FeatureSettings& record, const PlateRecord& from) {
  record = FeatureSettings();
  record.version = kSettingsVersion;
  record.kind = kKindPlate;
  record.metric = from.metric ? 1 : 0;
  record.a = static_cast<std::int32_t>(from.shape);
  record.b = static_cast<std::int32_t>(from.type);
  record.c = static_cast<std::int32_t>(from.layout);
  for (int i = 0; i < kPlateValues; ++i) record.values[i] = from.values[i].value;
  record.values[kPlateOutlineItems] =
      from.shape == PlateShape::Custom ? static_cast<double>(from.outline.count) : 0.0;
  record.values[kPlateUnnamed] = from.unnamed ? 1.0 : 0.0;
}

bool TakeShapeItem(SavedShape& shape, const FeatureItem& item) {
  if (shape.count >= kMaxShapeObjects) return false;
  SketchObject object = ObjectOf(item);
  object.group = 0;
  shape.objects[shape.count++] = object;
  return true;
}

void TakePlace(PlateFeature& feature, const FeatureItem& item) {
  // What is no set of flags counts as none.
  const int flags = item.p2 < 16 ? static_cast<int>(item.p2) : 0;
  feature.x = item.p0;
  feature.y = item.p1;
  feature.placed = (flags & kPlacedBit) != 0;
  feature.hidden = (flags & kHiddenBit) != 0;
  feature.locked = (flags & kLockedBit) != 0;
  feature.deleted = (flags & kDeletedBit) != 0;
}

void TakeSection(PlateSectionLabel& label, const FeatureItem& item) {
  const double numbers[kSectionNumbers] = {item.p0, item.p1, item.p2, item.p3, item.p4};
  for (int i = 0; i < kSectionNumbers; ++i) {
    label.numbers[i] = static_cast<std::int32_t>(numbers[i]);
  }
  label.set = true;
}

// Items of an outline, or of the feature's own shape. False: it has too many.
bool TakeObject(PlateRecord& to, const FeatureItem& item, int outlineItems) {
  if (item.tag == 0) return to.outline.count >= outlineItems || TakeShapeItem(to.outline, item);
  const int k = IndexOf(item.tag, kFirstShapeTag, kMaxPlateFeatures);
  return k < 0 || item.type > kTypeSlot || TakeShapeItem(to.features[k].shape, item);
}

// Items that belong to nothing are left out.
void TakeSetting(PlateRecord& to, const FeatureItem& item) {
  if (item.type == kDepthType) {
    const int k = IndexOf(item.tag, kFirstDepthTag, kMaxPlateFeatures);
    if (k < 0) return;
    to.features[k].depth = std::fmax(item.p0, 0);
    to.features[k].through = item.p1 != 0;
    return;
  }
  if (item.type != kPlaceType) return;
  if (const int k = IndexOf(item.tag, kFirstPlaceTag, kMaxPlateFeatures); k >= 0) {
    TakePlace(to.features[k], item);
  }
  if (const int k = IndexOf(item.tag, kFirstDimensionTag, kMaxPlateLabels); k >= 0) {
    to.dimensionLabels[k] = {item.p0, item.p1, true};
  }
  if (const int k = IndexOf(item.tag, kFirstSectionTag, kMaxPlateSectionLabels); k >= 0) {
    TakeSection(to.sectionLabels[k], item);
  }
}

void TakeValues(PlateRecord& to, const FeatureSettings& record) {
  for (int i = 0; i < kPlateValues; ++i) {
    double number = record.values[i];
    // Records from before the thickness had a field of its own.
    if (i == kPlateStock && !(number > 0)) number = std::fabs(record.values[kPlateCutDepth]);
    to.values[i].value = to.values[i].finished = number;
    CopyBounded(to.values[i].text, kFieldUnits, FixedText(number, kLoadedDecimals));
  }
}

// The outline as the library has it, added there at need: -1 where there is no room.
int FindOutline(const SavedShape& outline) {
  // Also as it came back from the settings file, which rounds.
  for (int i = 0; i < shapeLibrary.count; ++i) {
    if (outline.count > 0 && IsShapeAt(i, outline)) return i;
  }
  static FeatureSettings items;
  items = FeatureSettings();
  items.itemCount = outline.count;
  for (int i = 0; i < outline.count; ++i) items.items[i] = ItemOf(outline.objects[i]);
  return RecoverProjectShape(items);
}

}  // namespace

bool IsPlateRecord(const FeatureSettings& record) {
  return record.kind == kKindPlate && record.itemCount >= 0 && record.itemCount <= kMaxItems &&
         ValidateSettings(record, static_cast<std::size_t>(SettingsLength(record)));
}

void StartPlateRecord(FeatureSettings& record, bool metric) {
  record = FeatureSettings();
  record.version = kSettingsVersion;
  record.kind = kKindPlate;
  record.metric = metric ? 1 : 0;
  for (int i = 0; i < kPlateValues; ++i) record.values[i] = StartNumber(i, metric);
  record.values[kPlateUnnamed] = 1.0;
}

int PlateItems(const PlateRecord& record) {
  ItemList list;
  AddItems(list, record);
  return list.count;
}

int PlateItemsOutOfUse(const PlateRecord& record, int features) {
  ItemList list;
  for (int k = features; k < kMaxPlateFeatures; ++k) AddFeature(list, record.features[k], k);
  return list.count;
}

bool SavePlateSettings(FeatureSettings& record) {
  static FeatureSettings made;
  PutHead(made, plate);
  ItemList list{made.items, 0, RoomForLabels(plate)};
  AddItems(list, plate);
  if (list.count > kMaxItems) return false;
  made.itemCount = list.count;
  if (!IsPlateRecord(made)) return false;
  record = made;
  return true;
}

bool LoadPlateSettings(const FeatureSettings& record) {
  if (!IsPlateRecord(record)) return false;
  const std::unique_ptr<PlateRecord> loaded(new (std::nothrow) PlateRecord());
  if (!loaded) return false;
  loaded->metric = record.metric != 0;
  loaded->shape = static_cast<PlateShape>(record.a);
  loaded->type = static_cast<PlateFeatureType>(record.b);
  loaded->layout = static_cast<PlateLayout>(record.c);
  loaded->unnamed = record.values[kPlateUnnamed] != 0;
  TakeValues(*loaded, record);
  const bool custom = loaded->shape == PlateShape::Custom;
  const int outlineItems = custom ? static_cast<int>(record.values[kPlateOutlineItems]) : 0;
  for (int i = 0; i < record.itemCount; ++i) {
    if (!TakeObject(*loaded, record.items[i], outlineItems)) return false;
    TakeSetting(*loaded, record.items[i]);
  }
  if (loaded->outline.count > 0) {
    loaded->customOutlineIndex = FindOutline(loaded->outline);
  } else if (loaded->shape == PlateShape::Custom) {
    loaded->shape = PlateShape::Rectangle;  // an outline without objects
  }
  TakePlate(*loaded);
  return true;
}

}  // namespace morva
