// Files and folders on POSIX systems.
//
// An interrupted call is taken up again; every other refusal goes to the caller at once. The
// places of the executable and of the documents belong to the platforms.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/common/faults.h"
#include "platform/file.h"
#include "platform/folders.h"
#include "platform/limits.h"

namespace platform {
namespace {

// As many links as the kernel itself would follow.
constexpr mode_t kAccessBits = 0777;

// A path with a NUL in it would silently name another file.
bool NativePath(std::u16string_view path, std::string& native) {
  if (path.empty() || path.find(u'\0') != path.npos) return false;
  native = ToUtf8(path);
  return true;
}

int OpenAgain(const char* path, int flags, mode_t mode) {
  for (;;) {
    const int handle = open(path, flags | O_CLOEXEC, mode);
    if (handle >= 0 || errno != EINTR) return handle;
  }
}

// The handle is gone even when close() reports an interruption.
bool CloseHandle(int handle) { return close(handle) == 0 || errno == EINTR; }

bool ReadAll(int handle, char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t got = read(handle, bytes, count);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    bytes += got;
    count -= static_cast<std::size_t>(got);
  }
  return true;
}

// What `bytes` held is written over where it can be: a reader that brings the same text again and
// again pays for no memory and for no zeros.
ReadAnswer ReadOpened(int handle, std::size_t limit, std::string& bytes) {
  struct stat about;
  if (fstat(handle, &about) != 0 || !S_ISREG(about.st_mode)) return ReadAnswer::Failed;
  if (static_cast<std::uint64_t>(about.st_size) > limit) return ReadAnswer::TooLarge;
  bytes.resize(static_cast<std::size_t>(about.st_size));
  if (!ReadAll(handle, bytes.data(), bytes.size()) || FaultDue("read")) return ReadAnswer::Failed;
  return ReadAnswer::Read;
}

FileFigures FiguresFrom(const struct stat& about) {
  constexpr std::int64_t kNanoseconds = 1000000000;
  FileFigures figures;
  figures.exists = true;
  figures.device = about.st_dev;
  figures.node = about.st_ino;
  figures.size = static_cast<std::uint64_t>(about.st_size);
  figures.changed = about.st_mtim.tv_sec * kNanoseconds + about.st_mtim.tv_nsec;
  return figures;
}

// A disk that fails, or a folder that may not be looked into, says nothing about its files.
bool SaysNothingIsThere(int error) {
  return error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG;
}

bool IsPlainAndWritable(const char* path, const struct stat& about) {
  return S_ISREG(about.st_mode) && faccessat(AT_FDCWD, path, W_OK, AT_EACCESS) == 0;
}

bool Sync(int handle) {
  for (;;) {
    if (fsync(handle) == 0) return true;
    if (errno != EINTR) return false;
  }
}

// The folder part of a path, with its separator; "." where the path names none.
std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

}  // namespace

char16_t PathSeparator() { return u'/'; }

ReadAnswer ReadBytes(std::u16string_view path, std::size_t limit, std::string& bytes) {
  std::string native;
  // Not blocking, so that a pipe without a writer cannot hold the window.
  const int handle = NativePath(path, native)
                         ? OpenAgain(native.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY, 0)
                         : -1;
  const ReadAnswer answer = handle < 0 ? ReadAnswer::Failed : ReadOpened(handle, limit, bytes);
  if (handle >= 0) CloseHandle(handle);
  if (answer != ReadAnswer::Read) bytes.clear();
  return answer;
}

int NewFile(std::u16string_view path) {
  std::string native;
  if (!NativePath(path, native) || FaultDue("new")) return -1;
  return OpenAgain(native.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666);
}

std::int64_t WriteBytes(int handle, const void* bytes, std::size_t count) {
  if (FaultDue("write")) return -1;
  if (count > 0 && FaultDue("short")) --count;
  for (;;) {
    const ssize_t put = write(handle, bytes, count);
    if (put >= 0 || errno != EINTR) return put;
  }
}

FileFigures FiguresOf(std::u16string_view path) {
  std::string native;
  struct stat about;
  if (!NativePath(path, native)) return FileFigures();
  FileFigures none;
  none.unknown = FaultDue("look");
  if (none.unknown) return none;
  if (stat(native.c_str(), &about) == 0) return FiguresFrom(about);
  none.unknown = !SaysNothingIsThere(errno);
  return none;
}

FileFigures FiguresOfOpened(int handle) {
  struct stat about;
  return fstat(handle, &about) == 0 ? FiguresFrom(about) : FileFigures();
}

bool IsSameFile(const FileFigures& one, const FileFigures& other) {
  return one.exists && other.exists && one.device == other.device && one.node == other.node;
}

std::int64_t SizeOfFile(int handle) {
  struct stat about;
  if (FaultDue("size") || fstat(handle, &about) != 0) return -1;
  return about.st_size;
}

bool FlushFile(int handle) { return !FaultDue("flush") && Sync(handle); }

bool ShutFile(int handle) {
  const bool due = FaultDue("shut");
  return CloseHandle(handle) && !due;
}

bool CopyAccess(std::u16string_view temporary, std::u16string_view target) {
  std::string from;
  std::string to;
  if (!NativePath(target, from) || !NativePath(temporary, to) || FaultDue("access")) return false;
  struct stat old;
  if (stat(from.c_str(), &old) != 0) return errno == ENOENT;
  if (!IsPlainAndWritable(from.c_str(), old)) return false;
  struct stat fresh;
  if (stat(to.c_str(), &fresh) != 0) return false;
  // Owner before mode: a change of owner may take mode bits away. A user who may not give the
  // file away may still be able to give it the group.
  if (fresh.st_uid != old.st_uid || fresh.st_gid != old.st_gid) {
    const bool given = chown(to.c_str(), old.st_uid, old.st_gid) == 0 ||
                       chown(to.c_str(), static_cast<uid_t>(-1), old.st_gid) == 0;
    static_cast<void>(given);
  }
  if ((fresh.st_mode & kAccessBits) == (old.st_mode & kAccessBits)) return true;
  return chmod(to.c_str(), old.st_mode & kAccessBits) == 0;
}

bool MayReplace(std::u16string_view path) {
  std::string native;
  if (!NativePath(path, native)) return false;
  struct stat about;
  if (lstat(native.c_str(), &about) != 0) return errno == ENOENT;
  return S_ISLNK(about.st_mode) || IsPlainAndWritable(native.c_str(), about);
}

bool RenameOver(std::u16string_view temporary, std::u16string_view target) {
  std::string from;
  std::string to;
  if (!NativePath(temporary, from) || !NativePath(target, to) || FaultDue("rename")) return false;
  return rename(from.c_str(), to.c_str()) == 0;
}

bool EraseFile(std::u16string_view path) {
  std::string native;
  return NativePath(path, native) && !FaultDue("erase") && unlink(native.c_str()) == 0;
}

bool FileExists(std::u16string_view path) {
  std::string native;
  struct stat about;
  if (!NativePath(path, native)) return false;
  return stat(native.c_str(), &about) == 0 || !SaysNothingIsThere(errno);
}

bool FlushFolderOf(std::u16string_view path) {
  std::string native;
  if (!NativePath(path, native) || FaultDue("flushfolder")) return false;
  const int handle = OpenAgain(FolderOf(native).c_str(), O_RDONLY | O_DIRECTORY, 0);
  // A folder that may be written and not read, or a system whose folders take no flush: the
  // rename has happened, and there is nothing more that could be asked for.
  if (handle < 0) return errno == EACCES;
  const bool done = Sync(handle) || errno == EINVAL || errno == ENOTSUP || errno == ENOSYS;
  CloseHandle(handle);
  return done;
}

std::u16string LinkTarget(std::u16string_view path) {
  std::string native;
  if (!NativePath(path, native)) return std::u16string(path);
  bool followed = false;
  for (int links = 0; links < kMaxLinks; ++links) {
    std::string found(4096, '\0');
    const ssize_t length = readlink(native.c_str(), found.data(), found.size());
    if (length <= 0) {
      // A link that cannot be read must not be taken for a file and replaced.
      if (length == 0 || (errno != EINVAL && errno != ENOENT && errno != ENOTDIR)) break;
      if (!followed) return std::u16string(path);
      // A name that is no UTF-8 would come back as another one, and that file be written.
      std::u16string target = FromUtf8(native);
      if (ToUtf8(target) != native) break;
      return target;
    }
    found.resize(static_cast<std::size_t>(length));
    if (found[0] != '/' && native.find('/') != std::string::npos) found = FolderOf(native) + found;
    native = found;
    followed = true;
  }
  return std::u16string();
}

FolderAnswer MakeFolder(std::u16string_view path) {
  std::string native;
  if (!NativePath(path, native) || FaultDue("folder")) return FolderAnswer::Failed;
  if (mkdir(native.c_str(), 0777) == 0) return FolderAnswer::Made;
  return errno == EEXIST ? FolderAnswer::Exists : FolderAnswer::Failed;
}

bool MayMakeFilesIn(std::u16string_view folder) {
  std::string native;
  if (!NativePath(folder, native)) return false;
  // The separator keeps a file from being taken for a folder.
  native += '/';
  return faccessat(AT_FDCWD, native.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

}  // namespace platform
