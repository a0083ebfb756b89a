// Any sequence of calls over both faces, with any arguments, memory running out now and then: nothing
// crashes, every walk ends, what stands at the end can be used, and nothing is lost.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <random>
#include <string>

#include "fuzz/host.h"
#include "fuzz/require.h"
#include "support/pools.h"
#include "support/use_machine.h"

namespace {

using k5ax_fuzz::Calls;
using k5ax_fuzz::Draw;
using k5ax_fuzz::Host;
using k5ax_fuzz::require;
using k5ax_test::bytes_in_use;
using k5ax_test::MemoryShortage;

constexpr int kMostCalls = 100;
constexpr long kMostAllocations = 30;

// A folder of this process, gone at its end.
const std::string& scratch_path() {
  static const struct Folder {
    Folder() {
      std::random_device random;
      folder = std::filesystem::temp_directory_path() / ("k5ax-fuzz-" + std::to_string(random()));
      require(std::filesystem::create_directory(folder), "no scratch folder");
      file = (folder / "machine").string();
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
      std::error_code ignored;
      std::filesystem::remove_all(folder, ignored);
    }
    std::filesystem::path folder;
    std::string file;
  } folder;
  return folder.file;
}

void make_call(Host& host, Draw& draw) {
  static const Calls rooms[] = {k5ax_fuzz::foundation_calls(), k5ax_fuzz::axis_calls(),
                                k5ax_fuzz::node_calls(),       k5ax_fuzz::node_calls(),
                                k5ax_fuzz::machine_calls(),    k5ax_fuzz::machine_calls(),
                                k5ax_fuzz::file_calls(),       k5ax_fuzz::pose_calls()};
  const Calls& room = rooms[draw.below(sizeof rooms / sizeof *rooms)];
  room.first[draw.below(room.count)](host, draw);
}

void make_call_short_of_memory(Host& host, Draw& draw) {
  const auto allowed = static_cast<long>(draw.below(kMostAllocations));
  const MemoryShortage shortage(allowed, draw.yes() ? MemoryShortage::kOnce : MemoryShortage::kLasting);
  try {
    make_call(host, draw);
  } catch (const std::bad_alloc&) {
    require(MemoryShortage::struck(), "out of memory without a shortage");
  }
}

void use_what_is_left(const Host& host) {
  for (const std::unique_ptr<md::CMachDef>& machine : host.machines) {
    if (!machine) continue;
    const std::string wrong = k5ax_test::use_machine(*machine);
    require(wrong.empty(), wrong.c_str());
  }
  for (const k5ax_fuzz::NodePtr& n : host.nodes) k5ax_fuzz::tree_size(n.get());
}

void make_calls(Draw draw) {
  Host host(scratch_path());
  for (int i = 0; i < kMostCalls && !draw.is_over(); ++i) {
    if (draw.below(8) == 0)
      make_call_short_of_memory(host, draw);
    else
      make_call(host, draw);
  }
  use_what_is_left(host);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr int kAtATime = 8;
  ::unlink(scratch_path().c_str());
  md_flags_set(0);
  k5ax_test::empty_pools(kAtATime);
  const std::size_t before = bytes_in_use();
  make_calls(Draw(data, size));
  k5ax_test::empty_pools(kAtATime);
  require(bytes_in_use() == before, "memory is lost");
  return 0;
}
