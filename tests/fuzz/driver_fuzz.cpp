// Driver lines by chance: nothing in them may end the program, and every answer is one line.
//
// The first byte chooses: even, the rest is lines as they stand; odd, every further byte picks
// a phrase, so that whole jobs come about. Files stay below a folder of this process.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <string_view>

#include "driver/drive.h"
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
    "get tabs",
    "get features",
    "get path",
    "get controls",
    "get text",
    "get paint HaasSimView",
    "get paint MorvaDeskWnd",
    "get tokens #",
    "get sketch",
    "get paint MorvaCustomShapeCanvas",
    "click 1201",
    "mouse MorvaCustomShapeCanvas press # # left",
    "mouse MorvaCustomShapeCanvas move # #",
    "mouse MorvaCustomShapeCanvas release # # left",
    "mouse MorvaCustomShapeCanvas press # # left ctrl",
    "mouse MorvaCustomShapeCanvas press # # middle",
    "mouse MorvaCustomShapeCanvas release # # right",
    "mouse MorvaCustomShapeCanvas double # # left",
    "mouse MorvaCustomShapeCanvas wheel # # 1",
    "mouse MorvaCustomShapeCanvas wheel # # -3",
    "mouse MorvaCadScroll press 8 # left",
    "mouse MorvaCadForm wheel 10 10 -2",
    "focus 20011",
    "key \"F8\"",
    "key \"Ctrl+C\"",
    "key \"Ctrl+V\"",
    "key \"Ctrl+X\"",
    "select 3400 #",
    "type ^ \"#\"",
    "type ^ \"-.5\"",
    "type ^ \"1e9\"",
    "click ^",
    "click ^",
    "pick ^",
    "close",
};

// Keys, methods and fields of the CAD workspace.
constexpr int kCadControls[] = {
    1000,  1001,  1002,  1003,  1004,  0x3ED, 0x3EE, 0x3EF, 0x3F0, 0x3F1, 0x3F2, 0x3F3, 0x3F4,
    0x3F5, 0x3F6, 0x3F7, 0x3F8, 1020,  1021,  1022,  1023,  1024,  1025,  1026,  1027,  1028,
    1029,  1030,  1031,  1032,  1033,  0x4E3, 0x4E4, 0x4E5, 1254,  0x4ED, 0x4EE, 0x4EF, 0x4F0,
    1500,  0x5DD, 0x5DE, 0x5DF, 0x5E0, 0x5E1, 0x5E4, 1510,  0x5E7, 0x5E8, 0x60C, 0x60E, 0x60F,
    0x618, 0x619, 0x61A, 0x61B, 0x61C, 0x622, 0x623, 0x624, 0x62C, 0x62D, 0x636, 0x637, 0x640,
    0x73A, 0x73B, 0x741, 0x742, 0x743, 0xB2E, 0xB2F, 0xB30, 0xB31, 0xBA6, 0xBA7, 0xC21, 0xC23,
    0xC26, 3404,  3405,  3406,  3407,  3408,  3409,  3410,  3411,  3412,  3413,  3414,  3415,
    3416,  3419,  3420,  3421,  3422,  3423,  3424,  3425,  3426,  3427,  3428,  3429,  3430,
    3431,  3434,  3438,  3439,  3440,  3442,  3600,  3601};

constexpr int kControls[] = {101,  103,  104,  105,  106,  108,  109,  110,  111,  112,  200,  300,
                             400,  440,  600,  601,  660,  661,  663,  664,  665,  666,  670,  680,
                             800,  801,  807,  808,  809,  811,  900,  905,  914,  915,  916,  917,
                             918,  919,  1200, 1201, 1202, 1210, 1211, 1212, 1213, 1214, 1215, 1216,
                             1270, 1271, 1272, 1273, 1274, 1275, 1276, 1280, 1281, 1290, 1291, 1292,
                             1293, 1294, 1295, 1700, 2930, 2990, 2991, 2992, 3000, 3010, 3013, 3020,
                             3027, 3030, 3157, 3160, 3163, 3165, 3167, 3168, 3202, 3208, 20002};

// In memory where the system has such a folder: every save of the program is flushed.
std::filesystem::path NewHome() {
  const std::filesystem::path memory = "/dev/shm";
  const bool there = std::filesystem::is_directory(memory);
  const std::filesystem::path parent = there ? memory : std::filesystem::temp_directory_path();
  std::string name = (parent / "morva-fuzz-XXXXXX").string();
  if (!mkdtemp(name.data())) std::abort();
  return name;
}

void Expect(bool holds, const char* what, std::string_view line, std::string_view answer) {
  if (holds) return;
  std::fprintf(stderr, "%s\n  line:   %.*s\n  answer: %.*s\n", what, static_cast<int>(line.size()),
               line.data(), static_cast<int>(answer.size()), answer.data());
  std::abort();
}

std::string Say(std::string_view line) {
  std::string answer = drive::AnswerLine(line);
  Expect(answer.rfind("{\"ok\":", 0) == 0 && answer.back() == '}', "no object", line, answer);
  Expect(answer.find('\n') == answer.npos, "more than one line", line, answer);
  return answer;
}

// What holds whatever was done, once the program has come to rest.
void ExpectRest() {
  constexpr std::string_view kActive = "\"active\":true";
  if (drive::AnswerLine("wait 1000").find("closed") != std::string::npos) return;
  // A receive may still wait for its first byte, and then opens a program.
  if (platform::WorkerRuns()) Say("wait 70000");
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

class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  bool Any() const { return at_ < size_; }
  std::size_t Next() { return Any() ? data_[at_++] : 0; }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t at_ = 0;
};

std::string PickedLine(Bytes& bytes) {
  std::string line;
  for (const char* c = kPhrases[bytes.Next() % std::size(kPhrases)]; *c; ++c) {
    if (*c == '@') {
      line += std::to_string(kControls[bytes.Next() % std::size(kControls)]);
    } else if (*c == '^') {
      line += std::to_string(kCadControls[bytes.Next() % std::size(kCadControls)]);
    } else if (*c == '#') {
      line += std::to_string(bytes.Next() * bytes.Next() / 16);
    } else {
      line.push_back(*c);
    }
  }
  return line;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::filesystem::path home = NewHome();
  drive::KeepFilesAtHome();
  drive::Machine machine;
  machine.home = home.u16string();
  Expect(drive::Begin(machine), "the application did not start", "", "");
  Bytes bytes(data + 1, size - 1);
  if (data[0] % 2 == 1) {
    while (bytes.Any()) Say(PickedLine(bytes));
  } else {
    std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
    while (!text.empty()) {
      const std::size_t end = std::min(text.find('\n'), text.size());
      Say(text.substr(0, end));
      text.remove_prefix(std::min(end + 1, text.size()));
    }
  }
  ExpectRest();
  drive::End();
  std::filesystem::remove_all(home);
  return 0;
}
