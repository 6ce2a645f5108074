// validate/check.h — one check, and what it is given.
#pragma once

#include <cstdint>
#include <filesystem>
#include <random>
#include <stdexcept>

#include "validate/journal.h"

namespace validate {

inline constexpr int kLaxest = 1;
inline constexpr int kStrictest = 10;

// What is judged, and how hard.
struct Subject {
  std::filesystem::path library;
  std::uint64_t seed = 1;
  int strictness = 5;
};

// One run of one check, in a process of its own.
struct Trial {
  const Subject& subject;
  Journal& journal;
  std::mt19937_64 random;  // of the subject's seed and the check's id
};

struct Check {
  const char* id;      // lower case, joined with hyphens
  const char* proves;  // one sentence
  void (*run)(Trial& trial);
};

// Thrown by a check that finds nothing to do: the effect does not have what it is about.
class Skipped : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Thrown when the effect cannot be loaded or set up.
class CannotStart : public std::runtime_error {
 public:
  CannotStart(const char* rule, const std::string& what) : std::runtime_error(what), rule_(rule) {}
  const char* rule() const noexcept { return rule_; }

 private:
  const char* rule_;
};

/// Runs it here; everything that may be thrown ends up in the journal.
void runHere(const Check& check, const Subject& subject, Journal& journal);

}  // namespace validate
