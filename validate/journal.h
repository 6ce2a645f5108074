// validate/journal.h — what a check tells of itself, line by line, to whoever started it.
#pragma once

#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <string_view>

namespace validate {

// What a line is about.
enum class Entry : char { step = 'S', finding = 'F', skip = 'K', done = 'D' };

struct JournalLine {
  Entry entry = Entry::step;
  std::string rule;  // of findings
  std::string text;
};

/// One line without its end, and back; texts may hold anything.
std::string writeLine(const JournalLine& line);
/// False when the text is no line of a journal.
bool readLine(std::string_view text, JournalLine& line);

// Written by a check while it runs. [any thread]
class Journal {
 public:
  using Sink = std::function<void(const JournalLine&)>;
  explicit Journal(Sink sink) : sink_(std::move(sink)) {}

  /// What the check does now. The one who watches takes it as a sign of life.
  void step(std::string_view doing);
  std::string doing() const;

  /// A rule was broken during the present step. Told once for the same words.
  void violate(std::string_view rule, std::string_view what);

  void skip(std::string_view reason);
  void done();

 private:
  Sink sink_;
  mutable std::mutex mutex_;
  std::string doing_;
  std::set<std::string> told_;
};

/// Puts a journal together again from the bytes of a channel.
class JournalReader {
 public:
  using Sink = Journal::Sink;
  explicit JournalReader(Sink sink) : sink_(std::move(sink)) {}

  /// Gives complete lines to the sink, and keeps what is left of the last.
  void take(std::string_view bytes);
  /// Whether the check came to its end.
  bool done() const noexcept { return done_; }

 private:
  Sink sink_;
  std::string rest_;
  bool done_ = false;
};

}  // namespace validate
