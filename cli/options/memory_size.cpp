// cli/options/memory_size.cpp — amounts of memory: as people write them.
#include "cli/options/memory_size.h"

#include <charconv>
#include <cmath>

namespace cli {
namespace {

// 1 for no unit; 0 for one that is unknown.
double unitOf(std::string_view unit) {
  if (unit.empty()) return 1.0;
  if (unit.size() > 1) return 0.0;
  switch (unit.front()) {
    case 'K':
    case 'k':
      return 1024.0;
    case 'M':
    case 'm':
      return 1024.0 * 1024.0;
    case 'G':
    case 'g':
      return 1024.0 * 1024.0 * 1024.0;
    case 'T':
    case 't':
      return 1024.0 * 1024.0 * 1024.0 * 1024.0;
    default:
      return 0.0;
  }
}

}  // namespace

std::optional<std::uint64_t> parseMemorySize(std::string_view text) {
  constexpr double kMost = 9e18;
  double number = 0.0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, std::chars_format::fixed);
  if (error != std::errc() || !(number >= 0.0)) return {};
  const double unit = unitOf(std::string_view(stop, static_cast<std::size_t>(end - stop)));
  const double bytes = std::floor(number * unit);
  if (unit == 0.0 || !(bytes <= kMost)) return {};
  return static_cast<std::uint64_t>(bytes);
}

}  // namespace cli
