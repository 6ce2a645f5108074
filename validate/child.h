// validate/child.h — a check in a process of its own, so that it may crash and hang.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "validate/check.h"
#include "validate/journal.h"

namespace validate {

enum class Ending : std::uint8_t {
  finished,    // the check came to its end
  crashed,     // the process died
  exited,      // the process ended by itself, in the middle
  hung,        // no sign of life for the limit; it was killed
  interrupted  // the caller asked to stop; it was killed
};

struct ChildOutcome {
  Ending ending = Ending::finished;
  std::string how;  // "signal 11 (segmentation fault)", "exit code 3"
};

struct ChildWatch {
  std::chrono::milliseconds silence{10'000};
  std::function<bool()> stopAsked;                 // may be empty
  std::function<void(const JournalLine&)> onLine;  // as they come
};

/// Runs the check and waits for its end. On Linux the process is a fork of this one, which must
/// have no other threads; on Windows it is this program started anew with the arguments "validate
/// LIBRARY --only ID --seed N --strictness N --channel NUMBER", which has to call runChild() then.
/// Throws std::system_error when no process can be made.
ChildOutcome runInChild(const Check& check, const Subject& subject, const ChildWatch& watch);

/// What the process does: runs the check, writes its journal into the channel (a descriptor, or on
/// Windows a handle) and ends, without running anything of the library again.
[[noreturn]] void runChild(const Check& check, const Subject& subject, std::uint64_t channel);

}  // namespace validate
