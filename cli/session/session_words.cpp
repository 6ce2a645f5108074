// cli/session/session_words.cpp — a session's command lines taken apart.
#include "cli/session/session_words.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>

#include "cli/error.h"

namespace cli {
namespace {

template <class Number>
std::optional<Number> parse(const std::string& word) {
  Number value{};
  const char* end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, value);
  if (error != std::errc{} || stop != end) return std::nullopt;
  return value;
}

}  // namespace

std::vector<std::string> splitWords(std::string_view line) {
  std::vector<std::string> words;
  bool inWord = false;
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (!quoted && (c == ' ' || c == '\t' || c == '\r')) {
      inWord = false;
      continue;
    }
    if (!quoted && c == '#') break;
    if (!inWord) words.emplace_back();
    inWord = true;
    if (c == '"') {
      quoted = !quoted;
    } else if (quoted && c == '\\' && i + 1 < line.size() &&
               (line[i + 1] == '"' || line[i + 1] == '\\')) {
      words.back() += line[++i];
    } else {
      words.back() += c;
    }
  }
  if (quoted) throw Failure("A quote has no end.");
  return words;
}

Arguments::Arguments(std::vector<std::string> words, std::string usage)
    : words_(std::move(words)), usage_(std::move(usage)) {}

void Arguments::refuse() const {
  throw Failure(fmt::format("The command is: {}", usage_));
}

std::string Arguments::text() {
  if (empty()) refuse();
  return words_[next_++];
}

std::int32_t Arguments::whole() {
  const auto value = parse<std::int32_t>(text());
  if (!value) refuse();
  return *value;
}

double Arguments::number() {
  const auto value = parse<double>(text());
  if (!value || !std::isfinite(*value)) refuse();
  return *value;
}

std::optional<std::string> Arguments::optional() {
  if (empty()) return std::nullopt;
  return text();
}

std::optional<std::int32_t> Arguments::optionalWhole() {
  if (empty()) return std::nullopt;
  return whole();
}

bool Arguments::flag(std::string_view word) {
  if (empty() || words_[next_] != word) return false;
  ++next_;
  return true;
}

std::optional<std::string> Arguments::option(std::string_view name) {
  if (empty()) return std::nullopt;
  const std::string& word = words_[next_];
  if (word.size() <= name.size() || !word.starts_with(name) || word[name.size()] != '=') {
    return std::nullopt;
  }
  ++next_;
  return word.substr(name.size() + 1);
}

void Arguments::end() const {
  if (!empty()) refuse();
}

}  // namespace cli
