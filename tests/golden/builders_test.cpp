// Every case of tests/golden/builders on the whole application, and what holds for every builder.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "app/commands.h"
#include "app/hooks.h"
#include "documents/edit_link.h"
#include "documents/insertion.h"
#include "documents/tab_table.h"
#include "golden/builder_case.h"
#include "golden/picture_meets_path.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/window.h"
#include "shell/modes.h"
#include "simulator/extract.h"
#include "support/groove.h"
#include "support/workbench.h"

namespace golden {
namespace {

using morva::Builder;
using morva::FeatureSettings;
using morva::FormRow;
using morva::FormValues;
using morva::RowKind;

constexpr double kShownAgain = 5e-7;  // a record's numbers come into the form with 6 decimals

struct Builders : support::Workbench {
  void SetUp() override {
    support::Workbench::SetUp();
    // A builder that asks where its block goes is told: at the caret.
    morva::SetDestinationPicker(nullptr);
  }
};

struct BuilderCases : Builders, testing::WithParamInterface<std::string> {
  void SetUp() override {
    Builders::SetUp();
    wanted = ReadCase(GetParam());
    // Only a test knows the groove.
    if (wanted.builder == support::groove::kCommands[0].words) support::groove::Join();
    builder = BuilderOfWords(wanted.builder);
    ASSERT_NE(builder, nullptr) << "no builder has this key: " << platform::ToUtf8(wanted.builder);
    SetUpCase(wanted, *builder);
  }
  std::u16string File(std::string_view file) const { return CaseText(GetParam(), file); }
  void ExpectFile(std::string_view file, const std::u16string& text) const {
    EXPECT_EQ(platform::ToUtf8(text), platform::ToUtf8(File(file)));
    if (text != File(file)) LeaveNew(GetParam(), file, text);
  }

  BuilderCase wanted;
  const Builder* builder = nullptr;
};

// Names for the two kinds of cases.
struct ProgramCases : BuilderCases {};
struct RefusalCases : BuilderCases {};

morva::Picture& PictureOf(const Builder& builder, const FormValues& values) {
  static morva::Picture picture;
  morva::ClearPicture(picture, values.metric);
  builder.draw(values, picture);
  return picture;
}

TEST_P(ProgramCases, WriteTheirCodeAndDrawTheirPicture) {
  const FormValues values = ValuesOf(*builder);
  morva::Refusal refusal;
  if (builder->check) {
    EXPECT_TRUE(builder->check(values, refusal)) << platform::ToUtf8(refusal.words);
  }
  ExpectFile("program.nc", CodeOf(*builder, values));
  if (builder->draw) {
    ExpectFile("picture.txt", morva::PictureText(PictureOf(*builder, values)));
  } else {
    EXPECT_EQ(File("picture.txt"), u"") << "the builder draws nothing";
  }
}

TEST_P(ProgramCases, CutWhatTheyDraw) {
  if (!builder->draw) return;
  static std::vector<morva::MotionPoint> points(morva::kMaxMotionPoints);
  static morva::MotionPath path{points.data()};
  const FormValues values = ValuesOf(*builder);
  morva::ExtractInto(path, CodeOf(*builder, values), {.metric = values.metric});
  ASSERT_LT(path.fullAtLine, 0);
  for (const std::string& difference :
       Differences(PictureOf(*builder, values), path, wanted.pictureShowsMore)) {
    ADD_FAILURE() << difference;
  }
}

// What the fields of the page that is up say: numbers as they count, lists by their row.
std::vector<double> FieldsOf(const Builder& builder) {
  std::vector<double> fields;
  const unsigned page = morva::PageBit(morva::ReadPage(builder));
  for (const FormRow& row : builder.form->rows) {
    if ((row.pages & page) == 0) continue;
    if (row.kind == RowKind::Choice) fields.push_back(platform::SelectedRow(row.id));
    if (row.kind == RowKind::Number || row.kind == RowKind::Count) {
      fields.push_back(morva::FieldNumber(row.id));
    }
  }
  return fields;
}

void ExpectSame(const std::vector<double>& again, const std::vector<double>& fields) {
  ASSERT_EQ(again.size(), fields.size());
  for (std::size_t i = 0; i < fields.size(); ++i) {
    EXPECT_NEAR(again[i], fields[i], kShownAgain) << "field " << i;
  }
}

// A number of up to five digits and six decimals, as a user could type it.
std::string RandomNumber(std::mt19937& random, bool whole) {
  std::uniform_int_distribution<int> front(0, 99999);
  std::uniform_int_distribution<int> decimals(0, 6);
  std::uniform_int_distribution<int> digit('0', '9');
  std::string text = std::to_string(front(random));
  if (whole) return text;
  if (random() % 2 == 0) text.insert(0, 1, '-');
  const int count = decimals(random);
  if (count > 0) text += '.';
  for (int i = 0; i < count; ++i) text += static_cast<char>(digit(random));
  return text;
}

// Fills the page with random values and tells what its numbers are, by the C library's reading.
void FillForm(const Builder& builder, std::mt19937& random, FormValues& typed) {
  const unsigned page = morva::PageBit(morva::ReadPage(builder));
  std::set<int> places;
  for (const FormRow& row : builder.form->rows) {
    if ((row.pages & page) == 0) continue;
    if (row.kind == RowKind::Choice && row.choice >= 0) {
      const int chosen =
          static_cast<int>(random() % static_cast<unsigned>(platform::RowCount(row.id)));
      platform::SelectRow(row.id, chosen);
      typed.choices[row.choice] = chosen;
    }
    if ((row.kind != RowKind::Number && row.kind != RowKind::Count) || row.value < 0) continue;
    EXPECT_TRUE(places.insert(row.value).second) << "two fields in place " << row.value;
    const std::string text = RandomNumber(random, row.kind == RowKind::Count);
    platform::SetText(row.id, platform::FromUtf8(text));
    typed.numbers[row.value] = std::strtod(text.c_str(), nullptr);
  }
}

TEST_P(ProgramCases, ReopenWithTheirFieldsAndUpdateInPlace) {
  const std::vector<double> fields = FieldsOf(*builder);
  ASSERT_TRUE(headless::Click(builder->insertKey));
  const std::u16string inserted = Text();
  EXPECT_NE(inserted.find(File("program.nc")), std::u16string::npos);
  if (builder->kind == 0) return;
  const int row = platform::SelectedRow(morva::kIdFeatureList);
  ASSERT_GE(row, 0);
  std::mt19937 random(20260403);
  FormValues other;
  FillForm(*builder, random, other);
  morva::Call(morva::hooks.setSurface, static_cast<int>(morva::kSurfaceCode));
  morva::SetMode(morva::kModeHome);
  ASSERT_TRUE(headless::SelectRows(morva::kIdFeatureList, {row}));
  ASSERT_TRUE(headless::Click(morva::kIdFeatureEdit));
  EXPECT_EQ(morva::editLink.kind, builder->kind);
  ExpectSame(FieldsOf(*builder), fields);
  ASSERT_TRUE(headless::Click(builder->insertKey));
  EXPECT_EQ(platform::ToUtf8(Text()), platform::ToUtf8(inserted));
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

std::vector<unsigned char> BytesOf(const Builder& builder) {
  FeatureSettings record;
  EXPECT_TRUE(morva::StoreBuilder(builder, record));
  std::vector<unsigned char> bytes(morva::kSettingsBytes);
  morva::WriteSettings(record, bytes.data());
  return bytes;
}

TEST_P(RefusalCases, TellWhyAndTouchNothing) {
  const std::u16string first = Text();
  platform::SetEditorSelection(morva::kIdEditor, {0, 0});
  platform::ReplaceSelection(morva::kIdEditor, u"(A STEP)", true);
  morva::app.editorDirty = false;
  morva::ActiveTab()->dirty = false;
  const std::u16string before = Text();
  const std::uint64_t revision = platform::EditorRevision(morva::kIdEditor);
  const std::u16string title = platform::WindowTitle();
  const std::u16string output = Output();
  const std::vector<unsigned char> record = BytesOf(*builder);
  headless::TakeBoxes();
  ASSERT_TRUE(headless::Click(builder->insertKey));
  const auto boxes = headless::TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  ExpectFile("refusal.txt", boxes[0].title + u"\n" + boxes[0].text + u"\n");
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(platform::EditorRevision(morva::kIdEditor), revision);
  EXPECT_FALSE(morva::app.editorDirty || morva::ActiveTab()->dirty);
  EXPECT_EQ(platform::WindowTitle(), title);
  EXPECT_EQ(Output(), output);
  EXPECT_EQ(BytesOf(*builder), record);
  // The step that was there is the one that goes back and comes again.
  EXPECT_TRUE(platform::UndoEditor(morva::kIdEditor));
  EXPECT_EQ(Text(), first);
  EXPECT_TRUE(platform::RedoEditor(morva::kIdEditor));
  EXPECT_EQ(Text(), before);
}

std::string NameOf(const testing::TestParamInfo<std::string>& info) { return info.param; }
INSTANTIATE_TEST_SUITE_P(Golden, ProgramCases, testing::ValuesIn(CasesWith("program.nc")), NameOf);
INSTANTIATE_TEST_SUITE_P(Golden, RefusalCases, testing::ValuesIn(CasesWith("refusal.txt")), NameOf);

std::set<std::u16string> BuildersWith(std::string_view file) {
  std::set<std::u16string> words;
  for (const std::string& name : CasesWith(file)) words.insert(ReadCase(name).builder);
  return words;
}

TEST_F(Builders, HaveCasesOfTheirCodeAndOfWhatTheyRefuse) {
  const std::set<std::u16string> programs = BuildersWith("program.nc");
  const std::set<std::u16string> refusals = BuildersWith("refusal.txt");
  int count = 0;
  for (; const Builder* builder = morva::BuilderAt(count); ++count) {
    const std::u16string words = morva::WordsOf(builder->insertKey);
    EXPECT_EQ(programs.count(words), 1u) << platform::ToUtf8(words);
    EXPECT_TRUE(!builder->check || refusals.count(words) == 1) << platform::ToUtf8(words);
  }
  EXPECT_GE(count, 1);
}

void ExpectRecordToStay(const Builder& builder, std::mt19937& random) {
  FormValues typed;
  FillForm(builder, random, typed);
  FeatureSettings record;
  ASSERT_TRUE(morva::StoreBuilder(builder, record));
  for (int i = 0; i < morva::kSettingsValues; ++i) {
    EXPECT_NEAR(record.values[i], typed.numbers[i], 1e-9) << "number " << i;
  }
  const std::vector<unsigned char> bytes = BytesOf(builder);
  FormValues other;
  FillForm(builder, random, other);
  ASSERT_TRUE(morva::OpenBuilder(builder, record));
  EXPECT_EQ(BytesOf(builder), bytes);
}

TEST_F(Builders, KeepRandomValuesThroughRecordAndForm) {
  std::mt19937 random(20260403);
  support::groove::Join();
  for (int n = 0; const Builder* builder = morva::BuilderAt(n); ++n) {
    SCOPED_TRACE(platform::ToUtf8(morva::WordsOf(builder->insertKey)));
    // A form that stands on a surface is made with it.
    FeatureSettings record;
    ASSERT_TRUE(morva::StoreBuilder(*builder, record));
    ASSERT_TRUE(morva::OpenBuilder(*builder, record));
    for (int i = 0; i < 200 && !HasFailure(); ++i) ExpectRecordToStay(*builder, random);
  }
}

// A record in millimetres must not come back as so many inches, nor the other way round.
TEST_F(Builders, OpenARecordInItsUnit) {
  std::mt19937 random(1);
  support::groove::Join();
  for (int n = 0; const Builder* builder = morva::BuilderAt(n); ++n) {
    if (builder->kind == 0 || !builder->form->metric) continue;
    SCOPED_TRACE(platform::ToUtf8(morva::WordsOf(builder->insertKey)));
    FeatureSettings record;
    ASSERT_TRUE(morva::StoreBuilder(*builder, record));
    ASSERT_TRUE(morva::OpenBuilder(*builder, record));
    FormValues typed;
    FillForm(*builder, random, typed);
    ASSERT_TRUE(morva::StoreBuilder(*builder, record));
    for (const int metric : {1, 0, 1}) {
      record.metric = metric;
      ASSERT_TRUE(morva::OpenBuilder(*builder, record));
      EXPECT_EQ(builder->form->metric(), metric != 0);
      std::vector<unsigned char> bytes(morva::kSettingsBytes);
      morva::WriteSettings(record, bytes.data());
      EXPECT_EQ(BytesOf(*builder), bytes);
    }
  }
}

}  // namespace
}  // namespace golden
