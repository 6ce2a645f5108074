// media/stream_info.cpp — a stream's properties in the words of ClipInfo.
#include "media/stream_info.h"

#include <cmath>
#include <utility>

#include "media/colour_names.h"
#include "media/format_layout.h"

extern "C" {
#include <libavutil/display.h>
#include <libavutil/pixdesc.h>
}

namespace media {
namespace {

constexpr std::pair<AVPixelFormat, AVPixelFormat> kJpegNames[] = {
    {AV_PIX_FMT_YUVJ420P, AV_PIX_FMT_YUV420P}, {AV_PIX_FMT_YUVJ422P, AV_PIX_FMT_YUV422P},
    {AV_PIX_FMT_YUVJ444P, AV_PIX_FMT_YUV444P}, {AV_PIX_FMT_YUVJ440P, AV_PIX_FMT_YUV440P},
    {AV_PIX_FMT_YUVJ411P, AV_PIX_FMT_YUV411P},
};

std::string kindOf(AVMediaType type) {
  const char* name = av_get_media_type_string(type);
  return name == nullptr ? "data" : name;
}

std::vector<OtherStream> otherStreams(const InputFile& input) {
  std::vector<OtherStream> others;
  const AVFormatContext& context = input.context();
  for (unsigned i = 0; i < context.nb_streams; ++i) {
    const AVStream& stream = *context.streams[i];
    if (&stream == &input.stream()) continue;
    const AVDictionaryEntry* language = av_dict_get(stream.metadata, "language", nullptr, 0);
    others.push_back({static_cast<int>(i), kindOf(stream.codecpar->codec_type),
                      avcodec_get_name(stream.codecpar->codec_id),
                      language == nullptr ? "" : language->value});
  }
  return others;
}

}  // namespace

AVPixelFormat withoutJpegName(AVPixelFormat format) noexcept {
  for (const auto& [jpeg, plain] : kJpegNames) {
    if (format == jpeg) return plain;
  }
  return format;
}

std::string pixelFormatName(AVPixelFormat format) {
  const char* name = av_get_pix_fmt_name(format);
  return name == nullptr ? "unknown" : name;
}

int rotationOf(const AVStream& stream) noexcept {
  std::size_t size = 0;
  const std::uint8_t* data = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
  if (data == nullptr || size < 9 * sizeof(std::int32_t)) return 0;
  const double anticlockwise = av_display_rotation_get(reinterpret_cast<const std::int32_t*>(data));
  if (std::isnan(anticlockwise)) return 0;
  const int quarter = static_cast<int>(std::lround(-anticlockwise / 90.0));
  return ((quarter % 4 + 4) % 4) * 90;
}

ClipInfo describeStream(const InputFile& input, const FrameIndex& index, const AVFrame& first) {
  const AVStream& stream = input.stream();
  ClipInfo info;
  info.container = input.context().iformat->name;
  info.codec = avcodec_get_name(stream.codecpar->codec_id);
  info.imageSequence = input.path().sequence;
  info.firstNumber = input.path().firstNumber;
  info.width = first.width;
  info.height = first.height;
  const auto format = static_cast<AVPixelFormat>(first.format);
  const PixelLayout layout = pixelLayout(format);
  info.pixelFormat = pixelFormatName(format);
  info.bitsPerComponent = layout.depth;
  info.isFloat = layout.isFloat;
  info.hasAlpha = layout.hasAlpha;
  info.workingDepth = layout.workingDepth();
  nameColour(info, colourProperties(first));
  AVRational aspect = first.sample_aspect_ratio;
  if (stream.sample_aspect_ratio.num > 0) aspect = stream.sample_aspect_ratio;
  if (aspect.num > 0 && aspect.den > 0) info.sampleAspectRatio = {aspect.num, aspect.den};
  info.rotationDegrees = rotationOf(stream);
  info.timeBase = {stream.time_base.num, stream.time_base.den};
  info.frameRate = index.frameRate(stream);
  info.variableFrameRate = index.variableRate();
  info.startPts = index.at(0).pts;
  info.durationSeconds =
      static_cast<double>(index.endPts() - info.startPts) * av_q2d(stream.time_base);
  info.otherStreams = otherStreams(input);
  return info;
}

}  // namespace media
