// media/frame_index.cpp — which frames a clip has, when they are shown and from where to decode.
#include "media/frame_index.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "media/video_decoder.h"

namespace media {
namespace {

// Codecs with packets that show nothing, whose frames are only known after decoding.
bool hidesFrames(AVCodecID codec) noexcept {
  return codec == AV_CODEC_ID_VP8;
}

constexpr Rational kUsualRates[] = {
    {24000, 1001}, {24, 1}, {25, 1}, {30000, 1001}, {30, 1},  {48, 1}, {50, 1}, {60000, 1001},
    {60, 1},       {12, 1}, {15, 1}, {120, 1},      {100, 1}, {10, 1}, {18, 1}, {16, 1}};

std::int64_t orElse(std::int64_t timestamp, std::int64_t other) noexcept {
  return timestamp == AV_NOPTS_VALUE ? other : timestamp;
}

}  // namespace

FrameIndex FrameIndex::build(InputFile& input, const ReadOptions& options) {
  FrameIndex index;
  bool decode = hidesFrames(input.stream().codecpar->codec_id);
  if (!decode) {
    index.takePackets(input);
    std::ranges::stable_sort(index.entries_, {}, &Entry::pts);
    const auto twin = std::ranges::adjacent_find(index.entries_, {}, &Entry::pts);
    decode = !index.timed_ || twin != index.entries_.end();
    input.reopen();
  }
  if (decode) {
    index = FrameIndex();
    index.takeFrames(input, options);
    input.reopen();
  }
  index.finish(input.stream(), options);
  return index;
}

void FrameIndex::takePackets(InputFile& input) {
  const PacketHandle packet = makePacket();
  for (std::int64_t order = 0; input.read(*packet); ++order) {
    packets_ = order + 1;
    if (packet->pts == AV_NOPTS_VALUE) {
      timed_ = false;
      return;
    }
    const bool key = (packet->flags & AV_PKT_FLAG_KEY) != 0;
    if (key) keys_.push_back({packet->pts, orElse(packet->dts, packet->pts), order});
    const bool shown = (packet->flags & AV_PKT_FLAG_DISCARD) == 0;
    if (shown && !keys_.empty()) entries_.push_back({packet->pts, packet->duration, order});
  }
  // Frames shown before the first key frame refer to what is not there.
  if (!keys_.empty() && keys_.front().order > 0) {
    const std::int64_t first = keys_.front().pts;
    std::erase_if(entries_, [first](const Entry& entry) { return entry.pts < first; });
  }
}

void FrameIndex::takeFrames(InputFile& input, const ReadOptions& options) {
  VideoDecoder decoder(input, options.threads);
  while (const FrameHandle frame = decoder.next()) {
    const std::int64_t order = size();
    if (frame->pts == AV_NOPTS_VALUE || (order > 0 && frame->pts <= entries_.back().pts)) {
      timed_ = false;
    }
    if (frame->key_frame != 0 && frame->pts != AV_NOPTS_VALUE) {
      keys_.push_back({frame->pts, orElse(frame->pkt_dts, frame->pts), order});
    }
    entries_.push_back({frame->pts, frame->pkt_duration, order});
  }
}

// Gives every frame a time after the one before, and a duration that reaches the next.
void FrameIndex::finish(const AVStream& stream, const ReadOptions& options) {
  if (entries_.empty()) return;
  entries_.shrink_to_fit();
  keys_.shrink_to_fit();
  if (!timed_) {
    keys_.clear();
    AVRational rate = av_guess_frame_rate(nullptr, const_cast<AVStream*>(&stream), nullptr);
    if (options.frameRate) rate = {options.frameRate->num, options.frameRate->den};
    if (rate.num <= 0 || rate.den <= 0 || av_q2d(rate) > 1000) rate = {24, 1};
    const bool anyMissing = std::ranges::any_of(
        entries_, [](const Entry& entry) { return entry.pts == AV_NOPTS_VALUE; });
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      const std::int64_t regular =
          av_rescale_q(static_cast<std::int64_t>(i), av_inv_q(rate), stream.time_base);
      if (anyMissing || options.frameRate) entries_[i].pts = regular;
      if (i > 0) entries_[i].pts = std::max(entries_[i].pts, entries_[i - 1].pts + 1);
    }
  }
  std::vector<std::int64_t> steps;
  for (std::size_t i = 0; i + 1 < entries_.size(); ++i) {
    entries_[i].duration = entries_[i + 1].pts - entries_[i].pts;
    steps.push_back(entries_[i].duration);
  }
  Entry& last = entries_.back();
  if (last.duration <= 0 && !steps.empty()) {
    const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
    std::nth_element(steps.begin(), middle, steps.end());
    last.duration = *middle;
  }
  if (last.duration <= 0) {
    const Rational rate = frameRate(stream);
    last.duration = av_rescale_q(1, {rate.den, rate.num}, stream.time_base);
  }
  last.duration = std::max<std::int64_t>(1, last.duration);
}

std::optional<std::int64_t> FrameIndex::indexAt(std::int64_t pts) const noexcept {
  const auto after = std::ranges::upper_bound(entries_, pts, {}, &Entry::pts);
  if (after == entries_.begin()) return std::nullopt;
  return after - entries_.begin() - 1;
}

std::int64_t FrameIndex::keyFor(std::int64_t index) const noexcept {
  const Entry& entry = at(index);
  // Keys are in decoding order, and what is shown no later was decoded no later among keys.
  auto candidate = std::ranges::upper_bound(keys_, entry.order, {}, &KeyFrame::order);
  while (candidate != keys_.begin()) {
    --candidate;
    if (candidate->pts <= entry.pts) return candidate - keys_.begin();
  }
  return -1;
}

void FrameIndex::dropBefore(std::int64_t index) {
  entries_.erase(entries_.begin(), entries_.begin() + index);
}

void FrameIndex::truncate(std::int64_t size) {
  entries_.resize(static_cast<std::size_t>(size));
}

Rational FrameIndex::frameRate(const AVStream& stream) const {
  const auto sane = [](AVRational rate) {
    return rate.num > 0 && rate.den > 0 && av_q2d(rate) >= 0.01 && av_q2d(rate) <= 1000;
  };
  const AVRational declared[] = {stream.r_frame_rate, stream.avg_frame_rate};
  if (size() < 2) {
    for (const AVRational rate : {stream.avg_frame_rate, stream.r_frame_rate}) {
      if (sane(rate)) return {rate.num, rate.den};
    }
    return {24, 1};
  }
  const std::int64_t span = entries_.back().pts - entries_.front().pts;
  const double measured =
      static_cast<double>(size() - 1) / (static_cast<double>(span) * av_q2d(stream.time_base));
  // A tick at either end, and a little for rates that a coarse time base cannot hold.
  const double tolerance = std::min(0.05, 1e-4 + 1.0 / static_cast<double>(span));
  const auto agrees = [&](double rate) { return std::abs(rate / measured - 1) <= tolerance; };
  for (const AVRational rate : declared) {
    if (sane(rate) && agrees(av_q2d(rate))) return {rate.num, rate.den};
  }
  for (const Rational& rate : kUsualRates) {
    if (agrees(rate.value())) return rate;
  }
  int num = 0;
  int den = 1;
  av_reduce(&num, &den, (size() - 1) * stream.time_base.den, span * stream.time_base.num, 1000000);
  return num > 0 && den > 0 ? Rational{num, den} : Rational{24, 1};
}

bool FrameIndex::variableRate() const noexcept {
  if (size() < 3) return false;
  const double first = static_cast<double>(entries_.front().pts);
  const double step =
      (static_cast<double>(entries_.back().pts) - first) / static_cast<double>(size() - 1);
  const double tolerance = std::max(1.01, 0.1 * step);
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const double regular = first + step * static_cast<double>(i);
    if (std::abs(static_cast<double>(entries_[i].pts) - regular) > tolerance) return true;
  }
  return false;
}

std::int64_t FrameIndex::endPts() const noexcept {
  return entries_.empty() ? 0 : entries_.back().pts + entries_.back().duration;
}

std::int64_t FrameIndex::missingFrames(const AVFormatContext& context,
                                       const AVStream& stream) const {
  if (size() == 0) return 0;
  if (stream.nb_frames > 0) {
    return packets_ > 0 ? std::max<std::int64_t>(0, stream.nb_frames - packets_) : 0;
  }
  // Without a count only the promised duration tells, if no longer sound explains it.
  const AVDictionaryEntry* tag = av_dict_get(stream.metadata, "DURATION", nullptr, 0);
  double promised = 0;
  int hours = 0;
  int minutes = 0;
  double seconds = 0;
  if (tag != nullptr && std::sscanf(tag->value, "%d:%d:%lf", &hours, &minutes, &seconds) == 3) {
    promised = hours * 3600.0 + minutes * 60.0 + seconds;
  } else if (context.nb_streams == 1 && context.duration > 0 &&
             context.duration_estimation_method == AVFMT_DURATION_FROM_STREAM) {
    promised = static_cast<double>(context.duration) / AV_TIME_BASE;
  }
  const double end = static_cast<double>(endPts()) * av_q2d(stream.time_base);
  const double missing = (promised - end) * frameRate(stream).value();
  return missing < 1.5 ? 0 : std::llround(missing);
}

}  // namespace media
