// Runs one job: driver lines with the answers they must get, on a fresh machine.
//
// A job is text. By its first characters a line is
//     > LINE         a driver line; ${HOME} stands for the machine's folder. Its answer must be
//                    ok, unless a "!" line follows
//     = JSON         the last answer must be exactly this
//     < FRAGMENT     the last answer must hold this
//     - FRAGMENT     the last answer must not hold this
//     ! FRAGMENT     the last answer must be an error that holds this
//     @file NAME     what follows up to @end is written to HOME/NAME, lines ended by LF
//     @same NAME     what follows up to @end is what HOME/NAME must hold, lines ended by CR LF
//     @gone NAME     HOME/NAME must not exist
//     @executable NAME   the program's file name, before the first driver line
//     @nodocuments       a machine without a Documents folder, likewise
//     @close             closes the window without questions; the next driver line starts the
//                        program again on the same machine. A dialog that is open is cancelled
// and empty lines and lines that start with "#" are for the reader.

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "driver/drive.h"
#include "platform/file.h"

namespace {

namespace fs = std::filesystem;

struct Job {
  std::string name;
  fs::path home;
  std::vector<std::string> lines;
  std::size_t at = 0;
  std::string sent;
  std::string answer;
  drive::Machine machine;
  bool started = false;
  bool asked = false;  // an answer stands and has not been judged as ok or error
  int expectations = 0;
  int failures = 0;
};

void Fail(Job& job, const std::string& what) {
  ++job.failures;
  std::printf("%s:%zu: %s\n  sent:   %s\n  answer: %.2000s\n", job.name.c_str(), job.at,
              what.c_str(), job.sent.c_str(), job.answer.c_str());
}

bool IsGood(const Job& job) { return job.answer.rfind("{\"ok\":true", 0) == 0; }

// Every answer is ok unless the job says otherwise.
void JudgeAsked(Job& job) {
  if (job.asked && !IsGood(job)) Fail(job, "the answer is an error");
  job.asked = false;
}

std::string WithHome(std::string text, const fs::path& home) {
  const std::string mark = "${HOME}";
  for (std::size_t at = text.find(mark); at != text.npos; at = text.find(mark, at)) {
    text.replace(at, mark.size(), home.string());
  }
  return text;
}

std::string Block(Job& job, const char* lineEnd) {
  std::string text;
  while (job.at < job.lines.size() && job.lines[job.at] != "@end") {
    text += job.lines[job.at++] + lineEnd;
  }
  if (job.at == job.lines.size()) Fail(job, "this block has no @end");
  ++job.at;
  return text;
}

std::string ReadAll(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void Start(Job& job) {
  if (job.started) return;
  job.started = true;
  job.machine.home = platform::FromUtf8(job.home.string());
  if (drive::Begin(job.machine)) return;
  std::fputs("the application did not start\n", stderr);
  std::exit(2);
}

bool RunMachineLine(Job& job, const std::string& line) {
  if (line.rfind("@executable ", 0) == 0) {
    job.machine.executableName = platform::FromUtf8(line.substr(12));
  } else if (line == "@nodocuments") {
    job.machine.hasDocuments = false;
  } else if (line == "@close") {
    drive::End();
    job.started = false;
  } else {
    return false;
  }
  return true;
}

void RunFileLine(Job& job, const std::string& line) {
  const std::size_t blank = line.find(' ');
  const fs::path path = job.home / (blank == line.npos ? "" : line.substr(blank + 1));
  if (line.rfind("@file ", 0) == 0) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << Block(job, "\n");
  } else if (line.rfind("@same ", 0) == 0) {
    ++job.expectations;
    const std::string wanted = Block(job, "\r\n");
    const std::string found = ReadAll(path);
    if (found != wanted) Fail(job, "the file holds:\n" + found + "\ninstead of:\n" + wanted);
  } else if (line.rfind("@gone ", 0) == 0) {
    ++job.expectations;
    if (fs::exists(path)) Fail(job, path.string() + " exists");
  } else {
    Fail(job, "no such file line");
  }
}

void RunExpectation(Job& job, char kind, const std::string& wanted) {
  ++job.expectations;
  const bool holds = job.answer.find(wanted) != job.answer.npos;
  if (kind == '!') {
    if (IsGood(job) || !holds) Fail(job, "not the error \"" + wanted + "\"");
    job.asked = false;
  } else if (kind == '=') {
    if (job.answer != wanted) Fail(job, "the answer is not " + wanted);
  } else if (holds != (kind == '<')) {
    Fail(job, (kind == '<' ? "the answer lacks " : "the answer holds ") + wanted);
  }
}

void TakeAnswer(Job& job, const std::string& answer) {
  job.answer = answer;
  job.asked = true;
}

void RunLine(Job& job, const std::string& line) {
  if (line.empty() || line[0] == '#') return;
  const std::string rest = WithHome(line.size() > 2 ? line.substr(2) : "", job.home);
  if (line[0] == '>') {
    JudgeAsked(job);
    Start(job);
    job.sent = rest;
    const std::string answer = drive::AnswerLine(rest);
    // Where a dialog came up the line was answered then, and later lines have been read since.
    if (!answer.empty()) TakeAnswer(job, answer);
  } else if (line[0] == '@') {
    JudgeAsked(job);
    if (!RunMachineLine(job, line)) RunFileLine(job, line);
  } else if (std::string_view("=<-!").find(line[0]) != std::string_view::npos) {
    RunExpectation(job, line[0], rest);
  } else {
    Fail(job, "this line has no kind: " + line);
  }
}

// The job that runs; one a process.
Job* current = nullptr;

// The next line while a dialog stands open. The end of the job cancels it, and so does the
// end of the program.
bool RunNextInDialog() {
  Job& job = *current;
  if (job.at >= job.lines.size() || job.lines[job.at] == "@close") return false;
  const std::string line = job.lines[job.at++];
  RunLine(job, line);
  return true;
}

bool Load(Job& job, const char* path) {
  std::ifstream in(path);
  for (std::string line; std::getline(in, line);) job.lines.push_back(line);
  job.name = path;
  return !job.lines.empty();
}

fs::path NewHome() {
  std::string name = (fs::temp_directory_path() / "morva-job-XXXXXX").string();
  return mkdtemp(name.data()) ? fs::path(name) : fs::path();
}

}  // namespace

int main(int argc, char** argv) {
  Job job;
  if (argc != 2 || !Load(job, argv[1])) {
    std::fputs("run_job FILE\n", stderr);
    return 2;
  }
  job.home = NewHome();
  if (job.home.empty()) return 2;
  current = &job;
  drive::ReadOnInDialogs({[] { TakeAnswer(*current, "{\"ok\":true}"); }, RunNextInDialog});
  while (job.at < job.lines.size()) {
    const std::string line = job.lines[job.at++];
    RunLine(job, line);
  }
  JudgeAsked(job);
  if (job.expectations == 0) Fail(job, "this job expects nothing");
  if (job.started) drive::End();
  std::error_code ignored;
  fs::remove_all(job.home, ignored);
  std::printf("%s: %d expectations, %d failures\n", argv[1], job.expectations, job.failures);
  return job.failures == 0 ? 0 : 1;
}
