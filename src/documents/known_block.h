// The block of a program that a drawing or a plate was opened from or sent as.
#pragma once

#include <cstdint>

#include "documents/former_hashes.h"

namespace morva {

struct KnownBlock {
  std::int32_t id = 0;         // 0: none, or one that is known by its code alone
  std::uint32_t codeHash = 0;  // of its code as it was opened or sent; 0: none
  FormerHashes former = {};    // of its code before its updates, which may be undone
};

// It was opened, or sent as this code. Behind an update the former code stays known.
void NoteBlock(KnownBlock& known, std::int32_t id, std::uint32_t codeHash);
// Its row in the program that was scanned last, also behind the undo of its updates; else the first
// of the kind with its code. -1: none of the program.
int RowOfBlock(const KnownBlock& known, std::int32_t kind);
// Its code was so when it was opened or sent, or before one of its updates.
bool WasCodeOf(const KnownBlock& known, std::uint32_t codeHash);

}  // namespace morva
