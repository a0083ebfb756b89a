// Starting the tool on Windows.
#include "tool/process.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <thread>

namespace tool_test {
namespace {

constexpr DWORD kLongest = 60000;  // milliseconds
constexpr DWORD kOften = 10;

[[noreturn]] void give_up(const std::string& what) {
  throw std::runtime_error(what + ": error " + std::to_string(::GetLastError()));
}

std::wstring wide(const std::string& text) { return std::filesystem::u8path(text).wstring(); }

// Closes at the end of its scope, or before.
struct End {
  End() = default;
  End(const End&) = delete;
  End& operator=(const End&) = delete;
  ~End() { close(); }
  void close() {
    if (handle != nullptr) ::CloseHandle(handle);
    handle = nullptr;
  }

  HANDLE handle = nullptr;
};

// The tool gets one end, and this process keeps the other for itself.
struct Pipe {
  End read;
  End write;

  void open(End Pipe::*kept) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    if (::CreatePipe(&read.handle, &write.handle, &inherited, 1 << 20) == 0) give_up("CreatePipe");
    if (::SetHandleInformation((this->*kept).handle, HANDLE_FLAG_INHERIT, 0) == 0) give_up("a pipe");
  }
};

// As the C runtime takes a command line apart again: quotes around, and backslashes doubled before a quote.
std::wstring quoted(const std::wstring& argument) {
  std::wstring text = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : argument) {
    if (c == L'"') text.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    text += c;
  }
  text.append(backslashes, L'\\');
  return text + L'"';
}

std::string read_all(HANDLE pipe) {
  std::string text;
  char buffer[65536];
  DWORD count = 0;
  while (::ReadFile(pipe, buffer, sizeof buffer, &count, nullptr) != 0 && count > 0)
    text.append(buffer, count);
  return text;
}

void feed(End& pipe, const std::string& input) {
  std::size_t fed = 0;
  DWORD count = 0;
  while (fed < input.size()) {
    const DWORD rest = static_cast<DWORD>(std::min<std::size_t>(input.size() - fed, 1 << 20));
    if (::WriteFile(pipe.handle, input.data() + fed, rest, &count, nullptr) == 0) break;  // it has ended
    fed += count;
  }
  pipe.close();
}

// Sets variables for the processes that are started meanwhile.
class Variables {
 public:
  explicit Variables(const std::map<std::string, std::string>& variables) : m_variables(variables) {
    for (const auto& [name, value] : m_variables)
      ::SetEnvironmentVariableW(wide(name).c_str(), wide(value).c_str());
  }
  Variables(const Variables&) = delete;
  Variables& operator=(const Variables&) = delete;
  ~Variables() {
    for (const auto& [name, value] : m_variables) ::SetEnvironmentVariableW(wide(name).c_str(), nullptr);
  }

 private:
  const std::map<std::string, std::string>& m_variables;
};

// The most memory the process held so far, in KiB; 0 where the system does not say.
long peak_kib(HANDLE process) {
  PROCESS_MEMORY_COUNTERS memory = {};
  if (::GetProcessMemoryInfo(process, &memory, sizeof memory) == 0) return 0;
  return static_cast<long>(memory.PeakWorkingSetSize / 1024);
}

// Wine forgets how much a process held when that ends, so it is asked for all the while.
bool ends(HANDLE process, long& peak) {
  for (DWORD waited = 0; waited < kLongest; waited += kOften) {
    const bool has_ended = ::WaitForSingleObject(process, kOften) == WAIT_OBJECT_0;
    peak = std::max(peak, peak_kib(process));
    if (has_ended) return true;
  }
  return false;
}

}  // namespace

Ended run_tool(const std::vector<std::string>& arguments, const How& how) {
  if (how.terminal || !how.output_to.empty()) throw std::logic_error("not on Windows");

  Pipe in;
  Pipe out;
  Pipe err;
  in.open(&Pipe::write);
  out.open(&Pipe::read);
  err.open(&Pipe::read);
  if (how.reader_gone) out.read.close();

  std::wstring command_line = quoted(wide(K5AX_TOOL));
  for (const std::string& argument : arguments) command_line += L" " + quoted(wide(argument));
  const std::wstring folder = wide(how.folder);
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = in.read.handle;
  startup.hStdOutput = out.write.handle;
  startup.hStdError = err.write.handle;
  PROCESS_INFORMATION started = {};
  {
    const Variables variables(how.variables);
    if (::CreateProcessW(wide(K5AX_TOOL).c_str(), command_line.data(), nullptr, nullptr, TRUE,
                         CREATE_NO_WINDOW, nullptr, folder.empty() ? nullptr : folder.c_str(), &startup,
                         &started) == 0)
      give_up("CreateProcess");
  }
  End process;
  End thread;
  process.handle = started.hProcess;
  thread.handle = started.hThread;
  in.read.close();
  out.write.close();
  err.write.close();

  // Each stream has a thread of its own, so that no pipe fills up while nobody reads it.
  Ended ended;
  std::thread feeder([&] { feed(in.write, how.input); });
  std::thread out_reader([&] { ended.out = how.reader_gone ? "" : read_all(out.read.handle); });
  std::thread err_reader([&] { ended.err = read_all(err.read.handle); });
  if (!ends(process.handle, ended.peak_kib)) {
    ADD_FAILURE() << "the tool was still running after a minute";
    ::TerminateProcess(process.handle, 255);
  }
  feeder.join();
  out_reader.join();
  err_reader.join();

  DWORD code = 0;
  ::GetExitCodeProcess(process.handle, &code);
  ended.exit_code = static_cast<int>(code);
  return ended;
}

Ended run_shell(const std::string&, const How&) { throw std::logic_error("not on Windows"); }

}  // namespace tool_test
