#include "platform/posix/offered_lines.h"

#include <dirent.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string_view>
#include <vector>

#include "platform/file.h"

namespace platform {
namespace {

constexpr std::size_t kOfferBytes = 512;

// Nobody else can put an offer there.
bool IsOwnFolder(const std::string& folder) {
  struct stat node = {};
  return lstat(folder.c_str(), &node) == 0 && S_ISDIR(node.st_mode) && node.st_uid == geteuid() &&
         (node.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// The number of a process that runs; 0 for another name.
long RunningProcess(const char* name) {
  char* end = nullptr;
  const long process = std::strtol(name, &end, 10);
  if (process <= 0 || *end != 0) return 0;
  return kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM ? process : 0;
}

std::vector<long> RunningOffers(const std::string& folder) {
  std::vector<long> processes;
  DIR* entries = opendir(folder.c_str());
  if (!entries) return processes;
  while (const dirent* entry = readdir(entries)) {
    if (const long process = RunningProcess(entry->d_name); process != 0) {
      processes.push_back(process);
    }
  }
  closedir(entries);
  std::sort(processes.begin(), processes.end());
  return processes;
}

std::string ReadOffer(const std::string& path) {
  FILE* file = std::fopen(path.c_str(), "rb");
  if (!file) return {};
  char bytes[kOfferBytes];
  const std::size_t got = std::fread(bytes, 1, sizeof(bytes), file);
  std::fclose(file);
  return {bytes, got};
}

template <std::size_t units>
bool CopyWhole(char16_t (&dest)[units], std::string_view text) {
  const std::u16string words = FromUtf8(text);
  if (words.empty() || words.size() >= units) return false;
  std::copy(words.begin(), words.end(), dest);
  dest[words.size()] = 0;
  return true;
}

bool ReadName(const std::string& offer, SerialName& name) {
  const std::size_t end = offer.find('\n');
  if (end == offer.npos || offer[0] != '/') return false;
  const std::string path = offer.substr(0, end);
  struct stat node = {};
  if (stat(path.c_str(), &node) != 0 || !S_ISCHR(node.st_mode)) return false;
  name = SerialName{};
  const std::string_view words = std::string_view(offer).substr(end + 1);
  return CopyWhole(name.name, path) && CopyWhole(name.adapter, words.substr(0, words.find('\n')));
}

}  // namespace

int AddOfferedLines(const std::string& folder, SerialName* names, int count, int capacity) {
  if (!IsOwnFolder(folder)) return count;
  for (const long process : RunningOffers(folder)) {
    if (count >= capacity) break;
    if (ReadName(ReadOffer(folder + "/" + std::to_string(process)), names[count])) ++count;
  }
  return count;
}

}  // namespace platform
