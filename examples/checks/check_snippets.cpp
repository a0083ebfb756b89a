// check_snippets FOLDER DOCUMENT...: are the code samples of the documents what the files in FOLDER say?
//
// A sample is a C or C++ block that follows a line such as
//     <!-- snippet: machine_builder.cpp nodes -->
// and it must equal, but for common indentation, the lines between `[snippet nodes]` and `[end]` in that file. Every C
// or C++ block must have such a line.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

std::optional<Lines> read_lines(const std::string& path) {
  std::ifstream file(path);
  if (!file) return std::nullopt;
  Lines lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

bool has(const std::string& line, const std::string& text) { return line.find(text) != std::string::npos; }

// Without the blank columns that all lines share, and without blank lines at either end.
Lines at_the_margin(Lines lines) {
  std::size_t margin = std::string::npos;
  for (const std::string& line : lines) margin = std::min(margin, line.find_first_not_of(' '));
  for (std::string& line : lines) line.erase(0, std::min(margin, line.size()));
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
  while (!lines.empty() && lines.front().empty()) lines.erase(lines.begin());
  return lines;
}

// The piece of a file; nothing when it is not there.
std::optional<Lines> piece(const std::string& path, const std::string& name) {
  const std::optional<Lines> lines = read_lines(path);
  if (!lines) return std::nullopt;
  const auto begins = [&](const std::string& line) { return has(line, "[snippet " + name + "]"); };
  const auto ends = [](const std::string& line) { return has(line, "[end]"); };
  const auto begin = std::find_if(lines->begin(), lines->end(), begins);
  const auto end = std::find_if(begin, lines->end(), ends);
  if (end == lines->end()) return std::nullopt;
  return at_the_margin(Lines(begin + 1, end));
}

// Counts the samples of one document and complains about the bad ones.
struct Checker {
  std::string folder;
  int samples = 0;
  int faults = 0;

  void complain(const std::string& document, std::size_t line, const std::string& what) {
    std::fprintf(stderr, "%s:%zu: %s\n", document.c_str(), line + 1, what.c_str());
    ++faults;
  }

  void check_sample(const std::string& document, std::size_t at, const std::string& marker,
                    const Lines& sample) {
    std::istringstream words(marker);
    std::string comment, keyword, file, name;
    words >> comment >> keyword >> file >> name;
    if (comment != "<!--" || keyword != "snippet:")
      return complain(document, at, "a code block without a line <!-- snippet: FILE NAME --> above it");

    const std::optional<Lines> wanted = piece(folder + "/" + file, name);
    if (!wanted) return complain(document, at, "there is no piece " + name + " in " + file);
    ++samples;
    const Lines shown = at_the_margin(sample);
    const auto differ = std::mismatch(shown.begin(), shown.end(), wanted->begin(), wanted->end());
    if (differ.first == shown.end() && differ.second == wanted->end()) return;
    complain(document, at,
             "differs from " + file +
                 "\n  shown: " + (differ.first == shown.end() ? "(end)" : *differ.first) +
                 "\n  file:  " + (differ.second == wanted->end() ? "(end)" : *differ.second));
  }

  void check(const std::string& document) {
    const std::optional<Lines> lines = read_lines(document);
    if (!lines) return complain(document, 0, "cannot be read");
    std::string marker;
    for (std::size_t i = 0; i < lines->size(); ++i) {
      const std::string& line = (*lines)[i];
      if (line.rfind("```", 0) != 0) {
        if (!line.empty()) marker = line;
        continue;
      }
      const std::size_t begin = i + 1;
      std::size_t end = begin;
      while (end < lines->size() && (*lines)[end].rfind("```", 0) != 0) ++end;
      if (line == "```cpp" || line == "```c") {
        const auto first = lines->begin();
        check_sample(
            document, i, marker,
            Lines(first + static_cast<std::ptrdiff_t>(begin), first + static_cast<std::ptrdiff_t>(end)));
      }
      marker.clear();
      i = end;
    }
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: check_snippets FOLDER DOCUMENT...\n");
    return 2;
  }
  Checker checker{argv[1]};
  for (int i = 2; i < argc; ++i) checker.check(argv[i]);
  std::printf("%d code samples\n", checker.samples);
  // A document without a sample would pass whatever happened to it.
  return checker.faults == 0 && checker.samples > 0 ? 0 : 1;
}
