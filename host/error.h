// host/error.h — what the embedded host throws.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace host {

// Base of all; what() is a sentence that a user can act on.
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The library cannot be loaded, or is no effect.
class ModuleError : public Error {
 public:
  using Error::Error;
};

// The effect answered a command with a non-zero result.
class CommandError : public Error {
 public:
  CommandError(std::string what, std::int32_t command, std::int32_t result)
      : Error(std::move(what)), command_(command), result_(result) {}

  std::int32_t command() const noexcept { return command_; }
  std::int32_t result() const noexcept { return result_; }

 private:
  std::int32_t command_;
  std::int32_t result_;
};

// The user asked to stop.
class Cancelled : public Error {
 public:
  Cancelled() : Error("Stopped on request.") {}
};

}  // namespace host
