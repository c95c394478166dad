// Kills and refuses saves, and prints how many and what went wrong.
//
//   save_points              all of it
//   save_points OF [FIRST]   every OF-th run, from number FIRST on; without it by the hour
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "faults/save_points.h"

namespace {

constexpr long kSecondsAnHour = 3600;
constexpr std::size_t kMostShown = 40;
// What all of it has at the least.
constexpr long kLeastPoints = 1000;
constexpr long kLeastErrors = 2500;

faults::Share ShareOf(int argc, char** argv) {
  faults::Share share;
  if (argc < 2 || argv[1][0] == '-') return share;
  share.of = static_cast<unsigned>(std::max(1, std::atoi(argv[1])));
  const long first = argc > 2 ? std::atol(argv[2]) : std::time(nullptr) / kSecondsAnHour;
  share.first = static_cast<unsigned>(first) % share.of;
  return share;
}

void Print(const char* what, const faults::Tally& tally) {
  std::printf(
      "%s: %ld points at which the process was killed, %ld injected errors, "
      "%zu violations\n",
      what, tally.points, tally.errors, tally.violations.size());
  for (std::size_t i = 0; i < std::min(kMostShown, tally.violations.size()); ++i) {
    std::printf("  %s\n", tally.violations[i].c_str());
  }
}

}  // namespace

int main(int argc, char** argv) {
  const faults::Share share = ShareOf(argc, argv);
  std::printf("Share %u of %u.\n", share.first, share.of);
  faults::Begin();
  const faults::Tally saves = faults::RunSavePoints(share);
  Print("Saves", saves);
  const faults::Tally typing = faults::RunTypingPoints(share);
  Print("Typing, a key each 400 ms", typing);
  faults::End();
  const bool enough =
      share.of > 1 || (saves.points >= kLeastPoints && saves.errors >= kLeastErrors);
  if (!enough) std::printf("Too few: %ld points and %ld errors.\n", kLeastPoints, kLeastErrors);
  return enough && saves.violations.empty() && typing.violations.empty() ? 0 : 1;
}
