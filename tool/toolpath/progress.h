// How far a long run is, for a person who watches.
#ifndef K5AX_TOOL_TOOLPATH_PROGRESS_H
#define K5AX_TOOL_TOOLPATH_PROGRESS_H

#include <chrono>
#include <cstdint>
#include <iosfwd>

namespace tool {

/// One line on a terminal, drawn over itself ten times a second at most and gone at the end.
class Progress {
 public:
  /// @param shown  false: nothing is ever drawn
  /// @param total  bytes in all; 0 where nobody knows, and then only what has been read is told
  Progress(std::ostream& terminal, bool shown, std::uint64_t total);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void update(std::uint64_t bytes_read);

 private:
  using Clock = std::chrono::steady_clock;

  std::ostream& m_terminal;
  bool m_shown;
  std::uint64_t m_total;
  bool m_drawn = false;
  Clock::time_point m_last;
};

}  // namespace tool

#endif
