// media/container_output.cpp — a clip written into one container file.
#include "media/container_output.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <string_view>

#include "media/error.h"
#include "media/log_capture.h"
#include "media/stream_info.h"

extern "C" {
#include <libavutil/display.h>
#include <libavutil/pixdesc.h>
}

namespace media {
namespace {

constexpr int kBufferBytes = 1 << 18;

int writeBytes(void* opaque, std::uint8_t* data, int size) {
  auto* file = static_cast<PendingFile*>(opaque);
  return file->write(data, static_cast<std::size_t>(size)) ? size : AVERROR(file->errorCode());
}

std::int64_t seekBytes(void* opaque, std::int64_t offset, int whence) {
  auto* file = static_cast<PendingFile*>(opaque);
  if ((whence & AVSEEK_SIZE) != 0) return file->size();
  const std::int64_t position = file->seek(offset, whence & ~AVSEEK_FORCE);
  return position < 0 ? AVERROR(file->errorCode()) : position;
}

bool isMovLike(const AVOutputFormat& format) noexcept {
  const std::string_view name(format.name);
  return name == "mov" || name == "mp4" || name == "ipod" || name == "3gp" || name == "psp";
}

const AVOutputFormat& containerFor(const std::string& path) {
  const AVOutputFormat* format = av_guess_format(nullptr, path.c_str(), nullptr);
  if (format == nullptr || (format->flags & AVFMT_NOFILE) != 0 ||
      format->video_codec == AV_CODEC_ID_NONE) {
    throw Error(Problem::unsupported,
                "The extension of " + path + " names no video format; mp4, mov, mkv and avi do.");
  }
  return *format;
}

}  // namespace

void ContainerOutput::BufferDeleter::operator()(AVIOContext* stream) const noexcept {
  av_freep(&stream->buffer);
  avio_context_free(&stream);
}

ContainerOutput::ContainerOutput(const std::string& path, const ClipInfo& format, bool fromSource,
                                 std::optional<TickRange> range, const WriteOptions& options)
    : file_((containerFor(path), path), options.overwrite),
      sourceTimeBase_{format.timeBase.num, format.timeBase.den},
      range_(range) {
  file_.removeRemains();
  AVFormatContext* raw = nullptr;
  const int code =
      avformat_alloc_output_context2(&raw, &containerFor(path), nullptr, file_.temporary().c_str());
  if (code < 0) throw std::bad_alloc();
  output_.reset(raw);
  if (fromSource) source_.emplace(format.path, options);
  openStream();
  openEncoder(format, options);
  describe(format);
  if (source_) source_->addStreams(*output_, notes_);
  begin();
}

ContainerOutput::~ContainerOutput() = default;

std::string ContainerOutput::pixelFormat() const {
  return pixelFormatName(encoder_->context().pix_fmt);
}

void ContainerOutput::openStream() {
  auto* buffer = static_cast<std::uint8_t*>(orBadAlloc(av_malloc(kBufferBytes)));
  AVIOContext* raw =
      avio_alloc_context(buffer, kBufferBytes, 1, &file_, nullptr, writeBytes, seekBytes);
  if (raw == nullptr) {
    av_free(buffer);
    throw std::bad_alloc();
  }
  stream_.reset(raw);
  output_->pb = raw;
  output_->flags |= AVFMT_FLAG_CUSTOM_IO;
}

void ContainerOutput::openEncoder(const ClipInfo& format, const WriteOptions& options) {
  EncoderInput input;
  input.pixelFormat = av_get_pix_fmt(format.pixelFormat.c_str());
  input.range = av_color_range_from_name(format.colourRange.c_str()) == AVCOL_RANGE_JPEG
                    ? AVCOL_RANGE_JPEG
                    : AVCOL_RANGE_UNSPECIFIED;
  AVFieldOrder fieldOrder = AV_FIELD_UNKNOWN;
  std::uint32_t tag = 0;
  if (source_) {
    const AVCodecParameters& parameters = *source_->video().codecpar;
    input.codec = parameters.codec_id;
    input.profile = parameters.profile;
    fieldOrder = parameters.field_order;
  } else if (!format.codec.empty()) {
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get_by_name(format.codec.c_str());
    if (descriptor != nullptr) input.codec = descriptor->id;
  }
  const EncoderPlan plan = planEncoder(input, *output_->oformat, options);
  notes_ = plan.notes;
  if (plan.encoder->id == AV_CODEC_ID_HEVC && isMovLike(*output_->oformat)) {
    tag = MKTAG('h', 'v', 'c', '1');  // what most players of such files look for
  }
  encoder_.emplace(plan, format, (output_->oformat->flags & AVFMT_GLOBALHEADER) != 0, fieldOrder,
                   tag, options.threads);
  notes_.insert(notes_.end(), encoder_->notes().begin(), encoder_->notes().end());
}

void ContainerOutput::describe(const ClipInfo& format) {
  video_ = orBadAlloc(avformat_new_stream(output_.get(), nullptr));
  if (avcodec_parameters_from_context(video_->codecpar, &encoder_->context()) < 0) {
    throw std::bad_alloc();
  }
  video_->time_base = encoder_->timeBase();
  video_->avg_frame_rate = {format.frameRate.num, format.frameRate.den};
  video_->r_frame_rate = video_->avg_frame_rate;
  video_->sample_aspect_ratio = encoder_->context().sample_aspect_ratio;
  if (source_) {
    copyMetadata(source_->context().metadata, &output_->metadata);
    copyMetadata(source_->video().metadata, &video_->metadata);
    copyPictureSideData(source_->video(), *video_);
    video_->disposition = source_->video().disposition;
  } else if (format.rotationDegrees != 0) {
    const std::size_t bytes = 9 * sizeof(std::int32_t);
    auto* matrix = reinterpret_cast<std::int32_t*>(
        orBadAlloc(av_stream_new_side_data(video_, AV_PKT_DATA_DISPLAYMATRIX, bytes)));
    av_display_rotation_set(matrix, -format.rotationDegrees);
  }
  if (format.rotationDegrees != 0 && !isMovLike(*output_->oformat)) {
    notes_.push_back("The rotation of " + std::to_string(format.rotationDegrees) +
                     " degrees is left out: " + output_->oformat->name +
                     " files cannot carry it here.");
  }
}

// Times stay as they are, but for parts of a clip and for broadcast streams, whose clocks start
// anywhere: these start at 0.
void ContainerOutput::begin() {
  std::optional<StreamCopy::Span> span;
  if (source_) {
    const AVFormatContext& context = source_->context();
    if ((context.iformat->flags & AVFMT_TS_DISCONT) != 0 && context.start_time != AV_NOPTS_VALUE) {
      shiftMicroseconds_ = context.start_time;
    }
    if (range_) {
      const double tick = av_q2d(sourceTimeBase_);
      span = StreamCopy::Span{static_cast<double>(range_->from) * tick,
                              static_cast<double>(range_->to) * tick};
      shiftMicroseconds_ = av_rescale_q(range_->from, sourceTimeBase_, {1, 1000000});
      source_->limit(*span);
    }
    source_->shift(shiftMicroseconds_);
    copyChapters(context, *output_, span, shiftMicroseconds_);
  }
  shiftTicks_ = av_rescale_q(shiftMicroseconds_, {1, 1000000}, encoder_->timeBase());
  if (range_) shiftTicks_ = av_rescale_q(range_->from, sourceTimeBase_, encoder_->timeBase());
  packetSink_ = [this](AVPacket& packet) {
    require(av_interleaved_write_frame(output_.get(), &packet));
  };
  takeLibraryMessage();
  const int code = avformat_write_header(output_.get(), nullptr);
  checkDisk();
  if (code < 0) {
    const std::string message = takeLibraryMessage();
    throw Error(Problem::unsupported, file_.path().string() + " cannot be begun as a " +
                                          output_->oformat->name + " file (" +
                                          (message.empty() ? errorText(code) : message) +
                                          "); choose another extension or codec.");
  }
}

void ContainerOutput::checkDisk() {
  if (file_.errorCode() != 0) throwWriteError(file_.path(), file_.errorCode());
}

void ContainerOutput::require(int code) {
  checkDisk();
  if (code >= 0) return;
  const std::string message = takeLibraryMessage();
  throw Error(Problem::writeFailed, file_.path().string() + " could not be written: " +
                                        (message.empty() ? errorText(code) : message) + ".");
}

void ContainerOutput::takePacket(AVPacket& packet) {
  if (source_) {
    const double seconds = static_cast<double>(packet.dts) * av_q2d(encoder_->timeBase());
    source_->pump(*output_, seconds, packetSink_);
  }
  packet.pts -= shiftTicks_;
  packet.dts -= shiftTicks_;
  av_packet_rescale_ts(&packet, encoder_->timeBase(), video_->time_base);
  packet.stream_index = video_->index;
  packetSink_(packet);
}

void ContainerOutput::write(const Picture& picture) {
  encoder_->encode(*picture.frame(), [this](AVPacket& packet) { takePacket(packet); });
}

void ContainerOutput::finish() {
  encoder_->flush([this](AVPacket& packet) { takePacket(packet); });
  if (source_) source_->pump(*output_, std::numeric_limits<double>::infinity(), packetSink_);
  require(av_interleaved_write_frame(output_.get(), nullptr));
  require(av_write_trailer(output_.get()));
  avio_flush(output_->pb);
  require(output_->pb->error);
  file_.commit();
}

}  // namespace media
