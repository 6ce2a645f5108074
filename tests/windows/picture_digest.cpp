// tests/windows/picture_digest.cpp — corrects a synthetic clip and writes every bit that came of
// it.
//
//   picture_digest LIBRARY PREFIX
// PREFIX.raw gets the pixels of all frames in all depths, methods and paths, and the saved
// analysis; PREFIX.txt a line for each with a checksum, which tells where two files part. Built for
// each system and compared: nothing here depends on the system's mathematics, so neither may the
// result.
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <span>
#include <string>
#include <vector>

#include "host/effect.h"
#include "host/instance.h"

namespace {

using host::Depth;
using host::RenderPath;

constexpr std::int32_t kWidth = 97;
constexpr std::int32_t kHeight = 71;
constexpr std::int32_t kFrames = 9;
// Exposure of each frame in 64ths.
constexpr std::uint32_t kExposure[kFrames] = {64, 49, 71, 80, 40, 64, 90, 33, 58};

std::uint32_t noise(std::uint32_t x) {
  x ^= x >> 16;
  x *= 0x7FEB352Du;
  x ^= x >> 15;
  x *= 0x846CA68Bu;
  return x ^ (x >> 16);
}

// A ramp with noise, in whole numbers 0..32768: the depths are made of it without rounding doubts.
class Clip : public host::FrameSource {
 public:
  explicit Clip(Depth depth) {
    info_.width = kWidth;
    info_.height = kHeight;
    info_.frameCount = kFrames;
    info_.timeStep = 100;
    info_.timeScale = 2500;
    info_.depth = depth;
  }

  const host::LayerInfo& info() const override { return info_; }

  void read(std::int32_t frame, host::Image& image) override {
    for (std::int32_t y = 0; y < image.height(); ++y) {
      for (std::int32_t x = 0; x < image.width(); ++x) {
        std::uint32_t channels[4] = {32768};
        for (std::uint32_t c = 1; c < 4; ++c) channels[c] = level(frame, x, y, c);
        write(image, x, y, channels);
      }
    }
  }

 private:
  static std::uint32_t level(std::int32_t frame, std::int32_t x, std::int32_t y, std::uint32_t c) {
    const auto place = static_cast<std::uint32_t>(y * kWidth + x);
    const std::uint32_t ramp = static_cast<std::uint32_t>(x) * 24000u / kWidth;
    const std::uint32_t value = (ramp + noise(place * 4 + c) % 9000u) * kExposure[frame] / 64u;
    return value < 32768u ? value : 32768u;
  }

  static void write(host::Image& image, std::int32_t x, std::int32_t y,
                    const std::uint32_t (&channels)[4]) {
    std::byte* at = image.row(y) + x * host::pixelBytes(image.depth());
    for (const std::uint32_t channel : channels) {
      if (image.depth() == Depth::bits8) {
        *at++ = static_cast<std::byte>(channel * 255u / 32768u);
      } else if (image.depth() == Depth::bits16) {
        const auto value = static_cast<std::uint16_t>(channel);
        std::memcpy(at, &value, sizeof value);
        at += sizeof value;
      } else {
        // A little above white at the top, as float footage is.
        const float value = static_cast<float>(channel) / 30000.0f;
        std::memcpy(at, &value, sizeof value);
        at += sizeof value;
      }
    }
  }

  host::LayerInfo info_;
};

// The saved analysis without the handles that it carries: their values are the run's own.
std::vector<std::byte> savedAnalysis(host::Instance& fx) {
  constexpr std::size_t kHandleAt[] = {28, 40, 52, 60, 68, 76};
  constexpr std::size_t kHandleBytes = 8;
  std::vector<std::byte> data = fx.save().sequenceData;
  for (const std::size_t at : kHandleAt) {
    std::memset(data.data() + at, 0, kHandleBytes);
  }
  return data;
}

class Record {
 public:
  explicit Record(const std::string& prefix)
      : raw_(prefix + ".raw", std::ios::binary), text_(prefix + ".txt") {}

  void begin() { sum_ = 0xCBF29CE484222325u; }

  void add(std::span<const std::byte> bytes) {
    raw_.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    for (const std::byte byte : bytes) {
      sum_ = (sum_ ^ std::to_integer<std::uint64_t>(byte)) * 0x100000001B3u;
    }
  }

  void end(const std::string& what) {
    char sum[20];
    std::snprintf(sum, sizeof sum, "%016" PRIx64, sum_);
    text_ << sum << " " << what << "\n";
  }

  bool close() {
    raw_.close();
    text_.close();
    return raw_ && text_;
  }

 private:
  std::ofstream raw_;
  std::ofstream text_;
  std::uint64_t sum_ = 0;
};

struct Job {
  Depth depth;
  int method;  // of correction
  RenderPath path;
  bool favorBrighter;
};

void correct(host::Effect& effect, const Job& job, Record& record) {
  Clip clip{job.depth};
  host::Instance fx{effect, clip};
  fx.param("Number of smoothing frames").set(3);
  fx.param("Correction method").set(job.method);
  fx.param("Favor brighter pixels").set(job.favorBrighter ? 1 : 0);
  fx.param("Adjust for clipping").set(1);
  fx.param("Adjust for clipping at %").set(70);
  fx.press("Analyze");

  const std::string name = std::to_string(static_cast<int>(job.depth)) + " bits, method " +
                           std::to_string(job.method) +
                           (job.path == RenderPath::smart ? ", smart" : ", classic") +
                           (job.favorBrighter ? ", bright pixels first" : "");
  record.begin();
  record.add(savedAnalysis(fx));
  record.end(name + ": analysis");
  for (std::int32_t frame = 0; frame < kFrames; ++frame) {
    host::Image output;
    fx.render(frame, job.depth, output, job.path);
    record.begin();
    for (std::int32_t y = 0; y < kHeight; ++y) {
      record.add({output.row(y), static_cast<std::size_t>(kWidth * host::pixelBytes(job.depth))});
    }
    record.end(name + ": frame " + std::to_string(frame));
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: picture_digest LIBRARY PREFIX\n");
    return 2;
  }
  try {
    const host::EffectModule module{argv[1]};
    host::Host application{host::Role::afterEffects};
    host::Effect effect{application, module};
    Record record{argv[2]};
    for (const Depth depth : {Depth::bits8, Depth::bits16, Depth::float32}) {
      for (const RenderPath path : {RenderPath::smart, RenderPath::classic}) {
        if (depth == Depth::float32 && path == RenderPath::classic) continue;  // smart only
        for (int method = 1; method <= 3; ++method) {
          correct(effect, {depth, method, path, false}, record);
          correct(effect, {depth, method, path, true}, record);
        }
      }
    }
    if (record.close()) return 0;
    std::fprintf(stderr, "picture_digest: cannot write %s\n", argv[2]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "picture_digest: %s\n", error.what());
  }
  return 1;
}
