#include "shell/keys_page.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <tuple>

#include "app/command_ids.h"
#include "app/commands.h"
#include "app/palette.h"
#include "app/panels.h"
#include "app/router.h"
#include "app/wells.h"
#include "forms/form.h"
#include "platform/control.h"
#include "platform/dialog.h"
#include "platform/listing.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::FontRole;
using platform::Rect;

constexpr Rect kPlace{170, 90, 170 + 860, 90 + 600};
// Where a row's columns begin, in letters.
constexpr std::size_t kWordsColumn = 14;
constexpr std::size_t kPlaceColumn = 56;

constexpr char16_t kNote[] =
    u"A key holds where its line says. In fields, lists and menus the keys do what they do "
    u"everywhere; Tab goes on, Shift+Tab goes back.";
constexpr char16_t kNoKey[] = u"Neither a key nor what it does holds these letters.";

// clang-format off
constexpr FormRow kRows[] = {
    {.kind = RowKind::Words, .id = kIdKeysSearch, .label = u"Search", .filled = true, .limit = 60},
    {.kind = RowKind::List, .id = kIdKeysList, .name = u"Keys and what they do", .least = 200},
    {.kind = RowKind::Note, .id = kIdKeysNote, .label = kNote, .height = 56},
    {.kind = RowKind::Keys, .keys = {kIdKeysClose}, .shares = {120}, .above = 1},
};
// clang-format on
constexpr FormLook kLook{.edge = 20,
                         .top = 14,
                         .gap = 10,
                         .keyGap = 10,
                         .tightGap = 10,
                         .inset = 1,
                         .fieldHeight = 28,
                         .keyHeight = 32,
                         .labelHeight = 22,
                         .keysAtEnd = true,
                         .labelFont = FontRole::Body,
                         .keyFont = FontRole::Body,
                         .listFont = FontRole::Code,
                         .labelColour = kBrightAccent};

void FillPage();
constexpr Form kKeysForm{.look = &kLook, .parent = kViewKeys, .rows = kRows, .changed = [](int id) {
                           if (id == kIdKeysSearch) FillPage();
                         }};

// What a command does, without its chord.
std::u16string WordsOfCommand(const Command& row) {
  std::u16string_view help = row.help;
  for (const std::u16string_view behind : {u" ({}", u";"}) {
    help = help.substr(0, std::min(help.find(behind), help.size()));
  }
  for (const std::u16string_view words :
       {help, std::u16string_view(row.menuWords), std::u16string_view(row.words),
        std::u16string_view(row.name)}) {
    if (!words.empty()) return std::u16string(words);
  }
  return {};
}

std::u16string Folded(std::u16string_view text) {
  std::u16string folded(text);
  for (char16_t& c : folded) {
    if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
  }
  return folded;
}

// Goes on in the next column, at least two blanks behind what stands there.
void EndColumn(std::u16string& row, std::size_t column) {
  do {
    row += u' ';
  } while (row.size() < column || row[row.size() - 2] != u' ');
}

void FillPage() {
  platform::HoldListRedraw(kIdKeysList, true);
  platform::ClearRows(kIdKeysList);
  const std::vector<KeyLine> found = KeyLines(platform::TextOf(kIdKeysSearch));
  for (const KeyLine& line : found) {
    std::u16string row = line.chord;
    EndColumn(row, kWordsColumn);
    row += line.words;
    EndColumn(row, kPlaceColumn);
    row += line.place;
    platform::AddRow(kIdKeysList, row);
  }
  platform::HoldListRedraw(kIdKeysList, false);
  platform::SetText(kIdKeysNote, found.empty() ? kNoKey : kNote);
}

void OnCommand(int id, int notification) {
  FormNotified(id, notification);
  if (id == kIdKeysClose && notification == platform::kNotifyClick) {
    platform::EndDialog(kViewKeys, 0);
  }
}

void PaintPage(platform::Canvas& canvas) {
  FillArea(canvas, platform::CanvasArea(canvas), kPanelBackground);
  PaintForms(canvas, kViewKeys);
  FrameWell(canvas, platform::PlaceOf(kIdKeysClose), platform::FocusedId() == kIdKeysClose,
            kAccent);
}

}  // namespace

std::vector<KeyLine> KeyLines(const std::u16string& search) {
  std::vector<KeyLine> found;
  const std::u16string wanted = Folded(search);
  const auto holds = [&wanted](const std::u16string& text) {
    return Folded(text).find(wanted) != std::u16string::npos;
  };
  const auto add = [&](const Chord& chord, std::u16string words) {
    KeyLine line{ChordWords(chord), std::move(words), chord.place->words};
    if (holds(line.chord) || holds(line.words) || holds(line.place)) {
      found.push_back(std::move(line));
    }
  };
  for (const Command* row : AllCommands()) {
    if (row->chord.place && !row->pending[0]) add(row->chord, WordsOfCommand(*row));
  }
  for (const Handlers& handlers : AllHandlers()) {
    for (const KeyRow& row : handlers.keys) {
      if (row.words[0]) add(row.chord, row.words);
    }
  }
  std::ranges::stable_sort(found, {},
                           [](const KeyLine& line) { return std::tie(line.place, line.chord); });
  return found;
}

void ShowKeysPage() {
  if (platform::Exists(kViewKeys)) return;
  platform::DialogSpec dialog;
  dialog.id = kViewKeys;
  dialog.className = u"MorvaKeys";
  dialog.title = u"Keys";
  dialog.place = kPlace;
  dialog.background = kPanelBackground;
  dialog.defaultButton = kIdKeysClose;
  dialog.cancelButton = kIdKeysClose;
  dialog.command = OnCommand;
  if (!platform::MakeDialog(dialog)) return;
  PlaceForm(kKeysForm, {0, 0, RectWidth(kPlace), RectHeight(kPlace) - kLook.top});
  FillPage();
  platform::SetFocusTo(kIdKeysSearch);
  platform::RunDialog(kViewKeys);
}

void RegisterKeysPage() {
  RegisterForm(kKeysForm);
  Handlers page;
  page.id = kViewKeys;
  page.paint = PaintPage;
  RegisterHandlers(page);
  RegisterCommand(RouterStage::Click, kIdKeysPage, platform::kNotifyClick,
                  [](int, int) { ShowKeysPage(); });
}

}  // namespace morva
