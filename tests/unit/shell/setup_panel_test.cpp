#include "dnc/setup_panel.h"

#include "app/app_state.h"
#include "app/router.h"
#include "dnc/serial_profile.h"
#include "dnc/transfer.h"
#include "platform/listing.h"
#include "shell/layout.h"
#include "shell/modes.h"
#include "shell/strip.h"
#include "support/workbench.h"

namespace morva {
namespace {

class Connection : public support::Workbench {
 protected:
  static void Port(const char16_t* name) { headless::SetPort(name, headless::PortState::Present); }
  static std::u16string Log() { return platform::TextOf(kIdDncLog); }
  static std::u16string Chosen(int list) {
    return platform::RowText(list, platform::SelectedRow(list));
  }
  // Rows of a list with the numbers behind them.
  static std::u16string Rows(int list) {
    std::u16string rows;
    for (int i = 0; i < platform::RowCount(list); ++i) {
      rows += (i > 0 ? u", " : u"") + platform::RowText(list, i) + u"=" +
              platform::FromUtf8(std::to_string(platform::RowData(list, i)));
    }
    return rows;
  }
  void Settings(const std::string& lines) const { WriteFile("bin/MORVA.ini", "[DNC]\r\n" + lines); }
  static bool Visible(int id) {
    headless::ControlInfo info;
    return headless::Describe(id, info) && info.visible;
  }
  static void PressEscape() {
    platform::KeyEvent escape;
    escape.key = platform::kKeyEscape;
    headless::PressKey(escape);
  }
};

TEST_F(Connection, OffersTheValuesOfItsSixLists) {
  Port(u"COM1");
  Port(u"COM33");
  headless::Click(kIdSetup);
  EXPECT_EQ(app.mode, kModeDnc);
  EXPECT_EQ(platform::RowCount(kIdDncPorts), 2);
  EXPECT_EQ(Chosen(kIdDncPorts).substr(0, 4), u"COM1");
  EXPECT_EQ(Rows(kIdDncBaudList), u"1200=1200, 2400=2400, 4800=4800, 9600=9600, 19200=19200");
  EXPECT_EQ(Chosen(kIdDncBaudList), u"9600");
  EXPECT_EQ(Rows(kIdDncDataBits), u"7=7, 8=8");
  EXPECT_EQ(Chosen(kIdDncDataBits), u"7");
  EXPECT_EQ(Rows(kIdDncParity), u"Even=2, None=0, Odd=1");
  EXPECT_EQ(Chosen(kIdDncParity), u"Even");
  EXPECT_EQ(Rows(kIdDncStopBits), u"2=2, 1=0");
  EXPECT_EQ(Chosen(kIdDncStopBits), u"2");
  EXPECT_EQ(Rows(kIdDncFlow), u"XON / XOFF=1, RTS / CTS=2, None=0");
  EXPECT_EQ(Chosen(kIdDncFlow), u"XON / XOFF");
  EXPECT_EQ(Log().substr(0, 27), u"Connection setup ready.\r\nSe");
  EXPECT_EQ(Log().find(u"profile loaded"), std::u16string::npos);
}

TEST_F(Connection, SaysThatThereIsNoPortAndAsksForOneWhenChecked) {
  headless::Click(kIdMachine);
  EXPECT_EQ(platform::RowCount(kIdDncPorts), 0);
  EXPECT_EQ(Log(),
            u"Connection setup ready.\r\nNo COM ports detected. Check the USB/RS-232 adapter and "
            u"driver.\r\n");
  headless::Click(kIdDncCheck);
  EXPECT_NE(Log().find(u"Select a COM port first.\r\n"), std::u16string::npos);
}

TEST_F(Connection, ShowsTheSavedProfile) {
  Port(u"COM1");
  Port(u"COM7");
  Settings("Port=com7\r\nBaud=4800\r\nDataBits=8\r\nParity=0\r\nStopBits=0\r\nFlow=2\r\n");
  headless::Click(kIdSetup);
  EXPECT_EQ(Chosen(kIdDncPorts).substr(0, 4), u"COM7");
  EXPECT_EQ(Chosen(kIdDncBaudList), u"4800");
  EXPECT_EQ(Chosen(kIdDncDataBits), u"8");
  EXPECT_EQ(Chosen(kIdDncParity), u"None");
  EXPECT_EQ(Chosen(kIdDncStopBits), u"1");
  EXPECT_EQ(Chosen(kIdDncFlow), u"RTS / CTS");
  EXPECT_NE(Log().find(u"Saved MORVA serial profile loaded.\r\n"), std::u16string::npos);
}

TEST_F(Connection, KeepsASavedNumberThatNoListOffers) {
  Port(u"COM1");
  Settings("Port=COM1\r\nBaud=38400\r\n");
  headless::Click(kIdSetup);
  EXPECT_EQ(Chosen(kIdDncBaudList), u"38400");
  headless::Click(kIdDncSave);
  headless::Advance(1000);
  EXPECT_NE(ReadFile("bin/MORVA.ini").find("Baud=38400\r\n"), std::string::npos);
}

TEST_F(Connection, SelectsTheFirstPortWhereTheSavedOneIsAbsentAndSaysSo) {
  Port(u"COM3");
  Settings("Port=COM9\r\n");
  headless::Click(kIdSetup);
  EXPECT_EQ(Chosen(kIdDncPorts).substr(0, 4), u"COM3");
  EXPECT_NE(Log().find(u"The saved port COM9 is not there now.\r\n"), std::u16string::npos);
}

// A port that stands in for the saved one is nobody's choice.
TEST_F(Connection, SendsToTheSavedPortOnceThePanelIsHidden) {
  Port(u"COM3");
  Settings("Port=COM9\r\n");
  headless::Click(kIdSetup);
  ASSERT_EQ(Chosen(kIdDncPorts).substr(0, 4), u"COM3");
  EXPECT_TRUE(ChooseSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"COM3") << "the lists rule while they are shown";
  Port(u"COM9");
  SetMode(kModeHome);
  EXPECT_TRUE(ChooseSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"COM9");
}

TEST_F(Connection, SelectsTheSavedPortWhenARescanFindsIt) {
  Port(u"COM3");
  Settings("Port=COM9\r\n");
  headless::Click(kIdSetup);
  Port(u"COM9");
  headless::Click(kIdDncRescan);
  EXPECT_EQ(Chosen(kIdDncPorts).substr(0, 4), u"COM9");
}

TEST_F(Connection, KeepsAPortThatTheUserChoseBehindAnotherMode) {
  Port(u"COM3");
  Port(u"COM4");
  Settings("Port=COM9\r\n");
  headless::Click(kIdSetup);
  headless::SelectRows(kIdDncPorts, {1});
  Port(u"COM9");
  headless::Click(kIdDncRescan);
  EXPECT_EQ(Chosen(kIdDncPorts).substr(0, 4), u"COM4");
  SetMode(kModeHome);
  EXPECT_TRUE(ChooseSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"COM4");
}

TEST_F(Connection, TakesASavedStandInForTheUsersChoice) {
  Port(u"COM3");
  Settings("Port=COM9\r\nBaud=4800\r\n");
  headless::Click(kIdSetup);
  headless::Click(kIdDncSave);
  headless::SelectRows(kIdDncBaudList, {0});
  SetMode(kModeHome);
  EXPECT_TRUE(ChooseSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"COM3");
  EXPECT_EQ(serialProfile.baud, 1200);
}

TEST_F(Connection, NamesAPortBeforeASendThatIsNotTheSavedOne) {
  Port(u"COM3");
  Settings("Port=COM9\r\n");
  headless::Click(kIdSetup);
  headless::TakeBoxes();
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdSend);
  auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_NE(boxes[0].text.find(u"It goes to COM3. The saved profile names COM9.\n\n"),
            std::u16string::npos);
  Port(u"COM9");
  SetMode(kModeHome);
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdSend);
  boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text.find(u"It goes to"), std::u16string::npos);
}

// The panel stands open behind another mode, where nobody sees its lists.
TEST_F(Connection, NamesSettingsBeforeATransferThatAreNotTheSavedOnes) {
  Port(u"COM3");
  Settings("Port=COM3\r\nBaud=9600\r\n");
  headless::Click(kIdSetup);
  headless::SelectRows(kIdDncBaudList, {0});
  headless::SelectRows(kIdDncParity, {1});
  SetMode(kModeHome);
  headless::TakeBoxes();
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdSend);
  auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  const std::u16string settings = u"Other than in the saved profile: baud rate 1200, parity None.";
  EXPECT_NE(boxes[0].text.find(settings + u"\n\n"), std::u16string::npos);
  EXPECT_EQ(boxes[0].text.find(u"It goes to"), std::u16string::npos);
  Settings("Port=COM9\r\nBaud=1200\r\nParity=0\r\n");
  headless::Click(kIdReceive);
  ASSERT_TRUE(TransferRuns());
  const std::u16string log(platform::TextOf(kIdOutputLog));
  EXPECT_NE(log.find(u"It comes over COM3. The saved profile names COM9.\r\nReceive armed."),
            std::u16string::npos);
  headless::Click(kIdAbortTransfer);
  headless::Advance(1000);
  // Nothing is said where none is saved.
  Settings("Baud=9600\r\n");
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::TakeBoxes();
  headless::Click(kIdSend);
  boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text.find(u"saved profile"), std::u16string::npos);
}

TEST_F(Connection, ShowsSavedNumbersOutsideTheListsByTheirWords) {
  Port(u"COM1");
  Settings("Port=COM1\r\nParity=3\r\nStopBits=1\r\nFlow=7\r\n");
  headless::Click(kIdSetup);
  EXPECT_EQ(Rows(kIdDncStopBits), u"2=2, 1=0, 1.5=1");
  EXPECT_EQ(Chosen(kIdDncStopBits), u"1.5");
  EXPECT_EQ(Rows(kIdDncParity), u"Even=2, None=0, Odd=1, Mark=3");
  EXPECT_EQ(Rows(kIdDncFlow), u"XON / XOFF=1, RTS / CTS=2, None=0, None: 7=7");
  headless::Click(kIdDncSave);
  EXPECT_EQ(serialProfile.stopBits, 1);
  Settings("Port=COM1\r\nParity=5\r\nStopBits=9\r\n");
  headless::Click(kIdDncClose);
  headless::Click(kIdSetup);
  EXPECT_EQ(Chosen(kIdDncParity), u"Unknown: 5");
  EXPECT_EQ(Chosen(kIdDncStopBits), u"Unknown: 9");
}

TEST_F(Connection, ClosesByEscapeBehindAReviewOverIt) {
  Port(u"COM1");
  headless::Click(kIdSetup);
  headless::Click(kIdCompareSecond);
  ASSERT_TRUE(app.compareActive);
  headless::Focus(kIdReviewPrograms);
  PressEscape();
  EXPECT_FALSE(app.compareActive);
  EXPECT_EQ(platform::FocusedId(), kIdDncPorts);
  PressEscape();
  EXPECT_FALSE(IsSetupPanelOpen());
}

TEST_F(Connection, KeepsAPortThatIsNamedByItsPath) {
  Port(u"COM3");
  Settings("Port=/dev/null\r\n");
  headless::Click(kIdSetup);
  EXPECT_EQ(Chosen(kIdDncPorts), u"/dev/null");
  EXPECT_EQ(Log().find(u"is not there now."), std::u16string::npos);
  headless::Click(kIdDncRescan);
  EXPECT_EQ(Chosen(kIdDncPorts), u"/dev/null");
}

TEST_F(Connection, SaysOfAPortNamedByItsPathThatItIsGone) {
  Port(u"COM3");
  Settings("Port=/dev/no-such-port\r\n");
  headless::Click(kIdSetup);
  EXPECT_EQ(Chosen(kIdDncPorts), u"/dev/no-such-port  \u00B7  gone");
  EXPECT_NE(Log().find(u"The saved port /dev/no-such-port is not there now."),
            std::u16string::npos);
  headless::Click(kIdDncRescan);
  EXPECT_EQ(Chosen(kIdDncPorts), u"/dev/no-such-port  \u00B7  gone");
  EXPECT_TRUE(ChooseSerialProfile());
  EXPECT_EQ(std::u16string(serialProfile.port), u"/dev/no-such-port");
}

TEST_F(Connection, ShowsTheSavedPortOnceItIsClosed) {
  Port(u"COM2");
  Port(u"COM4");
  Settings("Port=COM2\r\nBaud=4800\r\n");
  headless::Click(kIdSetup);
  headless::SelectRows(kIdDncPorts, {1});
  headless::SelectRows(kIdDncBaudList, {0});
  headless::Click(kIdDncCheck);
  ASSERT_EQ(platform::TextOf(kIdDncPort), u"PORT  COM4");
  headless::Click(kIdDncClose);
  EXPECT_EQ(platform::TextOf(kIdDncPort), u"PORT  COM2");
  EXPECT_EQ(platform::TextOf(kIdDncPagePort), u"PORT  COM2");
  EXPECT_EQ(platform::TextOf(kIdDncBaud), u"BAUD  4800");
}

TEST_F(Connection, ShowsTheTransfersPortUntilTheAbortOfItsCloseIsThrough) {
  Port(u"COM2");
  Port(u"COM4");
  Settings("Port=COM2\r\n");
  headless::Click(kIdSetup);
  headless::SelectRows(kIdDncPorts, {1});
  headless::Click(kIdReceive);
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdDncClose);
  ASSERT_TRUE(TransferRuns());
  EXPECT_EQ(platform::TextOf(kIdDncPort), u"PORT  COM4");
  headless::Advance(2000);
  EXPECT_EQ(platform::TextOf(kIdDncState), u"DNC: ERROR");
  EXPECT_EQ(platform::TextOf(kIdDncPort), u"PORT  COM2");
}

TEST_F(Connection, SavesWhatTheListsSay) {
  Port(u"COM2");
  headless::Click(kIdSetup);
  headless::SelectRows(kIdDncBaudList, {2});
  headless::SelectRows(kIdDncParity, {2});
  headless::SelectRows(kIdDncStopBits, {1});
  headless::Click(kIdDncSave);
  headless::Advance(1000);
  EXPECT_EQ(
      ReadFile("bin/MORVA.ini"),
      "[DNC]\r\nPort=COM2\r\nBaud=4800\r\nDataBits=7\r\nParity=1\r\nStopBits=0\r\nFlow=1\r\n");
  EXPECT_EQ(platform::TextOf(kIdDncPort), u"PORT  COM2");
  EXPECT_EQ(platform::TextOf(kIdDncPagePort), u"PORT  COM2");
  EXPECT_EQ(platform::TextOf(kIdDncPageBaud), u"BAUD  4800");
}

TEST_F(Connection, RescansAndKeepsTheChosenPort) {
  Port(u"COM2");
  Port(u"COM4");
  headless::Click(kIdSetup);
  headless::SelectRows(kIdDncPorts, {1});
  Port(u"COM1");
  headless::Click(kIdDncRescan);
  EXPECT_EQ(platform::RowCount(kIdDncPorts), 3);
  EXPECT_EQ(Chosen(kIdDncPorts).substr(0, 4), u"COM4");
}

// What is not saved lives only as long as the panel.
TEST_F(Connection, GoesBackToTheSavedProfileWhenItIsClosed) {
  Port(u"COM2");
  Settings("Port=COM2\r\nBaud=4800\r\n");
  headless::Click(kIdSetup);
  headless::SelectRows(kIdDncBaudList, {0});
  EXPECT_TRUE(ChooseSerialProfile());
  EXPECT_EQ(serialProfile.baud, 1200);
  headless::Click(kIdDncClose);
  EXPECT_FALSE(IsSetupPanelOpen());
  EXPECT_FALSE(Visible(kIdDncPorts));
  EXPECT_TRUE(ChooseSerialProfile());
  EXPECT_EQ(serialProfile.baud, 4800);
  headless::Click(kIdOpenDncSetup);
  EXPECT_EQ(Chosen(kIdDncBaudList), u"4800");
}

TEST_F(Connection, CountsBehindAnotherModeOnlyWithAPort) {
  Settings("Port=COM2\r\nBaud=4800\r\n");
  headless::Click(kIdSetup);
  EXPECT_FALSE(ChooseSerialProfile()) << "the lists are shown and name no port";
  SetMode(kModeHome);
  EXPECT_FALSE(Visible(kIdDncPorts));
  EXPECT_TRUE(ChooseSerialProfile());
  EXPECT_EQ(serialProfile.baud, 4800);
  Port(u"COM2");
  SetMode(kModeDnc);
  EXPECT_TRUE(Visible(kIdDncPorts));
  headless::Click(kIdDncRescan);
  headless::SelectRows(kIdDncBaudList, {1});
  SetMode(kModeHome);
  EXPECT_TRUE(ChooseSerialProfile());
  EXPECT_EQ(serialProfile.baud, 2400);
}

TEST_F(Connection, LeavesItToTheFileBehindAnotherModeWhereItsListsWereNotChanged) {
  Port(u"COM2");
  Settings("Port=COM2\r\nBaud=4800\r\n");
  headless::Click(kIdSetup);
  SetMode(kModeHome);
  Settings("Port=COM2\r\nBaud=19200\r\n");
  EXPECT_TRUE(ChooseSerialProfile());
  EXPECT_EQ(serialProfile.baud, 19200);
  SetMode(kModeDnc);
  headless::SelectRows(kIdDncBaudList, {0});
  headless::Click(kIdDncSave);
  SetMode(kModeHome);
  headless::Advance(1000);  // the write is through
  Settings("Port=COM2\r\nBaud=19200\r\n");
  EXPECT_TRUE(ChooseSerialProfile());
  EXPECT_EQ(serialProfile.baud, 19200) << "what was saved is no unsaved change";
}

TEST_F(Connection, ClosesByEscapeAndByTheBackKey) {
  Port(u"COM1");
  headless::Click(kIdSetup);
  headless::Focus(kIdDncParity);
  PressEscape();
  EXPECT_FALSE(IsSetupPanelOpen());
  EXPECT_EQ(app.mode, kModeDnc);
  headless::Click(kIdSetup);
  EXPECT_TRUE(IsSetupPanelOpen());
  headless::Click(kIdBack);
  EXPECT_FALSE(IsSetupPanelOpen());
}

TEST_F(Connection, ShowsItsAbortKeyOnlyWhileATransferRuns) {
  Port(u"COM1");
  headless::Click(kIdSetup);
  EXPECT_FALSE(Visible(kIdDncAbort));
  headless::Click(kIdReceive);
  ASSERT_TRUE(TransferRuns());
  EXPECT_TRUE(Visible(kIdDncAbort));
  EXPECT_EQ(platform::TextOf(kIdDncPageState), u"DNC: TRANSFERRING");
  headless::Click(kIdDncAbort);
  EXPECT_NE(Log().find(u"Abort requested...\r\n"), std::u16string::npos);
  headless::Advance(2000);
  EXPECT_FALSE(TransferRuns());
  EXPECT_FALSE(Visible(kIdDncAbort));
}

TEST_F(Connection, AsksBeforeItClosesOverATransfer) {
  Port(u"COM1");
  headless::Click(kIdSetup);
  headless::Click(kIdReceive);
  ASSERT_TRUE(TransferRuns());
  headless::TakeBoxes();
  headless::QueueAnswer(platform::BoxAnswer::No);
  headless::Click(kIdDncClose);
  EXPECT_TRUE(IsSetupPanelOpen());
  EXPECT_TRUE(TransferRuns());
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"DNC Transfer");
  EXPECT_EQ(boxes[0].text, u"A transfer is active. Abort it and close the DNC wizard?");
  EXPECT_EQ(boxes[0].buttons, platform::BoxButtons::NoYes);  // Enter ends no transfer
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  headless::Click(kIdDncClose);
  EXPECT_FALSE(IsSetupPanelOpen());
  headless::Advance(2000);
  EXPECT_EQ(dncState, kDncError);
}

TEST_F(Connection, ShowsThePortOfTheTransferWhileAnotherIsSaved) {
  Port(u"COM1");
  Port(u"COM2");
  Settings("Port=COM1\r\nBaud=9600\r\n");
  headless::Click(kIdSetup);
  headless::Click(kIdReceive);
  headless::Advance(100);
  headless::SelectRows(kIdDncPorts, {1});
  headless::Click(kIdDncSave);
  EXPECT_EQ(platform::TextOf(kIdDncPort), u"PORT  COM1");
  EXPECT_NE(Log().find(u"The transfer that runs keeps its port and settings."), Log().npos);
  headless::Click(kIdDncCheck);
  EXPECT_NE(Log().find(u"Check port opens the line: wait for the end of the transfer."),
            Log().npos);
  EXPECT_EQ(platform::TextOf(kIdDncState), u"DNC: TRANSFERRING");
  headless::PeerSend("%\r\nO1000\r\nM30\r\n%\r\n");
  headless::Advance(5000);
  EXPECT_EQ(platform::TextOf(kIdDncState), u"DNC: CONNECTED");
  EXPECT_EQ(platform::TextOf(kIdDncPort), u"PORT  COM1");
  // The next one takes the lists.
  headless::Click(kIdDncCheck);
  EXPECT_EQ(platform::TextOf(kIdDncPort), u"PORT  COM2");
  headless::Click(kIdDncSave);
  headless::Advance(1000);
  EXPECT_NE(ReadFile("bin/MORVA.ini").find("Port=COM2"), std::string::npos);
}

// The words of all labels that can be seen.
bool SomeLabelSays(std::u16string_view words) {
  for (const int id : headless::AllIds()) {
    headless::ControlInfo info;
    if (headless::Describe(id, info) && info.visible && info.text == words) return true;
  }
  return false;
}

TEST_F(Connection, SaysWhatToDoInThreeStepsAndWhatComesFirst) {
  headless::Click(kIdSetup);
  EXPECT_EQ(platform::TextOf(kIdDncSteps),
            u"1   Connect the adapter\r\nPlug in the USB / RS-232 adapter, then Rescan ports. "
            u"Select the COM port assigned to that adapter.\r\n\r\n2   Match the machine\r\nCopy "
            u"baud, data bits, parity, stop bits and flow control from the machine's serial "
            u"settings. Both ends must agree.\r\n\r\n3   Check and save\r\nCheck port verifies "
            u"that Windows can open and configure it. It does not test the cable or a machine "
            u"response. Save the profile when ready.");
  EXPECT_TRUE(SomeLabelSays(u"Machine connection"));
  EXPECT_TRUE(SomeLabelSays(u"Set up a serial profile for this PC and your machine."));
  EXPECT_TRUE(SomeLabelSays(
      u"First transfer: use RECEIVE on the top bar, then send a small program from the machine. "
      u"SEND and RECEIVE use this saved profile."));
}

TEST_F(Connection, TellsInItsModeHowSendAndReceiveFindTheirPort) {
  SetMode(kModeDnc);
  EXPECT_TRUE(SomeLabelSays(
      u"Top SEND / RECEIVE buttons auto-attempt the saved COM profile first. If no profile exists, "
      u"MORVA searches for a serial port. If the port cannot be opened/configured the main status "
      u"changes to CONNECTION FAILED."));
  EXPECT_TRUE(
      SomeLabelSays(u"Connected means Windows opened the configured serial port; an actual Haas "
                    u"handshake is proven only by a successful transfer."));
}

TEST_F(Connection, AnswersTheThreeCommandsThatHaveNoKey) {
  Port(u"COM1");
  headless::Click(kIdSetup);
  headless::Click(kIdDncSave);
  RouteCommand(kIdDncReceive, platform::kNotifyClick);
  ASSERT_TRUE(TransferRuns());
  EXPECT_EQ(dncState, kDncTransferring);
  headless::Click(kIdDncAbort);
  headless::Advance(2000);
  ASSERT_FALSE(TransferRuns());

  headless::QueueAnswer(platform::BoxAnswer::Yes);
  RouteCommand(kIdDncSend, platform::kNotifyClick);
  headless::Advance(10000);
  EXPECT_NE(headless::TakeSent().find("(OPERATION CODE BELOW)"), std::string::npos);

  WriteFile("other.nc", "%\r\nO8\r\nM30\r\n%\r\n");
  headless::QueueFile(Path("other.nc"));
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  RouteCommand(kIdDncSendFile, platform::kNotifyClick);
  headless::Advance(10000);
  EXPECT_NE(headless::TakeSent().find("O8"), std::string::npos);
}

void ExpectWithinTheirColumns() {
  for (const int id : {int{kIdDncSteps}, int{kIdDncLog}, int{kIdDncRescan}, int{kIdDncClose}}) {
    headless::ControlInfo info;
    ASSERT_TRUE(headless::Describe(id, info));
    EXPECT_LE(info.place.bottom, Areas().stripEdge.top) << id;
    EXPECT_GE(platform::RectHeight(info.place), 26) << id;
  }
  headless::ControlInfo log;
  headless::Describe(kIdDncLog, log);
  EXPECT_GE(platform::RectHeight(log.place), 60);
  headless::ControlInfo lists;
  headless::Describe(kViewDncPanel, lists);
  EXPECT_GE(platform::RectHeight(lists.place), 60);
}

TEST_F(Connection, StaysAboveTheOutputHoweverItsEdgesAreDragged) {
  Port(u"COM1");
  headless::Click(kIdSetup);
  for (const bool runs : {false, true}) {
    if (runs) headless::Click(kIdReceive);
    ASSERT_EQ(TransferRuns(), runs);
    for (const int height : {800, 940}) {
      headless::Resize(height == 800 ? 1200 : 1560, height);
      for (const int panel : {190, 300, 380, 430}) {
        for (const int strip : {700, 400, 200}) {
          SCOPED_TRACE(std::to_string(height) + ", panel " + std::to_string(panel) + ", strip " +
                       std::to_string(strip) + (runs ? ", transfer" : ""));
          app.leftPanelWidth = panel;
          DragStrip(strip);
          Layout();
          ExpectWithinTheirColumns();
        }
      }
    }
  }
}

// Pixels from a list to the next one below it.
int RowPitch() {
  return platform::PlaceOf(kIdDncBaudList).top - platform::PlaceOf(kIdDncPorts).top;
}

TEST_F(Connection, KeepsItsListsAsFarApartAsFitsWhileATransferRuns) {
  Port(u"COM1");
  headless::Resize(1560, 940);
  headless::Click(kIdSetup);
  Layout();
  EXPECT_EQ(RowPitch(), 52);
  headless::Click(kIdReceive);
  ASSERT_TRUE(TransferRuns());
  EXPECT_LT(RowPitch(), 52);
  EXPECT_GT(RowPitch(), 40);
  // The room that the abort key took is shared out among the five gaps, to the pixel.
  const platform::Rect last = platform::PlaceOf(kIdDncFlow);
  headless::ControlInfo lists;
  headless::Describe(kViewDncPanel, lists);
  const int left = platform::RectHeight(lists.place) - last.bottom;
  EXPECT_GE(left, 0);
  EXPECT_LT(left, 12);
  headless::Click(kIdDncAbort);
  headless::Advance(2000);
  EXPECT_EQ(RowPitch(), 52);
}

TEST_F(Connection, ReceivesAFirstProgramWithThePanelAlone) {
  Port(u"COM1");
  headless::Click(kIdSetup);
  headless::Click(kIdDncCheck);
  EXPECT_NE(Log().find(u"TEST OK: COM port opened"), std::u16string::npos);
  headless::Click(kIdDncSave);
  headless::Click(kIdReceive);
  headless::PeerSend("%\r\nO1000\r\nG00 X1.\r\nM30\r\n%\r\n");
  headless::Advance(10000);
  EXPECT_EQ(dncState, kDncConnected);
  EXPECT_NE(Text().find(u"O1000"), std::u16string::npos);
}

}  // namespace
}  // namespace morva
