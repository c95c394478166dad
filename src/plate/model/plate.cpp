#include "plate/model/plate.h"

#include <algorithm>
#include <memory>
#include <string>

#include "text/codetext.h"
#include "text/length_units.h"

namespace morva {

PlateRecord plate;

namespace {

void (*listener)() = nullptr;

constexpr int kUnitDecimals = 6;   // of a text that was converted, so that to and fro loses nothing
constexpr int kStartDecimals = 3;  // of a start text in millimetres

// What the form starts with, in inches.
constexpr const char16_t* kStartTexts[kPlateValues] = {
    u"8.000", u"6.000", u"0.250", u"0.250",  u"0.750", u"2",     u"2",
    u"0.500", u"0.500", u"4.000", u"-0.100", u"10.0",  u"0.500", u"0.500"};

bool IsCount(int value) { return value == kPlateCountX || value == kPlateCountY; }
bool IsValue(int value) { return value >= 0 && value < kPlateValues; }
bool IsFeature(int k) { return k >= 0 && k < kMaxPlateFeatures; }

void Tell() {
  if (listener) listener();
}

// A change of what is drawn, listed or stored.
void Changed() {
  ++plate.changes;
  plate.pending = true;
  Tell();
}

void PutNumber(int value, double number) {
  plate.values[value].value = plate.values[value].finished = number;
}

void PutText(int value, std::u16string_view text) {
  CopyBounded(plate.values[value].text, kFieldUnits, text);
}

bool PlateFeature::*FieldOf(FeatureFlag flag) {
  switch (flag) {
    case FeatureFlag::Hidden:
      return &PlateFeature::hidden;
    case FeatureFlag::Locked:
      return &PlateFeature::locked;
    case FeatureFlag::Deleted:
      return &PlateFeature::deleted;
    case FeatureFlag::Through:
      break;
  }
  return &PlateFeature::through;
}

}  // namespace

void SetPlateListener(void (*changed)()) { listener = changed; }

void SayOnPlate(std::u16string_view words) {
  CopyBounded(plate.status, kStatusUnits, words);
  Tell();
}

double StartNumber(int value, bool metric) {
  const double number = ParseDecimal(kStartTexts[value], 0);
  return metric && !IsCount(value) ? number * kMmPerInch : number;
}

void TakePlate(const PlateRecord& other) {
  const std::uint32_t changes = plate.changes;
  const std::u16string status = plate.status;
  plate = other;
  plate.changes = changes + 1;
  CopyBounded(plate.status, kStatusUnits, status);
  Tell();
}

void StartPlate(bool metric) {
  const std::uint32_t changes = plate.changes;
  const std::u16string status = plate.status;
  // In its place, because it is too large for the stack.
  std::destroy_at(&plate);
  std::construct_at(&plate);
  plate.changes = changes + 1;
  CopyBounded(plate.status, kStatusUnits, status);
  plate.metric = metric;
  for (int i = 0; i < kPlateValues; ++i) {
    const bool converted = metric && !IsCount(i);
    PutNumber(i, StartNumber(i, metric));
    PutText(i, converted ? FixedText(plate.values[i].value, kStartDecimals) : kStartTexts[i]);
  }
  Tell();
}

void ClearPlate() { StartPlate(plate.metric); }

void SetPlateText(int value, std::u16string_view text) {
  if (!IsValue(value)) return;
  text = text.substr(0, kFieldUnits - 1);
  if (text == plate.values[value].text) return;
  PutText(value, text);
  PlateText& number = plate.values[value];
  if (!ReadStrictNumber(text, number.value)) number.value = number.finished;
  Changed();
}

void FinishPlateTexts() {
  for (int i = 0; i < kPlateValues; ++i) {
    if (PlateTextReads(i)) plate.values[i].finished = plate.values[i].value;
  }
}

void SetPlateNumber(int value, double number, int decimals) {
  if (!IsValue(value)) return;
  PutText(value, FixedText(number, decimals));
  PutNumber(value, number);
  Changed();
}

bool PlateTextReads(int value) {
  double number = 0;
  return IsValue(value) && ReadStrictNumber(plate.values[value].text, number);
}

void SetPlateShape(PlateShape shape) {
  if (shape == plate.shape || (shape == PlateShape::Custom && plate.outline.count == 0)) return;
  plate.shape = shape;
  Changed();
}

void SetPlateType(PlateFeatureType type) {
  if (type == plate.type) return;
  plate.type = type;
  Changed();
}

void SetPlateLayout(PlateLayout layout) {
  if (layout == plate.layout) return;
  plate.layout = layout;
  Changed();
}

bool SetPlateOutline(int libraryIndex) {
  if (libraryIndex < 0 || libraryIndex >= shapeLibrary.count) return false;
  TakePlateOutline(shapeLibrary.shapes[libraryIndex], libraryIndex);
  return true;
}

void TakePlateOutline(const SavedShape& shape, int libraryIndex) {
  plate.outline = shape;
  plate.customOutlineIndex = libraryIndex;
  plate.shape = PlateShape::Custom;
  Changed();
}

void SetPlateUnit(bool metric) {
  if (metric == plate.metric) return;
  plate.metric = metric;
  const double factor = metric ? kMmPerInch : kInchPerMm;
  for (int i = 0; i < kPlateValues; ++i) {
    if (IsCount(i)) continue;
    // A text that is no number stays for the user to mend.
    const bool reads = PlateTextReads(i);
    PutNumber(i, plate.values[i].value * factor);
    if (reads) PutText(i, FixedText(plate.values[i].value, kUnitDecimals));
  }
  Changed();
}

void SetPlateName(std::u16string_view name) {
  CopyBounded(plate.name, kShapeNameUnits, name);
  plate.unnamed = false;
  plate.saved = true;
  Changed();
}

void TakePlateName(std::u16string_view name, bool unnamed, int savedShapeIndex) {
  CopyBounded(plate.name, kShapeNameUnits, name);
  plate.unnamed = unnamed;
  SetPlateShapeIndex(savedShapeIndex);
  ++plate.changes;
  Tell();
}

void SettlePlate(bool saved) {
  plate.pending = false;
  plate.saved = saved;
  Tell();
}

void LeavePlatePending() {
  plate.pending = true;
  plate.saved = false;
  Tell();
}

void SetPlateShapeIndex(int savedShapeIndex) { SetPlateShapeIndex(savedShapeIndex, plate.name); }

void SetPlateShapeIndex(int savedShapeIndex, std::u16string_view savedName) {
  plate.savedShapeIndex = savedShapeIndex;
  CopyBounded(plate.savedName, kShapeNameUnits, savedShapeIndex >= 0 ? savedName : u"");
}

void PutFeature(int k, const PlateFeature& feature) {
  if (!IsFeature(k)) return;
  plate.features[k] = feature;
  Changed();
}

bool HasFeatureFlag(const PlateFeature& feature, FeatureFlag flag) {
  return feature.*FieldOf(flag);
}

void SetFeatureFlag(int k, FeatureFlag flag, bool on) {
  if (!IsFeature(k) || HasFeatureFlag(plate.features[k], flag) == on) return;
  plate.features[k].*FieldOf(flag) = on;
  Changed();
}

void PlaceFeature(int k, double x, double y) {
  if (!IsFeature(k)) return;
  PlateFeature& feature = plate.features[k];
  if (feature.placed && feature.x == x && feature.y == y) return;
  feature.placed = true;
  feature.x = x;
  feature.y = y;
  Changed();
}

void SetFeatureDepth(int k, double depth) {
  if (!IsFeature(k) || plate.features[k].depth == depth) return;
  plate.features[k].depth = depth;
  Changed();
}

void SetLabelExpendable(int label) {
  if (label >= 0 && label < kMaxPlateLabels) plate.dimensionLabels[label].expendable = true;
}

void KeepAllLabels() {
  for (PlateLabel& label : plate.dimensionLabels) label.expendable = false;
}

bool SetDimensionLabel(int label, double x, double y) {
  if (label < 0 || label >= kMaxPlateLabels) return false;
  plate.dimensionLabels[label] = {x, y, true};
  Changed();
  return true;
}

bool SetSectionLabel(int section, const std::int32_t (&numbers)[kSectionNumbers]) {
  if (section < 0 || section >= kMaxPlateSectionLabels) return false;
  PlateSectionLabel& label = plate.sectionLabels[section];
  for (int i = 0; i < kSectionNumbers; ++i) {
    label.numbers[i] = i == 2 || i == 3 ? std::max(numbers[i], 0) : numbers[i];
  }
  label.set = true;
  Changed();
  return true;
}

bool IsPlainFeature(const PlateFeature& feature) {
  return !feature.placed && !feature.hidden && !feature.locked && !feature.deleted &&
         !feature.through && feature.depth == 0 && feature.shape.count == 0;
}

double UnitsPerInch(const PlateRecord& record) { return record.metric ? kMmPerInch : 1; }
double InchesPerUnit(const PlateRecord& record) { return record.metric ? kInchPerMm : 1; }

void ResetPlate() {
  listener = nullptr;
  StartPlate(false);
  SayOnPlate(u"");
}

}  // namespace morva
