// cli/options/frame_span.h — ranges of frames as users write them: 10..20, 10.., ..20, 10.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace cli {

/// Frames first..last, both included, counted from 0; no last = to the end of the clip.
struct FrameSpan {
  std::int64_t first = 0;
  std::optional<std::int64_t> last;

  friend bool operator==(const FrameSpan&, const FrameSpan&) = default;
};

/// A frame number, 0 to 2147483647. Nothing when the text is anything else.
std::optional<std::int64_t> parseFrame(const std::string& text);

/// Nothing when the text is no range or runs backwards. ".." alone is every frame.
std::optional<FrameSpan> parseFrameSpan(const std::string& text);

std::string toText(const FrameSpan& span);

/// The last frame of the span in a clip of frameCount frames. Throws UsageError, naming the option,
/// when the span reaches beyond the clip.
std::int64_t lastFrameIn(const FrameSpan& span, std::int64_t frameCount, const std::string& option);

}  // namespace cli
