#include "simulator/kept_paths.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "app/limits.h"
#include "documents/tab_table.h"
#include "documents/text_mark.h"
#include "simulator/feature_lines.h"
#include "simulator/motion_path.h"

namespace morva {

namespace {

// All that the program's path depends on.
struct Origin {
  TextMark text;
  bool metric = false;
  std::int32_t isolatedId = 0;
  std::int32_t hiddenIds[kMaxIdList] = {};

  bool operator==(const Origin&) const = default;
};

struct KeptPath {
  Origin origin;
  StoredPath path;
  FeatureLineIndex lines;
};
std::vector<KeptPath> keptPaths;  // one a program, as many as can be open

// Of the path that was read last, which stands in the table while its generation is this one. One
// that was taken out of those kept is kept already.
Origin standing;
std::uint32_t standingGeneration = 0;

Origin OriginNow(bool metric) {
  Origin now;
  now.text = EditorTextMark();
  now.metric = metric;
  if (const ProgramTab* const tab = ActiveTab()) {
    now.isolatedId = tab->isolatedId;
    std::ranges::copy(tab->hiddenIds, now.hiddenIds);
  }
  return now;
}

bool IsClosed(const KeptPath& kept) { return TabOfSerial(kept.origin.text.serial) == nullptr; }

}  // namespace

void NoteProgramPath(bool metric) {
  standing = OriginNow(metric);
  standingGeneration = path.generation;
}

void KeepLeftPath() {
  std::erase_if(keptPaths, IsClosed);
  const std::uint64_t serial = standing.text.serial;
  if (!standing.text.Known() || standingGeneration != path.generation) return;
  if (serial == EditorTextMark().serial || !TabOfSerial(serial)) return;
  auto kept = std::ranges::find(keptPaths, serial,
                                [](const KeptPath& each) { return each.origin.text.serial; });
  if (kept == keptPaths.end()) kept = keptPaths.emplace(kept);
  kept->origin = standing;
  StorePath(path, kept->path);
  kept->lines = featureLines;
}

bool TakeKeptPath(bool metric) {
  const Origin wanted = OriginNow(metric);
  if (!wanted.text.Known()) return false;
  const auto kept = std::ranges::find(keptPaths, wanted, &KeptPath::origin);
  if (kept == keptPaths.end()) return false;
  RestorePath(kept->path, path);
  RestoreFeatureLines(kept->lines);
  return true;
}

int KeptPathCount() { return static_cast<int>(keptPaths.size()); }

void ForgetKeptPaths() {
  keptPaths.clear();
  standing = {};
}

}  // namespace morva
