// media/stream_copy.cpp — a source's other streams, carried packet by packet into an output.
#include "media/stream_copy.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>

#include "media/error.h"

namespace media {
namespace {

constexpr std::array<std::string_view, 12> kFileMetadata = {"major_brand",
                                                            "minor_version",
                                                            "compatible_brands",
                                                            "encoder",
                                                            "rotate",
                                                            "DURATION",
                                                            "vendor_id",
                                                            "BPS",
                                                            "NUMBER_OF_FRAMES",
                                                            "NUMBER_OF_BYTES",
                                                            "_STATISTICS_WRITING_APP",
                                                            "_STATISTICS_TAGS"};

constexpr std::array kPictureSideData = {
    AV_PKT_DATA_DISPLAYMATRIX, AV_PKT_DATA_MASTERING_DISPLAY_METADATA,
    AV_PKT_DATA_CONTENT_LIGHT_LEVEL, AV_PKT_DATA_STEREO3D, AV_PKT_DATA_SPHERICAL};

std::string describe(const AVStream& stream) {
  const char* kind = av_get_media_type_string(stream.codecpar->codec_type);
  return std::string(kind == nullptr ? "data" : kind) + " stream " + std::to_string(stream.index) +
         " (" + avcodec_get_name(stream.codecpar->codec_id) + ")";
}

constexpr AVRational kMicroseconds{1, 1000000};

}  // namespace

void copyMetadata(const AVDictionary* from, AVDictionary** to) {
  const AVDictionaryEntry* entry = nullptr;
  while ((entry = av_dict_get(from, "", entry, AV_DICT_IGNORE_SUFFIX)) != nullptr) {
    const std::string_view key(entry->key);
    const bool ofFile = std::ranges::any_of(kFileMetadata, [key](std::string_view name) {
      return key == name || (key.starts_with(name) && key[name.size()] == '-');
    });
    if (ofFile) continue;
    if (av_dict_set(to, entry->key, entry->value, 0) < 0) throw std::bad_alloc();
  }
}

void copyPictureSideData(const AVStream& from, AVStream& to) {
  for (const AVPacketSideDataType type : kPictureSideData) {
    std::size_t size = 0;
    const std::uint8_t* data = av_stream_get_side_data(&from, type, &size);
    if (data == nullptr) continue;
    std::uint8_t* copy = orBadAlloc(av_stream_new_side_data(&to, type, size));
    std::memcpy(copy, data, size);
  }
}

void copyChapters(const AVFormatContext& from, AVFormatContext& to,
                  const std::optional<StreamCopy::Span>& span, std::int64_t shift) {
  if (from.nb_chapters == 0) return;
  to.chapters =
      static_cast<AVChapter**>(orBadAlloc(av_calloc(from.nb_chapters, sizeof(AVChapter*))));
  for (unsigned i = 0; i < from.nb_chapters; ++i) {
    const AVChapter& source = *from.chapters[i];
    std::int64_t start = av_rescale_q(source.start, source.time_base, kMicroseconds);
    std::int64_t end = av_rescale_q(source.end, source.time_base, kMicroseconds);
    if (span) {
      const auto first = static_cast<std::int64_t>(std::llround(span->from * 1e6));
      const auto last = static_cast<std::int64_t>(std::llround(span->to * 1e6));
      if (end <= first || start >= last) continue;
      start = std::max(start, first);
      end = std::min(end, last);
    }
    auto* chapter = static_cast<AVChapter*>(orBadAlloc(av_mallocz(sizeof(AVChapter))));
    to.chapters[to.nb_chapters++] = chapter;
    chapter->id = source.id;
    chapter->time_base = kMicroseconds;
    chapter->start = start - shift;
    chapter->end = end - shift;
    copyMetadata(source.metadata, &chapter->metadata);
  }
}

StreamCopy::StreamCopy(const std::string& path, const WriteOptions& options) : options_(options) {
  AVFormatContext* raw = nullptr;
  int code = avformat_open_input(&raw, path.c_str(), nullptr, nullptr);
  if (code >= 0) {
    context_.reset(raw);
    code = avformat_find_stream_info(raw, nullptr);
  }
  const int best =
      code < 0 ? code : av_find_best_stream(raw, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  if (best < 0) {
    throw Error(code == AVERROR(ENOENT) ? Problem::missing : Problem::notVideo,
                path + " cannot be opened again: " + errorText(best) + ".");
  }
  video_ = static_cast<unsigned>(best);
}

bool StreamCopy::carry(const AVStream& stream, const AVFormatContext& output,
                       std::vector<std::string>& notes) const {
  const AVCodecParameters& parameters = *stream.codecpar;
  const bool audio = parameters.codec_type == AVMEDIA_TYPE_AUDIO;
  if (audio ? !options_.audio : !options_.otherStreams) return false;
  // Chapter titles and time codes come as tracks of their own, which the container remakes.
  if (parameters.codec_type == AVMEDIA_TYPE_DATA) {
    const bool remade = context_->nb_chapters > 0 ||
                        av_dict_get(stream.metadata, "timecode", nullptr, 0) != nullptr;
    if (remade) return false;
  }
  const AVOutputFormat& format = *output.oformat;
  const bool attachment = parameters.codec_type == AVMEDIA_TYPE_ATTACHMENT;
  const bool known =
      parameters.codec_id != AV_CODEC_ID_NONE || (attachment && parameters.extradata_size > 0);
  const bool fits = attachment ? std::string_view(format.name) == "matroska"
                               : known && avformat_query_codec(&format, parameters.codec_id,
                                                               FF_COMPLIANCE_NORMAL) == 1;
  const bool single = (format.flags & AVFMT_NOTIMESTAMPS) != 0 && format.codec_tag == nullptr;
  if (fits && !single) return true;
  notes.push_back("The " + describe(stream) + " is left out: " + format.name +
                  " files cannot carry it.");
  return false;
}

void StreamCopy::addStreams(AVFormatContext& output, std::vector<std::string>& notes) {
  target_.assign(context_->nb_streams, -1);
  for (unsigned i = 0; i < context_->nb_streams; ++i) {
    AVStream& source = *context_->streams[i];
    source.discard = AVDISCARD_ALL;
    if (i == video_ || !carry(source, output, notes)) continue;
    source.discard = AVDISCARD_DEFAULT;
    AVStream* copy = orBadAlloc(avformat_new_stream(&output, nullptr));
    if (avcodec_parameters_copy(copy->codecpar, source.codecpar) < 0) throw std::bad_alloc();
    const AVCodecTag* const* tags = output.oformat->codec_tag;
    unsigned tag = 0;
    const bool tagFits =
        tags == nullptr ||
        av_codec_get_id(tags, source.codecpar->codec_tag) == source.codecpar->codec_id ||
        av_codec_get_tag2(tags, source.codecpar->codec_id, &tag) == 0;
    if (!tagFits) copy->codecpar->codec_tag = 0;
    copy->time_base = source.time_base;
    copy->disposition = source.disposition;
    copy->sample_aspect_ratio = source.sample_aspect_ratio;
    copy->avg_frame_rate = source.avg_frame_rate;
    copyMetadata(source.metadata, &copy->metadata);
    for (int j = 0; j < source.nb_side_data; ++j) {
      const AVPacketSideData& side = source.side_data[j];
      std::memcpy(orBadAlloc(av_stream_new_side_data(copy, side.type, side.size)), side.data,
                  side.size);
    }
    target_[i] = copy->index;
    anything_ = true;
  }
  ended_ = !anything_;
}

bool StreamCopy::readNext() {
  while (!ended_) {
    av_packet_unref(held_.get());
    const int code = av_read_frame(context_.get(), held_.get());
    if (code == AVERROR(EAGAIN)) continue;
    if (code < 0) {
      ended_ = true;
      return false;
    }
    const auto stream = static_cast<std::size_t>(held_->stream_index);
    if (stream >= target_.size() || target_[stream] < 0) continue;
    return true;
  }
  return false;
}

void StreamCopy::pump(AVFormatContext& output, double seconds,
                      const std::function<void(AVPacket&)>& sink) {
  for (;;) {
    if (!holding_) holding_ = readNext();
    if (!holding_) return;
    const AVStream& source = *context_->streams[held_->stream_index];
    const std::int64_t due = held_->dts != AV_NOPTS_VALUE ? held_->dts : held_->pts;
    const double dueSeconds = due == AV_NOPTS_VALUE
                                  ? -std::numeric_limits<double>::infinity()
                                  : static_cast<double>(due) * av_q2d(source.time_base);
    if (dueSeconds > seconds) return;
    holding_ = false;
    if (span_ && due != AV_NOPTS_VALUE && (source.disposition & AV_DISPOSITION_ATTACHED_PIC) == 0) {
      if (dueSeconds < span_->from || dueSeconds >= span_->to) continue;
    }
    AVStream& target = *output.streams[target_[static_cast<std::size_t>(held_->stream_index)]];
    const std::int64_t offset = av_rescale_q(shift_, kMicroseconds, source.time_base);
    if (held_->pts != AV_NOPTS_VALUE) held_->pts -= offset;
    if (held_->dts != AV_NOPTS_VALUE) held_->dts -= offset;
    av_packet_rescale_ts(held_.get(), source.time_base, target.time_base);
    held_->stream_index = target.index;
    held_->pos = -1;
    sink(*held_);
  }
}

}  // namespace media
