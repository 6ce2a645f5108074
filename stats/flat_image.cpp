// stats/flat_image.cpp — checking and reading a saved image.
#include "stats/flat_image.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace varilum {
namespace {

constexpr std::size_t kVersionEnd = 12;
constexpr std::size_t kSmallestHeader = 104;  // holds every field that is checked

template <class Value>
Value readAt(std::span<const std::byte> bytes, std::size_t offset) noexcept {
  Value value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

// Takes parts off an image from the front. Only used once their sum is known to fit.
class PartReader {
 public:
  explicit PartReader(std::span<const std::byte> rest) : rest_(rest) {}

  std::span<const std::byte> take(std::size_t size) {
    const auto part = rest_.first(size);
    rest_ = rest_.subspan(size);
    return part;
  }

 private:
  std::span<const std::byte> rest_;
};

template <class Acceptable>
void restoreLevels(std::span<const std::byte> saved, std::span<double> levels,
                   Acceptable acceptable) noexcept {
  const std::size_t count = std::min(saved.size() / sizeof(double), levels.size());
  for (std::size_t i = 0; i < count; ++i) {
    const auto level = readAt<double>(saved, i * sizeof(double));
    levels[i] = acceptable(level) ? level : kNotAnalyzed;
  }
}

}  // namespace

std::int32_t imageVersion(std::span<const std::byte> image) noexcept {
  if (image.size() < kVersionEnd) return 0;
  return readAt<std::int32_t>(image, offsetof(SequenceState, formatVersion));
}

std::optional<FlatImage> readFlatImage(std::span<const std::byte> image) noexcept {
  if (image.size() < kSmallestHeader || imageVersion(image) != kFormatVersion) return {};
  if (readAt<std::uint8_t>(image, offsetof(SequenceState, flattened)) == 0) return {};

  // All 64-bit: the largest sum, 24 million frames and 2^31 slots, is far below 2^63.
  const auto field32 = [&](std::size_t offset) {
    return std::int64_t{readAt<std::uint32_t>(image, offset)};
  };
  const auto size = static_cast<std::int64_t>(image.size());
  std::int64_t header = field32(offsetof(SequenceState, headerSize));
  if (header == 0) header = kHeaderSize;
  if (header < std::int64_t{kSmallestHeader} || header > std::int64_t{kHeaderSize} ||
      header > size) {
    return {};
  }
  const std::int64_t frames = readAt<std::int32_t>(image, offsetof(SequenceState, frameCount));
  const std::int64_t slots = readAt<std::int32_t>(image, offsetof(SequenceState, slotCount));
  if (frames < 0 || frames > kMaxFrames || slots < 0) return {};

  const std::int64_t levelBytes = field32(offsetof(SequenceState, levelArrayBytes));
  const std::int64_t statsBytes = field32(offsetof(SequenceState, frameStatsBytes));
  const std::int64_t cacheBytes = field32(offsetof(SequenceState, histogramCacheBytes));
  if (levelBytes != frames * std::int64_t{sizeof(double)}) return {};
  if (statsBytes != 0 && statsBytes != frames * std::int64_t{kFrameStatsSize}) return {};
  if (cacheBytes != 0 && cacheBytes != slots * std::int64_t{sizeof(FrameHistogram)}) return {};
  if (header + 4 * levelBytes + statsBytes + cacheBytes > size) return {};

  FlatImage result;
  result.header = freshSequenceState();
  std::memcpy(&result.header, image.data(), static_cast<std::size_t>(header));
  result.header.statusText[sizeof result.header.statusText - 1] = 0;
  // Addresses of another time and process: nobody may follow them.
  result.header.frameStats = 0;
  result.header.histogramCache = 0;
  result.header.inputLuminance = 0;
  result.header.inputSpread = 0;
  result.header.desiredLuminance = 0;
  result.header.desiredSpread = 0;
  result.frameCount = static_cast<std::int32_t>(frames);
  result.slotCount = static_cast<std::int32_t>(slots);

  PartReader parts(image.subspan(static_cast<std::size_t>(header)));
  const auto levelSize = static_cast<std::size_t>(levelBytes);
  result.inputLuminance = parts.take(levelSize);
  result.inputSpread = parts.take(levelSize);
  result.desiredLuminance = parts.take(levelSize);
  result.desiredSpread = parts.take(levelSize);
  result.frameStats = parts.take(static_cast<std::size_t>(statsBytes));
  result.histograms = parts.take(static_cast<std::size_t>(cacheBytes));
  return result;
}

void restoreInputLevels(std::span<const std::byte> saved, std::span<double> levels) noexcept {
  restoreLevels(saved, levels, [](double level) { return std::isfinite(level); });
}

void restoreDesiredLevels(std::span<const std::byte> saved, std::span<double> levels) noexcept {
  restoreLevels(saved, levels, [](double level) { return level >= -1.0 && level <= 255.0; });
}

std::size_t flatImageSize(const SequenceState& state) noexcept {
  return kHeaderSize + 4 * std::size_t{state.levelArrayBytes} + state.frameStatsBytes +
         state.histogramCacheBytes;
}

}  // namespace varilum
