#include "platform/posix/serial_settings.h"

#include <termios.h>

#include <cstring>

#include "platform/posix/serial_line.h"

namespace platform {
namespace {

constexpr tcflag_t kInputFlags = IGNBRK | BRKINT | IGNPAR | PARMRK | INPCK | ISTRIP | INLCR |
                                 IGNCR | ICRNL | IXON | IXOFF | IXANY;
constexpr tcflag_t kLocalFlags = ECHO | ECHONL | ICANON | ISIG | IEXTEN | TOSTOP | NOFLSH;
constexpr tcflag_t kCharacterFlags = PARENB | PARODD | CMSPAR;
constexpr tcflag_t kControlFlags =
    CSIZE | kCharacterFlags | CSTOPB | CREAD | CLOCAL | HUPCL | CRTSCTS;

tcflag_t CharacterSize(std::int32_t dataBits) {
  switch (dataBits) {
    case 5:
      return CS5;
    case 6:
      return CS6;
    case 7:
      return CS7;
    default:
      return CS8;
  }
}

tcflag_t ParityFlags(std::int32_t parity) {
  switch (parity) {
    case 1:
      return PARENB | PARODD;
    case 2:
      return PARENB;
    case 3:
      return PARENB | CMSPAR | PARODD;
    case 4:
      return PARENB | CMSPAR;
    default:
      return 0;
  }
}

}  // namespace

bool SettingsHold(const SerialSettings& settings) {
  if (settings.baud <= 0) return false;
  if (settings.dataBits < 5 || settings.dataBits > 8) return false;
  if (settings.parity < 0 || settings.parity > 4) return false;
  if (settings.stopBits != 0 && settings.stopBits != 2) return false;
  return settings.dataBits != 5 || settings.stopBits == 0;
}

void FillTerminal(const SerialSettings& settings, termios& record) {
  // Error marks are asked for without parity too: a framing error is what a wrong rate shows.
  // XON and XOFF are obeyed here and not by the driver.
  record.c_iflag = (record.c_iflag & ~kInputFlags) | INPCK | PARMRK;
  record.c_oflag &= ~static_cast<tcflag_t>(OPOST);
  record.c_lflag &= ~kLocalFlags;
  // Closing the port does not drop DTR: a control that watches it would see an alarm.
  record.c_cflag = (record.c_cflag & ~kControlFlags) | CharacterSize(settings.dataBits) |
                   ParityFlags(settings.parity) | CREAD | CLOCAL;
  if (settings.stopBits == 2) record.c_cflag |= CSTOPB;
  if (settings.flow == 2) record.c_cflag |= CRTSCTS;
  record.c_cc[VMIN] = 1;
  record.c_cc[VTIME] = 0;
  record.c_cc[VSTART] = kXon;
  record.c_cc[VSTOP] = kXoff;
}

bool SameTerminal(const termios& wanted, const termios& taken, bool pseudo) {
  const tcflag_t control = pseudo ? kControlFlags & ~(CSIZE | kCharacterFlags) : kControlFlags;
  return ((wanted.c_iflag ^ taken.c_iflag) & kInputFlags) == 0 &&
         ((wanted.c_oflag ^ taken.c_oflag) & OPOST) == 0 &&
         ((wanted.c_lflag ^ taken.c_lflag) & kLocalFlags) == 0 &&
         ((wanted.c_cflag ^ taken.c_cflag) & control) == 0 &&
         wanted.c_cc[VMIN] == taken.c_cc[VMIN] && wanted.c_cc[VTIME] == taken.c_cc[VTIME] &&
         wanted.c_cc[VSTART] == taken.c_cc[VSTART] && wanted.c_cc[VSTOP] == taken.c_cc[VSTOP];
}

bool ConfigureLine(int fd, const SerialSettings& settings, bool pseudo) {
  if (!SettingsHold(settings)) return false;
  termios wanted;
  if (tcgetattr(fd, &wanted) != 0) return false;
  FillTerminal(settings, wanted);
  // Its answer is no answer: it succeeds when any one field was taken, and some libraries fail
  // it when nothing was left to change. Only the comparison tells.
  (void)tcsetattr(fd, TCSANOW, &wanted);
  if (!SetLineRate(fd, settings.baud)) return false;
  termios taken;
  if (tcgetattr(fd, &taken) != 0 || !SameTerminal(wanted, taken, pseudo)) return false;
  // A driver tells the rate that its divider makes; two percent is what a byte can bear.
  const std::int64_t rate = LineRateOf(fd);
  const std::int64_t difference =
      rate > settings.baud ? rate - settings.baud : settings.baud - rate;
  return rate > 0 && difference * 50 <= settings.baud;
}

std::int64_t ByteNanoseconds(const SerialSettings& settings) {
  std::int64_t bits = 1 + settings.dataBits;
  if (settings.parity != 0) ++bits;
  bits += settings.stopBits == 2 ? 2 : 1;
  return bits * 1000000000 / settings.baud;
}

}  // namespace platform
