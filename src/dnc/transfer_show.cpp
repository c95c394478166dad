#include "dnc/transfer_show.h"

#include <algorithm>
#include <cstdint>

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/palette.h"
#include "app/panels.h"
#include "dnc/transfer_worker.h"
#include "platform/canvas.h"
#include "platform/control.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kSecondsAsMinutes = 60;
constexpr int kStripe = 4;  // pixels of the bright stripe below the words
constexpr int kInset = 6;   // pixels from the bar's edge to its words

TransferShown shown;
bool keysAreDim = false;
int keyboardFrom = 0;  // the key that the abort key took the keyboard from

std::u16string Number(std::size_t value) { return IntegerText(static_cast<std::int64_t>(value)); }

std::u16string TimeWords(int seconds) {
  if (seconds < kSecondsAsMinutes) return IntegerText(seconds) + u" s left";
  const int rest = seconds % kSecondsAsMinutes;
  std::u16string text = IntegerText(seconds / kSecondsAsMinutes) + u":";
  if (rest < 10) text += u'0';
  return text + IntegerText(rest) + u" min left";
}

void TellBar() {
  std::u16string name = shown.receive ? u"Receiving: " : u"Sending: ";
  name += TransferWords(shown, worker.settings);
  platform::SetAccessibleName(kViewTransfer, name);
  platform::TellViewValue(kViewTransfer);
  platform::Repaint(kViewTransfer);
}

// In per cent; how much comes of a program that is received nobody knows.
void TellPart(platform::ViewValue& value) {
  const std::size_t part =
      shown.total > 0 ? 100 * std::min(shown.count, shown.total) / shown.total : 0;
  value = {TransferWords(shown, worker.settings), 0, 100, static_cast<int>(part)};
}

void PaintTransferBar(platform::Canvas& canvas) {
  using platform::Rect;
  const Rect area = platform::CanvasArea(canvas);
  FillArea(canvas, area, kInputBackground);
  if (shown.total > 0) {
    const double part =
        static_cast<double>(std::min(shown.count, shown.total)) / static_cast<double>(shown.total);
    const int width = static_cast<int>(part * (area.right - area.left));
    FillArea(canvas, Rect{area.left, area.top, area.left + width, area.bottom}, kAmberTop);
    FillArea(canvas, Rect{area.left, area.bottom - kStripe, area.left + width, area.bottom},
             kDncTransferText);
  }
  platform::Pen edge;
  edge.colour = kControlLine;
  FrameArea(canvas, area, edge);
  PaintText(canvas, Rect{area.left + kInset, area.top, area.right - kInset, area.bottom},
            TransferWords(shown, worker.settings), platform::FontRole::Small, kMainText,
            platform::kAlignCentre | platform::kAlignMiddle | platform::kTextEllipsis);
}

}  // namespace

int SecondsOnLine(std::size_t bytes, const platform::SerialSettings& settings) {
  if (settings.baud <= 0) return 0;
  const int bits =
      1 + settings.dataBits + (settings.parity != 0 ? 1 : 0) + (settings.stopBits == 0 ? 1 : 2);
  const auto baud = static_cast<std::uint64_t>(settings.baud);
  return static_cast<int>((bytes * static_cast<std::uint64_t>(bits) + baud - 1) / baud);
}

std::u16string TransferWords(const TransferShown& told, const platform::SerialSettings& settings) {
  if (told.receive) {
    return told.count == 0 ? u"waiting for the first byte" : Number(told.count) + u" bytes";
  }
  const std::size_t left = told.total - std::min(told.count, told.total);
  const std::size_t percent = told.total == 0 ? 100 : told.count * 100 / told.total;
  return Number(told.count) + u" / " + Number(told.total) + u" bytes   " + Number(percent) +
         u" %   " + (told.held ? u"held by XOFF" : TimeWords(SecondsOnLine(left, settings)));
}

bool KeysAreDim() { return keysAreDim; }

void NoteKeyboardOfPress() {
  const int focused = platform::FocusedId();
  keyboardFrom = focused == kIdSend || focused == kIdReceive ? focused : 0;
}

void ShowTransferBegun() {
  shown = TransferShown{.receive = transfer.isReceive, .total = transfer.sendBuffer.size()};
  if (shown.receive) shown.total = 0;
  Call(hooks.layout);
  // Before its own key is dimmed, or the keyboard would go on to any other.
  if (keyboardFrom != 0) platform::SetFocusTo(kIdAbortTransfer);
  keysAreDim = true;
  RefreshKeyStates();
  TellBar();
}

void ShowTransferEnded() {
  keysAreDim = false;
  RefreshKeyStates();
  if (platform::FocusedId() == kIdAbortTransfer) {
    platform::SetFocusTo(keyboardFrom != 0 ? keyboardFrom : kIdEditor);
  }
  keyboardFrom = 0;
  Call(hooks.layout);
}

void ShowTransferred(std::size_t count) {
  shown.count = count;
  shown.held = false;
  TellBar();
}

void ShowHeld(bool held) {
  shown.held = held;
  TellBar();
}

const TransferShown& ShownTransfer() { return shown; }

void RegisterTransferBar() {
  Handlers handlers;
  handlers.id = kViewTransfer;
  handlers.paint = PaintTransferBar;
  handlers.value = TellPart;
  RegisterHandlers(handlers);
}

void ResetTransferBar() {
  shown = TransferShown();
  keysAreDim = false;
  keyboardFrom = 0;
}

}  // namespace morva
