#include "skim/tools/skim_preview.h"

#include <string>
#include <string_view>

#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/path_preview.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/window.h"
#include "skim/geometry/skim_code.h"
#include "skim/geometry/skim_matrix.h"
#include "skim/model/field_help.h"
#include "skim/model/plan.h"
#include "skim/model/plan_check.h"
#include "skim/model/wizard_state.h"
#include "skim/tools/skim_fields.h"
#include "text/code_writer.h"

namespace morva {

namespace {

CodeWriter code;  // of the plan; it keeps its memory, and its text where the plan does not pass

// False: the plan makes no code.
bool WriteCode() {
  const char16_t* message = u"";
  if (!ValidateSkimPlan(skimPlan, message)) return false;
  code.text.clear();
  code.full = false;
  return BuildSkimProgram(skimPlan, code);
}

void ShowMatrixText() {
  if (!skimWizard.matrixShown) return;
  const std::u16string text =
      skimWizard.planValid ? SkimMatrixText(skimPlan) : std::u16string(SkimMatrixInvalid());
  if (platform::TextOf(kIdSkimMatrix) != text) platform::SetText(kIdSkimMatrix, text);
}

void ShowReview() {
  if (skimWizard.page != kSkimReview) return;
  const std::u16string_view text = skimWizard.planValid ? std::u16string_view(code.text)
                                                        : u"Complete valid inputs to review code.";
  if (platform::EditorText(kIdSkimCode) != text) platform::SetEditorText(kIdSkimCode, text);
}

void ShowMarker() {
  PreviewMarker marker;
  std::u16string words;
  const int field = skimWizard.field;
  if (skimWizard.planValid && field >= 0) {
    const SkimMarker place = SkimFieldMarker(skimPlan, field);
    words = SkimFieldHelp(skimPlan, field, platform::TextOf(kIdSkimField + field));
    marker = {.shown = true, .x = place.x, .y = place.y, .z = place.z, .words = words};
  }
  Call(hooks.markPreview, marker);
}

}  // namespace

void RefreshSkimPreview() {
  if (!SkimIsUp()) return;
  const bool valid = ReadSkimForm(true);
  NoteSkimPlan(valid);
  if (valid) ShowSkimPlace();
  RefreshSkimView();
  ShowMatrixText();
}

void RefreshSkimView() {
  if (!SkimIsUp()) return;
  const bool passes = WriteCode();
  PathPreview preview;
  if (passes) preview.text = code.text;
  preview.stock = {.shown = true,
                   .minX = skimPlan.xMin,
                   .maxX = skimPlan.xMax,
                   .minY = skimPlan.yMin,
                   .maxY = skimPlan.yMax,
                   .bottom = skimPlan.zTop - skimPlan.stockThickness,
                   .top = skimPlan.zTop};
  preview.stockWords = u"SKIM AREA";
  preview.tool = skimPlan.tool;
  preview.diameter = skimPlan.diameter;
  preview.coverage = skimWizard.coverage;
  preview.levels = true;
  preview.lags = !skimWizard.planValid;
  Call(hooks.showPreview, preview);
  ShowMarker();
  ShowReview();
}

void MarkSkimField(int field) {
  if (field == skimWizard.field) return;
  NoteSkimField(field);
  if (SkimIsUp()) ShowMarker();
}

void ResetSkimPreview() { code = CodeWriter(); }

}  // namespace morva
