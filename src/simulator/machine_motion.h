// The switch "Machine motion": the view shows the program of the editor as the control runs it.
//
// While it is off, nothing is read for it and nothing else differs.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "simulator/shown_path.h"

namespace morva {

// The owner of the program's path in the view: the machine's while the switch is on.
PathOwner EditorOwner();
// Fills the machine's path from the program's text while the switch is on, else empties it. The
// feature index must describe the text: lines that are hidden leave the path, and what the
// program's ghosts show stands behind the lines as they are written. A text `ofEditor` that was run
// before is not run again while nothing has changed that the run depends on. Markers that tagging
// has put into it, or taken out, move the line numbers of the run.
void FollowMachineMotion(std::u16string_view text, bool metric, bool ofEditor);

// The settings of the control, and programs in files beside the program, are read again at the
// next run.
void ForgetControlSettings();

// "Machine motion  0:12:04  T1 0:03:20  T2 0:08:44  3 findings, first at line 12"; empty while the
// path that is shown is another one. Where the head is in use its time stands in front.
std::u16string MachineWords();
// Tools, their lines and times, a line each.
std::u16string MachineTip();
// What the run over the program's text of the last read found, worst first, a line each with CR LF:
// "ERROR: Line 12: ..." for an alarm or a wrong move, "WARNING: Line 12: ..." for the rest. A head
// stands in front, what DPRNT printed and the cycle time behind. Empty while the switch is off.
std::u16string MachineCheckReport();
// "1:02:03" of seconds, rounded to whole ones.
std::u16string ClockText(double seconds);

}  // namespace morva
