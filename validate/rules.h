// validate/rules.h — the rules of the interface that an effect can break.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace validate {

// Notes are told and do not count; warnings and errors are violations.
enum class Severity : std::uint8_t { note, warning, error };

// A rule, and what is said to whoever broke it.
struct Rule {
  const char* id;  // lower case, joined with hyphens; never changes its meaning
  Severity severity;
  const char* why;     // why it matters: one sentence
  const char* advice;  // what to do: one sentence
};

std::span<const Rule> allRules() noexcept;

/// Throws std::logic_error for an id that no rule has.
const Rule& ruleOf(std::string_view id);

const char* nameOf(Severity severity) noexcept;

/// The rule that the embedded host means with a report of its own (MessageKind::protocol);
/// "interface" for what no other rule covers.
const Rule& ruleOfReport(std::string_view report) noexcept;

}  // namespace validate
