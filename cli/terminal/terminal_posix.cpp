// cli/terminal/terminal_posix.cpp — the terminal on POSIX systems.
#include <sys/ioctl.h>
#include <unistd.h>

#include "cli/terminal/terminal.h"

namespace cli {

bool isTerminal() noexcept {
  return ::isatty(STDERR_FILENO) != 0;
}

int terminalColumns() noexcept {
  winsize size{};
  if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
  return 80;
}

}  // namespace cli
