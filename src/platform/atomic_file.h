// A whole file written in one step: the old content or the new one, never a mixture.
#pragma once

#include <string_view>

#include "platform/file.h"

namespace platform {

enum class WriteAnswer { Written, Failed, Changed, NotFlushed };

// What outlasts a power cut once the write is answered. `Folder`: the new file. `File`: a whole
// file of that name; within some seconds of the write it may still be the former one, because the
// folder is left to the system, and the save costs a good deal less. `No`: nothing is flushed, for
// copies that nobody reads back: the file may be the former one, empty or gone.
enum class Lasting : unsigned char { Folder, File, No };

struct AtomicWrite {
  std::u16string_view path;
  std::string_view bytes;
  // A file that belongs to another one: it gets mode and owner of that one, and a link that
  // stands under its name is replaced, never followed. Empty: a file of its own, whose mode and
  // owner stay and which is written through a link.
  std::u16string_view companionOf = {};
  // What the target has to look like just before it is replaced; null: whatever is there.
  const FileFigures* expected = nullptr;
  Lasting lasting = Lasting::Folder;
};

// Writes a new file in the target's folder, flushes it, puts it in the target's place and
// flushes the folder, but for what `lasting` leaves out. The new file's name is short: ".tmp-",
// the low 32 bits of the tick in decimal, and where that name is taken "-" and a number.
//
// Failed and Changed: no stray file is left, and the target is whole as it was. NotFlushed: the
// new content is in place, but its folder could not be flushed, so that it may not outlast a power
// cut and the caller's work still counts as unsaved. `written` gets the figures of the new file,
// when there is one.
WriteAnswer WriteAtomic(const AtomicWrite& write, FileFigures& written);
// The same for a file of its own. False: Failed or NotFlushed.
bool WriteFileAtomic(std::u16string_view path, std::string_view bytes,
                     Lasting lasting = Lasting::Folder);

}  // namespace platform
