#include "documents/text_mark.h"

#include "app/command_ids.h"
#include "platform/editor.h"

namespace morva {

namespace {

// The program on the stage; serial 0: none.
std::uint64_t staged = 0;
// The editor's revision as that program came back, and the mark that its text had before.
std::uint64_t backAt = 0;
TextMark back;

}  // namespace

TextMark EditorTextMark() {
  if (staged == 0) return {};
  const std::uint64_t revision = platform::EditorRevision(kIdEditor);
  return back.Known() && revision == backAt ? back : TextMark{staged, revision};
}

TextMark NoteTextLeft() {
  const TextMark mark = EditorTextMark();
  staged = 0;
  return mark;
}

void NoteTextStaged(std::uint64_t serial, const TextMark& left) {
  staged = serial;
  back = left;
  backAt = platform::EditorRevision(kIdEditor);
}

void ResetTextMarks() {
  staged = 0;
  back = {};
}

}  // namespace morva
