#include "cad/model/cut_data.h"

#include "app/command_ids.h"
#include "app/router.h"
#include "cad/model/sketch_words.h"
#include "documents/program_changed.h"
#include "forms/form.h"
#include "platform/control.h"
#include "platform/events.h"

namespace morva {

namespace {

// What the user types there belongs to the drawing, as its geometry does.
void OnCutData(int, int) { ProgramChanged({.autosave = true}); }

}  // namespace

CutData ShownCutData() {
  return {FieldNumber(kIdCadDepth, 0), FieldNumber(kIdCadFeed, 0), FieldNumber(kIdCadSafeZ, 0)};
}

void ShowCutData(const CutData& cut, int decimals) {
  platform::SetText(kIdCadDepth, SketchNumber(cut.depth, decimals));
  platform::SetText(kIdCadFeed, SketchNumber(cut.feed, decimals));
  platform::SetText(kIdCadSafeZ, SketchNumber(cut.safeZ, decimals));
}

void RegisterCutData() {
  RegisterCommand(RouterStage::Builder, kIdCadDepth, kIdCadSafeZ, platform::kNotifyEditChange,
                  OnCutData);
}

}  // namespace morva
