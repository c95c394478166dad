// What the wizard of the guided skim shows just now, beside its plan.
#pragma once

#include <cstdint>

namespace morva {

// The four pages, as the user sees them.
enum SkimPage : int { kSkimStock, kSkimCutter, kSkimDepths, kSkimReview, kSkimPages };

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
};
extern SkimWizard skimWizard;

// Whether the wizard is the surface that is up.
bool SkimIsUp();

// The wizard as it comes up, opened from this place.
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

}  // namespace morva
