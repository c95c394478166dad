#include "app/key_rows.h"

#include <algorithm>

namespace morva {

bool RunKeyRow(std::span<const KeyRow> rows, const platform::KeyEvent& key) {
  const auto row = std::ranges::find_if(
      rows, [&key](const KeyRow& each) { return SameKey(each.chord.key, key); });
  return row != rows.end() && row->run();
}

platform::KeyEvent WithoutZoomModifiers(const platform::KeyEvent& key) {
  constexpr int kZoomKeys[] = {'+', '=', '-', platform::kKeyPageUp, platform::kKeyPageDown};
  return std::ranges::count(kZoomKeys, key.key) > 0 ? platform::KeyEvent{key.key} : key;
}

}  // namespace morva
