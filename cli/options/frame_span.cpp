// cli/options/frame_span.cpp — ranges of frames as users write them.
#include "cli/options/frame_span.h"

#include <charconv>
#include <limits>

#include <fmt/format.h>

#include "cli/error.h"

namespace cli {

std::optional<std::int64_t> parseFrame(const std::string& text) {
  std::int64_t value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (text.empty() || error != std::errc() || stop != end) return {};
  if (value < 0 || value > std::numeric_limits<std::int32_t>::max()) return {};
  return value;
}

std::optional<FrameSpan> parseFrameSpan(const std::string& text) {
  const auto dots = text.find("..");
  if (dots == std::string::npos) {
    const auto frame = parseFrame(text);
    if (!frame) return {};
    return FrameSpan{*frame, *frame};
  }
  FrameSpan span;
  const std::string before = text.substr(0, dots);
  const std::string after = text.substr(dots + 2);
  if (!before.empty()) {
    const auto first = parseFrame(before);
    if (!first) return {};
    span.first = *first;
  }
  if (!after.empty()) {
    span.last = parseFrame(after);
    if (!span.last || *span.last < span.first) return {};
  }
  return span;
}

std::string toText(const FrameSpan& span) {
  return span.last ? fmt::format("{}..{}", span.first, *span.last)
                   : fmt::format("{}..", span.first);
}

std::int64_t lastFrameIn(const FrameSpan& span, std::int64_t frameCount,
                         const std::string& option) {
  const std::int64_t last = span.last.value_or(frameCount - 1);
  if (span.first >= frameCount || last >= frameCount) {
    throw UsageError(fmt::format("{} {} reaches beyond the clip, whose frames are 0..{}.", option,
                                 toText(span), frameCount - 1));
  }
  return last;
}

}  // namespace cli
