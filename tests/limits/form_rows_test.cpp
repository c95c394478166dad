// Tables of forms: the program as it starts leaves room in each.
#include <gtest/gtest.h>

#include <set>

#include "app/limits.h"
#include "cad/model/cad_form.h"
#include "forms/form.h"
#include "support/workbench.h"

namespace morva {
namespace {

struct FormRowLimits : support::Workbench {};

TEST_F(FormRowLimits, FormsAndTheirRowsHaveRoom) {
  int forms = 0;
  int rows = 0;
  std::set<const Sheet*> sheets;
  for (; const Form* form = FormAt(forms); ++forms) {
    rows += static_cast<int>(form->rows.size());
    if (form->sheet) sheets.insert(form->sheet);
  }
  EXPECT_GE(forms, 4);
  EXPECT_LT(forms, kMaxForms);
  EXPECT_LT(rows, kMaxFormRows);
  EXPECT_LT(static_cast<int>(sheets.size()), kMaxSheets);
}

TEST_F(FormRowLimits, RowsHaveRoomForTheirKeysAndTexts) {
  static_assert(kMaxRowKeys == 6 && kMaxFormWords == 8 && kMaxFormNumbers == 32 &&
                kMaxFormChoices == 8);
  for (int n = 0; const Form* form = FormAt(n); ++n) {
    for (const FormRow& row : form->rows) {
      EXPECT_LT(row.words, kMaxFormWords);
      EXPECT_LT(row.value, static_cast<int>(std::size(FormValues().numbers)));
      EXPECT_LT(row.choice, static_cast<int>(std::size(FormValues().choices)));
      bool ended = false;
      for (int i = 0; i < kMaxRowKeys; ++i) {
        EXPECT_FALSE(ended && row.keys[i] != 0) << row.keys[i];
        ended = ended || row.keys[i] == 0;
      }
    }
  }
}

TEST_F(FormRowLimits, TabReachesEveryControlOfTheCadSurface) {
  static_assert(kMaxTabStops == 160);
  int ids[kMaxTabStops];
  // Keys and lists of the surface come before.
  EXPECT_LT(FormOrder(kCadForm, ids, kMaxTabStops), kMaxTabStops - 60);
}

}  // namespace
}  // namespace morva
