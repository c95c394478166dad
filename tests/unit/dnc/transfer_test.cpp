// The transfer engine in virtual time, with the far end of the cable in the test's hand.
// Expected bytes, words and moments are written out by hand.

#include "dnc/transfer.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "app/data_dir.h"
#include "app/outlets.h"
#include "dnc/transfer_worker.h"
#include "dnc_stage.h"
#include "documents/autosave.h"
#include "documents/edit_link.h"
#include "documents/feature_blocks.h"
#include "documents/file_text.h"
#include "documents/program_tabs.h"
#include "documents/save_state.h"
#include "documents/saver.h"
#include "documents/saving.h"
#include "platform/clock.h"
#include "platform/thread.h"
#include "platform/timer.h"

namespace {

using headless::Advance;
using headless::PortState;
using morva::transfer;
using platform::BoxAnswer;

constexpr const char16_t* kAttempt = u"Auto-connect: attempting serial connection...";
constexpr const char16_t* kConnected =
    u"AUTO-CONNECT OK: serial port is available. Machine handshake is confirmed only by a "
    u"successful transfer.";
constexpr const char16_t* kNotOpened =
    u"AUTO-CONNECT FAILED: unable to open/configure the selected COM port.";
constexpr const char16_t* kHeldPort =
    u"COM1 is held by another program, or by another window of MORVA. Close it there first.";
constexpr const char16_t* kArmed =
    u"Receive armed. Send the program from the Haas now. Waiting up to 60 seconds for first "
    u"data; capture ends after ~2 seconds idle.";
constexpr const char16_t* kError =
    u"TRANSFER ERROR: serial port failed, receive was aborted, or the 2 MB receive limit was "
    u"reached. Incomplete data was not opened.";
constexpr const char16_t* kEndedByUser =
    u"You ended the RECEIVE. What had come by then is not kept.";
constexpr const char16_t* kErrorStatus =
    u"DNC transfer error — check COM port, cable, and matching settings.";
constexpr const char16_t* kSendDone =
    u"Send complete. Confirm the Haas reports a successful receive before using the program.";
constexpr const char16_t* kSending = u"Sending current editor program...";
constexpr const char16_t* kDoubt =
    u"WARNING: The received program may be damaged. Do not run it: mend the line, then receive it "
    u"again.";
constexpr const char16_t* kOpened = u"Received RS-232 program opened in a new tab.";

struct TransferTest : public DncStage {
  TransferTest() {
    morva::ResetDocuments();
    headless::SetPort(u"COM1", PortState::Present);
  }
  ~TransferTest() override {
    morva::ResetTransfer();
    morva::FreeTabs();
    morva::ResetDocuments();
    morva::ResetAutosave();
  }

  static void FillTabs() {
    for (int i = 0; i < morva::kMaxTabs; ++i) morva::NewProgram();
  }

  // SEND with the answer to its question.
  static void Send(std::u16string_view text, BoxAnswer answer = BoxAnswer::Yes) {
    platform::SetEditorText(morva::kIdEditor, text);
    headless::QueueAnswer(answer);
    morva::RouteCommand(morva::kIdSend, 0);
  }
  static void Receive() { morva::RouteCommand(morva::kIdReceive, 0); }

  void UseDataFolder() {
    std::filesystem::create_directory(folder / "Documents");
    morva::FindDataDirectory();
    ASSERT_TRUE(morva::app.dataDirReady);
  }
  static std::vector<std::filesystem::path> RecoveryFiles() {
    std::vector<std::filesystem::path> files;
    const std::filesystem::path recovery(std::u16string(morva::app.dataDir) + u"/Recovery");
    for (const auto& entry : std::filesystem::directory_iterator(recovery)) {
      files.push_back(entry.path());
    }
    return files;
  }
};

TEST_F(TransferTest, SendsTheEditorsProgramWrappedInPercentLines) {
  Send(u"G0 X1");
  EXPECT_EQ(Log(), (Lines{kAttempt, kConnected, kSending}));
  EXPECT_TRUE(transfer.active);
  EXPECT_EQ(State(), u"DNC: TRANSFERRING");
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "%\r\nG0 X1\r\n%\r\n");
  EXPECT_EQ(Log(), Lines{kSendDone});
  EXPECT_EQ(statusLines, (Lines{u"DNC transferring: 13 / 13 bytes",
                                u"DNC send complete — confirm receive on Haas control."}));
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
  EXPECT_FALSE(transfer.active);
  EXPECT_TRUE(transfer.sendBuffer.empty());
}

TEST_F(TransferTest, SendsTheProgramThatStoodThereWhenItWasAskedAbout) {
  headless::WhileOpen([] { platform::SetEditorText(morva::kIdEditor, u"another"); });
  Send(u"G0 X1");
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "%\r\nG0 X1\r\n%\r\n");
}

TEST_F(TransferTest, AddsNoPercentLineWhereOneStands) {
  Send(u"%\r\nO1\r\n%\r\n");
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "%\r\nO1\r\n%\r\n");
  Send(u"O1\r\n%");
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "%\r\nO1\r\n%\r\n");
  Send(u"%\r\nO1");
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "%\r\nO1\r\n%\r\n");
}

TEST_F(TransferTest, SendsTwoPercentLinesForAnEmptyEditor) {
  Send(u"");
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "%\r\n%\r\n");
}

TEST_F(TransferTest, SendsWhatIsNotAsciiAsQuestionMarks) {
  Send(u"(FACE — TOP \u00E9)\nM30\n");
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "%\r\n(FACE ? TOP ?)\r\nM30\r\n%\r\n");
}

TEST_F(TransferTest, AsksBeforeItSendsWithTheseWords) {
  Send(u"G0", BoxAnswer::No);
  const std::vector<headless::BoxRecord> boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Confirm RS-232 Transmission");
  EXPECT_EQ(boxes[0].text,
            u"Before transmitting:\n\n• Match the Haas RS-232 settings to this wizard.\n• Put the "
            u"control in the intended RECV RS-232 or DNC state.\n• Verify the correct program and "
            u"work area.\n\nThe editor will wrap the program with % lines if needed.\n\nSend now?");
  EXPECT_EQ(boxes[0].buttons, platform::BoxButtons::YesNo);
  EXPECT_EQ(boxes[0].icon, platform::BoxIcon::Warning);
  EXPECT_FALSE(transfer.active);
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "");
  EXPECT_EQ(morva::dncState, morva::kDncConnected);
}

TEST_F(TransferTest, NamesExcludedFeaturesWhoseOwnCodeIsSent) {
  const auto block = [](const std::u16string& id, const std::u16string& code) {
    return u"(MORVA TEXT " + id + u")\r\n" + code + u"\r\n(MORVA END " + id + u")\r\n";
  };
  const std::u16string off = block(u"1", u"(MORVA DISABLED 1)");
  const std::u16string live = block(u"2", u"(MORVA DISABLED 2)\r\nG0 X1");
  const std::u16string more = block(u"3", u"(MORVA DISABLED 3) M8");
  Send(off, BoxAnswer::No);
  Send(off + live, BoxAnswer::No);
  Send(off + live + more, BoxAnswer::No);
  const std::vector<headless::BoxRecord> boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 3u);
  EXPECT_TRUE(boxes[0].text.ends_with(u"% lines if needed.\n\nSend now?"));
  EXPECT_TRUE(boxes[1].text.ends_with(
      u"% lines if needed.\n\nFeature #2 is excluded but has code of its own. That code is "
      u"sent.\n\nSend now?"));
  EXPECT_TRUE(boxes[2].text.ends_with(
      u"% lines if needed.\n\n2 features, the first #2, are excluded but have code of their own. "
      u"That code is sent.\n\nSend now?"));
}

TEST_F(TransferTest, NamesTheCharactersThatASendWouldLose) {
  Send(u"G0\n(\u00E9)\n(\u2014 \u00E9)", BoxAnswer::No);
  Send(u"G0\n(\u00E9)", BoxAnswer::No);
  const std::vector<headless::BoxRecord> boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_TRUE(boxes[0].text.ends_with(
      u"% lines if needed.\n\n3 characters, the first in line 2, cannot go over the line. Each is "
      u"sent as \"?\".\n\nSend now?"));
  EXPECT_TRUE(boxes[1].text.ends_with(
      u"% lines if needed.\n\n1 character in line 2, cannot go over the line and is sent as "
      u"\"?\".\n\nSend now?"));
}

TEST_F(TransferTest, NamesCodeThatNoControlReads) {
  Send(u"%\r\nO1\r\nM30\r\n%\r\nG0 X1\r\n", BoxAnswer::No);
  auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_NE(boxes[0].text.find(u"1 line of code stands behind the closing %, the first in line 5"),
            std::u16string::npos);
  Send(u"%\r\nO1\r\nM30\r\n%\r\n(G0 X1)\r\n", BoxAnswer::No);
  boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].text.find(u"closing %"), std::u16string::npos);
}

TEST_F(TransferTest, SendsNoByteOrderMarkOfAFile) {
  Put("a.NC", "\xEF\xBB\xBF%\r\nO1\r\n%\r\n");
  headless::QueueFile(PathOf("a.NC"));
  headless::QueueAnswer(BoxAnswer::Yes);
  morva::SendFileFromDisk();
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "%\r\nO1\r\n%\r\n");
}

TEST_F(TransferTest, DoesNotAskWhenThePortCannotBeOpened) {
  headless::SetPort(u"COM1", PortState::Busy);
  Send(u"G0");
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_EQ(Log(), (Lines{kAttempt, kHeldPort, kNotOpened}));
}

TEST_F(TransferTest, PostsProgressAfterEachChunkOf128Bytes) {
  // 3 + 300 + 2 + 3 bytes: 128, 256, 308.
  Send(std::u16string(300, u'X'));
  Advance(10);
  EXPECT_EQ(statusLines,
            (Lines{u"DNC transferring: 128 / 308 bytes", u"DNC transferring: 256 / 308 bytes",
                   u"DNC transferring: 308 / 308 bytes",
                   u"DNC send complete — confirm receive on Haas control."}));
}

TEST_F(TransferTest, FailsASendThatTheControlHoldsForFiveSeconds) {
  Send(u"G0");
  headless::PeerSend("\x13");
  Advance(4999);
  EXPECT_TRUE(transfer.active);
  Advance(2);
  EXPECT_FALSE(transfer.active);
  EXPECT_EQ(headless::TakeSent(), "");
  EXPECT_EQ(Log(), (Lines{kAttempt, kConnected, kSending, kError,
                          u"The control held the line (XOFF) for 5 seconds.",
                          u"0 of 10 bytes had left the port."}));
  EXPECT_EQ(State(), u"DNC: ERROR");
}

TEST_F(TransferTest, FailsASendWhoseFarEndTakesNothingForFiveSeconds) {
  PutIni("[DNC]\r\nFlow=2\r\n");
  Send(u"G0");
  headless::PeerStall(60000);
  Advance(4999);
  EXPECT_TRUE(transfer.active);
  Advance(2);
  EXPECT_FALSE(transfer.active);
  EXPECT_EQ(headless::TakeSent(), "");
  EXPECT_EQ(Log(),
            (Lines{kAttempt, kConnected, kSending, kError,
                   u"The port took nothing for 5 seconds: the ready wire (CTS) stayed down, or the "
                   u"adapter does not answer.",
                   u"0 of 10 bytes had left the port."}));
  EXPECT_EQ(State(), u"DNC: ERROR");
  EXPECT_EQ(Status(), kErrorStatus);
  EXPECT_EQ(statusLines, Lines{kErrorStatus});
}

TEST_F(TransferTest, TellsThatTheControlHoldsTheLine) {
  Send(std::u16string(300, u'X'));
  headless::PeerSend("\x13");
  Advance(200);
  EXPECT_EQ(Status(), u"DNC transferring: 0 / 308 bytes");
  Advance(400);
  const std::u16string held =
      u"DNC transferring: 0 / 308 bytes — the control holds the line (XOFF)";
  EXPECT_EQ(Status(), held);
  // Told once, and again to whoever asks for what stands.
  morva::ShowStatus(u"Other words");
  Advance(1000);
  EXPECT_EQ(Status(), u"Other words");
  EXPECT_TRUE(morva::TellTransfer());
  EXPECT_EQ(Status(), held);
  headless::PeerSend("\x11");
  Advance(10);
  EXPECT_EQ(statusLines.front(), u"DNC transferring: 128 / 308 bytes");
  EXPECT_EQ(Status(), u"DNC send complete — confirm receive on Haas control.");
  EXPECT_FALSE(platform::TimerRuns(platform::kMainWindow, morva::kTimerHeld));
}

TEST_F(TransferTest, TellsNoHoldThatIsOverAtOnceAndNoneOfAReadyWire) {
  for (int turn = 0; turn < 2; ++turn) {
    if (turn == 1) PutIni("[DNC]\r\nFlow=2\r\n");
    Send(std::u16string(300, u'X'));
    headless::PeerStall(turn == 0 ? 240 : 4000);
    for (int ms = 0; ms < 4100 && transfer.active; ms += 10) {
      Advance(10);
      EXPECT_EQ(Status().find(u"holds the line"), std::u16string::npos);
    }
    EXPECT_FALSE(transfer.active);
  }
}

// The port took everything before the hold; no progress comes behind it.
TEST_F(TransferTest, TellsAHoldOfTheLastBytesUntilTheyLeave) {
  headless::SetPortBuffer(4096);
  Send(u"G0");
  headless::PeerStall(1000);
  Advance(800);
  EXPECT_EQ(Status(), u"DNC transferring: 10 / 10 bytes — the control holds the line (XOFF)");
  Advance(300);
  EXPECT_EQ(State(), u"DNC: CONNECTED");
  Receive();
  Advance(1000);
  EXPECT_EQ(Status(), u"DNC receive armed — send the program from the control within 60 seconds.");
}

// The port takes all ten bytes, and none of them leaves it.
TEST_F(TransferTest, FailsASendWhoseLastBytesStayInThePort) {
  headless::SetPortBuffer(4096);
  Send(u"G0");
  headless::PeerSend("\x13");
  Advance(10);
  EXPECT_EQ(Status(), u"DNC transferring: 10 / 10 bytes");
  Advance(4980);
  EXPECT_TRUE(transfer.active);
  Advance(20);
  EXPECT_FALSE(transfer.active);
  EXPECT_EQ(headless::TakeSent(), "");
  EXPECT_EQ(
      Log(),
      (Lines{kAttempt, kConnected, kSending, kError,
             u"The last bytes stayed behind: the port is gone, or none left it for 5 seconds.",
             u"0 of 10 bytes had left the port."}));
  EXPECT_EQ(State(), u"DNC: ERROR");
  EXPECT_EQ(Status(), kErrorStatus);
}

// The port has taken 100 of the 308 bytes when the cable goes; none of them has left.
TEST_F(TransferTest, CountsOnlyBytesThatLeftThePortBeforeTheCableWent) {
  headless::SetPortBuffer(100);
  Send(std::u16string(300, u'X'));
  headless::PeerSend("\x13");
  Advance(10);
  headless::PeerUnplug();
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "");
  EXPECT_EQ(Log().back(), u"0 of 308 bytes had left the port.");
}

TEST_F(TransferTest, TellsHowManyBytesOfAFailedSendHadLeft) {
  transfer.sendBuffer = std::string(308, 'X');
  morva::RouteMessage(morva::kMessageTransferFailed, morva::kFailedWrite, 208);
  EXPECT_EQ(Log(), (Lines{kError, u"208 of 308 bytes had left the port."}));
}

TEST_F(TransferTest, IsCompleteOnlyWhenThePortIsEmpty) {
  headless::SetPortBuffer(4096);
  Send(u"G0");
  headless::PeerSend("\x13");
  Advance(4000);
  EXPECT_EQ(State(), u"DNC: TRANSFERRING");
  headless::PeerSend("\x11");
  Advance(0);
  EXPECT_EQ(headless::TakeSent(), "%\r\nG0\r\n%\r\n");
  EXPECT_EQ(Log().back(), kSendDone);
  EXPECT_EQ(State(), u"DNC: CONNECTED");
}

TEST_F(TransferTest, AbortsASendThatWaitsForItsLastBytes) {
  headless::SetPortBuffer(4096);
  Send(u"G0");
  headless::PeerSend("\x13");
  Advance(1000);
  morva::AbortTransfer();
  Advance(0);
  const Lines log = Log();
  ASSERT_GE(log.size(), 2u);
  EXPECT_EQ(log[log.size() - 2], u"Transfer aborted by operator.");
  EXPECT_EQ(log.back(), u"0 of 10 bytes had left the port.");
  EXPECT_EQ(State(), u"DNC: OFFLINE");
}

TEST_F(TransferTest, TellsACableThatGoesWhileTheControlHoldsTheLine) {
  Send(u"G0");
  headless::PeerSend("\x13");
  Advance(3000);
  headless::PeerUnplug();
  Advance(10);
  EXPECT_EQ(State(), u"DNC: ERROR");
}

TEST_F(TransferTest, GoesOnWhenTheFarEndLetsGoInTime) {
  Send(u"G0");
  headless::PeerSend("\x13 noise");
  Advance(4900);
  headless::PeerSend("\x11");
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "%\r\nG0\r\n%\r\n");
  EXPECT_EQ(Log().back(), kSendDone);
}

TEST_F(TransferTest, FailsASendWhoseCableIsGone) {
  Send(u"G0");
  headless::PeerUnplug();
  Advance(10);
  EXPECT_EQ(Log(),
            (Lines{kAttempt, kConnected, kSending, kError,
                   u"The port reported an error or is gone: look at the adapter and the cable.",
                   u"0 of 10 bytes had left the port."}));
  EXPECT_EQ(morva::dncState, morva::kDncError);
  EXPECT_TRUE(transfer.sendBuffer.empty());
}

// The rows of the state table that a transfer's last message makes, from any state shown.
TEST_F(TransferTest, SetsTheStateThatItsLastMessageMeansWhateverIsShown) {
  struct Row {
    std::uint32_t message;
    unsigned first;
    bool aborted;
    std::int32_t to;
  };
  const Row rows[] = {
      {morva::kMessageSendDone, 10, false, morva::kDncConnected},
      {morva::kMessageSendDone, 4, true, morva::kDncOffline},
      {morva::kMessageReceiveDone, 0, false, morva::kDncError},
      {morva::kMessageReceiveDone, 2, false, morva::kDncConnected},
      {morva::kMessageTransferFailed, 1, false, morva::kDncError},
      {morva::kMessageTransferFailed, 2, false, morva::kDncError},
      {morva::kMessageTransferFailed, 3, false, morva::kDncError},
      {morva::kMessageTransferFailed, 4, true, morva::kDncError},
  };
  for (const Row& row : rows) {
    for (const std::int32_t shown : {morva::kDncTransferring, morva::kDncConnectionFailed}) {
      morva::SetDncState(shown);
      transfer.active = true;
      transfer.sendBuffer = "rest";
      transfer.receivedData = row.to == morva::kDncConnected && row.first == 2 ? "O1" : "";
      transfer.abortRequested = row.aborted;
      morva::RouteMessage(row.message, row.first, 10);
      EXPECT_EQ(morva::dncState, row.to) << row.message << " " << row.first;
      EXPECT_FALSE(transfer.active);
      EXPECT_TRUE(transfer.sendBuffer.empty());
    }
  }
  morva::SetDncState(morva::kDncTransferring);
  morva::RouteMessage(morva::kMessageSendProgress, 128, 308);
  EXPECT_EQ(morva::dncState, morva::kDncTransferring);
}

TEST_F(TransferTest, EndsInErrorWhenTheWorkersOwnOpenFails) {
  Send(u"G0");
  // Between the check of the port and the worker's open somebody else took it.
  headless::SetPort(u"COM1", PortState::Busy);
  Advance(10);
  EXPECT_EQ(Log(), (Lines{kAttempt, kConnected, kSending, kError, kHeldPort}));
  EXPECT_EQ(morva::dncState, morva::kDncError);
}

TEST_F(TransferTest, EndsAnAbortedSendOffline) {
  Send(u"G0");
  headless::PeerSend("\x13");
  Advance(100);
  Log();
  morva::AbortTransfer();
  Advance(10);
  EXPECT_EQ(Log(), (Lines{u"Abort requested...", u"Transfer aborted by operator.",
                          u"0 of 10 bytes had left the port."}));
  EXPECT_EQ(State(), u"DNC: OFFLINE");
  EXPECT_EQ(Status(), u"DNC transfer aborted.");
  EXPECT_FALSE(transfer.active);
}

// As the setup panel does when it closes during a transfer.
TEST_F(TransferTest, AbortsWithoutAWordOfItsOwnWhenOnlyTheFlagIsAsked) {
  Send(u"G0");
  headless::PeerSend("\x13");
  Advance(100);
  Log();
  morva::RequestAbort();
  EXPECT_EQ(Log(), Lines());
  Advance(0);
  EXPECT_EQ(Log(), (Lines{u"Transfer aborted by operator.", u"0 of 10 bytes had left the port."}));
  EXPECT_FALSE(transfer.active);
  morva::dncState = morva::kDncConnected;
  Receive();
  Advance(1000);
  Log();
  morva::RequestAbort();
  Advance(20);
  EXPECT_EQ(Log(), (Lines{kError, kEndedByUser}));
  EXPECT_EQ(State(), u"DNC: ERROR");
}

TEST_F(TransferTest, SendsNothingWhenTheAbortComesBeforeTheFirstChunk) {
  Send(u"G0");
  morva::AbortTransfer();
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "");
  EXPECT_EQ(statusLines, Lines{u"DNC transfer aborted."});
}

TEST_F(TransferTest, ForgetsAnAbortAtTheNextStart) {
  Send(u"G0");
  morva::AbortTransfer();
  Advance(10);
  Send(u"G1");
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "%\r\nG1\r\n%\r\n");
  EXPECT_EQ(Log().back(), kSendDone);
}

TEST_F(TransferTest, SaysThatTheThreadOfASendCouldNotStart) {
  headless::FailCall("worker", 1);
  Send(u"G0");
  EXPECT_EQ(Log(), (Lines{kAttempt, kConnected, kSending, u"Could not start transfer thread."}));
  EXPECT_EQ(morva::dncState, morva::kDncError);
  EXPECT_FALSE(transfer.active);
  EXPECT_TRUE(transfer.sendBuffer.empty());
}

TEST_F(TransferTest, SaysNothingWhenTheThreadOfAReceiveCouldNotStart) {
  headless::FailCall("worker", 1);
  Receive();
  EXPECT_EQ(Log(), (Lines{kAttempt, kConnected, kArmed}));
  EXPECT_EQ(morva::dncState, morva::kDncError);
  EXPECT_FALSE(transfer.active);
}

TEST_F(TransferTest, RefusesASendAndAReceiveWhileATransferRuns) {
  Send(u"G0");
  headless::PeerSend("\x13");
  Advance(100);
  Log();
  headless::TakeBoxes();
  Send(u"G1");
  EXPECT_EQ(Log(), Lines{u"A transfer is already active."});
  Receive();
  EXPECT_EQ(Log(), Lines{u"A transfer is already active."});
  EXPECT_EQ(Status(), u"A transfer is already active.");
  EXPECT_EQ(State(), u"DNC: TRANSFERRING");
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_TRUE(transfer.active);
  headless::PeerSend("\x11");
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "%\r\nG0\r\n%\r\n");
  EXPECT_EQ(State(), u"DNC: CONNECTED");
}

TEST_F(TransferTest, RefusesASecondTransfer) {
  Send(u"G0");
  headless::PeerSend("\x13");
  Advance(100);
  Log();
  morva::StartSend("x", u"Sending selected file...");
  EXPECT_EQ(Log(), Lines{u"A transfer is already active."});
  EXPECT_EQ(transfer.sendBuffer, "%\r\nG0\r\n%\r\n");
  morva::dncState = morva::kDncConnected;
  Receive();
  EXPECT_EQ(Log(), Lines{u"A transfer is already active."});
  EXPECT_FALSE(transfer.isReceive);
}

TEST_F(TransferTest, SendsAFileFromDiskInItsCodePage) {
  Put("part.nc", "(\x96 \xE9)\nM30");
  headless::QueueFile(PathOf("part.nc"));
  headless::QueueAnswer(BoxAnswer::Yes);
  morva::SendFileFromDisk();
  const std::vector<headless::FilePickRecord> picks = headless::TakeFilePicks();
  ASSERT_EQ(picks.size(), 1u);
  EXPECT_FALSE(picks[0].save);
  EXPECT_EQ(picks[0].title, u"Select Program to Send");
  const std::vector<std::pair<std::u16string, std::u16string>> rows = {
      {u"Haas programs (*.NC;*.TAP;*.GCODE)", u"*.NC;*.TAP;*.GCODE"},
      {u"Text (*.TXT)", u"*.TXT"},
      {u"All files (*.*)", u"*.*"}};
  EXPECT_EQ(picks[0].filters, rows);
  const std::vector<headless::BoxRecord> boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"Confirm File Transfer");
  EXPECT_EQ(boxes[0].text,
            u"Verify the Haas control is ready to receive and all serial settings match.\n\n2 "
            u"characters, the first in line 1, cannot go over the line. Each is sent as "
            u"\"?\".\n\nSend the selected file?");
  EXPECT_EQ(boxes[0].icon, platform::BoxIcon::Warning);
  // No auto-connect before a file: the worker's open is the first.
  EXPECT_EQ(Log(), Lines{u"Sending selected file..."});
  Advance(10);
  EXPECT_EQ(headless::TakeSent(), "%\r\n(? ?)\r\nM30\r\n%\r\n");
}

TEST_F(TransferTest, SendsNoFileThatIsCancelledUnreadableOrRefused) {
  headless::QueueFileCancel();
  morva::SendFileFromDisk();
  EXPECT_EQ(Log(), Lines());
  headless::QueueFile(PathOf("bin"));  // a folder
  morva::SendFileFromDisk();
  EXPECT_EQ(Log(), (Lines{u"Could not read selected file.",
                          u"Not sent: " + PathOf("bin") + u"  (it cannot be read)"}));
  Put("part.nc", "M30");
  headless::QueueFile(PathOf("part.nc"));
  headless::QueueAnswer(BoxAnswer::No);
  morva::SendFileFromDisk();
  EXPECT_EQ(Log(), Lines());
  EXPECT_FALSE(transfer.active);
}

TEST_F(TransferTest, SaysThatAPortNameWasCutWhenAFileCannotBeSentToIt) {
  PutIni("[DNC]\r\nPort=/dev/serial/by-id/usb-0123456789-abcdef\r\n");
  Put("part.nc", "M30");
  headless::QueueFile(PathOf("part.nc"));
  headless::QueueAnswer(BoxAnswer::Yes);
  morva::SendFileFromDisk();
  Advance(10);
  EXPECT_EQ(Log(),
            (Lines{u"Sending selected file...", kError,
                   u"Port in MORVA.ini is longer than 31 characters and was cut to "
                   u"/dev/serial/by-id/usb-012345678. Use its COM name or a shorter path."}));
}

TEST_F(TransferTest, SendsNoFileOfMoreThan32Mebibytes) {
  Put("part.nc", "");
  std::filesystem::resize_file(folder / "part.nc", 33554433);
  headless::QueueFile(PathOf("part.nc"));
  headless::QueueAnswer(BoxAnswer::Yes);
  morva::SendFileFromDisk();
  EXPECT_EQ(Log(), (Lines{u"Could not read selected file.",
                          u"Not sent: " + PathOf("part.nc") +
                              u"  (33554433 bytes; the limit is 33554432, 32 MiB)"}));
  EXPECT_TRUE(headless::TakeBoxes().empty());
  EXPECT_FALSE(transfer.active);
}

TEST_F(TransferTest, SendsNoFileWithoutAPort) {
  headless::SetPort(u"COM1", PortState::Absent);
  morva::SendFileFromDisk();
  EXPECT_EQ(Log(), Lines{u"Auto-connect: no serial COM port was found."});
  EXPECT_TRUE(headless::TakeFilePicks().empty());
  EXPECT_EQ(morva::dncState, morva::kDncOffline);
}

TEST_F(TransferTest, OpensAReceivedProgramInANewTab) {
  morva::NewProgram();
  Log();
  Receive();
  EXPECT_EQ(Log(), (Lines{kAttempt, kConnected, kArmed}));
  Advance(500);
  headless::PeerSend("%\r\nO1\r\nM30\r\n%\r\n");
  Advance(1900);
  EXPECT_TRUE(transfer.active);
  Advance(400);
  EXPECT_FALSE(transfer.active);
  EXPECT_EQ(Log(), Lines{kOpened});
  EXPECT_EQ(Status(), u"DNC receive complete — program opened in a new tab.");
  EXPECT_EQ(State(), u"DNC: CONNECTED");
  EXPECT_EQ(morva::app.activeTab, 1);
  EXPECT_EQ(std::u16string(morva::tabs[1].title), u"RECEIVED_RS232.NC");
  EXPECT_EQ(std::u16string(morva::tabs[1].path), u"");
  EXPECT_TRUE(morva::tabs[1].dirty);
  EXPECT_TRUE(morva::app.editorDirty);
  EXPECT_NE(Text().find(u"%\r\nO1\r\nM30\r\n%\r\n"), std::u16string::npos);
  EXPECT_TRUE(transfer.receivedData.empty());
}

TEST_F(TransferTest, SavesAReceivedProgramWithoutAnotherKey) {
  UseDataFolder();
  morva::RegisterSaving(nullptr);
  morva::NewProgram();
  Receive();
  headless::PeerSend("%\r\nO1\r\nM30\r\n%\r\n");
  Advance(2300);
  ASSERT_EQ(morva::app.tabCount, 2);
  EXPECT_TRUE(morva::WaitsForSave(morva::tabs[1]));
  EXPECT_TRUE(platform::TimerRuns(platform::kMainWindow, morva::kTimerAutosave));
  morva::RunAutosave();
  EXPECT_TRUE(morva::WaitForSaves());
  std::string bytes;
  ASSERT_TRUE(morva::ReadWholeFile(morva::tabs[1].path, bytes));
  EXPECT_NE(bytes.find("O1\r\n"), std::string::npos);
}

TEST_F(TransferTest, OpensAReceivedProgramBehindTheOneThatTheUserTypesInto) {
  UseDataFolder();
  morva::RegisterSaving(nullptr);
  morva::NewProgram();
  Receive();
  headless::PeerSend("%\r\nO1\r\nM30\r\n%\r\n");
  Advance(1900);
  const std::u16string before = Text();
  morva::app.lastKeyAt = platform::TickMilliseconds();
  Advance(400);
  EXPECT_FALSE(transfer.active);
  ASSERT_EQ(morva::app.tabCount, 2);
  EXPECT_EQ(morva::app.activeTab, 0);
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(Status(), u"DNC receive complete — program opened in a tab behind this one.");
  EXPECT_EQ(Log().back(), u"Received RS-232 program opened in a tab behind this one.");
  EXPECT_TRUE(morva::tabs[1].dirty);
  // It is saved from behind.
  morva::RunAutosave();
  EXPECT_TRUE(morva::WaitForSaves());
  EXPECT_FALSE(morva::tabs[1].dirty);
  std::string bytes;
  ASSERT_TRUE(morva::ReadWholeFile(morva::tabs[1].path, bytes));
  EXPECT_EQ(bytes, "%\r\nO1\r\nM30\r\n%\r\n");
}

TEST_F(TransferTest, KeepsTheBlockUnderEditWhenAProgramIsReceived) {
  morva::NewProgram();
  Receive();
  headless::PeerSend("%\r\nO1\r\nM30\r\n%\r\n");
  Advance(1000);
  morva::SetEditLink({1, 7, 0, u"block"});
  Advance(1300);
  ASSERT_EQ(morva::app.tabCount, 2);
  EXPECT_EQ(morva::app.activeTab, 0);
  EXPECT_EQ(morva::editLink.id, 7);
  morva::DropEditLink();
}

// What lies there covers the text, and a switch of program would empty the drawing under the hand.
TEST_F(TransferTest, OpensAReceivedProgramBehindWhatAnotherSurfaceShows) {
  for (const auto surface : {morva::kSurfaceCad, morva::kSurfacePlate, morva::kSurfaceSkim}) {
    morva::NewProgram();
    const int before = morva::app.activeTab;
    Receive();
    morva::app.surface = surface;
    headless::PeerSend("%\r\nO1\r\nM30\r\n%\r\n");
    Advance(2300);
    EXPECT_FALSE(transfer.active);
    EXPECT_EQ(morva::app.activeTab, before);
    EXPECT_EQ(Status(), u"DNC receive complete — program opened in a tab behind this one.");
    EXPECT_EQ(std::u16string(morva::tabs[morva::app.tabCount - 1].title), u"RECEIVED_RS232.NC");
    morva::app.surface = morva::kSurfaceCode;
  }
}

TEST_F(TransferTest, OpensAReceivedProgramBehindTheOneThatTheUserPointsInto) {
  morva::NewProgram();
  Receive();
  headless::PeerSend("%\r\nO1\r\nM30\r\n%\r\n");
  Advance(1900);
  morva::NoteUserPress(platform::TickMilliseconds());
  Advance(400);
  EXPECT_EQ(morva::app.tabCount, 2);
  EXPECT_EQ(morva::app.activeTab, 0);
  EXPECT_EQ(Status(), u"DNC receive complete — program opened in a tab behind this one.");
}

constexpr const char16_t* kCutOff =
    u"WARNING: No closing % came, and the line was quiet for 2 seconds: the program may be cut "
    u"off. "
    u"Compare its end with the one at the control before you run it.";

TEST_F(TransferTest, WarnsOfAProgramWhoseClosingPercentDidNotCome) {
  Receive();
  headless::PeerSend("\r\n%\r\nO1\r\nG1 X1");
  Advance(2300);
  ASSERT_EQ(morva::app.tabCount, 1);
  EXPECT_EQ(Log().back(), kCutOff);
  EXPECT_EQ(Status(), u"DNC receive complete — program opened in a new tab. No closing % came.");
  EXPECT_EQ(State(), u"DNC: CONNECTED");
  // Of a program without "%" nobody knows where it ends.
  Receive();
  headless::PeerSend("O1\r\nG1 X1");
  Advance(2300);
  ASSERT_EQ(morva::app.tabCount, 2);
  EXPECT_EQ(Log().back(), kOpened);
  EXPECT_EQ(Status(), u"DNC receive complete — program opened in a new tab.");
}

// A "%" in a comment closes nothing, and of two programs the second may be cut off.
TEST_F(TransferTest, TakesOnlyALineOfItsOwnForTheClosingPercent) {
  for (const std::string_view cut :
       {"%\r\nO1 (100%", "%\r\nO1\r\n(50% FEED)\r\nG1 X1", "%\nO1\n%\n%\nO2\n"}) {
    Receive();
    headless::PeerSend(cut);
    Advance(2300);
    EXPECT_EQ(Log().back(), kCutOff) << cut;
  }
  for (const std::string_view whole : {"%O1\nM30\n %\n", "%\nO1\n%\n%\nO2\n%", "%\nO1\n%\n\x1A"}) {
    Receive();
    headless::PeerSend(whole);
    Advance(2300);
    EXPECT_EQ(Log().back(), kOpened) << whole;
  }
}

TEST_F(TransferTest, OpensNothingOfAProgramThatTheCableCutInAComment) {
  for (const std::string_view part : {"%\r\nO1 (100%", "O1\r\nM30\r\n%", "%\r\n%\r\n"}) {
    Receive();
    headless::PeerSend(part);
    Advance(500);
    headless::PeerUnplug();
    Advance(200);
    EXPECT_EQ(morva::app.tabCount, 0) << part;
    EXPECT_EQ(Status(), kErrorStatus);
    headless::SetPort(u"COM1", PortState::Present);
  }
}

TEST_F(TransferTest, LeavesTapeCodesOutOfAReceivedProgram) {
  Receive();
  headless::PeerSend("\x7F\x12%\r\nO1\r\nM30\r\n%\x14");
  Advance(2300);
  ASSERT_EQ(morva::app.tabCount, 1);
  EXPECT_EQ(Text().find_first_of(u"\x11\x12\x13\x14\x7F"), Text().npos);
  EXPECT_NE(Text().find(u"%\r\nO1\r\nM30\r\n%"), Text().npos);
  EXPECT_EQ(Log().back(),
            u"3 control codes (punch on and off, rubouts) were left out of the received program.");
}

// By XON the control lets the line go before it has anything to send.
TEST_F(TransferTest, TakesXonAndXoffForNoData) {
  Receive();
  headless::PeerSend("\x11");
  Advance(30000);
  ASSERT_TRUE(transfer.active);
  headless::PeerSend("%\r\nO1\r\n\x13");
  Advance(1500);
  headless::PeerSend("\x11M30\r\n%\r\n");
  Advance(2300);
  ASSERT_EQ(morva::app.tabCount, 1);
  EXPECT_NE(Text().find(u"%\r\nO1\r\nM30\r\n%\r\n"), Text().npos);
  EXPECT_EQ(Log().back(), kOpened);
}

TEST_F(TransferTest, SendsNoControlCodes) {
  Send(u"\x12%\r\nO1\x13\r\nM30\r\n%\x14\x7F");
  EXPECT_NE(headless::TakeBoxes().back().text.find(
                u"4 control codes (punch on and off, hold, rubout) in the text: not sent, the "
                u"control would take them for its own.\n\nSend now?"),
            std::u16string::npos);
  EXPECT_EQ(Log().back(), u"4 control codes (DC1 to DC4, rubout) were left out of what is sent.");
  Advance(5000);
  EXPECT_EQ(headless::TakeSent(), "%\r\nO1\r\nM30\r\n%\r\n");
  EXPECT_EQ(Text(), u"\x12%\r\nO1\x13\r\nM30\r\n%\x14\x7F");
}

// The question looks at the blocks of what is shown, and not of what is sent.
TEST_F(TransferTest, LeavesTheFeaturesWhereTheyStandInATextWithControlCodes) {
  Send(u"%\x12\x14\r\n(MORVA TEXT 1)\r\nG0 X1\r\n(MORVA END 1)\r\n", BoxAnswer::No);
  ASSERT_GT(morva::features.count, 0);
  EXPECT_EQ(morva::features.rows[morva::features.count - 1].start, 5);
}

TEST_F(TransferTest, KeepsAProgramThatCameWholeBeforeThePortWent) {
  Receive();
  headless::PeerSend("%\r\nO1\r\nM30\r\n%\r\n");
  Advance(500);
  headless::PeerUnplug();
  Advance(200);
  ASSERT_EQ(morva::app.tabCount, 1);
  EXPECT_NE(Text().find(u"%\r\nO1\r\nM30\r\n%\r\n"), Text().npos);
  const Lines log = Log();
  EXPECT_EQ(log.back(),
            u"The port reported an error or is gone: look at the adapter and the cable.");
  EXPECT_EQ(std::ranges::count(log, kError), 0);
  EXPECT_EQ(State(), u"DNC: ERROR");
}

TEST_F(TransferTest, ShowsAReceivedProgramFiveSecondsBehindTheLastPress) {
  morva::NewProgram();
  Receive();
  Advance(100);
  morva::NoteUserPress(platform::TickMilliseconds());
  Advance(3000);
  headless::PeerSend("%\r\nO1\r\nM30\r\n%\r\n");
  Advance(2300);
  EXPECT_FALSE(transfer.active);
  EXPECT_EQ(morva::app.activeTab, 1);
}

TEST_F(TransferTest, ShowsAReceivedProgramToAUserWhoWaitsForIt) {
  morva::NewProgram();
  morva::app.lastKeyAt = platform::TickMilliseconds();  // the key that pressed RECEIVE
  morva::NoteUserPress(platform::TickMilliseconds());   // or the pointer
  Receive();
  headless::PeerSend("%\r\nO1\r\nM30\r\n%\r\n");
  Advance(2300);
  EXPECT_EQ(morva::app.activeTab, 1);
}

TEST_F(TransferTest, TellsAnAbortThatCameTooLateAsACompleteSend) {
  Send(u"G0");
  platform::EndWorker(platform::Worker::Transfer);  // all has left, and nothing is told yet
  Log();
  morva::AbortTransfer();
  Advance(10);
  EXPECT_EQ(Log(), (Lines{u"Abort requested...",
                          u"The abort came too late: all bytes had left the port.", kSendDone}));
  EXPECT_EQ(State(), u"DNC: CONNECTED");
}

TEST_F(TransferTest, SaysThatTheTabOfAFileDiffersFromWhatIsSent) {
  Put("part.nc", "G1 X1\r\n");
  morva::SwitchTab(morva::OpenTab(PathOf("part.nc"), u"G1 X2\r\n", u""));
  morva::MarkModified();
  headless::QueueFile(PathOf("part.nc"));
  headless::QueueAnswer(BoxAnswer::No);
  morva::SendFileFromDisk();
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_NE(boxes[0].text.find(u"its tab differs from what stands on disk"), std::u16string::npos);
}

TEST_F(TransferTest, ArmsTheDeferredRefreshForAReceivedProgram) {
  Receive();
  headless::PeerSend("O1");
  Advance(2160);
  ASSERT_FALSE(transfer.active);
  EXPECT_TRUE(platform::TimerRuns(platform::kMainWindow, morva::kTimerText));
}

TEST_F(TransferTest, EndsAReceiveAfterMoreThanTwoSecondsOfSilence) {
  Receive();
  Advance(0);
  headless::PeerSend("A");
  Advance(1500);
  headless::PeerSend("B");
  // The read ends 50 ms behind the byte and only then counts it; 19 reads and pauses of 110 ms
  // pass before more than 2000 ms are over: 50 + 2090.
  Advance(2000);
  EXPECT_TRUE(transfer.active);
  Advance(160);
  EXPECT_FALSE(transfer.active);
  EXPECT_EQ(Status(), u"DNC receive complete — program opened in a new tab.");
}

// A woken line reads without waiting, so that the looks come every 10 ms: one of them exactly
// 2000 ms behind the last byte.
TEST_F(TransferTest, GoesOnReceivingAfterExactlyTwoSecondsOfSilence) {
  Receive();
  Advance(0);
  headless::PeerSend("A");
  Advance(60);  // counted at 50, when the read ended
  platform::WakeSerial();
  Advance(1990);
  EXPECT_TRUE(transfer.active);
  Advance(9);
  EXPECT_TRUE(transfer.active);
  Advance(1);
  EXPECT_FALSE(transfer.active);
}

TEST_F(TransferTest, WaitsMoreThanSixtySecondsForTheFirstByte) {
  Receive();
  Advance(59999);
  EXPECT_TRUE(transfer.active);
  // One read of 100 ms and a pause of 10 ms are the grain of the test.
  Advance(112);
  EXPECT_FALSE(transfer.active);
  EXPECT_EQ(Log(), (Lines{kAttempt, kConnected, kArmed, u"Receive ended with no data."}));
  EXPECT_EQ(Status(), u"DNC receive error / timeout — no program data received.");
  EXPECT_EQ(State(), u"DNC: ERROR");
  EXPECT_EQ(morva::app.tabCount, 0);
}

TEST_F(TransferTest, OpensATabForOneByteOfNoise) {
  Receive();
  Advance(59000);
  headless::PeerSend("~");
  Advance(2000);
  EXPECT_TRUE(transfer.active);
  Advance(160);
  EXPECT_FALSE(transfer.active);
  ASSERT_EQ(morva::app.tabCount, 1);
  EXPECT_EQ(Status(), u"DNC receive complete — program opened in a new tab.");
  EXPECT_NE(Text().find(u'~'), std::u16string::npos);
}

TEST_F(TransferTest, ReadsReceivedBytesInTheirCodePage) {
  morva::transfer.receivedData = "\x80\xE9";
  morva::OpenReceivedProgram();
  EXPECT_EQ(Text().substr(0, 2), u"\u20AC\u00E9");
}

TEST_F(TransferTest, MasksSevenBitDataOnReceiving) {
  Receive();
  headless::PeerSend("\xCD\xB3\xB0");  // "M30" with the eighth bit set
  Advance(2200);
  EXPECT_NE(Text().find(u"M30"), std::u16string::npos);
}

TEST_F(TransferTest, RefusesExactlyTwoMebibytes) {
  Receive();
  Advance(0);
  std::string program;
  while (program.size() < 2097152) program += "G0 X1.\r\n";  // eight bytes
  headless::PeerSend(program);
  Advance(120000);
  EXPECT_FALSE(transfer.active);
  const Lines log = Log();
  ASSERT_GE(log.size(), 2u);
  EXPECT_EQ(log[log.size() - 2], kError);
  EXPECT_EQ(log.back(),
            u"The control sent 2097152 bytes, and a program may have one less. Split it at the "
            u"control.");
  EXPECT_EQ(State(), u"DNC: ERROR");
  EXPECT_EQ(morva::app.tabCount, 0);
  EXPECT_TRUE(transfer.receivedData.empty());
}

TEST_F(TransferTest, EndsAnAbortedReceiveInError) {
  Receive();
  Advance(1000);
  headless::PeerSend("O1");
  Advance(500);
  Log();
  morva::AbortTransfer();
  Advance(20);
  EXPECT_EQ(Log(), (Lines{u"Abort requested...", kError, kEndedByUser}));
  EXPECT_EQ(State(), u"DNC: ERROR");
  EXPECT_EQ(Status(), kErrorStatus);
  EXPECT_EQ(morva::app.tabCount, 0);
  EXPECT_TRUE(transfer.receivedData.empty());
}

TEST_F(TransferTest, EndsAReceiveInErrorWhenItWasAbortedBeforeItsFirstRead) {
  Receive();
  morva::AbortTransfer();
  Advance(20);
  EXPECT_EQ(Log().back(), kEndedByUser);
}

TEST_F(TransferTest, FailsAReceiveWhoseCableIsGone) {
  Receive();
  headless::PeerSend("O1");
  Advance(500);
  headless::PeerUnplug();
  Advance(200);
  const Lines log = Log();
  ASSERT_GE(log.size(), 2u);
  EXPECT_EQ(log[log.size() - 2], kError);
  EXPECT_EQ(log.back(),
            u"The port reported an error or is gone: look at the adapter and the cable.");
  EXPECT_EQ(morva::app.tabCount, 0);
}

TEST_F(TransferTest, SetsAFailedConnectionForAReceiveWithoutAPort) {
  headless::SetPort(u"COM1", PortState::Absent);
  Receive();
  EXPECT_EQ(State(), u"DNC: CONNECTION FAILED");
  EXPECT_FALSE(transfer.active);
}

TEST_F(TransferTest, RefusesAReceiveAtThePressWhileEightTabsAreOpen) {
  FillTabs();
  ASSERT_EQ(morva::app.tabCount, morva::kMaxTabs);
  headless::TakeBoxes();
  Log();
  Receive();
  const std::vector<headless::BoxRecord> boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].title, u"MORVA Tabs");
  EXPECT_EQ(boxes[0].text, u"The workspace supports up to 8 open programs in this build.");
  EXPECT_FALSE(transfer.active);
  EXPECT_EQ(Log(), Lines());
  EXPECT_EQ(morva::dncState, morva::kDncOffline);
}

TEST_F(TransferTest, KeepsAReceivedProgramInAFileWhenTheTabsFillUpMeanwhile) {
  UseDataFolder();
  Receive();
  FillTabs();
  Log();
  headless::PeerSend(std::string("O1\0 M30\r\n", 10));
  Advance(2200);
  EXPECT_FALSE(transfer.active);
  EXPECT_TRUE(headless::TakeBoxes().empty());
  const std::vector<std::filesystem::path> kept = RecoveryFiles();
  ASSERT_EQ(kept.size(), 1u);
  EXPECT_EQ(Raw(std::filesystem::relative(kept[0], folder).string()), "O1 M30\r\n");
  EXPECT_EQ(Status(),
            u"DNC receive complete — eight programs are open; kept in " + kept[0].u16string());
  EXPECT_EQ(State(), u"DNC: CONNECTED");
  EXPECT_TRUE(transfer.receivedData.empty());
}

// The disk takes 300 ms a flush; the window does not wait, and "kept" is told when it is true.
TEST_F(TransferTest, KeepsAReceivedProgramWhileTheWindowGoesOn) {
  UseDataFolder();
  morva::RegisterSaver();
  Receive();
  FillTabs();
  Log();
  headless::SetFlushTime(300);
  headless::PeerSend("O1\r\n");
  Advance(2200);
  EXPECT_FALSE(transfer.active);
  EXPECT_EQ(Status(), u"DNC receive complete — the program is being kept in a file.");
  EXPECT_EQ(Log(), Lines());
  EXPECT_EQ(transfer.receivedData, "O1\r\n");
  Advance(300);
  ASSERT_EQ(RecoveryFiles().size(), 1u);
  const std::u16string path = RecoveryFiles()[0].u16string();
  EXPECT_EQ(Status(), u"DNC receive complete — eight programs are open; kept in " + path);
  EXPECT_EQ(Log(), Lines{u"Eight programs are open. The received program was kept in " + path});
  EXPECT_TRUE(transfer.receivedData.empty());
}

TEST_F(TransferTest, HoldsAReceivedProgramThatADiskRefusesLater) {
  UseDataFolder();
  morva::RegisterSaver();
  Receive();
  FillTabs();
  headless::SetFlushTime(300);
  headless::FailCall("flush", 1);
  headless::PeerSend("O1\r\n");
  Advance(2500);
  EXPECT_TRUE(RecoveryFiles().empty());
  EXPECT_EQ(Status(), u"DNC receive complete — close a program, then press RECEIVE to open it.");
  EXPECT_EQ(transfer.receivedData, "O1\r\n");
}

// RECEIVE while the last program is on its way to the disk: nothing is opened that is kept too.
TEST_F(TransferTest, ReceivesAnewOnlyWhenTheLastProgramIsKept) {
  UseDataFolder();
  morva::RegisterSaver();
  Receive();
  FillTabs();
  headless::SetFlushTime(300);
  headless::PeerSend("O1\r\n");
  Advance(2200);
  morva::RemoveTab(0);
  Receive();
  EXPECT_EQ(RecoveryFiles().size(), 1u);
  EXPECT_TRUE(transfer.active);
  EXPECT_EQ(morva::app.tabCount, morva::kMaxTabs - 1);
}

TEST_F(TransferTest, HoldsAReceivedProgramThatNoFileTakesUntilThereIsATab) {
  Receive();  // no data folder
  FillTabs();
  headless::PeerSend("O1\r\nM30\r\n");
  Advance(2200);
  EXPECT_EQ(Status(), u"DNC receive complete — close a program, then press RECEIVE to open it.");
  Receive();
  EXPECT_EQ(morva::app.tabCount, morva::kMaxTabs);
  morva::RemoveTab(0);
  Receive();
  EXPECT_FALSE(transfer.active);
  EXPECT_EQ(std::u16string(morva::tabs[morva::app.tabCount - 1].title), u"RECEIVED_RS232.NC");
  EXPECT_NE(Text().find(u"O1\r\nM30"), std::u16string::npos);
  EXPECT_TRUE(transfer.receivedData.empty());
}

TEST_F(TransferTest, TakesAReceiveOfFillingsForAnEmptyOne) {
  for (const std::string_view filling :
       {std::string_view("\0\0\0", 3), std::string_view("  \t\r\n"), std::string_view("\x7F\0 ", 3),
        std::string_view("%"),
        // An empty list of programs, as a control punches it.
        std::string_view("\0\x12%\r\n%\r\n\x14", 9)}) {
    Receive();
    Advance(0);
    headless::PeerSend(filling);
    Advance(2300);
    EXPECT_FALSE(transfer.active);
    EXPECT_EQ(morva::app.tabCount, 0);
    EXPECT_EQ(Log().back(), u"Receive ended with no data.");
    EXPECT_EQ(Status(), u"DNC receive error / timeout — no program data received.");
    EXPECT_EQ(State(), u"DNC: ERROR");
    EXPECT_TRUE(transfer.receivedData.empty());
  }
}

TEST_F(TransferTest, TellsWhatAReceiveIsDoing) {
  Receive();
  EXPECT_EQ(Status(), u"DNC receive armed — send the program from the control within 60 seconds.");
  Advance(0);
  headless::PeerSend("O1\r\n");
  Advance(50);
  EXPECT_EQ(Status(), u"DNC receiving: 4 bytes");
  Advance(2300);
  EXPECT_EQ(Status(), u"DNC receive complete — program opened in a new tab.");
}

TEST_F(TransferTest, TellsFromTheFirstMomentThatItSends) {
  Send(u"G0");
  EXPECT_EQ(Status(), u"DNC transferring: 0 / 10 bytes");
}

TEST_F(TransferTest, TellsAgainHowFarTheTransferIs) {
  EXPECT_FALSE(morva::TellTransfer());
  Receive();
  morva::ShowStatus(u"Other words");
  EXPECT_TRUE(morva::TellTransfer());
  EXPECT_EQ(Status(), u"DNC receive armed — send the program from the control within 60 seconds.");
  Advance(0);
  headless::PeerSend("O1\r\n");
  Advance(50);
  morva::ShowStatus(u"Other words");
  EXPECT_TRUE(morva::TellTransfer());
  EXPECT_EQ(Status(), u"DNC receiving: 4 bytes");
  Advance(2300);
  EXPECT_FALSE(morva::TellTransfer());
}

TEST_F(TransferTest, TellsATransferThatCouldNotBeStarted) {
  headless::FailCall("worker", 1);
  Send(u"G0");
  EXPECT_EQ(Status(), u"DNC transfer error — the transfer could not be started.");
  headless::FailCall("worker", 1);
  Receive();
  EXPECT_EQ(Status(), u"DNC transfer error — the transfer could not be started.");
}

TEST_F(TransferTest, TakesAPortAndARateChangedInTheFileAtTheNextTransfer) {
  headless::SetPort(u"COM5", PortState::Present);
  PutIni("[DNC]\r\nPort=COM1\r\nBaud=9600\r\n");
  Send(u"G0");
  Advance(10);
  ASSERT_EQ(State(), u"DNC: CONNECTED");
  PutIni("[DNC]\r\nPort=COM5\r\nBaud=19200\r\n");
  Log();
  Send(u"G0");
  EXPECT_EQ(Log(), (Lines{kAttempt, kConnected, kSending}));
  EXPECT_EQ(std::u16string(morva::worker.settings.port), u"COM5");
  EXPECT_EQ(morva::worker.settings.baud, 19200);
  EXPECT_EQ(TextOf(morva::kIdDncPort), u"PORT  COM5");
  EXPECT_EQ(TextOf(morva::kIdDncBaud), u"BAUD  19200");
  Advance(10);
  // The same once more opens nothing anew.
  Send(u"G0");
  EXPECT_EQ(Log(), (Lines{kSendDone, kSending}));
  Advance(10);
  PutIni("[DNC]\r\nPort=COM9\r\n");
  Log();
  Send(u"G0");
  EXPECT_EQ(Log(), (Lines{kAttempt, u"The saved port COM9 is not there now.", kNotOpened}));
  EXPECT_EQ(State(), u"DNC: CONNECTION FAILED");
  EXPECT_FALSE(transfer.active);
}

TEST_F(TransferTest, KeepsAProgramThatCameWholeWhenTheWindowGoes) {
  UseDataFolder();
  transfer.active = true;
  transfer.isReceive = true;
  transfer.receivedData = "O1\r\n";  // the worker's message has not been told yet
  morva::EndTransferForGood();
  EXPECT_FALSE(transfer.active);
  ASSERT_EQ(RecoveryFiles().size(), 1u);
  // Nobody has eight programs open here.
  EXPECT_EQ(Log(), Lines{u"The received program was kept in " + RecoveryFiles()[0].u16string()});
}

// A disk that does not answer must not keep the window from closing behind an aborted transfer.
TEST_F(TransferTest, EndsForGoodWithoutWaitingForTheDisk) {
  Receive();
  Advance(100);
  headless::SetFlushTime(60000);
  morva::SaveJob job;
  job.program = PathOf("other.NC");
  job.files.push_back({job.program, "G0"});
  morva::HandOverSave(job);
  const std::uint64_t start = platform::TickMilliseconds();
  morva::EndTransferForGood();
  EXPECT_FALSE(platform::WorkerRuns(platform::Worker::Transfer));
  EXPECT_TRUE(platform::WorkerRuns(platform::Worker::Saver));
  EXPECT_LT(platform::TickMilliseconds() - start, 1000u);
}

TEST_F(TransferTest, KeepsAProgramThatNoFileTookEarlierWhenTheWindowGoes) {
  transfer.receivedData = "O1\r\n";
  morva::EndTransferForGood();
  EXPECT_EQ(transfer.receivedData, "O1\r\n");  // no data folder
  EXPECT_FALSE(morva::KeepHeldProgram());
  UseDataFolder();
  morva::EndTransferForGood();
  EXPECT_EQ(RecoveryFiles().size(), 1u);
  EXPECT_TRUE(morva::KeepHeldProgram());
  EXPECT_EQ(RecoveryFiles().size(), 1u);
}

TEST_F(TransferTest, DropsAPartOfAProgramWhenTheWindowGoes) {
  UseDataFolder();
  Receive();
  Advance(0);
  headless::PeerSend("O1");
  Advance(100);
  morva::EndTransferForGood();
  EXPECT_FALSE(platform::WorkerRuns(platform::Worker::Transfer));
  EXPECT_TRUE(RecoveryFiles().empty());
}

TEST_F(TransferTest, OpensNothingWithoutReceivedData) {
  morva::OpenReceivedProgram();
  EXPECT_EQ(morva::app.tabCount, 0);
  EXPECT_EQ(Log(), Lines());
}

// The line of a test makes no line errors, so the worker's record is filled by hand.

TEST_F(TransferTest, SaysAtTheEndOfAReceiveHowManyBytesHadLineErrors) {
  transfer.isReceive = true;
  transfer.receivedData = "O1";
  morva::worker.lineErrors = 12;
  morva::RouteMessage(morva::kMessageReceiveDone, 2, 0);
  EXPECT_EQ(Log(), (Lines{kOpened, kDoubt,
                          u"12 bytes had line errors. Check baud rate, data bits, parity and stop "
                          u"bits at both ends."}));
  morva::worker.lineErrors = 1;
  morva::RouteMessage(morva::kMessageTransferFailed, 4, 0);
  EXPECT_EQ(Log(), (Lines{kError,
                          u"1 byte had line errors. Check baud rate, data bits, parity and stop "
                          u"bits at both ends."}));
  // A send has no such line: what came back was not kept.
  transfer.isReceive = false;
  morva::RouteMessage(morva::kMessageTransferFailed, 3, 0);
  EXPECT_EQ(Log(), Lines{kError});
}

// Bytes of no program, as another rate gives them.
TEST_F(TransferTest, TellsWhatTheBytesLookLikeAlsoOfAnAbortedReceive) {
  const std::u16string advice =
      u"The bytes are no program text. Compare baud rate first, then data bits, parity and stop "
      u"bits, with the machine's settings.";
  const std::string garbage = "\x0E\x05\x7A\x03\x1B\x6C\x02\x0F\x1E\x07\x6A\x01\x19\x0B";
  Receive();
  Advance(0);
  headless::PeerSend(garbage);
  Advance(500);
  morva::AbortTransfer();
  Advance(500);
  EXPECT_EQ(State(), u"DNC: ERROR");
  EXPECT_EQ(Log().back(), advice);
  Receive();
  Advance(0);
  headless::PeerSend(garbage);
  Log();
  Advance(5000);
  EXPECT_EQ(State(), u"DNC: CONNECTED");
  EXPECT_EQ(Log(), (Lines{kOpened, kDoubt, advice}));
}

TEST_F(TransferTest, NamesAPortThatIsHeldAndOneThatRefusesASetting) {
  headless::SetPort(u"COM1", PortState::Busy);
  Receive();
  EXPECT_EQ(Log(), (Lines{kAttempt, kHeldPort, kNotOpened}));
  // Behind a success the worker's own open is the first that meets it.
  headless::SetPort(u"COM1", PortState::Present);
  Receive();
  headless::SetPort(u"COM1", PortState::Busy);
  Advance(10);
  EXPECT_EQ(Log().back(), kHeldPort);
  platform::SerialSettings settings;
  std::u16string(u"COM4").copy(settings.port, 4);
  morva::LogOpenProblem(settings, platform::SerialProblem::Refused);
  EXPECT_EQ(Log(), Lines{u"The driver of COM4 did not take a setting: try another baud rate, data "
                         u"bits, parity or stop bits."});
}

TEST_F(TransferTest, NamesThePortThatThisUserMayNotOpen) {
  std::u16string(u"COM33").copy(morva::worker.settings.port, 5);
  morva::worker.problem = platform::SerialProblem::Rights;
  morva::RouteMessage(morva::kMessageTransferFailed, 1, 0);
  EXPECT_EQ(Log(), (Lines{kError, u"COM33 may not be opened by this user."}));
}

TEST_F(TransferTest, AcceptsOneByteLessThanTwoMebibytes) {
  Receive();
  Advance(0);
  headless::PeerSend(std::string(2097151, 'X'));
  Advance(120000);
  EXPECT_EQ(State(), u"DNC: CONNECTED");
  ASSERT_EQ(morva::app.tabCount, 1);
  EXPECT_NE(Text().find(std::u16string(2097151, u'X')), std::u16string::npos);
}

}  // namespace
