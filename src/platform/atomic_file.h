// A whole file written in one step: the old content or the new one, never a mixture.
#pragma once

#include <string_view>

#include "platform/file.h"

namespace platform {

enum class WriteAnswer { Written, Failed, Changed, NotFlushed };

struct AtomicWrite {
  std::u16string_view path;
  std::string_view bytes;
  // A file that belongs to another one: it gets mode and owner of that one, and a link that
  // stands under its name is replaced, never followed. Empty: a file of its own, whose mode and
  // owner stay and which is written through a link.
  std::u16string_view companionOf = {};
  // What the target has to look like just before it is replaced; null: whatever is there.
  const FileFigures* expected = nullptr;
  // False: neither file nor folder is flushed. For copies that nobody reads back: behind a power
  // cut such a file may be the old one, empty or gone, and saving it costs a fraction.
  bool lasting = true;
};

// Writes a new file in the target's folder, flushes it, puts it in the target's place and
// flushes the folder. The new file's name is short: ".tmp-", the low 32 bits of the tick in
// decimal, and where that name is taken "-" and a number.
//
// Failed and Changed: no stray file is left, and the target is whole as it was. NotFlushed: the
// new content is in place, but its folder could not be flushed, so that it may not outlast a power
// cut and the caller's work still counts as unsaved. `written` gets the figures of the new file,
// when there is one.
WriteAnswer WriteAtomic(const AtomicWrite& write, FileFigures& written);
// The same for a file of its own. False: Failed or NotFlushed.
bool WriteFileAtomic(std::u16string_view path, std::string_view bytes);

}  // namespace platform
