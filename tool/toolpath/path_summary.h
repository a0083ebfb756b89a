// What a whole tool path came to, for people and for programs.
#ifndef K5AX_TOOL_TOOLPATH_PATH_SUMMARY_H
#define K5AX_TOOL_TOOLPATH_PATH_SUMMARY_H

#include "tool/toolpath/travels.h"

#include <cstdint>
#include <iosfwd>
#include <string>

namespace tool {

struct PathSummary {
  std::string path;  ///< as the person named it
  std::uint64_t rows;
  const char* unit;  ///< of lengths, "mm" or "inch"
  bool checked;      ///< false: travels were not to be looked at
  bool has_slides;   ///< false: no tree has a slide, so nobody knows where they stand
  const Travels& travels;
};

/// The rows out of travel, the first of them one by one, then a table of the axes.
void print_summary(const PathSummary& summary, std::ostream& stream);

/// The same as one JSON object.
void print_summary_json(const PathSummary& summary, std::ostream& stream);

}  // namespace tool

#endif
