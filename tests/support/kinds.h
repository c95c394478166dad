// Kinds of blocks in tests: a made-up writer or builder takes a kind from the one that has it.
#pragma once

#include "documents/feature_operations.h"
#include "documents/insertion.h"

namespace support {

inline void FreeKind(int kind) {
  morva::SetSettingsWriter(kind, nullptr);
  morva::SetBuilderOpener(kind, nullptr);
}
inline void TakeKind(int kind, morva::SettingsWriter writer) {
  morva::SetSettingsWriter(kind, nullptr);
  morva::SetSettingsWriter(kind, writer);
}
inline void TakeKind(int kind, morva::BuilderOpener opener) {
  morva::SetBuilderOpener(kind, nullptr);
  morva::SetBuilderOpener(kind, opener);
}

}  // namespace support
