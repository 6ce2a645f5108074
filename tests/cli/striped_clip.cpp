// tests/cli/striped_clip.cpp — clips whose every pixel is known.
#include "tests/cli/striped_clip.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "tests/cli/program.h"
#include "tests/cli/scratch_folder.h"
#include "tests/cli/striped_y4m.h"

namespace cli::test {
namespace {

constexpr std::size_t kPixels = static_cast<std::size_t>(kWidth) * kHeight;

template <typename Component>
void append(std::string& bytes, double value) {
  const auto component = static_cast<Component>(value);
  bytes.append(reinterpret_cast<const char*>(&component), sizeof(component));
}

// Grey: all three components of a pixel are equal, so planes and pixels look the same in turn.
template <typename Component>
std::string rawBytes(const Frames& frames, bool planar) {
  std::string bytes;
  for (const Stripes& stripes : frames) {
    for (int plane = 0; plane < (planar ? 3 : 1); ++plane) {
      for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
          const double value = stripes[static_cast<std::size_t>(x * kStripes / kWidth)];
          for (int c = 0; c < (planar ? 1 : 3); ++c) append<Component>(bytes, value);
        }
      }
    }
  }
  return bytes;
}

template <typename Component>
Frames fromBytes(const std::string& bytes, bool planar) {
  const std::size_t frameBytes = kPixels * 3 * sizeof(Component);
  if (bytes.size() % frameBytes != 0) throw std::runtime_error("a frame is cut off");
  Frames frames(bytes.size() / frameBytes);
  for (std::size_t f = 0; f < frames.size(); ++f) {
    for (std::size_t i = 0; i < kPixels * 3; ++i) {
      Component component;
      std::memcpy(&component, bytes.data() + f * frameBytes + i * sizeof(component),
                  sizeof(component));
      const std::size_t x = (planar ? i : i / 3) % kWidth;
      double& stripe = frames[f][x * kStripes / kWidth];
      if (i < static_cast<std::size_t>(kWidth) * (planar ? 1 : 3) && (planar || i % 3 == 0) &&
          x % (kWidth / kStripes) == 0) {
        stripe = static_cast<double>(component);
      } else if (stripe != static_cast<double>(component)) {
        throw std::runtime_error("a stripe is not flat and grey");
      }
    }
  }
  return frames;
}

bool isPlanar(const Format& format) {
  return std::string(format.raw).starts_with("gbrp");
}

}  // namespace

void writeStripes(const std::string& path, const Frames& frames, const Format& format,
                  const std::vector<std::string>& encoder) {
  const ScratchFolder scratch;
  const std::string raw = scratch / "frames.raw";
  writeFile(raw, format.white == 255.0     ? rawBytes<std::uint8_t>(frames, isPlanar(format))
                 : format.white == 65535.0 ? rawBytes<std::uint16_t>(frames, isPlanar(format))
                                           : rawBytes<float>(frames, isPlanar(format)));
  std::vector<std::string> arguments{
      "-f",       "rawvideo", "-pix_fmt",
      format.raw, "-s",       std::to_string(kWidth) + "x" + std::to_string(kHeight),
      "-r",       "24",       "-i",
      raw};
  arguments.insert(arguments.end(), encoder.begin(), encoder.end());
  arguments.push_back(path);
  ffmpeg(arguments);
}

void writeLossless(const std::string& path, const Frames& frames) {
  if (kPlainProgram) return writeY4m(path, frames);
  writeStripes(path, frames, kEight, {"-c:v", "ffv1", "-pix_fmt", "bgr0"});
}

Frames readStripes(const std::string& path, const Format& format,
                   const std::vector<std::string>& input) {
  if (kPlainProgram) return readY4m(path);
  std::vector<std::string> arguments = input;
  arguments.insert(arguments.end(), {"-i", path, "-vsync", "passthrough", "-f", "rawvideo",
                                     "-pix_fmt", format.raw, "-"});
  const std::string bytes = ffmpeg(arguments);
  if (format.white == 255.0) return fromBytes<std::uint8_t>(bytes, isPlanar(format));
  if (format.white == 65535.0) return fromBytes<std::uint16_t>(bytes, isPlanar(format));
  return fromBytes<float>(bytes, isPlanar(format));
}

Frames flickering(const std::vector<double>& gains) {
  Frames frames;
  for (const double gain : gains) {
    Stripes stripes{20.0, 60.0, 100.0, 180.0};
    for (double& value : stripes) value = std::round(value * gain);
    frames.push_back(stripes);
  }
  return frames;
}

}  // namespace cli::test
