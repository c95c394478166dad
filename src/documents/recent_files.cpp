#include "documents/recent_files.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "app/limits.h"
#include "platform/profile.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr char16_t kSection[] = u"Recent";
constexpr char16_t kFolderKey[] = u"Folder";

std::vector<std::u16string> files;  // the last one first
std::u16string folder;

std::u16string KeyOfFile(std::size_t index) {
  return u"File" + IntegerText(static_cast<std::int64_t>(index) + 1);
}

// The settings are read by line, and a path of more units cannot be opened.
bool FitsInSettings(std::u16string_view path) {
  return !path.empty() && path.size() < kPathUnits &&
         std::ranges::none_of(path, [](char16_t c) { return c < u' '; });
}

std::u16string_view FolderOf(std::u16string_view path) {
  const std::size_t at = path.find_last_of(u"/\\");
  if (at == path.npos) return {};
  return path.substr(0, at == 0 ? 1 : at);
}

void Write() {
  platform::BeginProfileChange();
  platform::EraseProfileSection(kSection);
  if (!folder.empty()) platform::WriteProfile(kSection, kFolderKey, folder);
  for (std::size_t i = 0; i < files.size(); ++i) {
    platform::WriteProfile(kSection, KeyOfFile(i), files[i]);
  }
  platform::EndProfileChange();
}

bool TakeFolderOf(std::u16string_view path) {
  const std::u16string_view wanted = FolderOf(path);
  if (wanted == folder || !FitsInSettings(wanted)) return false;
  folder = wanted;
  return true;
}

}  // namespace

void LoadRecentFiles() {
  std::vector<std::u16string> read;
  platform::BeginProfileChange();
  std::u16string readFolder = platform::ReadProfile(kSection, kFolderKey, u"");
  for (std::size_t i = 0; i < kMaxRecentFiles; ++i) {
    std::u16string path = platform::ReadProfile(kSection, KeyOfFile(i), u"");
    if (FitsInSettings(path) && !std::ranges::count(read, path)) read.push_back(std::move(path));
  }
  // What is known is not lost where the settings cannot be read for a moment.
  if (!platform::EndProfileChange()) return;
  files = std::move(read);
  folder = std::move(readFolder);
}

void NoteRecentFile(std::u16string_view path) {
  if (!FitsInSettings(path)) return;
  // Another window of MORVA may have added to them.
  if (platform::WhereProfileIsKept() != platform::ProfilePlace::Nowhere) LoadRecentFiles();
  const bool moved = TakeFolderOf(path);
  if (!moved && !files.empty() && files.front() == path) return;
  std::erase(files, path);
  files.emplace(files.begin(), path);
  if (files.size() > kMaxRecentFiles) files.resize(kMaxRecentFiles);
  Write();
}

void NoteFolderOf(std::u16string_view path) {
  if (TakeFolderOf(path)) Write();
}

std::u16string LastFolder() { return folder; }

int RecentFileCount() { return static_cast<int>(files.size()); }

std::u16string RecentFile(int index) {
  return index >= 0 && index < RecentFileCount() ? files[static_cast<std::size_t>(index)]
                                                 : std::u16string();
}

void DropRecentFile(int index) {
  if (index < 0 || index >= RecentFileCount()) return;
  files.erase(files.begin() + index);
  Write();
}

void ResetRecentFiles() {
  files.clear();
  folder.clear();
}

}  // namespace morva
