// Open and save dialogs, answered from the queue of paths.

#include "platform/pick_file.h"

#include <deque>
#include <utility>

#include "platform/file.h"
#include "platform/headless/headless_internal.h"

namespace headless {
namespace {

std::deque<std::u16string> paths;  // empty: cancelled
std::vector<FilePickRecord> records;

void ResetPicks() {
  paths.clear();
  records.clear();
}
ResetHook hook(1, ResetPicks);

bool HasExtension(std::u16string_view path) {
  const std::size_t folder = path.find_last_of(u"/\\");
  const std::size_t name = folder == path.npos ? 0 : folder + 1;
  return path.find(u'.', name) != path.npos;
}

bool Pick(const platform::PickFileSpec& spec, bool save, std::u16string& path) {
  const Asking asking;
  HappenWithoutKeyboard();
  std::u16string wanted;
  if (!paths.empty()) {
    wanted = std::move(paths.front());
    paths.pop_front();
  }
  const std::u16string_view extension = spec.defaultExtension;
  if (save && !wanted.empty() && !extension.empty() && !HasExtension(wanted)) {
    if (extension[0] != u'.') wanted.push_back(u'.');
    wanted.append(extension);
  }
  if (static_cast<int>(wanted.size()) >= spec.capacity) wanted.clear();
  if (!save && !wanted.empty() && !platform::FileExists(wanted)) wanted.clear();
  FilePickRecord record;
  record.save = save;
  record.title = spec.title;
  record.initialName = spec.initialName;
  record.folder = spec.folder;
  record.defaultExtension = spec.defaultExtension;
  for (int i = 0; i < spec.filterCount; ++i) {
    record.filters.emplace_back(spec.filters[i].words, spec.filters[i].patterns);
  }
  record.picked = wanted;
  records.push_back(std::move(record));
  if (wanted.empty()) return false;
  path = wanted;
  return true;
}

}  // namespace

void QueueFile(std::u16string_view path) { paths.emplace_back(path); }
void QueueFileCancel() { paths.emplace_back(); }
std::vector<FilePickRecord> TakeFilePicks() { return std::exchange(records, {}); }

void ClearQueues() {
  ClearAnswers();
  ClearPicks();
  ClearPrinters();
  paths.clear();
}

}  // namespace headless

namespace platform {

bool PickFileToOpen(const PickFileSpec& spec, std::u16string& path) {
  return headless::Pick(spec, false, path);
}

// The user who queued the name has also agreed to replace what lies there.
bool PickFileToSave(const PickFileSpec& spec, std::u16string& path) {
  return headless::Pick(spec, true, path);
}

}  // namespace platform
