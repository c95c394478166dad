// The table of open programs: eight ProgramTab records, and which of them is on the stage.
//
// The table holds what the open programs were when they last left the stage; the stage (the
// one code editor, activePath, editorDirty, the feature table, the live models) holds the
// active one. Nothing reads the table for the active program's text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/limits.h"
#include "documents/companions.h"
#include "documents/disabled_code.h"
#include "documents/feature_settings.h"
#include "documents/saver.h"
#include "documents/text_mark.h"
#include "platform/editor.h"

namespace morva {

// Why the autosave leaves a program alone.
enum class AutosaveHold { None, ChangedOnDisk, Loss, TooLarge, Failed };

inline constexpr int kCompanionCount = 3;  // drawings, plates, excluded code

// How a program stands to its file; save_state.h writes it.
struct SaveState {
  std::uint32_t changes = 0;        // counts all changes, those of markers among them
  std::uint32_t userChanges = 0;    // the count at the user's last change
  std::uint32_t savedChanges = 0;   // the count that the file holds
  std::uint32_t handedChanges = 0;  // those that a save under way holds
  bool plateLeftOut = false;        // the plate takes more than the file can hold of one
  std::uint64_t unsavedSince = 0;   // the tick of the first change since the last try; 0: none
  DiskState disk;                   // of the file at `path`, as last read or written
  std::vector<KnownFile> beside;    // its companions, in the order of kCompanionCount
  bool changedOnDisk = false;       // by another program; nothing is written there unasked
  // The states of the file and of its companions that loading was offered for.
  std::vector<platform::FileFigures> askedAbout;
  std::uint32_t shownChanges = 0;  // the user's count when he kept what is shown over the file
  bool byteOrderMark = false;      // the file begins with one, which the text does not hold
  bool lossAccepted = false;       // the user knows which characters the file cannot hold
  AutosaveHold held = AutosaveHold::None;
  std::u16string heldCopy;         // in "Recovery", while the autosave is held; empty: none
  std::uint32_t heldChanges = 0;   // those that the copy was given; 0: it is to be written
  bool heldTold = false;           // the log has named the copy
  platform::FileFigures heldFile;  // the copy as it was written last; none: it was not yet
  std::u16string takingPath;       // a save under way gives the program this path; empty: none does
  std::u16string home;             // where the first autosave goes, while it is under way
};

struct ProgramTab {
  char16_t path[kPathUnits] = {};  // empty for a program never saved
  char16_t title[kTitleUnits] = {};
  std::u16string text;                        // as last stored; stale while the tab is active
  std::uint64_t textRevision = 0;             // of the editor that `text` is that of; 0: none
  bool dirty = false;                         // the tab's button shows a mark
  bool compareSelected = false;               // chosen in the list of the review
  FeatureSettings* cadSettings = nullptr;     // the sketch as last stored, kind 4
  FeatureSettings* plateSettings = nullptr;   // the plate as last stored, kind 5
  CadStore* cadStore = nullptr;               // all drawings
  PlateStore* plateStore = nullptr;           // all named plates
  DisabledCodeEntry* disabledCode = nullptr;  // code of excluded blocks
  // Where a companion goes that could not be read, before it is written over; empty: it could, or
  // there is none.
  SaveMove unusable[kCompanionCount];
  unsigned char sketchHidden[kMaxItems] = {};  // by object of the drawing
  unsigned char sketchLocked[kMaxItems] = {};
  std::int32_t hiddenIds[kMaxIdList] = {};  // of blocks; 0 is a free slot
  std::int32_t lockedIds[kMaxIdList] = {};
  std::int32_t isolatedId = 0;      // the only block in the toolpath, 0 for none
  platform::EditorRange selection;  // as the program left the stage, and the first line in view
  std::int32_t firstLine = 0;
  TextMark markLeft;             // of the text that left
  std::int32_t wordsColumn = 0;  // of the caret in its line, where the words were shown
  std::uint64_t serial = 0;      // never used twice; finds the record again behind a dialog
  SaveState save;
};

extern ProgramTab tabs[kMaxTabs];
// The active record, null when no tab is active.
ProgramTab* ActiveTab();
// Where the record with this serial stands now, -1 when it is gone. A dialog may let other
// commands run, so that an index from before it says nothing.
int IndexOfSerial(std::uint64_t serial);
ProgramTab* TabOfSerial(std::uint64_t serial);  // null when it is gone
std::uint64_t ActiveSerial();                   // 0 when no tab is active

// The editor that the user sees: the code editor's id, or the command words view's.
int ShownEditor();
// Copies the stage's text, path and dirty mark into the active record.
void SyncActiveTab();
// What tells the program of a tab from others of the same title: " (left)", the end of its folder,
// as long as it takes. Empty where no other one has its title; `index` from 0 to tabCount - 1.
std::u16string TwinWords(int index);
// The title with these words.
std::u16string NameOfTab(int index);
// The path of the program of a tab, or that it has none; empty where the tab holds no program.
std::u16string PlaceOfTab(int index);
// Words, tips and visibility of the eight tab buttons.
void RefreshTabButtons();
// The title's hook: the active record's dirty mark and its button follow editorDirty.
void TabTitleChanged();
// The active program's text leaves the editor, which keeps it for when the program comes back.
void LayTextAside();
// The program that comes onto the stage stands in the editor as it was left.
void StageText(ProgramTab& tab);
// The path and the dirty mark of the program that comes onto the stage; no title.
void StageFile(std::u16string_view path, bool dirty);
// A program has a file, or another one. With `title` the record is called after it too.
void NameProgram(ProgramTab& tab, std::u16string_view path, bool title);
// The dirty mark of a program, in its record and, where it is active, on the stage and in the
// titles. Null: the stage alone.
void SetDirtyMark(ProgramTab* tab, bool dirty);

// Whether COMPARE takes the program of a tab, 0 to tabCount - 1; its button is not written anew.
void SelectForCompare(int index, bool selected);

bool IdListHolds(const std::int32_t (&list)[kMaxIdList], std::int32_t id);
// Takes the id out, or puts it in the first free slot; with none free nothing happens.
void ToggleListId(std::int32_t id, std::int32_t (&list)[kMaxIdList]);

}  // namespace morva
