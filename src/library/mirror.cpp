#include "library/mirror.h"

#include <cstring>
#include <string>
#include <utility>

#include "app/app_state.h"
#include "documents/saver.h"
#include "platform/file.h"

namespace morva {

void StoreText(unsigned char* at, int units, const char16_t* text) {
  std::memset(at, 0, static_cast<std::size_t>(units) * 2);
  for (int i = 0; i < units && text[i]; ++i, at += 2) {
    at[0] = static_cast<unsigned char>(text[i] & 0xFF);
    at[1] = static_cast<unsigned char>(text[i] >> 8);
  }
}

void SaveMirror(std::u16string_view folder, std::u16string_view file, std::string bytes,
                void (*told)(const SaveResult& result), platform::Lasting lasting) {
  if (!app.dataDirReady) return;
  const char16_t separator = platform::PathSeparator();
  std::u16string path = app.dataDir;
  path += separator;
  path += folder;
  path += separator;
  path += file;
  SaveJob job;
  job.program = path;
  job.files.push_back({.path = path, .bytes = std::move(bytes), .lasting = lasting});
  job.told = told ? told : [](const SaveResult&) {};
  HandOverSave(std::move(job));
}

}  // namespace morva
