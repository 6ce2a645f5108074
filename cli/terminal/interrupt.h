// cli/terminal/interrupt.h — Ctrl-C and termination as a flag that the work looks at between
// frames.
#pragma once

namespace cli {

/// Makes SIGINT, SIGTERM and SIGHUP set the flag below; a second one ends the program at once.
/// SIGPIPE sets it too.
void catchInterrupts() noexcept;

/// True once a stop was asked for. Any thread.
bool interrupted() noexcept;

/// Throws Interrupted once a stop was asked for. Any thread.
void throwIfInterrupted();

}  // namespace cli
