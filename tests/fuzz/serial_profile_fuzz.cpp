// Any settings file is read without harm: the profile is what a second reader finds in it,
// what is saved is read back, and a line is either refused or has a record, a rate and a path.
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "app/app_state.h"
#include "dnc/serial_profile.h"
#include "fuzz/fuzz.h"
#include "fuzz/home.h"
#include "platform/file.h"
#include "platform/posix/serial_line.h"
#include "platform/posix/serial_names.h"
#include "platform/posix/serial_settings.h"
#include "platform/profile.h"
#include "text/codetext.h"

namespace {

using namespace morva;
using fuzz::Bytes;
using fuzz::Check;
using fuzz::Home;

// A second reader of a number: blanks, one minus, digits as far as they go, modulo 2^32.
std::int32_t NumberIn(const std::u16string& text, std::int32_t fallback) {
  std::size_t at = text.find_first_not_of(u" \t");
  if (at == text.npos) return fallback;
  const bool minus = text[at] == u'-';
  at += minus;
  const std::size_t end = text.find_first_not_of(u"0123456789", at);
  const std::u16string digits = text.substr(at, end == text.npos ? end : end - at);
  if (digits.empty()) return fallback;
  std::uint64_t value = 0;
  for (const char16_t digit : digits) value = (value * 10 + (digit - u'0')) % 4294967296u;
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(minus ? 4294967296u - value : value));
}

void CheckLoaded(const std::u16string& text) {
  std::u16string value;
  const bool named = platform::FindInProfile(text, u"DNC", u"Port", value) && !value.empty();
  Check(serialProfile.port[kPortNameUnits - 1] == 0, "a port ends");
  if (named) {
    const std::u16string wanted = std::u16string(value.substr(0, 31).c_str());
    Check(wanted == serialProfile.port, "a port is what the file names, up to 31 units");
  } else {
    Check(serialProfile.port[0] == 0, "no port where none is named");
  }
  struct Field {
    const char16_t* key;
    std::int32_t value;
    std::int32_t fallback;
  };
  const Field fields[] = {{u"Baud", serialProfile.baud, 9600},
                          {u"DataBits", serialProfile.dataBits, 7},
                          {u"Parity", serialProfile.parity, 2},
                          {u"StopBits", serialProfile.stopBits, 2},
                          {u"Flow", serialProfile.flow, 1}};
  for (const Field& field : fields) {
    const bool there = platform::FindInProfile(text, u"DNC", field.key, value);
    const std::int32_t wanted = there ? NumberIn(value, field.fallback) : field.fallback;
    Check(field.value == wanted, "a number is what a second reader finds");
  }
}

// The rows that a line cannot be set to are refused; for all others there is a whole record.
void CheckSettings() {
  const platform::SerialSettings settings = SettingsOf(serialProfile);
  Check(settings.dataBits >= 0 && settings.dataBits <= 255, "data bits are one byte");
  Check(settings.parity >= 0 && settings.parity <= 255, "parity is one byte");
  Check(settings.stopBits >= 0 && settings.stopBits <= 255, "stop bits are one byte");
  const std::string path = platform::DevicePath(settings.port, "/dev");
  Check(path.empty() || path[0] == '/', "a path begins at the root");
  if (!platform::SettingsHold(settings)) return;
  Check(settings.baud > 0 && settings.stopBits != 1, "a line has a rate and whole stop bits");
  termios record;
  std::memset(&record, 0xFF, sizeof(record));
  platform::FillTerminal(settings, record);
  Check(platform::SameTerminal(record, record, false), "a record is like itself");
  platform::LineRate rate;
  rate.byteNs = platform::ByteNanoseconds(settings);
  const std::int64_t bits = 1000000000LL * 13;
  Check(rate.byteNs >= 0 && rate.byteNs <= bits, "a byte has at most 13 bits");
  for (const std::size_t left : {std::size_t{1}, std::size_t{64}, std::size_t{128}}) {
    const int piece = platform::PieceWanted(rate, left);
    Check(piece >= 1 && piece <= 32 && static_cast<std::size_t>(piece) <= left, "a piece goes out");
  }
}

// A value in the file ends at a CR, and a character that was cut in two is none there.
std::u16string AsWritten(const char16_t* port) {
  std::u16string text(port);
  text.resize(std::min(text.size(), text.find(u'\r')));
  return platform::FromUtf8(platform::ToUtf8(text));
}

bool SameProfile(const SerialProfile& a, const SerialProfile& b) {
  return AsWritten(a.port) == AsWritten(b.port) && a.baud == b.baud && a.dataBits == b.dataBits &&
         a.parity == b.parity && a.stopBits == b.stopBits && a.flow == b.flow;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Home home;
  ResetSerialProfile();
  fuzz::Write(home.file, data, size);
  const std::string before = Bytes(home.file);
  const bool named = LoadSerialProfile();
  Check(named == (serialProfile.port[0] != 0), "loading tells whether a port is named");
  CheckLoaded(platform::FromUtf8(before));
  CheckSettings();
  Check(Bytes(home.file) == before, "loading writes nothing");
  if (!named) return 0;
  const SerialProfile loaded = serialProfile;
  SaveSerialProfile();
  ResetSerialProfile();
  LoadSerialProfile();
  Check(SameProfile(serialProfile, loaded), "what is saved is read back");
  const std::string saved = Bytes(home.file);
  SaveSerialProfile();
  Check(Bytes(home.file) == saved, "saving again changes nothing");
  return 0;
}
