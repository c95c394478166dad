#include "codetools/check_panel.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/mode_table.h"
#include "app/panels.h"
#include "codetools/validator.h"
#include "forms/form.h"

namespace morva {

namespace {

// clang-format off
constexpr FormRow kRows[] = {
    {.kind = RowKind::Keys, .keys = {kIdValidateSecond}},
    {.kind = RowKind::Note, .label = kPreflightNotes, .height = 96},
};
// clang-format on
constexpr FormLook kLook{.keyHeight = 34};
constexpr Form kCheckForm{.look = &kLook, .rows = kRows};

}  // namespace

// No key leads to it; another room may.
const ModeRow kCheckMode = {.mode = kModeDiagnostics, .header = u"DIAGNOSTICS"};

void RegisterCheckPanel() {
  Panel panel;
  panel.mode = kModeDiagnostics;
  panel.row = &kCheckMode;
  panel.make = [] { MakeForm(kCheckForm); };
  panel.place = [](const platform::Rect& area) { PlaceForm(kCheckForm, area); };
  panel.hide = [] { HideForm(kCheckForm); };
  RegisterPanel(panel);
  RegisterForm(kCheckForm);
}

}  // namespace morva
