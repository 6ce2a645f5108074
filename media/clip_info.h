// media/clip_info.h — what is known about a clip before its frames are read.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "media/argb_view.h"

namespace media {

struct Rational {
  int num = 0;
  int den = 1;

  double value() const noexcept { return den == 0 ? 0.0 : static_cast<double>(num) / den; }
  friend bool operator==(const Rational&, const Rational&) = default;
};

/// A stream of the container besides the picture: audio, subtitles, data, cover art.
struct OtherStream {
  int index = 0;         ///< in the container
  std::string kind;      ///< "audio", "subtitle", "data", "attachment", "video"
  std::string codec;     ///< FFmpeg's codec name
  std::string language;  ///< three letters, or empty
};

/// Filled by ClipReader; filled by hand to write a clip that has no source.
struct ClipInfo {
  std::string path;
  std::string container;  ///< FFmpeg's demuxer name, "image2" for numbered pictures
  std::string codec;      ///< FFmpeg's codec name, such as "h264"
  bool imageSequence = false;
  int firstNumber = 0;  ///< of an image sequence: the number in the first file's name

  int width = 0;  ///< pixels as stored, before rotation and sample aspect ratio
  int height = 0;
  std::string pixelFormat = "yuv420p";  ///< FFmpeg's name, as pictures are handed out
  int bitsPerComponent = 8;             ///< of the deepest component
  bool isFloat = false;
  bool hasAlpha = false;
  Depth workingDepth = Depth::eight;  ///< the ARGB depth that loses least: 8, 9..16, float

  // FFmpeg's names; "unknown" where the file does not say.
  std::string colourRange = "unknown";   ///< "tv", "pc"
  std::string colourMatrix = "unknown";  ///< "bt709", "smpte170m", "bt2020nc", "gbr" ...
  std::string colourPrimaries = "unknown";
  std::string colourTransfer = "unknown";

  Rational sampleAspectRatio{1, 1};  ///< 1:1 where unknown
  int rotationDegrees = 0;           ///< clockwise turn a player applies: 0, 90, 180 or 270
  Rational timeBase{1, 24};          ///< seconds per tick of Picture::pts
  Rational frameRate{24, 1};         ///< from the timestamps where the container talks nonsense
  bool variableFrameRate = false;
  std::int64_t frameCount = 0;  ///< frames that can be indexed; see frameCountExact
  bool frameCountExact = true;  ///< false: from packets of a codec that may hide frames
  std::int64_t startPts = 0;    ///< of frame 0
  double durationSeconds = 0;   ///< first frame's start to last frame's end
  std::vector<OtherStream> otherStreams;
};

}  // namespace media
