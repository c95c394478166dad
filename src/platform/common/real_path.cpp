#include "platform/real_path.h"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include "platform/file.h"

namespace platform {

std::u16string RealPath(std::u16string_view path) {
  const std::size_t slash = path.rfind(PathSeparator());
  if (slash == path.npos || path.find(u'\0') != path.npos) return std::u16string(path);
  const std::string folder = ToUtf8(path.substr(0, slash + 1));
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(folder.c_str(), nullptr),
                                                         &std::free);
  if (!real) return std::u16string(path);
  std::u16string whole = FromUtf8(real.get());
  // A folder whose name is no UTF-8 would come back as another one.
  if (ToUtf8(whole) != real.get()) return std::u16string(path);
  if (whole.back() != PathSeparator()) whole += PathSeparator();
  return whole.append(path.substr(slash + 1));
}

std::u16string PathOfArgument(const char* argument) {
  std::error_code problem;
  const std::filesystem::path path = std::filesystem::absolute(argument, problem);
  return problem ? FromUtf8(argument) : RealPath(FromUtf8(path.string()));
}

}  // namespace platform
