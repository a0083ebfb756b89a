// Any bytes as a machine's file: they are refused or read, from a stream and from a file alike, again and
// again with the same result; what was read can be used in every way, and nothing of it is lost.
#ifdef __linux__
#include <sys/mman.h>
#include <unistd.h>
#endif

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>

#include "fuzz/require.h"
#include "support/pools.h"
#include "support/use_machine.h"

namespace {

using k5ax_fuzz::require;
using k5ax_test::bytes_in_use;
using k5ax_test::bytes_of;
using md::CMachDef;

#ifdef __linux__
// A file in memory, that has a path while it lives.
class MemoryFile {
 public:
  explicit MemoryFile(const std::string& bytes) : m_file(::memfd_create("machine", MFD_CLOEXEC)) {
    require(m_file != -1, "no file in memory");
    require(::write(m_file, bytes.data(), bytes.size()) == static_cast<::ssize_t>(bytes.size()),
            "the file in memory is full");
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { ::close(m_file); }

  std::string path() const { return "/proc/self/fd/" + std::to_string(m_file); }

 private:
  int m_file;
};
#else
// Where there are no such files, one in the system's folder for them.
class MemoryFile {
 public:
  explicit MemoryFile(const std::string& bytes)
      : m_path(std::filesystem::temp_directory_path() / std::to_string(std::random_device()())) {
    std::ofstream file(m_path, std::ios::binary);
    require(bool(file << bytes << std::flush), "the file cannot be written");
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() {
    std::error_code ignored;
    std::filesystem::remove(m_path, ignored);
  }

  std::string path() const { return m_path.string(); }

 private:
  std::filesystem::path m_path;
};
#endif

bool reads(CMachDef& machine, const std::string& bytes) {
  try {
    k5ax_test::read_bytes(machine, bytes);
  } catch (const std::runtime_error&) {
    return false;
  }
  return true;
}

void load_and_use(const std::string& bytes) {
  CMachDef machine;
  const bool is_read = reads(machine, bytes);
  const std::string saved = bytes_of(machine);

  // What stands after the record is not read; neither is the version.
  if (is_read) require(saved.size() <= bytes.size() || k5ax_test::has_twins(machine), "more saved than read");

  CMachDef from_file;
  const MemoryFile file(bytes);
  require(MachdefLoad(&from_file, file.path().c_str()) == (is_read ? 1 : 0),
          "the file is not what the stream is");
  // Where the bytes end within a block, the file delivers a part of it and the stream of this test nothing.
  if (is_read) require(bytes_of(from_file) == saved, "the file gives another machine than the stream");
  const std::string wrong_from_file = k5ax_test::use_machine(from_file);
  require(wrong_from_file.empty(), wrong_from_file.c_str());

  require(reads(machine, bytes) == is_read, "read again the bytes have another answer");
  require(bytes_of(machine) == saved, "read again the bytes give another machine");

  const std::string wrong = k5ax_test::use_machine(machine);
  require(wrong.empty(), wrong.c_str());

  CMachDef converted;
  converted.clone(machine, 3);
  const bool metric = converted.isMetric();
  converted.scale(!metric);
  converted.scale(metric);
  converted.copy(machine);
  require(converted.isMetric() == machine.isMetric(), "a copy has another unit");

  machine.reset();
  require(machine.SG()[0] == nullptr && machine.SG()[1] == nullptr && machine.tool_node() == nullptr,
          "reset leaves a node");
  reads(machine, bytes);
  require(bytes_of(machine).size() == saved.size(), "after a reset the bytes give another machine");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr int kAtATime = 8;
  k5ax_test::empty_pools(kAtATime);
  const std::size_t before = bytes_in_use();
  load_and_use(std::string(reinterpret_cast<const char*>(data), size));
  k5ax_test::empty_pools(kAtATime);
  require(bytes_in_use() == before, "memory is lost");
  return 0;
}
