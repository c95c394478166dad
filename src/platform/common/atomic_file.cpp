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

std::u16string TemporaryName(std::u16string_view target) {
  const std::string tick = std::to_string(static_cast<std::uint32_t>(TickMilliseconds()));
  std::u16string name(target);
  name += u".tmp-";
  name.append(tick.begin(), tick.end());
  return name;
}

bool WriteAll(int handle, std::string_view bytes) {
  while (!bytes.empty()) {
    const std::int64_t put = WriteBytes(handle, bytes.data(), bytes.size());
    if (put <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(put));
  }
  return true;
}

}  // namespace

bool WriteFileAtomic(std::u16string_view path, std::string_view bytes) {
  const std::u16string target = LinkTarget(path);
  if (target.empty()) return false;
  const std::u16string temporary = TemporaryName(target);
  const int handle = NewFile(temporary);
  if (handle < 0) return false;
  // Access comes first, so that nobody who may not read the old file can read the new one.
  bool good = CopyAccess(temporary, target) && WriteAll(handle, bytes) && FlushFile(handle) &&
              SizeOfFile(handle) == static_cast<std::int64_t>(bytes.size());
  good = ShutFile(handle) && good;
  if (!good || !RenameOver(temporary, target)) {
    EraseFile(temporary);
    return false;
  }
  return FlushFolderOf(target);
}

}  // namespace platform
