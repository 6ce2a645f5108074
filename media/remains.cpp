// media/remains.cpp — temporary files of killed runs, told from those in use.
#include "media/remains.h"

#include <algorithm>
#include <atomic>
#include <string_view>

#include "media/system_file.h"

namespace media {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMark = ".part-";

bool isRemainsName(std::string_view name, const std::string& stem) {
  if (name.empty() || name.front() != '.') return false;
  name.remove_prefix(1);
  if (!name.starts_with(stem)) return false;
  name.remove_prefix(stem.size());
  if (!name.starts_with(kMark)) return false;
  name.remove_prefix(kMark.size());
  const auto digits = [&name] {
    const auto count = std::min(name.find_first_not_of("0123456789"), name.size());
    name.remove_prefix(count);
    return count > 0;
  };
  if (!digits() || !name.starts_with('-')) return false;
  name.remove_prefix(1);
  return digits() && (name.empty() || name.front() == '.');
}

}  // namespace

void removeRemains(const fs::path& folder, const std::string& stem) {
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
    if (!isRemainsName(entry.path().filename().string(), stem)) continue;
    std::error_code error;
    if (isAbandoned(entry.path())) fs::remove_all(entry.path(), error);
  }
}

std::string temporaryName(const std::string& stem, const std::string& extension) {
  static std::atomic<int> serial{0};
  std::string name = "." + stem;
  name += kMark;
  name += std::to_string(processId()) + "-" + std::to_string(serial++) + extension;
  return name;
}

}  // namespace media
