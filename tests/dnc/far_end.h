// The far end of a real line: a pseudo-terminal in the test's own hand, and the control
// simulator as a process of its own.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/file.h"
#include "platform/serial.h"
#include "support/places.h"

namespace far_end {

using Clock = std::chrono::steady_clock;

inline std::int64_t Milliseconds(Clock::time_point since) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - since).count();
}

// Waits for a state with a deadline; how it ended.
inline bool WaitUntil(const std::function<bool()>& reached, int milliseconds) {
  const Clock::time_point start = Clock::now();
  while (!reached()) {
    if (Milliseconds(start) > milliseconds) return false;
    std::this_thread::sleep_for(std::chrono::microseconds(200));
  }
  return true;
}

// A pseudo-terminal whose far side reads everything as it comes.
class Peer {
 public:
  Peer() {
    master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_GE(master_, 0);
    EXPECT_EQ(grantpt(master_), 0);
    EXPECT_EQ(unlockpt(master_), 0);
    char name[128] = {};
    EXPECT_EQ(ptsname_r(master_, name, sizeof(name)), 0);
    path_ = name;
    slave = open(name, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_GE(slave, 0);
    termios raw = {};
    tcgetattr(slave, &raw);
    cfmakeraw(&raw);
    tcsetattr(slave, TCSANOW, &raw);
    reader_ = std::thread([this] { Read(); });
  }
  ~Peer() {
    Vanish();
    if (slave >= 0) close(slave);
  }

  // The cable is gone.
  void Vanish() {
    ending_ = true;
    if (reader_.joinable()) reader_.join();
    if (master_ >= 0) close(master_);
    master_ = -1;
  }

  // Everything, however long the line takes.
  void Send(std::string_view bytes) {
    const Clock::time_point start = Clock::now();
    while (!bytes.empty() && Milliseconds(start) < 20000) {
      const ssize_t taken = write(master_, bytes.data(), bytes.size());
      if (taken > 0) bytes.remove_prefix(static_cast<std::size_t>(taken));
      if (taken <= 0) std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    EXPECT_TRUE(bytes.empty());
  }
  void StopReading(bool stop) { stopped_ = stop; }
  std::string Received() {
    const std::lock_guard<std::mutex> hold(gate_);
    return received_;
  }
  std::size_t Count() {
    const std::lock_guard<std::mutex> hold(gate_);
    return received_.size();
  }
  // With what lies before the reader.
  std::size_t Arrived() {
    const std::lock_guard<std::mutex> hold(gate_);
    int waiting = 0;
    EXPECT_EQ(ioctl(master_, FIONREAD, &waiting), 0);
    return received_.size() + static_cast<std::size_t>(waiting);
  }
  // Until the line has read everything that was sent.
  bool WaitTaken(int deadlineMs) {
    return WaitUntil(
        [this] {
          int waiting = 0;
          return ioctl(slave, FIONREAD, &waiting) == 0 && waiting == 0;
        },
        deadlineMs);
  }
  void Forget() {
    const std::lock_guard<std::mutex> hold(gate_);
    received_.clear();
  }
  // Until nothing has arrived for a while.
  bool WaitQuiet(int quietMs, int deadlineMs) {
    std::size_t last = Count();
    Clock::time_point since = Clock::now();
    return WaitUntil(
        [&] {
          if (Count() != last) {
            last = Count();
            since = Clock::now();
          }
          return Milliseconds(since) >= quietMs;
        },
        deadlineMs);
  }

  // Whether the line is open for one user alone.
  bool IsTaken() const {
    int on = 0;
    return ioctl(slave, TIOCGEXCL, &on) == 0 && on != 0;
  }

  const std::string& Path() const { return path_; }
  platform::SerialSettings Settings() const {
    platform::SerialSettings settings;
    platform::FromUtf8(path_).copy(settings.port, 31);
    return settings;
  }

  int slave = -1;  // the test's own look at the line's settings

 private:
  void Read() {
    static thread_local char bytes[65536];
    while (!ending_) {
      if (stopped_) {
        std::this_thread::sleep_for(std::chrono::microseconds(200));
        continue;
      }
      pollfd watched = {master_, POLLIN, 0};
      if (poll(&watched, 1, 5) <= 0) continue;
      const std::lock_guard<std::mutex> hold(gate_);
      const ssize_t got = read(master_, bytes, sizeof(bytes));
      if (got <= 0) continue;
      received_.append(bytes, static_cast<std::size_t>(got));
    }
  }

  int master_ = -1;
  std::string path_;
  std::thread reader_;
  std::atomic<bool> ending_{false};
  std::atomic<bool> stopped_{false};
  std::mutex gate_;
  std::string received_;
};

// The control simulator, told by its standard input and heard by its standard output.
class Simulator {
 public:
  explicit Simulator(std::vector<std::string> options = {}) {
    int in[2] = {};
    int out[2] = {};
    EXPECT_EQ(pipe2(in, O_CLOEXEC), 0);
    EXPECT_EQ(pipe2(out, O_CLOEXEC), 0);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in[0], 0);
    posix_spawn_file_actions_adddup2(&actions, out[1], 1);
    options.insert(options.begin(),
                   {support::BinaryDir() + std::string("/bin/control_sim"), "--hidden"});
    std::vector<char*> words;
    for (std::string& option : options) words.push_back(option.data());
    words.push_back(nullptr);
    EXPECT_EQ(posix_spawn(&process_, words[0], &actions, nullptr, words.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    close(in[0]);
    close(out[1]);
    to_ = in[1];
    from_ = out[0];
    const std::string line = WaitFor("PORT ", 10000);
    port = line.size() > 5 ? line.substr(5) : "";
  }
  ~Simulator() {
    close(to_);  // the end of its input ends it
    const bool ended = WaitUntil([this] { return waitpid(process_, nullptr, WNOHANG) != 0; }, 5000);
    if (!ended) {
      kill(process_, SIGKILL);
      waitpid(process_, nullptr, 0);
      ADD_FAILURE() << "the simulator did not end";
    }
    close(from_);
  }

  void Tell(const std::string& command) {
    const std::string line = command + "\n";
    EXPECT_EQ(write(to_, line.data(), line.size()), static_cast<ssize_t>(line.size()));
  }
  // The next line that begins so; empty when none came in time. Lines before it are kept.
  std::string WaitFor(const std::string& begin, int milliseconds) {
    const Clock::time_point start = Clock::now();
    while (Milliseconds(start) <= milliseconds) {
      for (; heard_ < lines.size(); ++heard_) {
        if (lines[heard_].rfind(begin, 0) == 0) return lines[heard_++];
      }
      Listen(20);
    }
    return {};
  }
  // What one "name=" of a line says.
  static long Number(const std::string& line, const std::string& name) {
    const std::size_t at = line.find(name + "=");
    return at == line.npos ? -1 : std::strtol(line.c_str() + at + name.size() + 1, nullptr, 10);
  }

  std::string port;
  std::vector<std::string> lines;  // everything it said

 private:
  void Listen(int milliseconds) {
    pollfd watched = {from_, POLLIN, 0};
    if (poll(&watched, 1, milliseconds) <= 0) return;
    char bytes[4096];
    const ssize_t got = read(from_, bytes, sizeof(bytes));
    if (got <= 0) return;
    pending_.append(bytes, static_cast<std::size_t>(got));
    for (std::size_t end = 0; (end = pending_.find('\n')) != pending_.npos;) {
      lines.push_back(pending_.substr(0, end));
      pending_.erase(0, end + 1);
    }
  }

  pid_t process_ = -1;
  int to_ = -1;
  int from_ = -1;
  std::string pending_;
  std::size_t heard_ = 0;
};

}  // namespace far_end
