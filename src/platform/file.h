// Files and folders, step by step, so that every step's result can be seen.
//
// Paths are 16-bit text with the system's separator. Bytes are bytes. Nothing here retries,
// renames or cleans up on its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

// "/" or "\".
char16_t PathSeparator();

enum class ReadAnswer { Read, Failed, TooLarge };
// Reads the whole file into `bytes`. A file of more than `limit` bytes is TooLarge and is
// not read. A folder, a device or a pipe fails. On failure `bytes` is empty.
ReadAnswer ReadBytes(std::u16string_view path, std::size_t limit, std::string& bytes);

// A new file for writing; fails when the name exists. A handle from 0 up, or -1.
int NewFile(std::u16string_view path);
// Bytes written, fewer than asked when the system takes fewer; -1 on an error.
std::int64_t WriteBytes(int handle, const void* bytes, std::size_t count);
// The size the system reports for the open file, -1 on an error.
std::int64_t SizeOfFile(int handle);
// What tells one state of a file from another, and one file from another. A link is followed.
struct FileFigures {
  bool exists = false;
  bool unknown = false;  // whether there is a file could not be told; nothing else is set then
  std::uint64_t device = 0;
  std::uint64_t node = 0;  // with `device` the file itself, whatever name leads to it
  std::uint64_t size = 0;
  std::int64_t changed = 0;  // the last change of its bytes, nanoseconds of the system's clock
  bool operator==(const FileFigures&) const = default;
};
FileFigures FiguresOf(std::u16string_view path);
FileFigures FiguresOfOpened(int handle);
// Both exist and are one file: the same name, a link or another hard link.
bool IsSameFile(const FileFigures& one, const FileFigures& other);
// Everything written is on the medium.
bool FlushFile(int handle);
bool ShutFile(int handle);
// `temporary` gets mode and owner of `target` where that exists; an owner that may not be
// given is left. False: the mode could not be set, or `target` is no plain file or one that
// this user may not write, and must not be replaced.
bool CopyAccess(std::u16string_view temporary, std::u16string_view target);
// Nothing stands under the name, or a plain file that this user may write, or a link.
bool MayReplace(std::u16string_view path);
// Puts `temporary` in the place of `target` in one step.
bool RenameOver(std::u16string_view temporary, std::u16string_view target);
bool EraseFile(std::u16string_view path);
// False only where nothing stands for certain: what could not be told must not be replaced.
bool FileExists(std::u16string_view path);
// The folder that holds `path` is on the medium.
bool FlushFolderOf(std::u16string_view path);
// The target of a symbolic link, followed to its end; the path itself when it is none. Empty
// when the links go round in a circle or cannot be read.
std::u16string LinkTarget(std::u16string_view path);

enum class FolderAnswer { Made, Exists, Failed };
FolderAnswer MakeFolder(std::u16string_view path);

// Full path of the running executable; empty when the system does not tell.
std::u16string ExecutablePath();
// The user's Documents folder. False: none.
bool DocumentsFolder(std::u16string& path);

// UTF-8, as files and the system's names carry it, and 16-bit text. What is not well formed
// becomes U+FFFD, one for each maximal ill-formed piece; unpaired surrogates become U+FFFD.
std::u16string FromUtf8(std::string_view bytes);
std::string ToUtf8(std::u16string_view text);

}  // namespace platform
