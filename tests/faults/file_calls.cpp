#include "faults/file_calls.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

extern "C" ssize_t __real_readlink(const char* path, char* target, std::size_t size);

namespace file_calls {

Plan* plan = nullptr;

namespace {

constexpr int kOpen[] = {ENOSPC, EIO, EACCES, EINTR, EMFILE, EROFS, ENOMEM};
constexpr int kRead[] = {EIO, EINTR};
constexpr int kWrite[] = {ENOSPC, EIO, EINTR, EDQUOT, EFBIG};
constexpr int kFlush[] = {EIO, EINTR, ENOSPC, EDQUOT};
constexpr int kClose[] = {EIO, EINTR, ENOSPC, EDQUOT};
constexpr int kRename[] = {ENOSPC, EIO, EACCES, EROFS, EBUSY, EDQUOT};
constexpr int kErase[] = {EIO, EACCES, EROFS};
constexpr int kMakeFolder[] = {ENOSPC, EIO, EACCES, EROFS, EDQUOT};
constexpr int kAccess[] = {EACCES, EIO, EROFS};
constexpr int kMode[] = {EPERM, EIO, EROFS};
constexpr int kOwner[] = {EPERM, EIO};
constexpr int kFigures[] = {EIO, EACCES, ENOMEM};
constexpr int kLink[] = {EIO, EACCES, ENOMEM};

struct Row {
  const char* name;
  std::span<const int> errors;
};
constexpr Row kRows[] = {
    {"open", kOpen},     {"read", kRead},     {"write", kWrite}, {"flush", kFlush},
    {"close", kClose},   {"rename", kRename}, {"erase", kErase}, {"make folder", kMakeFolder},
    {"access", kAccess}, {"mode", kMode},     {"owner", kOwner}, {"figures", kFigures},
    {"link", kLink},
};

[[noreturn]] void Die() {
  std::raise(SIGKILL);
  std::abort();
}

bool CleansUp(Call call) { return call == Call::Close || call == Call::Erase; }

// The file of a call: its path, or a handle of it.
struct Of {
  Of(const char* name) : path(name) {}
  Of(int opened) : handle(opened) {}
  const char* path = nullptr;
  int handle = -1;
};

bool IsAside(const Of& file) {
  if (plan->aside[0] == '\0') return false;
  char target[PATH_MAX] = {};
  std::string path = file.path ? file.path : "";
  if (!file.path) {
    const std::string link = "/proc/self/fd/" + std::to_string(file.handle);
    const ssize_t length = __real_readlink(link.c_str(), target, sizeof target - 1);
    path.assign(target, length > 0 ? static_cast<std::size_t>(length) : 0);
  }
  return (path + "/").find(plan->aside) != std::string::npos;
}

// What this call has to do, after it was counted.
Deed Meet(Call call, const Of& file) {
  if (!plan || !plan->active) return Deed::None;
  const int number = ++plan->counted;
  if (number <= kMostCalls) plan->calls[number - 1] = call;
  const bool chosen = number == plan->at || (plan->onward && number > plan->at && !CleansUp(call));
  if (plan->at == 0 || !chosen) return Deed::None;
  plan->met = true;
  if (plan->deed == Deed::Kill) Die();
  const bool aside = IsAside(file);
  plan->asideMet = plan->asideMet || aside;
  if (plan->deed == Deed::Fail) {
    errno = plan->error;
    plan->eraseFailed = plan->eraseFailed || call == Call::Erase;
    const bool puts = call == Call::Write || call == Call::Flush || call == Call::Rename;
    plan->mustTell = plan->mustTell || (puts && !aside && plan->error != EINTR);
  }
  return plan->deed;
}

}  // namespace

// True: the call fails, `errno` is set.
bool Fails(Call call, const Of& file) { return Meet(call, file) == Deed::Fail; }

std::size_t PartOf(std::size_t count) {
  return std::clamp<std::size_t>(count / 4 * static_cast<std::size_t>(plan->quarters), 1, count);
}

const char* NameOf(Call call) { return kRows[static_cast<std::size_t>(call)].name; }

std::span<const int> ErrorsOf(Call call) { return kRows[static_cast<std::size_t>(call)].errors; }

bool IsHarmless(Call call, int error) {
  return error == EINTR && (call == Call::Open || call == Call::Read || call == Call::Write ||
                            call == Call::Flush || call == Call::Close);
}

void Begin() {
  void* place =
      mmap(nullptr, sizeof(Plan), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (place == MAP_FAILED) std::abort();
  plan = new (place) Plan();
}

void Start(int at, Deed deed) {
  plan->counted = 0;
  plan->at = at;
  plan->deed = deed;
  plan->met = false;
  plan->mustTell = false;
  plan->eraseFailed = false;
  plan->asideMet = false;
  plan->active = true;
}

void SetAside(const std::string& folder) {
  if (folder.size() >= sizeof plan->aside) std::abort();
  std::memcpy(plan->aside, folder.c_str(), folder.size() + 1);
}

void Stop() { plan->active = false; }

}  // namespace file_calls

using file_calls::Call;
using file_calls::Deed;
using file_calls::Fails;

extern "C" {

int __real_open(const char* path, int flags, ...);
ssize_t __real_read(int handle, void* bytes, std::size_t count);
ssize_t __real_write(int handle, const void* bytes, std::size_t count);
int __real_fsync(int handle);
int __real_close(int handle);
int __real_rename(const char* from, const char* to);
int __real_unlink(const char* path);
int __real_mkdir(const char* path, mode_t mode);
int __real_faccessat(int folder, const char* path, int wanted, int flags);
int __real_chmod(const char* path, mode_t mode);
int __real_chown(const char* path, uid_t user, gid_t group);
int __real_stat(const char* path, struct stat* about);
int __real_lstat(const char* path, struct stat* about);
int __real_fstat(int handle, struct stat* about);
ssize_t __real_readlink(const char* path, char* target, std::size_t size);

int __wrap_open(const char* path, int flags, ...) {
  std::va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  return Fails(Call::Open, path) ? -1 : __real_open(path, flags, mode);
}

ssize_t __wrap_read(int handle, void* bytes, std::size_t count) {
  const Deed deed = file_calls::Meet(Call::Read, handle);
  if (deed == Deed::Fail) return -1;
  return __real_read(handle, bytes, deed == Deed::Short ? file_calls::PartOf(count) : count);
}

ssize_t __wrap_write(int handle, const void* bytes, std::size_t count) {
  const Deed deed = file_calls::Meet(Call::Write, handle);
  if (deed == Deed::Fail) return -1;
  const bool part = deed == Deed::Short || deed == Deed::Tear;
  const ssize_t put = __real_write(handle, bytes, part ? file_calls::PartOf(count) : count);
  if (deed == Deed::Tear) file_calls::Die();
  return put;
}

int __wrap_fsync(int handle) { return Fails(Call::Flush, handle) ? -1 : __real_fsync(handle); }

// The handle is gone whatever the call answers.
int __wrap_close(int handle) {
  const bool fails = Fails(Call::Close, handle);
  const int error = errno;
  const bool written = (fcntl(handle, F_GETFL) & O_ACCMODE) == O_WRONLY;
  const bool counts = written && error != EINTR && !file_calls::IsAside(handle);
  if (fails && counts) file_calls::plan->mustTell = true;
  const int closed = __real_close(handle);
  if (!fails) return closed;
  errno = error;
  return -1;
}

int __wrap_rename(const char* from, const char* to) {
  return Fails(Call::Rename, to) ? -1 : __real_rename(from, to);
}

int __wrap_unlink(const char* path) { return Fails(Call::Erase, path) ? -1 : __real_unlink(path); }

int __wrap_mkdir(const char* path, mode_t mode) {
  return Fails(Call::MakeFolder, path) ? -1 : __real_mkdir(path, mode);
}

int __wrap_faccessat(int folder, const char* path, int wanted, int flags) {
  return Fails(Call::Access, path) ? -1 : __real_faccessat(folder, path, wanted, flags);
}

int __wrap_chmod(const char* path, mode_t mode) {
  return Fails(Call::Mode, path) ? -1 : __real_chmod(path, mode);
}

int __wrap_chown(const char* path, uid_t user, gid_t group) {
  return Fails(Call::Owner, path) ? -1 : __real_chown(path, user, group);
}

int __wrap_stat(const char* path, struct stat* about) {
  return Fails(Call::Figures, path) ? -1 : __real_stat(path, about);
}

int __wrap_lstat(const char* path, struct stat* about) {
  return Fails(Call::Figures, path) ? -1 : __real_lstat(path, about);
}

int __wrap_fstat(int handle, struct stat* about) {
  return Fails(Call::Figures, handle) ? -1 : __real_fstat(handle, about);
}

ssize_t __wrap_readlink(const char* path, char* target, std::size_t size) {
  return Fails(Call::Link, path) ? -1 : __real_readlink(path, target, size);
}

}  // extern "C"
