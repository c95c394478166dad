#include "app/data_dir.h"

#include <string>

#include "app/app_state.h"
#include "app/outlets.h"
#include "platform/file.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::size_t kExecutableNameMost = 159;

void AppendPiece(std::u16string_view piece) {
  std::u16string text(1, platform::PathSeparator());
  text += piece;
  AppendBounded(app.dataDir, kPathUnits, text.c_str());
}

bool FolderStands(std::u16string_view path) {
  return platform::MakeFolder(path) != platform::FolderAnswer::Failed;
}

// The data directory itself first.
template <typename Stands>
bool AllStand(Stands stands) {
  if (!stands(app.dataDir)) return false;
  for (const char16_t* folder : {u"Projects", u"Shapes", u"Tool Library", u"Recovery"}) {
    std::u16string path(app.dataDir);
    path += platform::PathSeparator();
    path += folder;
    if (!stands(path)) return false;
  }
  return true;
}

}  // namespace

void FindDataDirectory() {
  app.dataDirReady = false;
  std::u16string documents;
  if (!platform::DocumentsFolder(documents)) return;
  CopyBounded(app.dataDir, kPathUnits, documents);
  const std::u16string executable = platform::ExecutablePath();
  const std::u16string_view name = BareFileName(executable).substr(0, kExecutableNameMost);
  if (SameFolded(name, u"MORVA") || SameFolded(name, u"MORVA.exe")) {
    AppendPiece(u"MORVA");
  } else {
    // A copy under another name keeps its data beside itself and never touches Documents.
    const std::size_t folder = executable.size() - BareFileName(executable).size();
    CopyBounded(app.dataDir, kPathUnits, std::u16string_view(executable).substr(0, folder));
    AppendBounded(app.dataDir, kPathUnits, u"QA-data");
  }
  app.dataDirReady = AllStand(FolderStands);
}

void RemakeDataFolders() {
  // Where it fails the save that needs it fails as well, and says so.
  if (!app.dataDirReady) return;
  (void)AllStand(
      [](std::u16string_view path) { return platform::FileExists(path) || FolderStands(path); });
}

}  // namespace morva
