// The line rate, apart from the other settings because the record that carries any rate and
// the portable one cannot be named in one file.

#include <asm/termbits.h>
#include <sys/ioctl.h>

#include "platform/posix/serial_settings.h"

namespace platform {
namespace {

struct NamedRate {
  std::int32_t baud;
  tcflag_t name;
};

// A driver that knows only named rates must be asked by name.
constexpr NamedRate kNamedRates[] = {
    {50, B50},           {75, B75},           {110, B110},         {134, B134},
    {150, B150},         {200, B200},         {300, B300},         {600, B600},
    {1200, B1200},       {1800, B1800},       {2400, B2400},       {4800, B4800},
    {9600, B9600},       {19200, B19200},     {38400, B38400},     {57600, B57600},
    {115200, B115200},   {230400, B230400},   {460800, B460800},   {500000, B500000},
    {576000, B576000},   {921600, B921600},   {1000000, B1000000}, {1152000, B1152000},
    {1500000, B1500000}, {2000000, B2000000}, {2500000, B2500000}, {3000000, B3000000},
    {3500000, B3500000}, {4000000, B4000000},
};

tcflag_t RateName(std::int32_t baud) {
  for (const NamedRate& rate : kNamedRates) {
    if (rate.baud == baud) return rate.name;
  }
  return BOTHER;
}

}  // namespace

bool SetLineRate(int fd, std::int32_t baud) {
  if (baud <= 0) return false;
  termios2 record;
  if (ioctl(fd, TCGETS2, &record) != 0) return false;
  const tcflag_t name = RateName(baud);
  // An input rate of zero follows the output rate.
  record.c_cflag = (record.c_cflag & ~static_cast<tcflag_t>(CBAUD | CIBAUD)) | name;
  record.c_ispeed = static_cast<speed_t>(baud);
  record.c_ospeed = static_cast<speed_t>(baud);
  return ioctl(fd, TCSETS2, &record) == 0;
}

std::int32_t LineRateOf(int fd) {
  termios2 record;
  if (ioctl(fd, TCGETS2, &record) != 0) return 0;
  return static_cast<std::int32_t>(record.c_ospeed);
}

}  // namespace platform
