#include "cad/tools/flyout.h"

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/key_rows.h"
#include "app/panels.h"
#include "app/router.h"
#include "cad/model/hint_line.h"
#include "cad/tools/draw_tools.h"
#include "platform/timer.h"
#include "platform/window.h"

// The hover tick sees the pointer come to a key and starts a one-shot timer of 450 ms; when it
// fires and the pointer is still there, the popup opens. A key that was used opens nothing until
// the pointer has left it.

namespace morva {

namespace {

constexpr int kRestMs = 450;
constexpr int kFlyoutMethods = 5;

struct Flyout {
  int key;
  int count;
  MenuRow methods[kFlyoutMethods];
};

constexpr Flyout kFlyouts[] = {
    {kIdCadLine, 2, {{kIdMethodLine}, {kIdMethodLineTangent}}},
    {kIdCadRectangle,
     3,
     {{kIdMethodRectangle}, {kIdMethodRectangleCentre}, {kIdMethodRectangleThree}}},
    {kIdCadCircle,
     5,
     {{kIdMethodCircleRadius},
      {kIdMethodCircleDiameter},
      {kIdMethodCircleThree},
      {kIdMethodCircleOnLine},
      {kIdMethodCircleOnCircle}}},
    {kIdCadSlot, 2, {{kIdMethodSlotDrag}, {kIdMethodSlotPoints}}},
    {kIdCadDimension, 2, {{kIdMethodDimension}, {kIdMethodMeasure}}},
};

int restingOn = 0;  // the key under the pointer at the last tick
int helpedOn = 0;   // what the help on the hint line may belong to
bool popupOpen = false;

const Flyout* FlyoutOf(int keyId) {
  for (const Flyout& flyout : kFlyouts) {
    if (flyout.key == keyId) return &flyout;
  }
  return nullptr;
}

void RestOver() {
  StopFlyoutRest();
  // Nothing pops up over a box, while another program has the keyboard, or under a key that is
  // being pressed: the popup would swallow the release.
  if (platform::FocusedId() == 0 || platform::ButtonHeld()) return;
  if (platform::IdUnderPointer() != restingOn) return;
  ShowFlyout(restingOn);
}

}  // namespace

void StopFlyoutRest() { platform::StopTimer(platform::kMainWindow, kTimerFlyout); }

void FlyoutPointerOver(int under) {
  // The help of the control that was left must not stay on the line for good, not even when the
  // pointer has left the window.
  if (under != helpedOn) {
    helpedOn = under;
    RestoreHintLine();
  }
  if (popupOpen || under == restingOn) return;
  restingOn = under;
  StopFlyoutRest();
  if (FlyoutOf(under)) platform::StartTimer(platform::kMainWindow, kTimerFlyout, kRestMs);
}

void KeepFlyoutShut() {
  // A press can come before the first hover tick.
  restingOn = platform::IdUnderPointer();
  StopFlyoutRest();
}

void ShowFlyout(int keyId) {
  const Flyout* flyout = FlyoutOf(keyId);
  StopFlyoutRest();
  if (!flyout || popupOpen || !platform::IsVisible(keyId) || !platform::IsEnabled(keyId)) return;
  const platform::Rect place = platform::PlaceInMainWindow(keyId);
  popupOpen = true;
  const int method =
      ShowCommandMenu(std::span(flyout->methods, static_cast<std::size_t>(flyout->count)),
                      place.left, place.bottom);
  popupOpen = false;
  if (method > 0) StartMethod(method);
}

namespace {

int askedKey = 0;  // the tool's key that has the keyboard

bool ShowAsked() {
  if (!FlyoutOf(askedKey)) return false;
  ShowFlyout(askedKey);
  return true;
}

constexpr ChordPlace kToolKeyChords{u"key of a tool"};
constexpr KeyRow kKeys[] = {{PlainKey(kToolKeyChords, platform::kKeyDown),
                             u"Choose from the ways to draw or measure", ShowAsked}};

}  // namespace

bool FlyoutKey(int keyId, const platform::KeyEvent& key) {
  askedKey = keyId;
  return RunKeyRow(kKeys, key);
}

void RegisterFlyouts() {
  RegisterTimer(kTimerFlyout, RestOver);
  Handlers handlers;
  handlers.id = kFlyouts[0].key;  // told once for all; the surface asks for it
  handlers.keys = kKeys;
  RegisterHandlers(handlers);
}

void ResetFlyouts() {
  restingOn = helpedOn = 0;
  popupOpen = false;
  StopFlyoutRest();
}

}  // namespace morva
