// Mirrors: binary copies of the libraries in the data directory, little-endian, written and never
// read; and the files of plates beside them, which tell plates apart that are cut alike.
#pragma once

#include <string>
#include <string_view>

#include "platform/atomic_file.h"

namespace morva {

struct SaveResult;

// 2 bytes a unit, zeros behind the end of the text.
void StoreText(unsigned char* at, int units, const char16_t* text);

// Into a file of a folder of the data directory, by the worker that writes files; nothing where the
// directory is not ready. In one step; a mirror is not flushed, so that a power cut may leave the
// former file or an empty one. `told` hears what became of it; without it a failure is silent,
// because the settings file remains the library.
void SaveMirror(std::u16string_view folder, std::u16string_view file, std::string bytes,
                void (*told)(const SaveResult& result) = nullptr,
                platform::Lasting lasting = platform::Lasting::No);

}  // namespace morva
