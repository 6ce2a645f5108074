// cli/project/project_file.cpp — a fixed preamble, a header, the effect's own flat data.
#include "cli/project/project_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <fstream>
#include <span>
#include <utility>
#include <vector>

#include "cli/error.h"
#include "cli/output_file.h"
#include "cli/project/crc32.h"
#include "cli/project/project_header.h"

namespace cli {
namespace {

constexpr std::array<char, 8> kMagic{'V', 'A', 'R', 'I', 'L', 'U', 'M', '\n'};
constexpr std::uint32_t kVersion = 2;

struct Preamble {
  std::array<char, 8> magic;
  std::uint32_t version;
  std::uint32_t headerBytes;
  std::uint64_t dataBytes;
  std::uint32_t headerSum;
  std::uint32_t dataSum;
  std::uint32_t ownSum;  // of the bytes before it
  std::uint32_t reserved;
};
static_assert(sizeof(Preamble) == 40 && offsetof(Preamble, ownSum) == 32);
static_assert(std::endian::native == std::endian::little, "the file is little-endian");

// Far above what 24 million frames with a keyframe each would be split into by a sane user.
constexpr std::uint64_t kMostHeaderBytes = 1ULL << 30;

std::uint32_t ownSum(const Preamble& preamble) {
  return crc32(std::as_bytes(std::span(&preamble, 1)).first(offsetof(Preamble, ownSum)));
}

[[noreturn]] void damaged(const std::filesystem::path& path, const std::string& why) {
  throw Failure(
      fmt::format("The project {} is damaged ({}); analyse the clip again.", path.string(), why));
}

// A file read from its front to its end.
class FileReader {
 public:
  explicit FileReader(const std::filesystem::path& path) : path_(path) {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
      throw Failure(fmt::format("There is no file {}; check the name.", path.string()));
    }
    if (!std::filesystem::is_regular_file(path, error)) {
      throw Failure(fmt::format("{} is not a file; give a .varilum project.", path.string()));
    }
    left_ = std::filesystem::file_size(path, error);
    in_.open(path, std::ios::binary);
    if (error || !in_) {
      throw Failure(fmt::format("{} cannot be read; check its permissions.", path.string()));
    }
  }

  std::uint64_t left() const noexcept { return left_; }

  // At most left().
  std::vector<std::byte> take(std::uint64_t count) {
    // Piece by piece, since a vector would clear all of it first, and an analysis may be large.
    constexpr std::uint64_t kPiece = std::uint64_t{1} << 18;
    std::vector<std::byte> piece(static_cast<std::size_t>(std::min(kPiece, count)));
    std::vector<std::byte> bytes;
    bytes.reserve(static_cast<std::size_t>(count));
    while (bytes.size() < count) {
      const auto wanted =
          static_cast<std::ptrdiff_t>(std::min<std::uint64_t>(kPiece, count - bytes.size()));
      if (!in_.read(reinterpret_cast<char*>(piece.data()), wanted)) {
        throw Failure(fmt::format("{} could not be read to its end.", path_.string()));
      }
      bytes.insert(bytes.end(), piece.begin(), piece.begin() + wanted);
    }
    left_ -= count;
    return bytes;
  }

 private:
  const std::filesystem::path& path_;
  std::ifstream in_;
  std::uint64_t left_ = 0;
};

}  // namespace

void writeProject(const std::filesystem::path& path, const Project& project, bool force) {
  const std::string header = projectHeader(project);
  Preamble preamble{};
  preamble.magic = kMagic;
  preamble.version = kVersion;
  preamble.headerBytes = static_cast<std::uint32_t>(header.size());
  for (const ProjectShot& shot : project.shots) {
    preamble.dataBytes += shot.effect.sequenceData.size();
    preamble.dataSum = crc32(shot.effect.sequenceData, preamble.dataSum);
  }
  preamble.headerSum = crc32(std::as_bytes(std::span(header)));
  preamble.ownSum = ownSum(preamble);

  OutputFile file(path, force);
  file.write(std::as_bytes(std::span(&preamble, 1)));
  file.write(std::as_bytes(std::span(header)));
  for (const ProjectShot& shot : project.shots) file.write(shot.effect.sequenceData);
  file.commit();
}

Project readProject(const std::filesystem::path& path) {
  FileReader file(path);
  const std::vector<std::byte> start =
      file.take(std::min<std::uint64_t>(file.left(), sizeof(Preamble)));
  Preamble preamble{};
  std::memcpy(&preamble, start.data(), start.size());
  if (preamble.magic != kMagic) {
    throw Failure(fmt::format("{} is not a Varilum4 project; make one with 'varilum4 analyze'.",
                              path.string()));
  }
  if (start.size() < sizeof(Preamble)) damaged(path, "it ends too early");
  if (preamble.ownSum != ownSum(preamble)) damaged(path, "its beginning was changed");
  if (preamble.version > kVersion) {
    throw Failure(
        fmt::format("The project {} was made by a newer version of this program; "
                    "update, or analyse the clip again.",
                    path.string()));
  }
  const std::uint64_t rest = file.left();
  if (preamble.version == 0 || preamble.headerBytes > kMostHeaderBytes) {
    damaged(path, "its beginning makes no sense");
  }
  if (preamble.headerBytes > rest || preamble.dataBytes > rest - preamble.headerBytes) {
    damaged(path, "it ends too early");
  }
  if (preamble.dataBytes != rest - preamble.headerBytes) damaged(path, "it is too long");
  const std::vector<std::byte> header = file.take(preamble.headerBytes);
  if (crc32(header) != preamble.headerSum) damaged(path, "its settings were changed");
  std::vector<std::byte> data = file.take(preamble.dataBytes);
  if (crc32(data) != preamble.dataSum) damaged(path, "its analysis was changed");

  const char* text = reinterpret_cast<const char*>(header.data());
  try {
    return projectFrom({text, header.size()}, preamble.version, std::move(data));
  } catch (const std::exception&) {
    damaged(path, "its settings make no sense");
  }
}

bool looksLikeProject(const std::filesystem::path& path) noexcept {
  std::array<char, 8> start{};
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return false;
  std::ifstream in(path, std::ios::binary);
  in.read(start.data(), start.size());
  return in && start == kMagic;
}

}  // namespace cli
