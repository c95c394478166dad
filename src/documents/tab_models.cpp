// The heap part of a program's record. A memory that runs out skips that one model.

#include "documents/tab_models.h"

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "documents/file_text.h"
#include "documents/tab_table.h"
#include "text/codetext.h"

namespace morva {

LiveModels liveModels;

namespace {

bool CadWindowExists() { return liveModels.cadWindowExists && liveModels.cadWindowExists(); }
bool PlateWindowExists() { return liveModels.plateWindowExists && liveModels.plateWindowExists(); }

template <typename Record>
bool Provide(Record*& record) {
  if (!record) record = new (std::nothrow) Record();
  return record != nullptr;
}

// A writer that fails half way must not spoil what is stored, nor may memory that runs out
// leave a record without a kind.
bool TakeLive(bool (*writer)(FeatureSettings& record), FeatureSettings& record) {
  static FeatureSettings live;
  if (!writer || !writer(live)) return false;
  record = live;
  return true;
}

void StoreSketch(ProgramTab& tab) {
  if (!Provide(tab.cadSettings)) return;
  const bool taken = TakeLive(liveModels.storeSketch, *tab.cadSettings);
  if (!tab.cadStore) {
    if (!Provide(tab.cadStore)) return;
    tab.cadStore->count = 1;
    CopyBounded(tab.cadStore->drawings[0].name, kDrawingNameUnits, u"Drawing 1");
  }
  Drawing& drawing = tab.cadStore->drawings[tab.cadStore->active];
  if (taken) drawing.settings = *tab.cadSettings;
  std::copy_n(tab.sketchHidden, kMaxItems, drawing.hidden);
  std::copy_n(tab.sketchLocked, kMaxItems, drawing.locked);
}

void StorePlate(ProgramTab& tab) {
  if (!Provide(tab.plateSettings)) return;
  const bool taken = TakeLive(liveModels.storePlate, *tab.plateSettings);
  if (!tab.plateStore) {
    if (!Provide(tab.plateStore)) return;
    tab.plateStore->count = 1;
    tab.plateStore->plates[0] = *tab.plateSettings;
  }
  if (taken) tab.plateStore->plates[tab.plateStore->active] = *tab.plateSettings;
}

void TakeDrawings(const std::string& bytes, ProgramTab& tab) {
  if (!Provide(tab.cadStore)) return;
  if (!ReadCadFile(bytes, *tab.cadStore)) {
    delete tab.cadStore;
    tab.cadStore = nullptr;
    return;
  }
  const Drawing& active = tab.cadStore->drawings[tab.cadStore->active];
  std::copy_n(active.hidden, kMaxItems, tab.sketchHidden);
  std::copy_n(active.locked, kMaxItems, tab.sketchLocked);
  if (Provide(tab.cadSettings)) *tab.cadSettings = active.settings;
}

void TakePlates(const std::string& bytes, ProgramTab& tab) {
  const std::unique_ptr<PlateStore> store(new (std::nothrow) PlateStore());
  const std::unique_ptr<FeatureSettings> plate(new (std::nothrow) FeatureSettings());
  if (!store || !plate) return;
  if (ReadPlateFile(bytes, *store)) {
    if (Provide(tab.plateStore)) *tab.plateStore = *store;
    if (Provide(tab.plateSettings)) *tab.plateSettings = store->plates[store->active];
  } else if (ReadOldPlateFile(bytes, *plate)) {
    delete tab.plateStore;
    tab.plateStore = nullptr;
    if (Provide(tab.plateSettings)) *tab.plateSettings = *plate;
  }
}

void AddModelFiles(std::u16string_view path, const ProgramTab& tab, std::vector<SaveFile>& files) {
  if (tab.cadStore) {
    files.push_back({CompanionPath(path, u".cadmv"), {}});
    WriteCadFile(*tab.cadStore, files.back().bytes);
  }
  if (!tab.plateSettings) return;
  files.push_back({CompanionPath(path, u".platemv"), {}});
  if (tab.plateStore) {
    WritePlateFile(*tab.plateStore, files.back().bytes);
  } else {
    WriteOldPlateFile(*tab.plateSettings, files.back().bytes);
  }
}

}  // namespace

void ReadCompanions(std::u16string_view path, ProgramTab& tab) {
  std::string bytes;
  if (ReadWholeFile(CompanionPath(path, u".cadmv"), bytes)) TakeDrawings(bytes, tab);
  if (ReadWholeFile(CompanionPath(path, u".platemv"), bytes)) TakePlates(bytes, tab);
  if (ReadWholeFile(CompanionPath(path, u".features"), bytes))
    ReplaceDisabledCode(bytes, tab.disabledCode);
}

bool AddProgramFiles(std::u16string_view path, std::string bytes, const ProgramTab& tab,
                     std::vector<SaveFile>& files) {
  files.push_back({CompanionPath(path, u".features"), {}});
  if (!WriteDisabledCode(tab.disabledCode, files.back().bytes)) return false;
  files.push_back({std::u16string(path), std::move(bytes)});
  AddModelFiles(path, tab, files);
  return true;
}

std::int32_t KeepExcludedCode(ProgramTab& tab, std::u16string_view code) {
  return AddDisabledCode(tab.disabledCode, code);
}

void FreeTab(ProgramTab& tab) {
  FreeDisabledCode(tab.disabledCode);
  delete tab.plateStore;
  delete tab.cadStore;
  delete tab.cadSettings;
  delete tab.plateSettings;
  tab = ProgramTab();
}

void ResetLiveModels() { liveModels = LiveModels(); }

void StashActiveWorkspace() {
  ProgramTab* tab = ActiveTab();
  if (!tab) return;
  if (liveModels.storeSketchFlags) {
    liveModels.storeSketchFlags(tab->sketchHidden, tab->sketchLocked);
  }
  if (CadWindowExists()) StoreSketch(*tab);
  if (PlateWindowExists()) StorePlate(*tab);
}

void RestoreWorkspace() {
  if (liveModels.resetSelection) liveModels.resetSelection();
  const ProgramTab* tab = ActiveTab();
  if (!tab) return;
  if (liveModels.loadSketchFlags) {
    liveModels.loadSketchFlags(tab->sketchHidden, tab->sketchLocked);
  }
  if (CadWindowExists() && liveModels.loadSketch) liveModels.loadSketch(tab->cadSettings);
  if (PlateWindowExists() && liveModels.loadPlate) liveModels.loadPlate(tab->plateSettings);
}

}  // namespace morva
