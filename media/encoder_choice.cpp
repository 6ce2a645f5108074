// media/encoder_choice.cpp — which encoder, pixel format and settings write a clip.
#include "media/encoder_choice.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <span>
#include <string_view>
#include <tuple>

#include "media/error.h"
#include "media/stream_info.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace media {
namespace {

struct Preferred {
  AVCodecID codec;
  const char* encoder;
};

// Where FFmpeg's own choice would be another than the one that does it best.
constexpr Preferred kPreferred[] = {
    {AV_CODEC_ID_H264, "libx264"},      {AV_CODEC_ID_HEVC, "libx265"},
    {AV_CODEC_ID_PRORES, "prores_ks"},  {AV_CODEC_ID_VP9, "libvpx-vp9"},
    {AV_CODEC_ID_VP8, "libvpx"},        {AV_CODEC_ID_AV1, "libaom-av1"},
    {AV_CODEC_ID_MPEG4, "mpeg4"},       {AV_CODEC_ID_THEORA, "libtheora"},
    {AV_CODEC_ID_JPEG2000, "jpeg2000"},
};

// For inputs whose codec has no encoder or does not fit the container, best first.
constexpr const char* kDefaults[] = {"libx264",    "libx264rgb", "libx265",   "prores_ks", "ffv1",
                                     "libvpx-vp9", "mpeg4",      "libtheora", "png",       "mjpeg"};

enum class QualityScale { none, crf, qscale };

struct Setting {
  const char* key;
  const char* value;
};

// Settings that look lossless at a bearable speed.
struct Settings {
  const char* encoder;
  QualityScale scale;
  double quality;
  const char* presetKey;
  std::array<Setting, 4> more;
};

constexpr Settings kSettings[] = {
    {"libx264", QualityScale::crf, 14, "preset", {{{"preset", "fast"}}}},
    {"libx264rgb", QualityScale::crf, 14, "preset", {{{"preset", "fast"}}}},
    {"libx265",
     QualityScale::crf,
     14,
     "preset",
     {{{"preset", "fast"}, {"x265-params", "log-level=none"}}}},
    {"libvpx-vp9",
     QualityScale::crf,
     16,
     "deadline",
     {{{"b", "0"}, {"deadline", "good"}, {"cpu-used", "3"}, {"row-mt", "1"}}}},
    {"libvpx",
     QualityScale::crf,
     6,
     "deadline",
     {{{"b", "60M"}, {"deadline", "good"}, {"cpu-used", "3"}}}},
    {"libaom-av1",
     QualityScale::crf,
     16,
     nullptr,
     {{{"b", "0"}, {"cpu-used", "6"}, {"row-mt", "1"}}}},
    {"mpeg4", QualityScale::qscale, 2, nullptr, {}},
    {"mpeg2video", QualityScale::qscale, 2, nullptr, {}},
    {"mpeg1video", QualityScale::qscale, 2, nullptr, {}},
    {"mjpeg", QualityScale::qscale, 2, nullptr, {}},
    {"libtheora", QualityScale::qscale, 10, nullptr, {}},
    {"ffv1", QualityScale::none, 0, nullptr, {{{"level", "3"}, {"slicecrc", "1"}, {"g", "1"}}}},
    {"exr", QualityScale::none, 0, nullptr, {{{"compression", "zip16"}}}},
    {"tiff", QualityScale::none, 0, nullptr, {{{"compression_algo", "deflate"}}}},
};

// Checked here because these encoders complain on standard error.
constexpr std::string_view kPresets[] = {"ultrafast", "superfast", "veryfast", "faster",
                                         "fast",      "medium",    "slow",     "slower",
                                         "veryslow",  "placebo"};

const Settings* settingsOf(const AVCodec& encoder) noexcept {
  for (const Settings& settings : kSettings) {
    if (std::string_view(settings.encoder) == encoder.name) return &settings;
  }
  return nullptr;
}

const AVCodec* encoderOf(AVCodecID codec) {
  for (const Preferred& preferred : kPreferred) {
    if (preferred.codec == codec) {
      const AVCodec* encoder = avcodec_find_encoder_by_name(preferred.encoder);
      if (encoder != nullptr) return encoder;
    }
  }
  return avcodec_find_encoder(codec);
}

bool carries(const AVOutputFormat& container, AVCodecID codec,
             int compliance = FF_COMPLIANCE_NORMAL) noexcept {
  return avformat_query_codec(&container, codec, compliance) == 1;
}

// How much a pixel format falls short of a source, worst fault first; less is better.
using Shortfall = std::tuple<bool, bool, int, int, bool, bool, int>;

std::optional<Shortfall> shortfall(AVPixelFormat source, AVColorRange range,
                                   AVPixelFormat candidate) {
  const AVPixFmtDescriptor* from = av_pix_fmt_desc_get(source);
  const AVPixFmtDescriptor* to = av_pix_fmt_desc_get(candidate);
  constexpr std::uint64_t kUnfit = AV_PIX_FMT_FLAG_PAL | AV_PIX_FMT_FLAG_BITSTREAM |
                                   AV_PIX_FMT_FLAG_HWACCEL | AV_PIX_FMT_FLAG_BAYER;
  if (from == nullptr || to == nullptr || (to->flags & kUnfit) != 0) return std::nullopt;
  if (source != candidate && sws_isSupportedOutput(candidate) == 0) return std::nullopt;
  const auto has = [](const AVPixFmtDescriptor* d, std::uint64_t flag) {
    return (d->flags & flag) != 0;
  };
  const bool fromGrey = from->nb_components < 3;
  const bool toGrey = to->nb_components < 3;
  const bool family = has(from, AV_PIX_FMT_FLAG_RGB) != has(to, AV_PIX_FMT_FLAG_RGB);
  const int chroma = std::max(0, to->log2_chroma_w - from->log2_chroma_w) +
                     std::max(0, to->log2_chroma_h - from->log2_chroma_h) +
                     (toGrey && !fromGrey ? 4 : 0);
  const bool jpeg = withoutJpegName(candidate) != candidate;
  const bool rangeChange = jpeg != (range == AVCOL_RANGE_JPEG) && jpeg;
  return Shortfall{has(from, AV_PIX_FMT_FLAG_FLOAT) && !has(to, AV_PIX_FMT_FLAG_FLOAT),
                   has(from, AV_PIX_FMT_FLAG_ALPHA) && !has(to, AV_PIX_FMT_FLAG_ALPHA),
                   std::max(0, from->comp[0].depth - to->comp[0].depth),
                   chroma,
                   family && !fromGrey,
                   rangeChange,
                   av_get_padded_bits_per_pixel(to)};
}

// Everything but the size and the colour family is kept.
bool keepsSamples(const Shortfall& s) noexcept {
  return !std::get<0>(s) && !std::get<1>(s) && std::get<2>(s) == 0 && std::get<3>(s) == 0;
}

bool keepsAll(AVPixelFormat source, AVColorRange range, const AVCodec& encoder) {
  const AVPixelFormat nearest = nearestFormat(source, range, encoder);
  const auto s = shortfall(source, range, nearest);
  return s && keepsSamples(*s) && !std::get<4>(*s);
}

const AVCodec* encoderNamed(const std::string& name) {
  if (const AVCodecDescriptor* descriptor = avcodec_descriptor_get_by_name(name.c_str())) {
    if (const AVCodec* encoder = encoderOf(descriptor->id)) {
      if (encoder->type == AVMEDIA_TYPE_VIDEO) return encoder;
    }
  }
  const AVCodec* encoder = avcodec_find_encoder_by_name(name.c_str());
  if (encoder == nullptr || encoder->type != AVMEDIA_TYPE_VIDEO) {
    throw Error(Problem::badOption, "There is no video encoder called " + name +
                                        "; libx264, libx265, prores_ks and ffv1 are some.");
  }
  return encoder;
}

// Players know FFV1 from Matroska, not from the family of MOV.
bool usual(const AVOutputFormat& container, const AVCodec& encoder) noexcept {
  return encoder.id != AV_CODEC_ID_FFV1 || container.codec_tag == nullptr ||
         std::string_view(container.name) == "matroska" ||
         std::string_view(container.name) == "avi";
}

const AVCodec* defaultEncoder(const EncoderInput& input, const AVOutputFormat& container) {
  const AVCodec* fallback = nullptr;
  for (const char* name : kDefaults) {
    const AVCodec* encoder = avcodec_find_encoder_by_name(name);
    if (encoder == nullptr || !carries(container, encoder->id) || !usual(container, *encoder)) {
      continue;
    }
    if (nearestFormat(input.pixelFormat, input.range, *encoder) == input.pixelFormat) {
      return encoder;
    }
  }
  for (const char* name : kDefaults) {
    const AVCodec* encoder = avcodec_find_encoder_by_name(name);
    if (encoder == nullptr || !carries(container, encoder->id)) continue;
    if (keepsAll(input.pixelFormat, input.range, *encoder)) return encoder;
    if (fallback == nullptr) fallback = encoder;
  }
  return fallback != nullptr ? fallback : encoderOf(container.video_codec);
}

std::string number(double value) {
  std::string text = std::to_string(value);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

void choosePixelFormat(EncoderPlan& plan, const EncoderInput& input, const WriteOptions& options) {
  if (!options.pixelFormat.empty()) {
    plan.pixelFormat = av_get_pix_fmt(options.pixelFormat.c_str());
    if (plan.pixelFormat == AV_PIX_FMT_NONE) {
      throw Error(Problem::badOption, "There is no pixel format called " + options.pixelFormat +
                                          "; yuv420p and yuv422p10le are some.");
    }
    const AVPixelFormat* list = plan.encoder->pix_fmts;
    bool listed = list == nullptr;
    std::string names;
    for (; list != nullptr && *list != AV_PIX_FMT_NONE; ++list) {
      listed = listed || *list == plan.pixelFormat;
      names += (names.empty() ? "" : ", ") + pixelFormatName(*list);
    }
    if (!listed) {
      throw Error(Problem::badOption, "The encoder " + std::string(plan.encoder->name) +
                                          " does not take " + options.pixelFormat + "; it takes " +
                                          names + ".");
    }
    return;
  }
  plan.pixelFormat = nearestFormat(input.pixelFormat, input.range, *plan.encoder);
  if (plan.pixelFormat == AV_PIX_FMT_NONE) plan.pixelFormat = input.pixelFormat;
  const AVPixelFormat plain = withoutJpegName(plan.pixelFormat);
  if (plain != input.pixelFormat) {
    const auto s = shortfall(input.pixelFormat, input.range, plan.pixelFormat);
    plan.notes.push_back("The encoder " + std::string(plan.encoder->name) + " does not take " +
                         pixelFormatName(input.pixelFormat) + "; " +
                         pixelFormatName(plan.pixelFormat) + " is written" +
                         (s && keepsSamples(*s) ? "." : ", which holds less."));
  } else if (plan.pixelFormat != plain && input.range != AVCOL_RANGE_JPEG) {
    plan.notes.push_back("JPEG pictures are written in full range.");
  }
}

const char* dnxProfile(AVPixelFormat format) noexcept {
  switch (format) {
    case AV_PIX_FMT_YUV444P10:
    case AV_PIX_FMT_GBRP10:
      return "dnxhr_444";
    case AV_PIX_FMT_YUV422P10:
      return "dnxhr_hqx";
    default:
      return "dnxhr_hq";
  }
}

void chooseSettings(EncoderPlan& plan, const EncoderInput& input, const WriteOptions& options) {
  const std::string name = plan.encoder->name;
  const Settings* settings = settingsOf(*plan.encoder);
  const QualityScale scale = settings == nullptr ? QualityScale::none : settings->scale;
  const double quality = options.quality.value_or(settings == nullptr ? 0 : settings->quality);
  if (settings != nullptr) {
    for (const Setting& setting : settings->more) {
      if (setting.key != nullptr) plan.settings.emplace_back(setting.key, setting.value);
    }
  }
  if (scale == QualityScale::crf) plan.settings.emplace_back("crf", number(quality));
  if (scale == QualityScale::qscale) plan.qscale = std::max(1, static_cast<int>(quality + 0.5));
  if (scale == QualityScale::none && options.quality) {
    plan.notes.push_back("The encoder " + name + " has no quality setting; it was left out.");
  }
  if (name == "prores_ks") {
    const bool full = plan.pixelFormat != AV_PIX_FMT_YUV422P10;
    const bool known = input.codec == AV_CODEC_ID_PRORES && input.profile >= 0;
    plan.settings.emplace_back(
        "profile",
        std::to_string(known && (input.profile >= 4) == full ? input.profile : (full ? 4 : 3)));
    plan.settings.emplace_back("vendor", "apl0");
  }
  if (name == "dnxhd") plan.settings.emplace_back("profile", dnxProfile(plan.pixelFormat));
  const bool x26 = name.starts_with("libx26");
  if (x26 && !options.preset.empty() &&
      std::ranges::find(kPresets, options.preset) == std::end(kPresets)) {
    throw Error(Problem::badOption, "The encoder " + name + " has no preset called \"" +
                                        options.preset +
                                        "\"; ultrafast, veryfast, fast, medium, slow and veryslow "
                                        "are some.");
  }
  if (!options.preset.empty()) {
    const char* key = settings == nullptr ? nullptr : settings->presetKey;
    if (key == nullptr) {
      plan.notes.push_back("The encoder " + name + " has no presets; the preset was left out.");
    } else {
      plan.settings.emplace_back(key, options.preset);
    }
  }
  for (const auto& [key, value] : options.encoderOptions) {
    const bool quiet = key == "x265-params";
    plan.settings.emplace_back(key, quiet ? value + ":log-level=none" : value);
  }
}

EncoderPlan complete(const AVCodec* encoder, const EncoderInput& input, const WriteOptions& options,
                     std::vector<std::string> notes) {
  EncoderPlan plan;
  plan.encoder = encoder;
  plan.notes = std::move(notes);
  choosePixelFormat(plan, input, options);
  chooseSettings(plan, input, options);
  return plan;
}

}  // namespace

AVPixelFormat nearestFormat(AVPixelFormat source, AVColorRange range, const AVCodec& encoder) {
  AVPixelFormat best = AV_PIX_FMT_NONE;
  std::optional<Shortfall> least;
  for (const AVPixelFormat* format = encoder.pix_fmts;
       format != nullptr && *format != AV_PIX_FMT_NONE; ++format) {
    const bool mjpeg = encoder.id == AV_CODEC_ID_MJPEG;
    if (mjpeg && withoutJpegName(*format) == *format) continue;  // readers take JPEG as full range
    if (*format == source) return source;
    const auto s = shortfall(source, range, *format);
    if (s && (!least || *s < *least)) {
      least = s;
      best = *format;
    }
  }
  return best;
}

EncoderPlan planEncoder(const EncoderInput& input, const AVOutputFormat& container,
                        const WriteOptions& options) {
  std::vector<std::string> notes;
  const AVCodec* encoder = nullptr;
  if (!options.codec.empty()) {
    encoder = encoderNamed(options.codec);
    if (!carries(container, encoder->id, FF_COMPLIANCE_UNOFFICIAL) &&
        container.codec_tag != nullptr) {
      throw Error(Problem::badOption, std::string("A ") + container.name + " file cannot hold " +
                                          avcodec_get_name(encoder->id) +
                                          " video; choose another codec or extension.");
    }
  } else {
    if (input.codec != AV_CODEC_ID_NONE &&
        carries(container, input.codec, FF_COMPLIANCE_UNOFFICIAL)) {
      encoder = encoderOf(input.codec);
      const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(input.pixelFormat);
      const AVCodec* rgb = avcodec_find_encoder_by_name("libx264rgb");
      if (input.codec == AV_CODEC_ID_H264 && rgb != nullptr && description != nullptr &&
          (description->flags & AV_PIX_FMT_FLAG_RGB) != 0 && description->comp[0].depth == 8) {
        encoder = rgb;
      }
    }
    if (encoder == nullptr) {
      encoder = defaultEncoder(input, container);
      if (input.codec != AV_CODEC_ID_NONE && encoder != nullptr) {
        notes.push_back(std::string("The input's ") + avcodec_get_name(input.codec) +
                        " video is written as " + avcodec_get_name(encoder->id) + ".");
      }
    }
  }
  if (encoder == nullptr) {
    throw Error(Problem::unsupported, std::string("There is no encoder for video in ") +
                                          container.name + " files; choose another extension.");
  }
  return complete(encoder, input, options, std::move(notes));
}

EncoderPlan planPictureEncoder(const EncoderInput& input, const std::string& extension,
                               const WriteOptions& options) {
  struct PictureKind {
    std::string_view extension;
    AVCodecID codec;
  };
  constexpr PictureKind kKinds[] = {
      {".png", AV_CODEC_ID_PNG},    {".tif", AV_CODEC_ID_TIFF}, {".tiff", AV_CODEC_ID_TIFF},
      {".dpx", AV_CODEC_ID_DPX},    {".exr", AV_CODEC_ID_EXR},  {".jpg", AV_CODEC_ID_MJPEG},
      {".jpeg", AV_CODEC_ID_MJPEG}, {".bmp", AV_CODEC_ID_BMP},  {".tga", AV_CODEC_ID_TARGA}};
  std::string lower = extension;
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  const auto kind = std::ranges::find(kKinds, std::string_view(lower), &PictureKind::extension);
  if (kind == std::end(kKinds)) {
    throw Error(
        Problem::unsupported,
        "\"" + extension +
            "\" is not a kind of picture that can be written; png, tif, dpx, exr and jpg are.");
  }
  const AVCodec* encoder =
      options.codec.empty() ? avcodec_find_encoder(kind->codec) : encoderNamed(options.codec);
  if (encoder == nullptr) {
    throw Error(Problem::unsupported, "There is no encoder for " + extension + " pictures.");
  }
  return complete(encoder, input, options, {});
}

}  // namespace media
