// cli/reporting/report_stills.cpp — pictures for a report, taken on their way to the encoder.
#include "cli/reporting/report_stills.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "media/jpeg_still.h"

namespace cli {
namespace {

constexpr std::int64_t kThumbnails = 48;
constexpr int kThumbnailWidth = 160;
constexpr int kThumbnailHeight = 54;
constexpr std::size_t kComparisons = 6;
// Frames compared stand at least this part of the clip apart.
constexpr std::int64_t kApart = 32;

double correction(const Levels& levels, std::int64_t frame) {
  return std::abs(std::log(std::max(levels.gain(static_cast<std::size_t>(frame)), 1e-6)));
}

}  // namespace

ReportStills::ReportStills(const ReportOptions& options, Workbench& bench, media::FrameRange frames)
    : rotation_(bench.source().clip().rotationDegrees) {
  if (options.page.empty()) return;
  const Levels levels = bench.levels();
  const std::int64_t count = frames.last - frames.first + 1;
  const std::int64_t pictures = std::min(count, kThumbnails);
  for (std::int64_t i = 0; i < pictures; ++i) {
    const std::int64_t frame = frames.first + (2 * i + 1) * count / (2 * pictures);
    thumbnails_[frame].frame = frame;
  }
  for (const std::int64_t frame : options.frames) {
    if (frame >= frames.first && frame <= frames.last) comparisons_.try_emplace(frame);
  }
  if (options.frames.empty()) chooseMostCorrected(levels, frames);
  for (auto& [frame, comparison] : comparisons_) comparison.frame = frame;
}

void ReportStills::chooseMostCorrected(const Levels& levels, media::FrameRange frames) {
  std::vector<std::int64_t> order(static_cast<std::size_t>(frames.last - frames.first + 1));
  std::iota(order.begin(), order.end(), frames.first);
  std::stable_sort(order.begin(), order.end(), [&](std::int64_t a, std::int64_t b) {
    return correction(levels, a) > correction(levels, b);
  });
  const std::int64_t apart = std::max<std::int64_t>(1, std::ssize(order) / kApart);
  for (const std::int64_t frame : order) {
    if (comparisons_.size() == kComparisons) break;
    const auto next = comparisons_.lower_bound(frame);
    if (next != comparisons_.end() && next->first - frame < apart) continue;
    if (next != comparisons_.begin() && frame - std::prev(next)->first < apart) continue;
    comparisons_.try_emplace(frame);
  }
}

void ReportStills::take(const RenderedFrame& frame) {
  if (const auto found = thumbnails_.find(frame.frame); found != thumbnails_.end()) {
    found->second.jpeg =
        media::jpegStill(frame.original, rotation_, kThumbnailWidth, kThumbnailHeight);
  }
  if (const auto found = comparisons_.find(frame.frame); found != comparisons_.end()) {
    found->second.why =
        frame.untouched || frame.inputLevel <= 0.0
            ? "left as it was"
            : fmt::format("its brightness times {:.3f}", frame.outputLevel / frame.inputLevel);
    found->second.jpegBefore = media::jpegStill(frame.original, rotation_);
    found->second.jpegAfter = media::jpegStill(frame.picture, rotation_);
  }
}

// Frames that never came, as the clip broke off, are left out.
std::vector<report::Thumbnail> ReportStills::thumbnails() const {
  std::vector<report::Thumbnail> taken;
  for (const auto& [frame, picture] : thumbnails_) {
    if (!picture.jpeg.empty()) taken.push_back(picture);
  }
  return taken;
}

std::vector<report::Comparison> ReportStills::comparisons() const {
  std::vector<report::Comparison> taken;
  for (const auto& [frame, pair] : comparisons_) {
    if (!pair.jpegBefore.empty()) taken.push_back(pair);
  }
  return taken;
}

}  // namespace cli
