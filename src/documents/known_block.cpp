#include "documents/known_block.h"

#include "documents/feature_blocks.h"

namespace morva {

namespace {

bool IsOfKind(int row, std::int32_t kind) { return features.rows[row].settings.kind == kind; }

}  // namespace

void NoteBlock(KnownBlock& known, std::int32_t id, std::uint32_t codeHash) {
  // What came from a file has no number yet.
  if (known.id != 0 && known.id != id) known = {};
  if (known.codeHash != 0 && known.codeHash != codeHash) {
    AddFormerHash(known.former, known.codeHash);
  }
  known.id = id;
  known.codeHash = codeHash;
}

int RowOfBlock(const KnownBlock& known, std::int32_t kind) {
  const int row = known.id != 0 ? FindFeature(known.id) : -1;
  if (row >= 0 && IsOfKind(row, kind) && WasCodeOf(known, features.rows[row].settings.codeHash))
    return row;
  if (known.codeHash == 0) return -1;
  return FirstRowOf(kind,
                    [&](const FeatureRecord& r) { return r.settings.codeHash == known.codeHash; });
}

bool WasCodeOf(const KnownBlock& known, std::uint32_t codeHash) {
  return codeHash == known.codeHash || HasFormerHash(known.former, codeHash);
}

}  // namespace morva
