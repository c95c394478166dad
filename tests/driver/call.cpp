// `call FUNCTION ARGS...`: pure helpers of the application on literals.

#include "app/limits.h"
#include "builders/common/builder_field.h"
#include "builders/wizard/wizard_text.h"
#include "codetools/command_words.h"
#include "codetools/validator.h"
#include "documents/file_text.h"
#include "driver/drive_internal.h"
#include "driver/json_text.h"
#include "library/macro_templates.h"
#include "text/code_writer.h"
#include "text/codetext.h"

namespace drive {

morva::FormValues ReadTyped(std::span<const morva::BuilderField> fields,
                            std::span<const Word> texts, bool metric) {
  morva::FormValues values;
  values.metric = metric;
  int words = 0;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const morva::BuilderField& field = fields[i];
    const std::u16string text = texts[i].text.substr(0, morva::kFieldUnits - 1);
    if (field.kind == morva::RowKind::Words) {
      values.words[words++] = text;
    } else if (field.kind == morva::RowKind::Count) {
      values.numbers[i] = morva::ParseInteger(text, static_cast<std::int32_t>(field.fallback));
    } else {
      values.numbers[i] = morva::ParseDecimal(text, field.fallback);
    }
  }
  return values;
}

std::string Refused(std::u16string_view title, std::u16string_view words) {
  return Json('{')
      .Flag("ok", true)
      .Raw("value", "null")
      .Text("title", title)
      .Text("text", words)
      .Done();
}

namespace {

std::string GoodNumber(double value) {
  std::string json;
  AppendNumber(json, value);
  return Good("value", json);
}

std::string GoodValue(std::u16string_view text) {
  return Json('{').Flag("ok", true).Text("value", text).Done();
}

std::string CallFormatFixed(const Words& words) {
  double value = 0;
  std::int64_t decimals = 0;
  if (words.size() != 3 || !ReadDecimal(words[1], value) ||
      !ReadInteger(words[2], -1000, 1000, decimals)) {
    return Bad(u"expected: call FormatFixed VALUE DECIMALS");
  }
  char16_t text[64] = {};
  morva::FormatFixed(value, static_cast<int>(decimals), text, 64);
  return GoodValue(text);
}

std::string CallParseDecimal(const Words& words) {
  double fallback = 0;
  if (words.size() != 3 || !words[1].quoted || !ReadDecimal(words[2], fallback)) {
    return Bad(u"expected: call ParseDecimal \"text\" FALLBACK");
  }
  return GoodNumber(morva::ParseDecimal(words[1].text, fallback));
}

std::string CallParseInteger(const Words& words) {
  std::int64_t fallback = 0;
  if (words.size() != 3 || !words[1].quoted ||
      !ReadInteger(words[2], INT32_MIN, INT32_MAX, fallback)) {
    return Bad(u"expected: call ParseInteger \"text\" FALLBACK");
  }
  return GoodNumber(morva::ParseInteger(words[1].text, static_cast<std::int32_t>(fallback)));
}

std::string CallAngleDegrees(const Words& words) {
  double y = 0;
  double x = 0;
  if (words.size() != 3 || !ReadDecimal(words[1], y) || !ReadDecimal(words[2], x)) {
    return Bad(u"expected: call AngleDegrees Y X");
  }
  return GoodNumber(morva::AngleDegrees(y, x));
}

std::string CallFindCodeWord(const Words& words) {
  std::int64_t value = 0;
  if (words.size() != 4 || !words[1].quoted || words[2].text.size() != 1 ||
      !ReadInteger(words[3], INT32_MIN, INT32_MAX, value)) {
    return Bad(u"expected: call FindCodeWord \"text\" \"G\" NUMBER");
  }
  const bool found =
      morva::FindCodeWord(words[1].text, words[2].text[0], static_cast<std::int32_t>(value));
  return Good("value", found ? "true" : "false");
}

std::string CallNormaliseOutputText(const Words& words) {
  bool wrap = false;
  if (words.size() != 3 || !words[1].quoted || !ReadFlag(words[2], wrap)) {
    return Bad(u"expected: call NormaliseOutputText \"text\" true|false");
  }
  return GoodValue(FromBytes(morva::NormaliseOutputText(words[1].text, wrap)));
}

std::string GoodConversion(const morva::OwnedText& text) {
  if (!text.units) return Bad(u"there is no memory for the text");
  return GoodValue(text.View());
}

std::string CallCodeToWords(const Words& words) {
  if (words.size() != 2 || !words[1].quoted) return Bad(u"expected: call CodeToWords \"text\"");
  return GoodConversion(morva::CodeToWords(words[1].text));
}

std::string CallWordsToCode(const Words& words) {
  if (words.size() != 2 || !words[1].quoted) return Bad(u"expected: call WordsToCode \"text\"");
  return GoodConversion(morva::WordsToCode(words[1].text));
}

std::string CallMacroText(const Words& words) {
  std::int64_t kind = 0;
  bool metric = false;
  if (words.size() != 3 + morva::kMacroFields ||
      !ReadInteger(words[1], 0, morva::kMacroTemplates - 1, kind) || !ReadFlag(words[2], metric)) {
    return Bad(u"expected: call MacroText KIND true|false \"f1\" ... \"f6\"");
  }
  std::u16string texts[morva::kMacroFields];
  for (std::size_t i = 0; i < std::size(texts); ++i) texts[i] = words[3 + i].text;
  morva::CodeWriter out;
  out.most = morva::kMacroTextUnits - 1;
  morva::WriteMacro(static_cast<int>(kind), texts, metric, out);
  if (out.full)
    return Refused(u"Macro Builder",
                   u"The code is larger than 8191 characters. Nothing was inserted.");
  return GoodValue(out.text);
}

std::string CallWizardText(const Words& words) {
  std::int64_t kind = 0;
  bool metric = false;
  if (words.size() != 3 + morva::kWizardNumbers ||
      !ReadInteger(words[1], 0, morva::kWizardKinds - 1, kind) || !ReadFlag(words[2], metric)) {
    return Bad(u"expected: call WizardText KIND true|false \"f1\" ... \"f10\"");
  }
  const int operation = static_cast<int>(kind);
  const morva::WizardValues values = morva::WizardOf(
      operation, ReadTyped(morva::WizardFields(operation), std::span(words).subspan(3), metric));
  const morva::BuilderFault fault = morva::CheckWizard(values);
  if (fault.words[0]) return Refused(morva::kWizardTitle, fault.words);
  morva::CodeWriter out;
  out.most = morva::WizardRoom();
  morva::WriteWizard(values, out);
  return GoodValue(out.text);
}

struct Function {
  const char16_t* name;
  std::string (*answer)(const Words& words);
};
constexpr Function kFunctions[] = {
    {u"FormatFixed", CallFormatFixed},
    {u"ParseDecimal", CallParseDecimal},
    {u"ParseInteger", CallParseInteger},
    {u"AngleDegrees", CallAngleDegrees},
    {u"FindCodeWord", CallFindCodeWord},
    {u"NormaliseOutputText", CallNormaliseOutputText},
    {u"CodeToWords", CallCodeToWords},
    {u"WordsToCode", CallWordsToCode},
    {u"MacroText", CallMacroText},
    {u"WizardText", CallWizardText},
    {u"ShapeText", CallShapeText},
    {u"CircularText", CallCircularText},
    {u"RectangularText", CallRectangularText},
    {u"CircleSegments", CallCircleSegments},
    {u"SpiralPoints", CallSpiralPoints},
};

}  // namespace

std::string AnswerCall(const Words& words) {
  if (words.empty()) return Bad(u"expected: call FUNCTION ARGS...");
  for (const Function& function : kFunctions) {
    if (words[0].text == function.name) return function.answer(words);
  }
  return Bad(u"unknown function");
}

}  // namespace drive
