// morva_drive HOME: the application on a machine without a screen, driven by lines.

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <string>

#include "driver/drive.h"
#include "platform/file.h"

namespace {

void Print(const std::string& answer) {
  std::fwrite(answer.data(), 1, answer.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

bool AnswerNext() {
  std::string line;
  if (!std::getline(std::cin, line)) return false;
  const std::string answer = drive::AnswerLine(line);
  if (!answer.empty()) Print(answer);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("morva_drive HOME: HOME is a folder that plays the user's machine\n", stderr);
    return 2;
  }
  std::error_code problem;
  std::filesystem::create_directories(argv[1], problem);
  const std::string home = std::filesystem::absolute(argv[1], problem).string();
  drive::Machine machine;
  machine.home = platform::FromUtf8(home);
  if (!drive::Begin(machine)) {
    std::fputs("the application did not start\n", stderr);
    return 1;
  }
  drive::ReadOnInDialogs({[] { Print("{\"ok\":true}"); }, AnswerNext});
  while (AnswerNext()) {
  }
  drive::End();
  return 0;
}
