// validate/check.cpp — one check, and what it is given.
#include "validate/check.h"

#include <string_view>

namespace validate {
namespace {

// The same on every system, unlike std::hash.
std::uint64_t seedOf(std::uint64_t seed, std::string_view id) noexcept {
  std::uint64_t hash = 1469598103934665603ULL ^ seed;
  for (const char c : id) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
  return hash;
}

}  // namespace

void runHere(const Check& check, const Subject& subject, Journal& journal) {
  Trial trial{subject, journal, std::mt19937_64(seedOf(subject.seed, check.id))};
  try {
    check.run(trial);
  } catch (const Skipped& reason) {
    journal.skip(reason.what());
  } catch (const CannotStart& problem) {
    journal.violate(problem.rule(), problem.what());
  } catch (const std::exception& problem) {
    journal.violate("command-failed", problem.what());
  }
  journal.done();
}

}  // namespace validate
