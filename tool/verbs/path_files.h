// What the verbs that convert tool paths have in common: their files, and a path's way through.
#ifndef K5AX_TOOL_VERBS_PATH_FILES_H
#define K5AX_TOOL_VERBS_PATH_FILES_H

#include "tool/context.h"
#include "tool/toolpath/row_stream.h"
#include "tool/verb.h"

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <utility>

namespace tool {

struct PathFiles {
  std::string machine;
  std::string path;    ///< "-" is standard input
  std::string output;  ///< "-" or nothing is standard output
};

/// MACHINE and PATH.
void add_path_arguments(Verb& verb, PathFiles& files, const std::string& path_description);

/// -o.
void add_output_option(Verb& verb, PathFiles& files);

/// True when progress may be drawn: on a terminal, and not among rows that go to one.
bool shows_progress(const PathFiles& files, const Context& context);

/// Where a summary goes. With the rows on standard output, anything else there would be taken for one.
std::ostream& summary_stream(const PathFiles& files, const Context& context);

/// Converts the whole path; see stream_rows(). The output may be the file that is read: that is closed before
/// the new one takes its place, which Windows asks for.
template <class Convert>
std::uint64_t convert_path(const PathFiles& files, const TablePlan& plan, Context& context, Convert convert) {
  std::uint64_t rows = 0;
  std::optional<Input> input(std::in_place, files.path, context.in);
  with_output(files.output, context.out, [&](Output& output) {
    Progress progress(context.err, shows_progress(files, context), input->size());
    rows = stream_rows(*input, plan, output, progress, convert);
    input.reset();
  });
  return rows;
}

}  // namespace tool

#endif
