// tests/cli/scratch_folder.cpp — a folder of its own for each test, gone afterwards.
#include "tests/cli/scratch_folder.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace cli::test {

ScratchFolder::ScratchFolder() {
  std::random_device any;
  do {
    path_ = std::filesystem::temp_directory_path() / ("varilum-cli-" + std::to_string(any()));
  } while (!std::filesystem::create_directory(path_));
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::vector<std::string> ScratchFolder::names() const {
  std::vector<std::string> list;
  for (const auto& entry : std::filesystem::directory_iterator(path_)) {
    list.push_back(entry.path().filename().string());
  }
  std::sort(list.begin(), list.end());
  return list;
}

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

void writeFile(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary);
  out << bytes;
  if (!out.flush()) throw std::runtime_error("cannot write " + path);
}

}  // namespace cli::test
