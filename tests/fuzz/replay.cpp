// Runs a fuzz target over files, one by one, so that every compiler's tests go through the inputs that are
// kept.
//
//   replay FILE...
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    std::ifstream file(argv[i], std::ios::binary);
    if (!file) {
      std::fprintf(stderr, "replay: %s: cannot be opened\n", argv[i]);
      return 1;
    }
    const std::string input((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::printf("%s\n", argv[i]);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
  }
  std::printf("%d inputs\n", argc - 1);
  return argc > 1 ? 0 : 1;
}
