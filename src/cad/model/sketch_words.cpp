#include "cad/model/sketch_words.h"

#include "app/command_ids.h"
#include "app/limits.h"
#include "cad/model/hint_line.h"
#include "platform/control.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

std::u16string status;
constexpr std::size_t kSketchStatusUnits = 512;  // terminator included; cut

}  // namespace

void SetSketchStatus(const char16_t* text) {
  SetPassingStatus(text);
  KeepPrompt(text ? text : u"");
}

void SetPassingStatus(const char16_t* text) {
  std::u16string wanted(text ? text : u"");
  if (wanted.size() >= kSketchStatusUnits) wanted.resize(kSketchStatusUnits - 1);
  if (SameFolded(wanted, status)) return;
  status = wanted;
  platform::SetText(kIdCadStatus, status);
}

const std::u16string& SketchStatus() { return status; }

void LogSketchOperation(const char16_t* text) {
  if (!text || !platform::Exists(kIdCadRecent)) return;
  const int count = platform::RowCount(kIdCadRecent);
  if (count < kMaxRecentOperations) {
    platform::AddRow(kIdCadRecent, text);
    platform::SelectRow(kIdCadRecent, count);
    return;
  }
  // The oldest line goes: every other moves up one place.
  platform::HoldListRedraw(kIdCadRecent, true);
  for (int row = 0; row + 1 < count; ++row) {
    platform::SetRowText(kIdCadRecent, row, platform::RowText(kIdCadRecent, row + 1));
  }
  platform::SetRowText(kIdCadRecent, count - 1, text);
  platform::SelectRow(kIdCadRecent, count - 1);
  platform::HoldListRedraw(kIdCadRecent, false);
  platform::Repaint(kIdCadRecent);
}

std::u16string SketchNumber(double value, int decimals) { return FixedText(value, decimals); }

}  // namespace morva
