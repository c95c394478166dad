#include "golden/builder_case.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

#include "app/command_ids.h"
#include "app/commands.h"
#include "documents/feature_settings.h"
#include "library/shapes.h"
#include "platform/file.h"
#include "platform/headless/headless.h"
#include "platform/listing.h"
#include "shell/modes.h"
#include "support/places.h"
#include "text/codetext.h"

namespace golden {

namespace fs = std::filesystem;
using morva::Builder;
using morva::FormRow;
using morva::RowKind;

namespace {

fs::path Root() { return fs::path(support::SourceDir()) / "tests/golden/builders"; }

std::string Trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\r')) text.remove_suffix(1);
  return std::string(text);
}

bool ReadItem(const std::string& text, morva::FeatureItem& item) {
  std::istringstream in(text);
  in >> item.type >> item.tag >> item.p0 >> item.p1 >> item.p2 >> item.p3 >> item.p4;
  return !in.fail() && (in >> std::ws).eof();
}

bool TakeLine(const std::string& line, BuilderCase& read) {
  const std::size_t at = line.find('=');
  if (at == std::string::npos) return false;
  const std::string name = Trimmed(std::string_view(line).substr(0, at));
  const std::string text = Trimmed(std::string_view(line).substr(at + 1));
  if (name == "builder") {
    read.builder = platform::FromUtf8(text);
  } else if (name == "again") {
    read.again.push_back(platform::FromUtf8(text));
  } else if (name == "picture") {
    read.pictureShowsMore = text == "more";
    return read.pictureShowsMore;
  } else if (name == "blocks") {
    read.blocks = std::atoi(text.c_str());
    return read.blocks > 0;
  } else if (name == "picker") {
    read.cancelsPicker = text == "cancel";
    return read.cancelsPicker;
  } else {
    read.settings.push_back({platform::FromUtf8(name), platform::FromUtf8(text)});
  }
  return !name.empty();
}

bool Names(std::u16string_view name, int id, std::u16string_view words) {
  return name == words || name == platform::FromUtf8(std::to_string(id));
}

void ChooseRow(int id, std::u16string_view text) {
  for (int i = 0; i < platform::RowCount(id); ++i) {
    if (platform::RowText(id, i) != text) continue;
    EXPECT_TRUE(headless::SelectRows(id, {i}));
    return;
  }
  ADD_FAILURE() << "no row " << platform::ToUtf8(text) << " in " << id;
}

// A row of check boxes is set by the words of one of them, to "on" or "off".
bool SetCheck(const FormRow& row, const Setting& setting) {
  for (const int id : row.keys) {
    if (id == 0 || !Names(setting.name, id, morva::WordsOf(id))) continue;
    headless::ControlInfo info;
    EXPECT_TRUE(headless::Describe(id, info));
    const bool on = setting.text == u"on";
    EXPECT_TRUE(info.checked == on || headless::Click(id)) << id;
    return true;
  }
  return false;
}

bool SetRow(const FormRow& row, const Setting& setting) {
  if (row.kind == RowKind::Checks) return SetCheck(row, setting);
  const bool named = Names(setting.name, row.id, row.label) ||
                     (row.name[0] && setting.name == std::u16string_view(row.name));
  if (row.id == 0 || !named) return false;
  switch (row.kind) {
    case RowKind::Number:
    case RowKind::Count:
    case RowKind::Words:
      EXPECT_TRUE(headless::TypeInto(row.id, setting.text)) << row.id << " takes no text";
      return true;
    case RowKind::Choice:
    case RowKind::List:
      ChooseRow(row.id, setting.text);
      return true;
    default:
      return false;
  }
}

void SetField(const Builder& builder, const Setting& setting) {
  const unsigned page = morva::PageBit(morva::ReadPage(builder));
  for (const FormRow& row : builder.form->rows) {
    if ((row.pages & page) != 0 && SetRow(row, setting)) return;
  }
  // An editor beside the form, such as that of a name.
  for (int n = 0; const morva::Form* form = morva::FormAt(n); ++n) {
    for (const FormRow& row : form->rows) {
      if (row.id != 0 && platform::IsVisible(row.id) && SetRow(row, setting)) return;
    }
  }
  ADD_FAILURE() << "the form has no row " << platform::ToUtf8(setting.name);
}

// The items as if a block that holds them were opened again.
void PutItems(const Builder& builder, const std::vector<morva::FeatureItem>& items) {
  morva::FeatureSettings record;
  ASSERT_TRUE(morva::StoreBuilder(builder, record));
  ASSERT_LE(items.size(), std::size(record.items));
  record.itemCount = static_cast<std::int32_t>(items.size());
  std::copy(items.begin(), items.end(), record.items);
  ASSERT_TRUE(morva::OpenBuilder(builder, record));
}

// A saved shape of these objects, in inches.
void PutGolden(const std::vector<morva::FeatureItem>& items) {
  morva::SavedShape shape;
  morva::CopyBounded(shape.name, morva::kShapeNameUnits, u"Golden");
  ASSERT_LE(items.size(), std::size(shape.objects));
  for (const morva::FeatureItem& item : items) shape.objects[shape.count++] = morva::ObjectOf(item);
  ASSERT_GE(morva::PutShape(shape), 0);
  morva::RefreshShapeLists();
}

}  // namespace

void PressKey(std::u16string_view name) {
  for (const int id : headless::AllIds()) {
    headless::ControlInfo info;
    if (headless::Describe(id, info) && info.kind == u"button" && Names(name, id, info.text) &&
        headless::Click(id)) {
      return;
    }
  }
  ADD_FAILURE() << "no key to press: " << platform::ToUtf8(name);
}

fs::path CaseFolder(const std::string& name) { return Root() / name; }

std::vector<std::string> CasesWith(std::string_view file) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(Root())) {
    if (fs::exists(entry.path() / file)) names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::u16string CaseText(const std::string& name, std::string_view file) {
  std::ifstream in(CaseFolder(name) / file, std::ios::binary);
  return platform::FromUtf8(
      std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()));
}

void LeaveNew(const std::string& name, std::string_view file, std::u16string_view text) {
  std::ofstream out(CaseFolder(name) / (std::string(file) + ".new"), std::ios::binary);
  out << platform::ToUtf8(text);
}

BuilderCase ReadCase(const std::string& name) {
  BuilderCase read;
  std::istringstream in(platform::ToUtf8(CaseText(name, "fields.txt")));
  for (std::string line; std::getline(in, line);) {
    if (Trimmed(line).empty() || line[0] == '#') continue;
    EXPECT_TRUE(TakeLine(line, read)) << line;
  }
  EXPECT_FALSE(read.builder.empty()) << "no line \"builder = WORDS\"";
  return read;
}

const Builder* BuilderOfWords(std::u16string_view words) {
  for (int i = 0; const Builder* builder = morva::BuilderAt(i); ++i) {
    if (words == morva::WordsOf(builder->insertKey)) return builder;
  }
  return nullptr;
}

void BringUp(const Builder& builder) {
  const int mode = builder.modeOf ? builder.modeOf(morva::FormValues()) : builder.mode;
  if (mode >= 0) morva::SetMode(mode);
}

void SetUpCase(const BuilderCase& wanted, const Builder& builder) {
  BringUp(builder);
  std::vector<morva::FeatureItem> items;
  std::vector<morva::FeatureItem> saved;
  for (const Setting& setting : wanted.settings) {
    if (setting.name == u"item" || setting.name == u"shape") {
      const std::string text = platform::ToUtf8(setting.text);
      EXPECT_TRUE(ReadItem(text, (setting.name == u"item" ? items : saved).emplace_back())) << text;
      continue;
    }
    if (!items.empty()) PutItems(builder, items);
    if (!saved.empty()) PutGolden(saved);
    items.clear();
    saved.clear();
    if (setting.name == u"press") {
      PressKey(setting.text);
    } else if (setting.name == u"mode") {
      ChooseRow(morva::kIdModeList, setting.text);
    } else {
      SetField(builder, setting);
    }
  }
  EXPECT_TRUE(items.empty()) << "items stand before fields";
}

morva::FormValues ValuesOf(const Builder& builder) {
  morva::FormValues values;
  morva::ReadForm(*builder.form, morva::ReadPage(builder), builder.reading, values);
  return values;
}

std::u16string CodeOf(const Builder& builder, const morva::FormValues& values) {
  morva::CodeWriter out;
  out.most = builder.room ? builder.room(values) : morva::kMaxBuilderText;
  builder.write(values, out);
  EXPECT_FALSE(out.full);
  return out.text;
}

}  // namespace golden
