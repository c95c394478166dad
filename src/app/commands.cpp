#include "app/commands.h"

#include <algorithm>

#include "app/limits.h"
#include "app/router.h"
#include "platform/control.h"

namespace morva {

namespace {

const Command* table[kMaxCommands];  // by id
int count = 0;

bool IdBelow(const Command* row, int id) { return row->id < id; }

}  // namespace

void AddCommands(std::span<const Command> rows) {
  for (const Command& row : rows) {
    const Command** end = table + count;
    const Command** at = std::lower_bound(table, end, row.id, IdBelow);
    if (at != end && *at == &row) continue;
    if (count == kMaxCommands) return;
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

bool MakeCommandKey(int id, int parent, platform::FontRole font, bool hidden) {
  const Command* row = CommandOf(id);
  if (!row) return false;
  platform::ControlSpec spec;
  spec.id = id;
  spec.kind = platform::ControlKind::PushButton;
  spec.text = row->words;
  spec.accessibleName = row->name;
  spec.font = font;
  spec.parent = parent;
  spec.hidden = hidden;
  if (!platform::MakeControl(spec)) return false;
  if (row->help[0]) platform::SetToolTip(id, row->help);
  if (IsPending(id)) platform::SetEnabled(id, false);
  return true;
}

}  // namespace morva
