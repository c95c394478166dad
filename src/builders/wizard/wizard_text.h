// The machining wizard: five kinds of short jobs as program text, from plain values. Pure
// functions; lengths are in the unit of the values.
//
// The text is plain: no feature block.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "builders/common/builder_field.h"
#include "platform/geometry.h"

namespace morva {

struct CodeWriter;

enum WizardKind : int { kWizardFace, kWizardSlot, kWizardDrill, kWizardPeck, kWizardTap };
inline constexpr int kWizardKinds = 5;

// The fields in the order of the form. What the last four say depends on the kind.
enum WizardNumber : int {
  kWizardTool,
  kWizardOffset,  // a text
  kWizardRpm,
  kWizardFeed,  // of taps: threads an inch, or the pitch
  kWizardSafeZ,
  kWizardDepth,
  kWizardX,
  kWizardY,
  kWizardNinth,
  kWizardTenth,
};
inline constexpr int kWizardNumbers = 10;
inline constexpr int kLastWizardTool = 999;

struct WizardValues {
  int kind = kWizardFace;
  bool metric = false;
  double numbers[kWizardNumbers] = {};
  std::u16string offset = u"G54";
};
// What a form of this kind says: numbers in the order of the fields, the offset as first words.
WizardValues WizardOf(int kind, const FormValues& form);

// "Skim / face" and so on: the rows of the list of kinds.
std::span<const char16_t* const> WizardKinds();
// The ten fields of a kind; another kind counts as the first.
std::span<const BuilderField> WizardFields(int kind);

inline constexpr char16_t kWizardTitle[] = u"Machining Wizard";
BuilderFault CheckWizard(const WizardValues& values);
// Values that do not pass are written as far as there is something to write.
void WriteWizard(const WizardValues& values, CodeWriter& out);
std::size_t WizardRoom();

// Where the tool goes at depth, from the start on: the zigzag of a face, the way of a slot.
std::vector<platform::PointF> WizardWay(const WizardValues& values);
// Where holes are, of the kinds that have some; at most 400.
std::vector<platform::PointF> WizardHoles(const WizardValues& values);

}  // namespace morva
