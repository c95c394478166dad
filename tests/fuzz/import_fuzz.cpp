// Operations are built for import whole or not at all: every chosen block comes with an id of
// its own and its inner lines as they were.
#include <algorithm>
#include <string>

#include "codetools/import_text.h"
#include "documents/feature_blocks.h"
#include "fuzz/fuzz.h"
#include "text/codetext.h"

namespace {

using namespace morva;
using fuzz::Check;

ImportSource source;
int copies = 0;

// Stored code with a number divisible by three is missing.
std::int32_t Copy(void*, std::int32_t number, const FeatureRecord&, std::int32_t) {
  return number % 3 == 0 ? 0 : 1000 + ++copies;
}

// The numbers of stored code and ids change, wherever a number stands in its line; every other line
// of a block stays.
bool IsInnerLine(std::u16string_view line) {
  return !line.starts_with(u"(MORVA TEXT ") && !line.starts_with(u"(MORVA BEGIN ") &&
         FindFolded(line, u"(MORVA DISABLED", 0) == line.npos && !line.empty();
}

// Whether every inner line of the block stands in `built`, in order, from `at` on.
void CheckLines(std::u16string_view block, std::u16string_view built, std::size_t& at) {
  // The closing marker is the last thing in the block and is written anew.
  std::size_t end = block.size();
  while (end > 0 && block[end - 1] != u'(') --end;
  block = block.substr(0, end > 0 ? end - 1 : 0);
  for (std::size_t from = 0; from < block.size();) {
    const std::size_t to = std::min(block.find(u"\r\n", from), block.size());
    const std::u16string_view line = block.substr(from, to - from);
    if (IsInnerLine(line)) {
      at = built.find(line, at);
      Check(at != std::u16string_view::npos, "an inner line is kept");
      at += line.size();
    }
    from = to + 2;
  }
}

void CheckBuilt(const std::u16string& built, int chosen, std::int32_t firstId) {
  ScanProgramText(built);
  Check(features.count == chosen, "as many blocks as were chosen");
  for (int i = 0; i < features.count; ++i) {
    const FeatureRecord& row = features.rows[i];
    Check(!row.needsMarkers, "every block has its markers");
    Check(row.id >= firstId, "ids start at the first one");
    Check(i == 0 || row.id > features.rows[i - 1].id, "ids are unique");
    Check(built.compare(static_cast<std::size_t>(row.end), 2, u"\r\n") == 0, "a line end follows");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const unsigned pattern = data[0] | 1u;
  const std::int32_t firstId = 1 + data[1];
  copies = 0;
  LoadImportSource(fuzz::TextOf(data + 2, std::min<std::size_t>(size - 2, 16384)), source);
  bool chosen[kMaxFeatures] = {};
  int count = 0;
  for (int i = 0; i < source.count; ++i) {
    chosen[i] = (pattern >> (i % 8) & 1u) != 0;
    count += chosen[i] ? 1 : 0;
  }
  std::u16string built = u"before";
  if (BuildImportText(source, chosen, firstId, Copy, nullptr, built) != ImportBuild::Done) {
    Check(built.empty(), "nothing or all");
    return 0;
  }
  CheckBuilt(built, count, firstId);
  std::size_t at = 0;
  for (int i = 0; i < source.count; ++i) {
    if (!chosen[i]) continue;
    const auto start = static_cast<std::size_t>(source.rows[i].start);
    const auto end = static_cast<std::size_t>(source.rows[i].end);
    CheckLines(std::u16string_view(source.text).substr(start, end - start), built, at);
  }
  return 0;
}
