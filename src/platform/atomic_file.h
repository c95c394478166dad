// A whole file written in one step: the old content or the new one, never a mixture.
#pragma once

#include <string_view>

namespace platform {

// Writes a new file beside the target, flushes it, puts it in the target's place and flushes
// the folder. Mode and owner of an existing target stay; a symbolic link is written through.
// The new file is named after the target, ".tmp-" and the low 32 bits of the tick in decimal.
//
// False: no stray file is left, and the target is whole as it was. The one exception is a
// folder that could not be flushed: then the new content is in place and may not outlast a
// power cut, so that the caller's work still counts as unsaved.
bool WriteFileAtomic(std::u16string_view path, std::string_view bytes);

}  // namespace platform
