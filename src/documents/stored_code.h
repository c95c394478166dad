// Which stored code belongs to which excluded block of a text.
//
// A number alone does not tell it: a block that was pasted, or whose number was rewritten, may name
// the code of another one. All functions are pure but for the lists that they are given.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "documents/disabled_code.h"
#include "documents/feature_blocks.h"

namespace morva {

// A DISABLED marker, any case, wherever it stands in the text.
struct NumberedMarker {
  std::size_t at = 0;        // of its "("
  std::size_t numberAt = 0;  // of the first unit that counts for the number
  std::size_t past = 0;      // behind the number's last digit
  std::int32_t number = 0;
};
// The first one with a number at or behind `from`. False: there is none.
bool FindNumberedMarker(std::u16string_view text, std::size_t from, NumberedMarker& marker);

// The numbers that the text names, sorted, each once; those below 1 are left out.
std::vector<std::int32_t> NamedNumbers(std::u16string_view text);
// The largest of them, 0 for none.
std::int32_t LargestNamedNumber(std::u16string_view text);

// Sets the block of every entry to the one whose marker names it: 0 where none does.
void BindToBlocks(DisabledCodeEntry* list, std::u16string_view text);
// Whether the code is this block's for certain: it was taken out of it, or it is what the block's
// settings made.
bool IsCodeOf(const DisabledCodeEntry& entry, const FeatureRecord& row);
// Whether it may be shown for this block: as above, or nothing is known of where it comes from.
bool MayBeCodeOf(const DisabledCodeEntry& entry, const FeatureRecord& row);

// Puts the entries of a ".features" image in front of the list, bound to the blocks of `text`,
// which is the program that they were read with. Where the list holds other code under a number,
// which an Undo may bring back, the entry that was read takes a free number, and its markers in
// `text` too. False: damaged, nothing is changed.
bool TakeDisabledCode(std::string_view bytes, std::u16string& text, DisabledCodeEntry*& list);

// Whether a file holds one more entry of `units`, beside those that the text names or, as their
// numbers are larger than all of its own, is about to name.
bool FeaturesFileHolds(const DisabledCodeEntry* list, std::u16string_view text, std::size_t units);

}  // namespace morva
