#include "skim/model/wizard_state.h"

#include "app/app_state.h"

namespace morva {

SkimWizard skimWizard;

bool SkimIsUp() { return app.surface == kSurfaceSkim; }

void StartSkimWizard(std::int32_t fromSurface, std::int32_t fromMode) {
  skimWizard = SkimWizard();
  skimWizard.open = true;
  skimWizard.fromSurface = fromSurface;
  skimWizard.fromMode = fromMode;
}

void EndSkimWizard() { skimWizard.open = false; }
void RestoreSkimWizard(const SkimWizard& former) { skimWizard = former; }
void TurnSkimPage(int page) { skimWizard.page = page; }
void NoteSkimPlan(bool valid) { skimWizard.planValid = valid; }
void NoteSkimField(int field) { skimWizard.field = field; }
void ShowSkimMatrix(bool shows) { skimWizard.matrixShown = shows; }
void ShowSkimPlacement(bool shows) { skimWizard.placing = shows; }
void ShowSkimCoverage(bool shows) { skimWizard.coverage = shows; }
void NoteSkimDrawing() { skimWizard.drawn = true; }

}  // namespace morva
