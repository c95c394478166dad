#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/posix/termination.h"

namespace platform {
namespace {

int writing = -1;

// A handler may call little more than write(). A pipe that is full holds a wish already.
void Tell(int) {
  const int kept = errno;
  const char byte = 1;
  const ssize_t put = write(writing, &byte, 1);
  static_cast<void>(put);
  errno = kept;
}

}  // namespace

int WatchTermination() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return -1;
  writing = ends[1];
  struct sigaction action = {};
  action.sa_handler = Tell;
  action.sa_flags = SA_RESTART;
  for (const int signal : {SIGTERM, SIGHUP, SIGINT}) sigaction(signal, &action, nullptr);
  return ends[0];
}

}  // namespace platform
