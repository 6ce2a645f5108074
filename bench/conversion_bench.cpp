// bench/conversion_bench.cpp — a decoded 1080p frame to ARGB and back, beside other ways to do it.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "media/av_handles.h"
#include "media/frame_pixels.h"
#include "media/frame_shape.h"
#include "media/picture_rows.h"
#include "media/pixel_conversion.h"

extern "C" {
#include <libavutil/log.h>
#include <libswscale/swscale.h>
}
#ifdef VARILUM_HAVE_ZIMG
#include <zimg.h>
#endif

namespace {

using media::Depth;

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

// Brightness and colour that change slowly, with some grain, within what RGB can hold.
media::Picture naturalPicture(const char* pixelFormat) {
  media::ClipInfo info;
  info.width = kWidth;
  info.height = kHeight;
  info.pixelFormat = pixelFormat;
  info.colourRange = "tv";
  info.colourMatrix = "bt709";
  std::vector<float> pixels(std::size_t{4} * kWidth * kHeight);
  std::mt19937 random(7);
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    const auto x = static_cast<float>(i / 4 % kWidth) / kWidth;
    const float grain = static_cast<float>(random() % 1024) / 20000.0F;
    pixels[i] = 0.2F + 0.5F * x + 0.05F * static_cast<float>(i % 4) + grain;
  }
  const media::ConstArgbView view(pixels.data(), std::ptrdiff_t{16} * kWidth, kWidth, kHeight,
                                  Depth::floating);
  return media::fromArgb(view, media::Picture::blank(info));
}

struct Argb {
  explicit Argb(Depth itsDepth)
      : depth(itsDepth), bytes(media::bytesPerPixel(itsDepth) * kWidth * kHeight) {}
  media::ArgbView view() {
    return {bytes.data(), static_cast<std::ptrdiff_t>(media::bytesPerPixel(depth)) * kWidth, kWidth,
            kHeight, depth};
  }
  Depth depth;
  std::vector<std::uint8_t> bytes;
};

// The floor: writing as many bytes as the ARGB frame has.
void copyFrame(benchmark::State& state, Depth depth) {
  Argb from(depth);
  Argb to(depth);
  for (auto _ : state) {
    std::memcpy(to.bytes.data(), from.bytes.data(), from.bytes.size());
    benchmark::ClobberMemory();
  }
}

void toArgb(benchmark::State& state, const char* pixelFormat, const media::YuvKernels* kernels) {
  const media::Picture picture = naturalPicture(pixelFormat);
  Argb argb(picture.workingDepth());
  const media::ArgbView view = argb.view();
  const media::FramePixels pixels = media::pixelsOf(picture);
  const media::PictureRows rows(pixels, argb.depth, kernels);
  for (auto _ : state) {
    rows.toArgb(
        pixels, 0, rows.groups(), [&](int y) { return view.row(y); }, [](int) { return true; });
    benchmark::ClobberMemory();
  }
}

void fromArgb(benchmark::State& state, const char* pixelFormat, const media::YuvKernels* kernels) {
  const media::Picture picture = naturalPicture(pixelFormat);
  Argb argb(picture.workingDepth());
  media::toArgb(picture, argb.view());
  const media::FramePixels pixels = media::pixelsOf(picture);
  const media::PictureRows rows(pixels, argb.depth, kernels);
  media::FramePixels back;
  const media::Picture made = media::pictureLike(picture, back);
  for (auto _ : state) {
    rows.fromArgb(argb.view(), 0, rows.groups(), back);
    benchmark::ClobberMemory();
  }
}

// As the program does it, with a new picture each time.
void wholePicture(benchmark::State& state, const char* pixelFormat) {
  const media::Picture picture = naturalPicture(pixelFormat);
  Argb argb(picture.workingDepth());
  media::toArgb(picture, argb.view());
  for (auto _ : state) benchmark::DoNotOptimize(media::fromArgb(argb.view(), picture));
}

void unchanged(benchmark::State& state, const char* pixelFormat) {
  const media::Picture picture = naturalPicture(pixelFormat);
  Argb argb(picture.workingDepth());
  media::toArgb(picture, argb.view());
  for (auto _ : state) benchmark::DoNotOptimize(media::isUnchanged(argb.view(), picture));
}

// libswscale, accurate as the rest of the program asks of it, or quick. Its deep ARGB is 16 bits to
// 65535, not this program's 32768, so it would take a pass of ours besides.
void swscale(benchmark::State& state, const char* pixelFormat, bool back, int flags) {
  const media::Picture picture = naturalPicture(pixelFormat);
  const bool deep = picture.workingDepth() != Depth::eight;
  const AVPixelFormat argbFormat = deep ? AV_PIX_FMT_RGBA64LE : AV_PIX_FMT_ARGB;
  const auto yuvFormat = static_cast<AVPixelFormat>(picture.frame()->format);
  const media::FrameHandle argb = media::makeBlankFrame(argbFormat, kWidth, kHeight);
  const media::FrameHandle yuv = media::makeBlankFrame(yuvFormat, kWidth, kHeight);
  const auto converter = [flags](AVPixelFormat from, AVPixelFormat to) {
    media::ScalerHandle made(sws_getContext(kWidth, kHeight, from, kWidth, kHeight, to, flags,
                                            nullptr, nullptr, nullptr));
    const int* table = sws_getCoefficients(SWS_CS_ITU709);
    sws_setColorspaceDetails(made.get(), table, 0, table, 0, 0, 1 << 16, 1 << 16);
    return made;
  };
  const media::ScalerHandle there = converter(yuvFormat, argbFormat);
  const media::ScalerHandle andBack = converter(argbFormat, yuvFormat);
  const auto go = [](const media::ScalerHandle& scaler, const AVFrame& from, AVFrame& to) {
    sws_scale(scaler.get(), from.data, from.linesize, 0, kHeight, to.data, to.linesize);
  };
  go(there, *picture.frame(), *argb);
  for (auto _ : state) {
    back ? go(andBack, *argb, *yuv) : go(there, *picture.frame(), *argb);
    benchmark::ClobberMemory();
  }
}

#ifdef VARILUM_HAVE_ZIMG
// zimg, with chroma by the nearest sample. It knows planes only: making ARGB of its three, and
// planes of ARGB, comes on top.
void zimg(benchmark::State& state, const char* pixelFormat, bool back) {
  const media::Picture picture = naturalPicture(pixelFormat);
  const bool deep = picture.workingDepth() != Depth::eight;
  const AVFrame& model = *picture.frame();
  const media::FrameHandle rgb =
      media::makeBlankFrame(deep ? AV_PIX_FMT_GBRP16LE : AV_PIX_FMT_GBRP, kWidth, kHeight);
  const media::FrameHandle yuv =
      media::makeFrameLike(model, static_cast<AVPixelFormat>(model.format));
  zimg_image_format code;
  zimg_image_format_default(&code, ZIMG_API_VERSION);
  code.width = kWidth;
  code.height = kHeight;
  code.pixel_type = deep ? ZIMG_PIXEL_WORD : ZIMG_PIXEL_BYTE;
  zimg_image_format level = code;
  code.depth = deep ? 10 : 8;
  code.subsample_w = 1;
  code.subsample_h = deep ? 0 : 1;
  code.color_family = ZIMG_COLOR_YUV;
  code.matrix_coefficients = ZIMG_MATRIX_BT709;
  code.pixel_range = ZIMG_RANGE_LIMITED;
  level.depth = deep ? 16 : 8;
  level.color_family = ZIMG_COLOR_RGB;
  level.matrix_coefficients = ZIMG_MATRIX_RGB;
  level.pixel_range = ZIMG_RANGE_FULL;
  zimg_graph_builder_params params;
  zimg_graph_builder_params_default(&params, ZIMG_API_VERSION);
  params.resample_filter_uv = ZIMG_RESIZE_POINT;
  const std::unique_ptr<zimg_filter_graph, void (*)(zimg_filter_graph*)> graph(
      back ? zimg_filter_graph_build(&level, &code, &params)
           : zimg_filter_graph_build(&code, &level, &params),
      zimg_filter_graph_free);
  if (!graph) return state.SkipWithError("zimg builds no such graph");
  std::size_t size = 0;
  zimg_filter_graph_get_tmp_size(graph.get(), &size);
  const std::unique_ptr<void, void (*)(void*)> scratch(std::aligned_alloc(64, (size + 63) & ~63UL),
                                                       std::free);
  const AVFrame& from = back ? *rgb : model;
  const AVFrame& to = back ? *yuv : *rgb;
  zimg_image_buffer_const in{};
  zimg_image_buffer out{};
  in.version = out.version = ZIMG_API_VERSION;
  for (int i = 0; i < 3; ++i) {
    in.plane[i] = {from.data[i], from.linesize[i], ZIMG_BUFFER_MAX};
    out.plane[i] = {to.data[i], to.linesize[i], ZIMG_BUFFER_MAX};
  }
  for (auto _ : state) {
    zimg_filter_graph_process(graph.get(), &in, &out, scratch.get(), nullptr, nullptr, nullptr,
                              nullptr);
    benchmark::ClobberMemory();
  }
}
#endif

constexpr int kAccurate = SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT | SWS_FULL_CHR_H_INP;
constexpr int kQuick = SWS_POINT;

void addAll(const char* format, Depth depth) {
  const auto name = [format](const char* what) { return std::string(format) + "/" + what; };
  const auto add = [](const std::string& title, auto body) {
    benchmark::RegisterBenchmark(title.c_str(), body)->Unit(benchmark::kMillisecond);
  };
  add(name("copy"), [=](benchmark::State& s) { copyFrame(s, depth); });
  add(name("toArgb"), [=](benchmark::State& s) { toArgb(s, format, media::yuvKernels()); });
  add(name("toArgb/plain"), [=](benchmark::State& s) { toArgb(s, format, nullptr); });
  add(name("toArgb/swscale"), [=](benchmark::State& s) { swscale(s, format, false, kAccurate); });
  add(name("toArgb/swscale-quick"),
      [=](benchmark::State& s) { swscale(s, format, false, kQuick); });
  add(name("fromArgb"), [=](benchmark::State& s) { fromArgb(s, format, media::yuvKernels()); });
  add(name("fromArgb/plain"), [=](benchmark::State& s) { fromArgb(s, format, nullptr); });
  add(name("fromArgb/swscale"), [=](benchmark::State& s) { swscale(s, format, true, kAccurate); });
  add(name("fromArgb/swscale-quick"),
      [=](benchmark::State& s) { swscale(s, format, true, kQuick); });
#ifdef VARILUM_HAVE_ZIMG
  add(name("toArgb/zimg-planes"), [=](benchmark::State& s) { zimg(s, format, false); });
  add(name("fromArgb/zimg-planes"), [=](benchmark::State& s) { zimg(s, format, true); });
#endif
  add(name("newPicture"), [=](benchmark::State& s) { wholePicture(s, format); });
  add(name("isUnchanged"), [=](benchmark::State& s) { unchanged(s, format); });
}

}  // namespace

int main(int argc, char** argv) {
  av_log_set_level(AV_LOG_ERROR);
  addAll("yuv420p", Depth::eight);
  addAll("yuv422p10le", Depth::sixteen);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
}
