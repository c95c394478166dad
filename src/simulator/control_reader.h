// The program as the control runs it: text into the motion of the machine.
//
// The second reader beside extract.h, which shows the path as it is written. What is read, word by
// word, stands in docs/machine-motion.md.
#pragma once

#include <cstdint>
#include <string_view>

#include "simulator/control_path.h"
#include "simulator/control_table.h"

namespace morva {

struct KnownStock;

struct ReadMotionOptions {
  bool metric = false;  // points are in millimetres, else in inches
  const ControlTable* table = nullptr;
  // The text of a program that M98 or G65 calls and that does not stand in this one; it stays valid
  // until the run ends. 0: there is none. Null for nowhere to look.
  std::int32_t (*findProgram)(std::int32_t number, std::u16string_view& text) = nullptr;
  const KnownStock* stock = nullptr;  // what the check may measure motion against
};

// Fills the track from `text` (the first NUL ends it); what it had is gone. Bounded: what runs for
// ever stops with a finding, and the motion up to there stands.
void ReadMachineMotion(ControlTrack& track, std::u16string_view text,
                       const ReadMotionOptions& options);

}  // namespace morva
