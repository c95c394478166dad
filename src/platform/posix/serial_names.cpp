#include "platform/posix/serial_names.h"

#include <fcntl.h>
#include <grp.h>
#include <linux/serial.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

#include "platform/file.h"

namespace platform {
namespace {

bool (*adapterNamer)(const char16_t* device, char16_t* words, int capacity) = nullptr;

struct ComRange {
  int first;
  int last;
  const char* device;
};

constexpr ComRange kComRanges[] = {{1, 32, "ttyS"}, {33, 48, "ttyUSB"}, {49, 64, "ttyACM"}};

void CopyText(char16_t* dest, std::size_t capacity, std::u16string_view text) {
  std::size_t count = text.size() < capacity - 1 ? text.size() : capacity - 1;
  text.copy(dest, count);
  dest[count] = 0;
}

// The first line of a small file of the kernel. False: it cannot be read.
bool ReadSmallFile(const std::string& path, std::string& text) {
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  char bytes[256];
  const ssize_t got = read(fd, bytes, sizeof(bytes));
  close(fd);
  if (got < 0) return false;
  text.assign(bytes, static_cast<std::size_t>(got));
  text.erase(text.find_first_of("\r\n") == std::string::npos ? text.size()
                                                             : text.find_first_of("\r\n"));
  return true;
}

// Only for a system that does not list its ports. A port held by another, or one that this
// user may not open, is there.
bool AnswersWhenOpened(const std::string& path, bool needsChip) {
  const int fd = open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return errno == EBUSY || errno == EACCES || errno == EPERM;
  serial_struct chip = {};
  bool present = isatty(fd) != 0;
  if (ioctl(fd, TIOCGSERIAL, &chip) == 0) present = !needsChip || chip.type != PORT_UNKNOWN;
  close(fd);
  return present;
}

}  // namespace

void SetAdapterNamer(bool (*namer)(const char16_t* device, char16_t* words, int capacity)) {
  adapterNamer = namer;
}

std::string DeviceOfCom(int number) {
  for (const ComRange& range : kComRanges) {
    if (number >= range.first && number <= range.last) {
      return range.device + std::to_string(number - range.first);
    }
  }
  return {};
}

std::string DevicePath(std::u16string_view port, std::string_view devices) {
  if (port.empty()) return {};
  if (port[0] == u'/') return ToUtf8(port);
  if (port.size() < 4 || port.size() > 5) return {};
  for (int i = 0; i < 3; ++i) {
    const char16_t c = port[static_cast<std::size_t>(i)];
    if (c != u"COM"[i] && c != u"com"[i]) return {};
  }
  int number = 0;
  for (char16_t c : port.substr(3)) {
    if (c < u'0' || c > u'9') return {};
    number = number * 10 + (c - u'0');
  }
  const std::string device = port[3] == u'0' ? std::string() : DeviceOfCom(number);
  return device.empty() ? device : std::string(devices) + "/" + device;
}

bool DevicePresent(const std::string& device, std::string_view devices, std::string_view system) {
  const std::string path = std::string(devices) + "/" + device;
  struct stat node = {};
  if (stat(path.c_str(), &node) != 0) return false;
  const bool needsChip = device.rfind("ttyS", 0) == 0;
  const std::string listed = std::string(system) + "/class/tty";
  if (access(listed.c_str(), X_OK) != 0) return AnswersWhenOpened(path, needsChip);
  const std::string entry = listed + "/" + device;
  if (access(entry.c_str(), F_OK) != 0) return false;
  if (!needsChip) return true;
  // The kernel makes more ttyS than there are chips; type 0 is one without.
  std::string type;
  if (!ReadSmallFile(entry + "/type", type)) return AnswersWhenOpened(path, needsChip);
  return type != "0";
}

std::string AdapterProduct(const std::string& device, std::string_view system) {
  // A ttyACM stands one step below its USB device, a ttyUSB two.
  const std::string start = std::string(system) + "/class/tty/" + device + "/device";
  std::string words;
  for (const char* up : {"/product", "/../product", "/../../product"}) {
    if (ReadSmallFile(start + up, words) && !words.empty()) return words;
  }
  return {};
}

int ListPortsIn(std::string_view devices, std::string_view system, SerialName* names,
                int capacity) {
  int count = 0;
  for (int number = 1; number <= kComNames && count < capacity; ++number) {
    const std::string device = DeviceOfCom(number);
    if (!DevicePresent(device, devices, system)) continue;
    SerialName& name = names[count++];
    name = SerialName{};
    CopyText(name.name, std::size(name.name), FromUtf8("COM" + std::to_string(number)));
    CopyText(name.device, std::size(name.device), FromUtf8(device));
    if (adapterNamer &&
        adapterNamer(name.device, name.adapter, static_cast<int>(std::size(name.adapter))) &&
        name.adapter[0] != 0) {
      continue;
    }
    CopyText(name.adapter, std::size(name.adapter), FromUtf8(AdapterProduct(device, system)));
  }
  return count;
}

std::u16string GroupOfPath(const std::string& path) {
  struct stat node = {};
  if (stat(path.c_str(), &node) != 0) return {};
  if ((node.st_mode & (S_IRGRP | S_IWGRP)) != (S_IRGRP | S_IWGRP)) return {};
  group entry = {};
  group* found = nullptr;
  char words[1024];
  if (getgrgid_r(node.st_gid, &entry, words, sizeof(words), &found) != 0 || !found) return {};
  return FromUtf8(found->gr_name);
}

}  // namespace platform
