#include "driver/drive.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/commands.h"
#include "app/hooks.h"
#include "app/router.h"
#include "driver/drive_internal.h"
#include "driver/json_text.h"
#include "platform/file.h"
#include "platform/headless/headless.h"
#include "platform/process.h"
#include "shell/start_up.h"

namespace drive {
namespace {

constexpr std::int64_t kMostId = 100000;
constexpr std::int64_t kMostWaitMs = 3600000;
constexpr std::int64_t kMostPortBuffer = 65536;  // bytes
constexpr std::int64_t kMostDots = 1000000;      // of a page or an inch
constexpr std::int64_t kLongestWaitMs = 2147483647;
constexpr std::int64_t kMostPixels = 16000;

std::u16string homeFolder;
bool filesAtHome = false;
std::u16string dncLog;
bool (*formerPanelLog)(const char16_t* text) = nullptr;

bool KeepDncLine(const char16_t* text) {
  dncLog += text;
  return formerPanelLog && formerPanelLog(text);
}

DialogReader reader;
// One flag for each line at work, the innermost last: whether a dialog has answered it.
std::vector<bool> linesAtWork;

bool ReadOn() {
  if (linesAtWork.empty() || reader.turn == nullptr) return false;
  if (!linesAtWork.back()) {
    linesAtWork.back() = true;
    if (reader.opened) reader.opened();
  }
  return reader.turn();
}

std::string Done(bool done, std::u16string_view error) { return done ? Good() : Bad(error); }

std::string Usage(std::u16string_view form) {
  return Bad(std::u16string(u"expected: ").append(form));
}

// Reads the control in the first word and runs the act on it.
template <typename Act>
std::string WithControl(const Words& words, std::u16string_view form, Act act) {
  int id = 0;
  std::u16string error;
  if (words.empty()) return Usage(form);
  if (!ReadControl(words[0], id, error)) return Bad(error);
  return act(id);
}

constexpr char16_t kNotUsable[] = u"hidden, disabled or not of this kind";

std::string AnswerClick(const Words& words) {
  if (words.size() != 1) return Usage(u"click CONTROL");
  return WithControl(words, u"", [](int id) {
    headless::ControlInfo info;
    headless::Describe(id, info);
    if (info.kind == u"list" || info.kind == u"multilist") {
      return Done(headless::ContextMenu(id, platform::SelectedRow(id)), u"no menu there");
    }
    return Done(headless::Click(id), kNotUsable);
  });
}

std::string AnswerCtrlClick(const Words& words) {
  if (words.size() != 1) return Usage(u"ctrlclick CONTROL");
  return WithControl(words, u"", [](int id) {
    headless::HoldCtrl(true);
    const bool clicked = headless::Click(id);
    headless::HoldCtrl(false);
    return Done(clicked, kNotUsable);
  });
}

std::string AnswerCommand(const Words& words) {
  std::int64_t id = 0;
  std::int64_t notification = 0;
  const bool second = words.size() == 2;
  if ((words.size() != 1 && !second) || !ReadInteger(words[0], 0, kMostId, id) ||
      (second && !ReadInteger(words[1], 0, kMostId, notification))) {
    return Usage(u"command ID [NOTIFICATION]");
  }
  const int number = static_cast<int>(id);
  if (morva::RouteCommand(number, static_cast<int>(notification))) return Good();
  return Bad(morva::IsPending(number) ? u"still to come" : u"nobody takes this command");
}

std::string AnswerType(const Words& words) {
  if (words.size() != 2 || !words[1].quoted) return Usage(u"type CONTROL \"text\"");
  return WithControl(words, u"", [&words](int id) {
    return Done(headless::TypeInto(id, words[1].text), kNotUsable);
  });
}

bool ReadRows(const Words& words, std::vector<int>& rows) {
  for (std::size_t i = 1; i < words.size(); ++i) {
    std::int64_t row = 0;
    if (!ReadInteger(words[i], 0, kMostId, row)) return false;
    rows.push_back(static_cast<int>(row));
  }
  return !rows.empty();
}

std::string AnswerSelect(const Words& words) {
  std::vector<int> rows;
  if (!ReadRows(words, rows)) return Usage(u"select CONTROL ROW [ROW ...]");
  return WithControl(words, u"", [&rows](int id) {
    return Done(headless::SelectRows(id, rows), u"no such row, or hidden or disabled");
  });
}

std::string AnswerDouble(const Words& words) {
  std::vector<int> rows;
  if (!ReadRows(words, rows) || rows.size() != 1) return Usage(u"double CONTROL ROW");
  return WithControl(words, u"", [&rows](int id) {
    return Done(headless::DoubleClickRow(id, rows[0]), u"no such row, or hidden or disabled");
  });
}

std::string AnswerRowClick(const Words& words) {
  std::vector<int> numbers;
  if (!ReadRows(words, numbers) || numbers.size() != 2) return Usage(u"rowclick CONTROL ROW X");
  return WithControl(words, u"", [&numbers](int id) {
    return Done(headless::ClickInRow(id, numbers[0], numbers[1]),
                u"no such row, or hidden or disabled");
  });
}

std::string AnswerMenu(const Words& words) {
  std::int64_t row = -1;
  if (words.empty() || words.size() > 2 ||
      (words.size() == 2 && !ReadInteger(words[1], -1, kMostId, row))) {
    return Usage(u"menu CONTROL [ROW]");
  }
  return WithControl(words, u"", [row](int id) {
    return Done(headless::ContextMenu(id, static_cast<int>(row)), u"no menu there");
  });
}

std::string AnswerFocus(const Words& words) {
  if (words.size() != 1) return Usage(u"focus CONTROL");
  return WithControl(words, u"", [](int id) { return Done(headless::Focus(id), kNotUsable); });
}

std::string AnswerHover(const Words& words) {
  if (words.size() != 1) return Usage(u"hover CONTROL|nothing");
  if (words[0].text == u"nothing") {
    headless::MovePointerOver(0);
    return Good();
  }
  return WithControl(words, u"", [](int id) {
    headless::MovePointerOver(id);
    return Good();
  });
}

std::string AnswerKey(const Words& words) {
  platform::KeyEvent key;
  if (words.size() != 1 || !ReadKey(words[0].text, key)) return Usage(u"key \"Ctrl+S\"");
  return Done(headless::PressKey(key), u"nothing has the keyboard");
}

std::string AnswerResize(const Words& words) {
  std::int64_t width = 0;
  std::int64_t height = 0;
  if (words.size() != 2 || !ReadInteger(words[0], 0, kMostPixels, width) ||
      !ReadInteger(words[1], 0, kMostPixels, height)) {
    return Usage(u"resize W H");
  }
  headless::Resize(static_cast<int>(width), static_cast<int>(height));
  return Good();
}

std::string AnswerWait(const Words& words) {
  std::int64_t ms = 0;
  // Lines by chance get an hour at most: a day of playing takes long to live through.
  const std::int64_t most = filesAtHome ? kMostWaitMs : kLongestWaitMs;
  if (words.size() != 1 || !ReadInteger(words[0], 0, most, ms)) return Usage(u"wait MS");
  headless::Advance(static_cast<int>(ms));
  return Good();
}

std::string AnswerClose(const Words& words) {
  if (!words.empty()) return Usage(u"close");
  return Good("closed", headless::CloseKey() ? "true" : "false");
}

std::string AnswerAnswer(const Words& words) {
  struct NamedAnswer {
    const char16_t* name;
    platform::BoxAnswer answer;
  };
  constexpr NamedAnswer kAnswers[] = {{u"yes", platform::BoxAnswer::Yes},
                                      {u"no", platform::BoxAnswer::No},
                                      {u"cancel", platform::BoxAnswer::Cancel},
                                      {u"ok", platform::BoxAnswer::Ok},
                                      {u"other", platform::BoxAnswer::Other}};
  for (const NamedAnswer& each : kAnswers) {
    if (words.size() != 1 || words[0].text != each.name) continue;
    headless::QueueAnswer(each.answer);
    return Good();
  }
  return Usage(u"answer yes|no|cancel|ok|other");
}

std::string AnswerFile(const Words& words) {
  if (words.size() != 1) return Usage(u"file \"path\" or file cancel");
  if (!words[0].quoted) {
    if (words[0].text != u"cancel") return Usage(u"file \"path\" or file cancel");
    headless::QueueFileCancel();
    return Good();
  }
  const std::u16string path = AllowedPath(words[0].text);
  if (path.empty()) return Bad(u"only files below the home folder can be named here");
  headless::QueueFile(path);
  return Good();
}

std::string AnswerPick(const Words& words) {
  std::int64_t id = 0;
  const bool cancel = words.size() == 1 && words[0].text == u"cancel";
  if (words.size() != 1 || (!cancel && !ReadInteger(words[0], 1, kMostId, id))) {
    return Usage(u"pick ID or pick cancel");
  }
  headless::QueuePick(static_cast<int>(id));
  return Good();
}

// How long the next box, dialog or popup stands open.
int openMs = 0;

std::string AnswerMeanwhile(const Words& words) {
  std::int64_t ms = 0;
  if (words.size() != 1 || !ReadInteger(words[0], 0, kMostWaitMs, ms))
    return Usage(u"meanwhile MS");
  openMs = static_cast<int>(ms);
  headless::WhileOpen([] { headless::Advance(openMs); });
  return Good();
}

std::string AnswerPort(const Words& words) {
  if (words.size() == 2 && words[0].text.size() < 32) {
    const std::u16string& state = words[1].text;
    using headless::PortState;
    std::optional<PortState> wanted;
    if (state == u"present") wanted = PortState::Present;
    if (state == u"absent") wanted = PortState::Absent;
    if (state == u"busy") wanted = PortState::Busy;
    if (wanted) {
      headless::SetPort(words[0].text, *wanted);
      return Good();
    }
  }
  return Usage(u"port NAME present|absent|busy");
}

std::string AnswerPeer(const Words& words) {
  const std::u16string_view what = words.empty() ? u"" : std::u16string_view(words[0].text);
  std::string bytes;
  std::int64_t ms = 0;
  if (what == u"send" && words.size() == 2 && words[1].quoted) {
    if (!ToBytes(words[1].text, bytes)) return Bad(u"a character above 255 is no byte");
    headless::PeerSend(bytes);
  } else if (what == u"stall" && words.size() == 2 && ReadInteger(words[1], 0, kMostWaitMs, ms)) {
    headless::PeerStall(static_cast<int>(ms));
  } else if (what == u"buffer" && words.size() == 2 &&
             ReadInteger(words[1], 0, kMostPortBuffer, ms)) {
    headless::SetPortBuffer(static_cast<std::size_t>(ms));
  } else if (what == u"unplug" && words.size() == 1) {
    headless::PeerUnplug();
  } else {
    return Usage(u"peer send \"bytes\", peer stall MS, peer buffer BYTES or peer unplug");
  }
  return Good();
}

std::string AnswerFail(const Words& words) {
  std::int64_t n = 0;
  if (words.size() != 2 || !ReadInteger(words[1], 0, kMostId, n)) return Usage(u"fail KIND N");
  headless::FailCall(platform::ToUtf8(words[0].text), static_cast<int>(n));
  return Good();
}

std::string AnswerDisk(const Words& words) {
  std::int64_t ms = 0;
  if (words.size() != 1 || !ReadInteger(words[0], 0, kMostWaitMs, ms)) return Usage(u"disk MS");
  headless::SetFlushTime(static_cast<int>(ms));
  return Good();
}

std::string AnswerFront(const Words& words) {
  if (!words.empty()) return Usage(u"front");
  headless::ComeToFront();
  return Good();
}

std::string AnswerDrop(const Words& words) {
  if (words.empty()) return Usage(u"drop \"path\" ...");
  std::vector<std::u16string> paths;
  for (const Word& word : words) {
    const std::u16string path = AllowedPath(word.text);
    if (path.empty()) return Bad(u"only files below the home folder can be named here");
    paths.push_back(path);
  }
  return headless::DropFiles(paths) ? Good() : Bad(u"nothing takes files now");
}

std::string AnswerTerminate(const Words& words) {
  if (!words.empty()) return Usage(u"terminate");
  headless::Terminate();
  return Good();
}

std::string AnswerPrinter(const Words& words) {
  constexpr const char16_t* kForm = u"printer W H DPIX DPIY, printer cancel or printer none";
  if (words.size() == 1 && words[0].text == u"cancel") {
    headless::QueuePrinterCancel();
    return Good();
  }
  if (words.size() == 1 && words[0].text == u"none") {
    headless::QueueNoPrinter();
    return Good();
  }
  std::int64_t figures[4] = {};
  if (words.size() != std::size(figures)) return Usage(kForm);
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (!ReadInteger(words[i], -kMostDots, kMostDots, figures[i])) return Usage(kForm);
  }
  const auto figure = [&figures](int i) { return static_cast<int>(figures[i]); };
  headless::QueuePrinter({figure(0), figure(1), figure(2), figure(3)});
  return Good();
}

struct Command {
  const char16_t* name;
  std::string (*answer)(const Words& words);
};
constexpr Command kCommands[] = {
    {u"click", AnswerClick},
    {u"ctrlclick", AnswerCtrlClick},
    {u"command", AnswerCommand},
    {u"type", AnswerType},
    {u"select", AnswerSelect},
    {u"double", AnswerDouble},
    {u"rowclick", AnswerRowClick},
    {u"menu", AnswerMenu},
    {u"focus", AnswerFocus},
    {u"hover", AnswerHover},
    {u"key", AnswerKey},
    {u"editor", AnswerEditor},
    {u"mouse", AnswerMouse},
    {u"resize", AnswerResize},
    {u"wait", AnswerWait},
    {u"close", AnswerClose},
    {u"answer", AnswerAnswer},
    {u"file", AnswerFile},
    {u"pick", AnswerPick},
    {u"printer", AnswerPrinter},
    {u"meanwhile", AnswerMeanwhile},
    {u"port", AnswerPort},
    {u"peer", AnswerPeer},
    {u"fail", AnswerFail},
    {u"disk", AnswerDisk},
    {u"front", AnswerFront},
    {u"drop", AnswerDrop},
    {u"terminate", AnswerTerminate},
    {u"get", AnswerGet},
    {u"call", AnswerCall},
};

}  // namespace

bool ToBytes(std::u16string_view text, std::string& bytes) {
  bytes.clear();
  for (char16_t unit : text) {
    if (unit > 255) return false;
    bytes.push_back(static_cast<char>(unit));
  }
  return true;
}

std::u16string FromBytes(std::string_view bytes) {
  std::u16string text;
  for (char byte : bytes) text.push_back(static_cast<unsigned char>(byte));
  return text;
}

std::u16string_view DncLog() { return dncLog; }

std::u16string AllowedPath(std::u16string_view path) {
  std::u16string whole(path);
  const char16_t separator = platform::PathSeparator();
  const bool absolute = !path.empty() && (path[0] == separator || path.find(u':') == 1);
  if (!absolute) whole = homeFolder + separator + whole;
  if (!filesAtHome) return whole;
  const std::u16string root = homeFolder + separator;
  const bool inside = whole.compare(0, root.size(), root) == 0 && whole.find(u"..") == whole.npos;
  return inside ? whole : std::u16string();
}

bool Begin(const Machine& machine) {
  homeFolder = machine.home;
  dncLog.clear();
  morva::ResetApplication();
  headless::Reset(machine.home);
  headless::SetDialogTurn(ReadOn);
  headless::SetExecutableName(machine.executableName);
  if (!machine.hasDocuments) headless::RemoveDocuments();
  if (morva::StartApplication() != 0) return false;
  formerPanelLog = morva::hooks.setupPanelLog;
  morva::hooks.setupPanelLog = KeepDncLine;
  return true;
}

void KeepFilesAtHome() { filesAtHome = true; }

namespace {

std::string Work(std::string_view line) {
  Words words;
  if (!SplitLine(line, words)) return Bad(u"this line cannot be read");
  if (words.empty() || (!words[0].quoted && words[0].text[0] == u'#')) return Good();
  const std::u16string name = words[0].text;
  words.erase(words.begin());
  for (const Command& command : kCommands) {
    if (name != command.name) continue;
    const bool looks = command.answer == AnswerGet || command.answer == AnswerCall;
    if (headless::WindowClosed() && !looks) return Bad(u"the window is closed");
    return command.answer(words);
  }
  return Bad(u"unknown command");
}

}  // namespace

void ReadOnInDialogs(const DialogReader& given) { reader = given; }

std::string AnswerLine(std::string_view line) {
  linesAtWork.push_back(false);
  std::string answer = Work(line);
  if (linesAtWork.back()) answer.clear();
  linesAtWork.pop_back();
  return answer;
}

void End() {
  if (!headless::WindowClosed()) {
    headless::ClearQueues();
    headless::QueueAnswer(platform::BoxAnswer::Yes);
    headless::CloseKey();
  }
  platform::EndProcess();
}

}  // namespace drive
