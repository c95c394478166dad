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
// what the record holds. What is missing or damaged is left out without a word.
void ReadCompanions(std::u16string_view path, ProgramTab& tab);
// Keeps the code of an excluded block in the record, as AddDisabledCode does.
std::int32_t KeepExcludedCode(ProgramTab& tab, std::u16string_view code);
// Appends ".features", the program with these bytes, ".cadmv" where there are drawings and
// ".platemv" where there are plates, all as the record holds them, in the order in which they are
// to be written: the stored code of excluded blocks goes out before the text that refers to it, so
// that a cut between two files leaves entries too many and none too few. False: the stored code
// is more than its file may hold.
bool AddProgramFiles(std::u16string_view path, std::string bytes, const ProgramTab& tab,
                     std::vector<SaveFile>& files);
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
  void (*loadPlate)(const FeatureSettings* record) = nullptr;
};
extern LiveModels liveModels;  // each field is set by the room that does it
void ResetLiveModels();

// The live models into the active record, and out of it.
void StashActiveWorkspace();
void RestoreWorkspace();

}  // namespace morva
