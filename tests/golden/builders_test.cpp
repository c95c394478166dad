// Every case of tests/golden/builders on the whole application, and what holds for every builder.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
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
#include "support/bores.h"
#include "support/careful.h"
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

// Builders that only tests know.
void JoinMadeUp(std::u16string_view words) {
  if (words == support::groove::kBuilder.commands[0].words) support::groove::Join();
  if (words == support::careful::kCommands[0].words) support::careful::Join();
}

morva::Destination CancelPicker(int, std::int32_t) { return morva::Destination::Cancelled; }

struct BuilderCases : Builders, testing::WithParamInterface<std::string> {
  void SetUp() override {
    Builders::SetUp();
    wanted = ReadCase(GetParam());
    JoinMadeUp(wanted.builder);
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
  // A list may pick the page.
  for (const FormRow& row : builder.form->rows) {
    if ((row.pages & morva::PageBit(morva::ReadPage(builder))) == 0) continue;
    if (row.kind != RowKind::Choice || row.choice < 0) continue;
    const int chosen =
        static_cast<int>(random() % static_cast<unsigned>(platform::RowCount(row.id)));
    platform::SelectRow(row.id, chosen);
    typed.choices[row.choice] = chosen;
  }
  const unsigned page = morva::PageBit(morva::ReadPage(builder));
  std::set<int> places;
  for (const FormRow& row : builder.form->rows) {
    if ((row.pages & page) == 0) continue;
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
  for (const std::u16string& key : wanted.again) PressKey(key);
  ExpectSame(FieldsOf(*builder), fields);
  ASSERT_TRUE(headless::Click(builder->insertKey));
  EXPECT_EQ(platform::ToUtf8(Text()), platform::ToUtf8(inserted));
  EXPECT_TRUE(headless::TakeBoxes().empty());
}

// The record as bytes; none where it cannot be stored.
std::vector<unsigned char> BytesOf(const Builder& builder) {
  FeatureSettings record;
  if (!morva::StoreBuilder(builder, record)) return {};
  std::vector<unsigned char> bytes(morva::kSettingsBytes);
  morva::WriteSettings(record, bytes.data());
  return bytes;
}

std::u16string Blocks(int count) {
  std::u16string text;
  for (int i = 1; i <= count; ++i) {
    const std::u16string id = platform::FromUtf8(std::to_string(i));
    text += u"(MORVA TEXT " + id + u")\r\nG1\r\n(MORVA END " + id + u")\r\n";
  }
  return text;
}

// What a refusal must leave as it was.
struct Untouched {
  std::u16string text, title, output;
  std::uint64_t revision = 0;
  std::vector<double> fields;
  std::vector<unsigned char> record;
  morva::EditLink link;
};

TEST_P(RefusalCases, TellWhyAndTouchNothing) {
  if (wanted.blocks > 0) platform::SetEditorText(morva::kIdEditor, Blocks(wanted.blocks));
  headless::Advance(1000);  // what waits for the text is done
  if (wanted.cancelsPicker) morva::SetDestinationPicker(CancelPicker);
  const std::u16string first = Text();
  // A step within the first block, so that no block comes of it.
  const int place = platform::EditorLineStart(morva::kIdEditor, 1);
  platform::SetEditorSelection(morva::kIdEditor, {place, place});
  platform::ReplaceSelection(morva::kIdEditor, u"(A STEP)", true);
  headless::Advance(1000);
  morva::app.editorDirty = false;
  morva::ActiveTab()->dirty = false;
  const auto look = [this] {
    return Untouched{Text(),
                     platform::WindowTitle(),
                     Output(),
                     platform::EditorRevision(morva::kIdEditor),
                     FieldsOf(*builder),
                     BytesOf(*builder),
                     morva::editLink};
  };
  const Untouched before = look();
  headless::TakeBoxes();
  ASSERT_TRUE(headless::Click(builder->insertKey));
  std::u16string told;
  for (const auto& box : headless::TakeBoxes()) told += box.title + u"\n" + box.text + u"\n";
  ExpectFile("refusal.txt", told);
  const Untouched after = look();
  EXPECT_EQ(after.text, before.text);
  EXPECT_EQ(after.revision, before.revision);
  EXPECT_FALSE(morva::app.editorDirty || morva::ActiveTab()->dirty);
  EXPECT_EQ(after.title, before.title);
  EXPECT_EQ(after.output, before.output);
  EXPECT_EQ(after.fields, before.fields);
  EXPECT_EQ(after.record, before.record);
  EXPECT_EQ(after.link.kind, before.link.kind);
  // The step that was there is the one that goes back and comes again.
  EXPECT_TRUE(platform::UndoEditor(morva::kIdEditor));
  EXPECT_EQ(Text(), first);
  EXPECT_TRUE(platform::RedoEditor(morva::kIdEditor));
  EXPECT_EQ(Text(), before.text);
}

std::string NameOf(const testing::TestParamInfo<std::string>& info) { return info.param; }
INSTANTIATE_TEST_SUITE_P(Golden, ProgramCases, testing::ValuesIn(CasesWith("program.nc")), NameOf);
INSTANTIATE_TEST_SUITE_P(Golden, RefusalCases, testing::ValuesIn(CasesWith("refusal.txt")), NameOf);

std::set<std::u16string> BuildersWith(std::string_view file) {
  std::set<std::u16string> words;
  for (const std::string& name : CasesWith(file)) words.insert(ReadCase(name).builder);
  return words;
}

TEST(BuilderFolders, EachSayWhatComesOfTheirFields) {
  const std::vector<std::string> programs = CasesWith("program.nc");
  const std::vector<std::string> refusals = CasesWith("refusal.txt");
  std::set<std::string> said(programs.begin(), programs.end());
  for (const std::string& name : refusals) {
    EXPECT_TRUE(said.insert(name).second) << name << " is both a program and a refusal";
  }
  for (const auto& entry : std::filesystem::directory_iterator(CaseFolder(""))) {
    const std::string name = entry.path().filename().string();
    EXPECT_EQ(said.count(name), 1u) << name << " has neither program.nc nor refusal.txt";
    EXPECT_TRUE(std::filesystem::exists(entry.path() / "fields.txt")) << name;
  }
}

// A room with a plan of its own stores that: no field of its form has a place in the record, and
// the room's own tests say that the plan comes back.
bool StoresItsPlan(const Builder& builder) {
  if (!builder.storeItems || !builder.loadItems) return false;
  for (const FormRow& row : builder.form->rows) {
    if (row.value >= 0 || row.choice >= 0) return false;
  }
  return true;
}

// What is typed must be stored, or it is gone when the block is opened again. Rows that stand on
// every page of a form that is read by a page of its own belong to something else.
TEST_F(Builders, HaveAPlaceInTheRecordForEveryRow) {
  support::groove::Join();
  support::careful::Join();
  support::bores::Join();
  for (int n = 0; const Builder* builder = morva::BuilderAt(n); ++n) {
    SCOPED_TRACE(platform::ToUtf8(morva::WordsOf(builder->insertKey)));
    if (StoresItsPlan(*builder)) continue;
    for (const FormRow& row : builder->form->rows) {
      const bool other =
          builder->readPage >= 0 &&
          ((row.pages & morva::PageBit(builder->readPage)) == 0 || row.pages == morva::kEveryPage);
      if (other || row.filled) continue;
      const std::string label = platform::ToUtf8(row.label);
      const bool mayHoldMore = builder->kind == 0 || builder->storeItems;
      if (row.kind == RowKind::Number || row.kind == RowKind::Count) {
        EXPECT_GE(row.value, 0) << label << " has no place in the record";
        EXPECT_TRUE(mayHoldMore || row.value < morva::kSettingsValues) << label;
      }
      if (row.kind == RowKind::Choice) {
        EXPECT_GE(row.choice, 0) << label << " has no place in the record";
        EXPECT_TRUE(mayHoldMore || row.choice < morva::kSettingsChoices) << label;
      }
    }
  }
}

TEST_F(Builders, HaveCasesOfTheirCodeAndOfWhatTheyRefuse) {
  const std::set<std::u16string> programs = BuildersWith("program.nc");
  const std::set<std::u16string> refusals = BuildersWith("refusal.txt");
  int count = 0;
  for (; const Builder* builder = morva::BuilderAt(count); ++count) {
    const std::u16string words = morva::WordsOf(builder->insertKey);
    EXPECT_EQ(programs.count(words), 1u)
        << "no folder of tests/golden/builders has a program.nc and \"builder = "
        << platform::ToUtf8(words) << "\" in its fields.txt";
    EXPECT_TRUE(!builder->check || refusals.count(words) == 1)
        << "no folder of tests/golden/builders has a refusal.txt and \"builder = "
        << platform::ToUtf8(words) << "\" in its fields.txt";
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
    BringUp(*builder);
    // A form that stands on a surface is made with it.
    FeatureSettings record;
    ASSERT_TRUE(morva::StoreBuilder(*builder, record));
    ASSERT_TRUE(morva::OpenBuilder(*builder, record));
    if (StoresItsPlan(*builder)) continue;
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
    BringUp(*builder);
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
