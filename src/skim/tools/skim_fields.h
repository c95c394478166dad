// The wizard's fields and lists, and the live plan: out of one into the other.
#pragma once

#include "skim/model/plan.h"

namespace morva {

// Every field and list from the live plan.
void FillSkimForm();
// The stock's place alone: edges, surface, and the fields that place it.
void FillSkimPlace();
// Only the fields that place it; the one with the keyboard stays as it is.
void ShowSkimPlace();
// The lists alone, as the plan says.
void ShowSkimChoices();
// The list of strategies alone.
void ShowSkimStrategy();
// Notes what the form says where it does not read as a plan, for a surface that is left; and puts
// it back into the filled form, in the plan's unit.
void KeepSkimTexts();
void PutSkimTextsBack();
// Rows of the tools' list, from the library.
void FillSkimTools();
// The row of the tools' list that the plan's tool stands in, none for a number without a tool.
void ShowSkimTool(double number);
// The row of the tool whose number its field says.
void FollowSkimToolNumber();

// Reads the form and takes it as the live plan where it passes. False: the live plan stays; unless
// `quiet`, a box says why, and what is to be mended gets the keyboard.
bool ReadSkimForm(bool quiet);
// The same for a plan that did not come out of the form.
bool TakeSkimPlan(const SkimPlan& plan, bool quiet);
// The numbers that place the stock, as its fields say them.
struct SkimPlace {
  double x = 0;
  double y = 0;
  double zTop = 0;
  double thickness = 0;
};
// False: one does not read, or the thickness is not positive.
bool ReadSkimPlace(SkimPlace& place);

// Brings the page up that holds a field, or the list of strategies for kNoSkimField, and gives it
// the keyboard. Set by the panel.
void SetSkimFieldShower(void (*show)(int field));

}  // namespace morva
