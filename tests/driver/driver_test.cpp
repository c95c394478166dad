// The driver's own reading and writing, and its answers to lines that mean nothing.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "cad/model/sketch.h"
#include "cad/tools/edits.h"
#include "driver/drive.h"
#include "driver/json_text.h"
#include "driver/line_words.h"
#include "simulator/playback.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"

namespace {

std::u16string Read(std::string_view literal) {
  std::u16string text;
  EXPECT_TRUE(drive::ReadQuoted(literal, text)) << literal;
  return text;
}

std::string Quoted(std::u16string_view text) {
  std::string out;
  drive::AppendQuoted(out, text);
  return out;
}

TEST(DriverText, ReadsEveryEscape) {
  EXPECT_EQ(Read(R"("a\"\\\/\b\f\n\r\t\u0041\u00e9")"), u"a\"\\/\b\f\n\r\tA\u00e9");
  EXPECT_EQ(Read("\"\xC3\xA9\""), u"\u00e9");
  EXPECT_EQ(Read(R"("\ud83d\ude00")"), u"\U0001F600");
}

TEST(DriverText, RefusesDamagedStrings) {
  for (std::string_view literal : {"", "a", "\"", "\"a", "\"\\\"", "\"\\u12\"", "\"\\x\""}) {
    std::u16string text;
    std::string_view line = literal;
    EXPECT_FALSE(drive::ReadQuoted(line, text)) << literal;
  }
}

TEST(DriverText, WritesWhatItReads) {
  std::u16string every;
  for (int c = 0; c < 0x300; ++c) every.push_back(static_cast<char16_t>(c));
  every += u"\u20ac\U0001F600";
  every.push_back(0xD800);  // half a pair
  every += u"x";
  every.push_back(0xDC00);
  const std::string quoted = Quoted(every);
  EXPECT_EQ(quoted.find('\n'), quoted.npos);
  EXPECT_EQ(Read(quoted), every);
}

TEST(DriverText, WritesNumbersThatReadBackTheSame) {
  for (double value : {0.1, 1.0 / 3, -1e-300, 123456789.123456789, 0.30000000000000004}) {
    std::string text;
    drive::AppendNumber(text, value);
    EXPECT_EQ(std::stod(text), value);
  }
  std::string text;
  drive::AppendNumber(text, std::numeric_limits<double>::infinity());
  EXPECT_EQ(text, "null");
}

TEST(DriverText, PartsALineIntoWordsAndStrings) {
  std::vector<drive::Word> words;
  ASSERT_TRUE(drive::SplitLine("  type \"Cutter diameter\"\t0.75 \"\" ", words));
  ASSERT_EQ(words.size(), 4u);
  EXPECT_EQ(words[1].text, u"Cutter diameter");
  EXPECT_TRUE(words[1].quoted);
  EXPECT_EQ(words[2].text, u"0.75");
  EXPECT_TRUE(words[3].text.empty());
  EXPECT_FALSE(drive::SplitLine("type \"a\"b", words));
}

TEST(DriverText, ReadsKeysByTheirNames) {
  platform::KeyEvent key;
  ASSERT_TRUE(drive::ReadKey(u"Ctrl+Shift+s", key));
  EXPECT_EQ(key.key, 'S');
  EXPECT_TRUE(key.ctrl && key.shift && !key.alt);
  ASSERT_TRUE(drive::ReadKey(u"F12", key));
  EXPECT_EQ(key.key, platform::kKeyF1 + 11);
  for (std::u16string_view name :
       {u"", u"F13", u"F0", u"Ctrl+", u"Strg+S", u"F1x", u"+", u"Entr"}) {
    EXPECT_FALSE(drive::ReadKey(name, key));
  }
}

TEST(Driver, AnswersEveryLineWithOneObject) {
  const std::filesystem::path home =
      std::filesystem::temp_directory_path() / ("driver_" + std::to_string(getpid()));
  std::filesystem::create_directories(home);
  drive::Machine machine;
  machine.home = home.u16string();
  ASSERT_TRUE(drive::Begin(machine));
  EXPECT_EQ(drive::AnswerLine(""), "{\"ok\":true}");
  EXPECT_EQ(drive::AnswerLine("# a remark"), "{\"ok\":true}");
  EXPECT_EQ(drive::AnswerLine("surprise"), "{\"ok\":false,\"error\":\"unknown command\"}");
  EXPECT_EQ(drive::AnswerLine("call ParseDecimal \"12abc\" 0"), "{\"ok\":true,\"value\":12}");
  EXPECT_EQ(drive::AnswerLine("call ParseInteger \"+7\" 5"), "{\"ok\":true,\"value\":5}");
  EXPECT_EQ(drive::AnswerLine("call FindCodeWord \"N10G90\" \"G\" 90"),
            "{\"ok\":true,\"value\":true}");
  EXPECT_EQ(drive::AnswerLine("call NormaliseOutputText \"M30\" true"),
            "{\"ok\":true,\"value\":\"%\\r\\nM30\\r\\n%\\r\\n\"}");
  EXPECT_EQ(drive::AnswerLine("call CodeToWords \"G4P1.\""),
            "{\"ok\":true,\"value\":\"Dwell P1.\"}");
  EXPECT_EQ(drive::AnswerLine("call WordsToCode \"Dwell P1.\""),
            "{\"ok\":true,\"value\":\"G04 P1.\"}");
  // The back key by its name and by its caption; two keys of one caption are not guessed at.
  EXPECT_EQ(drive::AnswerLine("get control \"Back\""), drive::AnswerLine("get control 1700"));
  EXPECT_EQ(drive::AnswerLine("get control \"\u2190  Home\""),
            drive::AnswerLine("get control 1700"));
  EXPECT_EQ(drive::AnswerLine("click \"+\""),
            "{\"ok\":false,\"error\":\"several have this name: 665 808\"}");
  EXPECT_EQ(drive::AnswerLine("wait 86400000"), "{\"ok\":true}");
  for (const char* line : {"click",
                           "click 999999999999999999",
                           "click 99999",
                           "wait",
                           "wait -1",
                           "wait 1e3",
                           "get",
                           "get tokens",
                           "get paint Nothing",
                           "mouse",
                           "mouse CodeGutter press 1",
                           "type 300",
                           "key \"Ctrl+\"",
                           "peer send \"\\u0100\"",
                           "port COM1 here",
                           "printer 1 2 3",
                           "printer 1 2 3 x",
                           "printer 1 2 3 1e3",
                           "printer here",
                           "select 1212 7",
                           "editor",
                           "call",
                           "call CodeToWords",
                           "call WordsToCode 5",
                           "command 99",
                           "file x"}) {
    const std::string answer = drive::AnswerLine(line);
    EXPECT_EQ(answer.rfind("{\"ok\":false,\"error\":\"", 0), 0u) << line << ": " << answer;
  }
  drive::End();
  std::filesystem::remove_all(home);
}

TEST(Driver, LooksAtThePathThatIsShown) {
  const std::filesystem::path home =
      std::filesystem::temp_directory_path() / ("driver_path_" + std::to_string(getpid()));
  std::filesystem::create_directories(home);
  drive::Machine machine;
  machine.home = home.u16string();
  ASSERT_TRUE(drive::Begin(machine));
  const std::string path = drive::AnswerLine("get path");
  const std::string play = drive::AnswerLine("get play");
  const std::string view = drive::AnswerLine("get view");
  EXPECT_EQ(path, "{\"ok\":true,\"path\":[[0,0,0,true,0,false,0]]}");
  morva::OwnedBy(morva::PathOwner::Builder).view.zoom = 0.5;
  morva::ExtractPathOf(morva::PathOwner::Builder, u"G1 X1 T4\r\n", false);
  morva::ShowPathOf(morva::PathOwner::Builder);
  morva::SetPlaySpeed(2);
  EXPECT_EQ(drive::AnswerLine("get path"),
            "{\"ok\":true,\"path\":[[0,0,0,true,0,false,0],[1,0,0,false,0,false,4]]}");
  EXPECT_EQ(drive::AnswerLine("get play"),
            "{\"ok\":true,\"playing\":false,\"headInUse\":false,\"playHead\":2,"
            "\"segmentFraction\":0,\"speedIndex\":2}");
  EXPECT_EQ(drive::AnswerLine("get view").rfind("{\"ok\":true,\"zoom\":0.5,", 0), 0u);
  morva::ShowPathOf(morva::PathOwner::Program);
  EXPECT_EQ(drive::AnswerLine("get path"), path);
  EXPECT_EQ(drive::AnswerLine("get play"), play);
  EXPECT_EQ(drive::AnswerLine("get view"), view);
  drive::End();
  std::filesystem::remove_all(home);
}

// The lines that are still to be read, and what they and the line before them were answered.
std::vector<std::string> toRead;
std::vector<std::string> answers;

bool ReadNext() {
  if (toRead.empty()) return false;
  const std::string line = toRead.front();
  toRead.erase(toRead.begin());
  const std::string answer = drive::AnswerLine(line);
  if (!answer.empty()) answers.push_back(answer);
  return true;
}

TEST(Driver, ReadsOnInADialogUntilItCloses) {
  const std::filesystem::path home =
      std::filesystem::temp_directory_path() / ("driver_dialog_" + std::to_string(getpid()));
  std::filesystem::create_directories(home);
  drive::Machine machine;
  machine.home = home.u16string();
  ASSERT_TRUE(drive::Begin(machine));
  morva::AppendSketchObject({morva::kTypeLine, 0, 0, 0, 2, 0, 0});
  answers.clear();
  drive::ReadOnInDialogs({[] { answers.push_back("{\"ok\":true}"); }, ReadNext});
  toRead = {"wait 100",
            "command 1012",
            "get dialog",
            "click \"NEW\"",
            "type \"Operation number\" \"1\"",
            "close",
            "get dialog",
            "command 1012",
            "click \"Insert / update code\"",
            "get features",
            "command 1012",
            "wait 10"};
  while (ReadNext()) {
  }
  ASSERT_EQ(answers.size(), 12u);
  EXPECT_EQ(answers[1], "{\"ok\":true}");
  EXPECT_EQ(answers[2], "{\"ok\":true,\"id\":20020,\"title\":\"Insert code into project\"}");
  // What lies behind it has no name now.
  EXPECT_EQ(answers[3].rfind("{\"ok\":false", 0), 0u) << answers[3];
  EXPECT_EQ(answers[4], "{\"ok\":true}");
  EXPECT_EQ(answers[5], "{\"ok\":true,\"closed\":false}");
  EXPECT_EQ(answers[6], "{\"ok\":true,\"id\":0,\"title\":\"\"}");
  EXPECT_NE(answers[9].find("\"id\":2,"), std::string::npos) << answers[9];
  // The end of what can be read cancelled the last one.
  EXPECT_EQ(drive::AnswerLine("get dialog"), answers[6]);
  drive::ReadOnInDialogs({});
  drive::End();
  std::filesystem::remove_all(home);
}

}  // namespace
