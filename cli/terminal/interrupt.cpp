// cli/terminal/interrupt.cpp — Ctrl-C and termination as a flag that the work looks at between
// frames.
#include "cli/terminal/interrupt.h"

#include <atomic>
#include <csignal>

#include "cli/error.h"

namespace cli {
namespace {

std::atomic<bool> stopAsked{false};
static_assert(std::atomic<bool>::is_always_lock_free, "set from a signal handler");

extern "C" void onStop(int signal) {
  stopAsked.store(true, std::memory_order_relaxed);
  std::signal(signal, SIG_DFL);
}

#ifndef _WIN32
// Nobody reads any more; each further line that is printed says so again.
extern "C" void onNoReader(int) {
  stopAsked.store(true, std::memory_order_relaxed);
}
#endif

// What was ignored from the start (nohup, jobs in the background) stays ignored.
void catchUnlessIgnored(int number, void (*handler)(int)) noexcept {
  if (std::signal(number, handler) == SIG_IGN) std::signal(number, SIG_IGN);
}

}  // namespace

void catchInterrupts() noexcept {
  for (const int number : {SIGINT, SIGTERM}) catchUnlessIgnored(number, onStop);
#ifdef _WIN32
  catchUnlessIgnored(SIGBREAK, onStop);
#else
  catchUnlessIgnored(SIGHUP, onStop);
  catchUnlessIgnored(SIGPIPE, onNoReader);
  // A file beyond the size limit is an error of the write, which says so and tidies up.
  std::signal(SIGXFSZ, SIG_IGN);
#endif
}

bool interrupted() noexcept {
  return stopAsked.load(std::memory_order_relaxed);
}

void throwIfInterrupted() {
  if (interrupted()) throw Interrupted();
}

}  // namespace cli
