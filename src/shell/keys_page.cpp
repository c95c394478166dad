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
#include "shell/owner_draw.h"
#include "text/codetext.h"

namespace morva {

namespace {

using platform::FontRole;
using platform::Rect;

constexpr Rect kPlace{240, 90, 240 + 720, 90 + 600};
constexpr int kWordsLeft = 170;  // of a row, in pixels
constexpr int kPlaceWidth = 250;

// clang-format off
constexpr FormRow kRows[] = {
    {.kind = RowKind::Words, .id = kIdKeysSearch, .label = u"Search", .filled = true, .limit = 60},
    {.kind = RowKind::List, .id = kIdKeysList, .name = u"Keys and what they do", .least = 200},
    {.kind = RowKind::Note, .id = kIdKeysNote,
     .label = u"A key holds where its line says. In fields, lists and menus the keys do what they "
              u"do everywhere; Tab goes on, Shift+Tab goes back.",
     .height = 40},
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
                         .labelColour = kBrightAccent};

void FillPage();
constexpr Form kKeysForm{.look = &kLook, .parent = kViewKeys, .rows = kRows, .changed = [](int id) {
                           if (id == kIdKeysSearch) FillPage();
                         }};

std::vector<KeyLine> lines;  // of the page that is up

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

void FillPage() {
  lines = KeyLines(platform::TextOf(kIdKeysSearch));
  platform::HoldListRedraw(kIdKeysList, true);
  platform::ClearRows(kIdKeysList);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const KeyLine& line = lines[i];
    platform::AddRow(kIdKeysList, line.chord + u"  " + line.words + u"  (" + line.place + u")",
                     static_cast<std::int64_t>(i));
  }
  platform::HoldListRedraw(kIdKeysList, false);
}

void DrawLine(const platform::DrawState& state, platform::Canvas& canvas) {
  if (state.row < 0 || static_cast<std::size_t>(state.row) >= lines.size()) return;
  const KeyLine& line = lines[static_cast<std::size_t>(state.row)];
  DrawListRow(state, 10, line.chord, kBrightAccent, canvas);
  const Rect& area = state.area;
  const unsigned align = platform::kAlignLeft | platform::kAlignMiddle | platform::kTextEllipsis;
  const int split = area.right - kPlaceWidth;
  PaintText(canvas, Rect{area.left + kWordsLeft, area.top, split - 8, area.bottom}, line.words,
            FontRole::Body, kMainText, align);
  PaintText(canvas, Rect{split, area.top, area.right - 6, area.bottom}, line.place, FontRole::Small,
            kDimText, align);
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
  for (const Command* row : AllCommands()) {
    if (!row->chord.place || row->pending[0]) continue;
    KeyLine line{ChordWords(row->chord), WordsOfCommand(*row), row->chord.place->words};
    const auto holds = [&](const std::u16string& text) {
      return Folded(text).find(wanted) != std::u16string::npos;
    };
    if (holds(line.chord) || holds(line.words) || holds(line.place)) {
      found.push_back(std::move(line));
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
  lines.clear();
}

void RegisterKeysPage() {
  RegisterForm(kKeysForm);
  Handlers page;
  page.id = kViewKeys;
  page.paint = PaintPage;
  RegisterHandlers(page);
  Handlers list;
  list.id = kIdKeysList;
  list.drawItem = DrawLine;
  RegisterHandlers(list);
  RegisterCommand(RouterStage::Click, kIdKeysPage, platform::kNotifyClick,
                  [](int, int) { ShowKeysPage(); });
}

}  // namespace morva
