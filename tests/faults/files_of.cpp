#include "faults/files_of.h"

#include <fstream>
#include <iterator>

namespace faults {

void WriteFile(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

Files FilesOf(const fs::path& folder) {
  Files files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    File file;
    file.link = entry.is_symlink();
    if (file.link) {
      file.bytes = fs::read_symlink(entry.path()).string();
    } else if (entry.is_regular_file()) {
      std::ifstream in(entry.path(), std::ios::binary);
      file.bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
      file.mode = entry.status().permissions();
    } else {
      continue;
    }
    files[entry.path().lexically_relative(folder).string()] = file;
  }
  return files;
}

void PutBack(const fs::path& folder, const Files& files) {
  const Files now = FilesOf(folder);
  for (const auto& [name, file] : now) {
    if (!SameIn(files, name, file)) fs::remove(folder / name);
  }
  for (const auto& [name, file] : files) {
    if (SameIn(now, name, file)) continue;
    if (file.link) {
      fs::create_symlink(file.bytes, folder / name);
    } else {
      WriteFile(folder / name, file.bytes);
      fs::permissions(folder / name, file.mode);
    }
  }
  const fs::path projects = folder / "Documents/MORVA/Projects";
  for (const auto& entry : fs::directory_iterator(projects)) {
    if (entry.is_directory() && fs::is_empty(entry.path())) fs::remove(entry.path());
  }
}

bool SameIn(const Files& files, const std::string& name, const File& file) {
  const auto found = files.find(name);
  return found != files.end() && found->second == file;
}

bool IsStray(const std::string& name) {
  return fs::path(name).filename().string().starts_with(".tmp-");
}

}  // namespace faults
