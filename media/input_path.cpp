// media/input_path.cpp — what the user named as input: a file, numbered pictures, a folder of them.
#include "media/input_path.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <map>
#include <set>

#include "media/error.h"
#include "media/folder_of.h"

namespace media {
namespace {

namespace fs = std::filesystem;

constexpr std::array kPictureExtensions = {".png",  ".tif", ".tiff", ".dpx", ".exr", ".jpg",
                                           ".jpeg", ".bmp", ".tga",  ".ppm", ".pgm"};

bool isDigit(char c) noexcept {
  return c >= '0' && c <= '9';
}

std::string lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

std::string doubledPercent(const std::string& text) {
  std::string result;
  for (const char c : text) result.append(c == '%' ? 2 : 1, c);
  return result;
}

std::set<int> numbersThere(const fs::path& folder, const NumberPattern& pattern) {
  std::set<int> numbers;
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
    if (const auto number = pattern.numberOf(entry.path().filename().string())) {
      numbers.insert(*number);
    }
  }
  return numbers;
}

InputPath resolvePattern(const fs::path& path, const NumberPattern& pattern,
                         std::optional<int> startNumber) {
  const std::set<int> numbers = numbersThere(folderOf(path), pattern);
  if (numbers.empty()) {
    throw Error(Problem::missing, "No file matches " + path.string() +
                                      ". Check the folder and the number of digits.");
  }
  InputPath input;
  input.url = path.string();
  input.sequence = true;
  input.firstNumber = startNumber.value_or(*numbers.begin());
  if (!numbers.contains(input.firstNumber)) {
    throw Error(Problem::missing, "There is no " + pattern.fileName(input.firstNumber) +
                                      " to start with; the first file is " +
                                      pattern.fileName(*numbers.begin()) + ".");
  }
  int last = input.firstNumber;
  while (numbers.contains(last + 1)) ++last;
  if (last != *numbers.rbegin()) {
    input.warnings.push_back("The sequence has a gap: " + pattern.fileName(last + 1) +
                             " is missing, and the files after it are left out.");
  }
  return input;
}

// The largest family of numbered pictures in a folder.
InputPath resolveFolder(const fs::path& folder, std::optional<int> startNumber) {
  struct Family {
    int files = 0;
    std::size_t leastDigits = 99;
    bool padded = false;
  };
  std::map<std::pair<std::string, std::string>, Family> families;
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
    const std::string extension = entry.path().extension().string();
    const std::string stem = entry.path().stem().string();
    if (std::ranges::find(kPictureExtensions, lower(extension)) == kPictureExtensions.end()) {
      continue;
    }
    std::size_t digits = 0;
    while (digits < stem.size() && isDigit(stem[stem.size() - 1 - digits])) ++digits;
    if (digits == 0 || digits > 9) continue;
    Family& family = families[{stem.substr(0, stem.size() - digits), extension}];
    ++family.files;
    family.leastDigits = std::min(family.leastDigits, digits);
    family.padded = family.padded || stem[stem.size() - digits] == '0';
  }
  if (families.empty()) {
    throw Error(Problem::missing, "The folder " + folder.string() +
                                      " holds no numbered pictures (png, tif, dpx, exr, jpg).");
  }
  const auto largest = std::ranges::max_element(
      families, {}, [](const auto& family) { return family.second.files; });
  const auto& [prefix, extension] = largest->first;
  const std::string number =
      largest->second.padded ? "%0" + std::to_string(largest->second.leastDigits) + "d" : "%d";
  const std::string name = doubledPercent(prefix) + number + doubledPercent(extension);
  return resolvePattern(folder / name, *numberPattern(name), startNumber);
}

}  // namespace

std::string NumberPattern::fileName(int number) const {
  std::string text = std::to_string(number);
  if (static_cast<int>(text.size()) < digits) {
    text.insert(0, static_cast<std::size_t>(digits) - text.size(), '0');
  }
  return prefix + text + suffix;
}

std::optional<int> NumberPattern::numberOf(const std::string& name) const {
  if (name.size() <= prefix.size() + suffix.size() || !name.starts_with(prefix) ||
      !name.ends_with(suffix)) {
    return std::nullopt;
  }
  const char* first = name.data() + prefix.size();
  const char* last = name.data() + name.size() - suffix.size();
  if (!std::all_of(first, last, isDigit)) return std::nullopt;
  int number = 0;
  if (std::from_chars(first, last, number).ptr != last) return std::nullopt;
  return fileName(number) == name ? std::optional(number) : std::nullopt;
}

std::optional<NumberPattern> numberPattern(const std::string& fileName) {
  NumberPattern pattern;
  bool found = false;
  for (std::size_t i = 0; i < fileName.size(); ++i) {
    std::string& part = found ? pattern.suffix : pattern.prefix;
    if (fileName[i] != '%') {
      part += fileName[i];
      continue;
    }
    if (i + 1 < fileName.size() && fileName[i + 1] == '%') {
      part += '%';
      ++i;
      continue;
    }
    std::size_t end = i + 1;
    while (end < fileName.size() && isDigit(fileName[end])) ++end;
    if (found || end == fileName.size() || fileName[end] != 'd' || end - i > 3) return std::nullopt;
    if (end > i + 1) pattern.digits = std::stoi(fileName.substr(i + 1, end - i - 1));
    found = true;
    i = end;
  }
  return found ? std::optional(pattern) : std::nullopt;
}

InputPath resolveInput(const std::string& path, std::optional<int> startNumber) {
  if (path.empty()) throw Error(Problem::missing, "No input file was named.");
  std::error_code status;
  const fs::path file(path);
  if (fs::is_directory(file, status)) return resolveFolder(file, startNumber);
  if (fs::exists(file, status)) {
    if (fs::is_regular_file(file, status) && fs::file_size(file, status) == 0) {
      throw Error(Problem::empty, path + " is an empty file.");
    }
    return {path, false, false, 0, {}};
  }
  if (const auto pattern = numberPattern(file.filename().string())) {
    return resolvePattern(file, *pattern, startNumber);
  }
  if (path.find_first_of("*?") != std::string::npos) return {path, true, true, 0, {}};
  if (path.find("://") != std::string::npos) return {path, false, false, 0, {}};
  throw Error(Problem::missing, "There is no file " + path + ".");
}

}  // namespace media
