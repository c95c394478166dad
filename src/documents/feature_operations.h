// Feature operations: what the feature list's rows can do with the blocks of a program.
//
// Every operation that changes code is an undoable edit of the text, and the table is scanned
// anew behind it. Hide, lock and isolate are no code at all: they live with the tab and touch
// no machine word. A block's identity is its id; every operation starts from the selected
// row's id and does nothing without one.
#pragma once

#include <cstdint>
#include <string_view>

#include "documents/block_text.h"
#include "documents/feature_settings.h"

namespace morva {

// Id behind the selected row, 0 for none.
std::int32_t SelectedFeatureId();

// Selects the block in the editor and scrolls it into view.
void SelectFeature();
// Reopens the block in its builder; the FeatureHint or a box says why where that cannot be.
void EditFeature();
// 1 to 80 characters from blank to tilde without parentheses, for an unlocked block of more than
// one line. Anything but Done: refused, nothing changed. NoRoom: the program would grow too large,
// which a box has said.
enum class RenameAnswer { Done, Refused, OneLine, NoRoom };
RenameAnswer RenameFeature(std::u16string_view name);
// What the user is told where the block stands on one line.
inline constexpr char16_t kOneLineWords[] =
    u"This block is on one line. Put its END marker on a line of its own to name it.";
bool IsFeatureName(std::u16string_view name);
// Asks, then removes the block's text. Nothing for a locked block.
void DeleteFeature();
// Takes the block's machine code out of the program, or puts it back.
void ToggleInclude();
void ToggleFeatureHide();
void ToggleFeatureLock();
// The popup of the feature list, at main-window pixels, for the selected row.
void ShowFeatureMenu(int x, int y);
// The include key's words and the name box, after a selection.
void UpdateFeatureCaptions();
// The include key's words alone.
void ShowInclusion(Inclusion inclusion);

// The link to a block as if its builder had opened it. False: the block is not there just once, or
// its code was edited by hand.
bool LinkFeature(std::int32_t id);
// The user wants to insert what this block holds already.
enum class TwinAnswer { Update, Another, Nothing };
TwinAnswer AskAboutTwin(const char16_t* title, std::int32_t id);

// The builder that reopens a kind. `record` is the block's settings; for kinds 1 to 3 whose
// shape lives in the block's own items, `a` is already the library's index. False: it could
// not be opened. An unknown kind stops the program with words, and so does one
// that has another builder. Null gives the kind back.
using BuilderOpener = bool (*)(const FeatureSettings& record);
void SetBuilderOpener(int kind, BuilderOpener opener);
// The shape library's half of recovering a project shape: its index for the record's items,
// an entry added at need, or -1 when it is full.
void SetShapeRecovery(int (*recover)(const FeatureSettings& record));

void RegisterFeatureCommands();
void ResetFeatureOperations();

}  // namespace morva
