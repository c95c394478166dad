// The serial profile and the auto-connect step, with a machine whose ports the test sets.
// Expected words and values are written out by hand.

#include "dnc/serial_profile.h"

#include <gtest/gtest.h>

#include "dnc_stage.h"
#include "support/locked_folder.h"

namespace {

using headless::PortState;
using headless::SetPort;
using morva::serialProfile;

constexpr const char16_t* kAttempt = u"Auto-connect: attempting serial connection...";
constexpr const char16_t* kConnected =
    u"AUTO-CONNECT OK: serial port is available. Machine handshake is confirmed only by a "
    u"successful transfer.";
constexpr const char16_t* kNotOpened =
    u"AUTO-CONNECT FAILED: unable to open/configure the selected COM port.";

struct SerialProfileTest : public DncStage {};

// A panel whose lists the test holds.
struct Panel {
  bool exists = false;
  bool portSelected = false;
  morva::SerialProfile shown;
  std::vector<std::u16string> ports;
};
Panel panel;

void ShowPanel() {
  panel = Panel{};
  panel.exists = true;
  morva::setupPanel.exists = [] { return panel.exists; };
  morva::setupPanel.readLists = [](morva::SerialProfile& profile) {
    if (panel.portSelected) profile = panel.shown;
    return panel.portSelected;
  };
  morva::setupPanel.fillPorts = [](const platform::SerialName* names, int count) {
    panel.ports.clear();
    for (int i = 0; i < count; ++i) panel.ports.push_back(names[i].name);
  };
}

TEST_F(SerialProfileTest, StartsWithTheClassicSettingsOfTheControl) {
  EXPECT_EQ(std::u16string(serialProfile.port), u"");
  EXPECT_EQ(serialProfile.baud, 9600);
  EXPECT_EQ(serialProfile.dataBits, 7);
  EXPECT_EQ(serialProfile.parity, 2);
  EXPECT_EQ(serialProfile.stopBits, 2);
  EXPECT_EQ(serialProfile.flow, 1);
  EXPECT_EQ(morva::dncState, morva::kDncOffline);
}

TEST_F(SerialProfileTest, TakesTheLowestPortWithoutAFileAndWritesNothing) {
  SetPort(u"COM7", PortState::Present);
  SetPort(u"COM3", PortState::Present);
  EXPECT_TRUE(morva::ChooseSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"COM3");
  EXPECT_EQ(serialProfile.baud, 9600);
  EXPECT_EQ(serialProfile.flow, 1);
  EXPECT_EQ(support::NamesIn(folder / "bin"), std::vector<std::string>());
  EXPECT_EQ(Log(), Lines());
}

TEST_F(SerialProfileTest, ReadsEveryKeyOfTheFile) {
  PutIni("[DNC]\r\nPort=COM5\r\nBaud=19200\r\nDataBits=8\r\nParity=0\r\nStopBits=0\r\nFlow=2\r\n");
  EXPECT_TRUE(morva::LoadSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"COM5");
  EXPECT_EQ(serialProfile.baud, 19200);
  EXPECT_EQ(serialProfile.dataBits, 8);
  EXPECT_EQ(serialProfile.parity, 0);
  EXPECT_EQ(serialProfile.stopBits, 0);
  EXPECT_EQ(serialProfile.flow, 2);
}

TEST_F(SerialProfileTest, ParsesNumbersAsFarAsTheyGo) {
  PutIni("[DNC]\nBaud=abc\nDataBits=8 bits\nParity=-1\nStopBits=\nFlow=7\n");
  EXPECT_FALSE(morva::LoadSerialProfile());
  EXPECT_EQ(serialProfile.baud, 9600);
  EXPECT_EQ(serialProfile.dataBits, 8);
  EXPECT_EQ(serialProfile.parity, -1);
  EXPECT_EQ(serialProfile.stopBits, 2);
  EXPECT_EQ(serialProfile.flow, 7);
  PutIni("[DNC]\nBaud= 19200\n");
  morva::LoadSerialProfile();
  EXPECT_EQ(serialProfile.baud, 19200);
  EXPECT_EQ(serialProfile.dataBits, 7);
}

TEST_F(SerialProfileTest, KeepsAPortFoundEarlierWhenTheFileNamesNone) {
  SetPort(u"COM4", PortState::Present);
  ASSERT_TRUE(morva::ChooseSerialProfile());
  SetPort(u"COM4", PortState::Absent);
  PutIni("[DNC]\r\nPort=\r\nBaud=4800\r\n");
  EXPECT_TRUE(morva::ChooseSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"COM4");
  EXPECT_EQ(serialProfile.baud, 4800);
}

TEST_F(SerialProfileTest, CutsAPortNameAtThirtyOneCharacters) {
  PutIni("[DNC]\r\nPort=/dev/serial/by-id/usb-0123456789-abcdef\r\n");
  EXPECT_TRUE(morva::LoadSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"/dev/serial/by-id/usb-012345678");
}

TEST_F(SerialProfileTest, SaysThatAPortNameWasCutWhenItCannotBeOpened) {
  PutIni("[DNC]\r\nPort=/dev/serial/by-id/usb-0123456789-abcdef\r\n");
  EXPECT_FALSE(morva::AutoConnect());
  EXPECT_EQ(Log(), (Lines{kAttempt,
                          u"Port in MORVA.ini is longer than 31 characters and was cut to "
                          u"/dev/serial/by-id/usb-012345678. Use its COM name or a shorter path.",
                          kNotOpened}));
  // 31 characters are whole.
  PutIni("[DNC]\r\nPort=/dev/serial/by-id/usb-012345678\r\n");
  EXPECT_FALSE(morva::AutoConnect());
  EXPECT_EQ(Log(),
            (Lines{kAttempt, u"The saved port /dev/serial/by-id/usb-012345678 is not there now.",
                   kNotOpened}));
}

TEST_F(SerialProfileTest, KnowsAPortByItsNameWithoutTheOuterBlanksInTheFile) {
  PutIni("[DNC]\r\nPort =  COM7 \t\r\nBaud =\t19200 \r\n");
  EXPECT_TRUE(morva::LoadSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"COM7");
  EXPECT_EQ(serialProfile.baud, 19200);
}

// The whole table of events and states that are not a transfer's: auto-connect does not look
// when it is connected already, the check always does.
TEST_F(SerialProfileTest, MovesBetweenItsStatesOnlyByTheseEvents) {
  struct Row {
    std::int32_t from;
    bool check;
    bool passes;
    std::int32_t to;
  };
  const Row rows[] = {
      {0, false, true, 1},  {1, false, true, 1},  {2, false, true, 1},  {3, false, true, 1},
      {4, false, true, 1},  {0, false, false, 4}, {1, false, false, 1}, {2, false, false, 4},
      {3, false, false, 4}, {4, false, false, 4}, {0, true, true, 1},   {1, true, true, 1},
      {2, true, true, 1},   {3, true, true, 1},   {4, true, true, 1},   {0, true, false, 4},
      {1, true, false, 4},  {2, true, false, 4},  {3, true, false, 4},  {4, true, false, 4},
  };
  PutIni("[DNC]\r\nPort=COM3\r\n");
  for (const Row& row : rows) {
    SetPort(u"COM3", row.passes ? PortState::Present : PortState::Busy);
    morva::SetDncState(row.from);
    if (row.check) {
      morva::CheckPort();
    } else {
      EXPECT_EQ(morva::AutoConnect(), row.to == 1);
    }
    EXPECT_EQ(morva::dncState, row.to) << row.from << row.check << row.passes;
    EXPECT_EQ(State(), morva::DncStateWord(row.to));
  }
  // Neither loading, scanning nor saving is an event.
  for (std::int32_t state = 0; state <= 4; ++state) {
    morva::SetDncState(state);
    morva::LoadSerialProfile();
    morva::ScanComPorts();
    morva::SaveSerialProfile();
    EXPECT_EQ(morva::dncState, state);
  }
}

TEST_F(SerialProfileTest, LooksForPortsAfreshAtEachScan) {
  EXPECT_FALSE(morva::ChooseSerialProfile());
  SetPort(u"COM33", PortState::Present);  // plugged in while the program runs
  EXPECT_TRUE(morva::ChooseSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"COM33");
}

TEST_F(SerialProfileTest, FailsAPortThatIsNotThere) {
  PutIni("[DNC]\r\nPort=COM70\r\n");
  SetPort(u"COM1", PortState::Present);
  EXPECT_FALSE(morva::AutoConnect());
  // Tried as it stands, never replaced by a port that is there.
  EXPECT_EQ(std::u16string(serialProfile.port), u"COM70");
  EXPECT_EQ(Log(), (Lines{kAttempt, u"The saved port COM70 is not there now.", kNotOpened}));
  EXPECT_EQ(Status(), u"DNC connection failed — COM port could not be opened/configured.");
  EXPECT_EQ(State(), u"DNC: CONNECTION FAILED");
}

TEST_F(SerialProfileTest, TriesAPortAboveTheScanThatTheFileNames) {
  PutIni("[DNC]\r\nPort=COM70\r\n");
  SetPort(u"COM70", PortState::Present);
  EXPECT_TRUE(morva::AutoConnect());
}

TEST_F(SerialProfileTest, FindsNoPortAboveSixtyFour) {
  SetPort(u"COM65", PortState::Present);
  EXPECT_FALSE(morva::ChooseSerialProfile());
  EXPECT_EQ(Log(), Lines{u"Auto-connect: no serial COM port was found."});
  SetPort(u"COM64", PortState::Present);
  EXPECT_TRUE(morva::ChooseSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"COM64");
}

TEST_F(SerialProfileTest, FailsTheOpenOnValuesThatTheSystemRefuses) {
  SetPort(u"COM1", PortState::Present);
  PutIni("[DNC]\r\nPort=COM1\r\nBaud=-5\r\n");
  EXPECT_FALSE(morva::AutoConnect());
  EXPECT_EQ(serialProfile.baud, -5);
  PutIni("[DNC]\r\nPort=COM1\r\nStopBits=1\r\n");
  EXPECT_FALSE(morva::AutoConnect());
  EXPECT_EQ(serialProfile.stopBits, 1);
  EXPECT_EQ(morva::dncState, morva::kDncConnectionFailed);
}

TEST_F(SerialProfileTest, CutsTheSmallNumbersToOneByteForTheLine) {
  serialProfile.dataBits = 256 + 8;
  serialProfile.parity = 512 + 1;
  serialProfile.stopBits = -254;  // 0xFFFFFF02
  serialProfile.flow = 257;
  serialProfile.baud = 115200;
  const platform::SerialSettings settings = morva::SettingsOf(serialProfile);
  EXPECT_EQ(settings.dataBits, 8);
  EXPECT_EQ(settings.parity, 1);
  EXPECT_EQ(settings.stopBits, 2);
  EXPECT_EQ(settings.flow, 257);
  EXPECT_EQ(settings.baud, 115200);
}

TEST_F(SerialProfileTest, OpensOnceAndThenTrustsTheConnectedState) {
  SetPort(u"COM2", PortState::Present);
  EXPECT_TRUE(morva::AutoConnect());
  EXPECT_EQ(Log(), (Lines{kAttempt, kConnected}));
  EXPECT_EQ(Status(), u"DNC connected — serial port opened successfully.");
  EXPECT_EQ(State(), u"DNC: CONNECTED");
  // A cable pulled afterwards goes unseen until a transfer fails.
  SetPort(u"COM2", PortState::Absent);
  EXPECT_TRUE(morva::AutoConnect());
  EXPECT_EQ(Log(), Lines());
}

TEST_F(SerialProfileTest, LeavesThePortFreeBetweenOperations) {
  SetPort(u"COM2", PortState::Present);
  ASSERT_TRUE(morva::AutoConnect());
  platform::SerialProblem problem = platform::SerialProblem::None;
  EXPECT_TRUE(platform::OpenSerial(morva::SettingsOf(serialProfile), problem));
  platform::CloseSerial();
}

TEST_F(SerialProfileTest, SaysThatNoPortWasFound) {
  EXPECT_FALSE(morva::AutoConnect());
  EXPECT_EQ(Log(), (Lines{kAttempt, u"Auto-connect: no serial COM port was found."}));
  EXPECT_EQ(Status(), u"DNC connection failed — open DNC Setup to select a COM port.");
  EXPECT_EQ(State(), u"DNC: CONNECTION FAILED");
}

TEST_F(SerialProfileTest, RefusesABusyPort) {
  SetPort(u"COM1", PortState::Busy);
  EXPECT_FALSE(morva::AutoConnect());
  EXPECT_EQ(Log(), (Lines{kAttempt,
                          u"COM1 is held by another program, or by another window of MORVA. Close "
                          u"it there first.",
                          kNotOpened}));
}

TEST_F(SerialProfileTest, ConnectsAgainAfterAFailure) {
  EXPECT_FALSE(morva::AutoConnect());
  SetPort(u"COM1", PortState::Present);
  EXPECT_TRUE(morva::AutoConnect());
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
}

TEST_F(SerialProfileTest, LetsTheListsOfThePanelWinOverTheFile) {
  PutIni("[DNC]\r\nPort=COM1\r\nBaud=1200\r\n");
  ShowPanel();
  panel.portSelected = true;
  panel.shown.baud = 4800;
  panel.shown.flow = 2;
  std::u16string(u"COM9").copy(panel.shown.port, 4);
  EXPECT_TRUE(morva::ChooseSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"COM9");
  EXPECT_EQ(serialProfile.baud, 4800);
  EXPECT_EQ(serialProfile.flow, 2);
  // Closed again, the file counts.
  panel.exists = false;
  EXPECT_TRUE(morva::ChooseSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"COM1");
  EXPECT_EQ(serialProfile.baud, 1200);
}

TEST_F(SerialProfileTest, FailsWithThePanelOpenAndNoPortSelectedInSpiteOfAFile) {
  PutIni("[DNC]\r\nPort=COM1\r\n");
  SetPort(u"COM1", PortState::Present);
  ShowPanel();
  EXPECT_FALSE(morva::AutoConnect());
  EXPECT_EQ(Log(), (Lines{kAttempt, u"Select a COM port first."}));
  EXPECT_EQ(Status(), u"DNC connection failed — open DNC Setup to select a COM port.");
  EXPECT_EQ(State(), u"DNC: CONNECTION FAILED");
}

TEST_F(SerialProfileTest, ScansIntoThePanelInRisingOrder) {
  ShowPanel();
  SetPort(u"COM12", PortState::Present);
  SetPort(u"COM2", PortState::Busy);
  SetPort(u"COM9", PortState::Present);
  morva::ScanComPorts();
  EXPECT_EQ(panel.ports, (Lines{u"COM2", u"COM9", u"COM12"}));
  EXPECT_EQ(Log(), Lines{u"Serial port scan complete."});
  for (const char16_t* name : {u"COM12", u"COM2", u"COM9"}) SetPort(name, PortState::Absent);
  morva::ScanComPorts();
  EXPECT_EQ(panel.ports, Lines());
  EXPECT_EQ(Log(), Lines{u"No COM ports detected. Check the USB/RS-232 adapter and driver."});
}

TEST_F(SerialProfileTest, SavesSixKeysAndKeepsTheRestOfTheFile) {
  PutIni("[Simulator]\r\nGrid=2\r\n[DNC]\r\nBaud=1200\r\nNote=mine\r\n");
  ShowPanel();
  panel.portSelected = true;
  std::u16string(u"COM3").copy(panel.shown.port, 4);
  panel.shown.baud = 19200;
  panel.shown.parity = 1;
  panel.shown.stopBits = 0;
  morva::SaveSerialProfile();
  EXPECT_EQ(Log(), Lines{u"DNC profile saved beside MORVA.exe."});
  EXPECT_EQ(Ini(),
            "[Simulator]\r\nGrid=2\r\n[DNC]\r\nBaud=19200\r\nNote=mine\r\nPort=COM3\r\n"
            "DataBits=7\r\nParity=1\r\nStopBits=0\r\nFlow=1\r\n");
  EXPECT_EQ(TextOf(morva::kIdDncPort), u"PORT  COM3");
  EXPECT_EQ(TextOf(morva::kIdDncBaud), u"BAUD  19200");
  EXPECT_EQ(morva::dncState, morva::kDncOffline);
}

TEST_F(SerialProfileTest, SaysWhereItWasSavedIfNotBesideTheProgram) {
  ShowPanel();
  panel.portSelected = true;
  std::u16string(u"COM3").copy(panel.shown.port, 4);
  const support::LockedFolder lock(folder, folder / "bin");
  morva::SaveSerialProfile();
  EXPECT_EQ(Log(), Lines{u"DNC profile saved in " + PathOf(".config/MORVA/MORVA.ini") + u"."});
  EXPECT_EQ(Raw(".config/MORVA/MORVA.ini").substr(0, 18), "[DNC]\r\nPort=COM3\r\n");
}

TEST_F(SerialProfileTest, SavesNothingWithoutAPort) {
  ShowPanel();
  morva::SaveSerialProfile();
  EXPECT_EQ(Log(), Lines{u"Select a COM port first."});
  EXPECT_EQ(support::NamesIn(folder / "bin"), std::vector<std::string>());
}

TEST_F(SerialProfileTest, DoesNotClaimASaveThatFailed) {
  SetPort(u"COM3", PortState::Present);
  headless::FailCall("rename", 1);
  morva::SaveSerialProfile();
  EXPECT_EQ(Log(), Lines());
  EXPECT_EQ(Status(), u"MORVA.ini could not be written — settings last for this run only.");
  EXPECT_EQ(support::NamesIn(folder / "bin"), std::vector<std::string>());
}

TEST_F(SerialProfileTest, ChecksAPortAndSaysWhatThatDoesNotProve) {
  SetPort(u"COM3", PortState::Present);
  morva::CheckPort();
  EXPECT_EQ(
      Log(),
      (Lines{u"TEST OK: COM port opened and communication parameters were accepted by Windows.",
             u"This does not prove the Haas settings/cable handshake match until an actual "
             u"receive/send test succeeds."}));
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
  SetPort(u"COM3", PortState::Busy);
  morva::CheckPort();
  EXPECT_EQ(Log().back(), u"TEST FAILED: Windows could not open/configure the selected COM port.");
  EXPECT_EQ(morva::dncState, morva::kDncConnectionFailed);
}

TEST_F(SerialProfileTest, FailsTheCheckWithoutAPort) {
  morva::CheckPort();
  EXPECT_EQ(Log(), Lines{u"Auto-connect: no serial COM port was found."});
  EXPECT_EQ(morva::dncState, morva::kDncConnectionFailed);
}

TEST_F(SerialProfileTest, ColoursTheWordOfItsState) {
  const platform::Colour wanted[] = {0x91AAC4, 0x22FF6E, 0xFFBE50, 0xFF6473, 0xFF6473};
  for (std::int32_t state = 0; state <= 4; ++state) {
    morva::SetDncState(state);
    headless::ControlInfo info;
    ASSERT_TRUE(headless::Describe(morva::kIdDncState, info));
    EXPECT_EQ(info.colours.text, wanted[state]) << state;
  }
}

TEST_F(SerialProfileTest, ShowsStatePortAndRateInTheTopBar) {
  morva::SetDncState(morva::kDncTransferring);
  EXPECT_EQ(State(), u"DNC: TRANSFERRING");
  EXPECT_EQ(TextOf(morva::kIdDncPort), u"PORT  --");
  EXPECT_EQ(TextOf(morva::kIdDncBaud), u"BAUD  9600");
  EXPECT_EQ(morva::DncStateWord(3), std::u16string(u"DNC: ERROR"));
  EXPECT_EQ(morva::DncStateWord(-1), std::u16string(u"DNC: OFFLINE"));
  EXPECT_EQ(morva::DncStateWord(5), std::u16string(u"DNC: OFFLINE"));
  EXPECT_EQ(morva::DncStateColour(0), 0x91AAC4u);
  EXPECT_EQ(morva::DncStateColour(1), 0x22FF6Eu);
  EXPECT_EQ(morva::DncStateColour(2), 0xFFBE50u);
  EXPECT_EQ(morva::DncStateColour(3), 0xFF6473u);
  EXPECT_EQ(morva::DncStateColour(4), 0xFF6473u);
  EXPECT_EQ(morva::DncStateColour(5), 0x91AAC4u);
}

// 130 is 2 with its highest bit set; cut to seven bits it would be even parity.
TEST_F(SerialProfileTest, RefusesParity130) {
  PutIni("[DNC]\r\nPort=COM1\r\nParity=130\r\n");
  headless::SetPort(u"COM1", headless::PortState::Present);
  ASSERT_TRUE(morva::LoadSerialProfile());
  EXPECT_EQ(morva::SettingsOf(morva::serialProfile).parity, 130);
  EXPECT_FALSE(morva::AutoConnect());
  EXPECT_EQ(morva::dncState, morva::kDncConnectionFailed);
}

}  // namespace
