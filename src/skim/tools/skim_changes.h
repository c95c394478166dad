// What follows where the user typed or chose something in the wizard.
#pragma once

namespace morva {

void SkimChanged(int id);

}  // namespace morva
