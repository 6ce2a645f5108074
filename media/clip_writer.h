// media/clip_writer.h — footage out: encodes pictures, carries everything else over, all or
// nothing.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "media/clip_info.h"
#include "media/clip_reader.h"
#include "media/error.h"
#include "media/picture.h"

namespace media {

/// Frames first..last, both included.
struct FrameRange {
  std::int64_t first = 0;
  std::int64_t last = 0;
};

struct WriteOptions {
  std::string codec{};        ///< encoder or codec name; empty: the input's codec where possible
  std::string pixelFormat{};  ///< empty: the input's, or the nearest with no fewer bits or chroma
  std::optional<double>
      quality{};         ///< the encoder's own scale (crf, qscale); unset: looks lossless
  std::string preset{};  ///< of encoders that have presets
  std::vector<std::pair<std::string, std::string>> encoderOptions{};  ///< any further key=value
  bool audio = true;                                                  ///< copy audio streams
  bool otherStreams = true;            ///< copy subtitles, data and cover art
  bool overwrite = false;              ///< replace an existing output when the new one is whole
  std::optional<FrameRange> frames{};  ///< only these are written: sound is cut to fit
  std::optional<int> startNumber{};  ///< first number of an image sequence; else the input's, or 1
  int threads = 0;                   ///< encoder threads; 0: the encoder's choice
};

/// One output being made. The container follows the extension of `path`; "out.%05d.png" (png, tif,
/// tiff, dpx, exr, jpg) writes numbered pictures; "null:" takes pictures and writes nothing.
///
/// Nothing stands under the final name until finish() has succeeded; a writer destroyed before that
/// removes all that it made. Not thread-safe; other threads may use the reader meanwhile.
class ClipWriter {
 public:
  /// Like `source`: its codec, colour, rotation, metadata, chapters and other streams. Reads the
  /// source's file through a handle of its own; `source` itself is only asked, not moved.
  /// Throws Error: exists, unwritable, unsupported, badOption, before anything is written.
  ClipWriter(const std::string& path, const ClipReader& source, WriteOptions options = {});

  /// A clip without a source. Of `format` are used: size, pixelFormat, colour names, sample aspect
  /// ratio, rotation, timeBase, frameRate, codec (may be empty).
  ClipWriter(const std::string& path, const ClipInfo& format, WriteOptions options = {});

  ~ClipWriter();
  ClipWriter(ClipWriter&&) noexcept;
  ClipWriter& operator=(ClipWriter&&) noexcept;

  /// Encodes the next picture; pts must rise from call to call. Its pixel format may differ from
  /// the encoder's and is then converted. Throws Error: diskFull, writeFailed.
  void write(const Picture& picture);

  /// Completes the file and gives it its final name. Call once. Throws as write() does; then
  /// nothing is left over.
  void finish();

  /// Plain sentences about what differs from the input (codec, pixel format, streams left out).
  const std::vector<std::string>& notes() const noexcept;

  std::string encoderName() const;  ///< such as "libx264"; "null" for no output
  std::string pixelFormat() const;  ///< as encoded
  std::int64_t framesWritten() const noexcept;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace media
