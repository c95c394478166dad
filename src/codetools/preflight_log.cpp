#include "codetools/preflight_log.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/palette.h"
#include "app/panels.h"
#include "codetools/validator.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr int kLinesAbove = 3;  // of the line that a report leads to, where it was out of sight

std::u16string validated;    // the program whose report stands last in the log, until it is marked
std::uint64_t reportOf = 0;  // its serial; 0: the log holds no report

// The n-th line of a text whose lines end in CR LF.
std::u16string_view LineOf(std::u16string_view text, int n) {
  std::size_t at = 0;
  for (; n > 0 && at < text.size(); --n) at = std::min(text.find(u'\n', at), text.size() - 1) + 1;
  return text.substr(at, std::min(text.find(u'\r', at), text.size()) - at);
}

// The report stands at the front of the log.
void ColourReport(std::u16string_view report) {
  int line = 0;
  for (std::size_t at = 0; at < report.size(); ++line) {
    const std::size_t end = std::min(report.find(u"\r\n", at), report.size());
    const ReportKind kind = KindOfReportLine(report.substr(at, end - at));
    if (kind == ReportKind::Error) ColourOutputLine(line, kReportError);
    if (kind == ReportKind::Warning) ColourOutputLine(line, kReportWarning);
    at = end + 2;
  }
}

// Brings the program up in its editor. False: it is gone, or a panel stands over the code.
bool ShowReported() {
  const int index = IndexOfSerial(reportOf);
  if (index < 0) {
    ShowStatus(u"The program of this report was closed.");
    return false;
  }
  Call(hooks.leaveCompare);
  SwitchTab(index);
  return MayTakeWork();
}

// Selected from its end, so that its front stays in sight.
void GoToLine(int line) {
  const int editor = ShownEditor();
  const int start = platform::EditorLineStart(editor, line);
  platform::SetEditorSelection(editor, {start + platform::EditorLineLength(editor, line), start});
  const int top = platform::FirstVisibleLine(editor);
  if (line < top || line >= top + platform::VisibleLineCount(editor)) {
    platform::ScrollToLine(editor, std::max(0, line - kLinesAbove));
  }
  platform::Repaint(kViewGutter);
  platform::SetFocusTo(editor);
}

}  // namespace

void ValidateProgram() {
  if (!platform::Exists(kIdEditor)) return;
  ClearOutput();
  std::u16string report = PreflightReport(platform::EditorText(kIdEditor));
  report += Call(hooks.checkMachine);
  // The outlet adds the last line end itself.
  report.resize(report.size() - 2);
  AppendOutput(report);
  ColourReport(report);
  Call(hooks.openOutput);
  ShowOutputFromTop();  // the errors stand first
  const ProgramTab* tab = ActiveTab();
  validated = tab ? NameOfTab(app.activeTab) : std::u16string();
  reportOf = ActiveSerial();
}

void MarkReport() {
  if (validated.empty()) return;
  AppendOutput(u"The validation above is that of " + validated + u".");
  validated.clear();
}

void FollowReportLine() {
  const std::u16string log = platform::TextOf(kIdOutputLog);
  const std::u16string line(LineOf(log, platform::LogCaretLine(kIdOutputLog)));
  if (KindOfReportLine(line) == ReportKind::Plain) {
    ShowStatus(
        u"Only lines of a preflight that begin with ERROR or WARNING lead into the program.");
    return;
  }
  if (!ShowReported()) return;
  const int place = PlaceOfReportLine(line, platform::EditorText(kIdEditor));
  GoToLine(place);
  ShowStatus(u"Line " + IntegerText(place + 1) + u"  \u2022  " + line);
}

void ResetPreflightLog() {
  validated.clear();
  reportOf = 0;
}

}  // namespace morva
