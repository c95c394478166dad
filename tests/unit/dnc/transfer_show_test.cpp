// The bar of a transfer: its words, and the keys that follow. Seconds are worked out by hand.

#include "dnc/transfer_show.h"

#include <gtest/gtest.h>

#include "app/commands.h"
#include "dnc/transfer_worker.h"
#include "dnc_stage.h"
#include "documents/program_tabs.h"

namespace {

using headless::Advance;

platform::SerialSettings Line(std::int32_t baud, std::int32_t dataBits, std::int32_t parity,
                              std::int32_t stopBits) {
  platform::SerialSettings settings;
  settings.baud = baud;
  settings.dataBits = dataBits;
  settings.parity = parity;
  settings.stopBits = stopBits;
  return settings;
}

TEST(SecondsOnLine, CountStartDataParityAndStopBitsOfEachByte) {
  // 1 + 7 + 1 + 2 = 11 bits a byte: 9600 bytes are 105,600 bits, 11 s at 9600.
  EXPECT_EQ(morva::SecondsOnLine(9600, Line(9600, 7, 2, 2)), 11);
  // 1 + 8 + 0 + 1 = 10.
  EXPECT_EQ(morva::SecondsOnLine(9600, Line(9600, 8, 0, 0)), 10);
  EXPECT_EQ(morva::SecondsOnLine(0, Line(9600, 7, 2, 2)), 0);
  EXPECT_EQ(morva::SecondsOnLine(1, Line(9600, 7, 2, 2)), 1);
  EXPECT_EQ(morva::SecondsOnLine(100, Line(0, 7, 2, 2)), 0);
  EXPECT_EQ(morva::SecondsOnLine(33554432, Line(110, 7, 2, 2)), 3355444);
}

TEST(TransferWords, TellBytesPercentAndTimeLeft) {
  const platform::SerialSettings line = Line(9600, 7, 2, 2);
  EXPECT_EQ(morva::TransferWords({false, 1024, 4410}, line),
            u"1024 / 4410 bytes   23 %   4 s left");  // 3386 * 11 / 9600 = 3.88
  // 99.99 % is not yet all.
  EXPECT_EQ(morva::TransferWords({false, 9999, 10000}, line),
            u"9999 / 10000 bytes   99 %   1 s left");
  EXPECT_EQ(morva::TransferWords({false, 10, 10}, line), u"10 / 10 bytes   100 %   0 s left");
  // 57,000 * 11 / 9600 = 65.3 s.
  EXPECT_EQ(morva::TransferWords({false, 0, 57000}, line),
            u"0 / 57000 bytes   0 %   1:06 min left");
  // Nobody knows how long the control holds the line.
  EXPECT_EQ(morva::TransferWords({false, 1024, 4410, true}, line),
            u"1024 / 4410 bytes   23 %   held by XOFF");
  EXPECT_EQ(morva::TransferWords({true, 0, 0}, line), u"waiting for the first byte");
  EXPECT_EQ(morva::TransferWords({true, 512, 0}, line), u"512 bytes");
}

struct TransferShowTest : public DncStage {
  TransferShowTest() {
    morva::ResetDocuments();
    headless::SetPort(u"COM1", headless::PortState::Present);
    support::MakeButton(morva::kIdSend, u"SEND");
    support::MakeButton(morva::kIdReceive, u"RECEIVE");
    support::MakeButton(morva::kIdAbortTransfer, u"ABORT");
    platform::ViewSpec bar;
    bar.id = morva::kViewTransfer;
    bar.className = u"MorvaTransfer";
    platform::MakeView(bar);
    platform::SetVisible(morva::kIdAbortTransfer, false);
    // As the shell does.
    morva::hooks.layout = [] {
      platform::SetVisible(morva::kIdAbortTransfer, morva::TransferRuns());
      morva::RefreshKeyStates();
      keyWorked = platform::IsEnabled(morva::kIdSend);
    };
  }
  ~TransferShowTest() override {
    morva::hooks.layout = nullptr;
    morva::ResetTransfer();
    morva::FreeTabs();
    morva::ResetDocuments();
  }
  static inline bool keyWorked = false;  // SEND, as the layout left it
  static void Send() {
    platform::SetEditorText(morva::kIdEditor, u"G0");
    headless::QueueAnswer(platform::BoxAnswer::Yes);
    headless::PeerSend("\x13");
    morva::RouteCommand(morva::kIdSend, 0);
    Advance(10);
  }
};

TEST_F(TransferShowTest, DimsSendAndReceiveWhileATransferRuns) {
  for (int turn = 0; turn < 2; ++turn) {
    if (turn == 0) {
      Send();
    } else {
      morva::RouteCommand(morva::kIdReceive, 0);
    }
    EXPECT_FALSE(platform::IsEnabled(morva::kIdSend));
    EXPECT_FALSE(platform::IsEnabled(morva::kIdReceive));
    EXPECT_TRUE(platform::IsVisible(morva::kIdAbortTransfer));
    for (const int key : {morva::kIdSend, morva::kIdReceive}) {
      EXPECT_EQ(headless::ToolTipOf(key).substr(0, 30), u"A transfer is already active.\n");
    }
    EXPECT_EQ(morva::HintOf(morva::kIdReceive), u"RECEIVE: A transfer is already active.");
    morva::RouteCommand(morva::kIdAbortTransfer, 0);
    Advance(120);
    EXPECT_FALSE(morva::TransferRuns());
    EXPECT_TRUE(platform::IsEnabled(morva::kIdSend));
    EXPECT_TRUE(platform::IsEnabled(morva::kIdReceive));
    EXPECT_EQ(morva::HintOf(morva::kIdReceive), u"RECEIVE");
    EXPECT_EQ(headless::ToolTipOf(morva::kIdReceive), u"Receive a program from the control");
    EXPECT_FALSE(platform::IsVisible(morva::kIdAbortTransfer));
  }
}

TEST_F(TransferShowTest, LetsTheKeysBeWhereNoThreadCouldBeStarted) {
  headless::FailCall("worker", 1);
  Send();
  EXPECT_TRUE(platform::IsEnabled(morva::kIdSend));
  EXPECT_FALSE(platform::IsVisible(morva::kIdAbortTransfer));
}

TEST_F(TransferShowTest, TellsAssistiveTechnologyHowFarItIs) {
  headless::SetPortBuffer(4096);
  Send();
  EXPECT_EQ(platform::AccessibleName(morva::kViewTransfer),
            u"Sending: 10 / 10 bytes   100 %   0 s left");
  morva::AbortTransfer();
  Advance(10);
  morva::RouteCommand(morva::kIdReceive, 0);
  EXPECT_EQ(platform::AccessibleName(morva::kViewTransfer),
            u"Receiving: waiting for the first byte");
  Advance(0);
  headless::PeerSend("O1");
  Advance(60);
  EXPECT_EQ(platform::AccessibleName(morva::kViewTransfer), u"Receiving: 2 bytes");
}

TEST_F(TransferShowTest, TellsAssistiveTechnologyThatTheControlHoldsTheLine) {
  Send();
  Advance(1000);
  EXPECT_EQ(platform::AccessibleName(morva::kViewTransfer),
            u"Sending: 0 / 10 bytes   0 %   held by XOFF");
  morva::AbortTransfer();
  Advance(10);
  headless::PeerStall(0);
  Send();
  EXPECT_EQ(platform::AccessibleName(morva::kViewTransfer).find(u"held"), std::u16string::npos);
}

TEST_F(TransferShowTest, HandsTheKeyboardFromItsKeyToTheAbortKeyAndBack) {
  platform::SetFocusTo(morva::kIdSend);
  Send();
  EXPECT_EQ(platform::FocusedId(), morva::kIdAbortTransfer);
  // Dimmed before, it would have lost the keyboard to some other key.
  EXPECT_TRUE(keyWorked);
  morva::RouteCommand(morva::kIdAbortTransfer, 0);
  Advance(10);
  EXPECT_EQ(platform::FocusedId(), morva::kIdSend);
  // Whoever types goes on typing.
  platform::SetFocusTo(morva::kIdEditor);
  Send();
  EXPECT_EQ(platform::FocusedId(), morva::kIdEditor);
}

}  // namespace
