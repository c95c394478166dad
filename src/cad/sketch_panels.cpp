// What the live sketch shows in the workspace: operations list, fields, status, recent lines.

#include "app/command_ids.h"
#include "cad/sketch.h"
#include "library/codetext.h"
#include "platform/control.h"
#include "platform/window.h"

namespace morva {

namespace {
std::u16string status;
constexpr std::size_t kStatusMost = 511;
}  // namespace

void SetSketchStatus(const char16_t* text) {
  std::u16string wanted(text ? text : u"");
  if (wanted.size() > kStatusMost) wanted.resize(kStatusMost);
  if (SameFolded(wanted, status)) return;
  status = wanted;
  platform::SetText(kIdCadStatus, status);
}

const std::u16string& SketchStatus() { return status; }

void LogSketchOperation(const char16_t*) {}

void RefreshSketchPanels() { platform::Repaint(kViewCadCanvas); }

std::u16string SketchNumber(double value, int decimals) { return FixedText(value, decimals); }

bool ReadStrictNumber(std::u16string_view, double&) { return false; }

void SwitchSketchUnits(bool) {}

void RegisterSketchCommands() {}

}  // namespace morva
