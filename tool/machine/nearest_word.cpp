// The word that somebody probably meant, by the number of letters to change (Damerau, restricted).
#include "tool/machine/nearest_word.h"

#include <algorithm>
#include <cstddef>

namespace tool {
namespace {

char small(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::size_t changes_between(std::string_view a, std::string_view b) {
  const std::size_t width = b.size() + 1;
  // Row i: from the first i letters of a to every beginning of b. Three rows are enough.
  std::vector<std::size_t> before_last(width);
  std::vector<std::size_t> last(width);
  std::vector<std::size_t> row(width);
  for (std::size_t j = 0; j < width; ++j) last[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j < width; ++j) {
      const bool is_same = small(a[i - 1]) == small(b[j - 1]);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (is_same ? 0 : 1)});
      const bool is_swapped =
          i > 1 && j > 1 && small(a[i - 1]) == small(b[j - 2]) && small(a[i - 2]) == small(b[j - 1]);
      if (is_swapped) row[j] = std::min(row[j], before_last[j - 2] + 1);
    }
    before_last.swap(last);
    last.swap(row);
  }
  return last[b.size()];
}

}  // namespace

std::string_view nearest_word(std::string_view word, const std::vector<std::string_view>& known) {
  std::string_view nearest;
  std::size_t fewest = 0;
  for (const std::string_view candidate : known) {
    // A word of another length needs as many changes at least; this also keeps long nonsense cheap.
    const std::size_t longer = std::max(word.size(), candidate.size());
    const std::size_t shorter = std::min(word.size(), candidate.size());
    const std::size_t most = std::max<std::size_t>(1, longer / 3);
    if (longer - shorter > most) continue;
    const std::size_t changes = changes_between(word, candidate);
    if (changes > most || (!nearest.empty() && changes >= fewest)) continue;
    nearest = candidate;
    fewest = changes;
  }
  return nearest;
}

}  // namespace tool
