// tests/media/media_fixture.cpp — what the footage tests share: a scratch folder, pictures,
// commands.
#include "tests/media/media_fixture.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include "media/av_handles.h"
#include "media/frame_shape.h"
#include "media/pixel_layout.h"

extern "C" {
#include <libavutil/imgutils.h>
#include <libavutil/pixdesc.h>
}

// Asked by the leak checker. Each libx265 encoder loses about one kilobyte by itself.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions() {
  return "leak:x265_malloc\n";
}

namespace media::test {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
  std::string name = (fs::temp_directory_path() / "media-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no scratch folder");
  path_ = name;
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::vector<std::string> ScratchFolder::names() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(path_)) {
    names.push_back(entry.path().filename().string());
  }
  std::ranges::sort(names);
  return names;
}

bool runFfmpeg(const std::string& arguments) {
  const std::string command =
      std::string(FFMPEG_PROGRAM) + " -hide_banner -loglevel error -nostdin -y " + arguments;
  return std::system(command.c_str()) == 0;
}

std::vector<std::uint8_t> samplesOf(const Picture& picture) {
  const AVFrame& frame = *picture.frame();
  const auto pixelFormat = static_cast<AVPixelFormat>(frame.format);
  const int size = av_image_get_buffer_size(pixelFormat, frame.width, frame.height, 1);
  std::vector<std::uint8_t> samples(static_cast<std::size_t>(size));
  av_image_copy_to_buffer(samples.data(), size, frame.data, frame.linesize, pixelFormat,
                          frame.width, frame.height, 1);
  return samples;
}

ArgbBuffer::ArgbBuffer(int w, int h, Depth d)
    : width(w),
      height(h),
      depth(d),
      rowBytes(static_cast<std::ptrdiff_t>(bytesPerPixel(d)) * w + 16),
      bytes(static_cast<std::size_t>(rowBytes * h), 0xA5) {}

double ArgbBuffer::at(int x, int y, int c) const {
  const std::uint8_t* pixel =
      bytes.data() + y * rowBytes + x * static_cast<std::ptrdiff_t>(bytesPerPixel(depth));
  if (depth == Depth::eight) return pixel[c];
  if (depth == Depth::sixteen) {
    std::uint16_t value;
    std::memcpy(&value, pixel + 2 * c, 2);
    return value;
  }
  float value;
  std::memcpy(&value, pixel + 4 * c, 4);
  return static_cast<double>(value);
}

void ArgbBuffer::set(int x, int y, int c, double value) {
  std::uint8_t* pixel =
      bytes.data() + y * rowBytes + x * static_cast<std::ptrdiff_t>(bytesPerPixel(depth));
  if (depth == Depth::eight) {
    pixel[c] = static_cast<std::uint8_t>(value);
  } else if (depth == Depth::sixteen) {
    const auto word = static_cast<std::uint16_t>(value);
    std::memcpy(pixel + 2 * c, &word, 2);
  } else {
    const auto word = static_cast<float>(value);
    std::memcpy(pixel + 4 * c, &word, 4);
  }
}

ClipInfo format(int width, int height, const std::string& pixelFormat) {
  ClipInfo info;
  info.width = width;
  info.height = height;
  info.pixelFormat = pixelFormat;
  info.timeBase = {1, 24};
  info.frameRate = {24, 1};
  return info;
}

Picture randomPicture(const ClipInfo& info, std::int64_t index, std::mt19937& random) {
  const Picture blank = Picture::blank(info, index);
  // All zero at first: the library's own line writer only sets bits.
  const FrameHandle frame =
      makeFrameLike(*blank.frame(), static_cast<AVPixelFormat>(blank.frame()->format));
  const AVPixFmtDescriptor& description =
      *av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame->format));
  std::uniform_int_distribution<unsigned> bits(0, 0xFFFFFFFFU);
  std::vector<unsigned> values(static_cast<std::size_t>(info.width));
  for (int c = 0; c < description.nb_components; ++c) {
    const bool chroma = (c == 1 || c == 2) && (description.flags & AV_PIX_FMT_FLAG_RGB) == 0 &&
                        description.nb_components > 2;
    const int width = chroma ? ceilShift(info.width, description.log2_chroma_w) : info.width;
    const int height = chroma ? ceilShift(info.height, description.log2_chroma_h) : info.height;
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        unsigned value = bits(random);
        if (description.comp[c].depth == 32) {  // floats from -1 to 3
          const float real = static_cast<float>(value % 4096U) / 1024.0F - 1.0F;
          std::memcpy(&value, &real, 4);
        } else {
          value &= (1U << description.comp[c].depth) - 1U;
        }
        values[static_cast<std::size_t>(x)] = value;
      }
      av_write_image_line2(values.data(), frame->data, frame->linesize, &description, 0, y, c,
                           width, 4);
    }
  }
  return Picture(shareFrame(*frame), index);
}

std::vector<std::vector<std::uint8_t>> writeRandomClip(const std::string& path,
                                                       const ClipInfo& info, int count,
                                                       std::mt19937& random,
                                                       const WriteOptions& options) {
  std::vector<std::vector<std::uint8_t>> samples;
  ClipWriter writer(path, info, options);
  for (int i = 0; i < count; ++i) {
    const Picture picture = randomPicture(info, i, random);
    samples.push_back(samplesOf(picture));
    writer.write(picture);
  }
  writer.finish();
  return samples;
}

std::vector<std::vector<std::uint8_t>> readAll(ClipReader& reader) {
  std::vector<std::vector<std::uint8_t>> samples;
  while (const auto picture = reader.next()) samples.push_back(samplesOf(*picture));
  return samples;
}

std::vector<std::string> passThrough(const std::string& source, const std::string& path,
                                     const WriteOptions& options) {
  ClipReader reader(source);
  ClipWriter writer(path, reader, options);
  while (const auto picture = reader.next()) writer.write(*picture);
  writer.finish();
  return writer.notes();
}

std::mt19937 seeded() {
  const char* given = std::getenv("VARILUM_SEED");
  const unsigned seed =
      given != nullptr ? static_cast<unsigned>(std::atoll(given)) : std::random_device{}();
  std::cout << "seed " << seed << '\n';
  return std::mt19937(seed);
}

}  // namespace media::test
