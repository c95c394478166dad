// The popups of the tool keys: every method of a key, by rest of the pointer or the Down key.
#pragma once

#include "platform/events.h"

namespace morva {

// Rest of the pointer on a tool key. Where the pointer is, every 150 ms; 0 for nothing of ours.
void FlyoutPointerOver(int under);
void StopFlyoutRest();
// A tool key was pressed, by the pointer or the keyboard: the one under the pointer opens nothing
// until the pointer has left it.
void KeepFlyoutShut();
// The popup of a tool key's methods.
void ShowFlyout(int keyId);
// The Down key on a tool key opens its popup. True: used.
bool FlyoutKey(int keyId, const platform::KeyEvent& key);

void RegisterFlyouts();
void ResetFlyouts();

}  // namespace morva
