// File dialogs of a benchmark: both answer with `nextFile`. Defines the platform's functions, so
// that one source of a program includes it.
#pragma once

#include <QString>
#include <string>

#include "platform/pick_file.h"

namespace bench {

inline QString nextFile;  // empty: the dialog is cancelled

}  // namespace bench

namespace platform {

bool PickFileToOpen(const PickFileSpec&, std::u16string& path) {
  path = bench::nextFile.toStdU16String();
  return !path.empty();
}
bool PickFileToSave(const PickFileSpec& spec, std::u16string& path) {
  return PickFileToOpen(spec, path);
}

}  // namespace platform
