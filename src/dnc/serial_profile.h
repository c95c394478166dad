// The serial profile, the link's state word and the auto-connect step.
//
// "Connected" means that the system opened and configured the port. Only a transfer proves
// that the control answers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/limits.h"
#include "platform/serial.h"

namespace morva {

struct SerialProfile {
  char16_t port[kPortNameUnits] = {};
  std::int32_t baud = 9600;
  std::int32_t dataBits = 7;
  std::int32_t parity = 2;
  std::int32_t stopBits = 2;
  std::int32_t flow = 1;
  bool operator==(const SerialProfile&) const = default;
};
extern SerialProfile serialProfile;

// The baud rates that a user can choose, in rising order.
inline constexpr std::int32_t kOfferedBauds[] = {1200, 2400, 4800, 9600, 19200};

enum DncState : std::int32_t {
  kDncOffline = 0,
  kDncConnected = 1,
  kDncTransferring = 2,
  kDncError = 3,
  kDncConnectionFailed = 4,
};
extern std::int32_t dncState;

bool LoadSerialProfile();  // true when a port is named after loading
void SaveSerialProfile();
bool ChooseSerialProfile();  // true when a port is settled
bool AutoConnect();          // true when the port could be opened, now or earlier with this profile
void CheckPort();
void ScanComPorts();
// The profile is again the one of a transfer that runs, and so are the read-outs.
void TakeBackProfile(const SerialProfile& running);
void SetDncState(std::int32_t state);
// Lists that were not saved count no more: the profile is the saved one, and so are the read-outs
// where no transfer runs.
void DropListedProfile(bool transferRuns);
const char16_t* DncStateWord(std::int32_t state);
std::uint32_t DncStateColour(std::int32_t state);
// The profile as the platform opens it; data bits, parity and stop bits cut to one byte.
platform::SerialSettings SettingsOf(const SerialProfile& profile);
// After an open that failed: what the user can mend, where the general words do not tell it.
// Lack of rights names the group to join; a port name of the file that was cut is shown; a port
// that is not there is told.
void LogOpenProblem(const platform::SerialSettings& settings, platform::SerialProblem problem);
std::u16string PortGoneWords(std::u16string_view port);

// What is to be said before a transfer whose settings are not those of the saved profile, as lists
// of the setup panel that were not saved: a sentence about the port, which `verb` begins, and one
// that names the others. None where they are the same, or where no profile is saved.
std::vector<std::u16string> UnsavedSentences(std::u16string_view verb);

// The setup panel, when it exists: its lists answer for the profile while it is shown, and behind
// another mode as long as a port is selected that the user saved or chose. Null until then.
struct SetupPanel {
  bool (*exists)() = nullptr;
  bool (*shown)() = nullptr;                            // null: it is shown as long as it exists
  bool (*readLists)(SerialProfile& profile) = nullptr;  // false: no port is selected that counts
  void (*fillPorts)(const platform::SerialName* names, int count) = nullptr;
  void (*followState)() = nullptr;  // the link's state is another one
};
extern SetupPanel setupPanel;

void ResetSerialProfile();

}  // namespace morva
