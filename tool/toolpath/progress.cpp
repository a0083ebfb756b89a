// How far a long run is, for a person who watches.
#include "tool/toolpath/progress.h"

#include <algorithm>
#include <cstdio>
#include <ostream>
#include <string>

namespace tool {
namespace {

constexpr int kBarWidth = 40;
constexpr double kMegabyte = 1e6;
constexpr std::chrono::milliseconds kBetween(100);

std::string text_of(std::uint64_t bytes_read, std::uint64_t total) {
  char text[64];
  const double megabytes = static_cast<double>(bytes_read) / kMegabyte;
  if (total == 0) {
    std::snprintf(text, sizeof text, "%.1f MB", megabytes);
    return text;
  }
  // A file may grow while it is read.
  const double part = std::min(1.0, static_cast<double>(bytes_read) / static_cast<double>(total));
  const auto filled = static_cast<std::size_t>(part * kBarWidth);
  std::snprintf(text, sizeof text, "] %3.0f%%  %.1f MB", part * 100, megabytes);
  return "[" + std::string(filled, '#') + std::string(kBarWidth - filled, '-') + text;
}

}  // namespace

Progress::Progress(std::ostream& terminal, bool shown, std::uint64_t total)
    : m_terminal(terminal), m_shown(shown), m_total(total) {}

Progress::~Progress() {
  if (m_drawn) m_terminal << "\r\x1b[K" << std::flush;
}

void Progress::update(std::uint64_t bytes_read) {
  if (!m_shown) return;
  const Clock::time_point now = Clock::now();
  if (m_drawn && now - m_last < kBetween) return;
  m_terminal << '\r' << text_of(bytes_read, m_total) << "\x1b[K" << std::flush;
  m_drawn = true;
  m_last = now;
}

}  // namespace tool
