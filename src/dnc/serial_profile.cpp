#include "dnc/serial_profile.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

#include "app/command_ids.h"
#include "app/hooks.h"
#include "app/outlets.h"
#include "app/palette.h"
#include "platform/control.h"
#include "platform/profile.h"
#include "platform/window.h"
#include "text/codetext.h"

namespace morva {

SerialProfile serialProfile;
std::int32_t dncState = kDncOffline;
SetupPanel setupPanel;

namespace {

constexpr const char16_t* kSection = u"DNC";
constexpr int kPortReadUnits = 80;  // of the value in the file, with the terminator

// What was open last time that the port could be opened.
SerialProfile openedProfile;
// Whether `serialProfile.port` is the beginning of a longer name in the file.
bool portCut = false;

struct NumberKey {
  const char16_t* key;
  std::int32_t SerialProfile::*field;
  const char16_t* text;  // the default as the file would hold it
  std::int32_t number;
  const char16_t* name;
  std::span<const char16_t* const> words = {};  // of the numbers from 0 on, where they need some
};

constexpr const char16_t* kParityWords[] = {u"None", u"Odd", u"Even", u"Mark", u"Space"};
constexpr const char16_t* kStopBitWords[] = {u"1", u"1.5", u"2"};
constexpr const char16_t* kFlowWords[] = {u"None", u"XON / XOFF", u"RTS / CTS"};

constexpr NumberKey kNumberKeys[] = {
    {u"Baud", &SerialProfile::baud, u"9600", 9600, u"baud rate"},
    {u"DataBits", &SerialProfile::dataBits, u"7", 7, u"data bits"},
    {u"Parity", &SerialProfile::parity, u"2", 2, u"parity", kParityWords},
    {u"StopBits", &SerialProfile::stopBits, u"2", 2, u"stop bits", kStopBitWords},
    {u"Flow", &SerialProfile::flow, u"1", 1, u"flow control", kFlowWords},
};

// "parity Even"
std::u16string NamedNumber(const NumberKey& row, std::int32_t number) {
  const std::u16string words = std::u16string(row.name) + u" ";
  if (number < 0 || number >= static_cast<std::int32_t>(row.words.size())) {
    return words + IntegerText(number);
  }
  return words + row.words[static_cast<std::size_t>(number)];
}

bool PanelExists() { return setupPanel.exists && setupPanel.exists(); }

bool PanelRules() {
  SerialProfile listed;
  if (!PanelExists()) return false;
  return !setupPanel.shown || setupPanel.shown() || setupPanel.readLists(listed);
}

void RefreshReadOuts() {
  std::u16string port = u"PORT  ";
  port += serialProfile.port[0] ? serialProfile.port : u"--";
  const std::u16string baud = u"BAUD  " + IntegerText(serialProfile.baud);
  for (const int id : {kIdDncPort, kIdDncPagePort}) platform::SetText(id, port);
  for (const int id : {kIdDncBaud, kIdDncPageBaud}) platform::SetText(id, baud);
}

// Which name is which device; nothing where the names are the system's own.
void LogPortNames(const platform::SerialName* names, int count) {
  for (int i = 0; i < count; ++i) {
    if (!names[i].device[0] || SameFolded(names[i].device, names[i].name)) continue;
    std::u16string line = names[i].name;
    line += u" is ";
    line += names[i].device;
    if (names[i].adapter[0]) {
      line += u", ";
      line += names[i].adapter;
    }
    LogOutput(line);
  }
}

// Opens and closes at once: the port is never held between operations.
bool TryPort() {
  const platform::SerialSettings settings = SettingsOf(serialProfile);
  platform::SerialProblem problem = platform::SerialProblem::None;
  if (platform::OpenSerial(settings, problem)) {
    platform::CloseSerial();
    openedProfile = serialProfile;
    return true;
  }
  LogOpenProblem(settings, problem);
  return false;
}

bool ChooseFromPanel() {
  SerialProfile shown;
  if (!setupPanel.readLists || !setupPanel.readLists(shown)) {
    LogOutput(u"Select a COM port first.");
    return false;
  }
  serialProfile = shown;
  portCut = false;
  return true;
}

std::u16string SavedPort() {
  std::u16string saved = platform::ReadProfile(kSection, u"Port", u"");
  if (saved.size() >= kPortNameUnits) saved.resize(kPortNameUnits - 1);  // as it is loaded
  return saved;
}

std::int32_t SavedNumber(const NumberKey& row) {
  return ParseInteger(platform::ReadProfile(kSection, row.key, row.text), row.number);
}

// Whether the profile of this moment is the one that was opened.
bool IsStillWanted() { return ChooseSerialProfile() && serialProfile == openedProfile; }

std::u16string SavedWords() {
  if (platform::WhereProfileIsKept() == platform::ProfilePlace::BesideExecutable) {
    return u"DNC profile saved beside MORVA.exe.";
  }
  return u"DNC profile saved in " + platform::ProfilePath() + u".";
}

}  // namespace

bool LoadSerialProfile() {
  std::u16string port = platform::ReadProfile(kSection, u"Port", u"");
  if (port.size() >= kPortReadUnits) port.resize(kPortReadUnits - 1);
  // A port found earlier in the same run survives a file that names none.
  if (!port.empty()) {
    CopyBounded(serialProfile.port, kPortNameUnits, port);
    portCut = port.size() >= kPortNameUnits;
  }
  for (const NumberKey& row : kNumberKeys) {
    serialProfile.*row.field = SavedNumber(row);
  }
  return serialProfile.port[0] != 0;
}

void SaveSerialProfile() {
  if (!ChooseSerialProfile()) return;
  platform::BeginProfileChange();
  platform::WriteProfile(kSection, u"Port", serialProfile.port);
  for (const NumberKey& row : kNumberKeys) {
    platform::WriteProfile(kSection, row.key, IntegerText(serialProfile.*row.field));
  }
  platform::EndProfileChange([](bool saved) {
    if (saved) {
      LogOutput(SavedWords());
    } else {
      ShowStatus(u"MORVA.ini could not be written — settings last for this run only.");
    }
  });
  RefreshReadOuts();
}

bool ChooseSerialProfile() {
  if (PanelRules()) return ChooseFromPanel();
  if (LoadSerialProfile()) return true;
  platform::SerialName names[kMaxComPorts];
  const int count = std::min(platform::ListSerialPorts(names, kMaxComPorts), kMaxComPorts);
  if (count <= 0) {
    LogOutput(u"Auto-connect: no serial COM port was found.");
    return false;
  }
  LogPortNames(names, count);
  CopyBounded(serialProfile.port, kPortNameUnits, names[0].name);
  portCut = false;
  return true;
}

void ScanComPorts() {
  platform::SerialName names[kMaxComPorts];
  const int count = std::min(platform::ListSerialPorts(names, kMaxComPorts), kMaxComPorts);
  if (PanelExists() && setupPanel.fillPorts) setupPanel.fillPorts(names, count);
  if (count <= 0) {
    LogOutput(u"No COM ports detected. Check the USB/RS-232 adapter and driver.");
    return;
  }
  LogOutput(u"Serial port scan complete.");
  LogPortNames(names, count);
}

std::vector<std::u16string> UnsavedSentences(std::u16string_view verb) {
  std::vector<std::u16string> sentences;
  const std::u16string saved = SavedPort();
  if (saved.empty()) return sentences;
  if (!SameFolded(saved, serialProfile.port)) {
    sentences.push_back(std::u16string(verb) + u" " + serialProfile.port +
                        u". The saved profile names " + saved + u".");
  }
  std::u16string others;
  for (const NumberKey& row : kNumberKeys) {
    const std::int32_t number = serialProfile.*row.field;
    if (number == SavedNumber(row)) continue;
    others += (others.empty() ? u"" : u", ") + NamedNumber(row, number);
  }
  if (!others.empty()) sentences.push_back(u"Other than in the saved profile: " + others + u".");
  return sentences;
}

bool AutoConnect() {
  if (dncState == kDncConnected && IsStillWanted()) return true;
  LogOutput(u"Auto-connect: attempting serial connection...");
  if (!ChooseSerialProfile()) {
    SetDncState(kDncConnectionFailed);
    ShowStatus(u"DNC connection failed — open DNC Setup to select a COM port.");
    return false;
  }
  if (!TryPort()) {
    SetDncState(kDncConnectionFailed);
    ShowStatus(u"DNC connection failed — COM port could not be opened/configured.");
    LogOutput(u"AUTO-CONNECT FAILED: unable to open/configure the selected COM port.");
    return false;
  }
  SetDncState(kDncConnected);
  ShowStatus(u"DNC connected — serial port opened successfully.");
  LogOutput(
      u"AUTO-CONNECT OK: serial port is available. Machine handshake is confirmed only by a "
      u"successful transfer.");
  return true;
}

void CheckPort() {
  if (!ChooseSerialProfile()) {
    SetDncState(kDncConnectionFailed);
    return;
  }
  if (!TryPort()) {
    LogOutput(u"TEST FAILED: Windows could not open/configure the selected COM port.");
    SetDncState(kDncConnectionFailed);
    return;
  }
  LogOutput(u"TEST OK: COM port opened and communication parameters were accepted by Windows.");
  LogOutput(
      u"This does not prove the Haas settings/cable handshake match until an actual "
      u"receive/send test succeeds.");
  SetDncState(kDncConnected);
}

void TakeBackProfile(const SerialProfile& running) {
  serialProfile = running;
  RefreshReadOuts();
}

void SetDncState(std::int32_t state) {
  dncState = state;
  // No form: the word stands in the top band too, and its colour says the state.
  platform::ControlColours colours;
  colours.text = DncStateColour(state);
  colours.transparent = true;
  for (const int id : {kIdDncState, kIdDncPageState}) {
    platform::SetText(id, DncStateWord(state));
    platform::SetColours(id, colours);
    platform::Repaint(id);
  }
  RefreshReadOuts();
  Call(setupPanel.followState);
}

void DropListedProfile(bool transferRuns) {
  LoadSerialProfile();
  if (!transferRuns) RefreshReadOuts();
}

const char16_t* DncStateWord(std::int32_t state) {
  switch (state) {
    case kDncConnected:
      return u"DNC: CONNECTED";
    case kDncTransferring:
      return u"DNC: TRANSFERRING";
    case kDncError:
      return u"DNC: ERROR";
    case kDncConnectionFailed:
      return u"DNC: CONNECTION FAILED";
    default:
      return u"DNC: OFFLINE";
  }
}

std::uint32_t DncStateColour(std::int32_t state) {
  switch (state) {
    case kDncConnected:
      return kDncConnectedText;
    case kDncTransferring:
      return kDncTransferText;
    case kDncError:
    case kDncConnectionFailed:
      return kDncFailedText;
    default:
      return kDncOfflineText;
  }
}

platform::SerialSettings SettingsOf(const SerialProfile& profile) {
  platform::SerialSettings settings;
  CopyBounded(settings.port, kPortNameUnits, profile.port);
  settings.baud = profile.baud;
  settings.dataBits = profile.dataBits & 0xFF;
  settings.parity = profile.parity & 0xFF;
  settings.stopBits = profile.stopBits & 0xFF;
  settings.flow = profile.flow;
  return settings;
}

void LogOpenProblem(const platform::SerialSettings& settings, platform::SerialProblem problem) {
  std::u16string line;
  if (problem == platform::SerialProblem::Rights) {
    line += settings.port;
    line += u" may not be opened by this user.";
    const std::u16string group = platform::SerialGroup(settings);
    if (!group.empty()) line += u" Join the group " + group + u" and log in again.";
  } else if (problem == platform::SerialProblem::Missing && portCut) {
    line += u"Port in MORVA.ini is longer than 31 characters and was cut to ";
    line += settings.port;
    line += u". Use its COM name or a shorter path.";
  } else if (problem == platform::SerialProblem::Missing) {
    line = PortGoneWords(settings.port);
  } else if (problem == platform::SerialProblem::Busy) {
    line = settings.port;
    line += u" is held by another program, or by another window of MORVA. Close it there first.";
  } else if (problem == platform::SerialProblem::Refused) {
    line = u"The driver of ";
    line += settings.port;
    line += u" did not take a setting: try another baud rate, data bits, parity or stop bits.";
  }
  if (!line.empty()) LogOutput(line);
}

std::u16string PortGoneWords(std::u16string_view port) {
  std::u16string words = SameFolded(SavedPort(), port) ? u"The saved port " : u"The port ";
  words += port;
  return words + u" is not there now.";
}

void ResetSerialProfile() {
  serialProfile = SerialProfile{};
  openedProfile = SerialProfile{};
  portCut = false;
  dncState = kDncOffline;
  setupPanel = SetupPanel{};
}

}  // namespace morva
