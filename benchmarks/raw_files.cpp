// What the operating system alone takes for reading and for safely replacing a file.
#include "raw_files.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace bench {

namespace {

void require(bool done, const std::string& path) {
  if (!done) throw std::runtime_error(path + ": " + std::generic_category().message(errno));
}

}  // namespace

void read_raw(const std::string& path, std::vector<unsigned char>& buffer) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  require(file != -1, path);
  require(::read(file, buffer.data(), buffer.size()) == static_cast<ssize_t>(buffer.size()), path);
  require(::close(file) == 0, path);
}

void replace_raw(const std::string& path, const std::string& temporary_path,
                 const std::vector<unsigned char>& bytes) {
  const int file = ::open(temporary_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  require(file != -1, temporary_path);
  require(::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()), temporary_path);
  require(::fsync(file) == 0, temporary_path);
  require(::close(file) == 0, temporary_path);
  require(::rename(temporary_path.c_str(), path.c_str()) == 0, path);
}

std::vector<unsigned char> file_bytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error(path + ": cannot be read");
  return std::vector<unsigned char>(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

ScratchFolder::ScratchFolder(const std::string& parent) : m_path(parent + "/k5ax-bench-XXXXXX") {
  require(::mkdtemp(&m_path[0]) != nullptr, m_path);
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

}  // namespace bench
