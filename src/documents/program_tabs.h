// Program documents: the table of eight ProgramTab records and the stage they share.
//
// The store holds what the open programs were when they last left the stage; the stage (the
// one code editor, activePath, editorDirty, the feature table, the live models) holds the
// active one. Nothing reads the store for the active program's text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/limits.h"
#include "documents/companions.h"
#include "documents/disabled_code.h"
#include "documents/feature_settings.h"
#include "platform/events.h"

namespace morva {

struct ProgramTab {
  char16_t path[kPathUnits] = {};  // empty for a program never saved
  char16_t title[kTitleUnits] = {};
  std::u16string text;  // as last stored; stale while the tab is active
  bool dirty = false;
  bool compareSelected = false;
  FeatureSettings* cadSettings = nullptr;    // the sketch as last stored, kind 4
  FeatureSettings* plateSettings = nullptr;  // the plate as last stored, kind 5
  CadStore* cadStore = nullptr;              // all drawings
  PlateStore* plateStore = nullptr;          // all named plates
  DisabledCodeEntry* disabledCode = nullptr;
  unsigned char sketchHidden[kMaxItems] = {};
  unsigned char sketchLocked[kMaxItems] = {};
  std::int32_t hiddenIds[kMaxIdList] = {};  // 0 is a free slot
  std::int32_t lockedIds[kMaxIdList] = {};
  std::int32_t isolatedId = 0;
  std::uint64_t serial = 0;  // never used twice; finds the record again behind a dialog
};

extern ProgramTab tabs[kMaxTabs];
// The active record, null when no tab is active.
ProgramTab* ActiveTab();

// Appends a record and reads its companions; does not activate it. NULs in the text, filling
// from a serial line, are left out. Its index, or -1 after the user was told that eight are
// open.
int OpenTab(std::u16string_view path, std::u16string_view text, std::u16string_view title);
void SwitchTab(int index);
// The editor that the user sees: the code editor's id, or the command words view's.
int ShownEditor();
void SyncActiveTab();
void StashActiveWorkspace();
void RestoreWorkspace();
void RefreshTabButtons();
// Sets editorDirty and the record's flag and the title; no timer, no autosave.
void MarkModified();
void WriteProgramInformation();  // the information panel, in the modes that show it

void NewProgram();
void OpenProgram();
bool SaveProgramCommand();
bool SaveProgramAs();
void CloseProgram();
void SaveAll();
// Ctrl with N, O, S or W: new, open, save, close. False: another key.
bool ProgramKey(const platform::KeyEvent& key);
void ShowSaveMenu();
void ShowTabMenu(int index, int x, int y);
// The dialog for a program file that exists, under this title. False: cancelled.
bool PickProgramToOpen(const char16_t* title, std::u16string& path);

bool IdListHolds(const std::int32_t (&list)[kMaxIdList], std::int32_t id);
// Takes the id out, or puts it in the first free slot; with none free nothing happens.
void ToggleListId(std::int32_t id, std::int32_t (&list)[kMaxIdList]);

// What the CAD and plate rooms do for the store; null until those rooms exist.
struct LiveModels {
  bool (*cadWindowExists)() = nullptr;
  bool (*plateWindowExists)() = nullptr;
  bool (*storeSketch)(FeatureSettings& record) = nullptr;       // live sketch, kind 4
  void (*loadSketch)(const FeatureSettings* record) = nullptr;  // null: an empty sketch
  void (*storeSketchFlags)(unsigned char (&hidden)[kMaxItems],
                           unsigned char (&locked)[kMaxItems]) = nullptr;
  void (*loadSketchFlags)(const unsigned char (&hidden)[kMaxItems],
                          const unsigned char (&locked)[kMaxItems]) = nullptr;
  void (*resetSelection)() = nullptr;
  bool (*storePlate)(FeatureSettings& record) = nullptr;
  void (*loadPlate)(const FeatureSettings* record) = nullptr;
};
extern LiveModels liveModels;

// Frees every record; all tabs closed, nothing asked.
void FreeTabs();
void RegisterDocumentCommands();
void ResetDocuments();

}  // namespace morva
