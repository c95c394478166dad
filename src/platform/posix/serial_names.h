// COM names and what stands behind them: device paths, presence, adapter words.
//
// COM1 to COM32 are ttyS0 to ttyS31, COM33 to COM48 ttyUSB0 to ttyUSB15, COM49 to COM64
// ttyACM0 to ttyACM15. Looking changes nothing: no port is opened for it where the system
// lists its ports, so a waiting control sees no change of its lines.
#pragma once

#include <string>
#include <string_view>

#include "platform/serial.h"

namespace platform {

inline constexpr int kComNames = 64;

// "ttyUSB0" for 33; empty outside 1 to 64.
std::string DeviceOfCom(int number);
// The path to open: a name that begins with "/" as it stands, COM1 to COM64 in any case in
// `devices`; empty for anything else.
std::string DevicePath(std::u16string_view port, std::string_view devices);
// Whether a chip or adapter answers behind the device name. `system` is where the kernel
// lists its devices.
bool DevicePresent(const std::string& device, std::string_view devices, std::string_view system);
// The product words of the USB adapter; empty when there is none or nobody tells.
std::string AdapterProduct(const std::string& device, std::string_view system);
// At most `capacity` present names in rising order; how many there are.
int ListPortsIn(std::string_view devices, std::string_view system, SerialName* names, int capacity);
// The group that may read and write the path; empty when no group may.
std::u16string GroupOfPath(const std::string& path);

}  // namespace platform
