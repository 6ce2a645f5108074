// tests/cli/program_windows.cpp — running programs on Windows.
#include <windows.h>

#include <chrono>
#include <cstdint>
#include <stdexcept>
#include <system_error>

#include "tests/cli/program.h"

namespace cli::test {
namespace {

constexpr auto kPatience = std::chrono::minutes(2);
constexpr DWORD kTick = 20;  // milliseconds between looks at the pipes
constexpr UINT kKilled = 1009;

[[noreturn]] void fail(const char* what) {
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
}

class Handle {
 public:
  explicit Handle(HANDLE handle = nullptr) : handle_(handle) {}
  ~Handle() { close(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  HANDLE get() const noexcept { return handle_; }
  HANDLE* put() noexcept { return &handle_; }
  void close() noexcept {
    if (handle_ != nullptr) CloseHandle(handle_);
    handle_ = nullptr;
  }

 private:
  HANDLE handle_;
};

// What a program prints; nobody has to wait for it.
class Pipe {
 public:
  Pipe() {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    if (CreatePipe(reading_.put(), writing_.put(), &inherited, 1U << 20) == 0) fail("pipe");
    SetHandleInformation(reading_.get(), HANDLE_FLAG_INHERIT, 0);
  }
  HANDLE writing() const noexcept { return writing_.get(); }
  void closeWriting() noexcept { writing_.close(); }
  void readInto(std::string& text) {
    DWORD waiting = 0;
    while (PeekNamedPipe(reading_.get(), nullptr, 0, nullptr, &waiting, nullptr) != 0 &&
           waiting > 0) {
      const std::size_t before = text.size();
      text.resize(before + waiting);
      DWORD count = 0;
      ReadFile(reading_.get(), text.data() + before, waiting, &count, nullptr);
      text.resize(before + count);
    }
  }

 private:
  Handle reading_;
  Handle writing_;
};

std::wstring widened(const std::string& text) {
  if (text.empty()) return {};
  const int bytes = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  wide.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, wide.data(), bytes)));
  return wide;
}

// As the run-time library takes a command line apart: backslashes count double before a quote.
std::wstring quoted(const std::wstring& word) {
  std::wstring text = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : word) {
    if (c == L'"') text.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    text += c;
  }
  return text.append(backslashes, L'\\') + L"\"";
}

// What a console does to each program in it when the keys are pressed; tests may have none.
void pressControlC(HANDLE process) {
  const auto routine = reinterpret_cast<LPTHREAD_START_ROUTINE>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernelbase.dll"), "CtrlRoutine")));
  const Handle thread(CreateRemoteThread(process, nullptr, 0, routine,
                                         reinterpret_cast<void*>(std::uintptr_t{CTRL_C_EVENT}), 0,
                                         nullptr));
  if (thread.get() == nullptr) fail("press Ctrl-C");
}

}  // namespace

Outcome run(const std::vector<std::string>& argv, const Watcher& watch) {
  std::wstring line;
  for (const std::string& word : argv) line += (line.empty() ? L"" : L" ") + quoted(widened(word));
  Pipe out;
  Pipe err;
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  const Handle nothing(CreateFileW(L"NUL", GENERIC_READ, 0, &inherited, OPEN_EXISTING, 0, nullptr));
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = nothing.get();
  start.hStdOutput = out.writing();
  start.hStdError = err.writing();
  PROCESS_INFORMATION made{};
  if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                     &made) == 0) {
    fail("start a process");
  }
  const Handle process(made.hProcess);
  const Handle thread(made.hThread);
  out.closeWriting();
  err.closeWriting();
  Outcome outcome;
  const auto end = std::chrono::steady_clock::now() + kPatience;
  bool pressed = false;
  for (bool ended = false; !ended;) {
    ended = WaitForSingleObject(process.get(), kTick) == WAIT_OBJECT_0;
    out.readInto(outcome.out);
    err.readInto(outcome.err);
    if (std::chrono::steady_clock::now() > end) TerminateProcess(process.get(), kKilled);
    if (watch && !pressed && watch(outcome.out) != 0) {
      pressControlC(process.get());
      pressed = true;
    }
  }
  DWORD code = 0;
  GetExitCodeProcess(process.get(), &code);
  outcome.code = static_cast<int>(code);
  return outcome;
}

}  // namespace cli::test
