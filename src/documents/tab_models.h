// The drawings and plates of an open program: between its record, its companion files and
// the live models of the CAD and plate workspaces.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/limits.h"
#include "documents/feature_settings.h"
#include "documents/tab_table.h"

namespace morva {

// Reads ".cadmv", ".platemv" and ".features" beside the program, in this order, in the place of
// what the record holds, and notes how they stand. `text` is the program; where the record holds
// code under a number of its markers already, they get another number. What is missing is left out;
// of what is there and cannot be read the log tells under which name it will be kept.
void ReadCompanions(std::u16string_view path, std::u16string& text, ProgramTab& tab);
// ".features" alone, into a list of the caller's. False: it is there, and cannot be read.
bool ReadExcludedCode(std::u16string_view path, std::u16string& text, DisabledCodeEntry*& list);
// Keeps the code of an excluded block in the record, as AddDisabledCode does.
// The number is one that neither the record nor the program's text knows. `block` is the id of the
// block that the code is taken out of. 0 also where the file could not hold it.
std::int32_t KeepExcludedCode(ProgramTab& tab, std::u16string_view code, std::int32_t block = 0);
// Appends ".features", the program with these bytes, ".cadmv" where there are drawings and
// ".platemv" where there are plates, all as the record holds them, in the order in which they are
// to be written: the stored code of excluded blocks goes out before the text that refers to it, so
// that a cut between two files leaves entries too many and none too few. Where all stored code is
// more than its file may hold, what `text` does not name is left out. False: that is too much, too.
bool AddProgramFiles(std::u16string_view path, std::string bytes, std::u16string_view text,
                     const ProgramTab& tab, std::vector<SaveFile>& files);
// What the companions beside `path` are known to hold, and which of them have to give way where the
// job's files are written: one that could not be read, before it is written over, and those of
// another program whose name is taken. The excluded code of that one goes first, of what else is
// written over a copy stays, and the rest goes behind the last file. `over`: the user lets the
// program's own file be written over as another program has left it.
void AddMoves(std::u16string_view path, const ProgramTab& tab, bool over, SaveJob& job);
// A companion of another program could not be moved when this one took its file's name; it is moved
// before this program writes one of its own over it.
void KeepLeft(ProgramTab& tab, const SaveMove& move);
// Erases the companions beside a copy of a program, which is no link.
void EraseCompanions(std::u16string_view path);
// Frees what the record holds on the heap and leaves it empty.
void FreeTab(ProgramTab& tab);

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
  void (*loadPlate)(const FeatureSettings* record) = nullptr;  // null: a new plate
  const char16_t* (*plateName)() = nullptr;                    // of the live plate
  const char16_t* (*plateSavedName)() = nullptr;               // its name in the library
};
extern LiveModels liveModels;  // each field is set by the room that does it
void ResetLiveModels();

// The live models into the active record, and out of it.
void StashActiveWorkspace();
// Behind a scan of the active program: what its drawings say of their blocks follows updates that
// were undone or done again, as their file holds the code of one moment alone.
void FollowBlocksOfDrawings(ProgramTab& tab);
void RestoreWorkspace();

}  // namespace morva
