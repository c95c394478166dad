#include "app/profile_keys.h"

#include <string>
#include <string_view>

#include "app/outlets.h"
#include "platform/profile.h"
#include "text/codetext.h"

namespace morva {

std::int32_t ProfileReadInteger(const char16_t* section, const char16_t* key,
                                std::int32_t fallback) {
  const std::u16string value = platform::ReadProfile(section, key, IntegerText(fallback));
  return ParseInteger(std::u16string_view(value).substr(0, 63), fallback);
}

double ProfileReadDecimal(const char16_t* section, const char16_t* key, double fallback) {
  const std::u16string usual = FixedText(fallback, 4);
  const std::u16string value = platform::ReadProfile(section, key, usual);
  return ParseDecimal(std::u16string_view(value).substr(0, 63), ParseDecimal(usual, fallback));
}

void ProfileWriteDecimal(const char16_t* section, const char16_t* key, double value) {
  platform::BeginProfileChange();
  platform::WriteProfile(section, key, FixedText(value, 4));
  platform::EndProfileChange();
}

void TellWhereSettingsAre() {
  const platform::ProfilePlace place = platform::WhereProfileIsKept();
  if (place == platform::ProfilePlace::BesideExecutable) return;
  const std::u16string path = platform::ProfilePath();
  if (place == platform::ProfilePlace::Configuration) {
    return ShowStatus(u"The program's folder cannot be written. Settings are kept in " + path +
                      u".");
  }
  ShowStatus(path + u" cannot be written. Settings that you change hold for this run only.");
}

}  // namespace morva
