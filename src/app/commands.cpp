#include "app/commands.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "app/hooks.h"
#include "app/join_table.h"
#include "app/limits.h"
#include "app/router.h"
#include "app/stop.h"
#include "platform/control.h"
#include "text/codetext.h"

namespace morva {

namespace {

constexpr std::size_t kHoverTextMost = 279;
constexpr std::u16string_view kChordMark = u"{}";

const Command* table[kMaxCommands];  // by id
JoinTable fill{u"commands", kMaxCommands};

std::vector<int> shownOn;   // ids of the keys that show a state as on
std::vector<int> shownDim;  // ids of the keys that are dim as they do nothing now

// A static row stands for an id that no room knows.
constexpr Command kNobody;

const Command& RowOf(int id) {
  const Command* row = CommandOf(id);
  return row ? *row : kNobody;
}

int LastOf(const Command& row) { return std::max(row.id, row.last); }

bool IdBelow(int id, const Command* row) { return id < row->id; }

void TellTip(int id, bool on) { platform::SetToolTip(id, HelpOf(id) + (on ? u"  (on)" : u"")); }

// The tip changes with it, as it says why.
void RefreshBar(const Command& row, int id) {
  const bool dim = row.barred(id) != nullptr;
  if (dim == (std::ranges::count(shownDim, id) > 0)) return;
  if (dim) {
    shownDim.push_back(id);
  } else {
    std::erase(shownDim, id);
  }
  platform::SetEnabled(id, !dim);
  RefreshTip(id);
  platform::Repaint(id);
}

// No form: this makes the keys of all, and those of forms too.
bool MakeOf(int id, platform::ControlKind kind, int parent, platform::FontRole font, bool hidden) {
  const Command* row = CommandOf(id);
  if (!row) return false;
  platform::ControlSpec spec;
  spec.id = id;
  spec.kind = kind;
  spec.text = row->words;
  spec.accessibleName = row->name;
  spec.font = font;
  spec.parent = parent;
  spec.hidden = hidden;
  if (!platform::MakeControl(spec)) return false;
  std::erase(shownOn, id);
  std::erase(shownDim, id);
  if (const std::u16string help = HelpOf(id); !help.empty()) platform::SetToolTip(id, help);
  if (IsPending(id)) platform::SetEnabled(id, false);
  if (row->barred) RefreshBar(*row, id);
  // A key that is off has a state all the same.
  const bool key = kind == platform::ControlKind::PushButton;
  if (key && row->on && (row->told & kToldChecked)) platform::SetChecked(id, false);
  return true;
}

void RefreshState(const Command& row, int id) {
  if (!platform::Exists(id)) return;
  if (row.barred) RefreshBar(row, id);
  if (!row.on) return;
  const bool on = row.on(id);
  if (row.told & kToldInWords) ShowWords(id, on);
  if (on == (std::ranges::count(shownOn, id) > 0)) return;
  if (on) {
    shownOn.push_back(id);
  } else {
    std::erase(shownOn, id);
  }
  if (row.told & kToldChecked) platform::SetChecked(id, on);
  if (row.told & kToldInTip) TellTip(id, on);
  platform::Repaint(id);
}

}  // namespace

void AddCommands(std::span<const Command> rows) {
  for (const Command& row : rows) {
    const Command** end = table + fill.count;
    const Command** at = std::upper_bound(table, end, row.id, IdBelow);
    if (at != table && at[-1] == &row) continue;
    const bool below = at != table && LastOf(*at[-1]) >= row.id;
    const bool above = at != end && LastOf(row) >= (*at)->id;
    if (below || above) {
      StopProgram(u"MORVA cannot start. Command " + IntegerText(below ? row.id : (*at)->id) +
                  u" comes twice.");
    }
    NextRow(fill);
    std::copy_backward(at, end, end + 1);
    *at = &row;
  }
}

void ResetCommandWords() {
  fill.count = 0;
  shownOn.clear();
  shownDim.clear();
}

const Command* CommandOf(int id) {
  const Command** at = std::upper_bound(table, table + fill.count, id, IdBelow);
  if (at == table) return nullptr;
  const Command* row = at[-1];
  return id <= LastOf(*row) ? row : nullptr;
}

std::span<const Command* const> AllCommands() {
  return {table, static_cast<std::size_t>(fill.count)};
}

bool IsPending(int id) { return RowOf(id).pending[0] != 0; }

void RefreshTip(int id) {
  if (platform::Exists(id)) TellTip(id, std::ranges::count(shownOn, id) > 0);
}

const char16_t* WordsOf(int id, bool on) {
  const Command& row = RowOf(id);
  return on && row.wordsOn[0] ? row.wordsOn : row.words;
}

std::u16string HelpOf(int id) {
  const Command& row = RowOf(id);
  std::u16string help = row.help[0] || row.icon == kNoIcon ? row.help : row.words;
  if (const std::u16string about = Call(row.about, id); !about.empty()) help = about + u"\n" + help;
  if (const char16_t* why = Call(row.barred, id)) help = why + (u"\n" + help);
  const std::size_t at = help.find(kChordMark);
  if (at == help.npos) return help;
  const Command& named = row.chordOf != 0 ? RowOf(row.chordOf) : row;
  return help.replace(at, kChordMark.size(), ChordWords(named.chord));
}

std::u16string HintOf(int id) {
  const Command& row = RowOf(id);
  if (row.hintWords[0]) return row.hintWords;
  if (row.hint == Hint::Quiet) return {};
  if (row.hint == Hint::Help) return HelpOf(id);
  // What a field holds is no help.
  if (platform::IsTextControl(id)) return {};
  if (const char16_t* why = Call(row.barred, id)) return platform::TextOf(id) + u": " + why;
  return platform::TextOf(id).substr(0, kHoverTextMost);
}

int CommandOfChord(const ChordPlace& place, const platform::KeyEvent& key) {
  for (const Command* row : AllCommands()) {
    if (row->chord.place == &place && SameKey(row->chord.key, key)) return row->id;
  }
  return 0;
}

bool RouteChord(const ChordPlace& place, const platform::KeyEvent& key) {
  const int id = CommandOfChord(place, key);
  return id != 0 && RouteCommand(id, platform::kNotifyClick);
}

bool MakeCommandKey(int id, int parent, platform::FontRole font, bool hidden) {
  return MakeOf(id, platform::ControlKind::PushButton, parent, font, hidden);
}

bool MakeCommandCheck(int id, int parent, platform::FontRole font, bool hidden) {
  return MakeOf(id, platform::ControlKind::CheckBox, parent, font, hidden);
}

void ShowWords(int id, bool on) {
  if (!CommandOf(id) || !platform::Exists(id)) return;
  const std::u16string_view words = WordsOf(id, on);
  if (platform::TextOf(id) != words) platform::SetText(id, words);
}

bool HasState(int id) { return RowOf(id).on != nullptr; }

bool IsOn(int id) { return Call(RowOf(id).on, id); }

void RefreshKeyStates() {
  for (int i = 0; i < fill.count; ++i) {
    const Command& row = *table[i];
    if (!row.on && !row.barred) continue;
    for (int id = row.id; id <= LastOf(row); ++id) RefreshState(row, id);
  }
}

}  // namespace morva
