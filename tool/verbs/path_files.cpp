// What the verbs that convert tool paths have in common: their files, and a path's way through.
#include "tool/verbs/path_files.h"

#include "tool/system.h"

namespace tool {

void add_path_arguments(Verb& verb, PathFiles& files, const std::string& path_description) {
  verb.add_argument("MACHINE", files.machine, "The machine definition, .k5m or .json");
  verb.add_argument("PATH", files.path, path_description);
}

void add_output_option(Verb& verb, PathFiles& files) {
  verb.add_option("-o,--output", "FILE", files.output, "Write the rows to this file, whole or not at all");
}

bool shows_progress(const PathFiles& files, const Context& context) {
  return context.progress && (names_file(files.output) || !is_terminal(StandardStream::output));
}

std::ostream& summary_stream(const PathFiles& files, const Context& context) {
  return context.json && names_file(files.output) ? context.out : context.err;
}

}  // namespace tool
