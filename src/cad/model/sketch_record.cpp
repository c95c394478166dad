#include "cad/model/sketch_record.h"

#include <cmath>

#include "cad/model/cad_form.h"
#include "cad/model/cut_data.h"
#include "cad/model/sketch.h"
#include "documents/tab_table.h"
#include "forms/form.h"
#include "text/strict_number.h"

namespace morva {

namespace {

constexpr double kRecordLimit = 1e9;  // what a settings record can hold stays below

double Storable(double value) { return std::fabs(value) < kRecordLimit ? value : 0; }

// Whether a text only begins with a number.
bool IsHalfNumber(int field) {
  double value = 0;
  if (ReadStrictField(field, value)) return false;
  value = FieldNumber(field, 0);
  return value == FieldNumber(field, 1) && std::fabs(value) < kStrictLimit;
}

// Half a number leaves what the program's record has, or what a drawing starts with: "-0,25" would
// become 0, come back as a number, and cut nothing.
void KeepUnreadCutData(FeatureSettings& record) {
  const ProgramTab* tab = ActiveTab();
  FeatureSettings kept;
  StartSketchRecord(kept, sketch.metric);
  if (tab && tab->cadSettings && tab->cadSettings->kind == kKindSketch &&
      tab->cadSettings->metric == kept.metric) {
    kept = *tab->cadSettings;
  }
  for (const FormRow& row : kCadForm.rows) {
    if (IsCutField(row) && IsHalfNumber(row.id)) {
      record.values[row.value] = kept.values[row.value];
    }
  }
}

}  // namespace

bool IsSketchRecord(const FeatureSettings& record) {
  return record.kind == kKindSketch && record.itemCount >= 0 && record.itemCount <= kMaxItems &&
         ValidateSettings(record, static_cast<std::size_t>(SettingsLength(record)));
}

void StartSketchRecord(FeatureSettings& record, bool metric) {
  record = FeatureSettings();
  record.version = kSettingsVersion;
  record.kind = kKindSketch;
  record.metric = metric ? 1 : 0;
  PutCutData(StartCutData(metric), record.values);
}

bool StoreSketchItems(FeatureSettings& record) {
  PutCutData(ShownCutData(), record.values);
  record.values[kSketchThickness] = sketch.thickness;
  record.itemCount = sketch.objectCount;
  for (int i = 0; i < sketch.objectCount; ++i) record.items[i] = ItemOf(sketch.objects[i]);
  return IsSketchRecord(record);
}

bool StoreLiveSketch(FeatureSettings& record) {
  StartSketchRecord(record, sketch.metric);
  StoreSketchItems(record);
  KeepUnreadCutData(record);
  for (double& value : record.values) value = Storable(value);
  for (int i = 0; i < record.itemCount; ++i) {
    FeatureItem& item = record.items[i];
    item.p0 = Storable(item.p0);
    item.p1 = Storable(item.p1);
    item.p2 = std::fabs(Storable(item.p2));
    item.p3 = std::fabs(Storable(item.p3));
    item.p4 = Storable(item.p4);
  }
  return IsSketchRecord(record);
}

}  // namespace morva
