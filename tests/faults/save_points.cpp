#include "faults/save_points.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/outlets.h"
#include "dnc/transfer.h"
#include "documents/autosave.h"
#include "documents/companions.h"
#include "documents/disabled_code.h"
#include "documents/program_tabs.h"
#include "documents/recent_files.h"
#include "documents/save_state.h"
#include "documents/saving.h"
#include "documents/tab_models.h"
#include "faults/file_calls.h"
#include "faults/files_of.h"
#include "library/shapes.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/headless/headless.h"
#include "platform/profile.h"
#include "shell/start_up.h"

namespace faults {
namespace {

using file_calls::Call;
using file_calls::Deed;
using morva::app;

constexpr int kMostWords = 6;
constexpr int kWordBytes = 400;
constexpr std::size_t kSettingsBytes = 4000;

// What a run leaves behind, in memory that it shares with the one that started it.
struct Report {
  int words = 0;
  char word[kMostWords][kWordBytes] = {};
  int typed = 0;
  char settings[kSettingsBytes] = {};  // as they stood when the save began
};
Report* report = nullptr;

[[gnu::format(printf, 1, 2)]] void Violation(const char* format, ...) {
  if (report->words >= kMostWords) return;
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(report->word[report->words++], kWordBytes, format, arguments);
  va_end(arguments);
}

fs::path home;
std::u16string PathOf(const std::string& name) {
  return platform::FromUtf8((home / name).string());
}

// The drawings and plates of a program, told apart by this number.
int generation = 1;
bool Live(morva::FeatureSettings& record, std::int32_t kind) {
  record.version = 3;
  record.kind = kind;
  record.values[0] = generation;
  return true;
}

// What the user was told.
std::vector<bool> told;
void Tell(bool saved) { told.push_back(saved); }
std::size_t savedLines = 0;  // in the log when the save began
std::size_t SavedLines() {
  const std::u16string log = platform::TextOf(morva::kIdOutputLog);
  std::size_t count = 0;
  for (std::size_t at = 0; (at = log.find(u"Saved program.", at)) != log.npos; ++at) ++count;
  return count;
}
bool StatusHolds(std::u16string_view words) {
  return std::u16string_view(app.statusText).find(words) != std::u16string_view::npos;
}

bool UserSaved() { return SavedLines() > savedLines && !app.editorDirty; }
bool UserFailed() {
  if (!app.editorDirty) return false;
  return std::ranges::any_of(headless::TakeBoxes(), [](const headless::BoxRecord& box) {
    return box.title == u"Save Error" || box.title == u"Changed on Disk";
  });
}
bool AutosaveSaved() { return StatusHolds(u"Project autosaved.") && !app.editorDirty; }
bool AutosaveFailed() {
  return app.editorDirty && (StatusHolds(u"Autosave failed") || StatusHolds(u"Not saved"));
}
bool TellSaved() { return told == std::vector<bool>{true}; }
bool TellFailed() { return told == std::vector<bool>{false}; }

void Open(const std::string& name) {
  headless::QueueFile(PathOf(name));
  morva::OpenProgram();
}
// Everything of the program is another than before.
void Change() {
  ++generation;
  headless::EditorSetAll(morva::kIdEditor, u"G0 X2 (second, and longer than the first)");
  morva::AddDisabledCode(morva::ActiveTab()->disabledCode, u"G1 X3");
}
void OpenAndChange(const std::string& name) {
  Open(name);
  Change();
}
void SaveAs(const std::string& name) {
  headless::QueueFile(PathOf(name));
  morva::SaveProgramAs();
}

std::vector<std::string> Companions(const std::string& program) {
  std::vector<std::string> files;
  for (const char16_t* suffix : {u".features", u"", u".cadmv", u".platemv"}) {
    const std::u16string path = platform::FromUtf8(program);
    const std::u16string file = *suffix ? morva::CompanionPath(path, suffix) : path;
    files.push_back(platform::ToUtf8(file));
  }
  return files;
}

// The program comes before its excluded code.
std::vector<std::string> ProgramFirst(std::vector<std::string> files) {
  std::swap(files[0], files[1]);
  return files;
}

const std::string kElsewhere = "G0 X9 (by another program)\r\n";
const std::string kLongName = "programs/" + std::string(247, 'n') + ".NC";

const char* const kSettings = "bin/MORVA.ini";

struct Case {
  const char* name = "";
  std::function<void()> prepare;
  std::function<void()> act;
  bool (*saved)() = nullptr;
  bool (*failed)() = nullptr;
  std::vector<std::string> order;  // files in the order of writing
  bool againWhenSaved = true;      // false: the act can be done once only
  bool namedByTick = false;        // what stands there already moves the name on
  // What another program made of a file of `order` meanwhile.
  std::string elsewhere = {};
  // A file whose failure nobody is told; no other one lies in its folder.
  std::string unheeded = {};
  bool replaces = false;  // another program: `order` begins with the program, then its code
};

Case UserCase(const char* name, const std::string& program) {
  return {name,
          [program] { OpenAndChange(program); },
          [] { morva::SaveProgramCommand(); },
          UserSaved,
          UserFailed,
          Companions(program)};
}

std::vector<Case> Cases() {
  std::vector<Case> cases;
  cases.push_back(UserCase("save", "programs/a.NC"));
  cases.push_back(UserCase("save of another mode", "programs/mode.NC"));
  cases.push_back(UserCase("save of a long name", kLongName));
  cases.push_back(UserCase("save without companions", "programs/bare.NC"));
  cases.push_back(UserCase("save through a link", "programs/link.NC"));
  cases.back().order = {"store/linked.NC"};
  for (const char* target : {"programs/new.NC", "programs/b.NC", "programs/bare.NC"}) {
    cases.push_back(UserCase("save as", "programs/a.NC"));
    cases.back().act = [target] { SaveAs(target); };
    cases.back().unheeded = kSettings;
    cases.back().replaces = std::string_view(target) != "programs/new.NC";
    cases.back().order = Companions(target);
    if (cases.back().replaces) cases.back().order = ProgramFirst(Companions(target));
  }
  for (const char* changed : {"programs/a.NC", "programs/a.NC.features", "programs/a.NC.cadmv"}) {
    cases.push_back(UserCase("write over", "programs/a.NC"));
    cases.back().prepare = [changed] {
      OpenAndChange("programs/a.NC");
      WriteFile(home / changed, kElsewhere);
    };
    cases.back().act = [] {
      headless::QueueAnswer(platform::BoxAnswer::Yes);
      morva::SaveProgramCommand();
    };
    cases.back().elsewhere = changed;
    cases.back().replaces = std::string_view(changed) == "programs/a.NC.features";
    if (cases.back().replaces) cases.back().order = ProgramFirst(Companions("programs/a.NC"));
  }
  cases.push_back({"save over another of a program without a path", [] { Change(); },
                   [] { SaveAs("programs/b.NC"); }, UserSaved, UserFailed,
                   ProgramFirst(Companions("programs/b.NC"))});
  cases.back().replaces = true;
  cases.back().unheeded = kSettings;
  cases.push_back({"save of a program without a path", [] { Change(); },
                   [] { SaveAs("programs/new.NC"); }, UserSaved, UserFailed,
                   Companions("programs/new.NC")});
  cases.back().unheeded = kSettings;
  const auto autosave = [] {
    morva::MarkModified();
    morva::RunAutosave();
  };
  cases.push_back({"autosave", [] { OpenAndChange("programs/a.NC"); }, autosave, AutosaveSaved,
                   AutosaveFailed, Companions("programs/a.NC")});
  Case homeless{
      "autosave without a home", [] { Change(); }, autosave, AutosaveSaved, AutosaveFailed, {}};
  homeless.namedByTick = true;
  cases.push_back(homeless);
  Case closing = UserCase("close", "programs/a.NC");
  closing.act = [] {
    headless::QueueAnswer(platform::BoxAnswer::Yes);
    morva::CloseProgram();
  };
  closing.saved = [] { return SavedLines() > savedLines && app.tabCount == 1; };
  closing.failed = [] { return app.tabCount == 2 && UserFailed(); };
  closing.againWhenSaved = false;
  cases.push_back(closing);
  Case received{"received",
                [] {
                  while (app.tabCount < morva::kMaxTabs) morva::NewProgram();
                  morva::transfer.receivedData = "O1 (received)\r\nM30\r\n";
                },
                [] { morva::ShowStatus(morva::OpenReceivedProgram()); },
                [] { return morva::transfer.receivedData.empty() && StatusHolds(u"kept in "); },
                [] { return !morva::transfer.receivedData.empty() && StatusHolds(u"RECEIVE"); },
                {}};
  received.againWhenSaved = false;
  received.namedByTick = true;
  cases.push_back(received);
  const auto settings = [] {
    told.clear();
    platform::BeginProfileChange();
    platform::WriteProfile(u"DNC", u"Port", u"COM2");
    platform::WriteProfile(u"DNC", u"Baud", u"9600");
    platform::EndProfileChange(Tell);
  };
  Case ini{"settings", [] {}, settings, TellSaved, TellFailed, {"bin/MORVA.ini"}};
  cases.push_back(ini);
  Case shapes{"shape library",
              [] { morva::AppendShape(u"Bracket"); },
              [] {
                told.clear();
                morva::SaveShapeLibrary(Tell);
              },
              TellSaved,
              TellFailed,
              {"bin/MORVA.ini"}};
  shapes.unheeded = "Documents/MORVA/Shapes/Library.shapes";
  cases.push_back(shapes);
  return cases;
}

// Every process of a run comes from here.
int InChild(const std::function<void()>& work) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child < 0) std::abort();
  if (child == 0) {
    work();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return status;
}

std::size_t OpenHandles() {
  return static_cast<std::size_t>(
      std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

struct Run {
  const Case* work = nullptr;
  int at = 0;
  Deed deed = Deed::None;
  int error = 0;
  bool onward = false;
  int quarters = 0;
};

// What must be new.
enum class Wanted { Nothing, Told, All };

bool IsUnderAnyName(const Files& files, const File& file) {
  return std::ranges::any_of(files, [&file](const auto& each) { return each.second == file; });
}

std::string_view WithoutLastEnd(std::string_view bytes) {
  return bytes.ends_with("\r\n") ? bytes.substr(0, bytes.size() - 2) : bytes;
}

// The program's own lines: a copy may be made before the marker lines come.
std::string OwnLines(std::string_view bytes) {
  std::string own;
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
    if (!bytes.starts_with("(MORVA ")) own += bytes.substr(0, end);
    bytes.remove_prefix(end);
  }
  return std::string(WithoutLastEnd(own));
}

// A save that failed leaves a whole copy of the program there, its last line as it was typed.
bool IsKeptCopy(const Files& after, const std::string& name, const File& file) {
  // A companion that had to give way, behind a save that failed half way.
  if (name.find(".kept") != name.npos && IsUnderAnyName(after, file)) return true;
  return name.find("MORVA/Recovery/") != name.npos &&
         std::ranges::any_of(after, [&file](const auto& each) {
           return OwnLines(each.second.bytes) == OwnLines(file.bytes);
         });
}

// No program stands beside the excluded code of another one: its own, or none.
void CheckPair(const Case& work, const Files& before, const Files& after, const Files& now) {
  if (!work.replaces) return;
  const std::string& program = work.order[0];
  const auto code = now.find(work.order[1]);
  if (code == now.end() || !now.contains(program)) return;
  const bool newCode = SameIn(after, code->first, code->second);
  const bool oldCode = SameIn(before, code->first, code->second);
  const bool newProgram = SameIn(after, program, now.at(program));
  if (newCode != oldCode && newCode != newProgram) {
    Violation("the %s program has the excluded code of another", newProgram ? "new" : "old");
  }
}

// What a program's opening wrote into the settings before the save.
bool AreSettingsBefore(const std::string& name, const File& file) {
  return name == kSettings && file.bytes == report->settings;
}

void NoteSettings() {
  const Files now = FilesOf(home);
  const std::string& bytes = now.at(kSettings).bytes;
  if (bytes.size() >= kSettingsBytes) std::abort();
  std::ranges::copy(bytes, report->settings);
  report->settings[bytes.size()] = '\0';
}

bool MayBeGone(const Case& work, const Files& now, const std::string& name, const File& file) {
  return work.replaces && name == work.order[1] && IsUnderAnyName(now, file);
}

// The disk as it must be: each file old or new, in the order of writing.
void CheckFiles(const Case& work, const Files& before, const Files& after, Wanted wanted,
                int strays) {
  const Files now = FilesOf(home);
  for (const auto& [name, file] : now) {
    if (AreSettingsBefore(name, file)) continue;
    if (IsStray(name)) {
      if (--strays < 0) Violation("%s lies about", name.c_str());
    } else if (!SameIn(before, name, file) && !SameIn(after, name, file) &&
               !(work.namedByTick && IsUnderAnyName(after, file)) &&
               !IsKeptCopy(after, name, file)) {
      Violation("%s is neither the old nor the new one, %zu bytes", name.c_str(),
                file.bytes.size());
    }
  }
  for (const auto& [name, file] : before) {
    if (!now.contains(name) && !MayBeGone(work, now, name, file)) {
      Violation("%s is gone", name.c_str());
    }
  }
  CheckPair(work, before, after, now);
  bool oldSeen = false;
  for (const std::string& name : work.order) {
    const auto made = after.find(name);
    if (made == after.end() || SameIn(before, name, made->second)) continue;
    const bool isNew = SameIn(now, name, made->second);
    if (isNew && oldSeen) Violation("%s is new before an earlier file", name.c_str());
    oldSeen = oldSeen || !isNew;
  }
  if (wanted == Wanted::Nothing) return;
  for (const auto& [name, file] : after) {
    // The last programs are written when a program takes its path, and no later save tries again.
    const bool once = wanted == Wanted::Told || name == kSettings;
    if (once && name == work.unheeded && file_calls::plan->asideMet) continue;
    if (SameIn(now, name, file)) continue;
    // A name of those kept ones that may be taken is passed over.
    const bool anyName = work.namedByTick || name.find(".kept") != name.npos;
    if (!anyName || !IsUnderAnyName(now, file)) {
      Violation("%s is not the new one", name.c_str());
    }
  }
}

void BeginTelling() {
  told.clear();
  headless::TakeBoxes();
  savedLines = SavedLines();
}

// A save that nothing hinders: done, and told.
void CheckFurtherSave(const Run& run, const Files& before, const Files& after, int strays) {
  headless::ClearQueues();
  BeginTelling();
  // Where the save before failed on a look at the file, its user is asked.
  headless::QueueAnswer(platform::BoxAnswer::Yes);
  run.work->act();
  if (!run.work->saved()) Violation("a further save does not work");
  CheckFiles(*run.work, before, after, Wanted::All, strays);
}

void DoRun(const Run& run, const Files& before, const Files& after) {
  const Case& work = *run.work;
  work.prepare();
  NoteSettings();
  BeginTelling();
  const std::size_t handles = OpenHandles();
  file_calls::plan->error = run.error;
  file_calls::plan->onward = run.onward;
  file_calls::plan->quarters = run.quarters;
  const std::size_t end = work.unheeded.rfind('/');
  file_calls::SetAside(end == std::string::npos ? "" : "/" + work.unheeded.substr(0, end + 1));
  file_calls::Start(run.at, run.deed);
  work.act();
  file_calls::Stop();
  const bool saved = work.saved();
  const bool failed = work.failed();
  if (run.at == 0) {
    if (!saved) Violation("nothing is in the way and it does not save");
    return;
  }
  if (!file_calls::plan->met) Violation("the call did not come");
  if (saved == failed) Violation(saved ? "saved and failed" : "the user hears nothing");
  const Call call = file_calls::plan->calls[run.at - 1];
  const bool harmless = run.deed == Deed::Short || file_calls::IsHarmless(call, run.error);
  if (harmless && !saved) Violation("a call that can be taken up again failed the save");
  if (saved && file_calls::plan->mustTell) Violation("saved although the disk refused it");
  if (OpenHandles() != handles) Violation("a handle stays open");
  const int strays = file_calls::plan->eraseFailed ? 1 : 0;
  CheckFiles(work, before, after, saved ? Wanted::Told : Wanted::Nothing, strays);
  if (!saved || work.againWhenSaved) CheckFurtherSave(run, before, after, strays);
}

// The next start of the program finds a disk on which it can work.
void DoNextStart(const Run& run, const Files& after) {
  run.work->prepare();
  BeginTelling();
  run.work->act();
  if (!run.work->saved()) Violation("the next start cannot save");
  if (run.work->namedByTick) return;
  const Files now = FilesOf(home);
  for (const auto& [name, file] : after) {
    // Code that is excluded once more takes a further place.
    if (name.ends_with(".features")) continue;
    if (!SameIn(now, name, file)) Violation("the next start leaves %s", name.c_str());
  }
}

std::string NameOf(const Run& run) {
  constexpr const char* kDeeds[] = {"nothing", "killed", "torn", "refused", "short"};
  std::string name = run.work->name;
  name +=
      std::string(", ") + kDeeds[static_cast<int>(run.deed)] + " at call " + std::to_string(run.at);
  if (run.at > 0) {
    name += std::string(" (") + file_calls::NameOf(file_calls::plan->calls[run.at - 1]) + ")";
  }
  if (run.error != 0) name += ", error " + std::to_string(run.error);
  if (run.onward) name += " and on";
  return name;
}

void Collect(const std::string& name, Tally& tally) {
  for (int i = 0; i < report->words; ++i) {
    tally.violations.push_back(name + ": " + report->word[i]);
  }
  *report = Report();
}

bool Kills(Deed deed) { return deed == Deed::Kill || deed == Deed::Tear; }

// What the save meets.
Files BeforeOf(const Case& work, const Files& disk) {
  Files before = disk;
  if (!work.elsewhere.empty()) before[work.elsewhere].bytes = kElsewhere;
  return before;
}

void RunOne(const Run& run, const Files& disk, const Files& after, Tally& tally) {
  PutBack(home, disk);
  const Files before = BeforeOf(*run.work, disk);
  const int status = InChild([&] { DoRun(run, before, after); });
  if (Kills(run.deed)) {
    ++tally.points;
    if (!WIFSIGNALED(status) || WTERMSIG(status) != SIGKILL) Violation("it was not killed");
    file_calls::Stop();
    CheckFiles(*run.work, before, after, Wanted::Nothing, 1);
    InChild([&] { DoNextStart(run, after); });
  } else {
    ++tally.errors;
    if (status != 0) Violation("the process ended with %d", status);
  }
  Collect(NameOf(run), tally);
}

// The errors of a call, each once, and those that a full or dying disk goes on with.
void AddErrors(const Run& point, Call call, std::vector<Run>& runs) {
  for (const int error : file_calls::ErrorsOf(call)) {
    Run run = point;
    run.deed = Deed::Fail;
    run.error = error;
    runs.push_back(run);
    run.onward = true;
    if (error == ENOSPC || error == EIO || error == EROFS) runs.push_back(run);
  }
}

std::vector<Run> RunsOf(const Case& work) {
  std::vector<Run> runs;
  for (int at = 1; at <= file_calls::plan->counted; ++at) {
    const Call call = file_calls::plan->calls[at - 1];
    Run run{.work = &work, .at = at, .deed = Deed::Kill};
    runs.push_back(run);
    AddErrors(run, call, runs);
    for (const int quarters : {0, 1, 2, 3}) {
      run.quarters = quarters;
      run.deed = Deed::Tear;
      if (call == Call::Write) runs.push_back(run);
      run.deed = Deed::Short;
      if (call == Call::Write || call == Call::Read) runs.push_back(run);
    }
  }
  return runs;
}

// What stands on the disk before each run: programs with all that belongs to them.
void FillDisk() {
  for (const char* folder : {"programs", "store"}) fs::create_directory(home / folder);
  WriteFile(home / "bin/MORVA.ini", "[DNC]\r\nPort=COM1\r\n[Other]\r\nName=kept\r\n");
  WriteFile(home / "programs/bare.NC", "G0 X1\r\n");
  WriteFile(home / "store/linked.NC", "G0 X1\r\n");
  fs::create_symlink("../store/linked.NC", home / "programs/link.NC");
  InChild([] {
    for (const std::string& name : {std::string("programs/a.NC"), std::string("programs/b.NC"),
                                    std::string("programs/mode.NC"), kLongName}) {
      WriteFile(home / name, "G0 X1\r\n");
      Open(name);
      headless::EditorSetAll(morva::kIdEditor, u"G0 X1 (first)");
      if (name == "programs/b.NC") morva::AddDisabledCode(morva::ActiveTab()->disabledCode, u"G0");
      morva::SaveProgramCommand();
    }
  });
  for (const std::string& name : Companions("programs/mode.NC")) {
    fs::permissions(home / name, fs::perms(0642));
  }
}

// A key each 400 ms; dies some of these 100 ms behind one.
void TypeUntil(int keys, int pieces) {
  Open("programs/a.NC");
  headless::SetFlushTime(300);
  for (int i = 0; i < keys; ++i) {
    headless::EditorInsert(morva::kIdEditor, u"Q");
    report->typed = i + 1;
    headless::Advance(i + 1 < keys ? 400 : 100 * pieces);
  }
  std::raise(SIGKILL);
}

}  // namespace

void Begin() {
  std::string name = "/dev/shm/morva-faults-XXXXXX";
  if (!fs::is_directory("/dev/shm")) name = fs::temp_directory_path() / "morva-faults-XXXXXX";
  if (!mkdtemp(name.data())) std::abort();
  home = name;
  file_calls::Begin();
  void* place =
      mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (place == MAP_FAILED) std::abort();
  report = new (place) Report();
  headless::Reset(platform::FromUtf8(name));
  if (morva::StartApplication() != 0) std::abort();
  morva::liveModels.cadWindowExists = [] { return true; };
  morva::liveModels.plateWindowExists = [] { return true; };
  morva::liveModels.storeSketch = [](morva::FeatureSettings& record) { return Live(record, 4); };
  morva::liveModels.storePlate = [](morva::FeatureSettings& record) { return Live(record, 5); };
  morva::liveModels.loadSketch = nullptr;
  morva::liveModels.loadPlate = nullptr;
  FillDisk();
  morva::LoadRecentFiles();  // as a start finds them
}

void End() {
  std::error_code ignored;
  fs::remove_all(home, ignored);
}

Tally RunSavePoints(const Share& share) {
  Tally tally;
  const Files before = FilesOf(home);
  const std::vector<Case> cases = Cases();
  unsigned number = 0;
  for (const Case& work : cases) {
    PutBack(home, before);
    const Run clean{.work = &work};
    InChild([&] { DoRun(clean, before, before); });
    Collect(NameOf(clean), tally);
    const Files after = FilesOf(home);
    if (file_calls::plan->counted >= file_calls::kMostCalls) std::abort();
    if (after == before) tally.violations.push_back(work.name + std::string(": changes nothing"));
    for (const Run& run : RunsOf(work)) {
      if (number++ % share.of == share.first) RunOne(run, before, after, tally);
    }
  }
  return tally;
}

Tally RunTypingPoints(const Share& share) {
  constexpr int kKeys = 150;  // in 60 s
  constexpr int kMostLost = 7000 / 400 + 1;
  Tally tally;
  const Files before = FilesOf(home);
  unsigned number = 0;
  for (int keys = 1; keys <= kKeys; ++keys) {
    for (int pieces = 0; pieces < 4; ++pieces) {
      if (number++ % share.of != share.first) continue;
      PutBack(home, before);
      InChild([&] { TypeUntil(keys, pieces); });
      ++tally.points;
      const Files now = FilesOf(home);
      const std::string& text = now.at("programs/a.NC").bytes;
      const auto kept = static_cast<int>(std::ranges::count(text, 'Q'));
      if (report->typed != keys) Violation("typed %d keys", report->typed);
      if (keys - kept > kMostLost) Violation("%d keys of %d are lost", keys - kept, keys);
      Collect("typing", tally);
    }
  }
  return tally;
}

}  // namespace faults
