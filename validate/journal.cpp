// validate/journal.cpp — what a check tells of itself, line by line, to whoever started it.
#include "validate/journal.h"

#include "validate/rules.h"

namespace validate {
namespace {

constexpr char kBetween = '\t';

// Line ends and tabs would be taken for the journal's own.
std::string escaped(std::string_view text) {
  std::string safe;
  for (const char c : text) {
    if (c == '\\') {
      safe += "\\\\";
    } else if (c == '\n') {
      safe += "\\n";
    } else if (c == kBetween) {
      safe += "\\t";
    } else {
      safe += c;
    }
  }
  return safe;
}

std::string unescaped(std::string_view safe) {
  std::string text;
  for (std::size_t i = 0; i < safe.size(); ++i) {
    if (safe[i] != '\\' || i + 1 == safe.size()) {
      text += safe[i];
      continue;
    }
    ++i;
    text += safe[i] == 'n' ? '\n' : safe[i] == 't' ? kBetween : safe[i];
  }
  return text;
}

}  // namespace

std::string writeLine(const JournalLine& line) {
  return std::string{static_cast<char>(line.entry), kBetween} + escaped(line.rule) + kBetween +
         escaped(line.text);
}

bool readLine(std::string_view text, JournalLine& line) {
  if (text.size() < 3 || text[1] != kBetween) return false;
  const std::size_t second = text.find(kBetween, 2);
  if (second == std::string_view::npos) return false;
  if (std::string_view{"SFKD"}.find(text[0]) == std::string_view::npos) return false;
  line.entry = static_cast<Entry>(text[0]);
  line.rule = unescaped(text.substr(2, second - 2));
  line.text = unescaped(text.substr(second + 1));
  return true;
}

void Journal::step(std::string_view doing) {
  const std::lock_guard guard(mutex_);
  doing_ = doing;
  sink_({Entry::step, {}, doing_});
}

std::string Journal::doing() const {
  const std::lock_guard guard(mutex_);
  return doing_;
}

void Journal::violate(std::string_view rule, std::string_view what) {
  const std::string id = ruleOf(rule).id;
  const std::lock_guard guard(mutex_);
  if (!told_.insert(id + kBetween + std::string(what)).second) return;
  std::string text{what};
  if (!doing_.empty()) text += " (step: " + doing_ + ")";
  sink_({Entry::finding, id, text});
}

void Journal::skip(std::string_view reason) {
  const std::lock_guard guard(mutex_);
  sink_({Entry::skip, {}, std::string(reason)});
}

void Journal::done() {
  const std::lock_guard guard(mutex_);
  sink_({Entry::done, {}, {}});
}

void JournalReader::take(std::string_view bytes) {
  rest_ += bytes;
  std::size_t begin = 0;
  for (std::size_t end = 0; (end = rest_.find('\n', begin)) != std::string::npos; begin = end + 1) {
    JournalLine line;
    if (!readLine(std::string_view(rest_).substr(begin, end - begin), line)) continue;
    done_ = done_ || line.entry == Entry::done;
    if (sink_) sink_(line);
  }
  rest_.erase(0, begin);
}

}  // namespace validate
