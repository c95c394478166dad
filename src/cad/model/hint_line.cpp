#include "cad/model/hint_line.h"

#include <string>

#include "app/command_ids.h"
#include "app/palette.h"
#include "cad/model/tool_state.h"
#include "platform/control.h"

namespace morva {

namespace {

std::u16string prompt;
std::u16string wanted = kCadHint;

}  // namespace

void KeepPrompt(std::u16string_view text) {
  if (!AnyToolInHand()) return;
  prompt = text;
  RefreshHintLine();
}

void RefreshHintLine() {
  if (!AnyToolInHand()) prompt.clear();
  const std::u16string text = prompt.empty() ? std::u16string(kCadHint) : prompt;
  if (text == wanted) return;
  wanted = text;
  RestoreHintLine();
}

// No form: the line stands below the canvas; a prompt is brighter than the hint.
void RestoreHintLine() {
  platform::SetText(kIdCadHint, wanted);
  platform::SetColours(kIdCadHint,
                       {prompt.empty() ? kDimText : kMainText, kWindowBackground, true});
}

void ResetHintLine() {
  prompt.clear();
  wanted = kCadHint;
}

}  // namespace morva
