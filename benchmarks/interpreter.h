// Debian's rs274 (linuxcnc-uspace) beside our readers, where it is installed: a program that it
// takes as well, and the processor time that it needs for one.
#pragma once

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace interpreter {

inline std::uint32_t Next(std::uint32_t& state) {
  state = state * 1664525u + 1013904223u;
  return state >> 8;
}

// The value in units of the last decimal.
inline void AppendNumber(std::u16string& text, std::uint32_t value, unsigned decimals) {
  std::u16string reversed;
  for (unsigned i = 0; i <= decimals || value > 0; ++i) {
    if (i == decimals && decimals > 0) reversed += u'.';
    reversed += static_cast<char16_t>(u'0' + value % 10);
    value /= 10;
  }
  text.append(reversed.rbegin(), reversed.rend());
}

// What a strict interpreter takes as well: every arc is a half circle whose centre fits.
inline std::u16string StrictProgram(int lines) {
  std::u16string text = u"%\r\nO01000\r\nG20 G90 G17\r\nG00 X0 Y0\r\nF10.\r\n";
  std::uint32_t state = 2026;
  std::uint32_t x = 0;
  std::uint32_t y = 0;
  for (int i = 0; i < lines - 7; ++i) {
    const bool arc = i % 4 == 3;
    x = arc ? x + 1000 : Next(state) % 40000;
    y = arc ? y : Next(state) % 40000;
    text += u'N';
    AppendNumber(text, static_cast<std::uint32_t>(i) * 10 % 100000, 0);
    text += arc ? u" G2 X" : u" G1 X";
    AppendNumber(text, x, 3);
    text += u" Y";
    AppendNumber(text, y, 3);
    text += arc ? u" I.5 J0\r\n" : u"\r\n";
  }
  return text + u"M30\r\n%\r\n";
}

// Processor seconds of one run of the interpreter over the file, its output thrown away;
// negative where it cannot run.
inline double SecondsOfFile(const std::string& folder, const std::string& program) {
  const pid_t child = fork();
  if (child < 0) return -1;
  if (child == 0) {
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, stream);
    const std::string tools = folder + "/empty.tbl";
    const std::string variables = folder + "/empty.var";
    execlp("rs274", "rs274", "-g", "-t", tools.c_str(), "-v", variables.c_str(), program.c_str(),
           static_cast<char*>(nullptr));
    _exit(127);
  }
  int status = 0;
  rusage used = {};
  if (wait4(child, &status, 0, &used) != child || !WIFEXITED(status)) return -1;
  if (WEXITSTATUS(status) != 0) return -1;
  return static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
         static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) * 1e-6;
}

// Of a program's text, without its own start, which is not the program's cost; negative where it
// does not run here.
inline double Seconds(const std::u16string& text) {
  std::string folder =
      (std::filesystem::temp_directory_path() / "interpreter-bench-XXXXXX").string();
  if (!mkdtemp(folder.data())) std::abort();
  std::ofstream(folder + "/program.ngc") << std::string(text.begin(), text.end());
  std::ofstream(folder + "/empty.ngc") << "%\nM30\n%\n";
  std::ofstream(folder + "/empty.tbl").flush();
  std::ofstream(folder + "/empty.var").flush();
  const double empty = SecondsOfFile(folder, folder + "/empty.ngc");
  const double whole = empty < 0 ? -1 : SecondsOfFile(folder, folder + "/program.ngc");
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
  return whole < 0 ? -1 : whole - empty;
}

}  // namespace interpreter
