// The settings file. Expected files are written out by hand.

#include "platform/profile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "platform/common/faults.h"
#include "platform/limits.h"
#include "support/stage.h"

namespace {

using platform::ChangeInProfile;
using platform::FindInProfile;
using support::ReadRaw;
using support::WriteRaw;

std::u16string Find(std::u16string_view file, std::u16string_view section,
                    std::u16string_view key) {
  std::u16string value;
  return FindInProfile(file, section, key, value) ? value : u"<none>";
}

TEST(ProfileText, FindsAKeyInItsSectionOnly) {
  const char16_t* file = u"[A]\r\nPort=COM1\r\n[B]\r\nPort=COM2\r\n";
  EXPECT_EQ(Find(file, u"A", u"Port"), u"COM1");
  EXPECT_EQ(Find(file, u"B", u"Port"), u"COM2");
  EXPECT_EQ(Find(file, u"C", u"Port"), u"<none>");
  EXPECT_EQ(Find(file, u"A", u"Baud"), u"<none>");
}

TEST(ProfileText, IgnoresTheCaseOfAToZInNamesAndKeepsItInValues) {
  const char16_t* file = u"[dnc]\r\nPORT=com3\r\n";
  EXPECT_EQ(Find(file, u"DNC", u"Port"), u"com3");
  // A name with another letter than A to Z in the other case is another name.
  EXPECT_EQ(Find(u"[\u00E4]\r\nk=1\r\n", u"\u00C4", u"k"), u"<none>");
}

TEST(ProfileText, TrimsOuterBlanksAndOnePairOfQuotes) {
  EXPECT_EQ(Find(u"[S]\r\nk = \t a b \t\r\n", u"S", u"k"), u"a b");
  EXPECT_EQ(Find(u"[S]\r\nk=\" a \"\r\n", u"S", u"k"), u" a ");
  EXPECT_EQ(Find(u"[S]\r\nk=\"\"a\"\"\r\n", u"S", u"k"), u"\"a\"");
  EXPECT_EQ(Find(u"[S]\r\nk=\"a\r\n", u"S", u"k"), u"\"a");
  EXPECT_EQ(Find(u"[S]\r\nk=\"\r\n", u"S", u"k"), u"\"");
  EXPECT_EQ(Find(u"[S]\r\nk=\r\n", u"S", u"k"), u"");
}

TEST(ProfileText, TakesABareLineFeedForALineEndAndALastLineWithoutOne) {
  EXPECT_EQ(Find(u"[S]\na=1\nb=2", u"S", u"a"), u"1");
  EXPECT_EQ(Find(u"[S]\na=1\nb=2", u"S", u"b"), u"2");
}

TEST(ProfileText, KeepsEqualSignsAndSemicolonsOfAValue) {
  EXPECT_EQ(Find(u"[S]\r\nk=a=b;c\r\n", u"S", u"k"), u"a=b;c");
  EXPECT_EQ(Find(u"[S]\r\n;k=1\r\nk=2\r\n", u"S", u"k"), u"2");
}

TEST(ProfileText, StepsOverAMarkAtTheStart) {
  EXPECT_EQ(Find(u"\uFEFF[S]\r\nk=1\r\n", u"S", u"k"), u"1");
}

TEST(ProfileText, ChangesOneLineAndNothingElse) {
  EXPECT_EQ(ChangeInProfile(u"; mine\r\n\r\n[S]\nfoo\nK = 1\n\n[T]\r\nk=9\r\n", u"s", u"k", u"2"),
            u"; mine\r\n\r\n[S]\nfoo\nk=2\r\n\n[T]\r\nk=9\r\n");
}

TEST(ProfileText, AddsAKeyBehindTheSectionsLastLine) {
  EXPECT_EQ(ChangeInProfile(u"[S]\r\na=1\r\n\r\n[T]\r\nb=2\r\n", u"S", u"c", u"3"),
            u"[S]\r\na=1\r\nc=3\r\n\r\n[T]\r\nb=2\r\n");
  EXPECT_EQ(ChangeInProfile(u"[S]\r\na=1", u"S", u"c", u"3"), u"[S]\r\na=1\r\nc=3\r\n");
}

TEST(ProfileText, AddsASectionAtTheEnd) {
  EXPECT_EQ(ChangeInProfile(u"", u"DNC", u"Port", u"COM1"), u"[DNC]\r\nPort=COM1\r\n");
  EXPECT_EQ(ChangeInProfile(u"[S]\r\na=1", u"T", u"b", u"2"), u"[S]\r\na=1\r\n[T]\r\nb=2\r\n");
}

TEST(ProfileText, DoesNotTouchKeysBeforeTheFirstSection) {
  EXPECT_EQ(Find(u"k=1\r\n[S]\r\n", u"", u"k"), u"<none>");
  EXPECT_EQ(ChangeInProfile(u"k=1\r\n", u"S", u"k", u"2"), u"k=1\r\n[S]\r\nk=2\r\n");
}

TEST(ProfileText, BringsEveryOneLineValueBackAsItWas) {
  for (const char16_t* value : {u"", u" a", u"a ", u"\t", u"\"", u"\"\"", u"\"a\"", u"a\"b", u"=;#",
                                u"[S]", u"\u00B0\u2014\U0001F600"}) {
    const std::u16string file = ChangeInProfile(u"[S]\r\nz=1\r\n", u"S", u"k", value);
    EXPECT_EQ(Find(file, u"S", u"k"), value);
    EXPECT_EQ(Find(file, u"S", u"z"), u"1");
  }
}

TEST(ProfileText, LetsNoValueMakeALineOfItsOwn) {
  EXPECT_EQ(ChangeInProfile(u"", u"S", u"k", u"a\r\n[T]\r\nx=1"), u"[S]\r\nk=a\r\n");
}

// Other programs take a NUL for the end of the text and would see none of the lines behind it.
TEST(ProfileText, EndsAValueAtANul) {
  EXPECT_EQ(ChangeInProfile(u"[S]\r\nz=1\r\n", u"S", u"k", std::u16string_view(u"a\0b", 3)),
            u"[S]\r\nz=1\r\nk=a\r\n");
}

TEST(ProfileText, ChangesTheLineThatReadingFindsAmongDoubles) {
  const std::u16string file =
      ChangeInProfile(u"[S]\r\na=1\r\n[S]\r\nk=1\r\nk=2\r\n", u"S", u"k", u"3");
  EXPECT_EQ(file, u"[S]\r\na=1\r\n[S]\r\nk=3\r\nk=2\r\n");
  EXPECT_EQ(Find(file, u"S", u"k"), u"3");
}

struct ProfileFile : public support::Stage {
  support::fs::path File() const { return folder / "bin" / "MORVA.ini"; }
};

int flushes = 0;
bool CountFlushes(std::string_view kind) {
  if (kind == "flush") ++flushes;
  return false;
}
bool FailWrites(std::string_view kind) { return kind == "write"; }
bool FailReads(std::string_view kind) { return kind == "read"; }

TEST_F(ProfileFile, StandsBesideTheExecutable) {
  EXPECT_EQ(platform::ProfilePath(), PathOf("bin/MORVA.ini"));
}

TEST_F(ProfileFile, GivesTheFallbackWithoutAFile) {
  EXPECT_EQ(platform::ReadProfile(u"DNC", u"Port", u"COM7"), u"COM7");
}

TEST_F(ProfileFile, WritesAllChangesOfOneBracketOnce) {
  flushes = 0;
  platform::fileFault = CountFlushes;
  platform::BeginProfileChange();
  platform::WriteProfile(u"DNC", u"Port", u"COM2");
  platform::BeginProfileChange();
  platform::WriteProfile(u"DNC", u"Baud", u"19200");
  EXPECT_TRUE(platform::EndProfileChange());
  platform::WriteProfile(u"Simulator", u"Grid", u"\u00B5");
  EXPECT_EQ(flushes, 0);
  EXPECT_EQ(platform::ReadProfile(u"DNC", u"Baud", u""), u"19200");
  EXPECT_TRUE(platform::EndProfileChange());
  platform::fileFault = nullptr;
  EXPECT_EQ(flushes, 1);
  EXPECT_EQ(ReadRaw(File()),
            "[DNC]\r\nPort=COM2\r\nBaud=19200\r\n[Simulator]\r\nGrid=\xC2\xB5\r\n");
}

TEST_F(ProfileFile, WritesASingleChangeAtOnce) {
  platform::WriteProfile(u"DNC", u"Port", u"COM2");
  EXPECT_EQ(ReadRaw(File()), "[DNC]\r\nPort=COM2\r\n");
  EXPECT_EQ(platform::ReadProfile(u"dnc", u"port", u""), u"COM2");
}

TEST_F(ProfileFile, KeepsBytesThatAreNoTextAsTheyAre) {
  WriteRaw(File(), "[X]\r\nname=\xE9\xFF\r\n");
  platform::WriteProfile(u"DNC", u"Port", u"COM2");
  EXPECT_EQ(ReadRaw(File()), "[X]\r\nname=\xE9\xFF\r\n[DNC]\r\nPort=COM2\r\n");
}

TEST_F(ProfileFile, TakesAWholeSectionOutAndAllOfItsDoubles) {
  WriteRaw(File(), "[A]\r\na=1\r\n[B]\r\nb=1\r\n\r\n[a]\r\na=2\r\n");
  platform::EraseProfileSection(u"A");
  EXPECT_EQ(ReadRaw(File()), "[B]\r\nb=1\r\n\r\n");
}

TEST_F(ProfileFile, IsWholeAsItWasAfterAFailedWrite) {
  WriteRaw(File(), "[DNC]\r\nPort=COM1\r\n");
  platform::fileFault = FailWrites;
  platform::BeginProfileChange();
  platform::WriteProfile(u"DNC", u"Port", u"COM2");
  EXPECT_FALSE(platform::EndProfileChange());
  platform::fileFault = nullptr;
  EXPECT_EQ(ReadRaw(File()), "[DNC]\r\nPort=COM1\r\n");
  EXPECT_EQ(support::NamesIn(folder / "bin"), std::vector<std::string>{"MORVA.ini"});
  EXPECT_EQ(platform::ReadProfile(u"DNC", u"Port", u""), u"COM1");
}

TEST_F(ProfileFile, IsNotReplacedWhenItCannotBeRead) {
  WriteRaw(File(), "[DNC]\r\nPort=COM1\r\n[Tool0]\r\nName=x\r\n");
  platform::fileFault = FailReads;
  platform::BeginProfileChange();
  platform::WriteProfile(u"DNC", u"Port", u"COM2");
  EXPECT_FALSE(platform::EndProfileChange());
  platform::fileFault = nullptr;
  EXPECT_EQ(ReadRaw(File()), "[DNC]\r\nPort=COM1\r\n[Tool0]\r\nName=x\r\n");
}

TEST_F(ProfileFile, IsNotReplacedWhenItIsTooLong) {
  static_assert(platform::kMaxProfileBytes == 33554432);
  std::string bytes = "[DNC]\r\nPort=COM1\r\n";
  bytes.resize(platform::kMaxProfileBytes + 1, '\n');
  WriteRaw(File(), bytes);
  platform::BeginProfileChange();
  platform::WriteProfile(u"DNC", u"Port", u"COM2");
  EXPECT_FALSE(platform::EndProfileChange());
  EXPECT_EQ(support::fs::file_size(File()), platform::kMaxProfileBytes + 1);
  support::fs::resize_file(File(), platform::kMaxProfileBytes);
  platform::BeginProfileChange();
  platform::WriteProfile(u"DNC", u"Port", u"COM2");
  EXPECT_TRUE(platform::EndProfileChange());
  EXPECT_EQ(platform::ReadProfile(u"DNC", u"Port", u""), u"COM2");
}

TEST_F(ProfileFile, IsNotWrittenWhenNothingChanges) {
  WriteRaw(File(), "[DNC]\r\nPort=COM1\r\n");
  flushes = 0;
  platform::fileFault = CountFlushes;
  platform::BeginProfileChange();
  platform::WriteProfile(u"DNC", u"Port", u"COM1");
  EXPECT_TRUE(platform::EndProfileChange());
  platform::fileFault = nullptr;
  EXPECT_EQ(flushes, 0);
}

TEST_F(ProfileFile, IsNotWrittenByABracketThatOnlyReads) {
  // Writing would take the mark off and end the last line.
  const std::string file = "\xEF\xBB\xBF[S]\nk=1";
  support::fs::create_directories(File().parent_path());
  WriteRaw(File(), file);
  flushes = 0;
  platform::fileFault = CountFlushes;
  platform::BeginProfileChange();
  EXPECT_EQ(platform::ReadProfile(u"s", u"K", u""), u"1");
  EXPECT_EQ(platform::ReadProfile(u"S", u"other", u"none"), u"none");
  EXPECT_TRUE(platform::EndProfileChange());
  platform::fileFault = nullptr;
  EXPECT_EQ(flushes, 0);
  EXPECT_EQ(ReadRaw(File()), file);
}

TEST_F(ProfileFile, ReadsInsideABracketWhatWasSetThere) {
  platform::BeginProfileChange();
  platform::WriteProfile(u"S", u"k", u"\"a \"");
  EXPECT_EQ(platform::ReadProfile(u"s", u"K", u""), u"\"a \"");
  platform::EraseProfileSection(u"S");
  EXPECT_EQ(platform::ReadProfile(u"S", u"k", u"gone"), u"gone");
  EXPECT_TRUE(platform::EndProfileChange());
}

TEST_F(ProfileFile, TellsTheBytesOfASection) {
  const std::string file = "a=0\r\n[S]\nk = 1\n\n[T]\r\nk=2\r\n[u]\r\nk=3\r\n[U]\r\nk=4";
  WriteRaw(File(), file);
  EXPECT_EQ(platform::ProfileSection(u"s"), "[S]\nk = 1\n\n");
  EXPECT_TRUE(platform::ProfileSectionIs(u"S", "[S]\nk = 1\n\n"));
  for (const char* other : {"", "[S]\n", "[S]\nk = 2\n\n", "[S]\nk = 1\n\n[T]\r\n"}) {
    EXPECT_FALSE(platform::ProfileSectionIs(u"S", other)) << other;
  }
  EXPECT_EQ(platform::ProfileSection(u"U"), "") << "there are two";
  EXPECT_FALSE(platform::ProfileSectionIs(u"U", "[u]\r\nk=3\r\n"));
  EXPECT_EQ(platform::ProfileSection(u"V"), "") << "there is none";
  EXPECT_FALSE(platform::ProfileSectionIs(u"V", ""));
  EXPECT_EQ(ReadRaw(File()), file);
}

TEST_F(ProfileFile, TellsTheBytesOfASectionUnderChange) {
  WriteRaw(File(), "[S]\nk = 1\nl=2\n\n[T]\r\nk=2");
  platform::BeginProfileChange();
  platform::WriteProfile(u"S", u"k", u"7");
  EXPECT_EQ(platform::ProfileSection(u"S"), "[S]\nk=7\r\nl=2\n\n");
  EXPECT_TRUE(platform::ProfileSectionIs(u"S", "[S]\nk=7\r\nl=2\n\n"));
  for (const char* other : {"[S]\nk=7\r\nl=2\n", "[S]\nk=7\r\nl=2\n\n\n", "[S]\nk=8\r\nl=2\n\n"}) {
    EXPECT_FALSE(platform::ProfileSectionIs(u"S", other)) << other;
  }
  platform::WriteProfile(u"New", u"k", u"1");
  EXPECT_EQ(platform::ProfileSection(u"New"), "[New]\r\nk=1\r\n");
  EXPECT_TRUE(platform::EndProfileChange());
}

// The memory of a change serves the next one; what stood in it is gone.
TEST_F(ProfileFile, IsReadAnewByEachBracket) {
  const auto read = [] {
    platform::BeginProfileChange();
    const std::u16string value = platform::ReadProfile(u"S", u"k", u"none");
    platform::EndProfileChange();
    return value;
  };
  const std::string longer = "[S]\r\nk=longer\r\n" + std::string(5000, ';');
  support::fs::create_directories(File().parent_path());
  for (int round = 0; round < 2; ++round) {
    WriteRaw(File(), longer);
    EXPECT_EQ(read(), u"longer");
    WriteRaw(File(), "[S]\r\nk=short");
    EXPECT_EQ(read(), u"short");
    platform::fileFault = FailReads;
    EXPECT_EQ(read(), u"none");
    platform::fileFault = nullptr;
    WriteRaw(File(), longer);
    EXPECT_EQ(read(), u"longer");
    support::fs::remove(File());
    EXPECT_EQ(read(), u"none");
    platform::WriteProfile(u"S", u"k", u"new");
    EXPECT_EQ(ReadRaw(File()), "[S]\r\nk=new\r\n");
  }
}

// Up to a length the memory of a change is kept for the next one.
TEST_F(ProfileFile, IsChangedAlikeAboveTheLengthWhoseMemoryIsKept) {
  support::fs::create_directories(File().parent_path());
  const std::string lines(platform::kMaxSpareProfile, ';');
  for (const std::size_t size : {lines.size() - 100, lines.size(), std::size_t{100}}) {
    const std::string comment = lines.substr(0, size) + "\r\n";
    WriteRaw(File(), comment + "[S]\r\nk=1\r\n");
    platform::WriteProfile(u"S", u"k", u"2");
    platform::WriteProfile(u"S", u"l", u"3");
    EXPECT_EQ(ReadRaw(File()), comment + "[S]\r\nk=2\r\nl=3\r\n") << size;
  }
}

// A second method: one change at a time, by walking the lines of the whole file.
bool SameLetters(std::string a, std::string b) {
  for (std::string* text : {&a, &b}) {
    for (char& c : *text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  }
  return a == b;
}
std::string Bare(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == text.npos) return "";
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}
struct WalkedLine {
  std::string bytes;
  bool header = false;
  std::string name;  // of the header, or the key
};
std::vector<WalkedLine> Walk(const std::string& file) {
  std::vector<WalkedLine> lines;
  for (std::size_t at = 0; at < file.size();) {
    const std::size_t end = std::min(file.find('\n', at), file.size() - 1) + 1;
    WalkedLine line{file.substr(at, end - at), false, ""};
    const std::string bare = Bare(line.bytes);
    line.header = !bare.empty() && bare[0] == '[' && bare.find(']') != bare.npos;
    if (line.header) {
      line.name = Bare(bare.substr(1, bare.find(']') - 1));
    } else if (bare.find('=') != bare.npos && bare[0] != ';' && bare[0] != '#') {
      line.name = Bare(bare.substr(0, bare.find('=')));
    }
    lines.push_back(line);
    at = end;
  }
  return lines;
}
std::string ChangedByWalking(const std::string& file, const std::string& section,
                             const std::string& key, const std::string& value) {
  std::vector<WalkedLine> lines = Walk(file);
  const std::string entry = key + "=" + value + "\r\n";
  bool inside = false;
  std::size_t behind = 0;  // where a new line of the section's first part goes; 0: no such section
  bool first = false;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].header) {
      inside = SameLetters(lines[i].name, section);
      first = inside && behind == 0;
    }
    if (!inside) continue;
    if (!lines[i].header && SameLetters(lines[i].name, key)) {
      lines[i].bytes = entry;
      std::string changed;
      for (const WalkedLine& line : lines) changed += line.bytes;
      return changed;
    }
    if (first && !Bare(lines[i].bytes).empty()) behind = i + 1;
  }
  std::string changed;
  const auto end = [&changed] {
    if (!changed.empty() && changed.back() != '\n') changed += "\r\n";
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    changed += lines[i].bytes;
    if (i + 1 != behind) continue;
    end();
    changed += entry;
  }
  if (behind > 0) return changed;
  end();
  return changed + "[" + section + "]\r\n" + entry;
}

std::string RandomFile(std::mt19937& random) {
  const char* pieces[] = {"[A]\r\n",     "[a]\n",      "[B ]\r\n",   "[ C]\r\n",   "k0=1\r\n",
                          "K1 = x\n",    "; k2=c\r\n", "\r\n",       " \r\n",      "k2=\"q\"\r\n",
                          "nothing\r\n", "[D\r\n",     "k3=[A]\r\n", "=\r\n",      " \t[A]\r\n",
                          "x [B]\r\n",   "\r[C]\n",    "[[A]]\r\n",  "[D [B]\r\n", "[A][B]\r\n",
                          "[\n",         "]\n"};
  std::string file;
  for (auto n = random() % 24; n > 0; --n) file += pieces[random() % std::size(pieces)];
  if (random() % 3 == 0 && file.ends_with("\r\n")) file.resize(file.size() - 2);
  return file;
}

TEST_F(ProfileFile, HoldsBehindOneBracketWhatSingleChangesLeave) {
  std::mt19937 random(28);
  const std::string sections[] = {"A", "B", "c", "New", "Other"};
  support::fs::create_directories(File().parent_path());
  for (int round = 0; round < 120; ++round) {
    std::string wanted = RandomFile(random);
    WriteRaw(File(), wanted);
    SCOPED_TRACE(wanted);
    platform::BeginProfileChange();
    for (auto n = 1 + random() % 40; n > 0; --n) {
      const std::string section = sections[random() % std::size(sections)];
      const std::string key = (random() % 2 == 0 ? "k" : "K") + std::to_string(random() % 20);
      const std::string value = std::to_string(random() % 100);
      platform::WriteProfile(support::Wide(section), support::Wide(key), support::Wide(value));
      wanted = ChangedByWalking(wanted, section, key, value);
      EXPECT_EQ(platform::ReadProfile(support::Wide(section), support::Wide(key), u""),
                support::Wide(value));
    }
    EXPECT_TRUE(platform::EndProfileChange());
    ASSERT_EQ(ReadRaw(File()), wanted);
  }
}

TEST_F(ProfileFile, RefusesAnEndWithoutABeginning) { EXPECT_FALSE(platform::EndProfileChange()); }

}  // namespace
