// COM names and what is behind them, on a made-up machine; and the terminal record.

#include "platform/posix/serial_names.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <vector>

#include "platform/posix/serial_settings.h"
#include "support/stage.h"

namespace {

namespace fs = std::filesystem;
using namespace platform;

// A machine with device nodes and the kernel's list of them, in a folder of its own.
struct SerialNames : public ::testing::Test {
  fs::path home = support::NewHome();
  std::string devices = (home / "dev").string();
  std::string system = (home / "sys").string();

  SerialNames() {
    fs::create_directories(home / "dev");
    fs::create_directories(home / "sys/class/tty");
  }
  ~SerialNames() override {
    SetAdapterNamer(nullptr);
    std::error_code ignored;
    fs::remove_all(home, ignored);
  }

  void AddNode(const std::string& name) { support::WriteRaw(home / "dev" / name, ""); }
  void AddChip(const std::string& name, const char* type) {
    AddNode(name);
    fs::create_directories(home / "sys/class/tty" / name);
    support::WriteRaw(home / "sys/class/tty" / name / "type", std::string(type) + "\n");
  }
  // `below`: the device folder's place under the USB device that bears the words.
  void AddAdapter(const std::string& name, const std::string& below, const std::string& product) {
    AddNode(name);
    const fs::path usb = home / "sys/devices/usb1" / ("1-" + name);
    fs::create_directories(usb / below);
    if (!product.empty()) support::WriteRaw(usb / "product", product + "\n");
    fs::create_directories(home / "sys/class/tty" / name);
    fs::create_directory_symlink(usb / below, home / "sys/class/tty" / name / "device");
  }
  std::vector<std::string> Ports() {
    SerialName names[64];
    std::vector<std::string> lines;
    const int count = ListPortsIn(devices, system, names, 64);
    for (int i = 0; i < count; ++i) {
      lines.push_back(support::Narrow(names[i].name) + " " + support::Narrow(names[i].device) +
                      " " + support::Narrow(names[i].adapter));
    }
    return lines;
  }
};

TEST_F(SerialNames, GivesEachKindOfDeviceItsNumbers) {
  EXPECT_EQ(DeviceOfCom(1), "ttyS0");
  EXPECT_EQ(DeviceOfCom(32), "ttyS31");
  EXPECT_EQ(DeviceOfCom(33), "ttyUSB0");
  EXPECT_EQ(DeviceOfCom(48), "ttyUSB15");
  EXPECT_EQ(DeviceOfCom(49), "ttyACM0");
  EXPECT_EQ(DeviceOfCom(64), "ttyACM15");
  EXPECT_EQ(DeviceOfCom(0), "");
  EXPECT_EQ(DeviceOfCom(65), "");
}

TEST_F(SerialNames, MakesAPathOfANameAndTakesAPathAsItStands) {
  EXPECT_EQ(DevicePath(u"COM3", "/dev"), "/dev/ttyS2");
  EXPECT_EQ(DevicePath(u"com34", "/dev"), "/dev/ttyUSB1");
  EXPECT_EQ(DevicePath(u"Com64", "/dev"), "/dev/ttyACM15");
  EXPECT_EQ(DevicePath(u"/dev/pts/7", "/dev"), "/dev/pts/7");
  for (const char16_t* port : {u"", u"COM", u"COM0", u"COM03", u"COM65", u"COM70", u"COM100",
                               u"COM1 ", u"LPT1", u"ttyS0"}) {
    EXPECT_EQ(DevicePath(port, "/dev"), "") << support::Narrow(port);
  }
}

TEST_F(SerialNames, ListsChipsAndAdaptersInRisingOrder) {
  AddAdapter("ttyACM2", "1-1:1.0", "Gauge");
  AddAdapter("ttyUSB0", "1-1:1.0/ttyUSB0", "FT232R USB UART");
  AddChip("ttyS1", "4");
  AddChip("ttyS4", "16550A");
  EXPECT_EQ(Ports(),
            (std::vector<std::string>{"COM2 ttyS1 ", "COM5 ttyS4 ", "COM33 ttyUSB0 FT232R USB UART",
                                      "COM51 ttyACM2 Gauge"}));
}

TEST_F(SerialNames, PassesOverANameWithoutAChip) {
  AddChip("ttyS0", "0");
  AddChip("ttyS1", "4");
  EXPECT_EQ(Ports(), std::vector<std::string>{"COM2 ttyS1 "});
}

TEST_F(SerialNames, PassesOverANodeWhoseAdapterIsGoneAndAnAdapterWithoutANode) {
  AddNode("ttyUSB0");
  AddAdapter("ttyUSB1", "1-1:1.0/ttyUSB1", "");
  fs::remove(home / "dev" / "ttyUSB1");
  EXPECT_EQ(Ports(), std::vector<std::string>());
}

TEST_F(SerialNames, FindsNothingAboveItsNumbers) {
  AddChip("ttyS32", "4");
  AddAdapter("ttyUSB16", "1-1:1.0/ttyUSB16", "x");
  EXPECT_EQ(Ports(), std::vector<std::string>());
}

TEST_F(SerialNames, StopsAtTheCapacity) {
  for (int i = 0; i < 5; ++i) AddChip("ttyS" + std::to_string(i), "4");
  SerialName names[3];
  EXPECT_EQ(ListPortsIn(devices, system, names, 3), 3);
  EXPECT_EQ(std::u16string(names[2].name), u"COM3");
}

TEST_F(SerialNames, LetsANamerThatKnowsMoreWin) {
  AddAdapter("ttyUSB0", "1-1:1.0/ttyUSB0", "plain");
  AddAdapter("ttyUSB1", "1-1:1.0/ttyUSB1", "plain");
  SetAdapterNamer([](const char16_t* device, char16_t* words, int capacity) {
    if (std::u16string(device) != u"ttyUSB1") return false;
    EXPECT_EQ(capacity, 96);
    std::u16string(u"better").copy(words, 6);
    return true;
  });
  EXPECT_EQ(Ports(), (std::vector<std::string>{"COM33 ttyUSB0 plain", "COM34 ttyUSB1 better"}));
}

TEST_F(SerialNames, CutsLongWordsOfAnAdapter) {
  AddAdapter("ttyUSB0", "1-1:1.0/ttyUSB0", std::string(200, 'w'));
  EXPECT_EQ(Ports()[0], "COM33 ttyUSB0 " + std::string(95, 'w'));
}

// A system that does not list its ports is asked port by port.
TEST_F(SerialNames, AsksThePortItselfWhereTheSystemListsNone) {
  fs::remove_all(home / "sys");
  const int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  ASSERT_GE(master, 0);
  ASSERT_EQ(grantpt(master), 0);
  ASSERT_EQ(unlockpt(master), 0);
  char name[128] = {};
  ASSERT_EQ(ptsname_r(master, name, sizeof(name)), 0);
  fs::create_symlink(name, home / "dev/ttyUSB3");
  AddNode("ttyUSB4");  // a file is no line
  fs::create_symlink(home / "dev/gone", home / "dev/ttyACM0");
  EXPECT_EQ(Ports(), std::vector<std::string>{"COM36 ttyUSB3 "});
  // Looked for afresh each time.
  fs::rename(home / "dev/ttyUSB3", home / "dev/ttyACM5");
  EXPECT_EQ(Ports(), std::vector<std::string>{"COM54 ttyACM5 "});
  close(master);
}

TEST_F(SerialNames, NamesAGroupOnlyWhereItMayReadAndWrite) {
  AddNode("ttyS0");
  const std::string path = devices + "/ttyS0";
  ASSERT_EQ(chmod(path.c_str(), 0620), 0);
  EXPECT_EQ(GroupOfPath(path), u"");
  ASSERT_EQ(chmod(path.c_str(), 0660), 0);
  EXPECT_NE(GroupOfPath(path), u"");
  EXPECT_EQ(GroupOfPath(devices + "/none"), u"");
}

SerialSettings Classic() { return SerialSettings{}; }

TEST(SerialSettingsRecord, HoldsOnlyValuesThatNameALine) {
  EXPECT_TRUE(SettingsHold(Classic()));
  SerialSettings s = Classic();
  s.baud = -5;
  EXPECT_FALSE(SettingsHold(s));
  s = Classic();
  s.stopBits = 1;
  EXPECT_FALSE(SettingsHold(s));
  s = Classic();
  s.dataBits = 5;  // two stop bits would become one and a half
  EXPECT_FALSE(SettingsHold(s));
  s.stopBits = 0;
  EXPECT_TRUE(SettingsHold(s));
}

TEST(SerialSettingsRecord, MakesTheClassicLineOfAnyOther) {
  termios record;
  std::memset(&record, 0xFF, sizeof(record));
  FillTerminal(Classic(), record);
  EXPECT_EQ(record.c_cflag & (CSIZE | PARENB | PARODD | CSTOPB | CREAD | CLOCAL | HUPCL),
            static_cast<tcflag_t>(CS7 | PARENB | CSTOPB | CREAD | CLOCAL));
  EXPECT_EQ(record.c_cflag & (CRTSCTS | CMSPAR), 0u);
  EXPECT_EQ(record.c_iflag & (IXON | IXOFF | IXANY | ISTRIP | IGNPAR | ICRNL | INLCR | IGNCR), 0u);
  EXPECT_EQ(record.c_iflag & (INPCK | PARMRK), static_cast<tcflag_t>(INPCK | PARMRK));
  EXPECT_EQ(record.c_lflag & (ICANON | ECHO | ISIG | IEXTEN), 0u);
  EXPECT_EQ(record.c_oflag & OPOST, 0u);
}

TEST(SerialSettingsRecord, MapsParityBitsAndHandshake) {
  struct Case {
    std::int32_t parity;
    tcflag_t flags;
  };
  const Case cases[] = {{0, 0},
                        {1, PARENB | PARODD},
                        {2, PARENB},
                        {3, PARENB | PARODD | CMSPAR},
                        {4, PARENB | CMSPAR}};
  for (const Case& each : cases) {
    SerialSettings s = Classic();
    s.parity = each.parity;
    s.dataBits = 8;
    s.stopBits = 0;
    s.flow = 2;
    termios record = {};
    FillTerminal(s, record);
    EXPECT_EQ(record.c_cflag & (PARENB | PARODD | CMSPAR), each.flags) << each.parity;
    EXPECT_EQ(record.c_cflag & (CSIZE | CSTOPB | CRTSCTS), static_cast<tcflag_t>(CS8 | CRTSCTS));
  }
}

TEST(SerialSettingsRecord, SeesEveryFieldThatADriverDidNotTake) {
  termios wanted = {};
  FillTerminal(Classic(), wanted);
  EXPECT_TRUE(SameTerminal(wanted, wanted, false));
  termios taken = wanted;
  taken.c_cflag = (taken.c_cflag & ~static_cast<tcflag_t>(CSIZE | PARENB)) | CS8;
  EXPECT_FALSE(SameTerminal(wanted, taken, false));
  EXPECT_TRUE(SameTerminal(wanted, taken, true));
  constexpr tcflag_t kControl[] = {CSTOPB, CRTSCTS, CLOCAL, CREAD, HUPCL};
  for (tcflag_t flag : kControl) {
    taken = wanted;
    taken.c_cflag ^= flag;
    EXPECT_FALSE(SameTerminal(wanted, taken, true)) << flag;
  }
  constexpr tcflag_t kInput[] = {INPCK, PARMRK, IXON, IXANY, ISTRIP, ICRNL};
  for (tcflag_t flag : kInput) {
    taken = wanted;
    taken.c_iflag ^= flag;
    EXPECT_FALSE(SameTerminal(wanted, taken, true)) << flag;
  }
  taken = wanted;
  taken.c_cc[VMIN] = 0;
  EXPECT_FALSE(SameTerminal(wanted, taken, true));
}

TEST(SerialSettingsRecord, KnowsTheTimeOfOneByte) {
  // 1 start, 7 data, parity, 2 stop: 11 bits at 9600 are 1.145833 ms.
  EXPECT_EQ(ByteNanoseconds(Classic()), 1145833);
  SerialSettings s = Classic();
  s.baud = 115200;
  s.dataBits = 8;
  s.parity = 0;
  s.stopBits = 0;
  EXPECT_EQ(ByteNanoseconds(s), 86805);  // 10 bits
}

}  // namespace
