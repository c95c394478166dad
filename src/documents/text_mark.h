// Which text stands in the code editor: what was worked out from a text is good again when the
// program comes back as it left.
//
// The editor counts its changes, and a program that comes onto the stage is one of them. So the
// count alone says of a text that came back that it is another one.
#pragma once

#include <cstdint>

namespace morva {

struct TextMark {
  std::uint64_t serial = 0;    // of its program; 0: nothing is known of the text
  std::uint64_t revision = 0;  // of the editor, when the text stood there first

  bool operator==(const TextMark&) const = default;
  bool Known() const { return serial != 0; }
};

// Of the text in the code editor. Two that are known and equal are of the same text.
TextMark EditorTextMark();

// The program's text leaves the editor, which lays it aside. The mark is for when it comes back.
TextMark NoteTextLeft();
// A program's text stands in the editor: the one that left with this mark; not known: any other.
void NoteTextStaged(std::uint64_t serial, const TextMark& left);
void ResetTextMarks();

}  // namespace morva
