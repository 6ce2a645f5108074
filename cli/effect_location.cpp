// cli/effect_location.cpp — where the effect library is.
#include "cli/effect_location.h"

#include <system_error>

#include <fmt/format.h>

#include "cli/error.h"
#include "cli/program_files.h"
#include "cli/terminal/invocation.h"

namespace cli {
namespace {

bool isFile(const std::filesystem::path& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(path, ignored);
}

}  // namespace

std::filesystem::path findEffect(const std::string& given) {
  const std::string named = !given.empty() ? given : environmentValue("VARILUM_EFFECT");
  if (!named.empty()) {
    if (isFile(named)) return std::filesystem::absolute(named);
    throw Failure(fmt::format("There is no effect library {}; check {}.", named,
                              given.empty() ? "VARILUM_EFFECT" : "--effect"));
  }
  const std::filesystem::path folder = programFolder();
  for (const auto& candidate : {folder / kEffectLibrary, folder / ".." / "lib" / kEffectLibrary}) {
    if (isFile(candidate)) return candidate;
  }
  throw Failure(fmt::format("{} is not in {}; name it with --effect or VARILUM_EFFECT.",
                            kEffectLibrary, folder.string()));
}

}  // namespace cli
