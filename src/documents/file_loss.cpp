#include "documents/file_loss.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "documents/block_text.h"
#include "documents/feature_blocks.h"
#include "documents/generated_code.h"
#include "text/codetext.h"

namespace morva {

namespace {

bool IsLost(char16_t c) { return c >= kAscii; }

// Whether the code of a block is known as generated now and once the file holds "?" in it.
bool IsKnownFromFile(const FeatureSettings& record, std::u16string_view code) {
  if (!IsGeneratedCode(record, code)) return false;
  std::u16string held(code);
  std::ranges::replace_if(held, IsLost, u'?');
  return IsGeneratedCode(record, held);
}

// The places of what is restored, ascending.
std::vector<std::size_t> RestoredPlaces(std::u16string_view text) {
  std::vector<std::size_t> places;
  for (const FeatureRecord& row : BlocksOf(text)) {
    if (row.settings.kind == kKindUserCode) continue;
    const std::u16string_view code = GeneratedCode(text, row);
    if (std::ranges::none_of(code, IsLost) || !IsKnownFromFile(row.settings, code)) continue;
    const auto from = static_cast<std::size_t>(code.data() - text.data());
    for (std::size_t i = 0; i < code.size(); ++i) {
      if (IsLost(code[i])) places.push_back(from + i);
    }
  }
  return places;
}

}  // namespace

OutputFigures MeasureFile(std::u16string_view text) {
  const OutputFigures figures = MeasureOutput(text);
  if (figures.lost == 0) return figures;
  const std::vector<std::size_t> restored = RestoredPlaces(text);
  return restored.empty() ? figures : MeasureOutput(text, restored);
}

}  // namespace morva
