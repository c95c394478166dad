// Any bytes become text, and any text becomes bytes that the control can take: seven bits, CR LF
// and nothing else for a line end, and the same again when they are read and written once more.
#include <string>

#include "documents/file_text.h"
#include "fuzz/fuzz.h"
#include "platform/file.h"

namespace {

using namespace morva;
using fuzz::Check;

std::size_t CountOf(const std::u16string& text, char16_t wanted) {
  std::size_t count = 0;
  for (const char16_t unit : text) count += unit == wanted;
  return count;
}

void CheckBytes(const std::string& bytes) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const char byte = bytes[i];
    Check(byte > 0, "seven bits and no NUL");
    if (byte == '\r') Check(i + 1 < bytes.size() && bytes[i + 1] == '\n', "CR has its LF");
    if (byte == '\n') Check(i > 0 && bytes[i - 1] == '\r', "LF has its CR");
  }
  Check(bytes.empty() || bytes.back() == '\n', "the last line ends");
}

void CheckOutput(const std::u16string& text) {
  const std::string plain = NormaliseOutputText(text, false);
  CheckBytes(plain);
  Check(NormaliseOutputText(DecodeProgram(plain), false) == plain, "saving again is the same");
  const std::string wrapped = NormaliseOutputText(text, true);
  CheckBytes(wrapped);
  Check(NormaliseOutputText(DecodeProgram(wrapped), true) == wrapped, "so is sending again");
  Check(wrapped[wrapped.find_first_not_of("\t\n\r ")] == '%', "sent text begins with percent");
  Check(wrapped[wrapped.find_last_not_of("\t\n\r ")] == '%', "and ends with it");
  Check(wrapped.find(plain) != wrapped.npos, "and holds the whole program");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::u16string text = DecodeProgram(bytes);
  Check(CountOf(text, 0) == 0, "a program holds no NUL");
  Check(text.size() <= bytes.size(), "never more units than bytes");
  CheckOutput(text);
  CheckOutput(fuzz::TextOf(data, size));
  const std::u16string wide = platform::FromUtf8(bytes);
  Check(platform::FromUtf8(platform::ToUtf8(wide)) == wide, "text comes back through UTF-8");
  const std::u16string page = DecodeCodePage(bytes);
  Check(page.size() == bytes.size(), "the code page gives a unit for each byte");
  return 0;
}
