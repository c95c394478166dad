#include "app/commands.h"

#include <algorithm>

#include "app/join_table.h"
#include "app/limits.h"
#include "app/router.h"
#include "app/stop.h"
#include "platform/control.h"
#include "text/codetext.h"

namespace morva {

namespace {

const Command* table[kMaxCommands];  // by id
JoinTable fill{u"commands", kMaxCommands};

bool IdBelow(const Command* row, int id) { return row->id < id; }

}  // namespace

void AddCommands(std::span<const Command> rows) {
  for (const Command& row : rows) {
    const Command** at = std::lower_bound(table, table + fill.count, row.id, IdBelow);
    const bool taken = at != table + fill.count && (*at)->id == row.id;
    if (taken && *at == &row) continue;
    if (taken) {
      StopProgram(u"MORVA cannot start. Command " + IntegerText(row.id) + u" comes twice.");
    }
    const Command** end = table + NextRow(fill);
    std::copy_backward(at, end, end + 1);
    *at = &row;
  }
}

const Command* CommandOf(int id) {
  const Command** end = table + fill.count;
  const Command** at = std::lower_bound(table, end, id, IdBelow);
  return at != end && (*at)->id == id ? *at : nullptr;
}

void ResetCommandWords() { fill.count = 0; }

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
