#include "library/mirror.h"

#include <cstring>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "documents/saver.h"
#include "platform/file.h"

namespace morva {

namespace {

template <typename Bits>
void StoreBits(unsigned char* at, Bits bits) {
  for (std::size_t i = 0; i < sizeof bits; ++i) at[i] = static_cast<unsigned char>(bits >> (8 * i));
}

}  // namespace

void StoreInteger(unsigned char* at, std::int32_t value) {
  StoreBits(at, static_cast<std::uint32_t>(value));
}

void StoreReal(unsigned char* at, double value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  StoreBits(at, bits);
}

void StoreText(unsigned char* at, int units, const char16_t* text) {
  std::memset(at, 0, static_cast<std::size_t>(units) * 2);
  for (int i = 0; i < units && text[i]; ++i, at += 2) {
    at[0] = static_cast<unsigned char>(text[i] & 0xFF);
    at[1] = static_cast<unsigned char>(text[i] >> 8);
  }
}

void SaveMirror(std::u16string_view folder, std::u16string_view file, std::string bytes) {
  if (!app.dataDirReady) return;
  const char16_t separator = platform::PathSeparator();
  std::u16string path = app.dataDir;
  path += separator;
  path += folder;
  path += separator;
  path += file;
  SaveJob job;
  job.program = path;
  job.files.push_back({path, std::move(bytes)});
  job.told = [](const SaveResult&) {};
  HandOverSave(std::move(job));
}

}  // namespace morva
