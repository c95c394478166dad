// A target with a planted fault: it must be found, or the other targets' silence says nothing.
#include <string_view>

#include "fuzz/fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string text = fuzz::TextOf(data, size);
  // No input of the corpus has a tool call inside a comment right behind a percent line.
  fuzz::Check(text.find(u"%(T1 M6") == std::u16string::npos, "the canary is silent");
  return 0;
}
