// The setup panel on the real window: a newcomer finds the simulated control in the list of ports,
// checks it, saves it and receives a first program.

#include "dnc/setup_panel.h"

#include <QComboBox>

#include "desk/at_desk.h"
#include "desk/control_desk.h"
#include "dnc/serial_profile.h"
#include "dnc/transfer.h"
#include "platform/control.h"
#include "platform/file.h"
#include "platform/listing.h"

namespace {

class SetupAtTheDesk : public AtDesk {
 protected:
  void SetUp() override {
    AtDesk::SetUp();
    // A folder of its own, so that no other simulated control is listed.
    qputenv("XDG_RUNTIME_DIR", Path("run").toLocal8Bit());
    QDir().mkpath(Path("run"));
  }
  void TearDown() override {
    if (morva::TransferRuns()) morva::RequestAbort();
    desk::Until([]() { return !morva::TransferRuns(); });
    control_.Stop();
  }
  static bool IsThere() { return platform::FileExists(morva::serialProfile.port); }
  static std::u16string Chosen() {
    return platform::RowText(morva::kIdDncPorts, platform::SelectedRow(morva::kIdDncPorts));
  }
  desk::ControlAtTheFarEnd control_;
};

TEST_F(SetupAtTheDesk, FindsChecksSavesAndReceivesFromTheSimulatedControl) {
  ASSERT_TRUE(control_.StartListed());
  WriteAll(Path("first.NC"), "%\r\nO7777\r\nG00 X1.\r\nM30\r\n%\r\n");
  desk::Click(morva::kIdSetup);
  desk::Run(200);
  ASSERT_TRUE(morva::IsSetupPanelOpen());
  int list = 0;
  while (list < platform::RowCount(morva::kIdDncPorts) &&
         platform::RowText(morva::kIdDncPorts, list).find(u"Simulated") == std::u16string::npos) {
    ++list;
  }
  ASSERT_LT(list, platform::RowCount(morva::kIdDncPorts));
  platform::SelectRow(morva::kIdDncPorts, list);
  desk::Click(morva::kIdDncCheck);
  EXPECT_NE(platform::TextOf(morva::kIdDncLog).find(u"TEST OK"), std::u16string::npos);
  desk::Click(morva::kIdDncSave);
  Resize(1560, 940);
  Show("setup_panel_wide.png");
  Resize(1200, 800);
  Show("setup_panel.png");
  desk::Click(morva::kIdReceive);
  ASSERT_TRUE(desk::Until([]() { return morva::TransferRuns(); }));
  Show("setup_panel_receives.png");
  control_.Say("send " + Path("first.NC").toLocal8Bit());
  ASSERT_TRUE(desk::Until([]() { return !morva::TransferRuns(); }, 20000));
  EXPECT_NE(0, desk::TextOf(morva::kIdEditor).count(QStringLiteral("O7777")));
}

TEST_F(SetupAtTheDesk, SaysThatTheSavedLineIsGone) {
  ASSERT_TRUE(control_.Start());
  control_.Say("vanish");
  ASSERT_TRUE(desk::Until([]() { return !morva::LoadSerialProfile() || !IsThere(); }));
  desk::Click(morva::kIdSetup);
  ASSERT_TRUE(morva::IsSetupPanelOpen());
  EXPECT_EQ(Chosen(), std::u16string(morva::serialProfile.port) + u"  \u00B7  gone");
  EXPECT_NE(platform::TextOf(morva::kIdDncLog)
                .find(u"The saved port " + std::u16string(morva::serialProfile.port) +
                      u" is not there now."),
            std::u16string::npos);
  Resize(1200, 800);
  Show("setup_panel_gone.png");
}

TEST_F(SetupAtTheDesk, KeepsThePortOfAReceiveInTheBandWhateverIsSetUpMeanwhile) {
  ASSERT_TRUE(control_.Start());
  desk::ControlAtTheFarEnd other;
  ASSERT_TRUE(other.StartListed());
  desk::Click(morva::kIdReceive);
  ASSERT_TRUE(desk::Until([]() { return morva::TransferRuns(); }));
  const std::u16string band = platform::TextOf(morva::kIdDncPort);
  EXPECT_EQ(band, u"PORT  " + std::u16string(morva::serialProfile.port));
  // A dim key says why.
  QWidget* key = desk::WidgetOf(morva::kIdReceive);
  desk::MovePointer(key, key->rect().center());
  EXPECT_TRUE(desk::Until([]() {
    return desk::TextOf(morva::kIdStatusLine) ==
           QStringLiteral("RECEIVE: A transfer is already active.");
  }));
  desk::Click(morva::kIdSetup);
  ASSERT_TRUE(morva::IsSetupPanelOpen());
  int row = 0;
  while (row < platform::RowCount(morva::kIdDncPorts) &&
         row == platform::SelectedRow(morva::kIdDncPorts)) {
    ++row;
  }
  ASSERT_LT(row, platform::RowCount(morva::kIdDncPorts));
  platform::SelectRow(morva::kIdDncPorts, row);
  desk::Click(morva::kIdDncCheck);
  desk::Click(morva::kIdDncSave);
  EXPECT_TRUE(desk::Until([]() {
    return platform::TextOf(morva::kIdDncLog).find(u"The transfer that runs keeps its port") !=
           std::u16string::npos;
  }));
  EXPECT_EQ(platform::TextOf(morva::kIdDncPort), band);
  EXPECT_EQ(platform::TextOf(morva::kIdDncState), u"DNC: TRANSFERRING");
  Resize(1200, 800);
  Show("setup_panel_in_receive.png");
  desk::Click(morva::kIdDncAbort);
  ASSERT_TRUE(desk::Until([]() { return !morva::TransferRuns(); }));
  EXPECT_NE(platform::TextOf(morva::kIdDncLog).find(u"You ended the RECEIVE."),
            std::u16string::npos);
}

}  // namespace
