// host/suite_registry.h — which suites the host has, and who holds them.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace host {

class HostState;
enum class Role;

// The row of a suite in the host's table, or -1 when a host of this role has no such suite. Names
// are compared exactly.
int findSuite(Role role, std::string_view name, std::int32_t version) noexcept;
const void* suiteTable(int suite) noexcept;
const char* suiteName(int suite) noexcept;
std::int32_t suiteVersion(int suite) noexcept;

inline constexpr std::size_t kMaxSuites = 32;

// References held to each suite of one host. [any thread]
class SuiteLedger {
 public:
  void acquire(int suite) noexcept { held_[static_cast<std::size_t>(suite)].fetch_add(1); }
  // False when nobody held it.
  bool release(int suite) noexcept;
  std::int64_t total() const noexcept;

  // Suites asked for that a host of this role does not have: "name version", once each.
  void noteMiss(std::string_view name, std::int32_t version);
  std::vector<std::string> misses() const;

 private:
  mutable std::mutex mutex_;  // of the misses
  std::set<std::string> misses_;
  std::array<std::atomic<std::int64_t>, kMaxSuites> held_{};
};

}  // namespace host
