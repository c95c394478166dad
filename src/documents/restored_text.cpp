#include "documents/restored_text.h"

namespace morva {

namespace {

RestoredTest restored = nullptr;

}  // namespace

void SetRestoredTest(RestoredTest test) { restored = test; }

bool IsRestored(std::u16string_view text, std::size_t at) { return restored && restored(text, at); }

}  // namespace morva
