// tests/media/media_fixture.h — what the footage tests share: a scratch folder, pictures, commands.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "media/argb_view.h"
#include "media/clip_reader.h"
#include "media/clip_writer.h"
#include "media/picture.h"

namespace media::test {

/// Empty at first, gone at the end.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }
  const std::filesystem::path& path() const { return path_; }
  /// Names of all that is in the folder, hidden ones too, sorted.
  std::vector<std::string> names() const;

 private:
  std::filesystem::path path_;
};

/// Runs the ffmpeg program with `arguments`; false if it fails.
bool runFfmpeg(const std::string& arguments);

/// All visible sample bytes of a picture, plane after plane, without padding.
std::vector<std::uint8_t> samplesOf(const Picture& picture);

/// A buffer that owns the pixels of a view.
struct ArgbBuffer {
  ArgbBuffer(int width, int height, Depth depth);
  ArgbView view() { return {bytes.data(), rowBytes, width, height, depth}; }
  /// Component c (0 alpha, 1 red, 2 green, 3 blue) of a pixel.
  double at(int x, int y, int c) const;
  void set(int x, int y, int c, double value);

  int width;
  int height;
  Depth depth;
  std::ptrdiff_t rowBytes;
  std::vector<std::uint8_t> bytes;
};

ClipInfo format(int width, int height, const std::string& pixelFormat);

/// A picture with every sample byte random (bits above a component's depth cleared).
Picture randomPicture(const ClipInfo& format, std::int64_t index, std::mt19937& random);

/// Writes `count` random pictures and returns their samples.
std::vector<std::vector<std::uint8_t>> writeRandomClip(const std::string& path,
                                                       const ClipInfo& format, int count,
                                                       std::mt19937& random,
                                                       const WriteOptions& options = {});

/// Samples of all pictures of a clip, read in order.
std::vector<std::vector<std::uint8_t>> readAll(ClipReader& reader);

/// Reads all of `source` and writes it unchanged to `path`; returns the writer's notes.
std::vector<std::string> passThrough(const std::string& source, const std::string& path,
                                     const WriteOptions& options = {});

/// A generator whose seed is printed, so that a failure can be repeated with VARILUM_SEED.
std::mt19937 seeded();

}  // namespace media::test
