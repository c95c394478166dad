#include "app/commands.h"

#include <algorithm>

#include "app/limits.h"

namespace morva {

namespace {

const Command* table[kMaxCommands];  // by id
int count = 0;

bool IdBelow(const Command* row, int id) { return row->id < id; }

}  // namespace

void AddCommands(std::span<const Command> rows) {
  for (const Command& row : rows) {
    if (count == kMaxCommands) return;
    const Command** end = table + count;
    const Command** at = std::lower_bound(table, end, row.id, IdBelow);
    std::copy_backward(at, end, end + 1);
    *at = &row;
    ++count;
  }
}

const Command* CommandOf(int id) {
  const Command** end = table + count;
  const Command** at = std::lower_bound(table, end, id, IdBelow);
  return at != end && (*at)->id == id ? *at : nullptr;
}

void ResetCommandWords() { count = 0; }

}  // namespace morva
