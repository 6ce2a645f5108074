// cli/demo/demo_clip.cpp — the demo's clip: the scene with known exposure faults, written and
// measured.
#include "cli/demo/demo_clip.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "cli/demo/demo_flicker.h"
#include "cli/job/frame_level.h"
#include "media/clip_reader.h"
#include "media/clip_writer.h"
#include "media/pixel_conversion.h"

namespace cli {
namespace {

constexpr int kStripRows = 30;
constexpr int kPictureErrorEvery = 10;
// Of the H.264 encoder: low enough that its own loss is below the grain.
constexpr double kQuality = 12.0;

double luminance(const SceneColour& colour) {
  return 0.3 * static_cast<double>(colour[0]) + 0.59 * static_cast<double>(colour[1]) +
         0.11 * static_cast<double>(colour[2]);
}

/// One frame of the scene in memory, drawn strip by strip on all threads.
class SceneFrame {
 public:
  explicit SceneFrame(const DemoScene& scene)
      : scene_(scene),
        pixels_(static_cast<std::size_t>(scene.width()) *
                static_cast<std::size_t>(scene.height())) {}

  void draw(int frame, WorkerPool& pool) {
    const int strips = (scene_.height() + kStripRows - 1) / kStripRows;
    pool.run(strips, [&](int strip) {
      const int first = strip * kStripRows;
      const int last = std::min(first + kStripRows, scene_.height());
      const auto width = static_cast<std::size_t>(scene_.width());
      scene_.draw(frame, first, last,
                  std::span(pixels_).subspan(static_cast<std::size_t>(first) * width,
                                             static_cast<std::size_t>(last - first) * width));
    });
  }

  std::span<const SceneColour> pixels() const { return pixels_; }

  double level() const {
    double sum = 0.0;
    for (const SceneColour& colour : pixels_) sum += luminance(colour);
    return sum / static_cast<double>(pixels_.size());
  }

 private:
  const DemoScene& scene_;
  std::vector<SceneColour> pixels_;
};

/// Four bytes a pixel: alpha, red, green, blue.
class ArgbFrame {
 public:
  ArgbFrame(int width, int height)
      : width_(width),
        height_(height),
        bytes_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4) {}

  media::ArgbView view() {
    return {bytes_.data(), std::ptrdiff_t{4} * width_, width_, height_, media::Depth::eight};
  }
  std::span<std::uint8_t> bytes() { return bytes_; }

 private:
  int width_;
  int height_;
  std::vector<std::uint8_t> bytes_;
};

/// Exposes the scene: rounds and clips as a camera does.
void expose(std::span<const SceneColour> scene, double gain, std::span<std::uint8_t> argb) {
  const auto factor = static_cast<float>(gain);
  for (std::size_t i = 0; i < scene.size(); ++i) {
    argb[i * 4] = 255;
    for (std::size_t c = 0; c < 3; ++c) {
      const float level = std::clamp(scene[i][c] * factor + 0.5F, 0.0F, 255.0F);
      argb[i * 4 + 1 + c] = static_cast<std::uint8_t>(level);
    }
  }
}

double pictureError(std::span<const SceneColour> scene, double scale,
                    std::span<const std::uint8_t> argb) {
  const auto factor = static_cast<float>(scale);
  double sum = 0.0;
  for (std::size_t i = 0; i < scene.size(); ++i) {
    for (std::size_t c = 0; c < 3; ++c) {
      sum += std::abs(static_cast<float>(argb[i * 4 + 1 + c]) * factor - scene[i][c]);
    }
  }
  return sum / static_cast<double>(scene.size() * 3);
}

media::ClipInfo formatOf(const DemoScene& scene) {
  media::ClipInfo format;
  format.codec = "h264";
  format.width = scene.width();
  format.height = scene.height();
  format.pixelFormat = "yuv420p";
  format.colourRange = "tv";
  format.colourMatrix = "bt709";
  format.colourPrimaries = "bt709";
  format.colourTransfer = "bt709";
  format.timeBase = {1, kDemoFrameRate};
  format.frameRate = {kDemoFrameRate, 1};
  format.frameCount = scene.frames();
  return format;
}

media::ParallelFor rowsOn(WorkerPool& pool) {
  return [&pool](int jobs, const std::function<void(int)>& job) { pool.run(jobs, job); };
}

}  // namespace

std::vector<double> writeDemoClip(const std::filesystem::path& path, bool force,
                                  const DemoScene& scene, std::span<const double> gains,
                                  WorkerPool& pool, const FrameDone& done) {
  const media::ClipInfo format = formatOf(scene);
  media::WriteOptions options;
  options.quality = kQuality;
  options.preset = "veryfast";
  options.overwrite = force;
  media::ClipWriter writer(path.string(), format, options);
  SceneFrame clean(scene);
  ArgbFrame exposed(scene.width(), scene.height());
  std::vector<double> levels;
  for (int frame = 0; frame < scene.frames(); ++frame) {
    clean.draw(frame, pool);
    levels.push_back(clean.level());
    expose(clean.pixels(), gains[static_cast<std::size_t>(frame)], exposed.bytes());
    writer.write(
        media::fromArgb(exposed.view(), media::Picture::blank(format, frame), rowsOn(pool)));
    done(frame + 1);
  }
  writer.finish();
  return levels;
}

ClipMeasures measureDemoClip(const std::filesystem::path& path, const DemoScene& scene,
                             WorkerPool& pool, const FrameDone& done) {
  media::ClipReader reader(path.string());
  ArgbFrame decoded(scene.width(), scene.height());
  SceneFrame clean(scene);
  ClipMeasures measures;
  double errors = 0.0;
  int compared = 0;
  while (const auto picture = reader.next()) {
    const auto frame = static_cast<int>(measures.levels.size());
    media::toArgb(*picture, decoded.view(), rowsOn(pool));
    measures.levels.push_back(frameLevel(decoded.view(), {}));
    if (frame % kPictureErrorEvery == 0 && measures.levels.back() > 0.0) {
      clean.draw(frame, pool);
      errors +=
          pictureError(clean.pixels(), clean.level() / measures.levels.back(), decoded.bytes());
      ++compared;
    }
    done(frame + 1);
  }
  if (compared > 0) measures.pictureError = errors / compared;
  return measures;
}

}  // namespace cli
