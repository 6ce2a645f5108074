// tests/effect/test_footage.cpp — small clips with known pixels, and a visit to the effect.
#include "tests/effect/test_footage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>

namespace effect_test {

using host::Depth;
using host::Image;

void expectSame(const host::Image& a, const host::Image& b) {
  ASSERT_EQ(a.width(), b.width());
  ASSERT_EQ(a.height(), b.height());
  ASSERT_EQ(a.depth(), b.depth());
  for (std::int32_t y = 0; y < a.height(); ++y) {
    ASSERT_EQ(std::memcmp(a.row(y), b.row(y),
                          static_cast<std::size_t>(a.width() * host::pixelBytes(a.depth()))),
              0)
        << "row " << y;
  }
}

double white(Depth depth) {
  return depth == Depth::bits8 ? 255.0 : depth == Depth::bits16 ? 32768.0 : 1.0;
}

Pixel getPixel(const Image& image, std::int32_t x, std::int32_t y) {
  const std::byte* row = image.row(y);
  switch (image.depth()) {
    case Depth::bits8: {
      std::uint8_t c[4];
      std::memcpy(c, row + x * 4, sizeof c);
      return {double(c[0]), double(c[1]), double(c[2]), double(c[3])};
    }
    case Depth::bits16: {
      std::uint16_t c[4];
      std::memcpy(c, row + x * 8, sizeof c);
      return {double(c[0]), double(c[1]), double(c[2]), double(c[3])};
    }
    case Depth::float32:
      break;
  }
  float c[4];
  std::memcpy(c, row + x * 16, sizeof c);
  return {double(c[0]), double(c[1]), double(c[2]), double(c[3])};
}

void setPixel(Image& image, std::int32_t x, std::int32_t y, const Pixel& pixel) {
  const double values[4] = {pixel.alpha, pixel.red, pixel.green, pixel.blue};
  std::byte* row = image.row(y);
  for (int i = 0; i < 4; ++i) {
    switch (image.depth()) {
      case Depth::bits8:
        row[x * 4 + i] = static_cast<std::byte>(std::lround(values[i]));
        break;
      case Depth::bits16: {
        const auto c = static_cast<std::uint16_t>(std::lround(values[i]));
        std::memcpy(row + x * 8 + i * 2, &c, sizeof c);
        break;
      }
      case Depth::float32: {
        const auto c = static_cast<float>(values[i]);
        std::memcpy(row + x * 16 + i * 4, &c, sizeof c);
        break;
      }
    }
  }
}

TestFootage::TestFootage(std::int32_t width, std::int32_t height, std::int32_t frames, Depth depth,
                         Paint paint)
    : paint_(std::move(paint)) {
  info_.width = width;
  info_.height = height;
  info_.frameCount = frames;
  info_.timeStep = 128;
  info_.timeScale = 3200;
  info_.depth = depth;
}

void TestFootage::read(std::int32_t frame, Image& image) {
  const double scale = white(image.depth());
  for (std::int32_t y = 0; y < image.height(); ++y) {
    for (std::int32_t x = 0; x < image.width(); ++x) {
      const Pixel p = paint_(frame, x, y);
      setPixel(image, x, y, {p.alpha * scale, p.red * scale, p.green * scale, p.blue * scale});
    }
  }
}

Image TestFootage::frame(std::int32_t index, Depth depth) {
  Image image(info_.width, info_.height, depth);
  read(index, image);
  return image;
}

TestFootage flickeringFootage(std::int32_t width, std::int32_t height, std::int32_t frames,
                              Depth depth) {
  return TestFootage(width, height, frames, depth, [=](auto frame, auto x, auto y) {
    const double gain = 1.0 + 0.33 * std::sin(frame * 2.4) * std::cos(frame * 0.7);
    const double u = double(x) / width;
    const double v = double(y) / height;
    const double texture = 0.06 * std::sin(x * 12.9898 + y * 78.233 + frame * 0.1);
    const auto channel = [&](double c) { return std::clamp((c + texture) * gain, 0.0, 1.0); };
    return Pixel{1.0 - 0.25 * u, channel(0.15 + 0.5 * u), channel(0.1 + 0.5 * v),
                 channel(0.55 - 0.4 * u * v)};
  });
}

const host::EffectModule& effectModule() {
  static const host::EffectModule module{VARILUM_EFFECT_PATH};
  return module;
}

host::HostOptions asAsked(host::HostOptions options) {
  const char* const asked = std::getenv("VARILUM_HOST");
  const bool strict = asked != nullptr && std::string_view(asked) == "strict";
  if (strict && options.stress == host::Stress{}) options.stress = host::Stress::strict();
  return options;
}

host::HostOptions wholeFrames() {
  host::HostOptions options = asAsked({});
  options.stress.tiles = 1;
  return options;
}

Visit::Visit(host::Role role, host::ApiVersion version, host::HostOptions options)
    : host_(std::make_unique<host::Host>(role, version, asAsked(std::move(options)))),
      effect_(std::make_unique<host::Effect>(*host_, effectModule())) {}

Visit::~Visit() {
  effect_.reset();
  EXPECT_EQ(host_->outstanding().describe(), "nothing");
}

std::int32_t SavedData::int32At(std::size_t offset) const {
  std::int32_t value = 0;
  if (offset + sizeof value > bytes.size()) throw std::out_of_range("saved data");
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

double SavedData::doubleAt(std::size_t offset) const {
  double value = 0.0;
  if (offset + sizeof value > bytes.size()) throw std::out_of_range("saved data");
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

std::uint8_t SavedData::byteAt(std::size_t offset) const {
  return std::to_integer<std::uint8_t>(bytes.at(offset));
}

double SavedData::level(int array, std::int32_t frame) const {
  const auto n = static_cast<std::size_t>(frameCount());
  return doubleAt(5196 +
                  8 * (n * static_cast<std::size_t>(array) + static_cast<std::size_t>(frame)));
}

bool SavedData::analyzed(std::int32_t frame) const {
  const auto n = static_cast<std::size_t>(frameCount());
  return byteAt(5196 + 32 * n + 176 * static_cast<std::size_t>(frame) + 8) != 0;
}

SavedData savedData(host::Instance& instance) {
  return {instance.save().sequenceData};
}

}  // namespace effect_test
