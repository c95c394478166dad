// The atomic write, over the single steps of platform/file.h.
//
// A full disk may take bytes and lose them, so neither a write's success nor its count is
// believed alone: the size is asked for again once everything is flushed.

#include "platform/atomic_file.h"

#include <cstdint>
#include <string>

#include "platform/clock.h"
#include "platform/file.h"

namespace platform {
namespace {

// Names that are taken may be what other programs, or a cut save, left in the folder.
constexpr int kNameTries = 100;

std::u16string Digits(std::uint32_t number) {
  const std::string digits = std::to_string(number);
  return std::u16string(digits.begin(), digits.end());
}

std::u16string FolderOf(std::u16string_view path) {
  const std::size_t end = path.rfind(PathSeparator());
  return std::u16string(path.substr(0, end == path.npos ? 0 : end + 1));
}

// Opens a new file beside the target; its name comes back. -1: none could be made.
int NewFileBeside(std::u16string_view target, std::u16string& name) {
  const std::u16string first =
      FolderOf(target) + u".tmp-" + Digits(static_cast<std::uint32_t>(TickMilliseconds()));
  name = first;
  int handle = NewFile(name);
  for (std::uint32_t i = 1; handle < 0 && i < kNameTries && FileExists(name); ++i) {
    name = first + u"-" + Digits(i);
    handle = NewFile(name);
  }
  return handle;
}

bool WriteAll(int handle, std::string_view bytes) {
  while (!bytes.empty()) {
    const std::int64_t put = WriteBytes(handle, bytes.data(), bytes.size());
    if (put <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(put));
  }
  return true;
}

// A companion takes its mode from its program, and must not take the place of what is none.
bool GiveAccess(const AtomicWrite& write, std::u16string_view temporary,
                std::u16string_view target) {
  if (write.companionOf.empty()) return CopyAccess(temporary, target);
  return MayReplace(target) && CopyAccess(temporary, write.companionOf);
}

bool FillFile(int handle, const AtomicWrite& write, FileFigures& written) {
  const bool good = WriteAll(handle, write.bytes) &&
                    (write.lasting == Lasting::No || FlushFile(handle)) &&
                    SizeOfFile(handle) == static_cast<std::int64_t>(write.bytes.size());
  written = FiguresOfOpened(handle);
  return good && written.exists;
}

}  // namespace

WriteAnswer WriteAtomic(const AtomicWrite& write, FileFigures& written) {
  const std::u16string target =
      write.companionOf.empty() ? LinkTarget(write.path) : std::u16string(write.path);
  if (target.empty()) return WriteAnswer::Failed;
  std::u16string temporary;
  const int handle = NewFileBeside(target, temporary);
  if (handle < 0) return WriteAnswer::Failed;
  // Access comes first, so that nobody who may not read the old file can read the new one.
  bool good = GiveAccess(write, temporary, target) && FillFile(handle, write, written);
  good = ShutFile(handle) && good;
  bool changed = false;
  if (good && write.expected) {
    const FileFigures now = FiguresOf(target);
    good = !now.unknown;
    changed = good && !(now == *write.expected);
  }
  if (changed || !good || !RenameOver(temporary, target)) {
    EraseFile(temporary);
    return changed ? WriteAnswer::Changed : WriteAnswer::Failed;
  }
  if (write.lasting != Lasting::Folder) return WriteAnswer::Written;
  return FlushFolderOf(target) ? WriteAnswer::Written : WriteAnswer::NotFlushed;
}

bool WriteFileAtomic(std::u16string_view path, std::string_view bytes, Lasting lasting) {
  FileFigures written;
  return WriteAtomic({.path = path, .bytes = bytes, .lasting = lasting}, written) ==
         WriteAnswer::Written;
}

}  // namespace platform
