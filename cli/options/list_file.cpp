// cli/options/list_file.cpp — text files of numbers that users give.
#include "cli/options/list_file.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <system_error>

#include "cli/error.h"

namespace cli {
namespace {

constexpr std::uintmax_t kMostBytes = 64U << 20;
constexpr const char* kSeparators = " \t\r,;=";

std::vector<std::string> fieldsOf(std::string line) {
  line.erase(std::min(line.find('#'), line.size()));
  std::vector<std::string> fields;
  for (std::size_t at = line.find_first_not_of(kSeparators); at != std::string::npos;) {
    const std::size_t end = std::min(line.find_first_of(kSeparators, at), line.size());
    fields.push_back(line.substr(at, end - at));
    at = line.find_first_not_of(kSeparators, end);
  }
  return fields;
}

}  // namespace

std::vector<ListLine> readListFile(const std::string& path, const std::string& option) {
  std::error_code error;
  if (!std::filesystem::exists(path, error)) {
    throw Failure(fmt::format("{}: there is no file {}; check the name.", option, path));
  }
  const auto size = std::filesystem::file_size(path, error);
  std::ifstream in{std::filesystem::path(path)};
  if (error || !in) throw Failure(fmt::format("{}: {} cannot be read.", option, path));
  if (size > kMostBytes) throw Failure(fmt::format("{}: {} is no list of frames.", option, path));
  std::vector<ListLine> lines;
  std::string text;
  for (std::size_t number = 1; std::getline(in, text); ++number) {
    std::vector<std::string> fields = fieldsOf(std::move(text));
    if (!fields.empty()) lines.push_back({number, std::move(fields)});
  }
  return lines;
}

}  // namespace cli
