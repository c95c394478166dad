#include "app/outlets.h"

#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/surfaces.h"
#include "platform/control.h"
#include "platform/message.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

struct Help {
  int of = 0;                // whose it is, 0: none is shown
  unsigned movesAtTold = 0;  // platform::PointerMoves when something was told last
};
Help help;

// What is told now must be seen: help under a pointer that stays where it is does not cover it.
void BringForward() {
  HideHelp();
  help.movesAtTold = platform::PointerMoves();
}

}  // namespace

void ShowStatus(std::u16string_view text) {
  BringForward();
  // A repeated event must not flicker.
  if (SameFolded(text, app.statusText)) return;
  CopyBounded(app.statusText, kStatusUnits, text);
  platform::SetText(kIdStatusLine, app.statusText);
}

void ShowStanding() {
  if (!Call(hooks.tellStanding)) ShowStatus(kReadyWords);
}

bool ShowHelpLine(int id, std::u16string_view text) {
  if (platform::PointerMoves() == help.movesAtTold) return false;
  help.of = id;
  platform::SetText(kIdStatusLine, text);
  platform::SetVisible(kIdOutputHelp, false);
  return true;
}

bool ShowHelp(int id, std::u16string_view text) {
  if (!ShowHelpLine(id, text)) return false;
  const Surface* up = SurfaceUp();
  if (up && up->hintLabel != 0) {
    platform::SetText(up->hintLabel, text);
    return true;
  }
  if (!platform::IsVisible(kIdOutputLog)) return true;
  // No form: the help lies over the log for as long as the pointer rests.
  platform::SetText(kIdOutputHelp, text);
  platform::SetPlace(kIdOutputHelp, platform::PlaceOf(kIdOutputLog));
  platform::BringToTop(kIdOutputHelp);
  platform::SetVisible(kIdOutputHelp, true);
  return true;
}

void HideHelp() {
  if (help.of == 0) return;
  help.of = 0;
  platform::SetText(kIdStatusLine, app.statusText[0] ? app.statusText : kReadyWords);
  platform::SetVisible(kIdOutputHelp, false);
}

int HelpShownFor() { return help.of; }

void ResetHelp() { help = Help(); }

void AppendOutput(std::u16string_view text) {
  std::u16string line(text);
  line += u"\r\n";
  BringForward();
  platform::AppendText(kIdOutputLog, line);
  TellSurfaceLogged(text);
}

void ColourOutputLine(int line, platform::Colour colour) {
  platform::SetLogLineColour(kIdOutputLog, line, colour);
}

void ClearOutput() {
  BringForward();
  platform::SetText(kIdOutputLog, u"");
}

void ShowOutputFromTop() { platform::ScrollToTop(kIdOutputLog); }

void LogOutput(std::u16string_view text) {
  std::u16string line(text);
  Call(hooks.setupPanelLog, (line + u"\r\n").c_str());
  AppendOutput(line);
}

void ShowFeatureHint(std::u16string_view text) { platform::SetText(kIdFeatureHint, text); }

bool Confirmed(std::u16string_view title, std::u16string_view question) {
  return platform::ShowBox(title, question, platform::BoxButtons::YesNo,
                           platform::BoxIcon::Warning) == platform::BoxAnswer::Yes;
}

bool ConfirmedNoFirst(std::u16string_view title, std::u16string_view question) {
  return platform::ShowBox(title, question, platform::BoxButtons::NoYes,
                           platform::BoxIcon::Warning) == platform::BoxAnswer::Yes;
}

std::u16string_view BareFileName(std::u16string_view path) {
  const std::size_t at = path.find_last_of(u"/\\");
  return at == std::u16string_view::npos ? path : path.substr(at + 1);
}

void UpdateTitle() {
  char16_t caption[kWindowTitleUnits] = {};
  AppendBounded(caption, kWindowTitleUnits, u"MORVA v4.20.0");
  if (app.activePath[0]) {
    char16_t file[kCaptionFileUnits] = {};
    CopyBounded(file, kCaptionFileUnits,
                std::u16string(BareFileName(app.activePath)) + Call(hooks.twinWords));
    AppendBounded(caption, kWindowTitleUnits, u"  \u2014  ");
    AppendBounded(caption, kWindowTitleUnits, file);
  }
  if (app.editorDirty) AppendBounded(caption, kWindowTitleUnits, u"  \u2022");
  platform::SetWindowTitle(caption);
  Call(hooks.titleChanged);
}

}  // namespace morva
