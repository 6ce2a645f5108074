// tests/cli/striped_y4m.cpp — clips of grey stripes written and read by hand, as YUV4MPEG2.
#include "tests/cli/striped_y4m.h"

#include <stdexcept>

#include "tests/cli/scratch_folder.h"

namespace cli::test {
namespace {

constexpr std::size_t kStripe = kWidth / kStripes;
constexpr std::size_t kBytes = static_cast<std::size_t>(kWidth) * kHeight;
const std::string kFrameLine = "FRAME\n";

}  // namespace

void writeY4m(const std::string& path, const Frames& frames) {
  std::string bytes = "YUV4MPEG2 W" + std::to_string(kWidth) + " H" + std::to_string(kHeight) +
                      " F24:1 Ip A1:1 Cmono XCOLORRANGE=FULL\n";
  for (const Stripes& stripes : frames) {
    bytes += kFrameLine;
    std::string row;
    for (const double value : stripes) row.append(kStripe, static_cast<char>(value));
    for (int y = 0; y < kHeight; ++y) bytes += row;
  }
  writeFile(path, bytes);
}

Frames readY4m(const std::string& path) {
  const std::string bytes = readFile(path);
  const std::string header = bytes.substr(0, bytes.find('\n') + 1);
  for (const char* word : {"YUV4MPEG2 ", " W64 ", " H64 ", " Cmono", "XCOLORRANGE=FULL"}) {
    if (header.find(word) == std::string::npos) throw std::runtime_error("header: " + header);
  }
  const std::size_t frameBytes = kFrameLine.size() + kBytes;
  if ((bytes.size() - header.size()) % frameBytes != 0) {
    throw std::runtime_error("a frame is cut off");
  }
  Frames frames;
  for (std::size_t at = header.size(); at < bytes.size(); at += frameBytes) {
    if (bytes.compare(at, kFrameLine.size(), kFrameLine) != 0) throw std::runtime_error("no frame");
    Stripes& stripes = frames.emplace_back();
    for (std::size_t i = 0; i < kBytes; ++i) {
      const auto value = static_cast<unsigned char>(bytes[at + kFrameLine.size() + i]);
      double& stripe = stripes[i % kWidth / kStripe];
      if (i < kWidth && i % kStripe == 0) stripe = value;
      if (stripe != value) throw std::runtime_error("a stripe is not flat");
    }
  }
  return frames;
}

}  // namespace cli::test
