// Names of the 47 icons: numbers for the shell's drawings, open to every room.
#pragma once

namespace morva {

enum Icon : int {
  kIconMark = 0,
  kIconPlay = 1,
  kIconPause = 2,
  kIconRewind = 3,
  kIconForward = 4,
  kIconStop = 5,
  kIconRefresh = 6,
  kIconFind = 7,
  kIconCompare = 8,
  kIconHome = 9,
  kIconCad = 10,
  kIconPlate = 11,
  kIconWizard = 12,
  kIconShapes = 13,
  kIconTools = 14,
  kIconMacros = 15,
  kIconCodeIndex = 16,
  kIconSimulator = 17,
  kIconLink = 18,
  kIconNew = 19,
  kIconEdit = 20,
  kIconEye = 21,
  kIconLock = 22,
  kIconDelete = 23,
  kIconStart = 24,
  kIconPrevious = 25,
  kIconNext = 26,
  kIconEnd = 27,
  kIconFit = 28,
  kIconPan = 29,
  kIconDimensions = 30,
  kIconMeasure = 31,
  kIconGrid = 32,
  kIconGridMenu = 33,
  kIconLayers = 34,
  kIconOpen = 35,
  kIconSave = 36,
  kIconInclude = 37,
  kIconSend = 38,
  kIconReceive = 39,
  kIconCheck = 40,
  kIconOrbit = 41,
  kIconFace = 42,  // what the machining wizard cuts, 42 to 46
  kIconProfile = 43,
  kIconDrill = 44,
  kIconPeck = 45,
  kIconTap = 46,
};
inline constexpr int kIconCount = 47;

}  // namespace morva
