// Outlets: the few places through which every room speaks to the user.
//
// There are exactly these; no room writes to their controls in any other way.
#pragma once

#include <string_view>

#include "platform/geometry.h"

namespace morva {

inline constexpr char16_t kReadyWords[] = u"Ready  \u2022  F5 Validate";  // before the first event
inline constexpr char16_t kCompareMarkedWords[] =
    u"Compare selection changed. Ctrl+click another tab, then press COMPARE.";
inline constexpr char16_t kFeaturesWords[] = u"All program features appear here.";

// StatusLine: one sentence, the last event. A text that equals the last one but for the case
// of A to Z changes nothing in it; longer than 1023 units is cut.
void ShowStatus(std::u16string_view text);
// What stands without an end in sight, as a transfer does; else that the program is ready. For
// words that are no longer true.
void ShowStanding();
// Help for the control `id` under the pointer, in the status line and over the output log, or on
// the label that the surface has for it. What was told before stays below it, and is seen again
// behind HideHelp or as soon as something else is told. False: the pointer has not moved since the
// last thing was told, so that stands.
bool ShowHelp(int id, std::u16string_view text);
// The same in the status line alone.
bool ShowHelpLine(int id, std::u16string_view text);
void HideHelp();
// Whose help is shown, 0 for none.
int HelpShownFor();
void ResetHelp();
// OutputLog: the text and CR LF at its end.
void AppendOutput(std::u16string_view text);
// Writes a line of the OutputLog, counted from 0, in this colour until the log is emptied.
void ColourOutputLine(int line, platform::Colour colour);
void ClearOutput();
// Shows its first line again, which what is appended scrolls out of a low strip.
void ShowOutputFromTop();
// DNC log: the setup panel's log box where that exists, then the OutputLog.
void LogOutput(std::u16string_view text);
// FeatureHint: the answer to a feature operation.
void ShowFeatureHint(std::u16string_view text);
// Title: window caption and the active tab's button, from activePath and editorDirty.
void UpdateTitle();

// A question in a message box, with Yes, No and the warning icon. True: Yes.
bool Confirmed(std::u16string_view title, std::u16string_view question);
// The same with No under Enter.
bool ConfirmedNoFirst(std::u16string_view title, std::u16string_view question);

// The part of a path behind the last "/" or "\".
std::u16string_view BareFileName(std::u16string_view path);

}  // namespace morva
