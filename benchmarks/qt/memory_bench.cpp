// The memory of an opened program of 32 MiB, beside that of a bare edit that holds the same text.
//
// Both are processes of their own, this program again. Each opens the file, rests, and writes its
// memory as it stands then, and at most.
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QPlainTextEdit>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "../programs.h"
#include "../targets.h"
#include "app/command_ids.h"
#include "bench_window.h"
#include "documents/program_tabs.h"
#include "documents/tab_table.h"
#include "platform/editor.h"

namespace {

constexpr int kRounds = 3;
constexpr int kLines = 1200000;
constexpr int kRestMs = 2500;
constexpr double kMostOfBare = 1.1;

struct Memory {
  double now = 0;   // MB
  double most = 0;  // MB
};

double Figure(const char* name) {
  std::FILE* status = std::fopen("/proc/self/status", "r");
  char line[200];
  double kilobytes = 0;
  while (std::fgets(line, sizeof line, status)) {
    if (std::strncmp(line, name, std::strlen(name)) == 0) {
      kilobytes = std::atof(line + std::strlen(name));
    }
  }
  std::fclose(status);
  return kilobytes / 1024;
}

void Rest() {
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < kRestMs) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

void WriteMemory() {
  std::printf("%f %f\n", Figure("VmRSS:"), Figure("VmHWM:"));
  std::fflush(stdout);
}

void OpenBare(const QString& path, bool shown) {
  QPlainTextEdit edit;
  edit.setLineWrapMode(QPlainTextEdit::NoWrap);
  edit.resize(700, 660);
  edit.setVisible(shown);
  Rest();
  {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) std::abort();
    edit.setPlainText(QString::fromUtf8(file.readAll()));
  }
  Rest();
  WriteMemory();
}

void OpenHere(const QString& path) {
  bench::StartWorkbench();
  Rest();
  morva::OpenProgramFile(path.toStdU16String());
  Rest();
  if (platform::EditorLineCount(morva::kIdEditor) < kLines) std::abort();
  WriteMemory();
}

int RunChild(const char* what, const char* path, int argc, char** argv) {
  if (!bench::MakeHome()) return 1;
  platform::BeginProcess(argc, argv);
  const QString file = QString::fromLocal8Bit(path);
  if (std::strcmp(what, "bare") == 0) OpenBare(file, true);
  if (std::strcmp(what, "hidden") == 0) OpenBare(file, false);
  if (std::strcmp(what, "ours") == 0) OpenHere(file);
  // What tearing down such a text takes is nobody's here.
  bench::folder.reset();
  _exit(0);
}

bool Ask(const char* what, const std::string& path, Memory& memory) {
  char own[PATH_MAX] = {};
  if (readlink("/proc/self/exe", own, sizeof own - 1) <= 0) return false;
  int ends[2];
  if (pipe(ends) != 0) return false;
  const pid_t child = fork();
  if (child == 0) {
    dup2(ends[1], STDOUT_FILENO);
    close(ends[0]);
    execl(own, own, what, path.c_str(), static_cast<char*>(nullptr));
    _exit(127);
  }
  close(ends[1]);
  std::FILE* out = fdopen(ends[0], "r");
  const int got = std::fscanf(out, "%lf %lf", &memory.now, &memory.most);
  std::fclose(out);
  int status = 0;
  waitpid(child, &status, 0);
  return got == 2;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && argv[1][0] != '-') return RunChild(argv[1], argv[2], argc, argv);
  if (!bench::MakeHome()) return 1;
  const QString path = bench::folder->filePath(QStringLiteral("large.NC"));
  {
    const std::string bytes = programs::Lines(kLines);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), qint64(bytes.size())) < 0) {
      std::abort();
    }
  }
  for (int round = 0; round < kRounds; ++round) {
    Memory ours;
    Memory bare;
    Memory hidden;
    const std::string name = path.toStdString();
    if (!Ask("ours", name, ours) || !Ask("bare", name, bare) || !Ask("hidden", name, hidden))
      return 1;
    std::printf("ours %.0f, most %.0f; bare %.0f, most %.0f, never shown %.0f, most %.0f\n",
                ours.now, ours.most, bare.now, bare.most, hidden.now, hidden.most);
    targets::Note({"Memory of an opened 32 MiB", "MB", 0, 0, kMostOfBare, "bare edit"}, ours.now,
                  bare.now);
    targets::Note({"  at most, while it opens", "MB", 0, 0, 0, "bare edit"}, ours.most, bare.most);
  }
  bench::folder.reset();
  return 0;
}
