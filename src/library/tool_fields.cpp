#include "library/tool_fields.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "text/codetext.h"
#include "text/length_units.h"
#include "text/strict_number.h"

namespace morva {

namespace {

constexpr int kLengthDecimals = 3;
constexpr int kFeedDecimals = 2;
constexpr double kTooMuch = 1000000;  // numbers stay below it
constexpr std::int32_t kLastNumber = 999;
constexpr std::int32_t kUsualRpm = 5000;
constexpr double kLeastKept = 0.00005;  // inches, or a minute; less is 0 in the settings file
constexpr int kUnitPresses = 2;  // of unit keys, after which a shown number stays as it is
constexpr char16_t kGeometryTitle[] = u"Tool geometry";
constexpr char16_t kBuilderTitle[] = u"Tool Builder";

constexpr const char16_t* kCoolants[] = {u"None", u"Flood M08", u"Shower M07"};

// A field with what it starts with, in each unit.
struct FieldRow {
  const char16_t* label;
  const char16_t* inch;
  const char16_t* mm;
};
// clang-format off
constexpr FieldRow kRows[] = {
    {u"Tool #", u"1", u"1"},
    {u"Name", u"1/2 END MILL", u"1/2 END MILL"},
    {u"Type", u"", u""},
    {u"Diameter", u"0.500", u"12.700"},
    {u"Flutes", u"4", u"4"},
    {u"Gauge length", u"3.000", u"76.200"},
    {u"Stickout", u"1.500", u"38.100"},
    {u"H offset", u"1", u"1"},
    {u"D offset", u"1", u"1"},
    {u"Max RPM", u"5000", u"5000"},
    {u"Feed", u"12.0", u"304.80"},
    {u"Plunge", u"5.0", u"127.00"},
    {u"Coolant", u"", u""},
    {u"Notes", u"", u""},
};
// clang-format on
static_assert(std::size(kRows) == kToolFields);

const FieldRow& RowOf(ToolField field) { return kRows[static_cast<int>(field)]; }

// What counts of a number's text.
std::u16string_view Typed(const ToolTexts& texts, ToolField field) {
  return std::u16string_view(texts[field]).substr(0, kFieldUnits - 1);
}

double DecimalOf(const ToolTexts& texts, ToolField field, double fallback) {
  return ParseDecimal(Typed(texts, field), fallback);
}

std::int32_t IntegerOf(const ToolTexts& texts, ToolField field, std::int32_t fallback) {
  return ParseInteger(Typed(texts, field), fallback);
}

// In inches. Without a number the value of a new tool counts.
double LengthOf(const ToolTexts& texts, ToolField field, bool metric) {
  const double usual = ParseDecimal(metric ? RowOf(field).mm : RowOf(field).inch, 0);
  const double value = DecimalOf(texts, field, usual);
  return metric ? value / kMmPerInch : value;
}

// Whether the text is what the form shows of a number of inches, at first or after its unit keys
// rounded it on the way there and back.
bool Shows(std::u16string_view text, double inches, int decimals, bool metric) {
  for (const bool shownMetric : {false, true}) {
    std::u16string shown = FixedText(inches * (shownMetric ? kMmPerInch : 1), decimals);
    bool unit = shownMetric;
    for (int presses = 0; presses <= kUnitPresses; ++presses) {
      if (unit == metric && text == shown) return true;
      unit = !unit;
      shown = FixedText(ParseDecimal(shown, 0) * (unit ? kMmPerInch : kInchPerMm), decimals);
    }
  }
  return false;
}

void KeepWhatStillShows(const ToolTexts& texts, bool metric, const ToolRecord& before,
                        ToolRecord& tool) {
  struct Kept {
    ToolField field;
    double ToolRecord::*number;
    int decimals;
  };
  constexpr Kept kKept[] = {{ToolField::Diameter, &ToolRecord::diameter, kLengthDecimals},
                            {ToolField::GaugeLength, &ToolRecord::gaugeLength, kLengthDecimals},
                            {ToolField::Stickout, &ToolRecord::stickout, kLengthDecimals},
                            {ToolField::Feed, &ToolRecord::feed, kFeedDecimals},
                            {ToolField::Plunge, &ToolRecord::plunge, kFeedDecimals}};
  for (const Kept& kept : kKept) {
    const double number = before.*kept.number;
    if (Shows(texts[kept.field], number, kept.decimals, metric)) tool.*kept.number = number;
  }
}

bool IsWhole(ToolField field) {
  constexpr ToolField kWhole[] = {ToolField::Number, ToolField::Flutes, ToolField::HOffset,
                                  ToolField::DOffset, ToolField::MaxRpm};
  return std::ranges::find(kWhole, field) != std::end(kWhole);
}

bool IsNumber(ToolField field) {
  return field != ToolField::Name && field != ToolField::Type && field != ToolField::Coolant &&
         field != ToolField::Notes;
}

// Whether a measure is above nothing, as it will be stored, and below what is refused.
bool IsUsable(const ToolTexts& texts, ToolField field, bool metric) {
  const double value = DecimalOf(texts, field, 0);
  if (!(value > 0 && value < kTooMuch)) return false;
  if (field == ToolField::MaxRpm) return IntegerOf(texts, field, kUsualRpm) > 0;
  return value / (metric ? kMmPerInch : 1) >= kLeastKept;
}

ToolRefusal CheckMeasures(const ToolTexts& texts, bool metric) {
  constexpr ToolField kMeasures[] = {ToolField::Diameter, ToolField::GaugeLength,
                                     ToolField::Stickout, ToolField::Feed,
                                     ToolField::Plunge,   ToolField::MaxRpm};
  for (const ToolField field : kMeasures) {
    if (Typed(texts, field).find(u',') != std::u16string_view::npos) {
      return {.title = kGeometryTitle,
              .words =
                  u"A comma is no decimal point here. Write 12.7, not 12,7. Nothing was "
                  u"stored.",
              .field = field};
    }
    if (IsUsable(texts, field, metric)) continue;
    return {.title = kGeometryTitle,
            .words = u"Dimensions, speeds and feeds must be positive finite numbers.",
            .field = field};
  }
  if (DecimalOf(texts, ToolField::Stickout, 0) > DecimalOf(texts, ToolField::GaugeLength, 0)) {
    return {.title = kGeometryTitle,
            .words = u"Stickout cannot exceed gauge length.",
            .field = ToolField::Stickout};
  }
  const std::int32_t flutes = IntegerOf(texts, ToolField::Flutes, 0);
  if (flutes >= 1 && flutes <= kMaxFlutes) return {};
  return {.title = kGeometryTitle,
          .words = u"Enter a flute count from 1 to 64.",
          .field = ToolField::Flutes};
}

}  // namespace

const char16_t* ToolFieldLabel(ToolField field) { return RowOf(field).label; }

std::span<const char16_t* const> CoolantRows() { return kCoolants; }

ToolTexts NewToolTexts(bool metric) {
  ToolTexts texts;
  for (int i = 0; i < kToolFields; ++i) texts.texts[i] = metric ? kRows[i].mm : kRows[i].inch;
  return texts;
}

ToolTexts TextsOfTool(const ToolRecord& tool, bool metric) {
  const double unit = metric ? kMmPerInch : 1;
  ToolTexts texts;
  texts[ToolField::Number] = IntegerText(tool.number);
  texts[ToolField::Name] = tool.name;
  texts[ToolField::Diameter] = FixedText(tool.diameter * unit, kLengthDecimals);
  texts[ToolField::Flutes] = IntegerText(tool.flutes);
  texts[ToolField::GaugeLength] = FixedText(tool.gaugeLength * unit, kLengthDecimals);
  texts[ToolField::Stickout] = FixedText(tool.stickout * unit, kLengthDecimals);
  texts[ToolField::HOffset] = IntegerText(tool.hOffset);
  texts[ToolField::DOffset] = IntegerText(tool.dOffset);
  texts[ToolField::MaxRpm] = IntegerText(tool.maxRpm);
  texts[ToolField::Feed] = FixedText(tool.feed * unit, kFeedDecimals);
  texts[ToolField::Plunge] = FixedText(tool.plunge * unit, kFeedDecimals);
  texts[ToolField::Notes] = tool.notes;
  texts.typeRow = ToolTypeRow(tool.type);
  texts.coolantRow = tool.coolant;
  return texts;
}

ToolRefusal CheckTool(const ToolTexts& texts, bool isNew, bool metric) {
  const ToolRefusal measures = CheckMeasures(texts, metric);
  if (measures.words[0]) return measures;
  const std::int32_t number = IntegerOf(texts, ToolField::Number, 0);
  if (number < 1 || number > kLastNumber) {
    return {kBuilderTitle, u"Enter a tool number from 1 to 999.", platform::BoxIcon::Warning,
            ToolField::Number};
  }
  if (texts[ToolField::Name].empty()) {
    return {kBuilderTitle, u"Give the tool a descriptive name.", platform::BoxIcon::Warning,
            ToolField::Name};
  }
  if (isNew && toolLibrary.count >= kMaxTools) {
    return {kBuilderTitle, u"The tool library is full (64 tools).", platform::BoxIcon::Error,
            ToolField::Number};
  }
  return {};
}

ToolRecord ToolOfTexts(const ToolTexts& texts, bool metric, const ToolRecord* before) {
  ToolRecord tool;
  const auto types = ToolTypes();
  const auto row = static_cast<std::size_t>(texts.typeRow);  // -1 is past the end
  tool.number = IntegerOf(texts, ToolField::Number, 0);
  CopyBounded(tool.name, kToolNameUnits, texts[ToolField::Name]);
  CopyBounded(tool.type, kToolTypeUnits, types[row < types.size() ? row : 0]);
  tool.diameter = LengthOf(texts, ToolField::Diameter, metric);
  tool.flutes = IntegerOf(texts, ToolField::Flutes, 4);
  tool.gaugeLength = LengthOf(texts, ToolField::GaugeLength, metric);
  tool.stickout = LengthOf(texts, ToolField::Stickout, metric);
  tool.hOffset = IntegerOf(texts, ToolField::HOffset, tool.number);
  tool.dOffset = IntegerOf(texts, ToolField::DOffset, tool.number);
  tool.maxRpm = IntegerOf(texts, ToolField::MaxRpm, kUsualRpm);
  tool.feed = LengthOf(texts, ToolField::Feed, metric);
  tool.plunge = LengthOf(texts, ToolField::Plunge, metric);
  tool.coolant = texts.coolantRow >= 0 ? texts.coolantRow : 1;
  CopyBounded(tool.notes, kToolNotesUnits, texts[ToolField::Notes]);
  if (before) KeepWhatStillShows(texts, metric, *before, tool);
  return tool;
}

std::u16string PartlyRead(const ToolTexts& typed, const ToolTexts& kept) {
  std::u16string fields;
  for (int i = 0; i < kToolFields; ++i) {
    const auto field = static_cast<ToolField>(i);
    std::u16string_view text = Typed(typed, field);
    text.remove_prefix(std::min(text.find_first_not_of(u" \t"), text.size()));
    double number = 0;
    if (!IsNumber(field) || text.empty()) continue;
    if (ReadStrict(text, {.blanksBehind = true}, number) == Misread::None &&
        (!IsWhole(field) || number == ParseDecimal(kept[field], 0))) {
      continue;
    }
    fields += (fields.empty() ? u"" : u", ") + (ToolFieldLabel(field) + (u" " + kept[field]));
  }
  return fields;
}

}  // namespace morva
