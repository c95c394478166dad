// Lines that a program of the same user offers in place of a serial port while it runs: the
// simulated control, on a pseudo-terminal.
//
// Each offer is a file in one folder, called after the number of its process: the path of the line,
// a line feed and what the line is. The folder belongs to the user alone.
#pragma once

#include <unistd.h>

#include <string>

#include "platform/serial.h"

namespace platform {

// "morva-lines" in XDG_RUNTIME_DIR where that is an absolute path, else below /tmp with the number
// of the user. `runtime` is the variable's value, null where it is not set.
inline std::string OfferedLinesFolder(const char* runtime) {
  if (runtime && runtime[0] == '/') return std::string(runtime) + "/morva-lines";
  return "/tmp/morva-lines-" + std::to_string(geteuid());
}
// Offers of processes that run, whose line is there, as ports behind the `count` that are listed
// already: the path as name, what the line is as adapter. What is no offer is passed over. How many
// there are then, at most `capacity`.
int AddOfferedLines(const std::string& folder, SerialName* names, int count, int capacity);

}  // namespace platform
