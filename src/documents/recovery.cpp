#include "documents/recovery.h"

#include <cstdint>

#include "app/app_state.h"
#include "documents/file_names.h"
#include "documents/file_text.h"
#include "platform/clock.h"
#include "platform/file.h"
#include "text/codetext.h"

namespace morva {
namespace {

constexpr int kNameTries = 1000;

}  // namespace

bool KeepInRecovery(std::u16string_view title, std::u16string_view text, std::u16string& path) {
  if (!app.dataDirReady) return false;
  const std::u16string name = CleanedTitle(title);
  auto tick = static_cast<std::uint32_t>(platform::TickMilliseconds());
  for (int tries = 0; tries < kNameTries; ++tries, ++tick) {
    path = PathInData(u"Recovery", name + u"-" + IntegerText(tick) + u".NC");
    if (platform::FileExists(path)) continue;
    return SaveFileAtomic(path, platform::ToUtf8(text));
  }
  return false;
}

}  // namespace morva
