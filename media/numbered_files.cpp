// media/numbered_files.cpp — numbered files that appear under their names only when all are there.
#include "media/numbered_files.h"

#include <system_error>

#include "media/error.h"
#include "media/pending_file.h"

namespace media {
namespace {

namespace fs = std::filesystem;

void requireNoneThere(const fs::path& folder, const NumberPattern& pattern) {
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
    const std::string name = entry.path().filename().string();
    if (pattern.numberOf(name)) {
      throw Error(
          Problem::exists,
          entry.path().string() + " exists already; choose another name or allow replacing it.");
    }
  }
}

}  // namespace

NumberedFiles::NumberedFiles(const std::string& path, int firstNumber, bool overwrite)
    : folder_(fs::path(path).has_parent_path() ? fs::path(path).parent_path() : fs::path(".")),
      pattern_(*numberPattern(fs::path(path).filename().string())),
      number_(firstNumber),
      overwrite_(overwrite) {
  requireWritable(folder_ / pattern_.fileName(number_), true);
  if (!overwrite_) requireNoneThere(folder_, pattern_);
  temporary_.emplace(folder_, pattern_.prefix);
}

void NumberedFiles::add(const std::uint8_t* data, std::size_t size) {
  const std::string name = pattern_.fileName(number_++);
  PendingFile file(temporary_->path() / name, true);
  if (!file.write(data, size)) throwWriteError(folder_ / name, file.errorCode());
  file.commit();
  names_.push_back(name);
}

void NumberedFiles::finish() {
  std::size_t moved = 0;
  try {
    for (; moved < names_.size(); ++moved) {
      moveIntoPlace(temporary_->path() / names_[moved], folder_ / names_[moved], overwrite_);
    }
  } catch (const Error&) {
    std::error_code ignored;
    for (std::size_t i = 0; i < moved && !overwrite_; ++i) fs::remove(folder_ / names_[i], ignored);
    throw;
  }
  temporary_.reset();
}

}  // namespace media
