#include "cad/model/cut_data.h"

#include "cad/model/cad_form.h"
#include "text/codetext.h"
#include "text/length_units.h"

namespace morva {

namespace {

template <typename NumberOf>
CutData FromFields(NumberOf numberOf) {
  FormValues values;
  for (const FormRow& row : kCadForm.rows) {
    if (IsCutField(row)) values.numbers[row.value] = numberOf(row);
  }
  return CutDataOf(values.numbers);
}

}  // namespace

CutData CutDataOf(const double* numbers) {
  return {numbers[kSketchDepth], numbers[kSketchFeed], numbers[kSketchSafeZ]};
}

void PutCutData(const CutData& cut, double* numbers) {
  numbers[kSketchDepth] = cut.depth;
  numbers[kSketchFeed] = cut.feed;
  numbers[kSketchSafeZ] = cut.safeZ;
}

CutData StartCutData(bool metric) {
  const double factor = metric ? kMmPerInch : 1;
  return FromFields([factor](const FormRow& row) { return ParseDecimal(row.start, 0) * factor; });
}

CutData ShownCutData() {
  // A record keeps 0 for a field without a number; the row's fallback is what is cut.
  return FromFields([](const FormRow& row) { return FieldNumber(row.id, 0); });
}

void ShowCutData(const CutData& cut, int decimals) {
  FormValues values;
  PutCutData(cut, values.numbers);
  ShowForm(kCadForm, kPanelCutData, values, decimals);
}

}  // namespace morva
