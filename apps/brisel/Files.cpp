#include "Files.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "interchange/SafeFile.h"
#include "platform/Error.h"
#include "platform/Text.h"

namespace brisel::app {

using platform::Error;
using platform::ErrorNumber;

namespace {

std::string bytesOf(std::istream& stream) {
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

[[noreturn]] void fail(ErrorNumber number, const std::string& path) {
  throw Error(number, path + ": " + std::strerror(errno));
}

}  // namespace

std::string endingOf(std::string_view path) {
  std::string ending = std::filesystem::path(path).extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(), platform::lowerCase);
  return ending;
}

std::string readBytes(const std::string& path) {
  if (path == kStandard) return bytesOf(std::cin);
  errno = std::filesystem::is_directory(path) ? EISDIR : 0;
  std::ifstream file;
  if (errno == 0) file.open(path, std::ios::binary);
  if (!file.is_open()) fail(ErrorNumber::fileNotFound, path);
  std::string bytes = bytesOf(file);
  if (file.bad()) fail(ErrorNumber::fileAccess, path);
  return bytes;
}

void writeBytes(const std::string& path, std::string_view bytes) {
  if (path != kStandard) {
    interchange::SafeFile file(path);
    file.write(bytes);
    file.commit();
    return;
  }
  errno = 0;
  std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
  if (!std::cout) fail(ErrorNumber::fileAccess, "standard output");
}

}  // namespace brisel::app
