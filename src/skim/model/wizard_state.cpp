#include "skim/model/wizard_state.h"

#include <utility>

#include "app/app_state.h"

namespace morva {

SkimWizard skimWizard;

bool SkimIsUp() { return app.surface == kSurfaceSkim; }

void StartSkimWizard(std::int32_t fromSurface, std::int32_t fromMode) {
  const SkimLines lines = skimWizard.lines;
  skimWizard = SkimWizard();
  skimWizard.lines = lines;
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
void KeepSkimTyped(SkimTyped typed) { skimWizard.typed = std::move(typed); }
void NoteSkimEdit(SkimEdit edit) { skimWizard.edit = std::move(edit); }
void NoteSkimProgram(std::uint64_t program) { skimWizard.program = program; }
void NoteSkimLines(SkimLines lines) { skimWizard.lines = lines; }

void NoteSkimSeeds(const SkimSeeds& seeds, bool metric) {
  skimWizard.seeded = true;
  skimWizard.seeds = seeds;
  skimWizard.seedsMetric = metric;
}

}  // namespace morva
