// cli/session/session_words.h — a session's command lines taken apart.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// Words are separated by blanks; double quotes hold one together, and \" and \\ are characters in
/// it. A # outside quotes begins a comment. Throws Failure when a quote has no end.
std::vector<std::string> splitWords(std::string_view line);

/// The words after a command's name, read in order. Each reading throws Failure, naming the
/// command's usage, when a word is missing or of another kind; end() when words are left.
class Arguments {
 public:
  /// words[0] is the command. `usage`: "goto FRAME".
  Arguments(std::vector<std::string> words, std::string usage);

  std::string text();
  std::int32_t whole();
  double number();
  /// The next word if there is one.
  std::optional<std::string> optional();
  std::optional<std::int32_t> optionalWhole();
  /// True when the next word is this one, which is then read.
  bool flag(std::string_view word);
  /// The value of a next word NAME=VALUE, which is then read.
  std::optional<std::string> option(std::string_view name);
  bool empty() const noexcept { return next_ == words_.size(); }
  void end() const;

  [[noreturn]] void refuse() const;

 private:
  std::vector<std::string> words_;
  std::string usage_;
  std::size_t next_ = 1;
};

}  // namespace cli
