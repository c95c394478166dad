// The machine itself: where the program lies, what starts anew, which call is told to fail.

#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"
#include "platform/common/faults.h"
#include "platform/file.h"
#include "platform/folders.h"
#include "platform/headless/headless_internal.h"
#include "platform/headless/machine_folders.h"

namespace headless {
namespace {

struct Machine {
  std::u16string home;
  std::u16string executableName = u"MORVA";
  bool hasDocuments = true;
  bool hasConfiguration = true;
  int flushMs = 0;
};
Machine machine;

struct ArmedFault {
  std::string kind;
  int remaining = 0;
};
std::vector<ArmedFault>& ArmedFaults() {
  static std::vector<ArmedFault> faults;
  return faults;
}

ResetHook* firstHook = nullptr;

// A disk that takes its time does so before a flush can fail.
bool MeetCall(std::string_view kind) {
  if (kind == "flush" && machine.flushMs > 0) platform::SleepMilliseconds(machine.flushMs);
  return FaultFor(kind);
}

std::u16string Joined(std::u16string_view folder, std::u16string_view name) {
  std::u16string path(folder);
  path.push_back(platform::PathSeparator());
  path.append(name);
  return path;
}

}  // namespace

ResetHook::ResetHook(int resetStage, void (*reset)())
    : stage(resetStage), run(reset), next(firstHook) {
  firstHook = this;
}

void Reset(std::u16string_view home) {
  for (int stage = 0; stage < 2; ++stage) {
    for (ResetHook* hook = firstHook; hook; hook = hook->next) {
      if (hook->stage == stage) hook->run();
    }
  }
  ArmedFaults().clear();
  platform::fileFault = nullptr;
  machine = Machine();
  machine.home = home;
  platform::MakeFolder(Joined(home, u"bin"));
  platform::MakeFolder(Joined(home, u"Documents"));
}

void SetExecutableName(std::u16string_view name) { machine.executableName = name; }

void RemoveDocuments() { machine.hasDocuments = false; }

void RemoveConfiguration() { machine.hasConfiguration = false; }

void SetFlushTime(int milliseconds) {
  machine.flushMs = milliseconds;
  platform::fileFault = &MeetCall;
}

void FailCall(std::string_view kind, int n) {
  platform::fileFault = &MeetCall;
  for (ArmedFault& fault : ArmedFaults()) {
    if (fault.kind == kind) {
      fault.remaining = n;
      return;
    }
  }
  ArmedFaults().push_back({std::string(kind), n});
}

bool FaultFor(std::string_view kind) {
  for (ArmedFault& fault : ArmedFaults()) {
    if (fault.kind == kind && fault.remaining > 0) return --fault.remaining == 0;
  }
  return false;
}

}  // namespace headless

namespace platform {

std::u16string ExecutablePath() {
  const std::u16string folder = headless::Joined(headless::machine.home, u"bin");
  return headless::Joined(folder, headless::machine.executableName);
}

bool DocumentsFolder(std::u16string& path) {
  if (!headless::machine.hasDocuments) return false;
  path = headless::Joined(headless::machine.home, u"Documents");
  return true;
}

bool ConfigurationFolder(std::u16string& path) {
  if (!headless::machine.hasConfiguration) return false;
  path = headless::Joined(headless::machine.home, platform::kSettingsFolder);
  return true;
}

}  // namespace platform
