// The files below a folder as they stand, and the way back to them.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace faults {

namespace fs = std::filesystem;

struct File {
  std::string bytes;  // of a link: where it leads
  fs::perms mode = fs::perms::none;
  bool link = false;
  bool operator==(const File&) const = default;
};
using Files = std::map<std::string, File>;  // by the path below the folder

void WriteFile(const fs::path& path, const std::string& bytes);
Files FilesOf(const fs::path& folder);
// Only what differs is written; folders that hold none of the files go.
void PutBack(const fs::path& folder, const Files& files);
bool SameIn(const Files& files, const std::string& name, const File& file);
// What a save that was cut off may leave.
bool IsStray(const std::string& name);

}  // namespace faults
