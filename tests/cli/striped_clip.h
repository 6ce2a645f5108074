// tests/cli/striped_clip.h — clips whose every pixel is known: four grey stripes a frame.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "tests/cli/clip_name.h"

namespace cli::test {

inline constexpr int kWidth = 64;
inline constexpr int kHeight = 64;
inline constexpr int kStripes = 4;  // each kWidth / kStripes wide

/// Values of a frame's stripes from left to right, in the format's own scale.
using Stripes = std::array<double, kStripes>;
using Frames = std::vector<Stripes>;

/// Component types of the clips: how many bits, and white.
struct Format {
  const char* raw;  ///< ffmpeg's name of the interleaved or planar raw format
  double white;
};
inline constexpr Format kEight{"rgb24", 255.0};
inline constexpr Format kSixteen{"rgb48le", 65535.0};
inline constexpr Format kFloating{"gbrpf32le", 1.0};

/// Writes the clip with ffmpeg, which there has to be; `encoder` are the arguments before the
/// output's name.
void writeStripes(const std::string& path, const Frames& frames, const Format& format,
                  const std::vector<std::string>& encoder);

/// FFV1 in 8-bit RGB, or YUV4MPEG2 in grey of the full range: nothing is lost. `path` is a clip().
void writeLossless(const std::string& path, const Frames& frames);

/// Decodes with ffmpeg and reads the stripes, checking that each is flat and grey; `input` are
/// arguments before -i. Without ffmpeg it has to be a clip() of 8 bits.
Frames readStripes(const std::string& path, const Format& format,
                   const std::vector<std::string>& input = {});

/// Stripes 20, 60, 100 and 180 multiplied by each gain and rounded.
Frames flickering(const std::vector<double>& gains);

}  // namespace cli::test
