// Import of operations: the text to insert, from a source program and a choice of its blocks.
//
// Pure functions of their arguments but for the number of stored code, which a caller's copy
// function gives. All or nothing: where one block cannot be taken there is no text at all.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/limits.h"
#include "documents/disabled_code.h"
#include "documents/feature_blocks.h"

namespace morva {

// The features of a source as they were when it was loaded.
struct ImportSource {
  std::u16string text;  // line ends CR LF, every block with its markers
  int count = 0;
  FeatureRecord rows[kMaxFeatures];
};

// Takes a source over as the tagger would leave it in the editor and scans it. The feature
// table is the source's afterwards.
void LoadImportSource(std::u16string_view text, ImportSource& source);

// Whether a chosen operation is known to be in other units than `units`, 20 for inches or 21 for
// millimeters. What counts is the last G20 or G21 in it, in its code in `stored` where it is
// excluded, else before it; where there is none its units are not known.
bool HasOtherUnits(const ImportSource& source, const bool (&chosen)[kMaxFeatures],
                   std::int32_t units, const DisabledCodeEntry* stored);

// Copies the stored code `number` of a source's block into the target, where the block has the id
// `into`; its new number, 0 where there is none, it is not that block's, or it cannot be stored.
using StoredCodeCopy = std::int32_t (*)(void* context, std::int32_t number,
                                        const FeatureRecord& row, std::int32_t into);

enum class ImportBuild {
  Done,
  StoredCodeMissing,
  Impossible,  // a block without markers, or the numbers for ids are used up
};

// Every chosen block in order, ids counting from `firstId`, CR LF behind each block. An id is
// passed over where its closing marker stands within the block's lines. `text` is empty unless
// the answer is Done.
ImportBuild BuildImportText(const ImportSource& source, const bool (&chosen)[kMaxFeatures],
                            std::int32_t firstId, StoredCodeCopy copy, void* context,
                            std::u16string& text);

}  // namespace morva
