// validate/child_windows.cpp — a check in a process of its own: this program, started anew.
#include <windows.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <system_error>

#include "validate/child.h"

namespace validate {
namespace {

using Clock = std::chrono::steady_clock;
constexpr DWORD kTick = 50;  // milliseconds between looks at the pipe
constexpr UINT kKilled = 124;
constexpr DWORD kFirstException = 0xC0000000;
constexpr UINT kAborted = 0xC0000409;       // as newer run-time libraries end with abort()
constexpr std::chrono::seconds kStart{20};  // for starting a process, which may itself take long

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

std::wstring widened(const std::string& text) {
  return {text.begin(), text.end()};  // ids and numbers only
}

std::wstring commandLine(const Check& check, const Subject& subject, HANDLE channel) {
  wchar_t self[32768];
  if (GetModuleFileNameW(nullptr, self, static_cast<DWORD>(std::size(self))) == 0) fail("own name");
  const auto number = reinterpret_cast<std::uintptr_t>(channel);
  return L"\"" + std::wstring(self) + L"\" validate \"" + subject.library.wstring() +
         L"\" --only " + widened(check.id) + L" --seed " + std::to_wstring(subject.seed) +
         L" --strictness " + std::to_wstring(subject.strictness) + L" --channel " +
         std::to_wstring(number);
}

// Until the child has ended. Gives the reason to kill it, if there is one.
std::optional<Ending> listen(HANDLE channel, HANDLE process, const ChildWatch& watch,
                             JournalReader& journal) {
  char buffer[4096];
  Clock::time_point heard = Clock::now();
  std::chrono::milliseconds patience = std::max<std::chrono::milliseconds>(watch.silence, kStart);
  for (;;) {
    const bool ended = WaitForSingleObject(process, kTick) == WAIT_OBJECT_0;
    DWORD waiting = 0;
    while (PeekNamedPipe(channel, nullptr, 0, nullptr, &waiting, nullptr) != 0 && waiting > 0) {
      DWORD count = 0;
      if (ReadFile(channel, buffer, sizeof buffer, &count, nullptr) == 0) break;
      journal.take({buffer, count});
      heard = Clock::now();
      patience = watch.silence;
    }
    if (ended) return std::nullopt;
    if (watch.stopAsked && watch.stopAsked()) return Ending::interrupted;
    if (Clock::now() - heard > patience) return Ending::hung;
  }
}

// The older run-time libraries end with exit code 3, as any program may.
extern "C" void onAbort(int) {
  TerminateProcess(GetCurrentProcess(), kAborted);
}

}  // namespace

ChildOutcome runInChild(const Check& check, const Subject& subject, const ChildWatch& watch) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  Handle reading;
  Handle writing;
  if (CreatePipe(reading.put(), writing.put(), &inherited, 0) == 0) fail("pipe");
  SetHandleInformation(reading.get(), HANDLE_FLAG_INHERIT, 0);
  std::wstring line = commandLine(check, subject, writing.get());
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION made{};
  if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                     &made) == 0) {
    fail("start a process");
  }
  const Handle process(made.hProcess);
  const Handle thread(made.hThread);
  writing.close();

  JournalReader journal(watch.onLine);
  const std::optional<Ending> killed = listen(reading.get(), process.get(), watch, journal);
  if (killed) TerminateProcess(process.get(), kKilled);
  WaitForSingleObject(process.get(), INFINITE);
  if (killed) return {*killed, {}};
  // A wish to stop may have reached the child first, and ended it.
  if (watch.stopAsked && watch.stopAsked()) return {Ending::interrupted, {}};
  DWORD code = 0;
  GetExitCodeProcess(process.get(), &code);
  if (journal.done()) return {Ending::finished, {}};
  char text[40];
  if (code >= kFirstException) {
    std::snprintf(text, sizeof text, "exception 0x%08lX", static_cast<unsigned long>(code));
    return {Ending::crashed, text};
  }
  return {Ending::exited, "exit code " + std::to_string(code)};
}

void runChild(const Check& check, const Subject& subject, std::uint64_t channel) {
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  std::signal(SIGABRT, onAbort);
  _putenv_s("VARILUM_HEADLESS", "1");
  const auto pipe = reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(channel));
  Journal journal([pipe](const JournalLine& line) {
    const std::string text = writeLine(line) + "\n";
    DWORD count = 0;
    if (WriteFile(pipe, text.data(), static_cast<DWORD>(text.size()), &count, nullptr) == 0) {
      std::_Exit(static_cast<int>(kKilled));  // nobody listens any more
    }
  });
  runHere(check, subject, journal);
  // The library stays loaded: nothing of it is run at the end.
  TerminateProcess(GetCurrentProcess(), 0);
  std::_Exit(0);
}

}  // namespace validate
