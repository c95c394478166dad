// Insertion: the one way for a generator to put a block into a program.
//
// A caller provides finished code with CR LF line ends and a live model that its room's
// settings writer can serialise. Markers, ids and hash are written here and nowhere else.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "documents/edit_link.h"
#include "documents/feature_settings.h"
#include "documents/program_places.h"

namespace morva {

// The room that owns a kind writes its live model. False: the model cannot be stored.
// An unknown kind stops the program with words, and so does one that has another writer. Null gives
// the kind back.
using SettingsWriter = bool (*)(FeatureSettings& record);
void SetSettingsWriter(int kind, SettingsWriter writer);

// Where the user wants a block. Placed: the caret stands where the block must go, so that it is
// not moved out of a surrounding block. Split: the user code that holds the caret is parted there.
enum class Destination { Cancelled, Caret, Placed, Split };
// `units` is the units word of the code, 20 or 21, 0 for none.
using DestinationPicker = Destination (*)(int kind, std::int32_t units);
void SetDestinationPicker(DestinationPicker picker);  // null: the caret is accepted

// The block with this code behind the block that holds the caret, or in place of the block under
// edit; with `asksWhere` where the picker says. Without the picker the user is asked where the
// program's end lies before that place. False: nothing changed, and the user knows why.
// The change itself is not told: that is the caller's, by ProgramChanged.
bool InsertFeatureBlock(int kind, std::u16string_view code, bool asksWhere = false);
// What the feature list says of it, for as long as that feature stands.
inline constexpr char16_t kFeatureAdded[] = u"Feature added. Select it, then Edit Settings.";
// The feature that was added or updated last, 0 for none.
std::int32_t AddedFeature();
// Whether an update may replace the block under edit: it stands there once, as it was opened. True
// without one. The table is that of the program behind it.
bool LinkedBlockStands();
// Whether the list takes so many more blocks of the program whose table stands. False: the user was
// told in a box of this title.
bool HasRowFor(int blocks, const char16_t* title);
// The same question for what goes to another place: a text index of the program, whose table
// stands. `more` is how many blocks it brings. Caret: it goes there. Split: the user code that
// holds the caret is parted for it, as InsertAtSplit does. Cancelled also where another program
// came up.
Destination AskIfNeverRun(std::int32_t index, int more);
// Asks whether code goes to a place behind the program's end all the same.
bool WantsItNeverRun(const PlaceAround& place);
// Blocks between two halves of the user code that holds the caret, or beside it where one half is
// empty, in one undo step; `lastId` is the largest of their numbers, CR LF stands between them. The
// table is that of the program. False: nothing changed, and the user was told.
bool InsertAtSplit(const std::u16string& block, std::int32_t lastId);
// Plain text over the selection, or with `asBlock` on a line of its own behind the caret's
// line. Undoable. False: nothing changed, as the text is empty, or as a block of line ends alone,
// or the program has no room for it; the user was told of the latter.
bool InsertTextAtCaret(std::u16string_view text, bool asBlock);
// Plain text on lines of its own behind the caret's line, or behind the generated block that holds
// it, as the log says then: one in the middle of another would cut what neither of them says. The
// user is asked where the place is never run. Undoable. False: nothing changed, and the user knows
// why, but for a text that is empty.
bool InsertTextAsBlock(std::u16string_view text);
// The units word, 20 or 21, that is in force where InsertTextAsBlock puts its text; where none
// stands before, the last one of the program. 0: it has none.
std::int32_t UnitsWhereTextGoes();
// The same for a text index of any program's text.
std::int32_t UnitsAt(std::u16string_view text, std::int32_t index);
// Whether a block may leave another unit on than was in force, which is a units word, 0 for none;
// where it does the user is asked, No first. `way` says what to do instead.
bool MaySwitchUnits(std::int32_t before, std::int32_t after, const char16_t* title,
                    std::u16string_view way);
// Says in the log where code behind a block runs in another unit than before; `before` is the units
// word that was in force, 0 for none.
void TellOtherUnit(std::int32_t before, std::u16string_view block);

// The user's caret as a position of the code editor: the start of its line while the command
// words view is on, where the same lines have other words.
int CaretPosition();

void ResetInsertion();

}  // namespace morva
