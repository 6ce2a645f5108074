// cli/terminal/terminal.h — the terminal that standard error may be.
#pragma once

namespace cli {

/// Whether standard error is one.
bool isTerminal() noexcept;

/// Its width in characters; 80 if it does not tell.
int terminalColumns() noexcept;

}  // namespace cli
