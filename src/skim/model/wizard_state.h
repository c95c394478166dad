// What the wizard of the guided skim shows just now, beside its plan.
#pragma once

#include <cstdint>
#include <string>

#include "skim/model/plan_check.h"
#include "skim/model/plan_seeds.h"

namespace morva {

// The four pages, as the user sees them.
enum SkimPage : int { kSkimStock, kSkimCutter, kSkimDepths, kSkimReview, kSkimPages };

// What stood in the form when its surface was left, where it did not read as a plan that passes.
struct SkimTyped {
  bool stands = false;  // something did
  bool metric = false;  // the unit of the texts
  SkimTexts texts;
  bool typed[kSkimFields] = {};  // the field says something else than the plan
};

// The block that was under edit when another program came up.
struct SkimEdit {
  std::int32_t id = 0;  // 0: none was
  std::uint64_t program = 0;
  std::u16string original;
};

// Whose the drawn lines of the plan are.
struct SkimLines {
  std::uint64_t program = 0;
  bool inBlock = false;  // a block of that program was made from them
};

struct SkimWizard {
  bool open = false;  // neither inserted nor cancelled, whatever surface is up meanwhile
  int page = kSkimStock;
  bool planValid = false;        // the form reads as a plan that passes
  bool matrixShown = false;      // the code matrix stands below the form
  bool placing = false;          // the fields that place the stock are shown
  bool coverage = false;         // the ground that the cutter sweeps is painted
  bool drawn = false;            // its drawing has come up
  int field = -1;                // a SkimField that has the keyboard, -1 for none
  std::int32_t fromSurface = 0;  // where it was opened, for CANCEL
  std::int32_t fromMode = 0;
  bool seeded = false;       // it began with what the machining wizard said
  bool seedsMetric = false;  // unit of the seeds
  SkimSeeds seeds;
  std::uint64_t program = 0;  // serial of the program that it was last up over
  SkimTyped typed;
  SkimEdit edit;
  SkimLines lines;  // the next wizard has them too, as it has the plan
};
extern SkimWizard skimWizard;

// Whether the wizard is the surface that is up.
bool SkimIsUp();

// The wizard as it comes up, opened from this place. What was typed, edited and seeded is
// forgotten.
void StartSkimWizard(std::int32_t fromSurface, std::int32_t fromMode);
void EndSkimWizard();
// As it was, where another one did not come up.
void RestoreSkimWizard(const SkimWizard& former);
void TurnSkimPage(int page);
void NoteSkimPlan(bool valid);
void NoteSkimField(int field);
void ShowSkimMatrix(bool shows);
void ShowSkimPlacement(bool shows);
void ShowSkimCoverage(bool shows);
void NoteSkimDrawing();
void NoteSkimProgram(std::uint64_t program);
void NoteSkimSeeds(const SkimSeeds& seeds, bool metric);
void KeepSkimTyped(SkimTyped typed);
void NoteSkimEdit(SkimEdit edit);
void NoteSkimLines(SkimLines lines);

}  // namespace morva
