#include "documents/saver.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <mutex>
#include <utility>

#include "app/app_state.h"
#include "app/outlets.h"
#include "app/router.h"
#include "documents/file_text.h"
#include "platform/atomic_file.h"
#include "platform/post.h"
#include "platform/profile.h"
#include "platform/thread.h"
#include "platform/wait.h"

namespace morva {
namespace {

constexpr int kLongestWaitMs = 30000;
constexpr int kReadTries = 3;

// Between the two threads, under the guard.
std::mutex guard;
std::deque<SaveJob> waiting;
std::deque<SaveResult> finished;
std::u16string underWay;           // the program that is being written
std::uint64_t serialUnderWay = 0;  // of its tab; 0: of none
bool working = false;

std::uint64_t lastTicket = 0;
void (*listener)(const SaveResult& result) = nullptr;

KnownFile* Find(std::vector<KnownFile>& files, std::u16string_view path) {
  const auto found = std::ranges::find(files, path, &KnownFile::path);
  return found == files.end() ? nullptr : &*found;
}

void NoteBeside(SaveResult& result, std::u16string_view path, const DiskState& state) {
  if (KnownFile* const file = Find(result.beside, path)) file->state = state;
}

// One that is gone holds nothing that could be lost.
bool IsGone(std::u16string_view path) {
  const platform::FileFigures now = platform::FiguresOf(path);
  return !now.exists && !now.unknown;
}

// `written` is set where the file was put there.
platform::WriteAnswer WriteOne(const SaveJob& job, const SaveFile& file, SaveResult& result,
                               platform::FileFigures& written) {
  const std::string& bytes = file.shared ? *file.shared : file.bytes;
  platform::AtomicWrite write{.path = file.path, .bytes = bytes, .lasting = file.lasting};
  const bool program = file.path == job.program;
  if (!program) write.companionOf = job.program;
  const KnownFile* const beside = Find(result.beside, file.path);
  const DiskState* const known = program ? &job.known : beside ? &beside->state : nullptr;
  // Where nothing stands nothing may have come by the time of the last step either.
  static const platform::FileFigures kNothing;
  const bool stands = known && known->figures.exists && (program || !IsGone(file.path));
  if (job.checked && known) write.expected = stands ? &known->figures : &kNothing;
  platform::FileFigures put;
  const platform::WriteAnswer answer = platform::WriteAtomic(write, put);
  if (answer != platform::WriteAnswer::Written && answer != platform::WriteAnswer::NotFlushed) {
    return answer;
  }
  written = put;
  // Nobody asks whether a file of no tab still holds what was written.
  const DiskState now{written, job.serial != 0 ? HashBytes(bytes) : 0};
  if (program) result.now = now;
  NoteBeside(result, file.path, now);
  return answer;
}

// False: it stands under its old name.
bool Move(const SaveMove& move, std::vector<SaveMove>& moved) {
  if (!platform::FileExists(move.from)) return true;
  if (move.to.empty()) return false;  // no name is free
  const platform::FileFigures earlier = platform::FiguresOf(move.to);
  if (earlier.unknown) return false;
  if (earlier.exists) return true;
  if (!platform::RenameOver(move.from, move.to)) return false;
  moved.push_back(move);
  return true;
}

bool MoveFirst(const SaveJob& job, SaveResult& result) {
  for (const SaveMove& move : job.moves) {
    if (!move.last && !Move(move, result.moved)) return false;
  }
  for (const SaveMove& move : result.moved) NoteBeside(result, move.from, DiskState());
  return true;
}

// The program stands already, so that a move that fails is no failed save.
void MoveLast(const SaveJob& job, SaveResult& result) {
  for (const SaveMove& move : job.moves) {
    if (!move.last) continue;
    const bool moved = Move(move, result.moved);
    if (!moved) result.left.push_back(move);
    NoteBeside(result, move.from, {platform::FiguresOf(move.from), 0});
  }
}

// A save that failed leaves the program that stands there its companions. What stays where it was
// moved to is told.
void MoveBack(SaveJob& job, SaveResult& result) {
  std::erase_if(result.moved, [&](const SaveMove& move) {
    if (platform::FileExists(move.from) || !platform::RenameOver(move.to, move.from)) return false;
    if (const KnownFile* const old = Find(job.beside, move.from)) {
      NoteBeside(result, move.from, old->state);
    }
    return true;
  });
}

// What copies were made of is written behind the program, so that it stands as it was.
void EraseCopies(std::vector<SaveMove>& copied) {
  for (const SaveMove& copy : copied) (void)platform::EraseFile(copy.to);
  copied.clear();
}

// Whether the files are as the job knows them.
FileStanding Look(SaveJob& job) {
  if (!job.checked) return FileStanding::Same;
  const FileStanding program = StandingOf(job.program, job.known);
  const FileStanding beside = StandingOfAll(job.beside);
  for (const FileStanding bad : {FileStanding::Changed, FileStanding::Unknown}) {
    if (program == bad || beside == bad) return bad;
  }
  // One that is gone holds nothing that could be lost.
  if (program == FileStanding::Gone) job.known = DiskState();
  return FileStanding::Same;
}

// Copies of what is replaced come before the program that replaces it, its companions behind it.
void PutProgramFirst(SaveJob& job) {
  std::ranges::stable_sort(job.files, {}, [&job](const SaveFile& file) {
    if (!file.copyOf.empty()) return 0;
    return file.path == job.program ? 1 : 2;
  });
}

// A companion that stood nowhere before, as it was written.
struct Fresh {
  std::u16string path;
  platform::FileFigures written;
};

SaveAnswer WriteAll(SaveJob& job, SaveResult& result, std::vector<Fresh>& fresh) {
  // Before the first of the files, as the companions must fit the program that they stand by.
  const FileStanding standing = Look(job);
  if (standing == FileStanding::Changed) return SaveAnswer::Changed;
  // What cannot be looked at now may be there a moment later.
  if (standing == FileStanding::Unknown) return SaveAnswer::Failed;
  if (job.replaces) PutProgramFirst(job);
  result.beside = job.beside;
  if (!MoveFirst(job, result)) return SaveAnswer::Failed;
  for (const SaveFile& file : job.files) {
    const bool gone = file.path != job.program && IsGone(file.path);
    platform::FileFigures written;
    const platform::WriteAnswer answer = WriteOne(job, file, result, written);
    if (gone && written.exists) fresh.push_back({file.path, written});
    if (answer == platform::WriteAnswer::Changed) return SaveAnswer::Changed;
    if (answer != platform::WriteAnswer::Written) return SaveAnswer::Failed;
    if (!file.copyOf.empty()) result.copied.push_back({file.copyOf, file.path});
  }
  MoveLast(job, result);
  return SaveAnswer::Saved;
}

SaveResult Write(SaveJob& job) {
  SaveResult result;
  result.ticket = job.ticket;
  result.serial = job.serial;
  result.changes = job.changes;
  result.byUser = job.byUser;
  result.takesPath = job.takesPath;
  result.checked = job.checked;
  result.program = job.program;
  result.told = job.told;
  std::vector<Fresh> fresh;
  result.answer = WriteAll(job, result, fresh);
  if (result.answer != SaveAnswer::Saved && !result.now.figures.exists) {
    MoveBack(job, result);
    EraseCopies(result.copied);
    // A program that is put there later would take them for its own.
    if (IsGone(job.program)) {
      for (const Fresh& file : fresh) {
        // Another program may have put its own there meanwhile.
        if (platform::FiguresOf(file.path) == file.written) (void)platform::EraseFile(file.path);
      }
    }
  }
  return result;
}

// The next job, or the end of the work; both under one lock, so that no job is left behind.
bool TakeJob(SaveJob& job) {
  const std::lock_guard<std::mutex> lock(guard);
  working = !waiting.empty();
  underWay.clear();
  serialUnderWay = 0;
  if (!working) return false;
  job = std::move(waiting.front());
  waiting.pop_front();
  underWay = job.program;
  serialUnderWay = job.serial;
  return true;
}

// What has been written of its program is what this job has to find there.
void Expect(const SaveResult& written, SaveJob& job) {
  if (written.program != job.program) return;
  if (written.now.figures.exists) job.known = written.now;
  for (const KnownFile& file : written.beside) {
    if (KnownFile* const known = Find(job.beside, file.path)) known->state = file.state;
  }
}

void Keep(SaveResult result) {
  const std::lock_guard<std::mutex> lock(guard);
  for (SaveJob& later : waiting) Expect(result, later);
  finished.push_back(std::move(result));
}

void WriteThemAll() {
  SaveJob job;
  while (TakeJob(job)) {
    Keep(Write(job));
    platform::PostToMain(kMessageSaved, 0, 0);
  }
}

bool TakeResult(SaveResult& result) {
  const std::lock_guard<std::mutex> lock(guard);
  if (finished.empty()) return false;
  result = std::move(finished.front());
  finished.pop_front();
  return true;
}

void TellResults() {
  SaveResult result;
  while (TakeResult(result)) {
    if (result.told) {
      result.told(result);
    } else if (listener) {
      listener(result);
    }
  }
}

bool AllTold() {
  const std::lock_guard<std::mutex> lock(guard);
  return !working && waiting.empty() && finished.empty();
}

// Tells the results itself: no messages are handed out while the program waits.
bool ToldByNow() {
  TellResults();
  return AllTold();
}

// What the innermost WaitForSavesOf waits for. A result that it tells may lead to another wait.
struct Awaited {
  std::u16string program;
  std::uint64_t serial = 0;
};
Awaited awaited;

bool IsAwaited(std::u16string_view program, std::uint64_t serial) {
  return program == awaited.program || (serial != 0 && serial == awaited.serial);
}

bool AwaitedIsWritten() {
  const std::lock_guard<std::mutex> lock(guard);
  if (working && IsAwaited(underWay, serialUnderWay)) return false;
  return std::ranges::none_of(
      waiting, [](const SaveJob& job) { return IsAwaited(job.program, job.serial); });
}

// The look comes before the telling: a result stands there before its job counts as written.
bool AwaitedIsTold() {
  const bool written = AwaitedIsWritten();
  TellResults();
  return written;
}

// What an older job was to put away or to keep a copy of, the one in its place does.
void TakeMoves(const std::vector<SaveMove>& older, std::vector<SaveMove>& moves) {
  for (const SaveMove& move : older) {
    if (std::ranges::find(moves, move.from, &SaveMove::from) == moves.end()) moves.push_back(move);
  }
}

void TakeCopies(std::vector<SaveFile>& older, std::vector<SaveFile>& files) {
  for (SaveFile& copy : older) {
    if (copy.copyOf.empty()) continue;
    if (std::ranges::find(files, copy.copyOf, &SaveFile::copyOf) != files.end()) continue;
    files.insert(files.begin(), std::move(copy));
  }
}

// Puts the job behind the others; true where a worker has to be started for it.
bool Queue(SaveJob job) {
  const std::lock_guard<std::mutex> lock(guard);
  for (const SaveResult& untold : finished) Expect(untold, job);
  for (auto older = waiting.begin(); older != waiting.end();) {
    if (older->serial != job.serial || older->program != job.program) {
      ++older;
      continue;
    }
    job.byUser = job.byUser || older->byUser;
    // The user has said that the file may be written over.
    job.checked = job.checked && older->checked;
    job.replaces = job.replaces || older->replaces;
    TakeMoves(older->moves, job.moves);
    TakeCopies(older->files, job.files);
    older = waiting.erase(older);
  }
  waiting.push_back(std::move(job));
  return !std::exchange(working, true);
}

bool WaitWithWords(bool (*done)()) {
  if (done()) return true;
  constexpr std::u16string_view kWaiting = u"Waiting for the disk. A save is under way.";
  ShowStatus(kWaiting);
  const bool ended = platform::WaitUntil(done, kLongestWaitMs);
  if (ended && app.statusText == kWaiting) ShowStanding();
  return ended;
}

// A disk that takes its time must not hold the window for a switch of the view either.
void WriteSettings(std::u16string path, std::shared_ptr<const std::string> bytes,
                   std::uint32_t change) {
  SaveJob job;
  job.program = path;
  job.changes = change;
  job.files.push_back(
      {.path = std::move(path), .lasting = platform::Lasting::File, .shared = std::move(bytes)});
  job.told = [](const SaveResult& result) {
    platform::ProfileWritten(result.changes, result.answer == SaveAnswer::Saved);
  };
  HandOverSave(std::move(job));
}

}  // namespace

std::uint64_t HashBytes(std::string_view bytes) {
  constexpr std::uint64_t kPrime = 0x100000001B3u;
  std::uint64_t hash = 0xCBF29CE484222325u;
  for (; bytes.size() >= 8; bytes.remove_prefix(8)) {
    std::uint64_t word;
    std::memcpy(&word, bytes.data(), 8);
    hash = (hash ^ word) * kPrime;
    // A product carries only upwards; the upper half has to come down again.
    hash ^= hash >> 32;
  }
  for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * kPrime;
  return hash;
}

FileStanding StandingOf(std::u16string_view path, DiskState& known) {
  const platform::FileFigures now = platform::FiguresOf(path);
  if (now.unknown) return FileStanding::Unknown;
  if (!now.exists) return FileStanding::Gone;
  if (now == known.figures) return FileStanding::Same;
  if (now.size != known.figures.size) return FileStanding::Changed;
  std::string bytes;
  if (!ReadWholeFile(path, bytes) || HashBytes(bytes) != known.hash) return FileStanding::Changed;
  known.figures = now;
  return FileStanding::Same;
}

FileStanding StandingOfAll(std::vector<KnownFile>& files) {
  FileStanding all = FileStanding::Same;
  for (KnownFile& file : files) {
    const FileStanding one = StandingOf(file.path, file.state);
    if (one == FileStanding::Changed) return one;
    if (one == FileStanding::Unknown) all = one;
  }
  return all;
}

bool ReadWithState(std::u16string_view path, std::string& bytes, DiskState& state) {
  for (int tries = 0; tries < kReadTries; ++tries) {
    const platform::FileFigures before = platform::FiguresOf(path);
    if (!ReadWholeFile(path, bytes)) return false;
    state = {before, HashBytes(bytes)};
    if (platform::FiguresOf(path) == before) break;
  }
  return true;
}

std::uint64_t HandOverSave(SaveJob job) {
  const std::uint64_t ticket = job.ticket = ++lastTicket;
  if (Queue(std::move(job)) && !platform::StartWorker(platform::Worker::Saver, WriteThemAll)) {
    WriteThemAll();
  }
  TellResults();
  return ticket;
}

void SetSaveListener(void (*told)(const SaveResult& result)) { listener = told; }

bool SavesUnderWay() { return !AllTold(); }

bool IsBeingSaved(std::u16string_view program) {
  const std::lock_guard<std::mutex> lock(guard);
  if (working && underWay == program) return true;
  for (const SaveJob& job : waiting) {
    if (job.program == program) return true;
  }
  // Written, but the program does not know it yet.
  for (const SaveResult& untold : finished) {
    if (untold.program == program) return true;
  }
  return false;
}

bool WaitForSaves() { return WaitWithWords(ToldByNow); }

bool WaitForSavesOf(std::u16string_view program, std::uint64_t serial) {
  Awaited outer = std::exchange(awaited, {std::u16string(program), serial});
  const bool told = WaitWithWords(AwaitedIsTold);
  awaited = std::move(outer);
  return told;
}

void RegisterSaver() {
  platform::SetProfileWriter(WriteSettings);
  RegisterMessage(kMessageSaved, [](unsigned long long, unsigned long long) { TellResults(); });
}

void ResetSaver() {
  platform::SetProfileWriter(nullptr);
  platform::EndWorker(platform::Worker::Saver);
  const std::lock_guard<std::mutex> lock(guard);
  waiting.clear();
  finished.clear();
  underWay.clear();
  serialUnderWay = 0;
  working = false;
  listener = nullptr;
}

}  // namespace morva
