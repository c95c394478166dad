#include "dnc/setup_panel.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/limits.h"
#include "app/mode_table.h"
#include "app/outlets.h"
#include "app/panels.h"
#include "app/router.h"
#include "dnc/serial_profile.h"
#include "dnc/transfer.h"
#include "forms/form.h"
#include "forms/sheet.h"
#include "platform/control.h"
#include "platform/file.h"
#include "platform/listing.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::Rect;

struct Item {
  const char16_t* words;
  std::int32_t number;  // as the settings file holds it
};
constexpr Item kDataBits[] = {{u"7", 7}, {u"8", 8}};
constexpr Item kParities[] = {{u"Even", 2}, {u"None", 0}, {u"Odd", 1}};
constexpr Item kStopBits[] = {{u"2", 2}, {u"1", 0}};
constexpr Item kFlows[] = {{u"XON / XOFF", 1}, {u"RTS / CTS", 2}, {u"None", 0}};
// What only a settings file says.
constexpr Item kFurtherParities[] = {{u"Mark", 3}, {u"Space", 4}};
constexpr Item kFurtherStopBits[] = {{u"1.5", 1}};
constexpr int kBaudAtStart = 3;  // row of 9600

// The lists of numbers, in the order of the panel.
struct NumberList {
  int id;
  std::span<const Item> items;  // none: the baud rates
  std::int32_t SerialProfile::*field;
  std::span<const Item> further = {};  // words of numbers that are not offered
  const char16_t* other = u"";         // before every other number
};
constexpr NumberList kLists[] = {
    {kIdDncBaudList, {}, &SerialProfile::baud},
    {kIdDncDataBits, kDataBits, &SerialProfile::dataBits},
    {kIdDncParity, kParities, &SerialProfile::parity, kFurtherParities, u"Unknown: "},
    {kIdDncStopBits, kStopBits, &SerialProfile::stopBits, kFurtherStopBits, u"Unknown: "},
    {kIdDncFlow, kFlows, &SerialProfile::flow, {}, u"None: "}};

constexpr char16_t kSteps[] =
    u"1   Connect the adapter\r\nPlug in the USB / RS-232 adapter, then Rescan ports. Select the "
    u"COM port assigned to that adapter.\r\n\r\n2   Match the machine\r\nCopy baud, data bits, "
    u"parity, stop bits and flow control from the machine's serial settings. Both ends must "
    u"agree.\r\n\r\n3   Check and save\r\nCheck port verifies that Windows can open and configure "
    u"it. It does not test the cable or a machine response. Save the profile when ready.";

// What stands where on the panel.
enum Part : int { kTop, kFoot, kAbort, kGuide };

constexpr int kLabelWidth = 126;
constexpr int kRowPitch = 52;  // pixels from list to list, where the window is high enough
constexpr int kFieldHeight = 26;
constexpr int kLeftLeast = 300;
constexpr int kLeftMost = 460;
constexpr int kColumnGap = 16;
constexpr int kTopHeight = 60;
constexpr int kKeyHeight = 30;

// clang-format off
constexpr FormRow kListRows[] = {
    {.kind = RowKind::Choice, .id = kIdDncPorts, .label = u"Serial port",
     .help = u"The port that the cable to the machine is plugged into", .filled = true},
    {.kind = RowKind::Choice, .id = kIdDncBaudList, .label = u"Baud rate",
     .help = u"Bits a second, as the machine's settings say", .filled = true},
    {.kind = RowKind::Choice, .id = kIdDncDataBits, .label = u"Data bits",
     .help = u"Bits of a character, as the machine's settings say", .filled = true},
    {.kind = RowKind::Choice, .id = kIdDncParity, .label = u"Parity",
     .help = u"Check bit of a character, as the machine's settings say", .filled = true},
    {.kind = RowKind::Choice, .id = kIdDncStopBits, .label = u"Stop bits",
     .help = u"Bits behind a character, as the machine's settings say", .filled = true},
    {.kind = RowKind::Choice, .id = kIdDncFlow, .label = u"Flow control",
     .help = u"How the machine holds up the sender, as its settings say", .filled = true},
};
constexpr FormRow kFrameRows[] = {
    {.kind = RowKind::Head, .label = u"Machine connection", .pages = PageBit(kTop)},
    {.kind = RowKind::Note, .label = u"Set up a serial profile for this PC and your machine.",
     .pages = PageBit(kTop)},
    {.kind = RowKind::Keys, .pages = PageBit(kAbort), .keys = {kIdDncAbort}},
    {.kind = RowKind::Keys, .pages = PageBit(kFoot), .keys = {kIdDncRescan, kIdDncCheck}},
    {.kind = RowKind::Keys, .pages = PageBit(kFoot), .keys = {kIdDncSave, kIdDncClose},
     .shares = {3, 1}},
    {.kind = RowKind::Log, .id = kIdDncSteps, .name = u"Steps to a connection",
     .pages = PageBit(kGuide), .least = 48, .percent = 66},
    {.kind = RowKind::Note,
     .label = u"First transfer: use RECEIVE on the top bar, then send a small program from the "
              u"machine. SEND and RECEIVE use this saved profile.",
     .pages = PageBit(kGuide), .yields = true},
    {.kind = RowKind::Log, .id = kIdDncLog, .name = u"Connection log", .pages = PageBit(kGuide),
     .least = 96},
};
// What stands in the right panel.
constexpr FormRow kPageRows[] = {
    {.kind = RowKind::Note, .id = kIdDncPageState, .label = u"DNC: OFFLINE", .height = 22},
    {.kind = RowKind::Note, .id = kIdDncPagePort, .label = u"PORT  --", .height = 22},
    {.kind = RowKind::Note, .id = kIdDncPageBaud, .label = u"BAUD  9600", .height = 22},
    {.kind = RowKind::Keys, .keys = {kIdOpenDncSetup}, .above = 6},
    {.kind = RowKind::Note,
     .label = u"Top SEND / RECEIVE buttons auto-attempt the saved COM profile first. If no "
              u"profile exists, MORVA searches for a serial port. If the port cannot be "
              u"opened/configured the main status changes to CONNECTION FAILED.",
     .above = 10},
    {.kind = RowKind::Note,
     .label = u"Connected means Windows opened the configured serial port; an actual Haas "
              u"handshake is proven only by a successful transfer.",
     .above = 10},
};
// clang-format on

constexpr Sheet kSheet{.frame = {kViewDncPanel, u"HaasDncWnd", u"Machine connection"},
                       .paper = {kViewDncPaper, u"MorvaDncPaper", u"Serial profile"},
                       .bar = {kViewDncBar, u"MorvaDncBar", u"Scroll the serial profile"},
                       .parent = platform::kMainWindow};
constexpr FormLook kListLook{.edge = 4,
                             .top = 4,
                             .gap = kRowPitch - kFieldHeight,
                             .tightGap = 8,
                             .fieldHeight = kFieldHeight,
                             .labelWidth = kLabelWidth,
                             .labels = Labels::Beside,
                             .labelFont = platform::FontRole::Body};
constexpr Form kListForm{
    .look = &kListLook, .sheet = &kSheet, .rows = kListRows, .escape = kIdDncClose};
constexpr FormLook kFrameLook{
    .gap = 6, .keyHeight = kKeyHeight, .headGap = 2, .labels = Labels::None};
constexpr Form kFrameForm{.look = &kFrameLook, .rows = kFrameRows, .escape = kIdDncClose};
constexpr FormLook kPageLook{.edge = 4, .keyHeight = 30, .labels = Labels::None};
constexpr Form kPageForm{.look = &kPageLook, .rows = kPageRows};

constexpr Command kCommands[] = {
    {kIdDncRescan, u"Rescan ports", u"Look for serial ports again"},
    {kIdDncCheck, u"Check port", u"Open the port once with these settings"},
    {kIdDncSave, u"Save connection profile", u"Keep these settings for SEND and RECEIVE"},
    {.id = kIdDncAbort,
     .words = u"Abort active transfer",
     .help = u"End the transfer now; what has left the port stays sent"},
    {.id = kIdDncClose,
     .words = u"Close",
     .help = u"Close the setup of the connection",
     .name = u"Close connection setup"},
};

bool open = false;
// The names behind the rows of the port list.
std::vector<std::u16string> portNames;
// The port that the user saved or chose last. Another one that is selected stands in for it, as it
// was not there, and is nobody's choice.
std::u16string wantedPort;
// The lists as they agreed with the file last. Behind another mode they tell nothing more than it,
// and a value that was changed in it since counts.
SerialProfile filed;
bool agrees = false;  // they did since the panel was opened

bool IsShown() {
  return open && app.surface == kSurfaceCode && app.mode == kModeDnc && !app.compareActive;
}

int RowOfPort(std::u16string_view name) {
  for (std::size_t i = 0; i < portNames.size(); ++i) {
    if (SameFolded(portNames[i], name)) return static_cast<int>(i);
  }
  return -1;
}

std::u16string ChosenPort() {
  const int row = platform::SelectedRow(kIdDncPorts);
  return row >= 0 && row < static_cast<int>(portNames.size())
             ? portNames[static_cast<std::size_t>(row)]
             : std::u16string();
}

void AddPort(std::u16string_view name, std::u16string_view adapter) {
  portNames.emplace_back(name);
  std::u16string row(name);
  if (!adapter.empty()) row += u"  \u00B7  " + std::u16string(adapter);
  platform::AddRow(kIdDncPorts, row);
}

// No scan finds what is named by its path. It stays in the list, whether it is there or not.
bool IsPath(std::u16string_view port) { return !port.empty() && port[0] == u'/'; }

bool IsGone(std::u16string_view path) { return !platform::FileExists(path); }

void AddPath(std::u16string_view path) { AddPort(path, IsGone(path) ? u"gone" : u""); }

void FillPorts(const platform::SerialName* names, int count) {
  const std::u16string chosen = ChosenPort();
  platform::ClearRows(kIdDncPorts);
  portNames.clear();
  for (int i = 0; i < count; ++i) AddPort(names[i].name, names[i].adapter);
  if (IsPath(chosen) && RowOfPort(chosen) < 0) AddPath(chosen);
  const int back = wantedPort.empty() ? -1 : RowOfPort(wantedPort);
  const int row = back >= 0 ? back : RowOfPort(chosen);
  platform::SelectRow(kIdDncPorts, std::max(row, portNames.empty() ? -1 : 0));
}

void WantChosenPort() {
  if (const std::u16string port = ChosenPort(); !port.empty()) wantedPort = port;
}

bool IsStandIn(std::u16string_view port) {
  return !wantedPort.empty() && !SameFolded(port, wantedPort);
}

void FillNumbers() {
  for (const NumberList& list : kLists) {
    platform::ClearRows(list.id);
    for (const Item& item : list.items) platform::AddRow(list.id, item.words, item.number);
    platform::SelectRow(list.id, 0);
  }
  for (const std::int32_t baud : kOfferedBauds) {
    platform::AddRow(kIdDncBaudList, IntegerText(baud), baud);
  }
  platform::SelectRow(kIdDncBaudList, kBaudAtStart);
}

std::u16string WordsOfNumber(const NumberList& list, std::int32_t number) {
  for (const Item& item : list.further) {
    if (item.number == number) return item.words;
  }
  return list.other + IntegerText(number);
}

// A number that no entry stands for gets one of its own, so that saving keeps it.
void ShowNumber(const NumberList& list, std::int32_t number) {
  int row = 0;
  while (row < platform::RowCount(list.id) && platform::RowData(list.id, row) != number) ++row;
  if (row == platform::RowCount(list.id)) {
    platform::AddRow(list.id, WordsOfNumber(list, number), number);
  }
  platform::SelectRow(list.id, row);
}

bool ReadAllLists(SerialProfile& profile) {
  const std::u16string port = ChosenPort();
  if (port.empty()) return false;
  CopyBounded(profile.port, kPortNameUnits, port);
  for (const NumberList& list : kLists) {
    const int row = platform::SelectedRow(list.id);
    profile.*list.field = static_cast<std::int32_t>(platform::RowData(list.id, std::max(row, 0)));
  }
  return true;
}

void NoteFiled() {
  filed = SerialProfile();  // what stood behind a longer name counts in a comparison
  agrees = ReadAllLists(filed) && !IsStandIn(filed.port);
}

void ShowSavedProfile() {
  if (!LoadSerialProfile()) return;
  const std::u16string_view port = serialProfile.port;
  wantedPort = port;
  bool gone = false;
  if (IsPath(port) && RowOfPort(port) < 0) {
    AddPath(port);
    gone = IsGone(port);
  }
  const int row = RowOfPort(port);
  if (row >= 0) platform::SelectRow(kIdDncPorts, row);
  if (row < 0 || gone) {
    LogOutput(PortGoneWords(port));
  }
  for (const NumberList& list : kLists) ShowNumber(list, serialProfile.*list.field);
  NoteFiled();
  LogOutput(u"Saved MORVA serial profile loaded.");
}

bool ReadLists(SerialProfile& profile) {
  if (!ReadAllLists(profile)) return false;
  return IsShown() || (!IsStandIn(profile.port) && !(agrees && profile == filed));
}

// The line that a transfer uses is opened by nobody else.
void CheckChosenPort() {
  if (TransferRuns()) {
    LogOutput(u"Check port opens the line: wait for the end of the transfer.");
  } else {
    CheckPort();
  }
}

void SaveLists() {
  const SerialProfile running = serialProfile;
  SaveSerialProfile();
  WantChosenPort();
  NoteFiled();
  if (!TransferRuns()) return;
  TakeBackProfile(running);
  LogOutput(u"The transfer that runs keeps its port and settings.");
}

bool KeepLogLine(const char16_t* text) {
  if (!open) return false;
  platform::AppendText(kIdDncLog, text);
  return true;
}

void FollowState() {
  if (IsShown()) RelayPanels();
}

void PlacePanel(const Rect& area) {
  const int wanted = (RectWidth(area) - kColumnGap) * 3 / 5;
  const int left = area.left + std::clamp(wanted, kLeftLeast, kLeftMost);
  const int top = area.top + kTopHeight;
  int foot = area.bottom - 2 * kKeyHeight - kFrameLook.gap;
  std::vector<FormPart> parts = {{{area.left, area.top, area.right, top}, kTop}};
  if (TransferRuns()) {
    foot -= kKeyHeight + kFrameLook.gap;
    parts.push_back({{area.left, foot, left, foot + kKeyHeight}, kAbort});
    parts.push_back({{area.left, foot + kKeyHeight + kFrameLook.gap, left, area.bottom}, kFoot});
  } else {
    parts.push_back({{area.left, foot, left, area.bottom}, kFoot});
  }
  parts.push_back({{left + kColumnGap, top, area.right, area.bottom}, kGuide});
  PlaceForm(kListForm, {area.left, top, left, foot - kFrameLook.gap}, 0);
  PlaceForm(kFrameForm, parts);
}

void HidePanel() {
  HideForm(kListForm);
  HideForm(kFrameForm);
}

void ShowSetup() {
  Call(hooks.setMode, static_cast<int>(kModeDnc));
  OpenSetupPanel();
}

}  // namespace

const ModeRow kDncMode{.mode = kModeDnc,
                       .place = 11,
                       .words = u"DNC / RS-232",
                       .header = u"DNC / RS-232",
                       .remembers = true};

void OpenSetupPanel() {
  if (open) {
    platform::SetFocusTo(kIdDncPorts);
    return;
  }
  if (app.mode != kModeDnc || !MayTakeWork()) return;
  open = true;
  wantedPort.clear();
  agrees = false;
  platform::SetText(kIdDncSteps, kSteps);
  platform::SetText(kIdDncLog, u"Connection setup ready.\r\n");
  FillNumbers();
  ScanComPorts();
  ShowSavedProfile();
  RelayPanels();
  platform::SetFocusTo(kIdDncPorts);
}

bool CloseSetupPanel() {
  if (!open) return true;
  if (TransferRuns()) {
    if (!ConfirmedNoFirst(u"DNC Transfer",
                          u"A transfer is active. Abort it and close the DNC wizard?")) {
      return false;
    }
    RequestAbort();
  }
  open = false;
  platform::ClearRows(kIdDncPorts);
  portNames.clear();
  DropListedProfile(TransferRuns());
  RelayPanels();
  return true;
}

bool IsSetupPanelOpen() { return open; }

void RegisterSetupPanel() {
  Panel panel;
  panel.spot = PanelSpot::Work;
  panel.active = IsShown;
  panel.make = [] {
    MakeForm(kListForm);
    MakeForm(kFrameForm);
  };
  panel.place = PlacePanel;
  panel.hide = HidePanel;
  panel.focus = [] {
    platform::SetFocusTo(kIdDncPorts);
    return true;
  };
  panel.back = [] {
    CloseSetupPanel();
    return true;
  };
  RegisterPanel(panel);
  Panel page;
  page.mode = kModeDnc;
  page.row = &kDncMode;
  page.make = [] { MakeForm(kPageForm); };
  page.place = [](const Rect& area) { PlaceForm(kPageForm, area); };
  page.hide = [] { HideForm(kPageForm); };
  RegisterPanel(page);
  for (const Form* form : {&kListForm, &kFrameForm, &kPageForm}) RegisterForm(*form);
  RegisterSheet<kSheet>();
  AddCommands(kCommands);
  const RouterStage click = RouterStage::Click;
  for (const int id : {kIdSetup, kIdSetupSecond, kIdOpenDncSetup}) {
    RegisterCommand(click, id, platform::kNotifyClick, [](int, int) { ShowSetup(); });
  }
  RegisterCommand(RouterStage::FeatureSwitch, kIdMachine, platform::kNotifyClick,
                  [](int, int) { ShowSetup(); });
  RegisterCommand(click, kIdDncRescan, platform::kNotifyClick, [](int, int) { ScanComPorts(); });
  RegisterCommand(click, kIdDncCheck, platform::kNotifyClick, [](int, int) { CheckChosenPort(); });
  RegisterCommand(click, kIdDncSave, platform::kNotifyClick, [](int, int) { SaveLists(); });
  RegisterCommand(RouterStage::Notified, kIdDncPorts, platform::kNotifyComboSelect,
                  [](int, int) { WantChosenPort(); });
  RegisterCommand(click, kIdDncAbort, platform::kNotifyClick, [](int, int) { AbortTransfer(); });
  RegisterCommand(click, kIdDncClose, platform::kNotifyClick, [](int, int) { CloseSetupPanel(); });
  RegisterCommand(click, kIdDncSend, platform::kNotifyClick, [](int, int) { SendEditorProgram(); });
  RegisterCommand(click, kIdDncSendFile, platform::kNotifyClick,
                  [](int, int) { SendFileFromDisk(); });
  RegisterCommand(click, kIdDncReceive, platform::kNotifyClick, [](int, int) { ReceiveProgram(); });
  setupPanel.exists = IsSetupPanelOpen;
  setupPanel.shown = IsShown;
  setupPanel.readLists = ReadLists;
  setupPanel.fillPorts = FillPorts;
  setupPanel.followState = FollowState;
  hooks.setupPanelLog = KeepLogLine;
}

void ResetSetupPanel() {
  open = false;
  portNames.clear();
  wantedPort.clear();
  agrees = false;
}

}  // namespace morva
