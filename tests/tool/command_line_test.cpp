// What holds for every verb: usage, help, exit codes, the streams, files that cannot be read, colours.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "tool/process.h"
#include "tool/shipped.h"

namespace {

using tool_test::Ended;
using tool_test::How;
using tool_test::in_tree;
using tool_test::kTrunnion;
using tool_test::lines_of;
using tool_test::make_folder;
using tool_test::read_file;
using tool_test::run_shell;
using tool_test::run_tool;
using tool_test::shipped_path;
using tool_test::write_file;

// The verbs that --help lists.
std::vector<std::string> verbs() {
  std::vector<std::string> names;
  bool listed = false;
  for (const std::string& line : lines_of(run_tool({"--help"}).out)) {
    if (listed && line.rfind("  ", 0) == 0 && line[2] != ' ')
      names.push_back(line.substr(2, line.find(' ', 2) - 2));
    if (listed && line.empty()) break;
    listed = listed || line == "Subcommands:";
  }
  EXPECT_GE(names.size(), 3U);
  return names;
}

// ---- help ----

TEST(Help, OfTheToolAndOfEveryVerbIsPrintedAndEndsWithNought) {
  const Ended tool = run_tool({"--help"});
  EXPECT_EQ(tool.exit_code, 0) << tool;
  EXPECT_EQ(tool.err, "");
  for (const std::string& verb : verbs()) {
    const Ended ended = run_tool({verb, "--help"});
    EXPECT_EQ(ended.exit_code, 0) << ended;
    EXPECT_EQ(ended.err, "");
    EXPECT_NE(ended.out.find("\nUsage: k5ax " + verb + " "), std::string::npos) << ended;
  }
}

TEST(Help, KeepsToEightyColumns) {
  std::vector<std::string> texts = {run_tool({"--help"}).out};
  for (const std::string& verb : verbs()) texts.push_back(run_tool({verb, "--help"}).out);
  int lines = 0;
  for (const std::string& text : texts) {
    for (const std::string& line : lines_of(text)) {
      EXPECT_LE(line.size(), 80U) << line;
      ++lines;
    }
  }
  EXPECT_GT(lines, 50);
}

// The command lines under "Example:" or "Examples:".
std::vector<std::string> examples_of(const std::string& verb) {
  std::vector<std::string> examples;
  bool listed = false;
  for (const std::string& line : lines_of(run_tool({verb, "--help"}).out)) {
    if (listed && line.rfind("  k5ax ", 0) == 0) examples.push_back(line.substr(2));
    listed = listed || line == "Example:" || line == "Examples:";
  }
  return examples;
}

// Each in a folder of its own with the files that the examples name.
TEST(Help, ShowsExamplesThatRun) {
  const std::string machine = shipped_path(kTrunnion);
  int examples = 0;
  for (const std::string& verb : verbs()) {
    EXPECT_FALSE(examples_of(verb).empty()) << verb;
    for (const std::string& example : examples_of(verb)) {
      How how;
      how.folder = make_folder("example");
      std::filesystem::copy(machine, how.folder + "/machine.k5m");
      std::filesystem::copy(tool_test::in_tree("examples/machines/table_table_trunnion.json"),
                            how.folder + "/machine.json");
      std::filesystem::copy(tool_test::in_tree("examples/toolpaths/table_table_trunnion.csv"),
                            how.folder + "/path.csv");
      write_file(how.folder + "/cartesian.csv", "x,y,z\n10,20,30\n-10,20,35\n");
      const Ended ended = run_shell(example, how);
      // A comparison may well find a difference; what it may not be is wrong.
      EXPECT_LE(ended.exit_code, verb == "diff" ? 1 : 0) << example << "\n" << ended;
      EXPECT_GE(ended.exit_code, 0);
      ++examples;
    }
  }
  EXPECT_GE(examples, 5);
}

TEST(Version, IsPrinted) {
  const Ended ended = run_tool({"--version"});
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.out, "k5ax " K5AX_VERSION "\n");
}

// ---- usage ----

struct Misuse {
  std::vector<std::string> arguments;
  std::string message;
};

TEST(Usage, ThatIsWrongIsSaidInALineAndEndsWithTwo) {
  const Misuse misuses[] = {
      {{}, "give a verb; see k5ax --help"},
      {{"frobnicate"}, "no verb \"frobnicate\"; see k5ax --help"},
      {{"inof", "m.k5m"}, "no verb \"inof\" (did you mean info?); see k5ax --help"},
      {{"--jsno"}, "no option \"--jsno\"; see k5ax --help"},
      {{"info"}, "info: MACHINE is required; see k5ax info --help"},
      {{"info", "m.k5m", "--jsno"},
       "info: no option \"--jsno\" (did you mean --json?); see k5ax info --help"},
      {{"info", "m.k5m", "n.k5m"}, "info: \"n.k5m\" is one argument too many; see k5ax info --help"},
      {{"check", "--strict"}, "check: MACHINE is required; see k5ax check --help"},
      {{"two\nlines"}, "no verb \"two\\nlines\"; see k5ax --help"},
  };
  for (const Misuse& misuse : misuses) {
    const Ended ended = run_tool(misuse.arguments);
    EXPECT_EQ(ended.exit_code, 2) << ended;
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.err, "k5ax: " + misuse.message + "\n");
  }
}

// ---- files ----

// Each verb of these reads one machine, with arguments that would do for a good one.
std::vector<std::vector<std::string>> readers(const std::string& file) {
  return {{"info", file},
          {"info", file, "--json"},
          {"check", file},
          {"check", file, "--json"},
          {"pose", file, "0", "0", "0", "0", "0", "0"}};
}

// One line that begins with the file, no output, and 3.
void expect_bad_input(const std::string& file, const How& how) {
  for (const auto& arguments : readers(file)) {
    const Ended ended = run_tool(arguments, how);
    EXPECT_EQ(ended.exit_code, 3) << ended;
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.err.rfind("k5ax: " + file + ":", 0), 0U) << ended;
    EXPECT_NE(ended.err.find("; "), std::string::npos) << "without a remedy: " << ended;
    EXPECT_EQ(lines_of(ended.err).size(), 1U) << ended;
  }
}

TEST(MachineFile, ThatIsMissingIsBadInput) { expect_bad_input("no_such.k5m", {}); }

TEST(MachineFile, ThatIsMissingIsBadInputAsTextToo) { expect_bad_input("no_such.json", {}); }

TEST(MachineFile, ThatIsAFolderIsBadInput) {
  How how;
  how.folder = make_folder("folder");
  std::filesystem::create_directory(how.folder + "/m.k5m");
  expect_bad_input("m.k5m", how);
}

TEST(MachineFile, ThatIsEmptyIsBadInput) {
  How how;
  how.folder = make_folder("empty");
  write_file(how.folder + "/m.k5m", "");
  expect_bad_input("m.k5m", how);
}

TEST(MachineFile, ThatEndsEarlyIsBadInput) {
  How how;
  how.folder = make_folder("short");
  const std::string whole = read_file(shipped_path(kTrunnion));
  ASSERT_GT(whole.size(), 1000U);
  for (const std::size_t size : {std::size_t{1}, std::size_t{100}, whole.size() / 2, whole.size() - 1}) {
    write_file(how.folder + "/m.k5m", whole.substr(0, size));
    expect_bad_input("m.k5m", how);
  }
}

TEST(MachineFile, ThatIsNoTextOfAMachineIsBadInput) {
  How how;
  how.folder = make_folder("text");
  write_file(how.folder + "/m.json", "{\"units\": \"mm\",,}");
  expect_bad_input("m.json", how);
}

TEST(MachineFile, NameIsPrintedWithoutWhatATerminalWouldObey) {
  const Ended ended = run_tool({"info", "a\x1b[2J\nb.k5m"});
  EXPECT_EQ(ended.exit_code, 3) << ended;
  EXPECT_EQ(ended.err.rfind("k5ax: a\\x1b[2J\\nb.k5m: ", 0), 0U) << ended;
  EXPECT_EQ(lines_of(ended.err).size(), 1U);
}

// In Latin, in Chinese, and with a letter that takes two units of UTF-16: as an argument, in messages, for a
// file that the library opens and for those that the tool opens itself.
TEST(FileNames, MayHaveAnyLetters) {
  const std::string folder = make_folder("letters");
  const std::string name = "Fr\u00e4se \u6a5f\u68b0 \U0001f6e0";
  const How how{"", folder};
  const Ended made = run_tool({"new", "table-table", "-o", name + ".json"}, how);
  EXPECT_EQ(made.exit_code, 0) << made;
  EXPECT_EQ(made.err.rfind("wrote " + name + ".json; ", 0), 0U) << made;
  const Ended again = run_tool({"new", "table-table", "-o", name + ".json"}, how);
  EXPECT_EQ(again.exit_code, 3) << again;
  EXPECT_EQ(again.err.rfind("k5ax: " + name + ".json: is there already; ", 0), 0U) << again;

  const Ended converted = run_tool({"convert", name + ".json", name + ".k5m"}, how);
  EXPECT_EQ(converted.exit_code, 0) << converted;
  write_file(folder + "/" + name + ".csv", "x,y,z,a,b,c\n1,2,3,0,0,0\n");
  const Ended sent =
      run_tool({"path", name + ".k5m", name + ".csv", "--to", "machine", "-o", name + " machine.csv"}, how);
  EXPECT_EQ(sent.exit_code, 0) << sent;
  EXPECT_EQ(read_file(folder + "/" + name + " machine.csv"), "x,y,z,a,b,c\n1,2,3,0,0,0\n");

  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::u8path(folder)))
    names.insert(entry.path().filename().u8string());
  EXPECT_EQ(names,
            (std::set<std::string>{name + ".json", name + ".k5m", name + ".csv", name + " machine.csv"}));
}

// ---- streams ----

TEST(StandardOutput, ThatIsFullIsSaid) {
  How how;
  how.output_to = "/dev/full";
  for (const auto& arguments : readers(shipped_path(kTrunnion))) {
    const Ended ended = run_tool(arguments, how);
    EXPECT_EQ(ended.exit_code, 3) << ended;
    EXPECT_EQ(ended.err, "k5ax: standard output: No space left on device; make room or write elsewhere\n");
  }
}

// As the shell says it: 128 and the number of the signal for a closed pipe, 13.
TEST(StandardOutput, ThatNobodyReadsEndsTheToolQuietly) {
  How how;
  how.reader_gone = true;
  for (const auto& arguments : readers(shipped_path(kTrunnion))) {
    const Ended ended = run_tool(arguments, how);
    EXPECT_EQ(ended.exit_code, 128 + 13) << ended;
    EXPECT_EQ(ended.err, "");
  }
}

// ---- colours ----

bool is_coloured(const std::map<std::string, std::string>& variables, bool terminal,
                 const std::vector<std::string>& arguments) {
  How how;
  how.terminal = terminal;
  how.variables = variables;
  const Ended ended = run_tool(arguments, how);
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_FALSE(ended.out.empty());
  return ended.out.find('\x1b') != std::string::npos;
}

TEST(Colours, AreForTerminalsOnly) {
  const std::map<std::string, std::string> xterm = {{"TERM", "xterm"}, {"NO_COLOR", ""}};
  for (const auto& arguments : readers(shipped_path(kTrunnion))) {
    const bool is_json = arguments.back() == "--json";
    EXPECT_EQ(is_coloured(xterm, true, arguments), !is_json) << arguments[0];
    EXPECT_FALSE(is_coloured(xterm, false, arguments)) << arguments[0];
  }
}

TEST(Colours, AreLeftOutWhereNotWanted) {
  const std::vector<std::string> arguments = {"info", shipped_path(kTrunnion)};
  EXPECT_TRUE(is_coloured({{"TERM", "xterm"}, {"NO_COLOR", ""}}, true, arguments));
  EXPECT_FALSE(is_coloured({{"TERM", "xterm"}, {"NO_COLOR", "1"}}, true, arguments));
  EXPECT_FALSE(is_coloured({{"TERM", "dumb"}, {"NO_COLOR", ""}}, true, arguments));
}

TEST(Colours, ChangeNothingElse) {
  How how;
  how.terminal = true;
  how.variables = {{"TERM", "xterm"}, {"NO_COLOR", ""}};
  const std::string coloured = run_tool({"info", shipped_path(kTrunnion)}, how).out;
  std::string plain;
  for (std::size_t i = 0; i < coloured.size(); ++i) {
    if (coloured[i] == '\x1b') {
      i = coloured.find('m', i);
    } else if (coloured[i] != '\r') {  // the terminal's own
      plain += coloured[i];
    }
  }
  EXPECT_EQ(plain, run_tool({"info", shipped_path(kTrunnion)}).out);
}

// ---- the man page ----

// The long options that a text names, with plain hyphens.
std::set<std::string> options_in(const std::string& text) {
  std::set<std::string> options;
  const std::regex option("--[a-z][a-z-]*");
  for (std::sregex_iterator at(text.begin(), text.end(), option), end; at != end; ++at)
    options.insert(at->str());
  return options;
}

// The options at the beginning of a line of the help. Every verb has --help, which the man page says once.
std::set<std::string> options_of(const std::string& verb) {
  std::string fronts;
  for (const std::string& line : lines_of(run_tool({verb, "--help"}).out)) {
    if (line.rfind("  -", 0) == 0) fronts += line.substr(0, line.find("   ", 2)) + "\n";
  }
  std::set<std::string> options = options_in(fronts);
  EXPECT_EQ(options.erase("--help"), 1U) << verb;
  return options;
}

// The sections of the man page: what is said of each verb, its hyphens plain.
std::map<std::string, std::string> man_sections() {
  std::map<std::string, std::string> sections;
  std::string verb;
  for (std::string line : lines_of(read_file(in_tree("tool/k5ax.1")))) {
    if (line.rfind(".S", 0) == 0) verb.clear();
    if (line.rfind(".SS k5ax ", 0) == 0) {
      verb = line.substr(9, line.find(' ', 9) - 9);
      sections[verb];
      continue;
    }
    line.erase(std::remove(line.begin(), line.end(), '\\'), line.end());
    // Options are defined in the line after .TP, which sets them in bold.
    if (!verb.empty() && line.rfind(".B", 0) == 0 && line.find("--") != std::string::npos &&
        line.find(" :") == std::string::npos) {
      sections[verb] += line + "\n";
    }
  }
  return sections;
}

TEST(ManPage, HasEveryVerbAndNoOther) {
  std::vector<std::string> in_page;
  for (const auto& [verb, text] : man_sections()) in_page.push_back(verb);
  std::vector<std::string> in_help = verbs();
  std::sort(in_help.begin(), in_help.end());
  EXPECT_EQ(in_page, in_help);
}

TEST(ManPage, HasEveryOptionOfEveryVerbAndNoOther) {
  const std::map<std::string, std::string> sections = man_sections();
  int verbs_with_options = 0;
  for (const std::string& verb : verbs()) {
    ASSERT_EQ(sections.count(verb), 1U) << verb;
    EXPECT_EQ(options_in(sections.at(verb)), options_of(verb)) << verb;
    if (!options_of(verb).empty()) ++verbs_with_options;
  }
  EXPECT_GE(verbs_with_options, 3);
}

// ---- completion ----

std::vector<std::string> completed(const std::vector<std::string>& words) {
  How how;
  how.folder = make_folder("completion");
  for (const char* file : {"a.json", "b.k5m", "c.csv", "d.txt"}) write_file(how.folder + "/" + file, "");
  std::filesystem::create_directory(how.folder + "/sub");
  std::string line = "bash " + tool_test::in_tree("tests/tool/completion_driver.bash") + " " +
                     tool_test::in_tree("tool/completion/k5ax.bash") + " k5ax";
  for (const std::string& word : words) line += " '" + word + "'";
  const Ended ended = run_shell(line, how);
  EXPECT_EQ(ended.exit_code, 0) << ended;
  EXPECT_EQ(ended.err, "");
  return lines_of(ended.out);
}

using Words = std::vector<std::string>;

TEST(Completion, OffersEveryVerb) {
  Words wanted = verbs();
  wanted.insert(wanted.end(), {"--help", "--version"});
  std::sort(wanted.begin(), wanted.end());
  EXPECT_EQ(completed({""}), wanted);
}

TEST(Completion, OffersTheVerbThatBeginsSo) { EXPECT_EQ(completed({"in"}), Words({"info"})); }

TEST(Completion, OffersTheOptionsOfTheVerb) {
  EXPECT_EQ(completed({"info", "-"}), Words({"--all", "--help", "--json"}));
  EXPECT_EQ(completed({"check", "x.json", "--s"}), Words({"--strict"}));
}

TEST(Completion, OffersMachinesAndFolders) {
  EXPECT_EQ(completed({"info", ""}), Words({"a.json", "b.k5m", "sub"}));
  EXPECT_EQ(completed({"info", "--json", "b"}), Words({"b.k5m"}));
}

TEST(Completion, OffersTheChoicesOfAnOption) {
  EXPECT_EQ(completed({"convert", "a.json", "--units", ""}), Words({"inch", "mm"}));
  EXPECT_EQ(completed({"convert", "a.json", "--units", "=", "m"}), Words({"mm"}));
}

TEST(Completion, OffersTheChoicesOfAnArgument) {
  EXPECT_EQ(completed({"new", "head"}), Words({"head-head", "head-table"}));
}

TEST(Completion, OffersToolPathsWhereOneStands) {
  EXPECT_EQ(completed({"path", "a.json", ""}), Words({"c.csv", "sub"}));
  EXPECT_EQ(completed({"path", "--to", "part", "a.json", ""}), Words({"c.csv", "sub"}));
}

TEST(Completion, DoesNotCountTheValueOfAnOptionAsAnArgument) {
  EXPECT_EQ(completed({"convert", "--units", "mm", "a"}), Words({"a.json"}));
}

TEST(Completion, OffersNothingForANumber) { EXPECT_EQ(completed({"pose", "a.json", ""}), Words()); }

TEST(Completion, OffersNothingForAVerbThatIsNone) { EXPECT_EQ(completed({"frobnicate", ""}), Words()); }

}  // namespace
