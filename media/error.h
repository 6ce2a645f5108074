// media/error.h — what can go wrong with footage, as one exception a user can act on.
#pragma once

#include <stdexcept>
#include <string>

namespace media {

/// Kinds of trouble, so that callers can tell them apart without reading the message.
enum class Problem {
  missing,      ///< the input is not there or may not be read
  notVideo,     ///< the input is no footage that can be decoded
  empty,        ///< the input is footage with no frames
  damaged,      ///< the input broke off where the asked-for frame should be
  unsupported,  ///< a pixel format, codec or container that cannot be handled
  badOption,    ///< an option's name or value is not understood
  exists,       ///< the output is there already and overwriting was not asked for
  unwritable,   ///< the output's folder is missing or may not be written to
  diskFull,     ///< no space left while writing
  writeFailed,  ///< any other failure while encoding or writing
};

/// Thrown by everything in media/. what() is one sentence or two without a final newline: what is
/// wrong, with the file's name, and what to do about it.
class Error : public std::runtime_error {
 public:
  Error(Problem problem, const std::string& message)
      : std::runtime_error(message), problem_(problem) {}
  Problem problem() const noexcept { return problem_; }

 private:
  Problem problem_;
};

}  // namespace media
