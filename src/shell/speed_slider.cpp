#include "shell/speed_slider.h"

#include <algorithm>

#include "app/command_ids.h"
#include "app/panels.h"
#include "platform/control.h"
#include "platform/window.h"
#include "shell/layout.h"
#include "shell/theme.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"

namespace morva {

using platform::Canvas;
using platform::FontRole;
using platform::Rect;

namespace {

constexpr int kTrackLeft = 8;
constexpr int kHalf = kSliderTrack / 2;

int toldSpeed = -1;  // in the tool tip

int ShownSpeed() { return ShownPath().play.speedIndex; }

// A press tells the speed even where it is the one that holds already; a drag only changes.
void Choose(int index, bool tell = false) {
  const int wanted = std::clamp(index, 0, kSpeedCount - 1);
  if (tell || wanted != ShownSpeed()) SetPlaySpeed(wanted);
  platform::Repaint(kIdSpeedSlider);
}

template <int by>
bool StepSpeed() {
  Choose(ShownSpeed() + by);
  return true;
}

template <int index>
bool PutSpeed() {
  Choose(index);
  return true;
}

constexpr ChordPlace kSliderChords{u"speed slider"};
constexpr KeyRow kKeys[] = {
    {PlainKey(kSliderChords, platform::kKeyLeft), u"Slower", StepSpeed<-1>},
    {PlainKey(kSliderChords, platform::kKeyDown), u"Slower", StepSpeed<-1>},
    {PlainKey(kSliderChords, platform::kKeyRight), u"Faster", StepSpeed<1>},
    {PlainKey(kSliderChords, platform::kKeyUp), u"Faster", StepSpeed<1>},
    {PlainKey(kSliderChords, platform::kKeyHome), u"Slowest", PutSpeed<0>},
    {PlainKey(kSliderChords, platform::kKeyEnd), u"Fastest", PutSpeed<kSpeedCount - 1>},
};

}  // namespace

int SpeedIndexAt(int x) {
  const int place = std::clamp(x, 0, kSliderTrack);
  return place <= kHalf ? (3 * place + 55) / 110 : (6 * place - 605) / 110 + 3;
}

int ThumbPlace(int index) {
  return index <= 3 ? index * kHalf / 3 : kHalf + (index - 3) * kHalf / 6;
}

void PaintSpeedSlider(Canvas& canvas) {
  const Rect area = platform::CanvasArea(canvas);
  FillArea(canvas, area, GroundUnder(platform::PlaceOf(kIdSpeedSlider)));
  const int middle = (area.top + area.bottom) / 2;
  const int right = kTrackLeft + kSliderTrack;
  for (int i = 0; i < kSpeedCount; ++i) {
    const int x = kTrackLeft + ThumbPlace(i);
    const int reach = i == 3 ? 8 : 5;
    FillArea(canvas, Rect{x, middle - reach, x + 1, middle + reach},
             i == 3 ? kDimText : kControlLine);
  }
  FillArea(canvas, Rect{kTrackLeft, middle - 2, right, middle + 2}, kControlLine);
  const int thumb = kTrackLeft + ThumbPlace(ShownSpeed());
  FillArea(canvas, Rect{kTrackLeft, middle - 2, thumb, middle + 2}, kAccent);
  const Rect knob{thumb - 5, middle - 9, thumb + 6, middle + 9};
  DrawPanel(canvas, knob, true, kPanelPlain);
  platform::Pen edge;
  edge.colour = kBrightAccent;
  FrameArea(canvas, knob, edge);
  PaintText(canvas, Rect{right + 11, area.top, area.right, area.bottom}, SpeedWord(ShownSpeed()),
            FontRole::Small, kMainText, platform::kAlignLeft | platform::kAlignMiddle);
  if (platform::FocusedId() == kIdSpeedSlider) {
    edge.width = 1;
    FrameArea(canvas, area, edge);
  }
}

bool SpeedSliderPointer(const platform::PointerEvent& event) {
  using platform::PointerAction;
  const bool press =
      event.action == PointerAction::Press && event.button == platform::PointerButton::Left;
  if (event.action == PointerAction::Wheel) {
    Choose(ShownSpeed() + event.wheel);
    return true;
  }
  if (!press && !(event.action == PointerAction::Move && event.leftDown)) return false;
  Choose(SpeedIndexAt(event.x - kTrackLeft), press);
  return true;
}

bool SpeedSliderKey(const platform::KeyEvent& key) { return RunKeyRow(kKeys, key); }

void RefreshSpeedSlider() {
  if (toldSpeed == ShownSpeed()) return;
  toldSpeed = ShownSpeed();
  platform::SetToolTip(kIdSpeedSlider, SpeedHelp());
  platform::TellViewValue(kIdSpeedSlider);
  platform::Repaint(kIdSpeedSlider);
}

void ResetSpeedSlider() { toldSpeed = -1; }

void RegisterSpeedSlider() {
  Handlers handlers;
  handlers.id = kIdSpeedSlider;
  handlers.paint = PaintSpeedSlider;
  handlers.pointer = SpeedSliderPointer;
  handlers.key = SpeedSliderKey;
  handlers.keys = kKeys;
  handlers.value = [](platform::ViewValue& value) {
    value = {SpeedWord(ShownSpeed()), 0, kSpeedCount - 1, ShownSpeed()};
  };
  handlers.chooseValue = [](int step) { Choose(step, true); };
  RegisterHandlers(handlers);
}

}  // namespace morva
