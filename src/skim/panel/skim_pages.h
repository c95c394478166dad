// The wizard's pages: forward over what reads as a plan, back at any time.
#pragma once

namespace morva {

// Brings a page up; the keyboard goes to its first control.
void ShowSkimPage(int page);
void RegisterSkimPages();

}  // namespace morva
