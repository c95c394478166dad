// A target that loses memory: it must be told, or the other targets' silence says nothing.
#include <string>

#include "fuzz/fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::u16string* held = nullptr;
  // The text of the input before is held by nobody from here on.
  held = new std::u16string(fuzz::TextOf(data, size));
  fuzz::Check(held->size() == size, "every byte is a unit");
  return 0;
}
