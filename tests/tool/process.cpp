// What tests of the tool have in common on every system: files, folders, and what came of a process.
#include "tool/process.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <random>
#include <sstream>
#include <system_error>

namespace tool_test {

std::ostream& operator<<(std::ostream& stream, const Ended& ended) {
  return stream << "exit code " << ended.exit_code << "\n--- out\n"
                << ended.out << "--- err\n"
                << ended.err << "---\n";
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::string in_tree(const std::string& path) { return std::string(K5AX_SOURCE_DIR) + "/" + path; }

std::string read_file(const std::string& path) {
  std::ifstream file(std::filesystem::u8path(path), std::ios::binary);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void write_file(const std::string& path, const std::string& content) {
  std::ofstream file(std::filesystem::u8path(path), std::ios::binary);
  file << content;
  file.close();
  EXPECT_TRUE(file) << path;
}

std::string make_folder(const std::string& name) {
  // Those made here, and no others, go when the test program ends.
  static struct Made {
    std::vector<std::string> folders;
    ~Made() {
      std::error_code ignored;
      for (const std::string& folder : folders) std::filesystem::remove_all(folder, ignored);
    }
  } made;

  std::random_device random;
  std::string folder;
  do {
    const std::string own_name = name + "." + std::to_string(random());
    folder = (std::filesystem::temp_directory_path() / own_name).string();
  } while (!std::filesystem::create_directory(folder));
  made.folders.push_back(folder);
  return folder;
}

void expect_golden(const std::string& name, const std::string& text) {
  std::istringstream wanted(read_file(in_tree("tests/tool/golden/" + name)));
  std::istringstream given(text);
  std::string wanted_line;
  std::string given_line;
  for (int line = 1;; ++line) {
    const bool more_wanted = static_cast<bool>(std::getline(wanted, wanted_line));
    const bool more_given = static_cast<bool>(std::getline(given, given_line));
    if (!more_wanted && !more_given) return;
    if (more_wanted != more_given || wanted_line != given_line) {
      ADD_FAILURE() << "golden/" << name << ":" << line
                    << "\n  wanted: " << (more_wanted ? wanted_line : "(the end)")
                    << "\n  given:  " << (more_given ? given_line : "(the end)") << "\n--- the whole of it\n"
                    << text;
      return;
    }
  }
}

}  // namespace tool_test
