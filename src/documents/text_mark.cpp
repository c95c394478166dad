#include "documents/text_mark.h"

#include <algorithm>
#include <iterator>

#include "app/command_ids.h"
#include "app/limits.h"
#include "platform/editor.h"

namespace morva {

namespace {

// The program on the stage; serial 0: none.
std::uint64_t staged = 0;
// The editor's revision as that program came back, and the mark that its text had before.
std::uint64_t backAt = 0;
TextMark back;
// Of programs that left, the last one first. More than are open are never asked for.
TextMark left[kMaxTabs];

}  // namespace

TextMark EditorTextMark() {
  if (staged == 0) return {};
  const std::uint64_t revision = platform::EditorRevision(kIdEditor);
  return back.Known() && revision == backAt ? back : TextMark{staged, revision};
}

void NoteTextLeft() {
  const TextMark mark = EditorTextMark();
  staged = 0;
  if (!mark.Known()) return;
  TextMark* place = std::ranges::find(left, mark.serial, &TextMark::serial);
  if (place == std::end(left)) --place;
  std::move_backward(left, place, place + 1);
  left[0] = mark;
}

void NoteTextStaged(std::uint64_t serial, bool asLeft) {
  staged = serial;
  const TextMark* const known = std::ranges::find(left, serial, &TextMark::serial);
  back = asLeft && known != std::end(left) ? *known : TextMark{};
  backAt = platform::EditorRevision(kIdEditor);
}

void ResetTextMarks() {
  staged = 0;
  back = {};
  std::ranges::fill(left, TextMark{});
}

}  // namespace morva
