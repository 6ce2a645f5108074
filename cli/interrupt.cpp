// cli/interrupt.cpp — Ctrl-C and termination as a flag that the work looks at between frames.
#include "cli/interrupt.h"

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

}  // namespace

void catchInterrupts() noexcept {
  std::signal(SIGINT, onStop);
  std::signal(SIGTERM, onStop);
}

bool interrupted() noexcept {
  return stopAsked.load(std::memory_order_relaxed);
}

void throwIfInterrupted() {
  if (interrupted()) throw Interrupted();
}

}  // namespace cli
