// cli/error.h — what the program's own code throws; main.cpp turns it into exit codes.
#pragma once

#include <stdexcept>
#include <string>

namespace cli {

/// The command line asks for something that cannot be: exit code 2. what() is one line that says
/// what is wrong and what to do.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The work could not be done: exit code 1. what() as above.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The user asked to stop: exit code 130.
class Interrupted : public std::runtime_error {
 public:
  Interrupted() : std::runtime_error("Stopped on request; no output was kept.") {}
};

}  // namespace cli
