// cli/terminal/terminal_windows.cpp — the console on Windows.
#include <windows.h>

#include "cli/terminal/terminal.h"

namespace cli {
namespace {

HANDLE standardError() noexcept {
  return GetStdHandle(STD_ERROR_HANDLE);
}

}  // namespace

// Older consoles take the codes that clear a line for text until told otherwise.
bool isTerminal() noexcept {
  constexpr DWORD kTakeCodes = 0x0004;
  DWORD mode = 0;
  return GetConsoleMode(standardError(), &mode) != 0 &&
         SetConsoleMode(standardError(), mode | kTakeCodes) != 0;
}

int terminalColumns() noexcept {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (GetConsoleScreenBufferInfo(standardError(), &info) == 0) return 80;
  return info.srWindow.Right - info.srWindow.Left + 1;
}

}  // namespace cli
