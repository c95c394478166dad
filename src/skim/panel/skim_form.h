// The form of the guided skim: four pages in one table, and the panes below.
#pragma once

#include "forms/form.h"
#include "forms/sheet.h"

namespace morva {

// Pages of the form by what the user chose: two of the wizard's pages come in two kinds.
enum SkimFormPage : int {
  kSkimStockForm,
  kSkimPlacingForm,  // with the fields that place the stock
  kSkimCutterForm,
  kSkimCountForm,  // a number of passes
  kSkimTotalForm,  // a depth in all
  kSkimReviewForm,
};

// What stands below it, each on a page of its own.
enum SkimPane : int { kSkimCodePane, kSkimMatrixPane };

extern const Sheet kSkimSheet;
extern const Form kSkimForm;
extern const Form kSkimPanes;

// The first control of the page that is up, for the keyboard.
int FirstOfSkimPage();
// The wizard's page that a field stands on, a SkimField.
int SkimPageOf(int field);

}  // namespace morva
