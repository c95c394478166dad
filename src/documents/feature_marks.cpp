#include "documents/feature_marks.h"

#include "documents/tab_table.h"

namespace morva {

void IsolateFeature(std::int32_t id) {
  if (ProgramTab* tab = ActiveTab()) tab->isolatedId = id;
}

void ToggleFeatureHidden(std::int32_t id) {
  if (ProgramTab* tab = ActiveTab()) ToggleListId(id, tab->hiddenIds);
}

void ToggleFeatureLocked(std::int32_t id) {
  if (ProgramTab* tab = ActiveTab()) ToggleListId(id, tab->lockedIds);
}

void CopyFeatureMarks(std::int32_t from, std::int32_t to) {
  ProgramTab* tab = ActiveTab();
  if (!tab) return;
  for (auto* list : {&tab->hiddenIds, &tab->lockedIds}) {
    if (IdListHolds(*list, from) != IdListHolds(*list, to)) ToggleListId(to, *list);
  }
}

void ShowAllFeatures() {
  ProgramTab* tab = ActiveTab();
  if (!tab) return;
  for (std::int32_t& hidden : tab->hiddenIds) hidden = 0;
  tab->isolatedId = 0;
}

}  // namespace morva
