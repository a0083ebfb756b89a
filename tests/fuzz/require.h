// What a fuzz target says of an input that must not be.
#ifndef K5AX_TESTS_FUZZ_REQUIRE_H
#define K5AX_TESTS_FUZZ_REQUIRE_H

#include <cstdio>
#include <cstdlib>

namespace k5ax_fuzz {

// Ends the program when it does not hold; the fuzzer keeps the input then.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

}  // namespace k5ax_fuzz

#endif
