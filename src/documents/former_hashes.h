// What a block's code was before its last updates, which the user may undo.
#pragma once

#include <algorithm>
#include <cstdint>

#include "app/limits.h"

namespace morva {

// The newest kMaxFormerHashes that differ; a further one takes the place of the oldest.
struct FormerHashes {
  std::uint32_t hashes[kMaxFormerHashes] = {};
  int count = 0;
  int next = 0;  // the place of the next one
};

inline bool HasFormerHash(const FormerHashes& former, std::uint32_t hash) {
  const auto* end = former.hashes + former.count;
  return std::find(former.hashes, end, hash) != end;
}

inline void AddFormerHash(FormerHashes& former, std::uint32_t hash) {
  if (HasFormerHash(former, hash)) return;
  former.hashes[former.next] = hash;
  former.next = (former.next + 1) % kMaxFormerHashes;
  former.count = std::min(former.count + 1, kMaxFormerHashes);
}

}  // namespace morva
