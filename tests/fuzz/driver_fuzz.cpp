// Driver lines by chance: nothing in them may end the program, and every answer is one line.
//
// The first byte chooses: even, the rest is lines as they stand; odd, every further byte picks
// a phrase, so that whole jobs come about. Files stay below a folder of this process.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <string_view>

#include "driver/drive.h"
#include "fuzz/driver_jobs.h"
#include "platform/thread.h"

namespace {

// Arguments are picked by the bytes that follow: "@" is a control, "#" a small number.
constexpr const char* kPhrases[] = {
    "click @",
    "click \"NEW\"",
    "click \"CLOSE\"",
    "click \"OPEN\"",
    "click \"SEND\"",
    "click \"RECEIVE\"",
    "click \"PATH\"",
    "command 1012 0",
    "click 2982",
    "click 2983",
    "click \"Cancel\"",
    "type 3601 \"#\"",
    "select 3600 #",
    "key \"Esc\"",
    "get dialog",
    "ctrlclick @",
    "command @ #",
    "type @ \"0.75\"",
    "select @ #",
    "double @ #",
    "menu @ #",
    "focus @",
    "key \"Ctrl+S\"",
    "key \"Ctrl+Z\"",
    "key \"Alt+V\"",
    "key \"Ctrl+A\"",
    "key \"Ctrl+X\"",
    "key \"Enter\"",
    "key \"Down\"",
    "key \"Tab\"",
    "key \"Delete\"",
    "key \"F5\"",
    "key \"Ctrl+Space\"",
    "editor insert \"G0 X# Y#\\nG2 X1. I.5\\n\"",
    "editor insert \"(MORVA TEXT #)\\n\"",
    "editor insert \"(MORVA END #)\"",
    "editor insert \"(MORVA BEGIN #)\\n(MORVA CODE)\\n\"",
    "editor insert \"(WIZARD: x)\\nG81\\n\\n\"",
    "editor select # #",
    "editor set \"O1000\\nN10 G0 X1.\\nM30\"",
    "editor set \"\"",
    "editor undo",
    "mouse HaasSimView press # # left",
    "mouse HaasSimView move # #",
    "mouse HaasSimView release # # left",
    "mouse HaasSimView wheel # # 1",
    "mouse MorvaDeskWnd press 300 500",
    "mouse MorvaDeskWnd move # 500",
    "mouse MorvaDeskWnd release # 500",
    "mouse MorvaSpeed press # 4",
    "hover @",
    "resize 1300 #",
    "wait #",
    "wait 800",
    "meanwhile 3000",
    "answer yes",
    "answer no",
    "answer cancel",
    "file \"a.NC\"",
    "file \"b\"",
    "file cancel",
    "pick 111",
    "pick 917",
    "pick 3001",
    "pick @",
    "port COM3 present",
    "port COM3 busy",
    "peer send \"%\\r\\nO1\\r\\n%\"",
    "peer stall #",
    "peer unplug",
    "fail write 1",
    "fail rename 1",
    "fail worker 1",
    "fail popup 1",
    "fail document 1",
    "fail page 1",
    "printer 2550 3300 300 300",
    "printer # # # #",
    "printer cancel",
    "printer none",
    "get printed",
    "get plate",
    "click \"Plate\"",
    "type \"Plate name\" \"P#\"",
    "click \"Apply\"",
    "click \"PRINT 1:1\"",
    "get tabs",
    "get features",
    "get path",
    "get controls",
    "get text",
    "get paint HaasSimView",
    "get paint MorvaDeskWnd",
    "get paint MorvaWizardPreview",
    "type 405 \"#\"",
    "type 409 \"-#\"",
    "type 410 \"#/2\"",
    "get tokens #",
    "close",
};

constexpr int kControls[] = {
    402,  404,  430,  654,  655,  1990, 1991, 1992, 1993, 1994, 101,  103,  104,  105,  106,  108,
    109,  110,  111,  112,  200,  300,  400,  440,  600,  601,  660,  661,  663,  664,  665,  666,
    670,  680,  800,  801,  807,  808,  809,  811,  900,  905,  914,  915,  916,  917,  918,  919,
    1200, 1201, 1202, 1210, 1211, 1212, 1213, 1214, 1215, 1216, 1270, 1271, 1272, 1273, 1274, 1275,
    1276, 1280, 1281, 1290, 1291, 1292, 1293, 1294, 1295, 1700, 2930, 2990, 2991, 2992, 3000, 3010,
    3013, 3020, 3027, 3030, 3157, 3160, 3163, 3165, 3167, 3168, 3202, 3208, 20002};

void Expect(bool holds, const char* what, std::string_view line, std::string_view answer) {
  if (holds) return;
  std::fprintf(stderr, "%s\n  line:   %.*s\n  answer: %.*s\n", what, static_cast<int>(line.size()),
               line.data(), static_cast<int>(answer.size()), answer.data());
  std::abort();
}

std::string Say(std::string_view line) {
  std::string answer = drive::AnswerLine(line);
  if (answer.empty()) return answer;  // a dialog came up and took the following lines
  Expect(answer.rfind("{\"ok\":", 0) == 0 && answer.back() == '}', "no object", line, answer);
  Expect(answer.find('\n') == answer.npos, "more than one line", line, answer);
  return answer;
}

// What holds whatever was done, once the program has come to rest.
void ExpectRest() {
  constexpr std::string_view kActive = "\"active\":true";
  if (drive::AnswerLine("wait 1000").find("closed") != std::string::npos) return;
  // A receive may still wait for its first byte, and then opens a program.
  if (platform::WorkerRuns(platform::Worker::Transfer)) Say("wait 70000");
  Say("wait 1000");
  const std::string text = Say("get text");
  const std::string tabs = Say("get tabs");
  Say("wait 1000");
  const std::string later = Say("get text");
  Expect(later == text, "the text does not come to rest", text, later);
  const std::size_t active = tabs.find(kActive);
  Expect(active != tabs.npos && tabs.find(kActive, active + 1) == tabs.npos,
         "not one active program", "get tabs", tabs);
}

std::string PickedLine(fuzz::Bytes& bytes) {
  return fuzz::PickedLine(bytes, kPhrases, [&bytes](char c, std::string& line) {
    if (c == '@') {
      line += std::to_string(kControls[bytes.Next() % std::size(kControls)]);
    } else if (c == '#') {
      line += std::to_string(bytes.Next() * bytes.Next() / 16);
    } else {
      return false;
    }
    return true;
  });
}

}  // namespace

// Where the lines of this run come from: the phrases that the bytes pick, or a text.
struct Source {
  fuzz::Bytes* bytes = nullptr;
  std::string_view text;
};
Source source;

// Says the next line; also what a dialog that stands open is worked with.
bool SayNext() {
  if (source.bytes != nullptr) {
    if (!source.bytes->Any()) return false;
    Say(PickedLine(*source.bytes));
    return true;
  }
  if (source.text.empty()) return false;
  const std::size_t end = std::min(source.text.find('\n'), source.text.size());
  const std::string line(source.text.substr(0, end));
  source.text.remove_prefix(std::min(end + 1, source.text.size()));
  Say(line);
  return true;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::filesystem::path home = fuzz::NewHome();
  drive::KeepFilesAtHome();
  drive::Machine machine;
  machine.home = home.u16string();
  Expect(drive::Begin(machine), "the application did not start", "", "");
  fuzz::Bytes bytes(data + 1, size - 1);
  source = Source();
  if (data[0] % 2 == 1) {
    source.bytes = &bytes;
  } else {
    source.text = std::string_view(reinterpret_cast<const char*>(data + 1), size - 1);
  }
  drive::ReadOnInDialogs({nullptr, SayNext});
  while (SayNext()) {
  }
  ExpectRest();
  drive::End();
  std::filesystem::remove_all(home);
  return 0;
}
