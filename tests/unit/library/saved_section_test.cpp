// A save passes over the records that stand in the settings file as they were last written. What it
// leaves there is compared with what a save leaves that knows of no former one.

#include "library/saved_section.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <string_view>

#include "library/macros.h"
#include "library/shapes.h"
#include "library/tools.h"
#include "support/stage.h"
#include "text/codetext.h"

namespace morva {
namespace {

struct SavedSections : support::Stage {
  void SetUp() override { Forget(); }
  void TearDown() override { Forget(); }
  static void Forget() {
    ResetToolLibrary();
    ResetMacroLibrary();
    ResetShapeLibrary();
  }
  void PutIni(std::string_view bytes) const { Put("bin/MORVA.ini", bytes); }
  std::string Ini() const { return Raw("bin/MORVA.ini"); }
};

// Somebody else at work in the file: a line changed, left out, doubled or added, in any section.
std::string Touched(std::string file, std::mt19937& random) {
  const auto number = [&random](std::size_t most) { return random() % most; };
  const std::size_t from = file.rfind('\n', number(file.size()));
  const std::size_t begin = from == file.npos ? 0 : from + 1;
  const std::size_t size = std::min(file.find('\n', begin), file.size() - 1) + 1 - begin;
  const std::string line = file.substr(begin, size);
  const std::size_t equals = line.find('=');
  switch (number(5)) {
    case 0:
      return file.insert(begin, "; by hand\r\n");
    case 1:
      return file.erase(begin, size);
    case 2:
      return file + line;
    case 3:
      return file.insert(begin + size, equals == line.npos ? "[Another]\r\n" : line);
    default:
      if (equals != line.npos) file.insert(begin + equals + 1, "9");
      return file;
  }
}

// Random changes and saves of a library, between which the file is touched; each save is done a
// second time by a library that has forgotten everything but its records.
template <class Library>
void CompareSaves(const SavedSections& stage, Library& library, void (*forget)(), bool (*save)(),
                  const std::function<void(std::mt19937&)>& change) {
  std::mt19937 random(7);
  for (int round = 0; round < 80; ++round) {
    SCOPED_TRACE(round);
    change(random);
    if (round > 0 && random() % 2 == 0) stage.PutIni(Touched(stage.Ini(), random));
    const std::string before = round > 0 ? stage.Ini() : "[Other]\r\nKept=1\r\n";
    stage.PutIni(before);
    ASSERT_TRUE(save());
    const std::string with = stage.Ini();
    ASSERT_TRUE(save());
    ASSERT_EQ(stage.Ini(), with) << "a save of the same changes nothing";
    if (random() % 3 != 0) continue;
    stage.PutIni(before);
    const Library records = library;
    forget();
    library = records;
    ASSERT_TRUE(save());
    ASSERT_EQ(stage.Ini(), with);
  }
}

TEST_F(SavedSections, OfToolsLeaveWhatASaveOfAllLeaves) {
  for (int i = 0; i < 6; ++i) AppendTool(ToolRecord());
  CompareSaves(
      *this, toolLibrary, ResetToolLibrary, [] { return SaveToolLibrary(); },
      [](std::mt19937& random) {
        ToolRecord tool = toolLibrary.tools[random() % 6];
        tool.feed = static_cast<double>(random() % 99999) / 10000;
        tool.number = static_cast<std::int32_t>(random() % 999);
        CopyBounded(tool.notes, kToolNotesUnits, IntegerText(tool.number));
        ReplaceTool(static_cast<int>(random() % 6), tool);
      });
}

TEST_F(SavedSections, OfMacrosLeaveWhatASaveOfAllLeaves) {
  for (int i = 0; i < 6; ++i) PutMacro(IntegerText(i), u"G0 X1\r\nM30");
  CompareSaves(
      *this, macroLibrary, ResetMacroLibrary, [] { return SaveMacroLibrary(); },
      [](std::mt19937& random) {
        // Of one length, so that the text itself has to be compared.
        std::u16string code = u"G0 X1\r\n\\";
        code[4] = static_cast<char16_t>(u'0' + random() % 10);
        PutMacro(IntegerText(random() % 6), code);
        if (random() % 4 == 0) RenameMacro(0, IntegerText(6 + random() % 90));
        if (random() % 4 == 0) RemoveMacro(static_cast<int>(random() % 6));
        if (random() % 4 == 0) DuplicateMacro(static_cast<int>(random() % 6));
      });
}

TEST_F(SavedSections, OfShapesLeaveWhatASaveOfAllLeaves) {
  SavedShape shape;
  for (int i = 0; i < 6; ++i) {
    shape.name[0] = static_cast<char16_t>(u'A' + i);
    shape.count = i;
    PutShape(shape);
  }
  CompareSaves(
      *this, shapeLibrary, ResetShapeLibrary, [] { return SaveShapeLibrary(); },
      [](std::mt19937& random) {
        SavedShape changed = shapeLibrary.shapes[random() % 6];
        changed.count = static_cast<std::int32_t>(random() % 6);
        changed.objects[random() % 6].x = static_cast<double>(random() % 99) / 8;
        PutShape(changed);
      });
}

// The window of another program writes between this one's look at the file and its save.
TEST_F(SavedSections, AreWrittenAgainWhereSomebodyElseHasTouchedThem) {
  PutMacro(u"Mine", u"G0 X1");
  PutMacro(u"Also mine", u"G0 X2");
  ASSERT_TRUE(SaveMacroLibrary());
  const std::string file = Ini();
  std::string theirs = file;
  theirs.replace(theirs.find("X1"), 2, "X7");
  PutIni(theirs);
  ASSERT_TRUE(SaveMacroLibrary());
  EXPECT_EQ(Ini(), file);
}

// What was written for another library, or not at all, is no save of this one.
TEST_F(SavedSections, AreWrittenIntoAFileThatLacksThem) {
  PutMacro(u"Mine", u"G0 X1");
  ASSERT_TRUE(SaveMacroLibrary());
  const std::string file = Ini();
  std::filesystem::remove(folder / "bin" / "MORVA.ini");
  ASSERT_TRUE(SaveMacroLibrary());
  EXPECT_EQ(Ini(), file);
}

}  // namespace
}  // namespace morva
