// The setup panel on the real window: a newcomer finds the simulated control in the list of ports,
// checks it, saves it and receives a first program.

#include "dnc/setup_panel.h"

#include <QComboBox>

#include "desk/at_desk.h"
#include "desk/control_desk.h"
#include "dnc/transfer.h"
#include "platform/control.h"
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

}  // namespace
